#include "patterns/recognise.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/binary_file.hpp"
#include "patterns/format_table.hpp"

namespace vntl {

namespace {

using namespace format_code;

constexpr std::array<std::string_view, 28> phrases = {
    "",
    "a line of start, step and end, and as many counts as it tells",
    "three lines of text, a line of monitor, start and step in columns, the number of points, pairs of detectors and counts",
    "a line of start, step and end under lines of \"!\", and lines of ten counts and of their ten standard deviations in turn",
    "three lines of text, a line of six numbers, the first of which is the number of points that the next line tells by its range",
    "a title, step, start and monitors in columns on a line each, pairs of detectors and counts",
    "a line of start, step and end, and as many pairs of detectors and counts as it tells",
    "two lines of text, a line of start, step and end, as many counts in columns of 8 and their standard deviations",
    "keyword lines such as _START=, _STEPSIZE= and _COUNTS",
    "a first line XYDATA, a line that begins with \"#L r\", or columns of two to four numbers with rising x",
    "a line that begins with BANK and bins by CONST within 180 degrees",
    "a line that begins with BANK and bins by SLOG, RALF, TIME_MAP or LOG, or by CONST beyond 180 degrees",
    "an <xrdMeasurements> element, or a line that begins with [Scan points], RawScan or ## XYDATA=",
    "four lines of text, a line of start, step and end, and as many pairs of time and counts as it tells",
    "lines that begin with BANK over columns of x, y and standard deviation, or the word fac_y over one",
    "a line data_ with a name, or a line loop_ with names behind it",
    "the letters RAW with a blank, 2, 1.01 or 4.00 in front",
    "the letters RAW_1.0 in front",
    "the letters FI and two zeros in front, or a first line .RAW",
    "a zip archive of Experiment0/",
    "a zip archive of Data0/",
    "a line *RAS_DATA_START",
    "lines *TYPE or *CLASS and *BEGIN",
    "a first line SIETRONICS XRD SCAN",
    "a title, the labels of two axes, the number of rows, and rows of two numbers",
    "the letters V3RD or V5RD in front",
    "columns under a line that names them, or under remarks of a known program",
    "the signature of HDF5",
};

struct Head {
    std::vector<std::string_view> lines;
    bool whole;  // the lines are all of the file
};

Head Cut_Lines(std::string_view text) {
    constexpr std::size_t mark = 3;  // of the byte order, which may be gone
    Head head{{}, text.size() + mark < recognised_head};
    Line_Cursor cursor(text.substr(0, recognised_head));
    for (std::string_view line; cursor.Next(line);) head.lines.push_back(line);
    if (!head.whole && !head.lines.empty()) head.lines.pop_back();  // cut off
    return head;
}

bool Is_Blank(char c) { return c == ' ' || c == '\t'; }
bool Is_Separator(char c) { return Is_Blank(c) || c == ',' || c == ';'; }

// Takes a number that ends at a separator or at the end, and the separators behind it.
bool Take_Number(const char*& at, const char* end, double& value) {
    const char* const behind = Parse_Double(at, end, value);
    if (behind == at || (behind != end && !Is_Separator(*behind)) || !std::isfinite(value)) return false;
    at = behind;
    while (at != end && Is_Separator(*at)) ++at;
    return true;
}

// The numbers that a line begins with.
struct Numbers {
    std::array<double, 6> value{};  // the first ones
    int count = 0;                  // of all
    bool alone = false;             // nothing but numbers is on the line
};

Numbers Leading_Numbers(std::string_view line) {
    Numbers numbers;
    line = Trim_Left(line);
    const char* at = line.data();
    const char* const end = at + line.size();
    for (double value = 0; at != end && Take_Number(at, end, value); ++numbers.count)
        if (const auto i = static_cast<std::size_t>(numbers.count); i < numbers.value.size()) numbers.value[i] = value;
    numbers.alone = at == end && numbers.count > 0;
    return numbers;
}

bool Is_Number(std::string_view field) {
    double value = 0;
    const char* const end = field.data() + field.size();
    return !field.empty() && Parse_Double(field.data(), end, value) == end && std::isfinite(value);
}

bool Is_Count(std::string_view field, int& value) {
    const char* at = field.data();
    const char* const end = at + field.size();
    return Parse_Int(at, end, value) && at == end;
}

// The field of `width` columns from column `column` (from 0) on, without its blanks.
std::string_view Field(std::string_view line, std::size_t column, std::size_t width) {
    return column < line.size() ? Trim(line.substr(column, width)) : std::string_view{};
}

// Number of fields of that width, each of which is one number; 0 when the line does not fit.
int Fields_Of(std::string_view line, std::size_t width) {
    line = Trim_Right(line);
    int count = 0;
    for (std::size_t column = 0; column < line.size(); column += width, ++count)
        if (!Is_Number(Field(line, column, width))) return 0;
    return count;
}

// Number of pairs of an integer and a number in fields of those widths, 0 when the line does not fit. Words of the line show that they are
// pairs and not numbers of both widths together.
int Pairs_Of(std::string_view line, std::size_t first, std::size_t second) {
    line = Trim_Right(line);
    int count = 0, words = 0;
    for (std::size_t column = 0; column < line.size(); column += first + second, ++count)
        if (!Is_Number(Field(line, column, first)) || !Is_Number(Field(line, column + first, second))) return 0;
    for (std::size_t i = 0; i < line.size(); ++i) words += !Is_Blank(line[i]) && (i == 0 || Is_Blank(line[i - 1])) ? 1 : 0;
    return words > count ? count : 0;
}

constexpr int to_a_line = 10;  // pairs or counts in columns

// Points that a line tells that begins with start, step and end; 0 for any other line.
double Points_Told(std::string_view line) {
    constexpr double least_step = 1e-6, least_points = 11, most_points = 1e8;
    const Numbers numbers = Leading_Numbers(line);
    const double start = numbers.value[0], step = numbers.value[1], end = numbers.value[2];
    if (numbers.count < 3 || !(step > least_step) || !(end > start)) return 0;
    const double points = std::floor((end - start) / step + 1.5);
    return points >= least_points && points <= most_points ? points : 0;
}

// A list may lack a few of its numbers, or be filled up to the end of its last line.
bool About(double count, double told) { return count >= 0.9 * told && count <= told + 2 * to_a_line + 0.1 * told; }

// Numbers of the lines from `first` on, up to a line that holds anything else. Counts in columns of 8 may touch each other.
double Count_Of_Numbers(const Head& head, std::size_t first) {
    double count = 0;
    for (std::size_t i = first; i < head.lines.size(); ++i) {
        const std::string_view line = Trim_Right(head.lines[i]);
        const int fields = Fields_Of(line, 8);
        const Numbers numbers = fields > 0 ? Numbers{} : Leading_Numbers(line);
        if (fields == 0 && !numbers.alone && !line.empty()) break;
        count += fields + numbers.count;
    }
    return count;
}

std::string_view Line(const Head& head, std::size_t i) { return i < head.lines.size() ? head.lines[i] : std::string_view{}; }

bool Is_Remark(std::string_view line) { return line.starts_with('!') || line.starts_with('#'); }

// ---- keywords

bool Begins_No_Case(std::string_view line, std::string_view word) { return Equal_No_Case(line.substr(0, word.size()), word); }

Code By_Markup(std::string_view text) {
    return Contains(text, "<xrdMeasurement") || Contains(text, ":xrdMeasurement") ? panalytical : none;
}

bool Begins_Markup(std::string_view text) {
    const std::size_t at = text.find_first_not_of(" \t\r\n");
    return at != std::string_view::npos && text[at] == '<';
}

Code By_Panalytical_Line(std::string_view line) {
    for (const char* word : {"[Scan points]", "[Measurement conditions]", "LabdaAlpha1,", "DataAngleRange,", "RawScan",
                             "## XYDATA=", "##XYDATA=X++<", "##XYDATA= X++<", "##$WAVELENGTH ALPHA1="})
        if (line.starts_with(word)) return panalytical;
    return none;
}

bool Is_Uxd_Line(std::string_view line) {
    constexpr std::string_view words[] = {"_START",       "_STEPSIZE", "_STEPTIME", "_STEPCOUNT", "_WL1",
                                          "_FILEVERSION", "_2THETA",   "_COUNTS",   "_CPS"};
    return line.starts_with('_') && std::any_of(std::begin(words), std::end(words), [&](auto word) { return line.starts_with(word); });
}

// Words of a bank line: number, points, records, binning, four coefficients, type.
struct Bank {
    explicit Bank(std::string_view line) {
        for (std::string_view& word : words) {
            line = Trim_Left(line);
            word = line.substr(0, line.find_first_of(" \t"));
            line.remove_prefix(word.size());
        }
    }
    bool States_X() const {
        return std::any_of(words.begin(), words.end(), [](std::string_view word) { return Begins_No_Case(word, "FXY"); });
    }

    std::array<std::string_view, 9> words;
};

// Three numbers a line with rising x, remarks passed over.
bool Are_Three_Columns(const Head& head, std::size_t first) {
    constexpr int enough = 3;
    int records = 0;
    double last = 0;
    for (std::size_t i = first; i < head.lines.size() && records < enough; ++i) {
        const std::string_view line = Trim(head.lines[i]);
        if (Is_Remark(line)) continue;
        const Numbers numbers = Leading_Numbers(line);
        if (numbers.count != 3 || !numbers.alone || (records > 0 && !(numbers.value[0] > last))) return false;
        last = numbers.value[0];
        ++records;
    }
    return records == enough;
}

// Channels that widen are of time of flight; equal steps are angles in centidegrees when they end within 180 degrees.
Code By_Binning(const Bank& bank) {
    constexpr double start_limit = 18000, end_limit = 18100;
    const std::string_view binning = bank.words[3];
    for (const char* name : {"RALF", "SLOG", "TIME_MAP", "LOG"})
        if (Begins_No_Case(binning, name)) return gsas_flight;
    if (!Begins_No_Case(binning, "CON")) return none;
    double start = 0, step = 0;
    Parse_Real(bank.words[4], start);
    Parse_Real(bank.words[5], step);
    int points = 0;
    Is_Count(bank.words[1], points);
    return start >= start_limit || start + points * step >= end_limit ? gsas_flight : gsas;
}

// `factor`: a factor of intensities stood above.
Code By_Bank_Line(const Head& head, std::size_t i, bool factor) {
    const std::string_view line = Trim_Left(head.lines[i]);
    if (!Begins_No_Case(line, "BANK")) return none;
    const Bank bank(line.substr(4));
    if (line.starts_with("BANK") && (factor || (!bank.States_X() && Are_Three_Columns(head, i + 1)))) return isis;
    int number = 0;
    return Is_Count(bank.words[0], number) ? By_Binning(bank) : none;
}

bool Is_Loop_Line(std::string_view line, std::string_view next) {
    return Begins_No_Case(line, "loop_") && Trim(line).size() == 5 && Trim_Left(next).starts_with('_');
}

// One walk over the lines for words that a line begins with. Most lines of a file are numbers.
Code By_Keywords(const Head& head) {
    if (Line(head, 0).starts_with("XYDATA")) return xysigma;
    int uxd_lines = 0;
    bool factor = false;
    bool first = true, block = false;  // the first line that is no remark is the head of a data block
    for (std::size_t i = 0; i < head.lines.size(); ++i) {
        const std::string_view line = head.lines[i];
        if (line.empty() || (line[0] >= '0' && line[0] <= '9')) continue;
        if (const Code code = By_Bank_Line(head, i, factor); code != none) return code;
        factor = factor || Contains(line, "fac_y");
        if (line.starts_with("#L r")) return xysigma;
        if (const Code code = By_Panalytical_Line(line); code != none) return code;
        if (Is_Uxd_Line(line) && ++uxd_lines == 2) return uxd;
        if (Is_Loop_Line(line, Line(head, i + 1)) || (block && line.starts_with('_'))) return cif;
        if (const std::string_view cut = Trim(line); first && !cut.empty() && cut.front() != '#') {
            first = false;
            block = Begins_No_Case(line, "data_") && !Contains(Trim_Right(line), " ");
        }
    }
    return none;
}

// ---- layouts

// (F13.0,10X,F8.3,45X,4F9.3) under three lines of text, (I4), (10(I2,F8.0)).
bool Is_R3b(const Head& head) {
    const std::string_view line = Line(head, 3);
    int points = 0;
    return Is_Number(Field(line, 0, 13)) && Is_Number(Field(line, 23, 8)) && Is_Number(Field(line, 76, 9)) &&
           Is_Count(Field(Line(head, 4), 0, 4), points) && points > 0 && Pairs_Of(Line(head, 5), 2, 8) == std::min(points, to_a_line);
}

bool Is_G41(const Head& head) {
    std::size_t i = 3;
    while (Trim_Left(Line(head, i)).starts_with('!')) ++i;
    const Numbers numbers = Leading_Numbers(Line(head, i));
    const double told = Points_Told(Line(head, i + 1));
    return numbers.count >= 6 && told > 0 && std::fabs(numbers.value[0] - told) <= 1 + 0.01 * told &&
           numbers.value[3] == std::floor(numbers.value[3]) && Leading_Numbers(Line(head, i + 2)).alone;
}

// (16X,F8.3), (F8.3), (2F8.0) under a title, (10(I2,F6.0)). The data may be a marker alone.
bool Is_R3a(const Head& head) {
    constexpr double widest_step = 2;
    double step = 0;
    const std::string_view step_line = Line(head, 1);
    if (!Parse_Real(Field(step_line, 16, 8), step) || !(step > 0) || step > widest_step) return false;
    if (!Is_Number(Field(Line(head, 2), 0, 8)) || !Is_Number(Field(Line(head, 3), 0, 8)) || !Is_Number(Field(Line(head, 3), 8, 8)))
        return false;
    double marker = 0;
    return Pairs_Of(Line(head, 4), 2, 6) == to_a_line || (Parse_Real(Field(Line(head, 4), 2, 6), marker) && marker == -1000);
}

// Pairs of the lines from `first` on, up to a line that holds anything else.
int Count_Of_Pairs(const Head& head, std::size_t first, std::size_t width, std::size_t second_width) {
    int count = 0;
    for (std::size_t i = first; i < head.lines.size(); ++i) {
        const int pairs = Pairs_Of(head.lines[i], width, second_width);
        if (pairs == 0) break;
        count += pairs;
    }
    return count;
}

bool Holds_Pairs(const Head& head, std::size_t range_line, std::size_t width, std::size_t second_width, int a_line) {
    const double told = Points_Told(Line(head, range_line));
    if (told == 0 || Pairs_Of(Line(head, range_line + 1), width, second_width) != a_line) return false;
    const int pairs = Count_Of_Pairs(head, range_line + 1, width, second_width);
    return About(pairs, told) || (!head.whole && pairs < told && pairs > 2 * a_line);
}

bool Is_R3a_Old(const Head& head) { return Holds_Pairs(head, 0, 2, 6, to_a_line); }
bool Is_Variable_Time(const Head& head) { return Holds_Pairs(head, 4, 6, 10, 5); }

double Mean_Of_Fields(std::string_view line) {
    double sum = 0;
    int count = 0;
    for (std::size_t column = 0; column < Trim_Right(line).size(); column += 8, ++count) {
        double value = 0;
        Parse_Real(Field(line, column, 8), value);
        sum += value;
    }
    return count > 0 ? sum / count : 0;
}

// Lines of ten numbers, each second one of which is less than the lines around it: counts and their standard deviations in turn.
bool Is_Nls(const Head& head) {
    std::size_t i = 0;
    while (Trim_Left(Line(head, i)).starts_with('!')) ++i;
    const double told = Points_Told(Line(head, i));
    if (told == 0) return false;
    double last = 0;
    int blocks = 0;
    for (++i; i + 1 < head.lines.size(); i += 2, ++blocks) {
        if (Fields_Of(head.lines[i], 8) != to_a_line || Fields_Of(head.lines[i + 1], 8) != to_a_line) break;
        const double counts = Mean_Of_Fields(head.lines[i]), deviations = Mean_Of_Fields(head.lines[i + 1]);
        if (!(deviations < counts) || (blocks > 0 && !(last < counts))) return false;
        last = deviations;
    }
    const double counted = std::floor(told / to_a_line) - 1;  // blocks that a reader takes
    return blocks >= 2 && (blocks >= counted || !head.whole) && blocks <= counted + 2;
}

bool Is_Dmc(const Head& head) {
    const double told = Points_Told(Line(head, 2));
    if (told == 0 || Fields_Of(Line(head, 3), 8) != to_a_line) return false;
    return Count_Of_Numbers(head, 3) >= (head.whole ? 1.8 : 1.2) * told;
}

// ---- lists

// The first line of three numbers tells the range; at most seven lines of text stand above it.
bool Is_Free_Format(const Head& head) {
    constexpr int most_text_lines = 7;
    int texts = 0;
    for (std::size_t i = 0; i < head.lines.size(); ++i) {
        const std::string_view line = Trim_Left(head.lines[i]);
        if (Is_Remark(line)) continue;
        if (Leading_Numbers(line).count < 3) {
            if (++texts > most_text_lines) return false;
            continue;
        }
        const double told = Points_Told(line);
        if (told == 0) return false;
        const double count = Count_Of_Numbers(head, i + 1);
        return head.whole ? About(count, told) : count > 2 * to_a_line && count < 1.2 * told;
    }
    return false;
}

// The first lines of numbers are records of two to four of them with x rising, and so is most of what follows: columns, and no list of
// counts or table amid other things.
bool Are_Columns(const Head& head) {
    constexpr int enough = 4;
    int records = 0, others = 0;
    double last = 0;
    for (const std::string_view whole : head.lines) {
        const std::string_view line = Trim(whole);
        if (line.empty() || Contains("!#'%;*/", line.substr(0, 1))) continue;
        const Numbers numbers = Leading_Numbers(line);
        const bool record = numbers.count >= 2 && numbers.count <= 4 && (numbers.alone || numbers.count > 2);
        if (records > 0 && !record) {
            if (records < enough) return false;
            ++others;
        }
        if (!record) continue;
        if (records > 0 && records < enough && !(numbers.value[0] > last)) return false;
        last = numbers.value[0];
        ++records;
    }
    return records >= enough && others <= records / 4;
}

// Semicolons stand between columns whose numbers have a decimal comma: as blanks and points have them.
bool Are_Comma_Columns(std::string_view text) {
    constexpr std::size_t enough = 8192;
    text = text.substr(0, enough);
    if (!Contains(text, ";")) return false;
    const std::string plain = Replace_All(text, ",", ".");
    return Are_Columns(Cut_Lines(plain));
}

}  // namespace

int Certain_Format(std::string_view head) {
    for (const Format_Reader& reader : Format_Readers())
        if (reader.recognises != nullptr && reader.recognises(head)) return reader.code;
    return none;
}

int Format_By_Words(std::string_view head) {
    head = Without_Mark(head);
    if (const int code = Certain_Format(head); code != none) return code;
    return Begins_Markup(head) ? By_Markup(head) : By_Keywords(Cut_Lines(head));
}

int Recognised_By_Content(std::string_view text) {
    text = Without_Mark(text).substr(0, recognised_head);
    if (const int code = Certain_Format(text); code != 0) return code;
    if (Is_Binary(text)) return none;
    if (Begins_Markup(text)) return By_Markup(text);
    const Head head = Cut_Lines(text);
    if (const Code code = By_Keywords(head); code != none) return code;
    struct Layout {
        bool (*fits)(const Head&);
        Code code;
    };
    // Those that agree in more come first.
    constexpr Layout layouts[] = {{Is_R3b, r3b},         {Is_G41, g41}, {Is_R3a, r3a}, {Is_Variable_Time, variable_time},
                                  {Is_R3a_Old, r3a_old}, {Is_Nls, nls}, {Is_Dmc, dmc}};
    for (const Layout& layout : layouts)
        if (layout.fits(head)) return layout.code;
    const bool list = Is_Free_Format(head);
    if (list && head.whole) return free_format;
    if (Are_Columns(head) || Are_Comma_Columns(text)) return xysigma;
    return list ? free_format : none;
}

std::string_view How_Recognised(int code) {
    return code > 0 && code < static_cast<int>(phrases.size()) ? phrases[static_cast<std::size_t>(code)] : std::string_view{};
}

}  // namespace vntl
