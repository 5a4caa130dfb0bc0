// The dialog that prepares the input of Radiox.
#pragma once

#include <string>

#include "toolkit/dialog.hpp"

namespace vntl {

struct Application;

Dialog_Resource Osl_Dialog_Resource();

// Shows the dialog with the values of `pdf`, which has those of its fields when it closes, whichever button closes it. True where the user
// wants Radiox to run on the file that was written, `osl_file`, named as he named it.
bool Radiox_Osl_Dialog(Application&, std::string& osl_file);

// The command: the dialog, and Radiox after it.
void Prepare_Osl(Application&);

}  // namespace vntl
