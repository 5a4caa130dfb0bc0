// The reference of all lists is the whole sphere of reciprocal lattice points: absences, equivalents and multiplicities are found there by
// trying every operator on every point, in floating point.
#include "crystal/reflections.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <numbers>
#include <random>
#include <set>
#include <sstream>
#include <tuple>

#include "crystal/settings.hpp"
#include "crystal/testing.hpp"

namespace vntl {
namespace {

using test::Group;
using Vector = std::array<double, 3>;

constexpr float infinite = std::numeric_limits<float>::infinity(), no_number = std::numeric_limits<float>::quiet_NaN();

Crystal_Cell_Type Cell(const std::array<float, 6>& c) {
    Crystal_Cell_Type cell;
    EXPECT_TRUE(Set_Crystal_Cell({c[0], c[1], c[2]}, {c[3], c[4], c[5]}, cell).ok());
    return cell;
}

// Reciprocal basis vectors in Cartesian axes, a along x, b in the plane of x and y.
std::array<Vector, 3> Reciprocal_Basis(const Crystal_Cell_Type& c) {
    const auto radians = [](float angle) { return angle * std::numbers::pi / 180; };
    const double ca = std::cos(radians(c.ang[0])), cb = std::cos(radians(c.ang[1])), cg = std::cos(radians(c.ang[2]));
    const double sg = std::sin(radians(c.ang[2])), x = (ca - cb * cg) / sg;
    const std::array<Vector, 3> axes = {Vector{c.cell[0], 0, 0}, Vector{c.cell[1] * cg, c.cell[1] * sg, 0},
                                        Vector{c.cell[2] * cb, c.cell[2] * x, c.cell[2] * std::sqrt(1 - cb * cb - x * x)}};
    const double volume = axes[0][0] * axes[1][1] * axes[2][2];
    std::array<Vector, 3> basis;
    for (std::size_t i = 0; i < 3; ++i) {
        const Vector &u = axes[(i + 1) % 3], &v = axes[(i + 2) % 3];
        basis[i] = {(u[1] * v[2] - u[2] * v[1]) / volume, (u[2] * v[0] - u[0] * v[2]) / volume, (u[0] * v[1] - u[1] * v[0]) / volume};
    }
    return basis;
}

double Length(const Hkl& hkl, const std::array<Vector, 3>& basis) {
    double sum = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double x = hkl[0] * basis[0][i] + hkl[1] * basis[1][i] + hkl[2] * basis[2][i];
        sum += x * x;
    }
    return std::sqrt(sum);
}

Hkl Image_By(const Hkl& hkl, const Sym_Oper_Type& op) {
    Hkl image = {};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) image[j] += hkl[i] * op.rot[i][j];
    return image;
}

bool Absent_By_Phases(const Hkl& hkl, const Space_Group_Type& group) {
    return std::ranges::any_of(group.operators, [&](const Sym_Oper_Type& op) {
        const double phase = double{op.tr[0]} * hkl[0] + double{op.tr[1]} * hkl[1] + double{op.tr[2]} * hkl[2];
        return Image_By(hkl, op) == hkl && std::fabs(phase - std::round(phase)) > 0.0002;
    });
}

std::set<Hkl> Orbit(const Hkl& hkl, const Space_Group_Type& group, bool friedel) {
    std::set<Hkl> orbit;
    for (const Sym_Oper_Type& op : group.operators) {
        const Hkl image = Image_By(hkl, op);
        orbit.insert(image);
        if (friedel) orbit.insert({-image[0], -image[1], -image[2]});
    }
    return orbit;
}

// A cell that the group leaves as it is: the metric of an oblique one, averaged over the rotations.
Crystal_Cell_Type Cell_For(const Space_Group_Type& group, std::mt19937& random) {
    std::uniform_real_distribution<double> length(4, 9), angle(75, 105);
    const Crystal_Cell_Type oblique =
        Cell({static_cast<float>(length(random)), static_cast<float>(length(random)), static_cast<float>(length(random)),
              static_cast<float>(angle(random)), static_cast<float>(angle(random)), static_cast<float>(angle(random))});
    Tensor3 sum = {};
    for (const Sym_Oper_Type& op : group.operators)
        for (std::size_t i = 0; i < 9; ++i)
            for (std::size_t j = 0; j < 9; ++j) sum[i / 3][i % 3] += op.rot[j / 3][i / 3] * oblique.GD[j / 3][j % 3] * op.rot[j % 3][i % 3];
    std::array<float, 6> c;
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;
        const double cosine = sum[j][k] / std::sqrt(sum[j][j] * sum[k][k]);
        c[i] = static_cast<float>(std::round(1e3 * std::sqrt(sum[i][i] / static_cast<double>(group.operators.size()))) / 1e3);
        c[i + 3] = static_cast<float>(std::acos(cosine) * 180 / std::numbers::pi);
        if (std::fabs(std::round(c[i + 3]) - c[i + 3]) < 1e-4f) c[i + 3] = std::round(c[i + 3]);
    }
    return Cell(c);
}

// All points of the sphere, and limits of S that no point comes near.
struct Sphere {
    std::vector<Hkl> points;
    float s_low = 0, s_high = 0;
};

Sphere Whole_Sphere(const Crystal_Cell_Type& cell, double s_high) {
    const std::array<Vector, 3> basis = Reciprocal_Basis(cell);
    std::vector<std::pair<double, Hkl>> all;
    const auto most = [&](std::size_t i) { return static_cast<int>(2.1 * s_high * cell.cell[i]) + 1; };
    for (int h = -most(0); h <= most(0); ++h)
        for (int k = -most(1); k <= most(1); ++k)
            for (int l = -most(2); l <= most(2); ++l)
                if (const double s = Length({h, k, l}, basis) / 2; s <= s_high && s > 0) all.push_back({s, {h, k, l}});
    std::ranges::sort(all);
    const auto free_of_points = [&](std::size_t near) {
        while (near + 1 < all.size() && all[near + 1].first - all[near].first < 1e-5) ++near;
        return near + 1 < all.size() ? (all[near].first + all[near + 1].first) / 2 : s_high;
    };
    Sphere sphere;
    sphere.s_low = static_cast<float>(free_of_points(all.size() / 9));
    sphere.s_high = static_cast<float>(free_of_points(all.size() * 8 / 9));
    for (const auto& [s, hkl] : all)
        if (s > sphere.s_low && s < sphere.s_high) sphere.points.push_back(hkl);
    return sphere;
}

void Expect_Order(const Reflection_List_Type& list, const Reflection_List_Type& as_made) {
    const auto by_h = [](const Reflection_Type& a, const Reflection_Type& b) { return a.H < b.H; };
    const auto by_s = [](const Reflection_Type& a, const Reflection_Type& b) { return std::tie(a.S, a.H) < std::tie(b.S, b.H); };
    EXPECT_TRUE(std::ranges::is_sorted(as_made.Ref, by_h));
    EXPECT_TRUE(std::ranges::is_sorted(list.Ref, by_s));
    std::vector<Hkl> a, b;
    for (const Reflection_Type& reflection : list.Ref) a.push_back(reflection.H);
    for (const Reflection_Type& reflection : as_made.Ref) b.push_back(reflection.H);
    std::ranges::sort(a);
    EXPECT_EQ(a, b);
}

// Every orbit of the sphere that is not absent has one member in the list.
void Expect_Whole_Sphere(const Crystal_Cell_Type& cell, const Space_Group_Type& group, const Sphere& sphere, bool friedel) {
    Reflection_List_Type list, as_made;
    ASSERT_TRUE(Hkl_Uni_Reflect(cell, group, friedel, sphere.s_high, sphere.s_low, "s", list).ok());
    ASSERT_TRUE(Hkl_Uni_Reflect(cell, group, friedel, sphere.s_low, sphere.s_high, "s", as_made, true).ok());
    ASSERT_EQ(list.NRef, static_cast<int>(list.Ref.size()));
    Expect_Order(list, as_made);

    const std::array<Vector, 3> basis = Reciprocal_Basis(cell);
    std::set<Hkl> covered;
    std::size_t members = 0;
    for (const Reflection_Type& reflection : list.Ref) {
        const std::set<Hkl> orbit = Orbit(reflection.H, group, friedel);
        const Hkl negative = {-reflection.H[0], -reflection.H[1], -reflection.H[2]}, unique = Asu_Hkl(reflection.H, group);
        ASSERT_EQ(reflection.Mult, static_cast<int>(orbit.size())) << testing::PrintToString(reflection.H);
        ASSERT_EQ(Get_Mult(reflection.H, group, friedel), reflection.Mult);
        ASSERT_TRUE(unique == reflection.H || (!friedel && unique == Asu_Hkl(negative, group))) << testing::PrintToString(reflection.H);
        ASSERT_NEAR(reflection.S, Length(reflection.H, basis) / 2, 1e-6 * reflection.S);
        ASSERT_EQ(reflection.S, Hkl_S(reflection.H, cell));
        covered.insert(orbit.begin(), orbit.end());
        members += orbit.size();
    }
    EXPECT_EQ(covered.size(), members) << "an orbit is listed twice";
    for (const Hkl& hkl : sphere.points) {
        const bool absent = Absent_By_Phases(hkl, group);
        ASSERT_EQ(Hkl_Absent(hkl, group), absent) << testing::PrintToString(hkl);
        ASSERT_EQ(covered.contains(hkl), !absent) << testing::PrintToString(hkl);
        members -= absent ? 0 : 1;
    }
    EXPECT_EQ(members, 0u) << "reflections that are not in the sphere";
}

void Expect_Whole_Sphere(const Crystal_Cell_Type& cell, const Space_Group_Type& group) {
    const Sphere sphere = Whole_Sphere(cell, std::cbrt(2500 / cell.CellVol / 33.5));  // some 2,500 points
    for (const bool friedel : {true, false}) Expect_Whole_Sphere(cell, group, sphere, friedel);
}

TEST(Reflections, Of_Settings_Of_Every_Rule_Are_Those_Of_The_Whole_Sphere) {
    std::mt19937 random(3);
    std::set<std::string_view> rules;
    const std::span<const Setting> settings = Settings();
    const auto expect = [&](const Space_Group_Type& group) {
        SCOPED_TRACE(group.hm_symbol + " " + group.hall_symbol);
        rules.insert(Asu_Hkl_Rule(group));
        EXPECT_FALSE(Asu_Hkl_Rule(group).starts_with("hkl: of all"));
        Expect_Whole_Sphere(Cell_For(group, random), group);
    };
    for (std::size_t i = 0; i < settings.size(); i += 1 + random() % 20) expect(Group(settings[i].hall, "HAL"));
    for (const char* symbol : {"P 2 1 1", "P 1 1 21/b", "R 3 c:R", "R -3:R", "R -3:H", "P 31 1 2", "P 32 2 1", "P -6", "P a -3", "I 4/m"})
        expect(Group(symbol));
    EXPECT_EQ(rules.size(), 16u) << "each rule of the tables, and no group that has none";
}

// Axes that no table has, so that the largest member stands for an orbit, and oblique cells.
TEST(Reflections, Of_Other_Axes_And_Oblique_Cells_Are_Those_Of_The_Whole_Sphere) {
    std::mt19937 random(5);
    const std::vector<std::string> other_axes[] = {
        {"x+1/4,-z,y"},                         // 41 along a
        {"y,x,-z+1/2", "-x,-y,-z"},             // twofold along a + b
        {"y,z,x", "-x-y-z,z,y", "-x,-y,-z"},    // cubic, the primitive cell of F
        {"y,-x-y,z", "-x,-y,-z", "x,y,z+1/2"},  // a centring of the c axis alone
        {"z,x,y", "-y+1/2,-x+1/2,-z+1/2"},      // 32 on rhombohedral axes
    };
    for (const std::vector<std::string>& generators : other_axes) {
        SCOPED_TRACE(generators.front());
        const Space_Group_Type group = Group("", "GEN", generators);
        Expect_Whole_Sphere(Cell_For(group, random), group);
    }
    const std::pair<const char*, std::array<float, 6>> oblique[] = {
        {"P 1", {5, 6, 7, 60, 60, 60}},      {"P -1", {5, 5, 5, 60, 60, 60}},       {"P -1", {5, 6, 9, 120, 90, 120}},
        {"P 1", {3, 9, 20, 91, 120, 60}},    {"P 1 2/c 1", {5, 6, 7, 90, 120, 90}}, {"P 1 1 2", {5, 6, 7, 90, 90, 60}},
        {"R -3 m:R", {5, 5, 5, 60, 60, 60}}, {"P 1", {6, 6, 6, 20, 20, 20}},
    };
    for (const auto& [symbol, parameters] : oblique) {
        SCOPED_TRACE(symbol);
        Expect_Whole_Sphere(Cell(parameters), Group(symbol));
    }
}

// Lists of an independent library, which gives any member of an orbit.
TEST(Reflections, Are_Those_Of_Reference_Lists) {
    const auto file_of = [](int i) {
        return test::Real_Path("symmetry/reflections_" + std::string(i < 10 ? "0" : "") + std::to_string(i) + ".tsv");
    };
    if (!std::ifstream(file_of(1))) GTEST_SKIP() << "there are no lists of reference";
    for (int i = 1; i <= 10; ++i) {
        std::ifstream file(file_of(i));
        std::string head, columns;
        ASSERT_TRUE(std::getline(file, head) && std::getline(file, columns)) << i;  // # SYMBOL cell a b c al be ga d >= 0.9 ..
        SCOPED_TRACE(head);
        const std::size_t at = head.find("cell");
        std::array<float, 6> parameters;
        float d_least = 0;
        std::string word;
        std::istringstream words(head.substr(at + 4));
        for (float& value : parameters) words >> value;
        words >> word >> word >> d_least;
        const Space_Group_Type group = Group(head.substr(2, head.find_last_not_of(' ', at - 1) - 1));
        Reflection_List_Type list;
        ASSERT_TRUE(Hkl_Uni_Reflect(Cell(parameters), group, true, d_least, 1000, "r", list).ok());
        std::vector<std::tuple<Hkl, int, float>> ours, theirs;
        for (const Reflection_Type& r : list.Ref) ours.push_back({r.H, r.Mult, r.S});
        float d = 0;
        int mult = 0;
        for (Hkl hkl; file >> hkl[0] >> hkl[1] >> hkl[2] >> d >> mult;) theirs.push_back({Asu_Hkl(hkl, group), mult, 1 / (2 * d)});
        std::ranges::sort(ours);
        std::ranges::sort(theirs);
        ASSERT_EQ(ours.size(), theirs.size());
        for (std::size_t n = 0; n < ours.size(); ++n) {
            ASSERT_EQ(std::get<0>(ours[n]), std::get<0>(theirs[n]));
            ASSERT_EQ(std::get<1>(ours[n]), std::get<1>(theirs[n])) << testing::PrintToString(std::get<0>(ours[n]));
            ASSERT_NEAR(std::get<2>(ours[n]), std::get<2>(theirs[n]), 1e-6 * std::get<2>(ours[n]));
        }
    }
}

// Conditions and multiplicities from the International Tables.
TEST(Reflections, Absences_And_Multiplicities_Of_Known_Groups) {
    struct Case {
        const char* symbol;
        Hkl hkl;
        bool absent;
        int mult, mult_without_friedel;
    };
    const Case cases[] = {
        {"P 1", {1, 2, 3}, false, 2, 1},        {"P 21/c", {0, 3, 0}, true, 2, 2},      {"P 21/c", {1, 0, 1}, true, 2, 2},
        {"P 21/c", {1, 1, 1}, false, 4, 4},     {"P 31", {0, 0, 1}, true, 2, 1},        {"P 31", {0, 0, -3}, false, 2, 1},
        {"P 61", {0, 0, 5}, true, 2, 1},        {"F d -3 m", {2, 0, 0}, true, 6, 6},    {"F d -3 m", {4, 2, 0}, true, 24, 24},
        {"F d -3 m", {3, 3, 1}, false, 24, 24}, {"I a -3 d", {2, 2, 0}, false, 12, 12}, {"I a -3 d", {2, 2, 2}, true, 8, 8},
        {"F -4 3 m", {1, 1, 1}, false, 8, 4},   {"P 4 3 2", {1, 2, 3}, false, 48, 24},  {"P 4 3 2", {1, 2, 0}, false, 24, 24},
        {"R -3 c:H", {1, 0, 2}, true, 6, 6},    {"R -3 c:H", {1, 0, -2}, false, 6, 6},  {"P b m n", {1, 0, 2}, false, 4, 4},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.symbol) + testing::PrintToString(c.hkl));
        const Space_Group_Type group = Group(c.symbol);
        EXPECT_EQ(Hkl_Absent(c.hkl, group), c.absent);
        EXPECT_EQ(Get_Mult(c.hkl, group, true), c.mult);
        EXPECT_EQ(Get_Mult(c.hkl, group, false), c.mult_without_friedel);
    }
}

// Of a cubic cell of 5 angstroms, S(h00) = h/10 and d(h00) = 5/h.
TEST(Reflections, Limits_Are_Included_And_Come_In_Either_Order) {
    const Crystal_Cell_Type cell = Cell({5, 5, 5, 90, 90, 90});
    const Space_Group_Type group = Group("P m -3 m");
    struct Case {
        float limit1, limit2;
        const char* code;
        int n;
    };
    const Case cases[] = {
        {0.1f, 0.2f, "s", 4}, {0.2f, 0.1f, "s", 4},   {5, 2.5f, "r", 4},     {2.5f, 5, "R", 4},
        {0, 0.1f, "s", 1},    {-1, 0.1f, "s", 1},     {0.1f, 0.1f, "s", 1},  {0, 0, "s", 0},
        {-2, -1, "s", 0},     {0.11f, 0.14f, "s", 0}, {5, infinite, "r", 1}, {5.f / 3, 5.f / 3, "r", 2},  // 300 and 221
    };
    for (const Case& c : cases) {
        Reflection_List_Type list;
        EXPECT_TRUE(Hkl_Uni_Reflect(cell, group, true, c.limit1, c.limit2, c.code, list).ok());
        EXPECT_EQ(list.NRef, c.n) << c.limit1 << " " << c.limit2 << " " << c.code;
    }
}

TEST(Reflections, Windows_That_Ask_Too_Much_Are_Refused_Before_Anything_Is_Tried) {
    struct Case {
        std::array<float, 6> cell;
        float limit1, limit2;
        const char *code, *text;
    };
    const std::array<float, 6> cube = {100, 100, 100, 90, 90, 90};
    const Case cases[] = {
        {cube, 0, 1.6f, "s", "This window would give about 70000000 reflections, more than the 5000000 that are generated at once"},
        {cube, 1e-6f, 10, "r", "countless"},
        {cube, 0, infinite, "s", "countless"},
        {cube, 1e20f, 1e20f, "s", "countless"},
        {cube, 100, 100, "s", "rows"},
        {cube, no_number, 1, "s", "no numbers"},
        {cube, 1, no_number, "r", "no numbers"},
        {cube, 0, 1, "r", "above 0"},
        {cube, -1, 1, "r", "above 0"},
        {{1e6f, 1e6f, 1e6f, 90, 90, 90}, 0, 0.5f, "s", "countless"},
        {{1e6f, 1e6f, 0.001f, 90, 90, 90}, 0, 0.5f, "s", "reflections, more than"},
        {{0.001f, 0.001f, 1e9f, 90, 90, 90}, 0, 0.5f, "s", "about 1000000000 reflections"},
    };
    const Space_Group_Type group = Group("P -1");
    for (const Case& c : cases) {
        Reflection_List_Type list;
        list.NRef = 1;
        list.Ref.resize(1);
        const Status status = Hkl_Uni_Reflect(Cell(c.cell), group, true, c.limit1, c.limit2, c.code, list);
        EXPECT_TRUE(status.failed) << c.text;
        EXPECT_NE(status.message.find(c.text), std::string::npos) << status.message;
        EXPECT_EQ(list.NRef, 0);
        EXPECT_TRUE(list.Ref.empty());
    }
    Reflection_List_Type list;
    EXPECT_TRUE(Hkl_Uni_Reflect(Crystal_Cell_Type{}, group, true, 0, 1, "s", list).failed) << "a cell that was never set";
    EXPECT_TRUE(Hkl_Uni_Reflect(Cell({0.001f, 0.001f, 1e6f, 90, 90, 90}), group, true, 0, 0.5f, "s", list).ok());
    EXPECT_EQ(list.NRef, 1000000);
}

// n = 1.05 times the volume of the sphere of radius 2 s in reciprocal cells, here 4/3 pi 8 100; with a multiplicity 2 n/mult.
TEST(Reflections, Bound_Of_Their_Number) {
    EXPECT_EQ(Get_MaxNumRef(1, 100), 3518);
    EXPECT_EQ(Get_MaxNumRef(1, 100, 0.5f), 3518 - 419);
    EXPECT_EQ(Get_MaxNumRef(1, 100, 0, 48), 146);
    EXPECT_EQ(Get_MaxNumRef(0, 100), 0);
    EXPECT_EQ(Get_MaxNumRef(1e6f, 1e18), std::numeric_limits<int>::max());
    EXPECT_EQ(Get_MaxNumRef(1e6f, 1e18, 0, 1), std::numeric_limits<int>::max());
    EXPECT_EQ(Get_MaxNumRef(no_number, 100), 0);
}

TEST(Cells, Metric_Tensors_Are_Those_Of_Basis_Vectors) {
    for (const std::array<float, 6>& parameters : {std::array<float, 6>{5, 5, 5, 90, 90, 90},
                                                   {4.76f, 4.76f, 12.99f, 90, 90, 120},
                                                   {5.1f, 7.7f, 8.9f, 85.2f, 101.3f, 95.6f},
                                                   {5, 5, 5, 60, 60, 60},
                                                   {3, 40, 7, 100, 30, 90},
                                                   {1e6f, 1e-3f, 1, 90, 90, 90}}) {
        const Crystal_Cell_Type cell = Cell(parameters);
        const std::array<Vector, 3> basis = Reciprocal_Basis(cell);
        std::array<double, 3> lengths = {}, angles = {};
        EXPECT_TRUE(Lengths_And_Angles(cell.GR, lengths, angles));
        for (std::size_t i = 0; i < 3; ++i) {
            Hkl axis = {};
            axis[i] = 1;
            EXPECT_NEAR(cell.rcell[i] / Length(axis, basis), 1, 1e-6);
            for (std::size_t j = 0; j < 3; ++j) {
                double scalar = 0, product = 0;
                for (std::size_t k = 0; k < 3; ++k) {
                    scalar += basis[i][k] * basis[j][k];
                    product += cell.GD[i][k] * cell.GR[k][j];
                }
                const double scale = std::sqrt(cell.GR[i][i] * cell.GR[j][j]);
                EXPECT_NEAR(cell.GR[i][j] / scale, scalar / scale, 1e-12);
                EXPECT_NEAR(product * std::sqrt(cell.GD[j][j] / cell.GD[i][i]), i == j ? 1 : 0, 1e-9);
                if (i == j) continue;
                EXPECT_NEAR(std::cos(angles[3 - i - j] * std::numbers::pi / 180), scalar / scale, 1e-6);
            }
        }
        EXPECT_NEAR(cell.CellVol * basis[0][0] * basis[1][1] * basis[2][2], 1, 1e-12);
    }
    EXPECT_EQ(Cell({5, 6, 7, 0, 0.000009f, -3}).ang, (std::array<float, 3>{90, 90, 90}));
}

TEST(Cells, That_Are_None_Are_Refused) {
    for (const std::array<float, 6>& c : {std::array<float, 6>{0, 5, 5, 90, 90, 90},
                                          {5, -5, 5, 90, 90, 90},
                                          {5, 5, no_number, 90, 90, 90},
                                          {5, infinite, 5, 90, 90, 90},
                                          {5, 5, 5, 120, 120, 120},
                                          {5, 5, 5, 100, 130, 130},
                                          {5, 5, 5, 100.1f, 119.9f, 140},
                                          {5, 5, 5, 30, 30, 60},
                                          {5, 5, 5, 20, 90, 30},
                                          {5, 5, 5, 180, 90, 90},
                                          {5, 5, 5, 90, 270, 90},
                                          {5, 5, 5, 150, 150, 150},
                                          {5, 5, 5, 90, no_number, 90},
                                          {1e-39f, 5, 5, 90, 90, 90},
                                          {5, 5, 5, 90, 90, 0.001f}}) {
        Crystal_Cell_Type cell = Cell({3, 3, 3, 90, 90, 90});
        const Status status = Set_Crystal_Cell({c[0], c[1], c[2]}, {c[3], c[4], c[5]}, cell);
        EXPECT_EQ(status.message, " Bad cell parameters ") << testing::PrintToString(c);
        EXPECT_EQ(cell.cell[0], 3);
    }
}

}  // namespace
}  // namespace vntl
