#include "patterns/lab/stoe_raw.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "base/text_file.hpp"
#include "patterns/lab/byte_view.hpp"
#include "patterns/lab/raw_ranges.hpp"
#include "patterns/scan_axis.hpp"

namespace vntl {

namespace {

constexpr std::size_t record = 512;
constexpr std::size_t most_listed = 8;  // ranges that the head has places for

template <std::size_t n>
std::string_view Word_Of(const std::array<std::string_view, n>& words, int code) {
    return code >= 0 && code < static_cast<int>(n) ? words[static_cast<std::size_t>(code)] : std::string_view{};
}
constexpr std::array<std::string_view, 7> anodes = {"", "Ag", "Mo", "Cu", "Co", "Fe", "Cr"};
constexpr std::array<std::string_view, 4> modes = {"", "transmission", "reflection", "Debye-Scherrer"};

struct Stoe_Head {
    std::string title;
    float alpha1 = 0, alpha2 = 0;
    int planned = 0, done = 0;
    std::array<std::size_t, most_listed> heads{};  // where those of the ranges stand
    Fact_List facts;
};

Stoe_Head Head_Of(Byte_View bytes) {
    Stoe_Head head;
    head.title = Kept_Text(bytes.Text(32, 80), title_width);
    head.alpha1 = Wavelength_Of(bytes.F4(322));
    head.alpha2 = Wavelength_Of(bytes.F4(326));
    head.planned = bytes.I2(376);
    head.done = bytes.I2(378);
    for (std::size_t i = 0; i < most_listed; ++i) {
        const int number = bytes.I2(480 + 2 * i);  // of records, from 1; the first one is this head
        head.heads[i] = number > 1 ? record * static_cast<std::size_t>(number - 1) : 0;
    }
    Fact_List& facts = head.facts;
    facts.Add("Title", bytes.Text(32, 80));
    facts.Add("Comment", bytes.Text(112, 192));
    Add_Date(facts, bytes.Text(16, 16), {});
    facts.Add("Anode", Word_Of(anodes, bytes.I2(310)));
    Add_Setting(facts, "Voltage (kV)", bytes.I2(318));
    Add_Setting(facts, "Current (mA)", bytes.I2(320));
    facts.Add("Geometry", Word_Of(modes, bytes.I2(358)));
    return head;
}

// The axis that moves: 2theta, or omega where that stands still. The step is told, or follows from both ends.
Scan_Grid Grid_Of(Byte_View range, std::size_t points, bool& omega) {
    const auto of = [&](std::size_t begin, std::size_t end, std::size_t step) {
        Scan_Grid grid{range.F4(begin), range.F4(step)};
        if (grid.step == 0 && points > 1) grid.step = (static_cast<double>(range.F4(end)) - grid.start) / static_cast<double>(points - 1);
        return grid;
    };
    const Scan_Grid angle = of(44, 52, 60), table = of(48, 56, 64);
    omega = !(std::fabs(angle.step) > 1e-6) && std::fabs(table.step) > 1e-6;
    return omega ? table : angle;
}

void Add_Range_Facts(Byte_View range, bool omega, Fact_List& facts) {
    facts.Add("Scan axis", omega ? "Omega" : "2Theta");
    facts.Add("Started", range.Text(0, 16));
    facts.Add("Ended", range.Text(16, 16));
    Add_Setting(facts, "Time a step (s)", Seconds_Of(range.F4(68)));
    Add_Setting(facts, "Mean temperature", range.F4(84));
    if (range.F4(40) > 1) Add_Told(facts, "Count factor", range.F4(40));
    if (omega) Add_Told(facts, "2Theta (degrees)", range.F4(44));
}

// The head holds the least and the largest count: what shows that the points are taken as they were written.
bool Agrees(Byte_View range, const Diffraction_Pattern_Type& p, float divisor) {
    const auto least = static_cast<float>(range.I4(120)), most = static_cast<float>(range.I4(124));
    if ((least == 0 && most == 0) || p.npts_claimed > 0) return true;
    const auto near = [&](float factor) {
        return std::fabs(p.ymin * factor - least) <= 1 + 1e-5f * std::fabs(least) &&
               std::fabs(p.ymax * factor - most) <= 1 + 1e-5f * std::fabs(most);
    };
    return near(1) || near(divisor);
}

Status Read_Range(Byte_View bytes, const Stoe_Head& head, std::size_t number, Diffraction_Pattern_Type& p, Read_Notes& notes) {
    const std::size_t at = head.heads[number - 1];
    if (at == 0) return Status::Fail("The head does not tell where it stands");
    if (!bytes.Holds(at, record)) return Status::Fail("The file ends before it");
    Byte_View range(bytes.From(at));
    const int told = range.I2(34), kind = range.I2(38);
    if (told < 1) return Status::Fail("There are no points in it");
    const std::string_view counts = range.From(record);
    const std::size_t stride = kind == 1 ? 2 : 4;
    const std::size_t n = Points_There(p, told, counts.size(), stride);
    if (n == 0) return Status::Fail("The file ends before its points");
    bool omega = false;
    const Scan_Grid grid = Grid_Of(range, static_cast<std::size_t>(told), omega);
    const float factor = range.F4(40), divisor = factor > 1 && Is_Told(factor) ? factor : 1;
    const Status status =
        kind == 1 ? Set_Points<std::int16_t>(p, grid, counts, 2, n, divisor) : Set_Points<std::int32_t>(p, grid, counts, 4, n, divisor);
    if (status.failed) return status;
    p.title = head.title;
    p.conv[0] = head.alpha1;
    p.conv[1] = head.alpha2;
    p.count_time = Seconds_Of(range.F4(68));
    Fact_List facts = head.facts;
    Add_Range_Facts(range, omega, facts);
    p.facts = facts.Done();
    if (omega) Set_Scan_Axis(p, "Omega");
    if (!Agrees(range, p, divisor) || kind < 0 || kind > 1)
        notes.warnings.push_back("Range " + std::to_string(number) + ": its counts do not agree with the least and largest of its head");
    return status;
}

bool Has_Mark(std::string_view head) { return head.starts_with("RAW_1.0") && head.size() > 7 && head[7] >= '0' && head[7] <= '9'; }

}  // namespace

bool Is_Stoe_Raw(std::string_view head) { return Has_Mark(head) && head.substr(0, record).find('\0') != std::string_view::npos; }

Status Read_Stoe_Raw(std::string_view file, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    patterns.clear();
    if (!Has_Mark(file)) return Status::Fail("This is no RAW file of STOE");
    if (file.size() < record) return Status::Fail("This RAW file ends within its head");
    const Byte_View bytes(file);
    const Stoe_Head head = Head_Of(bytes);
    const auto listed = static_cast<int>(most_listed - static_cast<std::size_t>(std::count(head.heads.begin(), head.heads.end(), 0)));
    const int there = head.done > 0 ? std::min(head.done, static_cast<int>(most_listed)) : std::max(listed, 1);
    Range_List ranges;
    for (int i = 1; i <= there; ++i) {
        Diffraction_Pattern_Type p;
        const Status status = Read_Range(bytes, head, static_cast<std::size_t>(i), p, notes);
        ranges.Take(status, std::move(p));
    }
    const Status status = ranges.Done(patterns, notes);
    if (status.ok() && head.planned > there && head.planned <= 1000)
        notes.warnings.push_back("Of " + std::to_string(head.planned) + " ranges that were planned, the file holds " +
                                 std::to_string(there));
    return status;
}

}  // namespace vntl
