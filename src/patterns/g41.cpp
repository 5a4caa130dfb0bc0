#include "patterns/g41.hpp"

#include "base/text.hpp"
#include "patterns/neutron_tools.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr float least_variance = 1e-6f;  // what is below was not measured and counts as 1
constexpr std::string_view bad_file = " Error in Intensity file, check your instr parameter! ";

// Three lines of text, the first one the title, and comments.
bool Read_Head(Line_Cursor& lines, std::string& title) {
    std::string_view first, line;
    if (!lines.Next(first) || !lines.Next(line) || !lines.Next(line)) return false;
    title = Kept_Text(Trim_Right(first), title_width);
    Line_Cursor before = lines;
    while (lines.Next(line)) {
        if (!Trim_Left(line).starts_with('!')) {
            lines = before;
            return true;
        }
        before = lines;
    }
    return false;
}

}  // namespace

Status Read_G41(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    Line_Cursor lines(text);
    if (!Read_Head(lines, p.title)) return Status::Fail(bad_file);
    int npts = 0, kind = 0;
    float monitor_before = 0;
    if (!Read_Free_Record(lines, npts, p.TSample, p.TSetting, kind, p.monitor, monitor_before)) return Status::Fail(bad_file);
    if (!All_Finite(p.TSample, p.TSetting, p.monitor, monitor_before)) return Status::Fail(bad_file);
    if (Status status = Allocate_Told(p, npts, text.size(), no_points_told); status.failed) return status;
    double intervals = 0;  // the number of points is told on its own
    if (!Read_Range(lines, p, intervals) || !Read_Free_Record(lines, p.y)) return Status::Fail(bad_file);

    if (kind == 0) {
        const float factor = p.monitor > 1 && monitor_before > 1 ? p.monitor / monitor_before : 1.0f;
        for (std::size_t i = 0; i < p.y.size(); ++i) p.sigma[i] = factor * p.y[i];
    } else {
        if (!Read_Free_Record(lines, p.sigma)) return Status::Fail(bad_file);
        for (float& sigma : p.sigma) {
            const float variance = sigma * sigma;
            sigma = variance < least_variance ? 1.0f : variance;
        }
    }
    Set_Grid(p);
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace vntl
