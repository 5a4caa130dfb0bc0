// What scripts can print of the window in front.
#pragma once

#include <vector>

#include "base/topic.hpp"

namespace vntl {

std::vector<Topic> Window_Topics();  // dialog, picture, timers

}  // namespace vntl
