// What stands in an XRDML file, found but not read: its measurements with their scans, and where the lists of each are. The layout is in
// xrdml.hpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"

namespace vntl {

// A text that was found, though it may be empty.
struct Xml_Found {
    bool given = false;
    bool cut = false;  // the file ends within it
    std::string_view text;
};

// Where an axis of the diffractometer stood in a scan.
struct Xrdml_Axis {
    std::string_view name, unit;
    Xml_Found start, end, list, common;

    bool Moves() const;   // by more than play
    bool Stands() const;  // it was told where, and it stood there all the time
    // From where to where: twice the same place where it stood. False where it is not told.
    bool Ends(double& from, double& to) const;
};

struct Xrdml_Scan {
    std::size_t number = 0;  // in its measurement, from 1
    std::string_view scan_axis, status;
    std::vector<Xrdml_Axis> axes;  // none: it has no positions of its own
    Xml_Found intensities, counts, factors, divergence, time, times;
    double temperature = 0;   // of the sample, kelvin; 0 is not told
    bool per_second = false;  // the list is of rates
    Head_Facts facts;

    bool Aborted() const { return status == "Aborted"; }
    bool Has_List() const { return intensities.given || counts.given; }
    const Xrdml_Axis* Find(std::string_view name) const;
    // The one that was scanned. "2Theta-Omega" or "Gonio" names none, but those that moved are told. Null where 2Theta is not.
    const Xrdml_Axis* Scanned() const;
};

struct Xrdml_Measurement {
    Xml_Found alpha1, alpha2, beta, ratio;
    std::string_view step_axis;  // of an area: what was moved between its scans
    double temperature = 0;      // of scans that tell none
    std::vector<Xrdml_Scan> scans;
    Head_Facts facts;
};

struct Xrdml_File {
    std::string sample_name, sample_id;
    std::vector<Xrdml_Measurement> measurements;  // one at least
    Head_Facts facts;
    bool too_many = false;  // scans: no more were looked for
};

// The views of the result look into `text`, which is plain (see Plain_Xml).
Xrdml_File Find_In_Xrdml(std::string_view text);

}  // namespace vntl
