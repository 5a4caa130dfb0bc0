#include "session/grid_view.hpp"

#include "session/modes.hpp"
#include "session/session.hpp"

namespace vntl {

namespace {

Status Prepare(Session& session, float x1, float x2, int first, int last, Intensities form) {
    Plot_State& plot = session.plot;
    const Status status = Prepare_Multi_Data(session.store, plot.xspace, x1, x2, first, last, form, session.prefs.saturation, plot.grid);
    if (status.failed) return status;
    plot.x_view_min = x1, plot.x_view_max = x2;
    Show_Resting_Hint(session);  // a smoothed grid is gone
    return status;
}

}  // namespace

Status Show_Rows_In_Grid(Session& session, const View& window) {
    const bool log = session.plot.plot_type == Plot_Form::contour_log;
    return Show_Rows_In_Grid(session, window, log ? Intensities::logarithms : Intensities::counts);
}

Status Show_Rows_In_Grid(Session& session, const View& window, Intensities form) {
    const int first = static_cast<int>(window.y1), last = static_cast<int>(window.y2);
    const Status status = Prepare(session, window.x1, window.x2, first, last, form);
    if (status.ok()) session.plot.first_pattern = first, session.plot.last_pattern = last;
    return status;
}

Status Show_Surface_Grid(Session& session, float x1, float x2) {
    return Prepare(session, x1, x2, 1, session.store.nperfiles(), Intensities::counts);
}

Status Prepare_Model_Grid(Session& session) {
    const Plot_State& plot = session.plot;
    if (plot.Is_Map()) return Show_Rows_In_Grid(session, plot.Map_View());
    const Intensities form = plot.log_scale ? Intensities::logarithms : Intensities::counts;
    return Prepare(session, plot.x_view_min, plot.x_view_max, 1, session.store.nperfiles(), form);
}

}  // namespace vntl
