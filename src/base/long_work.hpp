// A long work in a thread of its own: it tells how far it is, hears when it is to end, and its result is taken over by the main thread.
//
//   Long_Work<Fit> fit([data](Work_Control& control) { ... if (control.Cancelled()) break; ... return best; });
//   while (!fit.Ready_Within(20ms)) { serve the window; show fit.Control().Report(); }
//   std::optional<Fit> result = fit.Take();
//
// The work touches nothing that the main thread touches meanwhile: what it needs goes in by value, what it found comes out as the result.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace vntl {

struct Work_Report {
    int done = 0;      // steps
    std::string what;  // what is in hand
};

// What a work and who waits for it say to each other; from any thread.
class Work_Control {
public:
    bool Cancelled() const { return cancelled_; }
    void Cancel() { cancelled_ = true; }

    void Tell(Work_Report report) {
        const std::lock_guard lock(mutex_);
        report_ = std::move(report);
    }
    Work_Report Report() const {
        const std::lock_guard lock(mutex_);
        return report_;
    }

private:
    std::atomic<bool> cancelled_ = false;
    mutable std::mutex mutex_;
    Work_Report report_;
};

template <class Result>
class Long_Work {
public:
    // Where the system has no thread to give, the work is done before this returns.
    explicit Long_Work(std::function<Result(Work_Control&)> work) : shared_(std::make_unique<Shared>()) {
        shared_->work = std::move(work);
        try {
            thread_ = std::jthread([shared = shared_.get()] { shared->Run(); });
        } catch (const std::system_error&) {
            shared_->Run();
        }
    }
    // A work that nobody takes over is cancelled, and waited for.
    ~Long_Work() {
        if (shared_ != nullptr) shared_->control.Cancel();
    }
    Long_Work(Long_Work&&) noexcept = default;
    Long_Work& operator=(Long_Work&&) = delete;

    Work_Control& Control() { return shared_->control; }

    bool Ready_Within(std::chrono::milliseconds time) {
        std::unique_lock lock(shared_->mutex);
        return shared_->changed.wait_for(lock, time, [this] { return shared_->ready; });
    }

    // The result, once; waits where it is not ready. Nothing when the work broke off.
    std::optional<Result> Take() {
        if (thread_.joinable()) thread_.join();
        return std::move(shared_->result);
    }

private:
    struct Shared {
        Work_Control control;
        std::mutex mutex;
        std::condition_variable changed;
        bool ready = false;
        std::optional<Result> result;
        std::function<Result(Work_Control&)> work;

        void Run() {
            std::optional<Result> found;
            try {
                found = work(control);
            } catch (...) {
                // Memory that ran out, and the like: there is no result.
            }
            const std::lock_guard lock(mutex);
            result = std::move(found);
            ready = true;
            changed.notify_all();
        }
    };
    std::unique_ptr<Shared> shared_;
    std::jthread thread_;  // ends before what it shares
};

}  // namespace vntl
