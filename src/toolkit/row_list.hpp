// A list of rows at the left of a window: a check box, a colour and texts each. It knows rows by their numbers, from 1, and nothing of
// what they are.
//
// What the user does in it becomes messages of the window; the list itself changes nothing but which rows look chosen, and shows what it
// is given. It takes the focus when the user clicks into it, goes there by Tab or F6, and gives it back by Escape or F6; it never asks for
// it by itself.
#pragma once

#include <string>
#include <vector>

#include "base/colour.hpp"
#include "toolkit/window.hpp"

namespace vntl {

struct Row_List_Resource {
    std::string title;
    std::string empty;                 // what stands there while there are no rows
    std::vector<std::string> columns;  // headings; check box, colour and the text that can be edited are in the first
    std::vector<Menu_Entry> menu;      // of the right button and the menu key
    int close_command = 0;             // of the window, for the button that closes the list
    int delete_command = 0;            // for the key Delete
};

struct Row_List_Row {
    bool ticked = true;
    Colour colour = 0;
    std::vector<std::string> cells;  // as many as there are columns; numbers stand at the right, a column that is blank in all rows goes
    std::string tip;
    bool operator==(const Row_List_Row&) const = default;
};

// All act on the window selected last. Opening and closing changes the size of its picture; no message tells of it.
void WListOpen(const Row_List_Resource& list, int width);  // pixels of the desktop, 0: a usual one; of one that is open: its new width
void WListClose();
bool WListIsOpen();
void WListPut(std::vector<Row_List_Row> rows);
void WListChoose(const std::vector<int>& rows);  // unless the user has chosen others meanwhile, which a message is still to tell
void WListPoint(int row);                        // marks it and scrolls to it; 0: none

struct Row_List_View {
    int width = 0;
    std::vector<Row_List_Row> rows;
    std::vector<int> chosen;
    int pointed = 0;
};
Row_List_View Describe_List();  // as it stands there; nothing where it is closed

}  // namespace vntl
