#include "patterns/gsas_bank.hpp"

#include <algorithm>
#include <cmath>

#include "base/conversions.hpp"
#include "base/huge_pages.hpp"
#include "base/scan.hpp"
#include "base/text.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/plain_columns.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr std::size_t line_width = 80;
constexpr std::size_t mark_width = 4;  // of BANK
constexpr std::size_t most_words = 9;
constexpr float ticks = 0.03125f;  // the times of ALT banks are in 1/32 of a microsecond
constexpr float centidegrees = 100;

constexpr std::string_view constant_only = " => Only BINTYP=CONST is allowed for ESD data";
constexpr std::string_view ralf_or_constant_only = " =>  Only BINTYP=RALF or CONST is allowed for ALT data";
constexpr std::string_view bad_map = " => The TIME_MAP of the bank could not be read";

bool Is_Type(std::string_view word) {
    constexpr std::array<std::string_view, 5> types = {"STD", "ESD", "ALT", "FXYE", "FXY"};
    return std::any_of(types.begin(), types.end(), [&](std::string_view type) { return Equal_No_Case(word, type); });
}

std::vector<std::string_view> Words_Of_Bank(std::string_view line) {
    std::vector<std::string_view> words;
    if (line.size() <= mark_width) return words;
    const Status cut = Get_Words(line.substr(mark_width), words, most_words, line.size());
    (void)cut;  // what stands behind the ninth word does not matter
    return words;
}

bool Is_Letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// The records of a bank: lines up to the next bank line, which stays.
auto Records_Of_Bank(Line_Cursor& lines) {
    return [&lines](std::string_view& line) {
        const Line_Cursor before = lines;
        if (!lines.Next(line)) return false;
        if (!Is_Gsas_Bank_Line(line)) return true;
        lines = before;
        return false;
    };
}

// The next number of a line in free form; false at its end and at what is no number.
template <class Real>
bool Take_Number(Number_Walk& walk, Real& value) {
    walk.Skip_Separators();
    return walk.Take(value);
}

void Set_Ends_And_Mean_Step(Diffraction_Pattern_Type& p) {
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    p.step = p.npts > 1 ? (p.xmax - p.xmin) / static_cast<float>(p.npts - 1) : 0.0f;
}

// True when all x stand on the grid of `step` from the first on, as far as the digits of a text file tell.
bool On_Grid(const std::vector<float>& x, float step) {
    if (!(step > 0)) return false;
    const double tolerance = 0.25 * step;
    for (std::size_t i = 0; i < x.size(); ++i)
        if (!(std::fabs(x[i] - (x[0] + static_cast<double>(i) * step)) < tolerance)) return false;
    return true;
}

std::string_view Without_Bars(std::string_view word, std::string& kept) {
    kept = Upper(word);
    std::erase_if(kept, [](char c) { return c == '_' || c == '-'; });
    return kept;
}

bool Is_Time_Map(std::string_view word) {
    std::string kept;
    return Without_Bars(word, kept) == "TIMEMAP";
}

}  // namespace

bool Is_Gsas_Bank_Line(std::string_view line) {
    if (line.size() < mark_width || (line[0] != 'B' && line[0] != 'b')) return false;
    const std::string_view mark = line.substr(0, mark_width);
    if (mark == "BANK") return true;
    if (!Equal_No_Case(mark, "BANK")) return false;
    const auto words = Words_Of_Bank(line.substr(0, line_width));
    int number = 0;
    return words.size() > 3 && Parse_Integer(words[0], number) && Parse_Integer(words[1], number) && Is_Letter(words[3][0]);
}

Gsas_Bank_Line::Gsas_Bank_Line(std::string_view line) {
    constexpr std::size_t type_place = 8;
    // A record has 80 columns; longer is only what was written for the types that need no columns.
    auto words = Words_Of_Bank(Trim_Right(line.substr(0, 2 * line_width)));
    if (words.size() <= type_place || !(Equal_No_Case(words[type_place], "FXYE") || Equal_No_Case(words[type_place], "FXY")))
        words = Words_Of_Bank(Trim_Right(line.substr(0, line_width)));
    if (words.empty()) return;
    numbered = Parse_Integer(words[0], number);
    if (words.size() > 1 && !Parse_Integer(words[1], npts)) npts = 0;
    if (words.size() > 3) binning = words[3];
    for (std::size_t i = 0; i < coefficients.size() && i + 4 < words.size(); ++i)
        if (!IStringToReal(words[i + 4], coefficients[i])) coefficients[i] = none;
    if (words.size() > type_place)
        type = words[type_place];
    else if (words.size() > 4 && Is_Type(words.back()))
        type = words.back();
}

bool Gsas_Bank_Line::Bins(std::string_view name) const { return Equal_No_Case(binning, name); }
bool Gsas_Bank_Line::Bins_Time_Map() const { return Is_Time_Map(binning); }
bool Gsas_Bank_Line::Has_Type(std::string_view name) const { return Equal_No_Case(type, name); }

Gsas_Bank_Reader::Gsas_Bank_Reader(std::string_view text, bool flight)
    : text_(text), flight_(flight), divisor_(flight ? 1.0f : centidegrees), trust_(Most_Points(text.size())) {}

Status Gsas_Bank_Reader::Allocate_Room(const Gsas_Bank_Line& bank, Diffraction_Pattern_Type& p) {
    if (trust_ == 0) return Status::Fail(check_instr);
    return Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(std::min(static_cast<std::size_t>(bank.npts), trust_)));
}

Status Gsas_Bank_Reader::Read(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& p) {
    if (bank.npts < 1) return Status::Fail(check_instr);
    Status status = Status::Fail(check_instr);
    if (bank.Has_Type("STD") || bank.Has_Type("ESD"))
        status = bank.Bins_Constant()   ? Read_Constant(bank, lines, p)
                 : bank.Bins_Time_Map() ? Read_Mapped(bank, lines, p)
                                        : Status::Fail(constant_only);
    else if (bank.Has_Type("ALT"))
        status = bank.Bins_Constant() || bank.Bins("RALF") ? Read_Alternate(bank, lines, p) : Status::Fail(ralf_or_constant_only);
    else if (bank.Has_Type("FXYE") || bank.Has_Type("FXY"))
        status = Read_Stated(bank, lines, p);
    if (status.ok()) Set_Y_Limits(p);
    return status;
}

// Counts and variances of a STD or ESD bank; what cannot be read ends them, and the pattern.
Status Gsas_Bank_Reader::Read_Counts(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& p) {
    static const Edit_Format eights("(10F8.0)"), pairs("(10(I2,F6.0))");
    const auto next = Records_Of_Bank(lines);
    Groups_Read read;
    if (bank.Has_Type("ESD"))
        read = Read_Groups<5, 8, 8>(eights, next, p.npts, [&p](std::size_t i, const auto& group) {
            p.y[i] = group[0];
            p.sigma[i] = group[1] * group[1];
        });
    else if (flight_)
        read = Read_Groups<10, 8>(eights, next, p.npts, [&p](std::size_t i, const auto& group) {
            p.y[i] = group[0];
            p.sigma[i] = std::fabs(group[0]);
        });
    else
        read = Read_Groups<10, 2, 6>(pairs, next, p.npts, [&p](std::size_t i, const auto& group) {
            p.y[i] = group[1];
            p.sigma[i] = std::fabs(group[1]) / (group[0] == 0 ? 1 : group[0]);
        });
    if (read.held < 1) return Status::Fail(check_instr);
    trust_ -= static_cast<std::size_t>(read.held);
    End_At_Last_Number(p, static_cast<std::size_t>(read.held), bank.npts);
    return Status::Done();
}

Status Gsas_Bank_Reader::Read_Constant(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& p) {
    const auto [start, step, third, fourth] = bank.coefficients;
    if (!std::isfinite(start) || !std::isfinite(step)) return Status::Fail(check_instr);
    if (Status status = Allocate_Room(bank, p); status.failed) return status;
    if (Status status = Read_Counts(bank, lines, p); status.failed) return status;
    p.xmin = start / divisor_;
    p.step = step / divisor_;
    p.constant_step = true;
    Set_Grid(p);
    Set_Grid_End(p);
    return Status::Done();
}

// Triples of time, intensity and deviation. A bank of RALF holds the counts of channels of unequal width.
Status Gsas_Bank_Reader::Read_Alternate(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& p) {
    static const Edit_Format triples("(4(F8.0,F7.0,F5.0))");
    const auto [start, step, third, fourth] = bank.coefficients;
    const bool ralf = bank.Bins("RALF");
    if (!std::isfinite(start) || !std::isfinite(step)) return Status::Fail(check_instr);
    if (Status status = Allocate_Room(bank, p); status.failed) return status;
    const Groups_Read read = Read_Groups<4, 8, 7, 5>(triples, Records_Of_Bank(lines), p.npts, [&p](std::size_t i, const auto& group) {
        p.x[i] = group[0] * ticks;
        p.y[i] = group[1];
        p.sigma[i] = group[2];
    });
    const int points = ralf ? read.held - 1 : read.held;  // the last time of RALF ends the last channel
    if (points < 1) return Status::Fail(check_instr);
    trust_ -= static_cast<std::size_t>(read.held);
    const auto n = static_cast<std::size_t>(points);
    for (std::size_t i = 0; ralf && i < n; ++i) {
        constexpr float scale = 1000;
        const float dx = p.x[i + 1] - p.x[i];
        p.y[i] = dx == 0 ? 0 : scale * p.y[i] / dx;
        p.sigma[i] = dx == 0 ? 0 : scale * p.sigma[i] / dx;
    }
    End_At_Last_Number(p, n, read.held < bank.npts ? bank.npts : points);
    for (float& s : p.sigma) s *= s;
    p.xmin = start * ticks;
    p.step = step * ticks;
    p.xmax = p.x.back();
    p.constant_step = !ralf;
    return Status::Done();
}

// A line a point, in free form. Blank lines and comments between them do not count.
Status Gsas_Bank_Reader::Read_Stated(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& p) {
    const bool deviations = bank.Has_Type("FXYE");
    x_.clear(), y_.clear(), deviation_.clear();
    // Room for what the rest of the file can hold; memory is taken as it fills.
    const std::size_t room = std::min(static_cast<std::size_t>(bank.npts), lines.Rest().size() / 4 + 1);
    for (auto* values : {&x_, &y_, &deviation_}) Reserve_Many(*values, room);
    auto next = Records_Of_Bank(lines);
    std::string_view line;
    for (int count = 0; count < bank.npts && next(line);) {
        Number_Walk walk(line);
        walk.Skip_Separators();
        if (walk.At_End() || walk.Front() == '#' || walk.Front() == '!') continue;
        float x = 0, y = 0, s = 0;
        if (!walk.Take(x) || !std::isfinite(x) || !Take_Number(walk, y)) break;
        if (deviations && !Take_Number(walk, s)) break;
        x_.push_back(x / divisor_), y_.push_back(y), deviation_.push_back(s);
        ++count;
    }
    if (x_.empty()) return Status::Fail(check_instr);
    if (Status status = Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(x_.size())); status.failed) return status;
    std::copy(x_.begin(), x_.end(), p.x.begin());
    std::copy(y_.begin(), y_.end(), p.y.begin());
    for (std::size_t i = 0; i < p.sigma.size(); ++i) p.sigma[i] = deviations ? deviation_[i] * deviation_[i] : std::fabs(p.y[i]);
    Set_Ends_And_Mean_Step(p);
    const float step = bank.coefficients[1] / divisor_;
    End_At_Last_Number(p, x_.size(), bank.npts);
    if (!bank.Bins_Constant() || !On_Grid(p.x, step)) return Status::Done();
    p.step = step;
    p.constant_step = true;
    return Status::Done();
}

// STD and ESD banks whose channels a map tells.
Status Gsas_Bank_Reader::Read_Mapped(const Gsas_Bank_Line& bank, Line_Cursor& lines, Diffraction_Pattern_Type& p) {
    Read_Maps();
    if (maps_.empty()) return Status::Fail(constant_only);
    const float name = bank.coefficients[0];
    const auto map = std::isfinite(name) && std::fabs(name) < 1e6f ? maps_.find(static_cast<int>(name)) : maps_.end();
    if (map == maps_.end() || map->second.empty() || map->second.front().channel > 1) return Status::Fail(bad_map);
    if (Status status = Allocate_Room(bank, p); status.failed) return status;
    if (Status status = Read_Counts(bank, lines, p); status.failed) return status;
    const std::vector<Piece>& pieces = map->second;
    std::size_t piece = 0;
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        const double channel = static_cast<double>(i + 1);
        while (piece + 1 < pieces.size() && pieces[piece + 1].channel <= channel) ++piece;
        const auto& [first, time, width] = pieces[piece];
        p.x[i] = static_cast<float>(time + (channel - first) * width);
        p.y[i] = static_cast<float>(p.y[i] / width);
        p.sigma[i] = static_cast<float>(p.sigma[i] / (width * width));
    }
    Set_Ends_And_Mean_Step(p);
    return Status::Done();
}

namespace {

// The first `n` values of a map in ten fields of eight columns a line, or else as words.
bool Read_Map_Values(Line_Cursor& lines, std::size_t n, bool columns, std::vector<double>& values) {
    constexpr std::size_t width = 8;
    values.clear();
    std::string_view line;
    while (values.size() < n && lines.Next(line)) {
        const std::string_view record = Trim_Right(columns ? line.substr(0, line_width) : line);
        const char* at = record.data();
        const char* const end = at + record.size();
        if (at == end) return false;
        double value = 0;
        while (at != end && values.size() < n) {
            const char* const stop = columns ? at + std::min<std::ptrdiff_t>(width, end - at) : end;
            Number_Walk field(at, stop);
            if (!Take_Number(field, value)) return false;
            if (columns && !Trim(field.Rest()).empty()) return false;
            at = columns ? stop : field.At();
            values.push_back(value);
        }
    }
    return values.size() == n;
}

// Groups of first channel, time and width, channels and times rising.
bool Is_Map(const std::vector<double>& values) {
    constexpr double longest = 1e12;  // clock periods
    for (std::size_t i = 0; i + 2 < values.size(); i += 3) {
        if (!(values[i] >= 1) || !(values[i + 2] > 0) || values[i + 2] > longest || !(std::fabs(values[i + 1]) <= longest)) return false;
        if (i > 0 && !(values[i] > values[i - 3] && values[i + 1] > values[i - 2])) return false;
    }
    return true;
}

}  // namespace

void Gsas_Bank_Reader::Read_Maps() {
    constexpr double usual_clock = 100, longest_clock = 1e9;
    constexpr double nanoseconds = 1000;  // in a microsecond
    if (maps_read_) return;
    maps_read_ = true;
    std::string_view line;
    std::vector<std::string_view> words;
    std::vector<double> values;
    for (Line_Cursor lines(text_); lines.Next(line);) {
        if (line.empty() || (line[0] != 'T' && line[0] != 't')) continue;
        const Status cut = Get_Words(line.substr(0, line_width), words, most_words, line_width);
        (void)cut;
        int number = 0, count = 0;
        if (words.size() < 3 || !Is_Time_Map(words[0]) || !Parse_Integer(words[1], number) || !Parse_Integer(words[2], count)) continue;
        std::vector<Piece>& pieces = maps_[number];
        if (!pieces.empty() || count < 3) continue;
        double clock = usual_clock;
        if (words.size() > 4 && Is_Time_Map(words[words.size() - 2]) &&
            !(Parse_Real(words.back(), clock) && clock > 0 && clock < longest_clock))
            continue;
        const auto n = static_cast<std::size_t>(count);
        Line_Cursor columns = lines, free = lines;
        if (!(Read_Map_Values(columns, n, true, values) && Is_Map(values)) && !(Read_Map_Values(free, n, false, values) && Is_Map(values)))
            continue;
        const double unit = clock / nanoseconds;
        for (std::size_t i = 0; i + 2 < values.size(); i += 3) pieces.push_back({values[i], values[i + 1] * unit, values[i + 2] * unit});
    }
}

}  // namespace vntl
