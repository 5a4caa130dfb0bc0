// Which row a place of a graph is at: distances to lines by hand, on each scale and in a waterfall.
#include "session/desk/nearest_row.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "session/desk/ghosts.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

class Nearest : public testing::Test {
protected:
    void Add(std::vector<float> x, std::vector<float> y) {
        Diffraction_Pattern_Type pattern;
        pattern.npts = static_cast<std::int32_t>(x.size());
        pattern.xmin = x.front(), pattern.xmax = x.back();
        pattern.x = std::move(x), pattern.y = std::move(y);
        session.store.Append(std::move(pattern), {});
    }
    int Within(float x, float y, float reach_x = 0.1f, float reach_y = 10) const {
        return Row_Within(session.store, session.plot, {x, y}, {reach_x, reach_y});
    }
    int By_Y(float x, float y) const { return Nearest_Row(session.store, session.plot, {x, y}); }

    Session session;
};

TEST_F(Nearest, ALineIsWithinReachWhereItPassesAndNotWhereItsPointsLie) {
    Add({0, 1, 2, 3}, {100, 100, 1000, 100});  // a flank from (1, 100) to (2, 1000) and back
    Add({0, 3}, {300, 300});
    session.plot.plot_type = Plot_Form::multi;
    struct Case {
        float x, y;
        int row;
    };
    const Case cases[] = {{0.5f, 105, 1},  {0.5f, 111, 0},      {1.5f, 550, 1},  {1.55f, 550, 1},  // a twentieth beside the flank: 45 up
                          {1.75f, 550, 0}, {0.5f, 309, 2},      {3.05f, 300, 2}, {3.11f, 300, 0},  // beyond the end
                          {2, 1009, 1},    {1.2222222f, 300, 2}};                                  // where they cross the upper one
    for (const Case& c : cases) EXPECT_EQ(Within(c.x, c.y), c.row) << c.x << ' ' << c.y;
    session.store.profile_shown[1] = false;
    EXPECT_EQ(Within(1.2222222f, 300), 1);
    EXPECT_EQ(Within(0.5f, 309), 0);
}

TEST_F(Nearest, GapsAndLonePointsAreNoLines) {
    Add({0, 1, 2, 3}, {100, NAN, 100, 100});
    Add({1}, {500});
    session.plot.plot_type = Plot_Form::multi;
    EXPECT_EQ(Within(0.5f, 100), 0);
    EXPECT_EQ(Within(2.5f, 100), 1);
    EXPECT_EQ(Within(1.05f, 500), 2);
    EXPECT_EQ(Within(1.2f, 500), 0);
    EXPECT_EQ(Within(1.05f, 500, 0, 10), 0);
    EXPECT_EQ(By_Y(1, 100), 2);  // a point without a number is not near
}

// At x = 0 the rows stand at 4 and 1000000: half way by counts and far from half way by roots and logarithms.
TEST_F(Nearest, DistancesAreThoseOfTheScaleAndOfTheWaterfall) {
    Add({0, 1}, {4, 4});
    Add({0, 1}, {1e6f, 1e6f});
    Plot_State& plot = session.plot;
    plot.plot_type = Plot_Form::multi;
    plot.y_all_min = 4, plot.y_all_max = 1e6f;
    EXPECT_EQ(By_Y(0, 490000), 1);
    plot.y_scale = Y_Scale::root;  // 2 and 1000
    EXPECT_EQ(By_Y(0, 499), 1);
    EXPECT_EQ(By_Y(0, 503), 2);
    EXPECT_EQ(Within(0.5f, 1005), 2);
    EXPECT_EQ(Within(0.5f, 6), 1);
    plot.y_scale = Y_Scale::logarithm;  // 1.386 and 13.816
    EXPECT_EQ(By_Y(0, 7), 1);
    EXPECT_EQ(By_Y(0, 8), 2);
    plot.y_scale = Y_Scale::root;
    plot.waterfall.offset = 0.5f;  // of 998: row 2 stands at 1499
    EXPECT_EQ(Within(0.5f, 1499), 2);
    EXPECT_EQ(Within(0.5f, 1000), 0);
    EXPECT_EQ(By_Y(0, 749), 1);
    EXPECT_EQ(By_Y(0, 752), 2);
}

TEST_F(Nearest, GhostsAreSomeOfTheShownRows) {
    for (int row = 1; row <= 31; ++row) Add({0, 1}, {0, 1});
    session.store.profile_shown[0] = false;
    const auto rows_of = [](const std::vector<Row_Ghost>& ghosts) {
        std::vector<int> rows;
        for (const Row_Ghost& ghost : ghosts) rows.push_back(ghost.row);
        return rows;
    };
    const std::vector<Row_Ghost> few = Ghosts_Of(session.store, {1, 3, 7, 99}, {.ax = 2, .by = 5});
    EXPECT_EQ(few, (std::vector<Row_Ghost>{{3, 2, 0, 1, 5}, {7, 2, 0, 1, 5}}));
    const std::vector<Row_Ghost> apart = Ghosts_Apart(session.store, 0.5f, -10);
    EXPECT_EQ(rows_of(apart), (std::vector<int>{2, 5, 8, 11, 14, 18, 21, 24, 27, 31}));
    EXPECT_EQ(apart[1], (Row_Ghost{5, 1, 2, 1, -40}));
}

}  // namespace
}  // namespace vntl
