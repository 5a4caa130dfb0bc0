#include "patterns/lab/ras_head.hpp"

#include <algorithm>

#include "base/text.hpp"
#include "base/text_file.hpp"
#include "patterns/head_facts.hpp"
#include "patterns/lab/lab_text.hpp"
#include "patterns/reader_tools.hpp"
#include "patterns/told_values.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_lines = 800;  // of each of the two lists
constexpr int most_axes = 64;
constexpr std::string_view axis_lines = "MEAS_COND_AXIS_";

// Of the display of another program, and numbers that only it knows.
bool Is_Idle(std::string_view key) {
    return key.starts_with("DISP_") || key.starts_with("RAS_") || key.starts_with("FILE_MD5") || Contains(key, "_ID-") ||
           (key.starts_with("HW_") && key.ends_with("_ID"));
}

// What people typed is one text, whatever stands in it.
bool Is_Typed(std::string_view key) { return key.starts_with("FILE_"); }

struct Named_Fact {
    std::string_view key, name;
};
constexpr Named_Fact named[] = {
    {"FILE_SAMPLE", "Sample"},
    {"FILE_COMMENT", "Comment"},
    {"FILE_OPERATOR", "User"},
    {"MEAS_SCAN_AXIS_X", "Scan axis"},
    {"MEAS_SCAN_START_TIME", "Date"},
    {"HW_XG_TARGET_NAME", "Anode"},
    {"MEAS_COND_XG_VOLTAGE", "Voltage (kV)"},
    {"MEAS_COND_XG_CURRENT", "Current (mA)"},
};

std::string_view Fact_Name(std::string_view key) {
    const auto* const found = std::find_if(std::begin(named), std::end(named), [key](const Named_Fact& fact) { return fact.key == key; });
    return found != std::end(named) ? found->name : key;
}

}  // namespace

void Ras_Head::Take(std::string_view line) {
    if (!line.starts_with('*')) return;
    const std::size_t blank = line.find_first_of(" \t");
    if (blank == std::string_view::npos || line.starts_with("*DISP_")) return;
    std::string_view value = Trim(line.substr(blank));
    if (value.starts_with('"')) value.remove_prefix(1);
    if (value.ends_with('"')) value.remove_suffix(1);
    Lines& lines = line.substr(1).starts_with(axis_lines) ? axes_ : lines_;
    if (lines.size() < most_lines) lines.emplace_back(line.substr(1, blank - 1), Trim(value));
}

std::string_view Ras_Head::Value(std::string_view key) const {
    for (const auto& [name, value] : key.starts_with(axis_lines) ? axes_ : lines_)
        if (name == key) return value;
    return {};
}

double Ras_Head::Number(std::string_view key) const {
    double number = 0;
    return Told_Real(Value(key), number) ? number : 0;
}

std::string Ras_Head::Words(std::string_view key) const {
    return Without_Idle_Zeros(Is_Typed(key) ? Readable(Value(key)) : English_Part(Value(key)));
}

void Ras_Head::Take_Waves(Pattern_Head& head) const {
    const auto alpha1 = static_cast<float>(Number("HW_XG_WAVE_LENGTH_ALPHA1")),
               alpha2 = static_cast<float>(Number("HW_XG_WAVE_LENGTH_ALPHA2"));
    const auto beta = static_cast<float>(Number("HW_XG_WAVE_LENGTH_BETA"));
    const std::string type = Lower(Value("MEAS_COND_XG_WAVE_TYPE"));
    head.conv = {alpha1, alpha2, 0, beta, 0};
    if (type == "ka1") head.conv[1] = 0;
    if (type == "ka2") head.conv = {alpha2, 0, 0, beta, 0};
    if (type == "kb") head.conv = {beta, 0, 0, beta, 0};
}

void Ras_Head::Take_Facts(Pattern_Head& head) const {
    Fact_List facts;
    if (head.count_time > 0) facts.Add("Time a step (s)", head.count_time);
    for (const Named_Fact& fact : named) facts.Add(fact.name, Words(fact.key));
    for (const auto& [key, value] : lines_)
        if (!Is_Idle(key) && Fact_Name(key) == key) facts.Add(key, Words(key));
    for (int i = 0; i < most_axes; ++i) {
        const std::string axis(axis_lines), number = '-' + std::to_string(i);
        const std::string name = Words(axis + "NAME" + number);
        if (name.empty()) continue;
        const std::string position = Words(axis + "POSITION" + number);
        if (!position.empty()) facts.Add("Position of " + name, position + ' ' + Words(axis + "UNIT" + number));
    }
    head.facts = facts.Done();
}

Pattern_Head Ras_Head::Told() const {
    Pattern_Head head;
    for (const char* key : {"FILE_SAMPLE", "FILE_MEMO", "FILE_COMMENT", "FILE_PART_ID"})
        if (head.title.empty()) head.title = Kept_Text(Trim(Readable(Value(key))), title_width);
    head.radiation = "xrays_cw";
    Take_Waves(head);
    const double step = Number("MEAS_SCAN_STEP"), points = Number("MEAS_DATA_COUNT");
    head.step = static_cast<float>(step);
    head.count_time = Time_A_Step(Number("MEAS_SCAN_SPEED"), Value("MEAS_SCAN_SPEED_UNIT"), step);
    if (points >= 1 && points <= most_claimed) head.npts_claimed = static_cast<std::int32_t>(points);
    head.per_second = Equal_No_Case(Value("MEAS_SCAN_UNIT_Y"), "cps");
    Take_Facts(head);
    return head;
}

std::string Ras_Head::Axis() const {
    const std::string axis = Words("MEAS_SCAN_AXIS_X_INTERNAL");
    return axis.empty() ? Words("MEAS_SCAN_AXIS_X") : axis;
}

}  // namespace vntl
