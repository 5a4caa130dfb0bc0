// Command lines, and programs started from them.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "base/os.hpp"
#include "base/process.hpp"

namespace vntl {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;
using namespace std::chrono_literals;

class Process : public testing::Test {
protected:
    void SetUp() override {
        directory = fs::temp_directory_path() / ("process " + std::to_string(::getpid()));
        fs::create_directories(directory);
    }
    void TearDown() override { fs::remove_all(directory); }

    // A program that writes its directory and its arguments, each with a NUL behind it, into a file.
    std::string Program() const {
        const fs::path file = directory / "tell.sh";
        std::ofstream(file) << "#!/bin/sh\nsleep 0.1\nprintf '%s\\0' \"$PWD\" \"$@\" >'" << Told().string() << "'\n";
        fs::permissions(file, fs::perms::owner_all);
        return file.string();
    }
    fs::path Told() const { return directory / "told"; }
    Words Taken() const {
        std::ifstream file(Told(), std::ios::binary);
        Words words;
        for (std::string word; std::getline(file, word, '\0');) words.push_back(word);
        fs::remove(Told());
        return words;
    }
    static Status Run(const Command_Line& command) {
        Running_Program running;
        Status status = IOsCommand(command, &running);
        EXPECT_TRUE(running.Ended_Within(10s));
        return status;
    }

    fs::path directory;
};

TEST_F(Process, WordsOfACommandLine) {
    EXPECT_EQ(Command_Words("  xterm -e  run \"a b\" c "), (Words{"xterm", "-e", "run", "a b", "c"}));
    EXPECT_EQ(Command_Words("run \"\" $HOME;rm *"), (Words{"run", "", "$HOME;rm", "*"}));
    EXPECT_EQ(Command_Words(""), Words{});
    EXPECT_EQ(Command_Words("C:\\Program Files\\a\\b.EXE -x \"y z\""), (Words{"C:\\Program Files\\a\\b.EXE", "-x", "y z"}));
    EXPECT_EQ(Command_Words(Program() + " x y"), (Words{Program(), "x", "y"}));  // its directory holds a blank

    Command_Line command;
    command.Program("xterm -e ").Program_At("/my suite/run").File("-a b").File("-c").Word("1", "     1").Program("");
    EXPECT_EQ(command.line(), "xterm -e /my suite/run \"./-a b\" ./-c      1");
    EXPECT_EQ(command.words(), (Words{"xterm", "-e", "/my suite/run", "./-a b", "./-c", "1"}));
    EXPECT_EQ(command.programs(), (std::vector<std::size_t>{0, 2}));
}

TEST_F(Process, RunsWithoutAShell) {
    const Words odd = {"a;touch " + (directory / "x").string() + " $(ls) `ls` 'q'", "two\nlines", "\"", "", "%", "é*"};
    Command_Line command;
    command.Program(Program()).In(directory.string());
    for (const std::string& word : odd) command.Word(word);
    ASSERT_TRUE(Run(command).ok());
    Words expected = {directory.string()};
    expected.insert(expected.end(), odd.begin(), odd.end());
    EXPECT_EQ(Taken(), expected);
    EXPECT_FALSE(fs::exists(directory / "x"));

    Begin_Process();  // what this program overhears ends another one as ever
    ASSERT_TRUE(Run(Command_Line().Program("cp /proc/self/status").File(Told().string())).ok());
    const std::vector<std::string> status = Read_Text_Lines(Told().string()).value_or(Words{});
    ASSERT_FALSE(status.empty());
    for (const std::string& line : status)
        if (line.starts_with("SigIgn:")) {
            EXPECT_EQ(std::stoull(line.substr(7), nullptr, 16) & (1ull << (SIGPIPE - 1) | 1ull << (SIGXFSZ - 1)), 0u) << line;
        }

    for (const Command_Line& none :
         {Command_Line(), Command_Line().Program("/no/such/program x"), Command_Line().Program(directory.string()),
          Command_Line().Program("true").In((directory / "none").string()), Command_Line().Program("env").Program_At("/no/such/program")})
        EXPECT_TRUE(Run(none).failed) << none.line();
    EXPECT_EQ(Run(Command_Line().Program("env").Program_At("no_such_program")).message, "The program no_such_program was not found.");
}

TEST_F(Process, ABareNameIsLookedForInThePathAndThenWithTheSuite) {
    Program();
    const std::string suite = directory.string();
    EXPECT_EQ(Found_Program("tell.sh"), "");
    EXPECT_EQ(Found_Program("tell.sh", suite), suite + "/tell.sh");
    EXPECT_EQ(Found_Program("env", suite).substr(0, 1), "/");
    std::ofstream(directory / "env") << "#!/bin/false\n";
    fs::permissions(directory / "env", fs::perms::owner_all);
    EXPECT_NE(Found_Program("env", suite), suite + "/env");
    std::ofstream(directory / "copied") << "#!/bin/sh\n";
    for (const std::string& name : {std::string("copied"), suite + "/copied"})
        EXPECT_EQ(Run(Command_Line(suite).Program_At(name)).message, "The file of the program " + suite + "/copied may not be executed.");
    ASSERT_TRUE(Run(Command_Line(suite).Program("env").Program_At("tell.sh").File("now")).ok());
    EXPECT_EQ(Taken(), (Words{IOsDirName(), "now"}));
}

// Files of `/proc/self` below a directory: open files, threads.
std::size_t Count(const char* kind) {
    const fs::directory_iterator files(fs::path("/proc/self") / kind);
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

TEST_F(Process, ManyStartsLeaveNothingBehind) {
    const std::size_t files = Count("fd"), threads = Count("task");
    for (int i = 0; i < 200; ++i) ASSERT_TRUE(IOsCommand(Command_Line().Program("true")).ok());
    int status = 0;
    const auto end = std::chrono::steady_clock::now() + 20s;
    const auto nothing = [&] { return ::waitid(P_ALL, 0, nullptr, WEXITED | WNOHANG | WNOWAIT) < 0 && Count("task") == threads; };
    while (!nothing() && std::chrono::steady_clock::now() < end) std::this_thread::sleep_for(1ms);
    EXPECT_EQ(::waitpid(-1, &status, WNOHANG), -1) << "a program that ended still waits for its parent";
    EXPECT_EQ(errno, ECHILD);
    EXPECT_EQ(Count("task"), threads);
    EXPECT_EQ(Count("fd"), files);
}

// What waits in our own input is ours: a program that reads ends at once, and what was there is there still.
TEST_F(Process, AProgramReadsNothingOfOurs) {
    int ends[2] = {};
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], "ours", 4), 4);
    const int input = ::dup(STDIN_FILENO);
    ::dup2(ends[0], STDIN_FILENO);
    Running_Program running;
    const Status status = IOsCommand(Command_Line().Program("cp /dev/stdin").File(Told().string()), &running);
    const bool ended = running.Ended_Within(10s);
    ::dup2(input, STDIN_FILENO);
    ::close(ends[1]);  // whoever has taken it leaves an end to read
    char text[8] = {};
    EXPECT_EQ(::read(ends[0], text, sizeof text), 4);
    EXPECT_STREQ(text, "ours");
    EXPECT_TRUE(status.ok() && ended);
    EXPECT_EQ(fs::file_size(Told()), 0u);
    for (const int file : {input, ends[0]}) ::close(file);
}

}  // namespace
}  // namespace vntl
