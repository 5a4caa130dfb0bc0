#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/cif_words.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "crystal/cif_block.hpp"
#include "crystal/cif_symmetry.hpp"
#include "crystal/structure_lines.hpp"
#include "crystal/structure_readers.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_blocks = 10'000;

constexpr std::string_view too_many_phases = " => Too many phases in this file ";
constexpr std::string_view bad_atoms = " Error reading atoms";
constexpr std::string_view no_phase = " No phase with a cell in this CIF file ";

// A text of the file as one line that can be shown.
std::string Shown(std::string_view text, std::size_t width) {
    const auto is_control = [](char c) { return c >= 0 && c < ' '; };
    std::string shown = Kept_Text(text, width);
    std::replace_if(shown.begin(), shown.end(), is_control, ' ');
    return std::string(Trim(shown));
}

// A told text with what it is about.
Status Fail_About(std::string_view text, std::string_view what) {
    constexpr std::size_t width = 60;
    return Status::Fail(std::string(text) + ": " + Shown(what, width));
}

std::string Label_Of(std::string_view text) {
    constexpr std::size_t width = 80;
    return Shown(text, width);
}

constexpr std::string_view cell_names[] = {"_cell_length_a",    "_cell_length_b",   "_cell_length_c",
                                           "_cell_angle_alpha", "_cell_angle_beta", "_cell_angle_gamma"};
constexpr std::size_t lengths = 3;

bool Has_Cell(const Cif_Block& block) {
    for (std::size_t i = 0; i < lengths; ++i)
        if (Cif_Value_Known(block.singles[i])) return true;
    return false;
}
bool Has_Atoms(const Cif_Block& block) { return block.sites.rows > 0; }

// An angle that is not told is 90 degrees.
Status Read_Cell(const Cif_Block& block, Crystal_Cell_Type& cell) {
    std::array<float, lengths> length = {}, angle = {};
    for (std::size_t i = 0; i < std::size(cell_names); ++i) {
        double value = 0;
        const std::string_view text = Cif_Value_Known(block.singles[i]) ? block.singles[i] : std::string_view();
        const Status status = i < lengths || !text.empty() ? Read_Line_Of_Numbers(text, {&value, 1}) : Status::Done();
        if (status.failed) return Fail_About(status.message, std::string(cell_names[i]) + " " + std::string(text.substr(0, 40)));
        (i < lengths ? length[i] : angle[i - lengths]) = static_cast<float>(value);
    }
    return Set_Crystal_Cell(length, angle, cell);
}

std::string_view First_Known(const Cif_Block& block, std::initializer_list<Cif_Item> items) {
    for (const Cif_Item item : items)
        if (Cif_Value_Known(block.Single(item))) return block.Single(item);
    return {};
}

// Operators without quotes are words of their own at each blank: "x, y, z".
std::vector<std::string> Operators_Of(const Cif_Table& table) {
    std::vector<std::string> operators;
    const auto wanted = static_cast<std::size_t>(
        std::max(table.column[static_cast<std::size_t>(Cif_Item::xyz)], table.column[static_cast<std::size_t>(Cif_Item::xyz_new)]));
    const std::vector<std::string_view>& values = table.values;
    constexpr std::string_view blanks = " \t\r\n";
    constexpr std::ptrdiff_t commas = 2;
    std::size_t column = 0;
    for (std::size_t i = 0; i < values.size(); ++i, column = (column + 1) % table.width) {
        if (column != wanted || !Cif_Value_Known(values[i])) continue;
        std::string text(values[i].substr(0, values[i].find_last_not_of(blanks) + 1));
        auto found = std::count(text.begin(), text.end(), ',');
        while (i + 1 < values.size() && (found < commas || text.ends_with(',') || values[i + 1].starts_with(','))) {
            const std::string_view next = values[++i];
            found += std::count(next.begin(), next.end(), ',');
            text += next;
        }
        text.erase(std::remove_if(text.begin(), text.end(), [&](char c) { return blanks.find(c) != std::string_view::npos; }), text.end());
        operators.push_back(std::move(text));
    }
    return operators;
}

Status Read_Group(const Cif_Block& block, Space_Group_Type& group) {
    Cif_Symmetry symmetry;
    symmetry.symbol = First_Known(block, {Cif_Item::hm, Cif_Item::hm_alt, Cif_Item::hm_full});
    symmetry.hall = First_Known(block, {Cif_Item::hall, Cif_Item::hall_new});
    if (block.operators.width > 0) symmetry.operators = Operators_Of(block.operators);
    return Set_Group_Of_Cif(symmetry, group);
}

// False when the text is no number that an atom can have. An unknown value leaves `value`.
bool Read_Value(std::string_view text, double& value) {
    if (!Cif_Value_Known(text)) return true;
    return Read_Number(text, value).ok();
}

// A row of the table as a text for the user.
Status Fail_Row(const Cif_Table& table, std::size_t row) {
    std::string words;
    constexpr std::size_t shown = 10;
    for (std::size_t i = 0; i < std::min(table.width, shown) && row * table.width + i < table.values.size(); ++i)
        words += std::string(table.values[row * table.width + i].substr(0, 40)) + " ";
    return Fail_About(bad_atoms, words);
}

Status Check_Rows(const Cif_Table& table) {
    if (table.too_long) return Fail_About(bad_atoms, "more than " + std::to_string(Cif_Table::most_rows));
    return table.whole ? Status::Done() : Fail_Row(table, table.rows);
}

Status Read_Atom(const Cif_Table& sites, std::size_t row, Atom_Type& atom) {
    const std::string_view label = sites.Value(row, Cif_Item::label), type = sites.Value(row, Cif_Item::type_symbol);
    atom.label = Label_Of(sites.Has(Cif_Item::label) ? label : type);
    if (Cif_Value_Known(type)) atom.symbol = Element_Of(type);
    if (atom.symbol.empty()) atom.symbol = Element_Of(label);
    double occupancy = 1, u = 0, b = 0;
    const bool read = Read_Value(sites.Value(row, Cif_Item::fract_x), atom.x) && Read_Value(sites.Value(row, Cif_Item::fract_y), atom.y) &&
                      Read_Value(sites.Value(row, Cif_Item::fract_z), atom.z) &&
                      Read_Value(sites.Value(row, Cif_Item::occupancy), occupancy) && Read_Value(sites.Value(row, Cif_Item::u_iso), u) &&
                      Read_Value(sites.Value(row, Cif_Item::b_iso), b);
    if (!read) return Fail_Row(sites, row);
    atom.occupancy = static_cast<float>(occupancy);
    atom.biso = static_cast<float>(Cif_Value_Known(sites.Value(row, Cif_Item::u_iso)) ? u * b_of_u : b);
    return Status::Done();
}

bool Has_Place(const Cif_Table& sites, std::size_t row) {
    return Cif_Value_Known(sites.Value(row, Cif_Item::fract_x)) && Cif_Value_Known(sites.Value(row, Cif_Item::fract_y)) &&
           Cif_Value_Known(sites.Value(row, Cif_Item::fract_z));
}

// An atom whose place is not known is no part of the structure.
Status Read_Sites(const Cif_Table& sites, Atom_List& atoms) {
    const bool placed = sites.Has(Cif_Item::fract_x) && sites.Has(Cif_Item::fract_y) && sites.Has(Cif_Item::fract_z);
    if (sites.rows > 0 && !placed) return Fail_About(bad_atoms, "a column of coordinates is missing");
    if (Status status = Check_Rows(sites); status.failed) return status;
    for (std::size_t row = 0; row < sites.rows; ++row) {
        if (!Has_Place(sites, row)) continue;
        if (Status status = Read_Atom(sites, row, atoms.emplace_back()); status.failed) return status;
    }
    return Status::Done();
}

struct Thermal_Columns {
    Cif_Item first;
    Thermal_Form form;
};
constexpr Thermal_Columns thermal_columns[] = {
    {Cif_Item::u_11, Thermal_Form::u_ij}, {Cif_Item::b_11, Thermal_Form::b_ij}, {Cif_Item::beta_11, Thermal_Form::beta}};

// A row whose values are all unknown says nothing.
Status Read_Tensor(const Cif_Table& aniso, std::size_t row, const Crystal_Cell_Type& cell, Atom_Type& atom) {
    for (const auto& [first, form] : thermal_columns) {
        std::array<double, 6> values = {};
        bool known = false;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const std::string_view text = aniso.Value(row, static_cast<Cif_Item>(static_cast<std::size_t>(first) + i));
            if (!Read_Value(text, values[i])) return Fail_Row(aniso, row);
            known = known || Cif_Value_Known(text);
        }
        if (!known) continue;
        return Set_Anisotropic(form, values, cell, atom).ok() ? Status::Done() : Fail_Row(aniso, row);
    }
    return Status::Done();
}

// Labels that occur more than once are taken in their order.
Status Read_Anisotropic(const Cif_Table& aniso, const Crystal_Cell_Type& cell, Atom_List& atoms) {
    if (Status status = Check_Rows(aniso); status.failed) return status;
    const Cif_Item label = aniso.Has(Cif_Item::aniso_label) ? Cif_Item::aniso_label : Cif_Item::label;
    std::unordered_map<std::string_view, std::size_t> first;
    std::vector<std::size_t> next(atoms.size());  // atom of the same label, or the number of atoms
    for (std::size_t i = atoms.size(); i-- > 0;) {
        const auto [place, fresh] = first.try_emplace(atoms[i].label, i);
        next[i] = fresh ? atoms.size() : std::exchange(place->second, i);
    }
    for (std::size_t row = 0; row < aniso.rows; ++row) {
        const auto place = first.find(Label_Of(aniso.Value(row, label)));
        if (place == first.end() || place->second == atoms.size()) continue;
        const std::size_t i = std::exchange(place->second, next[place->second]);
        if (Status status = Read_Tensor(aniso, row, cell, atoms[i]); status.failed) return status;
    }
    return Status::Done();
}

Status Read_Phase(const Cif_Block& block, Crystal_Structure& structure) {
    if (Status status = Read_Cell(block, structure.cell); status.failed) return status;
    if (Status status = Read_Sites(block.sites, structure.atoms); status.failed) return status;
    if (Status status = Read_Group(block, structure.group); status.failed) return status;
    return Read_Anisotropic(block.aniso, structure.cell, structure.atoms);
}

// The first block with cell and atoms; without any, the first one with a cell, unless it is the one of what all blocks share.
Status Find_Phase(Cif_Words& words, std::optional<Cif_Block>& phase) {
    std::size_t blocks = 0;
    for (Cif_Word word = words.Next(); word.kind != Cif_Kind::end;) {
        Cif_Block block = Read_Cif_Block(words, word);
        if (!block.global && ++blocks > most_blocks) return Status::Fail(too_many_phases);
        const bool better = !phase ? !block.global || Has_Atoms(block) : !Has_Atoms(*phase) && Has_Atoms(block);
        if (Has_Cell(block) && better) phase = std::move(block);
    }
    return phase ? Status::Done() : Status::Fail(no_phase);
}

}  // namespace

Status Read_CIF(std::string_view text, Crystal_Structure& structure) {
    Cif_Words words(text);
    std::optional<Cif_Block> phase;
    Status status = Find_Phase(words, phase);
    if (status.ok()) status = Read_Phase(*phase, structure);
    if (const int line = words.Unclosed_Text(); line > 0 && (status.failed || structure.atoms.empty()))
        return Status::Fail(" The text that begins in line " + std::to_string(line) + " of this CIF file has no end ");
    return status;
}

}  // namespace vntl
