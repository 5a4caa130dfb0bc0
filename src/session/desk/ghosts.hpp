// Curves that show where rows would come to stand, while a user says how they move. The rows themselves stay.
#pragma once

#include <vector>

#include "session/plot_state.hpp"

namespace vntl {

class Profile_Store;
struct Session;

// What becomes of a row: x becomes ax * x + bx, and y ay * y + by, in counts whatever the scale.
struct Row_Ghost {
    int row = 0;  // from 1
    float ax = 1, bx = 0, ay = 1, by = 0;
    bool operator==(const Row_Ghost&) const = default;
};

inline constexpr std::size_t most_ghosts = 10;

// Of the shown ones among the rows, evenly chosen where they are more than `most_ghosts`. `line`: what becomes of each; its row is not
// looked at. None where nothing moves.
std::vector<Row_Ghost> Ghosts_Of(const Profile_Store&, const std::vector<int>& rows, const Row_Ghost& line);

// Rows that are set apart: row i by (i - 1) times `dx` and `dy`, and the first one stays.
std::vector<Row_Ghost> Ghosts_Apart(const Profile_Store&, float dx, float dy);

// Those of the line that the mouse is drawing: it moves the waiting rows along itself, or takes what is at the pivot to its end.
std::vector<Row_Ghost> Ghosts_In_Hand(const Profile_Store&, const Plot_State&);

// A place on the page as the rows that are moved by mouse have it: x, and counts whatever the scale, without the offset that the first
// shown one of them has in a waterfall.
Plot_State::Place Counts_Of_Moved(const Profile_Store&, const Plot_State&, Plot_State::Place page);

}  // namespace vntl
