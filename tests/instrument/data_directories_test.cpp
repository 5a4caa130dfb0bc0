// Trees of runs, the directories that belong to them, and what paths tell of instruments.
#include "instrument/data_directories.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <map>
#include <thread>

#include "base/answer.hpp"
#include "base/text.hpp"
#include "instrument/instrument_names.hpp"
#include "instrument/numor_files.hpp"

namespace vntl {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// "abababababababab", as the program compress packs it.
const std::string packed("\x1f\x9d\x90\x61\xc4\x04\x1c\x28\xb0\x20\x41", 11), unpacked = "abababababababab";

// A variable of the environment, which is put back.
class Variable {
public:
    explicit Variable(const char* name) : name_(name) {
        if (const char* value = std::getenv(name)) before_ = value;
    }
    ~Variable() { Set(before_); }
    void Set(const std::optional<std::string>& value) const { value ? ::setenv(name_, value->c_str(), 1) : ::unsetenv(name_); }

private:
    const char* name_;
    std::optional<std::string> before_;
};

class Run_Tree : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(root / "tmp");
        ASSERT_TRUE(Set_KVR_data_directory(directories, root).ok());
        directories.KVR_temp_directory = (root / "tmp").string() + '/';
    }
    void TearDown() override { fs::remove_all(root); }

    std::string Make(const std::string& name, const std::string& text = "run") const {
        const fs::path file = root / name;
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }
    static std::string Text(const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    // Where a run is found in the tree, below the root.
    std::string Found(int numor, std::string_view instrument, std::optional<Reactor_Cycle> cycle = {}) {
        Found_Run found;
        const Status status = Get_Absolute_Data_Path(directories, numor, instrument, cycle, found);
        EXPECT_TRUE(status.ok()) << status.message;
        EXPECT_EQ(found.path.empty(), found.actual_path.empty());
        return found.actual_path.empty() ? "" : fs::path(found.actual_path).lexically_relative(root).string();
    }
    std::string Failure(int numor, std::string_view instrument, std::optional<Reactor_Cycle> cycle = {}) {
        Found_Run found{"before", "before"};
        const Status status = Get_Absolute_Data_Path(directories, numor, instrument, cycle, found);
        EXPECT_TRUE(status.failed && found.path.empty() && found.actual_path.empty());
        return status.message;
    }

    const fs::path root = fs::temp_directory_path() / ("vantrelo_tree" + std::to_string(::getpid()));
    Data_Directories directories;
};

std::string Two_Digits(int year) { return {static_cast<char>('0' + year / 10), static_cast<char>('0' + year % 10)}; }

TEST_F(Run_Tree, RunsAreSplitByHundredsOfThousandsForSomeInstruments) {
    const std::pair<const char*, const char*> places[] = {
        {"R3A", "r3a/123456"},          {"R5B", "r5b/123456"},        {"r8", "r8/123456"},       {"R11", "r11/123456"},
        {" R3B ", "r3b/r3b_23/123456"}, {"R22", "r22/r22_23/123456"}, {"R6", "r6/r6_23/123456"}, {"R15", "r15/r15_23/123456"},
        {"R18", "r18/r18_23/123456"},   {"R17", "r17/r17_23/123456"}};
    for (const auto& [instrument, place] : places) EXPECT_EQ(Run_In_Tree(123456, instrument), place);
    EXPECT_EQ(Run_In_Tree(7, "R22"), "r22/r22_00/000007");
    for (const char* none : {"", " ", "..", "../r3a", "r3a/x", ".r3a"}) EXPECT_EQ(Run_In_Tree(1, none), "") << none;
}

// Each place is looked at before all that stand below it.
TEST_F(Run_Tree, TheWayGoesFromTheDataOfTodayBackThroughTheCycles) {
    const int year = Present_Year();
    ASSERT_TRUE(year >= 0 && year < 72);
    const auto cycle = [](int y, int number) { return Two_Digits(y) + std::to_string(number); };
    const std::string order[] = {
        "data", "data-1", cycle(year, 7), cycle(year, 6), cycle(year, 1), cycle((year + 99) % 100, 7), cycle((year + 99) % 100, 2), "007",
        "001",  "997",    "991",          "727",          "721"};
    EXPECT_EQ(Found(42, "R22"), "");
    for (std::size_t i = std::size(order); i-- > 0;) {
        const std::string plain = order[i] + "/r22/r22_00/000042", smaller = plain + ".Z";
        Make(smaller, packed);
        EXPECT_EQ(Found(42, "r22"), smaller);
        Make(plain);
        EXPECT_EQ(Found(42, "r22"), plain) << "rather than the packed one";
    }
    for (const char* beyond : {"717", "728", "720", "data-2"}) Make(std::string(beyond) + "/r3a/000001");
    EXPECT_EQ(Found(1, "R3A"), "");
    Make("053/r3a/000001");
    Make("data/r3a/000001");
    EXPECT_EQ(Found(1, "R3A", Reactor_Cycle{5, 3}), "053/r3a/000001");
    EXPECT_EQ(Found(1, "R3A", Reactor_Cycle{5, 4}), "") << "no other cycle than the one that is told";
    EXPECT_EQ(Found(1, "R3A", Reactor_Cycle{71, 7}), "717/r3a/000001");
}

TEST_F(Run_Tree, APackedRunComesAsAPlainFileThatNobodyElseReads) {
    const std::string actual = Make("data-1/r3a/000123.Z", packed);
    Found_Run found;
    {
        Data_Directories own;
        own.KVR_data_directory = root.string() + '/';
        own.KVR_temp_directory = (root / "tmp").string() + '/';
        ASSERT_TRUE(Get_Absolute_Data_Path(own, 123, "R3A", {}, found).ok());
        EXPECT_EQ(found.actual_path, actual);
        EXPECT_EQ(fs::path(found.path).filename(), "000123");
        const fs::path own_place = fs::path(found.path).parent_path();
        EXPECT_TRUE(own_place.parent_path() == root / "tmp" && fs::status(own_place).permissions() == fs::perms::owner_all);
        EXPECT_EQ(Text(found.path), unpacked);
        Make("053/r3a/000123.Z", "not packed, whatever its name");
        ASSERT_TRUE(Get_Absolute_Data_Path(own, 123, "R3A", Reactor_Cycle{5, 3}, found).ok());
        EXPECT_EQ(Text(found.path), "not packed, whatever its name");
    }
    EXPECT_TRUE(fs::is_empty(root / "tmp")) << "they go with the program";

    const std::string bad = Make("data/r3a/000124.Z", packed.substr(0, 9) + "\xff\xff");
    EXPECT_TRUE(Contains(Failure(124, "R3A"), bad));
    directories.KVR_temp_directory = (root / "missing").string();
    EXPECT_TRUE(Contains(Failure(123, "R3A"), (root / "missing").string()));
}

TEST_F(Run_Tree, WhatIsNoRunIsPassedOver) {
    fs::create_directories(root / "data/r3a/000001");
    fs::create_directories(root / "data/r3a/000001.Z");
    ASSERT_EQ(::mkfifo((root / "data/r3a/000002").c_str(), 0600), 0);
    fs::create_symlink("nowhere", root / "data/r3a/000003");
    for (const int numor : {1, 2, 3}) EXPECT_EQ(Found(numor, "R3A"), "");
    Make("data-1/r3a/000001");
    EXPECT_EQ(Found(1, "R3A"), "data-1/r3a/000001");
    for (const int numor : {-1, 1000000}) EXPECT_TRUE(Contains(Failure(numor, "R3A"), std::to_string(numor)));
    for (const std::string name : {"", "..", "a/b"}) EXPECT_TRUE(Contains(Failure(1, name), "'" + name + "'"));
    for (const Reactor_Cycle& cycle : {Reactor_Cycle{2005, 3}, {5, 10}, {-5, 3}})
        EXPECT_TRUE(Contains(Failure(1, "R3A", cycle), std::to_string(cycle.year)));
}

TEST_F(Run_Tree, ASearchCanBeCancelledAndASilentTreeIsGivenUp) {
    int steps = 0;
    Found_Run found;
    Status status = Get_Absolute_Data_Path(directories, 1, "R3A", {}, found, [&] { return ++steps < 10; });
    EXPECT_TRUE(status.cancelled && found.path.empty());
    EXPECT_EQ(steps, 10);

    const auto end = std::make_shared<std::promise<void>>();
    const std::string place = root.string() + '/';
    const std::shared_future<void> ended = end->get_future().share();
    const auto silent = [ended] {
        ended.wait();
        return true;
    };
    // As a tree that falls silent in the middle of a search does.
    status = Get_Absolute_Data_Path(directories, 1, "R3A", {}, found, [&] {
        EXPECT_EQ(Answer_Within(1ms, place, silent), std::nullopt);
        return true;
    });
    EXPECT_EQ(status.message, "The KVR directory: '" + root.string() + "' does not answer");
    EXPECT_EQ(Failure(1, "R3A"), status.message);
    EXPECT_FALSE(directories.KVR_data_found);
    EXPECT_EQ(Set_KVR_data_directory(directories, root).message, status.message);
    end->set_value();
    for (int i = 0; i < 500 && !Set_KVR_data_directory(directories, root).ok(); ++i) std::this_thread::sleep_for(10ms);
    EXPECT_EQ(Found(1, "R3A"), "");
}

TEST_F(Run_Tree, TheEnvironmentTellsTheDirectories) {
    const Variable kvrdata("KVRDATA"), places[] = {Variable("TEMP"), Variable("TMP"), Variable("USERPROFILE"), Variable("TMPDIR")};
    const std::string here = fs::current_path().string() + '/', there = root.string() + '/';
    kvrdata.Set(root.string());
    Initialize_Data_Directory(directories);
    EXPECT_TRUE(directories.KVR_data_directory == there && directories.KVR_data_found);
    kvrdata.Set(there + "missing");
    Data_Directories fresh;
    Found_Run found;
    EXPECT_EQ(Get_Absolute_Data_Path(fresh, 1, "R3A", {}, found).message, "The KVR directory: '" + there + "missing' doesn't exist");
    for (const std::optional<std::string>& blank : {std::optional<std::string>(), std::optional<std::string>("  ")}) {
        kvrdata.Set(blank);
        Initialize_Data_Directory(directories);
        EXPECT_TRUE(directories.KVR_data_directory == here && directories.KVR_data_found);
    }

    const auto temporary = [&](const std::string& directory, bool is_there) {
        Initialize_Temp_Directory(directories);
        EXPECT_EQ(directories.KVR_temp_directory, directory);
        EXPECT_EQ(directories.KVR_temp_found, is_there);
    };
    for (const Variable& place : places) place.Set({});
    temporary("/tmp/", true);
    for (std::size_t i = std::size(places); i-- > 0;) {  // each goes before those behind it
        places[i].Set(there + std::to_string(i));
        temporary(there + std::to_string(i) + '/', false);
    }
    places[0].Set(" ");
    places[1].Set(there + "tmp/");
    temporary(there + "tmp/", true);
    EXPECT_TRUE(directories.Temporary_Directory().ok());
}

TEST_F(Run_Tree, DirectoriesThatAreSetMustBeThere) {
    const std::string there = root.string() + '/', missing = there + "missing";
    EXPECT_EQ(Set_KVR_data_directory(directories, missing).message, "The KVR directory: '" + missing + "' doesn't exist");
    EXPECT_TRUE(Set_KVR_data_directory(directories, "").failed);
    EXPECT_EQ(directories.KVR_data_directory, there) << "as it was";

    fs::create_directories(root / "data/r3a");
    EXPECT_EQ(Set_Instrm_directory(directories, {}).message, " A working directory or an instrument name must be at least provided.");
    EXPECT_EQ(Set_Instrm_directory(directories, "  ", "R3A").message, "Provided working directory string is empty");
    EXPECT_EQ(Set_Instrm_directory(directories, missing).message, "The INSTRM directory: '" + missing + "' doesn't exist");
    EXPECT_EQ(Set_Instrm_directory(directories, {}, "R8").message, "The INSTRM directory: '" + there + "data/r8' doesn't exist");
    EXPECT_FALSE(directories.instrm_directory_found);
    ASSERT_TRUE(Set_Instrm_directory(directories, {}, "R3A").ok());
    EXPECT_EQ(directories.instrm_directory, there + "data/r3a/");
    ASSERT_TRUE(Set_Instrm_directory(directories, there, "R3A").ok());
    EXPECT_TRUE(directories.instrm_directory == there && directories.instrm_directory_found);
    ASSERT_TRUE(Set_Instrm_Geometry_directory(directories, there).ok());
    EXPECT_EQ(directories.instrm_geometry_directory, there);
    for (const std::string& none : {missing, std::string()}) {
        EXPECT_EQ(Set_Instrm_Geometry_directory(directories, none).message,
                  " The INSTRM Geometry directory doesn't exist, current directory assumed");
        EXPECT_TRUE(directories.instrm_geometry_directory == fs::current_path().string() + '/' && !directories.instrm_geometry_found);
    }
}

TEST_F(Run_Tree, TheBytesOfARunWhateverItsName) {
    for (const auto& [file, text] : {std::pair(Make("a.Z", packed), unpacked),
                                     {Make("b", packed), unpacked},
                                     {Make("c.Z", "plain"), "plain"},
                                     {Make("d", "\x1f\x9d\x90\xef\x76\xfd\xa2\x03"), "t"},  // behind a mark of UTF-8
                                     {Make("e", ""), ""}}) {
        std::string bytes = "before";
        EXPECT_TRUE(Read_Run_Bytes(file, bytes).ok() && bytes == text) << file;
    }
    for (const std::string& file : {Make("f", packed.substr(0, 2)), root.string(), Make("g") + "no"}) {
        std::string bytes = "before";
        const Status status = Read_Run_Bytes(file, bytes);
        EXPECT_TRUE(status.failed && status.of_file && Contains(status.message, file) && bytes == "before") << status.message;
    }
}

TEST_F(Run_Tree, NumbersBecomePathsInTheFormThatIsThere) {
    for (const char* name : {"000007", "123456.Z", "200000", "200000.Z", "data/r3a/000007", "data/r3a/000002", "data-1/r3a/000002",
                             "data-1/r3b/r3b_23/123456.Z"})
        Make(name);
    const std::string directory = root.string() + '/';
    const std::tuple<int, bool, const char*> places[] = {{7, false, "000007"},       {7, true, "000007"},       {123456, false, "123456.Z"},
                                                         {200000, true, "200000.Z"}, {200000, false, "200000"}, {8, true, "000008.Z"}};
    for (const auto& [numor, packed_one, name] : places) {
        EXPECT_EQ(Actual_Numor(Numor_Path(root, numor, packed_one)), directory + name);
        EXPECT_EQ(Actual_Numor(Numor_Path(directory, numor, packed_one)), directory + name);
    }
    EXPECT_EQ(Numor_Path("", 8, false), "000008");
    fs::remove(root / "123456.Z");
    const std::tuple<int, const char*, const char*> in_tree[] = {
        {7, "R3A", "000007"}, {2, "R3A", "data/r3a/000002"}, {123456, "R3B", "data-1/r3b/r3b_23/123456.Z"}, {3, "R3A", "000003"}};
    for (const auto& [numor, instrument, name] : in_tree)
        EXPECT_EQ(Actual_Numor_In_Tree(directory, Numor_Path(directory, numor, false), instrument), directory + name);
}

TEST_F(Run_Tree, NumbersOfADirectoryHaveALeastAndALargest) {
    std::optional<Numor_Range> found;
    const auto range = [&](std::initializer_list<const char*> names) {
        for (const char* name : names) Make(name);
        EXPECT_TRUE(Numors_In_Directory(root, found).ok());
        return found ? std::to_string(found->first) + ' ' + std::to_string(found->last) + (found->compressed ? " Z" : "") : "none";
    };
    EXPECT_EQ(range({"readme", "12a", "-5", "1 2", ".Z", "1234567", "99999999999999999999", "900000/a", "000300.gz"}), "none");
    EXPECT_EQ(range({"123460.Z", "123450.Z"}), "123450 123460 Z");
    EXPECT_EQ(range({"123455"}), "123450 123460");
    EXPECT_EQ(range({"999999", "000000"}), "0 999999");
    EXPECT_TRUE(Contains(Numors_In_Directory(root / "absent", found).message, "absent"));

    // Of one number the plain file, and of two plain ones that of six digits.
    for (const char* name : {"42.Z", "42", "000042", "000043.Z", "43.Z"}) Make(name);
    std::vector<Run_In_Directory> runs;
    ASSERT_TRUE(Runs_In_Directory(root, runs).ok());
    std::string all;
    for (const Run_In_Directory& run : runs)
        all += std::to_string(run.numor) + '=' + fs::path(run.file).lexically_relative(root).string() + ' ';
    EXPECT_EQ(all, "0=000000 42=000042 43=000043.Z 123450=123450.Z 123455=123455 123460=123460.Z 999999=999999 ");
    EXPECT_TRUE(Contains(Runs_In_Directory(root / "absent", runs).message, "absent"));
    EXPECT_EQ(runs.size(), 7u) << "they stay";
}

TEST(Instrument_Names, ArePathsAndGroupsOfThem) {
    struct Case {
        const char *path, *instrument;
        char separator = '/';
    };
    // Four characters of a name count, and "mine" measures nothing; the first instrument is taken.
    const Case cases[] = {{"/share/data/r3b/r3b_01/101234", "R3B"},
                          {"/share/data-1/r3b/101234", "R3B"},
                          {"/share/053/r22/r22_23/123456.Z", "R22"},
                          {"data/DB21/1", "DB21"},
                          {"/data/db21x/1", "DB21"},
                          {"/data/r3axx/1", ""},
                          {"/home/data/mine/053/r8/1", "R8"},
                          {"/data/053/R5B/1", "R5B"},
                          {"/data/r3a/data-1/r8/1", "R3A"},
                          {"/share/000/r3a/1", ""},
                          {"/share/05x/r3a/1", ""},
                          {"/share/0533/r3a/1", ""},
                          {"/r3a/data", ""},
                          {"/data/", ""},
                          {"", ""},
                          {"R:\\data\\r3a\\101234", "R3A", '\\'},
                          {"R:\\data\\r3a\\101234", ""}};
    for (const Case& c : cases) EXPECT_EQ(Instrument_Of_Path(c.path, c.separator), c.instrument) << c.path;

    std::map<std::string_view, int> names;
    for (const Instrument_Group& group : Instrument_Groups())
        for (const Instrument_Kind& kind : group.types) {
            EXPECT_FALSE(kind.names.empty()) << kind.type;
            for (const std::string_view name : kind.names)
                EXPECT_TRUE(++names[name] == 1 && name.size() <= 4 && Is_Known_Instrument(name)) << name;
        }
    for (const std::string_view name : Two_Axes_Instruments()) EXPECT_TRUE(names.contains(name)) << name;
    EXPECT_TRUE(Is_Known_Instrument(" r3a ") && !Is_Known_Instrument("") && !Is_Known_Instrument("R3"));
}

}  // namespace
}  // namespace vntl
