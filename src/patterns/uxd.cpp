#include "patterns/uxd.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "base/huge_pages.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/number_walk.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t line_width = 132;
constexpr float least_step = 1e-6f;
constexpr float last_angle = 160.0f;  // up to which a range without step count goes
constexpr std::size_t most_ranges = 2000;
constexpr std::string_view bad_header = " Error on Socabim UXD Intensity file, check your mode parameter!";
constexpr std::string_view bad_data = " Error on Socabim UXD Intensity file, check your instr parameter!";

struct Section {
    std::string_view word;
    bool angles, rates;
    bool strict;  // no line with a "=" is passed over
};
constexpr std::array<Section, 4> sections = {{{"_COUNTS", false, false, false},
                                              {"_CPS", false, true, true},
                                              {"_2THETACOUNTS", true, false, false},
                                              {"_2THETACPS", true, true, false}}};

const Section* Section_Of(std::string_view line) {
    for (const Section& section : sections)
        if (line.starts_with(section.word)) return &section;
    return nullptr;
}

// What the headers have told so far.
struct Header {
    Diffraction_Pattern_Type told;  // xmin, step, conv, title
    float time = 0;
    double npts = 0;
};

bool Next_Filled(Line_Cursor& lines, std::string_view& line) {
    while (lines.Next(line)) {
        line = Trim_Right(line.substr(0, line_width));
        if (!Trim_Left(line).empty()) return true;
    }
    return false;
}

std::string_view Unquoted(std::string_view text) {
    const std::size_t first = text.find('\''), last = text.rfind('\'');
    return Trim(first == last ? text : text.substr(first + 1, last - first - 1));
}

bool Take_Keyword(std::string_view line, Header& head) {
    const std::size_t equal = line.find('=');
    if (equal == std::string_view::npos) return true;
    const std::string_view value = line.substr(equal + 1);
    if (line.starts_with("_2THETA") || line.starts_with("_START")) return Told_Real(value, head.told.xmin);
    if (line.starts_with("_STEPSIZE")) return Told_Real(value, head.told.step);
    if (line.starts_with("_STEPTIME")) return Told_Real(value, head.time);
    if (line.starts_with("_STEPCOUNT")) return Told_Real(value, head.npts) && head.npts == std::trunc(head.npts);
    if (line.starts_with("_WL1")) return Told_Real(value, head.told.conv[0]);
    if (line.starts_with("_WL2")) return Told_Real(value, head.told.conv[1]);
    if (line.starts_with("_WLRATIO")) return Told_Real(value, head.told.conv[2]);
    if (line.starts_with("_SAMPLE=")) head.told.title = Kept_Text(Unquoted(value), title_width);
    return true;
}

// Up to the section line, which `line` is then.
Status Read_Header(Line_Cursor& lines, Header& head, std::string_view& line, const Section*& section) {
    while (Next_Filled(lines, line)) {
        section = Section_Of(line);
        if (section != nullptr) return Status::Done();
        if (!Take_Keyword(line, head)) break;
    }
    return Status::Fail(bad_header);
}

bool Begins_With_Number(std::string_view line) {
    float number = 0;
    line = Trim_Left(line);
    return Parse_Float(line.data(), line.data() + line.size(), number) != line.data();
}

// Goes in front of the first line of numbers and gives what separates them, '\0' when there is no such line.
char Find_Numbers(Line_Cursor& lines, const Section& section, std::string_view section_line) {
    Line_Cursor before = lines;
    std::string_view line;
    const auto next = [&] {
        before = lines;
        return Next_Filled(lines, line);
    };
    if (!next()) return '\0';
    if (Contains(section_line, "=") && !Begins_With_Number(line) && !next()) return '\0';
    while (!section.strict && Contains(line, "="))
        if (!next()) return '\0';
    lines = before;
    for (const char separator : {'\t', ';', ','})
        if (Trim_Left(line).find(separator) != std::string_view::npos) return separator;
    return ' ';
}

using Line_Values = std::array<float, line_width>;

// The numbers of a line; none when it cannot be read.
std::size_t Values_Of(std::string_view line, char separator, Line_Values& values) {
    const char* const end = line.data() + line.size();
    Number_Walk walk(line);
    walk.Skip_Blanks();
    std::size_t n = 0;
    while (!walk.At_End()) {
        const char* const field_end = separator == ' ' ? end : std::find(walk.At(), end, separator);
        Number_Walk field(walk.At(), field_end);
        field.Skip_Blanks();
        if (!field.Take(values[n], '/')) return 0;
        ++n;
        walk = Number_Walk(separator == ' ' ? field.At() : field_end, end);
        if (separator == ' ') walk.Skip_Blanks();
        if (!walk.At_End() && (walk.Front() == separator || walk.Front() == ',')) {
            walk = Number_Walk(walk.At() + 1, end);
            walk.Skip_Blanks();
        }
    }
    return n;
}

// The intensities up to the first line that is none of numbers, at most so many; the cursor stands in front of that line.
std::vector<float> Read_Intensities(Line_Cursor& lines, const Section& section, char separator, std::size_t most) {
    std::vector<float> y;
    Reserve_Many(y, std::min(most, lines.Rest().size() / 2 + 1));
    Line_Values values;
    const std::size_t skipped = section.angles ? 1 : 0;
    std::string_view line;
    for (Line_Cursor before = lines; Next_Filled(lines, line); before = lines) {
        const std::size_t n = Values_Of(line, separator, values);
        if (n == 0) {
            lines = before;
            break;
        }
        for (std::size_t i = skipped; i < n && y.size() < most; ++i) y.push_back(values[i]);
    }
    return y;
}

bool Holds_A_Section(Line_Cursor lines) {
    std::string_view line;
    while (Next_Filled(lines, line))
        if (Section_Of(line) != nullptr) return true;
    return false;
}

// Reads the ranges of a file one after the other.
class Range_Reader {
public:
    explicit Range_Reader(std::string_view text) : lines_(text) {}

    Status Next(Diffraction_Pattern_Type& p) {
        std::string_view line;
        const Section* section = nullptr;
        head_.npts = 0;
        Status status = Read_Header(lines_, head_, line, section);
        ended_ = status.failed;
        if (status.failed) return status;
        p = head_.told;
        const bool counted = head_.npts >= 1;
        double npts = head_.npts;
        if (!counted && p.step > least_step) npts = std::nearbyint((static_cast<double>(last_angle) - p.xmin) / p.step + 1);
        const bool uncounted_range = !counted && ranges_ > 0 && p.step > least_step;
        if (!uncounted_range && (!(npts >= 1) || npts > most_claimed)) return Status::Fail(no_points_told);

        const char separator = Find_Numbers(lines_, *section, line);
        if (separator == '\0') return Status::Fail(bad_data);
        const std::size_t room = uncounted_range ? lines_.Rest().size() : static_cast<std::size_t>(npts);
        const std::vector<float> y = Read_Intensities(lines_, *section, separator, room);
        if (y.empty()) return Status::Fail(bad_data);
        if (ranges_ == 0) several_ = Holds_A_Section(lines_);
        ++ranges_;
        status = Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(y.size()));
        if (status.failed) return status;
        End_At_Last_Number(p, y.size(), counted ? npts : 0);
        Fill(p, y, section->rates);
        return status;
    }

    bool Several() const { return several_; }
    bool Ended() const { return ended_; }  // there is no further range

private:
    void Fill(Diffraction_Pattern_Type& p, const std::vector<float>& y, bool rates) const {
        std::copy(y.begin(), y.end(), p.y.begin());
        const float time = rates && head_.time > 0 ? head_.time : 1.0f;
        for (std::size_t i = 0; i < p.y.size(); ++i) p.sigma[i] = rates ? std::fabs(p.y[i]) / time : p.y[i];
        Set_Grid_End(p);
        Set_Grid(p);
        p.constant_step = true;
        Set_Y_Limits(p);
    }

    Line_Cursor lines_;
    Header head_;
    int ranges_ = 0;  // read so far
    bool several_ = false, ended_ = false;
};

}  // namespace

Status Read_Uxd(std::string_view text, Diffraction_Pattern_Type& p) {
    p = {};
    return Range_Reader(text).Next(p);
}

Status Read_Uxd_Ranges(std::string_view text, std::vector<Diffraction_Pattern_Type>& patterns) {
    patterns.clear();
    Range_Reader ranges(text);
    Status first_fault;
    for (std::size_t number = 1; patterns.size() < most_ranges; ++number) {
        Diffraction_Pattern_Type pattern;
        const Status status = ranges.Next(pattern);
        if (ranges.Ended() && number > 1) break;
        if (status.failed && first_fault.ok()) first_fault = status;
        if (ranges.Ended()) break;
        if (status.failed) continue;
        if (ranges.Several()) {
            pattern.title = Numbered(pattern.title, number);
            pattern.bank = static_cast<std::int32_t>(number);
        }
        patterns.push_back(std::move(pattern));
    }
    return patterns.empty() ? first_fault : Status::Done();
}

}  // namespace vntl
