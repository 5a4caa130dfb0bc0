// Menu "Calculations": sum, average, difference, shift and multiplication of rows, correction by an efficiency file.
//
// Each shows its dialog and gives back the text for the user, or is cancelled where he left it. A refusal leaves the store as it was.
#pragma once

#include <vector>

#include "base/ask.hpp"
#include "base/status.hpp"
#include "calc/arithmetic.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

std::vector<Dialog_Resource> Arithmetic_Dialog_Resources();

Status Sum_Profiles(Session&, Sum_Mode mode);
Status Difference_Profiles(Session&);
Status Multiply_Profiles(Session&);  // stays open until it is closed; draws each change at once
Status Efficiency_Correction(Session&, Ask&);

}  // namespace vntl
