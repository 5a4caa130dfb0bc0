// Which part of a plot box the curves of a graph cover, as coarsely as a legend needs to know it.
#pragma once

#include <vector>

#include "drawing/device.hpp"
#include "plot/plot.hpp"

namespace vntl {

class Covered_Columns {
public:
    // `box`: the plot box in device units, whose window is that one. Of rows of very many points some are looked at.
    Covered_Columns(const Scene&, const Rect& box, const View& window, const Device&);

    // How much of it a rectangle covers: the columns of each row's curve that it meets.
    double By(const Rect&) const;

private:
    struct Span {
        double low, high;  // device units; low > high: the curve is not there
    };
    void Add_Row(const Scene&, int row, float offset, const View& window);
    void Add_Foot(const Scene&, const View& window);

    Rect box_;
    double beside_;                        // the half width of lines and markers, device units
    std::vector<std::vector<Span>> rows_;  // of each row, columns from left to right
};

}  // namespace vntl
