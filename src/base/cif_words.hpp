// The words of a CIF (Crystallographic Information File, Hall, Allen and Brown 1991):
//
//   data_name              begins a block
//   _item  value           a value may stand on the next line
//   _item 'a value' "another"  # and a comment
//   _item
//   ;a text of many lines
//   ;
//   loop_ _item_1 _item_2  heads of a table, then its values row by row, over as many lines as they need
//   1 2
//
// A quote closes where a blank or the end of the line follows it. A value that is not known is ?, one that does not apply is a point.
#pragma once

#include <string_view>

#include "base/text_file.hpp"

namespace vntl {

enum class Cif_Kind { value, item, loop, data, other, end };  // other: what else ends a table

struct Cif_Word {
    Cif_Kind kind = Cif_Kind::end;
    std::string_view text;  // without quotes
};

// Off the front of one line: a word, or what its quotes hold; false when nothing but blanks or a comment is left. A quote that does not
// close holds the rest of the line. `bare` (when given): the word has no quotes.
bool Take_Cif_Word(std::string_view& line, std::string_view& word, bool* bare = nullptr);

// Whether a value tells something: neither blank nor one of the two marks.
bool Cif_Value_Known(std::string_view value);

// Walks the words of a text, which must outlive it.
class Cif_Words {
public:
    explicit Cif_Words(std::string_view text) : lines_(text) {}

    Cif_Word Next();

    // What is behind the word taken last, up to the end of the text.
    std::string_view Rest() const;

    // Goes on at a place in Rest(), behind what was read in another way. It is no begin of a text between semicolons.
    void Go_On_At(const char* place) {
        lines_.Go_On_At(place);
        rest_ = {place, 0};
    }

    // The line where a text between semicolons begins that nothing closes; 0 when there is none so far.
    int Unclosed_Text() const { return unclosed_; }

private:
    Cif_Word Take_Text(std::string_view line);

    Line_Cursor lines_;
    std::string_view rest_;  // of the line at hand
    int unclosed_ = 0;
};

}  // namespace vntl
