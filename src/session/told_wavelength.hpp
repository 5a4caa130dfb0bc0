// The wavelength that a title or the name of a file tells: "LaB6 1.594 A", "lambda=1.5406", "CeO2_wl0.4137.xye", "Si CuKa1".
//
// It is told by a keyword ("lambda", "wavelength", "wl"), else by its unit (A, Å, ang, nm), else by the lines of a tube. Other lengths have
// a unit as well: what a name other than the keywords is equal to, spacings, cell edges, ranges, 1/A and volumes are none, and two
// different values with a unit tell nothing.
#pragma once

#include <string_view>

namespace vntl {

// In angstrom, 0.1 to 10; 0 where nothing is told. Lines that are not numbered are the mean of K-alpha1 and K-alpha2.
float Told_Wavelength(std::string_view text);

// By the title, else by the name of the file.
float Told_Wavelength(std::string_view title, std::string_view file_name);

}  // namespace vntl
