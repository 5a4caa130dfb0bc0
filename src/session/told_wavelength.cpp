#include "session/told_wavelength.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "base/text.hpp"
#include "calc/anode_lines.hpp"

namespace vntl {

namespace {

constexpr double shortest = 0.1, longest = 10;
constexpr double same = 1e-4;              // two values that differ by less are one, told with other digits
constexpr std::size_t text_width = 1000;   // characters that are looked at
constexpr std::string_view ring = "\x01";  // stands for the letter with a ring, however it is coded

bool Is_Digit(char c) { return c >= '0' && c <= '9'; }
bool Is_Letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool Is_Blank(char c) { return c == ' ' || c == '\t' || c == '_'; }
char At(std::string_view text, std::size_t at) { return at < text.size() ? text[at] : ' '; }
char Before(std::string_view text, std::size_t at) { return at > 0 ? text[at - 1] : ' '; }

bool One_Of(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

// Greek letters as words, and the angstrom as one character.
std::string In_Plain_Letters(std::string_view text) {
    std::string plain(text.substr(0, text_width));
    constexpr std::string_view letters[][2] = {{"\xCE\xBB", "lambda"}, {"\xCE\xB1", "alpha"}, {"\xCE\xB2", "beta"},
                                               {"\xC3\x85", ring},     {"\xC3\xA5", ring},    {"\xE2\x84\xAB", ring}};
    for (const auto& [coded, letter] : letters)
        for (std::size_t at = plain.find(coded); at != std::string::npos; at = plain.find(coded, at + letter.size()))
            plain.replace(at, coded.size(), letter);
    std::replace(plain.begin(), plain.end(), '\xC5', ring[0]);  // in Latin-1
    return plain;
}

// A number without a sign, which may have a decimal comma and the uncertainty of its last digits in brackets.
struct Number {
    double value = 0;
    std::size_t decimals = 0, end = 0;
};

std::optional<Number> Number_At(std::string_view text, std::size_t at) {
    Number number;
    std::string digits;
    const std::size_t from = at;
    const auto take = [&] {
        while (Is_Digit(At(text, at)) && digits.size() < 20) digits += text[at++];
    };
    take();
    const bool whole = at > from;
    if ((At(text, at) == '.' || (whole && At(text, at) == ',')) && Is_Digit(At(text, at + 1))) {
        digits += '.';
        const std::size_t point = at++;
        take();
        number.decimals = at - point - 1;
    }
    if (digits.empty() || Is_Digit(At(text, at))) return {};
    if ((At(text, at) == '.' || At(text, at) == ',') && Is_Digit(At(text, at + 1))) return {};  // a date, a version
    if (At(text, at) == '(' && Is_Digit(At(text, at + 1))) {
        std::size_t close = at + 1;
        while (Is_Digit(At(text, close))) ++close;
        if (At(text, close) == ')') at = close + 1;
    }
    number.value = std::strtod(digits.c_str(), nullptr);
    number.end = at;
    return number;
}

struct Unit {
    double factor = 1;  // to angstrom
    std::size_t end = 0;
    bool plain_letter = false;  // "A", which is the ampere too
};

std::size_t Behind_Blanks(std::string_view text, std::size_t at) {
    while (at < text.size() && Is_Blank(text[at])) ++at;
    return at;
}

std::string_view Word_At(std::string_view text, std::size_t at) {
    std::size_t end = at;
    while (Is_Letter(At(text, end)) || (end < text.size() && text[end] == ring[0])) ++end;
    return text.substr(std::min(at, text.size()), end - at);
}

// An inverse unit and a power are others.
bool Is_Power(std::string_view text, std::size_t at) {
    const char c = At(text, at);
    if (c == '^' || c == '*' || c == '/' || Is_Digit(c) || static_cast<unsigned char>(c) >= 0x80) return true;
    return c == '-' && Is_Digit(At(text, at + 1)) && !Is_Digit(At(text, at + 2)) && At(text, at + 2) != '.';
}

std::optional<Unit> Unit_At(std::string_view text, std::size_t at) {
    at = Behind_Blanks(text, at);
    const std::string_view word = Word_At(text, at);
    const std::string small = Lower(word);
    Unit unit{1, at + word.size(), word == "A"};
    if (small == "nm")
        unit.factor = 10;
    else if (!unit.plain_letter && !One_Of(small, {ring, "ang", "angstrom", "angstroms", "angstroem"}))
        return {};
    if (Is_Power(text, unit.end)) return {};
    return unit;
}

// "1.0-3.0", "0.5 .. 2", "1 to 3": a band of wavelengths is not one.
bool Goes_On_To_A_Number(std::string_view text, std::size_t at) {
    at = Behind_Blanks(text, at);
    const std::size_t from = at;
    while (At(text, at) == '-' || At(text, at) == '.' || At(text, at) == '~') ++at;
    if (Lower(Word_At(text, at)) == "to") at += 2;
    return at > from && Is_Digit(At(text, Behind_Blanks(text, at)));
}

bool Can_Be(double angstroms) { return angstroms >= shortest && angstroms <= longest; }

// --- by a keyword ------------------------------------------------------------------------------------------------------------------

// What stands behind a keyword: signs, a unit in brackets, a number, a unit.
float Behind_Keyword(std::string_view text, std::size_t at) {
    if (const char index = At(text, at); (index == '1' || index == '2') && (Is_Blank(At(text, at + 1)) || At(text, at + 1) == '=')) {
        if (index == '2') return 0;
        ++at;
    }
    std::optional<Unit> unit;
    while (at < text.size()) {
        if (Is_Blank(text[at]) || std::string_view("=:\"'-").find(text[at]) != std::string_view::npos) {
            ++at;
        } else if (text[at] == '(' || text[at] == '[') {
            unit = Unit_At(text, at + 1);
            if (!unit) return 0;
            at = unit->end + 1;
        } else {
            break;
        }
    }
    const auto number = Number_At(text, at);
    if (!number || Goes_On_To_A_Number(text, number->end)) return 0;
    if (const auto behind = Unit_At(text, number->end)) unit = behind;
    if (!unit && number->decimals == 0) return 0;
    const double value = number->value * (unit ? unit->factor : 1);
    return Can_Be(value) ? static_cast<float>(value) : 0;
}

float By_Keyword(std::string_view text) {
    const std::string small = Lower(text);
    for (const std::string_view keyword : {"wavelength", "wave length", "lambda", "lam", "wl"})
        for (std::size_t at = small.find(keyword); at != std::string::npos; at = small.find(keyword, at + 1))
            if (!Is_Letter(Before(text, at)) && !Is_Letter(At(text, at + keyword.size())))
                if (const float told = Behind_Keyword(text, at + keyword.size()); told > 0) return told;
    return 0;
}

// --- by a unit ---------------------------------------------------------------------------------------------------------------------

// What is said of a length before it, and behind, when it is no wavelength.
bool Names_Another_Length(std::string_view word) {
    return One_Of(word, {"d",        "a",        "b",         "c",      "x",      "y",         "z",          "q",       "r",      "u",
                         "dmin",     "dmax",     "rmin",      "rmax",   "cell",   "edge",      "axis",       "bond",    "length", "spacing",
                         "dspace",   "dspacing", "space",     "size",   "thick",  "thickness", "layer",      "film",    "pore",   "pores",
                         "distance", "radius",   "diameter",  "step",   "width",  "shift",     "resolution", "lattice", "alat",   "current",
                         "magnet",   "to",       "parameter", "height", "offset", "period",    "periodicity"});
}
bool Is_Of_Another_Length(std::string_view word) {
    return One_Of(word, {"film",     "films",     "layer",         "layers", "thick",  "thickness",    "wide",     "pore",       "pores",
                         "particle", "particles", "nanoparticles", "grain",  "grains", "crystallites", "diameter", "site",       "zeolite",
                         "sieve",    "cut",       "cutoff",        "cell",   "bond",   "spacing",      "spacings", "resolution", "period"});
}

// Whether what stands before a number lets it be a wavelength: no name that it is equal to, no other number, no name of another length.
bool May_Begin(std::string_view text, std::size_t at) {
    const char attached = Before(text, at);
    if (Is_Letter(attached) || Is_Digit(attached) || attached == '.' || attached == ',') return false;
    while (at > 0 && (Is_Blank(text[at - 1]) || std::string_view("-:([{\"'").find(text[at - 1]) != std::string_view::npos)) --at;
    if (at == 0) return true;
    if (std::string_view("=<>~+/*\xC2\xB1").find(text[at - 1]) != std::string_view::npos) return false;
    if (text[at - 1] == ')') {  // "d(111)"
        const std::size_t open = text.substr(0, at).rfind('(');
        at = open == std::string_view::npos ? at : open;
    }
    const std::size_t end = at;
    while (at > 0 && (Is_Digit(text[at - 1]) || text[at - 1] == '.' || text[at - 1] == ',')) --at;
    const std::size_t letters_end = at;
    while (at > 0 && Is_Letter(text[at - 1])) --at;
    if (at == letters_end) return end == letters_end;  // a bare number
    const std::string_view word = text.substr(at, letters_end - at);
    if (word == "A" || Is_Digit(Before(text, at))) return true;                        // the unit of the number before; "SRM660a"
    if (end > letters_end && word.front() >= 'A' && word.front() <= 'Z') return true;  // an instrument, "D20"
    return !Names_Another_Length(Lower(word));
}

float By_Unit(std::string_view text) {
    float told = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!(Is_Digit(text[at]) || text[at] == '.') || !May_Begin(text, at)) continue;
        const auto number = Number_At(text, at);
        if (!number) continue;
        const auto unit = Unit_At(text, number->end);
        if (!unit || number->decimals < (unit->plain_letter ? 2u : 1u)) continue;
        const double value = number->value * unit->factor;
        if (!Can_Be(value) || Is_Of_Another_Length(Lower(Word_At(text, Behind_Blanks(text, unit->end))))) continue;
        if (told > 0 && std::fabs(told - value) > same) return 0;
        told = static_cast<float>(value);
    }
    return told;
}

// --- by the lines of a tube --------------------------------------------------------------------------------------------------------

std::size_t Behind_Any(std::string_view text, std::size_t at, std::string_view characters) {
    while (at < text.size() && characters.find(text[at]) != std::string_view::npos) ++at;
    return at;
}

// "Ka", "K-alpha1", "K alpha 1,2" at a place.
float Line_At(const Anode_Lines& lines, std::string_view small, std::size_t at) {
    at = Behind_Any(small, at, " _-");
    if (At(small, at) != 'k') return 0;
    at = Behind_Any(small, at + 1, " _-");
    const std::string_view word = Word_At(small, at);
    if (word != "a" && word != "alpha") return 0;
    at = Behind_Any(small, at + word.size(), " _");
    const char index = At(small, at);
    if ((index != '1' && index != '2') || Is_Digit(At(small, at + 1)) || At(small, at + 1) == '.') return static_cast<float>(lines.Mean());
    const std::size_t next = Behind_Any(small, at + 1, ",+/&");
    if (index == '1' && next > at + 1 && At(small, next) == '2') return static_cast<float>(lines.Mean());
    return static_cast<float>(index == '1' ? lines.alpha1 : lines.alpha2);
}

float By_Tube(std::string_view text) {
    const std::string small = Lower(text);
    for (const Anode_Lines& lines : anode_lines)
        for (std::size_t at = text.find(lines.anode); at != std::string_view::npos; at = text.find(lines.anode, at + 1))
            if (!Is_Letter(Before(text, at)))
                if (const float told = Line_At(lines, small, at + lines.anode.size()); told > 0) return told;
    return 0;
}

}  // namespace

float Told_Wavelength(std::string_view text) {
    const std::string plain = In_Plain_Letters(text);
    for (const auto read : {By_Keyword, By_Unit, By_Tube})
        if (const float told = read(plain); told > 0) return told;
    return 0;
}

float Told_Wavelength(std::string_view title, std::string_view file_name) {
    const float told = Told_Wavelength(title);
    return told > 0 ? told : Told_Wavelength(file_name);
}

}  // namespace vntl
