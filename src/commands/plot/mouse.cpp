#include "commands/plot/mouse.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "plot/plot.hpp"

namespace vntl {

namespace {

constexpr int left_button = 1, right_button = 3;
constexpr float least_zoom = 0.002f;  // data units: a narrower rectangle is a click
constexpr float margin = 0.05f;       // of the range, kept above and below on the way back
constexpr double wheel_step = 0.8;    // of the width that a step of the wheel leaves

struct Data_Point {
    float x, y;
};

// The place in data units of the window drawn last.
Data_Point In_Data(const Plot_State& plot, double page_x, double page_y) {
    const double fx = (page_x / page_width - plot.zone_x1) / (static_cast<double>(plot.zone_x2) - plot.zone_x1);
    const double fy = (page_y / page_height - plot.zone_y1) / (static_cast<double>(plot.zone_y2) - plot.zone_y1);
    return {static_cast<float>(plot.drawn_x1 + fx * (static_cast<double>(plot.drawn_x2) - plot.drawn_x1)),
            static_cast<float>(plot.drawn_y1 + fy * (static_cast<double>(plot.drawn_y2) - plot.drawn_y1))};
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
        if (nearest != 0 && !(distance < least)) continue;
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

void Show_Read_Outs(Session& session, Data_Point at) {
    Interface_State& bar = session.interface;
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

void Finish_Rectangle(Session& session) {
    Plot_State& plot = session.plot;
    const Rubber_Rectangle rubber = plot.rubber;
    Cancel_Rubber(session);
    const Data_Point a = In_Data(plot, rubber.x0, rubber.y0), b = In_Data(plot, rubber.x1, rubber.y1);
    const bool zoom = std::fabs(a.x - b.x) > least_zoom && a.y != b.y;
    plot.x_view_min = zoom ? std::min(a.x, b.x) : plot.drawn_x1;
    plot.x_view_max = zoom ? std::max(a.x, b.x) : plot.drawn_x2;
    plot.y_view_min = zoom ? std::min(a.y, b.y) : plot.drawn_y1;
    plot.y_view_max = zoom ? std::max(a.y, b.y) : plot.drawn_y2;
    if (zoom) Plot_Redraw(session);
}

// The whole range again. A running calculation keeps its form and its marks.
void Go_Back(Session& session) {
    Plot_State& plot = session.plot;
    Cancel_Rubber(session);
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
    if (!(hi - lo > least_zoom) || !std::isfinite(hi - lo)) return;
    plot.x_view_min = lo;
    plot.x_view_max = hi;
    Plot_Redraw(session);
}

}  // namespace

void Cancel_Rubber(Session& session) {
    if (!session.plot.rubber.active) return;
    session.plot.rubber = {};
    Want_Button_Up(session, false);
    Plot_Repaint(session);
}

void MouseMovement_Main(Session& session, const Message& message) {
    Plot_State& plot = session.plot;
    const WIN_MESSAGE& record = message.record;
    if (!plot.Is_2D() || session.store.nperfiles() == 0 || !std::isfinite(record.x) || !std::isfinite(record.y)) return;
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
            Turn_Wheel(session, at, record.value1 > 0);
            break;
        default:
            break;
    }
}

}  // namespace vntl
