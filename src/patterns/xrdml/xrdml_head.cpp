#include "patterns/xrdml/xrdml_head.hpp"

#include <algorithm>
#include <cmath>

#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/temperature.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t deepest = 64, most_facts = 400, longest_fact = 400;
constexpr std::string_view incident = "incidentBeamPath", diffracted = "diffractedBeamPath";

// A tag with a text, within another one (blank: any), and what it tells.
struct Text_Row {
    std::string_view parent, name, fact;
};
constexpr Text_Row text_rows[] = {
    {"sample", "id", "Sample id"},
    {"sample", "name", "Sample"},
    {"sample", "preparedBy", "Prepared by"},
    {"comment", "entry", "Comment"},
    {"", "comment", "Comment"},
    {"xRayTube", "tension", "Voltage (kV)"},
    {"xRayTube", "current", "Current (mA)"},
    {"xRayTube", "anodeMaterial", "Anode"},
    {incident, "radius", "Goniometer radius (mm)"},
    {diffracted, "radius", "Goniometer radius (mm)"},
    {"header", "startTimeStamp", "Date"},
    {"header", "endTimeStamp", "End"},
    {"author", "name", "User"},
    {"source", "applicationSoftware", "Program"},
    {"source", "instrumentControlSoftware", "Instrument"},
    {"source", "instrumentID", "Instrument id"},
};

struct Attribute_Row {
    std::string_view tag, attribute, fact;
};
constexpr Attribute_Row attribute_rows[] = {
    {"sample", "type", "Sample type"},
    {"xrdMeasurement", "measurementType", "Measurement"},
    {"xrdMeasurement", "status", "Measurement status"},
    {"xrdMeasurement", "sampleMode", "Sample mode"},
    {"xrdMeasurement", "measurementStepAxis", "Step axis"},
    {"usedWavelength", "intended", "Wavelength used"},
    {"scan", "scanAxis", "Scan axis"},
    {"scan", "mode", "Scan mode"},
    {"scan", "status", "Scan status"},
};

void Add(Head_Facts& facts, std::string_view name, std::string_view content) {
    if (facts.size() >= most_facts || Trim(content).empty()) return;
    facts.push_back({std::string(name), Xml_Words(content.substr(0, 4 * longest_fact))});
}

// "divergenceSlit" is "Divergence slit".
std::string Words_Of(std::string_view name) {
    std::string words;
    for (const char c : name.substr(0, longest_fact)) {
        const bool capital = c >= 'A' && c <= 'Z';
        if (capital && !words.empty()) words += ' ';
        words += capital ? static_cast<char>(c - 'A' + 'a') : c;
    }
    if (!words.empty() && words[0] >= 'a' && words[0] <= 'z') words[0] = static_cast<char>(words[0] - 'a' + 'A');
    return Replace_All(words, "X ray", "X-ray");
}

bool Is_Temperature(const Tag_Walk& tags) {
    constexpr std::string_view word = "emperature";
    if (Contains(tags.Name(), "Rate") || Contains(tags.Name(), "Offset")) return false;
    return Contains(tags.Name(), word) || Contains(tags.Value("type"), word) || Contains(tags.Value("axis"), word);
}

// The mean of a text of nothing but numbers.
bool Mean_Of(std::string_view text, double& mean) {
    double sum = 0;
    int n = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (;; ++n) {
        while (at != end && Is_Xml_Space(*at)) ++at;
        if (at == end) break;
        double value = 0;
        const char* const first = at;
        at = Parse_Double(first, end, value);
        if (at == first || (at != end && !Is_Xml_Space(*at)) || !Is_Sound(value)) return false;
        sum += value;
    }
    mean = n > 0 ? sum / n : 0;
    return n > 0;
}

std::string_view File_Version(std::string_view attributes) {
    constexpr std::string_view before = "XRDMeasurement/";
    const std::size_t at = attributes.find(before);
    if (at == std::string_view::npos) return {};
    const std::string_view rest = attributes.substr(at + before.size());
    return rest.substr(0, rest.find_first_not_of("0123456789."));
}

}  // namespace

bool Xrdml_Head::Inside(std::string_view name) const { return std::find(open_.begin(), open_.end(), name) != open_.end(); }

std::string_view Xrdml_Head::Parent() const { return open_.empty() ? std::string_view() : open_.back(); }

Head_Facts& Xrdml_Head::Facts(Xrdml_Measurement& measurement, Xrdml_Scan& scan) {
    if (Inside("scan")) return scan.facts;
    return Inside("xrdMeasurement") ? measurement.facts : file_.facts;
}

bool Xrdml_Head::Take(Tag_Walk& tags, Xrdml_Measurement& measurement, Xrdml_Scan& scan) {
    const Tag_Walk tag = tags;
    std::string_view content;
    if (!tags.Content(content) && !tags.Empty()) return false;
    for (const Text_Row& row : text_rows) {
        if (tag.Name() != row.name || (!row.parent.empty() && Parent() != row.parent)) continue;
        Add(Facts(measurement, scan), row.fact, content);
        if (row.fact == "Sample") file_.sample_name = Kept_Text(Xml_Words(content.substr(0, 4 * title_width)), title_width);
        if (row.fact == "Sample id") file_.sample_id = Kept_Text(Xml_Words(content.substr(0, 4 * title_width)), title_width);
        return true;
    }
    Begin_Part(tag);
    if (part_depth_ == open_.size() + 1) {
        End_Part();
    } else if (part_depth_ != 0 && part_.value.size() < longest_fact && !Trim(content).empty()) {
        const std::string_view axis = tag.Value("axis"), unit = tag.Value("unit");
        part_.value += ", " + (axis.empty() ? Lower(Words_Of(tag.Name())) : std::string(axis)) + ' ';
        part_.value += Xml_Words(content.substr(0, longest_fact)) + (unit.empty() ? "" : ' ' + std::string(unit.substr(0, longest_fact)));
    }
    const bool within = temperature_depth_ != 0;
    if (within || Is_Temperature(tag))
        Take_Temperature(content, tag.Value("unit").empty() && within ? temperature_unit_ : tag.Value("unit"), measurement, scan);
    return true;
}

void Xrdml_Head::Take_Temperature(std::string_view content, std::string_view unit, Xrdml_Measurement& measurement, Xrdml_Scan& scan) {
    double value = 0;
    if (!Inside("xrdMeasurement") || Inside(incident) || Inside(diffracted) || !Mean_Of(content, value)) return;
    double& kept = Inside("scan") ? scan.temperature : measurement.temperature;
    if (!(kept > 0)) kept = In_Kelvin(value, Trim(unit).empty() ? "K" : unit);
}

// A part that stands in a beam, or moves the sample.
void Xrdml_Head::Begin_Part(const Tag_Walk& tags) {
    const bool in_beam = Parent() == incident || Parent() == diffracted;
    if (part_depth_ != 0 || !(in_beam || tags.Name() == "sampleMovement" || tags.Name() == "sampleOffset")) return;
    part_depth_ = open_.size() + 1;
    part_measurement_ = file_.measurements.size() - 1;
    part_.name = Words_Of(tags.Name());
    if (tags.Name() == "xRayTube")
        part_.name = "Tube";
    else if (in_beam && tags.Name() != "detector")
        part_.name += Parent() == incident ? " (incident beam)" : " (diffracted beam)";
    const std::string_view name = tags.Value("name");
    part_.value = Xml_Words((name.empty() ? tags.Value("xsi:type") : name).substr(0, longest_fact));
}

void Xrdml_Head::End_Part() {
    if (part_depth_ == 0) return;
    std::string_view value = part_.value;
    if (value.starts_with(", ")) value.remove_prefix(2);
    Head_Facts& facts = file_.measurements[part_measurement_].facts;
    if (facts.size() < most_facts && !value.empty()) facts.push_back({part_.name, std::string(value)});
    part_depth_ = 0;
}

void Xrdml_Head::Enter(const Tag_Walk& tags, Xrdml_Measurement& measurement, Xrdml_Scan& scan) {
    Begin_Part(tags);
    if (open_.size() < deepest)
        open_.push_back(tags.Name());
    else
        ++passed_;
    if (tags.Name() == "xrdMeasurements") Add(file_.facts, "File version", File_Version(tags.Attributes()));
    for (const Attribute_Row& row : attribute_rows)
        if (row.tag == tags.Name()) Add(Facts(measurement, scan), row.fact, tags.Value(row.attribute));
    if (temperature_depth_ == 0 && Is_Temperature(tags)) temperature_depth_ = open_.size(), temperature_unit_ = tags.Value("unit");
}

void Xrdml_Head::Leave(std::string_view name) {
    if (passed_ > 0) {
        --passed_;
        return;
    }
    const auto found = std::find(open_.rbegin(), open_.rend(), name);
    if (found == open_.rend()) return;
    open_.erase(found.base() - 1, open_.end());
    if (open_.size() < part_depth_) End_Part();
    if (open_.size() < temperature_depth_) temperature_depth_ = 0;
}

void Xrdml_Head::Finish() { End_Part(); }

}  // namespace vntl
