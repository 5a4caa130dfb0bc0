#include "drawing/value_cells.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "drawing/cell_raster.hpp"

namespace vntl {

namespace {

constexpr float gap = std::numeric_limits<float>::quiet_NaN();

// One axis: the cells that are shown as one, and the place of all.
struct Seen_Axis {
    double from, to;
    std::vector<Cell_Share> shares;
};

// `places` that the device shows between two ends; the axis reaches from `from` to `to`.
Seen_Axis See(double from, double to, int cells, double first, double last, int places) {
    if (cells <= places) {
        Seen_Axis axis{from, to, {}};
        for (int cell = 0; cell < cells; ++cell) axis.shares.push_back({cell, cell + 1});
        return axis;
    }
    const double place = (last - first) / places;
    Axis_Shares shares = Share_Out((from - first) / place, (to - first) / place, cells, 0, places);
    const double begin = first + place * shares.pixel;
    return {begin, begin + place * static_cast<double>(shares.shares.size()), std::move(shares.shares)};
}

// The larger one; of a gap and a value the value.
float Larger(float a, float b) { return std::isfinite(b) && !(a >= b) ? b : a; }

}  // namespace

Value_Cells Seen_Cells(const Device& device, const Rect& rect, int columns, int rows, std::span<const float> values) {
    const Finest_Cells finest = device.Finest(rect);
    if (columns <= 0 || rows <= 0 || finest.columns <= 0 || finest.rows <= 0) return {};
    // Downward, as pixels are counted: an edge in the middle of one falls to the same side as it does where cells are painted.
    const Rect& r = finest.rect;
    const Seen_Axis across = See(rect.x1, rect.x2, columns, r.x1, r.x2, finest.columns);
    const Seen_Axis down = See(-rect.y2, -rect.y1, rows, -r.y2, -r.y1, finest.rows);
    Value_Cells seen{{across.from, -down.to, across.to, -down.from}, static_cast<int>(across.shares.size()), 0, {}};
    seen.rows = static_cast<int>(down.shares.size());
    seen.values.assign(across.shares.size() * down.shares.size(), gap);
    for (std::size_t row = 0; row < down.shares.size(); ++row) {
        const Cell_Share share = down.shares[down.shares.size() - 1 - row];
        float* const to = seen.values.data() + row * across.shares.size();
        for (int from_top = share.first; from_top < share.end; ++from_top) {
            const float* const line = values.data() + static_cast<std::size_t>(rows - 1 - from_top) * static_cast<std::size_t>(columns);
            for (std::size_t x = 0; x < across.shares.size(); ++x)
                for (int column = across.shares[x].first; column < across.shares[x].end; ++column) to[x] = Larger(to[x], line[column]);
        }
    }
    return seen;
}

}  // namespace vntl
