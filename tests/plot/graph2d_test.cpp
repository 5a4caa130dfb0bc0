#include <cmath>
#include <limits>

#include "fixture.hpp"

namespace vntl::test {

class Graph2d : public Plot_Test {};

TEST_F(Graph2d, PageAndZoneComeFirstAndTheFrameAfterTheCurves) {
    Add();
    Draw();
    EXPECT_EQ(All<Recorded_Clear>().at(0).colour, WRGB(150, 200, 150));
    const Recorded_Fill zone = All<Recorded_Fill>().at(0);
    EXPECT_EQ(zone.colour, WRGB(235, 235, 235));
    EXPECT_AT(zone.points.at(0), 180, 120);
    EXPECT_AT(zone.points.at(2), 1020, 680);

    std::vector<Recorded_Line> wide;
    for (const Recorded_Line& line : All<Recorded_Line>())
        if (line.pen.width == 2) wide.push_back(line);
    ASSERT_EQ(wide.size(), 1u);
    EXPECT_EQ(wide[0].pen.colour, 0u);
    for (const Point& corner : wide[0].points) {
        EXPECT_TRUE(std::abs(corner.x - 180) < 0.01 || std::abs(corner.x - 1020) < 0.01);
        EXPECT_TRUE(std::abs(corner.y - 120) < 0.01 || std::abs(corner.y - 680) < 0.01);
    }
    EXPECT_FLOAT_EQ(session.plot.drawn.x2, 14);
    EXPECT_FLOAT_EQ(session.plot.drawn.y2, 1000);
}

TEST_F(Graph2d, ARowIsItsMarkersAndOverThemItsLine) {
    Add();
    session.prefs.profile_styles[0].line_pitch = 3;
    session.prefs.graph2d.legend.pos = 1;
    Draw();
    const Colour red = WRGB(255, 0, 0);
    const auto markers = Markers(red);
    const auto lines = Lines(red);
    ASSERT_EQ(markers.size(), 1u);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(markers[0].style.glyph, 221);
    EXPECT_TRUE(markers[0].style.filled);
    EXPECT_NEAR(markers[0].style.width, 0.005 * 1200, page_tolerance);
    EXPECT_NEAR(markers[0].style.height, 0.010 * 800, page_tolerance);
    EXPECT_EQ(lines[0].pen.width, 3);
    ASSERT_EQ(lines[0].points.size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_AT(lines[0].points[i], Page_X(five_x[i]), Page_Y(five_y[i]));
        EXPECT_AT(markers[0].points[i], Page_X(five_x[i]), Page_Y(five_y[i]));
    }
    const auto position = [&](std::size_t kind) {
        for (std::size_t i = 0; i < page.items().size(); ++i)
            if (page.items()[i].index() == kind) return i;
        return page.items().size();
    };
    EXPECT_LT(position(Recorded(Recorded_Markers{}).index()), position(Recorded(Recorded_Line{}).index()));
}

TEST_F(Graph2d, StylesRepeatEveryTwelveRowsAndHiddenRowsAreSkipped) {
    Add_Rows(14);
    session.prefs.graph2d.legend.pos = 1;
    session.prefs.profile_styles[11].line_colour = WRGB(1, 2, 3);
    session.prefs.profile_styles[0].line_colour = WRGB(4, 5, 6);
    Draw();
    EXPECT_EQ(Lines(WRGB(1, 2, 3)).size(), 1u);  // row 12
    EXPECT_EQ(Lines(WRGB(4, 5, 6)).size(), 2u);  // rows 1 and 13
    session.store.profile_shown[12] = false;
    Draw();
    EXPECT_EQ(Lines(WRGB(4, 5, 6)).size(), 1u);
}

TEST_F(Graph2d, MarkerTypesSelectTheirGlyphAndNoneDrawsNothing) {
    Add();
    session.prefs.graph2d.legend.pos = 1;
    for (int type = 2; type <= 8; ++type) {
        session.prefs.profile_styles[0].marker_type = type;
        Draw();
        ASSERT_EQ(All<Recorded_Markers>().size(), 1u);
        EXPECT_EQ(All<Recorded_Markers>()[0].style.glyph, 219 + type);
    }
    session.prefs.profile_styles[0].marker_type = 1;
    session.prefs.profile_styles[0].line_style = -1;
    Draw();
    EXPECT_TRUE(All<Recorded_Markers>().empty());
    EXPECT_TRUE(Curves(Slot_Colour(1), 5).empty());
}

TEST_F(Graph2d, TheLogarithmOfOneAndLessIsZero) {
    Add();
    Draw("log", 10, 14, 0, 8);
    const auto line = Curves(Slot_Colour(1), 5);
    ASSERT_EQ(line.size(), 1u);
    const double expected[] = {0, std::log(100.0), std::log(1000.0), std::log(10.0), 0};
    for (std::size_t i = 0; i < 5; ++i) EXPECT_NEAR(line[0].points[i].y, Page_Y(expected[i], 0, 8), page_tolerance);
}

// Everything of a row stands at the root of its counts; an error bar ends at the roots of its ends.
TEST_F(Graph2d, ARootScaleDrawsRootsOfAllThatARowHas) {
    const Colour nine = WRGB(9, 9, 9), eight = WRGB(8, 8, 8);
    Diffraction_Pattern_Type& p = Add({10, 11, 12}, {-25, 100, 900});
    p.ycalc = {0, 81, 400};
    p.bgr = {4, 4, 4};
    session.store.show_ycalc_of[0] = session.store.show_bgr_of[0] = true;
    session.prefs.prf.ycalc_colour = nine;
    session.prefs.prf.ydif_colour = eight;
    Exclude(1, 11, 12);
    Draw("root", 10, 14, -10, 40);
    const auto expect = [](const Recorded_Line& line, const std::vector<double>& roots) {
        ASSERT_EQ(line.points.size(), roots.size());
        for (std::size_t i = 0; i < roots.size(); ++i) EXPECT_NEAR(line.points[i].y, Page_Y(roots[i], -10, 40), page_tolerance) << i;
    };
    expect(Curves(Slot_Colour(1), 3).at(0), {-5, 10, 30});
    expect(Lines(nine).at(0), {0, 9, 20});
    expect(Lines(eight).at(0), {2, 2, 2});
    expect(Lines(eight).at(1), {-5, 1, 10});  // of the roots
    expect(Lines(session.prefs.prf.excl_colour).at(0), {10, 30});

    session.store.Clear();
    Add({10, 12, 14}, {100, 400, 900}, Row_Kind::mono).sigma = {1, 300, 1};
    session.store.Pattern(1).sigma_is_variance = false;
    Draw("root", 10, 14, -10, 40);
    double lowest = 1e9, highest = -1e9;
    for (const Recorded_Line& line : Lines(Slot_Colour(1)))
        for (const Point& point : line.points)
            if (std::abs(point.x - Page_X(12)) < 0.5) lowest = std::min(lowest, point.y), highest = std::max(highest, point.y);
    EXPECT_NEAR(lowest, Page_Y(10, -10, 40), page_tolerance);
    EXPECT_NEAR(highest, Page_Y(std::sqrt(700.0), -10, 40), page_tolerance);
}

TEST_F(Graph2d, IntegratedIntensitiesHaveErrorBarsAndNoLine) {
    Diffraction_Pattern_Type& p = Add({10, 12, 14}, {100, 400, 900}, Row_Kind::mono);
    p.sigma = {100, 400, 2500};
    session.prefs.graph2d.legend.pos = 1;
    for (const bool variance : {true, false}) {
        session.store.Pattern(1).sigma_is_variance = variance;
        Draw();
        EXPECT_TRUE(Curves(Slot_Colour(1), 3).empty());
        EXPECT_EQ(Markers(Slot_Colour(1)).size(), 1u);
        double lowest = 1e9, highest = -1e9;  // of the bar of the second point
        for (const Recorded_Line& line : Lines(Slot_Colour(1)))
            for (const Point& point : line.points)
                if (std::abs(point.x - Page_X(12)) < 0.5) {
                    lowest = std::min(lowest, point.y);
                    highest = std::max(highest, point.y);
                }
        const double sigma = variance ? 20 : 400;
        EXPECT_NEAR(lowest, Page_Y(400 - sigma), page_tolerance) << variance;
        EXPECT_NEAR(highest, Page_Y(400 + sigma), page_tolerance) << variance;
    }
    session.store.Pattern(1).sigma.clear();
    Draw();
    EXPECT_TRUE(Lines(Slot_Colour(1)).empty());
}

TEST_F(Graph2d, ARowsOwnModelIsDrawnWithItsDifference) {
    Diffraction_Pattern_Type& p = Add();
    p.ycalc = {10, 90, 990, 20, 5};
    p.bgr = {5, 5, 5, 5, 5};
    session.store.show_ycalc_of[0] = session.store.show_bgr_of[0] = true;
    session.prefs.prf.ycalc_colour = WRGB(9, 9, 9);
    session.prefs.prf.ydif_colour = WRGB(8, 8, 8);
    Draw();
    ASSERT_EQ(Lines(WRGB(9, 9, 9)).size(), 1u);
    ASSERT_EQ(Lines(WRGB(8, 8, 8)).size(), 2u);
    EXPECT_NEAR(Lines(WRGB(9, 9, 9))[0].points[2].y, Page_Y(990), page_tolerance);
    EXPECT_NEAR(Lines(WRGB(8, 8, 8))[0].points[2].y, Page_Y(5), page_tolerance);   // background first
    EXPECT_NEAR(Lines(WRGB(8, 8, 8))[1].points[2].y, Page_Y(10), page_tolerance);  // then y - ycalc
}

TEST_F(Graph2d, ExcludedStretchesLieOverTheirRow) {
    Add();
    const Colour grey = session.prefs.prf.excl_colour;
    const struct {
        float lo, hi;
        std::size_t points;  // 0: not drawn
        float x1 = 10, x2 = 14;
    } cases[] = {
        {11, 13, 3},             // both ends counted
        {10.5f, 12.5f, 2},       //
        {11.5f, 12.5f, 0},       // one point alone
        {-5, 100, 5},            // the whole row
        {13, 11, 0},             // the wrong way round
        {14.5f, 20, 0},          // behind the last point
        {1, 9, 0},               // before the first
        {11, 13, 0, 13, 14},     // ends where the window begins
        {11, 13, 0, 10, 11},     // begins where the window ends
        {11, 13, 3, 12.5f, 14},  // partly in the window: the whole stretch
    };
    for (const auto& c : cases) {
        session.store.Info(1).nexcl = 0;
        Exclude(1, c.lo, c.hi);
        Draw({}, c.x1, c.x2);
        EXPECT_EQ(Lines(grey).size(), c.points ? 1u : 0u) << c.lo << ' ' << c.hi << ' ' << c.x1;
        EXPECT_EQ(Markers(grey).size(), c.points ? 1u : 0u) << c.lo << ' ' << c.hi << ' ' << c.x1;
        const std::size_t points = Lines(grey).empty() ? 0 : Lines(grey)[0].points.size();
        EXPECT_EQ(points, c.points) << c.lo << ' ' << c.hi;
    }
    session.store.Info(1).nexcl = 0;
    Exclude(1, 12, 13);
    Exclude(1, 10, 11);
    session.prefs.profile_styles[0].line_style = -1;  // markers alone
    Draw("log", 10, 14, 0, 1000);
    EXPECT_TRUE(Lines(grey).empty());
    ASSERT_EQ(Markers(grey).size(), 2u);
    EXPECT_AT(Markers(grey)[0].points[0], Page_X(12), Page_Y(1000));  // in the order of the regions, in linear intensity
    EXPECT_AT(Markers(grey)[1].points[0], Page_X(10), Page_Y(0.5));
    session.prefs.prf.excl_show = false;
    Draw();
    EXPECT_TRUE(Markers(grey).empty());
}

TEST_F(Graph2d, DegenerateWindowsDrawTheFrameAlone) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    Add();
    session.prefs.graph2d.legend.pos = 1;
    for (const float x2 : {10.0f, nan, inf}) {
        Draw({}, 10, x2);
        EXPECT_TRUE(All<Recorded_Markers>().empty());
        EXPECT_TRUE(Lines(Slot_Colour(1)).empty());
        EXPECT_FALSE(Lines(0).empty());
        EXPECT_NE(Text("Silicon"), nullptr);
    }
    Graphics g(page);
    plot_graph2d(Scene_Of(session), g, 99, {10, 14, 0, 1000});  // more rows asked for than there are
    session.store.Clear();
    plot_graph2d(Scene_Of(session), g, 0, {10, 14, 0, 1000});
}

TEST_F(Graph2d, TheTargetStandsAtTheCentre) {
    Add();
    session.plot.show_target = true;
    Draw();
    int found = 0;
    for (const Recorded_Line& line : Lines(0)) {
        if (line.pen.width != 1) continue;
        const Point a = line.points.front(), b = line.points.size() > 2 ? line.points[2] : line.points.back();
        const auto is = [&](double x1, double y1, double x2, double y2) {
            return std::abs(a.x - x1) < 0.01 && std::abs(a.y - y1) < 0.01 && std::abs(b.x - x2) < 0.01 && std::abs(b.y - y2) < 0.01;
        };
        found += is(600, 120, 600, 680) + is(180, 400, 1020, 400) + is(500, 320, 700, 480) + is(400, 240, 800, 560);
    }
    EXPECT_EQ(found, 4);
}

TEST_F(Graph2d, ThePictureFollowsTheDevice) {
    Add();
    Plot_Ranges(session);
    Recording_Device small(400, 200), large(2400, 1600);
    Draw_Picture(Scene_Of(session), small);
    Draw_Picture(Scene_Of(session), large);
    ASSERT_EQ(small.items().size(), large.items().size());
    for (std::size_t i = 0; i < small.items().size(); ++i)
        if (const auto* set = std::get_if<Recorded_Markers>(&small.items()[i])) {
            const Point there = std::get<Recorded_Markers>(large.items()[i]).points[0];
            EXPECT_NEAR(there.x, 6 * set->points[0].x, 0.01);
            EXPECT_NEAR(there.y, 8 * set->points[0].y, 0.01);
        }
}

}  // namespace vntl::test
