// The planes r.x = k/n, for all rows r of all rotations and all whole k, cut space into chambers that each operator maps onto each other
// when its translation is in 1/n: the rows of a product of rotations are such rows again. A box with bounds in 1/n holds a chamber whole
// or not at all, so that it holds a member of every orbit of points when it holds one of every orbit of chambers.
//
// Operators with translations in 1/d have their centres, axes and mirrors in 1/(2 d), and 1/n with a multiple of that as n is fine enough:
// quarters or eighths, or sixths or twelfths where thirds matter. A chamber is a cube of edge 1/n where rotations permute the axes, and a
// half of one with hexagonal axes.
#include "crystal/asymmetric_unit.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <tuple>
#include <vector>

#include "crystal/whole_vectors.hpp"

namespace vntl {
namespace {

constexpr int bound_unit = 24;

using Vector = Whole_Vector;

// --- chambers ----------------------------------------------------------------------------------------------------------------------------

// Chambers are found by points of a cube of edge `fine` that lie on none of the planes: with factors of -2 to 2 for 1, 3 and 9, no sum but
// that of three zeros is a multiple of 27.
constexpr int steps = 5, fine = 27 * steps;

// More than the rows of any group with entries up to 1 make; what has more is no group.
constexpr std::size_t most_chambers = 96;

// Sheared cells have many chambers; with few operators and a fine grid the search would be for long. The whole cell is right as well.
constexpr std::size_t most_orbits = 16384;

int Floor(int value, int divisor) { return (value < 0 ? value - divisor + 1 : value) / divisor; }

Vector Row(const Rotation& r, std::size_t i) { return {r[3 * i], r[3 * i + 1], r[3 * i + 2]}; }

bool Along_Axis(const Vector& row) { return std::abs(row[0]) + std::abs(row[1]) + std::abs(row[2]) == 1; }

class Chambers {
public:
    explicit Chambers(std::span<const Seitz> operators) {
        // A row of one coordinate alone cuts nothing off a cube.
        for (const Seitz& op : operators)
            for (std::size_t i = 0; i < 3; ++i)
                if (const Vector row = Row(op.rot, i); !Along_Axis(row) && std::find(rows_.begin(), rows_.end(), row) == rows_.end())
                    rows_.push_back(row);
        const int samples = rows_.empty() ? 1 : steps * steps * steps;
        for (int s = 0; s < samples; ++s) Find({27 * (s % steps) + 1, 27 * (s / steps % steps) + 3, 27 * (s / (steps * steps)) + 9});
    }

    // The number of the chamber that holds a point of the cube.
    std::size_t Find(const Vector& point) {
        std::vector<int> sides;
        for (const Vector& row : rows_) sides.push_back(Floor(Product(row, point), fine));
        const auto met = std::find(sides_.begin(), sides_.end(), sides);
        if (met != sides_.end()) return static_cast<std::size_t>(met - sides_.begin());
        sides_.push_back(sides);
        points_.push_back(point);
        return points_.size() - 1;
    }

    std::size_t Count() const { return points_.size(); }
    const Vector& Point(std::size_t chamber) const { return points_[chamber]; }
    bool Whole_Cubes() const { return rows_.empty(); }

private:
    std::vector<Vector> rows_, points_;
    std::vector<std::vector<int>> sides_;
};

// Where an operator takes a chamber of the cube (i,j,k): to another one in the cube rot (i,j,k) + shift.
struct Chamber_Image {
    Rotation rot;
    Vector shift;
    std::size_t chamber;
};

// All operators on the first chamber, then all on the second, and so on. Empty for what is no group.
std::vector<Chamber_Image> Images(std::span<const Seitz> operators, int n, Chambers& chambers) {
    std::vector<Chamber_Image> images;
    for (std::size_t c = 0; c < chambers.Count(); ++c) {
        if (chambers.Count() > most_chambers) return {};
        for (const Seitz& op : operators) {
            Vector point = op.rot * chambers.Point(c), shift;
            for (std::size_t i = 0; i < 3; ++i) {
                shift[i] = Floor(point[i], fine);
                point[i] -= shift[i] * fine;
                shift[i] += op.tr[i] * n / twelfths;
            }
            images.push_back({op.rot, shift, chambers.Find(point)});
        }
    }
    return images;
}

// --- orbits of chambers, as sets of bits -------------------------------------------------------------------------------------------------

class Orbits {
public:
    Orbits(int n, std::size_t n_operators, const std::vector<Chamber_Image>& images) : n_(n), chambers_(images.size() / n_operators) {
        const std::size_t cubes = static_cast<std::size_t>(n * n * n);
        std::vector<std::int32_t> orbit_of(cubes * chambers_, -1);
        int count = 0;
        for (std::size_t at = 0; at < orbit_of.size(); ++at) {
            if (orbit_of[at] >= 0) continue;
            orbit_of[at] = count;
            const int cube = static_cast<int>(at / chambers_);
            const Vector corner = {cube / (n * n), cube / n % n, cube % n};
            const auto first = images.begin() + static_cast<std::ptrdiff_t>(at % chambers_ * n_operators);
            for (auto image = first; image != first + static_cast<std::ptrdiff_t>(n_operators); ++image) {
                const Vector to = image->rot * corner;
                const int x = Wrap(to[0] + image->shift[0]), y = Wrap(to[1] + image->shift[1]), z = Wrap(to[2] + image->shift[2]);
                orbit_of[Cube(x, y, z) * chambers_ + image->chamber] = count;
            }
            ++count;
        }
        words_ = static_cast<std::size_t>(count + 63) / 64;
        all_.assign(words_, ~std::uint64_t{0});
        if (count % 64 != 0) all_.back() = (std::uint64_t{1} << count % 64) - 1;
        bits_.assign(cubes * words_, 0);
        for (std::size_t at = 0; at < orbit_of.size(); ++at) {
            const std::size_t orbit = static_cast<std::size_t>(orbit_of[at]);
            bits_[at / chambers_ * words_ + orbit / 64] |= std::uint64_t{1} << orbit % 64;
        }
    }

    int Edge() const { return n_; }
    std::size_t Words() const { return words_; }
    const std::uint64_t* Of(int x, int y, int z) const { return &bits_[Cube(x, y, z) * words_]; }
    bool All(const std::uint64_t* set) const { return std::equal(all_.begin(), all_.end(), set); }

private:
    int Wrap(int i) const {
        while (i < 0) i += n_;
        while (i >= n_) i -= n_;
        return i;
    }
    std::size_t Cube(int x, int y, int z) const { return static_cast<std::size_t>((x * n_ + y) * n_ + z); }

    int n_;
    std::size_t chambers_, words_ = 0;
    std::vector<std::uint64_t> all_, bits_;  // bits_: for each cube the orbits that have a member there
};

// --- the box -----------------------------------------------------------------------------------------------------------------------------

struct Box {
    Vector low = {}, extent = {};
    int Volume() const { return extent[0] * extent[1] * extent[2]; }

    // The smaller one is to be preferred. Of boxes of one volume that is the one nearest to a cube, as the tables have it in most groups.
    auto Order() const {
        const auto beside_origin = 3 - std::count(low.begin(), low.end(), 0);
        const int edges = extent[0] + extent[1] + extent[2], distance = low[0] + low[1] + low[2];
        return std::tuple(Volume(), beside_origin, edges, extent[0], extent[1], distance, low);
    }
};

// Boxes that grow along z, then y, then x, from low bounds that all lie below `lows`.
class Box_Search {
public:
    explicit Box_Search(const Orbits& orbits)
        : orbits_(orbits),
          n_(orbits.Edge()),
          words_(orbits.Words()),
          best_{{}, {n_, n_, n_}},
          columns_(words_ * n_ * n_),
          slabs_(words_ * n_),
          sum_(words_) {}

    void Run(int lows, int largest) {
        largest_ = largest;
        for (box_.low[2] = 0; box_.low[2] < lows; ++box_.low[2]) Grow_Z(lows);
    }
    const Box& Best() const { return best_; }

private:
    void Join(std::uint64_t* set, const std::uint64_t* other) const {
        for (std::size_t i = 0; i < words_; ++i) set[i] |= other[i];
    }
    bool Too_Large() const { return box_.Volume() > std::min(largest_, best_.Volume()); }

    void Grow_Z(int lows) {
        std::fill(columns_.begin(), columns_.end(), 0);
        box_.extent = {1, 1, 1};
        for (; box_.extent[2] <= n_ && !Too_Large(); ++box_.extent[2]) {
            const int z = (box_.low[2] + box_.extent[2] - 1) % n_;
            for (int x = 0; x < n_; ++x)
                for (int y = 0; y < n_; ++y) Join(&columns_[(x * n_ + y) * words_], orbits_.Of(x, y, z));
            for (box_.low[1] = 0; box_.low[1] < lows; ++box_.low[1]) Grow_Y(lows);
        }
    }

    void Grow_Y(int lows) {
        std::fill(slabs_.begin(), slabs_.end(), 0);
        for (box_.extent[1] = 1; box_.extent[1] <= n_ && !Too_Large(); ++box_.extent[1]) {
            const int y = (box_.low[1] + box_.extent[1] - 1) % n_;
            for (int x = 0; x < n_; ++x) Join(&slabs_[x * words_], &columns_[(x * n_ + y) * words_]);
            for (box_.low[0] = 0; box_.low[0] < lows; ++box_.low[0]) Grow_X();
        }
        box_.extent[1] = 1;
    }

    void Grow_X() {
        std::fill(sum_.begin(), sum_.end(), 0);
        for (box_.extent[0] = 1; box_.extent[0] <= n_ && !Too_Large(); ++box_.extent[0]) {
            Join(sum_.data(), &slabs_[(box_.low[0] + box_.extent[0] - 1) % n_ * words_]);
            if (!orbits_.All(sum_.data())) continue;
            if (box_.Order() < best_.Order()) best_ = box_;
            break;
        }
        box_.extent[0] = 1;
    }

    const Orbits& orbits_;
    int n_, largest_ = 0;
    std::size_t words_;
    Box box_, best_;
    std::vector<std::uint64_t> columns_, slabs_, sum_;  // orbits in the present range of z; of z and y; of all three
};

// The grid that is fine enough for a group.
int Grid(std::span<const Seitz> operators, bool whole_cubes) {
    int step = twelfths;
    for (const Seitz& op : operators)
        for (const int t : op.tr) step = std::gcd(step, t);
    for (const int n : {4, 6, 8, 12})
        if (n * step % (2 * twelfths) == 0 && (whole_cubes || n % 3 == 0)) return n;
    return bound_unit;
}

}  // namespace

std::array<std::array<int, 2>, 3> Asymmetric_Box(std::span<const Seitz> operators) {
    Chambers chambers(operators);
    const int n = Grid(operators, chambers.Whole_Cubes()), scale = bound_unit / n;
    const std::vector<Chamber_Image> images = Images(operators, n, chambers);
    if (images.empty() || chambers.Count() * static_cast<std::size_t>(n * n * n) > most_orbits * operators.size())
        return {{{0, bound_unit}, {0, bound_unit}, {0, bound_unit}}};
    const Orbits orbits(n, operators.size(), images);
    Box_Search search(orbits);
    search.Run(1, n * n * n);
    const int cubes = n * n * n, multiplicity = static_cast<int>(operators.size());
    // Origins in odd twelfths need the finest grid, on which all low bounds would take seconds; no tabulated setting has one.
    if (n < bound_unit && chambers.Whole_Cubes() && cubes % multiplicity == 0 && search.Best().Volume() > cubes / multiplicity)
        search.Run(n, cubes / multiplicity);
    std::array<std::array<int, 2>, 3> bounds;
    for (std::size_t i = 0; i < 3; ++i) {
        const int extent = search.Best().extent[i], low = search.Best().low[i];
        bounds[i][0] = (low + extent > n ? low - n : low) * scale;
        bounds[i][1] = bounds[i][0] + extent * scale;
    }
    return bounds;
}

}  // namespace vntl
