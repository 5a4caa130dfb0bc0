// One scan of a BRML document, a "route": what its head tells, the columns of its rows, the rows, and the pattern that they make.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

inline constexpr double not_told = std::numeric_limits<double>::quiet_NaN();

// An axis that moves from start by increments, or along which a detector counts all at once.
struct Brml_Axis {
    std::string id, name;  // "TwoTheta", "2Theta"
    double start = not_told, stop = not_told, increment = not_told, reference = 0;
};

struct Brml_Column {
    std::size_t place = 0, length = 1;  // in a row
    std::string name, shown, unit;
    bool recorded = false;  // by a detector or a sensor
    bool counts = false;
    double blank = not_told;  // stands for no value
};

struct Brml_Scan {
    std::string name, shown, mode;  // "LockedCoupled", "Coupled TwoTheta/Theta", "Continuous"
    double points = 0, time = 0, effective_time = 0;
    std::vector<Brml_Axis> axes, scales;
    std::vector<Brml_Column> columns;
    std::vector<float> values;  // whole rows, one after the other
    std::size_t width = 0;      // of a row
    std::size_t bad_rows = 0;   // that were left out
    Fact_List facts;

    // Takes the comma list of one row. One that is shorter than the first, or holds what is no number, is left out.
    void Take_Row(std::string_view text);

    std::size_t Rows() const { return width == 0 ? 0 : values.size() / width; }
    bool Is_Sensor_Record() const;  // of a temperature for example, beside the scans
};

// The mean of the temperature that the rows tell, in kelvin; 0 where they tell none.
double Temperature_Of(const Brml_Scan& scan);

// One pattern, or one a row, at most so many, where the detector counts along an axis all at once. Title, wavelengths and number are not
// the scan's. Fails with a sentence that goes on from "Scan 2"; what a user must know of the patterns goes to `warnings`, as such a
// sentence too.
Status Patterns_Of(const Brml_Scan& scan, std::size_t most, std::vector<Diffraction_Pattern_Type>& patterns,
                   std::vector<std::string>& warnings);

}  // namespace vntl
