#include "commands/plot/mouse_tools.hpp"

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

constexpr std::string_view spacing_mark = " d= ";
constexpr std::size_t most_names = 20;

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

// The spacing stands in the line of hints, but never in the place of one. What just happened it does replace.
void Show_Spacing(Session& session, std::optional<double> d) {
    Interface_State& bar = session.interface;
    const std::string& hint = bar.status.front();
    if (!bar.passing && !Trim(hint).empty() && !hint.starts_with(spacing_mark)) return;
    bar.Status_Text(1, d ? std::string(spacing_mark) + Number("%.5f", *d) + " \u00c5" : "");
}

}  // namespace

Data_Point In_Data(const Plot_State& plot, double page_x, double page_y) {
    const Plot_State::Place at = plot.Data_At({page_x, page_y});
    return {static_cast<float>(at.x), static_cast<float>(at.y)};
}

Data_Point In_Intensity(const Plot_State& plot, double page_x, double page_y) {
    const Data_Point at = In_Data(plot, page_x, page_y);
    return plot.Is_Log() ? Data_Point{at.x, std::exp(at.y)} : at;
}

bool Inside(const Plot_State& plot, Data_Point at) {
    return at.x >= plot.drawn.x1 && at.x <= plot.drawn.x2 && at.y >= plot.drawn.y1 && at.y <= plot.drawn.y2;
}

Plot_State::Place Held_In_Box(const Plot_State& plot, Plot_State::Place page) {
    return {std::clamp<double>(page.x, plot.zone.x1 * page_width, plot.zone.x2 * page_width),
            std::clamp<double>(page.y, plot.zone.y1 * page_height, plot.zone.y2 * page_height)};
}

std::size_t Point_At(const Diffraction_Pattern_Type& pattern, float x) {
    return static_cast<std::size_t>(std::upper_bound(pattern.x.begin(), pattern.x.end(), x) - pattern.x.begin());
}

void Show_Read_Outs(Session& session, Data_Point at) {
    Interface_State& bar = session.interface;
    Show_Spacing(session, Inside(session.plot, at) ? D_Spacing(session, at.x) : std::nullopt);
    if (!Inside(session.plot, at)) {
        for (const int part : {2, 3, 4}) bar.Status_Text(part, "");
        return;
    }
    const int row = session.plot.plot_type == Plot_Form::multi ? Nearest_Row(session.store, at) : 0;
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

void Start_Rubber(Session& session, Rubber_Kind kind, Plot_State::Place at) {
    session.plot.rubber = {true, at.x, at.y, at.x, at.y, kind};
    Want_Button_Up(session, true);
    Plot_Repaint(session);
}

void Move_Rubber(Session& session, Plot_State::Place to) {
    session.plot.rubber.x1 = to.x;
    session.plot.rubber.y1 = to.y;
    Plot_Repaint(session);
}

void Lapse_Rubber(Session& session) {
    if (!session.plot.rubber.active) return;
    session.plot.rubber = {};
    Want_Button_Up(session, false);
    Plot_Repaint(session);
}

void Enter_Mode(Session& session, Move_Mode mode, Cursor_Shape cursor, std::string_view hint, int command) {
    Leave_Mode(session);
    session.plot.MoveMode = mode;
    session.interface.cursor = cursor;
    session.interface.Status_Text(1, std::string(hint));
    if (command != 0) session.interface.Enable(command, false);
    ++session.interface.revision;
}

void Leave_Mode(Session& session) {
    Plot_State& plot = session.plot;
    if (plot.MoveMode == Move_Mode::none) return;
    Interface_State& menu = session.interface;
    plot.MoveMode = Move_Mode::none;
    plot.drag = {};
    plot.row_move = {};
    plot.rubber = {};
    Want_Button_Up(session, false);
    menu.cursor = Cursor_Shape::arrow;
    menu.Enable(command::drag_end, false);
    for (const int id : {command::drag, command::select_excluded}) menu.Enable(id, true);
    menu.Status_Text(1, "");
    Plot_Repaint(session);
}

bool Has_Meaning(const Session& session, const WIN_MESSAGE& record) {
    return session.plot.Is_2D() && session.store.nperfiles() > 0 && std::isfinite(record.x) && std::isfinite(record.y);
}

std::string Row_Names(const Session& session, const std::vector<int>& rows) {
    std::string names;
    for (std::size_t i = 0; i < std::min(rows.size(), most_names); ++i) names += "\n" + session.store.Info(rows[i]).file_name;
    if (rows.size() > most_names) names += "\nand " + std::to_string(rows.size() - most_names) + " more";
    return names;
}

void Clear_Read_Outs(Session& session) {
    Show_Spacing(session, {});
    for (const int part : {2, 3, 4}) session.interface.Status_Text(part, "");
}

}  // namespace vntl
