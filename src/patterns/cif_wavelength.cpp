#include "patterns/cif_wavelength.hpp"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "base/cif_words.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

constexpr double shortest = 1e-3, longest = 1e3;  // angstroms, that a pattern can be measured with
constexpr double doublet = 0.02;                  // by which the lines of one differ at most
constexpr std::size_t most_lines = 16;            // of a tube that one file lists
constexpr std::string_view wavelength_tag = "_diffrn_radiation_wavelength", weight_tag = "_diffrn_radiation_wavelength_wt";

struct Radiation_Line {
    double wavelength = 0, weight = 0;
};
using Radiation = std::vector<Radiation_Line>;

bool Number_Of(std::string_view word, double& value) { return Parse_Real(word.substr(0, word.find('(')), value); }

bool Names(std::string_view word, std::string_view tag) {
    std::string name = Lower(word);
    if (name == std::string(tag) + ".wavelength" || name == std::string(tag) + ".value") return true;
    std::replace(name.begin(), name.end(), '.', '_');
    return name == tag;
}

bool Is_Keyword(std::string_view line, std::string_view keyword) { return Equal_No_Case(line.substr(0, keyword.size()), keyword); }

void Add_Line(const std::string& wavelength, const std::string& weight, Radiation& radiation) {
    Radiation_Line line;
    if (!Number_Of(wavelength, line.wavelength) || line.wavelength < shortest || line.wavelength > longest) return;
    if (!Number_Of(weight, line.weight)) line.weight = 0;
    radiation.push_back(line);
}

// The heads and rows of a loop, `lines` behind its word. It stops in front of what is no longer the loop's.
void Read_Loop(Line_Cursor& lines, Radiation& radiation) {
    std::vector<std::string> heads, row;
    std::size_t place = std::string::npos, weight_place = std::string::npos;
    std::string_view line, word;
    for (Line_Cursor before = lines; lines.Next(line); before = lines) {
        const std::string_view trimmed = Trim(line);
        const bool head = trimmed.starts_with('_');
        if (head && row.empty() && radiation.empty()) {
            std::string_view rest = trimmed;
            Take_Cif_Word(rest, word);
            if (Names(word, wavelength_tag)) place = heads.size();
            if (Names(word, weight_tag)) weight_place = heads.size();
            heads.emplace_back(word);
            continue;
        }
        const bool over = head || Is_Keyword(trimmed, "loop_") || Is_Keyword(trimmed, "data_") || trimmed.starts_with(';');
        if (over || (place == std::string::npos && !trimmed.empty()) || radiation.size() >= most_lines) {
            lines = before;
            return;
        }
        for (std::string_view rest = trimmed; Take_Cif_Word(rest, word);) {
            row.emplace_back(word);
            if (row.size() < heads.size()) continue;
            Add_Line(row[place], weight_place < row.size() ? row[weight_place] : "", radiation);
            row.clear();
        }
    }
}

// The value of a tag, on its line or the next one.
void Read_Value(Line_Cursor& lines, std::string_view behind, Radiation& radiation) {
    std::string_view word, line;
    Line_Cursor ahead = lines;
    bool found = Take_Cif_Word(behind, word);
    while (!found && ahead.Next(line)) {
        if (Trim(line).starts_with('_')) return;
        found = Take_Cif_Word(line, word);
    }
    if (found) Add_Line(std::string(word), "", radiation);
}

// The lines of the block of `data`, or of the first block that tells any.
Radiation Find_Radiation(std::string_view text, const char* data) {
    Radiation first, of_block;
    Line_Cursor lines(text);
    std::string_view line, word;
    bool text_field = false;
    while (lines.Next(line)) {
        if (line.starts_with(';')) text_field = !text_field;
        const std::string_view trimmed = Trim_Left(line);
        if (text_field || trimmed.empty() || std::string_view("_lLdD").find(trimmed.front()) == std::string_view::npos) continue;
        if (Is_Keyword(trimmed, "data_")) {
            if (trimmed.data() > data && !first.empty()) return of_block.empty() ? first : of_block;
            if (trimmed.data() <= data) of_block.clear();
            continue;
        }
        Radiation found;
        std::string_view rest = trimmed;
        if (Is_Keyword(trimmed, "loop_"))
            Read_Loop(lines, found);
        else if (Take_Cif_Word(rest, word) && Names(word, wavelength_tag))
            Read_Value(lines, rest, found);
        if (found.empty()) continue;
        if (first.empty()) first = found;
        if (of_block.empty()) of_block = std::move(found);
    }
    return of_block.empty() ? first : of_block;
}

}  // namespace

void Take_Cif_Wavelengths(std::string_view text, const char* data, Diffraction_Pattern_Type& pattern) {
    Radiation lines = Find_Radiation(text, data);
    std::stable_sort(lines.begin(), lines.end(), [](const Radiation_Line& a, const Radiation_Line& b) {
        return std::pair(-a.weight, a.wavelength) < std::pair(-b.weight, b.wavelength);
    });
    if (lines.empty()) return;
    const auto [stronger, weight] = lines.front();
    pattern.conv[0] = static_cast<float>(stronger);
    const auto second = std::find_if(lines.begin() + 1, lines.end(), [stronger = stronger](const Radiation_Line& line) {
        return line.wavelength != stronger && std::fabs(line.wavelength - stronger) < doublet * stronger;
    });
    if (second == lines.end()) return;
    pattern.conv[1] = static_cast<float>(second->wavelength);
    if (weight > 0 && second->weight > 0) pattern.conv[2] = static_cast<float>(second->weight / weight);
}

}  // namespace vntl
