#include "charts/keyword_lines.hpp"

#include <algorithm>

#include "base/real_parse.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

constexpr std::size_t largest_file = std::size_t{256} << 20;
constexpr std::string_view no_lines = "No lines could be read", blanks = " \t";

char Small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

Status Fail_In_File(std::string_view message, std::string_view where, const std::string& file) {
    return Status::Fail_File(std::string(message) + '\n' + std::string(where) + file);
}

Status Open_Keyword_File(const std::string& file, Text_File& text) {
    if (const Status status = text.Open(file, largest_file + 1); status.failed)
        return Status::Fail_File(std::string(no_lines) + '\n' + status.message);
    if (text.Text().size() > largest_file) return Fail_In_File("The file is larger than 256 MB", "", file);
    return Without_End_Mark(text.Text()).empty() ? Fail_In_File(no_lines, "", file) : Status::Done();
}

std::optional<std::string_view> Value_Of(std::string_view line, std::string_view keyword) {
    const auto* const at =
        std::search(line.begin(), line.end(), keyword.begin(), keyword.end(), [](char a, char b) { return Small(a) == b; });
    if (at == line.end()) return {};
    const std::size_t behind = line.find_first_of(blanks, static_cast<std::size_t>(at - line.begin()) + keyword.size());
    return behind == std::string_view::npos ? std::string_view{} : Trim(line.substr(behind));
}

std::optional<int> Whole_Number(std::string_view value) {
    const char* next = value.data();
    const char* const end = next + value.size();
    int number = 0;
    if (!Parse_Int(next, end, number) || (next != end && *next != ',' && !Contains(blanks, {next, 1}))) return {};
    return number;
}

std::string_view Leading_Word(std::string_view text) {
    text = Trim_Left(text);
    return text.substr(0, text.find_first_of(blanks));
}

}  // namespace vntl
