// The listing of a space group: a line a field, then its operators and Wyckoff positions.
#include <cstdio>

#include "base/text.hpp"
#include "crystal/space_group.hpp"

namespace vntl {

namespace {

constexpr std::size_t multiplicity_width = 8, site_width = 12, operators_in_line = 2, operator_width = 36;

std::string Padded(std::string text, std::size_t width) {
    text.resize(std::max(width, text.size() + 1), ' ');
    return text;
}

std::string Right(const std::string& text, std::size_t width) {
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

std::string Decimals(float value) {
    char text[16];
    std::snprintf(text, sizeof text, "%8.5f", static_cast<double>(value));
    return text;
}

std::string Point(const std::array<float, 3>& v) { return Decimals(v[0]) + Decimals(v[1]) + Decimals(v[2]); }

void Put_Fields(const Space_Group_Type& g, std::vector<std::string>& lines) {
    const auto put = [&](std::string_view label, std::string_view text) { lines.push_back(std::string(label) + std::string(text)); };
    put(" =>   Number of Space group: ", std::to_string(g.spg_number));
    put(" =>  Hermann-Mauguin Symbol: ", g.hm_symbol);
    put(" =>             Hall Symbol: ", g.hall_symbol);
    if (!g.general_hall.empty()) put(" => Generalized Hall Symbol: ", g.general_hall);
    put(" =>    Table Setting Choice: ", g.table_choice);
    put(" =>            Setting Type: ", g.setting_type);
    put(" =>          Crystal System: ", g.crystal_system);
    put(" =>              Laue Class: ", g.laue_class);
    put(" =>             Point Group: ", g.point_group);
    put(" =>         Bravais Lattice: ", Trim_Left(g.bravais_text));
    put(" =>          Lattice Symbol: ", g.lattice_symbol);
    put(" =>  Reduced Number of S.O.: ", std::to_string(g.NumOps));
    put(" =>    General multiplicity: ", std::to_string(g.Multip));
    put(" =>          Centrosymmetry: ", g.centre_text);
    if (g.centring == 0) put(" =>               Centre at: ", Point(g.centre_at));
    put(" =>  Generators (exc. -1&L): ", std::to_string(g.n_generators));
    constexpr std::string_view asym_label = " =>         Asymmetric unit: ", bounds[] = {" <= x <= ", " <= y <= ", " <= z <= "};
    for (std::size_t i = 0; i < 3; ++i)
        put(i == 0 ? std::string(asym_label) : std::string(asym_label.size(), ' '),
            Decimals(g.asym_unit[i][0]) + std::string(bounds[i]) + Decimals(g.asym_unit[i][1]));
}

void Put_Lattice(const Space_Group_Type& g, std::vector<std::string>& lines) {
    if (g.n_lattice < 2) return;
    lines.push_back(g.lattice_letter == "Z" ? " => Non-conventional Centring vectors:" : " => Centring vectors:");
    for (std::size_t i = 1; i < g.lattice_vectors.size(); ++i)
        lines.push_back(" => Latt(" + std::to_string(i) + "): " + Point(g.lattice_vectors[i]));
}

void Put_Operators(const Space_Group_Type& g, std::vector<std::string>& lines) {
    lines.push_back("");
    lines.push_back(" => List of all Symmetry Operators:");
    lines.push_back("");
    const std::size_t count = g.operator_strings.size(), rows = (count + operators_in_line - 1) / operators_in_line;
    for (std::size_t row = 0; row < rows; ++row) {
        std::string line;
        for (std::size_t i = row; i < count; i += rows)
            line += Padded("  (" + Right(std::to_string(i + 1), 3) + ")  " + g.operator_strings[i], operator_width);
        lines.push_back(std::string(Trim_Right(line)));
    }
}

void Put_Wyckoff(const Space_Group_Type& g, std::vector<std::string>& lines) {
    if (g.wyckoff.empty()) return;
    lines.push_back("");
    lines.push_back("    Multp     Site        Representative Coordinates (centring translations excluded)");
    for (const Wyckoff_Orbit& orbit : g.wyckoff) {
        const std::string head = Right(std::to_string(orbit.multiplicity), multiplicity_width) + "      " + Padded(orbit.site, site_width);
        std::string line = head;
        for (const std::string& point : orbit.orbit) {
            if (line.size() + point.size() > 130) {
                lines.push_back(std::string(Trim_Right(line)));
                line = std::string(head.size(), ' ');
            }
            line += '(' + point + ") ";
        }
        lines.push_back(std::string(Trim_Right(line)));
    }
}

}  // namespace

std::vector<std::string> List_Space_Group(const Space_Group_Type& group, bool full) {
    std::vector<std::string> lines = {"        Information on Space Group: ", "        --------------------------- ", ""};
    Put_Fields(group, lines);
    Put_Lattice(group, lines);
    if (full) {
        Put_Operators(group, lines);
        Put_Wyckoff(group, lines);
    }
    return lines;
}

}  // namespace vntl
