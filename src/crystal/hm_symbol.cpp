#include "crystal/hm_symbol.hpp"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "base/scan.hpp"
#include "base/text.hpp"
#include "crystal/whole_vectors.hpp"

namespace vntl {

namespace {

constexpr std::string_view planes = "ABCDEMN";
constexpr std::size_t most_directions = 3;

Status Refused(std::string_view symbol, std::string_view why) {
    return Status::Fail(" The symbol: " + std::string(symbol) + std::string(why));
}

// The rotation part and the plane of one direction.
Status Parse_Direction(std::string_view text, HM_Direction& direction) {
    bool negative = false, slash = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const std::string_view symbol = text.substr(i, 1);
        const bool axis = c >= '1' && c <= '6', plane = Contains(planes, symbol);
        if (c == '5' && direction.order == 0) return Status::Fail(" The fivefold axis is not allowed");
        if ((c == '-' && negative) || (c == '/' && slash)) return Refused(symbol, " has been repeated within the same symmetry direction");
        if (axis && direction.plane != ' ')
            return slash ? Refused(text, " is not allowed")
                         : Status::Fail(" A mirror plane cannot be immediately followed by a rotation axis");
        if (plane && direction.plane != ' ') return Status::Fail(" There is more than one plane within the same symmetry direction");
        if (plane && direction.order != 0 && !slash)
            return Status::Fail(" A rotation axis cannot be immediately followed by a plane within the same symmetry direction");
        if (axis && direction.screw != 0) return Refused(symbol, " has been repeated within the same symmetry direction");
        if (c == '-' && direction.order == 0 && direction.plane == ' ')
            negative = true;
        else if (c == '/' && direction.order != 0 && direction.plane == ' ')
            slash = true;
        else if (plane && !negative)
            direction.plane = c;
        else if (axis && direction.order == 0)
            direction.order = c - '0';
        else if (axis && !slash) {
            if (negative || c - '0' >= direction.order) return Status::Fail(" Screw axis: " + std::string(text) + " not allowed");
            direction.screw = c - '0';
        } else
            return Refused(Contains("123456-/", symbol) || plane ? text : symbol, " is not allowed");
    }
    if (slash && direction.plane == ' ') return Refused(text, " is not allowed");
    if (negative && direction.order == 0) return Refused(text, " is not allowed");
    if (negative) direction.order = -direction.order;
    return Status::Done();
}

// The operator's translation along its axis (of order n) or in its plane (n = 2), in twelfths times n: t + R t + ... + R^(n-1) t.
Hkl Intrinsic(const Rotation& rot, const Hkl& tr, int n) {
    Hkl sum = {}, turned = tr;
    for (int k = 0; k < n; ++k) {
        for (std::size_t i = 0; i < 3; ++i) sum[i] += turned[i];
        turned = rot * turned;
    }
    return sum;
}

// 1 for a rotation that turns by 360/n degrees about `axis`, -1 for its inverse.
int Sense(const Rotation& rot, const Hkl& axis) {
    for (const Hkl& e : {Hkl{1, 0, 0}, Hkl{0, 1, 0}, Hkl{0, 0, 1}}) {
        const Hkl image = rot * e;
        const int turn = Product(axis, Cross(e, image));
        if (turn != 0) return turn > 0 ? 1 : -1;
    }
    return 1;
}

// Calls `fits` with the translation, in twelfths, of each operator of that rotation, in the cell and in those around it.
template <class Fits>
bool Any_Translation(const Closed_Group& group, const Seitz& seitz, Fits fits) {
    for (const Translation12& vector : group.lattice)
        for (int cell = 0; cell < 27; ++cell) {
            const Hkl cells = {cell % 3 - 1, cell / 3 % 3 - 1, cell / 9 - 1};
            Hkl tr;
            for (std::size_t i = 0; i < 3; ++i) tr[i] = seitz.tr[i] + vector[i] + twelfths * cells[i];
            if (fits(tr)) return true;
        }
    return false;
}

// Is the glide g, in twelfths times two, one of the letter's, for a plane across `axis`?
bool Glides(const Hkl& g, const Hkl& axis, char plane) {
    const auto all = [&](auto fits) { return std::all_of(g.begin(), g.end(), fits); };
    const auto halves = [](int t) { return t % twelfths == 0; };  // times two: a half is 12
    const auto odd = [&](std::size_t i) { return g[i] % (2 * twelfths) != 0; };
    const int count = (odd(0) ? 1 : 0) + (odd(1) ? 1 : 0) + (odd(2) ? 1 : 0);
    switch (plane) {
        case 'M':
            return g == Hkl{};
        case 'A':
            return all(halves) && odd(0) && count == 1;
        case 'B':
            return all(halves) && odd(1) && count == 1;
        case 'C':
            return all(halves) && odd(2) && (count == 1 || (axis[0] != 0 && axis[1] != 0 && axis[2] != 0));
        case 'N':
            return all(halves) && count >= 2;
        case 'D':
            return all([](int t) { return t % (twelfths / 2) == 0; }) &&
                   std::count_if(g.begin(), g.end(), [](int t) { return t % twelfths != 0; }) >= 2;
        default:
            return false;
    }
}

}  // namespace

Status Parse_HM_Symbol(std::string_view text, HM_Symbol& symbol) {
    text = Trim(text);
    std::vector<Translation12> lattice;
    if (const Status status = Lattice_From_Letter(text.empty() ? ' ' : text.front(), lattice); status.failed) return status;
    HM_Symbol found;
    found.lattice = text.front();
    std::vector<std::string_view> words;
    if (Get_Words(text.substr(1), words, most_directions, text.size()).failed || words.empty())
        return Refused(text.substr(0, 20), " is not allowed");
    for (const std::string_view word : words)
        if (const Status status = Parse_Direction(word, found.directions.emplace_back()); status.failed) return status;
    symbol = std::move(found);
    return Status::Done();
}

Hkl HM_Axis(std::string_view system, bool rhombohedral, std::size_t place) {
    constexpr Hkl a = {1, 0, 0}, b = {0, 1, 0}, c = {0, 0, 1}, diagonal = {1, 1, 1}, face = {1, -1, 0};
    if (system == "Cubic") return place == 0 ? c : place == 1 ? diagonal : face;
    if (system == "Trigonal" && rhombohedral) return place == 0 ? diagonal : face;
    if (system == "Monoclinic" || system == "Orthorhombic") return place == 0 ? a : place == 1 ? b : c;
    return place == 0 ? c : place == 1 ? a : face;
}

bool Has_Axis(const Closed_Group& group, const Hkl& axis, int order, int screw) {
    if (order == 1) return true;
    if (order == -1) return group.centring != 1;
    for (const Seitz& seitz : group.Operators()) {
        if (Rotation_Order(seitz.rot) != order) continue;
        const Hkl image = (order < 0 ? -seitz.rot : seitz.rot) * axis;
        if (image != axis) continue;
        if (order < 0) return true;
        const int step = twelfths * screw * Sense(seitz.rot, axis), period = twelfths * order;  // times the order, as what lies along is
        if (Any_Translation(group, seitz, [&](const Hkl& tr) {
                const Hkl along = Intrinsic(seitz.rot, tr, order);
                for (std::size_t i = 0; i < 3; ++i)
                    if ((along[i] - step * axis[i]) % period != 0) return false;
                return true;
            }))
            return true;
    }
    return false;
}

bool Has_Plane(const Closed_Group& group, const Hkl& axis, char plane) {
    for (const Seitz& seitz : group.Operators()) {
        if (Rotation_Order(seitz.rot) != -2 || -seitz.rot * axis != axis) continue;
        if (plane == 'E') return Has_Plane(group, axis, 'A') + Has_Plane(group, axis, 'B') + Has_Plane(group, axis, 'C') >= 2;
        if (Any_Translation(group, seitz, [&](const Hkl& tr) { return Glides(Intrinsic(seitz.rot, tr, 2), axis, plane); })) return true;
    }
    return false;
}

}  // namespace vntl
