// What a script's `print` can tell of a space group that it names.
#pragma once

#include "base/topic.hpp"

namespace vntl {

Topic Space_Group_Topic();  // print spacegroup SYMBOL [MODE [STRING ..]]

}  // namespace vntl
