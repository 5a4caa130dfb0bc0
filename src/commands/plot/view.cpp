#include "commands/plot/view.hpp"

#include <algorithm>
#include <cmath>

namespace vntl {

namespace {

bool Zoom(double about, bool closer, float narrowest, float& from, float& to) {
    constexpr double step = 0.8;  // of the width that is left
    const double factor = closer ? step : 1 / step;
    const auto lo = static_cast<float>(about + (static_cast<double>(from) - about) * factor);
    const auto hi = static_cast<float>(about + (static_cast<double>(to) - about) * factor);
    if (closer && !(hi - lo > narrowest)) return false;
    from = lo, to = hi;
    return true;
}

}  // namespace

bool Zoom_X(double about, bool closer, View& view) {
    constexpr float narrowest = 0.002f;  // data units
    return Zoom(about, closer, narrowest, view.x1, view.x2);
}

bool Zoom_Y(double about, bool closer, View& view) {
    constexpr float narrowest = 1e-5f;  // of y itself
    return Zoom(about, closer, narrowest * std::max(std::fabs(view.y1), std::fabs(view.y2)), view.y1, view.y2);
}

bool Zoom_X_Within_Rows(const Plot_State& plot, double about, bool closer, View& view) {
    if (!Zoom_X(about, closer, view)) return false;
    view.x1 = std::max(view.x1, plot.x_all_min);
    view.x2 = std::min(view.x2, plot.x_all_max);
    return view.x1 < view.x2;
}

void Move_View(Plot_State& plot, View_Move move) {
    View view = plot.Shown_View();
    const float width = view.x2 - view.x1, height = view.y2 - view.y1;
    const auto shift_x = [&view](float by) { view.x1 += by, view.x2 += by; };
    const auto shift_y = [&view](float by) { view.y1 += by, view.y2 += by; };
    const auto widen = [&view](float by) { view.x1 -= by, view.x2 += by; };
    switch (move) {
        case View_Move::left:
            shift_x(-0.1f * width);
            break;
        case View_Move::right:
            shift_x(0.1f * width);
            break;
        case View_Move::all_left:
            view.x1 = plot.x_all_min, view.x2 = plot.x_all_min + width;
            break;
        case View_Move::all_right:
            view.x1 = plot.x_all_max - width, view.x2 = plot.x_all_max;
            break;
        case View_Move::up:
            shift_y(-0.05f * height);
            break;
        case View_Move::down:
            shift_y(0.05f * height);
            break;
        case View_Move::contract:
            widen(0.05f * width);
            break;
        case View_Move::expand:
            widen(-0.05f * width);
            break;
    }
    plot.Show(view);
}

}  // namespace vntl
