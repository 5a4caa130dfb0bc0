#include "plot/fitted_legend.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "drawing/font_table.hpp"
#include "drawing/title_fit.hpp"
#include "plot/covered.hpp"
#include "plot/curve_style.hpp"
#include "plot/fitted_frame.hpp"
#include "plot/frame_texts.hpp"
#include "plot/marker_room.hpp"
#include "session/desk/pattern_list.hpp"

namespace vntl {

namespace {

constexpr int no_legend = 1, in_left = 2, out_right = 4;
constexpr int most_rows = 32;  // with more there is no legend
// All in em of its letters.
constexpr double symbol_length = 2, behind_symbol = 0.6, line_height = 1.35, from_frame = 0.6, beside_box = 0.8;
constexpr double widest_inside = 0.6, widest_outside = 0.3, highest = 0.9;  // shares of the box, or of the page's width
constexpr int bar_steps = 64, most_bar_steps = 512;
constexpr float least_chi2 = 0.0001f;

}  // namespace

Fitted_Legend::Fitted_Legend(const Scene& scene, int rows, Device& device)
    : scene_(scene), device_(device), styles_(scene.store, scene.prefs, scene.look, scene.desk.series_by_temperature) {
    const Graph2D_Prefs& prefs = scene.prefs.graph2d;
    int shown = 0;
    for (int row = 1; row <= rows; ++row) shown += scene.store.shown(row) ? 1 : 0;
    if (prefs.legend.pos == no_legend || shown == 0) return;
    const bool series = styles_.Is_Series();
    if (!series && shown > most_rows) return;
    kind_ = series ? Kind::bar : prefs.legend.pos == out_right ? Kind::outside : Kind::inside;
    text_ = Text_Of(scene.look, prefs.legend, kind_ == Kind::inside ? prefs.frame_foreground : prefs.frame_background, device);
    text_.justify = Justify::left;
    em_ = Em_Of(text_);
    if (series)
        text_.colour = Text_Of(scene.look, prefs.yscale, prefs.frame_background, device).colour;
    else
        Make_Lines(rows);
}

void Fitted_Legend::Make_Lines(int rows) {
    const bool tells_chi2 = scene_.store.prf_loaded;
    for (int row = 1; row <= rows; ++row) {
        if (!scene_.store.shown(row)) continue;
        lines_.push_back({row, Row_Name(scene_.store, row), true});
        if (const float chi2 = scene_.store.Info(row).chi2; tells_chi2 && chi2 > least_chi2)
            lines_.push_back({row, "Chi2 = " + std::string(Trim(IRealToString(chi2, "(F12.2)"))), false});
    }
    const double room = kind_ == Kind::outside ? widest_outside * device_.Width() : widest_inside * (Box().x2 - Box().x1);
    Shorten_Lines(room - (symbol_length + behind_symbol) * em_);
}

void Fitted_Legend::Shorten_Lines(double room) {
    for (Line& line : lines_)
        line.text = Shortened(line.text, room, [this](std::string_view part) { return device_.Text_Width(part, text_); });
    const auto most = static_cast<std::size_t>(std::max(1.0, highest * (Box().y2 - Box().y1) / Line_Height()));
    if (lines_.size() <= most) return;
    const std::size_t left_out = lines_.size() - most + 1;
    lines_.resize(most - 1);
    lines_.push_back({0, "and " + std::to_string(left_out) + " more", false});
}

double Fitted_Legend::Line_Height() const { return line_height * em_; }

Rect Fitted_Legend::Box() const {
    const Plot_Zone& zone = scene_.zone;
    return {zone.x1 * device_.Width(), zone.y1 * device_.Height(), zone.x2 * device_.Width(), zone.y2 * device_.Height()};
}

double Fitted_Legend::Longest() const {
    double longest = 0;
    for (const Line& line : lines_) longest = std::max(longest, device_.Text_Width(line.text, text_));
    return longest + (symbol_length + behind_symbol) * em_;
}

double Fitted_Legend::Beside() const {
    if (kind_ == Kind::outside) return beside_box * em_ + Longest();
    return kind_ == Kind::bar ? Width_Of_Bar(Bar(), scene_.look, text_, device_) : 0;
}

void Fitted_Legend::Draw(const View& window) const {
    if (kind_ == Kind::bar) return Draw_Bar(Bar(), scene_.look, text_, Box(), device_);
    if (kind_ != Kind::none && !lines_.empty()) Draw_Lines(window);
}

// --- names -----------------------------------------------------------------------------------------------------------------------

// Of the places along the edges of the box, and then in it, the one that covers least; among equal ones the first.
Rect Fitted_Legend::Place(const View& window, double width, double height, bool& covers) const {
    const Rect box = Box();
    const double gap = from_frame * em_;
    const bool left = scene_.prefs.graph2d.legend.pos == in_left;
    const double across = std::max(box.x2 - box.x1 - 2 * gap - width, 0.0), up = std::max(box.y2 - box.y1 - 2 * gap - height, 0.0);
    const auto at = [&](double share_across, double share_up) {
        const double x = box.x1 + gap + (left ? share_across : 1 - share_across) * across, y = box.y2 - gap - height - share_up * up;
        return Rect{x, y, x + width, y + height};
    };
    if (!scene_.look.placed_legend) {
        covers = false;
        return at(0, 0);
    }
    const Covered_Columns covered(scene_, box, window, device_);
    Rect best = at(0, 0);
    double least = covered.By(best);
    constexpr std::array<double, 7> shares = {0, 1, 0.5, 0.25, 0.75, 0.125, 0.875};
    constexpr std::array<double, 5> down = {0, 0.25, 0.5, 0.75, 1};
    for (const double share_up : down)
        for (const double share : shares) {
            const Rect tried = at(share, share_up);
            if (const double cover = covered.By(tried); cover < least) least = cover, best = tried;
        }
    covers = least > 0;
    return best;
}

void Fitted_Legend::Draw_Lines(const View& window) const {
    const Graph2D_Prefs& prefs = scene_.prefs.graph2d;
    const Rect box = Box();
    const double width = Longest(), height = Line_Height() * static_cast<double>(lines_.size());
    bool covers = false;
    Rect room = kind_ == Kind::outside ? Rect{box.x2 + beside_box * em_, box.y2 - height, box.x2 + beside_box * em_ + width, box.y2}
                                       : Place(window, width, height, covers);
    if (covers) {
        const double seam = 0.25 * em_;
        const Rect ground{room.x1 - seam, room.y1 - seam, room.x2 + seam, room.y2 + seam};
        device_.Fill(std::array<Point, 4>{{{ground.x1, ground.y1}, {ground.x2, ground.y1}, {ground.x2, ground.y2}, {ground.x1, ground.y2}}},
                     prefs.frame_foreground);
    }
    double y = room.y2 - 0.5 * (line_height + cap_height) * em_;
    for (const Line& line : lines_) {
        Text_Style style = text_;
        const Colour ground = kind_ == Kind::inside ? prefs.frame_foreground : prefs.frame_background;
        style.colour = line.row > 0 ? Readable_Text(scene_.look, styles_.Of(line.row).line_colour, ground)
                                    : Readable_Text(scene_.look, scene_.look.ink, ground);
        if (line.symbol) Draw_Symbol(line.row, window, {room.x1, y + 0.5 * cap_height * em_});
        device_.Text({room.x1 + (symbol_length + behind_symbol) * em_, y}, line.text, style);
        y -= Line_Height();
    }
}

// A curve whose points are too close for markers has none in the legend either.
bool Fitted_Legend::Has_Markers(int row, const View& window) const {
    return Marker_Share(scene_, row, styles_.Of(row), window, device_.Width() / page_width / device_.Pixel()) > 0;
}

void Fitted_Legend::Draw_Symbol(int row, const View& window, Point at) const {
    const Curve_Style curve = Style_Of(styles_.Of(row));
    const double length = symbol_length * em_;
    if (curve.line_style >= 0)
        device_.Polyline(std::array<Point, 2>{{at, {at.x + length, at.y}}},
                         {curve.line_colour, curve.Width(), static_cast<Line_Style>(curve.line_style)});
    const Set_Style marker = curve.Of_Markers();
    if (marker.marker == 0 || !Has_Markers(row, window)) return;
    const float one = 1;
    const double side = 0.55 * em_;
    device_.Markers({std::span(&one, 1), std::span(&one, 1), at.x + 0.5 * length, 0, at.y, 0},
                    {marker.marker, side, side, marker.marker_colour, marker.fill == fill_solid});
}

// --- the bar of a series -----------------------------------------------------------------------------------------------------------

// From the foot to the top: at each height the colour of the row whose value is nearest.
std::vector<Colour> Fitted_Legend::Colours_Of_Bar() const {
    struct Coloured {
        float value;
        int row;
    };
    std::vector<Coloured> rows;
    for (int row = 1; row <= scene_.store.nperfiles(); ++row)
        if (scene_.store.shown(row))
            rows.push_back({styles_.By_Temperature() ? scene_.store.Pattern(row).TSample : static_cast<float>(row), row});
    std::ranges::stable_sort(rows, {}, &Coloured::value);
    // Of few rows, which stand evenly as a rule, each has as many steps.
    const int halves = std::max(1, 2 * (static_cast<int>(rows.size()) - 1));
    const int steps = halves > most_bar_steps ? bar_steps : (bar_steps + halves - 1) / halves * halves;
    std::vector<Colour> colours;
    std::size_t nearest = 0;
    for (int step = 0; step < steps; ++step) {
        const float value =
            styles_.First() + (styles_.Last() - styles_.First()) * (static_cast<float>(step) + 0.5f) / static_cast<float>(steps);
        while (nearest + 1 < rows.size() && std::fabs(rows[nearest + 1].value - value) <= std::fabs(rows[nearest].value - value)) ++nearest;
        colours.push_back(styles_.Of(rows[nearest].row).line_colour);
    }
    return colours;
}

Colour_Bar Fitted_Legend::Bar() const {
    return {styles_.By_Temperature() ? "T (K)" : "Pattern", Colours_Of_Bar(), styles_.First(), styles_.Last(), Axis_Scale::even, true};
}

}  // namespace vntl
