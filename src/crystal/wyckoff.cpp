// A Wyckoff position is an orbit of flats: the points, lines and planes that the operators of a site-symmetry group leave where they are.
//
// The search starts with the whole space and cuts a representative of every orbit with the fixed points of each operator: what comes out
// is a flat of fewer dimensions, and a new orbit when none of the known flats is the same up to a translation of the lattice. Each flat is
// met in this way, for whatever group fixes it, some operators of that group cut it out one after the other, and a conjugate of a cut lies
// in the representative.
//
// It all happens in a primitive cell: no centring vector is left there, and translations stay twelfths. Points are whole multiples of
// 1/6912. The order of a site-symmetry group, at most 48, times its fixed point is a sum of lattice vectors and translations of operators,
// so that twelfths in a primitive cell lead to 1/576 of it, and to 1/6912 of the given cell.
#include "crystal/wyckoff.hpp"

#include <algorithm>
#include <array>
#include <compare>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <unordered_set>
#include <utility>

#include "crystal/point_group.hpp"
#include "crystal/whole_vectors.hpp"

namespace vntl {
namespace {

using Vector = Whole_Vector;
using Matrix = std::array<Vector, 3>;  // row by row

constexpr int unit = twelfths * twelfths * 48;
constexpr Matrix identity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

struct Motion {
    Matrix rot;
    Vector tr;  // 1/unit
};

// The points origin + s0 span[0] + s1 span[1] ..; the vectors of `span` are a basis of all lattice vectors along the flat.
struct Flat {
    int dimension = 0;
    Vector origin = {};  // 1/unit
    Matrix span = {};
};

int Fraction(int value) {
    const int rest = value % unit;
    return rest < 0 ? rest + unit : rest;
}

Vector operator*(const Matrix& m, const Vector& v) {
    Vector result;
    for (int i = 0; i < 3; ++i) result[i] = m[i][0] * v[0] + m[i][1] * v[1] + m[i][2] * v[2];
    return result;
}

Vector Plus(const Vector& a, const Vector& b, int times = 1) { return {a[0] + times * b[0], a[1] + times * b[1], a[2] + times * b[2]}; }

Flat Image(const Motion& g, const Flat& flat) {
    Flat image = {flat.dimension, Plus(g.rot * flat.origin, g.tr), {}};
    for (int& value : image.origin) value = Fraction(value);
    for (int j = 0; j < flat.dimension; ++j) image.span[j] = g.rot * flat.span[j];
    return image;
}

// Whole-number row operations that leave the same lattice: row echelon form with positive pivots, and what stands over a pivot at least 0
// and below it. Returns the rank.
int Echelon(std::span<Vector> rows) {
    std::size_t rank = 0;
    for (int column = 0; column < 3 && rank < rows.size(); ++column) {
        Vector& top = rows[rank];
        for (std::size_t i = rank + 1; i < rows.size(); ++i)
            while (rows[i][column] != 0) {
                top = Plus(top, rows[i], -(top[column] / rows[i][column]));
                std::swap(top, rows[i]);
            }
        if (top[column] == 0) continue;
        if (top[column] < 0) top = {-top[0], -top[1], -top[2]};
        for (std::size_t i = 0; i < rank; ++i) {
            int times = rows[i][column] / top[column];
            if (rows[i][column] - times * top[column] < 0) --times;
            rows[i] = Plus(rows[i], top, -times);
        }
        ++rank;
    }
    return static_cast<int>(rank);
}

// A basis of the whole-number vectors at right angles to a primitive one (in the sense of indices: h x + k y + l z = 0).
std::array<Vector, 2> Orthogonal(const Vector& v) {
    Matrix steps = identity;  // steps[i] . v = values[i] throughout
    Vector values = v;
    int pivot = 2;
    for (int i = 1; i >= 0; --i)
        while (values[i] != 0) {
            const int times = values[pivot] / values[i];
            steps[pivot] = Plus(steps[pivot], steps[i], -times);
            values[pivot] -= times * values[i];
            std::swap(steps[pivot], steps[i]);
            std::swap(values[pivot], values[i]);
        }
    std::array<Vector, 2> basis = {steps[0], steps[1]};
    Echelon(basis);
    return basis;
}

// --- the search, in a primitive cell -------------------------------------------------------------------------------------------------

// A cell without centring: its vectors in twelfths of the given one, in echelon form.
class Primitive_Cell {
public:
    explicit Primitive_Cell(std::span<const Translation12> lattice) {
        std::vector<Vector> rows;
        for (const Translation12& v : lattice) rows.push_back({v[0], v[1], v[2]});
        for (const Vector& v : identity) rows.push_back({twelfths * v[0], twelfths * v[1], twelfths * v[2]});
        Echelon(rows);
        std::copy_n(rows.begin(), 3, basis_.begin());
    }

    // Components along the primitive vectors of `v`, which is given along the cell's. Exact for each vector of the lattice, and for what
    // is a multiple of one.
    Vector Enter(const Vector& v) const {
        Vector result, rest = {v[0] * twelfths, v[1] * twelfths, v[2] * twelfths};
        for (int i = 0; i < 3; ++i) {
            result[i] = rest[i] / basis_[i][i];
            rest = Plus(rest, basis_[i], -result[i]);
        }
        return result;
    }

    // The same back, in twelfths.
    Vector Leave(const Vector& v) const {
        Vector result = {};
        for (int i = 0; i < 3; ++i) result = Plus(result, basis_[i], v[i]);
        return result;
    }

    Motion Enter(const Motion& g) const {
        Motion result = {{}, Enter(g.tr)};
        for (int j = 0; j < 3; ++j) {
            const Vector image = Enter(g.rot * basis_[j]);
            for (int i = 0; i < 3; ++i) result.rot[i][j] = image[i] / twelfths;
        }
        return result;
    }

private:
    Matrix basis_;
};

// Names a flat up to translations of the lattice: its dimension, its direction (of a plane the normal), and the whole-number functions
// that are constant on it, modulo 1.
std::uint64_t Key(const Flat& flat) {
    Vector direction = {}, values = {};
    if (flat.dimension == 0) values = flat.origin;
    if (flat.dimension == 1) {
        direction = Primitive(flat.span[0]);
        const auto functions = Orthogonal(direction);
        values = {Product(functions[0], flat.origin), Product(functions[1], flat.origin), 0};
    }
    if (flat.dimension == 2) {
        direction = Primitive(Cross(flat.span[0], flat.span[1]));
        values = {Product(direction, flat.origin), 0, 0};
    }
    std::uint64_t key = static_cast<std::uint64_t>(flat.dimension);
    if (flat.dimension > 0)
        for (const int d : direction) key = key << 12 | static_cast<std::uint64_t>(d & 0xfff);
    for (int i = flat.dimension; i < 3; ++i) key = key << 13 | static_cast<std::uint64_t>(Fraction(values[i - flat.dimension]));
    return key;
}

// The condition sum_j a[i][j] s_j = b[i] modulo 1 that makes a point of a flat, with the parameters s, a fixed point.
struct Congruence {
    Matrix a = {};
    Vector b = {};             // 1/unit
    Matrix change = identity;  // row j: the present j-th parameter's direction in terms of those at the start
    int rank = 0;
};

bool Find_Pivot(Congruence& c, int dimension) {
    int row = -1, column = 0;
    for (int i = c.rank; i < 3; ++i)
        for (int j = c.rank; j < dimension; ++j)
            if (c.a[i][j] != 0 && (row < 0 || std::abs(c.a[i][j]) < std::abs(c.a[row][column]))) row = i, column = j;
    if (row < 0) return false;
    std::swap(c.a[row], c.a[c.rank]);
    std::swap(c.b[row], c.b[c.rank]);
    for (Vector& line : c.a) std::swap(line[column], line[c.rank]);
    std::swap(c.change[column], c.change[c.rank]);
    return true;
}

// Clears row and column of the pivot; false while rests that are smaller than the pivot remain.
bool Clear_Pivot(Congruence& c, int dimension) {
    const int k = c.rank;
    bool clear = true;
    for (int i = k + 1; i < 3; ++i) {
        const int times = c.a[i][k] / c.a[k][k];
        c.a[i] = Plus(c.a[i], c.a[k], -times);
        c.b[i] -= times * c.b[k];
        clear = clear && c.a[i][k] == 0;
    }
    for (int j = k + 1; j < dimension; ++j) {
        const int times = c.a[k][j] / c.a[k][k];
        for (Vector& line : c.a) line[j] -= times * line[k];
        c.change[j] = Plus(c.change[j], c.change[k], -times);
        clear = clear && c.a[k][j] == 0;
    }
    return clear;
}

Congruence Fixed_Point_Condition(const Motion& g, const Flat& flat) {
    Congruence c;
    for (int j = 0; j < flat.dimension; ++j) {
        const Vector moved = Plus(g.rot * flat.span[j], flat.span[j], -1);
        for (int i = 0; i < 3; ++i) c.a[i][j] = moved[i];
    }
    c.b = Plus(Plus(flat.origin, g.tr, -1), g.rot * flat.origin, -1);
    while (Find_Pivot(c, flat.dimension))
        if (Clear_Pivot(c, flat.dimension)) ++c.rank;
    return c;
}

bool Solvable(const Congruence& c) {
    return std::all_of(c.b.begin() + c.rank, c.b.end(), [](int value) { return value % unit == 0; });
}

// An operator of finite order has at most eight separate sets of fixed points in a cell: an inversion has eight.
constexpr int most_fixed_sets = 8;

// Calls `found` with each flat that solves the condition. Parameter k is fixed modulo 1 / a[k][k].
template <typename Found>
void For_Each_Solution(const Congruence& c, const Flat& flat, Found found) {
    int solutions = 1;
    for (int k = 0; k < c.rank; ++k) {
        if (std::abs(c.a[k][k]) > most_fixed_sets) return;
        solutions *= std::abs(c.a[k][k]);
    }
    if (solutions > most_fixed_sets) return;
    const auto direction = [&](int k) {
        Vector v = {};
        for (int j = 0; j < flat.dimension; ++j) v = Plus(v, flat.span[j], c.change[k][j]);
        return v;
    };
    Flat part;
    for (int k = c.rank; k < flat.dimension; ++k) part.span[part.dimension++] = direction(k);
    for (int s = 0; s < solutions; ++s) {
        part.origin = flat.origin;
        for (int k = 0, rest = s; k < c.rank; ++k) {
            const int period = std::abs(c.a[k][k]);
            part.origin = Plus(part.origin, direction(k), (Fraction(c.b[k]) + rest % period * unit) / c.a[k][k]);
            rest /= period;
        }
        for (int& value : part.origin) value = Fraction(value);
        found(part);
    }
}

struct Position {
    Flat flat;
    std::vector<std::size_t> fixing;  // operators that leave each of its points where it is, up to the lattice
};

std::vector<Position> Find_Positions(const std::vector<Motion>& motions) {
    std::vector<Position> positions = {{{3, {}, identity}, {}}};
    std::unordered_set<std::uint64_t> known;
    const auto take = [&](const Flat& flat) {
        if (known.contains(Key(flat))) return;
        known.insert(Key(flat));
        for (const Motion& g : motions) known.insert(Key(Image(g, flat)));
        positions.push_back({flat, {}});
    };
    for (std::size_t p = 0; p < positions.size(); ++p) {
        const Flat flat = positions[p].flat;
        for (std::size_t g = 0; g < motions.size(); ++g) {
            const Congruence condition = Fixed_Point_Condition(motions[g], flat);
            if (!Solvable(condition)) continue;
            if (condition.rank == 0)
                positions[p].fixing.push_back(g);
            else
                For_Each_Solution(condition, flat, take);
        }
    }
    return positions;
}

// --- representative coordinates, in the given cell -----------------------------------------------------------------------------------

int Pivot(const Vector& v) { return v[0] != 0 ? 0 : v[1] != 0 ? 1 : 2; }

// The parameters of a flat become those of its coordinates x, y and z that can be chosen: "x,2x,z", not "y,2y,x+1/3".
void Choose_Parameters(Flat& flat) {
    Echelon(std::span(flat.span).first(static_cast<std::size_t>(flat.dimension)));
    for (int j = 0; j < flat.dimension; ++j) {
        const int pivot = Pivot(flat.span[j]), step = flat.span[j][pivot];
        flat.origin[pivot] = Fraction(flat.origin[pivot]);
        flat.origin = Plus(flat.origin, flat.span[j], -(flat.origin[pivot] / step));
    }
    for (int& value : flat.origin) value = Fraction(value);
}

struct Coordinate {
    Vector letters = {};  // times x, y, z
    int constant = 0;     // 1/unit
    bool operator==(const Coordinate&) const = default;
    bool Is_Constant() const { return letters == Vector{}; }
};

// `names` has the parameters as they were chosen: an image of the flat keeps their letters.
std::array<Coordinate, 3> Coordinates(const Flat& flat, const Flat& names) {
    std::array<Coordinate, 3> result;
    for (int i = 0; i < 3; ++i) {
        result[i].constant = flat.origin[i];
        for (int j = 0; j < flat.dimension; ++j) result[i].letters[Pivot(names.span[j])] += flat.span[j][i];
    }
    return result;
}

std::string Text(const Coordinate& coordinate) {
    std::string text;
    for (int k = 0; k < 3; ++k) {
        const int times = coordinate.letters[k];
        if (times == 0) continue;
        text += times < 0 ? "-" : text.empty() ? "" : "+";
        if (std::abs(times) != 1) text += std::to_string(std::abs(times));
        text += "xyz"[k];
    }
    if (coordinate.constant == 0) return text.empty() ? "0" : text;
    const int divisor = std::gcd(coordinate.constant, unit);
    if (!text.empty()) text += '+';
    return text + std::to_string(coordinate.constant / divisor) + '/' + std::to_string(unit / divisor);
}

std::string Text(const std::array<Coordinate, 3>& point) { return Text(point[0]) + ',' + Text(point[1]) + ',' + Text(point[2]); }

// Which coordinates a threefold axis makes equivalent: x, y and z if it is a diagonal of the cell, else x and y if there is one at all.
enum class Threefold { none, along_edge, along_diagonal };

Threefold Threefold_Of(const std::vector<Motion>& motions) {
    Threefold found = Threefold::none;
    for (const Motion& g : motions) {
        if (g.rot[0][0] + g.rot[1][1] + g.rot[2][2] != 0) continue;
        if (g.rot * Vector{1, 1, 1} == Vector{1, 1, 1}) return Threefold::along_diagonal;
        if (g.rot * Vector{0, 0, 1} == Vector{0, 0, 1}) found = Threefold::along_edge;
    }
    return found;
}

// The smallest one of an orbit is the representative to show.
struct Rank {
    int shifted = 0;      // coordinates such as x+1/4
    int minus_signs = 0;  // -x
    int multiples = 0;    // 2x, and 2x,x more than x,2x
    int unlike = 0;       // a point off the diagonal of a cell with a threefold axis there: 1/2,1/2,1/2 stands for 1/2,0,0 with it
    int size = 0;         // of the fractions: sum of numerators and denominators
    int shape = 0;
    Vector fractions = {};
    auto operator<=>(const Rank&) const = default;
};

// Lines along one axis by their letter, other lines and planes by the coordinate that is fixed: x,0,0 before 0,0,z and 0,y,z before x,y,0;
// x,x,z before x,y,x.
int Shape(const Flat& flat, const std::array<Coordinate, 3>& point) {
    const auto fixed = std::count_if(point.begin(), point.end(), [](const Coordinate& c) { return c.Is_Constant(); });
    if (fixed == 0) return flat.dimension == 2 && Pivot(flat.span[1]) != 2;
    const auto odd = std::find_if(point.begin(), point.end(), [&](const Coordinate& c) { return c.Is_Constant() == (fixed == 1); });
    return odd == point.end() ? 0 : static_cast<int>(odd - point.begin());
}

// Of equivalent axes the tables show 1/2,0,0 and x,1/4,1/4 where x, y and z are alike, and 1/2,0,1/2 and x,0,z where x and y are.
bool On_Another_Axis(const Flat& flat, const std::array<Coordinate, 3>& point, Threefold threefold) {
    if (threefold == Threefold::along_edge) return point[1] != Coordinate{};
    return threefold == Threefold::along_diagonal && flat.dimension < 2 && point[1] != point[2];
}

Rank Rank_Of(const Flat& flat, Threefold threefold) {
    const std::array<Coordinate, 3> point = Coordinates(flat, flat);
    Rank rank;
    for (const Coordinate& c : point) {
        rank.shifted += c.constant != 0 && !c.Is_Constant();
        for (const int times : c.letters) {
            rank.minus_signs += times < 0;
            rank.multiples += std::abs(times) > 1;
        }
        rank.size += (c.constant + unit) / std::gcd(c.constant, unit);
    }
    for (int j = 0; j < flat.dimension; ++j) rank.multiples += flat.span[j][Pivot(flat.span[j])] > 1;
    const bool diagonal = threefold == Threefold::along_diagonal && flat.dimension == 0;
    rank.unlike = diagonal && (point[0] != point[1] || point[1] != point[2]);
    rank.shape = 2 * Shape(flat, point) + On_Another_Axis(flat, point, threefold);
    rank.fractions = flat.origin;
    return rank;
}

struct Representative {
    Flat flat;
    Rank rank;
};

Representative Nicest_Image(const Flat& flat, const std::vector<Motion>& motions, std::span<const Translation12> lattice) {
    const Threefold threefold = Threefold_Of(motions);
    Representative best;
    bool first = true;
    for (const Motion& g : motions) {
        const Flat image = Image(g, flat);
        for (const Translation12& v : lattice) {
            Flat candidate = image;
            candidate.origin = Plus(candidate.origin, {v[0], v[1], v[2]}, unit / twelfths);
            Choose_Parameters(candidate);
            const Rank rank = Rank_Of(candidate, threefold);
            if (first || rank < best.rank) best = {candidate, rank};
            first = false;
        }
    }
    return best;
}

Flat In_Given_Cell(const Flat& flat, const Primitive_Cell& cell) {
    Flat result = {flat.dimension, cell.Leave(flat.origin), {}};
    for (int& value : result.origin) value /= twelfths;
    if (flat.dimension == 3) result.span = identity;
    if (flat.dimension == 1) result.span[0] = Primitive(cell.Leave(flat.span[0]));
    if (flat.dimension == 2) {
        const auto basis = Orthogonal(Primitive(Cross(Primitive(cell.Leave(flat.span[0])), Primitive(cell.Leave(flat.span[1])))));
        result.span = {basis[0], basis[1], {}};
    }
    return result;
}

// The images of a flat, each point once, those that differ by a vector of the lattice counted as one.
std::vector<std::string> Orbit_Texts(const Flat& flat, const std::vector<Motion>& motions, const Primitive_Cell& cell) {
    std::vector<std::pair<Vector, Matrix>> met;
    std::vector<std::string> texts;
    for (const Motion& g : motions) {
        const Flat image = Image(g, flat);
        Vector origin = cell.Enter(image.origin);
        for (int& value : origin) value = Fraction(value);
        if (std::find(met.begin(), met.end(), std::pair{origin, image.span}) != met.end()) continue;
        met.emplace_back(origin, image.span);
        texts.push_back(Text(Coordinates(image, flat)));
    }
    return texts;
}

// One operator for each rotation, the identity first.
std::vector<Seitz> Without_Centring(std::span<const Seitz> operators) {
    std::vector<Seitz> result = {Seitz{}};
    for (const Seitz& op : operators)
        if (std::none_of(result.begin(), result.end(), [&](const Seitz& met) { return met.rot == op.rot; })) result.push_back(op);
    return result;
}

Motion In_Units(const Seitz& op) {
    Motion g = {};
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) g.rot[i][j] = op.rot[3 * i + j];
        g.tr[i] = op.tr[i] * (unit / twelfths);
    }
    return g;
}

}  // namespace

std::vector<Wyckoff_Orbit> Wyckoff_Positions(std::span<const Seitz> operators, std::span<const Translation12> lattice) {
    if (std::any_of(operators.begin(), operators.end(), [](const Seitz& op) { return Rotation_Order(op.rot) == 0; })) return {};
    const Primitive_Cell cell(lattice);
    const std::vector<Seitz> reduced = Without_Centring(operators);
    std::vector<Motion> motions, primitive_motions;
    for (const Seitz& op : reduced) {
        motions.push_back(In_Units(op));
        primitive_motions.push_back(cell.Enter(motions.back()));
    }

    struct Told {
        int multiplicity, dimension;
        Rank rank;
        Wyckoff_Orbit orbit;
    };
    std::vector<Told> told;
    for (const Position& position : Find_Positions(primitive_motions)) {
        const auto [flat, rank] = Nicest_Image(In_Given_Cell(position.flat, cell), motions, lattice);
        std::vector<Rotation> site;
        for (const std::size_t g : position.fixing) site.push_back(reduced[g].rot);
        Point_Class site_class;
        const bool known = Laue_And_Point_Group(site, site_class).ok();
        const int multiplicity = static_cast<int>(operators.size() / std::max<std::size_t>(site.size(), 1));
        told.push_back(
            {multiplicity, flat.dimension, rank, {multiplicity, known ? site_class.point_group : "", Orbit_Texts(flat, motions, cell)}});
    }
    const auto order = [](const Told& t) { return std::tuple(t.multiplicity, t.dimension, t.rank.shape, t.rank.fractions); };
    std::sort(told.begin(), told.end(), [&](const Told& a, const Told& b) { return order(a) < order(b); });
    std::vector<Wyckoff_Orbit> orbits;
    for (Told& t : told) orbits.push_back(std::move(t.orbit));
    return orbits;
}

}  // namespace vntl
