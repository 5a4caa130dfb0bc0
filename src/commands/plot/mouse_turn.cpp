// The mouse over a graph in space.
#include <algorithm>

#include "base/conversions.hpp"
#include "commands/plot/mouse.hpp"
#include "commands/plot/mouse_tools.hpp"
#include "commands/plot/view.hpp"
#include "plot/plot.hpp"
#include "session/grid_view.hpp"
#include "session/ranges.hpp"

namespace vntl {

namespace {

// One degree in the direction of the hand, none where it has not moved along the axis.
float Step(double from, double to) { return to > from ? 1.0f : to < from ? -1.0f : 0.0f; }

void Follow_Hand(Session& session, const WIN_MESSAGE& record) {
    Plot_State& plot = session.plot;
    const float turn = Step(plot.drag.x, record.x), rise = Step(plot.drag.y, record.y);
    plot.drag.x = record.x;
    plot.drag.y = record.y;
    Turn_To(session, plot.view_rotation + turn, plot.view_elevation + rise);
    Plot_Redraw(session);
}

// Lines are drawn from the rows; a surface needs its grid, and keeps its window where there is none for the new one.
void Show_X(Session& session, float x1, float x2) {
    Plot_State& plot = session.plot;
    if (plot.plot_type == Plot_Form::surface) {
        if (Show_Surface_Grid(session, x1, x2).failed) return;
    } else {
        plot.x_view_min = x1, plot.x_view_max = x2;
    }
    Plot_Redraw(session);
}

void Turn_Wheel(Session& session, bool closer) {
    const Plot_State& plot = session.plot;
    View window = plot.Shown_View();
    const double middle = 0.5 * (static_cast<double>(window.x1) + window.x2);
    if (Zoom_X_Within_Rows(plot, middle, closer, window)) Show_X(session, window.x1, window.x2);
}

void Go_Back(Session& session) {
    Plot_State& plot = session.plot;
    const View before = plot.Shown_View();
    Set_Range_X(session.store, session.prefs.prf, plot);
    plot.x_view_min = before.x1, plot.x_view_max = before.x2;
    Show_X(session, plot.x_all_min, plot.x_all_max);
}

}  // namespace

void Turn_To(Session& session, float rotation, float elevation) {
    Plot_State& plot = session.plot;
    plot.view_rotation = std::clamp(rotation, -180.0f, 180.0f);
    plot.view_elevation = std::clamp(elevation, 0.0f, 45.0f);
    session.interface.Status_Text(3, " Rotation : " + IRealToString(plot.view_rotation, "(F8.2)"));
    session.interface.Status_Text(4, " Elevation : " + IRealToString(plot.view_elevation, "(F8.2)"));
}

void MouseMovement_graph3d(Session& session, Ask&, const Message& message) {
    Plot_State& plot = session.plot;
    const WIN_MESSAGE& record = message.record;
    if (!Has_Meaning(session, record)) return;
    switch (message.kind) {
        case Message_Kind::mouse_down:
            if (record.value1 == right_button && !plot.drag.active) return Go_Back(session);
            if (record.value1 != left_button) break;
            plot.drag = {.active = true, .x = record.x, .y = record.y, .rotation = plot.view_rotation, .elevation = plot.view_elevation};
            Want_Button_Up(session, true);
            break;
        case Message_Kind::mouse_move:
            if (plot.drag.active) Follow_Hand(session, record);
            break;
        case Message_Kind::mouse_up:
            if (record.value1 == left_button) End_Drag(session);
            break;
        case Message_Kind::wheel:
            if (!plot.drag.active) Turn_Wheel(session, record.value1 > 0);
            break;
        default:
            break;
    }
}

}  // namespace vntl
