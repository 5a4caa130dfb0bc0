#include "patterns/xysigma.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "base/free_form.hpp"
#include "base/scan.hpp"
#include "base/spline.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/header_words.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/write_xys.hpp"

namespace vntl {

namespace {

constexpr float negligible = 1e-6f;   // below it a variance, or a value of a terminator line, counts as zero
constexpr int first_terminator = 11;  // a line of zeros ends the data from this line on
constexpr std::string_view gr_mark = "#L r";

constexpr std::string_view no_points = " Error in Intensity/Profile file, Number of points negative or zero!";
constexpr std::string_view bad_header = " Error reading a profile DATA file of XYSigma format";
constexpr std::string_view bad_line = " Error reading X,Y, Sigma Ycalc in profile DATA file";
constexpr std::string_view bad_field = " Error in Intensity file, check your instr parameter!";

struct Header {
    float fac_x = 1, fac_y = 1, step_in = 0;
    int interpol = 0;
    int sigma_column = 2, ycalc_column = 3;  // from 0; none: -1
    bool own = false;                        // this program wrote the file: every record is a point, and what it says holds
};

bool Is_Comment(std::string_view line) { return line.starts_with('!') || line.starts_with('#'); }

// Marks that no number begins with.
bool Is_Foreign_Comment(std::string_view line) {
    return line.starts_with("//") || (!line.empty() && std::string_view("'%;*").find(line.front()) != std::string_view::npos);
}

enum class Separator { blank, semicolon };

enum class Line_Kind { skipped, record, misfit };

// The first `wanted` numbers of a line; what it does not reach is 0.
Line_Kind Take_Numbers(std::string_view line, int wanted, std::array<float, 4>& numbers) {
    Number_Walk walk(line);
    walk.Skip_Blanks();
    if (walk.At_End() || Is_Comment(walk.Rest())) return Line_Kind::skipped;
    numbers = {};
    for (int i = 0; i < wanted && !walk.At_End(); ++i) {
        if (!walk.Take(numbers[static_cast<std::size_t>(i)]))
            return i == 0 && Is_Foreign_Comment(walk.Rest()) ? Line_Kind::skipped : Line_Kind::misfit;
        walk.Skip_Separators();
    }
    return Line_Kind::record;
}

// One number between semicolons, its comma a decimal one; a field that is blank is 0.
bool Take_Field(std::string_view field, float& value) {
    std::array<char, 64> digits{};
    if (field.size() > digits.size()) return false;
    value = 0;
    if (field.empty()) return true;
    const char* const end = std::replace_copy(field.begin(), field.end(), digits.begin(), ',', '.');
    return Parse_Float(digits.data(), end, value) == end;
}

// The first `wanted` numbers of a line of at least two fields between semicolons; what it does not reach is 0.
Line_Kind Take_Separated(std::string_view line, int wanted, std::array<float, 4>& numbers) {
    line = Trim(line);
    if (line.empty() || Is_Comment(line) || Is_Foreign_Comment(line)) return Line_Kind::skipped;
    numbers = {};
    for (int i = 0; i < wanted; ++i) {
        const std::size_t stop = line.find(';');
        if (stop == std::string_view::npos && i == 0) return Line_Kind::misfit;
        if (!Take_Field(Trim(line.substr(0, stop)), numbers[static_cast<std::size_t>(i)])) return Line_Kind::misfit;
        if (stop == std::string_view::npos) break;
        line.remove_prefix(stop + 1);
    }
    return Line_Kind::record;
}

// Lines of the file, in a ".gr" file those behind its last mark.
std::size_t Count_Of_Lines(std::string_view text, bool gr) {
    if (!gr) return Count_Lines(text);
    std::size_t count = 0;
    Line_Cursor lines(text);
    std::string_view line;
    while (lines.Next(line)) count = line.starts_with(gr_mark) ? 0 : count + 1;
    return count;
}

// Room for the records of so many lines. Where lines are shorter than records of a measurement are, many may be blank: those that are
// not are counted, so that a file of line ends reserves nothing.
std::size_t Records_At_Most(std::string_view text, std::size_t lines) {
    constexpr std::size_t shortest_usual = 6;
    if (lines <= text.size() / shortest_usual) return lines;
    std::size_t count = 0;
    Line_Cursor cursor(text);
    std::string_view line;
    while (cursor.Next(line)) count += Trim_Left(line).empty() ? 0 : 1;
    return std::min(lines, std::max<std::size_t>(count, 1));
}

// A header of any comments, up to the first line that begins with two numbers; that line may be the first one, and is no title.
Status Read_Plain_Header(Line_Cursor& lines, Separator separator, Diffraction_Pattern_Type& pattern) {
    std::array<float, 2> two{};
    std::array<float, 4> four{};
    const auto begins_with_numbers = [&](std::string_view line) {
        return separator == Separator::blank ? Read_Free_Reals(line, two) : Take_Separated(line, 2, four) == Line_Kind::record;
    };
    std::string_view whole;
    for (bool first = true;; first = false) {
        const Line_Cursor before = lines;
        if (!lines.Next(whole)) return Status::Fail(bad_header);
        const std::string_view line = Trim_Left(whole);
        const bool data = !Is_Comment(line) && begins_with_numbers(line);
        if (first && !data) pattern.title = Kept_Text(Trim(line), title_width);
        Take_Header_Words(line, pattern, "TITLE");
        if (!data) continue;
        lines = before;
        return Status::Done();
    }
}

Status Take_Interpolation(std::string_view line, Header& head) {
    Field_Reader reader{Line_Cursor(line)};
    Fields fields;
    if (reader.Find_Fields("5ffif", fields) != 0) return Status::Fail(" Error reading");
    head.fac_x = fields.real[0] > 0 ? fields.real[0] : 1;
    head.fac_y = fields.real[1] > 0 ? fields.real[1] : 1;
    head.interpol = fields.integer[2];
    head.step_in = fields.real[3];
    return Status::Done();
}

// The header behind XYDATA: five lines, not counting those that begin with "#".
Status Read_Fixed_Header(Line_Cursor& lines, Header& head, Diffraction_Pattern_Type& pattern) {
    std::string_view line;
    for (int left = 5; left > 0;) {
        if (!lines.Next(line)) return Status::Fail(bad_header);
        if (!line.starts_with('#')) --left;
        Take_Header_Words(line, pattern, "TITLE");
        if (line.starts_with("TEMP")) pattern.TSample = Number_Behind(line, "TEMP");
        if (!line.starts_with("INTER")) continue;
        if (Status status = Take_Interpolation(line, head); status.failed) return status;
    }
    pattern.constant_step = head.interpol == 1 || head.interpol == 2;
    return Status::Done();
}

// Behind XYDATA and a line of the title.
bool Is_Own_File(Line_Cursor lines) {
    std::string_view line;
    return lines.Next(line) && lines.Next(line) && Trim_Right(line) == xys_mark;
}

// The five lines of that head, each in its place: a title or a name may hold the words of another line.
Status Read_Own_Header(Line_Cursor& lines, Header& head, Diffraction_Pattern_Type& pattern) {
    head.own = true;
    std::array<std::string_view, 5> line;
    for (std::string_view& one : line)
        if (!lines.Next(one)) return Status::Fail(bad_header);
    std::string_view rest;
    pattern.title.clear();
    if (Behind_Word(line[0], "TITLE:", rest)) pattern.title = Kept_Text(rest, title_width);
    if (Behind_Word(line[3], "Scattering variable:", rest)) pattern.scat_var = Kept_Text(rest, scat_var_width);
    std::string_view legend = Trim(line[4]);
    if (!legend.ends_with(xys_columns)) return Status::Done();
    legend.remove_suffix(xys_columns.size());
    pattern.legend_x = Kept_Text(Trim(legend), legend_width);
    return Status::Done();
}

Status Read_Gr_Header(Line_Cursor& lines, Diffraction_Pattern_Type& pattern) {
    std::string_view line, rest;
    do {
        if (!lines.Next(line)) return Status::Fail(bad_header);
        if (Behind_Word(line, "title=", rest)) pattern.title = Kept_Text(rest, title_width);
    } while (!line.starts_with(gr_mark));
    return Status::Done();
}

bool Holds_Gr_Mark(Line_Cursor lines) {
    std::string_view line;
    while (lines.Next(line))
        if (line.starts_with(gr_mark)) return true;
    return false;
}

int Numbers_In(std::string_view line) {
    int count = 0;
    float number = 0;
    Number_Walk walk(line);
    for (walk.Skip_Separators(); !walk.At_End() && walk.Take(number); walk.Skip_Separators()) ++count;
    return count;
}

// A pair distribution: the uncertainty of G is in the fourth column, and of r in the third.
Status Read_Pairs_Header(Line_Cursor& lines, Separator separator, Header& head, Diffraction_Pattern_Type& pattern) {
    const bool marked = Holds_Gr_Mark(lines);
    const Status status = marked ? Read_Gr_Header(lines, pattern) : Read_Plain_Header(lines, separator, pattern);
    if (status.failed) return status;
    std::string_view line;
    if (Line_Cursor ahead = lines; marked || (ahead.Next(line) && Numbers_In(line) != 3)) head.sigma_column = 3;
    head.ycalc_column = -1;
    pattern.legend_x = "Distance R(Angstroms)";
    pattern.legend_y = "G(R)x1000";
    pattern.scat_var = "Distance";
    return Status::Done();
}

Status Read_Header(Line_Cursor& lines, bool gr, Separator separator, Header& head, Diffraction_Pattern_Type& pattern) {
    if (gr) return Read_Pairs_Header(lines, separator, head, pattern);
    const Line_Cursor start = lines;
    std::string_view first;
    if (lines.Next(first) && first.starts_with("XYDATA")) {
        pattern.title = Kept_Text(Trim(first), title_width);
        return Is_Own_File(lines) ? Read_Own_Header(lines, head, pattern) : Read_Fixed_Header(lines, head, pattern);
    }
    lines = start;
    return Read_Plain_Header(lines, separator, pattern);
}

struct Sums {
    int count = 0;  // records, the one that ended the data included
    double variances = 0;
    float steps = 0;
};

Status Read_Records(Line_Cursor& lines, Separator separator, const Header& head, Diffraction_Pattern_Type& p, Sums& sums) {
    const int wanted = Trim(p.legend_x) == "r.l.u." ? 3 : 4;
    const auto room = static_cast<int>(p.x.size());
    const float fac_x = head.fac_x, fac_y = head.fac_y;
    std::array<float, 4> numbers{};
    std::string_view line;
    while (sums.count < room && lines.Next(line)) {
        const Line_Kind kind = separator == Separator::blank ? Take_Numbers(line, wanted, numbers) : Take_Separated(line, wanted, numbers);
        if (kind == Line_Kind::skipped) continue;
        if (kind == Line_Kind::misfit) return Status::Fail(bad_line);
        const float x = numbers[0], y = numbers[1];
        const float sigma = numbers[static_cast<std::size_t>(head.sigma_column)];
        const float ycalc = head.ycalc_column < 0 ? 0.0f : numbers[static_cast<std::size_t>(head.ycalc_column)];
        if (!std::isfinite(x)) return Status::Fail(bad_field);
        ++sums.count;
        if (!head.own && sums.count >= first_terminator && std::fabs(x) < negligible && y <= negligible && sigma <= negligible) break;
        const auto i = static_cast<std::size_t>(sums.count - 1);
        p.x[i] = x * fac_x;
        p.y[i] = y * fac_y;
        p.ycalc[i] = ycalc * fac_y;
        const float s = sigma * fac_y;
        const float v = s * s;
        sums.variances += v;
        p.sigma[i] = !head.own && v < negligible ? 1.0f : v;
        if (i > 0) sums.steps += p.x[i] - p.x[i - 1];
    }
    return Status::Done();
}

std::vector<float> Interpolated(const std::vector<double>& x, const std::vector<float>& values, const std::vector<float>& at) {
    const std::vector<double> y(values.begin(), values.end());
    const std::vector<double> m = Spline(x, y);
    std::vector<float> result;
    result.reserve(at.size());
    for (const float point : at) result.push_back(static_cast<float>(Splint(x, y, m, point)));
    return result;
}

// Puts the pattern on a grid of constant step by natural cubic splines through its points. `room`: most points of the grid.
void Put_On_Grid(Diffraction_Pattern_Type& p, const Header& head, int count, int room) {
    const float range = p.xmax - p.xmin;
    const double points = head.step_in > 0 ? static_cast<double>(range) / head.step_in + 1.05 : room + 1.0;
    const bool fits = points < room + 1.0 && points >= 1;
    p.step = fits ? head.step_in : range / static_cast<float>(count - 2);
    const int n = fits ? static_cast<int>(points) : p.npts;
    std::vector<float> grid(static_cast<std::size_t>(n));
    for (std::size_t j = 0; j < grid.size(); ++j) grid[j] = p.x[0] + static_cast<float>(j) * p.step;
    const std::vector<double> x(p.x.begin(), p.x.end());
    p.y = Interpolated(x, p.y, grid);
    p.sigma = Interpolated(x, p.sigma, grid);
    for (float& s : p.sigma) s = std::fabs(s);
    p.x = std::move(grid);
    Keep_Points(p, n);
    p.xmax = static_cast<float>(n - 1) * p.step + p.xmin;
}

bool Rises(const std::vector<float>& x) {
    for (std::size_t i = 1; i < x.size(); ++i)
        if (!(x[i] > x[i - 1])) return false;
    return true;
}

Status Read_With(Separator separator, std::string_view text, bool gr, Diffraction_Pattern_Type& p) {
    p = {};
    const std::size_t count = Count_Of_Lines(text, gr);
    if (count == 0 || count > 0x7fffffff) return Status::Fail(no_points);
    const std::size_t room = Records_At_Most(text, count);
    Line_Cursor lines(text);
    Header head;
    if (Status status = Read_Header(lines, gr, separator, head, p); status.failed) return status;
    if (Status status = Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(room)); status.failed) return status;

    Sums sums;
    if (Status status = Read_Records(lines, separator, head, p, sums); status.failed) return status;
    const int kept = head.own ? sums.count : sums.count - 1;
    if (kept < 2) return Status::Fail(no_points);  // one point or none: no step, no range
    Keep_Points(p, kept);
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    if (head.own ? sums.variances == 0 : sums.variances < negligible) Set_Count_Variances(p);
    if (head.interpol == 0 || head.interpol == 2)
        p.step = sums.steps / static_cast<float>(kept - 1);
    else if (Rises(p.x))
        Put_On_Grid(p, head, sums.count, static_cast<int>(count));
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace

Status Read_Xysigma(std::string_view text, bool gr, Diffraction_Pattern_Type& p) {
    const Status status = Read_With(Separator::blank, text, gr, p);
    if (status.ok() || gr || !Contains(text, ";")) return status;
    Diffraction_Pattern_Type separated;
    if (Read_With(Separator::semicolon, text, gr, separated).failed) return status;
    p = std::move(separated);
    return Status::Done();
}

}  // namespace vntl
