// Computer Graphics Metafiles, read back octet by octet by a reader that shares nothing with the writer: its numbers of elements are those
// of ISO 8632-3, its Greek letters those of the encoding of Symbol.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>

#include "base/text.hpp"
#include "pictures/shown_shapes.hpp"
#include "pictures/vector_device.hpp"

namespace vntl {
namespace {

constexpr Colour red = WRGB(200, 30, 40), green = WRGB(0, 130, 7);

struct Metafile {
    Drawing drawing;                   // the start of a text is the point of its base line below the middle
    std::map<std::string, int> count;  // of elements by "class.number", and of parts before the last one as "parts"
    std::vector<std::string> fonts;
    std::vector<int> line_types;  // of the lines
    Colour background = 0;
};

class Cgm_Player {
public:
    explicit Cgm_Player(std::string bytes) : bytes_(std::move(bytes)) {
        while (at_ < bytes_.size()) Next_Element();
        EXPECT_EQ(at_, bytes_.size());
        EXPECT_EQ(last_, "0.2");
    }
    Metafile found;

private:
    unsigned Word() {
        if (at_ + 1 >= bytes_.size()) return at_ = bytes_.size(), 0;
        at_ += 2;
        return static_cast<unsigned char>(bytes_[at_ - 2]) << 8 | static_cast<unsigned char>(bytes_[at_ - 1]);
    }
    void Take(std::size_t octets) {
        ASSERT_LE(at_ + octets + octets % 2, bytes_.size());
        parameters_ += bytes_.substr(at_, octets);
        at_ += octets + octets % 2;
        EXPECT_TRUE(octets % 2 == 0 || bytes_[at_ - 1] == 0);
    }
    void Next_Element() {
        const unsigned head = Word();
        last_ = std::to_string(head >> 12) + "." + std::to_string(head >> 5 & 127);
        parameters_.clear();
        next_ = 0;
        if ((head & 31) < 31) Take(head & 31);
        for (bool more = (head & 31) == 31; more;) {
            const unsigned part = Word();
            more = part >= 0x8000;
            EXPECT_TRUE(!more || part % 2 == 0);
            if (more) ++found.count["parts"];
            Take(part & 0x7fff);
        }
        ++found.count[last_];
        Play();
        EXPECT_EQ(next_, parameters_.size()) << "parameters of " << last_;
    }

    bool Left() const { return next_ < parameters_.size(); }
    int Signed(int octets) {
        std::int64_t value = 0;
        for (int k = 0; k < octets; ++k, ++next_) value = value << 8 | (Left() ? static_cast<unsigned char>(parameters_[next_]) : 0);
        return static_cast<int>(value >= std::int64_t{1} << (8 * octets - 1) ? value - (std::int64_t{1} << 8 * octets) : value);
    }
    int Integer() { return Signed(2); }
    double Length() { return Signed(octets_of_length_) * step_; }
    double Real() { return static_cast<double>(std::bit_cast<float>(Signed(4))); }
    Colour Rgb() {
        const unsigned value = static_cast<unsigned>(Signed(3));
        return WRGB(value >> 16 & 255, value >> 8 & 255, value & 255);
    }
    std::string String() {
        std::size_t octets = static_cast<std::size_t>(Signed(1) & 255);
        if (octets == 255) octets = static_cast<std::size_t>(Integer() & 0x7fff);
        next_ += octets;
        return parameters_.substr(std::min(next_ - octets, parameters_.size()), octets);
    }
    Point Place() {
        const double x = Length(), y = Length();
        EXPECT_TRUE(x >= 0 && x <= found.drawing.width && y >= 0 && y <= found.drawing.height) << x << ' ' << y;
        return {x, y};
    }
    void Expect(const std::vector<int>& values) {
        for (const int value : values) EXPECT_EQ(Integer(), value) << last_;
    }

    // ISO 8859-1, or the encoding of Symbol.
    std::u32string Letters(const std::string& octets) {
        static const std::u32string symbols = U"ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ[∴]⊥_‾αβχδεφγηιϕκλμνοπθρστυϖωξψζ";
        const bool greek = state_["5.10"] == 13;
        EXPECT_TRUE(state_["5.19"] == (greek ? 3 : 1) && state_["5.20"] == 2);
        std::u32string letters;
        for (const char octet : octets)
            letters += greek ? symbols.at(static_cast<unsigned char>(octet) - 'A') : static_cast<unsigned char>(octet);
        return letters;
    }

    // Solid without an edge, or an edge alone.
    Shape Closed(Shape::Kind kind) {
        const bool edge = state_["5.30"] != 0;
        EXPECT_EQ(state_["5.22"], edge ? 4 : 1);
        return {kind, {}, static_cast<Colour>(state_[edge ? "5.29" : "5.23"]), edge ? state_["5.28"] : 0};
    }

    void Play() {
        static const std::map<std::string, std::vector<int>> always = {
            {"0.2", {}},         {"0.4", {}},   {"0.5", {}},  {"1.1", {1}},          {"1.3", {0}},         {"1.4", {16}},
            {"1.5", {0, 9, 23}}, {"1.6", {16}}, {"1.7", {8}}, {"1.8", {8}},          {"1.11", {1, -1, 1}}, {"1.15", {1}},
            {"2.2", {1}},        {"2.3", {0}},  {"2.5", {0}}, {"1.12", {0x3022, 32}}};  // defaults: an element of its own, 32 bits a length
        if (const auto known = always.find(last_); known != always.end()) {
            Expect(known->second);
            if (last_ == "1.12") octets_of_length_ = 4;
        } else if (last_[0] == '5') {
            Attribute();
        } else if (last_[0] == '4') {
            Primitive();
        } else if (last_ == "0.1" || last_ == "0.3" || last_ == "1.2") {
            EXPECT_FALSE(String().empty());
        } else if (last_ == "1.10") {
            EXPECT_TRUE(Rgb() == WRGB(0, 0, 0) && Rgb() == WRGB(255, 255, 255));
        } else if (last_ == "1.13") {
            while (Left()) found.fonts.push_back(String());
        } else if (last_ == "1.14") {
            for (const auto& [type, tail] : {std::pair(0, "B"), std::pair(1, "A"), std::pair(0, "*:")})
                EXPECT_TRUE(Integer() == type && String() == tail);
        } else if (last_ == "2.1") {
            EXPECT_EQ(Integer(), 1);
            step_ = Real() / (25.4 / 72);
        } else if (last_ == "2.6") {
            EXPECT_TRUE(Length() == 0 && Length() == 0);
            found.drawing.width = Length(), found.drawing.height = Length();
        } else if (last_ == "2.7") {
            found.background = Rgb();
        } else {
            ADD_FAILURE() << "element " << last_;
        }
    }

    void Attribute() {
        static const std::string colours = "5.4 5.14 5.23 5.29 ", lengths = "5.3 5.15 5.28 ";
        double value = 0;
        if (last_ == "5.18")
            Expect({2, 2}), value = Real() + Real();  // the middle, at the height of capitals
        else
            value = colours.find(last_ + ' ') != colours.npos ? Rgb() : lengths.find(last_ + ' ') != lengths.npos ? Length() : Integer();
        EXPECT_TRUE(!state_.contains(last_) || state_[last_] != value) << last_ << " is in force already";
        state_[last_] = value;
    }

    void Primitive() {
        std::vector<Shape>& shapes = found.drawing.shapes;
        if (last_ == "4.1") {
            shapes.push_back({Shape::line, {}, static_cast<Colour>(state_["5.4"]), state_["5.3"]});
            found.line_types.push_back(static_cast<int>(state_["5.2"]));
            while (Left()) shapes.back().points.push_back(Place());
        } else if (last_ == "4.4") {
            const double capitals = state_["5.15"];
            Point at = Place();
            at.y -= capitals;
            EXPECT_TRUE(Integer() == 1 && state_["5.11"] == 2);
            shapes.push_back({Shape::text,
                              {at},
                              static_cast<Colour>(state_["5.14"]),
                              capitals / 0.62,
                              Letters(String()),
                              found.fonts.at(static_cast<std::size_t>(state_["5.10"]) - 1)});
        } else if (last_ == "4.7" || last_ == "4.8") {
            shapes.push_back(Closed(Shape::area));
            while (Left()) {
                shapes.back().points.push_back(Place());
                if (last_ == "4.8" && Integer() == 3 && Left()) shapes.push_back(Closed(Shape::area));
            }
        } else if (last_ == "4.11") {
            shapes.push_back(Closed(Shape::area));
            const Point a = Place(), b = Place();
            shapes.back().points = {a, {b.x, a.y}, b, {a.x, b.y}};
        } else if (last_ == "4.12" || last_ == "4.17") {
            shapes.push_back(Closed(Shape::ellipse));
            const Point centre = Place();
            double rx = 0, ry = 0;
            if (last_ == "4.12")
                rx = ry = Length();
            else
                rx = Place().x - centre.x, ry = Place().y - centre.y;
            shapes.back().points = {{centre.x - rx, centre.y + ry}, {centre.x + rx, centre.y - ry}};
        } else {
            ADD_FAILURE() << "primitive " << last_;
        }
    }

    std::string bytes_, parameters_, last_;
    std::size_t at_ = 0, next_ = 0;
    int octets_of_length_ = 2;
    double step_ = 0;  // points
    std::map<std::string, double> state_;
};

Metafile Written(double width, double height, const std::function<void(Device&)>& draw, const Hardcopy_Options& options = {}) {
    const std::string file = testing::TempDir() + "vantrelo_" + testing::UnitTest::GetInstance()->current_test_info()->name() + ".cgm";
    const auto device = Open_Cgm(file, width, height, options);
    draw(*device);
    EXPECT_TRUE(device->Close().ok());
    std::ifstream in(file, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(in), {});
    std::filesystem::remove(file);
    return Cgm_Player(bytes).found;
}

TEST(Cgm, ShapesAsTheyWereDrawn) {
    for (const double width : {10.0, 900.0, 1638.0, 1639.0, 24000.0}) {
        SCOPED_TRACE(width);
        const double height = width < 100 ? width : width * 2 / 3;
        Recording_Device recording(width, height);
        const auto draw = [&](Device& device) {
            if (width < 100) return device.Polyline(std::vector<Point>{{0, 0}, {10, 10}, {7.3, 0.1}}, {red, 2});
            device.Polyline(std::vector<Point>{{0, 0}, {1, 1}}, {red});  // gone with the next line
            Draw_Shapes(device);
        };
        draw(recording);
        std::vector<Shape> expected = Shapes_Of(recording);
        std::erase_if(expected, [](const Shape& s) { return s.colour == WRGB(5, 5, 5); });
        if (width < 100) expected[0].size = 2 * 0.72;
        const Metafile metafile = Written(width, height, draw);
        EXPECT_NEAR(metafile.drawing.width, width, 0.05);
        EXPECT_NEAR(metafile.drawing.height, height, 0.05);
        EXPECT_EQ(metafile.background, width < 100 ? WRGB(255, 255, 255) : WRGB(255, 255, 240));
        EXPECT_EQ(metafile.count.contains("1.12"), width > 1638.35);  // steps of 1/20 point in 16 bits
        Same_Shapes(metafile.drawing.shapes, expected, 0.05);
    }
}

// Lines of many points need no parts; a polygon of many corners does.
TEST(Cgm, DashesLongLinesAndPolygons) {
    const Metafile dashes = Written(900, 600, [](Device& device) {
        for (const int style : {-1, 0, 1, 2, 3, 4})
            device.Polyline(std::vector<Point>{{0, 0}, {9, 9}}, {red, 1, static_cast<Line_Style>(style)});
    });
    EXPECT_EQ(dashes.line_types, (std::vector<int>{1, 3, 2, 4, 5}));  // solid, dots, dashes, dash and dot, dash and two dots

    std::vector<Point> points;
    for (int i = 0; i < 20000; ++i) points.push_back({450 + 400 * std::cos(i * 2e-4), 300 + 250 * std::sin(i * 3e-4)});
    const Metafile line = Written(900, 600, [&](Device& device) { device.Polyline(points, {red, 2}); });
    EXPECT_FALSE(line.count.contains("parts"));
    Shape whole{Shape::line, {}, red, 1.5};
    for (const Shape& part : line.drawing.shapes) {
        if (!whole.points.empty()) {
            EXPECT_TRUE(whole.points.back().x == part.points[0].x && whole.points.back().y == part.points[0].y);
            whole.points.pop_back();
        }
        whole.points.insert(whole.points.end(), part.points.begin(), part.points.end());
    }
    Same_Shapes({whole}, {{Shape::line, points, red, 1.5}}, 0.03);

    const Metafile area = Written(900, 600, [&](Device& device) { device.Fill(points, red); });
    EXPECT_EQ(area.count.at("parts"), 2);
    Same_Shapes(area.drawing.shapes, {{Shape::area, points, red}}, 0.03);
}

// Letters of Courier are 0.6 em wide, whatever they are. A text goes as one where it can; turned texts and letters without a place in the
// two sets are outlines.
TEST(Cgm, Texts) {
    const std::string long_title = std::string(89, 'i') + " %% " + std::string(89, 'l');
    const struct {
        std::string text;
        std::vector<std::u32string> pieces;
        int font = 101, style = 0;
        const char* face = "Mono";
        std::size_t outlines = 0;
    } cases[] = {{"d = 1.5406 Å %% \\ {x}", {U"d = 1.5406 Å %% \\ {x}"}},
                 {"2θ (°) ÄÖ", {U"2", U"θ", U" (°) ", U"ÄÖ"}},
                 {"θλΩϑβ", {U"θλΩϑβ"}, 102},
                 {"qJ-2", {U"θϑ", U"-2"}, 104, 0, "Helvetica"},
                 {"a ≤ b Ж", {U"a ", U" b "}, 103, 3, "Times-BoldItalic", 3},
                 {long_title, {std::u32string(89, 'i') + U" ", U"%% ", std::u32string(89, 'l')}, 102, 2, "Helvetica-Italic"},
                 {std::string(130, 'x'), {std::u32string(120, 'x'), std::u32string(10, 'x')}}};
    Hardcopy_Options options;
    options.font_names = {"Mono", "", "Times", "Signs"};
    for (const auto& c : cases)
        for (const Justify justify : {Justify::left, Justify::centre, Justify::right}) {
            SCOPED_TRACE(c.text);
            const Metafile metafile = Written(
                1800, 600,
                [&](Device& device) {
                    device.Text({900, 300}, c.text, {c.font, c.style, 6, 10, 0, justify, green});
                },
                options);
            EXPECT_EQ(metafile.fonts.size(), 13u);
            std::u32string words;
            std::size_t piece = 0, outlines = 0;
            for (const Shape& shape : metafile.drawing.shapes) {
                EXPECT_EQ(shape.colour, green);
                outlines += shape.kind == Shape::area;
                if (shape.kind != Shape::text) continue;
                ASSERT_LT(piece, c.pieces.size());
                EXPECT_TRUE(shape.words == c.pieces[piece++]);
                EXPECT_EQ(shape.face, shape.words[0] > 0xff ? "Signs" : c.face);
                EXPECT_NEAR(shape.size, 10, 0.05);
                EXPECT_NEAR(shape.points[0].y, 300, 0.05);
                const double length = 6.0 * static_cast<double>(Characters(c.text)), left = -0.5 * length * static_cast<int>(justify);
                const double middle = 6 * (static_cast<double>(words.size()) + 0.5 * static_cast<double>(shape.words.size()));
                EXPECT_TRUE(c.font != 101 || std::fabs(shape.points[0].x - (900 + left + middle)) < 0.1) << shape.points[0].x;
                words += shape.words;
            }
            EXPECT_EQ(piece, c.pieces.size());
            EXPECT_EQ(outlines, c.outlines);
        }
}

// The capitals of a turned text stand along the page's side, its box and line lie about them.
TEST(Cgm, TurnedTexts) {
    for (const int turn : {-1, 1}) {
        const Metafile metafile = Written(900, 600, [&](Device& device) {
            device.Text({100, 300}, "HHHH", {101, 4 + 8, 12, 20, 90.0 * turn, Justify::left, green});
        });
        Rect letters{1e9, 1e9, -1e9, -1e9};
        ASSERT_EQ(metafile.drawing.shapes.size(), 6u);
        for (std::size_t k = 1; k < 5; ++k)
            for (const Point& p : metafile.drawing.shapes[k].points)
                letters = {std::min(letters.x1, p.x), std::min(letters.y1, p.y), std::max(letters.x2, p.x), std::max(letters.y2, p.y)};
        EXPECT_NEAR(turn > 0 ? letters.x2 : letters.x1, 100, 0.05);
        EXPECT_NEAR(letters.x2 - letters.x1, 0.66 * 20, 0.5);
        EXPECT_NEAR((letters.y1 + letters.y2) / 2, 300 + turn * 24, 0.5);
        EXPECT_NEAR(letters.y2 - letters.y1, 48, 4);
        EXPECT_EQ(metafile.drawing.shapes[0].colour, WRGB(255, 255, 255));
        EXPECT_EQ(metafile.drawing.shapes[5].colour, green);
    }
}

TEST(Cgm, CellsAndTheirGaps) {
    constexpr int columns = 60, rows = 40;
    std::vector<Colour> colours;
    for (unsigned row = 0; row < rows; ++row)
        for (unsigned column = 0; column < columns; ++column)
            colours.push_back((column * row) % 11 == 3 ? no_colour : WRGB(4 * column, 6 * row, column / 7 == row / 5 ? 255 : 0));
    const Metafile metafile = Written(900, 600, [&](Device& device) { device.Cells({{100, 50, 700, 450}, columns, rows, colours}); });
    std::vector<Colour> seen(colours.size(), no_colour);
    for (const Shape& shape : metafile.drawing.shapes) {
        ASSERT_EQ(shape.points.size(), 4u);
        const auto cell = [](double at) { return static_cast<int>(std::lround(at / 10)); };  // by its edge
        for (int row = cell(shape.points[0].y - 50); row < cell(shape.points[2].y - 50); ++row)
            for (int column = cell(shape.points[0].x - 100); column < cell(shape.points[2].x - 100); ++column)
                seen.at(static_cast<std::size_t>(row * columns + column)) = shape.colour;
    }
    EXPECT_EQ(seen, colours);
}

}  // namespace
}  // namespace vntl
