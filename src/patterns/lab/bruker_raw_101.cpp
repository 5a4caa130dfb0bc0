// RAW1.01: a head of 712 bytes, and for each range one of 304, its supplementary records and its points.
#include <array>
#include <bit>
#include <cstring>
#include <string>

#include "base/text_file.hpp"
#include "patterns/lab/bruker_versions.hpp"
#include "patterns/scan_axis.hpp"

namespace vntl {

namespace {

constexpr std::size_t file_head = 712, range_head = 304;
constexpr double not_there = 9999;  // where a drive stands that the instrument has not

// What a range scans: its name, where its head tells the start (0: nowhere), and its bit among the varying drives.
struct Scan_Type {
    std::uint32_t type;
    std::string_view name;
    std::size_t start_at;
    std::uint32_t bit;
};
constexpr std::size_t theta_at = 8, angle_at = 16;
constexpr std::array<Scan_Type, 16> scan_types = {{{0, "Locked Coupled", angle_at, 1},
                                                   {1, "Unlocked Coupled", angle_at, 1},
                                                   {2, "Detector Scan", angle_at, 1},
                                                   {3, "Rocking Curve", theta_at, 2},
                                                   {4, "Chi", 24, 4},
                                                   {5, "Phi", 32, 8},
                                                   {6, "X", 40, 0},
                                                   {7, "Y", 48, 0},
                                                   {8, "Z", 56, 0},
                                                   {9, "Auxiliary 1", 0, 0},
                                                   {10, "Auxiliary 2", 0, 0},
                                                   {11, "Auxiliary 3", 0, 0},
                                                   {12, "Psi", 0, 0},
                                                   {13, "hkl", 0, 0},
                                                   {129, "PSD Fixed", angle_at, 1},
                                                   {130, "PSD Fast", angle_at, 1}}};

const Scan_Type* Scan_Type_Of(std::uint32_t type) {
    for (const Scan_Type& scan : scan_types)
        if (scan.type == type) return &scan;
    return nullptr;
}

std::string_view State_Of(std::uint32_t state) {
    constexpr std::string_view states[] = {"", "done", "active", "aborted", "interrupted"};
    return state < std::size(states) ? states[state] : std::string_view{};
}

struct File_Head {
    std::string title;
    Tube_Lines lines;
    Fact_List facts;
};

File_Head Head_Of(Byte_View bytes) {
    File_Head head;
    head.title = Kept_Text(bytes.Text(326, 60), title_width);
    const double unit = bytes.Text(656, 4).starts_with("nm") ? 10 : 1;
    head.lines = {unit * bytes.F8(616), unit * bytes.F8(624), unit * bytes.F8(632), unit * bytes.F8(640), bytes.F8(648)};
    Fact_List& facts = head.facts;
    facts.Add("Sample", bytes.Text(326, 60));
    facts.Add("Comment", bytes.Text(386, 160));
    Add_Date(facts, bytes.Text(16, 10), bytes.Text(26, 10));
    facts.Add("User", bytes.Text(36, 72));
    facts.Add("Site", bytes.Text(108, 218));
    facts.Add("Measurement", State_Of(bytes.U4(8)));
    facts.Add("Anode", bytes.Text(608, 4));
    Add_Setting(facts, "Mean K-alpha wavelength (A)", head.lines.mean);
    Add_Setting(facts, "Goniometer radius (mm)", bytes.F4(564));
    Add_Setting(facts, "Run time (s)", bytes.F4(664));
    return head;
}

void Add_Place(Fact_List& facts, std::string_view name, double place) {
    if (place != not_there) Add_Told(facts, name, place);
}

void Add_Range_Facts(Byte_View range, const Scan_Type* scan, Fact_List& facts) {
    if (scan != nullptr)
        facts.Add("Scan axis", scan->name);
    else
        facts.Add("Scan type", static_cast<double>(range.U4(196)));
    facts.Add("Scan mode", range.I4(168) == 0 ? "step" : range.I4(168) == 1 ? "continuous" : "");
    Add_Setting(facts, "Time a step (s)", Seconds_Of(range.F4(192)));
    Add_Setting(facts, "Temperature (K)", Is_Temperature(range.F4(212)) ? range.F4(212) : 0);
    Add_Setting(facts, "Voltage (kV)", range.U4(224));
    Add_Setting(facts, "Current (mA)", range.U4(228));
    Add_Setting(facts, "Wavelength used (A)", range.F8(240));
    Add_Setting(facts, "Rotation", range.F4(208));
    Add_Place(facts, "Theta (degrees)", range.F8(theta_at));
    Add_Place(facts, "2Theta (degrees)", range.F8(angle_at));
    constexpr std::string_view drives[] = {"Chi (degrees)", "Phi (degrees)", "X (mm)", "Y (mm)", "Z (mm)"};
    for (std::size_t i = 0; i < std::size(drives); ++i) Add_Place(facts, drives[i], range.F8(24 + 8 * i));
}

// Bytes of a point: the count, and a value of each drive that varied. The head tells both the length and the drives; where they differ,
// that behind which the file ends or another range begins is taken.
std::size_t Record_Length(Byte_View range, std::size_t behind_head, double points) {
    const std::size_t told = range.U4(252), by_drives = 4 + 8 * static_cast<std::size_t>(std::popcount(range.U4(248)));
    constexpr std::size_t longest = 4 + 8 * 32;
    if (told < 4 || told > longest) return by_drives;
    if (told == by_drives) return told;
    const auto room = static_cast<double>(range.Size() - behind_head);
    const auto ends_well = [&](std::size_t length) {
        const double size = points * static_cast<double>(length);
        if (size >= room) return size == room;
        const std::size_t next = behind_head + static_cast<std::size_t>(size);
        return range.Holds(next, range_head) && range.U4(next) >= range_head && range.U4(next) < 2 * range_head;
    };
    return !ends_well(told) && ends_well(by_drives) ? by_drives : told;
}

// Where the drive that was scanned varied by itself, each point has its own place behind its count. They are taken where they rise from the
// told start, which they must.
void Take_Places(Diffraction_Pattern_Type& p, std::string_view records, std::size_t stride, std::size_t value, Scan_Grid grid) {
    if (grid.step < 0 || stride < value + sizeof(double)) return;
    std::vector<float> x(p.x.size());
    double last = grid.start - 2 * grid.step;
    for (std::size_t i = 0; i < x.size(); ++i) {
        double place = 0;
        std::memcpy(&place, records.data() + i * stride + value, sizeof place);
        const bool near = i > 0 || place < grid.start + 2 * grid.step;
        if (!(place > last) || !near || !(std::fabs(place) < 1e5)) return;
        x[i] = static_cast<float>(place);
        last = place;
    }
    p.x = std::move(x);
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    p.constant_step = false;
    if (p.npts > 1) p.step = (p.xmax - p.xmin) / static_cast<float>(p.npts - 1);
}

class Reader_101 {
public:
    Reader_101(std::string_view file, Read_Notes& notes) : bytes_(file), notes_(notes), head_(Head_Of(bytes_)) {}

    bool At_End() const { return at_ >= bytes_.Size(); }

    Status Next(std::size_t number, Diffraction_Pattern_Type& p) {
        Byte_View range(bytes_.From(at_));
        const std::size_t length = range.U4(0), supplement = range.U4(256);
        const bool there = range.Holds(0, range_head) && length >= range_head && range.Holds(length, supplement);
        if (!there) return End();
        const std::size_t behind = length + supplement;
        const double told = range.U4(4);
        const std::size_t stride = Record_Length(range, behind, told);
        const std::string_view records = range.From(behind);
        const std::size_t n = Points_There(p, told, records.size(), stride);
        at_ += behind + n * stride;
        if (n == 0) return Status::Fail(told == 0 ? no_range_points : range_head_ends);
        return Fill(range, number, records, stride, n, p);
    }

private:
    Status End() {
        at_ = bytes_.Size();
        return Status::Fail(range_head_ends);
    }

    Status Fill(Byte_View range, std::size_t number, std::string_view records, std::size_t stride, std::size_t n,
                Diffraction_Pattern_Type& p) {
        const Scan_Type* const scan = Scan_Type_Of(range.U4(196));
        p.title = head_.title;
        head_.lines.Give(p, range.F8(240));
        p.count_time = Seconds_Of(range.F4(192));
        if (Is_Temperature(range.F4(212))) p.TSample = range.F4(212);
        Fact_List facts = head_.facts;
        Add_Range_Facts(range, scan, facts);
        p.facts = facts.Done();
        if (scan == nullptr)
            notes_.warnings.push_back("Range " + std::to_string(number) + ": its scan is of an unknown type, x is taken for 2theta");
        const Scan_Grid grid{Start_Of(range, scan, number), range.F8(176)};
        const Status status = Set_Points<float>(p, grid, records, stride, n);
        if (status.failed || scan == nullptr) return status;
        Set_Scan_Axis(p, scan->name);
        if (!Is_Scattering_Angle(scan->name) && scan->start_at == 0 && scan->name != "Psi") p.legend_x = scan->name;
        const std::uint32_t varying = range.U4(248);
        const auto before = static_cast<std::size_t>(std::popcount(varying & (scan->bit - 1)));
        if (scan->bit != 0 && (varying & scan->bit) != 0) Take_Places(p, records, stride, sizeof(float) + 8 * before, grid);
        return status;
    }

    double Start_Of(Byte_View range, const Scan_Type* scan, std::size_t number) {
        const double start = scan == nullptr ? range.F8(angle_at) : scan->start_at == 0 ? not_there : range.F8(scan->start_at);
        if (start != not_there) return start;
        notes_.warnings.push_back("Range " + std::to_string(number) + ": the start of its axis is not told, x counts from 0");
        return 0;
    }

    Byte_View bytes_;
    Read_Notes& notes_;
    File_Head head_;
    std::size_t at_ = file_head;
};

}  // namespace

Status Read_Raw_101(std::string_view file, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    if (file.size() < file_head) return Status::Fail(raw_ends);
    const std::size_t told = Byte_View(file).U4(12);
    Reader_101 reader(file, notes);
    Range_List ranges;
    while ((ranges.Next() <= told && !ranges.Full() && !reader.At_End()) || ranges.Next() == 1) {
        Diffraction_Pattern_Type p;
        const Status status = reader.Next(ranges.Next(), p);
        ranges.Take(status, std::move(p));
    }
    ranges.End(told);
    return ranges.Done(patterns, notes);
}

}  // namespace vntl
