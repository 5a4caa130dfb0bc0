#include "patterns/lab/philips_rd.hpp"

#include <array>
#include <cmath>
#include <cstdlib>

#include "base/text_file.hpp"
#include "patterns/lab/byte_view.hpp"
#include "patterns/lab/raw_ranges.hpp"

namespace vntl {

namespace {

constexpr std::size_t head_length = 250, data_3 = 250, data_5 = 810;
constexpr std::array<std::string_view, 5> anodes = {"Cu", "Mo", "Co", "Fe", "Cr"};

// Files with other things than a pattern have marks of the same form.
struct Other_File {
    std::string_view mark, refusal;
};
constexpr Other_File others[] = {{"V3DI", "These are peaks, not a pattern"},
                                 {"V5DI", "These are peaks, not a pattern"},
                                 {"V3BK", "This is the background of a pattern, not a pattern"},
                                 {"V32D", "This is the second derivative of a pattern, not a pattern"}};

// The ends and the step. They stand in the head as reals, and once more in 200ths of a degree.
struct Scan {
    double step = 0, start = 0, stop = 0;

    bool Is_Sound() const {
        return std::isfinite(stop) && step > 0 && stop > start && Scan_Grid{start, step}.Is_Sound((stop - start) / step);
    }
};

Scan Scan_Of(Byte_View& bytes) {
    const Scan reals{bytes.F8(214), bytes.F8(222), bytes.F8(230)};
    if (reals.Is_Sound()) return reals;
    constexpr double parts = 200;
    return {bytes.U2(128) / parts, bytes.U2(130) / parts, bytes.U2(132) / parts};
}

void Take_Head(Byte_View bytes, bool continuous, Diffraction_Pattern_Type& p) {
    p.title = Kept_Text(bytes.Text(146, 20), title_width);
    if (p.title.empty()) p.title = Kept_Text(bytes.Text(138, 8), title_width);
    p.conv[0] = Wavelength_Of(bytes.F8(94));
    p.conv[1] = Wavelength_Of(bytes.F8(102));
    const double ratio = bytes.F8(110);
    p.conv[2] = ratio > 0 && ratio <= 10 ? static_cast<float>(ratio) : 0;
    Fact_List facts;
    facts.Add("Sample", bytes.Text(146, 20));
    facts.Add("File", bytes.Text(138, 8));
    facts.Add("Scan axis", "2Theta");
    facts.Add("Scan mode", continuous ? "continuous" : "step");
    if (bytes.U1(85) < anodes.size()) facts.Add("Anode", anodes[bytes.U1(85)]);
    Add_Setting(facts, "Voltage (kV)", bytes.U2(90));
    Add_Setting(facts, "Current (mA)", bytes.U2(92));
    p.facts = facts.Done();
}

}  // namespace

bool Is_Philips_Rd(std::string_view head) {
    bool marked = head.starts_with("V3RD") || head.starts_with("V5RD");
    for (const Other_File& other : others) marked = marked || head.starts_with(other.mark);
    return marked && head.substr(0, head_length).find('\0') != std::string_view::npos;
}

Status Read_Philips_Rd(std::string_view file, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes&) {
    patterns.clear();
    for (const Other_File& other : others)
        if (file.starts_with(other.mark)) return Status::Fail(other.refusal);
    const bool fifth = file.starts_with("V5RD");
    if (!fifth && !file.starts_with("V3RD")) return Status::Fail("This is no RD file");
    Byte_View bytes(file);
    if (!bytes.Holds(0, head_length)) return Status::Fail("This RD file ends within its head");
    const Scan scan = Scan_Of(bytes);
    if (!scan.Is_Sound()) return Status::Fail("The head of this RD file tells no sound range of angles");
    const bool continuous = bytes.U1(126) != 0;
    const double points = std::round((scan.stop - scan.start) / scan.step) + (continuous ? 0 : 1);
    const std::string_view counts = bytes.From(fifth ? data_5 : data_3);
    Diffraction_Pattern_Type p;
    const std::size_t n = Points_There(p, points, counts.size(), sizeof(Count_By_Root));
    if (n == 0) return Status::Fail("This RD file holds no points");
    Take_Head(bytes, continuous, p);
    // A continuous scan counts over each step, a point stands in its middle.
    const Scan_Grid grid{scan.start + (continuous ? scan.step / 2 : 0), scan.step};
    if (const Status status = Set_Points<Count_By_Root>(p, grid, counts, sizeof(Count_By_Root), n); status.failed) return status;
    patterns.push_back(std::move(p));
    return Status::Done();
}

}  // namespace vntl
