// The picture of the profile in hand: every curve where the numbers of its points belong, the ticks between foot and base.
#include <algorithm>

#include "fixture.hpp"
#include "plot/quick_view_picture.hpp"

namespace vntl::test {

class Quick_View_Picture : public Plot_Test {
protected:
    Quick_View_Picture() {
        quick.files = {{"a.prf", ""}};
        quick.index = 1;
        Diffraction_Pattern_Type& p = quick.pattern;
        p.x = five_x;
        p.y = {0, 100, 1000, 10, 1};
        p.ycalc = {5, 90, 980, 20, 1};
        p.npts = 5;
        p.scat_var = "2theta";
        p.title = " Silicon CELL: 5.43";
        Set_Y_Limits(p);
        quick.info.kind = Row_Kind::prf;
        session.prefs.prf.ycalc_colour = red;
        session.prefs.prf.ydif_colour = violet;
        session.prefs.profile_styles[0].line_colour = grey;
        session.prefs.profile_styles[0].marker_colour = brown;
        Show({10, 14, -200, 1000}, -140);
    }
    void Show(const View& view, float base) {
        quick.plot.Show(view);
        quick.plot.drawn = quick.plot.units = view;
        quick.plot.diff_base = base;
        Draw_Quick_View(quick, session.prefs, page);
    }
    template <class Set>
    void Expect_Points(const std::vector<Set>& sets, const std::vector<double>& y, double y1 = -200, double y2 = 1000) const {
        ASSERT_EQ(sets.size(), 1u);
        ASSERT_EQ(sets[0].points.size(), y.size());
        for (std::size_t i = 0; i < y.size(); ++i) EXPECT_AT(sets[0].points[i], Page_X(10 + static_cast<double>(i)), Page_Y(y[i], y1, y2));
    }

    Quick_View& quick = session.quick_view;
    const Colour red = WRGB(200, 0, 0), violet = WRGB(90, 0, 90), grey = WRGB(90, 90, 90), brown = WRGB(90, 50, 0);
    const Colour blue = WRGB(0, 0, 255), green = WRGB(0, 128, 0);
};

TEST_F(Quick_View_Picture, AProfileHasItsThreeCurvesAndTexts) {
    session.prefs.prf.ycalc_style = 1;
    Show({10, 14, -200, 1000}, -140);
    Expect_Points(Markers(brown), {0, 100, 1000, 10, 1});
    EXPECT_EQ(Markers(brown)[0].style.glyph, 221);
    Expect_Points(Lines(grey), {0, 100, 1000, 10, 1});
    EXPECT_EQ(Lines(grey)[0].pen.width, 1);
    Expect_Points(Lines(red), {5, 90, 980, 20, 1});
    EXPECT_TRUE(Lines(red)[0].pen.width == 2 && Lines(red)[0].pen.style == Line_Style::dotted);
    Expect_Points(Lines(blue), {-145, -130, -120, -150, -140});
    EXPECT_EQ(Lines(blue)[0].pen.width, 2);
    EXPECT_EQ(All<Recorded_Clear>().at(0).colour, session.prefs.quick_view.qv_background);
    EXPECT_EQ(All<Recorded_Fill>().at(0).colour, session.prefs.quick_view.qv_foreground);
    const Recorded_Text* const title = Text("Silicon CELL: 5.43");
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->style.colour, session.prefs.graph2d.title.colour);
    EXPECT_NEAR(title->style.width, 16, 1e-3);
    EXPECT_NEAR(title->style.height, 32, 1e-3);
    quick.pattern.ycalc.clear();
    Show({10, 14, -200, 1000}, -140);
    EXPECT_TRUE(Lines(red).empty() && Lines(blue).empty()) << "nothing was calculated";
}

TEST_F(Quick_View_Picture, IntegratedIntensitiesAreMarkers) {
    quick.info.kind = Row_Kind::mono;
    Show({10, 14, -200, 1000}, -140);
    Expect_Points(Markers(red), {5, 90, 980, 20, 1});
    Expect_Points(Markers(violet), {-145, -130, -120, -150, -140});
    EXPECT_TRUE(Lines(red).empty() && Lines(grey).empty() && Lines(blue).empty());
    EXPECT_EQ(Markers(violet)[0].style.glyph, 221);
}

TEST_F(Quick_View_Picture, TheVariableNamesTheAxesByItsExactName) {
    const struct {
        const char *variable, *x, *y;
    } rows[] = {{"2theta", "2Theta", "Intensity (arb. units)"},
                {"TOF", "TOF (usec)", "Intensity (arb. units)"},
                {"mono", "Intensity (arb. units)", "Fcalc. - Fobs."}};
    for (const auto& row : rows) {
        quick.pattern.scat_var = row.variable;
        Show({10, 14, -200, 1000}, -140);
        ASSERT_TRUE(Text(row.x) != nullptr && Text(row.y) != nullptr) << row.variable;
        EXPECT_EQ(Text(row.x)->style.justify, Justify::right);
        EXPECT_EQ(Text(row.y)->style.angle, 90);
    }
    for (const char* variable : {"Distance", "2theta (deg)", "tof", ""}) {
        quick.pattern.scat_var = variable;
        Show({10, 14, -200, 1000}, -140);
        for (const auto& row : rows) EXPECT_TRUE(Text(row.x) == nullptr && Text(row.y) == nullptr) << variable;
    }
}

// Base b under a foot f of zero, or of the least intensity y where b is positive: t = 0.3, 0.4, ... of the way, 0.085 of it long.
TEST_F(Quick_View_Picture, TicksHangBetweenFootAndBase) {
    quick.pattern.ycalc.clear();
    quick.info.nexcl = 0;
    quick.info.refl_position = {11, 12, 10, 14, 13};
    quick.info.refl_phase = {1, 2, 1, 1, 12};  // the ends of the view have no ticks
    const struct {
        float base, least;
        View view;
        std::vector<std::array<double, 3>> ticks;  // x, top, bottom
    } rows[] = {{-140, 0, {10, 14, -200, 1000}, {{11, -42, -53.9}, {12, -56, -67.9}, {13, -196, -200}}},
                {-140, 0, {10, 14, -45, 1000}, {{11, -42, -45}}},
                {-140, 0, {11, 13, -200, 1000}, {{12, -56, -67.9}}},
                {4860, 5000, {10, 14, 4800, 6000}, {{11, 4958, 4946.1}, {12, 4944, 4932.1}, {13, 4804, 4800}}},
                {-140, 300, {10, 14, -200, 1000}, {{11, -42, -53.9}, {12, -56, -67.9}, {13, -196, -200}}}};
    for (const auto& row : rows) {
        quick.pattern.ymin = row.least;
        Show(row.view, row.base);
        const auto ticks = Lines(green);
        ASSERT_EQ(ticks.size(), row.ticks.size());
        for (std::size_t i = 0; i < ticks.size(); ++i) {
            const auto& [x, top, bottom] = row.ticks[i];
            EXPECT_AT(ticks[i].points.at(0), Page_X(x, row.view.x1, row.view.x2), Page_Y(top, row.view.y1, row.view.y2));
            EXPECT_AT(ticks[i].points.at(1), Page_X(x, row.view.x1, row.view.x2), Page_Y(bottom, row.view.y1, row.view.y2));
        }
    }
}

TEST_F(Quick_View_Picture, ExcludedRegionsAreCovered) {
    quick.info.nexcl = 3;
    const std::array<std::array<float, 2>, 3> regions = {{{-1e30f, 10.5f}, {12, 13}, {20, 1e30f}}};
    for (std::size_t j = 0; j < 3; ++j) quick.info.excl_min[j] = regions[j][0], quick.info.excl_max[j] = regions[j][1];
    const Colour cover = session.prefs.quick_view.qv_foreground = WRGB(250, 250, 240);
    const auto covered = [&] {
        Show({10, 14, -200, 1000}, -140);
        std::vector<std::array<double, 2>> sides;
        for (const Recorded_Fill& fill : All<Recorded_Fill>()) {
            if (fill.colour != cover) continue;
            const auto [left, right] =
                std::minmax_element(fill.points.begin(), fill.points.end(), [](auto a, auto b) { return a.x < b.x; });
            sides.push_back({left->x, right->x});
        }
        return sides;
    };
    const auto sides = covered();
    ASSERT_EQ(sides.size(), 3u);  // the plot box is the first
    EXPECT_NEAR(sides[1][0], 180, page_tolerance);
    EXPECT_NEAR(sides[1][1], Page_X(10.5), page_tolerance);
    EXPECT_NEAR(sides[2][0], Page_X(12), page_tolerance);
    EXPECT_NEAR(sides[2][1], Page_X(13), page_tolerance);
    session.prefs.quick_view.qv_excl_match = false;
    EXPECT_EQ(covered().size(), 1u);
}

TEST_F(Quick_View_Picture, WithoutAProfileThereIsAFrameAndWithoutFilesAWelcome) {
    quick.pattern = {};
    Show({}, 0);
    EXPECT_TRUE(All<Recorded_Text>().empty() && All<Recorded_Markers>().empty());
    EXPECT_EQ(Lines(0).size(), 1u);  // the frame
    quick = {};
    session.prefs.graph2d.title.font = 3;
    Draw_Quick_View(quick, session.prefs, page);
    const Recorded_Text* const text = Text("Select the directory to view");
    ASSERT_NE(text, nullptr);
    EXPECT_NEAR(text->at.x, 600, page_tolerance);
    EXPECT_NEAR(text->at.y, 400, 20);
    EXPECT_TRUE(text->style.justify == Justify::centre && text->style.colour == 0 && text->style.font == 103);
    EXPECT_NEAR(text->style.width, 24, 1e-3);
    EXPECT_NEAR(text->style.height, 40, 1e-3);
    EXPECT_EQ(All<Recorded_Clear>().at(0).colour, session.prefs.quick_view.qv_background);
}

}  // namespace vntl::test
