// Programs that are asked for one answer: what they get, what comes back, and what is told of those that do not answer.
#include "base/program_answer.hpp"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

namespace vntl {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class Asked_Program : public testing::Test {
protected:
    void SetUp() override {
        directory = fs::temp_directory_path() / ("asked " + std::to_string(::getpid()));
        fs::create_directories(directory);
    }
    void TearDown() override { fs::remove_all(directory); }

    std::string Script(const std::string& name, const std::string& text) const {
        const fs::path file = directory / name;
        std::ofstream(file) << "#!/bin/sh\n" << text << '\n';
        fs::permissions(file, fs::perms::owner_all);
        return file.string();
    }

    fs::path directory;
};

TEST_F(Asked_Program, GetsItsInputAndGivesItsAnswer) {
    const std::string back = Script("back", "exec cat"), input = std::string(3'000'000, 'x') + '\0' + "end";
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&, i] {
            Program_Answer answer;
            const std::string own = input + std::to_string(i);
            EXPECT_EQ(answer.Ask(back, own, 20s), Answer_End::answered);
            EXPECT_TRUE(answer.Bytes() == own);
            EXPECT_EQ(answer.Ask(back, "again", 20s), Answer_End::answered);
            EXPECT_EQ(answer.Bytes(), "again");
        });
    for (std::thread& thread : threads) thread.join();
    Program_Answer nothing;
    EXPECT_EQ(nothing.Ask(back, "", 20s), Answer_End::answered);
    EXPECT_EQ(nothing.Bytes(), "");
}

TEST_F(Asked_Program, HasNoOtherFiles) {
    const int other = dup2(STDIN_FILENO, 77);  // one of ours
    Program_Answer answer;
    EXPECT_EQ(answer.Ask(Script("files", "test -e /proc/$$/fd/77 && echo 77; echo told; echo lost >&2"), "", 20s), Answer_End::answered);
    EXPECT_EQ(answer.Bytes(), "told\n");
    close(other);
}

TEST_F(Asked_Program, EndsBySignalsThatWeDoNotHear) {
    sigset_t blocked, before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    Program_Answer answer;
    EXPECT_EQ(answer.Ask(Script("ended", "kill -TERM $$; echo alive"), "", 20s), Answer_End::broke_off);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST_F(Asked_Program, MayNotAnswer) {
    struct Row {
        std::string program;
        Answer_End end;
    };
    const Row rows[] = {
        {directory / "none", Answer_End::not_started},
        {"", Answer_End::not_started},
        {Script("fails", "echo half; exit 3"), Answer_End::broke_off},
        {Script("killed", "echo half; kill -SEGV $$"), Answer_End::broke_off},
        {Script("endless", "echo half; exec sleep 60"), Answer_End::too_late},
    };
    for (const auto& [program, end] : rows) {
        Program_Answer answer;
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(answer.Ask(program, "input", end == Answer_End::too_late ? 200ms : 20s), end) << program;
        EXPECT_EQ(answer.Bytes(), "") << program;
        EXPECT_LT(std::chrono::steady_clock::now() - start, end == Answer_End::too_late ? 3s : 15s) << program;
    }
}

}  // namespace
}  // namespace vntl
