#include "crystal/hkl_rows.hpp"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <numeric>
#include <optional>

#include "crystal/whole_vectors.hpp"

namespace vntl {

namespace {

using Vector = Whole_Vector;

bool Is_Zero(const Vector& v) { return v == Vector{}; }

struct Invariant_Space {
    bool is_line;
    Vector v;
};

// Of h R = h: the columns of R - 1 are at right angles to h. Nothing for the identity and where no h but 0 is left as it is.
std::optional<Invariant_Space> Invariant_Of(const Rotation& r) {
    const Vector columns[3] = {{r[0] - 1, r[3], r[6]}, {r[1], r[4] - 1, r[7]}, {r[2], r[5], r[8] - 1}};
    for (std::size_t i = 0; i < 3; ++i) {
        const Vector line = Cross(columns[i], columns[(i + 1) % 3]);
        if (Is_Zero(line)) continue;
        const Vector& third = columns[(i + 2) % 3];
        if (Product(line, third) != 0) return {};
        return Invariant_Space{true, Primitive(line)};
    }
    for (const Vector& column : columns)
        if (!Is_Zero(column)) return Invariant_Space{false, Primitive(column)};
    return {};
}

constexpr int Modulo12(int value) { return ((value % twelfths) + twelfths) % twelfths; }

bool Is_Whole(const Hkl& hkl, const Translation12& t) { return (hkl[0] * t[0] + hkl[1] * t[1] + hkl[2] * t[2]) % twelfths == 0; }

// A set of l modulo 12, a bit each.
using L_Set = std::uint16_t;
constexpr L_Set every_l = (1 << twelfths) - 1;

// The l with h t0 + k t1 + l t2 a whole number of turns, where `phase` stands for h t0 + k t1.
struct Whole_Phases {
    std::array<std::array<L_Set, twelfths>, twelfths> l_of = {};
    constexpr Whole_Phases() {
        for (int phase = 0; phase < twelfths; ++phase)
            for (int t = 0; t < twelfths; ++t)
                for (int l = 0; l < twelfths; ++l)
                    if ((phase + l * t) % twelfths == 0) l_of[phase][t] |= static_cast<L_Set>(1 << l);
    }
};
constexpr Whole_Phases whole_phases;

// The only l at which a row crosses a locus. `all` tells that it lies in it.
std::optional<int> Crossed_At(const Invariant_Locus& locus, int h, int k, bool& all) {
    const Vector& v = locus.v;
    all = false;
    if (locus.is_line) {
        if (std::int64_t{h} * v[1] != std::int64_t{k} * v[0]) return {};
        if (v[0] == 0 && v[1] == 0) {
            all = h == 0 && k == 0;
            return {};
        }
        const std::int64_t n = v[0] != 0 ? h / v[0] : k / v[1];
        if (n * v[0] != h || n * v[1] != k) return {};
        return static_cast<int>(n * v[2]);
    }
    const std::int64_t rest = -(std::int64_t{h} * v[0] + std::int64_t{k} * v[1]);
    if (v[2] == 0) {
        all = rest == 0;
        return {};
    }
    if (rest % v[2] != 0) return {};
    return static_cast<int>(rest / v[2]);
}

}  // namespace

Hkl_Rows::Hkl_Rows(std::span<const Seitz> operators, std::span<const Rotation> equivalents) : order_(static_cast<int>(equivalents.size())) {
    for (const Rotation& r : equivalents)
        if (const auto space = Invariant_Of(r)) ++Locus_Of(space->is_line, space->v).rotations;
    for (const Seitz& op : operators)
        if (op.rot == no_rotation && op.tr != Translation12{} && std::ranges::find(lattice_, op.tr) == lattice_.end())
            lattice_.push_back(op.tr);
    // Translations that differ by one of the lattice say the same of reflections that the lattice allows.
    const auto differ_by_lattice = [this](const Translation12& a, const Translation12& b) {
        Translation12 difference;
        for (std::size_t i = 0; i < 3; ++i) difference[i] = static_cast<std::int8_t>(Modulo12(a[i] - b[i]));
        return difference == Translation12{} || std::ranges::find(lattice_, difference) != lattice_.end();
    };
    for (const Seitz& op : operators) {
        const auto space = Invariant_Of(op.rot);
        if (!space || differ_by_lattice(op.tr, {})) continue;
        std::vector<Translation12>& known = Locus_Of(space->is_line, space->v).translations;
        if (std::ranges::none_of(known, [&](const Translation12& t) { return differ_by_lattice(op.tr, t); })) known.push_back(op.tr);
    }
}

Invariant_Locus& Hkl_Rows::Locus_Of(bool is_line, const std::array<int, 3>& v) {
    for (Invariant_Locus& locus : loci_)
        if (locus.is_line == is_line && locus.v == v) return locus;
    return loci_.emplace_back(Invariant_Locus{is_line, v, 0, {}});
}

void Hkl_Rows::Find(int h, int k, Hkl_Row& row) const {
    const int h12 = Modulo12(h), k12 = Modulo12(k);
    L_Set allowed = every_l;
    const auto keep = [&](const std::vector<Translation12>& translations) {
        for (const Translation12& t : translations) allowed &= whole_phases.l_of[(h12 * t[0] + k12 * t[1]) % twelfths][t[2]];
    };
    row.rotations = 1;
    row.crossings.clear();
    keep(lattice_);
    for (const Invariant_Locus& locus : loci_) {
        bool all = false;
        if (const std::optional<int> l = Crossed_At(locus, h, k, all)) {
            const Hkl reduced = {h12, k12, Modulo12(*l)};
            const bool absent = !std::ranges::all_of(locus.translations, [&](const Translation12& t) { return Is_Whole(reduced, t); });
            auto at = std::ranges::find(row.crossings, *l, &Hkl_Row::Crossing::l);
            if (at == row.crossings.end()) at = row.crossings.insert(at, {*l, 0, false});
            at->rotations += locus.rotations;
            at->absent |= absent;
        } else if (all) {
            row.rotations += locus.rotations;
            keep(locus.translations);
        }
    }
    // The solutions of such equations repeat at even steps.
    row.step = allowed == 0 ? 0 : twelfths / std::popcount(allowed);
    row.first = std::countr_zero(allowed);
}

}  // namespace vntl
