#include "patterns/nexus/nexus_facts.hpp"

#include <optional>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/nexus/nexus_axis.hpp"
#include "patterns/nexus/nexus_stream.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_facts = 1000;

bool Is_Sound_Length(double value) { return value > 1e-3 && value < 1e3; }

// Facts with a name that all formats share. Blank units: any.
struct Shared_Name {
    std::string_view name, kind, group, units, shared;
};
constexpr Shared_Name shared_names[] = {
    {"scan_axis", "", "", "", "Scan axis"},
    {"start_time", "", "", "", "Date"},
    {"xray_tube_material", "", "", "", "Anode"},
    {"anode", "", "", "", "Anode"},
    {"xray_tube_voltage", "", "", "kV", "Voltage (kV)"},
    {"voltage", "NXsource", "source", "kV", "Voltage (kV)"},
    {"xray_tube_current", "", "", "mA", "Current (mA)"},
    {"current", "NXsource", "source", "mA", "Current (mA)"},
    {"name", "NXsample", "sample", "", "Sample"},
    {"name", "NXuser", "user", "", "User"},
    {"temperature", "NXsample", "sample", "K", "Temperature (K)"},
    {"count_time", "", "", "s", "Time a step (s)"},
};

bool Is_Of(std::string_view of_kind, std::string_view of_group, std::string_view kind, std::string_view group) {
    return (kind.empty() && group.empty()) || of_kind == kind || of_group == group;
}

std::optional<double> Number(const std::string& text) {
    double value = 0;
    if (!Parse_Real(text, value) || !Is_Sound(value)) return {};
    return value;
}

}  // namespace

void Nexus_Facts::Add(std::string_view record) {
    if (facts_.size() >= most_facts) return;
    const auto [path, kind, units, value] = nexus_stream::Fields<4>(record);
    const std::size_t slash = path.find_last_of('/');
    const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    const std::string_view above = slash == std::string_view::npos ? std::string_view{} : path.substr(0, slash);
    const std::string_view group = above.substr(above.find_last_of('/') + 1);
    facts_.push_back(
        {std::string(path), std::string(kind), std::string(Trim(units)), std::string(Trim(value)), std::string(name), std::string(group)});
}

const Nexus_Facts::Fact* Nexus_Facts::Find(std::string_view name, std::string_view kind, std::string_view group) const {
    for (const Fact& fact : facts_)
        if (fact.name == name && !fact.value.empty() && Is_Of(fact.kind, fact.group, kind, group)) return &fact;
    return nullptr;
}

// Of the beam: the energy of a source may be that of its electrons.
double Nexus_Facts::Wavelength(bool neutrons) const {
    struct Place {
        std::string_view name, kind, group;
        bool energy;
    };
    constexpr Place places[] = {
        {"wavelength", "NXmonochromator", "monochromator", false},
        {"incident_wavelength", "", "", false},
        {"wavelength", "NXbeam", "beam", false},
        {"energy", "NXmonochromator", "monochromator", true},
        {"incident_energy", "", "", true},
        {"energy", "NXbeam", "beam", true},
        {"wavelength", "NXinstrument", "instrument", false},
        {"wavelength", "NXsource", "source", false},
        {"wavelength", "", "", false},
    };
    for (const Place& place : places) {
        const Fact* const fact = Find(place.name, place.kind, place.group);
        const auto number = fact == nullptr ? std::nullopt : Number(fact->value);
        if (!number) continue;
        const auto length = place.energy ? Wavelength_Of_Energy(*number, fact->units, neutrons) : Nexus_Angstroms(*number, fact->units);
        if (length && Is_Sound_Length(*length)) return *length;
    }
    return 0;
}

// The lines of a tube.
void Nexus_Facts::Give_Tube(std::array<float, 5>& conv) const {
    constexpr std::string_view lines[] = {"k_alpha_one", "k_alpha_two", "ratio_k_alphatwo_k_alphaone", "kbeta"};
    for (std::size_t i = 0; i < std::size(lines); ++i) {
        const Fact* const fact = Find(lines[i], "", "");
        const auto number = fact == nullptr ? std::nullopt : Number(fact->value);
        if (!number || !(*number > 0)) continue;
        const auto value = i == 2 ? number : Nexus_Angstroms(*number, fact->units);
        if (value && *value < 1e3) conv[i] = static_cast<float>(*value);
    }
}

std::string Nexus_Facts::Radiation(std::string_view scat_var) const {
    const bool flight = Contains(scat_var, "TOF");
    const Fact* const probe = Find("probe", "", "");
    const std::string told = probe == nullptr ? std::string() : Lower(probe->value);
    if (Contains(told, "neutron")) return flight ? "neutrons_tof" : "neutrons_cw";
    if (Contains(told, "ray") || Contains(told, "photon")) return "xrays_cw";
    if (flight) return "neutrons_tof";
    return Find("k_alpha_one", "", "") != nullptr || Find("xray_tube_material", "", "") != nullptr ? "xrays_cw" : "unknown";
}

std::string Nexus_Facts::Title() const {
    const Fact* fact = Find("name", "NXsample", "sample");
    if (fact == nullptr) fact = Find("title", "", "");
    return fact == nullptr ? std::string() : Kept_Text(fact->value, title_width);
}

Fact_List Nexus_Facts::List() const {
    Fact_List list;
    for (const Fact& fact : facts_) {
        std::string name = fact.path;
        if (!fact.units.empty()) name += " (" + fact.units + ')';
        for (const Shared_Name& row : shared_names)
            if (row.name == fact.name && Is_Of(fact.kind, fact.group, row.kind, row.group) &&
                (row.units.empty() || row.units == fact.units))
                name = row.shared;
        list.Add(name, fact.value);
    }
    return list;
}

void Nexus_Facts::Give(Diffraction_Pattern_Type& p) const {
    p.title = Title();
    p.radiation = Radiation(p.scat_var);
    p.conv[0] = static_cast<float>(Wavelength(p.radiation.starts_with("neutrons")));
    if (p.radiation == "neutrons_tof") p.conv = {};
    Give_Tube(p.conv);
    if (const Fact* const fact = Find("temperature", "NXsample", "sample"))
        if (const auto number = Number(fact->value))
            if (const auto kelvin = Nexus_Kelvin(*number, fact->units); kelvin && *kelvin > 0) p.TSample = static_cast<float>(*kelvin);
    if (const Fact* const fact = Find("count_time", "", ""))
        if (const auto number = Number(fact->value))
            if (const auto seconds = Nexus_Seconds(*number, fact->units); seconds && *seconds > 0)
                p.count_time = static_cast<float>(*seconds);
    p.facts = List().Done();
}

}  // namespace vntl
