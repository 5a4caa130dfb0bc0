// The one entry to all pattern readers, and what is known of a file before it is read.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/format_table.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

// The format code that an extension ("xye" or ".XYE", any case) decides, 0 when the user has to be asked.
int Format_Of_Extension(std::string_view extension);

// True for an extension, written all small or all capital, that a reader serves (".xye", ".XYE", ".gr", ...), told or not:
// such a recent file opens as a pattern.
bool Is_Pattern_Extension(std::string_view extension);

// The format code that the name of a file decides, 0 when the user has to be asked. An extension that many programs write yields to
// contents that speak for a format, as columns in a .csv file do.
int Format_Of_File(const std::string& file);

// What speaks for the format of a file.
struct Recognition {
    int by_extension = 0;  // 0 where the extension does not decide
    int by_content = 0;    // 0 where its first lines speak for none
    bool certain = false;  // the content can be nothing else, whatever the extension says
    int banks = 1;         // patterns that it holds, where opening them all is for the user to say
    int code = 1;          // the format where nobody can be asked: by extension, else content, else the extension's usual one, else free;
                           // an extension that many programs write comes behind the content
    std::string binary;    // of a binary file: what it is told as, since no format will do
};
Recognition Recognise_Format(const std::string& file);

struct Read_Options {
    bool deviations = false;      // `sigma` holds standard deviations at the end
    std::string* head = nullptr;  // gets the lines above the numbers
    int bank = 0;                 // of a file that holds several, 0: bank 1, or the first
    Read_Notes* notes = nullptr;
};

// Reads the pattern of `filename` by the format `mode` (compared whole, without regard to case; any unknown text, or none, is
// the free format; "GSASTOF" may be followed by a bank number). On failure `pattern` is unchanged and the message is the reader's, of at
// most 150 characters.
Status Read_Pattern(const std::string& filename, Diffraction_Pattern_Type& pattern, std::string_view mode = {}, const Read_Options& = {});

// Reads several patterns of one file by the mode of a format whose files may hold several, or "XYSIGMA" (which holds one); another fails
// with "Invalid Mode". Fails as a whole when none can be read or, "ISIS", when there are more than `capacity`.
Status Read_Pattern_Mult(const std::string& filename, std::vector<Diffraction_Pattern_Type>& patterns, int capacity, std::string_view mode,
                         Read_Notes& notes);

}  // namespace vntl
