#include "plot/curve_style.hpp"

namespace vntl {

namespace {

constexpr int line_plot = 6, marker_plot = 7;

}  // namespace

void Draw_Markers(Presentation& p, std::span<const float> x, std::span<const float> y, const Curve_Style& style,
                  const Series_Blocks* blocks) {
    p.IPgNewPlot(marker_plot, 1, static_cast<int>(x.size()));
    p.IPgStyle(1, style.Of_Markers());
    p.graphics().IGrLineWidth(1);
    p.IPgXYPairs(x, y, blocks);
}

void Draw_Line(Presentation& p, std::span<const float> x, std::span<const float> y, const Curve_Style& style, const Series_Blocks* blocks) {
    p.IPgNewPlot(line_plot, 1, static_cast<int>(x.size()));
    p.IPgStyle(1, style.Of_Line());
    p.graphics().IGrLineWidth(style.Width());
    p.IPgXYPairs(x, y, blocks);
}

}  // namespace vntl
