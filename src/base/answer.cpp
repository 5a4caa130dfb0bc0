#include "base/answer.hpp"

#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>

namespace vntl {

namespace {

// Shared with the threads that are left behind, which may outlive everything else.
struct Open_Questions {
    std::mutex mutex;
    std::condition_variable answered;
    std::multiset<std::string> late;  // places of questions that nobody waits for any longer
};

struct Question {
    std::optional<bool> answer;
    bool late = false;
};

const std::shared_ptr<Open_Questions>& Questions() {
    static const auto questions = std::make_shared<Open_Questions>();
    return questions;
}

bool Answer(const std::function<bool()>& question) {
    try {
        return question();
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

std::optional<bool> Answer_Within(std::chrono::milliseconds patience, const std::string& place, std::function<bool()> question) {
    const std::shared_ptr<Open_Questions> all = Questions();
    const auto asked = std::make_shared<Question>();
    std::unique_lock lock(all->mutex);
    if (all->late.contains(place)) return {};
    try {
        std::thread([all, asked, place, question] {
            const bool answer = Answer(question);
            const std::lock_guard guard(all->mutex);
            asked->answer = answer;
            if (asked->late) all->late.erase(all->late.find(place));
            all->answered.notify_all();
        }).detach();
    } catch (const std::system_error&) {  // no thread can be had
        lock.unlock();
        return Answer(question);
    }
    asked->late = !all->answered.wait_for(lock, patience, [&] { return asked->answer.has_value(); });
    if (asked->late) all->late.insert(place);
    return asked->answer;
}

}  // namespace vntl
