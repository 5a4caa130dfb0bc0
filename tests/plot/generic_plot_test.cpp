// Plots of any columns: where their points, bars and slices stand, and that their texts keep apart.
#include "plot/generic_plot.hpp"

#include <cmath>
#include <limits>
#include <set>

#include "drawing/text_room.hpp"
#include "fixture.hpp"

namespace vntl::test {

namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
constexpr float largest = std::numeric_limits<float>::max();

Generic_Curve Curve(std::vector<float> x, std::vector<float> y, std::vector<float> sigma = {}) {
    Generic_Curve curve;
    curve.x = std::move(x), curve.y = std::move(y), curve.sigma = std::move(sigma);
    curve.sigma.resize(curve.x.size());
    return curve;
}

class Generic : public Plot_Test {
protected:
    void Draw_Kind(Plot_Kind kind) {
        plots.plot_kind = kind;
        Draw_Generic_Plot(plots, session.prefs, page);
    }
    std::size_t Texts_Starting(std::string_view start) const {
        std::size_t count = 0;
        for (const Recorded_Text& text : All<Recorded_Text>()) count += text.text.starts_with(start) ? 1 : 0;
        return count;
    }

    Generic_Plots plots;
};

}  // namespace

// The least and the largest value of the points that each curve has are the ends of the axes; a curve has lines, markers or both.
TEST_F(Generic, LinesAndMarkersOverTheLimitsOfAllCurves) {
    plots.title = " Cell ";
    plots.legend_x = "T (K)";
    plots.legend_y = "a";
    plots.curves = {Curve({100, 300}, {2, 6}), Curve({200, 150, nan}, {-2, inf, 4}), Curve({100, 200}, {0, 1})};
    plots.curves[1].has_marker = true;
    plots.curves[2].no_line = true;
    session.prefs.profile_styles[0].line_style = 2;
    session.prefs.profile_styles[1].line_pitch = 3;
    Draw_Kind(Plot_Kind::lines);
    EXPECT_EQ(All<Recorded_Clear>().at(0).colour, WRGB(255, 255, 255));
    const auto first = Curves(Slot_Colour(1), 2), second = Curves(Slot_Colour(2), 1);
    ASSERT_TRUE(first.size() == 1 && second.size() == 1 && Lines(Slot_Colour(3)).empty());
    EXPECT_AT(first[0].points[0], Page_X(100, 100, 300), Page_Y(2, -2, 6));
    EXPECT_AT(first[0].points[1], 1020, 680);
    EXPECT_EQ(first[0].pen.style, Line_Style::dashed);
    EXPECT_EQ(second[0].pen.width, 3);
    EXPECT_TRUE(Markers(Slot_Colour(1)).empty());
    EXPECT_AT(Markers(Slot_Colour(2)).at(0).points.at(0), Page_X(200, 100, 300), 120);
    EXPECT_AT(Markers(Slot_Colour(3)).at(0).points.at(1), Page_X(200, 100, 300), Page_Y(1, -2, 6));
    EXPECT_DOUBLE_EQ(Markers(Slot_Colour(3))[0].style.width, 1200 * static_cast<double>(0.005f));
    for (const auto& [text, prefs] : {std::pair<std::string, Text_Prefs>{"Cell", session.prefs.graph2d.title},
                                      {"T (K)", session.prefs.graph2d.xlabel},
                                      {"a", session.prefs.graph2d.ylabel},
                                      {"300", session.prefs.graph2d.xscale},
                                      {"-2", session.prefs.graph2d.yscale}}) {
        ASSERT_NE(Text(text), nullptr) << text;
        EXPECT_EQ(Text(text)->style.colour, prefs.colour) << text;
    }
    Draw_Kind(Plot_Kind::scatter);
    EXPECT_TRUE(Lines(Slot_Colour(1)).empty());
    EXPECT_EQ(Markers(Slot_Colour(1)).size(), 1u);
}

// The y axis reaches farther by the longest bar of any curve; bars are drawn of the curves that have them.
TEST_F(Generic, ErrorBarsInTheColourOfTheirCurve) {
    plots.curves = {Curve({0, 1}, {0, 10}, {1, 2}), Curve({0, 1}, {5, 5}, {1, -5})};
    plots.curves[0].has_errbar = true;
    Draw_Kind(Plot_Kind::lines);
    double length = 0;
    for (const Recorded_Line& line : Lines(Slot_Colour(1)))
        length += line.points[0].x == line.points[1].x ? std::fabs(line.points[1].y - line.points[0].y) : 0;
    EXPECT_NEAR(length, 2 * (1 + 2) * 560 / 20.0, 1e-3);  // -5 to 15
    EXPECT_EQ(Lines(Slot_Colour(2)).size(), 1u);
    EXPECT_AT(Curves(Slot_Colour(1), 2).at(0).points[0], 180, Page_Y(0, -5, 15));
}

TEST_F(Generic, FlatAndStrangeDataHaveAxesWithNumbers) {
    const struct {
        std::vector<float> x, y;
        double x_share, y_share;  // of the box, where the first point lies
    } cases[] = {{{300}, {4}, 0.5, 0.5},
                 {{0, 0}, {0, 0}, 0.5, 0.5},
                 {{-7, -7}, {1, 2}, 0.5, 0},
                 {{1, 2}, {4.1568f, 4.1568f}, 0, 0.5},
                 {{1, 2}, {4, 4.000001f}, 0, 0.5},
                 {{1e-45f}, {largest}, 0.5, 1},
                 {{0, 1}, {-largest, largest}, 0, 0}};
    for (const auto& c : cases) {
        plots.curves = {Curve(c.x, c.y)};
        plots.curves[0].has_marker = true;
        Draw_Kind(Plot_Kind::lines);
        const auto markers = Markers(Slot_Colour(1));
        ASSERT_EQ(markers.size(), 1u);
        EXPECT_NEAR(markers[0].points[0].x, 180 + c.x_share * 840, 1) << c.x[0];
        EXPECT_NEAR(markers[0].points[0].y, 120 + c.y_share * 560, 1) << c.y[0];
        EXPECT_GE(All<Recorded_Text>().size(), c.y[0] == -largest ? 2u : 4u) << c.x[0] << ' ' << c.y[0];
        for (const Plot_Kind kind : {Plot_Kind::histogram, Plot_Kind::polar, Plot_Kind::pie}) Draw_Kind(kind);
    }
    plots.curves[0].has_marker = false;
    plots.curves[0] = Curve({3}, {4});
    Draw_Kind(Plot_Kind::lines);
    EXPECT_EQ(Markers(Slot_Colour(1)).size(), 1u);  // a line of one point would not be seen
    for (const std::vector<Generic_Curve>& nothing : {std::vector<Generic_Curve>{}, {Curve({}, {})}, {Curve({nan, inf}, {1, 2})}}) {
        plots.curves = nothing;
        for (const auto& [kind, text] : {std::pair{Plot_Kind::lines, "There is no point to draw"},
                                         {Plot_Kind::polar, "There is no point to draw"},
                                         {Plot_Kind::histogram, "There is no bar to draw"}}) {
            Draw_Kind(kind);
            EXPECT_NE(Text(text), nullptr);
        }
    }
}

// Bars stand on 0 at their x; the axis stands at the left edge of the box, in which all of them are whole.
TEST_F(Generic, BarsOfAHistogramAreWhole) {
    plots.curves = {Curve({10, 20, 30}, {1, -1, 4}), Curve({10, 20}, {2, 3})};
    Draw_Kind(Plot_Kind::histogram);  // 5 to 35, -1 to 4
    const auto fills = All<Recorded_Fill>();
    ASSERT_EQ(fills.size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        const double x[] = {10, 20, 30, 10, 20}, y[] = {1, -1, 4, 2, 3}, side = i < 3 ? -4 : 0;
        const Point &low = fills[i].points[0], &high = fills[i].points[2];
        EXPECT_EQ(fills[i].colour, Slot_Colour(i < 3 ? 1 : 2));
        EXPECT_NEAR(low.x, Page_X(x[i] + side, 5, 35), 0.01);
        EXPECT_NEAR(high.x, Page_X(x[i] + side + 4, 5, 35), 0.01);
        EXPECT_NEAR(low.y, Page_Y(std::min(y[i], 0.0), -1, 4), 0.01);
        EXPECT_NEAR(high.y, Page_Y(std::max(y[i], 0.0), -1, 4), 0.01);
    }
    EXPECT_LT(Text("-1")->at.x, 180);
    EXPECT_NEAR(Text("10")->at.x, Page_X(10, 5, 35), 0.01);
    plots.curves = {Curve({1, 2, 2.001f, 100}, {5, 5, 5, 5})};  // a narrow pair leaves the bars wide enough to be seen
    Draw_Kind(Plot_Kind::histogram);
    EXPECT_GT(All<Recorded_Fill>().at(0).points[2].x - All<Recorded_Fill>().at(0).points[0].x, 20);
    EXPECT_NEAR(All<Recorded_Fill>().at(0).points[0].y, 120, 0.01);
}

// y is the angle, x the radius; the largest radius lies at the rim, 280 page units from the middle of the box.
TEST_F(Generic, PolarPoints) {
    plots.curves = {Curve({2, 1}, {90, 180}), Curve({-4, nan}, {0, 1})};
    Draw_Kind(Plot_Kind::polar);
    const Point middle{540, 360};
    EXPECT_AT(Markers(Slot_Colour(1)).at(0).points.at(0), middle.x, middle.y + 140);
    EXPECT_AT(Markers(Slot_Colour(1)).at(0).points.at(1), middle.x - 70, middle.y);
    EXPECT_AT(Markers(Slot_Colour(2)).at(0).points.at(0), middle.x - 280, middle.y);
    EXPECT_EQ(Markers(Slot_Colour(2))[0].points.size(), 1u);
}

TEST_F(Generic, PiesOfOneColourInStepsOrTheReasonForNone) {
    std::vector<float> many(500, 1);
    plots.curves = {Curve(many, many)};
    Draw_Kind(Plot_Kind::pie);
    std::set<Colour> shades;
    double lightness = -1;
    for (const Recorded_Fill& fill : All<Recorded_Fill>()) {
        shades.insert(fill.colour);
        const double light = Red(fill.colour) + Green(fill.colour) + Blue(fill.colour);
        EXPECT_GE(light, lightness);
        lightness = light;
        EXPECT_TRUE(Green(fill.colour) == Blue(fill.colour) && Red(fill.colour) >= Green(fill.colour));  // slot 1 is red
    }
    EXPECT_EQ(All<Recorded_Fill>().size(), 500u);
    EXPECT_GT(shades.size(), 150u);

    plots.slices = {"Quartz", "", "Corundum"};
    plots.curves = {Curve({0, 0, 0, 0, 0}, {1, 3, 3996, nan, 0}), Curve({1}, {-1})};
    Draw_Kind(Plot_Kind::pie);
    for (const char* text : {"Quartz <0.1 %", "0.1 %", "Corundum 99.9 %"}) EXPECT_NE(Text(text), nullptr) << text;
    EXPECT_EQ(All<Recorded_Fill>().size(), 3u);
    plots.curves[0].has_legend = true;
    Draw_Kind(Plot_Kind::pie);
    for (const char* text : {"Quartz", "<0.1 %", "Corundum", "99.9 %"}) EXPECT_NE(Text(text), nullptr) << text;
    EXPECT_EQ(All<Recorded_Fill>().size(), 3u + 5u);

    const std::pair<std::vector<float>, std::string> refused[] = {
        {{1, 2, -0.5f}, "A pie shows no negative value, and that of slice 3 is one"},
        {{1, -inf}, "A pie shows no negative value, and that of slice 2 is one"},
        {{0, nan}, "A pie shows parts of a whole, and the sum of the values is zero"},
        {{}, "A pie shows parts of a whole, and the sum of the values is zero"},
        {std::vector<float>(501, 1), "A pie shows at most 500 slices, and there are 501"}};
    for (const auto& [values, text] : refused) {
        plots.curves = {Curve(values, values)};
        Draw_Kind(Plot_Kind::pie);
        EXPECT_NE(Text(text), nullptr) << text;
        EXPECT_TRUE(All<Recorded_Fill>().empty());
    }
}

// Whatever the page, the curves and their names, and with wide numbers beside them: every text is on the page and touches no other.
TEST_F(Generic, TextsKeepApartAndKeysHoldFortyNames) {
    const std::pair<double, double> sizes[] = {{600, 400}, {1000, 600}, {1600, 1000}, {400, 700}};
    for (const auto& [width, height] : sizes) {
        for (const Plot_Kind kind : {Plot_Kind::lines, Plot_Kind::histogram, Plot_Kind::polar, Plot_Kind::pie}) {
            for (const int count : {1, 3, 12, 40, 500}) {
                for (const bool key : {false, true}) {
                    plots = {};
                    plots.plot_kind = kind;
                    plots.title = "Lattice parameters of the second phase on heating in a flow of oxygen, run 17";
                    plots.legend_x = plots.legend_y = "Temperature (K)";
                    const bool pie = kind == Plot_Kind::pie;
                    for (int i = 0; i < (pie ? 1 : std::min(count, max_generic_curves)); ++i) {
                        plots.curves.push_back(Curve({}, {}));
                        plots.curves.back().legend = "name " + std::to_string(i) + std::string(static_cast<std::size_t>(i % 34), 'w');
                        for (int k = 0; k < (pie ? count : 20); ++k) {
                            plots.curves.back().x.push_back(-2000.0f + 1234.5f * static_cast<float>(k));
                            plots.curves.back().y.push_back(1 + static_cast<float>((k * 37 + i) % 11) * 1.5e-3f);
                        }
                    }
                    for (int k = 0; pie && k < count; ++k)
                        plots.slices.push_back("name " + std::to_string(k) + std::string(static_cast<std::size_t>(k % 34), 'w'));
                    plots.curves.back().has_legend = key;
                    page = Recording_Device(width, height);
                    Draw_Kind(kind);
                    const std::string what = std::to_string(static_cast<int>(kind)) + ' ' + std::to_string(count) + ' ' +
                                             std::to_string(static_cast<int>(width)) + (key ? " with a key" : "");
                    Expect_Texts_Apart(page, {0, 0, width, height}, what);
                    const std::size_t names = Texts_Starting("na");
                    if (key)
                        EXPECT_GE(names, static_cast<std::size_t>(std::min(count, pie ? 39 : 40))) << what;
                    else
                        EXPECT_TRUE(pie || names == 0) << what;
                }
            }
        }
    }
}

}  // namespace vntl::test
