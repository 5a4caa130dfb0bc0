#include "commands/plot/view.hpp"

namespace vntl {

void Move_View(Plot_State& plot, View_Move move) {
    const float width = plot.x_view_max - plot.x_view_min;
    const float height = plot.y_view_max - plot.y_view_min;
    const auto shift_x = [&](float by) { plot.x_view_min += by, plot.x_view_max += by; };
    const auto shift_y = [&](float by) { plot.y_view_min += by, plot.y_view_max += by; };
    const auto widen = [&](float by) { plot.x_view_min -= by, plot.x_view_max += by; };
    switch (move) {
        case View_Move::left:
            shift_x(-0.1f * width);
            break;
        case View_Move::right:
            shift_x(0.1f * width);
            break;
        case View_Move::all_left:
            plot.x_view_min = plot.x_all_min, plot.x_view_max = plot.x_all_min + width;
            break;
        case View_Move::all_right:
            plot.x_view_min = plot.x_all_max - width, plot.x_view_max = plot.x_all_max;
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
}

}  // namespace vntl
