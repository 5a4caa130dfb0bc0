// The tube, the optics, the detectors and the drives of a BRML document, which hold for all its scans.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/xml_events.hpp"
#include "patterns/head_facts.hpp"

namespace vntl {

// A sound number that is the whole text, else not_told.
double Brml_Number(std::string_view text);

// Is told of all elements within <FixedInformation>.
class Brml_Instrument {
public:
    void Start(const Xml_Path& path, const Xml_Attributes& attributes);
    void End(const Xml_Path& path, std::string_view text);

    std::array<float, 5> conv{};  // as that of a pattern
    double kelvin = 0;            // of the sample; 0 where it is not told
    std::string sample, comment;
    Fact_List facts;

private:
    void Take_Item(const Xml_Attributes& attributes);
    void Take(const Xml_Path& path, std::string_view text, std::string_view unit);
    bool Take_Wavelength(std::string_view name, double value, std::string_view unit);
    void Add(std::string_view name, std::string_view value);

    std::vector<std::string> labels_;  // of the open elements
};

}  // namespace vntl
