// Computer Graphics Metafile, version 1, binary encoding (ISO 8632-3).
//
// The picture stands on a grid of whole numbers, the origin at the lower left, one metafile for one picture in direct colours. What is
// written keeps to what readers in the field show; where two ways are open, it is the one that more of them take:
//
//   texts     ISO 8859-1, Greek letters by the Latin ones that stand for them in the font Symbol, in a text of their own. Anchored at the
//             middle of the height of capitals: some readers know no other place. Other letters, and texts that are turned (for which a
//             common reader refuses the whole picture), are filled outlines.
//   cells     polygons of one colour together, since a common reader passes over cell arrays
//   lines     in pieces that need no partition
#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "base/write_file.hpp"
#include "drawing/font_table.hpp"
#include "pictures/cell_merge.hpp"
#include "pictures/cgm_elements.hpp"
#include "pictures/shape_device.hpp"
#include "pictures/text_extent.hpp"

namespace vntl {

namespace {

constexpr Cgm_Element begin_metafile{0, 1}, end_metafile{0, 2}, begin_picture{0, 3}, begin_picture_body{0, 4}, end_picture{0, 5};
constexpr Cgm_Element metafile_version{1, 1}, metafile_description{1, 2}, vdc_type{1, 3}, integer_precision{1, 4}, real_precision{1, 5},
    index_precision{1, 6}, colour_precision{1, 7}, colour_index_precision{1, 8}, colour_value_extent{1, 10}, metafile_element_list{1, 11},
    metafile_defaults{1, 12}, font_list{1, 13}, character_set_list{1, 14}, character_coding{1, 15};
constexpr Cgm_Element scaling_mode{2, 1}, colour_selection_mode{2, 2}, line_width_mode{2, 3}, edge_width_mode{2, 5}, vdc_extent{2, 6},
    background_colour{2, 7};
constexpr Cgm_Element vdc_integer_precision{3, 1};
constexpr Cgm_Element polyline{4, 1}, text_element{4, 4}, polygon{4, 7}, polygon_set{4, 8}, rectangle{4, 11}, circle{4, 12}, ellipse{4, 17};
constexpr Cgm_Element line_type{5, 2}, line_width{5, 3}, line_colour{5, 4}, text_font{5, 10}, text_precision{5, 11}, text_colour{5, 14},
    character_height{5, 15}, text_alignment{5, 18}, character_set{5, 19}, alternate_character_set{5, 20}, interior_style{5, 22},
    fill_colour{5, 23}, edge_type{5, 27}, edge_width{5, 28}, edge_colour{5, 29}, edge_visibility{5, 30};

// Values of enumerations.
constexpr int off = 0, on = 1, version_1 = 1, whole_numbers = 0, floating_point = 0, metric = 1, direct = 1, absolute = 0;
constexpr int drawing_and_control = 1, coding_8_bits = 1, set_of_94 = 0, set_of_96 = 1;
constexpr int interior_solid = 1, interior_empty = 4, precision_stroke = 2, align_centre = 2, align_cap = 2, final_text = 1;
constexpr int close_visible = 3, visible = 1;

constexpr int latin_set = 1, latin_set_above = 2, symbol_set = 3;            // of the list of character sets
constexpr int symbol_font = 13;                                              // of the list of fonts, behind three families of four
constexpr int largest_16_bits = 32767, fewest_steps = 20, most_steps = 100;  // steps of the grid: of 16 bits, and for a point
// Em. Readers make letters of 1.4 to 1.65 times the height of capitals that they are told: with a little less than it is, none become so
// wide that pieces of a text run into each other.
constexpr double told_capitals = 0.62;
constexpr std::size_t longest_text = 120;        // octets: a common reader knows no more than 127
constexpr std::size_t rectangles_a_block = 10;   // of the ground below them
constexpr std::size_t most_rectangles = 100000;  // of an image of cells: 2.4 megabytes

int Line_Type_Of(Line_Style style) {
    switch (style) {
        case Line_Style::dashed:
            return 2;
        case Line_Style::dotted:
            return 3;
        case Line_Style::dot_dash:
            return 4;
        case Line_Style::dot_dot_dash:
            return 5;
        default:
            return 1;
    }
}

std::vector<std::string> Font_List(const Hardcopy_Options& options) {
    const Hardcopy_Options defaults;
    std::vector<std::string> fonts;
    for (std::size_t k = 0; k < options.font_names.size(); ++k) {
        const std::string& name = options.font_names[k].empty() ? defaults.font_names[k] : options.font_names[k];
        const bool symbols = k + 1 == options.font_names.size();  // its letters come upright and light alone
        for (const char* const variant : {"", "-Bold", "-Italic", "-BoldItalic"})
            if (!symbols || *variant == '\0') fonts.push_back(name + variant);
    }
    return fonts;
}

int Font_Index(const Text_Style& style) {
    const int family = style.font == font_times ? 2 : style.font == font_helvetica || style.font == font_symbol ? 1 : 0;
    return 1 + 4 * family + (style.style & (style_bold | style_italic));
}

// A part of a text that goes into the file in one way.
struct Text_Piece {
    enum Way { latin, greek, drawn } way;
    std::string octets;     // in the character set
    std::size_t from, end;  // in the text
};

// The Latin letter that stands for a Greek one in Symbol, 0 for none.
char Letter_In_Symbol(std::string_view letter) {
    for (const char first : {'A', 'a'})
        for (int k = 0; k < 26; ++k) {
            const char latin = static_cast<char>(first + k);
            if (Written_Text(std::string_view(&latin, 1), font_symbol) == letter) return latin;
        }
    return 0;
}

Text_Piece Piece_Of_Letter(std::string_view text, std::size_t from, std::size_t end) {
    const std::string_view letter = text.substr(from, end - from);
    const unsigned lead = static_cast<unsigned char>(letter[0]);
    if (lead < 0x80) return {Text_Piece::latin, std::string(letter), from, end};
    if (lead == 0xc3 || (lead == 0xc2 && static_cast<unsigned char>(letter[1]) >= 0xa0))
        return {Text_Piece::latin, {static_cast<char>((lead & 3) << 6 | (static_cast<unsigned char>(letter[1]) & 0x3f))}, from, end};
    const char symbol = Letter_In_Symbol(letter);
    return symbol != 0 ? Text_Piece{Text_Piece::greek, {symbol}, from, end} : Text_Piece{Text_Piece::drawn, {}, from, end};
}

// With `words` each word is a piece: a reader whose letters are wider than ours then has the blanks between them.
std::vector<Text_Piece> Pieces_Of_Text(std::string_view text, bool words = false) {
    std::vector<Text_Piece> pieces;
    const auto goes_on = [&](const Text_Piece& piece, const Text_Piece& next) {
        const bool between =
            words && piece.octets.ends_with(' ') && next.octets != " " && piece.octets.find_first_not_of(' ') != piece.octets.npos;
        return piece.way == next.way && piece.octets.size() < longest_text && !between;
    };
    for (std::size_t from = 0, end = 0; from < text.size(); from = end) {
        for (end = from + 1; end < text.size() && (static_cast<unsigned char>(text[end]) & 0xc0) == 0x80;) ++end;
        const Text_Piece next = Piece_Of_Letter(text, from, end);
        if (pieces.empty() || !goes_on(pieces.back(), next)) {
            pieces.push_back(next);
        } else {
            pieces.back().octets += next.octets;
            pieces.back().end = end;
        }
    }
    return words || pieces.size() < 2 ? pieces : Pieces_Of_Text(text, true);
}

class Cgm_Device final : public Shape_Device {
public:
    Cgm_Device(std::string file, double width, double height, const Hardcopy_Options& options)
        : Shape_Device(width, height),
          file_(std::move(file)),
          fonts_(Font_List(options)),
          steps_(std::clamp(static_cast<int>(largest_16_bits / std::max({width, height, 1.0})), fewest_steps, most_steps)),
          wide_(std::max(width, height) * steps_ > largest_16_bits),
          body_(wide_) {}

    Status Close() override {
        if (closed_) return Status::Done();
        closed_ = true;
        body_.Put(end_picture);
        body_.Put(end_metafile);
        return Replace_File(file_, Head() + body_.text()) ? Status::Done() : Status::Fail_File("The picture cannot be written: " + file_);
    }

protected:
    // The page is a rectangle too: not every reader minds the background.
    void Write_Clear(Colour colour) override {
        background_ = colour;
        body_ = Cgm_Elements(wide_);
        Use_Fill(colour);
        At({0, 0});
        At({Width(), Height()}).Put(rectangle);
    }

    void Write_Line(std::span<const Point> line, const Pen& pen) override {
        body_.Integer(Line_Type_Of(pen.style)).Set(line_type);
        body_.Length(Width_Of(pen)).Set(line_width);
        body_.Rgb(pen.colour).Set(line_colour);
        const std::size_t most = static_cast<std::size_t>(cgm_longest_part / body_.Octets_Of_Place());
        for (std::size_t from = 0; from + 1 < line.size(); from += most - 1) {
            for (const Point& p : line.subspan(from, std::min(most, line.size() - from))) At(p);
            body_.Put(polyline);
        }
    }

    void Write_Area(std::span<const Point> corners, Colour colour) override {
        Use_Fill(colour);
        for (const Point& p : corners) At(p);
        body_.Put(polygon);
    }

    void Write_Ellipse(Point centre, double rx, double ry, bool filled, const Pen& pen) override {
        if (filled)
            Use_Fill(pen.colour);
        else
            Use_Edge(pen);
        const int across = Steps(rx), up = Steps(ry);
        At(centre);
        if (across == up) {
            body_.Length(across).Put(circle);
        } else {
            At({centre.x + rx, centre.y});
            At({centre.x, centre.y + ry}).Put(ellipse);
        }
    }

    void Write_Cells(const Rect& rect, int columns, int rows, std::span<const Colour> colours) override {
        const Cell_Rectangles merged = Merge_Cells(columns, rows, colours, most_rectangles);
        if (merged.rectangles.size() > rectangles_a_block)
            Write_Rectangles(rect, Ground_Of_Cells(columns, rows, colours, merged.rectangles.size() / rectangles_a_block));
        Write_Rectangles(rect, merged);
    }

    void Write_Text(Point at, const std::string& text, double width, const Text_Style& style) override {
        const double em = Em_Of_Cell(style.width, style.height);
        const double left = Start_Of_Text(style.justify, width);
        if ((style.style & style_opaque) != 0) Write_Area(Room_Of_Text(at, width, style, 0.1 * em), Box_Behind(style.colour));
        const Point start = Beside(at, left, 0, style.angle);
        if (style.angle != 0)
            Write_Outlines(start, text, style);
        else
            for (const Text_Piece& piece : Pieces_Of_Text(text)) Write_Piece(start, text, piece, style);
        if ((style.style & style_underline) != 0) Write_Box(at, {left, -0.15 * em, left + width, -0.1 * em}, style.angle, style.colour);
    }

private:
    // All that stands before the body of the picture.
    std::string Head() const {
        Cgm_Elements head(wide_);
        head.String("Vantrelo").Put(begin_metafile);
        head.Integer(version_1).Put(metafile_version);
        head.String("Vantrelo").Put(metafile_description);
        head.Integer(whole_numbers).Put(vdc_type);
        head.Integer(16).Put(integer_precision);
        head.Integer(floating_point).Integer(9).Integer(23).Put(real_precision);  // bits of sign and exponent, and of the fraction
        head.Integer(16).Put(index_precision);
        head.Integer(8).Put(colour_precision);
        head.Integer(8).Put(colour_index_precision);
        head.Rgb(WRGB(0, 0, 0)).Rgb(WRGB(255, 255, 255)).Put(colour_value_extent);
        head.Integer(1).Integer(-1).Integer(drawing_and_control).Put(metafile_element_list);
        if (wide_) {
            Cgm_Elements defaults(wide_);
            defaults.Integer(32).Put(vdc_integer_precision);
            for (const char octet : defaults.text()) head.Octet(static_cast<unsigned char>(octet));
            head.Put(metafile_defaults);
        }
        for (const std::string& font : fonts_) head.String(font);
        head.Put(font_list);
        // ASCII, the other half of ISO 8859-1, and Symbol, by the ends of their escape sequences.
        head.Integer(set_of_94).String("B").Integer(set_of_96).String("A").Integer(set_of_94).String("*:").Put(character_set_list);
        head.Integer(coding_8_bits).Put(character_coding);

        head.String("Plot").Put(begin_picture);
        constexpr double millimetres_a_point = 25.4 / 72;
        head.Integer(metric).Real(static_cast<float>(millimetres_a_point / steps_)).Put(scaling_mode);
        head.Integer(direct).Put(colour_selection_mode);
        head.Integer(absolute).Put(line_width_mode);
        head.Integer(absolute).Put(edge_width_mode);
        head.Place(0, 0).Place(Steps(Width()), Steps(Height())).Put(vdc_extent);
        head.Rgb(background_).Put(background_colour);
        head.Put(begin_picture_body);
        return head.text();
    }

    int Steps(double points) const { return static_cast<int>(std::floor(points * steps_ + 0.5)); }
    int Width_Of(const Pen& pen) const { return std::max(1, Steps(pen.width * Unit())); }

    Cgm_Elements& At(Point p) { return body_.Place(Steps(std::clamp(p.x, 0.0, Width())), Steps(std::clamp(p.y, 0.0, Height()))); }

    void Use_Fill(Colour colour) {
        body_.Integer(interior_solid).Set(interior_style);
        body_.Integer(off).Set(edge_visibility);
        body_.Rgb(colour).Set(fill_colour);
    }

    void Use_Edge(const Pen& pen) {
        body_.Integer(interior_empty).Set(interior_style);
        body_.Integer(on).Set(edge_visibility);
        body_.Integer(Line_Type_Of(pen.style)).Set(edge_type);
        body_.Length(Width_Of(pen)).Set(edge_width);
        body_.Rgb(pen.colour).Set(edge_colour);
    }

    void Write_Rectangles(const Rect& rect, const Cell_Rectangles& cells) {
        std::map<Colour, std::vector<Outline>> of_colour;
        for (const Merged_Cells& merged : cells.rectangles) {
            const Rect r = Rect_Of_Cells(cells, merged, rect);
            of_colour[merged.colour].push_back({{{r.x1, r.y1}, {r.x2, r.y1}, {r.x2, r.y2}, {r.x1, r.y2}}});
        }
        for (const auto& [colour, rectangles] : of_colour) Write_Together(rectangles, colour);
    }

    // Shapes that do not touch, in as few elements as their length allows: the time of a reader goes by their number.
    void Write_Together(const std::vector<Outline>& shapes, Colour colour) {
        Use_Fill(colour);
        std::size_t octets = 0;
        const std::size_t octets_of_corner = static_cast<std::size_t>(body_.Octets_Of_Place()) + 2;
        for (const Outline& shape : shapes) {
            std::size_t own = 0;
            for (const std::vector<Point>& contour : shape) own += contour.size() * octets_of_corner;
            if (octets > 0 && octets + own > cgm_longest_part) {
                body_.Put(polygon_set);
                octets = 0;
            }
            for (const std::vector<Point>& contour : shape)
                for (std::size_t k = 0; k < contour.size(); ++k) At(contour[k]).Integer(k + 1 < contour.size() ? visible : close_visible);
            octets += own;
        }
        if (octets > 0) body_.Put(polygon_set);
    }

    // --- texts -------------------------------------------------------------------------------------------------------------------
    // A rectangle that lies about a text as the text itself does.
    void Write_Box(Point at, const Rect& box, double angle, Colour colour) {
        const std::array corners{Beside(at, box.x1, box.y1, angle), Beside(at, box.x2, box.y1, angle), Beside(at, box.x2, box.y2, angle),
                                 Beside(at, box.x1, box.y2, angle)};
        Write_Area(corners, colour);
    }

    void Write_Piece(Point start, std::string_view text, const Text_Piece& piece, const Text_Style& style) {
        const std::string_view own = text.substr(piece.from, piece.end - piece.from);
        start.x += Extent_Of_Text(text.substr(0, piece.from), style);
        if (piece.way == Text_Piece::drawn) return Write_Outlines(start, own, style);
        if (own.find_first_not_of(' ') == std::string_view::npos) return;
        const bool greek = piece.way == Text_Piece::greek;
        const double capitals = told_capitals * Em_Of_Cell(style.width, style.height);
        body_.Integer(precision_stroke).Set(text_precision);
        body_.Integer(greek ? symbol_font : Font_Index(style)).Set(text_font);
        body_.Integer(greek ? symbol_set : latin_set).Set(character_set);
        body_.Integer(latin_set_above).Set(alternate_character_set);
        body_.Rgb(style.colour).Set(text_colour);
        body_.Length(std::max(1, Steps(capitals))).Set(character_height);
        body_.Integer(align_centre).Integer(align_cap).Real(0).Real(0).Set(text_alignment);
        At({start.x + 0.5 * Extent_Of_Text(own, style), start.y + capitals}).Integer(final_text).String(piece.octets).Put(text_element);
    }

    void Write_Outlines(Point start, std::string_view text, const Text_Style& style) {
        std::vector<Outline> letters = Outlines_Of_Text(text, style);
        for (Outline& letter : letters)
            for (std::vector<Point>& contour : letter)
                for (Point& p : contour) p = {start.x + p.x, start.y + p.y};
        Write_Together(letters, style.colour);
    }

    std::string file_;
    std::vector<std::string> fonts_;
    int steps_;  // of the grid in a point
    bool wide_;  // places of 32 bits
    Colour background_ = WRGB(255, 255, 255);
    Cgm_Elements body_;
    bool closed_ = false;
};

}  // namespace

std::unique_ptr<Vector_Device> Open_Cgm(const std::string& file, double width, double height, const Hardcopy_Options& options) {
    return std::make_unique<Cgm_Device>(file, width, height, options);
}

}  // namespace vntl
