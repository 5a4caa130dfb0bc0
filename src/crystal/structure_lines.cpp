#include "crystal/structure_lines.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "crystal/structure_readers.hpp"

namespace vntl {

namespace {

constexpr std::string_view blanks = " \t";
constexpr double largest_value = 1e6;  // of a coordinate, an occupancy or a displacement that can be meant

}  // namespace

std::string_view First_Word(std::string_view line) {
    line = Trim_Left(line);
    return line.substr(0, line.find_first_of(blanks));
}

std::vector<std::string_view> Words_Of(std::string_view line) {
    std::vector<std::string_view> words;
    for (std::size_t at = line.find_first_not_of(blanks); at != std::string_view::npos;) {
        const std::size_t end = std::min(line.find_first_of(blanks, at), line.size());
        words.push_back(line.substr(at, end - at));
        at = line.find_first_not_of(blanks, end);
    }
    return words;
}

std::string_view Without_Comment(std::string_view line) { return Trim(line.substr(0, line.find('!'))); }

Status Read_Number(std::string_view word, double& value) {
    double read = 0;
    if (word.find(',') != std::string_view::npos) return Status::Fail(bad_format);
    if (Status status = Read_Line_Of_Numbers(word, {&read, 1}); status.failed) return status;
    if (std::fabs(read) > largest_value) return Status::Fail(bad_format);
    value = read;
    return Status::Done();
}

Status Read_Number(std::string_view word, float& value) {
    double read = 0;
    const Status status = Read_Number(word, read);
    if (!status.failed) value = static_cast<float>(read);
    return status;
}

Status Read_Numbers(Line_Words words, std::size_t first, std::span<double> values) {
    if (words.size() < first + values.size()) return Status::Fail(blank_line);
    for (std::size_t i = 0; i < values.size(); ++i)
        if (Status status = Read_Number(words[first + i], values[i]); status.failed) return status;
    return Status::Done();
}

Status Read_Cell_Line(std::string_view line, Crystal_Cell_Type& cell) {
    std::array<double, 6> values = {};
    if (Status status = Read_Line_Of_Numbers(line, values); status.failed) return status;
    std::array<float, 6> told = {};
    for (std::size_t i = 0; i < told.size(); ++i) told[i] = static_cast<float>(values[i]);
    return Set_Crystal_Cell({told[0], told[1], told[2]}, {told[3], told[4], told[5]}, cell);
}

Status Refused(std::string_view reason, const Structure_Line& line) {
    constexpr std::size_t shown = 60;
    return Status::Fail(std::string(reason) + ": line " + std::to_string(line.number) + ": " + Kept_Text(Trim(line.text), shown));
}

}  // namespace vntl
