// The files of a fit, beside the pattern: the listing, the peaks, the resolution, and the curves of single peaks.
#pragma once

#include <string>
#include <vector>

#include "base/ask.hpp"
#include "session/fit.hpp"

namespace vntl {

// The files that could not be written, by name; none when all are there. `heading` is the listing's, made before the fit.
std::vector<std::string> Write_Fit_Files(const Session& session, const Fit_Problem& problem, const Fit_Result& result,
                                         const std::string& heading);

// One box for all of them; none where none is lost.
void Tell_Lost_Files(Ask& ask, const std::vector<std::string>& lost);

std::string Select_Pik_File(Ask& ask);  // blank when the user chose none
void Tell_Bad_Pik(Ask& ask, const Status& status);

}  // namespace vntl
