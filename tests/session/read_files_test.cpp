// Files that threads read ahead: how many at a time, how far ahead, in which order they are taken, and a reader that breaks off.
#include "session/read_files.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <new>

namespace vntl {
namespace {

using std::chrono_literals::operator""ms;

std::vector<std::string> Numbers(int count) {
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) names.push_back(std::to_string(i));
    return names;
}

// Waits for what another thread does, not for ever.
bool Comes(const std::atomic<bool>& what) {
    for (int i = 0; i < 10000 && !what; ++i) std::this_thread::sleep_for(1ms);
    return what;
}

TEST(Files_Ahead, ALongFileKeepsNoThreadFromThoseBehindIt) {
    const std::vector<std::string> names = Numbers(4);
    std::atomic<bool> third_read = false, passed = false;
    Progress progress;
    Files_Ahead ahead(
        names,
        [&](const std::string& path) {
            if (path == "0") passed = Comes(third_read);
            if (path == "2") third_read = true;
            return Read_File{.path = path};
        },
        2);
    for (const std::string& name : names) EXPECT_EQ(ahead.Take(progress).path, name);
    EXPECT_TRUE(passed);
}

TEST(Files_Ahead, ReadsAFewAtATimeAndStaysNearTheOneInTurn) {
    const std::vector<std::string> names = Numbers(60);
    Progress progress;
    for (const int threads : {1, 2, 5}) {
        std::atomic<int> at_a_time = 0, most = 0, begun = 0;
        Files_Ahead ahead(
            names,
            [&](const std::string& path) {
                const int now = ++at_a_time;
                for (int seen = most; now > seen && !most.compare_exchange_weak(seen, now);) continue;
                ++begun;
                std::this_thread::sleep_for(1ms);
                --at_a_time;
                return Read_File{.path = path};
            },
            threads);
        for (int taken = 0; const std::string& name : names) {
            EXPECT_LE(begun, taken + 2 * threads);
            EXPECT_EQ(ahead.Take(progress).path, name);
            ++taken;
        }
        EXPECT_LE(most, threads);
        EXPECT_EQ(begun, 60);
    }
}

TEST(Files_Ahead, AReaderThatBreaksOffFailsItsFileAlone) {
    const std::vector<std::string> names = Numbers(5);
    Progress progress;
    Files_Ahead ahead(
        names,
        [](const std::string& path) {
            if (path == "2") throw std::bad_alloc();
            return Read_File{.path = path};
        },
        2);
    for (const std::string& name : names) {
        const Read_File file = ahead.Take(progress);
        EXPECT_EQ(file.path, name);
        EXPECT_EQ(file.status.message, name == "2" ? "There is not enough memory to read it" : "");
    }
}

}  // namespace
}  // namespace vntl
