// Files that hold no text and are none of the binary formats either: archives, pictures, measurements in a version that is not known. No
// reader takes one, and what a reader of text would say of it ("Number of Comment lines was exceeded") helps nobody.
#pragma once

#include <string>
#include <string_view>

namespace vntl {

// Holds control bytes that texts do not, in their number. A few are passed over: titles may hold what a program left there.
bool Is_Binary(std::string_view head);

// Begins as an archive or a picture does and no text may, so that no reader need look at it.
bool Is_Archive_Or_Picture(std::string_view text);

// What a binary file is told as, with its kind where that is known: "This is a binary file (zip archive), which no reader takes". Blank for
// a text, for one of wide characters with a byte-order mark, and for a file whose contents speak for a format in spite of a stray byte.
std::string Binary_Refusal(std::string_view text);

}  // namespace vntl
