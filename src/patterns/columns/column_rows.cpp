#include "patterns/columns/column_rows.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/real_parse.hpp"
#include "base/text.hpp"

namespace vntl {

namespace {

constexpr float no_number = std::numeric_limits<float>::quiet_NaN();

bool Is_Gap(char c) { return c == ' ' || c == '\t'; }
bool Ends_Field(char c) { return Is_Gap(c) || c == ','; }

const char* Skip_Gap(const char* at, const char* end) {
    while (at != end && Is_Gap(*at)) ++at;
    return at;
}

// Behind the field that begins here, one comma included.
const char* Behind_Gap(const char* at, const char* end) {
    at = Skip_Gap(at, end);
    return at != end && *at == ',' ? Skip_Gap(at + 1, end) : at;
}

const char* Behind_Word(const char* at, const char* end) {
    if (at != end && *at == '"') {
        const char* const close = std::find(at + 1, end, '"');
        if (close != end) at = close;
    }
    while (at != end && !Ends_Field(*at)) ++at;
    return at;
}

bool Is_Word_For_None(std::string_view field) {
    return field.empty() || field == "-" || field == "--" || Equal_No_Case(field, "nan") || Equal_No_Case(field, "na") ||
           Equal_No_Case(field, "null") || Equal_No_Case(field, "none");
}

// A whole field, with a decimal comma where the file has them.
bool Take_Field(std::string_view field, bool decimal_comma, float& value) {
    field = Trim(field);
    if (field.size() > 1 && field.front() == '"' && field.back() == '"') field = Trim(field.substr(1, field.size() - 2));
    value = no_number;
    if (Is_Word_For_None(field)) return true;
    std::array<char, 64> digits{};
    if (field.size() > digits.size()) return false;
    std::copy(field.begin(), field.end(), digits.begin());
    if (decimal_comma) std::replace(digits.begin(), digits.end(), ',', '.');
    const char* const end = digits.data() + field.size();
    return Parse_Float(digits.data(), end, value) == end;
}

// The fields of a line, each to `take` with its place until it gives false.
template <class Take>
void Walk_Fields(std::string_view line, bool semicolons, bool decimal_comma, Take take) {
    std::size_t place = 0;
    if (semicolons) {
        for (line = Trim(line); !line.empty(); ++place) {
            const std::size_t stop = std::min(line.find(';'), line.size());
            if (!take(place, line.substr(0, stop))) return;
            line.remove_prefix(std::min(stop + 1, line.size()));
        }
        return;
    }
    const char* at = Skip_Gap(line.data(), line.data() + line.size());
    const char* const end = line.data() + line.size();
    for (; at != end; ++place) {
        const char* stop = at;
        if (decimal_comma)
            while (stop != end && !Is_Gap(*stop)) ++stop;
        else
            stop = Behind_Word(at, end);
        if (!take(place, std::string_view(at, static_cast<std::size_t>(stop - at)))) return;
        at = decimal_comma ? Skip_Gap(stop, end) : Behind_Gap(stop, end);
    }
}

bool Is_Number_With_Comma(std::string_view word, bool& comma) {
    float value = 0;
    const std::size_t at = word.find(',');
    if (at != std::string_view::npos) {
        if (at == 0 || at + 1 == word.size() || word.find(',', at + 1) != std::string_view::npos) return false;
        comma = true;
    }
    return Take_Field(word, true, value);
}

// "10,02 105,3": numbers between blanks, none with a point, a comma within them.
bool Has_Decimal_Commas(std::string_view line) {
    if (!Contains(line, ",") || Contains(line, ".")) return false;
    bool comma = false, good = true;
    std::size_t words = 0;
    Walk_Fields(line, false, true, [&](std::size_t, std::string_view word) {
        ++words;
        good = good && Is_Number_With_Comma(word, comma);
        return good;
    });
    return good && comma && words >= 2;
}

}  // namespace

Row_Shape Shape_Of_Row(std::string_view line) {
    constexpr std::size_t longest = 4096;
    Row_Shape shape;
    line = Trim(line);
    if (line.empty() || line.size() > longest) return shape;
    shape.semicolons = Contains(line, ";");
    shape.decimal_comma = shape.semicolons || Has_Decimal_Commas(line);
    shape.numbers = true;
    Walk_Fields(line, shape.semicolons, shape.decimal_comma, [&](std::size_t place, std::string_view field) {
        float value = 0;
        const bool number = Take_Field(field, shape.decimal_comma, value);
        shape.numbers = shape.numbers && number;
        if (place < 2) shape.begins = (place == 0 || shape.begins) && number && (place > 0 || !std::isnan(value));
        ++shape.fields;
        return true;
    });
    shape.begins = shape.begins && shape.fields >= 2;
    return shape;
}

double First_Of_Row(std::string_view line, const Row_Shape& shape, std::size_t column) {
    float value = 0;
    Walk_Fields(line, shape.semicolons, shape.decimal_comma, [&](std::size_t place, std::string_view field) {
        if (place < column) return true;
        if (!Take_Field(field, shape.decimal_comma, value)) value = 0;
        return false;
    });
    return static_cast<double>(value);
}

Row_Reader::Row_Reader(const Row_Shape& shape, const Column_Roles& roles)
    : semicolons_(shape.semicolons), decimal_comma_(shape.decimal_comma) {
    role_.fill(-1);
    const int places[] = {roles.x, roles.y, roles.sigma, roles.ycalc};
    for (std::size_t i = 0; i < std::size(places); ++i) {
        if (places[i] < 0 || places[i] >= static_cast<int>(most_columns)) continue;
        role_[static_cast<std::size_t>(places[i])] = static_cast<signed char>(i);
        last_ = std::max(last_, static_cast<std::size_t>(places[i]));
    }
}

bool Row_Reader::Take(std::string_view line, Values& values) const {
    values = {no_number, no_number, 0, 0};
    const bool taken = decimal_comma_ ? Take_Split(line, values) : Take_Plain(line, values);
    return taken && std::isfinite(values[x]);
}

bool Row_Reader::Take_Plain(std::string_view line, Values& values) const {
    const char* const end = line.data() + line.size();
    const char* at = Skip_Gap(line.data(), end);
    std::size_t taken = 0;
    for (std::size_t column = 0; column <= last_ && at != end; ++column) {
        const signed char role = role_[column];
        const char* behind = at;
        if (role >= 0) {
            float& value = values[static_cast<std::size_t>(role)];
            behind = Parse_Float(at, end, value);
            if (behind == at || (behind != end && !Ends_Field(*behind))) {
                behind = Behind_Word(at, end);
                const bool good = Take_Field({at, static_cast<std::size_t>(behind - at)}, false, value);
                if (!good && role <= 1) return false;
                if (!good) value = 0;
            }
            taken += role <= 1 ? 1 : 0;
        } else {
            behind = Behind_Word(at, end);
        }
        at = Behind_Gap(behind, end);
    }
    return taken == 2;
}

bool Row_Reader::Take_Split(std::string_view line, Values& values) const {
    std::size_t taken = 0;
    bool good = true;
    Walk_Fields(line, semicolons_, decimal_comma_, [&](std::size_t column, std::string_view field) {
        if (column > last_) return false;
        const signed char role = role_[column];
        if (role < 0) return true;
        float& value = values[static_cast<std::size_t>(role)];
        const bool number = Take_Field(field, decimal_comma_, value);
        if (!number && role > 1) value = 0;
        good = good && (number || role > 1);
        taken += role <= 1 ? 1 : 0;
        return good;
    });
    return good && taken == 2;
}

}  // namespace vntl
