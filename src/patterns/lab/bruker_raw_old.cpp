// RAW versions 1 and 2, of the years when a head had to fit into a few hundred bytes.
#include <string>

#include "base/text_file.hpp"
#include "patterns/lab/bruker_versions.hpp"

namespace vntl {

namespace {

constexpr std::size_t head_1 = 156, head_2 = 256;
constexpr std::size_t mark = 4;  // bytes of "RAW "

// A range of version 1, the places of which count from `at`.
Status Read_Block(Byte_View bytes, std::size_t at, Diffraction_Pattern_Type& p) {
    p.title = Kept_Text(bytes.Text(at + 40, 32), title_width);
    p.count_time = Seconds_Of(bytes.F4(at + 8));
    Tube_Lines{0, bytes.F4(at + 72), bytes.F4(at + 76), 0, 0}.Give(p, 0);
    Fact_List facts;
    facts.Add("Sample", bytes.Text(at + 40, 32));
    Add_Setting(facts, "Time a step (s)", p.count_time);
    Add_Told(facts, "Theta (degrees)", bytes.F4(at + 28));
    Add_Told(facts, "Chi (degrees)", bytes.F4(at + 32));
    Add_Told(facts, "Phi (degrees)", bytes.F4(at + 36));
    p.facts = facts.Done();
    const std::string_view counts = bytes.From(at + head_1);
    const std::size_t n = Points_There(p, bytes.U4(at + 4), counts.size(), sizeof(float));
    if (n == 0) return Status::Fail(bytes.U4(at + 4) == 0 ? no_range_points : range_head_ends);
    return Set_Points<float>(p, {bytes.F4(at + 24), bytes.F4(at + 12)}, counts, sizeof(float), n);
}

constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

// Where the block behind the points of another one begins. Some programs leave its "RAW " out.
std::size_t Next_Block(Byte_View bytes, std::size_t end, bool told) {
    if (bytes.From(end).starts_with("RAW ")) return end;
    if (!told) return nowhere;
    for (const std::size_t at : {end - mark, end})
        if (bytes.Holds(at, head_1) && Is_Raw_1_Block(bytes, at)) return at;
    return nowhere;
}

struct Old_Head {
    std::string title;
    Tube_Lines lines;
    Fact_List facts;
};

Old_Head Head_Of_Raw_2(Byte_View& bytes) {
    Old_Head head;
    head.title = Kept_Text(bytes.Text(8, 32), title_width);
    head.lines = {0, bytes.F4(190), bytes.F4(194), bytes.F4(206), bytes.F4(198)};
    head.facts.Add("Sample", bytes.Text(8, 32));
    head.facts.Add("Comment", bytes.Text(40, 128));
    Add_Date(head.facts, bytes.Text(168, 10), bytes.Text(178, 10));
    head.facts.Add("Anode", bytes.Text(188, 2));
    Add_Setting(head.facts, "Run time (s)", bytes.F4(210));
    return head;
}

// The range of version 2 at this place, which moves to the next one.
Status Read_Range(Byte_View bytes, const Old_Head& head, std::size_t& at, Diffraction_Pattern_Type& p) {
    const std::size_t length = bytes.U2(at), told = bytes.U2(at + 2);
    const float time = bytes.F4(at + 8), step = bytes.F4(at + 12), start = bytes.F4(at + 16), theta = bytes.F4(at + 20);
    constexpr std::size_t least_length = 24, temperature_at = 46, unknown = 65535;
    const bool tells = length >= temperature_at + 2;
    const unsigned kelvin = tells ? bytes.U2(at + temperature_at) : unknown;
    const std::size_t data = at + length;
    if (!bytes.Whole() || length < least_length || data > bytes.Size()) {
        at = bytes.Size();
        return Status::Fail(range_head_ends);
    }
    p.title = head.title;
    head.lines.Give(p, 0);
    p.count_time = Seconds_Of(time);
    if (kelvin != unknown && Is_Temperature(kelvin)) p.TSample = static_cast<float>(kelvin);
    Fact_List facts = head.facts;
    Add_Setting(facts, "Time a step (s)", p.count_time);
    Add_Told(facts, "Theta (degrees)", theta);
    Add_Setting(facts, "Temperature (K)", p.TSample);
    p.facts = facts.Done();
    const std::string_view counts = bytes.From(data);
    const std::size_t n = Points_There(p, static_cast<double>(told), counts.size(), sizeof(float));
    at = data + n * sizeof(float);
    if (n == 0) return Status::Fail(told == 0 ? no_range_points : range_head_ends);
    return Set_Points<float>(p, {start, step}, counts, sizeof(float), n);
}

}  // namespace

bool Is_Raw_1_Block(Byte_View bytes, std::size_t at) {
    constexpr std::uint32_t most = 1 << 24;
    constexpr double longest_time = 1e7;
    const std::uint32_t n = bytes.U4(at + 4);
    if (!bytes.Whole() || n < 1 || n > most) return false;
    const float time = bytes.F4(at + 8), step = bytes.F4(at + 12), start = bytes.F4(at + 24);
    if (!bytes.Whole()) return true;  // a file cut within its head
    return Scan_Grid{start, step}.Is_Sound(n) && time >= 0 && time < longest_time;
}

Status Read_Raw_1(std::string_view file, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    Byte_View bytes(file);
    Range_List ranges;
    for (std::size_t at = 0; !ranges.Full();) {
        if (!bytes.Holds(at, head_1)) {
            ranges.Miss(at == 0 ? raw_ends : range_head_ends);
            break;
        }
        Diffraction_Pattern_Type p;
        const bool more = bytes.U4(at + 152) != 0;
        const Status status = Read_Block(bytes, at, p);
        const std::size_t end = at + head_1 + static_cast<std::size_t>(p.npts) * sizeof(float);
        ranges.Take(status, std::move(p));
        if (status.failed) break;
        // Another range is told of by the head, by its own "RAW ", or by both. Some programs leave the four letters out.
        const std::size_t next = Next_Block(bytes, end, more);
        if (next == nowhere && more) ranges.Miss(range_head_ends);
        if (next == nowhere) break;
        at = next;
    }
    return ranges.Done(patterns, notes);
}

Status Read_Raw_2(std::string_view file, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes) {
    Byte_View bytes(file);
    if (!bytes.Holds(0, head_2)) return Status::Fail(raw_ends);
    const Old_Head head = Head_Of_Raw_2(bytes);
    const std::size_t told = bytes.U2(4);
    Range_List ranges;
    std::size_t at = head_2;
    while (ranges.Next() <= told && !ranges.Full() && (at < bytes.Size() || ranges.Next() == 1)) {
        Diffraction_Pattern_Type p;
        const Status status = Read_Range(bytes, head, at, p);
        ranges.Take(status, std::move(p));
    }
    ranges.End(told);
    return ranges.Done(patterns, notes);
}

}  // namespace vntl
