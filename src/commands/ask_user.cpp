#include "commands/ask_user.hpp"

#include "commands/file/format_dialog.hpp"
#include "commands/file/raw_dialog.hpp"
#include "commands/progress_dialog.hpp"
#include "commands/select_files.hpp"
#include "commands/xspace/bank_dialog.hpp"
#include "commands/xspace/constants_dialogs.hpp"
#include "toolkit/window.hpp"

namespace vntl {

Box_Answer Ask_User::Box(const Message_Box& box) { return WMessageBox(box); }

std::vector<std::string> Ask_User::Select_Files(std::string_view title, std::string_view filter) {
    return vntl::Select_Files(config_, Select_Kind::open_multiple, filter, title);
}

std::optional<Format_Choice> Ask_User::Data_Format(const Format_Question& question) { return Data_Format_Dialog(question); }

std::optional<bool> Ask_User::Efficiency_Correction() { return Efficiency_Dialog(); }

bool Ask_User::Constants_Of_File(Constants_Kind kind, Conversion_Constants& file, const Constants_Check& check) {
    return File_Constants_Dialog(kind, file, check);
}

bool Ask_User::Constants_Of_Rows(Constants_Kind kind, std::vector<Conversion_Constants>& rows, const Constants_Check& check) {
    return Row_Constants_Dialog(kind, rows, check);
}

bool Ask_User::Banks_Of_Rows(Instrument_Question& question, const Bank_Check& check) { return Bank_Dialog(question, check); }

std::unique_ptr<Progress> Ask_User::Start_Progress(std::string_view title, int total) { return Start_Progress_Dialog(title, total); }

}  // namespace vntl
