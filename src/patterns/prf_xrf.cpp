// What a fit of single peaks leaves: the profile, and at the right of its first lines the peaks.
//
//     Scattering Variable: 2theta
//     Number of points: 2001
//     Number of peaks: 12
//     heads
//     10.00  123. 120.  3. 80.  21.356 0.0  1520.3 0.12 0.45 (1 0 0)    x, observed, calculated, -, background, position, -, area, width,
//     eta 10.02  125. 121.  4. 80.
#include <array>
#include <cmath>

#include "base/conversions.hpp"
#include "base/free_form.hpp"
#include "base/text.hpp"
#include "patterns/header_words.hpp"
#include "patterns/prf_tools.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr std::size_t line_width = 200, label_width = 80;
constexpr int points_line = 4;  // of the file: where their number stands
constexpr std::string_view bad_points = "ERROR: Reading npts in XRF file", bad_peaks = "ERROR: Reading npeaks in XRF file";

Status Read_Variable(Prf_File& file) {
    Diffraction_Pattern_Type& p = file.pattern;
    std::string_view line, rest;
    if (!file.lines.Next(line)) return Status::Fail("ERROR: Reading line 3 in XRF file");
    p.scat_var = "2theta";
    p.legend_y = "Intensity (arb.units)";
    if (!Behind_Word(line, "Scattering Variable:", rest)) return Status::Done();
    p.scat_var = Kept_Text(rest, scat_var_width);
    if (p.scat_var == "Distance") p.legend_x = "Distance (Pixels)";
    return Status::Done();
}

// A whole number behind a colon.
Status Read_Number(Line_Cursor& lines, int& number, std::string_view no_line, std::string_view bad) {
    std::string_view line;
    if (!lines.Next(line)) return Status::Fail(no_line);
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) return Status::Fail(std::string(bad) + ", ':' is missing!");
    return Free_Form_Reader(line.substr(colon + 1)).Read(number) ? Status::Done() : Status::Fail(bad);
}

std::string Label(float area, float width, float eta, std::string_view words) {
    std::string label =
        " Int.:" + IRealToString(area, "(F10.1)") + " Fwhm:" + IRealToString(width, "(F8.2)") + " Eta:" + IRealToString(eta, "(F7.3)");
    if (!words.empty()) label += ' ' + To_Utf8(Trim_Right(words));
    return std::string(Cut(label, label_width));
}

// Numbers up to the first "(", from which on it is words.
bool Read_Line(Prf_File& file, std::size_t i, bool has_peak, std::string_view line) {
    Diffraction_Pattern_Type& p = file.pattern;
    line = line.substr(0, line_width);
    const std::string_view numbers = line.substr(0, line.find('('));
    std::array<float, 10> v{};
    const auto values = std::span(v).first(has_peak ? 10 : 5);
    Free_Form_Reader reader(numbers);
    if (!reader.Read(values) || !std::isfinite(v[0]) || !std::isfinite(v[5])) return false;
    p.x[i] = v[0];
    p.y[i] = v[1];
    p.ycalc[i] = v[2];
    p.bgr[i] = v[4];
    if (!has_peak) return true;
    file.info.refl_position[i] = v[5];
    file.info.refl_label[i] = Label(v[7], v[8], v[9], line.substr(numbers.size()));
    return true;
}

}  // namespace

Status Read_Prf_Peaks(Prf_File& file) {
    Diffraction_Pattern_Type& p = file.pattern;
    int npts = 0, npeaks = 0;
    if (Status status = Read_Variable(file); status.failed) return status;
    if (Status status = Read_Number(file.lines, npts, "ERROR: Reading line 4 in XRF file containing npts", bad_points); status.failed)
        return status;
    if (Status status = Read_Number(file.lines, npeaks, bad_peaks, bad_peaks); status.failed) return status;
    if (Status status = Allocate_Points(file, npts, points_line, bad_points); status.failed) return status;
    if (npeaks > npts) return Status::Fail(bad_peaks);  // each stands on a point's line
    Prf_Phases phases(1);
    phases.reflections = {npeaks};
    if (Status status = Allocate_Phases(file, phases, bad_peaks); status.failed) return status;

    std::string_view line;
    file.lines.Next(line);  // heads
    for (int i = 0; i < npts; ++i)
        if (!file.lines.Next(line) || !Read_Line(file, static_cast<std::size_t>(i), i < npeaks, line))
            return Status::Fail("ERROR: Reading numeric line #" + IntegerToString(i + 1, "(I6)") + " in XRF file");
    file.info.format = "XRF";
    Set_Ranges(p);
    Set_Count_Variances(p);
    return Status::Done();
}

}  // namespace vntl
