// What the head of a file tells beside the numbers of its pattern, gathered for those who look it up.
//
// The same things have the same names whatever the format: "Scan axis", "Time a step (s)", "Date", "Anode", "Voltage (kV)", "Current (mA)",
// "Sample", "Comment", "User", "Temperature (K)", "Goniometer radius (mm)". All else has the file's own words.
#pragma once

#include <memory>
#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

class Fact_List {
public:
    // Takes one thing, in Latin-1 or UTF-8. Nothing where the value is blank, and no more than a head can be expected to hold: 400 of them,
    // names and values cut to a line. A second value of the same name stands beside the first one, unless it is the same.
    void Add(std::string_view name, std::string_view value);
    void Add(std::string_view name, double value);  // as few digits as tell it, of single precision; nothing for a NaN

    bool Empty() const { return facts_.empty(); }

    // What a pattern holds: null where there is nothing.
    std::shared_ptr<const Head_Facts> Done() const;

private:
    Head_Facts facts_;
};

// The facts of head lines in "name = value" or "name: value" with any mark of a comment in front; a line of neither form is a "Comment" by
// itself. Names that many programs have for the same things become the shared ones; a line that holds an object in JSON gives a fact for
// each of its names. For formats whose readers tell none.
Fact_List Facts_Of_Lines(std::string_view head);

}  // namespace vntl
