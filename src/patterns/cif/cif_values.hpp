// Numbers of a CIF with their uncertainties in brackets: 5540(160) is 5540 with a standard deviation of 160, 0.424(7) has one of 0.007.
#pragma once

#include "patterns/number_walk.hpp"

namespace vntl {

struct Cif_Value {
    float number = 0;
    float deviation = 0;  // 0 where no brackets tell it
    bool known = false;   // neither "." nor "?" nor what is no number
};

inline bool Is_Cif_Space(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }

// What stands in brackets at `behind`, where the number that begins at `at` ends; false where that is no uncertainty. `behind` goes behind
// it.
bool Take_Cif_Deviation(const char* at, const char*& behind, const char* last, Cif_Value& value);

// Takes the word at `at`, which is none of blanks, and stops behind it. False where it is neither a number nor one of the two marks.
inline bool Take_Cif_Value(const char*& at, const char* last, Cif_Value& value) {
    value = {};
    const char* behind = Parse_Float(at, last, value.number);
    bool good = behind != at;
    value.known = good;
    if (good && behind != last && *behind == '(') good = Take_Cif_Deviation(at, behind, last, value);
    if (!good && behind == at && (*at == '.' || *at == '?')) {
        ++behind;
        good = true;
    }
    constexpr float largest = 3.4028235e38f;
    good = good && value.number <= largest && value.number >= -largest && (behind == last || Is_Cif_Space(*behind));
    if (!good) {
        value = {};
        while (behind != last && !Is_Cif_Space(*behind)) ++behind;
    }
    at = behind;
    return good;
}

}  // namespace vntl
