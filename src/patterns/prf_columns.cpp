// The layout of columns: a line of numbers, what belongs to the phases, and the profile a point a line.
//
//     2   5251     1.54056     1.54439     0.01200     0.00000     0.00000     0     phases, points, wavelengths, zero, displacements
//      45  30   0   1                                        reflections of each phase, then its propagation vectors
//      0.00000   0.00000   0.50000 superspace                of each phase with vectors
//      1                                                     excluded regions, and a line of two limits for each
//     2Theta  Yobs ...                                       heads
//         10.0000      123.      120.        3.       80.    x, observed, calculated, difference, background, with TABs between them
//
// The last number of the second line is 1 for times of flight: then the displacements' places hold dtt1 and dtt2.
//
// Reflections stand behind the profile, a line that holds a colon above those of each phase, or at the right of its first lines. Columns
// decide where a number stands, for two may touch.
#include <algorithm>
#include <cstring>

#include "base/edit_descriptor.hpp"
#include "base/scan.hpp"
#include "base/text.hpp"
#include "patterns/neutron_tools.hpp"
#include "patterns/plain_columns.hpp"
#include "patterns/prf_tools.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr int header_line = 2;  // of the file
constexpr int phases_in_one_list = 8;
constexpr std::string_view no_profile = "Error reading profile for Prf=";
constexpr std::string_view no_reflections = "Error reading reflections for Prf=";
constexpr std::string_view behind_profile = "+3", beside_profile = "-3";

// --- the line of numbers -------------------------------------------------------------------------------------------------------

// How many numbers the line holds: as many as it has words, or more where two of them touch, which its end tells.
std::size_t Numbers_Of_Header(std::string_view line) {
    constexpr std::size_t without_last = 7, with_last = 8, last_but_one_ends = 58, seventh_ends = 70, eighth_ends = 75;
    const std::size_t most = with_last + 1, length = Trim_Right(line).size();
    std::vector<std::string_view> words;
    const Status cut = Get_Words(line, words, most, line.size());
    const std::size_t n = cut.failed ? most : words.size();
    if (n < with_last && length > seventh_ends && length <= eighth_ends) return with_last;
    if (n < without_last && length > last_but_one_ends && length <= seventh_ends) return without_last;
    return n;
}

struct Header {
    int nphases = 0, npts = 0;
    float lambda1 = 0, lambda2 = 0;
    Prf_Shift shift;
};

Status Read_Header(std::string_view line, Header& h) {
    static const Edit_Format seven("(I3,I7,5F12.5)"), eight("(I3,I7,5F12.5,I5)");
    const std::size_t n = Numbers_Of_Header(line);
    if (n != 7 && n != 8) return Status::Fail("Error in number of columns");
    int kind = 0;
    Edit_Reader reader(n == 7 ? seven : eight, line);
    const bool good = reader.Read(h.nphases, h.npts, h.lambda1, h.lambda2, h.shift.zero, h.shift.cosine, h.shift.sine) &&
                      (n == 7 || reader.Read(kind)) && All_Finite(h.lambda1, h.lambda2, h.shift.zero, h.shift.cosine, h.shift.sine);
    if (!good) return Status::Fail("Error reading (col=" + std::to_string(n) + "): nphases,npts,lambda1,lambda2, glb1, ...");
    h.shift.flight = kind == 1;
    return Status::Done();
}

// --- phases and regions --------------------------------------------------------------------------------------------------------

Status Read_Phases(Prf_File& file, Prf_Phases& phases) {
    constexpr std::string_view bad_lists = "Error reading: ic, nvk";
    const bool one_list = phases.Number() <= phases_in_one_list;
    const bool good = one_list ? Read_Free_Record(file.lines, phases.reflections, phases.vectors)
                               : Read_Free_Record(file.lines, phases.reflections) && Read_Free_Record(file.lines, phases.vectors);
    return good ? Allocate_Phases(file, phases, bad_lists) : Status::Fail(bad_lists);
}

Status Read_Vectors(Prf_File& file, Prf_Phases& phases) {
    static const Edit_Format format("(3F10.5,A)");
    for (int phase = 1; phase <= phases.Number(); ++phase)
        for (int j = 1; j <= phases.vectors[static_cast<std::size_t>(phase - 1)]; ++j) {
            std::string_view line;
            constexpr std::size_t behind = 30;
            if (!file.lines.Next(line) || Read_Record(line, format, std::span(Propagation_Vector(file.info, phases, phase, j), 3)).failed)
                return Status::Fail("Error reading propagation vectors");
            if (line.size() > behind && Equal_No_Case(Trim(line.substr(behind)), "superspace"))
                phases.superspace[static_cast<std::size_t>(phase - 1)] = true;
        }
    return Status::Done();
}

Status Read_Excluded(Prf_File& file) {
    static const Edit_Format pair("(2F14.5)");
    int count = 0;
    const bool good = Read_Free_Record(file.lines, count) && Read_Regions(file, count, pair);
    return good ? Status::Done() : Status::Fail("Error reading excluded regions");
}

// --- heads ---------------------------------------------------------------------------------------------------------------------

std::string_view Arrangement(std::size_t length) { return length == 53 ? behind_profile : length == 46 ? beside_profile : ""; }

Status Read_Heads(Prf_File& file, std::string_view& arrangement) {
    Diffraction_Pattern_Type& p = file.pattern;
    std::string_view line;
    if (!file.lines.Next(line)) return Status::Fail("Error reading headings of columns");
    if (Contains(line, "r.l.u.")) {
        p.scat_var = "r.l.u.";
        p.legend_x = "Reciprocal Lattice Units (r.l.u.)";
    }
    p.legend_y = Contains(line, "Log") ? "Log(Intensity)(arb. units)" : " Intensity (arb. units)";
    for (const std::string_view cut : {line.substr(0, line.find_last_not_of(' ') + 1), Trim_Right(line), Trim(line)})
        if (arrangement.empty()) arrangement = Arrangement(cut.size());
    constexpr std::size_t shown = 120;
    if (arrangement.empty()) return Status::Fail("Error! Prf is not => Prf=+3 or Prf=-3!\nLine read: " + Kept_Text(line, shown));
    return Status::Done();
}

// --- the profile ---------------------------------------------------------------------------------------------------------------

struct Point {
    float x = 0;
    std::array<float, 4> y{};  // observed, calculated, difference, background
};

// A point as nearly all files have it: a position with a decimal point, and plain numbers.
bool Take_Point(std::string_view line, Point& point) {
    constexpr std::size_t x_width = 12, y_width = 8, width = x_width + 4 * (y_width + 1);
    if (line.size() < width) return false;
    const char* at = line.data();
    if (std::memchr(at, '.', x_width) == nullptr || !Take_Real(at, at + x_width, point.x)) return false;
    at += x_width + 1;
    for (float& y : point.y) {
        if (!Take_Whole<0, 8, 8>(at, y) && !Take_Real(at, at + y_width, y)) return false;
        at += y_width + 1;
    }
    return true;
}

bool Read_Point(std::string_view line, Point& point) {
    static const Edit_Format format("(F12.4,4(1X,F8.0))");
    return Take_Point(line, point) || Read_Record(line, format, point.x, std::span<float>(point.y)).ok();
}

// Calls `beside` with the number of the point, from 0, and its line.
template <class Beside>
bool Read_Points(Prf_File& file, Beside beside) {
    Diffraction_Pattern_Type& p = file.pattern;
    std::string_view line;
    Point point;
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        if (!file.lines.Next(line) || !Read_Point(line, point)) return false;
        p.x[i] = point.x;
        p.y[i] = point.y[0];
        p.ycalc[i] = point.y[1];
        p.bgr[i] = point.y[3];
        if (!beside(i, line)) return false;
    }
    return Is_Finite(p.x);
}

// --- reflections ---------------------------------------------------------------------------------------------------------------

// Position, Miller indices, and the numbers of phase and wavelength. Further indices of a superspace are passed over.
const Edit_Format& Format_Beside() {
    static const Edit_Format format("(49X,F12.4,11X,3I3,2X,2I3)");
    return format;
}
const Edit_Format& Format_Behind(int superspace_vectors) {
    static const Edit_Format plain("(F12.4,47X,3I3,2X,2I3)"), one("(F12.4,11X,3I4,5X,2I4)"), two("(F12.4,11X,3I4,9X,2I4)"),
        three("(F12.4,11X,3I4,13X,2I4)");
    const Edit_Format* const formats[] = {&plain, &one, &two, &three};
    return *formats[std::clamp(superspace_vectors, 0, 3)];
}

// The phase is the one that the line tells, or else the one whose turn it is.
bool Read_Reflection(Prf_File& file, const Prf_Phases& phases, std::size_t i, std::string_view line, const Edit_Format& format) {
    Prf_Reflection r;
    if (Read_Record(line, format, r.position, r.h, r.k, r.l, r.phase, r.wavelength.emplace()).failed || !All_Finite(r.position))
        return false;
    if (r.phase != phases.Phase_Of(r.phase)) r.phase = phases.Phase_Of_Entry(static_cast<int>(i));
    Set_Reflection(file.info, phases, i, r);
    return true;
}

// The lists of the phases one behind the other, each under a line with a colon.
bool Read_Reflections_Behind(Prf_File& file, const Prf_Phases& phases) {
    const auto count = static_cast<std::size_t>(file.info.nreflections);
    bool listed = false;
    std::string_view line;
    for (std::size_t i = 0; i < count;) {
        if (!file.lines.Next(line)) return false;
        const bool head = Contains(line, ":");
        listed = listed || head;
        if (head || !listed) continue;
        const auto place = static_cast<std::size_t>(phases.Phase_Of_Entry(static_cast<int>(i)) - 1);
        const int vectors = phases.superspace[place] ? phases.vectors[place] : 0;
        if (vectors > 3 || !Read_Reflection(file, phases, i, line, Format_Behind(vectors))) return false;
        ++i;
    }
    return true;
}

Status Read_Behind(Prf_File& file, const Prf_Phases& phases) {
    const auto nothing = [](std::size_t, std::string_view) { return true; };
    if (!Read_Points(file, nothing)) return Status::Fail(std::string(no_profile) + "+3");
    return Read_Reflections_Behind(file, phases) ? Status::Done() : Status::Fail(std::string(no_reflections) + "+3 ");
}

Status Read_Beside(Prf_File& file, const Prf_Phases& phases) {
    const auto count = static_cast<std::size_t>(file.info.nreflections);
    bool reflections_good = count <= file.pattern.x.size();
    const auto reflection = [&](std::size_t i, std::string_view line) {
        reflections_good = i >= count || Read_Reflection(file, phases, i, line, Format_Beside());
        return reflections_good;
    };
    if (reflections_good && Read_Points(file, reflection)) return Status::Done();
    return Status::Fail(reflections_good ? std::string(no_profile) + "-3" : std::string(no_reflections) + "-3 ");
}

}  // namespace

Status Read_Prf_Columns(Prf_File& file, std::string_view line) {
    Diffraction_Pattern_Type& p = file.pattern;
    Header header;
    if (Status status = Read_Header(line, header); status.failed) return status;
    const Prf_Shift& shift = header.shift;
    p.scat_var = shift.flight ? "TOF" : "2theta";
    p.conv[0] = shift.flight ? shift.cosine : header.lambda1;
    p.conv[1] = shift.flight ? shift.sine : header.lambda2;
    if (Status status = Check_Phases(header.nphases, header_line); status.failed) return status;
    if (Status status = Allocate_Points(file, header.npts, header_line, "ERROR Format Special: npts <= 0"); status.failed) return status;

    Prf_Phases phases(header.nphases);
    std::string_view arrangement;
    if (Status status = Read_Phases(file, phases); status.failed) return status;
    if (Status status = Read_Vectors(file, phases); status.failed) return status;
    if (Status status = Read_Excluded(file); status.failed) return status;
    if (Status status = Read_Heads(file, arrangement); status.failed) return status;
    if (Status status = arrangement == behind_profile ? Read_Behind(file, phases) : Read_Beside(file, phases); status.failed) return status;

    if (!Take_Shift_Off(shift, file)) return Status::Fail(std::string(no_profile) + std::string(arrangement));
    Set_Ranges(p);
    Set_Count_Variances(p);
    return Status::Done();
}

}  // namespace vntl
