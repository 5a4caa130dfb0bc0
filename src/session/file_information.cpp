#include "session/file_information.hpp"

#include <algorithm>
#include <string>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "session/store.hpp"

namespace vntl {

namespace {

void Add(Head_Facts& facts, std::string_view name, std::string_view value) {
    if (!Trim(value).empty()) facts.push_back({std::string(name), std::string(Trim(value))});
}

void Add_Positive(Head_Facts& facts, std::string_view name, float value) {
    if (value > 0) Add(facts, name, IRealToString(value));
}

void Add_Constants(Head_Facts& facts, const Diffraction_Pattern_Type& pattern) {
    const auto& conv = pattern.conv;
    if (Contains(pattern.scat_var, "TOF")) {
        Add_Positive(facts, "dtt1 (\u00b5s/\u00c5)", conv[0]);
        if (conv[1] != 0) Add(facts, "dtt2 (\u00b5s/\u00c5\u00b2)", IRealToString(conv[1]));
        return;
    }
    Add_Positive(facts, "Wavelength 1 (\u00c5)", conv[0]);
    Add_Positive(facts, "Wavelength 2 (\u00c5)", conv[1]);
    Add_Positive(facts, "Ratio of the two", conv[2]);
    Add_Positive(facts, "Wavelength K-beta (\u00c5)", conv[3]);
}

}  // namespace

Head_Facts File_Information(const Profile_Store& store, int row) {
    const Diffraction_Pattern_Type& pattern = store.Pattern(row);
    const PRF_Info_Add_Type& info = store.Info(row);
    Head_Facts facts;
    Add(facts, "File", info.file_name);
    Add(facts, "Directory", info.directory);
    Add(facts, "Format", info.format);
    Add(facts, "Title", pattern.title);
    if (pattern.bank > 0) Add(facts, "Pattern of the file", std::to_string(pattern.bank));
    Add(facts, "Points", std::to_string(pattern.npts));
    if (pattern.npts_claimed > pattern.npts) Add(facts, "Points that the head claims", std::to_string(pattern.npts_claimed));
    Add(facts, "x", pattern.legend_x);
    Add(facts, "First x", IRealToString(pattern.xmin));
    Add(facts, "Last x", IRealToString(pattern.xmax));
    Add_Positive(facts, pattern.constant_step ? "Step" : "Mean step", pattern.step);
    Add(facts, "y", pattern.legend_y);
    Add_Constants(facts, pattern);
    if (pattern.TSample > known_temperature) Add(facts, "Temperature of the sample (K)", IRealToString(pattern.TSample));
    if (pattern.TSetting > known_temperature) Add(facts, "Temperature that was set (K)", IRealToString(pattern.TSetting));
    Add_Positive(facts, "Time a step (s)", pattern.count_time);
    Add_Positive(facts, "Monitor", pattern.monitor);
    if (pattern.facts == nullptr) return facts;
    for (const Head_Fact& fact : *pattern.facts) {
        const auto same = [&](const Head_Fact& told) { return told.name == fact.name && told.value == fact.value; };
        if (std::none_of(facts.begin(), facts.end(), same)) facts.push_back(fact);
    }
    return facts;
}

}  // namespace vntl
