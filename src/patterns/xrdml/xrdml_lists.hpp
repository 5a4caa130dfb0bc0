// The numbers of one scan of an XRDML file.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/xrdml/xrdml_file.hpp"

namespace vntl {

Status Xrdml_Ended_At(std::string_view sought);

// False where something else than a number stands there.
bool Read_Xrdml_List(std::string_view text, std::vector<float>& values);

struct Xrdml_Lists {
    std::string_view axis;  // that was scanned
    std::vector<float> counts;
    std::vector<float> factors;    // of attenuation: none, one for all, or one a count
    std::vector<float> positions;  // of the axis that was scanned; none where it has start and end
    bool corrected = false;        // the counts are multiplied by the factors already
    float start = 0, end = 0;      // of the positions
    double time = 0;               // seconds a count, their mean; 0 is not told
    bool times_differ = false;
    bool divergence = false;  // there are corrections for it, which change something
    std::size_t planned = 0;  // counts that other lists of the scan were made for; 0 is not told
    bool whole = true;        // no count was given up or lost
};

// Fails where the positions or counts are missing or cannot be read. Vectors keep their memory from scan to scan.
Status Read_Xrdml_Lists(const Xrdml_Scan& scan, bool intensities, Xrdml_Lists& lists);

}  // namespace vntl
