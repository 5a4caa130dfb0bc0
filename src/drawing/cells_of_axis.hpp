// The cells between the lines of one axis of a grid, from those far from the eye to the near ones.
//
// On one way from the eye over the floor, the distance grows along either axis. So the rows of cells are laid from both sides toward the
// row in which the eye stands, and the cells of a row toward its column: without a comparison of one cell with another, whatever lies
// behind is laid before what hides it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace vntl {

class Cells_Of_Axis {
public:
    // `at` gives the place of a line by its number; the places rise.
    template <class At>
    Cells_Of_Axis(std::size_t lines, double eye, const At& at) : cells_(static_cast<std::ptrdiff_t>(lines) - 1) {
        std::size_t before = 0, beyond = lines;  // of the lines, those up to the eye, and the first one known to lie beyond it
        while (before < beyond) {
            const std::size_t middle = before + (beyond - before) / 2;
            if (at(middle) <= eye)
                before = middle + 1;
            else
                beyond = middle;
        }
        eye_cell_ = std::min(static_cast<std::ptrdiff_t>(before) - 1, cells_);
    }

    std::vector<std::size_t> Far_To_Near() const {
        std::vector<std::size_t> order;
        for (std::ptrdiff_t cell = cells_ - 1; cell > eye_cell_; --cell) order.push_back(static_cast<std::size_t>(cell));
        for (std::ptrdiff_t cell = 0; cell < eye_cell_; ++cell) order.push_back(static_cast<std::size_t>(cell));
        if (eye_cell_ >= 0 && eye_cell_ < cells_) order.push_back(static_cast<std::size_t>(eye_cell_));
        return order;
    }
    // A side that two cells share is drawn with the nearer one: by then nothing is to come that lies behind it.
    bool Next_Is_Farther(std::size_t cell) const { return static_cast<std::ptrdiff_t>(cell) >= eye_cell_; }
    bool Last_Is_Farther(std::size_t cell) const { return static_cast<std::ptrdiff_t>(cell) <= eye_cell_; }

private:
    std::ptrdiff_t cells_, eye_cell_;  // where among the cells the eye stands: -1 before the first one, their number beyond the last
};

}  // namespace vntl
