// A fit as the user runs it: starting values, the run in a thread of its own, its end, its files.
#pragma once

#include "fit/fit_state.hpp"

namespace vntl {

struct Application;

// Asks for the starting values and fits row 1 with them.
void Fit_With_Dialog(Application& app, Fit_Kind kind);

}  // namespace vntl
