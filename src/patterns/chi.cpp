#include "patterns/chi.hpp"

#include <algorithm>
#include <string>

#include "base/huge_pages.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/chi_axis.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/lab_text.hpp"
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
};

struct Table {
    std::vector<float> numbers;  // row by row
    std::size_t columns = 0;
    std::size_t Rows() const { return columns == 0 ? 0 : numbers.size() / columns; }
};

// Adds the numbers of a row, at most so many. False, and nothing added, for a line that holds anything else.
bool Take_Row(std::string_view line, std::size_t most, std::vector<float>& numbers) {
    const std::size_t before = numbers.size();
    Number_Walk walk(line);
    walk.Skip_Separators();
    for (float number = 0; !walk.At_End() && numbers.size() < before + most; walk.Skip_Separators()) {
        if (!walk.Take(number)) {
            numbers.resize(before);
            return false;
        }
        numbers.push_back(number);
    }
    return numbers.size() > before;
}

std::size_t Numbers_In(std::string_view line) {
    std::vector<float> numbers;
    return Take_Row(line, most_columns, numbers) ? numbers.size() : 0;
}

// The line of the count: one whole number or two, the second of which is the number of curves.
bool Is_Count_Line(std::string_view line, double& rows) {
    line = Trim(line);
    if (line.empty() || line.find_first_not_of("0123456789 \t,") != std::string_view::npos) return false;
    std::vector<float> numbers;
    if (!Take_Row(line, 3, numbers) || numbers.size() > 2 || !(numbers[0] >= 1)) return false;
    if (numbers.size() == 2 && !(numbers[1] >= 1 && numbers[1] < most_columns)) return false;
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
    if (!Is_Count_Line(count, head.rows) || Numbers_In(head.label) > 1)
        return Status::Fail("This is no CHI file: there is no number of rows in line 4, under a title and two labels");
    return Status::Done();
}

// A last row without its line end counts where it completes the rows told, or is as long as the one before: it may be cut otherwise.
Table Read_Rows(Line_Cursor& lines, double told) {
    const std::string_view text = lines.Rest();
    Table table;
    std::string_view line;
    for (std::size_t last = 0; lines.Next(line); last = line.size()) {
        const std::size_t before = table.numbers.size();
        const std::size_t wanted = table.columns == 0 ? most_columns : table.columns;
        if (!Take_Row(line, wanted, table.numbers)) {
            if (Trim(line).empty()) continue;
            break;
        }
        if (table.columns == 0) {
            table.columns = table.numbers.size();
            if (table.columns < 2) return {};
            const auto room = static_cast<double>(text.size() / (2 * table.columns) + 1);
            const double rows = told > 0 ? std::min(told, room) : std::min(room, static_cast<double>(text.size() / (line.size() + 1) + 1));
            Reserve_Many(table.numbers, static_cast<std::size_t>(rows) * table.columns);
        }
        const bool whole = table.numbers.size() - before == table.columns;
        const bool open = Is_Last_And_Open(text, line) && static_cast<double>(table.Rows()) != told && line.size() < last;
        if (!whole || open) {
            table.numbers.resize(before);
            break;
        }
    }
    return table;
}

std::shared_ptr<const Head_Facts> Facts_Of(const Head& head) {
    if (!head.remarks.empty()) return Facts_Of_Lines(head.remarks).Done();
    Fact_List facts;
    facts.Add("Title", Readable(head.title));
    facts.Add("Scan axis", Readable(head.label));
    facts.Add("Label of y", Readable(head.label_y));
    return facts.Done();
}

// The points of one column over the first one.
Diffraction_Pattern_Type Curve(const Table& table, std::size_t column, double factor) {
    Diffraction_Pattern_Type p;
    if (Allocate_Measured(p, table.Rows()).failed) return p;
    const float* row = table.numbers.data();
    for (std::size_t i = 0; i < p.x.size(); ++i, row += table.columns) {
        p.x[i] = factor == 1 ? row[0] : static_cast<float>(factor * row[0]);
        p.y[i] = row[column];
    }
    Set_Steps(p);
    Set_Lab_Variances(p);
    Set_Y_Limits(p);
    return p;
}

// First numbers of two rows that rise, as x does.
bool Are_Rows(Line_Cursor lines) {
    std::string_view first, second;
    std::vector<float> numbers;
    if (!lines.Next(first) || !Take_Row(first, most_columns, numbers) || numbers.size() < 2) return false;
    const std::size_t columns = numbers.size();
    if (!lines.Next(second) || lines.At_End()) return true;
    return Take_Row(second, most_columns, numbers) && numbers.size() == 2 * columns && numbers[columns] > numbers[0];
}

}  // namespace

bool Is_Chi(std::string_view head) {
    Line_Cursor lines(Without_Mark(head));
    std::string_view title, label, label_y, count;
    if (!lines.Next(title)) return false;
    if (title.starts_with("# chi_")) return Are_Rows(lines);
    if (title.size() > longest_title || !lines.Next(label) || !lines.Next(label_y) || !lines.Next(count)) return false;
    double rows = 0;
    if (label.size() > longest_label || label_y.size() > longest_label || !Is_Count_Line(count, rows) || !Are_Rows(lines)) return false;
    if (Numbers_In(title) > 1 || Numbers_In(label) > 0 || Numbers_In(label_y) > 0) return false;
    Diffraction_Pattern_Type unused;
    return Trim(label).empty() || Set_Label_Axis(unused, label).known;
}

Status Read_Chi(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    patterns.clear();
    if (Status status = Refuse_Wide_Text(bytes); status.failed) return status;
    Line_Cursor lines(Without_Mark(bytes));
    Head head;
    if (Status status = Read_Head(lines, head); status.failed) return status;
    const Table table = Read_Rows(lines, head.rows);
    if (table.Rows() == 0) return Status::Fail("This CHI file holds no rows of two numbers behind its head");
    Diffraction_Pattern_Type axis;
    const Label_Axis found = Set_Label_Axis(axis, head.label);
    if (!found.known && !Trim(head.label).empty())
        notes.warnings.push_back("The label of x (" + Elide_Middle(Readable(Trim(head.label)), 40) +
                                 ") is none that is known: x is taken as 2theta");
    const auto facts = Facts_Of(head);
    for (std::size_t column = 1; column < table.columns; ++column) {
        Diffraction_Pattern_Type p = Curve(table, column, found.factor);
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
