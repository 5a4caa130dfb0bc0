// UDF, a laboratory diffractometer's text format: a title, keywords, then intensities in columns.
//
//   SampleIdent,Corundum plate,/                       the title, whatever it is
//   LabdaAlpha1,            1.54060,/                  conv(1), from column 23
//   LabdaAlpha2,            1.54439,/                  conv(2), from column 23
//   RatioAlpha21,   0.50000,/                          conv(3), from column 14
//   DataAngleRange,   5.0000,  89.9900,/               xmin, xmax, from column 16
//   ScanStepSize,     0.0200,/                         step, from column 14
//   RawScan
//       6234,    6185,    5969,    6129, ...           (7(F8.0,1X),F8.0)
//
// The number of points is the integer part of (xmax - xmin) / step + 1.2; they end with the last count where its line is short. A keyword
// stands at the beginning of its line.
//
// A wavelength that stands nearer to its keyword, so that column 23 is behind it or amidst it, is read from behind the comma.
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

// Reads the text of a file into a fresh pattern.
Status Read_Udf(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
