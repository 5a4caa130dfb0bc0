// Lists of files (.buf): the patterns of a measurement, to be opened again with one command.
//
//   COMMENT  with the new furnace       such lines open the list, and may both lack
//   TITLE    Al2O3, heating             stands as the title of each pattern
//   /home/ana/al2o3/300K.xye            a file a line, blanks at its ends cut
//   heating/320K.xye                    seen from the directory of the list
//   " odd name.xye"                     between double quotes blanks stay
//
// The first other line ends the opening: a file behind it may be called TITLE.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

struct File_List {
    std::string comment, title;      // UTF-8, as wide as titles are; of several lines the last one holds
    std::vector<std::string> names;  // as the files are called, byte for byte
    int first_left_out = 0;          // line from which on names were left out, 0 for none
};

// At most `most_names` are taken. Fails, naming the line, where one can be no name; a text without any is an empty list.
Status Read_File_List(std::string_view text, std::size_t most_names, File_List& list);

// What is read as these names. A name can stand in a list when it is not blank and has no line break.
std::string File_List_Text(std::span<const std::string> names);
bool Can_Be_Listed(std::string_view name);

}  // namespace vntl
