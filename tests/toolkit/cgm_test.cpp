// Computer Graphics Metafiles, read back octet by octet by a reader that shares nothing with the writer: its numbers of elements are those
// of ISO 8632-3, its Greek letters those of the encoding of Symbol.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <map>
#include <numbers>
#include <sstream>

#include "drawn.hpp"
#include "toolkit/font_table.hpp"
#include "toolkit/text_extent.hpp"
#include "toolkit/vector_device.hpp"

namespace vntl {
namespace {

constexpr double width = 900, height = 600, line_unit = 0.75;
constexpr Colour white = WRGB(255, 255, 255), red = WRGB(200, 30, 40), blue = WRGB(1, 2, 253), green = WRGB(0, 130, 7);

// What is seen: places in points.
struct Shape {
    enum { line, area, ellipse, text } kind;
    std::vector<std::vector<Point>> contours;  // of an ellipse its centre; of a text the point below its middle on the base line
    Colour colour = 0;
    double line_width = 0;
    int line_type = 0;
    bool filled = false;
    double rx = 0, ry = 0;
    std::string words, font;
    double em = 0;
};

struct Metafile {
    std::map<std::string, int> count;  // of elements by "class.number", and of parts behind the first as "parts"
    std::vector<std::string> fonts;
    double width = 0, height = 0;  // points
    Colour background = 0;
    std::vector<Shape> shapes;
};

class Reader {
public:
    explicit Reader(const std::string& file) {
        std::ostringstream all;
        all << std::ifstream(file, std::ios::binary).rdbuf();
        bytes_ = all.str();
        while (at_ < bytes_.size() && !::testing::Test::HasFatalFailure()) Next_Element();
        EXPECT_EQ(at_, bytes_.size());
        EXPECT_EQ(last_, "0.2");
    }
    Metafile found;

private:
    unsigned Word(std::size_t at) const {
        return at + 1 < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) << 8 | static_cast<unsigned char>(bytes_[at + 1]) : 0;
    }

    void Next_Element() {
        const unsigned head = Word(at_);
        std::size_t length = head & 31;
        at_ += 2;
        parameters_.clear();
        next_ = 0;
        const auto take = [this](std::size_t octets) {
            ASSERT_LE(at_ + octets + octets % 2, bytes_.size());
            parameters_ += bytes_.substr(at_, octets);
            at_ += octets;
            EXPECT_TRUE(octets % 2 == 0 || bytes_[at_++] == '\0');
        };
        if (length < 31) {
            take(length);
        } else {
            for (bool more = true; more && !::testing::Test::HasFatalFailure();) {
                more = (Word(at_) & 0x8000) != 0;
                length = Word(at_) & 0x7fff;
                at_ += 2;
                EXPECT_TRUE(!more || length % 2 == 0);
                if (more) ++found.count["parts"];
                take(length);
            }
        }
        last_ = std::to_string(head >> 12) + "." + std::to_string(head >> 5 & 127);
        ++found.count[last_];
        Understand();
        EXPECT_EQ(next_, parameters_.size()) << "parameters of " << last_;
    }

    bool Left() const { return next_ < parameters_.size(); }
    int Signed(int octets) {
        std::int64_t value = 0;
        for (int k = 0; k < octets; ++k) value = value << 8 | (Left() ? static_cast<unsigned char>(parameters_[next_]) : 0), next_ += 1;
        return static_cast<int>(value >= std::int64_t{1} << (8 * octets - 1) ? value - (std::int64_t{1} << 8 * octets) : value);
    }
    int Integer() { return Signed(2); }
    double Length() { return Signed(vdc_octets_) * mm_ / (25.4 / 72); }
    float Real() {
        const int bits = Signed(4);
        float value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    Colour Rgb() {
        unsigned parts[3];
        for (unsigned& part : parts) part = static_cast<unsigned>(Signed(1)) & 255;
        return WRGB(parts[0], parts[1], parts[2]);
    }
    std::string String() {
        std::size_t octets = static_cast<std::size_t>(Signed(1) & 255);
        if (octets == 255) octets = static_cast<std::size_t>(Signed(2) & 0x7fff);
        const std::string text = parameters_.substr(std::min(next_, parameters_.size()), octets);
        next_ += octets;
        return text;
    }
    Point Place() {
        const double x = Length(), y = Length();
        EXPECT_TRUE(x >= 0 && x <= found.width && y >= 0 && y <= found.height) << x << ' ' << y;
        return {x, y};
    }
    std::vector<Point> Places() {
        std::vector<Point> places;
        while (Left()) places.push_back(Place());
        return places;
    }

    void Expect_Integers(const std::vector<int>& values) {
        for (const int value : values) EXPECT_EQ(Integer(), value) << last_;
    }

    // ISO 8859-1 or the encoding of Symbol as UTF-8.
    std::string Letters(const std::string& octets) const {
        static const std::u16string symbols = u"ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ[∴]⊥_‾αβχδεφγηιϕκλμνοπθρστυϖωξψζ";
        std::string text;
        for (const char octet : octets) {
            unsigned code = static_cast<unsigned char>(octet);
            if (state_["5.10"] == 13) {
                EXPECT_TRUE(state_["5.19"] == 3 && code >= 'A' && code <= 'z') << code;
                code = symbols[code - 'A'];
            }
            if (code < 0x80) {
                text += static_cast<char>(code);
            } else {
                EXPECT_EQ(state_["5.20"], 2);
                text += static_cast<char>(0xc0 | code >> 6);
                text += static_cast<char>(0x80 | (code & 63));
            }
        }
        return text;
    }

    Shape Line_Shape(const char* type, const char* line_width, const char* colour) const {
        Shape shape{};
        shape.line_type = static_cast<int>(state_[type]);
        shape.line_width = state_[line_width];
        shape.colour = static_cast<Colour>(state_[colour]);
        return shape;
    }
    Shape Filled_Shape() const {
        if (state_["5.30"] != 0) {
            EXPECT_EQ(state_["5.22"], 4);  // empty inside
            return Line_Shape("5.27", "5.28", "5.29");
        }
        EXPECT_EQ(state_["5.22"], 1);  // solid
        Shape shape{};
        shape.colour = static_cast<Colour>(state_["5.23"]);
        shape.filled = true;
        return shape;
    }

    void Understand() {
        static const std::map<std::string, std::vector<int>> fixed = {{"0.2", {}},  {"0.4", {}},   {"0.5", {}},          {"1.1", {1}},
                                                                      {"1.3", {0}}, {"1.4", {16}}, {"1.5", {0, 9, 23}},  {"1.6", {16}},
                                                                      {"1.7", {8}}, {"1.8", {8}},  {"1.11", {1, -1, 1}}, {"1.15", {1}},
                                                                      {"2.2", {1}}, {"2.3", {0}},  {"2.5", {0}}};
        if (const auto known = fixed.find(last_); known != fixed.end()) return Expect_Integers(known->second);
        if (last_.starts_with("5.")) return Attribute();
        if (last_.starts_with("4.")) return Primitive();
        if (last_ == "0.1" || last_ == "0.3" || last_ == "1.2") {
            String();
        } else if (last_ == "1.10") {
            EXPECT_TRUE(Rgb() == 0 && Rgb() == white);
        } else if (last_ == "1.12") {  // holds an element of its own: VDC integer precision
            Expect_Integers({3 << 12 | 1 << 5 | 2, 32});
            vdc_octets_ = 4;
        } else if (last_ == "1.13") {
            while (Left()) found.fonts.push_back(String());
        } else if (last_ == "1.14") {
            for (const auto& [type, tail] : {std::pair(0, "B"), std::pair(1, "A"), std::pair(0, "*:")}) {
                EXPECT_EQ(Integer(), type);
                EXPECT_EQ(String(), tail);
            }
        } else if (last_ == "2.1") {
            EXPECT_EQ(Integer(), 1);
            mm_ = static_cast<double>(Real());
        } else if (last_ == "2.6") {
            EXPECT_TRUE(Length() == 0 && Length() == 0);
            found.width = Length();
            found.height = Length();
        } else if (last_ == "2.7") {
            found.background = Rgb();
        } else {
            ADD_FAILURE() << "element " << last_;
        }
    }

    void Attribute() {
        const double before = state_[last_];
        const bool colour = last_ == "5.4" || last_ == "5.14" || last_ == "5.23" || last_ == "5.29";
        const bool length = last_ == "5.3" || last_ == "5.15" || last_ == "5.28";
        state_[last_] = colour ? static_cast<double>(Rgb()) : length ? Length() : Integer();
        EXPECT_TRUE(found.count[last_] == 1 || state_[last_] != before) << last_ << " is in force already";
        if (last_ != "5.18") return;
        Expect_Integers({2});
        EXPECT_TRUE(state_[last_] == 2 && Real() == 0 && Real() == 0);  // the middle, and the height of capitals
    }

    void Primitive() {
        Shape shape{};
        if (last_ == "4.1") {
            shape = Line_Shape("5.2", "5.3", "5.4");
            shape.kind = Shape::line;
            shape.contours = {Places()};
            EXPECT_GE(shape.contours[0].size(), 2u);
        } else if (last_ == "4.4") {
            shape.kind = Shape::text;
            Point at = Place();
            EXPECT_EQ(Integer(), 1);
            shape.words = Letters(String());
            EXPECT_LE(shape.words.size(), 254u);
            at.y -= state_["5.15"];
            shape.contours = {{at}};
            shape.em = state_["5.15"] / 0.68;
            shape.font = found.fonts.at(static_cast<std::size_t>(state_["5.10"]) - 1);
            shape.colour = static_cast<Colour>(state_["5.14"]);
            EXPECT_EQ(state_["5.11"], 2);
        } else if (last_ == "4.7" || last_ == "4.8" || last_ == "4.11") {
            shape = Filled_Shape();
            shape.kind = Shape::area;
            shape.contours.emplace_back();
            while (Left()) {
                shape.contours.back().push_back(Place());
                if (last_ == "4.8" && Integer() == 3 && Left()) shape.contours.emplace_back();
            }
            std::vector<Point>& first = shape.contours[0];
            if (last_ == "4.11") first = {first[0], {first[1].x, first[0].y}, first[1], {first[0].x, first[1].y}};
            EXPECT_GE(first.size(), 3u);
        } else if (last_ == "4.12" || last_ == "4.17") {
            shape = Filled_Shape();
            shape.kind = Shape::ellipse;
            const Point centre = Place();
            shape.contours = {{centre}};
            if (last_ == "4.12") {
                shape.rx = shape.ry = Length();
            } else {
                const Point right = Place(), top = Place();
                EXPECT_TRUE(right.y == centre.y && top.x == centre.x);
                shape.rx = right.x - centre.x;
                shape.ry = top.y - centre.y;
            }
        } else {
            ADD_FAILURE() << "primitive " << last_;
        }
        found.shapes.push_back(shape);
    }

    std::string bytes_, parameters_, last_;
    std::size_t at_ = 0, next_ = 0;
    int vdc_octets_ = 2;
    double mm_ = 0;
    mutable std::map<std::string, double> state_;
};

class Cgm : public ::testing::Test {
protected:
    std::string file_ = ::testing::TempDir() + "picture_" + std::to_string(getpid()) + ".cgm";
    void TearDown() override { std::remove(file_.c_str()); }

    template <class Draw>
    Metafile Drawn_By(Draw draw, double w = width, double h = height, const Hardcopy_Options& options = {}) {
        const auto device = Open_Cgm(file_, w, h, options);
        draw(*device);
        EXPECT_TRUE(device->Close().ok());
        EXPECT_TRUE(device->Close().ok());
        return Reader(file_).found;
    }
};

constexpr double near = 0.03;  // points: a little more than a step of the grid

void Expect_Places(const std::vector<Point>& a, const std::vector<Point>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) EXPECT_LT(std::hypot(a[i].x - b[i].x, a[i].y - b[i].y), near) << i;
}

Rect Room(const Shape& shape) {
    Rect room{1e9, 1e9, -1e9, -1e9};
    for (const auto& contour : shape.contours)
        for (const Point& p : contour)
            room = {std::min(room.x1, p.x - shape.rx), std::min(room.y1, p.y - shape.ry), std::max(room.x2, p.x + shape.rx),
                    std::max(room.y2, p.y + shape.ry)};
    return room;
}

// Takes from the shapes, one after another, what a recorded item must have become.
class Comparison {
public:
    explicit Comparison(const Metafile& metafile) : shapes_(metafile.shapes) {}
    ~Comparison() { EXPECT_EQ(next_, shapes_.size()); }
    Comparison(const Comparison&) = delete;
    Comparison& operator=(const Comparison&) = delete;

    void operator()(const Recorded_Clear& item) {
        const Rect room = Room(Next(Shape::area, item.colour));
        EXPECT_TRUE(room.x1 == 0 && room.y1 == 0 && std::fabs(room.x2 - width) < near && std::fabs(room.y2 - height) < near);
    }
    void operator()(const Recorded_Clip&) {}
    void operator()(const Recorded_Line& item) {
        const Shape shape = Next(Shape::line, item.pen.colour);
        Expect_Places(shape.contours.at(0), item.points);
        Expect_Pen(shape, item.pen);
    }
    void operator()(const Recorded_Fill& item) { Expect_Places(Next(Shape::area, item.colour).contours.at(0), item.points); }
    void operator()(const Recorded_Ellipse& item) {
        const Shape shape = Next(Shape::ellipse, item.pen.colour);
        Expect_Places(shape.contours.at(0), {item.centre});
        EXPECT_NEAR(shape.rx, item.rx, near);
        EXPECT_NEAR(shape.ry, item.ry, near);
        EXPECT_EQ(shape.filled, item.filled);
        if (!item.filled) Expect_Pen(shape, item.pen);
    }
    void operator()(const Recorded_Markers& item) {
        const bool strokes = item.style.glyph >= 226, round = item.style.glyph == 221;
        for (const Point& at : item.points) {
            Shape shape = Next(round ? Shape::ellipse : strokes || !item.style.filled ? Shape::line : Shape::area, item.style.colour);
            if (strokes) shape.contours.push_back(Next(Shape::line, item.style.colour).contours.at(0));
            const Rect room = Room(shape);
            const double w = item.style.width / 2, h = item.style.height / 2;
            Expect_Places({{room.x1, room.y1}, {room.x2, room.y2}}, {{at.x - w, at.y - h}, {at.x + w, at.y + h}});
        }
    }
    void operator()(const Recorded_Text& item) {
        const double em = Em_Of_Cell(item.style.width, item.style.height), length = Extent_Of_Text(item.text, item.style);
        const double left = item.style.justify == Justify::left ? 0 : item.style.justify == Justify::centre ? -length / 2 : -length;
        if ((item.style.style & 8) != 0) Next(Shape::area, Box_Behind(item.style.colour));
        if (item.style.angle != 0) {
            const Rect room = Room(Next(Shape::area, item.style.colour));
            const double sign = item.style.angle > 0 ? 1 : -1, from = item.at.y + sign * left, to = from + sign * length;
            EXPECT_NEAR(room.y1, std::min(from, to), 0.1 * em);
            EXPECT_NEAR(room.y2, std::max(from, to), 0.1 * em);
            EXPECT_NEAR(sign > 0 ? room.x1 : room.x2, item.at.x - sign * 0.7 * em, 0.1 * em);
        }
        double from = item.at.x + left;
        for (std::string words; item.style.angle == 0 && words != Written_Text(item.text, item.style.font);) {
            const Shape piece = Next(Shape::text, item.style.colour);
            words += piece.words;
            const double own = Extent_Of_Text(piece.words, item.style);
            EXPECT_NEAR(piece.contours.at(0).at(0).x, from + own / 2, 0.02 * em) << words;
            EXPECT_NEAR(piece.contours[0][0].y, item.at.y, near);
            EXPECT_NEAR(piece.em, em, 2 * near);
            from += own;
            if (words.size() > item.text.size() + 100) return;
        }
        if ((item.style.style & 4) != 0) Next(Shape::area, item.style.colour);
    }
    void operator()(const Recorded_Cells&) {}
    void operator()(const Recorded_Facets&) {}

private:
    const Shape& Next(int kind, Colour colour) {
        static const Shape none{};
        if (next_ >= shapes_.size()) {
            ADD_FAILURE() << "too few shapes";
            return none;
        }
        EXPECT_EQ(shapes_[next_].kind, kind) << next_;
        EXPECT_EQ(shapes_[next_].colour, colour) << next_;
        return shapes_[next_++];
    }
    static void Expect_Pen(const Shape& shape, const Pen& pen) {
        static const std::map<Line_Style, int> types = {{Line_Style::solid, 1},
                                                        {Line_Style::dashed, 2},
                                                        {Line_Style::dotted, 3},
                                                        {Line_Style::dot_dash, 4},
                                                        {Line_Style::dot_dot_dash, 5}};
        EXPECT_EQ(shape.line_type, types.at(pen.style));
        EXPECT_NEAR(shape.line_width, pen.width * line_unit, near);
    }

    const std::vector<Shape>& shapes_;
    std::size_t next_ = 0;
};

Text_Style Letters_Of(int font, int style, double em, Justify justify = Justify::left, double angle = 0) {
    return {font, style, 0.6 * em, em, angle, justify, blue};
}

TEST_F(Cgm, TheSameAsRecorded) {
    const auto draw = [](Device& device) {
        device.Clear(WRGB(250, 240, 230));
        device.Set_Clip({0, 0, width, height});
        for (const auto style : {Line_Style::solid, Line_Style::dashed, Line_Style::dotted, Line_Style::dot_dash, Line_Style::dot_dot_dash})
            device.Polyline(std::vector<Point>{{0, 1.5}, {450.2, 300}, {900, 600}}, {red, 1.5, style});
        device.Polyline(std::vector<Point>{{10, 10}, {20, 10}, {20, 20}, {10, 10}}, {green, 1});
        device.Fill(std::vector<Point>{{100, 100}, {200, 100}, {150, 180.7}}, green);
        for (const bool filled : {true, false}) {
            device.Ellipse({300, 300}, 40, 40, filled, {blue, 2});
            device.Ellipse({300, 300}, 40, 20, filled, {red, 1, Line_Style::dashed});
            for (int glyph = 221; glyph <= 227; ++glyph) {
                const float x[] = {400, 412, std::numeric_limits<float>::quiet_NaN(), 431}, y[] = {50, 60, 3, 80};
                device.Markers({x, y, 0, 1, 3.0 * glyph - 600, 1}, {glyph, 6, 4, red, filled});
            }
        }
        for (const int font : {101, 102, 103})
            for (const auto justify : {Justify::left, Justify::centre, Justify::right})
                device.Text({450, 5.0 * font}, "2θ (°), λ = 1.5406 Å ÄÖü %% \\ {x}", Letters_Of(font, font - 101, 12, justify));
        device.Text({300, 400}, "qlWb-2", Letters_Of(104, 0, 20));
        device.Text({300, 420}, "a b", Letters_Of(102, 12, 20));
        for (const double angle : {90.0, -90.0})
            device.Text({100 + angle / 2, 300}, "Intensity (HHH)", Letters_Of(102, 0, 20, Justify::centre, angle));
        std::string long_title;
        for (int k = 0; k < 180; ++k) long_title += static_cast<char>('A' + k % 26);
        device.Text({450, 570}, long_title, Letters_Of(101, 0, 6, Justify::centre));
    };
    Recording_Device recorded(width, height);
    draw(recorded);
    const Metafile metafile = Drawn_By(draw);
    EXPECT_EQ(metafile.background, WRGB(250, 240, 230));
    EXPECT_NEAR(metafile.width, width, 1e-3);
    EXPECT_NEAR(metafile.height, height, 1e-3);
    EXPECT_EQ(metafile.count.at("1.1") + metafile.count.at("1.11") + metafile.count.at("0.3") + metafile.count.at("0.4"), 4);
    Comparison comparison(metafile);
    for (const Recorded& item : recorded.items()) std::visit(comparison, item);
}

TEST_F(Cgm, WhatWasThereBeforeAClearIsGone) {
    const Metafile metafile = Drawn_By([](Device& device) {
        device.Polyline(std::vector<Point>{{0, 0}, {100, 100}}, {red});
        device.Clear(white);
        device.Polyline(std::vector<Point>{{0, 0}, {100, 100}}, {red});
    });
    ASSERT_EQ(metafile.shapes.size(), 2u);
    EXPECT_EQ(metafile.shapes[1].colour, red);
}

// Lines of many points need no parts; a polygon of many corners does.
TEST_F(Cgm, LongLinesPolygonsAndTexts) {
    std::vector<Point> points;
    for (int i = 0; i < 20000; ++i) points.push_back({450 + 400 * std::cos(i * 2e-4), 300 + 250 * std::sin(i * 3e-4)});
    const Metafile line = Drawn_By([&](Device& device) { device.Polyline(points, {red, 1}); });
    EXPECT_EQ(line.count.count("parts"), 0u);
    std::vector<Point> joined;
    for (const Shape& part : line.shapes) {
        if (!joined.empty()) Expect_Places({joined.back()}, {part.contours.at(0).front()});
        joined.insert(joined.end(), part.contours[0].begin() + (joined.empty() ? 0 : 1), part.contours[0].end());
    }
    Expect_Places(joined, points);

    const Metafile area = Drawn_By([&](Device& device) { device.Fill(points, red); });
    EXPECT_EQ(area.count.at("parts"), 2);
    ASSERT_EQ(area.shapes.size(), 1u);
    Expect_Places(area.shapes[0].contours.at(0), points);

    // Letters that neither ISO 8859-1 nor Symbol has are outlines, in their place between the others.
    const Metafile mixed = Drawn_By([](Device& device) { device.Text({100, 100}, "d ≤ Ж Å", Letters_Of(102, 0, 20)); });
    ASSERT_EQ(mixed.shapes.size(), 4u);
    EXPECT_EQ(mixed.shapes[0].words, "d ");
    EXPECT_EQ(mixed.shapes[3].words, " Å");
}
TEST_F(Cgm, CellsAndTheirGaps) {
    constexpr int columns = 60, rows = 40;
    std::vector<Colour> colours;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            colours.push_back((column * row) % 11 == 3 ? no_colour : WRGB(4u * column, 6u * row, column / 7 == row / 5 ? 255 : 0));
    const Rect rect{100, 50, 700, 450};
    const Metafile metafile = Drawn_By([&](Device& device) { device.Cells({rect, columns, rows, colours}); });
    EXPECT_LT(metafile.shapes.size(), 4000u);
    std::vector<Colour> seen(colours.size(), no_colour);
    for (const Shape& shape : metafile.shapes)
        for (const auto& contour : shape.contours) {
            Shape one{};
            one.contours = {contour};
            const Rect room = Room(one);
            EXPECT_TRUE(contour.size() == 4 && room.x1 > rect.x1 - near && room.x2 < rect.x2 + near);
            const auto first = [](double at) { return static_cast<int>(std::lround(std::ceil(at / 10 - 0.5))); };
            for (int row = first(room.y1 - rect.y1); row < first(room.y2 - rect.y1); ++row)
                for (int column = first(room.x1 - rect.x1); column < first(room.x2 - rect.x1); ++column)
                    seen.at(static_cast<std::size_t>(row * columns + column)) = shape.colour;
        }
    EXPECT_EQ(seen, colours);
}

TEST_F(Cgm, FontsAndPagesOfEachSize) {
    Hardcopy_Options options;
    options.font_names = {"Nimbus Mono", "", "Palatino", "Standard Symbols"};
    const Metafile named = Drawn_By([](Device& device) { device.Text({100, 100}, "x", Letters_Of(103, 3, 20)); }, width, height, options);
    ASSERT_EQ(named.fonts.size(), 13u);
    EXPECT_EQ(named.fonts[0], "Nimbus Mono");
    EXPECT_EQ(named.fonts[5], "Helvetica-Bold");
    EXPECT_EQ(named.fonts[12], "Standard Symbols");
    EXPECT_EQ(named.shapes.at(0).font, "Palatino-BoldItalic");

    for (const double size : {10.0, 1638.0, 1639.0, 24000.0}) {
        const std::vector<Point> diagonal = {{0, 0}, {size, size / 2}, {size / 3, size / 3}};
        const Metafile page = Drawn_By([&](Device& device) { device.Polyline(diagonal, {red, 1}); }, size, size / 2);
        EXPECT_NEAR(page.width / size, 1, 1e-6);
        ASSERT_EQ(page.shapes.size(), 1u);
        Expect_Places(page.shapes[0].contours.at(0), diagonal);
        EXPECT_EQ(page.count.contains("1.12"), size > 1638.35);  // of 32 bits
    }
}

TEST_F(Cgm, APictureThatCannotBeWritten) {
    const std::string nowhere = ::testing::TempDir() + "no such directory/x.cgm";
    const Status status = Open_Cgm(nowhere, width, height)->Close();
    EXPECT_TRUE(status.failed && status.of_file);
    EXPECT_EQ(status.message, "The picture cannot be written: " + nowhere);
}

}  // namespace
}  // namespace vntl
