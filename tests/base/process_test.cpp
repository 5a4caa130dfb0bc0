// Command lines, and programs started from them.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "base/os.hpp"
#include "base/programs.hpp"

namespace vntl {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

class Process : public testing::Test {
protected:
    void SetUp() override {
        directory = fs::temp_directory_path() / ("process " + std::to_string(::getpid()));
        fs::create_directories(directory);
    }
    void TearDown() override { fs::remove_all(directory); }

    // A program that writes its arguments, one a line, into a file.
    std::string Program() const {
        const fs::path file = directory / "tell.sh";
        std::ofstream(file) << "#!/bin/sh\nsleep 0.1\nfor a in \"$@\"; do echo \"$a\"; done >'" << Told().string() << ".part'\nmv '"
                            << Told().string() << ".part' '" << Told().string() << "'\n";
        fs::permissions(file, fs::perms::owner_all);
        return file.string();
    }
    fs::path Told() const { return directory / "told"; }
    Words Lines() const { return Read_Text_Lines(Told().string()).value_or(Words{"nothing"}); }

    fs::path directory;
};

TEST_F(Process, WordsOfACommandLine) {
    EXPECT_EQ(Quoted_Argument("a.pcr"), "a.pcr");
    EXPECT_EQ(Quoted_Argument("my data.pcr"), "\"my data.pcr\"");
    EXPECT_EQ(Command_Words("  xterm -e  run \"a b\" c "), (Words{"xterm", "-e", "run", "a b", "c"}));
    EXPECT_EQ(Command_Words("run \"\" $HOME;rm *"), (Words{"run", "", "$HOME;rm", "*"}));
    EXPECT_EQ(Command_Words(""), Words{});
    EXPECT_EQ(Command_Words(Program() + " x y"), (Words{Program(), "x", "y"}));  // its directory holds a blank
}

TEST_F(Process, RunsWithoutAShell) {
    const std::string odd = "a;touch " + (directory / "x").string() + " $(ls) `ls` 'q'";
    ASSERT_TRUE(IOsCommand(Program() + ' ' + Quoted_Argument(odd) + " -q", command_waits).ok());
    EXPECT_EQ(Lines(), (Words{odd, "-q"}));
    EXPECT_FALSE(fs::exists(directory / "x"));
    fs::remove(Told());

    Begin_Process();  // what this program overhears ends another one as ever
    ASSERT_TRUE(IOsCommand("cp /proc/self/status " + Quoted_Argument(Told().string()), command_waits).ok());
    for (const std::string& line : Lines())
        if (line.starts_with("SigIgn:")) {
            EXPECT_EQ(std::stoull(line.substr(7), nullptr, 16) & (1ull << (SIGPIPE - 1) | 1ull << (SIGXFSZ - 1)), 0u) << line;
        }
    fs::remove(Told());

    ASSERT_TRUE(IOsCommand(Program() + " later", command_goes_on).ok());
    EXPECT_FALSE(fs::exists(Told()));
    for (int i = 0; i < 200 && !fs::exists(Told()); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(Lines(), Words{"later"});

    EXPECT_TRUE(IOsCommand("", command_waits).failed);
    EXPECT_TRUE(IOsCommand("/no/such/program x", command_waits).failed);
    EXPECT_TRUE(IOsCommand(directory.string(), command_waits).failed);
    EXPECT_TRUE(IOsCommand("true", command_waits).ok());
}

TEST_F(Process, TheSeamStartsOrTellsAlone) {
    Programs programs;
    Words told;
    programs.Report_To(
        [&](std::string_view command, bool waited) { told.push_back(std::string(command) + (waited ? " waits" : " goes on")); });
    EXPECT_TRUE(programs.Start("/no/such/program x", command_waits).failed);
    programs.Switch(false);
    EXPECT_TRUE(programs.Start("/no/such/program x", command_goes_on).ok());
    EXPECT_TRUE(programs.Start(Program() + " never", command_waits).ok());
    EXPECT_FALSE(fs::exists(Told()));
    programs.Switch(true);
    EXPECT_TRUE(programs.Start(Program() + " now", command_waits).ok());
    EXPECT_EQ(Lines(), Words{"now"});
    EXPECT_EQ(told,
              (Words{"/no/such/program x waits", "/no/such/program x goes on", Program() + " never waits", Program() + " now waits"}));
}

}  // namespace
}  // namespace vntl
