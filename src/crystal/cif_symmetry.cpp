#include "crystal/cif_symmetry.hpp"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "base/cif_words.hpp"
#include "base/text.hpp"
#include "crystal/settings.hpp"

namespace vntl {

namespace {

constexpr std::string_view no_symmetry = " => No Space Group/No Symmetry information in this file ";
constexpr std::size_t longest_symbol = 200;  // that is looked at
constexpr std::size_t most_operators = 384;  // that a group may have

bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

// In capitals with single blanks; without quotes, low lines and brackets: "P2(1)/c" loses those of a screw axis, "P n m a (62)" and
// "P n m a #62" all behind the symbol.
std::string Plain_Symbol(std::string_view text) {
    std::string plain;
    text = text.substr(0, longest_symbol);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool blank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        if (c == '#') break;
        if (c == '(' && (i + 2 >= text.size() || !Is_Digit(text[i + 1]) || text[i + 2] != ')')) break;
        if (c == '\'' || c == '"' || c == '_' || c == '(' || c == ')' || (blank && plain.ends_with(' '))) continue;
        plain += blank ? ' ' : c;
    }
    return Upper(Trim(plain));
}

// Symbols to try, one after the other.
std::vector<std::string> Spellings(const std::string& symbol) {
    std::vector<std::string> spellings;
    const auto with_choice = [&](std::string_view base, std::string_view choice, bool base_too) {
        base = Trim(base);
        if (!choice.empty()) spellings.push_back(std::string(base) + ":" + std::string(choice));
        if (base_too) spellings.emplace_back(base);
    };
    if (const std::size_t colon = symbol.find(':'); colon != std::string::npos) {
        const std::string_view suffix = Trim(std::string_view(symbol).substr(colon + 1));
        with_choice(std::string_view(symbol).substr(0, colon), suffix.size() == 1 ? Choice_Of(suffix.front()) : suffix, true);
        return spellings;
    }
    constexpr std::size_t shortest = 2;
    const std::string_view base = std::string_view(symbol).substr(0, symbol.size() - 1);
    const std::string_view choice = Choice_Of(symbol.back());
    if (Trim(base).size() < shortest || choice.empty()) return {symbol};
    if (!Is_Digit(symbol.back())) {
        with_choice(base, choice, true);
    } else {  // more often a rotation axis than an origin
        spellings.push_back(symbol);
        if (base.ends_with(' ')) with_choice(base, choice, false);
    }
    return spellings;
}

Status Set_Group_By_Hall(std::string_view text, Space_Group_Type& group) {
    std::string hall(text.substr(0, longest_symbol));
    std::replace_if(
        hall.begin(), hall.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    return Set_SpaceGroup(Upper(Trim(hall)), group, {}, "HAL");
}

bool Read_Exact(const std::string& text, Seitz& exact) {
    Sym_Oper_Type oper;
    if (Read_Operator_String(text, 0, oper).failed) return false;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            if (oper.rot[i][j] < -1 || oper.rot[i][j] > 1) return false;
    exact = Exact_Operator(oper);
    return true;
}

// The list of a file, each operator once.
struct Operator_List {
    std::vector<std::string> texts;
    std::set<Seitz> exact;
    bool sound = true;  // all can be read, and they are not too many for a group

    explicit Operator_List(const std::vector<std::string>& listed) {
        for (const std::string& text : listed) {
            Seitz oper;
            const bool read = Read_Exact(text, oper);
            sound = sound && read;
            if (read && !exact.insert(oper).second) continue;
            texts.push_back(text);
            sound = sound && texts.size() <= most_operators;
            if (!sound) return;
        }
    }
};

// The group of the list, where that holds against the group of the symbol: the list is complete, or what it generates has as many
// operators as the symbol's group, so that only origin or axes can differ.
std::optional<Space_Group_Type> Group_Against(const Operator_List& list, const Space_Group_Type& by_symbol) {
    if (list.texts.empty() || !list.sound) return {};
    const std::vector<Seitz> of_symbol = Operator_Set(by_symbol);
    if (std::includes(of_symbol.begin(), of_symbol.end(), list.exact.begin(), list.exact.end())) return {};
    Space_Group_Type made;
    if (Set_SpaceGroup({}, made, list.texts, "GEN").failed) return {};
    const std::vector<Seitz> operators = Operator_Set(made);
    const bool complete = std::equal(operators.begin(), operators.end(), list.exact.begin(), list.exact.end());
    if (!complete && operators.size() != of_symbol.size()) return {};
    return made;
}

}  // namespace

Status Set_Group_By_Symbol(std::string_view symbol, Space_Group_Type& group) {
    const std::string plain = Plain_Symbol(symbol);
    if (plain.empty()) return Status::Fail(no_symmetry);
    Status refusal = Status::Done();
    for (const std::string& spelling : Spellings(plain)) {
        Space_Group_Type made;
        Status status = Set_SpaceGroup(spelling, made);
        if (status.ok()) {
            group = std::move(made);
            return status;
        }
        if (refusal.ok() || spelling.find(':') == std::string::npos) refusal = std::move(status);
    }
    return refusal;
}

Status Set_Group_Of_Cif(const Cif_Symmetry& symmetry, Space_Group_Type& group) {
    const Operator_List list(symmetry.operators);
    Space_Group_Type told, by_hall;
    Status status = Cif_Value_Known(symmetry.symbol) ? Set_Group_By_Symbol(symmetry.symbol, told) : Status::Fail(no_symmetry);
    if (status.failed || list.texts.empty()) {
        const Status hall = Cif_Value_Known(symmetry.hall) ? Set_Group_By_Hall(symmetry.hall, by_hall) : Status::Fail(no_symmetry);
        if (hall.ok() && (status.failed || Operator_Set(by_hall) != Operator_Set(told))) told = std::move(by_hall);
        if (hall.ok() || status.message == no_symmetry) status = hall;
    }
    if (status.failed && !list.texts.empty() && (list.sound || status.message == no_symmetry))
        return Set_SpaceGroup({}, group, list.texts, "GEN");
    if (status.failed) return status;
    std::optional<Space_Group_Type> made = Group_Against(list, told);
    group = made ? *std::move(made) : std::move(told);
    return status;
}

}  // namespace vntl
