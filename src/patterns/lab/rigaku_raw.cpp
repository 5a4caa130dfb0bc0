#include "patterns/lab/rigaku_raw.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "base/huge_pages.hpp"
#include "base/real_parse.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/lab/byte_view.hpp"
#include "patterns/lab/raw_ranges.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view mark = "FI\0\0"sv;
constexpr std::size_t head_length = 3158;
constexpr std::string_view old_mark = ".RAW";

Status Read_Binary(std::string_view file, Diffraction_Pattern_Type& p) {
    Byte_View bytes(file);
    if (!bytes.Holds(0, head_length)) return Status::Fail("This RAW file ends within its head");
    p.title = Kept_Text(bytes.Text(104, 64), title_width);
    p.conv[0] = Wavelength_Of(bytes.F8(1212));
    p.conv[1] = Wavelength_Of(bytes.F8(1220));
    p.conv[3] = Wavelength_Of(bytes.F8(1228));
    Fact_List facts;
    facts.Add("Sample", bytes.Text(104, 64));
    facts.Add("User", bytes.Text(84, 20));
    facts.Add("Anode", bytes.Text(1238, 4));
    Add_Setting(facts, "Voltage (kV)", bytes.U2(2950));
    Add_Setting(facts, "Current (mA)", bytes.U2(2952));
    p.facts = facts.Done();
    const double start = bytes.F4(2962), stop = bytes.F4(2966);
    double step = bytes.F4(2970);
    const double told = bytes.U4(3154);
    const std::string_view counts = bytes.From(head_length);
    const std::size_t n = Points_There(p, told, counts.size(), sizeof(float));
    if (n == 0) return Status::Fail("This RAW file holds no points");
    if (!(std::fabs(step) > 0) && told > 1) step = (stop - start) / (told - 1);
    return Set_Points<float>(p, {start, step}, counts, sizeof(float), n);
}

// The lines of an old text, by their numbers from 0. NULs fill some of them up.
class Old_Lines {
public:
    static constexpr std::size_t head_lines = 38;

    explicit Old_Lines(std::string_view text) : rest_(text) {
        for (std::string_view& line : lines_)
            if (rest_.Next(line)) ++count_;
    }
    std::size_t Count() const { return count_; }
    std::string_view Text(std::size_t number) const { return Trim(lines_[number].substr(0, lines_[number].find('\0'))); }
    double Number(std::size_t number) const {
        double value = 0;
        return Told_Real(Text(number), value) ? value : 0;
    }
    std::string_view Rest() const { return rest_.Rest(); }

private:
    Line_Cursor rest_;
    std::array<std::string_view, head_lines> lines_{};
    std::size_t count_ = 0;
};

// One intensity a line, up to a line that begins with none or, beyond those that were told, holds more than blanks.
std::vector<float> Intensities(std::string_view text, std::size_t most) {
    std::vector<float> y;
    Reserve_Many(y, std::min(most, text.size() / 2 + 1));
    const char* at = text.data();
    const char* const end = at + text.size();
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\0'; };
    while (y.size() < most) {
        while (at != end && blank(*at)) ++at;
        float value = 0;
        const char* const behind = Parse_Float(at, end, value);
        if (behind == at || (behind != end && !blank(*behind))) break;
        y.push_back(value);
        at = behind;
    }
    return y;
}

std::shared_ptr<const Head_Facts> Old_Facts(const Old_Lines& lines, bool rates) {
    Fact_List facts;
    facts.Add("Sample", lines.Text(3));
    Add_Date(facts, lines.Text(1), lines.Text(2));
    facts.Add("Anode", lines.Text(12));
    facts.Add("Unit", rates ? "counts a second" : "");
    Add_Setting(facts, "Time a step (s)", Seconds_Of(lines.Number(25)));
    Add_Setting(facts, "Mean K-alpha wavelength (A)", lines.Number(18));
    Add_Setting(facts, "Maximum", lines.Number(31));
    return facts.Done();
}

Status Read_Old(std::string_view text, Diffraction_Pattern_Type& p, Read_Notes& notes) {
    const Old_Lines lines(text);
    if (lines.Count() < Old_Lines::head_lines) return Status::Fail("This RAW file ends within its head");
    const double told = std::floor(lines.Number(24));
    if (!(told >= 1)) return Status::Fail("The head of this RAW file tells no number of points");
    const std::vector<float> y = Intensities(lines.Rest(), static_cast<std::size_t>(std::min(told, most_claimed)));
    if (y.empty()) return Status::Fail("This RAW file holds no points");
    const std::string_view records(reinterpret_cast<const char*>(y.data()), y.size() * sizeof(float));
    const std::size_t n = Points_There(p, told, records.size(), sizeof(float));
    const Status status = Set_Points<float>(p, {lines.Number(22), lines.Number(23)}, records, sizeof(float), n);
    if (status.failed) return status;
    p.title = Kept_Text(lines.Text(3), title_width);
    p.conv[0] = Wavelength_Of(lines.Number(19));
    p.conv[1] = Wavelength_Of(lines.Number(20));
    p.count_time = Seconds_Of(lines.Number(25));
    p.per_second = lines.Number(15) == 1;
    p.facts = Old_Facts(lines, p.per_second);
    if (p.per_second && p.count_time > 0)
        for (float& variance : p.sigma) variance /= p.count_time;
    const double most = lines.Number(31);
    if (most > 0 && p.npts_claimed == 0 && std::fabs(most - p.ymax) > 1 + 1e-3 * most)
        notes.warnings.push_back("The largest intensity is not the one that the head tells");
    return status;
}

bool Is_Old(std::string_view text) {
    if (!text.starts_with(old_mark)) return false;
    const std::size_t end = text.find_first_of("\r\n");
    return end != std::string_view::npos && Trim(text.substr(old_mark.size(), std::min(end, std::size_t{80}) - old_mark.size())).empty();
}

}  // namespace

bool Is_Rigaku_Raw(std::string_view head) { return head.starts_with(mark) || Is_Old(head.substr(0, 100)); }

Status Read_Rigaku_Raw(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    patterns.clear();
    if (!Is_Rigaku_Raw(bytes)) return Status::Fail("This is no RAW file of Rigaku");
    Diffraction_Pattern_Type p;
    const Status status = bytes.starts_with(mark) ? Read_Binary(bytes, p) : Read_Old(bytes, p, notes);
    if (status.ok()) patterns.push_back(std::move(p));
    return status;
}

}  // namespace vntl
