// What lies over the picture: the marks of a running calculation, selected reflections, and the read-out box.
//
// Marks and picks are placed in data units of the visible window, inside the zone; the read-out box in page units.
#include <algorithm>
#include <cmath>

#include "base/text.hpp"
#include "plot/fitted_frame.hpp"
#include "plot/plot.hpp"
#include "plot/text_style.hpp"
#include "session/bragg_rows.hpp"
#include "session/desk/overlay_place.hpp"

namespace vntl {

namespace {

constexpr Colour blue = WRGB(0, 0, 255), deep_blue = WRGB(0, 0, 200), olive = WRGB(128, 128, 0), green = WRGB(0, 128, 0);
constexpr Colour red = WRGB(255, 0, 0), magenta = WRGB(255, 0, 255), grey = WRGB(220, 220, 220);
constexpr float dot_part_of_view = 0.005f, dot_rim = 1.2f, dot_ratio = 0.75f;
constexpr int first_background_points = 2, steps_of_bent_line = 32;

float Foot_Of(const Scene& scene) { return Foot_Of_Data(scene.store, scene.plot, scene.look); }

// Data units of the view inside the zone, or inside its part above the band of a pinned difference, and page units again at the end.
class Data_Units {
public:
    Data_Units(const Scene& scene, Graphics& g, bool with_band) : g_(g) {
        const Plot_State& plot = scene.plot;
        const Plot_Zone& zone = scene.zone;
        const float part = with_band ? 0 : Part_Of_Band(scene.store, plot, scene.look);
        g_.IGrArea(zone.x1, zone.y1 + part * (zone.y2 - zone.y1), zone.x2, zone.y2);
        g_.IGrUnits(plot.x_view_min, with_band ? plot.y_view_min : Foot_Of(scene), plot.x_view_max, plot.y_view_max);
    }
    ~Data_Units() {
        g_.IGrArea(0, 0, 1, 1);
        g_.IGrUnits(0, 0, page_width, page_height);
    }
    Data_Units(const Data_Units&) = delete;
    Data_Units& operator=(const Data_Units&) = delete;

private:
    Graphics& g_;
};

float Place(const Scene& scene, float counts) { return On_Scale(scene.plot.Scale(), counts); }

void Draw_Segment(Graphics& g, float x1, float y1, float x2, float y2) {
    g.IGrMoveTo(x1, y1);
    g.IGrLineTo(x2, y2);
}

Colour Seen(const Scene& scene, Colour colour) { return Seen_Mark(scene.look, colour, scene.prefs.graph2d.frame_foreground); }

// A dot with a rim: what a user can take hold of. y is counts.
void Draw_Dot(const Scene& scene, Graphics& g, float x, float counts) {
    const float radius = dot_part_of_view * (scene.plot.x_view_max - scene.plot.x_view_min), y = Place(scene, counts);
    g.IGrFillPattern(fill_solid);
    g.IGrColourN(Seen(scene, olive));
    g.IGrEllipse(x, y, dot_rim * radius, dot_ratio);
    g.IGrColourN(Seen(scene, deep_blue));
    g.IGrEllipse(x, y, radius, dot_ratio);
}

// Straight between its points in counts: on another scale it is bent, and drawn through points between them.
void Draw_Background_Line(const Scene& scene, Graphics& g, const std::vector<Background_Mark>& points) {
    if (points.size() < first_background_points) return;
    const int steps = scene.plot.Scale() == Y_Scale::linear ? 1 : steps_of_bent_line;
    std::vector<float> x{points.front().x}, y{Place(scene, points.front().y)};
    for (std::size_t i = 1; i < points.size(); ++i)
        for (int step = 1; step <= steps; ++step) {
            const float part = static_cast<float>(step) / static_cast<float>(steps);
            x.push_back(std::lerp(points[i - 1].x, points[i].x, part));
            y.push_back(Place(scene, std::lerp(points[i - 1].y, points[i].y, part)));
        }
    g.IGrColourN(Seen(scene, blue));
    g.IGrPolyLine(x, y);
}

void Draw_Peaks(const Scene& scene, Graphics& g) {
    g.IGrColourN(scene.look.ink);
    g.IGrLineWidth(2);
    for (const Peak_Mark& peak : scene.lists.peaks) Draw_Segment(g, peak.x, Foot_Of(scene), peak.x, Place(scene, peak.y));
}

void Draw_Background(const Scene& scene, Graphics& g) {
    const std::vector<Background_Mark>& points = scene.lists.background;
    if (points.size() < first_background_points) return;
    g.IGrLineWidth(2);
    Draw_Background_Line(scene, g, points);
    for (const Background_Mark& point : points) Draw_Dot(scene, g, point.x, point.y);
}

void Draw_Reflections(const Scene& scene, Graphics& g) {
    g.IGrColourN(Seen(scene, green));
    g.IGrLineWidth(1);
    for (const Reflection_Mark& mark : scene.lists.hklgen) Draw_Segment(g, mark.x, Foot_Of(scene), mark.x, Place(scene, mark.y));
}

// A peak of the fit: its height over the background line, and its width at half height when that is set.
void Draw_Fit_Peak(const Scene& scene, Graphics& g, const Fit_Peak& peak) {
    const Fit_State& fit = scene.lists.fit;
    const float slope = fit.x_fin == fit.x_ini ? 0 : (fit.y_fin - fit.y_ini) / (fit.x_fin - fit.x_ini);
    const float intercept = fit.y_ini - fit.x_ini * slope, x = peak.pos.value;
    Draw_Dot(scene, g, x, peak.top);
    g.IGrColourN(Seen(scene, blue));
    Draw_Segment(g, x, Place(scene, peak.top), x, Place(scene, intercept + slope * x));
    if (!peak.Has_Half_Width()) return;
    const float mirror = 2 * x - peak.half_x;
    Draw_Dot(scene, g, peak.half_x, peak.half_y);
    Draw_Dot(scene, g, mirror, peak.half_y);
    g.IGrColourN(Seen(scene, blue));
    const float half = Place(scene, peak.half_y);
    Draw_Segment(g, peak.half_x, half, mirror, half);
}

void Draw_Fit(const Scene& scene, Graphics& g) {
    const Fit_State& fit = scene.lists.fit;
    if (fit.done || !fit.lower_set) return;
    g.IGrLineWidth(2);
    Draw_Dot(scene, g, fit.x_ini, fit.y_ini);
    if (!fit.upper_set) return;
    for (const Background_Mark& point : scene.lists.background) Draw_Dot(scene, g, point.x, point.y);
    Draw_Background_Line(scene, g, scene.lists.background);
    for (const Fit_Peak& peak : fit.peaks)
        if (peak.active) Draw_Fit_Peak(scene, g, peak);
}

void Draw_Refined_Pick(const Scene& scene, Graphics& g, std::size_t entry) {
    const PRF_Info_Add_Type& info = scene.store.Info(scene.store.ProfilePRFactive);
    if (entry >= info.refl_position.size() || entry >= info.refl_code.size()) return;
    const Overlay_Place place = Place_Of_Overlay(scene.store, scene.plot, scene.look);
    const Bragg_Row row = Bragg_Row_Of(place.band, info.nphases, info.refl_code[entry]);
    const float x = info.refl_position[entry], base = place.base;
    Draw_Segment(g, x, base + row.top, x, base + row.bottom);
}

void Draw_Generated_Pick(const Scene& scene, Graphics& g, std::size_t entry) {
    const std::vector<Reflection_Mark>& marks = scene.lists.hklgen;
    if (entry < marks.size()) Draw_Segment(g, marks[entry].x, Foot_Of(scene), marks[entry].x, Place(scene, marks[entry].y));
}

// A side of the box, from `at`, `size` long, in a room between two fractions of the page: half the room back when it overruns that, and
// never off it. A side that is too long for the room has all the page.
float Keep_Inside(float at, float size, float from, float to, float page) {
    const bool fits = size <= (to - from) * page;
    const float first = fits ? from * page : 0, last = fits ? to * page : page;
    if (at + size > last) at -= 0.5f * (last - first);
    return std::max(first, std::min(at, last - size));
}

}  // namespace

void Draw_Marks(const Scene& scene, Graphics& g) {
    if (scene.plot.plot_type != Plot_Form::calculation || !scene.plot.Shown_View().Drawable()) return;
    const Data_Units units(scene, g, false);
    switch (scene.plot.ClickMode) {
        case Click_Mode::fit:
            Draw_Fit(scene, g);
            break;
        case Click_Mode::peaks:
            Draw_Peaks(scene, g);
            break;
        case Click_Mode::background:
            Draw_Background(scene, g);
            break;
        case Click_Mode::reflections:
            Draw_Reflections(scene, g);
            break;
        case Click_Mode::none:
            break;
    }
}

void Draw_Picks(const Scene& scene, Graphics& g, const std::vector<int>& entries, bool generated) {
    if (!scene.plot.Shown_View().Drawable() || (!generated && scene.store.ProfilePRFactive < 1)) return;
    const Data_Units units(scene, g, !generated);
    g.IGrLineWidth(3);
    g.IGrColourN(Seen(scene, generated ? magenta : red));
    for (const int entry : entries) {
        if (entry < 1) continue;
        const auto index = static_cast<std::size_t>(entry - 1);
        generated ? Draw_Generated_Pick(scene, g, index) : Draw_Refined_Pick(scene, g, index);
    }
}

void Draw_Readout_Box(Graphics& g, const Plot_Zone& room, float x, float y, const std::vector<std::string>& lines) {
    constexpr float char_width = 0.007f, char_height = 0.015f;
    if (lines.empty()) return;
    const float scale = Legible_Scale(g, char_width, char_height);
    const float unit_width = 10 * scale, unit_height = 20 * scale;
    std::size_t longest = 1;
    for (const std::string& line : lines) longest = std::max(longest, Characters(Trim(line)));
    const auto columns = static_cast<float>(longest), rows = static_cast<float>(lines.size());
    const float width = std::min(unit_width * columns, page_width), height = std::min(unit_height * rows, page_height);
    x = Keep_Inside(x, width, room.x1, room.x2, page_width);
    y = Keep_Inside(y, height, room.y1, room.y2, page_height);

    g.IGrColourN(grey);
    g.IGrFillPattern(fill_solid);
    g.IGrRectangle(x, y, x + width, y + height);
    g.IGrLineWidth(1);
    g.IGrColour("Black");
    Draw_Segment(g, x, y, x + width, y);
    g.IGrLineTo(x + width, y + height);
    g.IGrColour("White");
    g.IGrLineTo(x, y + height);
    g.IGrLineTo(x, y);

    g.IGrArea(x / page_width, y / page_height, (x + width) / page_width, (y + height) / page_height);
    g.IGrUnits(0, 0, columns, rows);
    g.WGrTextFont(101, 0, scale * char_width * page_width / width, scale * char_height * page_height / height);
    g.IGrCharJustify(0);
    g.IGrColour("Black");
    for (std::size_t j = 0; j < lines.size(); ++j) g.IGrCharOut(0.5f, static_cast<float>(j) + 0.5f, Trim(lines[j]));
    g.IGrArea(0, 0, 1, 1);
    g.IGrUnits(0, 0, page_width, page_height);
}

}  // namespace vntl
