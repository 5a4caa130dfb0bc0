// What the layouts of profile files share: the file in hand, phases and their propagation vectors, reflections with their codes and
// labels, and the shift of the abscissa.
//
// The x of a profile file are those of the diffractometer. The refinement found a zero and a displacement of the sample; with theta half of
// such an x,
//
//   true x = x - (zero + cosine cos(theta) + sine sin(theta))      time of flight: x - zero
//
// so points, reflections and excluded regions all move by the shift at their own x.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "base/text_file.hpp"
#include "patterns/pattern.hpp"
#include "patterns/profile.hpp"

namespace vntl {

// The file while it is read: the cursor stands behind its second line when a layout takes over.
struct Prf_File {
    std::string_view text;
    Line_Cursor lines;
    std::function<Status(const std::string& name, Text_File&)> open_beside;  // another file of the same directory
    Diffraction_Pattern_Type& pattern;
    PRF_Info_Add_Type& info;
};

// The layouts. Each fills both records, but for what the first line tells.
Status Read_Prf_Classic(Prf_File&);
Status Read_Prf_Columns(Prf_File&, std::string_view header);  // `header` is the second line
Status Read_Prf_Peaks(Prf_File&);                             // what a fit of single peaks leaves
Status Read_Prf_Integrated(Prf_File&);
Status Read_Prf_Pairs(Prf_File&);

// Tells the layout and reads the file's text; `xrf`: by its extension it is a fit of single peaks.
Status Read_Prf_Text(Prf_File&, bool xrf);

// --- phases --------------------------------------------------------------------------------------------------------------------

struct Prf_Phases {
    std::vector<int> reflections, vectors;  // their numbers, phase by phase
    std::vector<bool> superspace;

    explicit Prf_Phases(int nphases);
    int Number() const { return static_cast<int>(reflections.size()); }
    bool Any_Vectors() const;
    int Phase_Of(int phase) const;        // held inside 1 to Number()
    int Phase_Of_Entry(int entry) const;  // of a reflection, from 0, where the phases stand one behind the other
};

Status Check_Phases(int nphases, int line);

// Sizes the phases and reflections of `info`. Fails with `message` for a number below 0, and for more than the file can hold.
Status Allocate_Phases(Prf_File&, const Prf_Phases&, std::string_view message);

// Allocates the points; fails with `none` below one, and for more than the file can hold, naming the line that told so.
Status Allocate_Points(Prf_File&, int npts, int line, std::string_view none);

// Component 1 to 3 of the vectors begins here; both from 1.
float* Propagation_Vector(PRF_Info_Add_Type&, const Prf_Phases&, int phase, int vector);

// --- reflections ---------------------------------------------------------------------------------------------------------------

struct Prf_Reflection {
    float position = 0;
    int h = 0, k = 0, l = 0;
    int phase = 0;
    std::optional<int> wavelength;  // its number, where it is told
    int tag = 0;                    // 1 to 3 of a magnetic phase, or the number of its propagation vector
};

// One signed integer: from the lowest byte l, k and h, each with 128 added, three bits of the wavelength's number, and the phase. A
// negative code is of a phase from the eighth on.
Prf_Reflection Decode_Reflection(std::int32_t code);

// Entry `i`, from 0. The row of its tick, and its phase, are held inside those that there are.
void Set_Reflection(PRF_Info_Add_Type&, const Prf_Phases&, std::size_t i, const Prf_Reflection&);

// --- the layout of columns -----------------------------------------------------------------------------------------------------

inline constexpr std::string_view no_profile = "Error reading profile for Prf=";
inline constexpr std::string_view no_reflections = "Error reading reflections for Prf=";
inline constexpr std::string_view behind_profile = "+3", beside_profile = "-3";  // where the reflections stand

struct Prf_Point {
    float x = 0;
    std::array<float, 4> y{};  // observed, calculated, difference, background
};

bool Read_Prf_Point(std::string_view line, Prf_Point&);  // by its columns
void Set_Point(Diffraction_Pattern_Type&, std::size_t i, const Prf_Point&);

// The profile and its reflections, under heads that name the columns of both; `arrangement` becomes the one that is found.
Status Read_Prf_Rows(Prf_File&, const Prf_Phases&, std::string_view& arrangement);

// --- regions, shift and ends ---------------------------------------------------------------------------------------------------

// Reads `count` pairs of limits, a pair a line; false when they cannot be read.
bool Read_Regions(Prf_File&, int count, bool (*pair)(std::string_view line, std::span<float> limits));

struct Prf_Shift {
    float zero = 0, cosine = 0, sine = 0;
    bool flight = false;

    bool Constant() const { return flight || (cosine == 0 && sine == 0); }
    float At(float x) const;
};

// Takes the shift off every x; false when one of them is no number then.
bool Take_Shift_Off(const Prf_Shift&, Prf_File&);

void Set_Ranges(Diffraction_Pattern_Type&);  // limits and mean step of the points

bool Is_Finite(const std::vector<float>& values);

}  // namespace vntl
