#include "patterns/r3a.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "base/huge_pages.hpp"
#include "base/text.hpp"
#include "patterns/neutron_tools.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr double scan_width = 18;  // degrees
constexpr std::size_t line_points = 10;
constexpr float marker = -1000, marker_play = 0.001f;

struct Header {
    double lines = 0;  // of data at most, by the step
    float factor = 1;  // of the variances
};

bool Read_Header(Line_Cursor& lines, Header& head, Diffraction_Pattern_Type& p) {
    static const Edit_Format step("(16X,F8.3)"), start("(F8.3)"), monitors("(2F8.0)");
    std::string_view title;
    if (!lines.Next(title)) return false;
    p.title = Kept_Text(Trim_Right(title), title_width);
    float point_monitor = 0;
    if (!Read_Fixed(lines, step, p.step) || !Read_Fixed(lines, start, p.xmin) || !Read_Fixed(lines, monitors, p.monitor, point_monitor))
        return false;
    if (point_monitor >= 1) head.factor = p.monitor / point_monitor;
    head.lines = std::round(scan_width / static_cast<double>(p.step));
    return All_Finite(p.step, p.xmin, p.monitor, point_monitor, head.factor);
}

bool Is_Marker(std::string_view line) {
    static const Edit_Format pair("(I2,F6.0)");
    if (line.substr(0, 8).find('-') == std::string_view::npos) return false;  // hardly a line gets further
    int detectors = 0;
    float count = 0;
    return Edit_Reader(pair, line).Read(detectors, count) && std::fabs(count - marker) <= marker_play;
}

struct Points {
    std::vector<int> detectors;
    std::vector<float> counts;
    double told = 0;       // belong to the pattern
    std::size_t held = 0;  // up to the last pair that the file holds
    bool marked = false;   // a marker told so
};

// The points in the lines up to a marker or the end.
Status Read_Lines(Line_Cursor& lines, double most_lines, Points& points) {
    const std::span<int> detectors(points.detectors);
    const std::span<float> counts(points.counts);
    points.told = (most_lines - 1) * line_points;
    for (std::size_t at = 0; static_cast<double>(at) < most_lines * line_points && !lines.At_End(); at += line_points) {
        std::string_view line;
        if (Line_Cursor ahead = lines; ahead.Next(line) && Is_Marker(line)) {
            points.told = static_cast<double>(at) - line_points;  // without the line above the marker
            points.marked = true;
            break;
        }
        if (at + line_points > counts.size()) return Status::Fail(no_points_told);
        const List_Read pairs = Read_10_I2_F6(lines, detectors.subspan(at, line_points), counts.subspan(at, line_points));
        if (!pairs.All()) return Status::Fail(check_instr);
        if (pairs.held > 0) points.held = at + pairs.held;
    }
    return Status::Done();
}

Status Take_Points(const Points& points, Diffraction_Pattern_Type& p) {
    if (points.told > most_claimed) return Status::Fail(no_points_told);
    const double held = points.marked ? points.told : std::min(points.told, static_cast<double>(points.held));
    const auto n = static_cast<std::size_t>(std::max(held, 0.0));
    if (Status status = Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(std::max<std::size_t>(n, 1))); status.failed)
        return status;
    std::copy_n(points.detectors.begin(), n, p.nd.begin());
    std::copy_n(points.counts.begin(), n, p.y.begin());
    End_At_Last_Number(p, n, std::max(points.told, 0.0));
    return Status::Done();
}

}  // namespace

Status Read_R3a(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    Line_Cursor lines(text);
    Header head;
    if (!Read_Header(lines, head, p)) return Status::Fail(check_instr);
    if (!(head.lines >= 1) || std::isinf(head.lines)) return Status::Fail(no_points_told);
    // A marker may end the scan long before the end that the step tells, so that the lines of the file tell what is read.
    const std::size_t given = std::min(Count_Lines(lines.Rest()), Most_Points(text.size()) / line_points) * line_points;
    Points points;
    Assign_Many(points.detectors, given, 0);
    Assign_Many(points.counts, given, 0.0f);
    if (Status status = Read_Lines(lines, head.lines, points); status.failed) return status;
    if (Status status = Take_Points(points, p); status.failed) return status;

    Set_Grid_End(p);
    Set_Grid(p);
    Set_Detector_Variances(p, head.factor);
    Set_Y_Limits(p);
    if (p.npts == 0) {  // a range that is no fault of its own: the points are what is missing
        p.xmax = p.xmin + p.step;
        p.ymin = std::numeric_limits<float>::max();
        p.ymax = std::numeric_limits<float>::lowest();
    }
    return Status::Done();
}

Status Read_R3a_Old(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    p.title = " No title: data format -> old R3A";
    Line_Cursor lines(text);
    double intervals = 0;
    if (!Read_Range(lines, p, intervals)) return Status::Fail(check_instr);
    if (Status status = Allocate_Told(p, std::trunc(intervals + 1.5), text.size(), no_points_told); status.failed) return status;
    const List_Read pairs = Read_10_I2_F6(lines, p.nd, p.y);
    if (!pairs.All() || pairs.held == 0) return Status::Fail(check_instr);
    if (pairs.held < p.y.size()) {
        End_At_Last_Number(p, pairs.held, p.npts);
        Set_Grid_End(p);
    }
    Set_Grid(p);
    Set_Detector_Variances(p, 1.0f);
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace vntl
