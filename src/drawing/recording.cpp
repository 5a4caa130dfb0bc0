// Keeps what is drawn, point by point, and draws it again elsewhere.
#include "drawing/recording.hpp"

#include <algorithm>

#include "base/text.hpp"

namespace vntl {
namespace {

// Draws one recorded item after another, stretched.
class Replayer {
public:
    Replayer(Device& device, double sx, double sy) : device_(device), sx_(sx), sy_(sy) {}

    void operator()(const Recorded_Clear& item) { device_.Clear(item.colour); }
    void operator()(const Recorded_Clip& item) {
        device_.Set_Clip({sx_ * item.rect.x1, sy_ * item.rect.y1, sx_ * item.rect.x2, sy_ * item.rect.y2});
    }
    void operator()(const Recorded_Line& item) { device_.Polyline(Stretched(item.points), item.pen); }
    void operator()(const Recorded_Fill& item) { device_.Fill(Stretched(item.points), item.colour); }
    void operator()(const Recorded_Ellipse& item) {
        device_.Ellipse(Stretched(item.centre), sx_ * item.rx, sy_ * item.ry, item.filled, item.pen);
    }
    void operator()(const Recorded_Cells& item) {
        const Rect& r = item.rect;
        device_.Cells({{sx_ * r.x1, sy_ * r.y1, sx_ * r.x2, sy_ * r.y2}, item.columns, item.rows, item.colours});
    }
    void operator()(const Recorded_Facets& item) { device_.Facets({Stretched(item.places), item.facets, item.line_width}); }
    void operator()(const Recorded_Text& item) {
        Text_Style style = item.style;
        style.width *= sx_;
        style.height *= sy_;
        device_.Text(Stretched(item.at), item.text, style);
    }
    void operator()(const Recorded_Markers& item) {
        std::vector<float> x, y;
        for (const Point& p : item.points) {
            x.push_back(static_cast<float>(p.x));
            y.push_back(static_cast<float>(p.y));
        }
        Marker_Style style = item.style;
        style.width *= sx_;
        style.height *= sy_;
        device_.Markers({x, y, 0, sx_, 0, sy_}, style);
    }

private:
    Point Stretched(Point p) const { return {sx_ * p.x, sy_ * p.y}; }
    std::vector<Point> Stretched(const std::vector<Point>& points) const {
        std::vector<Point> result;
        for (const Point& p : points) result.push_back(Stretched(p));
        return result;
    }

    Device& device_;
    double sx_, sy_;
};

// Collects the room that one recorded item after another takes.
class Measure {
public:
    explicit Measure(const Recording_Device& device) : device_(device), clip_{0, 0, device.Width(), device.Height()} {}

    void operator()(const Recorded_Clear&) { Take({0, 0, device_.Width(), device_.Height()}); }
    void operator()(const Recorded_Clip& item) { clip_ = item.rect; }
    void operator()(const Recorded_Line& item) { Take(item.points, item.pen.width); }
    void operator()(const Recorded_Fill& item) { Take(item.points, 0); }
    void operator()(const Recorded_Ellipse& item) {
        const double rx = item.rx + item.pen.width, ry = item.ry + item.pen.width;
        Take({item.centre.x - rx, item.centre.y - ry, item.centre.x + rx, item.centre.y + ry});
    }
    void operator()(const Recorded_Cells& item) { Take(item.rect); }
    void operator()(const Recorded_Facets& item) { Take(item.places, item.line_width); }
    void operator()(const Recorded_Text& item) {
        // Whatever its angle and side, a text stays within its length and a line's height.
        const double reach = device_.Text_Width(item.text, item.style) + 2 * item.style.height;
        Take({item.at.x - reach, item.at.y - reach, item.at.x + reach, item.at.y + reach});
    }
    void operator()(const Recorded_Markers& item) { Take(item.points, std::max(item.style.width, item.style.height)); }

    std::optional<Rect> bounds;

private:
    void Take(const std::vector<Point>& points, double room) {
        if (points.empty()) return;
        // The whole first, then what the clip leaves of it: a line may show between points that do not.
        Rect all{points.front().x, points.front().y, points.front().x, points.front().y};
        for (const Point& p : points) all = {std::min(all.x1, p.x), std::min(all.y1, p.y), std::max(all.x2, p.x), std::max(all.y2, p.y)};
        Take({all.x1 - room, all.y1 - room, all.x2 + room, all.y2 + room});
    }
    void Take(Rect rect) {
        rect = {std::max(rect.x1, clip_.x1), std::max(rect.y1, clip_.y1), std::min(rect.x2, clip_.x2), std::min(rect.y2, clip_.y2)};
        if (!(rect.x1 <= rect.x2 && rect.y1 <= rect.y2)) return;
        if (bounds)
            bounds = {std::min(bounds->x1, rect.x1), std::min(bounds->y1, rect.y1), std::max(bounds->x2, rect.x2),
                      std::max(bounds->y2, rect.y2)};
        else
            bounds = rect;
    }

    const Recording_Device& device_;
    Rect clip_;
};

}  // namespace

std::optional<Rect> Recording_Device::Bounds() const {
    Measure measure(*this);
    for (const Recorded& item : items_) std::visit(measure, item);
    return measure.bounds;
}

void Recording_Device::Clear(Colour colour) {
    items_.clear();
    items_.emplace_back(Recorded_Clear{colour});
}

void Recording_Device::Set_Clip(const Rect& rect) { items_.emplace_back(Recorded_Clip{rect}); }

void Recording_Device::Polyline(std::span<const Point> points, const Pen& pen) {
    if (!points.empty() && pen.style != Line_Style::none) items_.emplace_back(Recorded_Line{{points.begin(), points.end()}, pen});
}

void Recording_Device::Curve(const Series& series, const Pen& pen) {
    std::vector<Point> stretch;
    for (std::size_t i = 0; i < series.x.size(); ++i) {
        if (!series.Gap(i)) {
            stretch.push_back(series.At(i));
            continue;
        }
        Polyline(stretch, pen);
        stretch.clear();
    }
    Polyline(stretch, pen);
}

void Recording_Device::Markers(const Series& series, const Marker_Style& style) {
    Recorded_Markers item{{}, style};
    for (std::size_t i = 0; i < series.x.size(); ++i)
        if (!series.Gap(i)) item.points.push_back(series.At(i));
    if (!item.points.empty() && style.glyph != 0) items_.emplace_back(std::move(item));
}

void Recording_Device::Fill(std::span<const Point> polygon, Colour colour) {
    items_.emplace_back(Recorded_Fill{{polygon.begin(), polygon.end()}, colour});
}

void Recording_Device::Ellipse(Point centre, double rx, double ry, bool filled, const Pen& pen) {
    items_.emplace_back(Recorded_Ellipse{centre, rx, ry, filled, pen});
}

void Recording_Device::Cells(const Cell_Image& image) {
    if (image.Shows())
        items_.emplace_back(Recorded_Cells{image.rect, image.columns, image.rows, {image.colours.begin(), image.colours.end()}});
}

void Recording_Device::Facets(const Facet_List& list) {
    if (!list.facets.empty())
        items_.emplace_back(
            Recorded_Facets{{list.places.begin(), list.places.end()}, {list.facets.begin(), list.facets.end()}, list.line_width});
}

void Recording_Device::Text(Point at, std::string_view text, const Text_Style& style) {
    if (!text.empty()) items_.emplace_back(Recorded_Text{at, std::string(text), style});
}

double Recording_Device::Text_Width(std::string_view text, const Text_Style& style) const {
    return 0.6 * Em_Of_Cell(style.width, style.height) * static_cast<double>(Characters(text));
}

void Recording_Device::Replay(Device& device) const {
    Replayer replayer(device, device.Width() / width_, device.Height() / height_);
    for (const Recorded& item : items_) std::visit(replayer, item);
}

}  // namespace vntl
