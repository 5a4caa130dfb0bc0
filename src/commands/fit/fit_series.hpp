// "Fit series...": the present model fitted to every profile that is shown, into one table.
#pragma once

#include "toolkit/dialog.hpp"

namespace vntl {

struct Application;

Dialog_Resource Fit_Series_Dialog_Resource();

// Asks for model, starting values and the name of the table, fits, writes the table, and tells in one box what came of it. Rows, lists and
// the state of the fit stay as they are.
void Fit_Shown_Rows(Application& app);

}  // namespace vntl
