// Questions that the system may leave unanswered.
#include "base/answer.hpp"

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <thread>

namespace vntl {
namespace {

using namespace std::chrono_literals;

TEST(Answer_Within, SilenceIsGivenUpAndAsksNobodyElseUntilItEnds) {
    EXPECT_EQ(Answer_Within(10s, "here", []() -> bool { throw std::runtime_error("refused"); }), false);

    const auto end = std::make_shared<std::promise<void>>();
    const std::shared_future<void> ended = end->get_future().share();
    const auto start = std::chrono::steady_clock::now();
    const auto silent = [ended] {
        ended.wait();
        return true;
    };
    EXPECT_EQ(Answer_Within(50ms, "away", silent), std::nullopt);
    EXPECT_EQ(Answer_Within(10s, "away", [] { return true; }), std::nullopt) << "at once";
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    EXPECT_EQ(Answer_Within(10s, "here", [] { return true; }), true) << "others are asked";
    end->set_value();
    std::optional<bool> answer;
    for (int i = 0; i < 500 && !answer; ++i, std::this_thread::sleep_for(10ms)) answer = Answer_Within(10s, "away", [] { return true; });
    EXPECT_EQ(answer, true) << "it is back";
}

TEST(Answer_Within, ManyMayAskAboutOnePlaceAtATime) {
    std::vector<std::future<std::optional<bool>>> asked;
    for (int i = 0; i < 20; ++i)
        asked.push_back(std::async(std::launch::async, [i] {
            return Answer_Within(10s, "here", [i] {
                std::this_thread::sleep_for(20ms);
                return i % 2 == 0;
            });
        }));
    for (std::size_t i = 0; i < asked.size(); ++i) EXPECT_EQ(asked[i].get(), i % 2 == 0) << i;
}

}  // namespace
}  // namespace vntl
