// Plots of any columns: what the window of generic graphics shows, read from a table of curves or from the results of a sequential
// refinement.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vntl {

inline constexpr int max_generic_curves = 40, max_slices = 500;
inline constexpr std::size_t generic_text_length = 132, generic_legend_length = 40, generic_param_length = 50;  // characters kept

enum class Plot_Kind { lines, scatter, histogram, polar, pie };
inline constexpr std::array<std::string_view, 5> plot_kind_names = {"polyl", "scatt", "histo", "polar", "piech"};
constexpr std::string_view Plot_Kind_Name(Plot_Kind kind) { return plot_kind_names[static_cast<std::size_t>(kind)]; }

// Arrays of the same length: the points that the file gave this curve, and no others. What a line leaves out is 0.
struct Generic_Curve {
    std::string legend;
    std::vector<float> x, y, sigma;
    bool has_errbar = false, has_marker = false, no_line = false, has_legend = false;
};

struct Generic_Plots {
    Plot_Kind plot_kind = Plot_Kind::lines;
    std::vector<Generic_Curve> curves;  // of a pie the first one alone is drawn
    std::vector<std::string> slices;    // of a pie: the text of each point of curve 1
    std::string title, legend_x, legend_y;
    std::string file_name;                 // blank when there is none
    int nblocks = 0;                       // refinements of a sequential file
    std::vector<std::string> param_names;  // of its rows
};

}  // namespace vntl
