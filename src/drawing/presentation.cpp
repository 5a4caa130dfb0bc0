// Presentation graphics: the plot box, data sets in it, axes with ticks and numbers, titles and keys.
//
// Margins follow from the plot box: texts stand at fixed shares of the room between the box and the edge of the area, so that
// title, labels and numbers keep apart at every size of the page.
#include <algorithm>
#include <array>
#include <cmath>

#include "base/page.hpp"
#include "base/text.hpp"
#include "drawing/font_table.hpp"
#include "drawing/presentation.hpp"
#include "drawing/title_fit.hpp"

namespace vntl {

namespace {

constexpr double sub_title_share = 0.85;     // room of the sub-title's letters, share of what is left between title and box
constexpr double xlabel_share = 0.60;        // of the x label, share of the lower margin under the box
constexpr double ylabel_share = 0.74;        // of the y label, share of the left margin left of the box
constexpr double right_label_share = 0.50;   // of the right y label, share of the right margin
constexpr double widest_right_label = 0.80;  // share of the right margin
constexpr double numbers_share = 0.66;       // room of the y numbers, share of the left margin
constexpr double label_apart = 0.3;          // em between a label and the numbers, at least, where there is a choice
constexpr double beside_page_edge = 0.01;    // of an upright y label, share of the width

// The style made small enough for its letters to need no more than `room` between their tops and what hangs below the base line.
Text_Style Lowered(Text_Style style, double room) {
    const double high = (cap_height + descent) * Em_Of_Cell(style.width, style.height);
    if (high <= room || high <= 0) return style;
    style.width *= room / high;
    style.height *= room / high;
    return style;
}

// Upright beside the numbers: one word a line, as large as the longest word allows, about the middle of the box or down to its foot.
void Stack_Words(Device& device, std::string_view text, Text_Style style, double left, double room, const Rect& box, bool centred) {
    std::vector<std::string_view> words;
    std::string_view longest;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        if (end > at) words.push_back(text.substr(at, end - at));
        if (end > at && device.Text_Width(words.back(), style) > device.Text_Width(longest, style)) longest = words.back();
        at = end + 1;
    }
    style = Fitted(device, longest, style, room);
    const double line = 1.3 * Em_Of_Cell(style.width, style.height);
    const double last = static_cast<double>(words.size()) - 1;
    double y = centred ? 0.5 * (box.y1 + box.y2) + 0.5 * last * line - 0.25 * line : box.y1 + last * line;
    for (const std::string_view word : words) {
        device.Text({left, y}, word, style);
        y -= line;
    }
}

double Along(double from, double to, char position, char first, char last) {
    return position == first ? from : position == last ? to : 0.5 * (from + to);
}

}  // namespace

Presentation Presentation::On(Graphics& graphics) const {
    Presentation other = *this;
    other.graphics_ = &graphics;
    return other;
}

void Presentation::IPgArea(float x1, float y1, float x2, float y2) { bx1_ = x1, by1_ = y1, bx2_ = x2, by2_ = y2; }
void Presentation::IPgUnits(float x1, float y1, float x2, float y2) { px1_ = x1, py1_ = y1, px2_ = x2, py2_ = y2; }

Rect Presentation::Box() const {
    const double w = Area().x2 - Area().x1, h = Area().y2 - Area().y1;
    return {Area().x1 + bx1_ * w, Area().y1 + by1_ * h, Area().x1 + bx2_ * w, Area().y1 + by2_ * h};
}

Point Presentation::Plot_To_Device(double x, double y) const {
    const Rect box = Box();
    return {box.x1 + (x - px1_) / (px2_ - px1_) * (box.x2 - box.x1), box.y1 + (y - py1_) / (py2_ - py1_) * (box.y2 - box.y1)};
}

double Presentation::X_Scale() const { return (Box().x2 - Box().x1) / (px2_ - px1_); }
double Presentation::Y_Scale() const { return (Box().y2 - Box().y1) / (py2_ - py1_); }

void Presentation::IPgUnitsToGrUnits(float x, float y, float& gx, float& gy) const {
    const Point at = graphics_->From_Device(Plot_To_Device(x, y));
    gx = static_cast<float>(at.x);
    gy = static_cast<float>(at.y);
}

void Presentation::IPgUnitsFromGrUnits(float gx, float gy, float& x, float& y) const {
    const Rect box = Box();
    const Point at = graphics_->To_Device(gx, gy);
    x = static_cast<float>(px1_ + (at.x - box.x1) / (box.x2 - box.x1) * (px2_ - px1_));
    y = static_cast<float>(py1_ + (at.y - box.y1) / (box.y2 - box.y1) * (py2_ - py1_));
}

// --- data sets ---------------------------------------------------------------------------------------------------------------

void Presentation::IPgUnitsXYZ(float x1, float x2, float y1, float y2, float z1, float z2) {
    IPgUnits(x1, y1, x2, y2);
    z1_ = z1, z2_ = z2;
}

void Presentation::IPgNewPlot(int type, int sets, int, int, unsigned option) {
    plot_type_ = type;
    option_ = option;
    next_set_ = 1;
    styles_.assign(static_cast<std::size_t>(std::clamp(sets, 1, max_sets)), {});
}

Set_Style& Presentation::Style_Of_Set(int set) {
    if (styles_.size() < static_cast<std::size_t>(set)) styles_.resize(static_cast<std::size_t>(set));
    return styles_[static_cast<std::size_t>(set - 1)];
}

void Presentation::IPgStyle(int set, const Set_Style& style) {
    if (set >= 1 && set <= max_sets) Style_Of_Set(set) = style;
}

void Presentation::IPgMarker(int set, int marker) {
    if (set >= 1 && set <= max_sets) Style_Of_Set(set).marker = marker;
}

void Presentation::IPgClipRectangle(int mode) { clip_sets_ = mode != 0; }

void Presentation::Clip_Sets() { Target().Set_Clip(clip_sets_ ? Box() : Area()); }

const Set_Style& Presentation::Next_Set() { return Style_Of_Set(std::min(next_set_++, static_cast<int>(styles_.size()))); }

void Presentation::IPgXYPairs(std::span<const float> x, std::span<const float> y, const Series_Blocks* blocks) {
    Draw_Set(x, y, plot_type_ == 7, blocks);
}
void Presentation::IPgXYLine(std::span<const float> x, std::span<const float> y) { Draw_Set(x, y, false); }

bool Presentation::Has_Units() const { return std::isfinite(px2_ - px1_) && px1_ != px2_ && std::isfinite(py2_ - py1_) && py1_ != py2_; }

Series Presentation::Series_Of(std::span<const float> x, std::span<const float> y, const Series_Blocks* blocks) const {
    const Rect box = Box();
    Series series{x, y};
    series.x_scale = X_Scale();
    series.y_scale = Y_Scale();
    series.x0 = box.x1 - series.x_scale * px1_;
    series.y0 = box.y1 - series.y_scale * (py1_ - raise_);
    series.blocks = blocks;
    return series;
}

void Presentation::IPgUnderLine(std::span<const float> x, std::span<const float> y, float foot, Colour colour,
                                const Series_Blocks* blocks) {
    const std::size_t n = std::min(x.size(), y.size());
    if (n == 0 || !Has_Units()) return;
    Clip_Sets();
    Target().Under_Curve(Series_Of(x.first(n), y.first(n), blocks), Plot_To_Device(px1_, foot + raise_).y, colour);
    graphics_->Clip_To_Area();
}

void Presentation::Draw_Set(std::span<const float> x, std::span<const float> y, bool markers, const Series_Blocks* blocks) {
    if (styles_.empty()) return;
    const Set_Style& style = Next_Set();
    const std::size_t n = std::min(x.size(), y.size());
    if (n == 0 || !Has_Units()) return;
    const Series series = Series_Of(x.first(n), y.first(n), blocks);
    Clip_Sets();
    if (markers) {
        const Text_Style size = graphics_->Current_Text();
        if (style.marker != 0)
            Target().Markers(series, {style.marker, size.width, size.height, style.marker_colour, style.fill == fill_solid});
    } else if (style.line_style >= 0) {
        Target().Curve(series, {style.line_colour, graphics_->Line_Width(), static_cast<Line_Style>(style.line_style)});
    }
    graphics_->Clip_To_Area();
}

// --- axes --------------------------------------------------------------------------------------------------------------------

void Presentation::IPgXTickLength(float length) { x_tick_length_ = std::max(length, 0.0f); }
void Presentation::IPgYTickLength(float length) { y_tick_length_ = std::max(length, 0.0f); }
void Presentation::IPgXTickPos(int side) { x_ticks_inward_ = side == 2; }
void Presentation::IPgYTickPos(int side) { y_ticks_inward_ = side == 2; }
void Presentation::IPgDecimalPlaces(int decimals) { decimals_ = std::clamp(decimals, -1, 9); }

void Presentation::IPgXScale(std::string_view flags, float y_at) {
    const Rect box = Box();
    const double unit_x = Target().Width() / page_width, unit_y = Target().Height() / page_height;
    const double tick = x_tick_length_ * ((box.x2 - box.x1) / unit_x) / ticks_a_zone * unit_y;
    const double outward = x_ticks_inward_ ? 0 : tick;
    const double y = Plot_To_Device(px1_, y_at).y;
    const Pen pen{graphics_->Current_Colour(), 1, Line_Style::solid};
    const auto axis = Ticks_Of_Axis(static_cast<float>(px1_), static_cast<float>(px2_));
    Target().Polyline(std::array<Point, 2>{{{box.x1, y}, {box.x2, y}}}, pen);

    Text_Style style = graphics_->Current_Text();
    style.justify = Justify::centre;
    double widest = 0;
    for (const float value : axis.values) widest = std::max(widest, Target().Text_Width(Tick_Text(value, axis.exponent, decimals_), style));
    const double em = Em_Of_Cell(style.width, style.height);
    const double spacing = std::fabs(axis.step / (px2_ - px1_)) * (box.x2 - box.x1);
    const int every = Numbered_Every(spacing, widest + 0.8 * em);
    for (const float value : axis.values) {
        const double x = Plot_To_Device(value, py1_).x;
        if (Contains(flags, "T")) Target().Polyline(std::array<Point, 2>{{{x, y}, {x, x_ticks_inward_ ? y + tick : y - tick}}}, pen);
        if (Contains(flags, "N") && Has_Number(value, axis.step, every))
            Target().Text({x, y - outward - number_gap * unit_y - cap_height * em}, Tick_Text(value, axis.exponent, decimals_), style);
    }
}

float Presentation::Margin_Of_Y_Numbers() const {
    const Text_Style style = graphics_->Current_Text();
    const auto axis = Ticks_Of_Axis(static_cast<float>(py1_), static_cast<float>(py2_));
    double widest = 0;
    for (const float value : axis.values) widest = std::max(widest, Target().Text_Width(Tick_Text(value, axis.exponent, decimals_), style));
    const double width = Area().x2 - Area().x1, tick = y_ticks_inward_ ? 0 : y_tick_length_ * width / ticks_a_zone;
    const double numbers = widest + tick + number_gap * Target().Width() / page_width;
    const double beside_label = (0.5 * cap_height + descent + label_apart) * Em_Of_Cell(style.width, style.height);
    return static_cast<float>(std::max(numbers / numbers_share, (numbers + beside_label) / ylabel_share) / width);
}

float Presentation::Margin_Of_X_Texts() const {
    const Text_Style style = graphics_->Current_Text();
    const double em = Em_Of_Cell(style.width, style.height), height = Area().y2 - Area().y1, unit_y = Target().Height() / page_height;
    const double tick = x_ticks_inward_ ? 0 : x_tick_length_ * page_width / ticks_a_zone * unit_y;
    const double foot_of_numbers = tick + number_gap * unit_y + (cap_height + label_apart) * em, half_of_label = 0.5 * cap_height * em;
    return static_cast<float>(
        std::max((foot_of_numbers + half_of_label) / xlabel_share, (half_of_label + descent * em) / (1 - xlabel_share)) / height);
}

float Presentation::Width_Of_Upright_Y_Label() const {
    return static_cast<float>(std::max((1 - numbers_share) * bx1_ - beside_page_edge, 0.0));
}

void Presentation::IPgYScale(std::string_view flags, float x_at) {
    const Rect box = Box();
    const double unit_x = Target().Width() / page_width;
    const double tick = y_tick_length_ * (box.x2 - box.x1) / ticks_a_zone;
    const double outward = y_ticks_inward_ ? 0 : tick;
    const double x = Plot_To_Device(x_at, py1_).x;
    const Pen pen{graphics_->Current_Colour(), 1, Line_Style::solid};
    const auto axis = Ticks_Of_Axis(static_cast<float>(py1_), static_cast<float>(py2_));
    Target().Polyline(std::array<Point, 2>{{{x, box.y1}, {x, box.y2}}}, pen);

    Text_Style style = graphics_->Current_Text();
    style.justify = Justify::right;
    std::string longest;
    for (const float value : axis.values)
        if (const std::string text = Tick_Text(value, axis.exponent, decimals_);
            Target().Text_Width(text, style) > Target().Text_Width(longest, style))
            longest = text;
    style = Fitted(Target(), longest, style, numbers_share * (box.x1 - Area().x1) - outward - number_gap * unit_x);
    const double em = Em_Of_Cell(style.width, style.height);
    const double spacing = std::fabs(axis.step / (py2_ - py1_)) * (box.y2 - box.y1);
    const int every = Numbered_Every(spacing, 1.25 * em);
    for (const float value : axis.values) {
        const double y = Plot_To_Device(px1_, value).y;
        if (Contains(flags, "T")) Target().Polyline(std::array<Point, 2>{{{x, y}, {y_ticks_inward_ ? x + tick : x - tick, y}}}, pen);
        if (Contains(flags, "N") && Has_Number(value, axis.step, every))
            Target().Text({x - outward - number_gap * unit_x, y - 0.5 * cap_height * em}, Tick_Text(value, axis.exponent, decimals_),
                          style);
    }
}

// --- texts around the box ----------------------------------------------------------------------------------------------------

void Presentation::IPgTitle(std::string_view text, char position) {
    title_em_ = 0;
    if (position == 'N' || text.empty()) return;
    const Text_Style style = Fitted(Target(), text, graphics_->Current_Text(), widest_title * (Area().x2 - Area().x1));
    title_em_ = Em_Of_Cell(style.width, style.height);
    const Rect box = Box();
    Title_Line(text, position, style, box.y2 + title_share * (Area().y2 - box.y2));
}

void Presentation::IPgSubTitle(std::string_view text, char position) {
    if (position == 'N' || text.empty()) return;
    const Rect box = Box();
    const double room = title_share * (Area().y2 - box.y2) - descent * title_em_;
    if (!(room > 0)) return;
    const Text_Style style =
        Lowered(Fitted(Target(), text, graphics_->Current_Text(), widest_title * (Area().x2 - Area().x1)), sub_title_share * room);
    const double em = Em_Of_Cell(style.width, style.height);
    Title_Line(text, position, style, box.y2 + 0.5 * (room - (cap_height + descent) * em) + descent * em);
}

void Presentation::Title_Line(std::string_view text, char position, Text_Style style, double y) {
    const Rect box = Box();
    style.justify = position == 'L' ? Justify::left : position == 'R' ? Justify::right : Justify::centre;
    double x = Along(box.x1, box.x2, position, 'L', 'R');
    const double width = Target().Text_Width(text, style), margin = 0.5 * (1 - widest_title) * (Area().x2 - Area().x1);
    if (position == 'L') x = std::min(x, Area().x2 - margin - width);
    if (position == 'R') x = std::max(x, Area().x1 + margin + width);
    Target().Text({x, y}, text, style);
}

void Presentation::IPgXLabel(std::string_view text, char position) {
    if (position == 'N' || text.empty()) return;
    const Rect box = Box();
    Text_Style style = Fitted(Target(), text, graphics_->Current_Text(), box.x2 - box.x1);
    style.justify = position == 'L' ? Justify::left : position == 'R' ? Justify::right : Justify::centre;
    const double em = Em_Of_Cell(style.width, style.height);
    Target().Text({Along(box.x1, box.x2, position, 'L', 'R'), box.y1 - xlabel_share * (box.y1 - Area().y1) - 0.5 * cap_height * em}, text,
                  style);
}

void Presentation::IPgYLabelLeft(std::string_view text, std::string_view position) {
    if (position.size() < 2 || position[0] == '-' || text.empty()) return;
    const Rect box = Box();
    const char place = position[0], turn = position[1];
    Text_Style style = graphics_->Current_Text();
    if (turn == 'V') {
        const double left = Area().x1 + beside_page_edge * (Area().x2 - Area().x1);
        style.justify = Justify::left;
        if (place == 'T')
            Target().Text({left, box.y2 + 0.12 * (Area().y2 - box.y2)}, text, Fitted(Target(), text, style, 0.5 * (Area().x2 - Area().x1)));
        else
            Stack_Words(Target(), text, style, left, Width_Of_Upright_Y_Label() * (Area().x2 - Area().x1), box, place == 'C');
        return;
    }
    Turned_Label(text, position, style, box.x1 - ylabel_share * (box.x1 - Area().x1));
}

void Presentation::IPgYLabelRight(std::string_view text, std::string_view position) {
    if (position.size() < 2 || position[0] == '-' || text.empty()) return;
    const Rect box = Box();
    const char place = position[0];
    const double margin = Area().x2 - box.x2;
    Text_Style style = graphics_->Current_Text();
    if (position[1] != 'V')
        return Turned_Label(text, position, Lowered(style, widest_right_label * margin), box.x2 + right_label_share * margin);
    if (place == 'T') {
        style.justify = Justify::right;
        Target().Text({Area().x2 - 0.01 * (Area().x2 - Area().x1), box.y2 + 0.12 * (Area().y2 - box.y2)}, text,
                      Fitted(Target(), text, style, 0.5 * (Area().x2 - Area().x1)));
        return;
    }
    style.justify = Justify::left;
    Stack_Words(Target(), text, style, box.x2 + 0.5 * (1 - widest_right_label) * margin, widest_right_label * margin, box, place == 'C');
}

// Along a side of the box, about the line x = middle. Position: the place T, C or B, then 9 read upward, else downward.
void Presentation::Turned_Label(std::string_view text, std::string_view position, Text_Style style, double middle) {
    const Rect box = Box();
    const char place = position[0];
    const bool upward = position[1] == '9';
    style = Fitted(Target(), text, style, widest_title * (Area().y2 - Area().y1));
    style.angle = upward ? 90 : -90;
    // The end of the text that points to the top stands there: the last letter of one read upward, the first of one read downward.
    style.justify = place == 'C' ? Justify::centre : (place == 'T') == upward ? Justify::right : Justify::left;
    const double x = middle + (upward ? 0.5 : -0.5) * cap_height * Em_Of_Cell(style.width, style.height);
    double y = Along(box.y1, box.y2, place, 'B', 'T');
    if (const double length = Target().Text_Width(text, style); place == 'T')
        y = std::max(y, Area().y1 + length);
    else if (place == 'B')
        y = std::min(y, Area().y2 - length);
    Target().Text({x, y}, text, style);
}

void Presentation::IPgBorder() {
    const Rect box = Box();
    const std::array<Point, 5> corners = {{{box.x1, box.y1}, {box.x2, box.y1}, {box.x2, box.y2}, {box.x1, box.y2}, {box.x1, box.y1}}};
    Target().Polyline(corners, {graphics_->Current_Colour(), graphics_->Line_Width(), Line_Style::solid});
}

}  // namespace vntl
