// "Save Buffer file...": the names of the measured patterns as a list, which opens all of them again.
#pragma once

#include "base/ask.hpp"
#include "base/status.hpp"

namespace vntl {

struct Session;

Status Save_Buffer_File(Session&, Ask&);

}  // namespace vntl
