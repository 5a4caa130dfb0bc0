#include "commands/ask_user.hpp"

#include "commands/file/format_dialog.hpp"
#include "toolkit/window.hpp"

namespace vntl {

Box_Answer Ask_User::Box(const Message_Box& box) { return WMessageBox(box); }

std::vector<std::string> Ask_User::Select_Files(std::string_view title, std::string_view filter) {
    return WSelectFile(filter, Select_Kind::open_multiple, {}, title);
}

std::optional<int> Ask_User::Data_Format(int proposed) { return Data_Format_Dialog(session_, proposed); }

}  // namespace vntl
