// What a script's `print` tells of the program, as JSON lines.
#pragma once

#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "base/status.hpp"

namespace vntl {

struct Application;

// One object on one line; text that is not valid UTF-8 gets replacement characters.
void Write_Json_Line(std::ostream& output, const nlohmann::ordered_json& object);

// Runs `print` with these words behind it: "rows", "data 1 1 10", "menu 40014", "picture full", ... `dialog` is the dialog in front.
Status Print_State(Application&, std::ostream& output, int dialog, const std::vector<std::string>& words);

}  // namespace vntl
