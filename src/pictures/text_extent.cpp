#include "pictures/text_extent.hpp"

#include <cairo.h>

#include <cmath>
#include <numbers>
#include <string>

#include "drawing/font_table.hpp"

namespace vntl {

namespace {

// Letters are measured large, so that no grid of pixels has a part in it.
constexpr double measured_em = 1000;

// A page that is never drawn, with the style's font.
class Font_Page {
public:
    explicit Font_Page(const Text_Style& style)
        : surface_(cairo_recording_surface_create(CAIRO_CONTENT_COLOR, nullptr)), cairo_(cairo_create(surface_)) {
        cairo_select_font_face(cairo_, Family_Of(style.font).family,
                               (style.style & style_italic) != 0 ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                               (style.style & style_bold) != 0 ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(cairo_, measured_em);
    }
    Font_Page(const Font_Page&) = delete;
    Font_Page& operator=(const Font_Page&) = delete;
    ~Font_Page() {
        cairo_destroy(cairo_);
        cairo_surface_destroy(surface_);
    }
    cairo_t* cairo() const { return cairo_; }

private:
    cairo_surface_t* surface_;
    cairo_t* cairo_;
};

// The page's path as polygons.
template <class Place>
Outline Polygons_Of_Path(cairo_t* cairo, Place place) {
    Outline outline;
    cairo_path_t* const path = cairo_copy_path_flat(cairo);
    for (int i = 0; i < path->num_data; i += path->data[i].header.length) {
        const cairo_path_data_t* const step = path->data + i;
        if (step->header.type == CAIRO_PATH_CLOSE_PATH) continue;
        if (step->header.type == CAIRO_PATH_MOVE_TO) outline.emplace_back();
        outline.back().push_back(place(step[1].point.x, step[1].point.y));
    }
    cairo_path_destroy(path);
    for (std::vector<Point>& contour : outline)
        if (contour.size() > 1 && contour.front().x == contour.back().x && contour.front().y == contour.back().y) contour.pop_back();
    std::erase_if(outline, [](const std::vector<Point>& contour) { return contour.size() < 3; });
    return outline;
}

}  // namespace

char32_t Next_Letter(std::string_view text, std::size_t& i) {
    const auto byte = [&text](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    const unsigned first = byte(i++);
    const int more = first < 0xc0 ? 0 : first < 0xe0 ? 1 : first < 0xf0 ? 2 : 3;
    char32_t code = more == 0 ? first : first & (0x3fu >> more);
    for (int k = 0; k < more && i < text.size(); ++k) code = code << 6 | (byte(i++) & 0x3fu);
    return code;
}

double Extent_Of_Text(std::string_view text, const Text_Style& style) {
    const double em = Em_Of_Cell(style.width, style.height);
    if (em <= 0) return 0;
    const Font_Page page(style);
    cairo_text_extents_t extent{};
    cairo_text_extents(page.cairo(), Written_Text(text, style.font).c_str(), &extent);
    return extent.x_advance * em / measured_em;
}

double Start_Of_Text(Justify justify, double width) { return -0.5 * static_cast<int>(justify) * width; }

Point Beside(Point at, double along, double up, double degrees) {
    const double angle = degrees * std::numbers::pi / 180, cosine = std::cos(angle), sine = std::sin(angle);
    return {at.x + along * cosine - up * sine, at.y + along * sine + up * cosine};
}

std::array<Point, 4> Room_Of_Text(Point at, double width, const Text_Style& style, double margin) {
    const double em = Em_Of_Cell(style.width, style.height), start = Start_Of_Text(style.justify, width);
    const auto corner = [&](double along, double up) { return Beside(at, along, up * em, style.angle); };
    const double left = start - margin, right = start + width + margin;
    return {corner(left, -descent), corner(right, -descent), corner(right, 1), corner(left, 1)};
}

std::vector<Outline> Outlines_Of_Text(std::string_view text, const Text_Style& style) {
    const double em = Em_Of_Cell(style.width, style.height);
    if (em <= 0) return {};
    const Font_Page page(style);
    cairo_set_tolerance(page.cairo(), 0.002 * measured_em);
    const std::string words = Written_Text(text, style.font);
    cairo_glyph_t* glyphs = nullptr;
    int count = 0;
    if (cairo_scaled_font_text_to_glyphs(cairo_get_scaled_font(page.cairo()), 0, 0, words.data(), static_cast<int>(words.size()), &glyphs,
                                         &count, nullptr, nullptr, nullptr) != CAIRO_STATUS_SUCCESS)
        return {};
    const double scale = em / measured_em, angle = style.angle * std::numbers::pi / 180;
    const double cosine = scale * std::cos(angle), sine = scale * std::sin(angle);
    std::vector<Outline> letters;
    for (int k = 0; k < count; ++k) {
        cairo_new_path(page.cairo());
        cairo_glyph_path(page.cairo(), glyphs + k, 1);
        letters.push_back(Polygons_Of_Path(page.cairo(), [&](double x, double down) {
            return Point{x * cosine + down * sine, x * sine - down * cosine};
        }));
    }
    cairo_glyph_free(glyphs);
    std::erase_if(letters, [](const Outline& letter) { return letter.empty(); });
    return letters;
}

}  // namespace vntl
