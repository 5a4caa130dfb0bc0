// The forms that a plot can have, and what a drag and a click in one of them mean.
#pragma once

#include <array>
#include <string_view>

namespace vntl {

enum class Plot_Form { none, single, multi, multi_log, calculation, contour, contour_log, graph3d, surface };

// Columns of the table that enables commands: the two forms of a graph of several rows share one.
enum class Menu_Column { empty, calculation, single, multi, contour, contour_log, graph3d, surface };

struct Plot_Form_Row {
    Plot_Form form;
    std::string_view told;  // as status bar and scripts show it
    Menu_Column column;
    std::array<int, 2> toolbars;  // tables on the first and on the second bar, 0 none; a calculation keeps those that are there
    bool is_2d;
    bool is_log = false;  // intensities as logarithms
};

inline constexpr Plot_Form_Row plot_forms[] = {
    {Plot_Form::none, "none", Menu_Column::empty, {30101, 0}, false},
    {Plot_Form::single, "single", Menu_Column::single, {30102, 30104}, true},
    {Plot_Form::multi, "multi", Menu_Column::multi, {30103, 30104}, true},
    {Plot_Form::multi_log, "multi_log", Menu_Column::multi, {30103, 30104}, true, true},
    {Plot_Form::calculation, "calculation", Menu_Column::calculation, {}, true},
    {Plot_Form::contour, "graph2dcontour", Menu_Column::contour, {30103, 0}, false},
    {Plot_Form::contour_log, "graph2dcontour_log", Menu_Column::contour_log, {30103, 0}, false, true},
    {Plot_Form::graph3d, "graph3d", Menu_Column::graph3d, {30103, 0}, false},
    {Plot_Form::surface, "graph3dsurf", Menu_Column::surface, {30103, 0}, false},
};

// The rows stand in the order of the forms.
constexpr const Plot_Form_Row& Row_Of(Plot_Form form) { return plot_forms[static_cast<std::size_t>(form)]; }
constexpr std::string_view Told(Plot_Form form) { return Row_Of(form).told; }

// What a drag means in a graph; scripts know the modes by their numbers.
enum class Move_Mode { none, drag, exclude, align, scale_y, scale_x };

// What a click means while a calculation runs.
enum class Click_Mode { none, fit, peaks, background, reflections };

}  // namespace vntl
