#include "patterns/isis.hpp"

#include <array>
#include <cmath>
#include <utility>

#include "base/free_form.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/head_constants.hpp"
#include "patterns/header_words.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"

namespace vntl {

namespace {

constexpr std::size_t line_width = 120;
constexpr float negligible = 0.1f;  // a record, a variance or a sum of variances not above it counts as zero
constexpr float usual_factor = 1000;

constexpr std::string_view wrong_number = " Error in Intensity file, wrong number of patterns !";
constexpr std::string_view bad_record = " Error reading an ISIS profile DATA file";

bool Is_Bank(std::string_view line) { return line.starts_with("BANK"); }

// The next line, shifted left and cut to the width of a record.
bool Next_Line(Line_Cursor& lines, std::string_view& line) {
    if (!lines.Next(line)) return false;
    line = Trim_Left(line).substr(0, line_width);
    return true;
}

long Count_Banks(Line_Cursor lines) {
    long count = 0;
    for (std::string_view line; Next_Line(lines, line);) count += Is_Bank(line) ? 1 : 0;
    return count;
}

struct Header {
    std::string title;
    float fac_y = usual_factor;
    bool histograms = false;
    Head_Constants constants;  // of the bank that comes next
};

bool Is_Comment(std::string_view line) { return line.starts_with('!') || line.starts_with('#'); }

// Goes behind the first bank line; false when there is none.
bool Read_Header(Line_Cursor& lines, Header& head) {
    std::string_view line, rest;
    Line_Cursor first = lines;
    if (first.Next(line)) head.title = Trim_Right(Kept_Text(line, title_width));
    while (Next_Line(lines, line)) {
        std::array<float, 1> factor{};
        if (Is_Comment(line)) head.constants.Take_Line(To_Utf8(line));
        if (Is_Bank(line)) {
            head.histograms = Contains(line, "RALF");
            return true;
        }
        if (Behind_Word(line, "fac_y", rest) && Read_Free_Reals(rest, factor) && std::isfinite(factor[0])) head.fac_y = factor[0];
    }
    return false;
}

// Three numbers, in most files with nothing but blanks between them.
bool Take_Record(std::string_view line, std::array<float, 3>& numbers) {
    Number_Walk walk(line);
    for (float& number : numbers) {
        walk.Skip_Blanks();
        if (!walk.Take(number)) return Read_Free_Reals(line, numbers);
    }
    return true;
}

// The records of a bank, y and deviation by the factor of the file.
struct Records {
    std::vector<float> x, y, variance;
    double variances = 0;
    double steps = 0;
    Head_Constants constants;
};

bool Only_Blanks_Follow(Line_Cursor lines) {
    std::string_view line;
    while (Next_Line(lines, line)) {
        if (Is_Bank(line)) return true;
        if (!line.empty()) return false;
    }
    return true;
}

// Comments above a bank and between its line and its records tell its constants.
bool Read_Records(Line_Cursor& lines, Header& head, Records& records) {
    records.constants = std::exchange(head.constants, {});
    records.x.clear(), records.y.clear(), records.variance.clear();
    records.variances = records.steps = 0;
    std::array<float, 3> numbers{};
    std::string_view line;
    for (Line_Cursor before = lines; Next_Line(lines, line); before = lines) {
        if (Is_Comment(line)) {
            (records.x.empty() ? records.constants : head.constants).Take_Line(To_Utf8(line));
            continue;
        }
        if (Is_Bank(line)) {
            lines = before;
            return true;
        }
        if (line.empty()) return head.histograms || Only_Blanks_Follow(lines);
        if (!Take_Record(line, numbers) || !std::isfinite(numbers[0])) return false;
        const auto [x, y, deviation] = numbers;
        if (std::fabs(x) < negligible && y < negligible && !(deviation > negligible)) continue;
        const float s = deviation * head.fac_y;
        const float v = s * s;
        records.variances += v;
        if (!records.x.empty()) records.steps += static_cast<double>(x) - records.x.back();
        records.x.push_back(x);
        records.y.push_back(y * head.fac_y);
        records.variance.push_back(v > negligible ? v : head.fac_y);
    }
    return true;
}

Status Make_Pattern(const Header& head, const Records& records, Diffraction_Pattern_Type& p) {
    p.title = head.title;
    p.radiation = "neutrons_tof";
    p.scat_var = "TOF";
    p.legend_x = "TOF (micro-seconds)";
    p.legend_y = "Intensity (arb. units)";
    records.constants.Give(p);
    const std::size_t edges = records.x.size();
    const std::size_t n = head.histograms && edges > 0 ? edges - 1 : edges;
    if (n == 0) return Status::Done();
    if (n > 0x7fffffff) return Status::Fail(wrong_number);
    if (Status status = Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(n)); status.failed) return status;
    for (std::size_t i = 0; i < n; ++i) {
        p.x[i] = records.x[i];
        p.y[i] = records.y[i];
        p.sigma[i] = records.variance[i];
        if (!head.histograms) continue;
        const float dx = records.x[i + 1] - records.x[i];
        p.y[i] = dx == 0 ? 0 : p.y[i] / dx;  // a channel without a width holds nothing
        p.sigma[i] = dx == 0 ? 0 : p.sigma[i] / dx / dx;
    }
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    p.step = static_cast<float>(records.steps / static_cast<double>(n));
    if (records.variances < negligible) Set_Count_Variances(p);
    Set_Y_Limits(p);
    return Status::Done();
}

// Goes behind the next bank line.
bool Next_Bank(Line_Cursor& lines, Header& head) {
    std::string_view line;
    while (Next_Line(lines, line)) {
        if (Is_Comment(line)) head.constants.Take_Line(To_Utf8(line));
        if (Is_Bank(line)) return true;
    }
    return false;
}

Status Read_Banks(std::string_view text, int capacity, std::vector<Diffraction_Pattern_Type>& patterns) {
    Line_Cursor lines(text);
    Header head;
    bool more = Read_Header(lines, head);
    if (!more || capacity < 1) return Status::Fail(wrong_number);
    Records records;
    while (more) {
        if (patterns.size() == static_cast<std::size_t>(capacity)) return Status::Fail(wrong_number);
        if (!Read_Records(lines, head, records)) return Status::Fail(Count_Banks(Line_Cursor(text)) > capacity ? wrong_number : bad_record);
        Status status = Make_Pattern(head, records, patterns.emplace_back());
        if (status.failed) return status;
        more = Next_Bank(lines, head);
    }
    return Status::Done();
}

}  // namespace

Status Read_Isis(std::string_view text, int capacity, std::vector<Diffraction_Pattern_Type>& patterns) {
    patterns.clear();
    Status status = Read_Banks(text, capacity, patterns);
    if (status.failed) patterns.clear();
    return status;
}

}  // namespace vntl
