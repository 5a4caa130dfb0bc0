// Files of runs by their numbers, in directories and trees that the test makes.
#include "instrument/numor_files.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace vntl {
namespace {

namespace fs = std::filesystem;

class Numor_Files : public testing::Test {
protected:
    void SetUp() override { fs::create_directories(root); }
    void TearDown() override { fs::remove_all(root); }
    void Make(const std::vector<std::string>& files) const {
        for (const std::string& file : files) {
            fs::create_directories((root / file).parent_path());
            std::ofstream(root / file) << "x";
        }
    }

    const fs::path root = fs::temp_directory_path() / ("vantrelo_numors" + std::to_string(getpid()));
    const std::string directory = root.string() + '/';
};

TEST_F(Numor_Files, APathHasSixDigitsAndTheFormThatIsThere) {
    Make({"000007", "123456.Z", "both", "200000", "200000.Z"});
    EXPECT_EQ(Numor_Path(root, 7, false), directory + "000007");
    EXPECT_EQ(Numor_Path(directory, 7, true), directory + "000007");
    EXPECT_EQ(Numor_Path(root, 123456, false), directory + "123456.Z");
    EXPECT_EQ(Numor_Path(root, 200000, true), directory + "200000.Z");
    EXPECT_EQ(Numor_Path(root, 200000, false), directory + "200000");
    EXPECT_EQ(Numor_Path(root, 8, true), directory + "000008.Z");
    EXPECT_EQ(Numor_Path("", 8, false), "000008");
}

TEST_F(Numor_Files, ATreeIsLookedThroughFromTheRoot) {
    Make({"000001", "data/r3a/000001", "data/r3a/000002", "data-1/r3a/000002", "data-1/r3b/r3b_23/123456.Z"});
    EXPECT_EQ(Numor_Path_In_Tree(directory, 1, "R3A", false), directory + "000001");
    EXPECT_EQ(Numor_Path_In_Tree(directory, 2, "R3A", false), directory + "data/r3a/000002");
    EXPECT_EQ(Numor_Path_In_Tree(directory, 123456, "R3B", false), directory + "data-1/r3b/r3b_23/123456.Z");
    EXPECT_EQ(Numor_Path_In_Tree(directory, 3, "R3A", false), directory + "000003");
}

TEST_F(Numor_Files, NumbersOfADirectoryHaveALeastAndALargest) {
    const auto range = [this] {
        std::optional<Numor_Range> found;
        EXPECT_TRUE(Numors_In_Directory(root, found).ok());
        return found ? std::to_string(found->first) + ' ' + std::to_string(found->last) + (found->compressed ? " Z" : "") : "none";
    };
    Make({"readme", "12a", "-5", "1 2", ".Z", "1234567", "99999999999999999999", "900000/a", "000300.gz"});
    EXPECT_EQ(range(), "none");
    Make({"123460.Z", "123450.Z"});
    EXPECT_EQ(range(), "123450 123460 Z");
    Make({"123455"});
    EXPECT_EQ(range(), "123450 123460");
    Make({"999999", "000000"});
    EXPECT_EQ(range(), "0 999999");
    std::optional<Numor_Range> found;
    const Status status = Numors_In_Directory(directory + "absent", found);
    EXPECT_TRUE(status.failed);
    EXPECT_NE(status.message.find("absent"), std::string::npos);
}

}  // namespace
}  // namespace vntl
