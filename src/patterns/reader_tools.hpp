// What the readers of instrument files share.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/text_file.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

// Texts of failures that several formats have, blanks as they stand.
inline constexpr std::string_view check_instr = " Error in Intensity file, check your instr parameter!";
inline constexpr std::string_view check_instr_wide = " Error in  Intensity file, check your instr parameter!";
inline constexpr std::string_view no_points_told = " Error in Intensity file, Number of points negative or zero!";

// Most points that a head can claim.
inline constexpr double most_claimed = 0x7fffffff;

// Most points that a file of so many bytes is trusted with, whatever its header says: a plain count takes two bytes with its separator, and
// lines of columns may end early, which leaves zeros.
std::size_t Most_Points(std::size_t bytes);

// Allocates the arrays for `npts` points told by a header. Fails with `message` when they are fewer than one, no number, or more than the
// file can stand for.
Status Allocate_Told(Diffraction_Pattern_Type& pattern, double npts, std::size_t bytes, std::string_view message);

// Allocates x, y and sigma for `n` points that are there, and no other arrays: a measurement has nothing to put into them.
Status Allocate_Measured(Diffraction_Pattern_Type& pattern, std::size_t n);

// x(i) = xmin + (i - 1) step, in single precision, for all points.
void Set_Grid(Diffraction_Pattern_Type& pattern);

// xmax = (npts - 1) step + xmin.
void Set_Grid_End(Diffraction_Pattern_Type& pattern);

// The variance of a count is the count: |y| for all points.
void Set_Count_Variances(Diffraction_Pattern_Type& pattern);

// A warning of readers that come to their limit.
inline constexpr std::string_view too_many_scans = "The file holds more scans than the program has rows for";

// Keeps the first `n` points of all arrays.
void Keep_Points(Diffraction_Pattern_Type& pattern, int n);

// The pattern ends at the last number of its file, the `n`-th, and keeps what the head claimed where that was more. Memory that was held
// for the others is given back.
void End_At_Last_Number(Diffraction_Pattern_Type& pattern, std::size_t n, double claimed);

// The title of one range of several: "Corundum, range 2", the words alone behind a blank title, cut so that the number stays.
std::string Numbered(const std::string& title, std::size_t number);

}  // namespace vntl
