// A text file read once, and its lines as views into that one buffer.
//
// Files come from every machine a measurement ever ran on: lines end with LF, CR LF or a lone CR, mixed or not; a UTF-8
// byte-order mark may stand in front. Neither is part of a line.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "base/status.hpp"

namespace vntl {

// The bytes of a regular file. They are read into memory and not mapped, so that a file cut short by another program meanwhile is
// merely shorter. Directories, pipes and devices are refused without waiting for them.
class Text_File {
public:
    // At most `limit` bytes are read. The message names the file and the reason.
    Status Open(const std::string& file, std::size_t limit = static_cast<std::size_t>(-1));

    std::string_view Text() const { return {bytes_.get(), size_}; }  // byte-order mark dropped
    bool Marked() const { return marked_; }                          // one stood in front

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
    bool marked_ = false;
};

// `text` without a leading UTF-8 byte-order mark.
std::string_view Without_Mark(std::string_view text);

// `text` without the mark (Ctrl-Z) with which old systems ended a text.
std::string_view Without_End_Mark(std::string_view text);

// The first `width` characters of a line as UTF-8 (see To_Utf8), at a cost that does not grow with the line.
std::string Kept_Text(std::string_view line, std::size_t width);

// Number of lines that a Line_Cursor finds in the text.
std::size_t Count_Lines(std::string_view text);

// Walks the lines of a text. It can be copied, and a copy kept to come back to a line. The time for a whole walk grows with the
// text alone, whatever line ends it has.
class Line_Cursor {
public:
    explicit Line_Cursor(std::string_view text) : next_(text.data()), end_(text.data() + text.size()), lf_(nullptr), cr_(nullptr) {}

    bool Next(std::string_view& line);      // false at the end of the text
    int Number() const { return number_; }  // of the line taken last, from 1; 0 before the first

    // Goes on at a place in the line taken last or behind it, over lines that were read in another way and have no numbers.
    void Go_On_At(const char* place) { next_ = place; }
    bool At_End() const { return next_ == end_; }
    std::string_view Rest() const { return {next_, static_cast<std::size_t>(end_ - next_)}; }

private:
    const char* next_;
    const char* end_;
    const char* lf_;  // the LF and the CR found last, end_ for none; one before next_ is sought again
    const char* cr_;
    int number_ = 0;
};

}  // namespace vntl
