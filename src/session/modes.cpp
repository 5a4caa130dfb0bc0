#include "session/modes.hpp"

#include <array>

#include "session/session.hpp"

namespace vntl {

namespace {

// In the order of the modes.
constexpr std::array<std::string_view, 5> calculation_hints = {"", "Select the range for fitting procedure on two Background points",
                                                               "Peaks allocation: ", "Background allocation: ", ""};

struct Click_Row {
    bool Plot_State::*flag;
    std::string_view hint;
};
constexpr std::array<Click_Row, 4> list_clicks = {{{&Plot_State::peak_insert, "Peaks allocation: Insert peak"},
                                                   {&Plot_State::peak_delete, "Peaks allocation: Delete peak"},
                                                   {&Plot_State::bgr_insert, "Background allocation: Insert point"},
                                                   {&Plot_State::bgr_delete, "Background allocation: Delete point"}}};

std::string_view Resting_Hint(const Plot_State& plot) {
    const bool grid_shown = plot.Is_Map() || plot.plot_type == Plot_Form::surface;
    return grid_shown && plot.grid.smoothed ? "smoothed" : calculation_hints[static_cast<std::size_t>(plot.ClickMode)];
}

// Of the mode of clicks in force, or of none.
std::string_view Hint_Of_Clicks(const Plot_State& plot) {
    for (const Click_Row& row : list_clicks)
        if (plot.*row.flag) return row.hint;
    return Resting_Hint(plot);
}

void Show_Mode(Interface_State& menu, Cursor_Shape cursor, std::string_view hint) {
    menu.cursor = cursor;
    menu.Hint(std::string(hint));
    ++menu.revision;
}

}  // namespace

void Enter_Mode(Session& session, Move_Mode mode, Cursor_Shape cursor, std::string_view hint, int command) {
    Leave_Mode(session);
    session.plot.MoveMode = mode;
    if (command != 0) session.interface.Enable(command, false);
    session.interface.Enable(command::drag_end, mode == Move_Mode::drag);
    Show_Mode(session.interface, cursor, hint);
}

void Enter_Mode(Session& session, List_Click click) {
    Leave_Mode(session);
    const Click_Row& row = list_clicks[static_cast<std::size_t>(click)];
    session.plot.*row.flag = true;
    Show_Mode(session.interface, Cursor_Shape::cross, row.hint);
}

Cursor_Shape Cursor_Of_Mode(const Session& session) {
    if (session.plot.MoveMode == Move_Mode::drag) return Cursor_Shape::hand;
    return In_Mode(session) ? Cursor_Shape::cross : Cursor_Shape::arrow;
}

bool In_Mode(const Session& session) {
    const Plot_State& plot = session.plot;
    return plot.MoveMode != Move_Mode::none || plot.peak_insert || plot.peak_delete || plot.bgr_insert || plot.bgr_delete;
}

void Leave_Mode(Session& session) {
    Plot_State& plot = session.plot;
    Interface_State& menu = session.interface;
    if (plot.MoveMode != Move_Mode::none)
        for (const int id : {command::drag, command::select_excluded}) menu.Enable(id, true);
    menu.Enable(command::drag_end, false);
    plot.MoveMode = Move_Mode::none;
    for (const Click_Row& row : list_clicks) plot.*row.flag = false;
    plot.rubber = {};
    plot.drag = {};
    plot.row_move = {};
    plot.spectral.shown = false;
    menu.want_mouse_up = false;
    Show_Mode(menu, Cursor_Shape::arrow, Resting_Hint(plot));
}

void Tell_Count(Session& session, bool found) {
    const Plot_State& plot = session.plot;
    const bool peaks = plot.ClickMode == Click_Mode::peaks;
    if (plot.plot_type != Plot_Form::calculation || (!peaks && plot.ClickMode != Click_Mode::background)) return;
    const std::size_t count = peaks ? session.lists.peaks.size() : session.lists.background.size();
    const std::string_view hint = Hint_Of_Clicks(plot);
    session.interface.Hint(std::string(hint) + (hint.ends_with(' ') ? "" : ", ") + std::to_string(count) +
                           (peaks ? " peak" : " background point") + (count == 1 ? "" : "s") + (found ? " found" : ""));
}

void Show_Resting_Hint(Session& session) {
    if (!In_Mode(session)) session.interface.Hint(std::string(Resting_Hint(session.plot)));
}

}  // namespace vntl
