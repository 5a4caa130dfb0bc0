// What the user may set: styles of curves, the look of the 2D graph and of Rietveld overlays, the main window.
#pragma once

#include <array>
#include <string>

#include "base/colour.hpp"

namespace vntl {

// Style of one row; row i uses slot ((i - 1) mod 12) + 1.
struct ProfileStyle {
    Colour line_colour = 0;
    int line_style = 0;  // -1 none, 0 solid, 1 dotted, 2 dashed, 3 dot-dash, 4 dot-dot-dash
    int line_pitch = 1;  // width 1 to 5
    Colour marker_colour = 0;
    int marker_type = 2;  // 1 none, 2 circle, 3 to 8 further glyphs
    int marker_size = 5;  // thousandths of the page
    bool match_colours = true;
};

// Place, colour, font, style and size of one text of a plot. Sizes are in thousandths of the page width and twice that of its height.
struct Text_Prefs {
    int pos = 3;
    Colour colour = 0;
    int font = 1;   // 1 Courier, 2 Helvetica, 3 Times, 4 Symbol
    int style = 1;  // 1 normal, 2 bold, 3 italic, 4 underline, 5 opaque, 6 B+I, 7 B+I+U, 8 I+U, 9 B+U
    int size = 10;
};

struct Graph2D_Prefs {
    Colour frame_background = WRGB(150, 200, 150);
    Colour frame_foreground = WRGB(235, 235, 235);
    std::string title_single;
    std::string title_multi = "Plot multi file";
    Text_Prefs title{3, WRGB(128, 0, 64), 1, 1, 20};   // pos 1 none, 2 left, 3 centre, 4 right
    Text_Prefs xlabel{3, WRGB(0, 64, 128), 1, 1, 15};  // the same
    Text_Prefs ylabel{7, WRGB(0, 64, 128), 1, 1, 15};  // pos 1 none, 2 to 10 top/centre/bottom by upright/two rotations
    Text_Prefs legend{3, 0, 1, 1, 10};                 // pos 1 none, 2 in left, 3 in right, 4 out right; colour unused
    Text_Prefs xscale{0, WRGB(0, 0, 0), 1, 1, 12};     // pos unused
    Text_Prefs yscale{0, WRGB(0, 0, 0), 1, 1, 12};
    int xscale_format = 0, yscale_format = 0;  // kept and stored; no plot reads them
};

struct PRF_Prefs {
    Colour ycalc_colour = WRGB(0, 0, 0);
    int ycalc_style = 0, ycalc_pitch = 1, ycalc_marker = 2, ycalc_marker_size = 5;
    Colour ydif_colour = WRGB(0, 0, 255);
    int ydif_style = 0, ydif_pitch = 1, ydif_marker = 2, ydif_marker_size = 5;
    Colour refl_colour = WRGB(0, 128, 0);
    int refl_pitch = 1;
    bool refl_live = false;
    bool excl_show = true;
    Colour excl_colour = WRGB(192, 192, 192);
    bool excl_match = true;
    bool excl_ignore_sides = false;
    bool hide_negative = true;
};

struct Window_Prefs {
    int win_width = 800, win_height = 500;
    Colour colour_a = WRGB(130, 200, 130);  // background of the welcome screen
    Colour colour_b = WRGB(0, 0, 255);      // its texts
    bool keep_settings = true;
};

inline constexpr int profile_style_slots = 12;

struct Preferences {
    Window_Prefs window;
    std::array<ProfileStyle, profile_style_slots> profile_styles;
    Graph2D_Prefs graph2d;
    PRF_Prefs prf;

    const ProfileStyle& Style_Of_Row(int row) const { return profile_styles[(row - 1) % profile_style_slots]; }
};

// Every preference at its default.
void Set_Default_Preferences(Preferences& prefs);

}  // namespace vntl
