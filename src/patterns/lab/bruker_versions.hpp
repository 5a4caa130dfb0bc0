// The four versions of RAW, each by its own reader, and what they share.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/lab/byte_view.hpp"
#include "patterns/lab/raw_ranges.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

Status Read_Raw_1(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);
Status Read_Raw_2(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);
Status Read_Raw_101(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);
Status Read_Raw_400(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

// Whether the block of a RAW1 file at this place, the "RAW " of which may be left out (the places count from it), tells of points that a
// measurement can have.
bool Is_Raw_1_Block(Byte_View bytes, std::size_t at);

// What all versions say of a file that ends too early.
inline constexpr std::string_view raw_ends = "This RAW file ends within its head";
inline constexpr std::string_view range_head_ends = "The file ends before its points";
inline constexpr std::string_view no_range_points = "There are no points in it";

// The wavelengths of a tube as a head tells them, in angstroms; a lone mean stands in for the line.
struct Tube_Lines {
    double mean = 0, alpha1 = 0, alpha2 = 0, beta = 0, ratio = 0;

    // `used` is the wavelength that a range is said to be measured with: it stands in where no line is told.
    void Give(Diffraction_Pattern_Type& pattern, double used) const;
};

}  // namespace vntl
