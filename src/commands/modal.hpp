// The loop of a modal dialog. Repaints, resizes and timers of every window are served meanwhile, none of which touches the store, and so
// are the commands that the dialog lets through.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/status.hpp"

namespace vntl {

// What a dialog minds besides its buttons.
struct Modal_Routines {
    std::function<void(int)> changed = {};  // a field that the user changes
    std::function<void(int)> timer = {};    // a timer of the main window; none: the window serves it
};

// Runs the shown dialog until one of its buttons is pressed; the number of the button. The dialog stays loaded and selected.
int Run_Modal(int dialog, const Modal_Routines& routines = {});

// The loop of a window that holds the others back: serves it and its dialogs until it is closed, or `leaving` says that the program ends;
// it is closed then.
void Run_Window(int window, const bool& leaving);

// A box with the title of errors.
void Error_Box(std::string text);
void Error_Box(const Status& status);

// The dialog stays open below what it is told: marks a field, or a cell of a grid, of the dialog in front, and shows the box.
void Refuse_Field(int field, const std::string& text);
void Refuse_Cell(int grid, int column, int row, const std::string& text);

// The number in a field of the dialog in front; where its text is none a box that names the field, which is marked,
// and nothing.
std::optional<float> Number_In_Field(int field, std::string_view name);

// A field of a dialog for a number of a record, and the record that the fields of the dialog in front tell; nothing where one of them holds
// no number.
template <class Record>
struct Number_Field {
    int field;
    const char* label;
    float Record::*number;
};
template <class Record, std::size_t count>
std::optional<Record> Record_In_Fields(const Number_Field<Record> (&fields)[count]) {
    Record record;
    for (const Number_Field<Record>& field : fields) {
        const std::optional<float> number = Number_In_Field(field.field, field.label);
        if (!number) return {};
        record.*field.number = *number;
    }
    return record;
}

}  // namespace vntl
