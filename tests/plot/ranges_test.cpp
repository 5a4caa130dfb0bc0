#include <cmath>
#include <limits>

#include "fixture.hpp"
#include "session/desk/kept_view.hpp"
#include "session/desk/overlay_place.hpp"
#include "session/desk/waterfall.hpp"

namespace vntl::test {

class Ranges : public Plot_Test {};

TEST_F(Ranges, OneRowHasTheWholeRangeWithAMarginOfFivePercent) {
    Add({10, 20, 30}, {100, 1100, 300});
    session.lists.peaks = {{1, 2, 3}};
    session.lists.background = {{1, 2}};
    session.lists.hklgen = {{1, 2, "1 1 1"}};
    Plot_Ranges(session);
    const Plot_State& p = session.plot;
    EXPECT_EQ(Told(p.plot_type), "single");
    EXPECT_EQ(session.interface.status[4], "single");
    EXPECT_FLOAT_EQ(p.x_view_min, 10);
    EXPECT_FLOAT_EQ(p.x_all_max, 30);
    EXPECT_FLOAT_EQ(p.y_view_min, 50);  // 100 - 0.05 * 1000
    EXPECT_FLOAT_EQ(p.y_view_max, 1150);
    EXPECT_FLOAT_EQ(p.y_prf_bottom, -100);
    EXPECT_FLOAT_EQ(p.diff_base, -40);
    EXPECT_FLOAT_EQ(p.diff_band, 140);
    EXPECT_TRUE(session.lists.peaks.empty() && session.lists.background.empty() && session.lists.hklgen.empty());
    EXPECT_TRUE(Check_Invariants(session).failed);  // the rows came without an x space
}

TEST_F(Ranges, SeveralRowsSpanTheUnionAndKeepTheLogarithmicForm) {
    Add({10, 20}, {0, 50});
    Add({5, 15}, {20, 1000});
    Plot_Ranges(session);
    EXPECT_EQ(Told(session.plot.plot_type), "multi");
    EXPECT_FLOAT_EQ(session.plot.x_view_min, 5);
    EXPECT_FLOAT_EQ(session.plot.x_view_max, 20);

    Set_Menu_Graph(session, true);
    Plot_Ranges(session);
    EXPECT_EQ(Told(session.plot.plot_type), "multi_log");
    EXPECT_FLOAT_EQ(session.plot.y_view_min, 0);
    EXPECT_FLOAT_EQ(session.plot.y_view_max, std::log(1050.0f));

    for (const bool log : {false, true}) {  // a form that no plot starts in goes back to the graph it came from
        session.plot.log_scale = log;
        log ? Set_Menu_Contour_Log(session) : Set_Calculation_Mode(session, Click_Mode::reflections);
        Plot_Ranges(session);
        EXPECT_EQ(Told(session.plot.plot_type), log ? "multi_log" : "multi");
    }
}

TEST_F(Ranges, WindowsOfDegenerateIntensitiesStayUsable) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    const struct {
        std::vector<float> y;
        const char* what;
    } cases[] = {
        {{7, 7, 7}, "constant"}, {{0, 0, 0}, "zero"}, {{-3e38f, 0, 3e38f}, "huge"}, {{nan, nan, nan}, "NaN"}, {{1, inf, 3}, "infinite"}};
    for (const bool log : {false, true})
        for (const auto& c : cases) {
            session.store.Clear();
            Add({1, 2, 3}, c.y);
            Add({1, 2, 3}, c.y);
            Set_Menu_Graph(session, log);
            Plot_Ranges(session);
            EXPECT_TRUE(std::isfinite(session.plot.y_view_min) && std::isfinite(session.plot.y_view_max)) << c.what;
            EXPECT_LT(session.plot.y_view_min, session.plot.y_view_max) << c.what << log;
            Draw_Picture(Scene_Of(session), page);
        }
}

TEST_F(Ranges, SidesExcludedAreTrimmedUnlessNothingIsLeft) {
    Add({10, 20, 30, 40}, {1, 2, 3, 4});
    const struct {
        std::vector<std::pair<float, float>> regions;
        float lo, hi;
    } cases[] = {
        {{{0, 12}, {38, 200}}, 12, 38}, {{{-5, 15}}, 15, 40}, {{{20, 25}}, 10, 40},  // in the middle: nothing to trim
        {{{12, 14}, {5, 12}}, 12, 40},   // in the order of the regions: the first does not reach the side yet
        {{{5, 12}, {12, 14}}, 14, 40},   // now it does
        {{{0, 25}, {24, 100}}, 10, 40},  // all is covered
    };
    for (const auto& c : cases) {
        session.store.Info(1).nexcl = 0;
        for (const auto& [lo, hi] : c.regions) Exclude(1, lo, hi);
        session.prefs.prf.excl_ignore_sides = true;
        Set_Range_X(session.store, session.prefs.prf, session.plot);
        EXPECT_FLOAT_EQ(session.plot.x_view_min, c.lo) << c.regions[0].first;
        EXPECT_FLOAT_EQ(session.plot.x_all_max, c.hi) << c.regions[0].first;
        session.prefs.prf.excl_ignore_sides = false;
        Set_Range_X(session.store, session.prefs.prf, session.plot);
        EXPECT_FLOAT_EQ(session.plot.x_view_min, 10);
    }
}

TEST_F(Ranges, ConversionToTheOriginNeedsOneScatteringVariable) {
    const struct {
        const char *first, *second;
        bool mixed, to_2theta, to_tof;
    } cases[] = {{"2theta", "2theta", false, true, false},
                 {"TOF", "TOF", false, false, true},
                 {"2theta", "TOF", true, false, false},
                 {"d-spacing", "d-spacing", false, false, false}};
    for (const auto& c : cases) {
        session.store.Clear();
        Add().scat_var = c.first;
        Add().scat_var = c.second;
        Plot_Ranges(session);
        EXPECT_EQ(session.store.mixed_scat_var, c.mixed) << c.first << c.second;
        EXPECT_EQ(session.interface.Enabled(40042), c.to_2theta) << c.first << c.second;
        EXPECT_EQ(session.interface.Enabled(40043), c.to_tof) << c.first << c.second;
    }
}

TEST_F(Ranges, ARefinedRowMakesRoomBelowAndBarsTheFit) {
    Add({10, 20}, {0, 1000}, Row_Kind::prf);
    Plot_Ranges(session);
    EXPECT_TRUE(session.store.prf_loaded);
    EXPECT_EQ(session.store.ProfilePRFactive, 1);
    EXPECT_FLOAT_EQ(session.plot.y_view_min, -200);
    for (const int command : {40095, 40099, 40154}) EXPECT_FALSE(session.interface.Enabled(command)) << command;
    EXPECT_TRUE(session.interface.Enabled(40016));
}

// The overlay of a refinement stands below the logarithms, in their units, however the form was come to.
TEST_F(Ranges, LogarithmsOfARefinedRowHaveRoomBelow) {
    Add(five_x, five_y, Row_Kind::prf);
    Add();
    Plot_Ranges(session);
    View_In_Logarithms(session.store, session.plot);
    for (const bool anew : {false, true}) {
        if (anew) {
            Set_Menu_Graph(session, true);
            Plot_Ranges(session);
        }
        const Plot_State& plot = session.plot;
        EXPECT_NEAR(plot.y_view_max, std::log(1050.0f), 0.01f) << anew;
        EXPECT_LE(plot.y_view_min, plot.diff_base) << anew;
        EXPECT_LE(plot.diff_base + plot.diff_band, 1e-6f) << anew;
        EXPECT_GT(plot.y_view_min, -3) << anew;
    }
}

// Roots by hand: those of 0.5 and 1000 with 5 % of what lies between them. A window comes back from every scale as it was.
TEST_F(Ranges, RootsHaveAWindowOfTheirOwnAndGiveBackTheOneBefore) {
    for (const Row_Kind kind : {Row_Kind::data, Row_Kind::prf}) {
        session.store.Clear();
        Add(five_x, five_y, kind);
        session.plot.y_scale = Y_Scale::linear;
        Plot_Ranges(session);
        const Plot_State whole = session.plot;
        Choose_Scale(session, Y_Scale::root);
        const double low = std::sqrt(0.5), span = std::sqrt(1000.0) - low;
        EXPECT_NEAR(session.plot.y_view_max, std::sqrt(1000.0) + 0.05 * span, 1e-4);
        EXPECT_NEAR(session.plot.y_view_min, low - (kind == Row_Kind::prf ? 0.2 : 0.05) * span, 1e-4);
        EXPECT_NEAR(session.plot.diff_base, low - 0.14 * span, 1e-4);
        const View roots = session.plot.Shown_View();
        Plot_Ranges(session);
        EXPECT_EQ(session.plot.Shown_View(), roots);
        Choose_Scale(session, Y_Scale::linear);
        EXPECT_EQ(session.plot.Shown_View(), whole.Shown_View());
        EXPECT_EQ(session.plot.diff_base, whole.diff_base);
        session.plot.Show({11, 12, -50, 400});
        Choose_Scale(session, Y_Scale::root);
        EXPECT_NEAR(session.plot.y_view_min, -std::sqrt(50.0), 1e-4);
        EXPECT_NEAR(session.plot.y_view_max, 20, 1e-4);
        Choose_Scale(session, Y_Scale::linear);
        EXPECT_NEAR(session.plot.y_view_min, -50, 1e-3);
        EXPECT_NEAR(session.plot.y_view_max, 400, 1e-3);
        EXPECT_NEAR(session.plot.diff_base, whole.diff_base, 1e-3);
        session.plot.Show({11, 12, 2, 1e30f});  // its root is a number, and what is beyond all numbers shows all
        for (const Y_Scale scale : {Y_Scale::root, Y_Scale::logarithm, Y_Scale::root, Y_Scale::linear}) {
            Choose_Scale(session, scale);
            EXPECT_TRUE(session.plot.Shown_View().Drawable());
        }
    }
}

// The foot of the data of a refined profile is that of the same counts on every scale and under every look; in the whole view the band of
// a pinned difference ends 2 % of the 999.5 counts below the least.
TEST_F(Ranges, TheFootOfARefinedRowIsKept) {
    Add(five_x, five_y, Row_Kind::prf);
    Add();
    const auto foot = [this] { return Foot_Of_Data(session.store, session.plot, session.look); };
    for (const bool pinned : {false, true}) {
        session.look.pinned_difference = pinned;
        Plot_Ranges(session);
        const View whole = session.plot.Shown_View();
        for (const float low : {0.0f, 50.0f}) {
            if (low > 0) session.plot.Show({11, 12, Foot_Of_Box(session.store, session.plot, session.look, low, 400), 400});
            for (const Y_Scale scale : {Y_Scale::logarithm, Y_Scale::root, Y_Scale::linear}) {
                Choose_Scale(session, scale);
                if (low > 0 && (pinned || scale != Y_Scale::logarithm)) {
                    EXPECT_NEAR(Off_Scale(scale, foot()), low, 0.01f) << pinned << Told(scale);
                }
            }
            if (low == 0) {
                EXPECT_EQ(session.plot.Shown_View(), whole) << pinned;
            }
        }
    }
    const auto look = [this](bool pinned) {
        const Kept_View kept(session.store, session.plot, session.look);
        session.look.pinned_difference = pinned;
        kept.Show(session.store, session.plot, session.look);
    };
    for (const bool pinned : {false, true}) {
        look(pinned);
        EXPECT_NEAR(foot(), 50, 0.01f) << pinned;
    }
    Plot_Ranges(session);
    const View whole = session.plot.Shown_View();
    Set_Waterfall(session.store, session.plot, {0.5f, false, false}, session.look);
    for (const bool anew : {false, true}) {
        if (anew) Plot_Ranges(session);
        EXPECT_NEAR(foot(), 0.5 - 0.02 * 999.5, 0.1) << anew;
        EXPECT_NEAR(session.plot.y_view_max, 1.55 * 999.5 + 0.5, 0.1) << anew;
    }
    Set_Waterfall(session.store, session.plot, {}, session.look);
    EXPECT_EQ(session.plot.Shown_View(), whole);
}

TEST_F(Ranges, FocusTakesThePointsStrictlyInsideTheWindow) {
    Add({10, 11, 12, 13, 14}, {5000, 100, 300, 200, 9000});
    Add();
    Plot_Ranges(session);
    session.plot.x_view_min = 10;
    session.plot.x_view_max = 13;  // row 1: 100 and 300, row 2: 100 and 1000
    Focus_Plot(session.store, session.plot);
    EXPECT_FLOAT_EQ(session.plot.y_view_min, 55);
    EXPECT_FLOAT_EQ(session.plot.y_view_max, 1045);

    session.plot.x_view_min = 13.2f;
    session.plot.x_view_max = 13.8f;  // no point: left alone
    Focus_Plot(session.store, session.plot);
    EXPECT_FLOAT_EQ(session.plot.y_view_max, 1045);

    Set_Menu_Graph(session, true);
    session.plot.x_view_min = 10;
    session.plot.x_view_max = 13;
    Focus_Plot(session.store, session.plot);
    const double span = std::log(1000.0) - std::log(100.0);
    EXPECT_NEAR(session.plot.y_view_min, std::log(100.0) - 0.05 * span, 1e-5);
    EXPECT_NEAR(session.plot.y_view_max, std::log(1000.0) + 0.05 * span, 1e-5);
}

TEST_F(Ranges, FocusPassesOverWhatIsNoNumber) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    Add({10, 11, 12, 13, 14, 15}, {0, nan, 100, inf, 300, -inf});
    Plot_Ranges(session);
    session.plot.x_view_min = 10.5f;
    session.plot.x_view_max = 15.5f;
    Focus_Plot(session.store, session.plot);
    EXPECT_FLOAT_EQ(session.plot.y_view_min, 90);
    EXPECT_FLOAT_EQ(session.plot.y_view_max, 310);
}

TEST_F(Ranges, FocusOnARefinedRowKeepsItsDifferenceOrItsReflections) {
    Add({10, 11, 12}, {0, 100, 200}, Row_Kind::prf);
    session.store.Pattern(1).x = {9, 11, 12};
    session.store.Info(1).nphases = 2;
    Plot_Ranges(session);
    session.plot.x_view_max = 13;  // points 100 and 200, window 95 to 205, span 110
    session.plot.x_view_min = 10;
    Focus_Plot(session.store, session.plot);
    EXPECT_FLOAT_EQ(session.plot.diff_base, 95 - 0.14f * 110);
    EXPECT_FLOAT_EQ(session.plot.y_view_min, 95 - 0.2f * 110);
    session.store.show_difference = false;
    Focus_Plot(session.store,
               session.plot);  // foot of the second row: 25 of 36 units under the top of the band, which is the window's lower end
    EXPECT_NEAR(session.plot.y_view_min, 95 - 25.0 / 36.0 * 0.14 * 110, 1e-3);
    session.store.show_reflections = false;
    Focus_Plot(session.store, session.plot);
    EXPECT_FLOAT_EQ(session.plot.y_view_min, 95);
}

}  // namespace vntl::test
