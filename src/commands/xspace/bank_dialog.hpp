// The dialog "Constants of the rows": the banks of an instrument file, and which rows take which of them.
#pragma once

#include "base/ask.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

Dialog_Resource Bank_Dialog_Resource();

// False on cancel; the question is then as it was.
bool Bank_Dialog(Instrument_Question& question, const Bank_Check& check);

}  // namespace vntl
