#include "pictures/metafile_player.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <numbers>
#include <set>

namespace vntl {
namespace {

struct Bytes {
    const std::string& text;
    std::uint32_t At(std::size_t at, std::size_t size) const {
        if (at + size > text.size()) {
            ADD_FAILURE() << "behind the end: " << at;
            return 0;
        }
        std::uint32_t value = 0;
        for (std::size_t k = size; k-- > 0;) value = value << 8 | static_cast<unsigned char>(text[at + k]);
        return value;
    }
    unsigned U8(std::size_t at) const { return At(at, 1); }
    std::uint32_t U16(std::size_t at) const { return At(at, 2); }
    std::uint32_t U32(std::size_t at) const { return At(at, 4); }
    int S16(std::size_t at) const { return static_cast<std::int16_t>(U16(at)); }
    int S32(std::size_t at) const { return static_cast<std::int32_t>(U32(at)); }
};

class Player {
public:
    struct Object {
        enum Kind { pen, brush, font } kind = pen;
        bool blank = false;
        Colour colour = 0;
        int size = 0, tenth_degrees = 0;
        std::string face = {};
        bool symbol = false;
        int style = 0;
    };
    Drawing drawing;
    double points_a_unit = 0;
    unsigned align = 0, background = 0, fill = 0, mapping = 0;
    Colour text_colour = 0;
    unsigned most_objects = 0;

    void Make(unsigned slot, const Object& object) {
        EXPECT_TRUE(objects_.emplace(slot, object).second) << "made twice: " << slot;
        most_objects = std::max(most_objects, slot + 1);
    }
    void Make_Lowest(const Object& object) {
        unsigned slot = 0;
        while (objects_.contains(slot)) ++slot;
        Make(slot, object);
    }
    void Select(unsigned slot) {
        ASSERT_TRUE(objects_.contains(slot)) << slot;
        selected_[objects_[slot].kind] = slot;
    }
    void Delete(unsigned slot) {
        EXPECT_EQ(objects_.erase(slot), 1u) << slot;
        for (const auto& [kind, in_use] : selected_) EXPECT_NE(in_use, slot) << "deleted while selected";
    }
    void Save() { saved_.push_back(selected_); }
    void Restore() {
        ASSERT_FALSE(saved_.empty());
        selected_ = saved_.back();
        saved_.pop_back();
    }
    Drawing End() {
        EXPECT_TRUE(objects_.empty() && saved_.empty());
        EXPECT_TRUE(background == 1 && fill == 2 && mapping == 8);  // transparent, winding, anisotropic
        return std::move(drawing);
    }
    const Object& Selected(Object::Kind kind) {
        EXPECT_TRUE(selected_.contains(kind)) << kind;
        return objects_[selected_[kind]];
    }

    Point At(int x, int y) const { return {x * points_a_unit, drawing.height - y * points_a_unit}; }
    void Line(std::vector<Point> points) {
        drawing.most_corners = std::max(drawing.most_corners, points.size());
        const Object& pen = Selected(Object::pen);
        if (!pen.blank) drawing.shapes.push_back({Shape::line, std::move(points), pen.colour, pen.size * points_a_unit});
    }
    void Polygon(std::vector<Point> points) {
        const Object& brush = Selected(Object::brush);
        if (!brush.blank) drawing.shapes.push_back({Shape::area, points, brush.colour});
        points.push_back(points.front());
        Line(points);
    }
    void Ellipse(Point a, Point b) {
        const Object &pen = Selected(Object::pen), &brush = Selected(Object::brush);
        if (!brush.blank) drawing.shapes.push_back({Shape::ellipse, {a, b}, brush.colour});
        if (!pen.blank) drawing.shapes.push_back({Shape::ellipse, {a, b}, pen.colour, pen.size * points_a_unit});
    }
    void Image(const Bytes& b, std::size_t at, Point one, Point other, int columns, int rows) {
        EXPECT_TRUE(b.U32(at) == 40 && b.S32(at + 4) == columns && b.S32(at + 8) == rows && b.U16(at + 14) == 24 && b.U32(at + 16) == 0);
        Shape shape{Shape::image, {one, other}};
        shape.columns = columns;
        shape.rows = rows;
        const std::size_t row = (static_cast<std::size_t>(columns) * 3 + 3) / 4 * 4;
        for (std::size_t from = at + 40; from < at + 40 + row * static_cast<std::size_t>(rows); from += row)
            for (std::size_t pixel = from; pixel < from + 3 * static_cast<std::size_t>(columns); pixel += 3)
                shape.colours.push_back(WRGB(b.U8(pixel + 2), b.U8(pixel + 1), b.U8(pixel)));
        drawing.shapes.push_back(shape);
    }
    // Runs of one text follow each other on its base line.
    void Text(Point at, const std::u32string& letters, int units) {
        const Object& font = Selected(Object::font);
        EXPECT_EQ(align & ~6u, 24u);
        const double back = (align & 6u) == 6 ? 0.5 : (align & 6u) == 2 ? 1 : 0, length = units * points_a_unit;
        const double angle = font.tenth_degrees * std::numbers::pi / 1800, x = std::cos(angle), y = std::sin(angle);
        const Point start{at.x - back * length * x, at.y - back * length * y};
        Shape shape{Shape::text, {start}, text_colour, font.size * points_a_unit, U"", font.face, font.tenth_degrees / 10.0, 0};
        shape.style = font.style;
        if (!drawing.shapes.empty()) {
            const Shape& last = drawing.shapes.back();
            const double ahead = std::hypot(last.points[0].x + last.advance * x - start.x, last.points[0].y + last.advance * y - start.y);
            if (last.kind == Shape::text && ahead < 2 * points_a_unit) {
                shape = last;
                drawing.shapes.pop_back();
            }
        }
        shape.advance += length;
        shape.words += letters;
        drawing.shapes.push_back(shape);
    }

private:
    std::map<unsigned, Object> objects_;
    std::map<Object::Kind, unsigned> selected_;
    std::vector<std::map<Object::Kind, unsigned>> saved_;
};

using Object = Player::Object;

// The places of a record lie in the box that it tells first.
class Emf_Record {
public:
    Emf_Record(const Bytes& bytes, std::size_t at, Player& to) : b(bytes), p(at + 8), player(to) {}

    Point Place(std::size_t from, bool narrow = false) const {
        const int x = narrow ? b.S16(from) : b.S32(from), y = narrow ? b.S16(from + 2) : b.S32(from + 4);
        EXPECT_TRUE(x >= b.S32(p) && x <= b.S32(p + 8) && y >= b.S32(p + 4) && y <= b.S32(p + 12)) << "beyond its bounds: " << p;
        return player.At(x, y);
    }
    std::vector<Point> Places(std::size_t from, std::size_t count, bool narrow) const {
        std::vector<Point> list;
        for (std::size_t k = 0; k < count; ++k) list.push_back(Place(from + k * (narrow ? 4 : 8), narrow));
        return list;
    }
    void Lines(bool narrow) const {
        std::size_t from = p + 24 + 4 * b.U32(p + 16), all = 0;
        for (std::uint32_t k = 0; k < b.U32(p + 16); ++k) {
            const std::uint32_t count = b.U32(p + 24 + 4 * k);
            player.Line(Places(from, count, narrow));
            from += count * (narrow ? 4 : 8);
            all += count;
        }
        EXPECT_EQ(all, b.U32(p + 20));
    }
    void Font() const {
        Object font{Object::font, false, 0, -b.S32(p + 4), b.S32(p + 12)};
        for (std::size_t k = p + 32; b.U16(k) != 0; k += 2) font.face += static_cast<char>(b.U16(k));
        font.style = (b.S32(p + 20) > 400 ? 1 : 0) + (b.U8(p + 24) != 0 ? 2 : 0) + (b.U8(p + 25) != 0 ? 4 : 0);
        player.Make(b.U32(p), font);
    }
    void Image() const {
        EXPECT_TRUE(b.U32(p + 60) == 0xcc0020 && b.U32(p + 40) + b.U32(p + 44) == b.U32(p + 48));
        const Point other = player.At(b.S32(p + 16) + b.S32(p + 64), b.S32(p + 20) + b.S32(p + 68));
        player.Image(b, p - 8 + b.U32(p + 40), Place(p + 16), other, b.S32(p + 32), b.S32(p + 36));
    }
    void Text() const {
        std::u32string letters;
        int advance = 0;
        for (std::uint32_t k = 0; k < b.U32(p + 36); ++k) {
            const std::uint32_t unit = b.U16(p - 8 + b.U32(p + 40) + 2 * k);
            if (unit >= 0xdc00 && unit < 0xe000)
                letters.back() = 0x10000 + ((letters.back() & 0x3ff) << 10 | (unit & 0x3ff));
            else
                letters += unit;
            advance += b.S32(p - 8 + b.U32(p + 64) + 4 * k);
        }
        player.Text(Place(p + 28), letters, advance);
    }

private:
    const Bytes& b;
    std::size_t p;
    Player& player;
};

const std::set<std::uint32_t> emf_records = {1,  3,  4,  7,  9,  10, 11, 12, 14, 17, 18, 19, 21, 22, 24,
                                             33, 34, 37, 38, 39, 40, 42, 81, 82, 84, 86, 87, 90, 95};
const std::set<std::uint32_t> wmf_records = {0,     0x1e,  0x102, 0x103, 0x106, 0x107, 0x127, 0x12d, 0x12e, 0x1f0, 0x209,
                                             0x20b, 0x20c, 0x2fa, 0x2fb, 0x2fc, 0x324, 0x325, 0x418, 0xa32, 0xf43};

}  // namespace

Drawing Play_Emf(const std::string& bytes) {
    const Bytes b{bytes};
    Player player;
    EXPECT_TRUE(b.U32(0) == 1 && b.U32(40) == 0x464d4520 && b.U32(44) == 0x10000);
    EXPECT_EQ(b.U32(48), bytes.size());
    const double mm_a_pixel = b.U32(80) / static_cast<double>(b.U32(72));
    EXPECT_DOUBLE_EQ(mm_a_pixel, b.U32(84) / static_cast<double>(b.U32(76)));
    EXPECT_EQ(bytes.substr(b.U32(64), 2 * b.U32(60)), std::string("V\0a\0n\0t\0r\0e\0l\0o\0\0\0\0\0", 20));
    player.drawing.width = b.S32(32) * 72 / 2540.0;
    player.drawing.height = b.S32(36) * 72 / 2540.0;
    player.most_objects = 1;  // number 0 is never made
    std::uint32_t records = 0, type = 0;
    for (std::size_t at = 0; at + 8 <= bytes.size(); ++records) {
        const std::uint32_t size = b.U32(at + 4);
        if (size < 8 || size % 4 != 0 || at + size > bytes.size()) {
            ADD_FAILURE() << "size of record " << records;
            break;
        }
        const std::size_t p = at + 8;
        const Emf_Record record(b, at, player);
        type = b.U32(at);
        EXPECT_TRUE(emf_records.contains(type)) << type;
        if (type == 3 || type == 86) player.Polygon(record.Places(p + 20, b.U32(p + 16), type == 86));
        if (type == 4 || type == 87) player.Line(record.Places(p + 20, b.U32(p + 16), type == 87));
        if (type == 7 || type == 90) record.Lines(type == 90);
        if (type == 9) player.points_a_unit = mm_a_pixel * 72 / 25.4 / b.S32(p);
        if (type == 11) player.points_a_unit *= b.S32(p);
        if (type == 17) player.mapping = b.U32(p);
        if (type == 18) player.background = b.U32(p);
        if (type == 19) player.fill = b.U32(p);
        if (type == 22) player.align = b.U32(p);
        if (type == 24) player.text_colour = b.U32(p);
        if (type == 33) player.Save();
        if (type == 34) player.Restore();
        if (type == 37) player.Select(b.U32(p));
        if (type == 38) player.Make(b.U32(p), {Object::pen, b.U32(p + 4) == 5, b.U32(p + 16), b.S32(p + 8)});
        if (type == 39) player.Make(b.U32(p), {Object::brush, b.U32(p + 4) == 1, b.U32(p + 8)});
        if (type == 40) player.Delete(b.U32(p));
        if (type == 42) player.Ellipse(record.Place(p), record.Place(p + 8));
        if (type == 81) record.Image();
        if (type == 82) record.Font();
        if (type == 84) record.Text();
        if (type == 95) {
            EXPECT_EQ(b.U32(p + 20), 0x10200u);  // geometric, flat ends, round joins
            player.Make(b.U32(p), {Object::pen, false, b.U32(p + 32), b.S32(p + 24)});
        }
        at += size;
    }
    EXPECT_EQ(type, 14u);
    EXPECT_EQ(b.U32(bytes.size() - 4), 20u);
    EXPECT_EQ(records, b.U32(52));
    EXPECT_EQ(player.most_objects, b.U16(56));
    return player.End();
}

Drawing Play_Wmf(const std::string& bytes) {
    const Bytes b{bytes};
    Player player;
    EXPECT_EQ(b.U32(0), 0x9ac6cdd7u);
    std::uint32_t sum = 0, longest = 0, type = 1;
    for (std::size_t k = 0; k < 20; k += 2) sum ^= b.U16(k);
    EXPECT_EQ(sum, b.U16(20));
    EXPECT_EQ((bytes.size() - 22) / 2, b.U32(28));
    EXPECT_EQ(b.U16(24), 9u);
    player.points_a_unit = 72.0 / b.U16(14);
    player.drawing.width = b.S16(10) * player.points_a_unit;
    player.drawing.height = b.S16(12) * player.points_a_unit;
    for (std::size_t at = 40; at + 6 <= bytes.size();) {
        const std::uint32_t size = b.U32(at);
        if (size < 3 || at + 2 * size > bytes.size()) {
            ADD_FAILURE() << "size of the record at " << at;
            break;
        }
        longest = std::max(longest, size);
        const std::size_t p = at + 6;
        const auto place = [&](std::size_t y_at) { return player.At(b.S16(y_at + 2), b.S16(y_at)); };
        const auto places = [&] {
            std::vector<Point> list;
            for (std::size_t k = p + 2; k < p + 2 + 4 * b.U16(p); k += 4) list.push_back(player.At(b.S16(k), b.S16(k + 2)));
            return list;
        };
        type = b.U16(at + 4);
        EXPECT_TRUE(wmf_records.contains(type)) << type;
        if (type == 0x1e) player.Save();
        if (type == 0x102) player.background = b.U16(p);
        if (type == 0x103) player.mapping = b.U16(p);
        if (type == 0x106) player.fill = b.U16(p);
        if (type == 0x127) player.Restore();
        if (type == 0x12d) player.Select(b.U16(p));
        if (type == 0x12e) player.align = b.U16(p);
        if (type == 0x1f0) player.Delete(b.U16(p));
        if (type == 0x209) player.text_colour = b.U32(p);
        if (type == 0x20c) {
            EXPECT_TRUE(b.S16(p) == b.S16(12) && b.S16(p + 2) == b.S16(10));
        }
        if (type == 0x2fa) player.Make_Lowest({Object::pen, b.U16(p) == 5, b.U32(p + 6), b.S16(p + 2)});
        if (type == 0x2fb) {
            Object font{Object::font, false, 0, -b.S16(p), b.S16(p + 4), bytes.c_str() + p + 18, b.U8(p + 13) == 2};
            font.style = (b.S16(p + 8) > 400 ? 1 : 0) + (b.U8(p + 10) != 0 ? 2 : 0) + (b.U8(p + 11) != 0 ? 4 : 0);
            EXPECT_EQ(font.symbol, font.face == "Symbol");
            player.Make_Lowest(font);
        }
        if (type == 0x2fc) player.Make_Lowest({Object::brush, b.U16(p) == 1, b.U32(p + 2)});
        if (type == 0x324) player.Polygon(places());
        if (type == 0x325) player.Line(places());
        if (type == 0x418) player.Ellipse(place(p + 4), place(p));
        if (type == 0xa32) {
            static const std::map<unsigned, char32_t> symbols = {{'q', U'θ'}, {'l', U'λ'},  {'D', U'Δ'},
                                                                 {'f', U'φ'}, {0xa3, U'≤'}, {0x2d, U'−'}};
            const std::size_t count = b.U16(p + 4), advances = p + 8 + (count + 1) / 2 * 2;
            std::u32string letters;
            int advance = 0;
            for (std::size_t k = 0; k < count; ++k) {
                const unsigned code = b.U8(p + 8 + k);
                letters += player.Selected(Object::font).symbol ? symbols.at(code) : code == 0x96 ? U'–' : code;
                advance += b.S16(advances + 2 * k);
            }
            player.Text(place(p), letters, advance);
        }
        if (type == 0xf43) {
            EXPECT_TRUE(b.U32(p) == 0xcc0020 && b.U16(p + 4) == 0);
            const Point other = player.At(b.S16(p + 20) + b.S16(p + 16), b.S16(p + 18) + b.S16(p + 14));
            player.Image(b, p + 22, place(p + 18), other, b.S16(p + 8), b.S16(p + 6));
        }
        at += 2 * size;
    }
    EXPECT_EQ(type, 0u);
    EXPECT_EQ(longest, b.U32(34));
    EXPECT_EQ(player.most_objects, b.U16(32));
    return player.End();
}

}  // namespace vntl
