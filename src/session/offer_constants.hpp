// Instrument parameter files that lie beside patterns: a histogram comes with the calibration of its diffractometer, as a file of the same
// name or of the one that its head tells ("Instrument parameter file:Vulcan.prm").
#pragma once

#include "base/ask.hpp"

namespace vntl {

struct Open_Result;
struct Session;

// Of the rows that have just come, those read as GSAS files that have no constants: one question for all of them whose file lies beside
// them. Nothing is asked where there is none. The result with its notice.
Open_Result Offer_Constants(Session&, Ask&, Open_Result opened);

}  // namespace vntl
