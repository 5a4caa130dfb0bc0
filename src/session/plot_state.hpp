// What is on the screen: the plot form, the ranges of the data, the visible window, and the modes of the mouse.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "base/page.hpp"
#include "session/plot_form.hpp"
#include "session/plot_grid.hpp"
#include "session/x_space.hpp"
#include "session/y_scale.hpp"

namespace vntl {

// What the user is drawing over the plot.
enum class Rubber_Kind {
    rectangle,  // between two corners
    band,       // the full height of the plot box, hatched, from x0 to x1
    line,       // from a point to a point
};

// A shape in page units: where the button went down, and where the mouse is.
struct Rubber_Shape {
    bool active = false;
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    Rubber_Kind kind = Rubber_Kind::rectangle;
};

// Rows that wait for the mouse to say how they move, and how far that is.
struct Row_Move {
    std::vector<int> rows;   // from 1
    bool has_pivot = false;  // scaling: the fixed point is chosen
    float pivot = 0;         // where it stands on the scaled axis, units of the view
    bool upward = false;     // the second drag began above the pivot
};

// Reflections under the pointer: those of the refined profile, or the generated ones.
struct Reflection_Hits {
    std::vector<int> entries;  // from 1
    bool generated = false;
    double x = 0, y = 0;  // of the box that names them, page units
};

// Lines at the pointer for the wavelengths of a tube, while the button is down.
struct Spectral_Lines {
    bool on = false;
    std::array<bool, 4> line{};  // K-alpha1, K-alpha2, K-beta, L-alpha1 of tungsten
    bool shown = false;
    float at = 0;  // 2theta of the pointer
};

// Where the plot box stands on the page, fractions of it.
struct Plot_Zone {
    float x1 = 0.15f, y1 = 0.15f, x2 = 0.85f, y2 = 0.85f;
};

// A window on the data.
struct View {
    float x1 = 0, x2 = 0, y1 = 0, y2 = 0;
    bool operator==(const View&) const = default;

    // Two different finite ends on both axes: only then is there a map from data to the page.
    bool Drawable() const {
        return std::isfinite(x1) && std::isfinite(x2) && std::isfinite(y1) && std::isfinite(y2) && x1 != x2 && y1 != y2;
    }
};

// The plot in the user's hand.
struct Drag {
    bool active = false;
    bool follows = false;               // the hand has moved by more than a click does
    bool pans = false;                  // by the middle button: the plot follows at the full speed of the hand, without a mode
    double x = 0, y = 0;                // where the hand was last, or where a pan began, page units
    View from = {};                     // the view when the drag began
    float rotation = 0, elevation = 0;  // and how the graph was turned
};

// What a view is a window of: intensities, their logarithms, their roots, or rows.
enum class View_Kind { counts, logarithms, roots, rows };

inline constexpr std::array<View_Kind, 3> kinds_of_scales = {View_Kind::counts, View_Kind::logarithms, View_Kind::roots};

// The shown rows set apart in the picture, each above the one before it; their points stay as they are.
struct Waterfall {
    float offset = 0;  // between two rows, 0 to 1: a share of the height of one pattern (`y_all_max` - `y_all_min`, on the scale of y)
    bool by_temperature = false;  // in proportion to the temperatures, of all rows as much as even offsets; where each row has one
    bool hidden_lines = false;    // a row hides what lies behind it, below its curve
    bool operator==(const Waterfall&) const = default;
};

// What a calculation would make of a row with what its dialog holds: a curve over the picture, in the units of the data.
struct Preview_Curve {
    int row = 0;  // from 1
    std::vector<float> x, y;
};

// A view, and how the rows stood above one another in it.
struct Visited_View {
    View view;
    Waterfall waterfall;
    bool operator==(const Visited_View&) const = default;
};

// The views that the user has been at, for the ways back and forward.
struct View_History {
    std::vector<Visited_View> views;
    std::size_t present = 0;         // index of the view on the screen
    bool merging = false;            // the last view came by a step of many, which count as one
    X_Space xspace = X_Space::none;  // what the views are views of
    View_Kind kind = View_Kind::counts;
};

struct Plot_State {
    Plot_Form plot_type = Plot_Form::none;
    Move_Mode MoveMode = Move_Mode::none;
    Click_Mode ClickMode = Click_Mode::none;
    bool log_scale = false;
    // The scale that the user has chosen for graphs; with "logarithm" their form is "multi_log" where no calculation runs. That form, come
    // to by its own command, leaves it linear; with "root" it is never that form.
    Y_Scale y_scale = Y_Scale::linear;
    Waterfall waterfall;
    int pointed_row = 0;       // whose curve is under the pointer, in the picture or in the list of patterns; 0 none
    bool show_target = false;  // "View target at centre"
    bool peak_insert = false, peak_delete = false, bgr_insert = false, bgr_delete = false;

    X_Space xspace = X_Space::none;  // of all rows
    std::string xlabel_text, ylabel_text;

    Plot_Zone zone;

    float x_all_min = 0, x_all_max = 0, y_all_min = 0, y_all_max = 0;      // range over all rows
    float x_view_min = 0, x_view_max = 0, y_view_min = 0, y_view_max = 0;  // visible window; y in units of the scale
    View drawn;  // the window drawn last; of a map, y1 and y2 are its first and last row
    View units;  // at the ends of the plot box: those of the window, or of the grid of a map; of a graph in space none

    int first_pattern = 0, last_pattern = 0;      // rows that maps show
    float view_rotation = 0, view_elevation = 0;  // of graphs in space, degrees
    PlotGrid grid;                                // of maps and surfaces

    float y_prf_bottom = 0;  // lowest y of a plot with a refined profile
    float diff_base = 0;     // y on which its difference curve stands
    float diff_band = 0;     // height of the band in which its reflections are drawn
    float diff_span = 1;     // height of the intensities that the two were made for, counts whatever the scale

    std::vector<Preview_Curve> preview;  // while a dialog is open
    Rubber_Shape rubber;
    Row_Move row_move;
    Reflection_Hits hits;
    Spectral_Lines spectral;
    Drag drag;
    View_History history;

    double read_ms = 0, draw_ms = 0;  // what the last load and the last picture took
    long long drawn_points = 0;       // points of the rows of that picture

    // Between page units and the data units of the picture drawn last.
    struct Place {
        double x, y;
    };
    Place Data_At(Place page) const {
        const double fx = (page.x / page_width - zone.x1) / (static_cast<double>(zone.x2) - zone.x1);
        const double fy = (page.y / page_height - zone.y1) / (static_cast<double>(zone.y2) - zone.y1);
        return {units.x1 + fx * (static_cast<double>(units.x2) - units.x1), units.y1 + fy * (static_cast<double>(units.y2) - units.y1)};
    }
    Place Page_At(Place data) const {
        const double fx = (data.x - units.x1) / (static_cast<double>(units.x2) - units.x1);
        const double fy = (data.y - units.y1) / (static_cast<double>(units.y2) - units.y1);
        return {page_width * (zone.x1 + fx * (static_cast<double>(zone.x2) - zone.x1)),
                page_height * (zone.y1 + fy * (static_cast<double>(zone.y2) - zone.y1))};
    }

    // Page units of the pivot on the axis that is scaled.
    double Pivot_Place() const {
        const double pivot = row_move.pivot;
        return MoveMode == Move_Mode::scale_x ? Page_At({pivot, 0}).x : Page_At({0, pivot}).y;
    }

    bool Is_Map() const { return plot_type == Plot_Form::contour || plot_type == Plot_Form::contour_log; }
    bool In_Space() const { return plot_type == Plot_Form::graph3d || plot_type == Plot_Form::surface; }

    View Whole_Range() const { return {x_all_min, x_all_max, y_all_min, y_all_max}; }
    View Shown_View() const { return {x_view_min, x_view_max, y_view_min, y_view_max}; }
    View_Kind Kind_Of_View() const { return Is_Map() ? View_Kind::rows : kinds_of_scales[static_cast<std::size_t>(Scale())]; }
    // What a map shows: x, and the rows as y.
    View Map_View() const { return {x_view_min, x_view_max, static_cast<float>(first_pattern), static_cast<float>(last_pattern)}; }

    // False, and nothing changes, for a view that single precision cannot hold with its width and height.
    bool Show(const View& view) {
        for (const float value : {view.x1, view.x2, view.y1, view.y2, view.x2 - view.x1, view.y2 - view.y1})
            if (!std::isfinite(value)) return false;
        x_view_min = view.x1, x_view_max = view.x2, y_view_min = view.y1, y_view_max = view.y2;
        return true;
    }

    bool Is_2D() const { return Row_Of(plot_type).is_2d; }
    bool Is_Log() const { return plot_type == Plot_Form::multi_log; }
    Y_Scale Scale() const { return Is_Log() ? Y_Scale::logarithm : y_scale; }
};

}  // namespace vntl
