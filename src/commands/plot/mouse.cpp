#include "commands/plot/mouse.hpp"

#include <algorithm>
#include <cmath>

#include "commands/crystal/hkl_gen.hpp"
#include "commands/plot/mouse_clicks.hpp"
#include "commands/plot/mouse_tools.hpp"
#include "commands/plot/pan.hpp"
#include "commands/plot/pointed_row.hpp"
#include "commands/plot/spectral_lines.hpp"
#include "commands/plot/view.hpp"
#include "plot/plot.hpp"
#include "session/desk/overlay_place.hpp"
#include "session/desk/waterfall.hpp"
#include "session/ranges.hpp"
#include "session/reflection_search.hpp"

namespace vntl {

namespace {

constexpr float narrowest_zoom = 1e-6f;  // of x itself: less than that holds no two numbers of single precision

// What the rectangle held of the data. One in the band of a pinned difference alone is about x.
View View_Of_Rectangle(const Session& session, Data_Point a, Data_Point b) {
    View view{std::min(a.x, b.x), std::max(a.x, b.x), session.plot.drawn.y1, session.plot.drawn.y2};
    const float foot = Foot_Of_Data(session.store, session.plot, session.look), high = std::max(a.y, b.y);
    if (Part_Of_Band(session.store, session.plot, session.look) == 0)
        view.y1 = std::min(a.y, b.y), view.y2 = high;
    else if (high > foot)
        view.y1 = std::max(foot, std::min(a.y, b.y)), view.y2 = high, view = In_Box(session, view);
    return view;
}

void Finish_Rectangle(Session& session, Ask& ask, const Rubber_Shape& rubber) {
    Plot_State& plot = session.plot;
    const Data_Point a = In_Data(plot, rubber.x0, rubber.y0), b = In_Data(plot, rubber.x1, rubber.y1);
    const bool click = Is_Click(rubber);
    const bool wide = std::fabs(a.x - b.x) > narrowest_zoom * std::max(std::fabs(a.x), std::fabs(b.x));
    const bool zoom = !click && wide && a.y != b.y && plot.Show(View_Of_Rectangle(session, a, b));
    if (zoom) return Plot_Redraw(session);
    plot.Show({plot.drawn.x1, plot.drawn.x2, plot.drawn.y1, plot.drawn.y2});
    if (click && plot.plot_type == Plot_Form::calculation && Inside(plot, b) && !In_Band(session, b))
        Click(session, ask, b.x, Off_Scale(plot.Scale(), b.y));
}

// The whole range again. A running calculation keeps its form and its marks.
void Go_Back(Session& session) {
    Plot_State& plot = session.plot;
    Lapse_Rubber(session);
    if (plot.plot_type != Plot_Form::calculation) return Plot_ReMake(session);
    View whole = Whole_View(plot);
    whole.y2 += Height_Of_Waterfall(session.store, plot);
    plot.Show(In_Box(session, whole));
    Plot_Redraw(session);
}

// Over the box and the scale of x: x. Over the scale of y: y.
void Turn_Wheel(Session& session, const WIN_MESSAGE& record, bool closer) {
    Plot_State& plot = session.plot;
    View view = plot.Shown_View();
    const Data_Point at = In_Data(plot, record.x, record.y);
    const Wheel_Place place = Wheel_Place_Of(plot, {record.x, record.y});
    const float foot = Foot_Of_Data(session.store, plot, session.look);
    if (place == Wheel_Place::nothing) return;
    const bool changed = place == Wheel_Place::y_axis ? Zoom_Y(std::max(at.y, foot), closer, view) : Zoom_X(at.x, closer, view);
    if (changed && plot.Show(view)) Plot_Redraw(session);
}

void Shift_View(Plot_State& plot, double x, double y) {
    plot.Show({static_cast<float>(plot.x_view_min + x), static_cast<float>(plot.x_view_max + x), static_cast<float>(plot.y_view_min + y),
               static_cast<float>(plot.y_view_max + y)});
}

// Half of the movement on the page, which holds whatever a command makes of the view meanwhile.
void Follow_Hand(Session& session, const WIN_MESSAGE& record) {
    Plot_State& plot = session.plot;
    plot.drag.follows =
        plot.drag.follows || !Within_A_Click(Pixels_Across(record.x - plot.drag.x)) || !Within_A_Click(Pixels_Up(record.y - plot.drag.y));
    if (!plot.drag.follows) return;
    const Data_Point before = In_Data(plot, plot.drag.x, plot.drag.y), at = In_Data(plot, record.x, record.y);
    plot.drag.x = record.x;
    plot.drag.y = record.y;
    if (!Inside(plot, at)) return;
    Shift_View(plot, -0.5 * (at.x - before.x), -0.5 * (at.y - before.y));
    Plot_Redraw(session);
}

// The box with the reflections under the pointer: of the generated list, or of a refined profile when the user wants it.
void Show_Reflections(Session& session, const WIN_MESSAGE& record, Data_Point at) {
    Plot_State& plot = session.plot;
    const Profile_Store& store = session.store;
    const bool generated = plot.ClickMode == Click_Mode::reflections;
    const bool refined = session.prefs.prf.refl_live && store.prf_loaded && store.show_reflections;
    bool changed = false;
    if (generated)
        changed = Search_HKLGen_Refl(session.lists.hklgen, plot, at.x, at.y);
    else if (refined)
        changed = Search_PRF_Refl(store, plot, at.x, at.y, session.look);
    if (!changed) return;
    plot.hits.x = record.x;
    plot.hits.y = record.y;
    if (generated) Collect_Pointed_Reflections(session);
    Plot_Repaint(session);
}

// The lines of a tube stand over angles; while clicks act on a list the button is theirs.
bool Draws_Spectral_Lines(const Plot_State& plot) {
    return plot.spectral.on && plot.ClickMode == Click_Mode::none && plot.xspace == X_Space::two_theta;
}

void Show_Spectral_Lines(Session& session, bool shown, float at) {
    session.plot.spectral.shown = shown;
    session.plot.spectral.at = at;
    Want_Button_Up(session, shown);
    Plot_Repaint(session);
}

void Press_Left(Session& session, const WIN_MESSAGE& record, Data_Point at) {
    if (!Draws_Spectral_Lines(session.plot)) return Start_Rubber(session, Rubber_Kind::rectangle, {record.x, record.y});
    if (!Inside(session.plot, at)) return;
    Tell_Without_Spectral_Lines(session);
    Show_Spectral_Lines(session, true, at.x);
}

void Release_Left(Session& session, Ask& ask, const WIN_MESSAGE& record, Data_Point at) {
    if (session.plot.spectral.shown) Show_Spectral_Lines(session, false, at.x);
    if (session.plot.rubber.active) Finish_Rectangle(session, ask, End_Rubber(session, {record.x, record.y}));
}

}  // namespace

void Cancel_Mouse(Session& session) {
    Plot_State& plot = session.plot;
    if (plot.drag.pans) return Cancel_Pan(session);
    const bool dragged = plot.drag.active;
    if (dragged && plot.In_Space())
        Turn_To(session, plot.drag.rotation, plot.drag.elevation);
    else if (dragged)
        plot.Show(plot.drag.from);
    End_Drag(session);
    if (plot.spectral.shown) Show_Spectral_Lines(session, false, plot.spectral.at);
    Lapse_Rubber(session);
    if (In_Mode(session)) End_Mode_Of_Mouse(session);
    if (dragged) Plot_Redraw(session);
}

void Cancel_Modes(Session& session) {
    Lapse_Rubber(session);
    if (session.plot.MoveMode != Move_Mode::none) End_Mode_Of_Mouse(session);
}

void Start_Drag_Mode(Session& session) { Enter_Mode(session, Move_Mode::drag, Cursor_Shape::hand, "", command::drag); }

void End_Drag_Mode(Session& session) {
    if (session.plot.MoveMode == Move_Mode::drag) End_Mode_Of_Mouse(session);
}

void MouseMovement_DragPlot(Session& session, Ask&, const Message& message) {
    Plot_State& plot = session.plot;
    const WIN_MESSAGE& record = message.record;
    if (!Has_Meaning(session, record)) return;
    const Data_Point at = In_Data(plot, record.x, record.y);
    switch (message.kind) {
        case Message_Kind::mouse_down:
            if (record.value1 == right_button) return End_Drag_Mode(session);
            if (record.value1 != left_button || !Inside(plot, at)) break;
            plot.drag = {.active = true, .x = record.x, .y = record.y, .from = plot.Shown_View()};
            Want_Button_Up(session, true);
            break;
        case Message_Kind::mouse_move:
            Show_Read_Outs(session, at);
            if (plot.drag.active) Follow_Hand(session, record);
            break;
        case Message_Kind::mouse_up:
            if (record.value1 == left_button) End_Drag(session);
            break;
        case Message_Kind::wheel:
            if (!plot.drag.active) Turn_Wheel(session, record, record.value1 > 0);
            break;
        default:
            break;
    }
}

void MouseMovement_Main(Session& session, Ask& ask, const Message& message) {
    Plot_State& plot = session.plot;
    const WIN_MESSAGE& record = message.record;
    if (!Has_Meaning(session, record)) return;
    const Data_Point at = In_Data(plot, record.x, record.y);
    switch (message.kind) {
        case Message_Kind::mouse_move:
            Show_Read_Outs(session, at);
            if (!plot.rubber.active) Point_At_Row(session, {record.x, record.y});
            Show_Reflections(session, record, at);
            if (plot.spectral.shown && Inside(plot, at)) Show_Spectral_Lines(session, true, at.x);
            if (plot.rubber.active) Move_Rubber(session, {record.x, record.y});
            break;
        case Message_Kind::mouse_down:
            if (record.value1 == left_button) Press_Left(session, record, at);
            if (record.value1 == right_button) Go_Back(session);
            break;
        case Message_Kind::mouse_up:
            if (record.value1 == left_button) Release_Left(session, ask, record, at);
            break;
        case Message_Kind::wheel:
            if (!plot.rubber.active) Turn_Wheel(session, record, record.value1 > 0);
            break;
        default:
            break;
    }
}

void Do_Mouse(Session& session, Ask& ask, const Message& message) {
    using Routine = void (*)(Session&, Ask&, const Message&);
    struct Mode_Routine {
        Move_Mode mode;
        Routine routine;
    };
    static constexpr Mode_Routine of_graph[] = {
        {Move_Mode::none, MouseMovement_Main},          {Move_Mode::drag, MouseMovement_DragPlot},
        {Move_Mode::exclude, MouseMovement_SelExclReg}, {Move_Mode::align, MouseMovement_OffsetAlign},
        {Move_Mode::scale_y, MouseMovement_ScalingY},   {Move_Mode::scale_x, MouseMovement_ScalingX},
    };
    const Plot_State& plot = session.plot;
    if (Pan(session, message)) return;
    // A calculation has the mouse for itself.
    const Move_Mode mode = plot.plot_type == Plot_Form::calculation ? Move_Mode::none : plot.MoveMode;
    if (plot.Is_Map()) return MouseMovement_graph2dcontour(session, ask, message);
    if (plot.In_Space()) return MouseMovement_graph3d(session, ask, message);
    if (!plot.Is_2D()) return;
    for (const Mode_Routine& row : of_graph)
        if (row.mode == mode) return row.routine(session, ask, message);
}

}  // namespace vntl
