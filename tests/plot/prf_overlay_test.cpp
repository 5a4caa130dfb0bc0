// What a refinement adds to a plot, and what is found under the pointer.
#include "plot/prf_overlay.hpp"

#include <algorithm>

#include "fixture.hpp"
#include "session/desk/overlay_place.hpp"
#include "session/reflection_search.hpp"

namespace vntl::test {
namespace {

struct Tick {
    float x;
    int phase;
    const char* label;
};

class Prf_Overlay : public Plot_Test {
protected:
    // Row 1 becomes a refined profile in a window of 1000 units: the foot of its band at 200, the band 100 high.
    void Refine(const std::vector<Tick>& ticks, int phases = 2, Row_Kind kind = Row_Kind::prf) {
        session.store.Clear();
        Diffraction_Pattern_Type& p = Add({10, 11, 12, 13, 14}, {300, 500, 900, 400, 310}, kind);
        p.ycalc = {310, 480, 930, 400, 290};
        p.bgr = {290, 295, 300, 300, 300};
        p.sigma = {4, 4, 4, 4, 4};
        p.has_ycalc = p.has_bgr = p.has_sigma = p.al_ycalc = p.al_bgr = p.al_sigma = true;
        p.sigma_is_variance = false;
        PRF_Info_Add_Type& info = session.store.Info(1);
        info.nphases = phases;
        info.nreflections = static_cast<int>(ticks.size());
        for (const Tick& tick : ticks) {
            info.refl_position.push_back(tick.x);
            info.refl_code.push_back(tick.phase);
            info.refl_phase.push_back(tick.phase);
            info.refl_tag.push_back(0);
            info.refl_label.emplace_back(tick.label);
        }
        session.prefs.graph2d.legend.pos = 1;
        Plot_Ranges(session);
        session.plot.diff_base = 200;
        session.plot.diff_band = 100;
    }
    // One of the sets of points has these values of y.
    template <class Sets>
    void Expect_Values(const Sets& sets, const std::vector<double>& y) {
        double least = 1e9;
        for (const auto& set : sets) {
            double off = set.points.size() == y.size() ? 0 : 1e9;
            for (std::size_t i = 0; i < y.size() && off < 1e9; ++i)
                off += std::abs(set.points[i].x - Page_X(10 + static_cast<double>(i))) + std::abs(set.points[i].y - Page_Y(y[i]));
            least = std::min(least, off);
        }
        EXPECT_LT(least, page_tolerance) << y[0];
    }
    std::vector<Colour> Order() const {  // of the colours of lines
        std::vector<Colour> order;
        for (const Recorded_Line& line : All<Recorded_Line>())
            if (std::find(order.begin(), order.end(), line.pen.colour) == order.end()) order.push_back(line.pen.colour);
        return order;
    }

    const Colour black = WRGB(0, 0, 1);  // not that of the frame
    const Colour blue = WRGB(0, 0, 255), green = WRGB(0, 128, 0), red = WRGB(255, 0, 0);
};

TEST_F(Prf_Overlay, CurvesAndTicksStandInTheirPlacesAndOrder) {
    Refine({{11, 1, "(1)"}, {11.5f, 2, "(2)"}, {12, 2, "(3)"}});
    session.prefs.prf.ycalc_colour = black;
    session.prefs.prf.ycalc_style = 2, session.prefs.prf.ycalc_pitch = 3, session.prefs.prf.refl_pitch = 2;
    Exclude(1, 11, 12);  // both limits belong to it
    Draw();
    Expect_Values(Lines(black), {310, 480, 930, 400, 290});
    EXPECT_EQ(Curves(black, 5)[0].pen.width, 3);
    EXPECT_EQ(Curves(black, 5)[0].pen.style, Line_Style::dashed);
    Expect_Values(Lines(blue), {190, 200, 200, 200, 220});
    const auto ticks = Lines(green);
    ASSERT_EQ(ticks.size(), 3u);
    const double ends[3][3] = {{11, 72.2222, 52.7778}, {11.5, 50, 30.5556}, {12, 50, 30.5556}};
    for (std::size_t i = 0; i < 3; ++i) {
        ASSERT_EQ(ticks[i].points.size(), 2u);
        EXPECT_AT(ticks[i].points[0], Page_X(ends[i][0]), Page_Y(200 + ends[i][1]));
        EXPECT_AT(ticks[i].points[1], Page_X(ends[i][0]), Page_Y(200 + ends[i][2]));
        EXPECT_EQ(ticks[i].pen.width, 2);
    }
    EXPECT_EQ(Order(), (std::vector<Colour>{Slot_Colour(1), session.prefs.prf.excl_colour, 0, black, blue, green}));  // 0: the axes
    EXPECT_TRUE(Markers(blue).empty());
    session.store.show_background = true;
    Draw();
    Expect_Values(Markers(blue), {290, 295, 300, 300, 300});
    session.store.show_ycalc = session.store.show_difference = session.store.show_reflections = session.store.show_background = false;
    Draw();
    EXPECT_TRUE(Lines(black).empty() && Lines(blue).empty() && Lines(green).empty() && Markers(blue).empty());
}

// The intensities span 600 counts, of 1.25 times that in the whole view: a count is 560 / 750 page units of the box, on every scale and
// however y is zoomed. The base stands 0.06 of the 1.25 above the foot of the box.
TEST_F(Prf_Overlay, APinnedDifferenceKeepsItsPlaceAndHeight) {
    Refine({{11, 1, "(1)"}, {12, 2, "(2)"}});
    Plot_Ranges(session);
    session.look.pinned_difference = true;
    const double per_count = 560 / 750.0, base = 120 + 0.06 / 1.25 * 560;
    const auto draw = [this] {
        Draw(session.plot.Scale() == Y_Scale::root ? "root" : "", 10, 14, session.plot.y_view_min, session.plot.y_view_max);
        EXPECT_EQ(Lines(green).size(), 2u);
        return Lines(green).at(0).points.at(0).y;
    };
    const double tick = draw();
    EXPECT_GT(tick, base);
    for (const View& view : {session.plot.Shown_View(), View{10, 14, 380, 420}, View{10, 14, -1e6, 1e6}}) {
        session.plot.Show(view);
        EXPECT_NEAR(draw(), tick, page_tolerance);
        const auto curves = Curves(blue, 5);
        ASSERT_EQ(curves.size(), 1u);
        const double differences[] = {-10, 20, -30, 0, 20};
        for (std::size_t i = 0; i < 5; ++i) EXPECT_NEAR(curves[0].points[i].y, base + per_count * differences[i], page_tolerance) << i;
        const double foot = Foot_Of_Data(session.store, session.plot, session.look), height = view.y2 - view.y1;
        EXPECT_NEAR((foot - view.y1) / height, 0.144, 1e-5);
        EXPECT_NEAR(Foot_Of_Box(session.store, session.plot, session.look, static_cast<float>(foot), view.y2), view.y1, 1e-4 * height);
        const auto hit = [&](double at) {
            const double y = view.y1 + (at - 120) / 560 * height;
            Search_PRF_Refl(session.store, session.plot, 11, static_cast<float>(y), session.look);
            return session.plot.hits.entries == std::vector{1};
        };
        EXPECT_TRUE(hit(tick - 2));
        EXPECT_FALSE(hit(tick + 4) || hit(base - 4));
    }
    session.plot.Show({10, 14, 200, 1000});
    Choose_Scale(session, Y_Scale::root);
    EXPECT_NEAR(draw(), tick, page_tolerance);
    EXPECT_NEAR(Curves(blue, 5).at(0).points[2].y, base - 30 * per_count, page_tolerance);
    session.store.show_difference = false;
    const float with_ticks_alone = Part_Of_Band(session.store, session.plot, session.look);
    EXPECT_GT(with_ticks_alone, 0.0f);
    EXPECT_LT(with_ticks_alone, 0.144f);
    session.store.show_reflections = false;
    EXPECT_EQ(Foot_Of_Data(session.store, session.plot, session.look), session.plot.y_view_min);
}

TEST_F(Prf_Overlay, ColoursTellMagneticReflectionsAndNeighbours) {
    Refine({{11, 1, "(1 1 0) Nuc.+Mag."}, {12, 1, "(1 0 0) Mag."}, {13, 2, "(2 0 0) Nuc."}});
    session.store.show_difference = session.store.show_ycalc = false;
    session.prefs.profile_styles[0].line_colour = session.prefs.profile_styles[0].marker_colour = WRGB(9, 9, 9);
    Draw();
    for (const auto& [colour, x] : {std::pair{blue, 11}, {red, 12}, {green, 13}}) {
        ASSERT_EQ(Lines(colour).size(), 1u) << x;
        EXPECT_NEAR(Lines(colour)[0].points[0].x, Page_X(x), page_tolerance);
    }
    session.store.Pattern(1).scat_var = "Distance";
    Draw();
    EXPECT_EQ(Lines(red).size(), 1u);   // the second phase's 0000FF is red 255
    EXPECT_EQ(Lines(blue).size(), 0u);  // no label counts here
    const std::pair<int, Colour> table[] = {{3, 0xFF0000}, {8, 0xB8831F}, {16, 0x0015B3}, {20, 0}, {23, 0xFF0000}, {28, 0xB8831F}, {-3, 0}};
    for (const auto& [phase, colour] : table) {
        session.store.Info(1).refl_phase = {phase, phase, phase};
        Draw();
        int found = 0;
        for (const Recorded_Line& line : Lines(colour))
            found += line.points.size() == 2 && std::abs(line.points[0].y - Page_Y(272.2222)) < page_tolerance;
        EXPECT_EQ(found, 2) << phase;
    }
    session.store.Pattern(1).legend_x = "Distance (Pixels)";
    Draw();
    for (const Colour colour : {blue, red, green}) EXPECT_EQ(Lines(colour).size(), 1u);
}

TEST_F(Prf_Overlay, IntegratedIntensitiesAreMarkersWithErrorBars) {
    Refine({{11, 1, "(1 0 0)"}}, 1, Row_Kind::mono);
    session.prefs.prf.ycalc_colour = black;
    session.prefs.prf.ycalc_marker = 3, session.prefs.prf.ycalc_marker_size = 10;
    Exclude(1, 11, 12);
    session.prefs.prf.excl_show = false;
    session.store.show_background = true;
    Draw();
    Expect_Values(Markers(black), {310, 480, 930, 400, 290});
    EXPECT_EQ(Markers(black)[0].style.glyph, 222);
    EXPECT_NEAR(Markers(black)[0].style.width, 12, 0.01);     // a hundredth of the page
    Expect_Values(Markers(blue), {190, 220, 170, 200, 220});  // not flat
    Expect_Values(Markers(blue), {290, 295, 300, 300, 300});
    EXPECT_TRUE(Curves(black, 5).empty() && Curves(blue, 5).empty() && Curves(Slot_Colour(1), 5).empty());
    double low = 1e9, high = 0;
    for (const Recorded_Line& bar : Lines(Slot_Colour(1)))
        for (const Point& p : bar.points)
            if (std::abs(p.x - Page_X(12)) < 0.01) low = std::min(low, p.y), high = std::max(high, p.y);
    EXPECT_NEAR(low, Page_Y(896), 0.01);
    EXPECT_NEAR(high, Page_Y(904), 0.01);
    EXPECT_EQ(Lines(green).size(), 1u);
}

TEST_F(Prf_Overlay, TheWindowMakesRoomAndNumbersBelowZeroAreHidden) {
    Refine({{11, 1, "a"}, {12, 2, "b"}});
    Plot_Ranges(session);
    EXPECT_FLOAT_EQ(session.plot.y_view_min, 180);  // 300 less a fifth of 600
    EXPECT_FLOAT_EQ(session.plot.diff_base, 216);
    session.plot.x_view_min = 10.5f, session.plot.x_view_max = 13.5f;  // 400 to 900 inside: 375 to 925, 550 high
    const struct {
        bool difference, reflections;
        double bottom;
    } cases[] = {{true, true, 265}, {true, false, 265}, {false, true, 298 + 77 * 11 / 36.0}, {false, false, 375}};
    for (const auto& c : cases) {
        session.store.show_difference = c.difference;
        session.store.show_reflections = c.reflections;
        Focus_Plot(session.store, session.plot);
        EXPECT_NEAR(session.plot.y_view_min, c.bottom, 1e-3) << c.difference << c.reflections;
        EXPECT_NEAR(session.plot.diff_base, 298, 1e-3);
    }
    for (const bool hide : {true, false}) {
        session.prefs.prf.hide_negative = hide;
        Draw({}, 10, 14, -250, 750);
        int covers = 0;  // from 0.9 of the plot's foot to 0.9 of the height of zero, left of the plot
        for (const Recorded_Fill& fill : All<Recorded_Fill>()) {
            if (fill.colour != session.prefs.graph2d.frame_background || fill.points.size() < 4) continue;
            const auto [low, high] =
                std::minmax_element(fill.points.begin(), fill.points.end(), [](auto a, auto b) { return a.x + a.y < b.x + b.y; });
            covers += std::hypot(low->x, low->y - 108) + std::hypot(high->x - 180, high->y - 0.9 * Page_Y(0, -250, 750)) < page_tolerance;
        }
        EXPECT_EQ(covers, hide ? 1 : 0);
    }
}

TEST_F(Prf_Overlay, ThePointerFindsWhatItTouches) {
    std::vector<Tick> ticks = {{10.5f, 1, "a"}, {12, 1, "b"}, {12.0625f, 2, "c"}, {13, 2, "d"}};
    for (int i = 0; i < 40; ++i) ticks.push_back({13.5f + 0.001f * static_cast<float>(i), 2, "e"});
    Refine(ticks);
    session.plot.x_view_min = 10, session.plot.x_view_max = 14;  // reach 0.08 on each side
    const float inside = 250;
    auto& hits = session.plot.hits.entries;
    const auto finds = [&](float x, float y, bool changes, const std::vector<int>& wanted) {
        EXPECT_EQ(Search_PRF_Refl(session.store, session.plot, x, y), changes) << x << ' ' << y;
        EXPECT_EQ(hits, wanted) << x << ' ' << y;
    };
    finds(11, inside, false, {});          // no list, none found
    finds(12, inside, true, {2, 3});       // no list, some
    finds(12.01f, inside, false, {2, 3});  // the same
    finds(13, inside, true, {4});          // others
    finds(13.25f, inside, true, {});       // a list, none
    finds(12.125f, inside, true, {3});     // 0.125 from the one, 0.0625 from the other
    finds(12, 200 + 73, true, {});         // above the first row
    finds(12, 200 + 72, true, {2, 3});
    finds(12, 200 + 30, true, {});  // below the last
    finds(12, 200 + 31, true, {2, 3});
    finds(9.99f, inside, true, {});     // outside the view
    session.plot.x_view_max = 13.125f;  // reach exactly 0.0625
    finds(12, inside, true, {2});       // the edge itself is out
    session.plot.x_view_max = 14;
    Search_PRF_Refl(session.store, session.plot, 13.52f, inside);
    ASSERT_EQ(hits.size(), 28u);
    EXPECT_EQ(hits.front(), 5);
    EXPECT_EQ(hits.back(), 32);
    Refine({});  // a new plot has forgotten them
    finds(13.52f, inside, false, {});
}

}  // namespace
}  // namespace vntl::test
