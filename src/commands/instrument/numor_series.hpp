// Runs of one instrument by their numbers, as the dialog that asks for them was left.
#pragma once

#include <string>

#include "instrument/rawmerge.hpp"

namespace vntl {

struct Numor_Series {
    Rawmerge_Input runs;      // a blank directory: the institute's tree
    bool compressed = false;  // names end in ".Z"
    bool saves_rawmerge = false, only_rawmerge = false;
    std::string rawmerge_file = "rawmerge.inp", rawmerge_directory;
};

}  // namespace vntl
