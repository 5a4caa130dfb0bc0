#include "session/desk/ghosts.hpp"

#include <algorithm>

#include "session/desk/waterfall.hpp"
#include "session/store.hpp"

namespace vntl {

namespace {

Row_Ghost Line_In_Hand(const Profile_Store& store, const Plot_State& plot) {
    const Rubber_Shape& rubber = plot.rubber;
    const Plot_State::Place to = Counts_Of_Moved(store, plot, {rubber.x1, rubber.y1});
    if (plot.MoveMode == Move_Mode::align) {
        const Plot_State::Place from = Counts_Of_Moved(store, plot, {rubber.x0, rubber.y0});
        return {.bx = static_cast<float>(to.x - from.x), .by = static_cast<float>(to.y - from.y)};
    }
    const bool scales = plot.MoveMode == Move_Mode::scale_x || plot.MoveMode == Move_Mode::scale_y;
    if (!scales || !plot.row_move.has_pivot) return {};
    const Plot_State::Place pivot = Counts_Of_Moved(store, plot, {plot.Pivot_Place(), plot.Pivot_Place()});
    if (plot.MoveMode == Move_Mode::scale_x) return {.ax = static_cast<float>(to.x / pivot.x)};
    return {.ay = static_cast<float>(to.y / pivot.y)};
}

}  // namespace

Plot_State::Place Counts_Of_Moved(const Profile_Store& store, const Plot_State& plot, Plot_State::Place page) {
    const std::vector<int>& rows = plot.row_move.rows;
    const auto shown = std::ranges::find_if(rows, [&](int row) { return row >= 1 && row <= store.nperfiles() && store.shown(row); });
    const float offset = shown == rows.end() ? 0 : Offset_Of_Row(store, plot, *shown);
    const Plot_State::Place at = plot.Data_At(page);
    return {at.x, Off_Scale(plot.Scale(), static_cast<float>(at.y) - offset)};
}

std::vector<Row_Ghost> Ghosts_Of(const Profile_Store& store, const std::vector<int>& rows, const Row_Ghost& line) {
    std::vector<Row_Ghost> ghosts;
    if (Row_Ghost{0, line.ax, line.bx, line.ay, line.by} == Row_Ghost{}) return ghosts;
    for (const int row : rows) {
        if (row < 1 || row > store.nperfiles() || !store.shown(row)) continue;
        ghosts.push_back(line);
        ghosts.back().row = row;
    }
    if (ghosts.size() <= most_ghosts) return ghosts;
    std::vector<Row_Ghost> chosen;
    for (std::size_t i = 0; i < most_ghosts; ++i) chosen.push_back(ghosts[i * (ghosts.size() - 1) / (most_ghosts - 1)]);
    return chosen;
}

std::vector<Row_Ghost> Ghosts_Apart(const Profile_Store& store, float dx, float dy) {
    std::vector<int> rows;
    for (int row = 2; row <= store.nperfiles(); ++row) rows.push_back(row);
    std::vector<Row_Ghost> ghosts = Ghosts_Of(store, rows, {.bx = dx, .by = dy});
    for (Row_Ghost& ghost : ghosts) {
        const auto steps = static_cast<float>(ghost.row - 1);
        ghost.bx *= steps;
        ghost.by *= steps;
    }
    return ghosts;
}

std::vector<Row_Ghost> Ghosts_In_Hand(const Profile_Store& store, const Plot_State& plot) {
    if (!plot.rubber.active || plot.row_move.rows.empty() || !plot.units.Drawable()) return {};
    return Ghosts_Of(store, plot.row_move.rows, Line_In_Hand(store, plot));
}

}  // namespace vntl
