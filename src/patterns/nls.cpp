#include "patterns/nls.hpp"

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

}  // namespace

Status Read_Nls(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    Line_Cursor lines(text);
    double intervals = 0;
    if (!Read_Title(lines, p.title) || !Read_Range(lines, p, intervals)) return Status::Fail(check_instr_wide);
    if (Status status = Allocate_Told(p, std::trunc(intervals + 1.5), text.size(), no_points_told); status.failed) return status;

    const std::size_t blocks = p.y.size() / block;  // one more than are read
    const std::span<float> y(p.y), deviations(p.sigma);
    for (std::size_t i = 1; i < blocks; ++i) {
        if (Read_10_F8(lines, y.subspan((i - 1) * block, block)) != Filled::all) return Status::Fail(bad_intensities);
        if (Read_10_F8(lines, deviations.subspan((i - 1) * block, block)) != Filled::all) return Status::Fail(bad_deviations);
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
