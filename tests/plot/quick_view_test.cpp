// The picture of the profile in hand: every curve where the numbers of its points belong, the ticks between foot and base.
#include <algorithm>

#include "fixture.hpp"
#include "plot/quick_view_picture.hpp"

namespace vntl::test {

class Quick_View_Picture : public Plot_Test {
protected:
    Quick_View_Picture() {
        quick.files = {{"a.prf", ""}};
        Diffraction_Pattern_Type& p = quick.pattern;
        p.x = five_x;
        p.y = {0, 100, 1000, 10, 1};
        p.ycalc = {5, 90, 980, 20, 1};
        p.npts = 5;
        p.scat_var = "2theta";
        quick.info.kind = Row_Kind::prf;
        session.prefs.prf.ycalc_colour = red;
        session.prefs.prf.ydif_colour = violet;
        session.prefs.profile_styles[0].line_colour = grey;
        session.prefs.profile_styles[0].marker_colour = brown;
    }
    void Draw(const View& view = {10, 14, -200, 1000}, float base = -140) {
        quick.plot.Show(view);
        quick.plot.diff_base = base;
        Draw_Quick_View(quick, session.prefs, page);
    }
    template <class Set>
    void Expect_Points(const std::vector<Set>& sets, const std::vector<double>& y) const {
        ASSERT_EQ(sets.size(), y.empty() ? 0u : 1u);
        for (std::size_t i = 0; i < y.size(); ++i) EXPECT_AT(sets[0].points.at(i), Page_X(10 + static_cast<double>(i)), Page_Y(y[i], -200));
    }

    Quick_View& quick = session.quick_view;
    const Colour red = WRGB(200, 0, 0), violet = WRGB(90, 0, 90), grey = WRGB(90, 90, 90), brown = WRGB(90, 50, 0);
    const Colour blue = WRGB(0, 0, 255), green = WRGB(0, 128, 0);
    const std::vector<double> observed = {0, 100, 1000, 10, 1}, calculated = {5, 90, 980, 20, 1},
                              difference = {-145, -130, -120, -150, -140};
};

TEST_F(Quick_View_Picture, ThreeCurvesAreLinesOrOfIntegratedIntensitiesMarkers) {
    Draw();
    Expect_Points(Markers(brown), observed);
    Expect_Points(Lines(grey), observed);
    Expect_Points(Lines(red), calculated);
    Expect_Points(Lines(blue), difference);
    EXPECT_TRUE(Lines(grey)[0].pen.width == 1 && Lines(red)[0].pen.width == 2 && Lines(blue)[0].pen.width == 2);
    EXPECT_TRUE(Text("2Theta") != nullptr && Text("Intensity (arb. units)") != nullptr);
    quick.info.kind = Row_Kind::mono;
    quick.pattern.scat_var = "Distance";
    Draw();
    Expect_Points(Markers(red), calculated);
    Expect_Points(Markers(violet), difference);
    EXPECT_TRUE(Lines(red).empty() && Lines(grey).empty() && Lines(blue).empty());
    EXPECT_TRUE(Text("2Theta") == nullptr && Text("Intensity (arb. units)") == nullptr);
    quick.pattern.ycalc.clear();
    Draw();
    Expect_Points(Markers(brown), observed);
    EXPECT_TRUE(Markers(red).empty() && Markers(violet).empty());
}

// Base b under a foot f of zero, or of the least intensity where b is positive: t = 0.3, 0.4, ... of the way, 0.085 of it long.
TEST_F(Quick_View_Picture, TicksHangBetweenFootAndBase) {
    quick.info.refl_position = {11, 12, 10, 14, 13};  // the ends of the view have no ticks
    quick.info.refl_phase = {1, 2, 1, 1, 12};
    const struct {
        float base, least;
        View view;
        std::vector<std::array<double, 3>> ticks;  // x, top, bottom
    } rows[] = {{-140, 300, {10, 14, -200, 1000}, {{11, -42, -53.9}, {12, -56, -67.9}, {13, -196, -200}}},
                {-140, 0, {10, 14, -45, 1000}, {{11, -42, -45}}},
                {-140, 0, {11, 13, -200, 1000}, {{12, -56, -67.9}}},
                {4860, 5000, {10, 14, 4800, 6000}, {{11, 4958, 4946.1}, {12, 4944, 4932.1}, {13, 4804, 4800}}}};
    for (const auto& row : rows) {
        quick.pattern.ymin = row.least;
        Draw(row.view, row.base);
        const auto ticks = Lines(green);
        ASSERT_EQ(ticks.size(), row.ticks.size());
        for (std::size_t i = 0; i < ticks.size(); ++i)
            for (const std::size_t end : {0u, 1u})
                EXPECT_AT(ticks[i].points.at(end), Page_X(row.ticks[i][0], row.view.x1, row.view.x2),
                          Page_Y(row.ticks[i][1 + end], row.view.y1, row.view.y2));
    }
}

TEST_F(Quick_View_Picture, ExcludedRegionsAreCovered) {
    quick.info.nexcl = 3;
    const float regions[3][2] = {{-1e30f, 10.5f}, {12, 13}, {20, 1e30f}};
    for (std::size_t j = 0; j < 3; ++j) quick.info.excl_min[j] = regions[j][0], quick.info.excl_max[j] = regions[j][1];
    const Colour cover = session.prefs.quick_view.qv_foreground = WRGB(250, 250, 240);
    for (const bool covers : {true, false}) {
        session.prefs.quick_view.qv_excl_match = covers;
        Draw();
        std::vector<double> sides;  // behind those of the plot box
        for (const Recorded_Fill& fill : All<Recorded_Fill>())
            if (fill.colour == cover)
                for (const std::size_t corner : {0u, 2u}) sides.push_back(fill.points.at(corner).x);
        std::sort(sides.begin() + 2, sides.end());
        ASSERT_EQ(sides.size(), covers ? 6u : 2u);
        for (std::size_t i = 2; i < sides.size(); ++i)
            EXPECT_NEAR(sides[i], Page_X(std::array<double, 4>{10, 10.5, 12, 13}[i - 2]), page_tolerance);
    }
}

TEST_F(Quick_View_Picture, WithoutAProfileThereIsAFrameAndWithoutFilesAWelcome) {
    quick.pattern = {};
    Draw();
    EXPECT_TRUE(All<Recorded_Text>().empty() && All<Recorded_Markers>().empty() && Lines(0).size() == 1);
    quick = {};
    Draw();
    const Recorded_Text* const text = Text("Select the directory to view");
    ASSERT_NE(text, nullptr);
    EXPECT_NEAR(text->at.x, 600, page_tolerance);
    EXPECT_NEAR(text->at.y, 400, 20);
    EXPECT_TRUE(text->style.justify == Justify::centre && text->style.colour == 0);
}

}  // namespace vntl::test
