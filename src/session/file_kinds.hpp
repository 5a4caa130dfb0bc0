// The kinds of file that the program knows, and which doors each may come through.
//
// A new kind is a row of the table and the routines that open and read it.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace vntl {

struct Open_Result;
struct Read_File;
struct Session;
class Ask;

enum class File_Kind { pattern, refined_profile, raw_data, numor, list_of_files, constants, generic_plots, solid, script };

// How letters of an extension must be written at a door.
enum class Letters { closed, any, small_or_capital };

struct File_Kind_Row {
    File_Kind kind;
    bool (*has)(std::string_view extension);  // in small letters, with its point
    std::string_view selector_title, filter_label;
    std::string (*filter)();     // patterns of names, parted by semicolons
    Letters start;               // one file on the command line
    Letters recent;              // an entry of the recent files
    std::string_view statement;  // of a recording, empty for none
    // One file that came alone: asks what must be asked. None for what makes no rows: a window of its own shows it, or it is a script.
    Open_Result (*open)(Session&, Ask&, const std::string& name);
    // One of several, of a command line or a drop, read in any thread; none where it is looked at as a pattern, as what has no row is. In
    // place of a list its files are read.
    Read_File (*read)(const std::string& path);
};

std::span<const File_Kind_Row> File_Kinds();

// The row that an extension, or that of a name, belongs to, whatever its letters; null for none.
const File_Kind_Row* File_Kind_Of(std::string_view name);

// The row for which a door is open to a name. A file that is there, and that no row lets in as its name is written, comes in all the same
// where its extension is known in other letters, or where its contents speak for a format.
const File_Kind_Row* Starts_With(std::string_view name);
const File_Kind_Row* Recent_As(std::string_view name);

// What a selector of the kind takes as its filter.
std::string Selector_Filter(const File_Kind_Row& row);
const File_Kind_Row& Row_Of(File_Kind kind);

}  // namespace vntl
