// PIK files: the text file of a fit, its parameters, flags and peaks.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "fit/fit_state.hpp"

namespace vntl {

// Replaces window, parameters, nodes and peaks by those of the file, and `kind` by what it is. On failure nothing changes; the message is
// the one to show.
Status Read_Pik_File(const std::string& file, Fit_State& state, std::vector<Background_Mark>& nodes, Fit_Kind& kind);
Status Read_Pik_Text(std::string_view text, Fit_State& state, std::vector<Background_Mark>& nodes, Fit_Kind& kind);

// The text of a file that reads back to the same state; active peaks alone.
std::string Pik_Text(Fit_Kind kind, const Fit_State& state, std::span<const Background_Mark> nodes, std::string_view title,
                     std::string_view scat_var);

// Its name: `stem` is the path of the pattern without its extension. Constant wavelength: behind the stem the ends of the window; it takes
// the place of an old file. Time of flight: a name that is free.
std::string Pik_Name(Fit_Kind kind, const Fit_State& state, std::span<const Background_Mark> nodes, const std::string& stem);

}  // namespace vntl
