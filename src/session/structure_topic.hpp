// Structure files, as scripts print them.
#pragma once

#include <string>

#include "base/topic.hpp"

namespace vntl {

// structure FILE [MODE]. Names of files are relative to `directory`.
Topic Structure_Topic(const std::string& directory);

}  // namespace vntl
