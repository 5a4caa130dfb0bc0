// Frames that a look lays out: on pages of many sizes, over many ranges, no text in the way of another, none too small, none hard to read.
#include "plot/fitted_frame.hpp"

#include <algorithm>
#include <cmath>

#include "base/contrast.hpp"
#include "base/text.hpp"
#include "drawing/text_room.hpp"
#include "fixture.hpp"
#include "plot/short_title.hpp"
#include "session/desk/row_styles.hpp"

namespace vntl::test {

constexpr double least_points = 9;

template <class T>
std::vector<T> Items(const Recording_Device& device) {
    std::vector<T> found;
    for (const Recorded& item : device.items())
        if (const T* one = std::get_if<T>(&item)) found.push_back(*one);
    return found;
}

class Fitted_Frame_Test : public Plot_Test {
protected:
    Fitted_Frame_Test() {
        Look& look = session.look;
        look.fitted_margins = look.minor_ticks = look.superscripts = look.count_ticks = look.placed_legend = true;
        look.least_text_points = least_points;
        look.least_contrast = 4.5;
        look.frame_width = 1;
        session.prefs.graph2d.frame_background = session.prefs.graph2d.frame_foreground = WRGB(255, 255, 255);
        session.plot.plot_type = Plot_Form::multi;
        session.plot.xlabel_text = "Q (\xC3\x85-1)";
        session.plot.ylabel_text = "Intensity (arb. units)";
    }

    void Picture(Recording_Device& device, const View& view) {
        session.plot.x_view_min = view.x1, session.plot.x_view_max = view.x2;
        session.plot.y_view_min = view.y1, session.plot.y_view_max = view.y2;
        zone = Draw_Picture(Scene_Of(session), device).zone;
    }
    Rect Box(const Device& device) const {
        return {zone.x1 * device.Width(), zone.y1 * device.Height(), zone.x2 * device.Width(), zone.y2 * device.Height()};
    }

    Plot_Zone zone;
};

// A page of so many device units to the point.
class Fine_Page : public Recording_Device {
public:
    Fine_Page(double width, double height, double point) : Recording_Device(width, height), point_(point) {}
    double Pixel() const override { return point_ * 72 / 96; }

private:
    double point_;
};

constexpr struct {
    double width, height, point;
} pages[] = {{1200, 800, 96.0 / 72}, {800, 500, 96.0 / 72},  {3840, 2160, 2 * 96.0 / 72},
             {227, 151, 1},          {945, 630, 300.0 / 72}, {500, 900, 96.0 / 72}};

TEST_F(Fitted_Frame_Test, TextsKeepApartOnEveryPage) {
    Add_Rows(3);
    session.store.Info(2).file_name = std::string(60, 'n') + ".dat";
    const View views[] = {{10, 14, 0, 1000},       {0.1f, 0.12f, -20, 350000}, {-5, 160, 0, 0.004f},   {12000, 180000, 0, 9e8f},
                          {14, 10, 99999, 100001}, {1e-6f, 2e-6f, 0, 7},       {10, 14, 1e30f, 5e30f}, {10, 14, 5, 5}};
    for (const auto& size : pages)
        for (const View& view : views)
            for (const Y_Scale scale : {Y_Scale::linear, Y_Scale::logarithm, Y_Scale::root})
                for (const int place : {1, 2, 3, 4}) {  // of the legend: none, left, right, outside
                    const std::string what = std::to_string(size.width) + ' ' + std::to_string(view.y2) + ' ' +
                                             std::to_string(static_cast<int>(scale)) + ' ' + std::to_string(place);
                    session.plot.y_scale = scale;
                    session.prefs.graph2d.legend.pos = place;
                    session.prefs.graph2d.ylabel.pos = place == 1 ? 2 : 7;
                    Fine_Page paper(size.width, size.height, size.point);
                    Picture(paper, view.Drawable() ? View{view.x1, view.x2, On_Scale(scale, view.y1), On_Scale(scale, view.y2)} : view);
                    Expect_Texts_Apart(paper, {0, 0, size.width, size.height}, what);
                    for (const Recorded_Text& text : Items<Recorded_Text>(paper)) {
                        const double em = Em_Of_Cell(text.style.width, text.style.height);
                        const bool exponent = text.text.find_first_not_of("-0123456789") == std::string::npos;
                        EXPECT_GE(em, (exponent ? 0.699 : 0.999) * least_points * size.point) << what << text.text;
                        EXPECT_GE(Contrast(text.style.colour, WRGB(255, 255, 255)), 4.5) << what << text.text;
                    }
                    EXPECT_GE(zone.x2 - zone.x1, 0.39f) << what;
                    EXPECT_GE(zone.y2 - zone.y1, 0.39f) << what;
                }
}

// Nothing but an edge is left around the texts: half a letter, seen in the sizes of the default preferences.
TEST_F(Fitted_Frame_Test, NoEmptyBands) {
    Add_Rows(2);
    session.prefs.graph2d.ylabel.pos = 7;
    for (const auto& size : pages) {
        if (size.width < 500) continue;
        Fine_Page paper(size.width, size.height, size.point);
        Picture(paper, {10, 14, 0, 1000});
        Rect around{1e9, 1e9, 0, 0};
        for (const Recorded_Text& text : Items<Recorded_Text>(paper)) {
            const Rect room = Room_Of(text, paper);
            around = {std::min(around.x1, room.x1), std::min(around.y1, room.y1), std::max(around.x2, room.x2),
                      std::max(around.y2, room.y2)};
        }
        const double band = 0.035 * std::max(size.width, size.height);
        EXPECT_LE(around.x1, band);
        EXPECT_LE(around.y1, band);
        EXPECT_GE(around.x2, size.width - band);
        EXPECT_GE(around.y2, size.height - band);
    }
}

TEST_F(Fitted_Frame_Test, CountsStandOnTheScaleAndTheTitleTellsNoScale) {
    Add();
    session.plot.y_scale = Y_Scale::logarithm;
    Picture(page, {10, 14, 0, std::log(1000.0f)});
    const Recorded_Text* number = Text("100");
    ASSERT_NE(number, nullptr);
    const Rect box = Box(page);
    const Rect room = Room_Of(*number, page);
    EXPECT_NEAR(0.5 * (room.y1 + descent * Em_Of_Cell(number->style.width, number->style.height) + room.y2),
                box.y1 + (box.y2 - box.y1) * std::log(100.0) / std::log(1000.0), 0.01);
    EXPECT_NE(Text("Intensity (arb. units)"), nullptr);
    session.look.count_ticks = false;
    Picture(page, {10, 14, 0, std::log(1000.0f)});
    EXPECT_NE(Text("Log(Intensity (arb. units))"), nullptr);
    session.plot.y_scale = Y_Scale::root;
    for (const bool laid_out : {true, false}) {
        if (!laid_out) session.look = {};
        Picture(page, {10, 14, 0, 30});
        EXPECT_NE(Text("Sqrt(Intensity (arb. units))"), nullptr) << laid_out;
    }
}

TEST_F(Fitted_Frame_Test, TheLegendGoesWhereNoCurveIs) {
    const struct {
        std::vector<float> x, y;
        bool right, top;
    } cases[] = {{{10, 11.9f, 12, 14}, {0, 0, 950, 950}, false, true},
                 {{10, 12, 12.1f, 14}, {950, 950, 0, 0}, true, true},
                 {{10, 14}, {950, 950}, true, false},
                 {{10, 14}, {900, 300}, true, true}};
    for (const auto& c : cases) {
        session.store.Clear();
        Add(c.x, c.y);
        Picture(page, {10, 14, 0, 1000});
        const Recorded_Text* name = Text("row1.dat");
        ASSERT_NE(name, nullptr);
        const Rect box = Box(page), room = Room_Of(*name, page);
        EXPECT_EQ(room.x1 > 0.5 * (box.x1 + box.x2), c.right) << c.y[0];
        EXPECT_TRUE(!c.top || room.y1 > 0.5 * (box.y1 + box.y2)) << c.y[0];
        // The line of the curve, by its own formula, stays out of the text.
        for (std::size_t i = 1; i < c.x.size(); ++i)
            for (double share = 0; share <= 1; share += 0.001) {
                const double x = box.x1 + (box.x2 - box.x1) * (c.x[i - 1] + share * (c.x[i] - c.x[i - 1]) - 10) / 4;
                const double y = box.y1 + (box.y2 - box.y1) * (c.y[i - 1] + share * (c.y[i] - c.y[i - 1])) / 1000;
                EXPECT_FALSE(x > room.x1 && x < room.x2 && y > room.y1 && y < room.y2) << x << ' ' << y;
            }
    }
    session.store.profile_shown.reset(0);
    Add();
    Picture(page, {10, 14, 0, 1000});
    EXPECT_EQ(Text("row1.dat"), nullptr);
    EXPECT_NE(Text("row2.dat"), nullptr);
}

// Zigzags everywhere: the legend covers some of them, and has the ground of the plot box below it.
TEST_F(Fitted_Frame_Test, ALegendOverCurvesHasAGround) {
    std::vector<float> x, y;
    for (int i = 0; i <= 400; ++i) x.push_back(10 + 0.01f * static_cast<float>(i)), y.push_back(i % 2 == 0 ? 0.0f : 1000.0f);
    Add(x, y);
    session.prefs.graph2d.frame_foreground = WRGB(250, 250, 240);
    Picture(page, {10, 14, 0, 1000});
    const auto fills = All<Recorded_Fill>();
    ASSERT_EQ(fills.size(), 2u);
    EXPECT_EQ(fills[1].colour, WRGB(250, 250, 240));
    const Rect room = Room_Of(*Text("row1.dat"), page);
    EXPECT_TRUE(fills[1].points[0].x <= room.x1 && fills[1].points[2].x >= room.x2);
    EXPECT_TRUE(fills[1].points[0].y <= room.y1 && fills[1].points[2].y >= room.y2);
}

TEST_F(Fitted_Frame_Test, ASeriesHasABarInPlaceOfNames) {
    session.look.series_map = "ember";
    Add_Rows(30);
    Picture(page, {10, 14, 0, 1000});
    EXPECT_EQ(Text("row1.dat"), nullptr);
    EXPECT_NE(Text("Pattern"), nullptr);
    for (const char* number : {"1", "30"}) EXPECT_NE(Text(number), nullptr);
    const auto bar = All<Recorded_Cells>();
    ASSERT_EQ(bar.size(), 1u);
    EXPECT_EQ(bar[0].colours.front(), Row_Styles(session.store, session.prefs, session.look, false).Of(1).line_colour);
    EXPECT_EQ(bar[0].colours.back(), Row_Styles(session.store, session.prefs, session.look, false).Of(30).line_colour);
    EXPECT_GT(bar[0].rect.x1, Box(page).x2);
    Expect_Texts_Apart(page, {0, 0, 1200, 800}, "series");
    for (int row = 1; row <= 30; ++row) session.store.Pattern(row).TSample = 100 + 10 * static_cast<float>(row);
    session.desk.series_by_temperature = true;
    Picture(page, {10, 14, 0, 1000});
    EXPECT_NE(Text("T (K)"), nullptr);
    for (const char* number : {"110", "400"}) EXPECT_NE(Text(number), nullptr);
}

TEST_F(Fitted_Frame_Test, InkDrawsFrameTargetAndBlackMarks) {
    const Colour ink = WRGB(230, 230, 230), ground = WRGB(20, 20, 20);
    Add();
    session.look.ink = ink;
    session.prefs.graph2d.frame_foreground = session.prefs.graph2d.frame_background = ground;
    session.plot.show_target = true;
    Picture(page, {10, 14, 0, 1000});
    const auto lines = Lines(ink);
    EXPECT_TRUE(std::ranges::any_of(
        lines, [&](const Recorded_Line& line) { return line.points.size() == 5 && std::fabs(line.points[0].x - Box(page).x1) < 0.01; }));
    for (const Recorded_Line& line : All<Recorded_Line>()) EXPECT_NE(line.pen.colour, WRGB(0, 0, 0));
    for (const Recorded_Text& text : All<Recorded_Text>()) EXPECT_GE(Contrast(text.style.colour, ground), 4.5) << text.text;

    session.plot.plot_type = Plot_Form::calculation;
    session.lists.peaks.resize(1);
    session.lists.background.resize(2);
    session.lists.hklgen.resize(1);
    for (const Click_Mode mode : {Click_Mode::peaks, Click_Mode::background, Click_Mode::reflections}) {
        session.plot.ClickMode = mode;
        Recording_Device marks;
        Graphics g(marks);
        Draw_Marks(Scene_Of(session), g);
        const auto drawn = Items<Recorded_Line>(marks);
        EXPECT_FALSE(drawn.empty());
        for (const Recorded_Line& line : drawn) EXPECT_GE(Contrast(line.pen.colour, ground), 3);
    }
}

TEST_F(Fitted_Frame_Test, AMapHasABarOfItsCounts) {
    Add_Rows(4);
    session.plot.plot_type = Plot_Form::contour_log;
    PlotGrid& grid = session.plot.grid;
    grid.grid_x = {10, 12, 14};
    grid.grid_y = {1, 2, 3, 4};
    for (int i = 0; i < 12; ++i) grid.grid_z.push_back(static_cast<float>(i) / 11 * std::log(20000.0f));
    grid.z_max = std::log(20000.0f);
    for (const int type : {1, 3, 5})
        for (const auto& size : pages) {
            session.prefs.contour.contour_type = type;
            Fine_Page paper(size.width, size.height, size.point);
            Picture(paper, {10, 14, 1, 4});
            Expect_Texts_Apart(paper, {0, 0, size.width, size.height}, "map " + std::to_string(size.width));
            const auto texts = Items<Recorded_Text>(paper);
            for (const char* number : {"10000", "Intensity"})
                EXPECT_TRUE(std::ranges::any_of(texts, [&](const Recorded_Text& text) { return text.text == number; })) << size.width;
        }
}

TEST(Short_Title, WordsAndNumbersStayWhole) {
    const std::string title = "Corundum and silicon, neutrons of 1.594 A, 295 K (simulated)";
    const auto width = [](std::string_view text) { return static_cast<double>(Characters(text)); };
    const auto shortened = [&](double room) { return Shortened_At_Words(title, room, width); };
    EXPECT_EQ(shortened(60), title);
    EXPECT_EQ(shortened(59), "Corundum and silicon, neutrons \xE2\x80\xA6 1.594 A, 295 K (simulated)");
    EXPECT_EQ(shortened(40), "Corundum and \xE2\x80\xA6 295 K (simulated)");
    EXPECT_EQ(shortened(10), "Corundum \xE2\x80\xA6");
    EXPECT_EQ(shortened(5),
              "Co\xE2\x80\xA6"
              "d)")
        << "not even a word has room";
}

}  // namespace vntl::test
