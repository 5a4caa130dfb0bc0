#include "commands/file/save_list.hpp"

#include "commands/application.hpp"
#include "commands/file/save_name.hpp"
#include "session/list_of_files.hpp"

namespace vntl {

void Save_Buffer_File(Application& app) {
    constexpr Save_Form form = {"Save Buffer Data File", "Buffer Data File (*.buf)|*.buf|", ".buf", "Over Write BUF file?",
                                "Unable to write buffer file!"};
    std::string text;
    if (const Status status = List_Of_Rows(app.session, text); status.failed) return app.ask.Error(status.message);
    const std::string file = Name_To_Save(app.session.config, app.ask, form);
    if (file.empty()) return;
    const Status status = Save_Text(form, file, text);
    app.failed |= status.failed;
    if (status.failed) app.ask.Error(status);
}

}  // namespace vntl
