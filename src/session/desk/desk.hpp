// What the program remembers of how its user works, beside the preferences: kept in a file of its own from one start to the next.
#pragma once

#include <string>
#include <string_view>

namespace vntl {

struct Configuration;
struct Environment_Prefs;

struct Desk {
    // Remembered.
    bool list_open = false;              // the list of patterns at the left
    int list_width = 0;                  // pixels, 0: as wide as it needs
    std::string style;                   // of pictures, blank: none was ever chosen
    bool series_by_temperature = false;  // colours of a series run along the temperatures, where all rows have one
    double export_width = 160;           // millimetres
    double export_height = 320.0 / 3;
    int export_dpi = 300;
    std::string export_style;   // blank: that of the screen
    std::string export_folder;  // blank: that of the data

    // For this run of the program.
    bool snap_to_maximum = false;  // a click that inserts a peak takes the highest point near it

    bool operator==(const Desk&) const = default;
};

// A name and a value each line. What is no line of it, or no value of its range, is passed over: the desk keeps what it had.
std::string Desk_Text(const Desk&);
void Read_Desk_Text(Desk&, std::string_view text);

// "vantrelo.desk" where the global settings are saved; empty without such a place.
std::string Desk_File(const Configuration&, const Environment_Prefs&);
void Read_Desk(Desk&, const std::string& file);         // a file that is not there, or no text, changes nothing
void Write_Desk(const Desk&, const std::string& file);  // unless it holds that already

}  // namespace vntl
