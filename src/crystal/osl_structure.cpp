// OSL files: a keyword, in either case, and its values on each line.
//
//   Title  lead sulphate
//   Cell   8.4851 5.4021 6.9641 90 90 90
//   Spgr   P n m a                                  symbol or number; also Spaceg and Shub
//   Gen    -x,-y,-z                                 one generator a line, in place of a symbol
//   Fix    x,y,z                                    one operator a line: these are the group, as they stand
//   Atom   Pb1  PB  0.18748 1/4 0.16721 1.39 0.5    label, element, x, y, z, biso, occupancy
//   Aniso  u_ij  0.01 0.02 0.01 0 0.001 0           of the atom above: 11 22 33 12 13 23
//
// What stands behind "!" is a comment. A line that begins with "phase_" opens a phase; the first phase with a cell serves. Other keywords
// tell of patterns and refinements.
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "crystal/osl_lines.hpp"
#include "crystal/structure_lines.hpp"
#include "crystal/structure_readers.hpp"

namespace vntl {

namespace {

constexpr std::string_view no_cell = " Bad Cell Parameters...";
constexpr std::string_view bad_group = " Problems reading the Space Group symbol/number";
constexpr std::string_view bad_tensor = "Error reading the anisotropic thermal parameters of atom:";

struct Osl_Phase {
    std::optional<std::string_view> cell, symbol;
    std::vector<std::string> generators, operators;
    std::vector<Structure_Line> atoms;  // and the anisotropic values behind them
};

std::optional<Thermal_Form> Form_Of(std::string_view word) {
    constexpr std::pair<std::string_view, Thermal_Form> forms[] = {
        {"u_ij", Thermal_Form::u_ij}, {"b_ij", Thermal_Form::b_ij}, {"beta", Thermal_Form::beta}, {"beta_ij", Thermal_Form::beta}};
    for (const auto& [name, form] : forms)
        if (Equal_No_Case(word, name)) return form;
    return {};
}

void Take_Line(const Structure_Line& line, Osl_Phase& phase) {
    constexpr std::size_t longest_keyword = 8;
    const std::string_view word = First_Word(line.text);
    const std::string key = Lower(word.substr(0, longest_keyword));
    const std::string_view rest = Trim(line.text.substr(word.size()));
    if (key == "cell")
        phase.cell = phase.cell.value_or(rest);
    else if (key.starts_with("spgr") || key.starts_with("spaceg") || key.starts_with("shub"))
        phase.symbol = phase.symbol.value_or(rest);
    else if (key == "gen" || key.starts_with("gener"))
        phase.generators.emplace_back(rest);
    else if (key == "fix")
        phase.operators.emplace_back(rest);
    else if (const Osl_Line kind = Osl_Line_Of(line.text); kind == Osl_Line::atom || kind == Osl_Line::thermal)
        phase.atoms.push_back(line);
}

// Up to the end of the first phase with a cell; that of the last phase where none has one.
Osl_Phase First_Phase(std::string_view text) {
    constexpr std::string_view opener = "phase_";
    Osl_Phase phase;
    Line_Cursor lines(text);
    for (std::string_view line; lines.Next(line);) {
        line = Without_Comment(line);
        if (!Equal_No_Case(line.substr(0, opener.size()), opener))
            Take_Line({line, lines.Number()}, phase);
        else if (phase.cell)
            break;
        else
            phase = {};
    }
    return phase;
}

// Within a Hall symbol they mean axes.
std::string_view Without_Outer_Quotes(std::string_view symbol) {
    const bool quoted = symbol.size() > 1 && symbol.front() == symbol.back() && (symbol.front() == '\'' || symbol.front() == '"');
    return quoted ? symbol.substr(1, symbol.size() - 2) : symbol;
}

// Operators or generators are more exact than a symbol that stands beside them.
Status Read_Group(const Osl_Phase& phase, Space_Group_Type& group) {
    if (!phase.operators.empty()) return Set_SpaceGroup({}, group, phase.operators, "FIX");
    if (!phase.generators.empty()) return Set_SpaceGroup({}, group, phase.generators, "GEN");
    const bool failed = Set_SpaceGroup(Without_Outer_Quotes(phase.symbol.value_or("")), group).failed;
    return failed ? Status::Fail(bad_group) : Status::Done();
}

// "0.25", "0.25(1)" or "1/4".
Status Read_Coordinate(std::string_view word, double& value) {
    const std::size_t slash = word.find('/');
    if (slash == std::string_view::npos) return Read_Number(word, value);
    double above = 0, below = 0;
    if (Status status = Read_Number(word.substr(0, slash), above); status.failed) return status;
    if (Status status = Read_Number(word.substr(slash + 1), below); status.failed) return status;
    if (std::fabs(below) < 1) return Status::Fail(bad_format);
    value = above / below;
    return Status::Done();
}

// Biso is 0 and the occupancy 1 where the line ends before them.
Status Read_Atom(Line_Words words, Atom_Type& atom) {
    enum Place : std::size_t { keyword, label, symbol, x, y, z, biso, occupancy };
    if (words.size() <= z) return Status::Fail(blank_line);
    atom.label = To_Utf8(words[label]);
    atom.symbol = Element_Of(words[symbol]);
    atom.species = To_Utf8(words[symbol]);
    for (const auto& [place, value] : {std::pair(x, &atom.x), {y, &atom.y}, {z, &atom.z}})
        if (Status status = Read_Coordinate(words[place], *value); status.failed) return status;
    for (const auto& [place, value] : {std::pair(biso, &atom.biso), {occupancy, &atom.occupancy}})
        if (place < words.size() && !Form_Of(words[place]))
            if (Status status = Read_Number(words[place], *value); status.failed) return status;
    return Status::Done();
}

// The form may stand in the line of the atom, `form` then; the line of values may repeat the label.
bool Read_Tensor(Line_Words words, std::optional<Thermal_Form> form, const Crystal_Cell_Type& cell, Atom_Type& atom) {
    std::array<double, 6> values = {};
    std::size_t n = 0;
    for (const std::string_view word : words) {
        double value = 0;
        if (const auto told = Form_Of(word))
            form = told;
        else if (!Read_Number(word, value).failed && n < values.size())
            values[n++] = value;
        else if (n > 0 || (!Equal_No_Case(word, "aniso") && To_Utf8(word) != atom.label))
            return false;
    }
    if (!form || n < values.size()) return false;
    return Set_Anisotropic(*form, values, cell, atom).ok();
}

// The label names the line of an atom that was read.
Status Read_Atoms(const std::vector<Structure_Line>& lines, const Crystal_Cell_Type& cell, Atom_List& atoms) {
    Osl_Atom_Reader reader(cell, atoms);
    for (const Structure_Line& line : lines) {
        const bool atom = Osl_Line_Of(line.text) == Osl_Line::atom;
        const Status status = atom ? reader.Take_Atom(line.text) : reader.Take_Thermal(line.text);
        if (status.failed) return atom || atoms.empty() ? Refused(status.message, line) : status;
    }
    return Status::Done();
}

}  // namespace

Osl_Line Osl_Line_Of(std::string_view line) {
    const std::string_view word = First_Word(Without_Comment(line));
    if (word.empty()) return Osl_Line::blank;
    if (Equal_No_Case(word, "atom")) return Osl_Line::atom;
    return Equal_No_Case(word, "aniso") || Form_Of(word) ? Osl_Line::thermal : Osl_Line::other;
}

Status Osl_Atom_Reader::Take_Atom(std::string_view line) {
    const std::vector<std::string_view> words = Words_Of(Without_Comment(line));
    form_.reset();
    for (std::size_t i = 6; i < words.size() && !form_; ++i) form_ = Form_Of(words[i]);
    return Read_Atom(words, atoms_.emplace_back());
}

Status Osl_Atom_Reader::Take_Thermal(std::string_view line) {
    if (atoms_.empty()) return Status::Fail(bad_tensor);
    const std::optional<Thermal_Form> form = form_ || !beta_untold_ ? form_ : Thermal_Form::beta;
    if (Read_Tensor(Words_Of(Without_Comment(line)), form, cell_, atoms_.back())) return Status::Done();
    return Status::Fail(std::string(bad_tensor) + atoms_.back().label);
}

Status Read_Cell_Text(std::string_view text, Crystal_Cell_Type& cell) { return Read_Cell_Line(Without_Comment(text), cell); }

Status Read_Group_Text(std::string_view text, Space_Group_Type& group) {
    text = Without_Comment(text);
    const std::string_view word = First_Word(text);
    const bool generators = Equal_No_Case(word, "gen"), fixed = Equal_No_Case(word, "fix");
    if (!generators && !fixed) return Set_SpaceGroup(Without_Outer_Quotes(text), group);
    std::vector<std::string> operators;
    for (std::string_view rest = text.substr(word.size()); !Trim(rest).empty();) {
        const std::size_t end = std::min(rest.find(';'), rest.size());
        if (const std::string_view oper = Trim(rest.substr(0, end)); !oper.empty()) operators.emplace_back(oper);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return Set_SpaceGroup({}, group, operators, fixed ? "FIX" : "GEN");
}

Status Read_OSL(std::string_view text, Crystal_Structure& structure) {
    const Osl_Phase phase = First_Phase(text);
    if (!phase.cell || Read_Cell_Line(*phase.cell, structure.cell).failed) return Status::Fail(no_cell);
    if (Status status = Read_Group(phase, structure.group); status.failed) return status;
    return Read_Atoms(phase.atoms, structure.cell, structure.atoms);
}

}  // namespace vntl
