// What is on the screen: the plot form, the ranges of the data, the visible window, and the modes of the mouse.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "base/page.hpp"

namespace vntl {

// Values of `MoveMode`.
inline constexpr int drag_mode = 1, exclude_mode = 2, align_mode = 3, scale_y_mode = 4, scale_x_mode = 5;

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

// A window on the data.
struct View {
    float x1 = 0, x2 = 0, y1 = 0, y2 = 0;
    bool operator==(const View&) const = default;
};

// The plot in the user's hand.
struct Drag {
    bool active = false;
    double x = 0, y = 0;  // where the hand was last, page units
    View from = {};       // the view when the drag began
};

// The views that the user has been at, for the ways back and forward.
struct View_History {
    std::vector<View> views;
    std::size_t present = 0;  // index of the view on the screen
    bool merging = false;     // the last view came by a step of many, which count as one
    std::string data;         // what the views are views of
};

struct Plot_State {
    std::string plot_type = "none";  // "none", "single", "multi", "multi_log", "calculation", "graph2dcontour", ...
    int MoveMode = 0;                // what a mouse drag means
    int ClickMode = 0;               // in "calculation": 0 nothing, 1 fit, 2 peaks, 3 background, 4 reflections
    bool log_scale = false;
    bool show_target = false;  // "View target at centre"
    bool d2_mode = false;      // the 2D viewer is open
    bool qv_open = false;      // Quick View is open
    bool numor_raw = false;
    bool peak_insert = false, peak_delete = false, bgr_insert = false, bgr_delete = false;

    std::string xspace = "----";  // present x space: "2theta", "TOF", "d-space", "q-space", "s-space", ...
    std::string xlabel_text, ylabel_text;

    // Plot zone, fractions of the page.
    float zone_x1 = 0.15f, zone_y1 = 0.15f, zone_x2 = 0.85f, zone_y2 = 0.85f;

    float x_all_min = 0, x_all_max = 0, y_all_min = 0, y_all_max = 0;      // range over all rows
    float x_view_min = 0, x_view_max = 0, y_view_min = 0, y_view_max = 0;  // visible window; y in ln units in "multi_log"
    float drawn_x1 = 0, drawn_x2 = 0, drawn_y1 = 0, drawn_y2 = 0;          // the window drawn last

    float y_prf_bottom = 0;  // lowest y of a plot with a refined profile
    float diff_base = 0;     // y on which its difference curve stands
    float diff_band = 0;     // height of the band in which its reflections are drawn
    int first_pattern = 0, last_pattern = 0;

    float shift_x = 0, shift_y = 0;  // stored shift values
    Rubber_Shape rubber;
    Row_Move row_move;
    Reflection_Hits hits;
    Spectral_Lines spectral;
    Drag drag;
    View_History history;

    double read_ms = 0, draw_ms = 0;  // what the last load and the last picture took
    long long drawn_points = 0;       // points of the rows of that picture

    // Between page units and the data units of the window drawn last.
    struct Place {
        double x, y;
    };
    Place Data_At(Place page) const {
        const double fx = (page.x / page_width - zone_x1) / (static_cast<double>(zone_x2) - zone_x1);
        const double fy = (page.y / page_height - zone_y1) / (static_cast<double>(zone_y2) - zone_y1);
        return {drawn_x1 + fx * (static_cast<double>(drawn_x2) - drawn_x1), drawn_y1 + fy * (static_cast<double>(drawn_y2) - drawn_y1)};
    }
    Place Page_At(Place data) const {
        const double fx = (data.x - drawn_x1) / (static_cast<double>(drawn_x2) - drawn_x1);
        const double fy = (data.y - drawn_y1) / (static_cast<double>(drawn_y2) - drawn_y1);
        return {page_width * (zone_x1 + fx * (static_cast<double>(zone_x2) - zone_x1)),
                page_height * (zone_y1 + fy * (static_cast<double>(zone_y2) - zone_y1))};
    }

    // Page units of the pivot on the axis that is scaled.
    double Pivot_Place() const {
        const double pivot = row_move.pivot;
        return MoveMode == scale_x_mode ? Page_At({pivot, 0}).x : Page_At({0, pivot}).y;
    }

    View Shown_View() const { return {x_view_min, x_view_max, y_view_min, y_view_max}; }

    // False, and nothing changes, for a view that single precision cannot hold with its width and height.
    bool Show(const View& view) {
        for (const float value : {view.x1, view.x2, view.y1, view.y2, view.x2 - view.x1, view.y2 - view.y1})
            if (!std::isfinite(value)) return false;
        x_view_min = view.x1, x_view_max = view.x2, y_view_min = view.y1, y_view_max = view.y2;
        return true;
    }

    bool Is_2D() const { return plot_type == "single" || plot_type == "multi" || plot_type == "multi_log" || plot_type == "calculation"; }
};

}  // namespace vntl
