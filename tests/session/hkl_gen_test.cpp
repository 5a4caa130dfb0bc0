// The reflections of a cell over a pattern: window limits, places of marks, and the generated list.
#include "session/hkl_gen.hpp"

#include <cmath>
#include <limits>
#include <numbers>

#include "base/text.hpp"
#include "crystal/cell.hpp"
#include "session/changes.hpp"
#include "session/ranges.hpp"
#include "session/reflection_search.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

constexpr double pi = std::numbers::pi;

Hkl_Gen_State Tool_Of(const std::string& symbol) {
    Hkl_Gen_State state;
    std::string why;
    EXPECT_TRUE(Choose_Hkl_Group(state, symbol, why).ok()) << symbol << ": " << why;
    return state;
}

TEST(Hkl_Gen, WhatIsNoSymbolChangesNothing) {
    Hkl_Gen_State state = Tool_Of("P b m n");
    for (const std::string& symbol :
         {std::string("P 5"), std::string("0"), std::string("231"), std::string(10'000, 'P'), std::string("?")}) {
        std::string why;
        const Status status = Choose_Hkl_Group(state, symbol, why);
        EXPECT_EQ(status.message, "Bad SPGR, unknow CrystalSys") << symbol.substr(0, 20);
        EXPECT_EQ(state.hkl_symbol + '/' + state.hkl_system, "P b m n/Orthorhombic");
    }
}

// --- scales of x -----------------------------------------------------------------------------------------------------------------

struct Scale {
    X_Space space;
    X_Constants conv;
    float x1, x2;
};
const Scale scales[] = {{X_Space::two_theta, {1.5406f}, 60, 150}, {X_Space::tof, {5000, 0}, 5000, 12000},
                        {X_Space::tof, {5000, -30}, 5000, 12000}, {X_Space::tof, {-10, 2000}, 5000, 12000},
                        {X_Space::d_space, {1.5406f}, 0.8f, 2},   {X_Space::d_spacing, {}, 0.8f, 2},
                        {X_Space::q_space, {1.5406f}, 3, 8},      {X_Space::s_space, {1.5406f}, 0.5f, 1.2f}};

// The spacing in closed form, from the other side: Bragg's law, the root of t = dtt1 d + dtt2 d^2 that is positive, 2 pi/Q, 1/s.
double D_At(const Scale& scale, double x) {
    const double a = scale.conv[1], b = scale.conv[0];
    switch (scale.space) {
        case X_Space::two_theta:
            return b / (2 * std::sin(x * pi / 360));
        case X_Space::tof:
            return 2 * x / (b + std::sqrt(b * b + 4 * a * x));  // without a cancellation, for dtt1 of any sign
        case X_Space::q_space:
            return 2 * pi / x;
        case X_Space::s_space:
            return 1 / x;
        default:
            return x;
    }
}

TEST(Hkl_Gen, LimitsAndPlacesFollowTheLawsOfTheirScale) {
    for (const Scale& scale : scales) {
        float s1 = 0, s2 = 0;
        ASSERT_TRUE(Hkl_Limits(scale.space, scale.conv, scale.x1, scale.x2, s1, s2).ok()) << Told(scale.space);
        EXPECT_LT(s1, s2);
        const double at_x1 = 0.5 / D_At(scale, scale.x1), at_x2 = 0.5 / D_At(scale, scale.x2);
        EXPECT_NEAR(s1, std::min(at_x1, at_x2), 1e-6) << Told(scale.space);
        EXPECT_NEAR(s2, std::max(at_x1, at_x2), 1e-6) << Told(scale.space);
        for (const float x : {scale.x1, 0.5f * (scale.x1 + scale.x2), scale.x2})
            EXPECT_NEAR(X_Of_Reflection(scale.space, scale.conv, static_cast<float>(0.5 / D_At(scale, x))), x, 3e-6 * x)
                << Told(scale.space);
    }
}

TEST(Hkl_Gen, WindowsWithoutLimitsAreToldInTheirOrder) {
    constexpr float inf = std::numeric_limits<float>::infinity();
    const std::string window = "Bad window limits", product = "Error liminf*limsup < 0.0001";
    struct Case {
        Scale scale;
        std::string told;
        float s1 = 0;
    };
    const Case cases[] = {
        {{X_Space::mono, {}, 1, 2}, "xspace not permited"},
        {{X_Space::two_theta, {}, 10, 60}, "Bad wavelength"},
        {{X_Space::tof, {}, 10, 60}, "Error: if dtt2=0 then dtt1 must be > 0"},
        {{X_Space::two_theta, {1.5406f}, -20, -10}, window},
        {{X_Space::two_theta, {1.5406f}, -20, 60}, product},        // 0.0002 x 0.32
        {{X_Space::two_theta, {1.5406f}, 0, 150}, "", 0.0002f},     // 0.0002 x 0.63
        {{X_Space::two_theta, {1.5406f}, 10, 250}, "", 0.056572f},  // up to 180 degrees
        {{X_Space::d_space, {}, -2, -1}, window},
        {{X_Space::d_space, {}, 0, 2}, window},
        {{X_Space::d_space, {}, -1, 2}, product},
        {{X_Space::tof, {-10, -1}, 10, 60}, window},
        {{X_Space::q_space, {}, -1, 0}, window},
        {{X_Space::s_space, {}, 0, inf}, window},
    };
    for (const Case& c : cases) {
        float s1 = 0, s2 = 0;
        EXPECT_EQ(Hkl_Limits(c.scale.space, c.scale.conv, c.scale.x1, c.scale.x2, s1, s2).message, c.told) << c.scale.x1;
        if (c.told.empty()) {
            EXPECT_NEAR(s1, c.s1, 1e-6) << c.scale.x1;
        }
    }
}

// --- the list --------------------------------------------------------------------------------------------------------------------

class Generated : public testing::Test {
protected:
    Generated() {
        Diffraction_Pattern_Type p = Tiny_Pattern(81);  // 10 to 90 degrees, y = i^2
        p.conv[0] = 1.5406f;
        Set_Y_Limits(p);
        session.store.Append(std::move(p), {});
        Set_Xspace(session, "2theta");
        Plot_Ranges(session);
        Set_Calculation_Mode(session, Click_Mode::reflections);
        Choose("P m -3 m");
    }
    void Choose(const std::string& symbol) {
        std::string why;
        ASSERT_TRUE(Choose_Hkl_Group(session.hkl_gen, symbol, why).ok()) << why;
    }
    std::string Labels() const {
        std::string labels;
        for (const Reflection_Mark& mark : session.lists.hklgen) labels += '(' + mark.label + ')';
        return labels;
    }

    Session session;
    std::vector<Reflection_Mark>& list = session.lists.hklgen;
};

TEST_F(Generated, MarksStandAtBraggsAnglesUnderThePattern) {
    session.plot.x_view_max = 50;
    session.plot.hits = {{1}, true, 0, 0};
    ASSERT_TRUE(Hkl_Gen_Run(session, {4.156f, 7, 8, 1, 2, 3}).ok());
    EXPECT_EQ(Labels(), "(1 0 0)(1 1 0)(1 1 1)(2 0 0)(2 1 0)");
    EXPECT_EQ(session.hkl_gen.cell, (Cell_Values{4.156f, 4.156f, 4.156f, 90, 90, 90}));
    EXPECT_TRUE(session.plot.hits.entries.empty());  // they were those of another list
    const int multiplicities[] = {6, 12, 8, 6, 24}, squares[] = {1, 2, 3, 4, 5};
    for (std::size_t i = 0; i < 5; ++i) {
        const double d = 4.156 / std::sqrt(squares[i]), x = 360 / pi * std::asin(1.5406 / (2 * d));
        EXPECT_NEAR(list[i].x, x, 1e-4);
        EXPECT_NEAR(list[i].d, d, 1e-5);
        EXPECT_EQ(list[i].multiplicity, multiplicities[i]);
        EXPECT_EQ(list[i].y, std::pow(std::floor(x) - 10, 2));  // of the point before it
    }
}

// P b m n: 0 k l with k odd and h k 0 with h + k odd are absent.
TEST_F(Generated, GlidesTakeTheirReflectionsAway) {
    session.plot.x_view_max = 60;
    Choose("P b m n");
    ASSERT_TRUE(Hkl_Gen_Run(session, session.hkl_gen.cell).ok());
    ASSERT_GT(list.size(), 10u);
    for (std::size_t i = 0; i < list.size(); ++i) {
        int h = 0, k = 0, l = 0;
        ASSERT_EQ(std::sscanf(list[i].label.c_str(), "%d %d %d", &h, &k, &l), 3);
        EXPECT_FALSE((h == 0 && k % 2 != 0) || (l == 0 && (h + k) % 2 != 0)) << list[i].label;
        if (i > 0) {
            EXPECT_GE(list[i].x, list[i - 1].x);
        }
    }
}

TEST_F(Generated, AFailureLeavesTheListOfTheLastSuccess) {
    ASSERT_TRUE(Hkl_Gen_Run(session, {4, 4, 4, 90, 90, 90}).ok());
    const std::vector<Reflection_Mark> before = list;
    const auto fails = [&](const Cell_Values& cell, std::string_view told) {
        const Status status = Hkl_Gen_Run(session, cell);
        EXPECT_TRUE(status.failed && Contains(status.message, told)) << status.message;
        EXPECT_EQ(list, before);
    };
    fails({0, 5, 6, 90, 90, 90}, "Wrong cell parameters");
    fails({-4, 5, 6, 90, 90, 90}, "Wrong cell parameters");
    fails({std::nanf(""), 5, 6, 90, 90, 90}, "Wrong cell parameters");
    fails({1000, 5, 6, 90, 90, 90}, "more than the 200000");
    fails({1e30f, 5, 6, 90, 90, 90}, "");
    Choose("P 1");
    fails({5, 5, 5, 120, 120, 120}, " Bad cell parameters ");
    fails({5, 5, 5, 170, 170, 90}, " Bad cell parameters ");
    session.plot.x_view_min = 0;
    session.plot.x_view_max = 20;
    fails({0, 5, 6, 90, 90, 90}, "Error liminf*limsup < 0.0001");  // the window is looked at first
}

TEST_F(Generated, APointerHitsBelowTheTopOfAMark) {
    list = {{20, 100, "1 0 0"}, {20.5f, 50, "1 1 0"}, {22, 100, "1 1 1"}};
    struct Case {
        float x, y;
        std::vector<int> hit;
    };
    // 1 % of a view from 10 to 90 is 0.8 to either side, without its ends.
    const Case cases[] = {{20.2f, 40, {1, 2}}, {20.2f, 60, {1}}, {20.2f, 100, {}}, {21.5f, 10, {3}},
                          {19.2f, 10, {}},     {9, 10, {}},      {20, -1e6f, {}}};
    for (const Case& c : cases) {
        session.plot.hits = {};
        EXPECT_EQ(Search_HKLGen_Refl(list, session.plot, c.x, c.y), !c.hit.empty()) << c.x << ' ' << c.y;
        EXPECT_EQ(session.plot.hits.entries, c.hit) << c.x << ' ' << c.y;
    }
    list.assign(40, {20, 100, "1 0 0"});
    EXPECT_TRUE(Search_HKLGen_Refl(list, session.plot, 20, 10));
    EXPECT_EQ(session.plot.hits.entries.size(), 28u);
    EXPECT_FALSE(Search_HKLGen_Refl(list, session.plot, 20.1f, 10));  // the same ones
    EXPECT_TRUE(Search_HKLGen_Refl(list, session.plot, 50, 10));
}

// What is tried is no change: taking one back leaves the marks, while the tool is there.
TEST_F(Generated, UndoLeavesTheMarksOfTheTool) {
    {
        Row_Change change(session, "peaks");
        session.lists.peaks = {{20, 10, 0}};
        change.Keep();
    }
    ASSERT_TRUE(Hkl_Gen_Run(session, {4, 4, 4, 90, 90, 90}).ok());
    const std::vector<Reflection_Mark> marks = list;
    ASSERT_TRUE(Undo_Change(session));
    EXPECT_TRUE(session.lists.peaks.empty());
    EXPECT_EQ(list, marks);
}

}  // namespace
}  // namespace vntl
