#include "commands/plot/pan.hpp"

#include <algorithm>
#include <cmath>

#include "commands/plot/mouse_tools.hpp"
#include "plot/plot.hpp"
#include "session/grid_view.hpp"

namespace vntl {

namespace {

void Show_Cursor(Session& session, Cursor_Shape cursor) {
    session.interface.cursor = cursor;
    ++session.interface.revision;
}

// How far the hand is from where it began, as a part of the plot box.
struct Way {
    double right, up;
};
Way Way_Of(const Plot_State& plot, Plot_State::Place hand) {
    const Plot_Zone& zone = plot.zone;
    return {(hand.x - plot.drag.x) / (static_cast<double>(zone.x2 - zone.x1) * page_width),
            (hand.y - plot.drag.y) / (static_cast<double>(zone.y2 - zone.y1) * page_height)};
}

View Moved(const View& view, double x, double y) {
    return {static_cast<float>(view.x1 + x), static_cast<float>(view.x2 + x), static_cast<float>(view.y1 + y),
            static_cast<float>(view.y2 + y)};
}

// A map moves within what there is: its ends stop the hand. Rows move by whole ones.
View Moved_Map(const Session& session, const Way& way) {
    const Plot_State& plot = session.plot;
    const View& from = plot.drag.from;
    const double width = static_cast<double>(from.x2) - from.x1, rows = static_cast<double>(from.y2) - from.y1 + 1;
    const auto held = [](double move, double down, double up) { return std::max(std::min(move, up), std::min(down, 0.0)); };
    const double x = held(-way.right * width, static_cast<double>(plot.x_all_min) - from.x1, static_cast<double>(plot.x_all_max) - from.x2);
    const double y = held(-std::round(way.up * rows), 1.0 - from.y1, static_cast<double>(session.store.nperfiles()) - from.y2);
    return Moved(from, x, y);
}

// False where the view stays as it is.
bool Show(Session& session, const View& view) {
    Plot_State& plot = session.plot;
    if (view == (plot.Is_Map() ? plot.Map_View() : plot.Shown_View())) return false;
    return plot.Is_Map() ? Show_Rows_In_Grid(session, view).ok() : plot.Show(view);
}

void Follow(Session& session, Plot_State::Place hand) {
    const Plot_State& plot = session.plot;
    const View& from = plot.drag.from;
    const Way way = Way_Of(plot, hand);
    const View view = plot.Is_Map() ? Moved_Map(session, way)
                                    : Moved(from, -way.right * (static_cast<double>(from.x2) - from.x1),
                                            -way.up * (static_cast<double>(from.y2) - from.y1));
    if (Show(session, view)) Plot_Redraw(session);
}

void Begin(Session& session, Plot_State::Place hand) {
    Plot_State& plot = session.plot;
    plot.drag = {.active = true, .pans = true, .x = hand.x, .y = hand.y, .from = plot.Is_Map() ? plot.Map_View() : plot.Shown_View()};
    Want_Button_Up(session, true);
    Show_Cursor(session, Cursor_Shape::hand);
}

void End(Session& session) {
    End_Drag(session);
    Show_Cursor(session, Cursor_Of_Mode(session));
}

bool Begins_Pan(const Session& session, const Message& message) {
    const Plot_State& plot = session.plot;
    const WIN_MESSAGE& record = message.record;
    const bool busy = plot.rubber.active || plot.drag.active || plot.spectral.shown;
    return message.kind == Message_Kind::mouse_down && record.value1 == middle_button && !busy && (plot.Is_2D() || plot.Is_Map()) &&
           Has_Meaning(session, record) && Inside(plot, In_Data(plot, record.x, record.y));
}

}  // namespace

bool Pan(Session& session, const Message& message) {
    const WIN_MESSAGE& record = message.record;
    const Plot_State::Place hand{record.x, record.y};
    if (Begins_Pan(session, message)) return Begin(session, hand), true;
    if (!session.plot.drag.pans) return false;
    if (!Has_Meaning(session, record)) return true;
    if (message.kind == Message_Kind::mouse_move) Follow(session, hand);
    if (message.kind == Message_Kind::mouse_up && record.value1 == middle_button) {
        Follow(session, hand);
        End(session);
    }
    return true;
}

void Cancel_Pan(Session& session) {
    const View from = session.plot.drag.from;
    End(session);
    if (Show(session, from)) Plot_Redraw(session);
}

}  // namespace vntl
