// The conditions of one scan of a RASX archive.
#pragma once

#include <string>
#include <string_view>

#include "base/status.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

struct Rasx_Conditions {
    Diffraction_Pattern_Type told;  // title, wavelengths, temperature, time a step, whether y is counts a second
    std::string axis;               // that was scanned
    double count = 0;               // points that are promised
    Fact_List facts;                // all that it tells
};

// What was read stays where the document breaks off.
Status Read_Rasx_Conditions(std::string_view bytes, Rasx_Conditions& conditions);

}  // namespace vntl
