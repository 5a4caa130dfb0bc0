#include "patterns/time_variable.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "base/text.hpp"
#include "patterns/neutron_tools.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr float least_time = 1e-6f;
constexpr std::string_view zero_time = " Zero time in *.DAT ";

bool Read_Header(Line_Cursor& lines, Diffraction_Pattern_Type& p, double& intervals) {
    constexpr int dropped = 3;
    std::string_view title, line;
    if (!lines.Next(title)) return false;
    p.title = Kept_Text(Trim_Right(title), title_width);
    for (int i = 0; i < dropped; ++i)
        if (!lines.Next(line)) return false;
    return Read_Range(lines, p, intervals);
}

}  // namespace

Status Read_Time_Variable(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    Line_Cursor lines(text);
    double intervals = 0;
    if (!Read_Header(lines, p, intervals)) return Status::Fail(check_instr_wide);
    if (Status status = Allocate_Told(p, std::trunc(intervals + 1.5), text.size(), check_instr_wide); status.failed) return status;

    std::vector<float> times(p.y.size());
    if (!Read_5_F6_F10(lines, times, p.y).All()) return Status::Fail(check_instr_wide);
    if (std::any_of(times.begin(), times.end(), [](float t) { return t < least_time; })) return Status::Fail(zero_time);
    const double mean = std::accumulate(times.begin(), times.end(), 0.0) / static_cast<double>(times.size());
    if (!std::isfinite(mean)) return Status::Fail(check_instr_wide);
    for (std::size_t i = 0; i < times.size(); ++i) p.y[i] = p.sigma[i] = p.y[i] * static_cast<float>(mean) / times[i];
    Set_Grid(p);
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace vntl
