// The rows of the layout of columns, under heads that name every column. TABs stand between the fields, which are as wide as they need.
//
//     2Theta   Yobs   Ycal   Yobs-Ycal   Backg   Bragg      Posr    (hkl)          K
//    10.0000  123.0  120.0        -5.0    80.0   12.4431   -1262   (  1  0  1)     0  1     a point, and a reflection beside it
//    10.0500  125.0  120.0        -3.0    80.0                                              a point
//
// Without the column "Bragg" the reflections stand behind the profile:
//
//    12.4431                                               -1262   (  1  0  1)     0  1
//
// Reflections are sorted by position, those of all phases mixed. "Posr" is the height at which a tick is drawn, so each phase has its own
// level, the first the highest. The last two numbers are phase and wavelength where that gives every phase the number of reflections that
// the line of phases tells; else they are the tag and the wavelength, or of a phase with propagation vectors the number of the vector.
#include <algorithm>
#include <charconv>
#include <cstring>
#include <functional>
#include <map>

#include "base/edit_descriptor.hpp"
#include "base/scan.hpp"
#include "base/text.hpp"
#include "patterns/neutron_tools.hpp"
#include "patterns/plain_columns.hpp"
#include "patterns/prf_tools.hpp"

namespace vntl {

namespace {

constexpr std::size_t x_width = 12, y_width = 8, profile_width = x_width + 4 * (y_width + 1);
constexpr int most_wavelengths = 2;

// A point as nearly all files have it: a position with a decimal point, and plain numbers.
bool Take_Point(std::string_view line, Prf_Point& point) {
    if (line.size() < profile_width) return false;
    const char* at = line.data();
    if (std::memchr(at, '.', x_width) == nullptr || !Take_Real(at, at + x_width, point.x)) return false;
    at += x_width + 1;
    for (float& y : point.y) {
        if (!Take_Whole<0, 8, 8>(at, y) && !Take_Real(at, at + y_width, y)) return false;
        at += y_width + 1;
    }
    return true;
}

// --- a row cut into its fields -------------------------------------------------------------------------------------------------

constexpr std::size_t profile_fields = 5, most_fields = 8;
struct Fields_Of_Row {
    std::array<std::string_view, most_fields> field{};
    std::size_t count = 0;

    void Add(std::string_view text) {
        if (count < most_fields) field[count] = text;
        ++count;
    }
    // The last that is not blank, of those from `from` on.
    std::string_view Last(std::size_t from) const {
        for (std::size_t i = std::min(count, most_fields); i > from; --i)
            if (!field[i - 1].empty()) return field[i - 1];
        return {};
    }
    bool Profile_Blank() const {
        return std::all_of(field.begin() + 1, field.begin() + profile_fields, [](std::string_view text) { return text.empty(); });
    }
};

// Fields of the usual widths, a TAB behind each.
bool In_Usual_Columns(std::string_view row) {
    if (row.size() < profile_width || (row.size() > profile_width && row[profile_width] != '\t' && row[profile_width] != ' ')) return false;
    for (std::size_t at = x_width; at < profile_width; at += y_width + 1)
        if (row[at] != '\t') return false;
    return std::count(row.begin(), row.begin() + profile_width, '\t') == 4;
}

// `front` is what stands before the indices. Where too few TABs tell the fields apart blanks do, and the words of a row without a
// point are position and level.
Fields_Of_Row Cut_Row(std::string_view front) {
    constexpr std::size_t tabs_of_a_point = 4;
    Fields_Of_Row row;
    if (static_cast<std::size_t>(std::count(front.begin(), front.end(), '\t')) >= tabs_of_a_point) {
        for (std::size_t tab = 0; tab != std::string_view::npos; front.remove_prefix(tab == std::string_view::npos ? 0 : tab + 1)) {
            tab = front.find('\t');
            row.Add(Trim(front.substr(0, tab)));
        }
        return row;
    }
    std::vector<std::string_view> words;
    if (Get_Words(front, words, most_fields, front.size()).failed) return row;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i == 1 && words.size() < profile_fields) row.count = profile_fields;
        row.Add(words[i]);
    }
    return row;
}

bool Take_Field(std::string_view field, float& value) {
    double wide = 0;
    if (!field.empty() && !Parse_Real(field, wide)) return false;
    value = static_cast<float>(wide);
    return true;
}

// --- a row ---------------------------------------------------------------------------------------------------------------------

struct Entry {
    Prf_Reflection reflection;
    float level = 0;
    int first = 0, second = 0;  // the last two numbers
};

struct Row {
    bool has_point = false, has_reflection = false;
    Prf_Point point;
    Entry entry;
};
enum class Row_Fault { none, point, reflection };

// The integers with which a text begins; a sign begins a new one.
std::size_t Take_Integers(std::string_view text, std::span<int> values) {
    std::size_t n = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (n < values.size()) {
        while (at != end && (*at == ' ' || *at == '\t' || *at == ',')) ++at;
        if (at != end && *at == '+') ++at;
        const auto [stop, error] = std::from_chars(at, end, values[n]);
        if (error != std::errc()) break;
        at = stop;
        ++n;
    }
    return n;
}

// "(  1  0 -1)", or with up to three indices more, of a superspace. Indices that touch fill three equal fields.
bool Take_Indices(std::string_view text, Prf_Reflection& r, bool& superspace) {
    std::array<int, 6> hkl{};
    std::size_t n = Take_Integers(text, hkl);
    if (n < 3 && text.size() % 3 == 0)
        for (n = 0; n < 3; ++n)
            if (Take_Integers(text.substr(n * text.size() / 3, text.size() / 3), std::span(hkl).subspan(n, 1)) != 1) return false;
    r.h = hkl[0], r.k = hkl[1], r.l = hkl[2];
    superspace = n > 3;
    return n >= 3;
}

// `rest` begins with the bracket of the indices. A superspace's rows have one number more behind the two.
bool Take_Entry(const Fields_Of_Row& row, bool beside, std::string_view rest, Entry& entry) {
    entry = {};
    const std::size_t close = rest.find(')');
    bool superspace = false;
    if (close == std::string_view::npos || !Take_Indices(rest.substr(1, close - 1), entry.reflection, superspace)) return false;
    std::array<int, 8> last{};
    const std::size_t n = Take_Integers(rest.substr(close + 1), last), behind_two = superspace && n > 2 ? 1 : 0;
    if (n > 0) entry.second = last[n - 1 - behind_two];
    if (n > 1) entry.first = last[n - 2 - behind_two];
    const std::size_t place = beside ? profile_fields : 0;
    const std::string_view position = row.field[place];
    return !position.empty() && Take_Field(position, entry.reflection.position) && All_Finite(entry.reflection.position) &&
           Take_Field(row.Last(std::max(place + 1, profile_fields)), entry.level);
}

bool Take_Profile(std::string_view front, const Fields_Of_Row& fields, Prf_Point& point) {
    const bool words = fields.count >= profile_fields && !fields.field[0].empty();
    if (In_Usual_Columns(front) || !words) return Read_Prf_Point(front, point);
    bool good = Take_Field(fields.field[0], point.x);
    for (std::size_t i = 0; i < point.y.size(); ++i) good = good && Take_Field(fields.field[i + 1], point.y[i]);
    return good;
}

Row_Fault Read_Row(std::string_view line, Row& row) {
    const std::size_t open = std::min(line.find('('), line.size());
    const std::string_view front = line.substr(0, open);
    row.has_reflection = open < line.size();
    if (!row.has_reflection && In_Usual_Columns(front)) {
        row.has_point = Read_Prf_Point(front, row.point);
        return row.has_point ? Row_Fault::none : Row_Fault::point;
    }
    const Fields_Of_Row fields = Cut_Row(front);
    row.has_point = !row.has_reflection || !fields.Profile_Blank();
    if (row.has_point && !Take_Profile(front, fields, row.point)) return Row_Fault::point;
    const bool beside = row.has_point || fields.field[0].empty();
    return !row.has_reflection || Take_Entry(fields, beside, line.substr(open), row.entry) ? Row_Fault::none : Row_Fault::reflection;
}

// --- phases --------------------------------------------------------------------------------------------------------------------

std::string Count_Text(std::size_t n, const std::string& what) { return std::to_string(n) + ' ' + what + (n == 1 ? "" : "s"); }

bool First_Is_The_Phase(const std::vector<Entry>& entries, const Prf_Phases& phases) {
    std::vector<int> found(phases.reflections.size());
    for (const Entry& e : entries) {
        if (e.first < 1 || e.first > phases.Number()) return false;
        ++found[static_cast<std::size_t>(e.first - 1)];
    }
    return found == phases.reflections;
}

// Levels from the highest down are the phases that have reflections. What disagrees with the line of phases is the message.
Status Phases_By_Level(std::vector<Entry>& entries, const Prf_Phases& phases) {
    std::map<float, int, std::greater<>> levels;
    for (const Entry& e : entries) ++levels[e.level];
    const auto with_reflections =
        phases.reflections.size() - static_cast<std::size_t>(std::count(phases.reflections.begin(), phases.reflections.end(), 0));
    if (levels.size() != with_reflections)
        return Status::Fail("the line of phases has " + Count_Text(with_reflections, "phase") + " with reflections, the column Posr " +
                            Count_Text(levels.size(), "level"));
    int phase = 0;
    for (auto& [level, n] : levels) {
        do ++phase;
        while (phases.reflections[static_cast<std::size_t>(phase - 1)] == 0);
        if (const int told = phases.reflections[static_cast<std::size_t>(phase - 1)]; n != told)
            return Status::Fail("phase " + std::to_string(phase) + " has " + Count_Text(static_cast<std::size_t>(told), "reflection") +
                                " on the line of phases, " + std::to_string(n) + " on its level of Posr");
        n = phase;
    }
    for (Entry& e : entries) e.reflection.phase = levels[e.level];
    return Status::Done();
}

// In a phase with propagation vectors the last number is that of the vector where it cannot be that of a wavelength everywhere.
void Take_Tags(std::vector<Entry>& entries, const Prf_Phases& phases) {
    std::vector<bool> vector_last(phases.vectors.size());
    for (const Entry& e : entries) {
        const auto place = static_cast<std::size_t>(e.reflection.phase - 1);
        if (phases.vectors[place] > 0 && (e.second < 1 || e.second > most_wavelengths)) vector_last[place] = true;
    }
    for (Entry& e : entries) {
        const bool of_vector = vector_last[static_cast<std::size_t>(e.reflection.phase - 1)];
        e.reflection.tag = of_vector ? e.second : e.first;
        if (!of_vector) e.reflection.wavelength = e.second;
    }
}

Status Take_Reflections(Prf_File& file, const Prf_Phases& phases, std::vector<Entry>& entries) {
    const auto told = static_cast<std::size_t>(file.info.nreflections);
    if (entries.size() != told)
        return Status::Fail("the line of phases has " + Count_Text(told, "reflection") + ", the rows have " +
                            std::to_string(entries.size()));
    if (First_Is_The_Phase(entries, phases)) {
        for (Entry& e : entries) e.reflection.phase = e.first, e.reflection.wavelength = e.second;
    } else {
        if (Status status = Phases_By_Level(entries, phases); status.failed) return status;
        Take_Tags(entries, phases);
    }
    for (std::size_t i = 0; i < told; ++i) Set_Reflection(file.info, phases, i, entries[i].reflection);
    return Status::Done();
}

}  // namespace

bool Read_Prf_Point(std::string_view line, Prf_Point& point) {
    static const Edit_Format format("(F12.4,4(1X,F8.0))");
    return Take_Point(line, point) || Read_Record(line, format, point.x, std::span<float>(point.y)).ok();
}

void Set_Point(Diffraction_Pattern_Type& p, std::size_t i, const Prf_Point& point) {
    p.x[i] = point.x;
    p.y[i] = point.y[0];
    p.ycalc[i] = point.y[1];
    p.bgr[i] = point.y[3];
}

Status Read_Prf_Rows(Prf_File& file, const Prf_Phases& phases, std::string_view& arrangement) {
    Diffraction_Pattern_Type& p = file.pattern;
    std::vector<Entry> entries;
    std::string_view line;
    Row row;
    const auto fail = [&arrangement](std::string_view what) { return Status::Fail(std::string(what) + std::string(arrangement)); };
    arrangement = behind_profile;
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        const Row_Fault fault = file.lines.Next(line) ? Read_Row(line, row) : Row_Fault::point;
        if (fault == Row_Fault::reflection || (fault == Row_Fault::none && row.has_reflection && row.has_point))
            arrangement = beside_profile;
        if (fault == Row_Fault::reflection) return fail(no_reflections);
        if (fault == Row_Fault::point || !row.has_point) return fail(no_profile);
        Set_Point(p, i, row.point);
        if (row.has_reflection) entries.push_back(row.entry);
    }
    if (!Is_Finite(p.x)) return fail(no_profile);
    while (file.lines.Next(line)) {
        if (Trim(line).empty() || (Contains(line, ":"))) continue;
        const bool good = Read_Row(line, row) == Row_Fault::none && row.has_reflection && !row.has_point;
        if (good) entries.push_back(row.entry);
        if (!good && entries.size() < static_cast<std::size_t>(file.info.nreflections)) return fail(no_reflections);
    }
    const Status taken = Take_Reflections(file, phases, entries);
    return taken.ok() ? taken : Status::Fail(std::string(no_reflections) + std::string(arrangement) + ": " + taken.message);
}

}  // namespace vntl
