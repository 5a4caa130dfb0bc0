// What scripts can print of the style in force.
#pragma once

#include "base/topic.hpp"

namespace vntl {

struct Session;

Topic Style_Topic(const Session&);  // its name, the look, and what the colours of a series run along

}  // namespace vntl
