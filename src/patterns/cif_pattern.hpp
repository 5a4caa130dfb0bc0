// Powder CIF: the loop of a pattern, with its uncertainties in brackets.
//
//   data_CeO2
//   _pd_block_id CeO2|furnace              the title stands from column 13
//   _diffrn_radiation_probe neutron        the radiation from column 24
//   _pd_proc_number_of_points 4501         the number of points from column 27
//   loop_
//   _pd_proc_point_id
//   _pd_proc_2theta_corrected              or _pd_proc_d_spacing: x
//   _pd_proc_intensity_total               y
//   _pd_calc_intensity_total               ycalc, may be missing
//   _pd_proc_intensity_bkg_calc            bgr, may be missing
//
//      1  10.000 1234(35) 1220.1 112.0     12.34(5) is 12.34 with a standard deviation of 0.05
//
// Lines count up to column 120. Of each of the three words the last line that holds it counts; the loop is the first one, its heads are
// the ten lines behind it, up to a blank line. `sigma` holds standard deviations here. The title tells the agreement of y and ycalc.
//
// Files of others are read beyond that: heads end at a row as well as at a blank line, "." and "?" stand for a value that is not known (a
// row without x or y is no point), and a file that ends before the told number of points has those that are there. Where the first loop
// holds no pattern, the first loop that does is taken, and names as files of refinements have them are known in it (see heads in
// cif_pattern.cpp). A loop without x follows the range: _pd_proc_2theta_range_min and _inc, or those of _pd_meas_.
#pragma once

#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Reads every pattern of a file.
Status Read_Cif_Patterns(std::string_view text, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

Status Read_Cif_Pattern(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
