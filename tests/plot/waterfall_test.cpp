// Rows of a waterfall, against places that follow by hand from the offsets that a user asked for.
#include <cmath>

#include "plot/fixture.hpp"
#include "toolkit/bitmap.hpp"

namespace vntl::test {

class Waterfalls : public Plot_Test {
protected:
    Waterfalls() { session.prefs.graph2d.legend.pos = 1; }

    void Set_Apart(const Waterfall& waterfall) {
        Plot_Ranges(session);
        session.plot.waterfall = waterfall;
    }
    // How far each row's curve stands above its own points, in units of the window 0 to `top`; nothing of a row without a curve.
    std::vector<double> Raised(int rows, bool log, float top) {
        Draw(log ? "log" : "", 10, 14, 0, top);
        std::vector<double> raised;
        for (int row = 1; row <= rows; ++row) {
            const auto curves = Curves(Slot_Colour(row), 5);
            if (curves.size() != 1) continue;
            const double count = session.store.Pattern(row).y[2];
            raised.push_back((curves[0].points[2].y - 120) / 560 * top - (log ? std::log(count) : count));
        }
        return raised;
    }
};

TEST_F(Waterfalls, RowsStandAsFarApartAsAsked) {
    Add_Rows(4);
    const float kelvin[] = {100, 400, 250, 200};
    for (int row = 1; row <= 4; ++row) session.store.Pattern(row).TSample = kelvin[row - 1];
    const double height = 1000 - 0.5, log_height = std::log(1000.0);  // of the five points; below one count there is no logarithm
    struct Case {
        Waterfall waterfall;
        bool log;
        int hidden;    // row, 0 none
        float warmth;  // of row 2
        std::vector<double> raised;
    };
    const Case cases[] = {
        {{0, true, true}, false, 0, 400, {0, 0, 0, 0}},
        {{0.5f, false, false}, false, 0, 400, {0, 0.5 * height, height, 1.5 * height}},
        {{0.5f, false, false}, false, 2, 400, {0, 0.5 * height, height}},  // it leaves no gap
        {{0.5f, false, true}, false, 1, 400, {0, 0.5 * height, height}},
        {{0.25f, false, false}, true, 0, 400, {0, 0.25 * log_height, 0.5 * log_height, 0.75 * log_height}},
        {{1, true, false}, false, 0, 400, {0, 3 * height, 1.5 * height, height}},
        {{1, true, false}, false, 2, 400, {0, 2 * height, 4. / 3 * height}},
        {{1, true, false}, false, 0, 0, {0, height, 2 * height, 3 * height}},  // not known
    };
    for (const Case& c : cases) {
        session.store.profile_shown.set();
        if (c.hidden > 0) session.store.profile_shown.reset(static_cast<std::size_t>(c.hidden - 1));
        session.store.Pattern(2).TSample = c.warmth;
        Set_Apart(c.waterfall);
        if (c.log) Set_Menu_Graph(session, true);
        const std::vector<double> raised = Raised(4, c.log, c.log ? 20.0f : 5000.0f);
        ASSERT_EQ(raised.size(), c.raised.size()) << &c - cases;
        for (std::size_t i = 0; i < raised.size(); ++i) EXPECT_NEAR(raised[i], c.raised[i], 2e-6 * (c.log ? 20 : 5000)) << &c - cases;
        if (c.log) Set_Menu_Graph(session, false);
    }
}

// All that belongs to a row goes with it; the difference of a refinement keeps its place under the data. No point changes.
TEST_F(Waterfalls, CurvesAndOverlayOfARowGoWithIt) {
    session.prefs.prf.ycalc_colour = WRGB(1, 2, 3);
    session.prefs.prf.ydif_colour = WRGB(3, 2, 1);
    Add();
    for (const Row_Kind kind : {Row_Kind::data, Row_Kind::prf}) {
        Diffraction_Pattern_Type& row = Add(five_x, five_y, kind);
        row.ycalc = {1, 110, 990, 20, 2};
        row.bgr = {0, 1, 2, 3, 4};
    }
    for (int row = 1; row <= 3; ++row) session.store.Pattern(row).sigma.assign(5, 2500);  // variances
    session.store.show_ycalc_of.set(1);
    session.store.show_ycalc = session.store.show_difference = true;
    const auto bytes = [&] {
        std::vector<std::vector<float>> all;
        for (int row = 1; row <= 3; ++row)
            for (const auto& array : {session.store.Pattern(row).x, session.store.Pattern(row).y, session.store.Pattern(row).sigma,
                                      session.store.Pattern(row).ycalc, session.store.Pattern(row).bgr})
                all.push_back(array);
        return all;
    };
    const auto before = bytes();
    const double step = 0.5 * 999.5;
    Set_Apart({0.5f, false, true});
    Draw("", 10, 14, -500, 3000);
    EXPECT_EQ(bytes(), before);
    const auto at = [](double y) { return Page_Y(y, -500, 3000); };
    const auto calculated = Curves(WRGB(1, 2, 3), 5), differences = Curves(WRGB(3, 2, 1), 5);
    ASSERT_EQ(calculated.size(), 2u);  // of row 2, and over all rows of the refined row 3
    EXPECT_NEAR(calculated[0].points[2].y, at(990 + step), page_tolerance);
    EXPECT_NEAR(calculated[1].points[2].y, at(990 + 2 * step), page_tolerance);
    ASSERT_EQ(differences.size(), 2u);
    EXPECT_NEAR(differences[0].points[2].y, at(10 + step), page_tolerance);
    EXPECT_NEAR(differences[1].points[2].y, at(10 + static_cast<double>(session.plot.diff_base)), page_tolerance);

    // So do error bars.
    session.store.Info(2).kind = Row_Kind::mono;
    session.store.profile_shown.reset(0);
    session.store.profile_shown.set(2);
    session.store.Info(3).kind = Row_Kind::mono;
    Draw("", 10, 14, -500, 3000);
    double highest = 0;
    for (const Recorded_Line& line : Lines(Slot_Colour(3))) highest = std::max(highest, line.points.front().y);
    EXPECT_NEAR(highest, at(1000 + 50 + step), page_tolerance);
}

// A hump in front of a level row: under its curve the ground is seen, beside it the row behind.
TEST_F(Waterfalls, HiddenLinesCover) {
    std::vector<float> x, hump, level;
    for (int i = 0; i <= 400; ++i) {
        x.push_back(10 + 0.01f * static_cast<float>(i));
        hump.push_back(std::fabs(x.back() - 12) < 0.5f ? 1000.0f : 0.0f);
        level.push_back(0);
    }
    Add(x, hump);
    Add(x, level);
    for (ProfileStyle& style : session.prefs.profile_styles) style.marker_type = 1, style.line_pitch = 3;
    const Colour ground = session.prefs.graph2d.frame_foreground;
    for (const bool hidden : {false, true}) {
        Set_Apart({0.5f, false, hidden});
        for (const bool reduced : {true, false}) {
            Bitmap bitmap(1200, 800);
            bitmap.Reduce(reduced);
            Graphics g(bitmap.Drawing());
            plot_graph2d(Scene_Of(session), g, 2, {10, 14, -100, 2000});
            const auto shown = [&](double at_x, double at_y) {
                return bitmap.Pixel(static_cast<int>(Page_X(at_x)), static_cast<int>(800 - Page_Y(at_y, -100, 2000)));
            };
            EXPECT_EQ(shown(12, 500), hidden ? ground : Slot_Colour(2));
            EXPECT_EQ(shown(11, 500), Slot_Colour(2));
            EXPECT_EQ(shown(12, 1000), Slot_Colour(1));
            EXPECT_EQ(shown(11.45, 500), Slot_Colour(2));
        }
        Draw("", 10, 14, -100, 2000);  // on a device of shapes an area of the ground's colour lies between the two
        const auto areas = All<Recorded_Fill>();
        const auto on_ground =
            std::count_if(areas.begin(), areas.end(), [&](const Recorded_Fill& f) { return f.colour == ground && f.points.size() > 4; });
        EXPECT_EQ(on_ground, hidden ? 2 : 0);
    }
}

TEST_F(Waterfalls, MarkersStandWhereTheirPointsAreApart) {
    std::vector<float> x, y;
    for (int i = 0; i <= 400; ++i) x.push_back(10 + 0.01f * static_cast<float>(i)), y.push_back(100);
    Add(x, y);  // 840 pixels: 2.1 from point to point
    Add(x, y);
    session.prefs.profile_styles[1].line_style = -1;
    const auto sets = [&](float gap, float x2) {
        session.look.least_marker_gap = gap;
        Draw("", 10, x2);
        return std::pair{Markers(Slot_Colour(1)).size(), Markers(Slot_Colour(2)).size()};
    };
    EXPECT_EQ(sets(0, 14), (std::pair<std::size_t, std::size_t>{1, 1}));
    EXPECT_EQ(sets(2, 14), (std::pair<std::size_t, std::size_t>{1, 1}));
    EXPECT_EQ(sets(4, 14), (std::pair<std::size_t, std::size_t>{0, 1}));  // the second has nothing else
    EXPECT_EQ(sets(4, 12), (std::pair<std::size_t, std::size_t>{1, 1}));
    session.store.prf_loaded = true;
    session.store.ProfilePRFactive = 1;
    EXPECT_EQ(sets(4, 14), (std::pair<std::size_t, std::size_t>{1, 1})) << "observed points are points";
    const auto wide = Markers(Slot_Colour(1)).at(0).style.width;
    (void)sets(0, 14);
    EXPECT_LT(wide, Markers(Slot_Colour(1)).at(0).style.width);
}

}  // namespace vntl::test
