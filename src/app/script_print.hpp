// What a script's `print` tells of the program, as JSON lines.
#pragma once

#include <iosfwd>

#include "base/topic.hpp"

namespace vntl {

struct Application;

// One object on one line; text that is not valid UTF-8 gets replacement characters.
void Write_Json_Line(std::ostream& output, const Json& object);

// Runs `print` with these words behind it: "rows", "data 1 1 10", "menu 40014", "picture full", ... A room gives the topics of what it
// holds. Names of files are relative to `directory`.
// Nothing changes but the directories of runs, which are initialised when they are first needed.
Status Print_State(Application&, const std::string& directory, std::ostream& output, Words words);

}  // namespace vntl
