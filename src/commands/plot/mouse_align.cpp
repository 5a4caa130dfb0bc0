#include <algorithm>
#include <cmath>
#include <functional>

#include "base/conversions.hpp"
#include "commands/plot/mouse.hpp"
#include "commands/plot/mouse_tools.hpp"
#include "plot/plot.hpp"
#include "session/desk/ghosts.hpp"
#include "session/move_rows.hpp"

namespace vntl {

namespace {

bool Confirmed(Ask& ask, std::string text) {
    return ask.Box({Box_Buttons::yes_no, Box_Icon::question, 1, std::move(text), "Confirmation"}) == Box_Answer::yes;
}

// In the plot, and not in the band of a pinned difference, where y is no intensity.
bool On_Data(const Session& session, Plot_State::Place page) {
    const Data_Point at = In_Data(session.plot, page.x, page.y);
    return Inside(session.plot, at) && !In_Band(session, at);
}

// Of the rows that are moved.
Data_Point In_Intensity_Of_Rows(const Session& session, double page_x, double page_y) {
    const Plot_State::Place at = Counts_Of_Moved(session.store, session.plot, {page_x, page_y});
    return {static_cast<float>(at.x), static_cast<float>(at.y)};
}

// The rows are moved where the user agrees.
void Move_Confirmed(Session& session, Ask& ask, const std::string& text, const std::function<Status()>& move) {
    const Status status = Confirmed(ask, text) ? move() : Status::Cancel();
    if (status.to_tell()) ask.Error(status.message);
    status.ok() ? Plot_ReMake(session) : Plot_Redraw(session);
}

// --- moving by a line --------------------------------------------------------------------------------------------------------------

void Finish_Line(Session& session, Ask& ask) {
    const Rubber_Shape rubber = session.plot.rubber;
    const std::vector<int> rows = session.plot.row_move.rows;
    const Data_Point from = In_Intensity_Of_Rows(session, rubber.x0, rubber.y0), to = In_Intensity_Of_Rows(session, rubber.x1, rubber.y1);
    const float dx = to.x - from.x, dy = to.y - from.y;
    End_Mode_Of_Mouse(session);
    if (Is_Click(rubber) && Within_A_Click(Pixels_Up(rubber.y1 - rubber.y0))) return;
    const std::string text = "The following profiles will be shift to\nthe relative position: " + IRealToString(dx) + " , " +
                             IRealToString(dy) + Row_Names(session, rows);
    Move_Confirmed(session, ask, text, [&] { return Offset_Rows(session, rows, dx, dy); });
}

// --- scaling by what takes a pivot to another place --------------------------------------------------------------------------------

// The axis that is scaled; everything else of the two modes is one.
struct Axis {
    std::string name;
    float Data_Point::*value;
    double Plot_State::Place::*place;
    double Rubber_Shape::*from;
    double Rubber_Shape::*to;
    double (*pixels)(double page_units);
};
const Axis& Axis_Of(const Plot_State& plot) {
    static const Axis x{"X", &Data_Point::x, &Plot_State::Place::x, &Rubber_Shape::x0, &Rubber_Shape::x1, Pixels_Across};
    static const Axis y{"Y", &Data_Point::y, &Plot_State::Place::y, &Rubber_Shape::y0, &Rubber_Shape::y1, Pixels_Up};
    return plot.MoveMode == Move_Mode::scale_x ? x : y;
}

void Hint(Session& session, const std::string& text) { session.interface.Hint(text); }
std::string Pivot_Hint(const Axis& axis) { return "Select pivot reference point to scaling " + axis.name + "."; }
std::string Factor_Hint(const Axis& axis) { return "Select multiply factor to scaling " + axis.name + "."; }

void Finish_Pivot(Session& session, Ask& ask) {
    Plot_State& plot = session.plot;
    const Axis& axis = Axis_Of(plot);
    const Rubber_Shape rubber = plot.rubber;
    const float at = In_Data(plot, rubber.x1, rubber.y1).*axis.value;
    const double jitter = axis.pixels(rubber.*axis.to - rubber.*axis.from);
    const float value = In_Intensity_Of_Rows(session, rubber.x1, rubber.y1).*axis.value;
    Lapse_Rubber(session);
    if (!Within_A_Click(jitter)) return ask.Error("Error selecting " + axis.name + " ref. Try again!");
    if (!std::isnormal(value)) return ask.Error("The reference is 0: no factor leads away from it. Try again!");
    plot.row_move.has_pivot = true;
    plot.row_move.pivot = at;
    Hint(session, Factor_Hint(axis));
    Plot_Repaint(session);
}

// The line goes from the pivot to the hand.
void Start_Factor(Session& session, Plot_State::Place at) {
    Plot_State& plot = session.plot;
    const Axis& axis = Axis_Of(plot);
    plot.row_move.upward = at.*axis.place >= plot.Pivot_Place();
    Start_Rubber(session, Rubber_Kind::line, at);
    plot.rubber.*axis.from = plot.Pivot_Place();
    Plot_Repaint(session);
}

// The hand stays on its side of the pivot and in the plot.
void Move_Factor(Session& session, Plot_State::Place to) {
    Plot_State& plot = session.plot;
    const Axis& axis = Axis_Of(plot);
    const bool upward = plot.row_move.upward;
    const double ahead = to.*axis.place - plot.Pivot_Place();
    if (!Inside(plot, In_Data(plot, to.x, to.y))) return Hint(session, "Warning, out of plotting zone.");
    if (upward ? ahead < 0 : ahead > 0)
        return Hint(session, "Warning, " + axis.name + " final value can't be " + (upward ? "lower" : "upper") + " that " + axis.name +
                                 " ref selected.");
    Hint(session, Factor_Hint(axis));
    Move_Rubber(session, to);
}

void Finish_Factor(Session& session, Ask& ask) {
    Plot_State& plot = session.plot;
    const Axis axis = Axis_Of(plot);
    const bool along_x = plot.MoveMode == Move_Mode::scale_x;
    const std::vector<int> rows = plot.row_move.rows;
    const double pivot = plot.Pivot_Place();
    const float factor = In_Intensity_Of_Rows(session, plot.rubber.x1, plot.rubber.y1).*axis.value /
                         (In_Intensity_Of_Rows(session, pivot, pivot).*axis.value);
    End_Mode_Of_Mouse(session);
    const std::string text = "The following profiles will be scaling at " + axis.name + " according\nto following equation: " + axis.name +
                             "' = " + IRealToString(factor) + axis.name + Row_Names(session, rows);
    Move_Confirmed(session, ask, text,
                   [&] { return along_x ? Scale_X_Of_Rows(session, rows, factor, 0) : Scale_Y_Of_Rows(session, rows, factor, 0); });
}

void MouseMovement_Scaling(Session& session, Ask& ask, const Message& message) {
    Plot_State& plot = session.plot;
    const WIN_MESSAGE& record = message.record;
    if (!Has_Meaning(session, record)) return;
    const Plot_State::Place at{record.x, record.y};
    const bool second_stage = plot.row_move.has_pivot;
    switch (message.kind) {
        case Message_Kind::mouse_down:
            if (record.value1 == right_button) return End_Mode_Of_Mouse(session);
            if (record.value1 != left_button || !On_Data(session, at)) break;
            second_stage ? Start_Factor(session, at) : Start_Rubber(session, Rubber_Kind::line, at);
            break;
        case Message_Kind::mouse_move:
            Show_Read_Outs(session, In_Data(plot, at.x, at.y));
            if (!plot.rubber.active) break;
            second_stage ? Move_Factor(session, at) : Move_Rubber(session, Held_In_Box(plot, at));
            break;
        case Message_Kind::mouse_up:
            if (record.value1 != left_button || !plot.rubber.active) break;
            if (second_stage) {
                Move_Factor(session, at);
                Finish_Factor(session, ask);
            } else {
                Move_Rubber(session, Held_In_Box(plot, at));
                Finish_Pivot(session, ask);
            }
            break;
        default:
            break;
    }
}

}  // namespace

void Start_Align_Mode(Session& session, std::vector<int> rows) {
    Enter_Mode(session, Move_Mode::align, Cursor_Shape::cross, "Draw the way that the profiles shall go");
    session.plot.row_move.rows = std::move(rows);
}

void Start_Scaling_Mode(Session& session, Move_Mode mode, std::vector<int> rows) {
    Enter_Mode(session, mode, Cursor_Shape::cross, "");
    session.plot.row_move.rows = std::move(rows);
    Hint(session, Pivot_Hint(Axis_Of(session.plot)));
}

void MouseMovement_OffsetAlign(Session& session, Ask& ask, const Message& message) {
    Plot_State& plot = session.plot;
    const WIN_MESSAGE& record = message.record;
    if (!Has_Meaning(session, record)) return;
    const Plot_State::Place at{record.x, record.y};
    switch (message.kind) {
        case Message_Kind::mouse_down:
            if (record.value1 == right_button) return End_Mode_Of_Mouse(session);
            if (record.value1 == left_button && On_Data(session, at)) Start_Rubber(session, Rubber_Kind::line, at);
            break;
        case Message_Kind::mouse_move:
            Show_Read_Outs(session, In_Data(plot, at.x, at.y));
            if (plot.rubber.active) Move_Rubber(session, Held_In_Box(plot, at));
            break;
        case Message_Kind::mouse_up:
            if (record.value1 != left_button || !plot.rubber.active) break;
            Move_Rubber(session, Held_In_Box(plot, at));
            Finish_Line(session, ask);
            break;
        default:
            break;
    }
}

void MouseMovement_ScalingX(Session& session, Ask& ask, const Message& message) { MouseMovement_Scaling(session, ask, message); }
void MouseMovement_ScalingY(Session& session, Ask& ask, const Message& message) { MouseMovement_Scaling(session, ask, message); }

}  // namespace vntl
