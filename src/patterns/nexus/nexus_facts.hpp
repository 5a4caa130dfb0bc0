// What a NeXus entry tells of its measurement, gathered for its patterns.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "patterns/head_facts.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

class Nexus_Facts {
public:
    // The content of a record FACT.
    void Add(std::string_view record);

    // Title, radiation (unless it is known from x), wavelengths, temperature, time a step, and all facts.
    void Give(Diffraction_Pattern_Type& pattern) const;

private:
    struct Fact {
        std::string path, kind, units, value;
        std::string name, group;  // the last parts of the path
    };

    // The first fact of that name in a group of a class, or of a name, where these are not blank.
    const Fact* Find(std::string_view name, std::string_view kind, std::string_view group) const;
    double Wavelength(bool neutrons) const;
    void Give_Tube(std::array<float, 5>& conv) const;
    std::string Radiation(std::string_view scat_var) const;
    std::string Title() const;
    Fact_List List() const;

    std::vector<Fact> facts_;
};

}  // namespace vntl
