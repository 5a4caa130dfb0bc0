// Files that describe an instrument.
//
//   ! a comment, as # is                          INFO    Single-crystal diffractometer, hot neutrons
//   NAME    R6                                    GEOM    4C-Diff High-Chi, Eulerian cradle
//   DIST_DET 488.0                                WAVE    0.8400
//   DIM_XZP 64.0 64.0 32 32                       size (horizontal, vertical) and pixels (horizontal, vertical)
//   UBMAT                                         the matrix, a row a line, behind it
//     0.1 0.0 0.0 ...
//
// One keyword a line, in letters of any case, its values behind it; an unknown one is passed over. Numbers are separated by blanks or a
// comma, and may have exponents of Fortran. Sections stand on the lines behind their keyword:
//
//   NUM_ANG 2
//   ANG_LIMITS  Min  Max  Offset  Velocity(deg/s)       a line for each motor: its name, quoted if it has blanks, its limits, and
//     2Theta   0.0  140.0   0.0  0.5                    what may be absent: offset (0) and velocity (1)
//     Omega  -49.0   49.0
//   RANGE_TIME                                          for each motor its name and a number of pairs, and a line for each pair
//
// DET_ALPHAS and RESOLUTION_SURFACE have the rows of a matrix, up to the next keyword.
//
// What has no default must stand there: DIM_XZP, ANG_LIMITS where NUM_ANG tells motors, DISP_LIMITS where NUM_DISP does, and WAVE_LIMITS
// of a Laue diffractometer. Other limits that a file is silent on are told as a warning. GEOM tells the code of the geometry by its words;
// IGEOM (0 to 3) tells it where they do not.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "instrument/diffractometer.hpp"

namespace vntl {

// Reads a description, which becomes the current instrument when it is whole; on failure the state stays as it was. Names of files in it
// are relative to it. `warnings`: what was read otherwise than it stands (gaps exchanged), and the like.
Status Read_Current_Instrm(const std::string& filename, Instrument_State& state, std::vector<std::string>& warnings);

// The same of a text; `filename` is told in messages, and where files that it names are looked for.
Status Read_Instrm_Text(std::string_view text, const std::string& filename, Diffractometer_Type& instrument, bool& ub_read,
                        std::vector<std::string>& warnings);

// `type` "Laue", or anything else for a four-circle diffractometer. `wave`: limits in angstroms.
void Set_Default_Instrument(Instrument_State& state, std::string_view type = {}, std::optional<std::array<float, 2>> wave = {});

// The listing: lines without their ends.
std::vector<std::string> Write_Current_Instrm_data(const Instrument_State& state);

// The text of a file that reads back as the same instrument.
std::string Instrm_File_Text(const Diffractometer_Type& instrument);

// Writes a new UB matrix, and the wavelength where one is given, into the file; what was there is kept beside it as ".bak". Lines that the
// file lacks are added. The current UB becomes that matrix. Fails, and changes no file, for a singular matrix, and for numbers that the
// columns of the file (nine decimals, five of the wavelength) cannot hold.
Status Update_Current_Instrm_UB(const std::string& filename, const Matrix3& ub, std::optional<float> wave, Instrument_State& state);

// The text with these lines, all others byte for byte. `first_changed`: the number of the first line that differs.
Status Instrm_Text_With_UB(std::string_view text, const Matrix3& ub, std::optional<float> wave, std::string& updated, int& first_changed);

// False, and `inverse` as it was, for a matrix that is singular within single precision or not finite.
bool Invert_Matrix(const Matrix3& matrix, Matrix3& inverse);

}  // namespace vntl
