// What a user chooses of a picture in a file: one dialog for each driver.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/ask.hpp"
#include "commands/file/export/preview.hpp"
#include "commands/file/export_picture.hpp"
#include "commands/file/save_name.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/hardcopy.hpp"

namespace vntl {

struct Configuration;

std::vector<Dialog_Resource> Hardcopy_Options_Resources();

// Filter and extension of the driver's files in a selector.
const Save_Form& Hardcopy_Form(Hardcopy_Driver driver);

struct Hardcopy_Choice {
    std::string file = {};  // as the dialog proposes it; then a full path, blank where the user gave none
    Hardcopy_Options options = {};
    bool to_clipboard = false;  // in place of the file

    // Of an export, whose dialog makes of them what the options say of size and density.
    Picture_Size size = {};  // in millimetres
    bool keep_shape = true;  // while the size is changed
    std::string style = {};  // blank: that of the screen
};

// The picture of an export, and the styles that it is drawn in besides that of the screen.
struct Picture_Source {
    Picture_Preview::Source in_style;
    std::vector<std::string> styles;
};

// The options of an export; false on cancel. The user has said already that the file that `choice` names may be replaced.
bool Hardcopy_Options_Dialog(Configuration&, Ask&, Hardcopy_Driver driver, Hardcopy_Choice& choice, const Picture_Source& source);

// The options of a page that is printed as PostScript. Its further button "Printer..." calls `to_printer`, which says whether the page went
// there: then there is no more to do, and the dialog ends as by cancelling.
bool Print_Options_Dialog(Configuration&, Ask&, Hardcopy_Choice& choice, bool printer_known, const std::function<bool()>& to_printer);

}  // namespace vntl
