// A device that draws on another one in changed colours.
#include "pictures/recolour.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

namespace vntl {

namespace {

constexpr Colour black = WRGB(0, 0, 0), white = WRGB(255, 255, 255);
constexpr double half_bright = 128;
constexpr double share_of_ground = 1.0 / 3;  // of the page: an area that covers more is what the plot stands on

Colour Grey(Colour colour) {
    const auto level = static_cast<unsigned>(std::lround(Brightness(colour)));
    return WRGB(level, level, level);
}

Colour Exchanged(Colour colour) { return colour == black ? white : colour == white ? black : colour; }

Colour Nearest_Ink(Colour colour) { return Brightness(colour) < half_bright ? black : white; }

// The two questions that a rule answers; `ground` is the colour below.
class Colour_Rule {
public:
    virtual ~Colour_Rule() = default;
    virtual Colour Line(Colour colour, Colour ground) const = 0;  // texts and markers too
    virtual Colour Area(Colour colour, Colour ground) const = 0;
};

class Changed_Colours : public Colour_Rule {
public:
    Changed_Colours(Colour_Change change, Colour_Use use) : change_(change), use_(use) {}

    Colour Line(Colour colour, Colour) const override {
        return change_ == Colour_Change::black ? black : Changed(colour, use_ != Colour_Use::areas);
    }
    Colour Area(Colour colour, Colour ground) const override {
        if (change_ == Colour_Change::black) return colour == ground ? white : Grey(colour);
        return Changed(colour, use_ != Colour_Use::lines);
    }

private:
    Colour Changed(Colour colour, bool keeps_colour) const {
        const Colour kept = keeps_colour && change_ != Colour_Change::greys ? colour : Grey(colour);
        return change_ == Colour_Change::exchange ? Exchanged(kept) : kept;
    }

    Colour_Change change_;
    Colour_Use use_;
};

class Ink : public Colour_Rule {
public:
    Colour Line(Colour colour, Colour ground) const override {
        const Colour below = Nearest_Ink(ground);
        return colour == ground ? below : Exchanged(below);
    }
    Colour Area(Colour colour, Colour ground) const override { return colour == ground ? Nearest_Ink(ground) : colour; }
};

class Recoloured_Device : public Device {
public:
    Recoloured_Device(Device& device, const Colour_Rule& rule) : device_(device), rule_(rule) {}

    double Width() const override { return device_.Width(); }
    double Height() const override { return device_.Height(); }
    double Pixel() const override { return device_.Pixel(); }

    void Clear(Colour colour) override {
        ground_ = colour;
        device_.Clear(Area(colour));
    }
    void Set_Clip(const Rect& rect) override { device_.Set_Clip(rect); }
    void Polyline(std::span<const Point> points, const Pen& pen) override { device_.Polyline(points, Lines(pen)); }
    void Curve(const Series& series, const Pen& pen) override { device_.Curve(series, Lines(pen)); }

    void Markers(const Series& series, const Marker_Style& style) override {
        Marker_Style changed = style;
        changed.colour = Line(style.colour);
        device_.Markers(series, changed);
    }

    void Fill(std::span<const Point> polygon, Colour colour) override {
        if (Covers_Page(polygon)) ground_ = colour;
        device_.Fill(polygon, Area(colour));
    }

    void Under_Curve(const Series& series, double foot, Colour colour) override { device_.Under_Curve(series, foot, Area(colour)); }

    void Ellipse(Point centre, double rx, double ry, bool filled, const Pen& pen) override {
        Pen changed = Lines(pen);
        if (filled) changed.colour = Area(pen.colour);
        device_.Ellipse(centre, rx, ry, filled, changed);
    }

    void Cells(const Cell_Image& image) override {
        std::vector<Colour> colours(image.colours.begin(), image.colours.end());
        for (Colour& colour : colours)
            if (colour != no_colour) colour = Area(colour);
        Cell_Image changed = image;
        changed.colours = colours;
        device_.Cells(changed);
    }
    Finest_Cells Finest(const Rect& rect) const override { return device_.Finest(rect); }

    void Facets(const Facet_List& list) override {
        std::vector<Facet> facets(list.facets.begin(), list.facets.end());
        for (Facet& facet : facets) facet.colour = facet.count > 2 ? Area(facet.colour) : Line(facet.colour);
        Facet_List changed = list;
        changed.facets = facets;
        device_.Facets(changed);
    }

    void Text(Point at, std::string_view text, const Text_Style& style) override {
        Text_Style changed = style;
        changed.colour = Line(style.colour);
        device_.Text(at, text, changed);
    }
    double Text_Width(std::string_view text, const Text_Style& style) const override { return device_.Text_Width(text, style); }
    bool Start_Backwards(long long points) override { return device_.Start_Backwards(points); }
    bool End_Backwards() override { return device_.End_Backwards(); }

private:
    Colour Line(Colour colour) const { return rule_.Line(colour, ground_); }
    Colour Area(Colour colour) const { return rule_.Area(colour, ground_); }
    Pen Lines(const Pen& pen) const { return {Line(pen.colour), pen.width, pen.style}; }

    bool Covers_Page(std::span<const Point> polygon) const {
        if (polygon.size() != 4) return false;
        const auto [left, right] = std::ranges::minmax(polygon, {}, &Point::x);
        const auto [low, high] = std::ranges::minmax(polygon, {}, &Point::y);
        return (right.x - left.x) * (high.y - low.y) > share_of_ground * Width() * Height();
    }

    Device& device_;
    const Colour_Rule& rule_;
    Colour ground_ = white;
};

}  // namespace

double Brightness(Colour colour) { return 0.299 * Red(colour) + 0.587 * Green(colour) + 0.114 * Blue(colour); }

void Draw_Recoloured(Device& device, Colour_Change change, Colour_Use use, const Draw_Routine& draw) {
    if (change == Colour_Change::none && use == Colour_Use::all) return draw(device);
    const Changed_Colours rule(change, use);
    Recoloured_Device recoloured(device, rule);
    draw(recoloured);
}

void Draw_In_Ink(Device& device, const Draw_Routine& draw) {
    const Ink rule;
    Recoloured_Device recoloured(device, rule);
    draw(recoloured);
}

}  // namespace vntl
