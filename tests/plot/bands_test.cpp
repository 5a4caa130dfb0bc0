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
    void Fill(std::span<const Point> polygon, Colour colour) override { target_.Fill(polygon, colour); }
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
        for (const auto& [x1, x2] : {std::pair{10.0f, 14.0f}, {11.9973f, 12.0011f}}) {
            Bitmap bands(width, height), whole(width, height);
            Graphics g(bands.Drawing());
            plot_graph2d(Scene_Of(session), g, 9, {x1, x2, 0, 1100});
            Whole device(whole.Drawing());
            Graphics h(device);
            plot_graph2d(Scene_Of(session), h, 9, {x1, x2, 0, 1100});
            int different = 0;
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) different += bands.Pixel(x, y) != whole.Pixel(x, y);
            EXPECT_EQ(different, 0) << width << ' ' << x1;
        }
    }
}

}  // namespace vntl::test
