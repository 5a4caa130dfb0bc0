#include "commands/dialogs.hpp"

#include "commands/help/about.hpp"
#include "commands/help/gestures.hpp"
#include "commands/progress_dialog.hpp"

namespace vntl {

std::vector<Dialog_Resource> Dialog_Resources() {
    return {About_Dialog_Resource(), Gestures_Dialog_Resource(), Progress_Dialog_Resource()};
}

}  // namespace vntl
