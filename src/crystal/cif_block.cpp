#include "crystal/cif_block.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "base/text.hpp"

namespace vntl {

namespace {

struct Item_Name {
    std::string_view name;  // in small letters, without points
    Cif_Item item;
};
constexpr Item_Name names[] = {
    {"_cell_length_a", Cif_Item::length_a},
    {"_cell_length_b", Cif_Item::length_b},
    {"_cell_length_c", Cif_Item::length_c},
    {"_cell_angle_alpha", Cif_Item::angle_alpha},
    {"_cell_angle_beta", Cif_Item::angle_beta},
    {"_cell_angle_gamma", Cif_Item::angle_gamma},
    {"_symmetry_space_group_name_h-m", Cif_Item::hm},
    {"_space_group_name_h-m_alt", Cif_Item::hm_alt},
    {"_space_group_name_h-m_full", Cif_Item::hm_full},
    {"_symmetry_space_group_name_hall", Cif_Item::hall},
    {"_space_group_name_hall", Cif_Item::hall_new},
    {"_symmetry_equiv_pos_as_xyz", Cif_Item::xyz},
    {"_space_group_symop_operation_xyz", Cif_Item::xyz_new},
    {"_atom_site_label", Cif_Item::label},
    {"_atom_site_type_symbol", Cif_Item::type_symbol},
    {"_atom_site_fract_x", Cif_Item::fract_x},
    {"_atom_site_fract_y", Cif_Item::fract_y},
    {"_atom_site_fract_z", Cif_Item::fract_z},
    {"_atom_site_occupancy", Cif_Item::occupancy},
    {"_atom_site_u_iso_or_equiv", Cif_Item::u_iso},
    {"_atom_site_b_iso_or_equiv", Cif_Item::b_iso},
    {"_atom_site_aniso_label", Cif_Item::aniso_label},
};

struct Tensor_Name {
    std::string_view name;  // without the two indices
    Cif_Item first;
};
constexpr Tensor_Name tensors[] = {
    {"_atom_site_aniso_u_", Cif_Item::u_11},
    {"_atom_site_aniso_b_", Cif_Item::b_11},
    {"_atom_site_aniso_beta_", Cif_Item::beta_11},
};
constexpr std::string_view tensor_indices[] = {"11", "22", "33", "12", "13", "23"};
constexpr std::size_t longest_name = 40;

// Cif_Item::count for an item that says nothing here.
Cif_Item Item_Of(std::string_view word) {
    if (word.size() > longest_name) return Cif_Item::count;
    std::string name = Lower(word);
    std::replace(name.begin(), name.end(), '.', '_');
    for (const auto& [known, item] : names)
        if (known == name) return item;
    for (const auto& [known, first] : tensors) {
        if (!name.starts_with(known)) continue;
        const auto* const indices = std::find(std::begin(tensor_indices), std::end(tensor_indices), name.substr(known.size()));
        if (indices != std::end(tensor_indices))
            return static_cast<Cif_Item>(static_cast<int>(first) + static_cast<int>(indices - std::begin(tensor_indices)));
    }
    return Cif_Item::count;
}

bool Holds_Sites(const Cif_Table& table) {
    return (table.Has(Cif_Item::label) || table.Has(Cif_Item::type_symbol)) &&
           (table.Has(Cif_Item::fract_x) || table.Has(Cif_Item::fract_y) || table.Has(Cif_Item::fract_z));
}
bool Holds_Aniso(const Cif_Table& table) {
    return (table.Has(Cif_Item::aniso_label) || table.Has(Cif_Item::label)) &&
           (table.Has(Cif_Item::u_11) || table.Has(Cif_Item::b_11) || table.Has(Cif_Item::beta_11));
}
bool Holds_Operators(const Cif_Table& table) { return table.Has(Cif_Item::xyz) || table.Has(Cif_Item::xyz_new); }

// Templates leave tables of question marks.
void Keep_Table(Cif_Table&& table, Cif_Block& block) {
    if (std::none_of(table.values.begin(), table.values.end(), Cif_Value_Known)) return;
    if (Holds_Aniso(table) && block.aniso.values.empty()) block.aniso = table;
    if (Holds_Operators(table) && block.operators.values.empty()) block.operators = table;
    if (Holds_Sites(table) && block.sites.values.empty()) block.sites = std::move(table);
}

void Keep_Single(Cif_Item item, std::string_view value, Cif_Block& block) {
    std::string_view& place = block.singles[static_cast<std::size_t>(item)];
    if (!Cif_Value_Known(place)) place = value;
}

// The heads behind "loop_": whether each column of the file belongs to the table. All columns do where operators are listed: without
// quotes they can be several words, and the rows have to be told apart again.
std::vector<bool> Read_Heads(Cif_Words& words, Cif_Word& word, Cif_Table& table) {
    std::vector<bool> wanted;
    std::array<int, cif_items> places = table.column;
    for (word = words.Next(); word.kind == Cif_Kind::item; word = words.Next()) {
        const Cif_Item item = Item_Of(word.text);
        wanted.push_back(item != Cif_Item::count && !table.Has(item));
        if (!wanted.back()) continue;
        places[static_cast<std::size_t>(item)] = static_cast<int>(wanted.size()) - 1;
        table.column[static_cast<std::size_t>(item)] = static_cast<int>(table.width++);
    }
    if (!Holds_Operators(table)) return wanted;
    table.column = places;
    table.width = wanted.size();
    wanted.assign(wanted.size(), true);
    return wanted;
}

// A table that says nothing here is only walked over.
void Read_Table(Cif_Words& words, Cif_Word& word, Cif_Block& block) {
    Cif_Table table;
    const std::vector<bool> wanted = Read_Heads(words, word, table);
    std::size_t column = 0;
    for (; word.kind == Cif_Kind::value; word = words.Next()) {
        if (table.width == 0 || table.too_long) continue;
        table.too_long = table.rows == Cif_Table::most_rows;
        if (wanted[column] && !table.too_long) table.values.push_back(word.text);
        if (++column < wanted.size()) continue;
        column = 0;
        ++table.rows;
    }
    table.whole = column == 0 || table.too_long;
    for (std::size_t i = 0; i < cif_items && table.rows > 0; ++i)
        if (table.column[i] >= 0) Keep_Single(static_cast<Cif_Item>(i), table.Value(0, static_cast<Cif_Item>(i)), block);
    Keep_Table(std::move(table), block);
}

bool Is_Symbol(Cif_Item item) { return item >= Cif_Item::hm && item <= Cif_Item::hall_new; }

// Both words on one line with nothing but blanks between them.
bool Follows(std::string_view before, std::string_view word) {
    const std::string_view gap(before.data() + before.size(), static_cast<std::size_t>(word.data() - before.data()) - before.size());
    return gap.find_first_not_of(" \t") == std::string_view::npos;
}

// Symbols are often left without the quotes that their blanks need.
void Read_Single(Cif_Words& words, Cif_Word& word, Cif_Block& block) {
    const Cif_Item item = Item_Of(word.text);
    word = words.Next();
    if (word.kind != Cif_Kind::value || item == Cif_Item::count) return;
    std::string_view value = word.text;
    word = words.Next();
    for (; Is_Symbol(item) && word.kind == Cif_Kind::value && Follows(value, word.text); word = words.Next())
        value = {value.data(), static_cast<std::size_t>(word.text.data() + word.text.size() - value.data())};
    Keep_Single(item, value, block);
}

// A structure of one atom, or of one operator, needs no loop.
Cif_Table Table_Of_Singles(const Cif_Block& block) {
    Cif_Table table;
    for (std::size_t i = 0; i < cif_items; ++i) {
        if (block.singles[i].empty()) continue;
        table.column[i] = static_cast<int>(table.values.size());
        table.values.push_back(block.singles[i]);
    }
    table.width = table.values.size();
    table.rows = 1;
    return table;
}

}  // namespace

Cif_Block Read_Cif_Block(Cif_Words& words, Cif_Word& word) {
    Cif_Block block;
    block.global = word.kind == Cif_Kind::data && Equal_No_Case(word.text, "data_global");
    if (word.kind == Cif_Kind::data) word = words.Next();
    while (word.kind != Cif_Kind::data && word.kind != Cif_Kind::end) {
        if (word.kind == Cif_Kind::loop)
            Read_Table(words, word, block);
        else if (word.kind == Cif_Kind::item)
            Read_Single(words, word, block);
        else
            word = words.Next();
    }
    Keep_Table(Table_Of_Singles(block), block);
    return block;
}

}  // namespace vntl
