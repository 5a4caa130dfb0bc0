#include "crystal/space_group.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/scan.hpp"
#include "base/text.hpp"
#include "crystal/asymmetric_unit.hpp"
#include "crystal/hm_symbol.hpp"
#include "crystal/point_group.hpp"
#include "crystal/settings.hpp"
#include "crystal/wyckoff.hpp"

namespace vntl {

namespace {

constexpr int last_number = 230;
constexpr std::size_t widest_general_hall = 90, longest_symbol = 90;
constexpr std::string_view no_such_group = "Error in the provided symbol/number of the space group";

constexpr std::array<std::string_view, 3> centre_texts = {"Centric (-1 not at origin)", "Acentric", "Centric (-1 at origin)"};

constexpr std::string_view lattice_letters = "PABCIRF";
constexpr std::array<std::string_view, 7> lattice_names = {"  P: { 000 }",
                                                           "  A: { 000;  0  1/2 1/2 }+",
                                                           "  B: { 000; 1/2  0  1/2 }+",
                                                           "  C: { 000; 1/2 1/2  0  }+",
                                                           "  I: { 000; 1/2 1/2 1/2 }+",
                                                           "  R: { 000; 2/3 1/3 1/3; 1/3 2/3 2/3   }+",
                                                           "  F: { 000;  0  1/2 1/2; 1/2  0  1/2; 1/2 1/2  0 }+"};

// --- operators of the record and exact ones --------------------------------------------------------------------------------------

Sym_Oper_Type Told(const Seitz& seitz) {
    Sym_Oper_Type oper;
    for (std::size_t i = 0; i < 9; ++i) oper.rot[i / 3][i % 3] = seitz.rot[i];
    for (std::size_t i = 0; i < 3; ++i) oper.tr[i] = static_cast<float>(seitz.tr[i]) / twelfths;
    return oper;
}

// A rotation as nine numbers, row by row, or a rotation and a translation as three rows of four.
std::optional<Status> Read_Matrix(std::string_view text, Sym_Oper_Type& oper) {
    std::string plain(text);
    for (char& c : plain)
        if (c == ',' || c == ';') c = ' ';
    std::vector<std::string_view> words;
    if (plain.find_first_of("xXyYzZ") != std::string::npos || Get_Words(plain, words, 13, plain.size()).failed) return {};
    if (words.size() != 9 && words.size() != 12) return {};
    const std::size_t columns = words.size() / 3;
    for (std::size_t i = 0; i < words.size(); ++i) {
        double value = 0;
        if (!Parse_Real(words[i], value)) return {};
        if (i % columns == 3)
            oper.tr[i / columns] = static_cast<float>(value);
        else if (value != std::round(value) || std::abs(value) > 9)
            return Status::Fail("The matrix corresponding to a generator has non-integer values!");
        else
            oper.rot[i / columns][i % columns] = static_cast<int>(value);
    }
    if (std::abs(Determinant(Exact_Operator(oper).rot)) != 1)
        return Status::Fail("The matrix corresponding to a generator has a determinant with absolute value different of 1.0");
    return Status::Done();
}

Status Read_Generator(const std::string& text, Sym_Oper_Type& oper) {
    oper = {};
    if (const std::optional<Status> matrix = Read_Matrix(text, oper)) return *matrix;
    const Status status = Read_Operator_String(text, 0, oper);
    if (status.failed) return status;
    for (const float t : oper.tr)
        if (!(std::abs(t) < 1e6f)) return Status::Fail(" The above operator is wrong: " + text);
    return Status::Done();
}

// --- what follows from the operators ---------------------------------------------------------------------------------------------

void Take_Lattice(const std::vector<Translation12>& lattice, Space_Group_Type& group) {
    const char letter = Lattice_From_Vectors(lattice);
    group.lattice_letter = letter;
    group.n_lattice = static_cast<int>(lattice.size());
    group.lattice_vectors.clear();
    for (const Translation12& v : lattice) group.lattice_vectors.push_back(Told({no_rotation, v}).tr);
    const std::size_t known = lattice_letters.find(letter);
    if (known != std::string_view::npos) {
        group.bravais_text = lattice_names[known];
        return;
    }
    group.bravais_text = "  Z: { 000";
    for (std::size_t i = 1; i < lattice.size(); ++i) {
        std::string vector = Operator_String({{}, group.lattice_vectors[i]});
        std::replace(vector.begin(), vector.end(), ',', ' ');
        group.bravais_text += "; " + vector;
    }
    group.bravais_text += " }+";
}

// Family of the crystal and centring, as "oP"; all trigonal groups but those on a rhombohedral lattice are of the family h.
std::string Lattice_Symbol(const Space_Group_Type& group) {
    const bool rhombohedral = group.crystal_system == "Trigonal" && !group.hexagonal_axes;
    const char family = group.crystal_system == "Triclinic"    ? 'a'
                        : group.crystal_system == "Trigonal"   ? 'h'
                        : group.crystal_system == "Hexagonal"  ? 'h'
                        : group.crystal_system == "Monoclinic" ? 'm'
                                                               : static_cast<char>(group.crystal_system.front() - 'A' + 'a');
    return {family, rhombohedral ? 'R' : group.lattice_letter.front()};
}

Status Take_Operators(const Closed_Group& closed, Space_Group_Type& group) {
    const std::vector<Rotation> rotations = closed.Rotations();
    Point_Class classes;
    if (Status status = Laue_And_Point_Group(rotations, classes); status.failed) return status;
    group.laue_class = classes.laue_class;
    group.point_group = classes.point_group;
    group.crystal_system = classes.crystal_system;
    group.hexagonal_axes = Hexagonal_Axes(rotations);
    group.centring = closed.centring;
    group.centre_text = centre_texts[static_cast<std::size_t>(closed.centring)];
    for (std::size_t i = 0; i < 3; ++i) group.centre_at[i] = static_cast<float>(closed.inversion_tr[i]) / (2 * twelfths);
    Take_Lattice(closed.lattice, group);
    group.lattice_symbol = Lattice_Symbol(group);
    group.NumOps = static_cast<int>(closed.reduced.size());
    group.Multip = static_cast<int>(closed.Multip());
    const std::vector<Seitz> operators = closed.Operators();
    for (const Seitz& seitz : operators) {
        group.operators.push_back(Told(seitz));
        group.operator_strings.push_back(Operator_String(group.operators.back()));
    }
    const auto box = Asymmetric_Box(operators);
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 2; ++j) group.asym_unit[i][j] = static_cast<float>(box[i][j]) / 24.0f;
    group.wyckoff = Wyckoff_Positions(operators, closed.lattice);
    return Status::Done();
}

void Take_Setting(const Setting& setting, Space_Group_Type& group) {
    group.spg_number = setting.number;
    group.hm_symbol = setting.hm;
    group.hall_symbol = setting.hall;
    group.table_choice = setting.choice;
    // The tables name the classes of a rhombohedral cell apart.
    if (setting.choice == "R") group.laue_class += " R";
}

// The lattice and the generators, for a group without a tabulated Hall symbol; the inversion when it lies off the origin.
std::string General_Hall(const Closed_Group& closed, std::span<const Seitz> generators, bool tabulated) {
    std::string text;
    if (!tabulated) {
        text = std::string(closed.centring == 2 ? "-" : "") + Lattice_From_Vectors(closed.lattice);
        for (const Seitz& s : generators) text += "  Gen:" + Operator_String(Told(s));
    }
    if (closed.centring == 0) text += "  Gen(-1):" + Operator_String(Told({inversion, closed.inversion_tr}));
    return std::string(Cut(text, widest_general_hall));
}

Status Finish(const Closed_Group& closed, const Setting* setting, Space_Group_Type& group) {
    if (const Status status = Take_Operators(closed, group); status.failed) return status;
    const std::vector<Seitz> generators = Minimum_Generators(closed);
    group.n_generators = static_cast<int>(generators.size());
    group.general_hall = General_Hall(closed, generators, setting != nullptr);
    if (setting != nullptr) Take_Setting(*setting, group);
    return Status::Done();
}

// --- the routes --------------------------------------------------------------------------------------------------------------------

// A text "symbol:choice"; a letter may stand behind a blank too: "F D -3 M S", "R 3 C H".
struct Told_Symbol {
    std::string text, choice;

    explicit Told_Symbol(std::string_view symbol) {
        text = Upper(Trim(symbol));
        const std::size_t colon = text.find(':');
        if (colon != std::string::npos)
            Cut_Off(colon);
        else if (text.size() > 2 && text[text.size() - 2] == ' ' && Contains("SZHR", text.substr(text.size() - 1)))
            Cut_Off(text.size() - 2);
        if (choice.size() == 1 && !Choice_Of(choice.front()).empty()) choice = Choice_Of(choice.front());
    }

private:
    void Cut_Off(std::size_t at) {
        choice = Trim(std::string_view(text).substr(at + 1));
        text = Trim(std::string_view(text).substr(0, at));
    }
};

bool Is_Number(std::string_view text) {
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

Status Find_By_Number(const Told_Symbol& told, std::string_view out_of_range, const Setting*& setting) {
    int number = 0;
    if (!Parse_Integer(told.text, number) || number < 1 || number > last_number) return Status::Fail(out_of_range);
    setting = Find_Number(number, told.choice);
    return setting != nullptr ? Status::Done() : Status::Fail(no_such_group);
}

// What is wrong with a text that names no setting: the first fault of its grammar.
Status Unknown_Symbol(const Told_Symbol& told) {
    HM_Symbol symbol;
    const Status grammar = Parse_HM_Symbol(Cut(told.text, longest_symbol), symbol);
    return grammar.failed ? grammar : Status::Fail(no_such_group);
}

Status From_Hall(std::string_view symbol, const Setting* setting, Space_Group_Type& group) {
    std::vector<Seitz> generators;
    Closed_Group closed;
    if (Status status = Parse_Hall_Symbol(symbol, generators); status.failed) return status;
    if (Status status = Close_Group(generators, closed); status.failed) return status;
    if (setting == nullptr) {
        setting = Find_Operators(closed);
        group.hall_symbol = symbol;
    }
    group.setting_type = "Generated from Hall symbol";
    return Finish(closed, setting, group);
}

Status Read_Generators(std::span<const std::string> texts, std::vector<Sym_Oper_Type>& operators) {
    for (const std::string& text : texts)
        if (Status status = Read_Generator(text, operators.emplace_back()); status.failed) return status;
    return Status::Done();
}

Status Close_Texts(std::span<const std::string> texts, Closed_Group& closed) {
    std::vector<Sym_Oper_Type> operators;
    if (Status status = Read_Generators(texts, operators); status.failed) return status;
    std::vector<Seitz> generators;
    for (const Sym_Oper_Type& oper : operators) generators.push_back(Exact_Operator(oper));
    return Close_Group(generators, closed);
}

Status From_Generators(std::span<const std::string> texts, Space_Group_Type& group) {
    if (texts.empty()) return Status::Fail(" Generators should be provided in GEN calling Set_SpaceGroup");
    Closed_Group closed;
    if (Status status = Close_Texts(texts, closed); status.failed) return status;
    const Setting* setting = Find_Operators(closed);
    group.setting_type = setting != nullptr ? "Tabulated Setting" : "Non-standard Setting";
    return Finish(closed, setting, group);
}

// The operators as they stand, without those that they would make.
Status From_Fixed(std::span<const std::string> texts, Space_Group_Type& group) {
    if (texts.empty()) return Status::Fail(" Generators should be provided if FIX option is Used");
    if (texts.size() > most_operators) return Status::Fail(" Dimension of Table exceeded (II): " + std::to_string(texts.size()));
    std::vector<Sym_Oper_Type> operators;
    if (Status status = Read_Generators(texts, operators); status.failed) return status;
    std::vector<Translation12> lattice = {{0, 0, 0}};
    std::vector<Rotation> rotations;
    for (const Sym_Oper_Type& oper : operators) {
        const Seitz seitz = Exact_Operator(oper);
        if (std::find(rotations.begin(), rotations.end(), seitz.rot) == rotations.end()) rotations.push_back(seitz.rot);
        if (seitz.rot == inversion) {
            group.centring = seitz.tr == Translation12{} ? 2 : 0;
            for (std::size_t i = 0; i < 3; ++i) group.centre_at[i] = oper.tr[i] / 2;
        }
        if (seitz.rot == no_rotation && std::find(lattice.begin(), lattice.end(), seitz.tr) == lattice.end()) lattice.push_back(seitz.tr);
        group.operator_strings.push_back(Operator_String(oper));
    }
    group.operators = std::move(operators);
    group.NumOps = group.Multip = static_cast<int>(texts.size());
    group.setting_type = fixed_operators;
    group.hexagonal_axes = Hexagonal_Axes(rotations);
    group.centre_text = centre_texts[static_cast<std::size_t>(group.centring)];
    Take_Lattice(lattice, group);
    return Status::Done();
}

// The generators of a setting, as the tables print them: centring, rotations, inversion.
std::vector<std::string> Table_Generators(const Setting& setting) {
    const Closed_Group closed = Group_Of(setting);
    std::vector<Seitz> generators = closed.Multip() == 1 ? closed.reduced : std::vector<Seitz>{};
    for (std::size_t i = 1; i < closed.lattice.size(); ++i) generators.push_back({no_rotation, closed.lattice[i]});
    for (const Seitz& s : Minimum_Generators(closed)) generators.push_back(s);
    if (closed.centring != 1) generators.push_back({inversion, closed.inversion_tr});
    std::vector<std::string> texts;
    for (const Seitz& s : generators) texts.push_back(Operator_String(Told(s)));
    return texts;
}

Status From_Table_Generators(const Told_Symbol& told, Space_Group_Type& group) {
    const Setting* setting = nullptr;
    if (Is_Number(told.text)) {
        if (Status status = Find_By_Number(told, " The number of the space group should be in the interval [1,230]", setting);
            status.failed)
            return status;
    } else {
        setting = Find_Symbol(told.text, told.choice);
    }
    if (setting == nullptr)
        return Status::Fail(" Problems in SpaceGroup: " + std::string(Cut(told.text, longest_symbol)) +
                            " => the HM symbol or the number is incorrect ");
    Closed_Group closed;
    if (Status status = Close_Texts(Table_Generators(*setting), closed); status.failed) return status;
    group.setting_type = "Generated from explicit IT generators";
    return Finish(closed, setting, group);
}

Status From_Symbol(const Setting& setting, const Told_Symbol& told, bool force_hall, Space_Group_Type& group) {
    const bool by_symbol = told.choice.empty() && !force_hall;
    group.setting_type = by_symbol ? "IT (Generated from Hermann-Mauguin symbol)" : "Generated from Hall symbol";
    return Finish(Group_Of(setting), &setting, group);
}

// The symbol decides: a number, a Hermann-Mauguin symbol, a Hall symbol; with none of these, the generators.
Status From_Any(const Told_Symbol& told, std::span<const std::string> generators, bool force_hall, Space_Group_Type& group) {
    if (Is_Number(told.text)) {
        const Setting* setting = nullptr;
        if (Status status = Find_By_Number(told, " Number of Space Group out of limits", setting); status.failed) return status;
        return From_Hall(setting->hall, setting, group);
    }
    if (const Setting* setting = Find_Symbol(told.text, told.choice)) return From_Symbol(*setting, told, force_hall, group);
    if (const Setting* setting = Find_Hall(told.text)) return From_Hall(setting->hall, setting, group);
    if (!generators.empty()) return From_Generators(generators, group);
    if (told.choice.empty() && told.text.size() <= longest_symbol) {
        const Status status = From_Hall(told.text, nullptr, group);
        if (!status.failed || told.text.find_first_of("'\"*(") != std::string::npos || told.text.starts_with('-')) return status;
    }
    return Unknown_Symbol(told);
}

Status Make_Group(std::string_view symbol, std::span<const std::string> generators, std::string_view mode, bool force_hall,
                  Space_Group_Type& group) {
    if (mode == "GEN") return From_Generators(generators, group);
    if (mode == "FIX") return From_Fixed(generators, group);
    const Told_Symbol told(symbol);
    if (told.text.empty() && (mode != "" || generators.empty())) return Status::Fail(no_such_group);
    if (mode == "") return From_Any(told, generators, force_hall, group);
    if (mode == "HMS") {
        const Setting* setting = Find_Symbol(told.text, told.choice);
        return setting != nullptr ? From_Symbol(*setting, told, force_hall, group) : Unknown_Symbol(told);
    }
    if (mode == "ITC") return From_Table_Generators(told, group);
    if (mode != "HAL") return Status::Fail(" Problems in SpaceGroup");
    const std::string text = Upper(Trim(Cut(symbol, longest_symbol)));
    const Setting* setting = Find_Hall(text);
    return setting != nullptr ? From_Hall(setting->hall, setting, group) : From_Hall(text, nullptr, group);
}

}  // namespace

Status Set_SpaceGroup(std::string_view symbol, Space_Group_Type& group, std::span<const std::string> generators, std::string_view mode,
                      bool force_hall) {
    group = {};
    Space_Group_Type made;
    const Status status = Make_Group(symbol, generators, Upper(Trim(mode)), force_hall, made);
    if (!status.failed) group = std::move(made);
    return status;
}

Seitz Exact_Operator(const Sym_Oper_Type& oper) {
    Seitz seitz;
    for (std::size_t i = 0; i < 9; ++i) seitz.rot[i] = static_cast<std::int8_t>(oper.rot[i / 3][i % 3]);
    for (std::size_t i = 0; i < 3; ++i) {
        const float part = oper.tr[i] - std::floor(oper.tr[i]);
        seitz.tr[i] = static_cast<std::int8_t>(std::lround(part * twelfths) % twelfths);
    }
    return seitz;
}

std::vector<Seitz> Operator_Set(const Space_Group_Type& group) {
    std::vector<Seitz> operators = Exact_Operators(group);
    std::sort(operators.begin(), operators.end());
    return operators;
}

std::vector<Seitz> Exact_Operators(const Space_Group_Type& group) {
    std::vector<Seitz> operators;
    operators.reserve(group.operators.size());
    for (const Sym_Oper_Type& oper : group.operators) operators.push_back(Exact_Operator(oper));
    return operators;
}

}  // namespace vntl
