#include "commands/file/save_name.hpp"

#include "base/os.hpp"
#include "commands/select_files.hpp"
#include "session/commands.hpp"

namespace vntl {

// The button that keeps the file has the focus: a line end too many must not cost a measurement.
bool May_Overwrite(Ask& ask, std::string_view title) {
    return ask.Box({Box_Buttons::yes_no, Box_Icon::question, 2, "The file exist,\nDo you want overwrite it?", std::string(title)}) ==
           Box_Answer::yes;
}

std::string Name_To_Save(Configuration& config, Ask& ask, const Save_Form& form, const std::string& proposed) {
    const auto chosen = Select_Files(config, Select_Kind::save_unasked, form.filter, form.selector_title, proposed);
    if (chosen.empty()) return {};
    std::string file = chosen.front();
    if (form.takes_place) file.resize(file.size() - Extension_Of(file).size());
    if (form.takes_place || (Extension_Of(file).empty() && !File_Part(file).empty())) file += form.extension;
    return IOsFileExists(file) && !May_Overwrite(ask, form.overwrite_title) ? std::string() : file;
}

Status Save_Text(const Save_Form& form, const std::string& file, std::string_view text) {
    if (!Can_Be_Written(file)) return Status::Fail_File(form.failure);
    if (Replace_File(file, text, form.use)) return Status::Done();
    return Status::Fail_File(std::string(form.failure) + "\nNothing of it was written; the disk may be full: " + file);
}

Status Note_Saved(Interface_State& bar, Status status, std::string_view file) {
    if (status.ok()) bar.Note("Saved: " + std::string(file));
    return status;
}

}  // namespace vntl
