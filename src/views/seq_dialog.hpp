// The dialog "Generic Graphics Plots": which rows of a sequential refinement are drawn over which, and how.
#pragma once

#include "charts/seq_file.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

Dialog_Resource Seq_Dialog_Resource();

// Shows the texts and the kind of `plots`, and fills it as the user chooses; false, and nothing changes, on cancel.
bool Seq_Dialog(const Seq_File& file, Generic_Plots& plots);

}  // namespace vntl
