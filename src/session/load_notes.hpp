// What the files of one command share while they become rows: an answer that holds for all of them, and what there is to tell at the end.
#pragma once

#include <optional>
#include <string>

#include "patterns/pattern.hpp"

namespace vntl {

// Points that a file lacks or lost, counted over the profiles of a command.
struct Point_Loss {
    int profiles = 0;
    long long points = 0;
    std::string text;  // about the first profile
};

struct Load_Notes {
    bool several = false;       // files: an answer holds for all of them
    std::optional<bool> sorts;  // the user's word about x that does not rise
    bool replaces = false;      // the rows that are there leave when the first new one is ready
    bool listed = false;        // the present file came with a list, which is the recent file in its place
    std::string refusal;        // why the user himself left the present file out

    Point_Loss left_out;   // points without a number for x or y
    Point_Loss unwritten;  // points that the head of a file promises, and that are not there

    // A profile came in: of `read` points in its file `left` were left out.
    void Count(const std::string& name, int claimed, int read, int left);

    // For the status bar; empty where nothing was lost.
    std::string Notice() const;
};

}  // namespace vntl
