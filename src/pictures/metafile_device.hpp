// What the two kinds of metafile share. A metafile is a list of records, each a call that would draw a part of the picture on a Windows
// screen. Pens, brushes and fonts are objects, made and deleted at the slots of a table and selected there. The formats are those of
// [MS-EMF] and [MS-WMF], which Microsoft publishes.
//
// Viewers agree on little beside plain lines: some draw the dashes of a pen solid, each has its own look of a thin dashed pen, and all
// polygons of one record may be filled as one. So dashes are written as lines of their own, and each area in a record of its own.
//
// Places are in whole units from the upper left corner of the page, y downward: 1/20 point, or so many that the longer side of the page
// stays within 16 bits, where these are all.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "pictures/shape_device.hpp"

namespace vntl {

// Text alignments of both formats: the reference point lies on the base line.
enum class Text_Align : std::uint32_t { left = 24, right = 26, centre = 30 };

enum class Metafile_Range { bits_32, bits_16 };

class Metafile_Device : public Shape_Device {
public:
    Status Close() final;

protected:
    struct Place {
        int x, y;
        bool operator==(const Place&) const = default;
    };
    struct Box {
        int left, top, right, bottom;
        int Width() const { return right - left; }
        int Height() const { return bottom - top; }
    };
    struct Drawing_Object {
        enum Kind : std::size_t { pen, brush, font, kinds } kind = pen;
        Colour colour = no_colour;                   // of a pen or a brush; one of no colour draws nothing
        int size = 0;                                // width of a pen, em of a font
        int face = 0, style = 0, tenth_degrees = 0;  // of a font
        bool operator==(const Drawing_Object&) const = default;
    };
    struct Letter {
        char32_t code;
        int advance;
    };
    // Several lines one behind the other.
    struct Lines {
        std::vector<Place> places;
        std::vector<std::size_t> counts;
    };

    Metafile_Device(std::string file, double width, double height, Metafile_Range range, bool round_ends);

    // --- what a format writes ------------------------------------------------------------------------------------------------------
    virtual void Make(int slot, const Drawing_Object&) = 0;  // at the lowest free slot
    virtual void Select(int slot) = 0;
    virtual void Delete(int slot) = 0;
    virtual void Put_Line(std::span<const Place>) = 0;  // with the pen
    virtual void Put_Lines(const Lines&) = 0;
    virtual void Put_Polygon(std::span<const Place>) = 0;  // with the pen and the brush
    virtual void Put_Ellipse(const Box&) = 0;
    virtual void Put_Image(const Box&, int columns, int rows, std::span<const Colour>) = 0;  // the lowest row first
    virtual void Put_Number(int) = 0;                                                        // of the size of the format's numbers
    virtual void Put_Align(Text_Align) = 0;
    virtual void Put_Text_Colour(Colour) = 0;
    virtual void Put_Text(Point at, std::span<const Letter>, double width, const Text_Style&) = 0;  // `at` and `width` in points
    virtual void Finish() = 0;                                                                      // last records, totals of the header

    Place Place_Of(Point) const;
    int Units(double points) const;
    Box Page() const { return {0, 0, page_width_, page_height_}; }
    int Units_An_Inch() const { return units_an_inch_; }
    Box Around(std::span<const Place>, int reach = 0) const;  // within the page
    int Line_Reach() const;                                   // by which a line of the pen is wider than its places
    void Align_Text(Text_Align);
    void Use_Font(int face, const Text_Style&);
    void Delete_Objects();
    int Slots() const { return most_slots_; }                                                // in use at once
    void Put_Font(const Drawing_Object& font, unsigned letters, unsigned pitch_and_family);  // all but its name
    void Put_Bitmap(int columns, int rows, std::span<const Colour>);                         // header and pixels
    static std::size_t Bitmap_Size(int columns, int rows);                                   // bytes of the pixels

    std::string bytes_;  // of the file

private:
    static constexpr std::size_t slots = 32;  // old systems have room for few objects
    struct Slot {
        bool made = false;
        Drawing_Object object;
        std::uint64_t used = 0;  // when it was selected
    };

    void Write_Clear(Colour) final;
    void Write_Line(std::span<const Point>, const Pen&) final;
    void Write_Area(std::span<const Point>, Colour) final;
    void Write_Ellipse(Point centre, double rx, double ry, bool filled, const Pen&) final;
    void Write_Markers(std::span<const Point>, const Marker_Style&) final;
    void Write_Cells(const Rect& rect, int columns, int rows, std::span<const Colour>) final;
    void Write_Text(Point at, const std::string& text, double width, const Text_Style&) final;

    void Use(const Drawing_Object&);
    int Slot_For(const Drawing_Object&);
    void Use_Pen(const Pen&);
    void Use_Fill(Colour);
    void Solid_Line(std::span<const Point>);
    void Dashed_Line(std::span<const Point>, const Pen&);
    void Dash_As_Areas(std::span<const Point>, const Pen&);
    void Area(std::span<const Point>, int halvings);
    std::span<const Place> Places_Of(std::span<const Point>);
    std::vector<Letter> Letters_Of(const std::string& text, double width, const Text_Style&);

    std::string file_;
    bool closed_ = false;
    bool round_ends_;
    int units_an_inch_;
    double units_a_point_;
    int page_width_ = 0, page_height_ = 0;
    std::vector<Place> places_;
    std::array<Slot, slots> slots_;
    std::array<int, Drawing_Object::kinds> selected_;
    int most_slots_ = 0;
    std::uint64_t uses_ = 0;
    std::uint32_t align_ = 0, text_colour_ = no_colour;
    std::map<std::array<std::uint32_t, 3>, double> advances_;  // of letters met, in em
};

std::unique_ptr<Vector_Device> Open_Emf(const std::string& file, double width, double height, bool old_systems);
std::unique_ptr<Vector_Device> Open_Wmf(const std::string& file, double width, double height);

}  // namespace vntl
