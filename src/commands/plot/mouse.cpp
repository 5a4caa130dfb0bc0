#include "commands/plot/mouse.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

#include "base/text.hpp"
#include "plot/plot.hpp"
#include "session/xspace.hpp"

namespace vntl {

namespace {

constexpr int left_button = 1, right_button = 3;
constexpr float least_zoom = 0.002f;  // data units: a narrower rectangle is a click
constexpr float margin = 0.05f;       // of the range, kept above and below on the way back
constexpr double wheel_step = 0.8;    // of the width that a step of the wheel leaves
constexpr int drag_mode = 1;
constexpr std::string_view spacing_mark = " d= ";

struct Data_Point {
    float x, y;
};

// The place in data units of the window drawn last.
Data_Point In_Data(const Plot_State& plot, double page_x, double page_y) {
    const Plot_State::Place at = plot.Data_At({page_x, page_y});
    return {static_cast<float>(at.x), static_cast<float>(at.y)};
}

bool Inside(const Plot_State& plot, Data_Point at) {
    return at.x >= plot.drawn_x1 && at.x <= plot.drawn_x2 && at.y >= plot.drawn_y1 && at.y <= plot.drawn_y2;
}

// Number, from 1, of the last point whose x is not above; 0 when all are.
std::size_t Point_At(const Diffraction_Pattern_Type& pattern, float x) {
    return static_cast<std::size_t>(std::upper_bound(pattern.x.begin(), pattern.x.end(), x) - pattern.x.begin());
}

// The row whose curve is nearest in y among those that reach the place; 0 for none.
int Nearest_Row(const Profile_Store& store, Data_Point at) {
    int nearest = 0;
    float least = 0;
    for (int row = 1; row <= store.nperfiles(); ++row) {
        const Diffraction_Pattern_Type& pattern = store.Pattern(row);
        if (at.x < pattern.xmin || at.x > pattern.xmax) continue;
        const std::size_t point = Point_At(pattern, at.x);
        if (point == 0) continue;
        const float distance = std::fabs(pattern.y[point - 1] - at.y);
        if (!std::isfinite(distance) || (nearest != 0 && !(distance < least))) continue;
        nearest = row;
        least = distance;
    }
    return nearest;
}

std::string Number(const char* format, double value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

// The spacing stands in the line of hints, but never in the place of one.
void Show_Spacing(Session& session, std::optional<double> d) {
    Interface_State& bar = session.interface;
    const std::string& hint = bar.status.front();
    if (!Trim(hint).empty() && !hint.starts_with(spacing_mark)) return;
    bar.Status_Text(1, d ? std::string(spacing_mark) + Number("%.5f", *d) + " \u00c5" : "");
}

void Show_Read_Outs(Session& session, Data_Point at) {
    Interface_State& bar = session.interface;
    Show_Spacing(session, Inside(session.plot, at) ? D_Spacing(session, at.x) : std::nullopt);
    if (!Inside(session.plot, at)) {
        for (const int part : {2, 3, 4}) bar.Status_Text(part, "");
        return;
    }
    const int row = session.plot.plot_type == "multi" ? Nearest_Row(session.store, at) : 0;
    if (row != 0)
        bar.Status_Text(2, "Pointed Pattern " + std::to_string(row));
    else
        bar.Status_Text(2, " N= " + std::to_string(Point_At(session.store.Pattern(1), at.x)));
    bar.Status_Text(3, " X= " + Number("%.4f", at.x));
    bar.Status_Text(4, " Y= " + Number("%.1f", at.y));
}

void Want_Button_Up(Session& session, bool on) {
    session.interface.want_mouse_up = on;
    ++session.interface.revision;
}

void Start_Rectangle(Session& session, double x, double y) {
    session.plot.rubber = {true, x, y, x, y};
    Want_Button_Up(session, true);
    Plot_Repaint(session);
}

void Lapse_Rubber(Session& session) {
    if (!session.plot.rubber.active) return;
    session.plot.rubber = {};
    Want_Button_Up(session, false);
    Plot_Repaint(session);
}

void Finish_Rectangle(Session& session) {
    Plot_State& plot = session.plot;
    const Rubber_Rectangle rubber = plot.rubber;
    Lapse_Rubber(session);
    const Data_Point a = In_Data(plot, rubber.x0, rubber.y0), b = In_Data(plot, rubber.x1, rubber.y1);
    const bool wide = std::fabs(a.x - b.x) > least_zoom && a.y != b.y;
    const bool zoom = wide && plot.Show({std::min(a.x, b.x), std::max(a.x, b.x), std::min(a.y, b.y), std::max(a.y, b.y)});
    if (!zoom) plot.Show({plot.drawn_x1, plot.drawn_x2, plot.drawn_y1, plot.drawn_y2});
    if (zoom) Plot_Redraw(session);
}

// The whole range again. A running calculation keeps its form and its marks.
void Go_Back(Session& session) {
    Plot_State& plot = session.plot;
    Lapse_Rubber(session);
    if (plot.plot_type != "calculation") return Plot_ReMake(session);
    const float pad = margin * (plot.y_all_max - plot.y_all_min);
    plot.x_view_min = plot.x_all_min;
    plot.x_view_max = plot.x_all_max;
    plot.y_view_min = plot.y_all_min - pad;
    plot.y_view_max = plot.y_all_max + pad;
    Plot_Redraw(session);
}

void Turn_Wheel(Session& session, Data_Point at, bool closer) {
    Plot_State& plot = session.plot;
    if (!Inside(plot, at)) return;
    const double factor = closer ? wheel_step : 1 / wheel_step;
    const auto lo = static_cast<float>(at.x + (static_cast<double>(plot.x_view_min) - at.x) * factor);
    const auto hi = static_cast<float>(at.x + (static_cast<double>(plot.x_view_max) - at.x) * factor);
    if (!(hi - lo > least_zoom) || !plot.Show({lo, hi, plot.y_view_min, plot.y_view_max})) return;
    Plot_Redraw(session);
}

void Shift_View(Plot_State& plot, double x, double y) {
    plot.Show({static_cast<float>(plot.x_view_min + x), static_cast<float>(plot.x_view_max + x), static_cast<float>(plot.y_view_min + y),
               static_cast<float>(plot.y_view_max + y)});
}

// Half of the movement on the page, which holds whatever a command makes of the view meanwhile.
void Follow_Hand(Session& session, const WIN_MESSAGE& record) {
    Plot_State& plot = session.plot;
    const Data_Point before = In_Data(plot, plot.drag.x, plot.drag.y), at = In_Data(plot, record.x, record.y);
    plot.drag.x = record.x;
    plot.drag.y = record.y;
    if (!Inside(plot, at)) return;
    Shift_View(plot, -0.5 * (at.x - before.x), -0.5 * (at.y - before.y));
    Plot_Redraw(session);
}

void End_Drag(Session& session) {
    if (!session.plot.drag.active) return;
    session.plot.drag = {};
    Want_Button_Up(session, false);
}

bool Has_Meaning(const Session& session, const WIN_MESSAGE& record) {
    return session.plot.Is_2D() && session.store.nperfiles() > 0 && std::isfinite(record.x) && std::isfinite(record.y);
}

}  // namespace

void Clear_Read_Outs(Session& session) {
    Show_Spacing(session, {});
    for (const int part : {2, 3, 4}) session.interface.Status_Text(part, "");
}

void Cancel_Mouse(Session& session) {
    Plot_State& plot = session.plot;
    if (plot.rubber.active) return Lapse_Rubber(session);
    if (!plot.drag.active) return End_Drag_Mode(session);
    plot.Show(plot.drag.from);
    End_Drag(session);
    Plot_Redraw(session);
}

void Start_Drag_Mode(Session& session) {
    session.plot.MoveMode = drag_mode;
    session.interface.cursor = Cursor_Shape::hand;
    session.interface.Enable(drag_end_command, true);
    session.interface.Enable(drag_command, false);
}

void End_Drag_Mode(Session& session) {
    if (session.plot.MoveMode != drag_mode) return;
    End_Drag(session);
    session.plot.MoveMode = 0;
    session.interface.cursor = Cursor_Shape::arrow;
    session.interface.Enable(drag_end_command, false);
    session.interface.Enable(drag_command, true);
}

void MouseMovement_DragPlot(Session& session, const Message& message) {
    Plot_State& plot = session.plot;
    const WIN_MESSAGE& record = message.record;
    if (!Has_Meaning(session, record)) return;
    const Data_Point at = In_Data(plot, record.x, record.y);
    switch (message.kind) {
        case Message_Kind::mouse_down:
            if (record.value1 == right_button) return End_Drag_Mode(session);
            if (record.value1 != left_button || !Inside(plot, at)) break;
            plot.drag = {true, record.x, record.y, plot.Shown_View()};
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
            if (!plot.drag.active) Turn_Wheel(session, at, record.value1 > 0);
            break;
        default:
            break;
    }
}

void MouseMovement_Main(Session& session, const Message& message) {
    Plot_State& plot = session.plot;
    const WIN_MESSAGE& record = message.record;
    if (!Has_Meaning(session, record)) return;
    const Data_Point at = In_Data(plot, record.x, record.y);
    switch (message.kind) {
        case Message_Kind::mouse_move:
            Show_Read_Outs(session, at);
            if (!plot.rubber.active) break;
            plot.rubber.x1 = record.x;
            plot.rubber.y1 = record.y;
            Plot_Repaint(session);
            break;
        case Message_Kind::mouse_down:
            if (record.value1 == left_button) Start_Rectangle(session, record.x, record.y);
            if (record.value1 == right_button) Go_Back(session);
            break;
        case Message_Kind::mouse_up:
            if (record.value1 != left_button || !plot.rubber.active) break;
            plot.rubber.x1 = record.x;
            plot.rubber.y1 = record.y;
            Finish_Rectangle(session);
            break;
        case Message_Kind::wheel:
            if (!plot.rubber.active) Turn_Wheel(session, at, record.value1 > 0);
            break;
        default:
            break;
    }
}

}  // namespace vntl
