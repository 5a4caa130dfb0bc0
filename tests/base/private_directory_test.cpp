// A directory that nobody else looks into, and that goes with what is in it.
#include "base/private_directory.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace vntl {
namespace {

namespace fs = std::filesystem;

TEST(Private_Directory, IsForItsOwnerAloneAndGoesWithoutFollowingLinks) {
    const fs::path parent = fs::temp_directory_path() / ("vantrelo_private" + std::to_string(::getpid()));
    fs::create_directories(parent / "kept");
    std::ofstream(parent / "kept" / "file") << "kept";
    std::string path;
    const mode_t mask = ::umask(0);
    {
        Private_Directory directory, other;
        ASSERT_TRUE(directory.Make(parent.string() + '/').ok());
        path = directory.path();
        ASSERT_TRUE(other.Make(parent).ok() && directory.Make("/elsewhere").ok());
        EXPECT_TRUE(directory.path() == path && other.path() != path && fs::path(other.path()).parent_path() == parent) << path;
        EXPECT_EQ(fs::symlink_status(path).permissions(), fs::perms::owner_all);
        fs::create_directories(directory.File("inner"));
        std::ofstream(directory.File("inner/file")) << "gone";
        fs::create_directory_symlink(parent / "kept", directory.File("link"));
    }
    ::umask(mask);
    EXPECT_TRUE(!fs::exists(path) && fs::exists(parent / "kept" / "file"));
    EXPECT_EQ(std::distance(fs::directory_iterator(parent), {}), 1);

    Private_Directory nowhere;
    const Status status = nowhere.Make(parent / "missing");
    EXPECT_TRUE(status.failed && status.message.find((parent / "missing").string()) != std::string::npos) << status.message;
    EXPECT_EQ(nowhere.path(), "");
    fs::remove_all(parent);
}

}  // namespace
}  // namespace vntl
