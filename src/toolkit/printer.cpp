#include "toolkit/printer.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace vntl {

namespace {

// ISO 216, and ANSI/ASME Y14.1 with its forerunners.
constexpr std::array<Paper, 6> papers = {
    {{"A4", 210, 297}, {"A3", 297, 420}, {"A5", 148, 210}, {"Letter", 215.9, 279.4}, {"Legal", 215.9, 355.6}, {"Tabloid", 279.4, 431.8}}};

}  // namespace

std::span<const Paper> Papers() { return papers; }

Rect Inside_Margins(const Page_Setup& setup) {
    const Paper& paper = papers[std::min(setup.paper, papers.size() - 1)];
    double width = paper.width, height = paper.height;
    if (setup.landscape) std::swap(width, height);
    const Rect inside{setup.left, setup.top, width - setup.right, height - setup.bottom};
    return inside.x1 < inside.x2 && inside.y1 < inside.y2 ? inside : Rect{};
}

Rect Picture_On_Sheet(const Page_Setup& setup, double aspect) {
    const Rect inside = Inside_Margins(setup);
    const double room_width = inside.x2 - inside.x1, room_height = inside.y2 - inside.y1;
    const double width = std::min(room_width, room_height * aspect) * setup.scale / 100, height = width / aspect;
    const double left = inside.x1 + (setup.centre ? 0.5 * (room_width - width) : 0);
    const double top = inside.y1 + (setup.centre ? 0.5 * (room_height - height) : 0);
    return {left, top, left + width, top + height};
}

}  // namespace vntl
