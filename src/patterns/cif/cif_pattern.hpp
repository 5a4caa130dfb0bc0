// Powder CIF: tables of patterns, with uncertainties in brackets.
//
//   data_CeO2                              a block; a file may hold several
//   _pd_block_id CeO2|furnace              the title, from behind the item to the end of its line, or the next word
//   _diffrn_radiation_probe neutron        the radiation
//   _diffrn_ambient_temperature 293        TSample; _cell_measurement_temperature where it is not told
//   _diffrn_radiation_wavelength 1.5406    in this block or another one, see cif_wavelength.hpp
//   _pd_proc_number_of_points 4501         optional: rows count, and fewer of them than told are remarked
//   loop_
//   _pd_proc_point_id
//   _pd_proc_2theta_corrected              x
//   _pd_proc_intensity_total               y
//   _pd_calc_intensity_total               ycalc, may be missing
//   _pd_proc_intensity_bkg_calc            bgr, may be missing
//
//      1  10.000 1234(35) 1220.1 112.0     12.34(5) is 12.34 with a standard deviation of 0.05
//
// Each table that has y makes a pattern: a block of time of flight often holds the measured points and, over d, the processed ones. Names
// of columns and which of several counts: cif_items.hpp. Without a column of x points follow _pd_proc_2theta_range_min and _inc, or those
// of _pd_meas_. "." and "?" stand for what is not known: a row without x or y is no point, a curve without a number has a gap.
//
// `sigma` holds standard deviations here: those in brackets, else 1/sqrt(_pd_proc_ls_weight), else the column of y's name and _su, else of
// counts their root. A weight of 0 marks a point that the refinement left out: its `istat` is 1. The title tells the agreement of y and
// ycalc of all others.
#pragma once

#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Reads every pattern of a file, in their order; of several the first one has the bank 1. Fails where there is none, with a sentence that
// tells what the file holds instead. Where points were left out `notes` tells how many.
Status Read_Cif_Patterns(std::string_view text, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
