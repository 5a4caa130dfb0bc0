// What a user chooses of a picture in a file: one dialog for each driver.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/ask.hpp"
#include "commands/file/save_name.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/hardcopy.hpp"

namespace vntl {

struct Configuration;

std::vector<Dialog_Resource> Hardcopy_Options_Resources();

// Filter and extension of the driver's files in a selector.
const Save_Form& Hardcopy_Form(Hardcopy_Driver driver);

struct Hardcopy_Choice {
    std::string file;  // as the dialog proposes it; then a full path, blank where the user gave none
    Hardcopy_Options options;
    bool to_clipboard = false;  // in place of the file
};

// False on cancel. `may_replace`: the user has said already that the file that `choice` names may be replaced.
bool Hardcopy_Options_Dialog(Configuration&, Ask&, Hardcopy_Driver driver, Hardcopy_Choice& choice, bool may_replace);

// The same for a page that is printed as PostScript. Its further button "Printer..." calls `to_printer`, which says whether the page went
// there: then there is no more to do, and the dialog ends as by cancelling.
bool Print_Options_Dialog(Configuration&, Ask&, Hardcopy_Choice& choice, bool printer_known, const std::function<bool()>& to_printer);

}  // namespace vntl
