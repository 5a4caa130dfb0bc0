// Curves of a plot: their styles as the toolkit takes them, from the preferences of a profile, and a set of points drawn in one.
#pragma once

#include <algorithm>
#include <span>

#include "drawing/presentation.hpp"
#include "session/preferences.hpp"

namespace vntl {

// Glyph of a `marker_type`: 1 "-none-", 2 "circle", 3 to 8 "custom1" to "custom6".
inline int Marker_Glyph(int marker_type) { return marker_type >= 2 && marker_type <= 8 ? 219 + marker_type : 0; }
inline int Marker_Fill(int marker_type) { return Marker_Glyph(marker_type) == 0 ? fill_outline : fill_solid; }

struct Curve_Style {
    int line_style = 0, pitch = 1;
    Colour line_colour = 0, marker_colour = 0;
    int marker_type = 1;

    Set_Style Of_Markers() const { return {line_style, Marker_Fill(marker_type), line_colour, marker_colour, Marker_Glyph(marker_type)}; }
    Set_Style Of_Line() const { return {line_style, fill_outline, line_colour, marker_colour, Marker_Glyph(marker_type)}; }
    float Width() const { return static_cast<float>(std::clamp(pitch, 1, 5)); }
    bool Has_Line() const { return line_style >= 0; }

    Curve_Style In_Colour(Colour colour) const { return {line_style, pitch, colour, colour, marker_type}; }
};

inline Curve_Style Style_Of(const ProfileStyle& s) { return {s.line_style, s.line_pitch, s.line_colour, s.marker_colour, s.marker_type}; }
inline Curve_Style Ycalc_Style(const PRF_Prefs& p) {
    return {p.ycalc_style, p.ycalc_pitch, p.ycalc_colour, p.ycalc_colour, p.ycalc_marker};
}
inline Curve_Style Ydif_Style(const PRF_Prefs& p) { return {p.ydif_style, p.ydif_pitch, p.ydif_colour, p.ydif_colour, p.ydif_marker}; }

inline constexpr int marker_font = 101;

// A set of points as markers, of the present character size, or as a line. `blocks`: of the points, null where they are not known.
void Draw_Markers(Presentation&, std::span<const float> x, std::span<const float> y, const Curve_Style&,
                  const Series_Blocks* blocks = nullptr);
void Draw_Line(Presentation&, std::span<const float> x, std::span<const float> y, const Curve_Style&,
               const Series_Blocks* blocks = nullptr);

}  // namespace vntl
