// The mouse over a map.
#include <algorithm>
#include <cmath>

#include "commands/plot/mouse.hpp"
#include "commands/plot/mouse_tools.hpp"
#include "commands/plot/view.hpp"
#include "plot/plot.hpp"
#include "session/grid_view.hpp"
#include "session/ranges.hpp"

namespace vntl {

namespace {

constexpr float narrowest_band = 0.02f;  // of x: less is a click

struct Rows {
    int first, last;  // first > last for none
};

// The rows whose temperatures lie between the two places of the axis.
Rows Rows_Between_Temperatures(const Profile_Store& store, float low, float high) {
    Rows rows{store.nperfiles() + 1, 0};
    for (int row = 1; row <= store.nperfiles(); ++row) {
        const float t = store.Pattern(row).TSample;
        if (t < low || t > high) continue;
        rows.first = std::min(rows.first, row);
        rows.last = row;
    }
    return rows;
}

Rows Rows_Between(const Session& session, float low, float high) {
    const int all = session.store.nperfiles();
    if (session.plot.grid.Of_Temperatures()) return Rows_Between_Temperatures(session.store, low, high);
    const auto nearest = [all](float y) { return static_cast<int>(std::clamp(y + 0.5f, 0.0f, static_cast<float>(all) + 1)); };
    return {std::max(nearest(low), 1), std::min(nearest(high), all)};
}

void Finish_Rectangle(Session& session, Ask& ask, const Rubber_Shape& rubber) {
    const Plot_State& plot = session.plot;
    const Data_Point a = In_Data(plot, rubber.x0, rubber.y0), b = In_Data(plot, rubber.x1, rubber.y1);
    if (Is_Click(rubber) || !(std::fabs(a.x - b.x) > narrowest_band)) return Plot_Redraw(session);
    const Rows rows = Rows_Between(session, std::min(a.y, b.y), std::max(a.y, b.y));
    const View window{std::max(std::min(a.x, b.x), plot.drawn.x1), std::min(std::max(a.x, b.x), plot.drawn.x2),
                      static_cast<float>(rows.first), static_cast<float>(rows.last)};
    if (const Status status = Show_Rows_In_Grid(session, window); status.failed) ask.Error("ERROR: " + status.message);
    Plot_Redraw(session);
}

void Go_Back(Session& session, Ask& ask) {
    Plot_State& plot = session.plot;
    const View before = plot.Map_View();
    Lapse_Rubber(session);
    Set_Range_X(session.store, session.prefs.prf, plot);
    const View whole{plot.x_all_min, plot.x_all_max, 1, static_cast<float>(session.store.nperfiles())};
    if (const Status status = Show_Rows_In_Grid(session, whole); status.failed) {
        plot.x_view_min = before.x1, plot.x_view_max = before.x2;
        ask.Error("ERROR: " + status.message);
    }
    Plot_Redraw(session);
}

// Fewer or more rows about the one that the pointer is at. Whole rows come or go, one at least.
bool Zoom_Rows(const Session& session, float about, bool closer, View& window) {
    const View before = window;
    const auto row = static_cast<float>(Nearest_Pattern(session.plot.grid, session.plot.first_pattern, about));
    if (!Zoom_Y(row, closer, window)) return false;
    window.y1 = closer ? std::ceil(window.y1) : std::max(std::floor(window.y1), 1.0f);
    window.y2 = closer ? std::floor(window.y2) : std::min(std::ceil(window.y2), static_cast<float>(session.store.nperfiles()));
    return window.y1 <= window.y2 && !(window == before);
}

// A window too narrow for a grid is not shown.
void Turn_Wheel(Session& session, const WIN_MESSAGE& record, bool closer) {
    const Plot_State& plot = session.plot;
    const Data_Point at = In_Data(plot, record.x, record.y);
    const Wheel_Place place = Wheel_Place_Of(plot, {record.x, record.y});
    View window = plot.Map_View();
    if (place == Wheel_Place::nothing) return;
    if (!(place == Wheel_Place::y_axis ? Zoom_Rows(session, at.y, closer, window) : Zoom_X_Within_Rows(plot, at.x, closer, window))) return;
    if (Show_Rows_In_Grid(session, window).ok()) Plot_Redraw(session);
}

}  // namespace

void MouseMovement_graph2dcontour(Session& session, Ask& ask, const Message& message) {
    Plot_State& plot = session.plot;
    const WIN_MESSAGE& record = message.record;
    if (!Has_Meaning(session, record)) return;
    const Data_Point at = In_Data(plot, record.x, record.y);
    switch (message.kind) {
        case Message_Kind::mouse_move:
            Show_Read_Outs(session, at);
            if (plot.rubber.active) Move_Rubber(session, {record.x, record.y});
            break;
        case Message_Kind::mouse_down:
            if (record.value1 == left_button) Start_Rubber(session, Rubber_Kind::rectangle, {record.x, record.y});
            if (record.value1 == right_button) Go_Back(session, ask);
            break;
        case Message_Kind::mouse_up:
            if (record.value1 == left_button && plot.rubber.active)
                Finish_Rectangle(session, ask, End_Rubber(session, {record.x, record.y}));
            break;
        case Message_Kind::wheel:
            if (!plot.rubber.active) Turn_Wheel(session, record, record.value1 > 0);
            break;
        default:
            break;
    }
}

}  // namespace vntl
