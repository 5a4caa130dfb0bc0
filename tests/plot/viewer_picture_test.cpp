// Pictures of an area detector: where the cells stand and what colours they have, on pixels and in the list of what is drawn.
#include "plot/viewer_picture.hpp"

#include <cmath>
#include <limits>
#include <tuple>

#include "fixture.hpp"
#include "toolkit/bitmap.hpp"

namespace vntl::test {

constexpr float nan = std::numeric_limits<float>::quiet_NaN(), infinite = std::numeric_limits<float>::infinity();

class Viewer_Picture : public Plot_Test {
protected:
    // A run with a picture: pixels from x1 and y1 on.
    void Put(int nx, int ny, std::vector<float> z, float x1 = 1, float y1 = 1) {
        PlotGrid& grid = viewer.plot.grid = {};
        for (int i = 0; i < nx; ++i) grid.grid_x.push_back(x1 + static_cast<float>(i));
        for (int i = 0; i < ny; ++i) grid.grid_y.push_back(y1 + static_cast<float>(i));
        grid.grid_z = std::move(z);
        const Extremes range = Finite_Extremes(grid.grid_z);
        if (range.Found()) grid.z_min = range.low, grid.z_max = range.high;
        viewer.current_numor = 1;
        viewer.bitmap = true;
        viewer.title = "Frame of a run", viewer.x_label = "across", viewer.y_label = "up";
    }
    Drawn Draw_On(Device& device) {
        const Drawn drawn = Draw_Viewer(viewer, session.prefs, session.config, device);
        viewer.plot.units = drawn.units;
        return drawn;
    }
    // The colour on the screen at a place of the picture.
    Colour Shown(Bitmap& bitmap, double x, double y) const {
        const Plot_State::Place at = viewer.plot.Page_At({x, y});
        return bitmap.Pixel(static_cast<int>(at.x / page_width * bitmap.Width()),
                            static_cast<int>((1 - at.y / page_height) * bitmap.Height()));
    }
    Colour Least() const { return session.prefs.contour.contour_min_colour; }
    Colour Most() const { return session.prefs.contour.contour_max_colour; }
    Colour Blank() const { return session.prefs.contour.contour_foreground; }

    Viewer2D viewer;
};

// Pixel (1, 1) is the lower left cell. Each cell is whole and stands about its point, also in a part of the picture, on pixels as on paper.
TEST_F(Viewer_Picture, CellsStandAboutTheirPointsInTheColoursOfTheirValues) {
    for (const auto& [x1, y1] : {std::tuple{1.0f, 1.0f}, {101.0f, 41.0f}}) {
        Put(3, 2, {0, 0, 10, 5, nan, infinite}, x1, y1);
        Bitmap bitmap(600, 400);
        const Drawn drawn = Draw_On(bitmap.Drawing());
        EXPECT_EQ(drawn.units, (View{x1 - 0.5f, x1 + 2.5f, y1 - 0.5f, y1 + 1.5f}));
        const std::tuple<float, float, Colour> cells[] = {{0, 0, Least()}, {1, 0, Least()}, {2, 0, Most()},
                                                          {0, 1, 0},       {1, 1, Blank()}, {2, 1, Blank()}};
        for (const auto& [column, row, colour] : cells)
            for (const auto& [dx, dy] : {std::tuple{-0.45, -0.45}, {0.45, 0.45}}) {
                const Colour shown = Shown(bitmap, x1 + column + dx, y1 + row + dy);
                if (colour != 0)
                    EXPECT_EQ(shown, colour) << column << ' ' << row;
                else  // halfway between the two
                    EXPECT_NEAR(Red(shown), 0.5 * (Red(Least()) + Red(Most())), 1);
            }
        Draw_On(page);
        const auto painted = All<Recorded_Cells>();
        ASSERT_EQ(painted.size(), 1u);
        EXPECT_EQ(std::tuple(painted[0].columns, painted[0].rows), std::tuple(3, 2));
        EXPECT_AT((Point{painted[0].rect.x1, painted[0].rect.y1}), 180, 120);
        EXPECT_AT((Point{painted[0].rect.x2, painted[0].rect.y2}), 1020, 680);
        EXPECT_EQ(painted[0].colours[2], Most());
        EXPECT_EQ(painted[0].colours[4], no_colour);
    }
}

// One bright pixel of many is seen in every window, near its place.
TEST_F(Viewer_Picture, ABrightPixelStaysBrightInASmallWindow) {
    constexpr int n = 512, column = 257, row = 12;
    std::vector<float> z(n * n, 3);
    z[row * n + column] = 50;
    Put(n, n, std::move(z));
    session.prefs.graph2d.title.pos = session.prefs.graph2d.xlabel.pos = session.prefs.graph2d.ylabel.pos = 1;
    for (const auto& [width, height] : {std::tuple{300, 200}, {835, 650}, {60, 90}}) {
        Bitmap bitmap(width, height);
        Draw_On(bitmap.Drawing());
        int bright = 0;
        for (int py = 0; py < height; ++py)
            for (int px = 0; px < width; ++px)
                if (bitmap.Pixel(px, py) == Most()) {
                    ++bright;
                    const auto at = viewer.plot.Data_At({(px + 0.5) / width * page_width, (1 - (py + 0.5) / height) * page_height});
                    EXPECT_NEAR(at.x, column + 1, n / (0.7 * width)) << width;
                    EXPECT_NEAR(at.y, row + 1, n / (0.7 * height)) << width;
                }
        EXPECT_TRUE(bright >= 1 && bright <= 4) << bright << " in " << width;
    }
}

// A place of the page is read alike on both: the cells reach half a step beyond the outer points, which are the ends of a map.
TEST_F(Viewer_Picture, MapsAndCellsHaveTheUnitsOfTheirPoints) {
    Put(5, 4, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19});
    viewer.plot.Show({1, 5, 1, 4});
    for (int type = 0; type <= 5; ++type) {
        viewer.bitmap = type == 0;
        session.prefs.contour.contour_type = std::max(type, 1);
        const Drawn drawn = Draw_On(page);
        EXPECT_EQ(drawn.window, (View{1, 5, 1, 4}));
        EXPECT_EQ(drawn.units, type == 0 ? (View{0.5, 5.5, 0.5, 4.5}) : (View{1, 5, 1, 4}));
        for (const char* text : {"Frame of a run", "across", "up"}) EXPECT_NE(Text(text), nullptr) << type << text;
        EXPECT_EQ(All<Recorded_Clear>().at(0).colour, session.prefs.contour.contour_background);
    }
    viewer.intensity_scale = Intensity_Scale::logarithm;
    Draw_On(page);
    EXPECT_NE(Text("Frame of a run (Log-Scale)"), nullptr);
    viewer.current_numor = 0;
    Draw_On(page);
    EXPECT_EQ(All<Recorded_Clear>().at(0).colour, WRGB(192, 192, 192));
    ASSERT_NE(Text(session.config.program_name), nullptr);
    EXPECT_EQ(Text(session.config.program_name)->style.colour, WRGB(0, 0, 255));
}

// Whatever a frame holds, there is a picture; what has no two columns and rows is drawn cell by cell in every way.
TEST_F(Viewer_Picture, DegenerateFramesHaveTheirPictures) {
    const std::tuple<int, int, std::vector<float>> frames[] = {{1, 1, {7}},       {1, 3, {1, 2, 3}},
                                                               {3, 1, {1, 2, 3}}, {2, 2, {0, 0, 0, 0}},
                                                               {1, 1, {nan}},     {2, 2, {nan, nan, nan, infinite}},
                                                               {0, 0, {}},        {2, 2, {-3e38f, 3e38f, 0, 1}}};
    for (const auto& [nx, ny, z] : frames)
        for (int type = 0; type <= 5; ++type) {
            SCOPED_TRACE(testing::Message() << nx << ny << type);
            Put(nx, ny, z);
            viewer.bitmap = type == 0;
            session.prefs.contour.contour_type = std::max(type, 1);
            Draw_On(page);
            const bool cells = type == 0 || nx < 2 || ny < 2;
            if (cells && Finite_Extremes(z).Found()) {
                ASSERT_EQ(All<Recorded_Cells>().size(), 1u);
                EXPECT_EQ(All<Recorded_Cells>()[0].colours.size(), z.size());
            }
            EXPECT_TRUE(!cells || nx != 1 || viewer.plot.units.x2 - viewer.plot.units.x1 == 1);
            EXPECT_TRUE(z.empty() || viewer.plot.units.Drawable());
            for (const Recorded_Line& line : All<Recorded_Line>())
                for (const Point& at : line.points) EXPECT_TRUE(std::isfinite(at.x) && std::isfinite(at.y));
            Bitmap bitmap(90, 60);
            Draw_On(bitmap.Drawing());
        }
}

// The line of a section lies over the points that it was drawn through, and nothing of it outside of the plot box.
TEST_F(Viewer_Picture, TheLineOfASectionLiesWhereItWasDrawn) {
    Put(5, 4, std::vector<float>(20, 1));
    Draw_On(page);
    viewer.section_known = true;
    viewer.section_x = {1, 5}, viewer.section_y = {4, 1};
    const auto lines = [&] {
        page = Recording_Device();
        Draw_Viewer_Marks(viewer, page);
        return Lines(WRGB(255, 255, 0));
    };
    EXPECT_TRUE(lines().empty());  // its window is closed
    viewer.side_plot = side_section;
    ASSERT_EQ(lines().size(), 1u);
    EXPECT_EQ(lines()[0].pen.width, 2);
    EXPECT_AT(lines()[0].points[0], 180 + 840 * 0.1, 680 - 560 * 0.125);
    EXPECT_AT(lines()[0].points[1], 1020 - 840 * 0.1, 120 + 560 * 0.125);
    EXPECT_EQ(All<Recorded_Ellipse>().size(), 5u);
    viewer.section_x = {-100, 100};
    lines();
    ASSERT_TRUE(page.Bounds().has_value());
    EXPECT_GE(page.Bounds()->x1, 179);
    EXPECT_LE(page.Bounds()->x2, 1021);
    viewer.section_known = false;
    viewer.plot.rubber = {true, 300, 200, 500, 400, Rubber_Kind::rectangle};
    ASSERT_FALSE(lines().empty());
    EXPECT_EQ(lines().back().pen.width, 2);
}

// In the smallest window numbers and texts stand apart and inside the page, whatever their size is; a flat curve is seen.
TEST_F(Viewer_Picture, SmallPlotsCanBeRead) {
    const auto line = [](std::vector<float> y) {
        Line_Plot plot{{}, std::move(y)};
        for (std::size_t i = 0; i < plot.y.size(); ++i) plot.x.push_back(static_cast<float>(i + 1));
        return plot;
    };
    const Line_Plot plots[] = {line({1, 5, 2}),           line({0, 0, 0}),       line({7}),
                               line({1e9f, 1.5e9f, nan}), line({-3e38f, 3e38f}), line({123456, 123457, 123456}),
                               {{2, 2, 2}, {5, 5, 5}},    line({0.001f, 0.002f})};
    for (const auto& [width, height] : {std::tuple{220, 280}, {1000, 700}})
        for (const Line_Plot& plot : plots)
            for (const bool omega : {false, true}) {
                page = Recording_Device(width, height);
                omega ? Draw_Omega_Scan(plot, session.prefs, page) : Draw_Cross_Section(plot, session.prefs, page);
                EXPECT_NE(Text(omega ? "Omega Scan" : "Cross Section"), nullptr);
                std::vector<Rect> boxes;
                for (const Recorded_Text& text : All<Recorded_Text>()) {
                    const double em = Em_Of_Cell(text.style.width, text.style.height), length = page.Text_Width(text.text, text.style);
                    EXPECT_GE(em, 8.9) << text.text;
                    const double left = -0.5 * length *
                                        (text.style.justify == Justify::left     ? 0
                                         : text.style.justify == Justify::centre ? 1
                                                                                 : 2);
                    const Rect along{left, 0, left + length, 0.68 * em}, up{-0.68 * em, left, 0, left + length};
                    Rect box = text.style.angle == 0 ? along : up;
                    box = {box.x1 + text.at.x, box.y1 + text.at.y, box.x2 + text.at.x, box.y2 + text.at.y};
                    EXPECT_TRUE(box.x1 >= 0 && box.y1 >= 0 && box.x2 <= width && box.y2 <= height) << text.text << ' ' << box.x1;
                    for (const Rect& other : boxes)
                        EXPECT_FALSE(other.x1 < box.x2 && box.x1 < other.x2 && other.y1 < box.y2 && box.y1 < other.y2)
                            << text.text << " lies on another text in " << width;
                    boxes.push_back(box);
                }
                EXPECT_GE(boxes.size(), 5u);
            }
    page = Recording_Device();
    Draw_Cross_Section({}, session.prefs, page);
    EXPECT_NE(Text("Draw a line in the picture"), nullptr);
    Draw_Omega_Scan(line({1, 5, 2}), session.prefs, page);  // the plot box is that of the told zone
    bool framed = false;
    for (const Recorded_Line& one : All<Recorded_Line>())
        framed |= one.points.size() == 5 && std::fabs(one.points[0].x - 180) < 1 && std::fabs(one.points[2].x - 1080) < 1;
    EXPECT_TRUE(framed);
}

}  // namespace vntl::test
