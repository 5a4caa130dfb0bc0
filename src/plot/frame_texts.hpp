// What stands around the curves of a graph or a map: page, title, scales, axis labels, target, frame and legend. Page units are in force.
#pragma once

#include "drawing/presentation.hpp"
#include "plot/plot.hpp"

namespace vntl {

void Page_Units(Graphics&);                                                             // the whole page, 1200 x 800
void Draw_Page(const Plot_Zone&, Presentation&, Colour background, Colour foreground);  // cleared, and the plot box filled

// A text each, in the font, the colour and the place of its preference.
void Write_Title(const Text_Prefs&, const Plot_Zone&, Presentation&, std::string_view title);
void Write_X_Label(const Text_Prefs&, const Plot_Zone&, Presentation&, std::string_view text);
void Write_Y_Label(const Text_Prefs&, Presentation&, std::string_view text);
// Axes with ticks and numbers, at the left of the window and at its foot.
void Write_Y_Scale(const Text_Prefs&, Presentation&, const View& window);
void Write_X_Scale(const Text_Prefs&, Presentation&, const View& window);

// Why there is no plot, in the middle of the page, as large as the page has room for.
void Write_In_Middle(Graphics&, int font, float char_width, float char_height, std::string_view text);

// The plot box of a graph of the first `n` rows or of a map: that of the scene, or where the look says so what numbers and labels leave.
Plot_Zone Fitted_Zone(const Scene&, Graphics&);

void Draw_Title(const Scene&, Presentation&, int n);
void Draw_Scales(const Scene&, Presentation&, const View& window);  // with the numbers under zero of a refined profile hidden
void Draw_Axis_Labels(const Scene&, Presentation&, const View& window, std::string_view y_title, bool log);
void Draw_Target(const Plot_Zone&, const Look&, Graphics&);
void Draw_Frame(Presentation&, const Look& = {});
void Draw_Legend(const Scene&, Presentation&, const View& window, int n);

// Places of labels by their codes: N none, L, C or R along x; "--" none, T, C or B along y, then V upright, 9 or R turned.
char Along_X(int code);
std::string_view Y_Label_Place(int code);

// The part of the plot box under the legend, where no text stands.
Plot_Zone Room_Beside_Texts(const Scene&);

// That of the plot, unless row 1 brings its own; a refined profile keeps the plot's.
std::string Y_Title(const Scene&);

}  // namespace vntl
