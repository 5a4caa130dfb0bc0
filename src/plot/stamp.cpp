// The name of the program on what leaves it.
#include "base/page.hpp"
#include "base/text.hpp"
#include "drawing/font_table.hpp"
#include "plot/plot.hpp"

namespace vntl {

namespace {

constexpr int right_aligned = 2;
constexpr float letter_width = 0.006f, letter_height = 0.015f;    // of the page
constexpr float from_the_right = 0.01f, from_the_bottom = 0.02f;  // of the page
constexpr std::size_t longest_part = 30;

std::string Part(std::string_view text) { return std::string(Trim(Cut(Trim(text), longest_part))); }

}  // namespace

void Stamp_Plot(const Configuration& config, Graphics& g) {
    g.IGrArea(0, 0, 1, 1);
    g.IGrUnits(0, 0, page_width, page_height);
    g.IGrColour("Blue");
    g.IGrCharJustify(right_aligned);
    g.IGrCharRotate(0);
    g.WGrTextFont(font_courier, 0, letter_width, letter_height);
    g.IGrCharOut(page_width * (1 - from_the_right), page_height * from_the_bottom,
                 Part(config.program_name) + ' ' + Part(config.program_version));
}

}  // namespace vntl
