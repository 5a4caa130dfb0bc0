// Files of peaks and of background points for other programs: programs that index a pattern, the search for a propagation vector, and
// plain lists. A file is made as a text; nothing is asked and nothing written here.
//
// Columns are those that the programs read. A value that its columns cannot hold is refused by name, never written as stars.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/status.hpp"
#include "patterns/listed_points.hpp"

namespace vntl {

enum class Peaks_Format { free_format, vecfind, dicvol, ito, treor };

// "FreeFormat", "Vecfind_Format", "DicvolFormat", "ItoFormat", "TreorFormat"; nothing for any other word.
std::optional<Peaks_Format> Peaks_Format_Of(std::string_view word);

// Where the points come from: the first row of the store.
struct Points_Source {
    std::string path;       // directory, separator, file name
    std::string file_name;  // its last part
    std::string instr;
    std::string scat_var;                // "2theta", "TOF", ...
    std::string xspace;                  // the unit of the positions, see X_Space
    std::string date;                    // see Date_Text
    std::array<float, 3> wavelengths{};  // lambda 1, lambda 2 in angstrom, ratio of their intensities
};

// When a file is made: day/month/year at hour:minute:second, in columns, with a blank behind it.
std::string Date_Text(int day, int month, int year, int hour, int minute, int second);
std::string Date_Text_Of_Now();

// lambda 1, lambda 2 and ratio by the radiation of the search for peaks: 1 those of the pattern, 2 Cu, 3 Mo, 4 Co, any other Cu without
// a second one. `conv`: of the pattern.
std::array<float, 3> Wavelengths_Of_Source(int search_radiation, const std::array<float, 5>& conv);

// Whether the program of a format understands positions of this unit: plain lists and the search for a propagation vector know every unit
// that has a list header, "----" (no unit is known) is taken for 2theta. DICVOL's Q is 10000/d^2 and no x space.
bool Can_Say(Peaks_Format format, std::string_view xspace);

// The unit that stands in the dialog at first, as Dicvol_Input::itype and Treor_Input::spacing count them: d for a list of spacings;
// otherwise Q in DICVOL for a pattern by time of flight, else 2theta.
int Dicvol_Itype_Of(std::string_view scat_var, std::string_view xspace);
int Treor_Spacing_Of(std::string_view xspace);

// What the user is asked for each program, with the values that stand there at first.
struct Dicvol_Input {
    std::string title;
    int lines = 0;  // first peaks of the list that are used, all when there are fewer
    int itype = 2;  // 1 theta, 2 two-theta, 3 d, 4 Q
    bool cubic = true, tetragonal = true, hexagonal = true, orthorhombic = true, monoclinic = false, triclinic = false;
    float amax = 25, bmax = 25, cmax = 25;                     // angstrom
    float bemin = 90, bemax = 125, volmin = 0, volmax = 2500;  // degrees, angstrom^3
    float wavelength = 0;
    float weight = 0, density = 0, density_error = 0;
    float eps = 0.03f, fom = 10;
    int impurity_lines = 0;
    bool zero_search = false, zero_refinement = true, option = false;
};
struct Ito_Input {
    std::string title;  // blank: "ITO input parameters"
    float wavelength = 0, zero_shift = 0;
};
struct Treor_Input {
    std::string title;  // blank: "Treor input parameters"
    int spacing = 2;    // 1 theta, 2 two-theta, 3 d
    float cem = 20, volume = 1500, beta = 125;
    float wavelength = 0;
    float merit = 10;
};
enum class Vecfind_Output { short_output, long_output, no_output };
struct Vecfind_Input {  // texts go to the file as they stand
    std::string title;
    std::string lattice = "P";
    std::string cell = "   5.5000  5.5000  6.0000   90.0   90.0   90.0";
    std::string tolerance;
    std::string k_range = "   0.0  0.5    0.0  0.5    0.0  0.5 ";
    std::string points = "      100         100         100 ";
    std::string wavelength;
    Vecfind_Output output = Vecfind_Output::short_output;
    bool special_only = false;  // special vectors alone
};

// The values of Vecfind at first: title from the note of the row's origin or else its title, lattice and cell from a title that holds
// "SPGR:" and "CELL:" (what follows is no cell, or nothing: the usual one stays), tolerance by the scattering variable, wavelength in
// (f14.5), blank for one that is too large for it.
Vecfind_Input Vecfind_Input_Of(const Points_Source& source, std::string_view origin_note, std::string_view title, float wavelength);

// The texts, peaks in the order of the list. Each fails with the name of what its columns cannot hold or what is no finite number, as
// the dialog calls it ("Amax", "the position of peak 3"), and then leaves `text` as it was. What ends a line or moves on it becomes a blank
// in names, titles and other texts of the user. TREOR's zero has no line.
Status Free_Peaks_File(const Points_Source& source, std::span<const Peak_Mark> peaks, std::string& text);
Status Vecfind_File(const Points_Source& source, const Vecfind_Input& input, std::span<const Peak_Mark> peaks, std::string& text);
Status Dicvol_File(const Points_Source& source, const Dicvol_Input& input, std::span<const Peak_Mark> peaks, std::string& text);
Status Ito_File(const Ito_Input& input, std::span<const Peak_Mark> peaks, std::string& text);
Status Treor_File(const Points_Source& source, const Treor_Input& input, std::span<const Peak_Mark> peaks, std::string& text);
Status Background_File(const Points_Source& source, std::span<const Background_Mark> points, std::string& text);

}  // namespace vntl
