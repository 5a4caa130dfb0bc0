// Error bars, bars and pies.
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "base/page.hpp"
#include "drawing/font_table.hpp"
#include "drawing/presentation.hpp"
#include "drawing/title_fit.hpp"

namespace vntl {

namespace {

constexpr double error_cap = 3;       // page units on each side
constexpr double filled_share = 0.8;  // of a slot, by its bars
constexpr double arc_step = 2.5;      // degrees: in the largest circle of a page an arc is off by a fifth of a pixel
constexpr double label_gap = 5;       // page units between the rim of a pie and a text, and between two texts
constexpr double least_outlined = 4;  // line units of the rim that a slice needs for an outline

// An upright stroke, or a bar of some width: the places of its left and right side and of its lower and upper end.
using Upright = Rect;

// With more strokes than a page shows side by side, those that begin in the same column of pixels are drawn as one, as long as all of them:
// otherwise a plot would cost points, and not pixels.
std::vector<Upright> Merged(std::vector<Upright> strokes, double column) {
    constexpr std::size_t shown_one_by_one = 4096;
    if (strokes.size() <= shown_one_by_one) return strokes;
    for (Upright& stroke : strokes) {
        const double left = column * std::floor(stroke.x1 / column);
        stroke.x2 = left + std::max(column, stroke.x2 - stroke.x1);
        stroke.x1 = left;
    }
    std::stable_sort(strokes.begin(), strokes.end(), [](const Upright& a, const Upright& b) { return a.x1 < b.x1; });
    std::vector<Upright> merged;
    for (const Upright& stroke : strokes) {
        if (merged.empty() || merged.back().x1 != stroke.x1) merged.push_back(stroke);
        merged.back().y1 = std::min(merged.back().y1, stroke.y1);
        merged.back().y2 = std::max(merged.back().y2, stroke.y2);
    }
    return merged;
}

Point On_Circle(Point centre, double radius, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

std::vector<Pie_Slice> Slices_Of(std::span<const float> values, double start) {
    const auto counts = [](float value) { return std::isfinite(value) && value > 0; };
    double sum = 0;
    for (const float value : values) sum += counts(value) ? static_cast<double>(value) : 0;
    std::vector<Pie_Slice> slices;
    double below = 0;
    for (std::size_t i = 0; i < std::min(values.size(), static_cast<std::size_t>(max_sets)); ++i) {
        if (!counts(values[i])) continue;
        const double above = below + static_cast<double>(values[i]);
        slices.push_back({i + 1, start - 360 * below / sum, start - 360 * above / sum});
        below = above;
    }
    return slices;
}

bool Touch(const Rect& a, const Rect& b) { return a.x1 < b.x2 && b.x1 < a.x2 && a.y1 < b.y2 && b.y1 < a.y2; }

}  // namespace

void Presentation::IPgErrorBars(std::span<const float> x, std::span<const float> y, std::span<const float> half_length) {
    const double half_cap = error_cap * Target().Width() / page_width;
    const int set = std::clamp(next_set_ - 1, 1, std::max(static_cast<int>(styles_.size()), 1));
    const Pen pen{styles_.empty() ? graphics_->Current_Colour() : Style_Of_Set(set).line_colour, graphics_->Line_Width(),
                  Line_Style::solid};
    std::vector<Upright> bars;
    for (std::size_t i = 0; i < std::min({x.size(), y.size(), half_length.size()}); ++i) {
        const double middle = y[i], half = std::fabs(static_cast<double>(half_length[i]));
        const Point low = Plot_To_Device(x[i], middle - half), high = Plot_To_Device(x[i], middle + half);
        if (half > 0 && std::isfinite(low.x) && std::isfinite(low.y) && std::isfinite(high.y))
            bars.push_back({low.x, std::min(low.y, high.y), low.x, std::max(low.y, high.y)});
    }
    Clip_Sets();
    for (const Upright& bar : Merged(std::move(bars), Line_Unit(Target().Width(), Target().Height()))) {
        const double at = bar.x1;
        Target().Polyline(std::array<Point, 2>{{{at, bar.y1}, {at, bar.y2}}}, pen);
        for (const double end : {bar.y1, bar.y2})
            Target().Polyline(std::array<Point, 2>{{{at - half_cap, end}, {at + half_cap, end}}}, pen);
    }
    graphics_->Clip_To_Area();
}

void Presentation::IPgBars(std::span<const float> x, std::span<const float> y, float slot) {
    if (styles_.empty()) return;
    const auto sets = static_cast<double>(styles_.size());
    const double width = filled_share * static_cast<double>(slot) / sets;
    const double left = width * (std::min<double>(next_set_, sets) - 1 - 0.5 * sets);  // of this set, from the middle of its slot
    const Colour colour = Next_Set().line_colour;
    std::vector<Upright> bars;
    for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) {
        const double from = static_cast<double>(x[i]) + left;
        const Point a = Plot_To_Device(from, 0), b = Plot_To_Device(from + width, y[i]);
        if (y[i] != 0 && std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(b.x) && std::isfinite(b.y))
            bars.push_back({std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)});
    }
    Clip_Sets();
    for (const Upright& bar : Merged(std::move(bars), Line_Unit(Target().Width(), Target().Height())))
        Target().Fill(std::array<Point, 4>{{{bar.x1, bar.y1}, {bar.x2, bar.y1}, {bar.x2, bar.y2}, {bar.x1, bar.y2}}}, colour);
    graphics_->Clip_To_Area();
}

void Presentation::IPgPie(std::span<const float> values, float start, std::span<const Set_Text> texts, float right) {
    const std::vector<Pie_Slice> slices = Slices_Of(values, start);
    if (slices.empty()) return;
    const Rect box = Box();
    const Point centre{0.5 * (box.x1 + box.x2), 0.5 * (box.y1 + box.y2)};
    const Text_Style style = graphics_->Current_Text();
    const double last = Area().x1 + static_cast<double>(right) * (Area().x2 - Area().x1);
    double figures = 0;
    for (const Set_Text& text : texts) figures = std::max(figures, Target().Text_Width(text.figure, style));
    const double aside = std::min(centre.x - Area().x1, last - centre.x);
    const double beside = texts.empty() ? 0 : figures + Em_Of_Cell(style.width, style.height) + label_gap * Target().Width() / page_width;
    const double rim = std::max({0.5 * std::min(box.x2 - box.x1, box.y2 - box.y1), 0.0});
    const double radius = std::max(std::min(rim, aside - beside), 0.25 * rim);

    for (const Pie_Slice& slice : slices) {
        std::vector<Point> corners;
        const bool whole = slices.size() == 1;
        if (!whole) corners.push_back(centre);
        const int steps = std::max(1, static_cast<int>(std::ceil((slice.from - slice.to) / arc_step)));
        for (int k = 0; k < steps + (whole ? 0 : 1); ++k)
            corners.push_back(On_Circle(centre, radius, slice.from + (slice.to - slice.from) * k / steps));
        Target().Fill(corners, Style_Of_Set(static_cast<int>(slice.set)).line_colour);
    }
    const double a_degree = radius * std::numbers::pi / 180, least = least_outlined * Line_Unit(Target().Width(), Target().Height());
    const Pen outline{graphics_->Current_Colour(), graphics_->Line_Width(), Line_Style::solid};
    for (std::size_t k = 0; slices.size() > 1 && k < slices.size(); ++k) {
        const Pie_Slice &slice = slices[k], &before = slices[(k + slices.size() - 1) % slices.size()];
        // Outlines of very thin slices would be all that is seen of them; their own colour closes the seam between two areas.
        const bool thin = std::min(slice.from - slice.to, before.from - before.to) * a_degree < least;
        const Pen pen{thin ? Style_Of_Set(static_cast<int>(slice.set)).line_colour : outline.colour, outline.width, Line_Style::solid};
        Target().Polyline(std::array<Point, 2>{{centre, On_Circle(centre, radius, slice.from)}}, pen);
    }
    Target().Ellipse(centre, radius, radius, false, outline);
    Label_Slices(centre, radius, slices, texts, style, last);
}

// Right of the pie from the rim to the right, left of it to the left; a name has as much of the room as its figure leaves.
void Presentation::Label_Slices(Point centre, double rim, std::span<const Pie_Slice> slices, std::span<const Set_Text> texts,
                                const Text_Style& style, double right) {
    const auto width = [&](std::string_view text) { return Target().Text_Width(text, style); };
    const double em = Em_Of_Cell(style.width, style.height), half = 0.5 * (cap_height + descent) * em;
    const double gap = label_gap * Target().Height() / page_height;
    const double top = Box().y2 + title_share * (Area().y2 - Box().y2) - descent * title_em_;
    std::vector<Pie_Slice> largest_first(slices.begin(), slices.end());
    std::stable_sort(largest_first.begin(), largest_first.end(),
                     [](const Pie_Slice& a, const Pie_Slice& b) { return a.from - a.to > b.from - b.to; });
    std::vector<Rect> taken;
    for (const Pie_Slice& slice : largest_first) {
        if (slice.set > texts.size()) continue;
        const Set_Text& text = texts[slice.set - 1];
        const Point at = On_Circle(centre, rim + half + gap, 0.5 * (slice.from + slice.to));
        const bool to_the_right = at.x >= centre.x;
        const double room = (to_the_right ? right - at.x : at.x - Area().x1) - gap, for_name = room - width(text.figure + ' ');
        std::string written = for_name > 3 * em ? Shortened(text.name, for_name, width) : std::string();
        if (!written.empty() && !text.figure.empty()) written += ' ';
        written += text.figure;
        const double length = width(written);
        const Rect place{to_the_right ? at.x : at.x - length, at.y - half, to_the_right ? at.x + length : at.x, at.y + half};
        const Rect grown{place.x1 - gap, place.y1 - 0.5 * gap, place.x2 + gap, place.y2 + 0.5 * gap};
        if (length > room || place.y1 < Area().y1 || place.y2 > top) continue;
        if (std::any_of(taken.begin(), taken.end(), [&](const Rect& other) { return Touch(grown, other); })) continue;
        taken.push_back(place);
        Text_Style letters = style;
        letters.justify = to_the_right ? Justify::left : Justify::right;
        letters.angle = 0;
        Target().Text({at.x, place.y1 + descent * em}, written, letters);
    }
}

}  // namespace vntl
