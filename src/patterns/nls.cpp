#include "patterns/nls.hpp"

#include <algorithm>
#include <cmath>

#include "base/text.hpp"
#include "patterns/neutron_tools.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr std::size_t line_width = 132;
constexpr std::size_t block = 10;
constexpr float least_deviation = 1e-5f;  // what is below was not measured and counts as 1

constexpr std::string_view bad_intensities = " Error in (NLS) Intensity file, check your instr parameter!1";
constexpr std::string_view bad_deviations = " Error in (NLS) Intensity file, check your instr parameter!2";

// Leaves the cursor in front of the first line that is no comment.
bool Read_Title(Line_Cursor& lines, std::string& title) {
    std::string_view line;
    for (bool first = true;; first = false) {
        const Line_Cursor before = lines;
        if (!lines.Next(line)) return false;
        if (first) title = Trim(Kept_Text(line, line_width));
        if (Trim_Left(line).starts_with('!')) continue;
        lines = before;
        return true;
    }
}

// The blocks, and how many points they bring. All whole ones but the last have to be there.
Status Read_Blocks(Line_Cursor& lines, Diffraction_Pattern_Type& p, std::size_t& held) {
    const std::span<float> y(p.y), deviations(p.sigma);
    const std::size_t needed = std::max(y.size() / block, std::size_t{1}) - 1;
    for (std::size_t i = 0; i * block < y.size(); ++i) {
        const std::size_t points = std::min(block, y.size() - i * block);
        const List_Read intensities = Read_10_F8(lines, y.subspan(i * block, points));
        if (!intensities.All()) return i < needed ? Status::Fail(bad_intensities) : Status::Done();
        const List_Read measured = Read_10_F8(lines, deviations.subspan(i * block, points));
        if (!measured.All()) return i < needed ? Status::Fail(bad_deviations) : Status::Done();
        const std::size_t both = i < needed ? points : std::min(intensities.held, measured.held);
        held = i * block + both;
        if (both < points) break;
    }
    return Status::Done();
}

}  // namespace

Status Read_Nls(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    Line_Cursor lines(text);
    double intervals = 0;
    if (!Read_Title(lines, p.title) || !Read_Range(lines, p, intervals)) return Status::Fail(check_instr_wide);
    const double npts = std::trunc(intervals + 1.5);
    if (Status status = Allocate_Told(p, npts, text.size(), no_points_told); status.failed) return status;

    std::size_t held = 0;
    if (Status status = Read_Blocks(lines, p, held); status.failed) return status;
    if (held == 0) return Status::Fail(bad_intensities);
    if (held < p.y.size()) {
        End_At_Last_Number(p, held, npts);
        Set_Grid_End(p);
    }
    for (std::size_t i = 0; i < p.sigma.size(); ++i) {
        const float deviation = i > 0 && p.sigma[i] < least_deviation ? 1.0f : p.sigma[i];
        p.sigma[i] = deviation * deviation;
    }
    Set_Grid(p);
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace vntl
