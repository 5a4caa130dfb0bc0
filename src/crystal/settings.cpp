#include "crystal/settings.hpp"

#include <algorithm>
#include <map>
#include <vector>

#include "base/scan.hpp"
#include "base/text.hpp"
#include "crystal/hm_symbol.hpp"
#include "crystal/point_group.hpp"

namespace vntl {

namespace {

constexpr std::size_t longest_symbol = 40;

// Groups whose symbols have e for two glides in one plane, since 1992.
constexpr bool Has_Double_Glide(int number) { return number == 39 || number == 41 || number == 64 || number == 67 || number == 68; }

std::string Without_Signs(std::string_view text) {
    std::string kept;
    for (const char c : text)
        if (!Contains("_()", std::string_view(&c, 1))) kept += c;
    return kept;
}

// Lattice letter and directions, cut at the blanks.
struct Symbol_Words {
    char lattice = ' ';
    std::vector<std::string> directions;

    explicit Symbol_Words(std::string_view text) {
        const std::string plain = Without_Signs(Trim(text));
        if (plain.empty()) return;
        lattice = plain.front();
        std::vector<std::string_view> words;
        if (Get_Words(std::string_view(plain).substr(1), words, 4, longest_symbol).failed) return;
        directions.assign(words.begin(), words.end());
    }
};

// An axis that a full symbol tells before a plane of which the short one tells the plane alone.
struct Told_Axis {
    std::size_t direction;
    int order, screw;
};

bool Digits(std::string_view text) { return text.find_first_not_of("-0123456789") == std::string_view::npos; }

// How a word of the text spells directions of a tabulated symbol, one behind the other.
class Speller {
public:
    Speller(const std::vector<std::string>& directions, bool double_glide, bool full)
        : directions_(directions), double_glide_(double_glide), full_(full) {}

    // A word of digits alone is one direction, where others stand beside it: "P 31 2" is no "P 3 1 2".
    bool Spell(std::string_view word, bool alone) {
        const std::size_t first = next_;
        if (word.empty()) return false;
        while (!word.empty()) {
            if (next_ == directions_.size() || !Take(word)) return false;
            ++next_;
        }
        return alone || next_ == first + 1 || !Digits(directions_[first] + directions_[first + 1]);
    }
    bool At_End() const { return next_ == directions_.size(); }
    const std::vector<Told_Axis>& Axes() const { return axes_; }

private:
    bool Take(std::string_view& word) {
        const std::string& direction = directions_[next_];
        if (Starts_With(word, direction)) {
            word.remove_prefix(direction.size());
            return true;
        }
        if (!full_ || direction.find('/') != std::string::npos) return false;
        const std::size_t slash = word.find('/');
        if (slash == std::string_view::npos || slash == 0 || slash > 2 || !Starts_With(word.substr(slash + 1), direction)) return false;
        axes_.push_back({next_, word[0] - '0', slash == 2 ? word[1] - '0' : 0});
        word.remove_prefix(slash + 1 + direction.size());
        return true;
    }

    bool Starts_With(std::string_view word, std::string_view direction) const {
        if (word.size() < direction.size()) return false;
        for (std::size_t i = 0; i < direction.size(); ++i)
            if (word[i] != direction[i] && !(double_glide_ && word[i] == 'E' && Contains("ABC", std::string_view(&direction[i], 1))))
                return false;
        return true;
    }

    const std::vector<std::string>& directions_;
    bool double_glide_, full_;
    std::size_t next_ = 0;
    std::vector<Told_Axis> axes_;
};

// The axes of a full symbol must be axes of the group.
bool Axes_Hold(const Setting& setting, const std::vector<Told_Axis>& axes) {
    if (axes.empty()) return true;
    const Closed_Group group = Group_Of(setting);
    const std::vector<Rotation> rotations = group.Rotations();
    Point_Class classes;
    if (Laue_And_Point_Group(rotations, classes).failed) return false;
    return std::all_of(axes.begin(), axes.end(), [&](const Told_Axis& told) {
        const Hkl axis = HM_Axis(classes.crystal_system, !Hexagonal_Axes(rotations), told.direction);
        return Has_Axis(group, axis, told.order, told.screw);
    });
}

bool Spells(const Symbol_Words& text, const Setting& setting, const std::vector<std::string>& directions, bool full) {
    Speller speller(directions, Has_Double_Glide(setting.number), full);
    for (const std::string& word : text.directions)
        if (!speller.Spell(word, text.directions.size() == 1)) return false;
    return speller.At_End() && Axes_Hold(setting, speller.Axes());
}

// The symbols of monoclinic groups leave out the directions without symmetry.
std::vector<std::string> Short_Directions(const Setting& setting, std::vector<std::string> directions) {
    if (setting.number >= 3 && setting.number <= 15) std::erase(directions, "1");
    return directions;
}

enum class Spelling {
    word_for_word,
    run_together,  // blanks left out: "Pnma", "P 63/mmc"
    full,          // axes told before planes: "P 21/n 21/m 21/a"
};

struct Row {
    const Setting* setting;
    Symbol_Words words;
    std::vector<std::string> short_directions;
};

const std::vector<Row>& Rows() {
    static const std::vector<Row> rows = [] {
        std::vector<Row> made;
        for (const Setting& setting : Settings()) {
            Symbol_Words words(setting.Plain_Symbol());
            std::vector<std::string> brief = Short_Directions(setting, words.directions);
            made.push_back({&setting, std::move(words), std::move(brief)});
        }
        return made;
    }();
    return rows;
}

// `short_too`: a monoclinic symbol may leave out the directions without symmetry.
bool Names(const Symbol_Words& text, const Row& row, Spelling spelling, bool short_too) {
    if (text.lattice != row.words.lattice) return false;
    const auto spells = [&](const std::vector<std::string>& directions) {
        return spelling == Spelling::word_for_word ? text.directions == directions
                                                   : Spells(text, *row.setting, directions, spelling == Spelling::full);
    };
    return spells(row.words.directions) || (short_too && spells(row.short_directions));
}

// Of the settings of one symbol the one that is chosen; the usual one is the last of those that differ in origin or axes alone.
const Setting* Choose(const Row* first, std::string_view choice) {
    const std::vector<Row>& rows = Rows();
    const Setting* chosen = nullptr;
    for (const Row* row = first; row != rows.data() + rows.size() && row->setting->Plain_Symbol() == first->setting->Plain_Symbol();
         ++row) {
        const Setting& setting = *row->setting;
        const std::string_view sign = setting.Has_Choice() ? setting.hm.substr(setting.hm.find(':') + 1) : "";
        if (choice.empty() || (sign.empty() && choice == "1") || Equal_No_Case(choice, sign) || Equal_No_Case(choice, setting.choice))
            chosen = &setting;
    }
    return chosen;
}

// A short monoclinic symbol has the unique axis b where there is such a setting: "C 2" is C 1 2 1, and no larger cell of P 1 1 2.
const Setting* Find_Spelling(const Symbol_Words& text, std::string_view choice, Spelling spelling) {
    for (const bool any_axis : {false, true})
        for (const Row& row : Rows())
            if (Names(text, row, spelling, any_axis || Contains(row.setting->choice, "b"))) return Choose(&row, choice);
    return nullptr;
}

// Older symbols of cubic groups have 3 for -3 behind a plane: "F M 3 M". Some files call the hexagonal axes of R groups H.
Symbol_Words Modern(Symbol_Words text) {
    std::string all;
    for (const std::string& word : text.directions) all += (all.empty() ? "" : " ") + word;
    const std::size_t three = all.find('3');
    if (three != std::string::npos && three > 0 && all[three - 1] != '-') {
        const std::size_t plane = all.find_last_not_of(' ', three - 1);
        if (plane != std::string::npos && Contains("ABCDMN", all.substr(plane, 1))) all.insert(three, "-");
    }
    const char lattice = text.lattice == 'H' ? 'R' : text.lattice;
    return Symbol_Words(std::string(1, lattice) + ' ' + all);
}

}  // namespace

Closed_Group Group_Of(const Setting& setting) {
    std::vector<Seitz> generators;
    Closed_Group group;
    if (Parse_Hall_Symbol(setting.hall, generators).failed || Close_Group(generators, group).failed) return {};
    return group;
}

const Setting* Find_Number(int number, std::string_view choice) {
    const std::span<const Setting> all = Settings();
    const auto first = std::find_if(all.begin(), all.end(), [&](const Setting& s) { return s.number == number; });
    if (first == all.end()) return nullptr;
    const auto next = first + 1;
    const bool another = next != all.end() && next->number == number;
    if (choice.empty()) return first->Has_Choice() && another ? &*next : &*first;
    int value = 0;
    if (Parse_Integer(choice, value)) return value != 0 && value != 2 ? &*first : another ? &*next : nullptr;
    for (const Setting& setting : all)
        if (setting.number == number && Equal_No_Case(setting.choice, choice)) return &setting;
    return nullptr;
}

std::string_view Choice_Of(char letter) {
    constexpr std::pair<char, std::string_view> letters[] = {{'1', "1"}, {'S', "1"}, {'2', "2"}, {'Z', "2"}, {'H', "H"}, {'R', "R"}};
    for (const auto& [known, choice] : letters)
        if (known == letter) return choice;
    return {};
}

const Setting* Find_Symbol(std::string_view symbol, std::string_view choice) {
    if (symbol.size() > longest_symbol) return nullptr;
    const Symbol_Words told(symbol);
    if (told.directions.empty()) return nullptr;
    for (const Spelling spelling : {Spelling::word_for_word, Spelling::run_together, Spelling::full})
        for (const Symbol_Words& words : {told, Modern(told)}) {
            const std::string_view axes = told.lattice == 'H' && choice.empty() ? "H" : choice;
            if (const Setting* found = Find_Spelling(words, axes, spelling)) return found;
        }
    return nullptr;
}

const Setting* Find_Hall(std::string_view symbol) {
    const std::string text = Upper(Trim(symbol));
    for (const Setting& setting : Settings())
        if (Upper(setting.hall) == text) return &setting;
    return nullptr;
}

const Setting* Find_Operators(const Closed_Group& group) {
    static const auto all = [] {
        std::map<std::vector<Seitz>, const Setting*> made;
        for (const Setting& setting : Settings()) {
            std::vector<Seitz> operators = Group_Of(setting).Operators();
            std::sort(operators.begin(), operators.end());
            made.emplace(std::move(operators), &setting);
        }
        return made;
    }();
    std::vector<Seitz> operators = group.Operators();
    std::sort(operators.begin(), operators.end());
    const auto found = all.find(operators);
    return found == all.end() ? nullptr : found->second;
}

}  // namespace vntl
