// Ghosts and the pointed row over a picture: their points against what the moves make of the rows by hand.
#include "plot/following_curves.hpp"

#include <cmath>
#include <random>

#include "plot/fixture.hpp"

namespace vntl::test {
namespace {

class Following : public Plot_Test {
protected:
    Following() {
        session.plot.plot_type = Plot_Form::multi;
        session.plot.units = session.plot.drawn = {10, 14, 0, 1000};
    }
    void Draw_Over(const std::vector<Row_Ghost>& ghosts = {}) {
        page.Clear(0);
        Graphics g(page);
        Draw_Following_Curves(Scene_Of(session), g, ghosts);
    }
};

TEST_F(Following, AGhostStandsWhereTheRowWouldStand) {
    Add_Rows(2);
    const std::vector<float> y_before = session.store.Pattern(2).y;
    const std::vector<Row_Ghost> ghosts = {{2, 1.1f, -0.5f, 0.5f, 20}};
    Draw_Over(ghosts);
    const auto lines = All<Recorded_Line>();
    ASSERT_EQ(lines.size(), 1u);
    ASSERT_EQ(lines[0].points.size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) EXPECT_AT(lines[0].points[i], Page_X(1.1 * five_x[i] - 0.5), Page_Y(0.5 * five_y[i] + 20));
    EXPECT_NE(lines[0].pen.colour, Slot_Colour(2));  // a half-tone
    EXPECT_EQ(session.store.Pattern(2).y, y_before);

    session.store.profile_shown[1] = false;
    Draw_Over(ghosts);
    EXPECT_TRUE(All<Recorded_Line>().empty());
    session.store.profile_shown[1] = true;
    session.plot.plot_type = Plot_Form::contour;
    Draw_Over(ghosts);
    EXPECT_TRUE(All<Recorded_Line>().empty());
}

TEST_F(Following, OnTheScaleOfThePlotAndWithItsOffset) {
    Add({11, 12, 13}, {100, 400, 900});
    Add({11, 12, 13}, {100, 400, 900});
    Plot_State& plot = session.plot;
    plot.y_scale = Y_Scale::root;
    plot.y_all_min = 0, plot.y_all_max = 900;
    plot.waterfall.offset = 0.2f;  // of 30
    plot.units = {10, 14, 0, 100};
    Draw_Over({{2, 1, 0, 4, 0}});
    const auto lines = All<Recorded_Line>();
    ASSERT_EQ(lines.size(), 1u);
    const double roots[] = {20, 40, 60};
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_AT(lines[0].points.at(i), Page_X(11.0 + static_cast<double>(i)), Page_Y(roots[i] + 6, 0, 100));
}

TEST_F(Following, ThePointedRowIsDrawnOnceMoreOnARimOfTheGround) {
    Add_Rows(2);
    session.plot.pointed_row = 2;
    Draw_Over();
    const auto lines = All<Recorded_Line>();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].pen.colour, session.prefs.graph2d.frame_foreground);
    EXPECT_EQ(lines[1].pen.colour, Slot_Colour(2));
    EXPECT_GT(lines[0].pen.width, lines[1].pen.width);
    EXPECT_GT(lines[1].pen.width, session.prefs.Style_Of_Row(2).line_pitch);
    for (const Recorded_Line& line : lines)
        for (std::size_t i = 0; i < 5; ++i) EXPECT_AT(line.points.at(i), Page_X(five_x[i]), Page_Y(five_y[i]));
    for (const int gone : {0, 3}) {  // none, and one that has left the store
        session.plot.pointed_row = gone;
        Draw_Over();
        EXPECT_TRUE(All<Recorded_Line>().empty()) << gone;
    }
}

// Of many points those of a pixel column that make its picture: the least and the greatest of all, found here point by point.
TEST_F(Following, ManyPointsCostTheirColumns) {
    constexpr int points = 100'000, columns = 200;
    std::mt19937 random(7);
    std::vector<float> x(points), y(points);
    for (std::size_t i = 0; i < points; ++i) {
        x[i] = 10 + 4 * static_cast<float>(i) / points;
        y[i] = static_cast<float>(random() % 1000);
    }
    y[points / 2] = NAN;
    Add(x, y);
    const std::vector<Thin_Line> lines =
        Thin_Lines_Of(session.plot, session.store.Pattern(1).x, session.store.Pattern(1).y, {}, 0, columns);
    ASSERT_EQ(lines.size(), 2u);
    std::vector<float> low(columns, 2000), high(columns, -1), low_of_line = low, high_of_line = high;
    const auto note = [](std::vector<float>& lows, std::vector<float>& highs, float at, float value) {
        const auto column = std::min<std::size_t>(static_cast<std::size_t>((at - 10) / 4 * columns), columns - 1);
        lows[column] = std::min(lows[column], value), highs[column] = std::max(highs[column], value);
    };
    for (std::size_t i = 0; i < points; ++i)
        if (!std::isnan(y[i])) note(low, high, x[i], y[i]);
    std::size_t kept = 0;
    for (const Thin_Line& line : lines) {
        kept += line.x.size();
        EXPECT_TRUE(std::is_sorted(line.x.begin(), line.x.end()));
        for (std::size_t i = 0; i < line.x.size(); ++i) note(low_of_line, high_of_line, line.x[i], line.y[i]);
    }
    EXPECT_LE(kept, 4u * (columns + 2));
    EXPECT_EQ(low_of_line, low);
    EXPECT_EQ(high_of_line, high);
}

}  // namespace
}  // namespace vntl::test
