#include "patterns/cif_pattern.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <string>

#include "base/edit_descriptor.hpp"
#include "base/free_form.hpp"
#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/cif_wavelength.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t least_lines = 10, line_width = 120;
constexpr int most_heads = 10, most_columns = 24;  // heads of the pattern itself, and those that are looked at for its deviations
constexpr double largest_angle = 360;
constexpr float least_sigma = 0.001f;  // of a point that the agreement takes in

constexpr std::string_view too_few_lines = " Number of lines too small to hold a diffraction pattern, check your CIF file!";
constexpr std::string_view no_count = " No line with the number of points in the pattern, check your CIF file!";
constexpr std::string_view bad_count = " Error reading the number of points in the pattern, check your CIF file!";
constexpr std::string_view no_data = " Error: experimental data are lacking, check your CIF file!";

constexpr std::string_view loop_word = "loop_";

// What is known of the file before its loop is looked at: the lines that count, blank when there is none.
struct Marks {
    std::string_view block, probe, points;
    std::array<std::string_view, 2> start, increment;  // of the range of 2theta: as processed, as measured
    Line_Cursor loop{{}};                              // behind the line of the first loop
};

struct Mark_Word {
    std::string_view word;
    std::string_view& line;
};

std::string_view Kept_Line(std::string_view line) { return Cut(line, line_width); }

Marks Find_Marks(std::string_view text) {
    Marks marks;
    const Mark_Word words[] = {{"_pd_block_id", marks.block},
                               {"_diffrn_radiation_probe", marks.probe},
                               {"_pd_proc_number_of_points", marks.points},
                               {"_pd_proc_2theta_range_min", marks.start[0]},
                               {"_pd_meas_2theta_range_min", marks.start[1]},
                               {"_pd_proc_2theta_range_inc", marks.increment[0]},
                               {"_pd_meas_2theta_range_inc", marks.increment[1]}};
    Line_Cursor lines(text);
    bool looped = false;
    for (std::string_view whole; lines.Next(whole);) {
        const std::string_view line = Kept_Line(whole);
        if (!Contains(line, "_")) continue;
        for (const auto& [word, place] : words)
            if (Contains(line, word)) place = line;
        if (looped || !Contains(line, loop_word)) continue;
        looped = true;
        marks.loop = lines;
    }
    return marks;
}

Status Read_Count(const Marks& marks, std::size_t bytes, int& npts) {
    if (marks.points.empty()) return Status::Fail(no_count);
    Free_Form_Reader reader(From_Column(marks.points, 27));
    const bool good = reader.Read(npts) && reader.given() == 1 && npts >= 1 && static_cast<std::size_t>(npts) <= Most_Points(bytes);
    return good ? Status::Done() : Status::Fail(bad_count);
}

enum class Column { x, y, ycalc, bgr, weight, deviation, counts };
constexpr std::size_t kinds_of_column = 7;

// Heads that name a column of the pattern. Of those that are `told` the last in the loop counts, the others stand in where none is.
struct Head {
    std::string_view name;
    Column column;
    bool told;
    std::string_view scat_var, legend_x;
};
constexpr Head heads[] = {
    {"_pd_proc_2theta_corrected", Column::x, true, "2theta", "2theta(degrees)"},
    {"_pd_proc_d_spacing", Column::x, true, "d-spacing", "d-spacing(Angstroms)"},
    {"_pd_meas_2theta_scan", Column::x, false, "2theta", "2theta(degrees)"},
    {"_pd_meas_time_of_flight", Column::x, false, "TOF", "TOF(micro-seconds)"},
    {"_pd_proc_intensity_total", Column::y, true, {}, {}},
    {"_pd_meas_intensity_total", Column::y, false, {}, {}},
    {"_pd_meas_counts_total", Column::y, false, {}, {}},
    {"_pd_proc_intensity_net", Column::y, false, {}, {}},
    {"_pd_calc_intensity_total", Column::ycalc, true, {}, {}},
    {"_pd_calc_intensity_net", Column::ycalc, false, {}, {}},
    {"_pd_proc_intensity_bkg_calc", Column::bgr, true, {}, {}},
    {"_pd_proc_ls_weight", Column::weight, true, {}, {}},
    {"_pd_proc_intensity_total_su", Column::deviation, true, {}, {}},
    {"_pd_meas_intensity_total_su", Column::deviation, true, {}, {}},
    {"_pd_proc_intensity_net_su", Column::deviation, true, {}, {}},
    {"_pd_meas_counts_total", Column::counts, true, {}, {}},
};

struct Place {
    int number = -1;  // of the column, from 0
    const Head* head = nullptr;
};

struct Loop {
    std::array<Place, kinds_of_column> places;
    Line_Cursor rows{{}};

    const Place& operator[](Column column) const { return places[static_cast<std::size_t>(column)]; }
    bool Has(Column column) const { return (*this)[column].head != nullptr; }
};

void Note_Head(std::string_view name, int number, Loop& loop) {
    for (const Head& head : heads) {
        if (!Equal_No_Case(head.name, name) || (number >= most_heads && head.column < Column::weight)) continue;
        Place& place = loop.places[static_cast<std::size_t>(head.column)];
        if (head.told || place.head == nullptr) place = {number, &head};
    }
}

// The heads behind a "loop_", and where its rows begin. `lines` stays.
Loop Read_Heads(Line_Cursor lines) {
    Loop loop;
    std::string_view line;
    for (int number = 0;; ++number) {
        loop.rows = lines;
        if (!lines.Next(line)) return loop;
        line = Trim(Kept_Line(line));
        if (!line.starts_with('_')) break;
        if (number < most_columns) Note_Head(line.substr(0, line.find_first_of(" \t")), number, loop);
    }
    while (line.empty()) {
        loop.rows = lines;
        if (!lines.Next(line)) break;
        line = Trim(line);
    }
    return loop;
}

// Where x starts and how it goes on, when no column has it.
struct Range {
    bool known = false;
    double start = 0, step = 0;
};

bool Number_Of(std::string_view line, double& value) {
    line = Trim_Left(line);
    line.remove_prefix(std::min(line.size(), line.find_first_of(" \t")));
    Free_Form_Reader reader(line);
    return reader.Read(value) && reader.given() == 1 && std::fabs(value) < largest_angle;
}

Range Range_Of(const Marks& marks) {
    Range range;
    for (std::size_t i = 0; i < marks.start.size() && !range.known; ++i)
        range.known = Number_Of(marks.start[i], range.start) && Number_Of(marks.increment[i], range.step) && range.step > 0;
    return range;
}

// The first loop; or the first one that holds a pattern, where that does not.
bool Find_Loop(const Marks& marks, const Range& range, Loop& loop) {
    loop = Read_Heads(marks.loop);
    const auto holds = [&] { return loop.Has(Column::y) && (loop.Has(Column::x) || range.known); };
    if (holds()) return true;
    Line_Cursor lines = marks.loop;
    for (std::string_view line; lines.Next(line);) {
        if (!Contains(Kept_Line(line), loop_word)) continue;
        loop = Read_Heads(lines);
        if (holds()) return true;
    }
    return false;
}

struct Value {
    float number = 0;
    float deviation = 0;
    bool known = false;
};

bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

// The decimal exponent of the last digit of the number in [first, last): -2 of "12.34", 1 of "1.234E3".
bool Last_Place(const char* first, const char* last, int& place) {
    const char* at = first;
    if (*at == '+' || *at == '-') ++at;
    while (at != last && Is_Digit(*at)) ++at;
    const char* const point = at;
    if (at != last && *at == '.') ++at;
    while (at != last && Is_Digit(*at)) ++at;
    const int decimals = at == point ? 0 : static_cast<int>(at - point) - 1;
    int exponent = 0;
    if (at != last) {
        constexpr int most = 10000;
        if (*at != '+' && *at != '-') ++at;
        if (!Parse_Int(at, last, exponent) || std::abs(exponent) > most) return false;
    }
    place = exponent - decimals;
    return true;
}

// Digits whose last one has that place.
float Deviation(const char* first, const char* last, int place) {
    constexpr double powers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
    constexpr int short_enough = 9;
    if (last - first > short_enough || place > 0 || -place >= static_cast<int>(std::size(powers)))
        return Float_From_Digits(first, last, place, false);
    int digits = 0;
    for (; first != last; ++first) digits = 10 * digits + (*first - '0');
    return static_cast<float>(digits / powers[-place]);
}

// Takes the value at `at`, which must end at a blank or at the end of the line.
bool Take_Value(const char*& at, const char* end, Value& value) {
    value = {};
    const char* behind = Parse_Float(at, end, value.number);
    if (behind == at) {
        if (*at != '.' && *at != '?') return false;
        ++behind;
    } else {
        value.known = true;
        if (!std::isfinite(value.number)) return false;
    }
    if (value.known && behind != end && *behind == '(') {
        const char* const first = behind + 1;
        const char* last = first;
        while (last != end && Is_Digit(*last)) ++last;
        int place = 0;
        if (last == first || last == end || *last != ')') return false;
        if (!Last_Place(at, behind, place)) return false;
        value.deviation = Deviation(first, last, place);
        if (!std::isfinite(value.deviation)) return false;
        behind = last + 1;
    }
    if (behind != end && !Is_Blank(*behind)) return false;
    at = behind;
    return true;
}

// The first values of a line, at most as many as there is room for; their count.
int Cut_Row(std::string_view line, int wanted, std::array<Value, most_columns>& values) {
    const char* at = line.data();
    const char* const end = at + line.size();
    int count = 0;
    for (; count < wanted; ++count) {
        while (at != end && Is_Blank(*at)) ++at;
        if (at == end || !Take_Value(at, end, values[static_cast<std::size_t>(count)])) break;
    }
    return count;
}

// A column of the loop, and its value in the row at hand where the row reaches it.
struct Cell {
    std::size_t number = 0;
    bool there = false;

    Cell(const Loop& loop, Column column) : number(static_cast<std::size_t>(std::max(loop[column].number, 0))), there(loop.Has(column)) {}
    Value In(const std::array<Value, most_columns>& values, std::size_t count) const {
        return there && number < count ? values[number] : Value{};
    }
    int Least() const { return there ? static_cast<int>(number) + 1 : 0; }
};

// The deviation in brackets; or that of the weight, of the column of deviations, or of the counts.
float Deviation_Of(const Value& y, const Value& weight, const Value& deviation, const Value& counts) {
    if (y.deviation > 0) return y.deviation;
    if (weight.number > 0) return 1 / std::sqrt(weight.number);
    if (deviation.number > 0) return deviation.number;
    return counts.number > 0 ? std::sqrt(counts.number) : 0;
}

// Reads the rows into the arrays; gives the number of points and adds up the squares of their misfit by the way.
int Read_Rows(Loop& loop, const Range& range, Diffraction_Pattern_Type& p, double& misfit) {
    constexpr int least_numbers = 2;
    const Cell of_x(loop, Column::x), of_y(loop, Column::y), of_ycalc(loop, Column::ycalc), of_bgr(loop, Column::bgr);
    const Cell of_weight(loop, Column::weight), of_counts(loop, Column::counts);
    Cell of_deviation(loop, Column::deviation);
    of_deviation.there = of_deviation.there && loop[Column::deviation].head->name == std::string(loop[Column::y].head->name) + "_su";
    const int least = std::max({of_x.there ? least_numbers : 1, of_x.Least(), of_y.Least()});
    int wanted = least;
    for (const Cell& cell : {of_ycalc, of_bgr, of_weight, of_deviation, of_counts}) wanted = std::max(wanted, cell.Least());
    std::array<Value, most_columns> values;
    std::size_t n = 0;
    std::string_view line;
    for (int row = 0; row < p.npts && loop.rows.Next(line); ++row) {
        const auto count = static_cast<std::size_t>(Cut_Row(Kept_Line(line), wanted, values));
        if (count < static_cast<std::size_t>(least)) break;
        const Value y = of_y.In(values, count), x = of_x.In(values, count);
        if (!y.known || (of_x.there && !x.known)) continue;
        p.x[n] = of_x.there ? x.number : static_cast<float>(range.start + row * range.step);
        p.y[n] = y.number;
        p.sigma[n] = Deviation_Of(y, of_weight.In(values, count), of_deviation.In(values, count), of_counts.In(values, count));
        p.ycalc[n] = of_ycalc.In(values, count).number;
        p.bgr[n] = of_bgr.In(values, count).number;
        if (p.sigma[n] > least_sigma) {
            const double off = (static_cast<double>(y.number) - p.ycalc[n]) / p.sigma[n];
            misfit += off * off;
        }
        ++n;
    }
    return static_cast<int>(n);
}

// What Kept_Text gives of the line behind a word of so many columns.
std::string Text_From_Column(std::string_view line, std::size_t column) {
    const std::string kept = Kept_Text(line, line_width);
    return std::string(Trim_Right(From_Column(kept, column)));
}

std::string Agreement(double chi2) {
    static const Edit_Format twelve("(E12.4)");
    std::string text;
    const Status written = Write_Record(text, twelve, chi2);
    (void)written;  // twelve columns take any number
    if (text.ends_with('\n')) text.pop_back();
    return text;
}

}  // namespace

Status Read_Cif_Pattern(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    if (Count_Lines(text) < least_lines) return Status::Fail(too_few_lines);
    const Marks marks = Find_Marks(text);
    int npts = 0;
    if (Status status = Read_Count(marks, text.size(), npts); status.failed) return status;
    p.title = Text_From_Column(marks.block, 13);
    p.radiation = Trim(Text_From_Column(marks.probe, 24));

    const Range range = Range_Of(marks);
    Loop loop;
    if (!Find_Loop(marks, range, loop)) return Status::Fail(no_data);
    const Head& of_x = loop.Has(Column::x) ? *loop[Column::x].head : heads[0];
    p.scat_var = of_x.scat_var;
    p.legend_x = of_x.legend_x;
    if (Status status = Allocate_Diffraction_Pattern(p, npts); status.failed) return status;
    double misfit = 0;
    const int points = Read_Rows(loop, range, p, misfit);
    if (points < 1) return Status::Fail(no_data);
    End_At_Last_Number(p, static_cast<std::size_t>(points), npts);

    p.title += "  Chi2(free) = " + Agreement(misfit / points);
    p.sigma_is_variance = false;
    if (p.scat_var != "TOF") Take_Cif_Wavelengths(text, loop.rows.Rest().data(), p);
    p.has_y = p.has_ycalc = p.has_bgr = true;
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    p.step = points > 1 ? (p.xmax - p.xmin) / static_cast<float>(points - 1) : 0;
    Set_Y_Limits(p);
    return std::isfinite(p.step) ? Status::Done() : Status::Fail(no_data);
}

Status Read_Cif_Patterns(std::string_view text, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes&) {
    patterns.resize(1);
    return Read_Cif_Pattern(text, patterns.front());
}

}  // namespace vntl
