#include "pictures/cell_merge.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "drawing/cell_raster.hpp"

namespace vntl {
namespace {

constexpr int alike = 4;  // of 255: channels of colours that no eye tells apart

struct Cells {
    int columns, rows;
    std::span<const Colour> colours;

    std::span<const Colour> Row(int row) const {
        const auto length = static_cast<std::size_t>(columns);
        return colours.subspan(static_cast<std::size_t>(row) * length, length);
    }
};

bool Alike(Colour a, Colour b, int tolerance) {
    if (a == b) return true;
    if (tolerance == 0 || a == no_colour || b == no_colour) return false;
    const auto near = [tolerance](unsigned p, unsigned q) { return std::abs(static_cast<int>(p) - static_cast<int>(q)) <= tolerance; };
    return near(Red(a), Red(b)) && near(Green(a), Green(b)) && near(Blue(a), Blue(b));
}

// Runs of a row from the left, all of its height.
void Find_Runs(std::span<const Colour> row, int number, int tolerance, std::vector<Merged_Cells>& runs) {
    runs.clear();
    for (std::size_t from = 0, to = 0; from < row.size(); from = to) {
        while (to < row.size() && Alike(row[to], row[from], tolerance)) ++to;
        if (row[from] != no_colour) runs.push_back({static_cast<int>(from), number, static_cast<int>(to), number + 1, row[from]});
    }
}

// A run goes on in the one that stands on it; both lists are in order of columns.
void Join_Below(std::vector<Merged_Cells>& runs, const std::vector<Merged_Cells>& below, int tolerance, std::vector<Merged_Cells>& done) {
    std::size_t next = 0;
    for (const Merged_Cells& open : below) {
        while (next < runs.size() && runs[next].column1 < open.column1) ++next;
        const bool goes_on = next < runs.size() && runs[next].column1 == open.column1 && runs[next].column2 == open.column2 &&
                             Alike(runs[next].colour, open.colour, tolerance);
        if (goes_on)
            runs[next].row1 = open.row1, runs[next].colour = open.colour;
        else
            done.push_back(open);
    }
}

// False as soon as they are more than `most`.
bool Merge(const Cells& cells, int tolerance, std::size_t most, std::vector<Merged_Cells>& rectangles) {
    rectangles.clear();
    std::vector<Merged_Cells> below, runs;
    for (int row = 0; row < cells.rows; ++row) {
        Find_Runs(cells.Row(row), row, tolerance, runs);
        Join_Below(runs, below, tolerance, rectangles);
        std::swap(runs, below);
        if (rectangles.size() > most) return false;
    }
    rectangles.insert(rectangles.end(), below.begin(), below.end());
    return rectangles.size() <= most;
}

// Of each block of cells the mean.
std::vector<Colour> Coarser(const Cells& cells, int columns, int rows) {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
    const Pixel_Buffer buffer{pixels.data(), columns, rows, columns};
    const Rect place{0, 0, static_cast<double>(columns), static_cast<double>(rows)};
    Paint_Cells(buffer, {0, 0, columns, rows}, place, {place, cells.columns, cells.rows, cells.colours});
    return Colours_Of_Pixels(buffer);
}

}  // namespace

Rect Rect_Of_Cells(const Cell_Rectangles& cells, const Merged_Cells& merged, const Rect& image) {
    const double dx = (image.x2 - image.x1) / cells.columns, dy = (image.y2 - image.y1) / cells.rows;
    return {image.x1 + merged.column1 * dx, image.y1 + merged.row1 * dy, image.x1 + merged.column2 * dx, image.y1 + merged.row2 * dy};
}

Cell_Rectangles Merge_Cells(int columns, int rows, std::span<const Colour> colours, std::size_t most) {
    const Cells cells{columns, rows, colours};
    Cell_Rectangles merged{columns, rows, {}};
    if (Merge(cells, 0, most, merged.rectangles) || Merge(cells, alike, most, merged.rectangles)) return merged;
    for (int block = 2; merged.columns > 1 || merged.rows > 1; block += std::max(1, block / 2)) {
        merged.columns = std::max(1, columns / block);
        merged.rows = std::max(1, rows / block);
        const std::vector<Colour> coarser = Coarser(cells, merged.columns, merged.rows);
        if (Merge({merged.columns, merged.rows, coarser}, alike, most, merged.rectangles)) break;
    }
    return merged;
}

Cell_Rectangles Ground_Of_Cells(int columns, int rows, std::span<const Colour> colours, std::size_t most) {
    const auto blocks_across = std::sqrt(static_cast<double>(most) * columns / rows), blocks_up = static_cast<double>(most) / blocks_across;
    const auto whole = [](double blocks, int cells) { return static_cast<int>(std::clamp(blocks, 1.0, static_cast<double>(cells))); };
    Cell_Rectangles ground{whole(blocks_across, columns), whole(blocks_up, rows), {}};
    std::vector<Colour> blocks = Coarser({columns, rows, colours}, ground.columns, ground.rows);
    const auto block_of = [](std::size_t cell, int cells, int of) {
        return (2 * cell + 1) * static_cast<std::size_t>(of) / (2 * static_cast<std::size_t>(cells));
    };
    const auto length = static_cast<std::size_t>(columns);
    for (std::size_t i = 0; i < colours.size(); ++i)
        if (colours[i] == no_colour)
            blocks[block_of(i / length, rows, ground.rows) * static_cast<std::size_t>(ground.columns) +
                   block_of(i % length, columns, ground.columns)] = no_colour;
    Merge({ground.columns, ground.rows, blocks}, 0, blocks.size(), ground.rectangles);
    return ground;
}

}  // namespace vntl
