#include "commands/file/save_list.hpp"

#include "commands/file/save_name.hpp"
#include "session/list_of_files.hpp"
#include "session/session.hpp"

namespace vntl {

Status Save_Buffer_File(Session& session, Ask& ask) {
    constexpr Save_Form form = {"Save Buffer Data File", "Buffer Data File (*.buf)|*.buf|", ".buf", "Over Write BUF file?",
                                "Unable to write buffer file!"};
    std::string text;
    if (Status status = List_Of_Rows(session, text); status.failed) return status;
    const std::string file = Name_To_Save(session.config, ask, form);
    return file.empty() ? Status::Cancel() : Note_Saved(session.interface, Save_Text(form, file, text), file);
}

}  // namespace vntl
