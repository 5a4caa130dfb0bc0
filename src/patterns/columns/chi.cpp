#include "patterns/columns/chi.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "base/huge_pages.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/columns/chi_axis.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/lab/lab_text.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_columns = 101;                         // x and a hundred curves
constexpr std::size_t longest_title = 1000, longest_label = 200;  // of a file that is recognised

struct Head {
    std::string_view title, label, label_y;
    std::string remarks;  // lines of "#" in the place of the others
    double rows = 0;      // told
    float curves = 0;     // told
};

using Columns = std::vector<std::vector<float>>;
using Row = std::array<float, most_columns>;

// The numbers of a row, at most so many; 0 for a line that holds anything else.
std::size_t Take_Row(std::string_view line, std::size_t most, Row& row) {
    Number_Walk walk(line);
    walk.Skip_Separators();
    std::size_t n = 0;
    for (; n < most && !walk.At_End(); walk.Skip_Separators())
        if (!walk.Take(row[n++])) return 0;
    return n;
}

std::size_t Numbers_In(std::string_view line) {
    Row row;
    return Take_Row(line, most_columns, row);
}

// The line of the count: one whole number or two, the second of which is the number of curves.
bool Is_Count_Line(std::string_view line, double& rows, float& curves) {
    line = Trim(line);
    if (line.empty() || line.find_first_not_of("0123456789 \t,") != std::string_view::npos) return false;
    Row row;
    const std::size_t n = Take_Row(line, 3, row);
    if (n == 0 || n > 2 || !(row[0] >= 1)) return false;
    if (n == 2 && !(row[1] >= 1 && row[1] < most_columns)) return false;
    curves = n == 2 ? row[1] : 0;
    return Told_Real(line.substr(0, line.find_first_of(" \t,")), rows);
}

bool Is_Remark(std::string_view line) { return Trim_Left(line).starts_with('#'); }

// Lines of "#" with rows right behind them; false, and the cursor where it was, for anything else.
bool Read_Remarks(Line_Cursor& lines, Head& head) {
    constexpr std::size_t kept = 1 << 16;
    Line_Cursor before = lines, ahead = lines;
    std::string_view line;
    for (; ahead.Next(line) && Is_Remark(line); before = ahead) {
        head.label = line;
        if (head.remarks.size() < kept) head.remarks.append(line).append("\n");
    }
    if (!head.remarks.empty() && Numbers_In(line) > 1) {
        lines = before;
        return true;
    }
    head = {};
    return false;
}

Status Read_Head(Line_Cursor& lines, Head& head) {
    if (Read_Remarks(lines, head)) return Status::Done();
    std::string_view count;
    for (std::string_view* part : {&head.title, &head.label, &head.label_y, &count})
        if (!lines.Next(*part)) return Status::Fail("This CHI file ends within its head of four lines");
    if (!Is_Count_Line(count, head.rows, head.curves) || Numbers_In(head.label) > 1)
        return Status::Fail("This is no CHI file: there is no number of rows in line 4, under a title and two labels");
    return Status::Done();
}

// A row has at least two bytes a number; where no count is told, all rows are about as long as the first one.
void Expect_Rows(double told, std::size_t bytes, std::size_t first_row, Columns& columns) {
    const double room = static_cast<double>(bytes / (2 * columns.size()) + 1);
    const double expected = told > 0 ? told : static_cast<double>(bytes / (first_row + 1) + 1);
    for (auto& column : columns) Reserve_Many(column, static_cast<std::size_t>(std::min(expected, room)));
}

// Columns of one length, none where the first row has no two numbers. A last row without its line end counts where it completes the rows
// told, or is as long as the one before: it may be cut otherwise.
Columns Read_Columns(Line_Cursor& lines, double told) {
    const std::string_view text = lines.Rest();
    Columns columns;
    Row row;
    std::string_view line;
    for (std::size_t last = 0; lines.Next(line); last = line.size()) {
        const std::size_t n = Take_Row(line, columns.empty() ? most_columns : columns.size(), row);
        if (n == 0 && Trim(line).empty()) continue;
        if (n < 2 || (!columns.empty() && n < columns.size())) break;
        if (columns.empty()) {
            columns.resize(n);
            Expect_Rows(told, text.size(), line.size(), columns);
        }
        const bool completes = static_cast<double>(columns.front().size() + 1) == told;
        if (Is_Last_And_Open(text, line) && !completes && line.size() < last) break;
        for (std::size_t i = 0; i < n; ++i) columns[i].push_back(row[i]);
    }
    return columns;
}

std::shared_ptr<const Head_Facts> Facts_Of(const Head& head) {
    if (!head.remarks.empty()) return Facts_Of_Lines(head.remarks).Done();
    Fact_List facts;
    facts.Add("Title", Readable(head.title));
    facts.Add("Scan axis", Readable(head.label));
    facts.Add("Label of y", Readable(head.label_y));
    return facts.Done();
}

// First numbers of two rows that rise, as x does.
bool Are_Rows(Line_Cursor lines) {
    std::string_view line;
    Row first, second;
    const std::size_t columns = lines.Next(line) ? Take_Row(line, most_columns, first) : 0;
    if (columns < 2) return false;
    if (!lines.Next(line) || lines.At_End()) return true;
    return Take_Row(line, most_columns, second) == columns && second[0] > first[0];
}

}  // namespace

bool Is_Chi(std::string_view head) {
    Line_Cursor lines(Without_Mark(head));
    std::string_view title, label, label_y, count;
    if (!lines.Next(title)) return false;
    if (title.starts_with("# chi_")) return Are_Rows(lines);
    if (title.size() > longest_title || !lines.Next(label) || !lines.Next(label_y) || !lines.Next(count)) return false;
    double rows = 0;
    float curves = 0;
    if (label.size() > longest_label || label_y.size() > longest_label || !Is_Count_Line(count, rows, curves) || !Are_Rows(lines))
        return false;
    if (Numbers_In(title) > 1 || Numbers_In(label) > 0 || Numbers_In(label_y) > 0) return false;
    Diffraction_Pattern_Type unused;
    return Trim(label).empty() || Set_Label_Axis(unused, label).known;
}

Status Read_Chi(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    patterns.clear();
    if (Status status = Refuse_Wide_Text(bytes); status.failed) return status;
    Line_Cursor lines(Filled_Part(bytes));
    Head head;
    if (Status status = Read_Head(lines, head); status.failed) return status;
    Columns columns = Read_Columns(lines, head.rows);
    if (columns.empty() || columns.front().empty()) return Status::Fail("This CHI file holds no rows of two numbers behind its head");
    Diffraction_Pattern_Type axis;
    const Label_Axis found = Set_Label_Axis(axis, head.label);
    if (!found.known && !Trim(head.label).empty())
        notes.warnings.push_back("The label of x (" + Elide_Middle(Readable(Trim(head.label)), 40) +
                                 ") is none that is known: x is taken as 2theta");
    if (found.factor != 1)
        for (float& x : columns.front()) x = static_cast<float>(found.factor * x);
    const auto facts = Facts_Of(head);
    std::vector<float> deviations;
    if (columns.size() == 3 && head.curves < 2) {
        deviations = std::move(columns.back());
        columns.pop_back();
    }
    for (std::size_t column = 1; column < columns.size(); ++column) {
        Diffraction_Pattern_Type p;
        std::vector<float> x = column + 1 == columns.size() ? std::move(columns.front()) : columns.front();
        if (Status status = Take_Points(p, std::move(columns[column]), std::move(x)); status.failed) return status;
        Set_Steps(p);
        Set_Lab_Variances(p);
        for (std::size_t i = 0; i < deviations.size(); ++i) p.sigma[i] = deviations[i] > 0 ? deviations[i] * deviations[i] : 1.0f;
        Set_Y_Limits(p);
        p.title = Kept_Text(Readable(head.title), title_width);
        p.radiation = "xrays_cw";
        p.scat_var = axis.scat_var, p.legend_x = axis.legend_x;
        p.facts = facts;
        p.bank = static_cast<std::int32_t>(column);
        if (head.rows > p.npts) p.npts_claimed = static_cast<std::int32_t>(std::min(head.rows, most_claimed));
        patterns.push_back(std::move(p));
    }
    Number_Ranges(patterns, patterns.size());
    return Status::Done();
}

}  // namespace vntl
