// Time of a piece of work, for benchmarks that compare two of them.
#pragma once

#include <chrono>
#include <functional>

namespace vntl {

inline double Milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace vntl
