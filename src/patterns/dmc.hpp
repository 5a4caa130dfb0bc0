// DMC and HRPT: counts, and perhaps their standard deviations, in fixed columns.
//
//   HRPT, Ni powder                                             title
//   lambda=  1.49400, T=   0.000, Date=2001-06-16 06:25:59      dropped
//      2.950   0.050 162.900 18000000., sample="Ni"             xmin, step, xmax in free form, the rest dropped
//      7444.   7639.   7731.   7762.   7479. ...                (10F8.0): counts, as many as the range tells or the file holds
//       86.3    87.4    87.9    88.1    86.5 ...                (10F8.0): their standard deviations
//    Filelist='HRPT/2001/2455-2490'                             whatever follows
//
// Ten numbers in the line behind the counts tell that standard deviations follow. Blank lines up to the end of the file are none. Those
// that are missing are the roots of the counts.
#pragma once

#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

Status Read_Dmc(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
