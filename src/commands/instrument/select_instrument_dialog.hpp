// "KVR Instrument": a group, a type, the name.
#pragma once

#include <string>
#include <string_view>

#include "toolkit/dialog.hpp"

namespace vntl {

Dialog_Resource Select_Instrument_Dialog_Resource();

// The name of the instrument that the user chooses, at most four characters; blank on cancel. `proposed` is chosen at first, where it is
// one of them.
std::string Select_Instrument_Dialog(std::string_view proposed);

}  // namespace vntl
