// Questions that the system may leave unanswered for minutes, as those about a share of the net whose server is away.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace vntl {

// Asks in a thread, and waits for the answer no longer than told; nothing where it did not come. The thread is left behind then: the
// question owns all that it touches, and until it is answered every other one about the same `place` is unanswered at once.
std::optional<bool> Answer_Within(std::chrono::milliseconds patience, const std::string& place, std::function<bool()> question);

}  // namespace vntl
