// What names the rows of a graph in a look of its own: a legend where it covers least of the curves, or the colours of a series as a bar.
#pragma once

#include <string>
#include <vector>

#include "drawing/device.hpp"
#include "plot/colour_bar.hpp"
#include "plot/plot.hpp"
#include "session/desk/row_styles.hpp"

namespace vntl {

class Fitted_Legend {
public:
    Fitted_Legend(const Scene&, int rows, Device&);  // of the first `rows` rows, those of them that are shown

    double Beside() const;  // device units that it takes right of the plot box
    // Into, or beside, the plot box of the scene, whose window is that one.
    void Draw(const View& window) const;

private:
    struct Line {
        int row;
        std::string text;
        bool symbol;
    };
    enum class Kind { none, inside, outside, bar };

    void Make_Lines(int rows);
    void Shorten_Lines(double room);
    double Longest() const;
    double Line_Height() const;
    Rect Box() const;
    Rect Place(const View& window, double width, double height, bool& covers) const;
    void Draw_Lines(const View& window) const;
    bool Has_Markers(int row, const View& window) const;
    void Draw_Symbol(int row, const View& window, Point at) const;
    Colour_Bar Bar() const;
    std::vector<Colour> Colours_Of_Bar() const;

    const Scene& scene_;
    Device& device_;
    Row_Styles styles_;
    Kind kind_ = Kind::none;
    Text_Style text_;
    double em_ = 0;
    std::vector<Line> lines_;
};

}  // namespace vntl
