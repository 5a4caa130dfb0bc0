// What the user may set: styles of curves, the look of the 2D graph, of Rietveld overlays, of maps and of graphs in space, the main window,
// the programs that work beside this one.
// Names, ranges, defaults and places in the settings file stand in the table of session/preference_table.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/colour.hpp"

namespace vntl {

// Style of one row; row i uses slot ((i - 1) mod 12) + 1.
struct ProfileStyle {
    Colour line_colour = 0;
    int line_style = 0;  // -1 none, 0 solid, 1 dotted, 2 dashed, 3 dot-dash, 4 dot-dot-dash
    int line_pitch = 0;  // width 1 to 5
    Colour marker_colour = 0;
    int marker_type = 0;  // 1 none, 2 circle, 3 to 8 further glyphs
    int marker_size = 0;  // thousandths of the page
    bool match_colours = false;
};

// Place, colour, font, style and size of one text of a plot. Sizes are in thousandths of the page width and twice that of its height.
struct Text_Prefs {
    int pos = 0;
    Colour colour = 0;
    int font = 0;   // 1 Courier, 2 Helvetica, 3 Times, 4 Symbol
    int style = 0;  // 1 normal, 2 bold, 3 italic, 4 underline, 5 opaque, 6 B+I, 7 B+I+U, 8 I+U, 9 B+U
    int size = 0;
};

struct Graph2D_Prefs {
    Colour frame_background = 0, frame_foreground = 0;
    std::string title_single, title_multi;
    Text_Prefs title, xlabel;                  // pos 1 none, 2 left, 3 centre, 4 right
    Text_Prefs ylabel;                         // pos 1 none, 2 to 10 top/centre/bottom by upright/two rotations
    Text_Prefs legend;                         // pos 1 none, 2 in left, 3 in right, 4 out right; colour unused
    Text_Prefs xscale, yscale;                 // pos unused
    int xscale_format = 0, yscale_format = 0;  // kept and stored; no plot reads them
};

struct PRF_Prefs {
    Colour ycalc_colour = 0;
    int ycalc_style = 0, ycalc_pitch = 0, ycalc_marker = 0, ycalc_marker_size = 0;
    Colour ydif_colour = 0;
    int ydif_style = 0, ydif_pitch = 0, ydif_marker = 0, ydif_marker_size = 0;
    Colour refl_colour = 0;
    int refl_pitch = 0;
    bool refl_live = false;
    bool excl_show = false;
    Colour excl_colour = 0;
    bool excl_match = false;
    bool excl_ignore_sides = false;
    bool hide_negative = false;
};

inline constexpr int contour_colours = 20;

struct Contour_Prefs {
    std::string contour_title;
    Colour contour_background = 0, contour_foreground = 0;
    Colour contour_min_colour = 0, contour_max_colour = 0;
    int contour_type = 0;                             // 1, 2 lines, 3, 4 colours between two, 5 bands of the palette
    int contour_levels = 0, contour_granularity = 0;  // of the bands; their routine brings both into its range
    std::array<Colour, contour_colours> contour_palette = {};
};

struct Graph3D_Prefs {
    std::string graph3d_title;
    Colour graph3d_background = 0;
};

struct Surface_Prefs {
    std::string surface_title;
    Colour surface_background = 0, surface_lattice = 0, surface_min_colour = 0, surface_max_colour = 0;
    int surface_type = 0;  // 1 graduated contouring, 2 one colour, 3 graduated colour, 4 variable
};

// Of maps and surfaces: higher intensities are cut off at the value, in the units of the picture. It goes with the run of the program and
// not with the settings file.
inline constexpr std::string_view saturation_mark = "(Saturation:";  // tells of it in the title of a map
struct Saturation {
    bool saturation_on = false;
    float saturation_value = 0;
};

// Colours of the window that looks through the profile files of a folder.
struct Quick_View_Prefs {
    Colour qv_background = 0, qv_foreground = 0;
    bool qv_excl_match = false;  // excluded stretches are drawn, in the colour of the foreground
    Colour qv_excl_colour = 0;   // that colour
};

// Where the suite of sibling programs stands, and the programs that are started. An empty command means that there is none.
struct Environment_Prefs {
    bool always_save_context = false;  // kept and stored; no command reads it
    bool use_internal_editor = false;  // texts are opened in the program's own window
    std::string quendrix_dir;          // installation directory of the suite; blank when there is none
    std::string cmd_editor, cmd_browser, cmd_pdf;
    std::string cmd_cif_viewer, cmd_ps_viewer;  // kept and stored; no command uses them
    std::string cmd_unzip;
    std::string prg_refine;  // the refinement program, in the suite's directory
    std::string cmd_run;     // stands before the name of a program that writes to a console
};

inline constexpr int largest_window_side = 16384;  // pixels

struct Window_Prefs {
    int win_width = 0, win_height = 0;
    Colour colour_a = 0;  // background of the welcome screen
    Colour colour_b = 0;  // its texts
    bool keep_settings = false;
};

inline constexpr int profile_style_slots = 12;

struct Preferences {
    Preferences();  // every one at its default

    Window_Prefs window;
    std::array<ProfileStyle, profile_style_slots> profile_styles;
    Graph2D_Prefs graph2d;
    PRF_Prefs prf;
    Contour_Prefs contour;
    Graph3D_Prefs graph3d;
    Surface_Prefs surface;
    Quick_View_Prefs quick_view;
    Environment_Prefs environment;
    Saturation saturation;

    const ProfileStyle& Style_Of_Row(int row) const { return profile_styles[(row - 1) % profile_style_slots]; }
};

// Every preference at its default, but for those of the window and the programs, which the start of the program decides.
void Set_Default_Preferences(Preferences& prefs);

}  // namespace vntl
