// A work in a thread of its own: result, report, cancel, and what breaks off.
#include "base/long_work.hpp"

#include <gtest/gtest.h>
#include <pthread.h>

#include <new>

namespace vntl {
namespace {

using std::chrono_literals::operator""ms;

TEST(Long_Work, GivesItsResultAndTellsHowFarItIs) {
    std::atomic<bool> go_on = false;
    Long_Work<int> work([&go_on](Work_Control& control) {
        control.Tell({3, "chi2 1.5"});
        while (!go_on) std::this_thread::sleep_for(1ms);
        return 42;
    });
    while (work.Control().Report().done == 0) EXPECT_FALSE(work.Ready_Within(1ms));
    EXPECT_EQ(work.Control().Report().what, "chi2 1.5");
    go_on = true;
    EXPECT_TRUE(work.Ready_Within(10000ms));
    EXPECT_EQ(work.Take(), 42);
}

TEST(Long_Work, ACancelledOneKeepsTheBestThatItHas) {
    Long_Work<int> work([](Work_Control& control) {
        int steps = 0;
        for (; !control.Cancelled(); ++steps) std::this_thread::sleep_for(1ms);
        return steps > 0 ? 7 : 0;
    });
    EXPECT_FALSE(work.Ready_Within(20ms));
    work.Control().Cancel();
    EXPECT_EQ(work.Take(), 7);
}

TEST(Long_Work, OneThatNobodyTakesEnds) {
    std::atomic<bool> ended = false;
    {
        Long_Work<int> work([&ended](Work_Control& control) {
            while (!control.Cancelled()) std::this_thread::sleep_for(1ms);
            ended = true;
            return 0;
        });
    }
    EXPECT_TRUE(ended);
}

TEST(Long_Work, OneThatBreaksOffHasNoResult) {
    Long_Work<std::string> work([](Work_Control&) -> std::string { throw std::bad_alloc(); });
    EXPECT_FALSE(work.Take().has_value());
}

TEST(Long_Work, OneWithoutAThreadIsDoneAtOnce) {
    pthread_attr_t before, too_large;  // a stack larger than all addresses: no thread starts
    ASSERT_EQ(pthread_getattr_default_np(&before), 0);
    pthread_attr_init(&too_large);
    pthread_attr_setstacksize(&too_large, std::size_t{1} << 48);
    ASSERT_EQ(pthread_setattr_default_np(&too_large), 0);
    const auto here = std::this_thread::get_id();
    {
        Long_Work<bool> work([here](Work_Control&) { return std::this_thread::get_id() == here; });
        EXPECT_TRUE(work.Ready_Within(0ms));
        EXPECT_EQ(work.Take(), true);
    }
    pthread_setattr_default_np(&before);
}

}  // namespace
}  // namespace vntl
