#include "fixture.hpp"

namespace vntl::test {

constexpr Colour blue = WRGB(0, 0, 255), olive = WRGB(128, 128, 0), deep_blue = WRGB(0, 0, 200);

class Marks : public Plot_Test {
protected:
    void SetUp() override {
        Add();
        Plot_Ranges(session);
        Plot_State& p = session.plot;
        p.x_view_min = 10;
        p.x_view_max = 14;
        p.y_view_min = 0;
        p.y_view_max = 1000;
    }
    void Calculate(int mode) {
        Set_Calculation_Mode(session, Click_Mode{mode});
        page = Recording_Device();
        Draw_The_Marks();
    }
};

TEST_F(Marks, PeaksAndReflectionsAreLinesFromTheFootOfTheView) {
    session.lists.peaks = {{11, 500, 20}, {13, 800, 20}};
    session.lists.hklgen = {{12, 250, "1 1 1"}};
    Calculate(2);
    ASSERT_EQ(Lines(0).size(), 2u);
    EXPECT_EQ(Lines(0)[1].pen.width, 2);
    EXPECT_AT(Lines(0)[1].points[0], Page_X(13), Page_Y(0));
    EXPECT_AT(Lines(0)[1].points[1], Page_X(13), Page_Y(800));
    Calculate(4);
    const auto green = Lines(WRGB(0, 128, 0));
    ASSERT_EQ(green.size(), 1u);
    EXPECT_EQ(green[0].pen.width, 1);
    EXPECT_AT(green[0].points[1], Page_X(12), Page_Y(250));
    Calculate(0);
    EXPECT_TRUE(All<Recorded_Line>().empty());
    Set_Menu_Single(session, true);
    session.plot.ClickMode = Click_Mode::peaks;
    Draw_The_Marks();
    EXPECT_TRUE(All<Recorded_Line>().empty());  // no calculation, no marks
}

TEST_F(Marks, BackgroundIsALineWithADotOnEachPoint) {
    session.lists.background = {{10.5f, 100}};
    Calculate(3);
    EXPECT_TRUE(All<Recorded_Ellipse>().empty());  // one point is no line yet
    session.lists.background = {{13, 200}, {10.5f, 100}, {12, 300}};
    Calculate(3);
    ASSERT_EQ(Lines(blue).size(), 1u);
    EXPECT_EQ(Lines(blue)[0].pen.width, 2);
    EXPECT_AT(Lines(blue)[0].points.at(0), Page_X(13), Page_Y(200));  // in list order
    EXPECT_AT(Lines(blue)[0].points.at(2), Page_X(12), Page_Y(300));
    const auto dots = All<Recorded_Ellipse>();
    ASSERT_EQ(dots.size(), 6u);
    EXPECT_EQ(dots[0].pen.colour, olive);
    EXPECT_EQ(dots[1].pen.colour, deep_blue);
    EXPECT_TRUE(dots[0].filled && dots[1].filled);
    EXPECT_NEAR(dots[1].rx, 0.005 * 840, page_tolerance);
    EXPECT_NEAR(dots[0].rx, 1.2 * dots[1].rx, page_tolerance);
    EXPECT_NEAR(dots[1].ry, 0.75 * dots[1].rx, page_tolerance);
    EXPECT_AT(dots[1].centre, Page_X(13), Page_Y(200));
}

// Counts of marks stand at their roots or logarithms; a background that is straight in counts is bent there.
TEST_F(Marks, StandOnTheScaleOfTheirGraph) {
    session.lists.peaks = {{11, 400, 20}};
    session.lists.background = {{10, 100}, {14, 900}};
    for (const Y_Scale scale : {Y_Scale::root, Y_Scale::logarithm}) {
        const auto place = [scale](double y) { return Page_Y(scale == Y_Scale::root ? std::sqrt(y) : std::log(y), 0, 40); };
        session.plot.y_scale = scale;
        session.plot.Show({10, 14, 0, 40});
        Calculate(2);
        EXPECT_AT(Lines(0).at(0).points[0], Page_X(11), Page_Y(0));
        EXPECT_AT(Lines(0).at(0).points[1], Page_X(11), place(400));
        Calculate(3);
        const auto line = Lines(blue).at(0).points;
        EXPECT_AT(line.front(), Page_X(10), place(100));
        EXPECT_AT(line.at(line.size() / 2), Page_X(12), place(500));
        EXPECT_AT(line.back(), Page_X(14), place(900));
        EXPECT_AT(All<Recorded_Ellipse>().at(2).centre, Page_X(14), place(900));
    }
}

TEST_F(Marks, TheFitShowsWhatIsChosenSoFar) {
    Fit_State& fit = session.lists.fit;
    session.lists.background = {{10, 0}, {14, 400}};
    fit.peaks.resize(2);
    fit.peaks[0].pos.value = 12;
    fit.peaks[0].top = 900;
    Fit_Peak& wide = fit.peaks[1];
    wide.pos.value = 13;
    wide.top = 700;
    wide.marked = true;
    wide.half_x = 12.8f;
    wide.half_y = 500;
    Calculate(1);
    EXPECT_TRUE(All<Recorded_Ellipse>().empty());
    fit.lower_set = true;
    fit.x_ini = 10;
    Calculate(1);
    EXPECT_EQ(All<Recorded_Ellipse>().size(), 2u);
    EXPECT_TRUE(Lines(blue).empty());
    fit.upper_set = true;
    fit.x_fin = 14;
    fit.y_fin = 400;
    Calculate(1);
    EXPECT_EQ(All<Recorded_Ellipse>().size(), 2u * (1 + 2 + 2 + 2));  // end, background, tops, half width and its mirror
    const auto lines = Lines(blue);
    ASSERT_EQ(lines.size(), 4u);  // background, two heights, one width
    EXPECT_AT(lines[1].points[0], Page_X(12), Page_Y(900));
    EXPECT_AT(lines[1].points[1], Page_X(12), Page_Y(200));  // the line rises by 100 a unit
    EXPECT_AT(lines[3].points[0], Page_X(12.8), Page_Y(500));
    EXPECT_AT(lines[3].points[1], Page_X(13.2), Page_Y(500));
    fit.done = true;
    Calculate(1);
    EXPECT_TRUE(All<Recorded_Ellipse>().empty());
}

TEST_F(Marks, PicksStandOnTheirReflections) {
    session.lists.hklgen = {{11, 100, "1 0 0"}, {12, 250, "1 1 1"}};
    Graphics g(page);
    Draw_Picks(Scene_Of(session), g, {2, 0, 3, -1}, true);
    ASSERT_EQ(Lines(WRGB(255, 0, 255)).size(), 1u);
    EXPECT_EQ(Lines(WRGB(255, 0, 255))[0].pen.width, 3);
    EXPECT_AT(Lines(WRGB(255, 0, 255))[0].points[1], Page_X(12), Page_Y(250));

    Draw_Picks(Scene_Of(session), g, {1}, false);  // no refined row
    EXPECT_TRUE(Lines(WRGB(255, 0, 0)).empty());
    PRF_Info_Add_Type& info = session.store.Info(1);
    info.nphases = 2;
    info.refl_position = {11, 12};
    info.refl_code = {1, 2};
    session.store.ProfilePRFactive = 1;
    session.plot.diff_base = 100;
    session.plot.diff_band = 100;
    Draw_Picks(Scene_Of(session), g, {1, 2}, false);
    const auto ticks = Lines(WRGB(255, 0, 0));
    ASSERT_EQ(ticks.size(), 2u);  // two phases in a band of 100: 72.2 to 52.8 and 50 to 30.6
    EXPECT_AT(ticks[0].points[0], Page_X(11), Page_Y(100 + 100 - 1000.0 / 36));
    EXPECT_AT(ticks[1].points[1], Page_X(12), Page_Y(100 + 100 - 2500.0 / 36));
}

TEST_F(Marks, TheReadOutBoxStaysOnThePage) {
    const std::vector<std::string> lines = {"(1 1 1)  ", "(2 0 0) phase 1"};  // 15 characters: 150 by 40
    const struct {
        float x, y, left, foot;
    } cases[] = {{300, 300, 300, 300}, {1100, 300, 500, 300}, {300, 790, 300, 390}, {1195, 795, 595, 395}, {1050, 760, 1050, 760}};
    for (const auto& c : cases) {
        page = Recording_Device();
        Graphics g(page);
        Draw_Readout_Box(g, {0, 0, 1, 1}, c.x, c.y, lines);
        const Recorded_Fill box = All<Recorded_Fill>().at(0);
        EXPECT_EQ(box.colour, WRGB(220, 220, 220));
        EXPECT_AT(box.points[0], c.left, c.foot);
        EXPECT_AT(box.points[2], c.left + 150, c.foot + 40);
        ASSERT_NE(Text("(1 1 1)"), nullptr);
        ASSERT_NE(Text(lines[1]), nullptr);
        EXPECT_NEAR(Text("(1 1 1)")->at.x, c.left + 5, page_tolerance);
        EXPECT_NEAR(Text(lines[1])->at.y - Text("(1 1 1)")->at.y, 20, page_tolerance);  // the first line is the lowest
        EXPECT_NEAR(Text("(1 1 1)")->style.width, 0.007 * 1200, page_tolerance);
        EXPECT_NEAR(Text("(1 1 1)")->style.height, 0.015 * 800, page_tolerance);
    }
    // In a small window the letters keep nine pixels, and the box its room.
    page = Recording_Device(600, 400);
    Graphics small(page);
    Draw_Readout_Box(small, {0.15f, 0.15f, 0.85f, 0.7f}, 1015, 550, lines);
    const Recorded_Fill box = All<Recorded_Fill>().at(0);
    EXPECT_GE(Em_Of_Cell(Text(lines[1])->style.width, Text(lines[1])->style.height), 9 - 1e-3);
    EXPECT_GE(box.points[0].x, 0.15 * 600);
    EXPECT_LE(box.points[2].x, 0.85 * 600 + 1e-3);
    EXPECT_LE(box.points[2].y, 0.7 * 400 + 1e-3);
    EXPECT_LE(page.Text_Width(lines[1], Text(lines[1])->style), box.points[2].x - box.points[0].x);

    page = Recording_Device();
    Graphics g(page);
    Draw_Readout_Box(g, {0, 0, 1, 1}, 700, 780, std::vector<std::string>(60, std::string(300, 'x')));  // larger than the page
    EXPECT_AT(All<Recorded_Fill>().at(0).points[0], 0, 0);
    EXPECT_AT(All<Recorded_Fill>().at(0).points[2], 1200, 800);
}

}  // namespace vntl::test
