// The dialog of a fit's starting values: every parameter with its flag, in grids.
#pragma once

#include <vector>

#include "base/status.hpp"
#include "fit/fit_state.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Application;

std::vector<Dialog_Resource> Fit_Dialog_Resources();

// Shows the fit's state and nodes, which Prepare_Starting_Values has made ready, and stores on "OK/Start Refinement" what was edited.
// Cancelled, and nothing changes, otherwise.
Status Edit_Starting_Values(Application& app, Fit_Kind kind);

}  // namespace vntl
