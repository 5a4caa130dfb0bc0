#include "patterns/columns/column_names.hpp"

#include <algorithm>
#include <numbers>
#include <span>
#include <string>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/scan_axis.hpp"

namespace vntl {

namespace {

constexpr std::size_t longest_line = 2000, most_names = 64;
constexpr double degrees_of_radian = 180 / std::numbers::pi;
constexpr float largest_angle = 180.0f;

struct Word {
    std::string_view word;
    Column_X of_x;
    bool certain;
};
constexpr Word x_words[] = {{"2th", Column_X::angle, true},
                            {"tth", Column_X::angle, true},
                            {"2theta", Column_X::angle, true},
                            {"twotheta", Column_X::angle, true},
                            {"ttheta", Column_X::angle, true},
                            {"2thetaangle", Column_X::angle, true},
                            {"pos2th", Column_X::angle, true},
                            {"diffractionangle", Column_X::angle, true},
                            {"scatteringangle", Column_X::angle, true},
                            {"angle", Column_X::angle, true},
                            {"tof", Column_X::flight, true},
                            {"timeofflight", Column_X::flight, true},
                            {"dspacing", Column_X::spacing, true},
                            {"dspace", Column_X::spacing, true},
                            {"dvalue", Column_X::spacing, true},
                            {"dhkl", Column_X::spacing, true},
                            {"d", Column_X::spacing, false},
                            {"q", Column_X::q, false},
                            {"chiq", Column_X::q, true},
                            {"momentumtransfer", Column_X::q, true},
                            {"scatteringvector", Column_X::q, true},
                            {"r", Column_X::radius, false},
                            {"radius", Column_X::radius, true},
                            {"theta", Column_X::other, true},
                            {"omega", Column_X::other, true},
                            {"chi", Column_X::other, true},
                            {"phi", Column_X::other, true},
                            {"azimuth", Column_X::other, true},
                            {"x", Column_X::unknown, false}};

constexpr std::string_view y_words[] = {"i",       "int",     "intensity", "intensities",    "counts", "count", "cts",
                                        "y",       "yobs",    "iobs",      "yraw",           "signal", "cps",   "countrate",
                                        "ycounts", "iq",      "i2th",      "i2theta",        "itth",   "imean", "meanintensity",
                                        "chii",    "photons", "icounts",   "intensitycounts"};
constexpr std::string_view sigma_words[] = {"sigma", "su",   "sig",    "error",  "err",    "errors",      "esd",
                                            "e",     "std",  "stddev", "sd",     "sigmai", "sigmaq",      "dy",
                                            "di",    "yerr", "yerror", "errory", "ierror", "uncertainty", "uncertainties",
                                            "sem",   "ierr", "erri",   "errori", "sigmay", "ecounts",     "standarddeviation",
                                            "s"};
constexpr std::string_view variance_words[] = {"variance", "var", "variances"};
constexpr std::string_view ycalc_words[] = {"ycalc", "icalc", "calc", "calculated", "fit", "ycal"};

bool Is_One_Of(std::string_view word, std::span<const std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

// A unit that x may have, without its brackets, and what leads from it to the one of the program.
struct Unit {
    std::string_view text;
    Column_X of_x;
    double factor;
};
constexpr Unit units[] = {{"rad", Column_X::angle, degrees_of_radian},
                          {"radian", Column_X::angle, degrees_of_radian},
                          {"radians", Column_X::angle, degrees_of_radian},
                          {"mrad", Column_X::angle, degrees_of_radian / 1000},
                          {"milliradian", Column_X::angle, degrees_of_radian / 1000},
                          {"milliradians", Column_X::angle, degrees_of_radian / 1000},
                          {"centidegrees", Column_X::angle, 0.01},
                          {"s", Column_X::flight, 1e6},
                          {"sec", Column_X::flight, 1e6},
                          {"seconds", Column_X::flight, 1e6},
                          {"ms", Column_X::flight, 1e3},
                          {"msec", Column_X::flight, 1e3},
                          {"milliseconds", Column_X::flight, 1e3},
                          {"ns", Column_X::flight, 1e-3},
                          {"nm", Column_X::spacing, 10},
                          {"pm", Column_X::spacing, 0.01},
                          {"nm^-1", Column_X::q, 0.1},
                          {"nm-1", Column_X::q, 0.1},
                          {"1/nm", Column_X::q, 0.1},
                          {"nm^{-1}", Column_X::q, 0.1},
                          {"nm^(-1)", Column_X::q, 0.1},
                          {"/nm", Column_X::q, 0.1},
                          {"nm\xE2\x81\xBB\xC2\xB9", Column_X::q, 0.1},
                          {"inversenanometres", Column_X::q, 0.1},
                          {"inversenanometers", Column_X::q, 0.1},
                          {"m", Column_X::radius, 1000},
                          {"cm", Column_X::radius, 10},
                          {"um", Column_X::radius, 1e-3}};

// Small letters and digits alone, a Greek theta by its name.
std::string Bare(std::string_view text) {
    std::string bare;
    const std::string lower = Lower(text);
    for (std::size_t i = 0; i < lower.size(); ++i) {
        const char c = lower[i];
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) bare += c;
        const bool theta = i + 1 < lower.size() && c == '\xCE' && (lower[i + 1] == '\xB8' || lower[i + 1] == '\x98');
        if (theta) bare += "theta";
    }
    return bare;
}

// A name and its unit: "q_nm^-1", "2theta (deg)", "d / nm", "tof ms".
struct Name {
    std::string base, unit, whole;
};

Name Cut_Name(std::string_view text) {
    text = Trim(text);
    Name name;
    name.whole = Bare(text);
    // The bracket of a function's variable, "I(Q)", is none of a unit.
    const std::size_t open = text.find_first_of("([");
    std::size_t at = open;
    if (at == std::string_view::npos) at = text.find(" / ");
    if (at == std::string_view::npos) at = text.find_first_of("_/ \t");
    if (at == 0) at = std::string_view::npos;
    name.base = Bare(text.substr(0, at));
    if (at == std::string_view::npos) return name;
    for (const char c : Lower(text.substr(at + 1)))
        if (std::string_view(" \t[]").find(c) == std::string_view::npos) name.unit += c;
    if (open != std::string_view::npos && name.unit.ends_with(')') && name.unit.find('(') == std::string::npos) name.unit.pop_back();
    while (name.unit.starts_with('/') && !name.unit.starts_with("/nm")) name.unit.erase(0, 1);
    if (name.unit.starts_with("deg") || name.unit.starts_with("\xC2\xB0")) name.unit = "deg";
    return name;
}

const Word* X_Word(const Name& name) {
    for (const Word& word : x_words)
        if (word.word == name.base || word.word == name.whole) return &word;
    return nullptr;
}

bool Names_One_Of(const Name& name, std::span<const std::string_view> words) {
    return Is_One_Of(name.base, words) || Is_One_Of(name.whole, words);
}

bool Is_A_Second(std::string_view unit) {
    for (const char* word :
         {"cps", "counts/s", "cts/s", "1/s", "countspersecond", "countss-1", "counts/sec", "s^-1", "s-1", "counts/second"})
        if (unit == word) return true;
    return false;
}

void Take_X(const Name& name, const Word& word, Column_Roles& roles) {
    roles.of_x = word.of_x;
    roles.certain_x = word.certain;
    if (word.word == "r" && (name.unit == "a" || name.unit.starts_with("ang") || name.unit.empty() || name.unit.starts_with('\xC3')))
        roles.of_x = Column_X::unknown;  // of a pair distribution
    for (const Unit& unit : units)
        if (unit.of_x == roles.of_x && unit.text == name.unit) roles.x_factor = unit.factor;
    if (!roles.certain_x && !name.unit.empty() && roles.of_x != Column_X::unknown) roles.certain_x = true;
}

std::vector<std::string_view> Split(std::string_view line, std::string_view separators) {
    std::vector<std::string_view> words;
    while (words.size() <= most_names) {
        const std::size_t stop = line.find_first_of(separators);
        words.push_back(Trim(line.substr(0, stop)));
        if (stop == std::string_view::npos) break;
        line.remove_prefix(stop + 1);
    }
    while (!words.empty() && words.back().empty()) words.pop_back();
    return words;
}

// Words that stand so many blanks apart; a unit in brackets, or one behind a slash, belongs to the word in front of it.
std::vector<std::string_view> Split_At_Blanks(std::string_view line, std::size_t blanks) {
    std::vector<std::string_view> words;
    const std::string gap(blanks, ' ');
    while (!(line = Trim(line)).empty() && words.size() <= most_names) {
        std::size_t stop = std::min(line.find(gap), line.size());
        const char front = line.front();
        if (!words.empty() && (front == '(' || front == '[')) {
            stop = std::min(line.find(front == '(' ? ')' : ']', 1), line.size() - 1) + 1;
            words.back() = {words.back().data(), static_cast<std::size_t>(line.data() + stop - words.back().data())};
        } else {
            words.push_back(line.substr(0, stop));
        }
        line.remove_prefix(stop);
    }
    return words;
}

std::optional<Column_Roles> Roles_Of(const std::vector<std::string_view>& words, std::size_t columns) {
    if (words.size() < 2 || words.size() > most_names) return std::nullopt;
    Column_Roles roles;
    roles.x = roles.y = Column_Roles::none;
    roles.names = words.size();
    std::size_t known = 0;
    const Word* best = nullptr;
    Name name_of_x;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const Name name = Cut_Name(words[i]);
        const int place = static_cast<int>(i);
        const Word* x = X_Word(name);
        if (x != nullptr && (best == nullptr || (x->certain && !best->certain) ||
                             (best->of_x == Column_X::other && x->certain && x->of_x != Column_X::other))) {
            best = x, roles.x = place, name_of_x = name, roles.x_name = words[i];
            ++known;
        } else if (roles.y < 0 && Names_One_Of(name, y_words)) {
            roles.y = place;
            roles.per_second = name.base == "cps" || name.base == "countrate" || Is_A_Second(name.unit);
            ++known;
        } else if (roles.sigma < 0 && (Names_One_Of(name, sigma_words) || Names_One_Of(name, variance_words))) {
            roles.sigma = place;
            roles.variance = Names_One_Of(name, variance_words);
            ++known;
        } else if (roles.ycalc < 0 && Names_One_Of(name, ycalc_words)) {
            roles.ycalc = place;
            ++known;
        } else if (x != nullptr) {
            ++known;
        }
    }
    const bool fits = columns == 0 ? known == words.size() : words.size() == columns || known == words.size();
    if (best == nullptr || !fits) return std::nullopt;
    Take_X(name_of_x, *best, roles);
    if (roles.y < 0) {  // the column behind x, where x alone speaks for itself
        if (!roles.certain_x || roles.x + 1 >= static_cast<int>(words.size()) || roles.sigma == roles.x + 1) return std::nullopt;
        roles.y = roles.x + 1;
    }
    const int last = static_cast<int>(columns) - 1;
    if (columns != 0 && (roles.x > last || roles.y > last)) return std::nullopt;
    if (columns != 0 && roles.sigma > last) roles.sigma = Column_Roles::none;
    if (columns != 0 && roles.ycalc > last) roles.ycalc = Column_Roles::none;
    return roles;
}

}  // namespace

std::optional<Column_Roles> Roles_Of_Names(std::string_view line, std::size_t columns) {
    constexpr std::string_view marks = "#'!;%*/\" \t";
    if (line.size() > longest_line) return std::nullopt;
    while (!line.empty() && marks.find(line.front()) != std::string_view::npos) line.remove_prefix(1);
    line = Trim(line);
    std::optional<Column_Roles> fallback;
    const auto take = [&](const std::vector<std::string_view>& words) {
        const auto roles = Roles_Of(words, columns);
        if (roles && columns != 0 && roles->names == columns) return roles;
        if (roles && !fallback) fallback = roles;
        return std::optional<Column_Roles>{};
    };
    for (const std::string_view separators : {"\t", ";", ",", "|"})
        if (line.find_first_of(separators) != std::string_view::npos)
            if (const auto roles = take(Split(line, separators))) return roles;
    for (const std::size_t blanks : {2u, 1u})
        if (const auto roles = take(Split_At_Blanks(line, blanks))) return roles;
    return fallback;
}

Column_Roles X_Of_Phrase(std::string_view phrase) {
    Column_Roles roles;
    const Name name = Cut_Name(Trim(phrase));
    if (const Word* word = X_Word(name)) {
        Take_X(name, *word, roles);
        return roles;
    }
    constexpr Word parts[] = {{"timeofflight", Column_X::flight, true},   {"tof", Column_X::flight, true},
                              {"dspacing", Column_X::spacing, true},      {"momentumtransfer", Column_X::q, true},
                              {"2theta", Column_X::angle, true},          {"twotheta", Column_X::angle, true},
                              {"scatteringangle", Column_X::angle, true}, {"degrees", Column_X::angle, true}};
    for (const Word& part : parts)
        if (Contains(name.whole, part.word)) {
            Take_X(name, part, roles);
            break;
        }
    return roles;
}

void Set_Column_Axis(const Column_Roles& roles, Diffraction_Pattern_Type& p) {
    switch (roles.of_x) {
        case Column_X::flight:
            p.scat_var = "TOF", p.legend_x = "TOF(micro-seconds)";
            break;
        case Column_X::spacing:
            p.scat_var = "d-spacing", p.legend_x = "d-spacing(Angstroms)";
            break;
        case Column_X::q:
            p.scat_var = "q-space", p.legend_x = "Q(1/Angstrom)";
            break;
        case Column_X::radius:
            p.scat_var = "Position", p.legend_x = "Radius(mm)";
            break;
        case Column_X::other:
            Set_Scan_Axis(p, roles.x_name.substr(0, roles.x_name.find_first_of("_([ ")));
            break;
        case Column_X::angle:
            p.scat_var = "2theta", p.legend_x = "2theta(degrees)";
            break;
        case Column_X::unknown:
            const bool flight = !p.x.empty() && p.x.back() > largest_angle;
            p.scat_var = flight ? "TOF" : "2theta";
            p.legend_x = flight ? "TOF(micro-seconds)" : "2theta(degrees)";
    }
}

}  // namespace vntl
