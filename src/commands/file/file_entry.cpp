#include "commands/file/file_entry.hpp"

#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/modal.hpp"

namespace vntl {

std::vector<Dialog_Field> File_Entry::Row(Fields fields, const std::string& label) {
    return {{.number = fields.name, .kind = Field_Kind::string, .label = label, .width = 44, .unseen_label = label == "Name"},
            {fields.browse, Field_Kind::push_button, "..."}};
}

File_Entry::File_Entry(Fields fields, Configuration& config, Ask& ask, const Save_Form& form, std::string asked)
    : fields_(fields), config_(config), ask_(ask), form_(form), asked_(std::move(asked)) {}

void File_Entry::Browse(int dialog) {
    const std::string file = Name_To_Save(config_, ask_, form_, std::string(Trim(WDialogGetString(fields_.name))));
    WDialogSelect(dialog);
    if (file.empty()) return;
    WDialogPutString(fields_.name, file);
    asked_ = file;
}

std::optional<std::string> File_Entry::Take(std::string_view extension) {
    const std::string name(Trim(WDialogGetString(fields_.name)));
    if (name.empty()) return name;
    std::string file = In_Directory(IOsDirName(), name);
    if (File_Part(file).empty() || IOsDirExists(file)) {
        Refuse_Field(fields_.name, "This is the name of a directory: " + file);
        return {};
    }
    if (Extension_Of(file).empty()) file += extension.empty() ? form_.extension : extension;
    if (file != asked_ && IOsFileExists(file) && !May_Overwrite(ask_, form_.overwrite_title)) return {};
    return file;
}

}  // namespace vntl
