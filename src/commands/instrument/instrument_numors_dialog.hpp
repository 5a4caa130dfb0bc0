// "KVR 2-axes Diffractometer and Numors": which runs of which instrument, and the input of the program that merges them.
#pragma once

#include "base/status.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Application;

Dialog_Resource Instrument_Numors_Dialog_Resource();

// Fills `app.series`, from which the next dialog begins, and writes the input file where that is wanted. The dialog stays open below what
// it refuses and a file that cannot be written. Fails with "Cancelled" where the user leaves it.
Status Instrument_Numors_Dialog(Application& app);

}  // namespace vntl
