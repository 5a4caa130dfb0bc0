// The dialog "Raw Data (Efficiency Correction)".
#pragma once

#include <optional>

#include "toolkit/dialog.hpp"

namespace vntl {

Dialog_Resource Raw_Dialog_Resource();

// Whether counts are divided by the efficiencies of their detectors; nothing on cancel.
std::optional<bool> Efficiency_Dialog();

}  // namespace vntl
