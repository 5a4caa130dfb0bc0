// What the user is asked before peaks are written for a program.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/status.hpp"
#include "external/peaks_file.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

std::vector<Dialog_Resource> Peaks_Dialog_Resources();

// Makes the file of what the fields hold; where that fails the dialog stays open below the reason.
template <class Input>
using Make_Peaks_File = std::function<Status(const Input&)>;

// Each shows the values, and `unit`, in which the positions stand, until a file is made. Fails on cancel.
Status Ask_Dicvol(const Dicvol_Input& input, const std::string& unit, const Make_Peaks_File<Dicvol_Input>& make);
Status Ask_Ito(const Ito_Input& input, const std::string& unit, const Make_Peaks_File<Ito_Input>& make);
Status Ask_Treor(const Treor_Input& input, const std::string& unit, const Make_Peaks_File<Treor_Input>& make);
Status Ask_Vecfind(const Vecfind_Input& input, const std::string& unit, const Make_Peaks_File<Vecfind_Input>& make);

}  // namespace vntl
