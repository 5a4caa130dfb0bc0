// OSL files as they are written: what osl_structure.cpp tells of them, under lines of comment. Numbers have as many digits as give the same
// number back, so that a structure is the same when it is read again.
#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <vector>

#include "base/text.hpp"
#include "base/write_file.hpp"
#include "crystal/osl_lines.hpp"
#include "crystal/structure_file.hpp"

namespace vntl {

namespace {

constexpr std::string_view generated = "!  Automatically generated OSL file (Write_OSL)";
constexpr std::string_view cell_head = "!         a             b             c             alpha         beta          gamma";
constexpr std::string_view atom_head =
    "!      Atom  Type     x/a           y/b           z/c           Biso          Occ                Occ    Mult";

constexpr std::size_t number_width = 14, name_width = 4;
constexpr std::size_t coordinate_digits = 5, value_digits = 4;  // fewest behind the point

template <class Real>
std::string Digits(Real value, std::size_t least) {
    std::array<char, 512> buffer;
    std::string text(buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed).ptr);
    std::size_t point = text.find('.');
    if (point == std::string::npos) {
        point = text.size();
        text += '.';
    }
    if (text.size() - point - 1 < least) text.append(least - (text.size() - point - 1), '0');
    return text;
}

// A column of numbers, their points one below the other; what is too long moves the columns behind it.
template <class Real>
std::string Column(Real value, std::size_t least) {
    const std::string digits = Digits(value, least);
    std::string text = (digits.starts_with('-') ? "" : " ") + digits;
    text.resize(std::max(text.size() + 1, number_width), ' ');
    return text;
}

std::string Two_Decimals(double value) {
    constexpr std::size_t width = 8;
    std::array<char, 512> buffer;
    const std::string text(buffer.data(),
                           std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 2).ptr);
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string Padded(std::string text) {
    text.resize(std::max(text.size(), name_width), ' ');
    return text;
}

// --- the group ---------------------------------------------------------------------------------------------------------------------

bool Gives(std::string_view symbol, const Space_Group_Type& group) {
    Space_Group_Type read;
    return !Trim(symbol).empty() && !Set_SpaceGroup(symbol, read).failed && Operator_Set(read) == Operator_Set(group);
}

// The operators of the reduced set, the inversion, and the centring vectors.
std::vector<std::string> Generators_Of(const Space_Group_Type& group) {
    const std::vector<std::string>& all = group.operator_strings;
    const auto reduced = std::min(static_cast<std::size_t>(group.NumOps), all.size());
    std::vector<std::string> generators(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(reduced));
    if (reduced == 0) return generators;
    const std::size_t of_point = group.Centrosymmetric() ? 2 * reduced : reduced;
    if (of_point > reduced && reduced < all.size()) generators.push_back(all[reduced]);
    for (std::size_t i = of_point; i < all.size(); i += of_point) generators.push_back(all[i]);
    return generators;
}

bool Fixed(const Space_Group_Type& group) { return group.setting_type == fixed_operators; }

// One of its own symbols that leads back to these operators; blank where there is none.
std::string Own_Symbol(const Space_Group_Type& group) {
    if (!Fixed(group))
        for (const std::string& symbol : {group.hm_symbol, group.hall_symbol})
            if (Gives(symbol, group)) return symbol;
    return {};
}

bool Is_Number(std::string_view symbol) { return !symbol.empty() && symbol.front() >= '0' && symbol.front() <= '9'; }

// The symbol where there is one, else what makes the group.
std::vector<std::string> Group_Lines(const Space_Group_Type& group, std::string_view told) {
    std::vector<std::string> lines = {"!     Space Group # " + std::to_string(group.spg_number)};
    const bool by_told = !Fixed(group) && !Is_Number(told) && Gives(told, group);
    if (const std::string symbol = by_told ? std::string(told) : Own_Symbol(group); !symbol.empty()) {
        lines.push_back("Spgr  " + symbol);
        return lines;
    }
    for (const std::string& oper : Fixed(group) ? group.operator_strings : Generators_Of(group))
        lines.push_back((Fixed(group) ? "Fix  " : "Gen  ") + oper);
    return lines;
}

// --- cell and atoms ----------------------------------------------------------------------------------------------------------------

std::string Cell_Line(const Crystal_Cell_Type& cell) {
    std::string line = "Cell ";
    for (const auto& values : {cell.cell, cell.ang})
        for (const float value : values) line += Column(value, value_digits);
    return std::string(Trim_Right(line));
}

std::string Atom_Line(const Atom_Type& atom) {
    std::string line = "Atom   " + Padded(Osl_Word(atom.label)) + "  " + Padded(Osl_Word(atom.Species())) + "   ";
    for (const double value : {atom.x, atom.y, atom.z}) line += Column(value, coordinate_digits);
    for (const float value : {atom.biso, atom.occupancy}) line += Column(value, value_digits);
    return line + Two_Decimals(atom.occupancy) + Two_Decimals(atom.multiplicity) + "   " + (atom.aniso ? "! aniso" : "! isotr");
}

std::string Aniso_Line(const Atom_Type& atom) {
    std::string line = "Aniso  beta           ";
    for (const float value : atom.beta) line += Column(value, value_digits);
    return std::string(Trim_Right(line));
}

}  // namespace

std::string Osl_Word(std::string_view text) {
    std::string word(text.empty() ? "?" : text);
    for (char& c : word)
        if (static_cast<unsigned char>(c) <= ' ' || c == '!') c = '_';
    return word;
}

std::string Group_Text(const Space_Group_Type& group) {
    if (std::string symbol = Own_Symbol(group); !symbol.empty()) return symbol;
    std::string text;
    for (const std::string& oper : Fixed(group) ? group.operator_strings : Generators_Of(group))
        text += (text.empty() ? (Fixed(group) ? "Fix " : "Gen ") : "; ") + oper;
    return text;
}

std::vector<std::string> Osl_Structure_Lines(const Crystal_Structure& structure, std::string_view title, std::string_view symbol) {
    std::string head(title);
    for (char& c : head)
        if (c == '\n' || c == '\r') c = ' ';
    std::vector<std::string> lines = {"TITLE " + head, std::string(generated), std::string(cell_head), Cell_Line(structure.cell)};
    for (std::string& line : Group_Lines(structure.group, symbol)) lines.push_back(std::move(line));
    lines.emplace_back(structure.atoms.empty() ? "!  No atoms ..." : atom_head);
    for (const Atom_Type& atom : structure.atoms) {
        lines.push_back(Atom_Line(atom));
        if (atom.aniso) lines.push_back(Aniso_Line(atom));
    }
    return lines;
}

Status Write_OSL(const std::string& file, const Crystal_Structure& structure, std::string_view title) {
    return Write_Text_Lines(file, Osl_Structure_Lines(structure, title)) ? Status::Done()
                                                                         : Status::Fail_File("The file " + file + " cannot be written");
}

}  // namespace vntl
