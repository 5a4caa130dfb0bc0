// Replacing files: owners and permissions, links, pipes and devices, what a full disk and a killed program leave. As root the tests play
// another user too.
#include "base/write_file.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "base/os.hpp"
#include "small_disk.hpp"

namespace vntl {
namespace {

namespace fs = std::filesystem;

constexpr uid_t somebody = 65534;
bool Is_Root() { return ::geteuid() == 0; }

// Acts as somebody else than root for a while.
struct As_Somebody {
    As_Somebody() { EXPECT_EQ(::seteuid(somebody), 0); }
    ~As_Somebody() { EXPECT_EQ(::seteuid(0), 0); }
};

class Write_File : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(directory);
        fs::permissions(directory, fs::perms::all);
        mask = ::umask(022);
    }
    void TearDown() override {
        ::umask(mask);
        fs::remove_all(directory);
    }
    std::string Path(const std::string& name) const { return directory / name; }
    std::string Make(const std::string& name, const std::string& text, mode_t mode = 0644) const {
        std::ofstream(Path(name)) << text;
        ::chmod(Path(name).c_str(), mode);
        return Path(name);
    }
    static std::string Text(const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    static struct stat About(const std::string& file) {
        struct stat about {};
        EXPECT_EQ(::lstat(file.c_str(), &about), 0) << file;
        return about;
    }
    std::size_t Files() const { return static_cast<std::size_t>(std::distance(fs::directory_iterator(directory), {})); }

    const fs::path directory = fs::temp_directory_path() / ("vantrelo_write" + std::to_string(::getpid()));
    mode_t mask = 0;
};

TEST_F(Write_File, TheOldOwnerAndPermissionsStayANewFileGetsThoseOfTheUmask) {
    ::umask(027);
    ASSERT_TRUE(Replace_File(Path("new"), "new"));
    EXPECT_EQ(About(Path("new")).st_mode & 07777u, 0640u);
    for (const mode_t mode : {0640u, 0755u, 0600u, 02664u}) {
        const std::string file = Make("old", "old", mode);
        if (Is_Root()) {
            ASSERT_EQ(::chown(file.c_str(), 12345, 54321), 0);
            ::chmod(file.c_str(), mode);
        }
        const struct stat before = About(file);
        ASSERT_TRUE(Replace_File(file, std::to_string(mode)));
        const struct stat after = About(file);
        EXPECT_EQ(Text(file), std::to_string(mode));
        EXPECT_NE(after.st_ino, before.st_ino) << "in one step";
        EXPECT_EQ(after.st_mode, before.st_mode);
        EXPECT_EQ(after.st_uid, before.st_uid);
        EXPECT_EQ(after.st_gid, before.st_gid);
        fs::remove(file);
    }
    EXPECT_EQ(Files(), 1u);
}

TEST_F(Write_File, WhoMayReadAFileThatIsRunMayRunItAsTheUmaskPermits) {
    struct Case {
        mode_t mask, old, runs;  // old 0: a new file
    };
    for (const Case& c : {Case{022, 0, 0755}, Case{027, 0, 0750}, Case{077, 0, 0700}, Case{0111, 0, 0666}, Case{022, 0640, 0750},
                          Case{022, 0755, 0755}, Case{077, 0644, 0744}, Case{022, 0622, 0722}}) {
        ::umask(c.mask);
        const std::string file = c.old == 0 ? Path("new") : Make("old", "old", c.old);
        ASSERT_TRUE(Replace_File(file, "new", File_Use::run));
        EXPECT_EQ(About(file).st_mode & 07777u, c.runs) << c.mask << ' ' << c.old;
        fs::remove(file);
    }
}

TEST_F(Write_File, AFileOfAnotherAndADirectoryThatTakesNoNewOneAreWrittenInPlace) {
    if (!Is_Root()) GTEST_SKIP() << "needs a second user";
    const std::string shared = Make("shared", "of root", 0666), own = Make("inner", "");
    fs::remove(own);
    fs::create_directories(own);
    std::ofstream(own + "/kept") << "long text of before";
    ASSERT_EQ(::chown((own + "/kept").c_str(), somebody, somebody), 0);
    const ino_t inode = About(shared).st_ino;
    {
        const As_Somebody other;
        EXPECT_TRUE(Can_Be_Written(shared) && Replace_File(shared, "of all"));
        EXPECT_TRUE(Replace_File(own + "/kept", "short"));
        const Small_Disk full(10);
        EXPECT_FALSE(Replace_File(shared, std::string(11, 'x')));
        EXPECT_FALSE(Can_Be_Written(own + "/new") || Replace_File(own + "/new", ""));
    }
    EXPECT_EQ(Text(shared) + ' ' + Text(own + "/kept"), "of all short");
    EXPECT_EQ(About(shared).st_ino, inode);
    EXPECT_EQ(About(shared).st_uid, 0u);
    EXPECT_EQ(Files(), 2u);
}

TEST_F(Write_File, OnesOwnLinkKeepsPointingAnothersIsRefused) {
    fs::create_directories(directory / "d");
    fs::create_symlink("d/first", directory / "relative");
    fs::create_symlink(directory / "relative", directory / "chain");
    for (const std::string text : {"made", "replaced"}) {
        ASSERT_TRUE(Replace_File(Path("chain"), text));
        EXPECT_EQ(Text(Path("d/first")), text);
    }
    EXPECT_TRUE(fs::is_symlink(directory / "chain") && fs::is_symlink(directory / "relative"));
    fs::create_symlink("loop", directory / "loop");
    fs::create_symlink("d", directory / "to_directory");
    for (const char* name : {"loop", "to_directory", "d", "", "no/where", "d/", "d/first/x"}) {
        EXPECT_FALSE(Replace_File(Path(name), "x")) << name;
        EXPECT_FALSE(Can_Be_Written(Path(name))) << name;
    }
    if (!Is_Root()) return;
    fs::permissions(directory, fs::perms::all | fs::perms::sticky_bit);
    ASSERT_EQ(::lchown(Path("relative").c_str(), somebody, somebody), 0);
    for (const char* name : {"relative", "chain"}) EXPECT_FALSE(Can_Be_Written(Path(name)) || Replace_File(Path(name), "planted")) << name;
    EXPECT_EQ(Text(Path("d/first")), "replaced");
    const As_Somebody other;
    EXPECT_FALSE(Replace_File(Path("chain"), "of root"));
}

TEST_F(Write_File, APipeOrADeviceIsWrittenAndStays) {
    EXPECT_TRUE(Replace_File("/dev/null", "gone"));
    EXPECT_FALSE(Replace_File("/dev/full", "no room"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    const std::string pipe = Path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string got;
    std::thread reader([&] { got = Text(pipe); });
    const std::string text(300000, 'x');  // more than a pipe holds
    EXPECT_TRUE(Replace_File(pipe, text));
    reader.join();
    EXPECT_TRUE(got == text);
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_EQ(Files(), 1u);
}

TEST_F(Write_File, AFileMarkedReadOnlyIsRefused) {
    for (const mode_t mode : {0444u, 0400u, 0555u}) {
        const std::string file = Make("marked", "kept", mode);
        EXPECT_FALSE(Can_Be_Written(file) || Replace_File(file, "lost"));
        EXPECT_EQ(Text(file), "kept");
        fs::remove(file);
    }
    EXPECT_EQ(Files(), 0u);
}

TEST_F(Write_File, NamesAsLongAsTheyCanBe) {
    const std::string longest = Path(std::string(255, 'n'));
    for (const char* text : {"new", "newer"}) {
        ASSERT_TRUE(Replace_File(longest, text));
        EXPECT_EQ(Text(longest), text);
    }
    EXPECT_FALSE(Replace_File(longest + "n", ""));
}

TEST_F(Write_File, WhatAKillLeftGoesWithTheNextSave) {
    const std::string file = Make("data", "old"), others = Make("other", "old");
    for (const std::string& name : {file, others}) {
        const pid_t child = ::fork();
        if (child == 0) {
            const Small_Disk full(10);
            std::signal(SIGXFSZ, SIG_DFL);  // ends the program in the middle of its write
            Replace_File(name, "more than ten letters");
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
    }
    EXPECT_EQ(Files(), 4u);
    for (const auto& entry : fs::directory_iterator(directory))
        if (entry.path() != file && entry.path() != others) {
            EXPECT_EQ(About(entry.path()).st_mode & 0777u, 0600u);
        }
    EXPECT_EQ(Text(file), "old");
    ASSERT_TRUE(Replace_File(file, "new"));
    EXPECT_EQ(Files(), 3u) << "that of the other file stays";

    // One that another program is writing is no leftover.
    std::string left;
    for (const auto& entry : fs::directory_iterator(directory))
        if (entry.path() != file && entry.path() != others) left = entry.path();
    const int writer = ::open(left.c_str(), O_WRONLY);
    ASSERT_EQ(::flock(writer, LOCK_EX), 0);
    ASSERT_TRUE(Replace_File(others, "new"));
    EXPECT_EQ(Files(), 3u);
    ::close(writer);
    ASSERT_TRUE(Replace_File(others, "newer"));
    EXPECT_EQ(Files(), 2u);
}

TEST_F(Write_File, AFullDiskLeavesTheOldFile) {
    const std::string file = Make("data", "old");
    Growing_File growing;
    ASSERT_TRUE(growing.Open(Path("growing")).ok());
    ASSERT_TRUE(growing.Write_From(0, "one\ntwo\n").ok());
    {
        const Small_Disk full(10);
        EXPECT_FALSE(Replace_File(file, "more than ten letters"));
        EXPECT_FALSE(Replace_File(Path("new"), "more than ten letters"));
        const Status status = growing.Write_From(4, "three\nfour\n");
        EXPECT_TRUE(status.failed && status.message.find("growing") != std::string::npos) << status.message;
        EXPECT_EQ(Text(Path("growing")), "one\n") << "no line in part";
    }
    EXPECT_EQ(Text(file), "old");
    EXPECT_EQ(Files(), 2u);
    EXPECT_TRUE(growing.Write_From(4, "three\nfour\n").ok());
    EXPECT_EQ(Text(Path("growing")), "one\nthree\nfour\n");
}

}  // namespace
}  // namespace vntl
