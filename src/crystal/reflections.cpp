#include "crystal/reflections.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <new>
#include <numbers>
#include <numeric>
#include <span>
#include <string>

#include "crystal/hkl_asu.hpp"
#include "crystal/hkl_rows.hpp"
#include "crystal/hkl_sphere.hpp"

namespace vntl {

namespace {

Status Find_Limits(float limit1, float limit2, std::string_view code, S_Limits& limits) {
    if (std::isnan(limit1) || std::isnan(limit2)) return Status::Fail("The limits of the reflections are no numbers");
    limits = {std::min(limit1, limit2), std::max(limit1, limit2)};
    if (code != "r" && code != "R") return Status::Done();
    if (!(limits.low > 0)) return Status::Fail("The limits of d must be above 0");
    // One step further out: a spacing that was rounded when it was given still counts as reached.
    limits = {std::nextafter(1 / (2 * limits.high), 0.0f), std::nextafter(1 / (2 * limits.low), std::numeric_limits<float>::infinity())};
    return Status::Done();
}

struct Extent {
    double reflections = 0, rows = 0;  // unique ones
};

// Reflections are estimated by the volume of the shell, by its sections with planes of low symmetry, and by the axes, of which a flat cell
// has more. `order` rotations make reflections equivalent.
Extent Expected(const Crystal_Cell_Type& cell, S_Limits limits, std::size_t order, std::size_t lattice_points) {
    const double high = 2.0 * limits.high, low = 2.0 * std::max(limits.low, 0.0f);
    const double n = static_cast<double>(order), n_in_plane = std::max(n / 2, 1.0);
    const auto edge = [&](std::size_t i) { return std::sqrt(cell.GD[i][i]); };
    const auto face = [&](std::size_t i, std::size_t j) {
        return std::sqrt(std::max(cell.GD[i][i] * cell.GD[j][j] - cell.GD[i][j] * cell.GD[i][j], 0.0));
    };
    const double volume = 4 * std::numbers::pi / 3 * (high * high * high - low * low * low) * cell.CellVol;
    const double sections = std::numbers::pi * (high * high - low * low) * (face(0, 1) + face(1, 2) + face(0, 2));
    const double axes = high * (edge(0) + edge(1) + edge(2));
    return {(volume / n + sections / n_in_plane) / static_cast<double>(lattice_points) + axes,
            std::numbers::pi * high * high * face(0, 1) / n_in_plane + axes};
}

// Fails where `expected` is above `most`.
Status Refuse_More(double expected, std::size_t most, std::string_view of_what, std::string_view done) {
    if (expected <= static_cast<double>(most)) return Status::Done();
    constexpr double countable = 1e15;
    std::string about = "countless";
    if (expected < countable) {
        const double unit = std::pow(10, std::floor(std::log10(expected)) - 1);
        about = "about " + std::to_string(std::llround(std::round(expected / unit) * unit));
    }
    return Status::Fail("This window would give " + about + ' ' + std::string(of_what) + ", more than the " + std::to_string(most) +
                        " that are " + std::string(done) + " at once");
}

Status Refuse_Too_Many(const Extent& extent, std::size_t most) {
    const Status status = Refuse_More(extent.reflections, most, "reflections", "generated");
    return status.failed ? status : Refuse_More(extent.rows, most, "rows of reflections", "looked through");
}

std::size_t Lattice_Points(std::span<const Seitz> operators) {
    return std::max<std::size_t>(std::ranges::count(operators, no_rotation, &Seitz::rot), 1);
}

// --- generation -----------------------------------------------------------------------------------------------------------------------

class Generator {
public:
    Generator(const Crystal_Cell_Type& cell, std::span<const Seitz> operators, const Hkl_Rotations& rotations, bool friedel,
              S_Limits limits, std::vector<Reflection_Type>& found)
        : cell_(cell),
          rotations_(rotations),
          rule_(Rule_Of(rotations)),
          rows_(operators, rotations.Equivalents(friedel)),
          sphere_(cell, limits),
          limits_(limits),
          found_(found) {}

    void Run() {
        const Index_Range h_range = sphere_.Of_H();
        for (int h = h_range.low; h <= h_range.high; ++h) {
            const Index_Range k_range = sphere_.Of_K(h);
            for (int k = k_range.low; k <= k_range.high; ++k) Add_Row(h, k);
        }
    }

private:
    void Add_Row(int h, int k) {
        Index_Range of_unit = rule_.l_of(h, k);
        if (h == 0 && k == 0) of_unit.low = std::max(of_unit.low, 1);  // without the origin
        if (of_unit.Is_Empty()) return;
        std::array<Index_Range, 2> stretches = sphere_.Of_L(h, k);
        for (Index_Range& stretch : stretches) stretch = {std::max(stretch.low, of_unit.low), std::min(stretch.high, of_unit.high)};
        if (stretches[0].Is_Empty() && stretches[1].Is_Empty()) return;
        rows_.Find(h, k, row_);
        if (row_.step == 0) return;
        const std::size_t start = found_.size();
        const L_Quadratic quadratic(cell_.GR, h, k);
        const int mult = rows_.Order() / row_.rotations;
        for (const auto& [low, high] : stretches)
            for (int l = low + Modulo(row_.first - low, row_.step); l <= high; l += row_.step)
                if (const float s = quadratic.S(l); limits_.Hold(s)) found_.push_back({{h, k, l}, mult, s});
        if (found_.size() == start) return;
        Mend_Crossings(start);
        if (rule_.largest) Drop(start, [this](const Reflection_Type& reflection) { return !In_Asu(reflection.H, rule_, rotations_.laue); });
    }

    static int Modulo(int value, int step) { return (value % step + step) % step; }

    void Mend_Crossings(std::size_t start) {
        bool some_absent = false;
        for (const Hkl_Row::Crossing& crossing : row_.crossings) {
            const auto l_of = [](const Reflection_Type& reflection) { return reflection.H[2]; };
            const auto at = std::ranges::lower_bound(found_.begin() + start, found_.end(), crossing.l, {}, l_of);
            if (at == found_.end() || at->H[2] != crossing.l) continue;
            at->Mult = crossing.absent ? 0 : rows_.Order() / (row_.rotations + crossing.rotations);
            some_absent |= crossing.absent;
        }
        if (some_absent) Drop(start, [](const Reflection_Type& reflection) { return reflection.Mult == 0; });
    }

    template <class Bad>
    void Drop(std::size_t start, Bad bad) {
        found_.erase(std::remove_if(found_.begin() + start, found_.end(), bad), found_.end());
    }

    const Crystal_Cell_Type& cell_;
    const Hkl_Rotations& rotations_;
    const Asu_Rule& rule_;
    const Hkl_Rows rows_;
    const Hkl_Sphere sphere_;
    const S_Limits limits_;
    std::vector<Reflection_Type>& found_;
    Hkl_Row row_;
};

Hkl Negative(const Hkl& hkl) { return {-hkl[0], -hkl[1], -hkl[2]}; }

// Without Friedel's law -h -k -l is a reflection of its own where no rotation of the point group makes it of h k l.
void Add_Friedel_Mates(std::span<const Rotation> point_group, std::vector<Reflection_Type>& found) {
    const std::size_t n = found.size();
    for (std::size_t i = n; i-- > 0;) {  // backwards their indices rise
        const Hkl mate = Negative(found[i].H);
        const auto makes_it = [&](const Rotation& r) { return Image(found[i].H, r) == mate; };
        if (std::ranges::none_of(point_group, makes_it)) found.push_back({mate, found[i].Mult, found[i].S});
    }
    std::ranges::inplace_merge(found, found.begin() + n, {}, &Reflection_Type::H);
}

// --- order ----------------------------------------------------------------------------------------------------------------------------

constexpr int digit_bits = 12;
using Counters = std::array<std::uint32_t, 1 << digit_bits>;

// By one digit of a key, equal ones as they stand. `first`: how many reflections have each digit.
template <class Digit>
void Distribute(const std::vector<Reflection_Type>& from, Counters& first, Digit digit, std::vector<Reflection_Type>& to) {
    std::exclusive_scan(first.begin(), first.end(), first.begin(), 0u);
    for (const Reflection_Type& reflection : from) to[first[digit(reflection)]++] = reflection;
}

// By rising S, equal S as they stand: S as a whole number of 24 bits, as many as S itself has at the upper limit, is sorted digit by digit.
// What differs by less, far below the limit, is exchanged in the end.
void Sort_By_S(std::vector<Reflection_Type>& reflections, float highest) {
    const double scale = ((1 << 2 * digit_bits) - 1) / static_cast<double>(highest);
    const auto key = [scale](const Reflection_Type& reflection) { return static_cast<std::uint32_t>(reflection.S * scale); };
    const auto low_digit = [&](const Reflection_Type& reflection) { return key(reflection) % (1 << digit_bits); };
    const auto high_digit = [&](const Reflection_Type& reflection) { return key(reflection) >> digit_bits; };
    Counters low = {}, high = {};
    for (const Reflection_Type& reflection : reflections) {
        ++low[low_digit(reflection)];
        ++high[high_digit(reflection)];
    }
    std::vector<Reflection_Type> other(reflections.size());
    Distribute(reflections, low, low_digit, other);
    Distribute(other, high, high_digit, reflections);
    for (std::size_t n = 1; n < reflections.size(); ++n)
        for (std::size_t i = n; i > 0 && reflections[i - 1].S > reflections[i].S; --i) std::swap(reflections[i - 1], reflections[i]);
}

}  // namespace

int Get_MaxNumRef(float s_max, double volume, float s_min, int mult) {
    const auto cube = [](double s) { return 8 * s * s * s; };
    const double v = cube(s_max) * 1.05 - cube(s_min);
    const auto bounded = [](double n) {
        constexpr double largest = std::numeric_limits<int>::max();
        return std::isnan(n) ? 0 : static_cast<int>(std::clamp(n, -largest, largest));
    };
    const int n = bounded(v * 12.566371 * volume / 3);
    return mult == 0 ? n : bounded(static_cast<double>(2 * std::int64_t{n} / std::max(mult, 1)));
}

float Hkl_S(const Hkl& hkl, const Crystal_Cell_Type& cell) { return L_Quadratic(cell.GR, hkl[0], hkl[1]).S(hkl[2]); }

double Hkl_D(const Hkl& hkl, const Crystal_Cell_Type& cell) { return 1 / std::sqrt(L_Quadratic(cell.GR, hkl[0], hkl[1]).Square(hkl[2])); }

bool Hkl_Absent(const Hkl& hkl, const Space_Group_Type& group) {
    return std::ranges::any_of(Exact_Operators(group), [&](const Seitz& op) {
        const std::int64_t phase = std::int64_t{hkl[0]} * op.tr[0] + std::int64_t{hkl[1]} * op.tr[1] + std::int64_t{hkl[2]} * op.tr[2];
        return Image(hkl, op.rot) == hkl && phase % twelfths != 0;
    });
}

Hkl Asu_Hkl(const Hkl& hkl, const Space_Group_Type& group) {
    const Hkl_Rotations rotations = Rotations_On_Hkl(Exact_Operators(group));
    const Asu_Rule& rule = Rule_Of(rotations);
    for (const Rotation& r : rotations.laue)
        if (const Hkl image = Image(hkl, r); In_Asu(image, rule, rotations.laue)) return image;
    return {};
}

std::string_view Asu_Hkl_Rule(const Space_Group_Type& group) { return Rule_Of(Rotations_On_Hkl(Exact_Operators(group))).text; }

int Get_Mult(const Hkl& hkl, const Space_Group_Type& group, bool friedel) {
    const Hkl_Rotations rotations = Rotations_On_Hkl(Exact_Operators(group));
    const std::span<const Rotation> equivalents = rotations.Equivalents(friedel);
    const auto leaves_it = [&](const Rotation& r) { return Image(hkl, r) == hkl; };
    return static_cast<int>(equivalents.size() / std::ranges::count_if(equivalents, leaves_it));
}

Status Hkl_Uni_Reflect(const Crystal_Cell_Type& cell, const Space_Group_Type& group, bool friedel, float limit1, float limit2,
                       std::string_view code, Reflection_List_Type& list, bool no_order, std::size_t most) {
    constexpr std::size_t most_of_all = 100'000'000;  // with which indices are far from the ends of a whole number
    list.NRef = 0;
    list.Ref.clear();
    if (!(cell.GD[0][0] > 0 && cell.GR[2][2] > 0 && cell.CellVol > 0)) return Status::Fail(bad_cell);
    S_Limits limits;
    if (const Status status = Find_Limits(limit1, limit2, code, limits); status.failed) return status;
    if (!(limits.high > 0)) return Status::Done();
    const std::vector<Seitz> operators = Exact_Operators(group);
    const Hkl_Rotations rotations = Rotations_On_Hkl(operators);
    const Extent extent = Expected(cell, limits, rotations.Equivalents(friedel).size(), Lattice_Points(operators));
    if (const Status status = Refuse_Too_Many(extent, std::min(most, most_of_all)); status.failed) return status;
    try {
        list.Ref.reserve(static_cast<std::size_t>(extent.reflections));
        Generator(cell, operators, rotations, friedel, limits, list.Ref).Run();
        if (!friedel && rotations.point_order < rotations.laue.size()) Add_Friedel_Mates(rotations.Equivalents(false), list.Ref);
        if (!no_order) Sort_By_S(list.Ref, limits.high);
    } catch (const std::bad_alloc&) {
        list.Ref = {};
        return Status::Fail("There is not enough memory for the reflections of this window");
    }
    list.NRef = static_cast<int>(list.Ref.size());
    return Status::Done();
}

}  // namespace vntl
