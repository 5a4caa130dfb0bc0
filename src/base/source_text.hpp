// A text under edit and the bytes of the file that it came from, so that what is not edited goes back byte for byte: line ends of every
// kind, letters of Latin-1 beside those of UTF-8, a byte-order mark, a last line without an end.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vntl {

class Source_Text {
public:
    Source_Text() = default;
    explicit Source_Text(std::string bytes);

    const std::string& Bytes() const { return bytes_; }
    std::vector<std::string> Lines() const;  // in UTF-8, without their ends; always one more than there are ends

    // The bytes of a file with these lines. A line that stands in the source too, in the same order, keeps its bytes and its end. Of lines
    // that were changed the last keeps the end of the last, and each has the encoding that stood there.
    std::string Bytes_Of(const std::vector<std::string>& lines) const;

private:
    struct Line {
        std::size_t begin, size, end_size;
    };
    struct Letters {
        bool narrow = false, wide = false;  // bytes that are no UTF-8; letters of UTF-8 beyond ASCII
    };
    std::string_view Text(const Line& line) const { return std::string_view(bytes_).substr(line.begin, line.size); }
    std::string_view End(std::size_t line) const {
        return std::string_view(bytes_).substr(lines_[line].begin + lines_[line].size, lines_[line].end_size);
    }
    Letters Letters_Of(std::size_t first, std::size_t last) const;
    bool Narrow(std::size_t first, std::size_t last, bool otherwise) const;

    std::string bytes_;
    std::vector<Line> lines_ = {{0, 0, 0}};
    std::string_view usual_end_ = "\n";  // the one that most lines have
    bool mostly_narrow_ = false;
};

// For each line of `now` the line of `old` that it still is, or none: both rise together.
inline constexpr std::size_t no_line = static_cast<std::size_t>(-1);
std::vector<std::size_t> Kept_Lines(const std::vector<std::string>& old, const std::vector<std::string>& now);

}  // namespace vntl
