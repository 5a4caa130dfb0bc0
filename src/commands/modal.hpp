// The loop of a modal dialog. Repaints, resizes and timers of every window are served meanwhile; none of them touches the store.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/status.hpp"

namespace vntl {

// Runs the shown dialog until one of its buttons is pressed; the number of the button. The dialog stays loaded. `command` is called with
// the commands of the main window that the dialog lets through, `changed` with each field that the user changes.
int Run_Modal(int dialog, const std::function<void(int)>& command = {}, const std::function<void(int)>& changed = {});

// A box with the title of errors.
void Error_Box(std::string text);
void Error_Box(const Status& status);

// The dialog stays open below what it is told: marks a field, or a cell of a grid, of the dialog in front, and shows the box.
void Refuse_Field(int field, const std::string& text);
void Refuse_Cell(int grid, int column, int row, const std::string& text);

// The number in a field of the dialog in front; where its text is none a box that names the field, which is marked,
// and nothing.
std::optional<float> Number_In_Field(int field, std::string_view name);

}  // namespace vntl
