#include "instrument/calibration.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <span>

#include "base/free_form.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t r3a_detectors = 25, r5b_most_tubes = 128, r5b_most_cells = 128, r8_banks = 9, r8_cells = 64;

Status Problem(std::string_view what, std::string_view instrument, const std::string& detail) {
    return Status::Fail(" Problems reading " + std::string(what) + std::string(instrument) + " Instrument\n" + detail);
}

std::string Count_Of(std::size_t found, std::size_t wanted) {
    return std::to_string(found) + " numbers, where " + std::to_string(wanted) + " are needed";
}

// A line without its comment, which "!" or "#" begins.
std::string_view Without_Comment(std::string_view line) { return Trim(line.substr(0, line.find_first_of("!#"))); }

// Adds the numbers of a line, and repeats of one ("25*1.0"), until there are `most`. False where anything else stands before that.
bool Take_Numbers(std::string_view line, std::size_t most, std::vector<float>& numbers) {
    Number_Walk walk(line);
    for (walk.Skip_Separators(); !walk.At_End() && numbers.size() < most; walk.Skip_Separators()) {
        double value = 0, repeats = 1;
        if (!walk.Take(value, '*')) return false;
        if (!walk.At_End() && walk.Front() == '*') {
            repeats = value;
            walk = Number_Walk(walk.Rest().substr(1));
            if (!(repeats >= 1 && repeats == std::floor(repeats)) || !walk.Take(value)) return false;
        }
        if (!Is_Sound(value)) return false;
        const double left = static_cast<double>(most - numbers.size());
        numbers.insert(numbers.end(), static_cast<std::size_t>(std::min(repeats, left)), static_cast<float>(value));
    }
    return true;
}

// Detectors with `points` cells each, all of which count alike.
void Set_Size(Calibration_Detector_Type& cal, std::size_t detectors, std::size_t points) {
    cal.ndet = static_cast<int>(detectors);
    cal.npoints_det = static_cast<int>(points);
    cal.cal_effic.assign(detectors * points, 1.0f);
    cal.cal_active.assign(detectors * points, true);
}

// A cell that counts nothing, or less, cannot be corrected.
void Switch_Off_Dead_Cells(Calibration_Detector_Type& cal) {
    for (std::size_t i = 0; i < cal.cal_effic.size(); ++i)
        if (!(cal.cal_effic[i] > 0)) cal.cal_active[i] = false;
}

// --- R3A ---------------------------------------------------------------------------------------------------------------------------

// A list of 25 numbers on a line of its own, or on several that end with the 25th.
bool Read_List(Line_Cursor& lines, std::vector<float>& numbers, std::string& detail) {
    std::string_view line;
    bool one_line = true;
    while (numbers.size() < r3a_detectors && lines.Next(line)) {
        line = Without_Comment(line);
        if (line.empty()) continue;
        const std::size_t most = one_line ? r3a_detectors : 2 * r3a_detectors;  // what stands behind the list of one line is free
        one_line = false;
        if (!Take_Numbers(line, most, numbers)) {
            detail = "line " + std::to_string(lines.Number()) + " holds something else than numbers";
            return false;
        }
    }
    if (numbers.size() == r3a_detectors) return true;
    // Where a list is too short its next line is that of another one.
    detail =
        "the list that ends with line " + std::to_string(lines.Number()) + " does not have " + std::to_string(r3a_detectors) + " numbers";
    return false;
}

Status Read_R3a_Calibration(std::string_view text, const std::string& file, Calibration_Detector_Type& cal) {
    Line_Cursor lines(text);
    std::string_view free_line;
    lines.Next(free_line);
    std::string detail;
    std::vector<float> efficiencies;
    Set_Size(cal, r3a_detectors, 1);
    if (!Read_List(lines, cal.cal_pos, detail)) return Problem("Positions of Detectors for ", "R3A", file + ": " + detail);
    if (!Read_List(lines, efficiencies, detail)) return Problem("Efficiency values for Detectors of ", "R3A", file + ": " + detail);
    cal.cal_effic = std::move(efficiencies);
    // A minus switches a detector off, except where the positions are counted downwards from the first detector.
    const auto negative = std::count_if(cal.cal_pos.begin(), cal.cal_pos.end(), [](float position) { return position < 0; });
    const bool downwards = 2 * static_cast<std::size_t>(negative) > r3a_detectors;
    for (std::size_t i = 0; i < r3a_detectors; ++i)
        if (cal.cal_pos[i] < 0 && !downwards) cal.cal_active[i] = false;
    Switch_Off_Dead_Cells(cal);
    return Status::Done();
}

// --- R5B, R8: sections -------------------------------------------------------------------------------------------------------------

// The numbers behind a line with a word. Other lines of words are titles.
struct Section {
    std::string_view word;  // it begins so, in letters of any case
    std::size_t most = 0;   // numbers that are kept
    bool found = false, bad = false;
    int line = 0;  // of the word, or of what is no number
    std::vector<float> numbers = {};

    bool Good(std::size_t wanted) const { return found && !bad && numbers.size() == wanted; }
    std::string Detail(const std::string& file, std::size_t wanted) const {
        if (!found) return file + ": the section \"" + std::string(word) + "\" is missing";
        if (bad) return file + ": line " + std::to_string(line) + " holds something else than numbers";
        return file + ": the section \"" + std::string(word) + "\" in line " + std::to_string(line) + " has " +
               (numbers.size() > wanted ? "more numbers than the " + std::to_string(wanted) + " that are needed"
                                        : Count_Of(numbers.size(), wanted));
    }
};

bool Is_Letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

void Read_Sections(std::string_view text, std::span<Section> sections) {
    Line_Cursor lines(text);
    std::string_view line;
    Section* present = nullptr;
    while (lines.Next(line)) {
        line = Without_Comment(line);
        if (line.empty()) continue;
        if (Is_Letter(line.front())) {
            for (Section& section : sections)
                if (!section.found && Equal_No_Case(line.substr(0, section.word.size()), section.word)) {
                    present = &section;
                    present->found = true;
                    present->line = lines.Number();
                }
        } else if (present != nullptr && !present->bad && !Take_Numbers(line, present->most, present->numbers)) {
            present->bad = true;
            present->line = lines.Number();
        }
    }
}

bool Is_Zone(float first, float last) {
    const bool whole = first == std::floor(first) && last == std::floor(last);
    const bool none = first == 0 && last == 0;  // of a tube that counts nothing
    return whole && (none || (first >= 1 && first <= last && last <= static_cast<float>(r5b_most_cells)));
}

// Efficiencies stand for all cells of each tube, or for those of its zone alone.
Status Take_Efficiencies(const Section& section, const std::vector<float>& zones, const std::string& file, Calibration_Detector_Type& cal) {
    std::size_t longest = 0, in_zones = 0;
    const std::size_t tubes = cal.cal_pos.size();
    const auto first = [&](std::size_t tube) { return static_cast<std::size_t>(zones[2 * tube]); };
    const auto last = [&](std::size_t tube) { return static_cast<std::size_t>(zones[2 * tube + 1]); };
    const auto length = [&](std::size_t tube) { return last(tube) == 0 ? 0 : last(tube) - first(tube) + 1; };
    for (std::size_t tube = 0; tube < tubes; ++tube) longest = std::max(longest, last(tube)), in_zones += length(tube);
    const std::size_t given = section.numbers.size();
    const std::size_t points = given / tubes;
    const bool all = given % tubes == 0 && points >= std::max<std::size_t>(longest, 1) && points <= r5b_most_cells;
    if (section.bad || !section.found || given == 0 || (!all && given != in_zones)) {
        const std::string several = section.found && !section.bad
                                        ? " (" + std::to_string(tubes) + " tubes, whose zones hold " + std::to_string(in_zones) + " cells)"
                                        : "";
        return Problem("Efficiencies values for Detectors in ", "R5B",
                       section.Detail(file, tubes * std::max<std::size_t>(longest, 1)) + several);
    }
    Set_Size(cal, tubes, all ? points : longest);
    const float* next = section.numbers.data();
    for (std::size_t tube = 0; tube < tubes; ++tube)
        for (std::size_t point = 0; point < static_cast<std::size_t>(cal.npoints_det); ++point) {
            const std::size_t cell = cal.Cell(static_cast<int>(point), static_cast<int>(tube));
            const bool inside = length(tube) > 0 && point + 1 >= first(tube) && point + 1 <= last(tube);
            cal.cal_active[cell] = inside;
            if (all || inside) cal.cal_effic[cell] = *next++;
        }
    Switch_Off_Dead_Cells(cal);
    return Status::Done();
}

Status Read_R5b_Calibration(std::string_view text, const std::string& file, Calibration_Detector_Type& cal) {
    Section sections[] = {
        {"angles", r5b_most_tubes + 1}, {"zones", 2 * r5b_most_tubes + 1}, {"efficiencies", r5b_most_tubes * r5b_most_cells + 1}};
    Read_Sections(text, sections);
    const auto& [angles, zones, efficiencies] = sections;
    if (angles.bad || angles.numbers.empty() || angles.numbers.size() > r5b_most_tubes)
        return Problem("Angles positions for Detectors in ", "R5B", angles.Detail(file, r5b_most_tubes));
    cal.cal_pos = angles.numbers;
    const std::size_t tubes = cal.cal_pos.size();
    Set_Size(cal, tubes, 0);
    if (!zones.Good(2 * tubes)) return Problem("Zones values for Detectors in ", "R5B", zones.Detail(file, 2 * tubes));
    for (std::size_t tube = 0; tube < tubes; ++tube)
        if (!Is_Zone(zones.numbers[2 * tube], zones.numbers[2 * tube + 1]))
            return Problem("active zones for Detectors in ", "R5B",
                           file + ": the zone of detector " + std::to_string(tube + 1) + " does not lie between the cells 1 and " +
                               std::to_string(r5b_most_cells));
    return Take_Efficiencies(efficiencies, zones.numbers, file, cal);
}

Status Read_R8_Calibration(std::string_view text, const std::string& file, Calibration_Detector_Type& cal) {
    Section sections[] = {{"angles", r8_banks + 1}, {"effic", r8_banks * r8_cells + 1}};
    Read_Sections(text, sections);
    const auto& [angles, efficiencies] = sections;
    Set_Size(cal, r8_banks, r8_cells);
    if (!angles.Good(r8_banks)) return Problem("Angles positions for Detectors in ", "R8", angles.Detail(file, r8_banks));
    cal.cal_pos = angles.numbers;
    if (!efficiencies.Good(r8_banks * r8_cells))
        return Problem("Efficiencies values for Detectors in ", "R8", efficiencies.Detail(file, r8_banks * r8_cells));
    cal.cal_effic = efficiencies.numbers;
    Switch_Off_Dead_Cells(cal);
    return Status::Done();
}

// --- R22 ---------------------------------------------------------------------------------------------------------------------------

bool All_Sound(std::span<const float> values) {
    return std::all_of(values.begin(), values.end(), [](float value) { return Is_Sound(static_cast<double>(value)); });
}

std::string Without_Comments(std::string_view text) {
    std::string plain;
    Line_Cursor lines(text);
    for (std::string_view line; lines.Next(line);) {
        line = Without_Comment(line);
        if (!line.empty()) plain.append(line).append("\n");
    }
    return plain;
}

Status Read_R22_Calibration(std::string_view text, const std::string& file, Calibration_Detector_Type& cal) {
    const std::string plain = Without_Comments(text);
    if (plain.empty()) return Status::Fail(" Problems reading Calibration File: " + file + ", for R22 Instrument");
    Line_Cursor lines(plain);
    std::string_view first_line;
    lines.Next(first_line);
    int points = 0;
    if (!Free_Form_Reader(first_line).Read(points) || points < 1)
        return Status::Fail(" Problem reading the number of points of the R22 detector in calibration file: " + file);

    Free_Form_Reader reader(lines.Rest());
    const auto n = static_cast<std::size_t>(points);
    const Status positions_fail = Status::Fail(" Problem reading cell positions of R22 detector in calibration file: " + file);
    if (n > (plain.size() + 1) / 2) return positions_fail;  // each of its own takes a digit and a separator
    cal.cal_pos.assign(n, 0.0f);
    Set_Size(cal, 1, n);
    if (!reader.Read(cal.cal_pos) || reader.given() != n || !All_Sound(cal.cal_pos)) return positions_fail;
    std::vector<float> factors(n);
    if (!reader.Read(factors) || reader.given() != n || !All_Sound(factors))
        return Status::Fail(" Problem reading efficiencies of R22 detector in calibration file: " + file);

    // The file tells by what counts are multiplied.
    for (std::size_t i = 0; i < n; ++i) {
        const float effic = 1.0f / factors[i];
        cal.cal_active[i] = factors[i] > 0 && std::isfinite(effic) && effic > 0;
        if (cal.cal_active[i]) cal.cal_effic[i] = effic;
    }
    cal.cal_index.resize(n);
    std::iota(cal.cal_index.begin(), cal.cal_index.end(), 0);
    const auto position = [&cal](int point) { return cal.cal_pos[static_cast<std::size_t>(point)]; };
    std::stable_sort(cal.cal_index.begin(), cal.cal_index.end(), [&](int a, int b) { return position(a) < position(b); });
    return Status::Done();
}

// --- the table of readers ----------------------------------------------------------------------------------------------------------

struct Reader {
    std::string_view instrument;
    Status (*read)(std::string_view, const std::string&, Calibration_Detector_Type&);
};
constexpr std::array<Reader, 4> readers = {
    {{"R3A", Read_R3a_Calibration}, {"R5B", Read_R5b_Calibration}, {"R8", Read_R8_Calibration}, {"R22", Read_R22_Calibration}}};

const Reader* Reader_Of(std::string_view instrument) {
    const std::string name = Upper(instrument);
    for (const Reader& reader : readers)
        if (Contains(name, reader.instrument)) return &reader;
    return nullptr;
}

Status No_Reader(std::string_view instrument) {
    return Status::Fail(" Problems reading Calibration File for " + std::string(Trim(instrument)) + " Instrument");
}

}  // namespace

Status Read_Calibration_Text(std::string_view text, const std::string& file, std::string_view instrument, Calibration_Detector_Type& cal) {
    const Reader* const reader = Reader_Of(instrument);
    if (reader == nullptr) return No_Reader(instrument);
    cal = {};
    cal.cal_instrument = reader->instrument;
    text = Without_End_Mark(Without_Mark(text));
    if (reader->instrument != "R22" && text.find_first_not_of(" \t\r\n") == std::string_view::npos)
        return Problem("Calibration File for ", reader->instrument, file + " is empty");
    return reader->read(text, file, cal);
}

Status Read_Calibration_File(const std::string& file, std::string_view instrument, Calibration_Detector_Type& cal) {
    const Reader* const reader = Reader_Of(instrument);
    if (reader == nullptr) return No_Reader(instrument);
    Text_File source;
    if (Status status = source.Open(file); status.failed) {
        const std::string told = reader->instrument == "R22"
                                     ? " Problems reading Calibration File: " + file + ", for R22 Instrument"
                                     : " Problems reading Calibration File for " + std::string(reader->instrument) + " Instrument";
        return Status::Fail_File(told + "\n" + status.message);
    }
    return Read_Calibration_Text(source.Text(), file, instrument, cal);
}

}  // namespace vntl
