// Every dialog resource of the commands.
#pragma once

#include <vector>

#include "toolkit/dialog.hpp"

namespace vntl {

std::vector<Dialog_Resource> Dialog_Resources();

}  // namespace vntl
