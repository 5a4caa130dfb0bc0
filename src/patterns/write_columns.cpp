#include "patterns/write_columns.hpp"

#include <algorithm>

#include "base/edit_descriptor.hpp"
#include "base/real_parse.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

std::string Descriptor_Text(std::string_view letters, int width, int digits) {
    return '(' + std::string(letters) + std::to_string(width) + '.' + std::to_string(digits) + ')';
}

// Sign, digit, point and an exponent of four columns leave the others to the digits.
std::string Exponent_Text(int width) { return Descriptor_Text("1PE", width, width - 7); }

}  // namespace

Number_Column::Number_Column(int width, int digits, bool apart)
    : fixed_(digits == no_fixed_point ? Exponent_Text(width) : Descriptor_Text("F", width, digits)),
      exponent_(Exponent_Text(apart ? width - 1 : width)),
      apart_(apart) {}

void Number_Column::Put(std::string& out, float value) const {
    const std::size_t at = out.size();
    Edit_Writer(fixed_, out).Write(value);
    const bool fits = out[at] != '*' && (!apart_ || out[at] == ' ');
    if (fits) return;
    out.resize(at);
    if (apart_) out += ' ';
    Edit_Writer(exponent_, out).Write(value);
}

std::string Number_Column::Text(float value) const {
    std::string text;
    Put(text, value);
    return text;
}

float Read_Back(std::string_view text) {
    const std::string_view digits = Trim_Left(text);
    float value = 0;
    Parse_Float(digits.data(), digits.data() + digits.size(), value);
    return value;
}

std::string Without_Line_Ends(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return line;
}

std::string On_One_Line(std::string_view text) { return std::string(Trim(Without_Line_Ends(text))); }

}  // namespace vntl
