#include "patterns/head_constants.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <span>
#include <string>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr double metres_below = 1e-6, angstroms_of_a_metre = 1e10;
constexpr double shortest = 1e-3, longest = 1e3;  // wavelengths that a diffraction pattern can have, angstroms
constexpr std::size_t line_width = 1 << 16;       // of which a line is looked at: heads in JSON are long
constexpr std::size_t words_before = 200;         // a wavelength that may say of what line it is
constexpr double doublet = 0.02;                  // by which the lines of one differ at most

struct Unit {
    std::string_view name;
    double factor;
};
constexpr Unit units_of_length[] = {{"m", angstroms_of_a_metre},
                                    {"meter", angstroms_of_a_metre},
                                    {"meters", angstroms_of_a_metre},
                                    {"metre", angstroms_of_a_metre},
                                    {"metres", angstroms_of_a_metre},
                                    {"mm", 1e7},
                                    {"um", 1e4},
                                    {"\xC2\xB5m", 1e4},
                                    {"\xCE\xBCm", 1e4},
                                    {"nm", 10},
                                    {"nanometer", 10},
                                    {"nanometers", 10},
                                    {"nanometre", 10},
                                    {"nanometres", 10},
                                    {"pm", 0.01},
                                    {"picometer", 0.01},
                                    {"picometers", 0.01},
                                    {"picometre", 0.01},
                                    {"picometres", 0.01},
                                    {"a", 1},
                                    {"ang", 1},
                                    {"ang.", 1},
                                    {"angstrom", 1},
                                    {"angstroms", 1},
                                    {"angstroem", 1},
                                    {"\xC3\xA5ngstr\xC3\xB6m", 1},
                                    {"\xC3\x85ngstr\xC3\xB6m", 1},
                                    {"angstr\xC3\xB6m", 1},
                                    {"\xC3\x85", 1},
                                    {"\xC3\xA5", 1},
                                    {"\xE2\x84\xAB", 1}};
constexpr double angstrom_microseconds_of_s_per_km = 1e-7;  // s/km = 1e6 microseconds in 1e13 angstroms
constexpr Unit units_of_path[] = {{"m", 1}, {"meter", 1}, {"meters", 1}, {"metre", 1}, {"metres", 1}, {"mm", 1e-3}, {"cm", 1e-2}};
constexpr Unit units_of_angle[] = {{"deg", 1}, {"degree", 1}, {"degrees", 1}, {"\xC2\xB0", 1}, {"rad", 180 / std::numbers::pi}};
constexpr Unit units_of_dtt1[] = {{"s/km", angstrom_microseconds_of_s_per_km}};

bool Is_Letter(char c) { return (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80; }
bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

std::optional<double> Factor(std::string_view word, std::span<const Unit> units) {
    for (const Unit& unit : units)
        if (unit.name == word) return unit.factor;
    return std::nullopt;
}

// Letters, and what units have beside them.
std::string_view Word_At(std::string_view text) {
    std::size_t n = 0;
    while (n < text.size() && (Is_Letter(text[n]) || (n > 0 && (text[n] == '/' || text[n] == '.')))) ++n;
    return text.substr(0, n);
}

// What stands in a bracket at the front of the text, which loses it.
std::optional<std::string_view> Take_Bracket(std::string_view& text) {
    if (text.empty() || (text.front() != '(' && text.front() != '[')) return std::nullopt;
    const std::size_t close = text.find(text.front() == '(' ? ')' : ']');
    if (close == std::string_view::npos) return std::nullopt;
    const std::string_view inside = Trim(text.substr(1, close - 1));
    text.remove_prefix(close + 1);
    return inside;
}

void Skip(std::string_view& text, std::string_view characters) {
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
}

// A number at the front, which may have a decimal comma and the uncertainty of its last digits in brackets.
std::optional<double> Take_Number(std::string_view& text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    std::string digits(text.substr(0, 40));
    const std::size_t first = digits.find_first_not_of("-0123456789");
    if (first != std::string::npos && first > 0 && digits[first] == ',' && first + 1 < digits.size() && Is_Digit(digits[first + 1]))
        digits[first] = '.';
    double value = 0;
    const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || !std::isfinite(value)) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(stop - digits.data()));
    if (text.size() > 2 && text[0] == '(' && Is_Digit(text[1])) Take_Bracket(text);
    return value;
}

struct Quantity {
    double value = 0;
    std::optional<double> factor;  // of the unit that stands beside it
};

// "= 0.41 nm", " (A): 0.41", "\": 4.1e-11": a number behind nothing but signs, and its unit on either side; nothing behind other words,
// nor with `known_alone` behind a bracket that holds another word than a unit.
std::optional<Quantity> Take_Quantity(std::string_view& text, std::span<const Unit> units, bool known_alone) {
    Quantity q;
    for (;;) {
        Skip(text, " \t=:\"'_,");
        if (const auto inside = Take_Bracket(text)) {
            q.factor = Factor(*inside, units);
            if (known_alone && !q.factor && !inside->empty() && Is_Letter(inside->front())) return std::nullopt;
            continue;
        }
        const std::string_view word = Word_At(text);
        if (word.empty()) break;
        const auto factor = Factor(word, units);
        if (!factor && word != "in" && word != "is") return std::nullopt;
        if (factor) q.factor = factor;
        text.remove_prefix(word.size());
    }
    const auto number = Take_Number(text);
    if (!number) return std::nullopt;
    q.value = *number;
    const std::string_view attached = Word_At(text);
    if (!attached.empty() && !Factor(attached, units)) return std::nullopt;
    std::string_view behind = text;
    Skip(behind, " \t\"'");
    const auto inside = Take_Bracket(behind);
    const std::string_view word = inside ? *inside : Word_At(behind);
    const auto factor = Factor(word, units);
    if (!factor) return q;
    q.factor = factor;
    text = inside ? behind : behind.substr(word.size());
    return q;
}

std::optional<float> Angstroms(const Quantity& q) {
    const double by_size = q.value < metres_below ? angstroms_of_a_metre : 1;
    const double value = q.value * q.factor.value_or(by_size);
    return value >= shortest && value <= longest ? std::optional(static_cast<float>(value)) : std::nullopt;
}

// "1", "_2", "(1)", " 2 =" behind a word for a wavelength; 0, and the text as it was, where it is none.
int Take_Index(std::string_view& text) {
    std::string_view rest = text;
    const bool apart = !rest.empty() && (rest.front() == ' ' || rest.front() == '\t');
    Skip(rest, " \t_-([");
    if (rest.empty() || (rest.front() != '1' && rest.front() != '2')) return 0;
    const int index = rest.front() - '0';
    rest.remove_prefix(1);
    if (!rest.empty() && (Is_Digit(rest.front()) || rest.front() == '.' || rest.front() == ',')) return 0;
    std::string_view sign = rest;
    Skip(sign, " \t)]");
    if (apart && !sign.starts_with('=') && !sign.starts_with(':')) return 0;
    Skip(rest, ")]");
    text = rest;
    return index;
}

// The line of a tube that the words before "wavelength" name: 1, 2, or 0 for any; -1 for one that is none of a doublet.
int Line_Of_Tube(std::string_view before) {
    while (!before.empty() && std::string_view(" \t_-").find(before.back()) != std::string_view::npos) before.remove_suffix(1);
    if (before.ends_with("beta") || before.ends_with("kb")) return -1;
    if (before.empty() || (before.back() != '1' && before.back() != '2')) return 0;
    const int line = before.back() - '0';
    before.remove_suffix(1);
    while (!before.empty() && std::string_view(" \t_-").find(before.back()) != std::string_view::npos) before.remove_suffix(1);
    return before.ends_with("alpha") || before.ends_with("ka") || before.ends_with("\xCE\xB1") ? line : 0;
}

}  // namespace

void Head_Constants::Take_Wavelength(std::string_view before, std::string_view behind) {
    const bool several = behind.starts_with('s');
    if (several) behind.remove_prefix(1);
    const int named = Line_Of_Tube(before), index = Take_Index(behind);
    if (named < 0) return;
    const auto q = Take_Quantity(behind, units_of_length, true);
    const auto value = q ? Angstroms(*q) : std::nullopt;
    if (!value) return;
    if (named == 2 || index == 2) {
        if (!lambda2_) lambda2_ = value;
        return;
    }
    const bool calibrated = Contains(before.substr(before.size() - std::min(before.size(), words_before)), "calibrated");
    if (lambda1_ && (calibrated_ || !calibrated)) return;
    lambda1_ = value;
    calibrated_ = calibrated;
    Quantity second;
    Skip(behind, " \t,;/");
    const auto other = Take_Number(behind);
    if (!other) return;
    second = {*other, q->factor};
    const auto next = Angstroms(second);
    if (next && !lambda2_ && *next > *value && *next < *value * (1 + doublet)) lambda2_ = next;
}

void Head_Constants::Take_Flight(std::string_view behind, std::optional<float>& value, bool positive) {
    const auto q = Take_Quantity(behind, units_of_dtt1, false);
    if (!q || value) return;
    const double told = q->value * q->factor.value_or(1);
    if (Is_Sound(told) && (told > 0 || !positive)) value = static_cast<float>(told);
}

// "L = 157.6 [m] two_theta = 101.4 [deg]", "twotheta(deg) 86.37 Ltotal(m) 77.85".
void Head_Constants::Take_Path(std::string_view text) {
    const auto take = [&](std::string_view word, std::span<const Unit> units, double most, std::optional<double>& value) {
        for (std::size_t at = text.find(word); at != std::string_view::npos && !value; at = text.find(word, at + word.size())) {
            std::string_view behind = text.substr(at + word.size());
            if (at > 0 && (Is_Letter(text[at - 1]) || Is_Digit(text[at - 1]) || text[at - 1] == '_')) continue;
            if (!behind.empty() && (Is_Letter(behind.front()) || behind.front() == '_')) continue;
            const auto q = Take_Quantity(behind, units, true);
            const double told = q ? q->value * q->factor.value_or(1) : 0;
            if (told > 0 && told < most) value = told;
        }
    };
    constexpr double longest_path = 1e4, largest_angle = 180;
    for (const char* word : {"ltotal", "l_total", "l"}) take(word, units_of_path, longest_path, path_);
    for (const char* word : {"twotheta", "two_theta", "2theta"}) take(word, units_of_angle, largest_angle, two_theta_);
}

// t = (m/h) L lambda with lambda = 2 d sin(theta): m/h = 252.778 microseconds a metre and angstrom.
std::optional<float> Head_Constants::Dtt1() const {
    constexpr double twice_m_over_h = 505.556;
    if (dtt1_ || !path_ || !two_theta_) return dtt1_;
    return static_cast<float>(twice_m_over_h * *path_ * std::sin(*two_theta_ / 2 * std::numbers::pi / 180));
}

void Head_Constants::Take_Line(std::string_view line) {
    sample_.Take_Line(line);
    const std::string lower = Lower(line.substr(0, line_width));
    const std::string_view text = lower;
    enum class Kind { wavelength, dtt1, dtt2 };
    struct Keyword {
        std::string_view word;
        Kind kind;
        bool inside_words;  // letters may stand before it
    };
    constexpr Keyword keywords[] = {{"wavelength", Kind::wavelength, true},
                                    {"lambda", Kind::wavelength, false},
                                    {"\xCE\xBB", Kind::wavelength, false},
                                    {"difc", Kind::dtt1, false},
                                    {"dtt1", Kind::dtt1, false},
                                    {"difa", Kind::dtt2, false},
                                    {"dtt2", Kind::dtt2, false}};
    for (const auto& [word, kind, inside_words] : keywords)
        for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + word.size())) {
            if (!inside_words && at > 0 && Is_Letter(text[at - 1])) continue;
            const std::string_view behind = text.substr(at + word.size());
            if (kind == Kind::wavelength)
                Take_Wavelength(text.substr(0, at), behind);
            else
                Take_Flight(behind, kind == Kind::dtt1 ? dtt1_ : dtt2_, kind == Kind::dtt1);
        }
    Take_Path(text);
}

void Head_Constants::Add_Facts(Fact_List& facts) const {
    if (path_ && two_theta_) {
        facts.Add("Flight path (m)", *path_);
        facts.Add("2theta of the detectors (degrees)", *two_theta_);
    }
    facts.Add("Sample", sample_.Sample());
}

void Head_Constants::Take_Lines(std::string_view text) {
    Line_Cursor lines(text);
    for (std::string_view line; lines.Next(line);) Take_Line(line);
}

void Head_Constants::Give(Diffraction_Pattern_Type& pattern) const {
    sample_.Give(pattern);
    if (pattern.conv[0] != 0) return;
    const std::string variable = Lower(pattern.scat_var);
    const bool flight = Contains(variable, "tof"),
               bragg = Contains(variable, "2theta") || Contains(variable, "d-spacing") || Contains(variable, "q-space");
    if (!flight && !bragg) return;
    const auto first = flight ? Dtt1() : lambda1_, second = flight ? dtt2_ : lambda2_;
    if (!first) return;
    pattern.conv[0] = *first;
    pattern.conv[1] = second.value_or(0.0f);
}

}  // namespace vntl
