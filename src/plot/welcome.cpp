// The empty screen: name, what the program is, and version, over a faint diffraction pattern.
#include <vector>

#include "drawing/mixed_colour.hpp"
#include "plot/plot.hpp"

namespace vntl {

namespace {

constexpr int sans_serif = 102, bold = 1;

struct Welcome_Line {
    float height;  // of the page
    int style;
    float size;  // thousandths of the page's width
};
constexpr Welcome_Line name_line{0.6f, bold, 40}, first_line{0.5f, 0, 18}, second_line{0.45f, 0, 18}, version_line{0.2f, 0, 15};

void Write_Line(Graphics& g, const Welcome_Line& line, std::string_view text) {
    g.WGrTextFont(sans_serif, line.style, line.size / 1000.0f, 2 * line.size / 1000.0f);
    g.IGrCharOut(0.5f * page_width, line.height * page_height, text);
}

// Lines of a face-centred cubic powder, their heights and places those of a strong scatterer; Lorentzians that widen with the angle.
void Draw_Ornament(Graphics& g) {
    constexpr struct {
        float place, height;
    } reflections[] = {{0.12f, 1.0f},  {0.17f, 0.47f}, {0.35f, 0.26f}, {0.50f, 0.33f},
                       {0.55f, 0.12f}, {0.74f, 0.07f}, {0.88f, 0.14f}, {0.93f, 0.13f}};
    constexpr int points = 1200;
    constexpr float left = 240, width = 720, foot = 212, tall = 110;
    std::vector<float> x, y;
    for (int i = 0; i <= points; ++i) {
        const float t = static_cast<float>(i) / points;
        float intensity = 0;
        for (const auto& line : reflections) {
            const float distance = (t - line.place) / (0.003f + 0.004f * line.place);
            intensity += line.height / (1 + distance * distance);
        }
        x.push_back(left + width * t);
        y.push_back(foot + tall * intensity);
    }
    g.IGrPolyLine(x, y);
}

}  // namespace

void Plot_Welcome(Colour ground, Colour letters, const Configuration& config, Graphics& g) {
    g.IGrArea(0, 0, 1, 1);
    g.IGrUnits(0, 0, page_width, page_height);
    g.IGrPaletteBack(ground);
    g.IGrClear();
    g.IGrColourN(Mixed(ground, letters, 0.3));
    g.IGrLineWidth(1.5f);
    Draw_Ornament(g);
    g.IGrLineWidth(1);
    g.IGrColourN(letters);
    g.IGrCharJustify(1);
    Write_Line(g, name_line, config.program_name);
    Write_Line(g, first_line, config.program_line1);
    Write_Line(g, second_line, config.program_line2);
    Write_Line(g, version_line, config.program_version + "  " + config.program_date);
    g.IGrCharJustify(0);
}

}  // namespace vntl
