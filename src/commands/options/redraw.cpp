#include "commands/options/redraw.hpp"

#include "plot/plot.hpp"
#include "session/grid_view.hpp"
#include "session/ranges.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"

namespace vntl {

namespace {

Status Make_Grid(Session& session) {
    const Plot_State& plot = session.plot;
    if (plot.Is_Map()) return Show_Rows_In_Grid(session, plot.Map_View());
    if (plot.plot_type == Plot_Form::surface) return Show_Surface_Grid(session, plot.x_view_min, plot.x_view_max);
    return Status::Done();
}

}  // namespace

void Show_Present_View(Session& session, Ask& ask) {
    if (const Status status = Make_Grid(session); status.failed) ask.Error("ERROR: " + status.message);
    Plot_Redraw(session);
    Show_Other_Windows(session);
}

// A grid that cannot be made leaves the window of the one that is there.
void Show_Whole_Range(Session& session, Ask& ask) {
    Plot_State& plot = session.plot;
    const View before = plot.Shown_View();
    Set_Range_X(session.store, session.prefs.prf, plot);
    if (const Status status = Make_Grid(session); status.failed) {
        plot.x_view_min = before.x1, plot.x_view_max = before.x2;
        ask.Error("ERROR: " + status.message);
    }
    Plot_Redraw(session);
    Show_Other_Windows(session);
}

void Show_Other_Windows(const Session& session) {
    if (session.quick_view.open) Post_Message({Message_Kind::repaint, {.win = quick_view_window}});
    if (WindowIsOpen(viewer_window)) Post_Message({Message_Kind::repaint, {.win = viewer_window}});
}

}  // namespace vntl
