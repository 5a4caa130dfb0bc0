#include "drawing/map_values.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vntl {

namespace {

// An axis of the grid as it is seen from the first pixel on, whichever way it runs.
class Seen_Axis {
public:
    explicit Seen_Axis(std::span<const double> places) : places_(places), falls_(places.front() > places.back()) {}

    std::size_t Points() const { return places_.size(); }
    double Place(std::size_t point) const { return places_[falls_ ? places_.size() - 1 - point : point]; }

    // The piece of the cell between two seen points, from `low` to `high`.
    Pixel_Axis::Piece Piece(std::size_t cell, double low, double high, int parts) const {
        const double from = Place(cell), width = Place(cell + 1) - from;
        double at = width > 0 ? std::clamp((0.5 * (low + high) - from) / width, 0.0, 1.0) : 0.5;
        if (falls_) at = 1 - at;
        if (parts > 0) at = (std::min(std::floor(at * parts), parts - 1.0) + 0.5) / parts;
        const std::size_t number = falls_ ? places_.size() - 2 - cell : cell;
        return {static_cast<int>(number), static_cast<float>(high - low), static_cast<float>(at)};
    }

private:
    std::span<const double> places_;
    bool falls_;
};

}  // namespace

Pixel_Axis::Pixel_Axis(std::span<const double> places, int pixels, Edges edges, int parts) {
    const Seen_Axis axis(places);
    const std::size_t cells = axis.Points() - 1;
    std::size_t cell = 0;
    for (int pixel = 0; pixel < pixels; ++pixel) {
        first_.push_back(pieces_.size());
        const double left = pixel, right = left + 1, centre = left + 0.5;
        while (cell + 1 < cells && axis.Place(cell + 1) <= left) ++cell;
        std::size_t last = cell;
        while (last + 1 < cells && axis.Place(last + 1) < right) ++last;
        if (edges == Edges::sharp && last - cell < 2) {
            const std::size_t holds_centre = last > cell && axis.Place(last) <= centre ? last : cell;
            pieces_.push_back(axis.Piece(holds_centre, left, right, parts));
            continue;
        }
        double length = 0;
        for (std::size_t c = cell; c <= last; ++c) {
            const double low = std::max(left, axis.Place(c)), high = std::min(right, axis.Place(c + 1));
            if (low < high) pieces_.push_back(axis.Piece(c, low, high, 0));
            length += std::max(0.0, high - low);
        }
        if (first_.back() == pieces_.size()) pieces_.push_back(axis.Piece(cell, left, right, 0));  // at the border of the grid
        for (std::size_t k = first_.back(); k < pieces_.size() && length > 0; ++k) pieces_[k].length /= static_cast<float>(length);
    }
    first_.push_back(pieces_.size());
}

Map_Values::Map_Values(const Grid_Data& grid, const Pixel_Axis& across, const Pixel_Axis& up, Cell_Surface surface)
    : grid_(grid), across_(across), up_(up), surface_(surface) {
    const auto pixels = static_cast<std::size_t>(across.Pixels());
    for (std::vector<float>& row : narrowed_) row.resize(pixels);
    means_.resize(pixels);
    values_.resize(pixels);
}

// The mean of a row of the grid over a pixel; no finite number where a gap lies in it. Differences from the first value are added up: the
// mean of equal values is that value.
float Map_Values::Along(int row, int pixel) const {
    const float* const z = grid_.z.data() + static_cast<std::size_t>(row) * grid_.x.size();
    const auto pieces = across_.Of(pixel);
    const float first = z[pieces.front().cell];
    float sum = 0;
    for (const Pixel_Axis::Piece& piece : pieces) {
        const float one = z[piece.cell];
        sum += piece.length * ((one - first) + piece.at * (z[piece.cell + 1] - one));
    }
    return first + sum;
}

const std::vector<float>& Map_Values::Narrowed(int row) {
    const std::size_t place = static_cast<std::size_t>(row) % 2;  // its neighbours have the other one
    if (narrowed_row_[place] != row) {
        for (int pixel = 0; pixel < across_.Pixels(); ++pixel) narrowed_[place][static_cast<std::size_t>(pixel)] = Along(row, pixel);
        narrowed_row_[place] = row;
    }
    return narrowed_[place];
}

// The mean over those cells of a row of cells that have no gap.
Map_Values::Mean Map_Values::Without_Gaps(int pixel, const Pixel_Axis::Piece& up) const {
    const float* const below = grid_.z.data() + static_cast<std::size_t>(up.cell) * grid_.x.size();
    const float* const above = below + grid_.x.size();
    Mean mean;
    for (const Pixel_Axis::Piece& piece : across_.Of(pixel)) {
        const int i = piece.cell;
        const float low = below[i] + piece.at * (below[i + 1] - below[i]), high = above[i] + piece.at * (above[i + 1] - above[i]);
        const float value = low + up.at * (high - low);
        if (std::isfinite(value)) mean.Take(value, piece.length);
    }
    mean.weight *= up.length;
    return mean;
}

// The cell is cut from its first corner to the opposite one.
float Map_Values::Triangle(const Pixel_Axis::Piece& across, const Pixel_Axis::Piece& up) const {
    const auto column = static_cast<std::size_t>(across.cell), row = static_cast<std::size_t>(up.cell);
    const float first = grid_.At(column, row), opposite = grid_.At(column + 1, row + 1);
    const float beside = grid_.At(column + 1, row), above = grid_.At(column, row + 1);
    if (!std::isfinite(first + opposite + beside + above)) return std::numeric_limits<float>::quiet_NaN();
    const float third = across.at > up.at ? beside : above;
    return first + ((opposite - first) + (third - first)) / 3;
}

std::span<const float> Map_Values::Row(int pixel_row) {
    const auto rows = up_.Of(pixel_row);
    std::fill(means_.begin(), means_.end(), Mean{});
    for (const Pixel_Axis::Piece& up : rows) {
        const std::vector<float>& low = Narrowed(up.cell);
        const std::vector<float>& high = Narrowed(up.cell + 1);
        for (std::size_t x = 0; x < means_.size(); ++x) {
            Mean mean{low[x] + up.at * (high[x] - low[x]), up.length};
            if (!std::isfinite(mean.value)) mean = Without_Gaps(static_cast<int>(x), up);
            if (mean.weight > 0) means_[x].Take(mean.value, mean.weight);
        }
    }
    for (std::size_t x = 0; x < means_.size(); ++x)
        values_[x] = means_[x].weight > 0 ? means_[x].value : std::numeric_limits<float>::quiet_NaN();
    if (surface_ == Cell_Surface::triangles && rows.size() == 1) {
        for (std::size_t x = 0; x < values_.size(); ++x) {
            const auto columns = across_.Of(static_cast<int>(x));
            if (columns.size() == 1) values_[x] = Triangle(columns.front(), rows.front());
        }
    }
    return values_;
}

}  // namespace vntl
