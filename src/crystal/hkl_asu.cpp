#include "crystal/hkl_asu.hpp"

#include <algorithm>

#include "crystal/close_group.hpp"

namespace vntl {

namespace {

// --- rotations that make the Laue groups, on coordinates ------------------------------------------------------------------------------

constexpr Rotation two_x = {1, 0, 0, 0, -1, 0, 0, 0, -1}, two_y = {-1, 0, 0, 0, 1, 0, 0, 0, -1}, two_z = {-1, 0, 0, 0, -1, 0, 0, 0, 1},
                   two_110 = {0, 1, 0, 1, 0, 0, 0, 0, -1}, two_1m10 = {0, -1, 0, -1, 0, 0, 0, 0, -1},
                   three_z = {0, -1, 0, 1, -1, 0, 0, 0, 1}, three_111 = {0, 0, 1, 1, 0, 0, 0, 1, 0}, four_z = {0, -1, 0, 1, 0, 0, 0, 0, 1},
                   mirror_110 = {0, 1, 0, 1, 0, 0, 0, 0, 1};

// --- the l of a row -------------------------------------------------------------------------------------------------------------------

constexpr Index_Range none, all = {-endless, endless}, from_0 = {0, endless}, from_1 = {1, endless};

Index_Range Triclinic(int h, int k) { return h > 0 || (h == 0 && k > 0) ? from_0 : from_1; }
Index_Range Monoclinic_A(int h, int k) { return h < 0 ? none : k >= 0 ? from_0 : from_1; }
Index_Range Monoclinic_B(int h, int k) { return k < 0 ? none : h >= 0 ? from_0 : from_1; }
Index_Range Monoclinic_C(int h, int k) { return k < 0 || (k == 0 && h < 0) ? none : from_0; }
Index_Range Orthorhombic(int h, int k) { return h < 0 || k < 0 ? none : from_0; }
Index_Range Fourfold_Or_Sixfold(int h, int k) { return (h > 0 && k > 0) || (h == 0 && k >= 0) ? from_0 : none; }
Index_Range High_Tetragonal_Or_Hexagonal(int h, int k) { return h >= k && k >= 0 ? from_0 : none; }

Index_Range Threefold(int h, int k) {
    if (h > 0 && k >= 0) return from_0;
    return (h >= 0 && h + k > 0) || (h == 0 && k == 0) ? from_1 : none;
}
Index_Range Threefold_31m(int h, int k) { return h < k || k < 0 ? none : k > 0 ? all : from_0; }
Index_Range Threefold_3m1(int h, int k) { return h < k || k < 0 ? none : h > k ? all : from_0; }

// From where h + k + l > 0, or = 0 with k <= 0.
int Least_Of_Sum(int h, int k) { return -(h + k) + (k > 0 ? 1 : 0); }
Index_Range Rhombohedral(int h, int k) {
    if (h < k) return none;
    const int low = h + k > 0 ? Least_Of_Sum(h, k) : 1 - (h + k);  // l < 0 where the sum is 0
    return {low, h == k ? h : h - 1};
}
Index_Range High_Rhombohedral(int h, int k) { return h < k ? none : Index_Range{Least_Of_Sum(h, k), k}; }

Index_Range Cubic(int h, int k) { return h < 0 || k < 0 ? none : Index_Range{0, h >= k ? k : h - 1}; }
Index_Range High_Cubic(int h, int k) { return h >= k && k >= 0 ? Index_Range{0, k} : none; }

Index_Range Half_Sphere(int h, int k) { return h > 0 || (h == 0 && k > 0) ? all : h == 0 && k == 0 ? from_1 : none; }

// --- the rules ------------------------------------------------------------------------------------------------------------------------

constexpr Rotation same = no_rotation;

constexpr Asu_Rule rules[] = {
    {"hkl: l >=0    hk0: h >=0    0k0: k >=0", 2, {same, same, same}, Triclinic},
    {"hkl: k >=0, l >=0   hk0: h >=0", 4, {two_y, same, same}, Monoclinic_B},
    {"hkl: k >=0, l >=0   h0l: h >=0", 4, {two_z, same, same}, Monoclinic_C},
    {"hkl: h >=0, l >=0   hk0: k >=0", 4, {two_x, same, same}, Monoclinic_A},
    {"hkl: h >=0, k >=0, l >=0", 8, {two_x, two_z, same}, Orthorhombic},
    {"hkl: h >=0, l >=0 with k >=0 if h =0 and k >0 if h >0", 8, {four_z, same, same}, Fourfold_Or_Sixfold},
    {"hkl: h >=0, k >=0, l >=0 and h >=k", 16, {four_z, two_x, same}, High_Tetragonal_Or_Hexagonal},
    {"hkl: h >=0, h+k>0, l>0    00l: l >0    hk0: h>0, k>=0", 6, {three_z, same, same}, Threefold},
    {"hkl: h >=0, h >=k >0   and  h0l: h >=0, l >=0", 12, {three_z, two_1m10, same}, Threefold_31m},
    {"hkl: h >=0, k >=0, h >=k  and   hhl: h >=0, l >=0 ", 12, {three_z, two_110, same}, Threefold_3m1},
    {"hkl: h >=k, h >l and h+k+l >0, or k <=0, l <0 and h+k+l =0   hhh: h >0", 6, {three_111, same, same}, Rhombohedral},
    {"hkl: h >=k >=l and h+k+l >0, or k <=0 and h+k+l =0", 12, {three_111, mirror_110, same}, High_Rhombohedral},
    {"hkl: h > 0, k > 0, l >=0   and  0kl: k >=0, l >=0 ", 12, {three_z, two_z, same}, Fourfold_Or_Sixfold},
    {"hkl: h >=0, k >=0, l >=0 with h >=k", 24, {three_z, two_z, two_110}, High_Tetragonal_Or_Hexagonal},
    {"hkl: h > l, k > l, l >=0  and   hkk: k >=0, h >=k", 24, {three_111, two_z, same}, Cubic},
    {"hkl: h >=0, k >=0, l >=0 with h >=k  and k >=l", 48, {three_111, two_z, two_110}, High_Cubic},
};

constexpr Asu_Rule any_other = {
    "hkl: of all equivalents the one with the largest h, then k, then l", 0, {same, same, same}, Half_Sphere, true};

void Add(std::vector<Rotation>& rotations, const Rotation& r) {
    if (std::ranges::find(rotations, r) == rotations.end()) rotations.push_back(r);
}

}  // namespace

Hkl_Rotations Rotations_On_Hkl(std::span<const Seitz> operators) {
    Hkl_Rotations result;
    std::vector<Rotation>& group = result.laue;
    group.push_back(no_rotation);
    for (const Seitz& op : operators) Add(group, op.rot);
    // Operators that were given as they stand need not be closed; equivalence is.
    for (std::size_t i = 1; i < group.size() && group.size() <= most_rotations; ++i)
        for (std::size_t j = 1; j <= i && group.size() <= most_rotations; ++j) {
            Add(group, group[i] * group[j]);
            Add(group, group[j] * group[i]);
        }
    result.point_order = group.size();
    if (std::ranges::find(group, inversion) == group.end())
        for (std::size_t i = 0; i < result.point_order; ++i) group.push_back(-group[i]);
    return result;
}

const Asu_Rule& Rule_Of(const Hkl_Rotations& rotations) {
    const std::vector<Rotation>& laue = rotations.laue;
    const auto holds = [&](const Rotation& r) { return std::ranges::find(laue, r) != laue.end(); };
    for (const Asu_Rule& rule : rules)
        if (rule.order == laue.size() && std::ranges::all_of(rule.made, holds)) return rule;
    return any_other;
}

bool In_Asu(const Hkl& hkl, const Asu_Rule& rule, std::span<const Rotation> laue) {
    if (!rule.l_of(hkl[0], hkl[1]).Holds(hkl[2])) return false;
    return !rule.largest || std::ranges::none_of(laue, [&](const Rotation& r) { return Image(hkl, r) > hkl; });
}

}  // namespace vntl
