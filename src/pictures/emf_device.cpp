// Enhanced metafiles: records of 32-bit words, each beginning with its kind and its size in bytes, the first one a header with the totals.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "drawing/font_table.hpp"
#include "pictures/little_endian.hpp"
#include "pictures/metafile_device.hpp"
#include "pictures/text_extent.hpp"

namespace vntl {
namespace {

enum class Record : std::uint32_t {
    header = 1,
    polygon = 3,
    polyline = 4,
    poly_polyline = 7,
    set_window_extent = 9,
    set_window_origin = 10,
    set_viewport_extent = 11,
    set_viewport_origin = 12,
    end = 14,
    set_map_mode = 17,
    set_background_mode = 18,
    set_polygon_fill_mode = 19,
    set_stretch_mode = 21,
    set_text_align = 22,
    set_text_colour = 24,
    save_state = 33,
    restore_state = 34,
    select_object = 37,
    create_pen = 38,
    create_brush = 39,
    delete_object = 40,
    ellipse = 42,
    stretch_bitmap = 81,
    create_font = 82,
    text = 84,
    polygon_16 = 86,
    polyline_16 = 87,
    poly_polyline_16 = 90,
    create_wide_pen = 95
};

constexpr std::uint32_t version = 0x10000, signature = 0x464d4520;  // " EMF"
constexpr std::string_view creator("Vantrelo\0", 10);               // name of the program, no name of the picture
constexpr std::uint32_t header_size = 108;
// The screen on which a unit of the page is a pixel.
constexpr int screen_inches_x = 20, screen_inches_y = 15;
constexpr double mm_an_inch = 25.4, frame_an_inch = 2540;

constexpr std::uint32_t anisotropic = 8, transparent = 1, winding = 2, keep_colours = 3, one_up = 0xffffffff;
constexpr std::uint32_t pen_solid = 0, pen_none = 5, pen_geometric = 0x10000, pen_flat_ends = 0x200;  // joins are round unless told
constexpr std::uint32_t brush_solid = 0, brush_none = 1;
constexpr std::uint32_t copy_pixels = 0x00cc0020;
constexpr std::uint32_t bitmap_at = 80, bitmap_header_size = 40;
constexpr std::uint32_t text_at = 76;
constexpr std::size_t font_size = 320;
constexpr unsigned default_letters = 1;

const char* Face_Name(int font) {
    switch (font) {
        case font_courier:
            return "Courier New";
        case font_times:
            return "Times New Roman";
        default:
            return "Arial";  // Greek letters as well
    }
}

class Emf_Device : public Metafile_Device {
public:
    Emf_Device(const std::string& file, double width, double height, bool old_systems)
        : Metafile_Device(file, width, height, old_systems ? Metafile_Range::bits_16 : Metafile_Range::bits_32, old_systems),
          old_systems_(old_systems) {
        bytes_.resize(header_size + 2 * creator.size());  // the header comes when all is known
        records_ = 1;
        const auto across = static_cast<std::uint32_t>(Page().right), down = static_cast<std::uint32_t>(Page().bottom);
        Put(Record::save_state);
        Put(Record::set_map_mode, {anisotropic});
        Put(Record::set_window_extent, {across, down});
        Put(Record::set_window_origin, {0, 0});
        Put(Record::set_viewport_extent, {across, down});
        Put(Record::set_viewport_origin, {0, 0});
        Put(Record::set_background_mode, {transparent});
        Put(Record::set_polygon_fill_mode, {winding});
        Put(Record::set_stretch_mode, {keep_colours});
    }

private:
    // --- records -----------------------------------------------------------------------------------------------------------------
    void Put(Record kind, std::initializer_list<std::uint32_t> words = {}) {
        Begin(kind);
        for (const std::uint32_t word : words) Put_32(bytes_, word);
        End();
    }
    void Begin(Record kind) {
        begin_ = bytes_.size();
        ++records_;
        Put_32(bytes_, static_cast<std::uint32_t>(kind));
        Put_32(bytes_, 0);
    }
    void End() {
        bytes_.append((4 - bytes_.size() % 4) % 4, '\0');
        std::string size;
        Put_32(size, static_cast<std::uint32_t>(bytes_.size() - begin_));
        std::copy(size.begin(), size.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(begin_) + 4);
    }
    void Put_Number(int value) override { Put_32(bytes_, static_cast<std::uint32_t>(value)); }
    void Put_Box(const Box& box) {
        for (const int edge : {box.left, box.top, box.right, box.bottom}) Put_Number(edge);
    }

    // --- objects: the first one is number 1 --------------------------------------------------------------------------------------
    void Make(int slot, const Drawing_Object& object) override {
        const auto number = static_cast<std::uint32_t>(slot + 1), size = static_cast<std::uint32_t>(object.size);
        const bool blank = object.colour == no_colour;
        if (object.kind == Drawing_Object::font)
            Make_Font(number, object);
        else if (object.kind == Drawing_Object::brush)
            Put(Record::create_brush, {number, blank ? brush_none : brush_solid, blank ? 0 : object.colour, 0});
        else if (blank || old_systems_)
            Put(Record::create_pen, {number, blank ? pen_none : pen_solid, size, 0, blank ? 0 : object.colour});
        else
            Put(Record::create_wide_pen, {number, 0, 0, 0, 0, pen_geometric | pen_flat_ends, size, brush_solid, object.colour, 0, 0});
    }
    void Make_Font(std::uint32_t number, const Drawing_Object& font) {
        Begin(Record::create_font);
        const std::size_t start = bytes_.size() + 4;
        Put_32(bytes_, number);
        Put_Font(font, default_letters, 0);
        for (const char c : std::string_view(Face_Name(font.face))) Put_16(bytes_, static_cast<unsigned char>(c));
        bytes_.resize(start + font_size);
        End();
    }
    void Select(int slot) override { Put(Record::select_object, {static_cast<std::uint32_t>(slot + 1)}); }
    void Delete(int slot) override { Put(Record::delete_object, {static_cast<std::uint32_t>(slot + 1)}); }

    // --- shapes ------------------------------------------------------------------------------------------------------------------
    static bool Short(const Box& box) { return box.right <= INT16_MAX && box.bottom <= INT16_MAX; }
    void Put_Places(std::span<const Place> places, bool in_short) {
        for (const Place& p : places) {
            if (in_short) {
                Put_32(bytes_, static_cast<std::uint32_t>(p.x) | static_cast<std::uint32_t>(p.y) << 16);
            } else {
                Put_Number(p.x);
                Put_Number(p.y);
            }
        }
    }
    void Put_Corners(Record wide, Record narrow, std::span<const Place> places) {
        const Box box = Around(places, Line_Reach());
        Begin(Short(box) ? narrow : wide);
        Put_Box(box);
        Put_32(bytes_, static_cast<std::uint32_t>(places.size()));
        Put_Places(places, Short(box));
        End();
    }
    void Put_Line(std::span<const Place> places) override { Put_Corners(Record::polyline, Record::polyline_16, places); }
    void Put_Polygon(std::span<const Place> places) override { Put_Corners(Record::polygon, Record::polygon_16, places); }
    void Put_Lines(const Lines& lines) override {
        const Box box = Around(lines.places, Line_Reach());
        Begin(Short(box) ? Record::poly_polyline_16 : Record::poly_polyline);
        Put_Box(box);
        Put_32(bytes_, static_cast<std::uint32_t>(lines.counts.size()));
        Put_32(bytes_, static_cast<std::uint32_t>(lines.places.size()));
        for (const std::size_t count : lines.counts) Put_32(bytes_, static_cast<std::uint32_t>(count));
        Put_Places(lines.places, Short(box));
        End();
    }
    void Put_Ellipse(const Box& box) override {
        Begin(Record::ellipse);
        Put_Box(box);
        End();
    }
    void Put_Image(const Box& box, int columns, int rows, std::span<const Colour> colours) override {
        Begin(Record::stretch_bitmap);
        Put_Box(box);
        for (const int value : {box.left, box.top, 0, 0, columns, rows}) Put_Number(value);
        const auto size = static_cast<std::uint32_t>(Bitmap_Size(columns, rows));
        for (const std::uint32_t word : {bitmap_at, bitmap_header_size, bitmap_at + bitmap_header_size, size, 0u, copy_pixels})
            Put_32(bytes_, word);
        Put_Number(box.Width());
        Put_Number(box.Height());
        Put_Bitmap(columns, rows, colours);
        End();
    }

    // --- texts -------------------------------------------------------------------------------------------------------------------
    void Put_Align(Text_Align align) override { Put(Record::set_text_align, {static_cast<std::uint32_t>(align)}); }
    void Put_Text_Colour(Colour colour) override { Put(Record::set_text_colour, {colour}); }
    void Put_Text(Point at, std::span<const Letter> letters, double width, const Text_Style& style) override {
        Use_Font(style.font, style);
        std::u16string words;
        std::vector<int> advances;
        for (const Letter& letter : letters) {
            const char32_t beyond = letter.code - 0x10000;
            const bool pair = letter.code > 0xffff;
            words += pair ? static_cast<char16_t>(0xd800 + (beyond >> 10)) : static_cast<char16_t>(letter.code);
            if (pair) words += static_cast<char16_t>(0xdc00 + (beyond & 0x3ff));
            advances.push_back(letter.advance);
            if (pair) advances.push_back(0);
        }
        Align_Text(style.justify == Justify::left     ? Text_Align::left
                   : style.justify == Justify::centre ? Text_Align::centre
                                                      : Text_Align::right);
        std::vector<Place> room;
        for (const Point& p : Room_Of_Text(at, width, style)) room.push_back(Place_Of(p));
        const auto count = static_cast<std::uint32_t>(words.size());
        const auto scale = std::bit_cast<std::uint32_t>(static_cast<float>(frame_an_inch / Units_An_Inch()));
        const Place place = Place_Of(at);
        Begin(Record::text);
        Put_Box(Around(room));
        for (const std::uint32_t word : {1u, scale, scale}) Put_32(bytes_, word);  // escapement as on all systems; 0.01 mm a unit
        Put_Number(place.x);
        Put_Number(place.y);
        for (const std::uint32_t word : {count, text_at, 0u}) Put_32(bytes_, word);
        Put_Box({0, 0, -1, -1});                            // no box behind
        Put_32(bytes_, text_at + (2 * count + 3) / 4 * 4);  // of the advances
        for (const char16_t letter : words) Put_16(bytes_, letter);
        if (count % 2 != 0) Put_16(bytes_, 0);
        for (const int advance : advances) Put_Number(advance);
        End();
    }

    // --- end ---------------------------------------------------------------------------------------------------------------------
    void Finish() override {
        Put(Record::restore_state, {one_up});
        Delete_Objects();
        Put(Record::end, {0, 16, 20});  // no palette; its own size again
        bytes_.replace(0, header_size + 2 * creator.size(), Header());
    }
    std::string Header() const {
        const auto letters = static_cast<std::uint32_t>(creator.size());
        const auto frame = [&](double points) {
            return static_cast<std::uint32_t>(std::max(1l, std::lround(points * frame_an_inch / 72)));
        };
        const auto screen = [&](int inches) { return static_cast<std::uint32_t>(inches * Units_An_Inch()); };
        const auto metric = [](int inches, int parts) { return static_cast<std::uint32_t>(std::lround(inches * mm_an_inch * parts)); };
        std::string head;
        for (const std::uint32_t word :
             {static_cast<std::uint32_t>(Record::header), header_size + 2 * letters, 0u, 0u, static_cast<std::uint32_t>(Page().right),
              static_cast<std::uint32_t>(Page().bottom), 0u, 0u, frame(Width()), frame(Height()), signature, version,
              static_cast<std::uint32_t>(bytes_.size()), records_})
            Put_32(head, word);
        Put_16(head, static_cast<std::uint32_t>(Slots() + 1));
        Put_16(head, 0);
        for (const std::uint32_t word :
             {letters, header_size, 0u, screen(screen_inches_x), screen(screen_inches_y), metric(screen_inches_x, 1),
              metric(screen_inches_y, 1), 0u, 0u, 0u, metric(screen_inches_x, 1000), metric(screen_inches_y, 1000)})
            Put_32(head, word);
        for (const char c : creator) Put_16(head, static_cast<unsigned char>(c));
        return head;
    }

    bool old_systems_;
    std::size_t begin_ = 0;  // of the record
    std::uint32_t records_ = 0;
};

}  // namespace

std::unique_ptr<Vector_Device> Open_Emf(const std::string& file, double width, double height, bool old_systems) {
    return std::make_unique<Emf_Device>(file, width, height, old_systems);
}

}  // namespace vntl
