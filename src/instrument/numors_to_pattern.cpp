#include "instrument/numors_to_pattern.hpp"

#include <algorithm>
#include <cmath>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"
#include "instrument/bank_r8.hpp"
#include "instrument/bank_scan.hpp"
#include "instrument/conversion_tools.hpp"
#include "patterns/sound_points.hpp"

namespace vntl {

namespace {

// --- one detector, or many that stand still: R3B and R22 ---------------------------------------------------------------------------

// Where the points of the sum stand, and from which cell each comes.
struct Point_List {
    std::vector<double> x;
    std::vector<std::size_t> cell;
};

void Even_Points(const Powder_Numor_Type& sum, std::size_t cells, const Calibration_Detector_Type* cal, Point_List& points) {
    const double start = Told_Decimal(sum.scans[0]), step = Told_Decimal(sum.scans[1]);
    for (std::size_t i = 0; i < cells; ++i) {
        if (cal != nullptr && !cal->cal_active[i]) continue;
        points.x.push_back(start + static_cast<double>(i) * step);
        points.cell.push_back(i);
    }
}

Status Calibrated_Points(const Powder_Numor_Type& sum, const Calibration_Detector_Type& cal, Point_List& points) {
    const std::size_t cells = cal.cal_effic.size();
    if (cal.cal_pos.size() != cells || cal.cal_index.size() != cells)
        return Status::Fail("The calibration does not tell the position of each cell");
    const double start = Told_Decimal(sum.scans[0]);
    for (const int index : cal.cal_index) {
        const auto k = static_cast<std::size_t>(index);
        if (index < 0 || k >= cells) return Status::Fail("The calibration does not tell the order of its cells");
        if (!cal.cal_active[k]) continue;
        points.x.push_back(start + Told_Decimal(cal.cal_pos[k]));
        points.cell.push_back(k);
    }
    return Status::Done();
}

// By what the counts are multiplied: to a monitor, or to a time in seconds where `vnorm` is negative.
Status Find_Factor(const Powder_Numor_Type& sum, const Numor_Conversion& how, double& factor, Diffraction_Pattern_Type& p) {
    p.norm_monitor = sum.monitor;
    if (!how.vnorm || *how.vnorm == 0) return Status::Done();
    const bool by_time = *how.vnorm < 0;
    const float by = by_time ? sum.time : sum.monitor;
    const std::optional<double> found = Monitor_Factor(std::fabs(static_cast<double>(*how.vnorm)), static_cast<double>(by));
    if (!found)
        return Status::Fail(std::string(by_time ? "The time" : "The monitor") + " of " + Run_Name(sum) + " is " + IRealToString(by) +
                            ": its counts cannot be normalised to " + IRealToString(std::fabs(*how.vnorm)) + (by_time ? " seconds" : ""));
    factor = *found;
    p.norm_monitor = by_time ? static_cast<float>(static_cast<double>(sum.monitor) * factor) : *how.vnorm;
    return Status::Done();
}

Status Fill_Points(const Powder_Numor_Type& sum, const Point_List& points, const Calibration_Detector_Type* cal, double factor,
                   Diffraction_Pattern_Type& p) {
    const std::size_t n = points.x.size();
    if (Status status = Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(n)); status.failed) return status;
    const auto counts = sum.counts.Frame(0);
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t cell = points.cell[i];
        const double count = static_cast<double>(counts[cell]);
        const double scale = cal != nullptr ? factor / static_cast<double>(cal->cal_effic[cell]) : factor;
        p.x[i] = static_cast<float>(points.x[i]);
        p.y[i] = static_cast<float>(count * scale);
        p.sigma[i] = static_cast<float>(std::fabs(count) * scale * scale);
        p.nd[i] = 1;
    }
    return Status::Done();
}

// Rising x, whichever way the detector moved; cells at one place are one point.
void Finish_Points(const Point_List& points, std::size_t cells, bool even, double step, Diffraction_Pattern_Type& p) {
    if (p.x.size() > 1 && p.x.front() > p.x.back()) Turn_Round(p);
    p.constant_step = even && points.x.size() == cells;
    if (!even && std::adjacent_find(p.x.begin(), p.x.end(), [](float a, float b) { return !(a < b); }) != p.x.end()) Sort_By_X(p);
    p.xmin = p.x.front(), p.xmax = p.x.back();
    p.step = static_cast<float>(even ? std::fabs(step) : p.npts > 1 ? static_cast<double>(p.xmax - p.xmin) / (p.npts - 1) : 0.0);
    Set_Y_Limits(p);
}

Status Convert_Sum(const Powder_Numor_Type& sum, bool r22, const Numor_Conversion& how, Diffraction_Pattern_Type& p) {
    const std::size_t cells = sum.counts.frames() > 0 ? sum.counts.values() : 0;
    const bool even = how.cal == nullptr || !r22;
    const double start = Told_Decimal(sum.scans[0]), step = Told_Decimal(sum.scans[1]);
    Fill_Head(sum, p);
    p.monitor = sum.monitor, p.count_time = sum.time;
    double factor = 1;
    if (Status status = Find_Factor(sum, how, factor, p); status.failed) return status;
    if (how.cal != nullptr) {
        if (Status status = Check_Calibration(*how.cal, r22 ? "R22" : how.cal->cal_instrument); status.failed) return status;
        if (how.cal->cal_effic.size() != cells) return Other_Size(*how.cal, cells, sum);
    }
    if (cells > most_converted_points)
        return Status::Fail(Run_Name(sum) + " has " + std::to_string(cells) + " points, which is more than " +
                            std::to_string(most_converted_points));
    if (cells == 0 || (even && step == 0)) {
        p.step = static_cast<float>(std::fabs(step));
        Leave_Without_Points(start, start + std::fabs(step), p);
        return Status::Done();
    }
    if (!std::isfinite(start) || (even && !std::isfinite(step)))
        return Status::Fail("The start or the step of " + Run_Name(sum) + " is no number");
    Point_List points;
    if (even)
        Even_Points(sum, cells, how.cal, points);
    else if (Status status = Calibrated_Points(sum, *how.cal, points); status.failed)
        return status;
    if (Status status = Fill_Points(sum, points, how.cal, factor, p); status.failed) return status;
    Finish_Points(points, cells, even, step, p);
    return Status::Done();
}

// --- the branches ------------------------------------------------------------------------------------------------------------------

// The first of these that the name holds, in this order; blank for none.
std::string_view Kind_Of(const Powder_Numor_Type& run) {
    const std::string name = Upper(run.instrm);
    for (const std::string_view kind : {"R3B", "R22", "R3A", "R5B", "R8"})
        if (Contains(name, kind)) return kind;
    return {};
}

// Counts of different diffractometers have no mean, nor have cells whose angles belong to different wavelengths.
Status Check_Mean(const Active_Runs& runs, std::string_view kind) {
    for (const Powder_Numor_Type* run : runs)
        if (Kind_Of(*run) != kind)
            return Status::Fail("Impossible to add the numors selected: " + Run_Name(*runs.front()) + " is of " + std::string(kind) +
                                ", and " + Run_Name(*run) + " of " + std::string(Trim(run->instrm)));
    if (Status status = Check_Wavelengths(runs); status.failed) return status;
    return Check_Shapes(runs);
}

Status Check_Options(const Numor_Conversion& how, std::string_view kind) {
    const bool one_dimensional = kind == "R3B" || kind == "R22";
    if (how.bank != 0 && kind != "R8") return Status::Fail("A bank can be chosen of R8 alone, and the runs are of " + std::string(kind));
    if (how.bank < 0 || how.bank > static_cast<int>(r8_banks))
        return Status::Fail("Bank " + std::to_string(how.bank) + " does not exist: R8 has the banks 1 to 9");
    if (!how.vnorm) return Status::Done();
    if (!std::isfinite(*how.vnorm)) return Status::Fail("The monitor to which counts are normalised is no number");
    if (*how.vnorm < 0 && !one_dimensional)
        return Status::Fail("The counts of " + std::string(kind) + " are normalised to a monitor, which is above 0");
    return Status::Done();
}

std::string Seven_Columns(int number) {
    const std::string text = std::to_string(number);
    return text.size() < 7 ? std::string(7 - text.size(), ' ') + text : text;
}

void Name_Runs(const Active_Runs& runs, Diffraction_Pattern_Type& p) {
    p.title = Kept_Text(p.title + "  Numors added from " + Seven_Columns(runs.front()->numor) + " to " + Seven_Columns(runs.back()->numor),
                        title_width);
}

}  // namespace

Status PowderNumors_To_DiffPattern(std::span<const Powder_Numor_Type> numors, const std::vector<bool>& active,
                                   Diffraction_Pattern_Type& pattern, const Numor_Conversion& how, std::vector<std::string>& warnings) {
    Active_Runs runs;
    if (Status status = Find_Active(numors, active, runs); status.failed) return status;
    if (Trim(runs.front()->instrm).empty()) return Status::Fail(" The Instrument name for the first active numor was empty!");
    const std::string_view kind = Kind_Of(*runs.front());
    if (kind.empty()) return Status::Done();
    if (Status status = Check_Mean(runs, kind); status.failed) return status;
    if (Status status = Check_Options(how, kind); status.failed) return status;

    Diffraction_Pattern_Type fresh;
    Status status;
    if (kind == "R3B" || kind == "R22") {
        Powder_Numor_Type sum;
        status = Add_Numors(numors, active, sum);
        if (status.ok()) status = Convert_Sum(sum, kind == "R22", how, fresh);
    } else if (kind == "R8") {
        status = Convert_R8(runs, how, fresh);
    } else {
        status = Convert_Bank_Scan(runs, kind, how, fresh, warnings);
    }
    if (status.failed) return status;
    Name_Runs(runs, fresh);
    pattern = std::move(fresh);
    return Status::Done();
}

}  // namespace vntl
