#include "commands/dialogs.hpp"

#include "commands/file/format_dialog.hpp"
#include "commands/help/about.hpp"

namespace vntl {

std::vector<Dialog_Resource> Dialog_Resources() { return {About_Dialog_Resource(), Format_Dialog_Resource()}; }

}  // namespace vntl
