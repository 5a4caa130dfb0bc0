// The words by which an x space is known, and the chains of steps that lead from one to another. For the routines of x space alone.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/ask.hpp"
#include "calc/x_conversion.hpp"
#include "patterns/profile.hpp"
#include "session/x_space.hpp"

namespace vntl {

enum class Space_Kind { two_theta, tof, d, q, s, mono, general };

struct Space {
    X_Space space;
    Space_Kind kind;
    std::string_view x_title, y_title;
    int command = 0;    // checked in this space, 0 none
    int constants = 0;  // command that edits the constants of its conversion, 0 none

    std::string_view Word() const { return Told(space); }
};

// The first word of the vocabulary that `text` contains, or nothing.
const Space* Find_Space(std::string_view text);
const Space* Find_Space(X_Space space);  // nothing for none

// How a pattern gets from one space to another.
struct X_Chain {
    std::span<const X_Step> steps;
    std::optional<Constants_Kind> constants;  // those that it needs, and may lack
    std::string_view refusal = {};            // why there is no such way, "{X}" for the present space
};

// `present` is nothing where no row has set a space; `target` is one of the first five kinds.
X_Chain Chain_Between(const Space* present, Space_Kind target);

// Reflections and excluded regions of a row go the way of its points. The user is told of regions that cannot.
void Convert_Marks(std::span<const X_Step> steps, const X_Constants& constants, PRF_Info_Add_Type& info, Ask& ask);

// What a pattern without the constants is refused with on loading.
std::string Constants_Refusal(Constants_Kind kind, std::string_view file_name);

}  // namespace vntl
