// GSAS files: one or several banks of one measurement, each a line that tells its layout and the records behind it.
//
//   Y3FE2(ALO4)3 RT 1.909                                  title, 80 columns
//   Instrument parameter file:bt1demo.ins                  any lines, none, or comments
//   BANK 1 2679 268 CONST 2400 5 0 0 STD                   number, points, records, binning, four coefficients, type
//    1   162 1   178 1   155 1   166 ...                   records by binning and type, see gsas_bank.hpp
//
// The angles of a constant-wavelength file are in centidegrees and become degrees; a file of time of flight is in microseconds. Which of
// the two a file is, it does not tell: the caller does.
//
// Of files as they are written today, more is understood than the classical head of seven lines at most: a bank line may stand behind any
// number of lines, its words may be lower case ("bank", "const"), and there may be coefficients fewer than four.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"

namespace vntl {

// One bank. 0 is bank 1, or the first bank of a file that has no bank 1.
Status Read_Gsas(std::string_view text, bool flight, int bank, Diffraction_Pattern_Type& pattern);

// All banks (at most 2000) in the order of the file; where there are several the title of each tells its number: "title (bank 3)". It fails
// when no bank can be read, by the message of the first; else `messages` tells of those that failed: "Bank 3: Error in ...".
Status Read_Gsas_Banks(std::string_view text, bool flight, std::vector<Diffraction_Pattern_Type>& patterns,
                       std::vector<std::string>& messages);

// The numbers of the banks in the order of the file.
std::vector<int> Gsas_Banks(std::string_view text);

// A guess from the binning of the first bank: channels that widen are of time of flight; equal steps are angles when they end within 181
// degrees.
bool Gsas_Is_Flight(std::string_view text);

}  // namespace vntl
