// The one line of head that a diffractometer's program puts above the columns it exports:
//
//   'Id: "" Comment: "" Operator: "" Anode: "Cu" Scantype: "Locked Coupled" TimePerStep: "0.1"
//
// Values stand in double quotes, or bare up to the next blank.
#pragma once

#include <string>
#include <string_view>

#include "patterns/head_facts.hpp"

namespace vntl {

struct Vendor_Line {
    std::string title;      // the name, or else the comment
    std::string scan_type;  // "Locked Coupled", "Z", ...
    double time = 0;        // seconds a step, 0 unknown
    bool per_second = false;
};

bool Is_Vendor_Line(std::string_view line);

// What the line says, which also goes to `facts`.
Vendor_Line Read_Vendor_Line(std::string_view line, Fact_List& facts);

}  // namespace vntl
