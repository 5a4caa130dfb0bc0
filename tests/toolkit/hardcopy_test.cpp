// Pictures in files: PCX by a decoder of its own, palettes, resolution, changed colours, strokes of PostScript against ghostscript's
// raster.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <set>

#include "drawing/drawn.hpp"
#include "pictures/recolour.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/hardcopy.hpp"
#include "toolkit/printer.hpp"

namespace vntl {
namespace {

constexpr Colour white = WRGB(255, 255, 255), black = WRGB(0, 0, 0), yellow = WRGB(255, 255, 0), blue = WRGB(0, 0, 255);

std::string File_Text(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string Temporary(const std::string& ending) { return testing::TempDir() + "hardcopy_" + std::to_string(::getpid()) + ending; }

unsigned Byte(const std::string& text, std::size_t at) { return at < text.size() ? static_cast<unsigned char>(text[at]) : 0; }
unsigned Low_First(const std::string& text, std::size_t at) { return Byte(text, at) | Byte(text, at + 1) << 8; }
unsigned High_First(const std::string& text, std::size_t at) {
    return Byte(text, at) << 24 | Byte(text, at + 1) << 16 | Byte(text, at + 2) << 8 | Byte(text, at + 3);
}

// --- PCX ------------------------------------------------------------------------------------------------------------------------

struct Decoded {
    unsigned width = 0, height = 0, bits = 0, planes = 0, dots = 0;
    std::vector<Colour> pixels;
};

Decoded Decode_Pcx(const std::string& text) {
    Decoded image{Low_First(text, 8) - Low_First(text, 4) + 1,
                  Low_First(text, 10) - Low_First(text, 6) + 1,
                  Byte(text, 3),
                  Byte(text, 65),
                  Low_First(text, 12),
                  {}};
    const unsigned line = Low_First(text, 66);
    EXPECT_EQ(std::string(text, 0, 3), "\x0a\x05\x01");
    EXPECT_EQ(line % 2, 0u);
    EXPECT_GE(line * 8, image.width * image.bits);
    std::vector<unsigned> bytes;
    std::size_t at = 128;
    const std::size_t wanted = std::size_t{line} * image.planes * image.height;
    while (bytes.size() < wanted && at < text.size()) {
        const unsigned value = Byte(text, at++);
        const std::size_t before = bytes.size();
        if (value >= 192)
            bytes.insert(bytes.end(), value - 192, Byte(text, at++));
        else
            bytes.push_back(value);
        EXPECT_EQ(before / line, (bytes.size() - 1) / line) << "a run ends with its line";
    }
    EXPECT_EQ(bytes.size(), wanted);
    const bool long_palette = image.bits == 8 && image.planes == 1;
    EXPECT_EQ(text.size() - at, long_palette ? 769u : 0u);
    EXPECT_TRUE(!long_palette || Byte(text, at) == 0x0c);
    const std::size_t palette = long_palette ? at + 1 : 16;
    for (unsigned y = 0; y < image.height; ++y) {
        for (unsigned x = 0; x < image.width; ++x) {
            const auto plane = [&](unsigned k) {
                const std::size_t start = (std::size_t{y} * image.planes + k) * line;
                return image.bits == 8 ? bytes[start + x] : bytes[start + x / 8] >> (7 - x % 8) & 1;
            };
            if (image.bits == 8 && image.planes == 3) {
                image.pixels.push_back(WRGB(plane(0), plane(1), plane(2)));
                continue;
            }
            std::size_t index = 0;
            for (unsigned k = 0; k < image.planes; ++k) index |= std::size_t{plane(k)} << k;
            const auto part = [&](std::size_t k) { return Byte(text, palette + 3 * index + k); };
            image.pixels.push_back(WRGB(part(0), part(1), part(2)));
        }
    }
    return image;
}

// Stripes of level lines, which no raster smooths, in so many colours; long runs, and bytes that need a run of one.
Bitmap Striped(int width, int height, int colours) {
    Bitmap bitmap(width, height);
    bitmap.Drawing().Clear(white);
    for (int i = 0; i < colours - 1; ++i) {
        const auto level = static_cast<unsigned>(i);
        const std::array<Point, 2> line = {{{i % 3 * 1.0, i * 2.0 + 0.5}, {width - i % 5 * 1.0, i * 2.0 + 0.5}}};
        bitmap.Drawing().Polyline(line, {WRGB(200 + level / 4, 7 * level % 256, 3 * level % 200), 1, Line_Style::solid});
    }
    return bitmap;
}

TEST(Pcx, EveryNumberOfColoursAsDrawn) {
    using enum Image_Colours;
    const struct {
        int width, height, colours;
        Image_Colours kind;
        unsigned bits, planes;
    } cases[] = {{71, 40, 18, true_colour, 8, 3}, {64, 12, 5, true_colour, 8, 3},  {71, 500, 200, palette_256, 8, 1},
                 {1, 2, 2, palette_16, 1, 4},     {203, 40, 16, palette_16, 1, 4}, {8, 6, 2, palette_256, 1, 4},
                 {131, 9, 1, black_white, 1, 1}};
    for (const auto& one : cases) {
        const Bitmap bitmap = Striped(one.width, one.height, one.colours);
        Hardcopy_Options options;
        options.image_colours = one.kind;
        options.dots_per_inch = 300;
        const std::string text = bitmap.Encoded(Image_Format::pcx, options);
        const Decoded image = Decode_Pcx(text);
        EXPECT_EQ(image.bits, one.bits);
        EXPECT_EQ(image.planes, one.planes);
        EXPECT_EQ(image.dots, 300u);
        ASSERT_EQ(image.width, static_cast<unsigned>(one.width));
        ASSERT_EQ(image.height, static_cast<unsigned>(one.height));
        int wrong = 0;
        for (unsigned y = 0; y < image.height; ++y)
            for (unsigned x = 0; x < image.width; ++x)
                wrong += image.pixels[y * image.width + x] != bitmap.Pixel(static_cast<int>(x), static_cast<int>(y));
        EXPECT_EQ(wrong, 0) << one.width << " x " << one.height << ", " << one.colours << " colours";
    }
}

// --- images of few colours ------------------------------------------------------------------------------------------------------

void Draw_Plot(Device& device) {
    device.Clear(white);
    std::vector<Colour> cells;
    for (unsigned i = 0; i < 4096; ++i) cells.push_back(WRGB(i % 256, 255 - i % 256, i / 16));
    device.Cells({{0.1 * device.Width(), 0.5 * device.Height(), 0.9 * device.Width(), 0.9 * device.Height()}, 64, 64, cells});
    const std::vector<Point> line = {{0, 0.1 * device.Height()}, {0.5 * device.Width(), 0.4 * device.Height()}, {device.Width(), 0}};
    device.Polyline(line, {yellow, 2, Line_Style::solid});
    const std::vector<Point> axis = {{0, 5}, {9, 5}};
    device.Polyline(axis, {black, 1, Line_Style::solid});
    device.Text({20, 20}, "2θ (°)", {101, 0, 10, 16, 0, Justify::left, blue});
}

TEST(BitImage, PalettesKeepGroundAndAxesAndStayNear) {
    Bitmap bitmap(400, 300);
    Draw_Plot(bitmap.Drawing());
    const struct {
        Image_Colours kind;
        std::size_t most;
        double error;  // mean, of 255: of a regular cube of as many colours it is about 15 and 50
    } cases[] = {{Image_Colours::palette_256, 256, 4}, {Image_Colours::palette_16, 16, 14}};
    for (const auto& one : cases) {
        Hardcopy_Options options;
        options.image_colours = one.kind;
        const Decoded image = Decode_Pcx(bitmap.Encoded(Image_Format::pcx, options));
        ASSERT_EQ(image.pixels.size(), 120000u);
        double error = 0;
        for (unsigned i = 0; i < image.pixels.size(); ++i) {
            const Colour now = image.pixels[i], then = bitmap.Pixel(static_cast<int>(i % 400), static_cast<int>(i / 400));
            EXPECT_TRUE(now == then || (then != white && then != black)) << i;
            for (const auto part : {Red, Green, Blue}) error += std::abs(static_cast<int>(part(now)) - static_cast<int>(part(then))) / 3.0;
        }
        EXPECT_LT(error / 120000, one.error);
        EXPECT_LE(std::set<Colour>(image.pixels.begin(), image.pixels.end()).size(), one.most);
    }
}

// A yellow line is as whole as a black one, and an area has as many black dots as it is dark.
TEST(BitImage, BlackAndWhite) {
    const std::string file = Temporary(".pcx");
    const auto draw = [](Device& device) {
        device.Clear(white);
        const std::vector<Point> grey = {{0, 50}, {60, 50}, {60, 100}, {0, 100}}, line = {{0, 20.5}, {100, 20.5}};
        device.Fill(grey, WRGB(191, 191, 191));
        device.Polyline(line, {yellow, 1, Line_Style::solid});
    };
    Hardcopy_Options options;
    options.width = options.height = 100;
    options.image_colours = Image_Colours::black_white;
    ASSERT_TRUE(HardCopy(Hardcopy_Driver::bit_image, file, options, draw).ok());
    const Decoded image = Decode_Pcx(File_Text(file));
    std::remove(file.c_str());
    ASSERT_EQ(image.pixels.size(), 10000u);
    const auto dark = [&](std::size_t first, std::size_t end) {
        return std::count(image.pixels.begin() + static_cast<std::ptrdiff_t>(100 * first),
                          image.pixels.begin() + static_cast<std::ptrdiff_t>(100 * end), black);
    };
    EXPECT_NEAR(static_cast<double>(dark(0, 50)), 3000 * 64 / 255.0, 60);
    EXPECT_EQ(dark(50, 79), 0);
    EXPECT_EQ(dark(79, 80), 100);
    EXPECT_EQ(dark(80, 100), 0);
}

// What the heads of the formats say of bits, colours and resolution.
TEST(BitImage, HeadsOfTheOtherFormats) {
    const Bitmap bitmap = Striped(40, 60, 10);
    using enum Image_Colours;
    Hardcopy_Options options;
    options.dots_per_inch = 254;  // 10000 a metre
    const auto encoded = [&](Image_Format format, Image_Colours colours) {
        options.image_colours = colours;
        return bitmap.Encoded(format, options);
    };
    for (const auto& [colours, bits] : {std::pair{palette_16, 4u}, {black_white, 1u}, {true_colour, 24u}}) {
        const std::string bmp = encoded(Image_Format::bmp, colours);
        EXPECT_EQ(bmp.substr(0, 2), "BM");
        EXPECT_EQ(Low_First(bmp, 28), bits);
        EXPECT_EQ(Low_First(bmp, 38), 10000u);
    }
    for (const auto& [colours, kind] : {std::pair{palette_256, 3u}, {true_colour, 2u}}) {
        const std::string png = encoded(Image_Format::png, colours);
        EXPECT_EQ(Byte(png, 25), kind) << "3 a palette, 2 red, green and blue";
        const std::size_t resolution = png.find("pHYs");
        ASSERT_NE(resolution, std::string::npos);
        EXPECT_EQ(High_First(png, resolution + 4), 10000u);
    }
    const std::string fine = encoded(Image_Format::jpeg, true_colour);
    EXPECT_EQ(fine.substr(6, 4), "JFIF");
    const unsigned density = Byte(fine, 14) << 8 | Byte(fine, 15);
    EXPECT_EQ(density, Byte(fine, 13) == 1 ? 254u : 100u) << "dots an inch, or a centimetre";
    options.quality = 10;
    EXPECT_LT(encoded(Image_Format::jpeg, true_colour).size(), fine.size());
}

// --- colours --------------------------------------------------------------------------------------------------------------------

TEST(Recoloured, WhatLinesAndAreasBecome) {
    using enum Colour_Change;
    const Colour red = WRGB(255, 0, 0), grey_of_red = WRGB(76, 76, 76);
    const struct {
        Colour_Change change;
        Colour_Use use;
        Colour ground, black_line, red_line, red_area, cell;
    } cases[] = {{none, Colour_Use::all, white, 0, red, red, red},
                 {exchange, Colour_Use::all, 0, white, red, red, red},
                 {greys, Colour_Use::all, white, 0, grey_of_red, grey_of_red, grey_of_red},
                 {Colour_Change::black, Colour_Use::all, white, 0, 0, grey_of_red, grey_of_red},
                 {none, Colour_Use::lines, white, 0, red, grey_of_red, grey_of_red},
                 {none, Colour_Use::areas, white, 0, grey_of_red, red, red},
                 {exchange, Colour_Use::lines, 0, white, red, grey_of_red, grey_of_red}};
    for (const auto& one : cases) {
        Recording_Device device;
        Draw_Recoloured(device, one.change, one.use, [&](Device& target) {
            target.Clear(white);
            const std::vector<Point> line = {{0, 0}, {5, 5}, {9, 0}};
            target.Polyline(line, {0, 1, Line_Style::solid});
            target.Polyline(line, {red, 3, Line_Style::dashed});
            target.Fill(line, red);
            const std::array<Colour, 2> cells = {red, no_colour};
            target.Cells({{0, 0, 10, 10}, 2, 1, cells});
            target.Text({5, 5}, "x", {101, 0, 10, 16, 0, Justify::left, red});
        });
        const auto lines = Drawn<Recorded_Line>(device);
        ASSERT_EQ(lines.size(), 2u);
        EXPECT_EQ(lines[0].pen.colour, one.black_line);
        EXPECT_EQ(lines[1].pen.colour, one.red_line);
        EXPECT_EQ(lines[1].pen.width, 3);
        EXPECT_EQ(Drawn<Recorded_Fill>(device).at(0).colour, one.red_area);
        EXPECT_EQ(Drawn<Recorded_Text>(device).at(0).style.colour, one.red_line);
        const auto cells = Drawn<Recorded_Cells>(device);
        ASSERT_EQ(cells.size(), 1u);
        EXPECT_EQ(cells[0].colours[0], one.cell);
        EXPECT_EQ(cells[0].colours[1], no_colour) << "what shows the ground is no colour";
        EXPECT_EQ(Drawn<Recorded_Clear>(device).at(0).colour, one.ground);
    }
    Recording_Device dark;  // white lines on a dark plot in a light frame come out black on white
    Draw_Recoloured(dark, Colour_Change::black, Colour_Use::all, [](Device& target) {
        target.Clear(WRGB(230, 230, 230));
        const std::vector<Point> box = {{100, 100}, {1100, 100}, {1100, 700}, {100, 700}};
        target.Fill(box, blue);
        target.Polyline(box, {white, 1, Line_Style::solid});
    });
    EXPECT_EQ(Drawn<Recorded_Fill>(dark).at(0).colour, white);
    EXPECT_EQ(Drawn<Recorded_Line>(dark).at(0).pen.colour, 0u);
}

// --- PostScript -----------------------------------------------------------------------------------------------------------------

void Draw_Lines(Device& device) {
    device.Clear(white);
    std::vector<float> x, y;
    for (int i = 0; i < 700; ++i) {
        x.push_back(20 + 0.8f * static_cast<float>(i));
        y.push_back(i % 97 == 50 ? std::nanf("") : 200 + 90 * std::sin(0.05f * static_cast<float>(i)));
    }
    device.Curve({x, y}, {black, 3, Line_Style::dot_dash});
    for (float& value : y) value += 150;
    device.Curve({x, y}, {blue, 8, Line_Style::solid});
    device.Markers({x, y}, {223, 6, 6, yellow, true});
    for (float& value : y) value -= 250;
    device.Markers({x, y}, {221, 4, 4, black, true});
    std::vector<Point> closed;
    for (int i = 0; i < 41; ++i) closed.push_back({300 + 80 * std::cos(i % 40 * 0.157), 300 + 80 * std::sin(i % 40 * 0.157)});
    device.Polyline(closed, {black, 2, Line_Style::dashed});
}

// Pixels that ghostscript makes of the file at 72 dpi, as a printer does: dark or not.
std::string Ghostscript(const std::string& file) {
    const std::string raster = file + ".ppm";
    EXPECT_EQ(std::system(("gs -q -dBATCH -dNOPAUSE -dSAFER -sDEVICE=ppmraw -r72 -o " + raster + ' ' + file).c_str()), 0);
    std::string pixels = File_Text(raster);
    std::remove(raster.c_str());
    return pixels;
}

double Mean_Difference(const std::string& a, const std::string& b) {
    EXPECT_EQ(a.size(), b.size());
    double sum = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        sum += std::abs(static_cast<int>(Byte(a, i)) - static_cast<int>(Byte(b, i)));
    return sum / static_cast<double>(std::max<std::size_t>(a.size(), 1));
}

std::size_t Strokes(const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(" S\n"); at != std::string::npos; at = text.find(" S\n", at + 1)) ++count;
    return count;
}

// Dashes go on in phase, and joins have no notch, however often a line is stroked.
TEST(PostScript, StrokesAfterSoManyPoints) {
    const std::string file = Temporary(".ps");
    Hardcopy_Options options;
    options.width = 800, options.height = 600;
    options.stroke_frequency = 1'000'000;
    ASSERT_TRUE(HardCopy(Hardcopy_Driver::postscript, file, options, Draw_Lines).ok());
    const std::string whole = File_Text(file);
    const bool seen = std::system("gs --version >/dev/null 2>&1") == 0;
    const std::string picture = seen ? Ghostscript(file) : std::string();
    for (const int frequency : {4, 10, 41}) {
        options.stroke_frequency = frequency;
        options.end_mark = frequency == 10;
        ASSERT_TRUE(HardCopy(Hardcopy_Driver::postscript, file, options, Draw_Lines).ok());
        const std::string text = File_Text(file);
        EXPECT_EQ(text.ends_with("%%EOF\n\x04"), options.end_mark);
        EXPECT_GE(Strokes(text), Strokes(whole) + 500 / static_cast<std::size_t>(frequency));
        if (!seen) continue;
        const double difference = Mean_Difference(Ghostscript(file), picture);
        RecordProperty("difference_at_" + std::to_string(frequency), std::to_string(difference));
        EXPECT_LT(difference, 0.03) << "of 255, at a stroke each " << frequency << " points";
    }
    std::remove(file.c_str());
    if (!seen) GTEST_SKIP() << "ghostscript is not there";
}

TEST(PostScript, APageInTheMiddleOfASheet) {
    const std::string file = Temporary(".ps");
    Hardcopy_Options options;
    options.width = 800, options.height = 400;  // 600 x 300 points
    options.paper_width = 842, options.paper_height = 595;
    ASSERT_TRUE(HardCopy(Hardcopy_Driver::postscript, file, options, [](Device& device) { device.Clear(black); }).ok());
    const std::string text = File_Text(file);
    EXPECT_NE(text.find(" 842 595 0 () ()"), std::string::npos) << "the size of the sheet in the head";
    if (std::system("gs --version >/dev/null 2>&1") == 0) {
        const std::string raster = Ghostscript(file);
        std::vector<std::pair<int, int>> dark;
        const std::size_t start = raster.size() - 842u * 595u * 3u;
        for (int y = 0; y < 595; ++y)
            for (int x = 0; x < 842; ++x)
                if (Byte(raster, start + 3 * static_cast<std::size_t>(y * 842 + x)) < 10) dark.emplace_back(x, y);
        ASSERT_FALSE(dark.empty());
        EXPECT_NEAR(dark.front().first, 121, 1);
        EXPECT_NEAR(dark.front().second, 147.5, 1.5);
        EXPECT_NEAR(dark.back().first, 720, 1);
        EXPECT_NEAR(dark.back().second, 446.5, 1.5);
    }
    std::remove(file.c_str());
}

// --- the door -------------------------------------------------------------------------------------------------------------------

TEST(HardCopy, NamesSizesAndPlacesThatDoNotTakeAFile) {
    Hardcopy_Driver driver{};
    Image_Format format{};
    EXPECT_TRUE(Driver_Of_Name("/a.b/Plot.JPEG", driver, format) && driver == Hardcopy_Driver::bit_image && format == Image_Format::jpeg);
    EXPECT_TRUE(Driver_Of_Name("x.wmf", driver, format) && driver == Hardcopy_Driver::metafile);
    for (const char* name : {"", "png", "/a.png/plot", "a.gif", "a.pn", "a."}) EXPECT_FALSE(Driver_Of_Name(name, driver, format)) << name;
    int drawn = 0;
    const auto draw = [&](Device&) { ++drawn; };
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [width, height] :
         {std::pair{0.0, 10.0}, {10.0, 100000.0}, {nan, 10.0}, {-5.0, 10.0}, {30000.0, 30000.0}, {1e300, 1e300}}) {
        Hardcopy_Options options;
        options.width = width, options.height = height;
        for (const auto kind : {Hardcopy_Driver::bit_image, Hardcopy_Driver::pdf}) {
            const Status status = HardCopy(kind, "/tmp/never.png", options, draw);
            EXPECT_TRUE(status.failed && status.message.ends_with("/tmp/never.png")) << status.message;
        }
    }
    EXPECT_EQ(drawn, 0);
    for (const auto kind : {Hardcopy_Driver::bit_image, Hardcopy_Driver::pdf, Hardcopy_Driver::postscript, Hardcopy_Driver::svg})
        EXPECT_EQ(HardCopy(kind, "/no/such/place/x", {}, draw).message, "The picture cannot be written: /no/such/place/x");
    Page_Setup page;
    page.file = "/no/such/place/x.pdf";
    EXPECT_EQ(Print_Page(page, 1.5, draw).message, "The page cannot be written: /no/such/place/x.pdf");
    page.printer = "no such printer";
    EXPECT_EQ(Print_Page(page, 1.5, draw).message, "The page cannot be printed: no such printer");
}

}  // namespace
}  // namespace vntl
