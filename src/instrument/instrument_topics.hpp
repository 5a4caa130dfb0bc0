// Runs, calibrations and instruments, as scripts print them.
#pragma once

#include <string>
#include <vector>

#include "base/topic.hpp"

namespace vntl {

struct Data_Directories;
struct Instrument_State;

// numor FILE INSTRUMENT          a run, as its file stands: a compressed one is refused by its name
// calibration FILE INSTRUMENT    of detectors
// instrument [FILE]              that of a file, which becomes the current one, or the current one; the default as long as there is none
// found NUMOR INSTRUMENT [YEAR CYCLE]    where the file of a run lies; a compressed one is unpacked
// Names of files are relative to `directory`. Directories that nobody has told are initialised when they are first needed.
std::vector<Topic> Instrument_Topics(const std::string& directory, Data_Directories& directories, Instrument_State& current);

}  // namespace vntl
