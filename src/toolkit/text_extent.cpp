#include "toolkit/text_extent.hpp"

#include <cairo.h>

#include "toolkit/font_table.hpp"

namespace vntl {

double Extent_Of_Text(std::string_view text, const Text_Style& style) {
    const double em = Em_Of_Cell(style.width, style.height);
    if (em <= 0) return 0;
    // Measured large, so that no grid of pixels has a part in it.
    constexpr double measured_em = 1000;
    cairo_surface_t* const surface = cairo_recording_surface_create(CAIRO_CONTENT_COLOR, nullptr);
    cairo_t* const cairo = cairo_create(surface);
    cairo_select_font_face(cairo, Family_Of(style.font).family,
                           (style.style & style_italic) != 0 ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                           (style.style & style_bold) != 0 ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo, measured_em);
    cairo_text_extents_t extent{};
    cairo_text_extents(cairo, Written_Text(text, style.font).c_str(), &extent);
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
    return extent.x_advance * em / measured_em;
}

}  // namespace vntl
