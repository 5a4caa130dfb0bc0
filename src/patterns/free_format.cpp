#include "patterns/free_format.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

#include "base/free_form.hpp"
#include "base/huge_pages.hpp"
#include "base/scan.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/header_words.hpp"
#include "patterns/lab/lab_text.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t line_width = 180;
constexpr int most_text_lines = 7;
constexpr int least_points = 11;
constexpr std::size_t most_words = 10, word_width = 20;
constexpr float least_step = 1e-6f;
constexpr float largest_angle = 180.0f;
constexpr float longest_wavelength = 100.0f;  // angstroms, that stands in its place of an MDI file

constexpr std::string_view end_of_file = " End of file *.dat";
constexpr std::string_view zero_step = " Error in Intensity file, Step value was zero!";
constexpr std::string_view too_many_lines = " Error on Intensity file, Number of Comment lines was exceeded ( > 7) !";
constexpr std::string_view bad_range = " Error in Intensity file, Problems reading 2Theta_ini, Step, 2Theta_end";
constexpr std::string_view bad_count = " Error in Intensity file, Number of intensities values is wrong!!";

struct Header {
    double xmin = 0, step = 0, xmax = 0;
    double npts = 0;  // as claimed, however large
    bool title_given = false;
    int text_lines = 0;
    int mdi_lines = 0;
    double points = 0;  // that a full MDI head tells in its seventh place
    bool over = false;
};

std::string_view Columns(std::string_view line, std::size_t first, std::size_t last) {
    return first > line.size() ? std::string_view{} : line.substr(first - 1, last - first + 1);
}

void Take_Range(Header& head, float xmin, float step, float xmax) {
    head.xmin = xmin, head.step = step, head.xmax = xmax;
    head.npts = std::nearbyint((head.xmax - head.xmin) / head.step + 1);
    head.over = true;
}

void Take_Comment(std::string_view line, Header& head, Diffraction_Pattern_Type& pattern) {
    if (Contains(line, "TSAMP")) pattern.TSample = Number_Behind(line, "TSAMP");
    head.title_given |= Take_Header_Words(line, pattern, "TITLE");
    head.title_given |= Take_Header_Words(line, pattern, "Title:");
}

Status Take_Bank(std::string_view line, Header& head) {
    Free_Form_Reader counts(Columns(line, 5, 41));
    std::string number;
    int npts = 0;
    std::array<float, 2> range{};
    if (!counts.Read(number, npts) || !Read_Free_Reals(Columns(line, 47, 90), range)) return Status::Fail(bad_range);
    head.npts = npts;
    head.xmin = range[0], head.step = range[1];
    head.xmax = (head.npts - 1) * head.step + head.xmin;
    head.over = true;
    return Status::Done();
}

// The first three words as start, step and end; `numbers` tells whether they are numbers at all.
Status Take_Range_Line(std::string_view line, Header& head, Diffraction_Pattern_Type& pattern, bool& numbers) {
    std::vector<std::string_view> words;
    const Status cut = Get_Words(line, words, most_words, word_width);
    (void)cut;  // the words in front of what could not be cut are what counts
    numbers = false;
    if (words.size() < 3) return Status::Done();
    std::vector<float> reals;
    std::vector<int> ints;
    const std::string three = std::string(words[0]) + ' ' + std::string(words[1]) + ' ' + std::string(words[2]);
    numbers = Get_Numbers(three, reals, ints) == 3;
    if (!numbers) return Status::Done();
    if (!(reals[1] > least_step)) return Status::Fail(zero_step);
    Take_Range(head, reals[0], reals[1], reals[2]);
    const std::string_view behind = Trim(Behind_Words(line, 3));
    if (!behind.empty() && !head.title_given) pattern.title = Kept_Text(behind, title_width);
    return Status::Done();
}

// Two numbers or more and nothing else: a row of data above the range, and no title.
bool Is_Row_Of_Numbers(std::string_view line) {
    std::vector<std::string_view> words;
    double value = 0;
    if (Get_Words(line, words, line_width, line_width).failed || words.size() < 2) return false;
    return std::all_of(words.begin(), words.end(), [&](std::string_view word) { return Parse_Real(word, value); });
}

Status Take_Text_Line(std::string_view line, Header& head, Diffraction_Pattern_Type& pattern) {
    bool numbers = false;
    const Status range = Take_Range_Line(line, head, pattern, numbers);
    if (range.failed || numbers) return range;
    if (Contains(line, "TSAMP")) pattern.TSample = Number_Behind(line, "TSAMP");
    if (!head.title_given && !Is_Row_Of_Numbers(line)) {
        pattern.title = Kept_Text(line, title_width);
        head.title_given = true;
    }
    return ++head.text_lines > most_text_lines ? Status::Fail(too_many_lines) : Status::Done();
}

bool Is_Date(std::string_view word) {
    return word.size() >= 6 && word.find_first_not_of("0123456789/.-") == std::string_view::npos &&
           word.find_first_of("/.-") != std::string_view::npos;
}

// What stands between step and end: seconds a step, the anode, the wavelength.
void Take_Mdi_Constants(std::span<const std::string_view> words, Fact_List& facts, Diffraction_Pattern_Type& pattern) {
    double time = 0, wavelength = 0;
    if (Parse_Real(words[4], wavelength) && wavelength > 0 && wavelength < longest_wavelength)
        pattern.conv[0] = static_cast<float>(wavelength);
    if (Parse_Real(words[2], time) && time > 0 && Is_Sound(time)) pattern.count_time = static_cast<float>(time);
    facts.Add("Anode", words[3]);
    if (pattern.count_time > 0) facts.Add("Time a step (s)", pattern.count_time);
    const std::string_view date = std::string_view(pattern.title).substr(0, pattern.title.find(' '));
    if (Is_Date(date)) facts.Add("Date", date);
}

// A title, which may begin with a date, and a line "start step time ANODE wavelength end n".
Status Take_Mdi_Line(std::string_view line, Header& head, Diffraction_Pattern_Type& pattern) {
    if (++head.mdi_lines == 1) {
        pattern.title = Kept_Text(line, title_width);
        return Status::Done();
    }
    std::vector<std::string_view> words;
    const Status cut = Get_Words(line, words, most_words, word_width);
    (void)cut;  // what stands behind the seventh word does not matter
    std::array<float, 6> reals{};
    if (words.size() < reals.size()) return Status::Fail(bad_range);
    for (const std::size_t i : {0u, 1u, 5u})
        if (!Read_Free_Reals(words[i], std::span(reals).subspan(i, 1))) return Status::Fail(bad_range);
    if (!(reals[1] > least_step)) return Status::Fail(zero_step);
    Take_Range(head, reals[0], reals[1], reals[5]);
    Fact_List facts;
    Take_Mdi_Constants(words, facts, pattern);
    pattern.facts = facts.Done();
    if (words.size() > reals.size() && !Parse_Real(words[6], head.points)) head.points = 0;
    return Status::Done();
}

Status Read_Header(Line_Cursor& lines, bool mdi, Header& head, Diffraction_Pattern_Type& pattern) {
    std::string_view whole;
    while (!head.over) {
        if (!lines.Next(whole)) return Status::Fail(end_of_file);
        const std::string_view line = Trim_Right(Trim_Left(whole).substr(0, line_width));
        Status status = Status::Done();
        if (line.starts_with('!') || line.starts_with('#'))
            Take_Comment(line, head, pattern);
        else if (line.starts_with("BANK"))
            status = Take_Bank(line, head);
        else if (mdi)
            status = Take_Mdi_Line(line, head, pattern);
        else
            status = Take_Text_Line(line, head, pattern);
        if (status.failed) return status;
    }
    if (head.points >= 1) return Status::Done();
    const bool sound = head.npts >= least_points && head.xmax >= head.xmin && head.xmax >= head.step;
    return sound ? Status::Done() : Status::Fail(bad_range);
}

// The numbers that are there, at most as many as the arrays can have. The last one of a file that is cut may lack digits: it counts where
// it completes the points told. -1 marks the end.
std::vector<float> Read_Mdi_Counts(std::string_view text, double told) {
    std::vector<float> counts;
    Reserve_Many(counts, static_cast<std::size_t>(std::min(told, static_cast<double>(text.size() / 2 + 1))));
    Line_Cursor lines(text);
    bool sound = true, open = false;
    for (std::string_view line; sound && lines.Next(line);) {
        Number_Walk walk(line);
        walk.Skip_Separators();
        for (float count = 0; sound && !walk.At_End(); walk.Skip_Separators()) {
            sound = walk.Take(count);
            if (sound) counts.push_back(count);
        }
        open = sound && !line.empty() && line.data() + line.size() == text.data() + text.size() && line.back() != ' ';
    }
    const bool marked = !counts.empty() && counts.back() == -1;
    if (marked || (open && !counts.empty() && static_cast<double>(counts.size()) < told)) counts.pop_back();
    return counts;
}

// What a file with a full head holds is its pattern, whatever the head tells of its end and of its points.
Status Fill_From_Mdi(std::string_view text, const Header& head, Diffraction_Pattern_Type& pattern) {
    const std::vector<float> counts = Read_Mdi_Counts(text, head.points);
    if (counts.empty()) return Status::Fail(bad_count);
    if (Status status = Allocate_Diffraction_Pattern(pattern, static_cast<std::int32_t>(counts.size())); status.failed) return status;
    if (static_cast<double>(counts.size()) < head.points)
        pattern.npts_claimed = static_cast<std::int32_t>(std::min(head.points, most_claimed));
    std::copy(counts.begin(), counts.end(), pattern.y.begin());
    pattern.xmin = static_cast<float>(head.xmin), pattern.step = static_cast<float>(head.step);
    Set_Grid_End(pattern);
    Set_Grid(pattern);
    Set_Count_Variances(pattern);
    pattern.constant_step = true;
    Set_Y_Limits(pattern);
    return Status::Done();
}

}  // namespace

Status Read_Free_Format(std::string_view text, bool mdi, Diffraction_Pattern_Type& pattern) {
    pattern = {};
    pattern.scat_var = "2theta";
    Line_Cursor lines(text);
    Header head;
    if (Status status = Read_Header(lines, mdi, head, pattern); status.failed) return status;

    if (head.points >= 1) return Fill_From_Mdi(Filled_Part(lines.Rest()), head, pattern);

    if (head.npts > static_cast<double>(Most_Points(lines.Rest().size()))) return Status::Fail(bad_count);
    const auto n = static_cast<std::size_t>(head.npts);
    std::vector<float> counts(n);
    if (!Read_Free_Reals(lines.Rest(), counts)) return Status::Fail(bad_count);

    if (Status status = Allocate_Diffraction_Pattern(pattern, static_cast<std::int32_t>(n)); status.failed) return status;
    pattern.xmin = static_cast<float>(head.xmin);
    pattern.xmax = static_cast<float>(head.xmax);
    pattern.step = static_cast<float>(head.step);
    for (std::size_t i = 0; i < n; ++i) pattern.x[i] = pattern.xmin + static_cast<float>(i) * pattern.step;
    pattern.sigma = counts;
    pattern.y = std::move(counts);
    pattern.constant_step = true;
    Set_Y_Limits(pattern);
    if (pattern.scat_var == "2theta" && pattern.xmax > largest_angle) pattern.scat_var = "TOF";
    return Status::Done();
}

}  // namespace vntl
