#include "patterns/panalytical_csv.hpp"

#include <array>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::string_view end_of_file = " Error reading a profile CSV-DATA file: end of file";
constexpr std::string_view no_points = " Error in (Csv)Intensity file, Number of points negative or zero!";
constexpr std::string_view data_mark = "[Scan points]";
constexpr std::string_view title_word = "Title 1";

// A line with its fields separated by commas and points in its numbers, for one that uses another separator or double quotes. Only the
// front of it counts, which holds all numbers.
class Usual_Line {
public:
    Usual_Line(std::string_view line, char separator) {
        bool quoted = false;
        for (const char c : line.substr(0, text_.size())) {
            if (c == '"')
                quoted = !quoted;
            else if (c == separator && !quoted)
                text_[size_++] = ',';
            else
                text_[size_++] = c == ',' ? '.' : c;
        }
    }
    std::string_view Text() const { return {text_.data(), size_}; }

private:
    std::array<char, 180> text_;
    std::size_t size_ = 0;
};

struct Header {
    double npts = 0;
    bool range = false, step = false;  // told
    char separator = ',';
};

bool Take_Range(std::string_view value, Diffraction_Pattern_Type& p) {
    std::array<float, 2> range{};
    if (!Read_Free_Reals(value, range) || !Is_Sound(range[0]) || !Is_Sound(range[1])) return false;
    p.xmin = range[0], p.xmax = range[1];
    return true;
}

// What stands behind a keyword at the beginning of the line and behind the separator that follows it.
bool Take_Value(std::string_view value, std::string_view word, Header& head, Diffraction_Pattern_Type& p) {
    if (word == "K-Alpha1 wavelength") return Told_Real(value, p.conv[0]);
    if (word == "K-Alpha2 wavelength") return Told_Real(value, p.conv[1]);
    if (word == "Ratio K-Alpha2/K-Alpha1") return Told_Real(value, p.conv[2]);
    if (word == "No. of points") return Told_Real(value, head.npts);
    if (Trim(value).empty()) return true;
    if (word == "Data angle range") return head.range = Take_Range(value, p);
    return head.step = Told_Real(value, p.step);
}

// "Title 1,Corundum", "Title 1;\"Corundum\"", "\"Title 1\",\"Corundum\"": what stands behind the word, its separator and the quotes.
std::string Title_Of(std::string_view line) {
    const bool quoted = line.starts_with('"');
    line.remove_prefix(title_word.size() + (quoted ? 1 : 0));
    const bool all_in_one = quoted && !line.starts_with('"');  // "Title 1,Corundum" in one pair of quotes
    if (quoted && !all_in_one) line.remove_prefix(1);
    line = Trim(line);
    if (all_in_one && line.ends_with('"')) line.remove_suffix(1);
    if (!line.empty() && (line.front() == ',' || line.front() == ';' || line.front() == '\t')) line = Trim(line.substr(1));
    if (line.size() >= 2 && line.starts_with('"') && line.ends_with('"')) line = Trim(line.substr(1, line.size() - 2));
    return Replace_All(line, "\"\"", "\"");
}

bool Take_Keyword(std::string_view line, Header& head, Diffraction_Pattern_Type& p) {
    constexpr std::array<std::string_view, 6> words = {"K-Alpha1 wavelength", "K-Alpha2 wavelength", "Ratio K-Alpha2/K-Alpha1",
                                                       "Data angle range",    "Scan step size",      "No. of points"};
    if (line.substr(line.starts_with('"') ? 1 : 0).starts_with(title_word)) {
        p.title = Kept_Text(Title_Of(line), title_width);
        return true;
    }
    if (line.starts_with('"')) {
        const Usual_Line usual(line, ',');
        return Take_Keyword(usual.Text(), head, p);
    }
    for (const std::string_view word : words) {
        if (!line.starts_with(word)) continue;
        const char behind = line.size() > word.size() ? line[word.size()] : ',';
        const std::string_view value = From_Column(line, word.size() + 2);
        if (behind == ';' || behind == '\t') head.separator = behind;
        if (head.separator == ',') return Take_Value(value, word, head, p);
        const Usual_Line usual(value, head.separator);
        return Take_Value(usual.Text(), word, head, p);
    }
    return true;
}

Status Read_Header(Line_Cursor& lines, Header& head, Diffraction_Pattern_Type& p) {
    std::string_view line;
    while (lines.Next(line)) {
        if (line.starts_with(data_mark) || (line.starts_with('"') && line.substr(1).starts_with(data_mark)))
            return lines.Next(line) ? Status::Done() : Status::Fail(end_of_file);  // the column heads
        if (!Take_Keyword(line, head, p)) break;
    }
    return Status::Fail(end_of_file);
}

// Either side of the first comma, or two numbers separated by blanks.
bool Read_Point(std::string_view line, float& x, float& y) {
    Number_Walk walk(line);
    walk.Skip_Blanks();
    if (!walk.Take(x, '/') || !Is_Sound(x)) return false;
    if (const std::size_t comma = walk.Rest().find(','); comma != std::string_view::npos) walk = Number_Walk(walk.Rest().substr(comma + 1));
    walk.Skip_Blanks();
    return walk.Take(y, '/');
}

bool Read_Any_Point(std::string_view line, char separator, float& x, float& y) {
    if (separator != ',' && line.find(separator) != std::string_view::npos) return Read_Point(Usual_Line(line, separator).Text(), x, y);
    if (Read_Point(line, x, y)) return true;
    if (line.find_first_of(";\"") == std::string_view::npos) return false;
    return Read_Point(Usual_Line(line, line.find(';') == std::string_view::npos ? ',' : ';').Text(), x, y);
}

}  // namespace

Status Read_Panalytical_Csv(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    Line_Cursor lines(text);
    Header head;
    if (Status status = Read_Header(lines, head, p); status.failed) return status;
    if (Status status = Allocate_Told(p, head.npts, text.size(), no_points); status.failed) return status;
    if (lines.At_End()) return Status::Fail(end_of_file);

    std::size_t n = 0;
    std::string_view line;
    while (n < p.x.size() && lines.Next(line) && Read_Any_Point(line, head.separator, p.x[n], p.y[n])) ++n;
    if (n == 0) return Status::Fail(no_points);
    End_At_Last_Number(p, n, head.npts);
    Set_Count_Variances(p);
    if (!head.range) p.xmin = p.x.front();
    if (!head.range || p.npts_claimed > 0) p.xmax = p.x.back();
    if (!head.step && n > 1) p.step = (p.x.back() - p.x.front()) / static_cast<float>(n - 1);
    p.constant_step = false;
    Set_Y_Limits(p);
    return Status::Done();
}

}  // namespace vntl
