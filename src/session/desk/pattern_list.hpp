// The list of patterns: what it tells of each row, and what is done in it. Rows count from 1.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/colour.hpp"

namespace vntl {

class Profile_Store;
struct Session;

// What the user calls the row; else the name of its file, and which of its patterns it is.
std::string Row_Name(const Profile_Store&, int row);
std::string Row_Name_By_File(const Profile_Store&, int row);

struct Listed_Row {
    std::string name, file;  // the file with its directory
    int points = 0;
    float temperature = 0, wavelength = 0;  // kelvin and angstrom, 0 where none is known
    bool shown = true;
    Colour colour = 0;  // of its curve
    bool operator==(const Listed_Row&) const = default;
};
std::vector<Listed_Row> Listed_Rows(const Session&);

// No change of the rows, and nothing to take back: which rows the next command of the list acts on. Others are chosen no more; what is no
// row of the store is passed over.
void Choose_Rows(Session&, const std::vector<int>& rows);

// The acts. Each is one change that can be taken back; false, and nothing is recorded, where all is so already.
bool Tick_Rows(Session&, const std::vector<int>& rows, bool shown);
bool Show_Alone(Session&, const std::vector<int>& rows);  // these and no others
// The rows, in their order, to the place before row `before`; behind the last one for one more than there are. Flags go with the rows.
bool Place_Rows(Session&, const std::vector<int>& rows, int before);
// The chosen rows, each a place up or down; the gaps between them stay.
bool Step_Chosen(Session&, bool down);
// Line breaks become blanks, and what is longer than `longest_name` is cut. Blank, or the name by the file: it is called by its file again.
inline constexpr std::size_t longest_name = 200;
bool Rename_Row(Session&, int row, std::string_view text);

// Whether the history could hold the rows, so that their deletion can be taken back.
bool Can_Come_Back(const Profile_Store&, const std::vector<int>& rows);

// What the form of the plot lets the list do.
bool May_Tick(const Session&);
bool May_Arrange(const Session&);  // move and delete

void Open_List(Session&, bool open);  // rows are chosen only while it is open

// States of the list's commands, as form and chosen rows have it.
void Show_List_Commands(Session&);

}  // namespace vntl
