#include "plot/preview.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "plot/following_curves.hpp"
#include "plot/frame_texts.hpp"
#include "session/desk/waterfall.hpp"

namespace vntl {

namespace {

constexpr Colour seam = WRGB(255, 255, 255), colour_of_preview = WRGB(230, 0, 126);
constexpr float line_width = 2, seam_width = 4;

}  // namespace

void Draw_Preview(const Scene& scene, Graphics& g) {
    const Plot_State& plot = scene.plot;
    const View& units = plot.units;
    if (plot.preview.empty() || !plot.Is_2D() || !units.Drawable()) return;
    g.IGrArea(scene.zone.x1, scene.zone.y1, scene.zone.x2, scene.zone.y2);
    g.IGrUnits(units.x1, units.y1, units.x2, units.y2);
    g.IGrLineType(0);
    const int columns = std::max(1, static_cast<int>(std::lround(g.Area().x2 - g.Area().x1)));
    const Row_Offsets offsets(scene.store, plot);
    for (const Preview_Curve& curve : plot.preview) {
        const auto lines = Thin_Lines_Of(plot, curve.x, curve.y, {}, offsets.Of(curve.row), columns);
        for (const auto& [pen, width] : {std::pair{seam, seam_width}, std::pair{colour_of_preview, line_width}}) {
            g.IGrColourN(pen);
            g.IGrLineWidth(width);
            for (const Thin_Line& line : lines) g.IGrPolyLine(line.x, line.y);
        }
    }
    Page_Units(g);
}

}  // namespace vntl
