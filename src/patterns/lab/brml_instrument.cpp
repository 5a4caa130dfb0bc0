#include "patterns/lab/brml_instrument.hpp"

#include <algorithm>

#include "base/text.hpp"
#include "patterns/lab/brml_scan.hpp"
#include "patterns/temperature.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

// A length in angstroms.
double In_Angstroms(double value, std::string_view unit) {
    if (unit == "nm") return 10 * value;
    if (unit == "pm") return value / 100;
    return unit == "m" ? value * 1e10 : value;
}

// What an instrument's part is called, where that tells a user anything.
std::string_view Label(const Xml_Attributes& attributes) {
    for (const std::string_view name : {attributes["VisibleName"], attributes["LogicName"]})
        if (!name.empty() && !name.starts_with('?') && !name.starts_with("BrukerAXS.")) return name;
    return {};
}

bool Keep(float& place, double value, double most) {
    if (place == 0 && value > 0 && value < most) place = static_cast<float>(value);
    return true;
}

}  // namespace

double Brml_Number(std::string_view text) {
    double value = 0;
    return Parse_Real(text, value) && Is_Sound(value) ? value : not_told;
}

void Brml_Instrument::Start(const Xml_Path& path, const Xml_Attributes& attributes) {
    const std::string_view label = Label(attributes);
    labels_.resize(path.Depth());
    labels_.back() = label.empty() && labels_.size() > 1 ? labels_[labels_.size() - 2] : std::string(label);
    if (path.Name() == "InfoItem") Take_Item(attributes);
    if (!attributes["Value"].empty() && path.Name() != "InfoItem") Take(path, attributes["Value"], attributes["Unit"]);
}

void Brml_Instrument::End(const Xml_Path& path, std::string_view text) {
    labels_.resize(path.Depth());  // those of what lay in it are over
    if (text.empty() || path.Within("AlignmentRecords")) return;
    if (path.Name() == "TubeMaterial")
        facts.Add("Anode", text);
    else
        Add(path.Name(), text);
}

void Brml_Instrument::Take_Item(const Xml_Attributes& attributes) {
    const std::string_view name = attributes["Name"], value = attributes["Value"];
    if (name == "SampleName") sample = Trim(value);
    if (name == "Comment") comment = Trim(value);
    facts.Add(name == "SampleName" ? "Sample" : name, value);
}

void Brml_Instrument::Take(const Xml_Path& path, std::string_view text, std::string_view unit) {
    const std::string_view name = path.Name();
    const double value = Brml_Number(text);
    if (path.Parent() == "Tube" && Take_Wavelength(name, value, unit)) return;
    if (path.Parent() == "Generator" && name == "Voltage" && unit == "kV") return facts.Add("Voltage (kV)", text);
    if (path.Parent() == "Generator" && name == "Current" && unit == "mA") return facts.Add("Current (mA)", text);
    if (name == "Radius" && unit == "mm") return facts.Add("Goniometer radius (mm)", text);
    const std::string words = Lower(labels_.back()) + ' ' + Lower(name);
    const bool of_sample = Contains(words, "temperature") && !Contains(words, "tube") && !Contains(words, "detector") &&
                           !Contains(words, "cool") && !Contains(words, "water");
    if (of_sample && kelvin == 0) kelvin = In_Kelvin(value, unit);
    const bool dull = name.starts_with("Virtual") || (name.starts_with("Oscillation") && value == 0) || path.Within("AlignmentRecords");
    if (!dull) Add(name, unit.empty() ? std::string(text) : std::string(text) + ' ' + std::string(unit));
}

bool Brml_Instrument::Take_Wavelength(std::string_view name, double value, std::string_view unit) {
    if (name == "WaveLengthRatio") return Keep(conv[2], value, 10);
    value = In_Angstroms(value, unit);
    if (name == "WaveLengthAlpha1") return Keep(conv[0], value, 100);
    if (name == "WaveLengthAlpha2") return Keep(conv[1], value, 100);
    return name == "WaveLengthBeta" && Keep(conv[3], value, 100);
}

void Brml_Instrument::Add(std::string_view name, std::string_view value) {
    const std::string& label = labels_.empty() ? std::string() : labels_.back();
    facts.Add(label.empty() ? std::string(name) : label + ": " + std::string(name), value);
}

}  // namespace vntl
