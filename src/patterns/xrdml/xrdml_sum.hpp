// Scans at the same positions of all axes, added up to one pattern.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"
#include "patterns/xrdml/xrdml_file.hpp"
#include "patterns/xrdml/xrdml_lists.hpp"

namespace vntl {

// Where the axes of a scan stood.
struct Xrdml_Place {
    std::string_view name, text;
    bool told = false;
    double from = 0, to = 0;
};
using Xrdml_Places = std::vector<Xrdml_Place>;
Xrdml_Places Places_Of(const Xrdml_Scan& scan);  // in the order of the names

class Xrdml_Sum {
public:
    // Begins with a scan, whose counts become those of the pattern. `step`: that of other scans over the same axis, 0 where there are none;
    // where counts are missing, it tells how many there should be, as does a longer list, or where a continuous scan begins.
    Xrdml_Sum(const Xrdml_Scan& scan, Xrdml_Places places, Xrdml_Lists& lists, double step);

    // False where the scan was one at other positions, or another temperature.
    bool Takes(const Xrdml_Scan& scan, const Xrdml_Places& places, const Xrdml_Lists& lists) const;
    void Add(const Xrdml_Scan& scan, const Xrdml_Lists& lists);

    // The pattern without its title, facts and wavelengths. Nothing is added from here on.
    Diffraction_Pattern_Type Finish();

    const Xrdml_Scan& First() const { return first_; }
    std::string_view Axis() const { return axis_; }
    const std::vector<std::size_t>& Numbers() const { return numbers_; }  // of its scans
    double Time() const { return time_; }                                 // seconds a step, of all of them; 0 is not told
    double Step() const { return step_; }
    bool Step_Is_Told() const { return step_told_; }
    bool Whole() const { return whole_; }
    std::size_t Points() const { return pattern_.y.size(); }
    std::size_t Planned() const { return planned_; }
    bool Differs(const Xrdml_Sum& other, std::string_view axis) const;  // in where that axis stood
    bool Is_As_Warm(const Xrdml_Sum& other) const;

private:
    static bool Same(const Xrdml_Place& a, const Xrdml_Place& b, double near);
    const Xrdml_Place* Find(std::string_view name) const;
    void Set_Positions(Xrdml_Lists& lists, double step);
    void Begin_Counts(Xrdml_Lists& lists);
    void Add_Counts(const Xrdml_Lists& lists);

    const Xrdml_Scan& first_;
    std::string_view axis_;
    Xrdml_Places places_;
    std::vector<std::size_t> numbers_;
    std::vector<float> positions_;
    Diffraction_Pattern_Type pattern_;
    double time_ = 0, step_ = 0;
    std::size_t planned_ = 0;
    bool step_told_ = true, whole_ = true;
};

}  // namespace vntl
