// Runs of one detector as one run.
#include <algorithm>
#include <cmath>

#include "instrument/conversion_tools.hpp"

namespace vntl {

namespace {

Status Check_Alike(const Active_Runs& runs) {
    if (Status status = Check_Wavelengths(runs); status.failed) return status;
    for (const Powder_Numor_Type* run : std::span(runs).subspan(1))
        if (!(std::fabs(run->scans[0] - runs.front()->scans[0]) <= 0.1f))
            return Status::Fail("Impossible to add the numors selected. Not all Numors have the same initial Angle!");
    if (Status status = Check_Shapes(runs); status.failed) return status;
    const auto shape = [](const Powder_Numor_Type& run) {
        return Run_Name(run) + ": " + std::to_string(run.counts.frames()) + " x " + std::to_string(run.counts.values());
    };
    const Powder_Numor_Type& first = *runs.front();
    for (const Powder_Numor_Type* run : runs)
        if (run->nbdata != first.nbdata || run->counts.frames() != first.counts.frames() || run->counts.values() != first.counts.values())
            return Status::Fail("Impossible to add the numors selected. Not all Numors have the same number of counts!\n" + shape(first) +
                                "\n" + shape(*run));
    for (const Powder_Numor_Type* run : runs)
        if (std::fabs(run->scans[1] - first.scans[1]) * static_cast<float>(first.counts.values()) > 0.1f)
            return Status::Fail("Impossible to add the numors selected. Not all Numors have the same step!");
    return Status::Done();
}

// `divisor` of each cell; none for no cell.
void Add(const Active_Runs& runs, std::span<const double> divisors, Powder_Numor_Type& sum) {
    Powder_Numor_Type fresh = *runs.front();
    std::vector<double> counts(fresh.counts.All().size(), 0.0);
    double monitor = 0, time = 0;
    for (const Powder_Numor_Type* run : runs) {
        monitor += static_cast<double>(run->monitor);
        time += static_cast<double>(run->time);
        const float* const more = run->counts.All().data();
        double* const total = counts.data();
        for (std::size_t i = 0; i < counts.size(); ++i) total[i] += static_cast<double>(more[i]);
    }
    const std::size_t cells = divisors.size();
    for (std::size_t i = 0; cells > 0 && i < counts.size(); ++i) counts[i] = divisors[i % cells] == 0 ? 0 : counts[i] / divisors[i % cells];
    std::transform(counts.begin(), counts.end(), fresh.counts.All().begin(), [](double count) { return static_cast<float>(count); });
    fresh.monitor = static_cast<float>(monitor);
    fresh.time = static_cast<float>(time);
    sum = std::move(fresh);
}

}  // namespace

Status Add_Numors(std::span<const Powder_Numor_Type> numors, const std::vector<bool>& active, Powder_Numor_Type& sum) {
    Active_Runs runs;
    if (Status status = Find_Active(numors, active, runs); status.failed) return status;
    if (Status status = Check_Alike(runs); status.failed) return status;
    Add(runs, {}, sum);
    return Status::Done();
}

Status Add_Numors_Cal(std::span<const Powder_Numor_Type> numors, const std::vector<bool>& active, Powder_Numor_Type& sum,
                      const Calibration_Detector_Type& cal) {
    Active_Runs runs;
    if (Status status = Find_Active(numors, active, runs); status.failed) return status;
    if (Status status = Check_Alike(runs); status.failed) return status;
    const std::size_t cells = runs.front()->counts.values();
    if (cal.cal_effic.size() != cells) return Other_Size(cal, cells, *runs.front());
    Add(runs, std::vector<double>(cal.cal_effic.begin(), cal.cal_effic.end()), sum);
    return Status::Done();
}

}  // namespace vntl
