#include "patterns/cif/cif_wavelength.hpp"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "base/text.hpp"

namespace vntl {

namespace {

constexpr double shortest = 1e-3, longest = 1e3;  // angstroms, that a pattern can be measured with
constexpr double doublet = 0.02;                  // by which the lines of one differ at most
constexpr std::size_t most_lines = 16;            // of a tube that one file lists
constexpr std::string_view tag = "_diffrn_radiation_wavelength";

bool Number_Of(std::string_view word, double& value) { return Parse_Real(word.substr(0, word.find('(')), value); }

}  // namespace

bool Is_Cif_Wavelength(std::string_view name) {
    if (!name.starts_with(tag)) return false;
    name.remove_prefix(tag.size());
    return name.empty() || name == "_wavelength" || name == "_value";
}

bool Is_Cif_Wavelength_Weight(std::string_view name) { return name.starts_with(tag) && name.substr(tag.size()) == "_wt"; }

void Cif_Radiation::Add(std::string_view wavelength, std::string_view weight) {
    Line line;
    if (lines_.size() >= most_lines || !Number_Of(wavelength, line.wavelength)) return;
    if (!(line.wavelength >= shortest && line.wavelength <= longest)) return;
    constexpr double largest_weight = 1e9;
    if (!Number_Of(weight, line.weight) || !(line.weight > 0 && line.weight < largest_weight)) line.weight = 0;
    lines_.push_back(line);
}

void Cif_Radiation::Give(Diffraction_Pattern_Type& pattern) const {
    std::vector<Line> lines = lines_;
    std::stable_sort(lines.begin(), lines.end(),
                     [](const Line& a, const Line& b) { return std::pair(-a.weight, a.wavelength) < std::pair(-b.weight, b.wavelength); });
    if (lines.empty()) return;
    const auto [stronger, weight] = lines.front();
    pattern.conv[0] = static_cast<float>(stronger);
    const auto second = std::find_if(lines.begin() + 1, lines.end(), [stronger = stronger](const Line& line) {
        return line.wavelength != stronger && std::fabs(line.wavelength - stronger) < doublet * stronger;
    });
    if (second == lines.end()) return;
    pattern.conv[1] = static_cast<float>(second->wavelength);
    if (weight > 0 && second->weight > 0) pattern.conv[2] = static_cast<float>(second->weight / weight);
}

}  // namespace vntl
