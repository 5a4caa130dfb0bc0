// What is on the screen: the plot form, the ranges of the data, the visible window, and the modes of the mouse.
#pragma once

#include <string>

namespace vntl {

// The page: a fixed coordinate space that is stretched over the whole window, origin at the lower left.
inline constexpr float page_width = 1200.0f, page_height = 800.0f;

// A rectangle that the user is drawing, page units: where the button went down, and where the mouse is.
struct Rubber_Rectangle {
    bool active = false;
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
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
    Rubber_Rectangle rubber;

    double read_ms = 0, draw_ms = 0;  // what the last load and the last picture took
    long long drawn_points = 0;       // points of the rows of that picture

    bool Is_2D() const { return plot_type == "single" || plot_type == "multi" || plot_type == "multi_log" || plot_type == "calculation"; }
};

}  // namespace vntl
