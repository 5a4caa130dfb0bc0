// Pies: slices of a circle and the texts beside them.
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

#include "base/page.hpp"
#include "drawing/font_table.hpp"
#include "drawing/line_unit.hpp"
#include "drawing/presentation.hpp"
#include "drawing/rects.hpp"
#include "drawing/title_fit.hpp"

namespace vntl {

namespace {

constexpr double arc_step = 2.5;      // degrees: in the largest circle of a page an arc is off by a fifth of a pixel
constexpr double label_gap = 5;       // page units between the rim of a pie and a text, and between two texts
constexpr double before_text = 3;     // page units from the end of a line to the text to which it leads
constexpr double least_outlined = 4;  // line units of the rim that a slice needs for an outline
constexpr double least_name = 3;      // em of a name that is still worth writing
constexpr double turn_step = 2;       // degrees: a text looks for a place along the rim in such steps
constexpr double farthest_turn = 44;  // degrees
constexpr int most_lines_out = 3;
constexpr std::size_t most_turned = 60;  // slices; of more, texts stand at their slices alone

Point On_Circle(Point centre, double radius, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

double Sweep(const Pie_Slice& slice) { return slice.from - slice.to; }

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

// Places for texts round a pie. A text reads away from the pie: right of its middle to the right, left of it to the left.
class Label_Places {
public:
    // `half`: half the height of a text; `gap`: what texts keep from the rim and from each other.
    Label_Places(Point centre, double rim, const Rect& room, double half, double gap)
        : centre_(centre), rim_(rim), room_(room), half_(half), gap_(gap) {}

    struct Label {
        double slice, angle;  // degrees: of the middle of the slice, and of the text
        Point rim, at;        // ends of the line that leads to it; the latter is the middle of the text's inner side
        Rect rect;            // of the text
        bool moved;           // a line leads to it

        bool To_The_Right() const { return at.x == rect.x1; }
    };

    // Room for a text there, away from the pie.
    double Room(double slice, double turn, int lines) const {
        const Point at = Place(slice, turn, lines);
        return (at.x >= centre_.x ? room_.x2 - at.x : at.x - room_.x1) - gap_;
    }

    // Turned along the rim, and some lines farther out.
    Label At(double slice, double turn, int lines, double length) const {
        const Point at = Place(slice, turn, lines);
        const bool to_the_right = at.x >= centre_.x;
        const Rect rect{to_the_right ? at.x : at.x - length, at.y - half_, to_the_right ? at.x + length : at.x, at.y + half_};
        return {slice, slice + turn, On_Circle(centre_, rim_, slice), at, rect, turn != 0 || lines != 0};
    }

    bool Is_Free(const Label& label) const {
        const Rect& rect = label.rect;
        if (rect.x1 < room_.x1 || rect.y1 < room_.y1 || rect.x2 > room_.x2 || rect.y2 > room_.y2) return false;
        return std::none_of(taken_.begin(), taken_.end(), [&](const Label& other) {
            const bool in_order = (label.slice < other.slice) == (label.angle < other.angle) && std::fabs(label.angle - other.angle) < 360;
            return !in_order || Touch(Grown(rect, gap_, 0.5 * gap_), other.rect) || Leads_Through(label, other.rect) ||
                   Leads_Through(other, rect);
        });
    }

    void Take(const Label& label) { taken_.push_back(label); }

private:
    // Far enough out for a line to it to run beside the pie.
    Point Place(double slice, double turn, int lines) const {
        const double clear = rim_ / std::cos(turn * std::numbers::pi / 180);
        return On_Circle(centre_, std::max(rim_ + half_, clear) + gap_ + lines * (2 * half_ + gap_), slice + turn);
    }

    static bool Leads_Through(const Label& label, const Rect& rect) {
        constexpr int places = 24;
        if (!label.moved) return false;
        for (int k = 0; k <= places; ++k) {
            const double share = static_cast<double>(k) / places;
            const double x = label.rim.x + share * (label.at.x - label.rim.x), y = label.rim.y + share * (label.at.y - label.rim.y);
            if (x > rect.x1 && x < rect.x2 && y > rect.y1 && y < rect.y2) return true;
        }
        return false;
    }

    Point centre_;
    double rim_;
    Rect room_;
    double half_, gap_;
    std::vector<Label> taken_;
};

}  // namespace

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
    const double largest = 0.5 * std::min(box.x2 - box.x1, box.y2 - box.y1),
                 rim = std::max(std::min(largest, aside - beside), 0.25 * largest);

    const bool whole = slices.size() == 1;
    for (const Pie_Slice& slice : slices) {
        std::vector<Point> corners;
        if (!whole) corners.push_back(centre);
        const int steps = std::max(1, static_cast<int>(std::ceil(Sweep(slice) / arc_step)));
        for (int k = 0; k < steps + (whole ? 0 : 1); ++k) corners.push_back(On_Circle(centre, rim, slice.from - Sweep(slice) * k / steps));
        Target().Fill(corners, Style_Of_Set(static_cast<int>(slice.set)).line_colour);
    }
    const double a_degree = rim * std::numbers::pi / 180, least = least_outlined * Line_Unit(Target());
    const Pen outline{graphics_->Current_Colour(), graphics_->Line_Width(), Line_Style::solid};
    for (std::size_t k = 0; !whole && k < slices.size(); ++k) {
        const Pie_Slice &slice = slices[k], &before = slices[(k + slices.size() - 1) % slices.size()];
        // Outlines of very thin slices would be all that is seen of them; their own colour closes the seam between two areas.
        const bool thin = std::min(Sweep(slice), Sweep(before)) * a_degree < least;
        const Pen pen{thin ? Style_Of_Set(static_cast<int>(slice.set)).line_colour : outline.colour, outline.width, Line_Style::solid};
        Target().Polyline(std::array<Point, 2>{{centre, On_Circle(centre, rim, slice.from)}}, pen);
    }
    Target().Ellipse(centre, rim, rim, false, outline);
    Label_Slices(centre, rim, slices, texts, last);
}

void Presentation::Label_Slices(Point centre, double rim, std::vector<Pie_Slice> slices, std::span<const Set_Text> texts, double right) {
    Text_Style style = graphics_->Current_Text();
    style.angle = 0;
    const auto width = [&](std::string_view text) { return Target().Text_Width(text, style); };
    const double em = Em_Of_Cell(style.width, style.height), half = 0.5 * (cap_height + descent) * em;
    const double top = Box().y2 + title_share * (Area().y2 - Box().y2) - descent * title_em_;
    Label_Places places(centre, rim, {Area().x1, Area().y1, right, top}, half, label_gap * Target().Height() / page_height);
    const double farthest = slices.size() <= most_turned ? farthest_turn : 0;
    const int farthest_out = slices.size() <= most_turned ? most_lines_out : 0;

    std::stable_sort(slices.begin(), slices.end(), [](const Pie_Slice& a, const Pie_Slice& b) { return Sweep(a) > Sweep(b); });
    for (const Pie_Slice& slice : slices) {
        if (slice.set > texts.size()) continue;
        const Set_Text& text = texts[slice.set - 1];
        const double middle = 0.5 * (slice.from + slice.to);
        std::optional<Label_Places::Label> found;
        std::string written;
        for (double turn = 0; !found && turn <= farthest; turn = turn > 0 ? -turn : turn_step - turn)
            for (int lines = 0; !found && lines <= farthest_out; ++lines) {
                const double for_name = places.Room(middle, turn, lines) - width(text.figure + ' ');
                written = for_name > least_name * em ? Shortened(text.name, for_name, width) : std::string();
                if (!written.empty() && !text.figure.empty()) written += ' ';
                written += text.figure;
                const Label_Places::Label label = places.At(middle, turn, lines, width(written));
                if (places.Is_Free(label)) found = label;
            }
        if (!found) continue;
        places.Take(*found);
        const double before = (found->To_The_Right() ? -1 : 1) * before_text * Target().Width() / page_width;
        if (found->moved)
            Target().Polyline(std::array<Point, 2>{{found->rim, {found->at.x + before, found->at.y}}},
                              {graphics_->Current_Colour(), 1, Line_Style::solid});
        style.justify = found->To_The_Right() ? Justify::left : Justify::right;
        Target().Text({found->at.x, found->rect.y1 + descent * em}, written, style);
    }
}

}  // namespace vntl
