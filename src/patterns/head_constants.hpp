// The constants of a measurement as the head lines of files of columns tell them, whatever mark of a comment stands in front.
//
//   # Calibrated wavelength = 0.413263         ! lambda1 = 1.54056, lambda2 = 1.54439
//   # Wavelength: 4.066e-11 m                  ' DIFC = 61710.6 [us/A]  DIFA = -1.5
//
// A wavelength without a unit is in metres below 1e-6, else in angstroms. DIFC and DIFA are dtt1 and dtt2, in microseconds. Where no DIFC
// is told, the flight path L and the angle of the detectors give it: 505.556 L sin(theta), by the mass of the neutron.
//
// Sample, title and temperature come with them, see head_sample.hpp.
#pragma once

#include <optional>
#include <string_view>

#include "patterns/head_facts.hpp"
#include "patterns/head_sample.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

class Head_Constants {
public:
    void Take_Line(std::string_view line);  // in UTF-8
    void Take_Lines(std::string_view text);

    bool Tells_Flight() const { return Dtt1().has_value(); }
    bool Tells_Wavelength() const { return lambda1_.has_value(); }

    // What belongs to the pattern's variable, where the pattern has nothing yet: an angle or a spacing takes no dtt1, a time no wavelength.
    void Give(Diffraction_Pattern_Type& pattern) const;

    // The flight path and the angle of the detectors, where they are told.
    void Add_Facts(Fact_List& facts) const;

private:
    void Take_Wavelength(std::string_view before, std::string_view behind);
    void Take_Flight(std::string_view behind, std::optional<float>& value, bool positive);
    void Take_Path(std::string_view text);
    std::optional<float> Dtt1() const;

    Head_Sample sample_;
    std::optional<float> lambda1_, lambda2_, dtt1_, dtt2_;
    std::optional<double> path_, two_theta_;  // metres, degrees
    bool calibrated_ = false;                 // lambda 1 is, and no other replaces it
};

}  // namespace vntl
