// The programs that are started, as scripts print them.
#pragma once

#include "base/topic.hpp"
#include "external/program_suite.hpp"

namespace vntl {

// programs [WIND|LINU|MACO]: those in use, or those of a system.
Topic Programs_Topic(const Program_Suite& in_use);

}  // namespace vntl
