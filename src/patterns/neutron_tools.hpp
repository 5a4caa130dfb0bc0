// What the readers of neutron diffractometers' files share: ranges in free form and lists of counts in fixed columns.
//
// Such lists are most of a file; plain_columns.hpp tells how they are read.
#pragma once

#include <cmath>
#include <span>

#include "base/edit_descriptor.hpp"
#include "base/free_form.hpp"
#include "base/text_file.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

// One record of fixed columns; the cursor stands behind its last line.
template <class... Values>
bool Read_Fixed(Line_Cursor& lines, const Edit_Format& format, Values&&... values) {
    Edit_Reader reader(format, [&lines](std::string_view& line) { return lines.Next(line); });
    return reader.Read(values...);
}

// One free-form record from the cursor's next line on; the cursor stands behind its last line.
template <class... Values>
bool Read_Free_Record(Line_Cursor& lines, Values&&... values) {
    Free_Form_Reader reader(lines.Rest());
    const bool good = reader.Read(values...);
    lines = Line_Cursor(reader.Rest());
    return good;
}

template <class... Reals>
bool All_Finite(Reals... values) {
    return (std::isfinite(values) && ...);
}

// A record of xmin, step and xmax in free form. `intervals` is the number of steps from xmin to xmax, from the decimals as they stand in
// the file; it may be anything, no number among it, when the step is 0. False when a value is missing or none that the pattern can hold.
bool Read_Range(Line_Cursor& lines, Diffraction_Pattern_Type& pattern, double& intervals);

// Lists of numbers in fixed columns, so many to a line as the format's name tells; the cursor stands behind the last line that was needed.
// What the lines that there are do not fill stays as it was; blank columns are 0, and not held where nothing stands behind them.
enum class Filled { all, lines_ended, bad_number };
struct List_Read {
    Filled filled;
    std::size_t count;  // numbers, or pairs, that were read
    std::size_t held;   // of them those up to the last one that the file holds

    bool All() const { return filled == Filled::all; }
};
List_Read Read_10_F8(Line_Cursor& lines, std::span<float> values);                             // (10F8.0)
List_Read Read_10_I2_F8(Line_Cursor& lines, std::span<int> first, std::span<float> second);    // (10(I2,F8.0))
List_Read Read_10_I2_F6(Line_Cursor& lines, std::span<int> first, std::span<float> second);    // (10(I2,F6.0))
List_Read Read_5_F6_F10(Line_Cursor& lines, std::span<float> first, std::span<float> second);  // (5(F6.0,F10.0))

// The variance of a mean over `nd` detectors, factor |y| / nd. A point that tells no detector was seen by one.
void Set_Detector_Variances(Diffraction_Pattern_Type& pattern, float factor);

}  // namespace vntl
