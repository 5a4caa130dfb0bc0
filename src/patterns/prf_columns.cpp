// The layout of columns: a line of numbers, what belongs to the phases, and the profile a point a line.
//
//     2   5251     1.54056     1.54439     0.01200     0.00000     0.00000     0     phases, points, wavelengths, zero, displacements
//      45  30   0   1                                        reflections of each phase, then its propagation vectors
//      0.00000   0.00000   0.50000 superspace                of each phase with vectors
//      1                                                     excluded regions, and a line of two limits for each
//     2Theta  Yobs ...                                       heads
//         10.0000      123.      120.        3.       80.    x, observed, calculated, difference, background, with TABs between them
//
// The last number of the second line is 1 for times of flight, which a head "T.O.F." tells too: then the displacements' places hold dtt1
// and dtt2. A line of phases that has one number more than these counts ends with that of the regions, and no line of its own follows.
//
// prf_rows.cpp reads what stands under heads that name the columns of reflections. Under heads that do not, their length tells where the
// reflections are: behind the profile, a line that holds a colon above those of each phase, or at the right of its first lines. Columns
// decide there where a number stands, for two may touch. In the lines above the heads columns decide too, unless a word lies across them.
#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>

#include "base/edit_descriptor.hpp"
#include "base/scan.hpp"
#include "base/text.hpp"
#include "patterns/neutron_tools.hpp"
#include "patterns/prf_tools.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr int header_line = 2;  // of the file
constexpr int phases_in_one_list = 8;

// --- lines of numbers in columns or wherever they stand ---------------------------------------------------------------------------

using Widths = std::initializer_list<std::size_t>;

// Each field of so many columns holds one word, and none lies across two of them.
bool Stand_In_Columns(std::string_view line, Widths widths) {
    std::size_t at = 0;
    for (const std::size_t width : widths) {
        const std::string_view field = line.substr(std::min(at, line.size()), width), word = Trim(field);
        if (word.empty() || word.find_first_of(" \t") != std::string_view::npos) return false;
        at += width;
        if (at < line.size() && Trim(line.substr(at - 1, 2)).size() == 2) return false;
    }
    return true;
}

// The numbers with which the line begins, one word each, as many as there are places; nothing where columns hold them.
std::optional<std::vector<std::string_view>> Loose_Numbers(std::string_view line, Widths widths) {
    std::vector<std::string_view> words;
    const Status cut = Get_Words(line, words, widths.size() + 1, line.size());
    if ((cut.failed && words.size() < widths.size()) || words.size() < widths.size() || Stand_In_Columns(line, widths)) return std::nullopt;
    double value = 0;
    words.resize(widths.size());
    for (const std::string_view word : words)
        if (!Parse_Real(word, value)) return std::nullopt;
    return words;
}

bool Take_Number(std::string_view word, float& value) {
    double wide = 0;
    if (!Parse_Real(word, wide)) return false;
    value = static_cast<float>(wide);
    return true;
}

bool Read_Reals(std::string_view line, const Edit_Format& format, Widths widths, std::span<float> values) {
    const auto words = Loose_Numbers(line, widths);
    if (!words) return Read_Record(line, format, values).ok();
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!Take_Number((*words)[i], values[i])) return false;
    return true;
}

// How many numbers the line holds, 0 where it holds anything else.
std::size_t Count_Reals(std::string_view line) {
    std::vector<std::string_view> words;
    double value = 0;
    if (Get_Words(line, words, line.size(), line.size()).failed) return 0;
    return std::all_of(words.begin(), words.end(), [&](std::string_view word) { return Parse_Real(word, value); }) ? words.size() : 0;
}

// --- the line of numbers -------------------------------------------------------------------------------------------------------

// How many numbers the line holds: as many as it has words, or more where two of them touch, which its end tells.
std::size_t Numbers_Of_Header(std::string_view line) {
    constexpr std::size_t without_last = 7, with_last = 8, last_but_one_ends = 58, seventh_ends = 70, eighth_ends = 75;
    const std::size_t most = with_last + 1, length = Trim_Right(line).size();
    std::vector<std::string_view> words;
    const Status cut = Get_Words(line, words, most, line.size());
    const std::size_t n = cut.failed ? most : words.size();
    int whole = 0;
    if (n == without_last && Parse_Integer(words[1], whole) && Count_Reals(line) == n) return n;
    if (n < with_last && length > seventh_ends && length <= eighth_ends) return with_last;
    if (n < without_last && length > last_but_one_ends && length <= seventh_ends) return without_last;
    return n;
}

struct Header {
    int nphases = 0, npts = 0;
    float lambda1 = 0, lambda2 = 0;
    Prf_Shift shift;
};

Status Read_Header(std::string_view line, Header& h) {
    static const Edit_Format seven("(I3,I7,5F12.5)"), eight("(I3,I7,5F12.5,I5)");
    const std::size_t n = Numbers_Of_Header(line);
    if (n != 7 && n != 8) return Status::Fail("Error in number of columns");
    int kind = 0;
    bool good = false;
    if (const auto words = n == 7 ? Loose_Numbers(line, {3, 7, 12, 12, 12, 12, 12}) : Loose_Numbers(line, {3, 7, 12, 12, 12, 12, 12, 5})) {
        float* const reals[] = {&h.lambda1, &h.lambda2, &h.shift.zero, &h.shift.cosine, &h.shift.sine};
        good = Parse_Integer((*words)[0], h.nphases) && Parse_Integer((*words)[1], h.npts) && (n == 7 || Parse_Integer((*words)[7], kind));
        for (std::size_t i = 0; i < std::size(reals); ++i) good = good && Take_Number((*words)[2 + i], *reals[i]);
    } else {
        Edit_Reader reader(n == 7 ? seven : eight, line);
        good = reader.Read(h.nphases, h.npts, h.lambda1, h.lambda2, h.shift.zero, h.shift.cosine, h.shift.sine) &&
               (n == 7 || reader.Read(kind));
    }
    good = good && All_Finite(h.lambda1, h.lambda2, h.shift.zero, h.shift.cosine, h.shift.sine);
    if (!good) return Status::Fail("Error reading (col=" + std::to_string(n) + "): nphases,npts,lambda1,lambda2, glb1, ...");
    h.shift.flight = kind == 1;
    return Status::Done();
}

// --- phases and regions --------------------------------------------------------------------------------------------------------

// Counts of reflections and of vectors, and behind them that of the regions where the lines have one number more.
Status Read_Phases(Prf_File& file, Prf_Phases& phases, std::optional<int>& regions) {
    constexpr std::string_view bad_lists = "Error reading: ic, nvk";
    const std::size_t counts = phases.reflections.size() + phases.vectors.size();
    Line_Cursor first = file.lines;
    std::string_view line;
    const std::string_view before = file.lines.Rest();
    const std::size_t on_first = first.Next(line) ? Count_Reals(line) : 0;
    const bool one_list = phases.Number() <= phases_in_one_list || on_first == counts || on_first == counts + 1;
    const bool good = one_list ? Read_Free_Record(file.lines, phases.reflections, phases.vectors)
                               : Read_Free_Record(file.lines, phases.reflections) && Read_Free_Record(file.lines, phases.vectors);
    if (!good) return Status::Fail(bad_lists);
    std::vector<int> numbers(counts + 1);
    const std::string_view record = before.substr(0, before.size() - file.lines.Rest().size());
    if (counts > 0 && Count_Reals(Replace_All(Replace_All(record, "\r", " "), "\n", " ")) == counts + 1) {
        Line_Cursor again(record);
        if (!Read_Free_Record(again, numbers)) return Status::Fail(bad_lists);
        regions = numbers.back();
    }
    return Allocate_Phases(file, phases, bad_lists);
}

Status Read_Vectors(Prf_File& file, Prf_Phases& phases) {
    static const Edit_Format format("(3F10.5)");
    for (int phase = 1; phase <= phases.Number(); ++phase)
        for (int j = 1; j <= phases.vectors[static_cast<std::size_t>(phase - 1)]; ++j) {
            std::string_view line;
            const std::span vector(Propagation_Vector(file.info, phases, phase, j), 3);
            if (!file.lines.Next(line) || !Read_Reals(line, format, {10, 10, 10}, vector))
                return Status::Fail("Error reading propagation vectors");
            std::size_t behind = 30;
            if (Loose_Numbers(line, {10, 10, 10})) behind = line.size() - Behind_Words(line, 3).size();
            if (line.size() > behind && Equal_No_Case(Trim(line.substr(behind)), "superspace"))
                phases.superspace[static_cast<std::size_t>(phase - 1)] = true;
        }
    return Status::Done();
}

// `told`: their count, where the line of phases told it.
Status Read_Excluded(Prf_File& file, std::optional<int> told) {
    static const Edit_Format format("(2F14.5)");
    const auto pair = [](std::string_view line, std::span<float> limits) { return Read_Reals(line, format, {14, 14}, limits); };
    int count = told.value_or(0);
    const bool good = (told || Read_Free_Record(file.lines, count)) && Read_Regions(file, count, pair);
    return good ? Status::Done() : Status::Fail("Error reading excluded regions");
}

// Regions whose count the line of phases told may stand before the vectors: they are two numbers, a vector is three.
Status Read_Phases_And_Excluded(Prf_File& file, Prf_Phases& phases) {
    std::optional<int> regions;
    if (Status status = Read_Phases(file, phases, regions); status.failed) return status;
    Line_Cursor ahead = file.lines;
    std::string_view line;
    const bool regions_first = regions && *regions > 0 && ahead.Next(line) && Count_Reals(line) == 2;
    if (regions_first)
        if (Status status = Read_Excluded(file, regions); status.failed) return status;
    if (Status status = Read_Vectors(file, phases); status.failed) return status;
    return regions_first ? Status::Done() : Read_Excluded(file, regions);
}

// --- heads ---------------------------------------------------------------------------------------------------------------------

struct Heads {
    std::string_view told;  // the arrangement that their length tells
    bool named = false;     // they name the columns of reflections
    bool flight = false;
};

// The heads end with "K", or are as long as those that do.
bool Name_Reflections(std::string_view line) {
    std::string_view last;
    bool named = false;
    for (std::string_view rest = Trim(line); !rest.empty(); rest = Trim(rest.substr(last.size()))) {
        last = rest.substr(0, rest.find_first_of(" \t"));
        named = named || last == "Bragg" || last == "Posr";
    }
    const std::size_t length = Trim_Right(line).size();
    return named && (last == "K" || length == 46 || length == 52);
}

std::string_view Arrangement(std::string_view line) {
    for (const std::string_view cut : {line.substr(0, line.find_last_not_of(' ') + 1), Trim_Right(line), Trim(line)}) {
        if (cut.size() == 53) return behind_profile;
        if (cut.size() == 46) return beside_profile;
    }
    return "";
}

Status Read_Heads(Prf_File& file, Heads& heads) {
    Diffraction_Pattern_Type& p = file.pattern;
    std::string_view line;
    if (!file.lines.Next(line)) return Status::Fail("Error reading headings of columns");
    heads.flight = Contains(line, "T.O.F.");
    if (Contains(line, "r.l.u.")) {
        p.scat_var = "r.l.u.";
        p.legend_x = "Reciprocal Lattice Units (r.l.u.)";
    }
    p.legend_y = Contains(line, "Log") ? "Log(Intensity)(arb. units)" : " Intensity (arb. units)";
    heads.told = Arrangement(line);
    heads.named = Name_Reflections(line);
    constexpr std::size_t shown = 120;
    if (!heads.named && heads.told.empty())
        return Status::Fail("Error! Prf is not => Prf=+3 or Prf=-3!\nLine read: " + Kept_Text(line, shown));
    return Status::Done();
}

// --- the profile ---------------------------------------------------------------------------------------------------------------

// Calls `beside` with the number of the point, from 0, and its line.
template <class Beside>
bool Read_Points(Prf_File& file, Beside beside) {
    Diffraction_Pattern_Type& p = file.pattern;
    std::string_view line;
    Prf_Point point;
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        if (!file.lines.Next(line) || !Read_Prf_Point(line, point)) return false;
        Set_Point(p, i, point);
        if (!beside(i, line)) return false;
    }
    return Is_Finite(p.x);
}

// --- reflections ---------------------------------------------------------------------------------------------------------------

// Position, Miller indices, and the numbers of phase and wavelength. Further indices of a superspace are passed over.
const Edit_Format& Format_Beside() {
    static const Edit_Format format("(49X,F12.4,11X,3I3,2X,2I3)");
    return format;
}
const Edit_Format& Format_Behind(int superspace_vectors) {
    static const Edit_Format plain("(F12.4,47X,3I3,2X,2I3)"), one("(F12.4,11X,3I4,5X,2I4)"), two("(F12.4,11X,3I4,9X,2I4)"),
        three("(F12.4,11X,3I4,13X,2I4)");
    const Edit_Format* const formats[] = {&plain, &one, &two, &three};
    return *formats[std::clamp(superspace_vectors, 0, 3)];
}

// The phase is the one that the line tells, or else the one whose turn it is. `position_ends` is the column behind the position.
bool Read_Reflection(Prf_File& file, const Prf_Phases& phases, std::size_t i, std::string_view line, const Edit_Format& format,
                     std::size_t position_ends) {
    constexpr std::size_t position_width = 12;
    Prf_Reflection r;
    if (line.size() <= position_ends - position_width || Trim(line.substr(position_ends - position_width, position_width)).empty())
        return false;
    if (Read_Record(line, format, r.position, r.h, r.k, r.l, r.phase, r.wavelength.emplace()).failed || !All_Finite(r.position))
        return false;
    if (r.phase != phases.Phase_Of(r.phase)) r.phase = phases.Phase_Of_Entry(static_cast<int>(i));
    Set_Reflection(file.info, phases, i, r);
    return true;
}

// The lists of the phases one behind the other, each under a line with a colon.
bool Read_Reflections_Behind(Prf_File& file, const Prf_Phases& phases) {
    const auto count = static_cast<std::size_t>(file.info.nreflections);
    bool listed = false;
    std::string_view line;
    for (std::size_t i = 0; i < count;) {
        if (!file.lines.Next(line)) return false;
        const bool head = Contains(line, ":");
        listed = listed || head;
        if (head || !listed || Trim(line).empty()) continue;
        const auto place = static_cast<std::size_t>(phases.Phase_Of_Entry(static_cast<int>(i)) - 1);
        const int vectors = phases.superspace[place] ? phases.vectors[place] : 0;
        if (vectors > 3 || !Read_Reflection(file, phases, i, line, Format_Behind(vectors), 12)) return false;
        ++i;
    }
    return true;
}

Status Read_Behind(Prf_File& file, const Prf_Phases& phases) {
    const auto nothing = [](std::size_t, std::string_view) { return true; };
    if (!Read_Points(file, nothing)) return Status::Fail(std::string(no_profile) + "+3");
    return Read_Reflections_Behind(file, phases) ? Status::Done() : Status::Fail(std::string(no_reflections) + "+3 ");
}

Status Read_Beside(Prf_File& file, const Prf_Phases& phases) {
    const auto count = static_cast<std::size_t>(file.info.nreflections);
    bool reflections_good = count <= file.pattern.x.size();
    const auto reflection = [&](std::size_t i, std::string_view line) {
        reflections_good = i >= count || Read_Reflection(file, phases, i, line, Format_Beside(), 61);
        return reflections_good;
    };
    if (reflections_good && Read_Points(file, reflection)) return Status::Done();
    return Status::Fail(reflections_good ? std::string(no_profile) + "-3" : std::string(no_reflections) + "-3 ");
}

// Reflections in columns, whatever the heads name: their indices have no brackets. Beside points they make the first row longer.
bool Without_Brackets(const Prf_File& file, std::string_view arrangement) {
    if (arrangement.empty() || file.info.nreflections == 0 || Contains(file.lines.Rest(), "(")) return false;
    constexpr std::size_t points_end = 49;
    Line_Cursor ahead = file.lines;
    std::string_view first;
    return arrangement == behind_profile || (ahead.Next(first) && Trim_Right(first).size() > points_end);
}

}  // namespace

Status Read_Prf_Columns(Prf_File& file, std::string_view line) {
    Diffraction_Pattern_Type& p = file.pattern;
    Header header;
    if (Status status = Read_Header(line, header); status.failed) return status;
    p.scat_var = "2theta";
    if (Status status = Check_Phases(header.nphases, header_line); status.failed) return status;
    if (Status status = Allocate_Points(file, header.npts, header_line, "ERROR Format Special: npts <= 0"); status.failed) return status;

    Prf_Phases phases(header.nphases);
    Heads heads;
    if (Status status = Read_Phases_And_Excluded(file, phases); status.failed) return status;
    if (Status status = Read_Heads(file, heads); status.failed) return status;
    Prf_Shift& shift = header.shift;
    shift.flight = shift.flight || heads.flight;
    if (shift.flight && p.scat_var == "2theta") p.scat_var = "TOF";
    p.conv[0] = shift.flight ? shift.cosine : header.lambda1;
    p.conv[1] = shift.flight ? shift.sine : header.lambda2;

    std::string_view arrangement = heads.told;
    Status read;
    if (heads.named && !Without_Brackets(file, arrangement))
        read = Read_Prf_Rows(file, phases, arrangement);
    else
        read = arrangement == behind_profile ? Read_Behind(file, phases) : Read_Beside(file, phases);
    if (read.failed) return read;

    if (!Take_Shift_Off(shift, file)) return Status::Fail(std::string(no_profile) + std::string(arrangement));
    Set_Ranges(p);
    Set_Count_Variances(p);
    return Status::Done();
}

}  // namespace vntl
