// Where a command saves: the selector, the extension that a name lacks, and the question about a file that is there already.
#pragma once

#include <string>
#include <string_view>

#include "base/ask.hpp"
#include "base/status.hpp"
#include "base/write_file.hpp"

namespace vntl {

struct Configuration;
struct Interface_State;

// What a command calls its file.
struct Save_Form {
    std::string_view selector_title;
    std::string_view filter;           // of the selector
    std::string_view extension;        // that a name without a point gets; with its own point, empty for none
    std::string_view overwrite_title;  // of the question
    std::string_view failure;          // text of the box about a file that cannot be written
    bool takes_place = false;          // the extension takes the place of any that a name has
    File_Use use = File_Use::read;     // what is done with the file
};

// Asks before a file that is there is replaced.
bool May_Overwrite(Ask&, std::string_view title);

// The full path that the user chooses; empty where he leaves the selector, or keeps the file that is there. `proposed`: the name that
// stands in the selector at first.
std::string Name_To_Save(Configuration&, Ask&, const Save_Form& form, const std::string& proposed = {});

// Replaces the file in one step; what was there stays where that fails, and the failure says so.
Status Save_Text(const Save_Form& form, const std::string& file, std::string_view text);

// Says in the status bar that a file was saved, if it was.
Status Note_Saved(Interface_State& bar, Status status, std::string_view file);

}  // namespace vntl
