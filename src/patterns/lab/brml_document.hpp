// The documents of a BRML archive: one of raw data, with its scans, and the one that tells of the sample and names the former.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/lab/brml_scan.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// What is known of the measurement beside its scans.
struct Brml_Container {
    std::vector<std::string> raw_data;  // names of members
    std::string sample, comment;
    Fact_List facts;
};

// What was read stays where the document breaks off.
Status Read_Brml_Container(std::string_view bytes, Brml_Container& container);

// Adds the patterns of a document, `bank` their scan's number in the file; `scans` counts on from those in front. Scans that cannot be read
// and warnings go to the notes. Fails where the document breaks off, with the scans in front of that place kept.
Status Read_Brml_Raw_Data(std::string_view bytes, const Brml_Container& container, int& scans,
                          std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
