#include "commands/plot/pointed_row.hpp"

#include <cmath>

#include "commands/plot/mouse_tools.hpp"
#include "plot/plot.hpp"
#include "session/desk/nearest_row.hpp"

namespace vntl {

namespace {

constexpr double reach = 6;  // pixels

int Row_Under(const Session& session, Plot_State::Place page) {
    const Plot_State& plot = session.plot;
    const Data_Point at = In_Data(plot, page.x, page.y);
    if (!session.desk.list_open || !plot.Is_2D() || session.store.nperfiles() < 2 || !Inside(plot, at)) return 0;
    const double across = reach / Pixels_Across(1), up = reach / Pixels_Up(1);  // page units
    const Plot_State::Place there = plot.Data_At({page.x + across, page.y + up});
    const auto distance = [](double a, double b) { return static_cast<float>(std::fabs(a - b)); };
    return Row_Within(session.store, plot, {at.x, at.y}, {distance(there.x, at.x), distance(there.y, at.y)});
}

}  // namespace

void Point_At_Row(Session& session, Plot_State::Place page) { Set_Pointed_Row(session, Row_Under(session, page)); }

void Set_Pointed_Row(Session& session, int row) {
    if (session.plot.pointed_row == row) return;
    session.plot.pointed_row = row;
    ++session.interface.revision;
    Plot_Repaint(session);
}

}  // namespace vntl
