// Files that describe an instrument.
//
//   ! a comment, as # is                          INFO    Single-crystal diffractometer, hot neutrons
//   NAME    R6                                    GEOM    4C-Diff High-Chi, Eulerian cradle
//   DIST_DET 488.0                                WAVE    0.8400
//   DIM_XZP 64.0 64.0 32 32                       size (horizontal, vertical) and pixels (horizontal, vertical)
//   UBMAT                                         the matrix, a row a line, behind it
//     0.1 0.0 0.0 ...
//
// One keyword a line, in letters of any case, its values behind it.
#pragma once

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

// Writes a new UB matrix, and the wavelength where one is given, into the file; what was there is kept beside it as ".bak". The current
// UB becomes that matrix. Fails, and changes no file, for a singular matrix.
Status Update_Current_Instrm_UB(const std::string& filename, const Matrix3& ub, std::optional<float> wave, Instrument_State& state);

// False for a singular matrix.
bool Invert_Matrix(const Matrix3& matrix, Matrix3& inverse);

}  // namespace vntl
