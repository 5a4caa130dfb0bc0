#include "patterns/lab/cpi.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/huge_pages.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/lab/lab_text.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::string_view first_line = "SIETRONICS XRD SCAN", data_mark = "SCANDATA";
constexpr std::size_t most_head_lines = 40, range_lines = 3, full_head = 8;

bool Begins(std::string_view line, std::string_view word) { return Equal_No_Case(Trim(line).substr(0, word.size()), word); }

// The whole line as a number, with a decimal point or a comma.
bool Whole_Number(std::string_view line, double& value) {
    line = Trim(line);
    constexpr std::size_t longest = 40;
    if (line.size() > longest) return false;
    return Parse_Real(Replace_All(line, ",", "."), value) && Is_Sound(value);
}

bool Is_Element(std::string_view line) {
    constexpr std::size_t longest = 3;
    line = Trim(line);
    return !line.empty() && line.size() <= longest &&
           std::all_of(line.begin(), line.end(), [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
}

struct Head {
    double start = 0, stop = 0, step = 0, wavelength = 0;
    std::string_view anode, date, speed, comment;
};

// Lines behind start, stop and step. A number is the wavelength up to the date, and the speed from there on.
void Take_Rest(std::vector<std::string_view> lines, Head& head) {
    double number = 0;
    const bool commented = !lines.empty() && (lines.size() + range_lines >= full_head || !Whole_Number(lines.back(), number));
    if (commented && !(lines.size() == 1 && Is_Element(lines.back()))) {
        head.comment = Trim(lines.back());
        lines.pop_back();
    }
    for (const std::string_view line : lines) {
        if (Trim(line).empty()) continue;
        if (!Whole_Number(line, number))
            (Is_Element(line) && head.anode.empty() ? head.anode : head.date) = Trim(line);
        else if (head.wavelength == 0 && head.date.empty() && number > 0)
            head.wavelength = number;
        else
            head.speed = Trim(line);
    }
}

// Up to the line of the mark.
Status Read_Head(Line_Cursor& lines, Head& head) {
    std::vector<std::string_view> head_lines;
    std::string_view line;
    if (!lines.Next(line) || !Begins(line, first_line))
        return Status::Fail("This is no CPI file: its first line is not SIETRONICS XRD SCAN");
    while (true) {
        if (!lines.Next(line) || head_lines.size() > most_head_lines)
            return Status::Fail("This CPI file ends within its head: there is no line SCANDATA");
        if (Begins(line, data_mark)) break;
        head_lines.push_back(line);
    }
    const bool range = head_lines.size() >= range_lines && Whole_Number(head_lines[0], head.start) &&
                       Whole_Number(head_lines[1], head.stop) && Whole_Number(head_lines[2], head.step);
    if (!range || !(head.step > 0)) return Status::Fail("The first lines of this CPI file tell no start, end and step");
    Take_Rest({head_lines.begin() + range_lines, head_lines.end()}, head);
    return Status::Done();
}

bool Take_Intensity(std::string_view line, float& y) {
    Number_Walk walk(line);
    walk.Skip_Blanks();
    if (!walk.Take(y)) return false;
    if (walk.At_End() || walk.Front() != ',') return true;
    double value = 0;
    if (!Whole_Number(line, value)) return false;
    y = static_cast<float>(value);
    return true;
}

// Up to a line that is none. A last one without its line end counts where it completes the points told, or is as long as the one before: it
// may be cut otherwise.
std::vector<float> Read_Intensities(Line_Cursor& lines, double told) {
    const std::string_view text = lines.Rest();
    std::vector<float> counts;
    Reserve_Many(counts, static_cast<std::size_t>(std::clamp(told, 1.0, static_cast<double>(text.size() / 2 + 1))));
    std::string_view line;
    for (std::size_t last = 0; lines.Next(line); last = line.size()) {
        float y = 0;
        if (Trim(line).empty()) continue;
        if (!Take_Intensity(line, y)) break;
        const bool cut = Is_Last_And_Open(text, line) && static_cast<double>(counts.size() + 1) != told && line.size() < last;
        if (!cut) counts.push_back(y);
    }
    return counts;
}

void Take_Facts(const Head& head, Pattern_Head& p) {
    Fact_List facts;
    facts.Add("Anode", Readable(head.anode));
    facts.Add("Date", Readable(head.date));
    facts.Add("Time a step (s) or speed (degrees/min)", Replace_All(head.speed, ",", "."));
    facts.Add("Comment", Readable(head.comment));
    p.facts = facts.Done();
}

}  // namespace

bool Is_Cpi(std::string_view head) {
    std::string_view line;
    return Line_Cursor(Without_Mark(head)).Next(line) && Begins(line, first_line);
}

Status Read_Cpi(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes&) {
    patterns.clear();
    if (Status status = Refuse_Wide_Text(bytes); status.failed) return status;
    Line_Cursor lines(Filled_Part(bytes));
    Head head;
    if (Status status = Read_Head(lines, head); status.failed) return status;
    const double told = std::floor((head.stop - head.start) / head.step + 1.5);
    Diffraction_Pattern_Type p;
    if (Take_Points(p, Read_Intensities(lines, told)).failed) return Status::Fail("This CPI file holds no intensities behind SCANDATA");
    if (told > p.npts) p.npts_claimed = static_cast<std::int32_t>(std::min(told, most_claimed));
    p.title = Kept_Text(Readable(head.comment), title_width);
    p.radiation = "xrays_cw";
    p.conv[0] = static_cast<float>(head.wavelength);
    p.xmin = static_cast<float>(head.start), p.step = static_cast<float>(head.step);
    Set_Grid_End(p);
    Set_Grid(p);
    p.constant_step = true;
    Set_Lab_Variances(p);
    Set_Y_Limits(p);
    Take_Facts(head, p);
    patterns.push_back(std::move(p));
    return Status::Done();
}

}  // namespace vntl
