// The head of one scan in a RAS file: lines *KEY "value".
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "patterns/pattern.hpp"

namespace vntl {

class Ras_Head {
public:
    // Takes a line; one of another form, or more than a head can have, is passed over. The text must outlive the head.
    void Take(std::string_view line);

    // What the lines say of a pattern: title, radiation, conv, step, count_time, npts_claimed (points told, 0 where none are), per_second,
    // facts.
    Pattern_Head Told() const;

    // The axis that was scanned; empty where the lines do not say.
    std::string Axis() const;

private:
    std::string_view Value(std::string_view key) const;  // empty where there is none
    double Number(std::string_view key) const;           // 0 where there is none, or none that a measurement can have
    std::string Words(std::string_view key) const;       // as people read them
    void Take_Waves(Pattern_Head& head) const;
    void Take_Facts(Pattern_Head& head) const;

    using Lines = std::vector<std::pair<std::string_view, std::string_view>>;
    Lines lines_, axes_;  // axes_: where each axis stood
};

}  // namespace vntl
