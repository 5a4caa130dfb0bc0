// Instrument parameter files: what a diffractometer was calibrated to, a bank of detectors at a time. Two layouts are in use.
//
//   #Bank 6: GSAS-II instrument parameter file; do not add/delete items!     begins each bank; a lone one may have no number
//   Type:PNT                                                                 X or N, then T for time of flight, E for energies, else angles
//   difC:22600.2479192                                                       any order, one a line or parted by semicolons
//   Zero:-8.51764244829                                                      degrees, or microseconds
//   Lam1:1.5405 / Lam2:1.5443 / I(L2)/I(L1):0.5                              "Lam" of a single line
//
//            1234567890123456789012345678901234567890123456789               a ruler, or none
//   INS   BANK      1
//   INS   HTYPE   PXCR                                                       P, X or N, then T for time of flight, E for energies, C for
//   angles INS   FPATH1     60.0000                                                 metres before the sample INS  1
//   ICONS  1.540500  1.544300       0.0         0       0.7    0       0.5 INS  1BNKPAR    2.0000   90.0000 metres behind it, 2theta
//
// The second has records of 80 columns. Its key ends with column 12 and no blank need follow: "ICONS22591.8600". Columns of an ICONS record
// behind the key: 1 to 10 lambda 1 or difC, 11 to 20 lambda 2 or difA, 21 to 30 the zero point in CENTIdegrees or microseconds; of angles
// 41 to 50 the polarisation, 56 to 65 the ratio of the lines. Records may end with CR LF, with blanks, or with nothing at all, and a
// record that was written by hand has its numbers parted by blanks, wherever they stand.
//
// t = difC d + difA d^2 + difB / d + zero.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

struct Instrument_Bank {
    int number = 0;                        // as the file counts its banks; its place from 1 where the file tells none
    bool numbered = false;                 // the file tells the number
    bool flight = false;                   // of time of flight
    std::string radiation;                 // "xrays_cw", "neutrons_cw", "neutrons_tof", empty where it is not told
    double lam1 = 0, lam2 = 0, ratio = 0;  // angstrom; a single line has lam1 alone
    double difC = 0, difA = 0, difB = 0;   // microseconds by angstrom, angstrom^2 and 1/angstrom
    double zero = 0;                       // degrees, or microseconds
    double polarisation = 0;
    double two_theta = 0, flight_path = 0;  // degrees, metres; 0 where they are not told
};

inline constexpr std::size_t most_instrument_bytes = std::size_t{4} << 20;  // no real file comes near

// A look at the first lines.
bool Is_Instrument_Parameters(std::string_view head);

// The banks that tell a wavelength or difC, in the order of the file. It fails where the text is none of such a file, and where no bank
// tells either.
Status Read_Instrument_Parameters(std::string_view text, std::vector<Instrument_Bank>& banks);

}  // namespace vntl
