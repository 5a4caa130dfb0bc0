// The sample of a measurement, its title and its temperature, as the head lines of files of columns tell them.
//
//   # User sample name =  LaB6          #         sample Si          ! title: night run
//   # Temp (K) = 6.778                  ; Temperature: 25 C
//
// A temperature without a unit tells nothing: both scales are in use.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "patterns/pattern.hpp"

namespace vntl {

class Head_Sample {
public:
    void Take_Line(std::string_view line);  // in UTF-8

    // The sample, or else the title, where the pattern has no title yet; the temperature where it has none.
    void Give(Diffraction_Pattern_Type& pattern) const;

    const std::string& Sample() const { return sample_; }

private:
    std::string sample_, title_;
    std::optional<float> kelvin_;
};

// The temperature that a line tells, in kelvin; nothing where it is not one of the sample.
std::optional<float> Kelvin_Of_Line(std::string_view line);

}  // namespace vntl
