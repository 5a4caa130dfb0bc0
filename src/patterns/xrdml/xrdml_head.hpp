// What an XRDML file tells beside its positions and counts: the sample, the tube, what stands in the beams, times, people, programs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "patterns/xrdml/xml_tags.hpp"
#include "patterns/xrdml/xrdml_file.hpp"

namespace vntl {

// Follows a walk over the tags of a file.
class Xrdml_Head {
public:
    explicit Xrdml_Head(Xrdml_File& file) : file_(file) {}

    // Takes the text of a tag, behind which the walk is then; false where the tag has none, or none that tells anything.
    bool Take(Tag_Walk& tags, Xrdml_Measurement& measurement, Xrdml_Scan& scan);
    // What stands between this tag and its closing one belongs to it.
    void Enter(const Tag_Walk& tags, Xrdml_Measurement& measurement, Xrdml_Scan& scan);
    void Leave(std::string_view name);
    void Finish();

private:
    bool Inside(std::string_view name) const;
    std::string_view Parent() const;
    Head_Facts& Facts(Xrdml_Measurement& measurement, Xrdml_Scan& scan);
    void Take_Temperature(std::string_view content, std::string_view unit, Xrdml_Measurement& measurement, Xrdml_Scan& scan);
    void Begin_Part(const Tag_Walk& tags);
    void End_Part();

    Xrdml_File& file_;
    std::vector<std::string_view> open_;  // names of the tags in hand, the outermost first
    std::size_t passed_ = 0;              // tags in hand that are too deep to be kept
    std::size_t part_depth_ = 0;          // of a part of the diffractometer; 0 is none
    std::size_t part_measurement_ = 0;    // index of its measurement
    Head_Fact part_;
    std::size_t temperature_depth_ = 0;
    std::string_view temperature_unit_;
};

}  // namespace vntl
