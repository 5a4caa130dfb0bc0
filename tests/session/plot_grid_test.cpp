// The grid of maps and surfaces: which rows make one, and what stands in it.
#include "session/plot_grid.hpp"

#include <cmath>
#include <limits>

#include "session/grid_view.hpp"
#include "session/modes.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/view_history.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

// Rows of 20 points from 10 to 29, y = 100 row + point, the temperatures as told.
Session Series_Of(const std::vector<float>& temperatures, const std::string& space = "2theta") {
    Session session;
    for (std::size_t row = 0; row < temperatures.size(); ++row) {
        Diffraction_Pattern_Type pattern = Tiny_Pattern(20, 0, space);
        for (std::size_t i = 0; i < pattern.y.size(); ++i) pattern.y[i] = static_cast<float>(100 * (row + 1) + i);
        pattern.TSample = temperatures[row];
        session.store.Append(std::move(pattern), {});
    }
    Set_Xspace(session, space);
    session.plot.first_pattern = 1;
    session.plot.last_pattern = session.store.nperfiles();
    return session;
}

Status Prepare(Session& s, float x1, float x2, int first, int last, Intensities form = Intensities::counts) {
    return Prepare_Multi_Data(s.store, s.plot.xspace, x1, x2, first, last, form, s.prefs.saturation, s.plot.grid);
}

// Where several things are wrong, the first one in the order of the checks is told.
TEST(Plot_Grid, EachRefusalInItsOrderLeavesTheOldGrid) {
    struct Case {
        const char* what;
        void (*spoil)(Session&);
        float x1, x2;
        int first, last;
        std::string message;
    };
    const auto shorter = [](Session& s) { s.store.Pattern(5).x.pop_back(), s.store.Pattern(5).y.pop_back(); };
    const auto moved = [](Session& s) { s.store.Pattern(6).x[19] = std::nextafter(29.0f, 30.0f); };
    const auto nothing = [](Session&) {};
    const std::string x_space = "Graphic type not permitted in present xspace", size = "X Size mismatch data";
    const std::string differ = "X-values of different patterns are not equal ", y = "Data points along Y < 4",
                      x = "Data points along X < 10";
    const Case cases[] = {
        {"space, and all else", [](Session& s) { s.store.Pattern(5).x.pop_back(), s.plot.xspace = X_Space::q_space; }, 0, 1, 1, 1, x_space},
        {"lengths, of a row that is not asked for", shorter, 0, 1, 1, 3, size},
        {"lengths behind other x", [](Session& s) { s.store.Pattern(2).x[0] = 9, s.store.Pattern(6).x.pop_back(); }, 0, 40, 1, 6, size},
        {"one x, by its last bit", moved, 0, 40, 1, 4, differ},
        {"three rows, and few points", nothing, 10, 12, 1, 3, y},
        {"nine points", nothing, 10, 20, 1, 6, x},
        {"ten points", nothing, 10, 21, 1, 6, ""},
        {"no points", nothing, 50, 60, 1, 6, x},
        {"rows behind the last", nothing, 0, 40, 3, 99, ""},
        {"x that is no number", nothing, std::numeric_limits<float>::quiet_NaN(), 40, 1, 6, x},
    };
    for (const Case& c : cases) {
        Session session = Series_Of({1, 2, 3, 4, 5, 6});
        ASSERT_TRUE(Prepare(session, 12, 28, 1, 6).ok());
        const PlotGrid before = session.plot.grid;
        c.spoil(session);
        const Status status = Prepare(session, c.x1, c.x2, c.first, c.last);
        EXPECT_EQ(status.message, c.message) << c.what;
        EXPECT_EQ(status.failed, !c.message.empty()) << c.what;
        const bool kept = session.plot.grid.grid_x == before.grid_x && session.plot.grid.grid_z == before.grid_z;
        EXPECT_EQ(kept, status.failed) << c.what;
    }
}

TEST(Plot_Grid, AllowsTheSpacesOfMeasuredScales) {
    for (const char* space : {"2theta", "TOF", "mono", "Distance", "Lambda", "d-space", "q-space", "s-space", "Energy", "Temperature"}) {
        const std::string word = space;
        const bool allowed = word == "2theta" || word == "TOF" || word == "mono" || word == "Distance" || word == "Lambda";
        Session session = Series_Of({1, 1, 1, 1}, word);
        EXPECT_EQ(Prepare(session, 0, 100, 1, 4).ok(), allowed) << word;
    }
}

// A full view loses its first and last point.
TEST(Plot_Grid, HoldsThePointsBetweenStrictLimits) {
    Session session = Series_Of({300, 310, 320, 340, 380, 381});
    ASSERT_TRUE(Prepare(session, 10, 29, 2, 5).ok());
    const PlotGrid& grid = session.plot.grid;
    EXPECT_EQ(grid.grid_x.size(), 18u);
    EXPECT_EQ(grid.grid_x.front(), 11);
    EXPECT_EQ(grid.grid_x.back(), 28);
    EXPECT_EQ(grid.grid_y, (std::vector<float>{310, 320, 340, 380}));
    for (std::size_t k = 0; k < 4; ++k)
        for (std::size_t i = 0; i < 18; ++i) EXPECT_EQ(grid.grid_z[k * 18 + i], static_cast<float>(100 * (k + 2) + i + 1));
    EXPECT_EQ(grid.z_min, 201);
    EXPECT_EQ(grid.z_max, 518);
}

TEST(Plot_Grid, TemperaturesMustRunInOneDirectionThroughTheWholeStore) {
    struct Case {
        std::vector<float> temperatures;
        bool axis;
    };
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const auto& [temperatures, axis] : {Case{{300, 310, 320, 330, 340}, true}, Case{{300, 310, 310, 330, 340}, false},
                                             Case{{340, 330, 20, 10, -5}, true}, Case{{300, 310, 320, 330, 329}, false},
                                             Case{{0, 0, 0, 0, 0}, false}, Case{{5, 4, 3, 2, 3}, false}, Case{{1, 2, nan, 4, 5}, false}}) {
        Session session = Series_Of(temperatures);
        ASSERT_TRUE(Prepare(session, 0, 100, 1, 4).ok());  // the fifth row counts all the same
        EXPECT_EQ(session.plot.grid.grid_y_label, axis ? "Temperature" : "Pattern");
        for (std::size_t k = 0; k < 4; ++k)
            EXPECT_EQ(session.plot.grid.grid_y[k], axis ? temperatures[k] : static_cast<float>(k + 1)) << temperatures[2];
    }
}

// The saturation comes behind the logarithm and is not transformed.
TEST(Plot_Grid, LogarithmsBeginAtOneAndAreCutOffAsTheyStand) {
    Session session = Series_Of({1, 2, 3, 4});
    session.store.Pattern(1).y = {0, -5, 0.5f, 1, 2, 10, 1e6f, std::numeric_limits<float>::quiet_NaN(), 7, 8, 9, 10, 1,
                                  2, 3,  4,    5, 6, 7,  8};
    ASSERT_TRUE(Prepare(session, 9, 30, 1, 4, Intensities::logarithms).ok());
    const auto z = [&session](std::size_t i) { return session.plot.grid.grid_z[i]; };
    EXPECT_EQ(z(0), 0);
    EXPECT_EQ(z(1), 0);
    EXPECT_EQ(z(2), 0);
    EXPECT_EQ(z(3), 0);
    EXPECT_NEAR(z(4), std::log(2.0), 1e-7);
    EXPECT_NEAR(z(6), std::log(1e6), 1e-6);
    EXPECT_TRUE(std::isnan(z(7)));
    EXPECT_NEAR(session.plot.grid.z_max, std::log(1e6), 1e-6);
    session.prefs.saturation = {true, 5};
    ASSERT_TRUE(Prepare(session, 9, 30, 1, 4, Intensities::logarithms).ok());
    EXPECT_EQ(session.plot.grid.z_max, 5);
    ASSERT_TRUE(Prepare(session, 9, 30, 1, 4).ok());
    EXPECT_EQ(session.plot.grid.z_max, 5);
    EXPECT_EQ(session.plot.grid.z_min, -5);
}

TEST(Plot_Grid, TheNearestPatternIsFoundOnEveryAxis) {
    for (const bool falling : {false, true}) {
        Session session = Series_Of(falling ? std::vector<float>{400, 300, 250, 240, 10} : std::vector<float>{10, 240, 250, 300, 400});
        ASSERT_TRUE(Prepare(session, 9, 30, 2, 5).ok());
        for (const auto& [t, row] : {std::pair{248.0, 3}, {244.0, 2}, {290.0, 4}, {1000.0, 5}})
            EXPECT_EQ(Nearest_Pattern(session.plot.grid, 2, t), falling ? (row == 5 ? 2 : 6 - row) : row) << t;
    }
}

// A grid of its own, z as told.
PlotGrid Grid_Of(std::size_t nx, std::size_t ny, auto z) {
    PlotGrid grid;
    grid.grid_x.resize(nx);
    grid.grid_y.resize(ny);
    for (std::size_t k = 0; k < ny; ++k)
        for (std::size_t i = 0; i < nx; ++i) grid.grid_z.push_back(static_cast<float>(z(static_cast<double>(i), static_cast<double>(k))));
    return grid;
}

// A single peak becomes the product of the filter's weights; a surface that is cubic along both axes is what the filter keeps. More columns
// than are filtered at a time.
TEST(Plot_Grid, SmoothingGoesAlongPatternsAndThenAcrossThem) {
    const std::vector<double> weights = {-3 / 35.0, 12 / 35.0, 17 / 35.0, 12 / 35.0, -3 / 35.0};
    PlotGrid peak = Grid_Of(37, 9, [](double i, double k) { return i == 17 && k == 4 ? 1225 : 0; });
    Smooth_PlotGrid(peak);
    const auto weight = [&weights](std::size_t i, std::size_t middle) {
        return i + 2 < middle || i > middle + 2 ? 0 : weights[i + 2 - middle];
    };
    for (std::size_t k = 0; k < 9; ++k)
        for (std::size_t i = 0; i < 37; ++i)
            EXPECT_NEAR(peak.grid_z[k * 37 + i], 1225 * weight(i, 17) * weight(k, 4), 1e-4) << i << ' ' << k;
    EXPECT_NEAR(peak.z_min, -3 * 17, 1e-4);
    EXPECT_NEAR(peak.z_max, 17 * 17, 1e-4);
    EXPECT_TRUE(peak.smoothed);
    PlotGrid cubic = Grid_Of(20, 6, [](double i, double k) { return i * i * i - 40 * k * k * k + i * k; });
    const std::vector<float> before = cubic.grid_z;
    Smooth_PlotGrid(cubic);
    for (std::size_t j = 0; j < before.size(); ++j) EXPECT_NEAR(cubic.grid_z[j], before[j], 2e-3) << j;
}

// What stands more than two points away from a gap is smoothed as if there were none.
TEST(Plot_Grid, SmoothingLeavesAGapAsItIs) {
    const auto wave = [](double i, double k) { return 100 * std::sin(i * i + 3 * k); };
    for (const float gap : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        PlotGrid whole = Grid_Of(30, 12, wave), holed = whole;
        holed.grid_z[5 * 30 + 14] = gap;
        Smooth_PlotGrid(whole);
        Smooth_PlotGrid(holed);
        for (int k = 0; k < 12; ++k)
            for (int i = 0; i < 30; ++i) {
                const float z = holed.grid_z[static_cast<std::size_t>(k * 30 + i)];
                EXPECT_EQ(std::isfinite(z), i != 14 || k != 5);
                const bool apart = std::abs(i - 14) > 2 || std::abs(k - 5) > 2;
                EXPECT_TRUE(!apart || z == whole.grid_z[static_cast<std::size_t>(k * 30 + i)]) << i << ' ' << k;
            }
        EXPECT_TRUE(std::isfinite(holed.z_min) && std::isfinite(holed.z_max));
    }
}

TEST(Plot_Grid, AMapSaysThatItIsSmoothedUntilItsGridIsMadeAnew) {
    Session session = Series_Of({1, 1, 1, 1, 1, 1});
    const auto smooth = [&session] {
        Smooth_PlotGrid(session.plot.grid);
        Show_Resting_Hint(session);
        return session.interface.status.front();
    };
    Set_Menu_Graph(session, false);
    session.plot.Show({9, 30, 0, 1000});
    ASSERT_TRUE(Prepare_Model_Grid(session).ok());
    EXPECT_EQ(smooth(), "") << "no map shows it";
    Set_Menu_Contour_Log(session);
    ASSERT_TRUE(Show_Rows_In_Grid(session, {9, 30, 2, 6}).ok());
    ASSERT_TRUE(Prepare_Model_Grid(session).ok());
    EXPECT_EQ(session.plot.grid.grid_y.size(), 5u) << "the rows of the map";
    EXPECT_NEAR(session.plot.grid.z_min, std::log(200.0), 1e-5);
    EXPECT_EQ(smooth(), "smoothed");
    EXPECT_FALSE(Show_Rows_In_Grid(session, {9, 24, 2, 4}).ok());
    Leave_Mode(session);
    EXPECT_EQ(session.interface.status.front(), "smoothed") << "a refusal changes nothing";
    ASSERT_TRUE(Show_Rows_In_Grid(session, {9, 25, 2, 6}).ok());
    EXPECT_EQ(session.interface.status.front(), "");
    smooth();
    Set_Menu_3D(session);
    EXPECT_EQ(session.interface.status.front(), "");
}

// The way back through the views of a map, on which a refusal leaves no trace.
TEST(Plot_Grid, ViewsOfAMapAreRemembered) {
    Session session = Series_Of({1, 1, 1, 1, 1, 1, 1, 1});
    session.plot.plot_type = Plot_Form::contour;
    const View views[] = {{9, 30, 1, 8}, {9, 25, 2, 7}, {9, 24, 2, 6}};
    for (const View& view : views) {
        ASSERT_TRUE(Show_Rows_In_Grid(session, view).ok());
        Remember_View(session, false);
    }
    EXPECT_FALSE(Show_Rows_In_Grid(session, {9, 24, 2, 4}).ok());
    EXPECT_EQ(session.plot.Map_View(), views[2]);
    ASSERT_TRUE(View_Back(session));
    ASSERT_TRUE(View_Back(session));
    EXPECT_FALSE(View_Back(session));
    EXPECT_EQ(session.plot.Map_View(), views[0]);
    EXPECT_EQ(session.plot.grid.grid_y.size(), 8u);
    ASSERT_TRUE(View_Forward(session));
    EXPECT_EQ(session.plot.grid.grid_y.size(), 6u);
    session.plot.plot_type = Plot_Form::multi;
    session.plot.Show({10, 20, 0, 1000});
    Remember_View(session, false);
    EXPECT_FALSE(View_Back(session));  // rows are no intensities
}

}  // namespace
}  // namespace vntl
