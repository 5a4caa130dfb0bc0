// The lines above columns of numbers, and what they say of them.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "base/text_file.hpp"
#include "patterns/columns/column_names.hpp"
#include "patterns/columns/column_rows.hpp"

namespace vntl {

struct Column_Head {
    std::vector<std::string_view> lines;  // without blank ones and, of a block, without its marks
    int free_lines = 0;                   // those that are no comments and name no columns
    bool block = false;                   // a comment of several lines stands in front
    bool open = false;                    // the text ended within the head
    bool foreign = false;                 // another format has such a line
    bool names_marked = false;            // the line that names columns is a comment
    std::optional<Column_Roles> names;    // of the columns, by the last line that has any
    Row_Shape shape;                      // of the first row
    Column_Roles Roles() const;           // by the names, or the first columns
};

bool Is_Column_Comment(std::string_view line);

// The lines up to the first row, at which the cursor then stands. `strict`: a line of another format, or several lines of free text, end it
// as a head that is foreign.
Column_Head Read_Column_Head(Line_Cursor& lines, bool strict);

}  // namespace vntl
