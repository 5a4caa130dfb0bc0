// The older metafiles of 16 bits: a placeable header with the page, a header with the totals, and records that begin with their size in
// 16-bit words and their kind. Texts have letters of one byte: those of Western Europe, and Greek and mathematical ones of the font Symbol.
// Others have no place in it and are written as question marks.
#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <utility>

#include "drawing/font_table.hpp"
#include "pictures/little_endian.hpp"
#include "pictures/metafile_device.hpp"
#include "pictures/text_extent.hpp"

namespace vntl {
namespace {

enum class Record : std::uint32_t {
    end = 0x0000,
    save_state = 0x001e,
    set_background_mode = 0x0102,
    set_map_mode = 0x0103,
    set_polygon_fill_mode = 0x0106,
    set_stretch_mode = 0x0107,
    restore_state = 0x0127,
    select_object = 0x012d,
    set_text_align = 0x012e,
    delete_object = 0x01f0,
    set_text_colour = 0x0209,
    set_window_origin = 0x020b,
    set_window_extent = 0x020c,
    create_pen = 0x02fa,
    create_font = 0x02fb,
    create_brush = 0x02fc,
    polygon = 0x0324,
    polyline = 0x0325,
    ellipse = 0x0418,
    text = 0x0a32,
    stretch_bitmap = 0x0f43
};

constexpr std::uint32_t placeable = 0x9ac6cdd7;
constexpr std::size_t placeable_size = 22, header_size = 18;
constexpr std::uint32_t in_memory = 1, version = 0x300;
constexpr std::uint32_t anisotropic = 8, transparent = 1, winding = 2, keep_colours = 3, one_up = 0xffff;
constexpr std::uint32_t pen_solid = 0, pen_none = 5, brush_solid = 0, brush_none = 1;
constexpr std::uint32_t copy_low = 0x0020, copy_high = 0x00cc;
constexpr std::uint32_t western = 0, symbols = 2;
constexpr std::size_t longest_run = 8192;  // letters of a record that old systems draw

struct Face {
    int font;
    const char* name;
    unsigned pitch_and_family;
};
constexpr std::array<Face, 4> faces = {{{font_courier, "Courier New", 0x31},
                                        {font_helvetica, "Arial", 0x22},
                                        {font_times, "Times New Roman", 0x12},
                                        {font_symbol, "Symbol", 0x12}}};

const Face& Face_Of(int font) {
    return *std::find_if(faces.begin(), faces.end() - 1, [font](const Face& face) { return face.font == font; });
}

struct Code {
    char32_t letter;
    unsigned code;
};

// Western letters beside those of Latin-1, by code page 1252.
constexpr std::array<Code, 28> western_letters = {
    {{U'€', 0x80}, {U'‚', 0x82}, {U'ƒ', 0x83}, {U'„', 0x84},     {U'…', 0x85}, {U'†', 0x86}, {U'‡', 0x87}, {U'ˆ', 0x88},
     {U'‰', 0x89}, {U'Š', 0x8a}, {U'‹', 0x8b}, {U'Œ', 0x8c},     {U'Ž', 0x8e}, {U'‘', 0x91}, {U'’', 0x92}, {U'“', 0x93},
     {U'”', 0x94}, {U'•', 0x95}, {U'–', 0x96}, {U'—', 0x97},     {U'˜', 0x98}, {U'™', 0x99}, {U'š', 0x9a}, {U'›', 0x9b},
     {U'œ', 0x9c}, {U'ž', 0x9e}, {U'Ÿ', 0x9f}, {U'\u212b', 0xc5}}};  // the sign of the angstrom is the letter

// Signs of the font Symbol, beside its Greek letters.
constexpr std::array<Code, 22> symbol_letters = {{{U'−', 0x2d}, {U'′', 0xa2}, {U'≤', 0xa3}, {U'∞', 0xa5}, {U'↔', 0xab},      {U'←', 0xac},
                                                  {U'↑', 0xad}, {U'→', 0xae}, {U'↓', 0xaf}, {U'″', 0xb2}, {U'≥', 0xb3},      {U'∝', 0xb5},
                                                  {U'∂', 0xb6}, {U'≠', 0xb9}, {U'≡', 0xba}, {U'≈', 0xbb}, {U'\u2126', 0x57}, {U'√', 0xd6},
                                                  {U'⋅', 0xd7}, {U'∑', 0xe5}, {U'∫', 0xf2}, {U'∠', 0xd0}}};

struct Written_Letter {
    bool symbol;
    unsigned code;
};

// How the letters of a text are written.
class Letter_Codes {
public:
    Letter_Codes() {
        const auto add = [this](const auto& codes, bool symbol) {
            for (const Code& c : codes) codes_[c.letter] = {symbol, c.code};
        };
        add(western_letters, false);
        add(symbol_letters, true);
        for (const auto& [first, last] : {std::pair('A', 'Z'), std::pair('a', 'z')}) {
            for (char c = first; c <= last; ++c) {
                std::size_t i = 0;
                codes_[Next_Letter(Written_Text(std::string_view(&c, 1), font_symbol), i)] = {true, static_cast<unsigned>(c)};
            }
        }
    }
    Written_Letter Of(char32_t letter) const {
        if (letter < 0x80 || (letter >= 0xa0 && letter <= 0xff)) return {false, static_cast<unsigned>(letter)};
        const auto found = codes_.find(letter);
        return found == codes_.end() ? Written_Letter{false, '?'} : found->second;
    }

private:
    std::map<char32_t, Written_Letter> codes_;
};

class Wmf_Device : public Metafile_Device {
public:
    Wmf_Device(const std::string& file, double width, double height) : Metafile_Device(file, width, height, Metafile_Range::bits_16, true) {
        bytes_.resize(placeable_size + header_size);  // the headers come when all is known
        const auto across = static_cast<std::uint32_t>(Page().right), down = static_cast<std::uint32_t>(Page().bottom);
        Put(Record::save_state);
        Put(Record::set_map_mode, {anisotropic});
        Put(Record::set_window_origin, {0, 0});
        Put(Record::set_window_extent, {down, across});
        Put(Record::set_background_mode, {transparent});
        Put(Record::set_polygon_fill_mode, {winding});
        Put(Record::set_stretch_mode, {keep_colours});
    }

private:
    // --- records -----------------------------------------------------------------------------------------------------------------
    void Put(Record kind, std::initializer_list<std::uint32_t> words = {}) {
        Begin(kind);
        for (const std::uint32_t word : words) Put_16(bytes_, word);
        End();
    }
    void Begin(Record kind) {
        begin_ = bytes_.size();
        Put_32(bytes_, 0);
        Put_16(bytes_, static_cast<std::uint32_t>(kind));
    }
    void End() {
        bytes_.append(bytes_.size() % 2, '\0');
        const auto words = static_cast<std::uint32_t>((bytes_.size() - begin_) / 2);
        longest_ = std::max(longest_, words);
        std::string size;
        Put_32(size, words);
        std::copy(size.begin(), size.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(begin_));
    }
    void Put_Number(int value) override { Put_16(bytes_, static_cast<std::uint32_t>(value)); }

    // --- objects -----------------------------------------------------------------------------------------------------------------
    void Make(int, const Drawing_Object& object) override {
        if (object.kind == Drawing_Object::font) return Make_Font(object);
        const bool blank = object.colour == no_colour;
        const std::uint32_t colour = blank ? 0 : object.colour;
        if (object.kind == Drawing_Object::brush)
            Put(Record::create_brush, {blank ? brush_none : brush_solid, colour, colour >> 16, 0});
        else
            Put(Record::create_pen, {blank ? pen_none : pen_solid, static_cast<std::uint32_t>(object.size), 0, colour, colour >> 16});
    }
    void Make_Font(const Drawing_Object& font) {
        const Face& face = Face_Of(font.face);
        Begin(Record::create_font);
        Put_Font(font, face.font == font_symbol ? symbols : western, face.pitch_and_family);
        bytes_ += face.name;
        bytes_ += '\0';
        End();
    }
    void Select(int slot) override { Put(Record::select_object, {static_cast<std::uint32_t>(slot)}); }
    void Delete(int slot) override { Put(Record::delete_object, {static_cast<std::uint32_t>(slot)}); }

    // --- shapes ------------------------------------------------------------------------------------------------------------------
    void Put_Corners(Record kind, std::span<const Place> places) {
        Begin(kind);
        Put_16(bytes_, static_cast<std::uint32_t>(places.size()));
        for (const Place& p : places) Put_32(bytes_, static_cast<std::uint32_t>(p.x) | static_cast<std::uint32_t>(p.y) << 16);
        End();
    }
    void Put_Line(std::span<const Place> places) override { Put_Corners(Record::polyline, places); }
    void Put_Polygon(std::span<const Place> places) override { Put_Corners(Record::polygon, places); }
    void Put_Lines(const Lines& lines) override {
        std::span<const Place> rest = lines.places;
        for (const std::size_t count : lines.counts) {
            Put_Line(rest.first(count));
            rest = rest.subspan(count);
        }
    }
    void Put_Ellipse(const Box& box) override {
        Begin(Record::ellipse);
        for (const int edge : {box.bottom, box.right, box.top, box.left}) Put_Number(edge);
        End();
    }
    void Put_Image(const Box& box, int columns, int rows, std::span<const Colour> colours) override {
        Begin(Record::stretch_bitmap);
        Put_16(bytes_, copy_low);
        Put_16(bytes_, copy_high);
        for (const int value : {0, rows, columns, 0, 0, box.Height(), box.Width(), box.top, box.left}) Put_Number(value);
        Put_Bitmap(columns, rows, colours);
        End();
    }

    // --- texts -------------------------------------------------------------------------------------------------------------------
    void Put_Align(Text_Align align) override { Put(Record::set_text_align, {static_cast<std::uint32_t>(align)}); }
    void Put_Text_Colour(Colour colour) override { Put(Record::set_text_colour, {colour, colour >> 16}); }
    // In runs of one font each, from the left.
    void Put_Text(Point at, std::span<const Letter> letters, double width, const Text_Style& style) override {
        const double points_a_unit = 72.0 / Units_An_Inch();
        double along = Start_Of_Text(style.justify, width);
        Align_Text(Text_Align::left);
        for (std::size_t from = 0, to = 0; from < letters.size(); from = to) {
            const bool symbol = codes_.Of(letters[from].code).symbol;
            while (to < letters.size() && to - from < longest_run && codes_.Of(letters[to].code).symbol == symbol) ++to;
            const auto run = letters.subspan(from, to - from);
            Use_Font(symbol ? font_symbol : style.font == font_symbol ? font_helvetica : style.font, style);
            Put_Run(Place_Of(Beside(at, along, 0, style.angle)), run);
            for (const Letter& letter : run) along += letter.advance * points_a_unit;
        }
    }
    void Put_Run(Place place, std::span<const Letter> letters) {
        Begin(Record::text);
        for (const int value : {place.y, place.x, static_cast<int>(letters.size()), 0}) Put_Number(value);
        for (const Letter& letter : letters) bytes_ += static_cast<char>(codes_.Of(letter.code).code);
        bytes_.append(letters.size() % 2, '\0');
        for (const Letter& letter : letters) Put_Number(letter.advance);
        End();
    }

    // --- end ---------------------------------------------------------------------------------------------------------------------
    void Finish() override {
        Put(Record::restore_state, {one_up});
        Delete_Objects();
        Put(Record::end);
        bytes_.replace(0, placeable_size + header_size, Headers());
    }
    std::string Headers() const {
        std::string head;
        Put_32(head, placeable);
        for (const int value : {0, 0, 0, Page().right, Page().bottom, Units_An_Inch(), 0, 0})
            Put_16(head, static_cast<std::uint32_t>(value));
        std::uint32_t sum = 0;
        for (std::size_t k = 0; k < head.size(); k += 2)
            sum ^= static_cast<unsigned char>(head[k]) | static_cast<std::uint32_t>(static_cast<unsigned char>(head[k + 1])) << 8;
        Put_16(head, sum);
        Put_16(head, in_memory);
        Put_16(head, header_size / 2);
        Put_16(head, version);
        Put_32(head, static_cast<std::uint32_t>((bytes_.size() - placeable_size) / 2));
        Put_16(head, static_cast<std::uint32_t>(Slots()));
        Put_32(head, longest_);
        Put_16(head, 0);
        return head;
    }

    Letter_Codes codes_;
    std::size_t begin_ = 0;      // of the record
    std::uint32_t longest_ = 0;  // record, in words
};

}  // namespace

std::unique_ptr<Vector_Device> Open_Wmf(const std::string& file, double width, double height) {
    return std::make_unique<Wmf_Device>(file, width, height);
}

}  // namespace vntl
