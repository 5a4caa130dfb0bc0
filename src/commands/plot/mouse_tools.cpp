#include "commands/plot/mouse_tools.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

#include "base/text.hpp"
#include "commands/plot/pointed_text.hpp"
#include "plot/plot.hpp"
#include "session/desk/overlay_place.hpp"
#include "session/xspace.hpp"
#include "toolkit/window.hpp"

namespace vntl {

namespace {

constexpr std::string_view spacing_mark = " d= ";
constexpr std::size_t most_names = 20;
constexpr float least_temperature = 0.0001f;
constexpr int width_info = 1, height_info = 2;

std::string Number(const char* format, double value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

// One decimal tells an intensity; a view of less than 10 is told apart to a hundredth of its height or finer.
std::string Intensity(const View& view, Y_Scale scale, float y) {
    constexpr double fine_view = 10;
    constexpr int most_digits = 12;
    const double span = std::fabs(static_cast<double>(Off_Scale(scale, view.y2)) - Off_Scale(scale, view.y1));
    const bool fine = span > 0 && span < fine_view;
    const int digits = fine ? std::min(2 - static_cast<int>(std::floor(std::log10(span))), most_digits) : 1;
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", digits, static_cast<double>(Off_Scale(scale, y)));
    return text.data();
}

// In the band of a pinned difference: what is read there is a difference.
std::string Place_Along_Y(const Session& session, Data_Point at) {
    const Overlay_Place place = Place_Of_Overlay(session.store, session.plot, session.look);
    const bool difference = In_Band(session, at) && place.per_count > 0;
    if (difference) return session.store.show_difference ? " Yobs-Ycalc= " + Number("%.1f", (at.y - place.base) / place.per_count) : "";
    return " Y= " + Intensity(session.plot.drawn, Scale_Of_Numbers(session), at.y);
}

// The spacing stands in the line of hints, but never in the place of one. What just happened it does replace.
void Show_Spacing(Session& session, std::optional<double> d) {
    Interface_State& bar = session.interface;
    const std::string& hint = bar.status.front();
    if (!bar.passing && !Trim(hint).empty() && !hint.starts_with(spacing_mark)) return;
    bar.Status_Text(1, d ? std::string(spacing_mark) + Number("%.5f", *d) + " \u00c5" : "");
}

// What a map shows as a colour, and the temperature where there is one.
std::string Mapped_Text(const Diffraction_Pattern_Type& pattern, float x) {
    const std::size_t point = Point_At(pattern, x);
    std::string text = point == 0 ? "" : " I= " + Number("%.1f", pattern.y[point - 1]);
    if (pattern.TSample > least_temperature) text += " T= " + Number("%.2f", pattern.TSample) + " K";
    return text;
}

}  // namespace

Data_Point In_Data(const Plot_State& plot, double page_x, double page_y) {
    const Plot_State::Place at = plot.Data_At({page_x, page_y});
    return {static_cast<float>(at.x), static_cast<float>(at.y)};
}

Y_Scale Scale_Of_Numbers(const Session& session) {
    if (!session.plot.Is_2D()) return Y_Scale::linear;
    return session.look.count_ticks ? session.plot.Scale() : session.plot.y_scale;
}

bool In_Band(const Session& session, Data_Point at) { return at.y < Foot_Of_Data(session.store, session.plot, session.look); }

View In_Box(const Session& session, View of_data) {
    of_data.y1 = Foot_Of_Box(session.store, session.plot, session.look, of_data.y1, of_data.y2);
    return of_data;
}

Wheel_Place Wheel_Place_Of(const Plot_State& plot, Plot_State::Place page) {
    const Data_Point at = In_Data(plot, page.x, page.y);
    const bool along_x = at.x >= plot.units.x1 && at.x <= plot.units.x2, along_y = at.y >= plot.units.y1 && at.y <= plot.units.y2;
    if (along_x && along_y) return Wheel_Place::box;
    if (along_x && page.y < plot.zone.y1 * page_height) return Wheel_Place::x_axis;
    return along_y && page.x < plot.zone.x1 * page_width ? Wheel_Place::y_axis : Wheel_Place::nothing;
}

bool Inside(const Plot_State& plot, Data_Point at) {
    return at.x >= plot.units.x1 && at.x <= plot.units.x2 && at.y >= plot.units.y1 && at.y <= plot.units.y2;
}

Plot_State::Place Held_In_Box(const Plot_State& plot, Plot_State::Place page) {
    return {std::clamp<double>(page.x, plot.zone.x1 * page_width, plot.zone.x2 * page_width),
            std::clamp<double>(page.y, plot.zone.y1 * page_height, plot.zone.y2 * page_height)};
}

void Show_Read_Outs(Session& session, Data_Point at) {
    Interface_State& bar = session.interface;
    Show_Spacing(session, Inside(session.plot, at) ? D_Spacing(session, at.x) : std::nullopt);
    if (!Inside(session.plot, at)) {
        for (const int part : {2, 3, 4}) bar.Status_Text(part, "");
        return;
    }
    bar.Status_Text(3, " X= " + Number("%.4f", at.x));
    if (session.plot.Is_Map()) {
        const int row = Nearest_Pattern(session.plot.grid, session.plot.first_pattern, at.y);
        bar.Status_Text(2, Mapped_Text(session.store.Pattern(row), at.x) + ' ' + Short_Name(session, row));
        bar.Status_Text(4, " Pattern: " + std::to_string(row));
    } else {
        bar.Status_Text(2, Pointed_Text(session, {at.x, at.y}));
        bar.Status_Text(4, Place_Along_Y(session, at));
    }
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

Rubber_Shape End_Rubber(Session& session, Plot_State::Place at) {
    Rubber_Shape rubber = session.plot.rubber;
    rubber.x1 = at.x;
    rubber.y1 = at.y;
    Lapse_Rubber(session);
    return rubber;
}

void End_Drag(Session& session) {
    if (!session.plot.drag.active) return;
    session.plot.drag = {};
    Want_Button_Up(session, false);
}

void End_Mode_Of_Mouse(Session& session) {
    Leave_Mode(session);
    Plot_Repaint(session);
}

double Pixels_Across(double page_units) {
    WindowSelect(main_window);
    return page_units * WInfoWindow(width_info) / page_width;
}

double Pixels_Up(double page_units) {
    WindowSelect(main_window);
    return page_units * WInfoWindow(height_info) / page_height;
}

bool Within_A_Click(double pixels) { return std::fabs(pixels) <= most_pixels_of_a_click; }

bool Is_Click(const Rubber_Shape& rubber) { return Within_A_Click(Pixels_Across(rubber.x1 - rubber.x0)); }

bool Has_Meaning(const Session& session, const WIN_MESSAGE& record) {
    return session.plot.plot_type != Plot_Form::none && session.store.nperfiles() > 0 && std::isfinite(record.x) && std::isfinite(record.y);
}

std::string Row_Names(const Session& session, const std::vector<int>& rows) {
    std::string names;
    for (std::size_t i = 0; i < std::min(rows.size(), most_names); ++i) names += "\n" + session.store.Info(rows[i]).file_name;
    if (rows.size() > most_names) names += "\nand " + std::to_string(rows.size() - most_names) + " more";
    return names;
}

void Forget_Note(Session& session) {
    Interface_State& bar = session.interface;
    if (bar.status.front() != bar.hint && !bar.status.front().starts_with(spacing_mark)) bar.Status_Text(1, bar.hint);
}

void Clear_Read_Outs(Session& session) {
    Show_Spacing(session, {});
    for (const int part : {2, 3, 4}) session.interface.Status_Text(part, "");
}

}  // namespace vntl
