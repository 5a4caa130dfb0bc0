// A device that keeps what is drawn on it, unreduced, for tests, for `print picture`, and for the marks that lie over a window's bitmap.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "drawing/device.hpp"

namespace vntl {

struct Recorded_Line {
    std::vector<Point> points;
    Pen pen;
};
struct Recorded_Markers {
    std::vector<Point> points;
    Marker_Style style;
};
struct Recorded_Fill {
    std::vector<Point> points;
    Colour colour;
};
struct Recorded_Ellipse {
    Point centre;
    double rx, ry;
    bool filled;
    Pen pen;
};
struct Recorded_Text {
    Point at;
    std::string text;
    Text_Style style;
};
struct Recorded_Cells {
    Rect rect;
    int columns, rows;
    std::vector<Colour> colours;  // the lowest row first
};
struct Recorded_Facets {
    std::vector<Point> places;
    std::vector<Facet> facets;
    double line_width;
};
struct Recorded_Clip {
    Rect rect;
};
struct Recorded_Clear {
    Colour colour;
};
using Recorded = std::variant<Recorded_Clear, Recorded_Clip, Recorded_Line, Recorded_Markers, Recorded_Fill, Recorded_Ellipse,
                              Recorded_Text, Recorded_Cells, Recorded_Facets>;

class Recording_Device : public Device {
public:
    explicit Recording_Device(double width = 1200, double height = 800) : width_(width), height_(height) {}

    double Width() const override { return width_; }
    double Height() const override { return height_; }
    void Clear(Colour) override;  // also forgets what was drawn before
    void Set_Clip(const Rect&) override;
    void Polyline(std::span<const Point>, const Pen&) override;
    void Curve(const Series&, const Pen&) override;             // as a line for each stretch without gaps, every point kept
    void Markers(const Series&, const Marker_Style&) override;  // gaps left out
    void Fill(std::span<const Point>, Colour) override;
    void Ellipse(Point, double rx, double ry, bool filled, const Pen&) override;
    void Cells(const Cell_Image&) override;
    void Facets(const Facet_List&) override;
    void Text(Point, std::string_view, const Text_Style&) override;
    double Text_Width(std::string_view, const Text_Style&) const override;  // a fixed 0.6 em a character

    const std::vector<Recorded>& items() const { return items_; }
    std::optional<Rect> Bounds() const;  // of all that is drawn, clipped; nothing when nothing shows

    // Draws everything again on `device`, stretched to its size.
    void Replay(Device& device) const;

private:
    double width_, height_;
    std::vector<Recorded> items_;
};

}  // namespace vntl
