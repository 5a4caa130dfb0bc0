// The one entry to all pattern readers, and the table of formats.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/status.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

// One row of the format table: `format_code` is its place, from 1.
struct Pattern_Format {
    int code;                      // 1 to 15
    std::string_view mode;         // given to Read_Pattern, and the `format` of the profile
    std::string_view description;  // text of the radio button of the dialog "Format of the data file"
    int field;                     // number of that button
    bool built;                    // a reader for it exists
};

std::span<const Pattern_Format> Pattern_Formats();

// The format code that an extension ("xye" or ".XYE", any case) decides, 0 when the user has to be asked.
int Format_Of_Extension(std::string_view extension);

// True for an extension, written all small or all capital, that a reader serves (".xye", ".XYE", ".gr", ...), told or not:
// such a recent file opens as a pattern.
bool Is_Pattern_Extension(std::string_view extension);

// The format of a file where nobody can be asked: by its extension, else by what its first lines hold; 1, the free format, when nothing
// speaks for another.
int Recognised_Format(const std::string& file);

// Reads the pattern of `filename` by the format `mode` (compared whole, without regard to case; any unknown text, or none, is
// the free format). On failure `pattern` is unchanged and the message is the reader's, of at most 150 characters.
Status Read_Pattern(const std::string& filename, Diffraction_Pattern_Type& pattern, std::string_view mode = {});

}  // namespace vntl
