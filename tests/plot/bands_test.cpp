// A plot of many points is drawn by several threads; the picture must be the one that a single thread draws.
#include "plot/fixture.hpp"
#include "toolkit/bitmap.hpp"

namespace vntl::test {

// Draws on a bitmap as a whole.
class Whole : public Device {
public:
    explicit Whole(Device& target) : target_(target) {}
    double Width() const override { return target_.Width(); }
    double Height() const override { return target_.Height(); }
    void Clear(Colour colour) override { target_.Clear(colour); }
    void Set_Clip(const Rect& rect) override { target_.Set_Clip(rect); }
    void Polyline(std::span<const Point> points, const Pen& pen) override { target_.Polyline(points, pen); }
    void Curve(const Series& series, const Pen& pen) override { target_.Curve(series, pen); }
    void Markers(const Series& series, const Marker_Style& style) override { target_.Markers(series, style); }
    void Cells(const Cell_Image& image) override { target_.Cells(image); }
    void Facets(const Facet_List& list) override { target_.Facets(list); }
    void Fill(std::span<const Point> polygon, Colour colour) override { target_.Fill(polygon, colour); }
    void Under_Curve(const Series& series, double foot, Colour colour) override { target_.Under_Curve(series, foot, colour); }
    void Ellipse(Point at, double rx, double ry, bool filled, const Pen& pen) override { target_.Ellipse(at, rx, ry, filled, pen); }
    void Text(Point at, std::string_view text, const Text_Style& style) override { target_.Text(at, text, style); }
    double Text_Width(std::string_view text, const Text_Style& style) const override { return target_.Text_Width(text, style); }

private:
    Device& target_;
};

class Bands : public Plot_Test {};

TEST_F(Bands, GiveThePictureOfASingleThread) {
    constexpr int few = 300;  // of the rows that the windowing system's slow painter draws: dashed, back and forth, with error bars
    unsigned noise = 1;
    for (int row = 0; row < 9; ++row) {
        std::vector<float> x, y;
        const int points = row == 4 || row >= 7 ? few : 40000;
        for (int i = 0; i < points; ++i) {
            noise = noise * 1664525u + 1013904223u;
            x.push_back(10 + 4.0f * static_cast<float>(i) / static_cast<float>(points) +
                        (row == 8 ? 0.5f * static_cast<float>(i % 2) : 0.0f));  // back and forth
            y.push_back(static_cast<float>(noise >> 16) / 65.536f);
        }
        Add(std::move(x), std::move(y), row == 7 ? Row_Kind::mono : Row_Kind::data);
        ProfileStyle& style = session.prefs.profile_styles[static_cast<std::size_t>(row)];
        style.line_style = row == 4 ? 2 : 0;
        style.line_pitch = 1 + row % 3;
        style.marker_type = 1 + row % 8;
    }
    Exclude(2, 11, 12.5f);
    session.store.Pattern(8).sigma.assign(few, 20);
    for (const auto& [width, height] : {std::pair{800, 500}, {643, 411}}) {
        const auto different = [&, w = width, h = height](const auto& draw) {
            Bitmap bands(w, h), whole(w, h);
            Graphics of_bands(bands.Drawing());
            draw(of_bands);
            Whole device(whole.Drawing());
            Graphics of_whole(device);
            draw(of_whole);
            int count = 0;
            for (int y = 0; y < h; ++y)
                for (int x = 0; x < w; ++x) count += bands.Pixel(x, y) != whole.Pixel(x, y);
            return count;
        };
        for (const auto& [x1, x2] : {std::pair{10.0f, 14.0f}, {11.9973f, 12.0011f}}) {
            const View window{x1, x2, 0, 1100};
            EXPECT_EQ(different([&](Graphics& g) { plot_graph2d(Scene_Of(session), g, 9, window); }), 0) << width << ' ' << x1;
            for (const float rotation : {0.0f, 40.0f, -100.0f})
                EXPECT_EQ(different([&](Graphics& g) { Plot_3D_Lines(Scene_Of(session), g, 9, window, rotation, 22); }), 0) << rotation;
        }
    }
}

// Rows of many points are drawn from the front one to the back one. The picture must be the one that every point gives by itself, drawn in
// the usual order: peaks and noise, one below the other or apart, markers alone or lines alone, close up and far away, logarithms and
// roots.
TEST_F(Bands, DrawnBackwardsRowsGiveThePictureOfEveryPoint) {
    constexpr int rows = 40, points = 6000;
    unsigned noise = 1;
    const auto chance = [&noise] {
        noise = noise * 1664525u + 1013904223u;
        return static_cast<float>(noise >> 8) / 16777216.0f;
    };
    for (int row = 0; row < rows; ++row) {
        std::vector<float> x, y;
        for (int i = 0; i < points; ++i) {
            const float t = static_cast<float>(i) / points;
            x.push_back(row % 3 == 0 ? 10 + 4 * t : 10 + 4 * t * t);  // close together at the start
            float peaks = 0;
            for (int peak = 0; peak < 5; ++peak) {
                const float from = x.back() - 10.3f - static_cast<float>((7 * peak + row) % 35) * 0.1f;
                peaks += 700 / (1 + from * from * 1e5f);
            }
            y.push_back(100 + peaks + 40 * (chance() + chance() - 1));
        }
        Add(std::move(x), std::move(y));
        Exclude(row + 1, 11, 11.5f);
        Exclude(row + 1, 12.5f, 12.6f);
    }
    struct Case {
        int line_pitch, marker_type;
        View window;
        Y_Scale scale = Y_Scale::linear;
        Waterfall waterfall = {};
    };
    constexpr Y_Scale linear = Y_Scale::linear, logarithm = Y_Scale::logarithm, root = Y_Scale::root;
    const Case cases[] = {{1, 2, {10, 14, 0, 1100}},
                          {1, 2, {10.9f, 11.1f, 60, 200}},
                          {3, 4, {10, 14, 0, 1100}},
                          {1, 1, {10, 14, 0, 1100}},
                          {-1, 3, {10, 14, 0, 300}},
                          {1, 2, {10, 14, 0, 3.5f}, logarithm},
                          {1, 2, {11.99f, 12.01f, 0, 900}},
                          {1, 2, {10, 14, 0, 33}, root},
                          {2, 7, {9, 40, -5000, 9000}},
                          {1, 2, {10, 14, 0, 1100}, linear, {0.02f, false, true}},
                          {1, 1, {10, 14, 0, 4000}, linear, {0.1f, false, false}},
                          {1, 1, {10, 14, 0, 40000}, linear, {1, false, true}},
                          {-1, 3, {11, 11.2f, 60, 900}, linear, {0.05f, false, true}},
                          {1, 2, {10, 14, 0, 30}, logarithm, {0.1f, false, true}},
                          {1, 2, {10, 14, 0, 90}, root, {0.1f, false, true}}};
    session.plot.y_all_max = 900;
    for (const Case& c : cases) {
        for (ProfileStyle& style : session.prefs.profile_styles) {
            style.line_style = c.line_pitch < 0 ? -1 : 0;
            style.line_pitch = std::max(1, c.line_pitch);
            style.marker_type = c.marker_type;
        }
        session.plot.waterfall = c.waterfall;
        session.plot.plot_type = c.scale == logarithm ? Plot_Form::multi_log : Plot_Form::multi;
        session.plot.y_scale = c.scale;
        Bitmap bands(640, 420), every(640, 420);
        every.Reduce(false);
        Graphics g(bands.Drawing());
        plot_graph2d(Scene_Of(session), g, rows, c.window, c.scale);
        Whole device(every.Drawing());
        Graphics h(device);
        plot_graph2d(Scene_Of(session), h, rows, c.window, c.scale);
        int different = 0;
        for (int y = 0; y < 420; ++y)
            for (int x = 0; x < 640; ++x) different += bands.Pixel(x, y) != every.Pixel(x, y);
        EXPECT_EQ(different, 0) << &c - cases;
    }
}

}  // namespace vntl::test
