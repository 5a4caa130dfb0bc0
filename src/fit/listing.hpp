// The listing of a fit, "_pf.out".
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "fit/fit_state.hpp"
#include "fit/least_squares.hpp"

namespace vntl {

// Program and version, what was read, starting values and their flags.
std::string Listing_Heading(Fit_Kind kind, const Fit_State& start, std::span<const Background_Mark> nodes, std::string_view title,
                            std::string_view scat_var, int npvar);

// The table of final values with their standard deviations.
std::string Listing_Values(Fit_Kind kind, const Fit_State& fitted, std::span<const Background_Mark> nodes);

// The two lines that tell how a fit ended and its chi-square, with the line end `eol` between them.
std::string End_Of_Fit_Text(const std::string& infout, float chi2, std::string_view eol);

}  // namespace vntl
