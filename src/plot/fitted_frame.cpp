#include "plot/fitted_frame.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/contrast.hpp"
#include "drawing/font_table.hpp"
#include "drawing/raised_text.hpp"
#include "drawing/title_fit.hpp"
#include "plot/frame_texts.hpp"
#include "plot/short_title.hpp"
#include "plot/text_style.hpp"

namespace vntl {

namespace {

constexpr double page_edge = 0.5;                    // em of the numbers, between texts and the edge of the page
constexpr double apart = 0.45;                       // em of a text, between it and what it stands beside
constexpr double tick_em = 0.45, minor_tick = 0.55;  // length of a tick, em of the numbers; of a small one, share of that
constexpr double beside_tick = 0.3;                  // em between a tick and its number
constexpr double line_of_numbers = 1.9;              // em from one number of y to the next at least
constexpr double between_numbers = 1.3;              // em between two numbers of x at least
constexpr double minor_gap = 0.35;                   // em between two small ticks at least
constexpr double least_box = 0.4;                    // share of the page that the box has, whatever the texts need
constexpr double seen_from = 3;                      // contrast of lines and marks; small texts need more
constexpr double powers_of_x = 1e6, powers_of_y = 1e5;

Text_Style Shrunk(const Device& device, std::string_view text, Text_Style style, double room, double least_em) {
    const double width = Raised_Text_Width(device, text, style), em = Em_Of(style);
    if (!(width > room) || !(width > 0) || !(em > 0)) return style;
    const double by = std::min(1.0, std::max(room / width, least_em / em));
    style.width *= by, style.height *= by;
    return style;
}

double Least_Em(const Look& look, const Device& device) { return static_cast<double>(look.least_text_points) * 96 / 72 * device.Pixel(); }

}  // namespace

bool Lays_Out(const Look& look) {
    return look.fitted_margins || look.minor_ticks || look.superscripts || look.count_ticks || look.least_text_points > 0 ||
           look.placed_legend || !look.series_map.empty();
}

double Em_Of(const Text_Style& style) { return Em_Of_Cell(style.width, style.height); }

Text_Cell Enlarged(const Look& look, Text_Cell cell, const Device& device) {
    const double em = Em_Of_Cell(static_cast<double>(cell.width) * device.Width(), static_cast<double>(cell.height) * device.Height());
    const double least = Least_Em(look, device);
    if (!(em > 0) || em >= least) return cell;
    const auto by = static_cast<float>(least / em);
    return {by * cell.width, by * cell.height};
}

Colour Readable_Text(const Look& look, Colour colour, Colour ground) {
    return look.least_contrast > 0 ? Readable(colour, ground, look.least_contrast) : colour;
}

Colour Seen_Mark(const Look& look, Colour colour, Colour ground) {
    return look.least_contrast > 0 ? Readable(colour, ground, std::min<double>(seen_from, look.least_contrast)) : colour;
}

Text_Style Text_Of(const Look& look, const Text_Prefs& prefs, Colour ground, const Device& device) {
    const Text_Cell cell = Enlarged(look, {Char_Width(prefs.size), Char_Height(prefs.size)}, device);
    Text_Style style;
    style.font = Font_Number(prefs.font);
    style.style = Style_Bits(prefs.style);
    style.width = static_cast<double>(cell.width) * device.Width();
    style.height = static_cast<double>(cell.height) * device.Height();
    style.colour = Readable_Text(look, prefs.colour, ground);
    return style;
}

Fitted_Frame::Fitted_Frame(Frame_Content content, const Look& look, const Graph2D_Prefs& prefs, Colour ground, Device& device)
    : content_(std::move(content)),
      look_(look),
      prefs_(prefs),
      device_(device),
      title_(Text_Of(look, prefs.title, ground, device)),
      x_label_(Text_Of(look, prefs.xlabel, ground, device)),
      y_label_(Text_Of(look, prefs.ylabel, ground, device)),
      x_numbers_(Text_Of(look, prefs.xscale, ground, device)),
      y_numbers_(Text_Of(look, prefs.yscale, ground, device)),
      has_title_(Writes_Title()),
      has_labels_(true) {
    const auto enough = [this] {
        const Margins room = Room_Of_Texts(has_title_, has_labels_);
        return device_.Height() - room.top - room.bottom >= least_box * device_.Height() &&
               device_.Width() - room.left - room.right >= least_box * device_.Width();
    };
    if (!enough()) has_title_ = false;
    if (!enough()) has_labels_ = false;
}

char Fitted_Frame::Y_Place() const {
    const std::string_view place = Y_Label_Place(prefs_.ylabel.pos);
    return place == "TV" ? '^' : place[0];
}

double Fitted_Frame::Width_Of(std::string_view text, const Text_Style& style) const {
    return look_.superscripts ? Raised_Text_Width(device_, text, style) : device_.Text_Width(text, style);
}

void Fitted_Frame::Write(Point at, std::string_view text, const Text_Style& style) const {
    if (text.empty()) return;
    look_.superscripts ? Draw_Raised_Text(device_, at, text, style) : device_.Text(at, text, style);
}

double Fitted_Frame::Widest(const Fitted_Ticks& ticks, const Text_Style& style) const {
    double widest = 0;
    for (const Axis_Tick& tick : ticks.major) widest = std::max(widest, Width_Of(tick.text, style));
    return widest;
}

double Fitted_Frame::Tick_Length() const { return tick_em * Em_Of(x_numbers_); }

Fitted_Ticks Fitted_Frame::X_Ticks(double length) const {
    const double unit = std::fabs(static_cast<double>(content_.window.x2) - static_cast<double>(content_.window.x1)) / length;
    Axis_Room room;
    room.needs = [&](std::string_view text) { return (Width_Of(text, x_numbers_) + between_numbers * Em_Of(x_numbers_)) * unit; };
    room.minor = minor_gap * Em_Of(x_numbers_) * unit;
    if (look_.superscripts) room.powers_from = powers_of_x;
    return Fit_Ticks(content_.window.x1, content_.window.x2, Axis_Scale::even, room);
}

Fitted_Ticks Fitted_Frame::Y_Ticks(double length) const {
    const double unit = std::fabs(static_cast<double>(content_.window.y2) - static_cast<double>(content_.window.y1)) / length;
    Axis_Room room;
    room.needs = [&](std::string_view) { return line_of_numbers * Em_Of(y_numbers_) * unit; };
    room.minor = minor_gap * Em_Of(y_numbers_) * unit;
    if (look_.superscripts) room.powers_from = powers_of_y;
    Fitted_Ticks ticks = Fit_Ticks(content_.window.y1, content_.window.y2, content_.y_scale, room);
    const double below =
        content_.numbers_from - 1e-6 * std::fabs(static_cast<double>(content_.window.y2) - static_cast<double>(content_.window.y1));
    std::erase_if(ticks.major, [below](const Axis_Tick& tick) { return tick.at < below; });
    std::erase_if(ticks.minor, [below](double at) { return at < below; });
    return ticks;
}

// --- room ------------------------------------------------------------------------------------------------------------------------

double Fitted_Frame::Beside_Box() const {
    const double top = look_.superscripts ? Raised_Top() : cap_height;
    return std::max(apart * Em_Of(y_label_), (top - 0.5 * cap_height + 0.15) * Em_Of(y_numbers_));
}

double Fitted_Frame::Above_Labels() const {
    const bool above = has_labels_ && Writes_Y_Label() && Y_Place() == '^';
    return content_.above + Beside_Box() + (above ? (Raised_Top() + descent + apart) * Em_Of(y_label_) : 0);
}

Fitted_Frame::Margins Fitted_Frame::Room_Of_Texts(bool title, bool labels) const {
    const double em = Em_Of(x_numbers_), edge = page_edge * em;
    Margins room{};
    room.bottom = edge + Tick_Length() + (beside_tick + (look_.superscripts ? Raised_Top() : cap_height)) * em;
    if (labels && Writes_X_Label()) room.bottom += (apart + Raised_Top() + descent) * Em_Of(x_label_);
    const bool above = title || content_.above > 0 || (labels && Writes_Y_Label() && Y_Place() == '^');
    room.top = edge + (above ? Above_Labels() : 0.5 * cap_height * Em_Of(y_numbers_));
    if (title) room.top += (cap_height + descent) * Em_Of(title_);
    const double up = std::max(device_.Height() - room.top - room.bottom, 1.0);
    room.left = edge + Tick_Length() + beside_tick * Em_Of(y_numbers_) + Widest(Y_Ticks(up), y_numbers_);
    if (labels && Writes_Y_Label() && Y_Place() != '^') room.left += (Raised_Top() + descent + apart) * Em_Of(y_label_);
    room.right = edge + content_.beside;
    // A number at an end of the x scale reaches beyond the box, by half of itself at most.
    const double across = std::max(device_.Width() - room.left - room.right, 1.0);
    const double x1 = content_.window.x1, per_unit = across / (static_cast<double>(content_.window.x2) - x1);
    for (const Axis_Tick& tick : X_Ticks(across).major) {
        const double at = (tick.at - x1) * per_unit, half = 0.5 * Width_Of(tick.text, x_numbers_) + 0.5 * edge;
        room.right = std::max(room.right, at + half - across);
        room.left = std::max(room.left, half - at);
    }
    return room;
}

Plot_Zone Fitted_Frame::Zone() const {
    const Margins room = Room_Of_Texts(has_title_, has_labels_);
    const double w = device_.Width(), h = device_.Height();
    // Even on a page of a few letters there is a box.
    const auto limited = [](double near, double far, double size) {
        const double by = near + far > (1 - least_box) * size ? (1 - least_box) * size / (near + far) : 1;
        return std::pair{static_cast<float>(by * near / size), static_cast<float>(1 - by * far / size)};
    };
    const auto [x1, x2] = limited(room.left, room.right, w);
    const auto [y1, y2] = limited(room.bottom, room.top, h);
    return {x1, y1, x2, y2};
}

Rect Fitted_Frame::Box(const Plot_Zone& zone) const {
    const double w = device_.Width(), h = device_.Height();
    return {zone.x1 * w, zone.y1 * h, zone.x2 * w, zone.y2 * h};
}

// --- drawing ---------------------------------------------------------------------------------------------------------------------

void Fitted_Frame::Write_Title(const Plot_Zone& zone) const {
    if (!has_title_) return;
    const Rect box = Box(zone);
    const double edge = page_edge * Em_Of(x_numbers_), room = device_.Width() - 2 * edge;
    Text_Style style = Shrunk(device_, content_.title, title_, room, std::max(Least_Em(look_, device_), 0.6 * Em_Of(title_)));
    const std::string text =
        Shortened_At_Words(content_.title, room, [&](std::string_view part) { return device_.Text_Width(part, style); });
    const double width = device_.Text_Width(text, style), y = box.y2 + Above_Labels() + descent * Em_Of(title_);
    const char place = Along_X(prefs_.title.pos);
    const double wanted = place == 'L' ? box.x1 : place == 'R' ? box.x2 - width : 0.5 * (box.x1 + box.x2 - width);
    style.justify = Justify::left;
    device_.Text({std::clamp(wanted, edge, std::max(edge, device_.Width() - edge - width)), y}, text, style);
}

void Fitted_Frame::Tick(Point from, Point to) const {
    device_.Polyline(std::array<Point, 2>{from, to}, {look_.ink, std::min(look_.frame_width, 1.0f), Line_Style::solid});
}

void Fitted_Frame::Write_Scales(const Plot_Zone& zone) const {
    const Rect box = Box(zone);
    const double length = Tick_Length(), small = minor_tick * length;
    const auto x_of = [&](double at) {
        return box.x1 + (at - content_.window.x1) * (box.x2 - box.x1) / (static_cast<double>(content_.window.x2) - content_.window.x1);
    };
    const auto y_of = [&](double at) {
        return box.y1 + (at - content_.window.y1) * (box.y2 - box.y1) / (static_cast<double>(content_.window.y2) - content_.window.y1);
    };
    const Fitted_Ticks across = X_Ticks(box.x2 - box.x1), up = Y_Ticks(box.y2 - box.y1);
    Text_Style style = x_numbers_;
    style.justify = Justify::centre;
    const double x_top = box.y1 - length - beside_tick * Em_Of(style);
    const double x_base = x_top - (look_.superscripts ? Raised_Top() : cap_height) * Em_Of(style);
    for (const Axis_Tick& tick : across.major) {
        const double x = x_of(tick.at);
        Tick({x, box.y1}, {x, box.y1 - length});
        Write({x, x_base}, tick.text, style);
    }
    style = y_numbers_;
    style.justify = Justify::right;
    for (const Axis_Tick& tick : up.major) {
        const double y = y_of(tick.at);
        Tick({box.x1, y}, {box.x1 - length, y});
        Write({box.x1 - length - beside_tick * Em_Of(style), y - 0.5 * cap_height * Em_Of(style)}, tick.text, style);
    }
    if (!look_.minor_ticks) return;
    for (const double at : across.minor) Tick({x_of(at), box.y1}, {x_of(at), box.y1 - small});
    for (const double at : up.minor) Tick({box.x1, y_of(at)}, {box.x1 - small, y_of(at)});
}

void Fitted_Frame::Write_Labels(const Plot_Zone& zone) const {
    if (!has_labels_) return;
    const Rect box = Box(zone);
    const double edge = page_edge * Em_Of(x_numbers_), least = Least_Em(look_, device_);
    const auto fitted = [&](const std::string& text, Text_Style& style, double room) {
        style = Shrunk(device_, text, style, room, std::max(least, 0.6 * Em_Of(style)));
        return Shortened_At_Words(text, room, [&](std::string_view part) { return Width_Of(part, style); });
    };
    if (Writes_X_Label()) {
        Text_Style style = x_label_;
        const std::string text = fitted(content_.x_label, style, device_.Width() - 2 * edge);
        const double width = Width_Of(text, style), em = Em_Of(x_numbers_);
        const double numbers = Tick_Length() + (beside_tick + (look_.superscripts ? Raised_Top() : cap_height)) * em;
        const char place = Along_X(prefs_.xlabel.pos);
        const double wanted = place == 'L' ? box.x1 : place == 'R' ? box.x2 - width : 0.5 * (box.x1 + box.x2 - width);
        Write({std::clamp(wanted, edge, std::max(edge, device_.Width() - edge - width)),
               std::max(box.y1 - numbers - (apart + Raised_Top()) * Em_Of(x_label_), descent * Em_Of(style))},
              text, style);
    }
    if (!Writes_Y_Label()) return;
    Text_Style style = y_label_;
    if (Y_Place() == '^') {
        const std::string text = fitted(content_.y_label, style, device_.Width() - 2 * edge);
        return Write(
            {std::max(edge, std::min(box.x1 - Tick_Length() - Width_Of("0", y_numbers_), device_.Width() - edge - Width_Of(text, style))),
             box.y2 + content_.above + Beside_Box() + descent * Em_Of(y_label_)},
            text, style);
    }
    const bool downward = Y_Label_Place(prefs_.ylabel.pos)[1] == 'R';
    // No further down than the box: the numbers of x stand there.
    const double lowest = box.y1 - Tick_Length(), highest = device_.Height() - edge;
    const std::string text = fitted(content_.y_label, style, highest - lowest);
    const double length = Width_Of(text, style), em = Em_Of(y_label_);
    const double numbers = Tick_Length() + beside_tick * Em_Of(y_numbers_) + Widest(Y_Ticks(box.y2 - box.y1), y_numbers_);
    const double near = std::max(box.x1 - numbers - apart * em, (Raised_Top() + descent) * em);  // the side at the numbers
    const char place = Y_Place();
    const double wanted = place == 'T' ? box.y2 - length : place == 'B' ? box.y1 : 0.5 * (box.y1 + box.y2 - length);
    const double foot = std::clamp(wanted, lowest, std::max(lowest, highest - length));
    style.angle = downward ? -90 : 90;
    style.justify = Justify::left;
    Write({downward ? near - Raised_Top() * em : near - descent * em, downward ? foot + length : foot}, text, style);
}

}  // namespace vntl
