// What the readers of binary laboratory files share: a grid of angles, the counts behind a head, and the ranges of a file.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Rows that the program has; a file of more ranges is read so far.
inline constexpr std::size_t most_ranges = 2000;

// Points at start + i step.
struct Scan_Grid {
    double start = 0, step = 0;

    // Whether so many points at it are angles or lengths that a diffractometer can have.
    bool Is_Sound(double points) const;
};

// Heads put such numbers where nothing is known.
inline bool Is_Told(double value) { return std::isfinite(value) && value > -1e6 && std::fabs(value) < 1e12; }

// Kelvin; 0, negative numbers and those beyond any furnace stand for an unknown temperature.
inline bool Is_Temperature(double kelvin) { return kelvin > 0 && kelvin < 9999; }

// A wavelength in angstroms, 0 for what no tube gives.
float Wavelength_Of(double told);

// A time a step, 0 for what no measurement takes.
float Seconds_Of(double told);

// Facts of numbers that may be marks of the unknown. A setting is positive.
void Add_Told(Fact_List& facts, std::string_view name, double value);
void Add_Setting(Fact_List& facts, std::string_view name, double value);

// Date and time as the file has them, whatever the order of day and month.
void Add_Date(Fact_List& facts, std::string_view date, std::string_view time);

// A count kept as ten times its root.
struct Count_By_Root {
    std::uint16_t root;
    explicit operator float() const { return static_cast<float>(root) * static_cast<float>(root) / 100.0f; }
};

// Sets x, y, the variances |y| and the limits from `n` counts, one at the beginning of each `stride` bytes of `records`. A negative step
// gives the points in the opposite order, so that x rises.
//   records   at least n * stride bytes
//   divisor   of stored numbers, y = number / divisor
// Fails without points and at a grid that is none.
template <class Count>
Status Set_Points(Diffraction_Pattern_Type& pattern, Scan_Grid grid, std::string_view records, std::size_t stride, std::size_t n,
                  float divisor = 1);

// How many of the points that a head claims are there, in so many bytes of `stride` each. Where they are fewer the pattern tells.
std::size_t Points_There(Diffraction_Pattern_Type& pattern, double claimed, std::size_t bytes, std::size_t stride);

// The ranges of a file, taken in their order.
class Range_List {
public:
    void Take(const Status& status, Diffraction_Pattern_Type&& pattern);
    void End(std::size_t told) { told_ = told; }  // so many were promised by the head
    void Miss(std::string_view sentence) { Take(Status::Fail(sentence), {}); }

    std::size_t Next() const { return count_ + 1; }  // number of the range that comes next
    bool Full() const { return patterns_.size() >= most_ranges || count_ >= 2 * most_ranges; }

    // Gives what was read; each range of several has its number in its title. What failed goes to the notes, and is why it fails where no
    // range could be read.
    Status Done(std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

private:
    std::vector<Diffraction_Pattern_Type> patterns_;
    std::vector<std::string> faults_;
    std::string first_fault_;
    std::size_t count_ = 0, told_ = 0;
};

}  // namespace vntl
