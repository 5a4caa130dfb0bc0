// The field of a dialog for the name of a file that will be written, with a button for the selector.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/ask.hpp"
#include "commands/file/save_name.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

class File_Entry {
public:
    struct Fields {
        int name, browse;
    };

    static std::vector<Dialog_Field> Row(Fields fields, const std::string& label);

    // `asked`: a name of which the user has said already that its file may be replaced.
    File_Entry(Fields fields, Configuration& config, Ask& ask, const Save_Form& form, std::string asked = {});

    void Browse(int dialog);  // the button was pressed
    // The full path of the name in the dialog in front, with the extension of the form, or `extension`, where it has none; empty for a
    // blank one. Nothing where it is refused, or the user keeps the file that is there: the dialog stays.
    std::optional<std::string> Take(std::string_view extension = {});

private:
    Fields fields_;
    Configuration& config_;
    Ask& ask_;
    Save_Form form_;
    std::string asked_;
};

}  // namespace vntl
