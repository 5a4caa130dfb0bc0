// The frame of a graph or a map as a `Look` lays it out: every text as large as it is to be, the plot box in the room that they leave.
//
// All of it is measured on the device: the same picture has other margins on a small page than on a large one.
#pragma once

#include <limits>
#include <string>
#include <string_view>

#include "drawing/fitted_axis.hpp"
#include "drawing/presentation.hpp"
#include "plot/plot.hpp"

namespace vntl {

// Whether frame and texts are laid out here, and not at the shares of the page that the preferences alone have.
bool Lays_Out(const Look&);

// A text style of the preferences on the device, no smaller than the look allows, in a colour that is read on the ground.
Text_Style Text_Of(const Look&, const Text_Prefs&, Colour ground, const Device&);
double Em_Of(const Text_Style&);

// The colour, or the nearest one that shows on the ground: of a text, and of a mark or a line, which need less contrast.
Colour Readable_Text(const Look&, Colour, Colour ground);
Colour Seen_Mark(const Look&, Colour, Colour ground);

// Makes a character cell, fractions of the page, large enough for the least text of the look.
struct Text_Cell {
    float width, height;
};
Text_Cell Enlarged(const Look&, Text_Cell, const Device&);

struct Frame_Content {
    std::string title, x_label, y_label;
    View window;  // on the scales of the axes
    Axis_Scale y_scale = Axis_Scale::even;
    double numbers_from = -std::numeric_limits<double>::infinity();  // no numbers of y below that
    double above = 0, beside = 0;                                    // device units kept free above the box, and at its right
};

class Fitted_Frame {
public:
    Fitted_Frame(Frame_Content, const Look&, const Graph2D_Prefs&, Colour ground, Device&);

    // The plot box, fractions of the device: what the texts leave of it. Where they would leave too little the title goes, then the labels.
    Plot_Zone Zone() const;

    // Around a box that has that place.
    void Write_Title(const Plot_Zone&) const;
    void Write_Scales(const Plot_Zone&) const;
    void Write_Labels(const Plot_Zone&) const;

private:
    struct Margins {
        double left, right, bottom, top;
    };
    bool Writes_Title() const { return !content_.title.empty() && prefs_.title.pos != 1; }
    bool Writes_X_Label() const { return !content_.x_label.empty() && prefs_.xlabel.pos != 1; }
    bool Writes_Y_Label() const { return !content_.y_label.empty() && Y_Place() != '-'; }
    char Y_Place() const;  // '-' none, '^' level above the box, else T, C or B along it
    Rect Box(const Plot_Zone&) const;
    Margins Room_Of_Texts(bool title, bool labels) const;
    Fitted_Ticks X_Ticks(double length) const;
    Fitted_Ticks Y_Ticks(double length) const;
    double Widest(const Fitted_Ticks&, const Text_Style&) const;
    double Width_Of(std::string_view text, const Text_Style&) const;
    void Write(Point at, std::string_view text, const Text_Style&) const;
    void Tick(Point from, Point to) const;
    double Tick_Length() const;
    double Beside_Box() const;    // from the box to the first text above it: the highest number reaches up there
    double Above_Labels() const;  // what stands between box and title

    Frame_Content content_;
    const Look& look_;
    const Graph2D_Prefs& prefs_;
    Device& device_;
    Text_Style title_, x_label_, y_label_, x_numbers_, y_numbers_;
    bool has_title_, has_labels_;
};

}  // namespace vntl
