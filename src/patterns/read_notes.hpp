// What there is to tell of a file beside its patterns.
#pragma once

#include <string>
#include <vector>

namespace vntl {

struct Read_Notes {
    std::vector<std::string> failed;    // its patterns that could not be read, a sentence each: "Bank 3: Error in ..."
    std::vector<std::string> warnings;  // what was left out of the others, or what they cannot be trusted in; no file name in them
};

}  // namespace vntl
