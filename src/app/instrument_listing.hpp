// What the command line lists of runs and instruments, and the UB matrix that it writes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/status.hpp"

namespace vntl {

// The header of a run, compressed or not. `words`: its file, and perhaps the instrument; without it the directories above the file tell
// it, or the run itself.
Status List_Numor(const std::vector<std::string>& words, std::string& text);

struct Instrument_Request {
    std::string file;
    std::optional<std::string> ub;    // nine numbers, row by row: the new matrix of the file
    std::optional<std::string> wave;  // angstroms, written with it
};

// An instrument and its orientation, after the file was changed where that was asked for. What its reader warns of stands at the end.
Status List_Instrument(const Instrument_Request& request, std::string& text);

}  // namespace vntl
