// Dialog "Page Setup": the printer, the paper, and where on it the picture stands.
#pragma once

#include <string>
#include <vector>

#include "base/ask.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/printer.hpp"

namespace vntl {

struct Configuration;

Dialog_Resource Page_Setup_Resource();

// `printers` are offered, and a PDF file, which `setup` names at first. False on cancel; `setup.file` is then, and where the user gave no
// name, not to be used.
bool Page_Setup_Dialog(Configuration&, Ask&, const std::vector<std::string>& printers, Page_Setup& setup);

}  // namespace vntl
