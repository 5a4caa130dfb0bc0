#include "instrument/conversion_tools.hpp"

#include <algorithm>
#include <cmath>
#ifdef _OPENMP
#include <omp.h>
#endif

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

constexpr double grid_play = 1e-6;  // of a step

std::string Shape(const Powder_Numor_Type& numor) {
    return Run_Name(numor) + " has " + std::to_string(numor.counts.frames()) + " frames of " + std::to_string(numor.counts.values()) +
           " counts";
}

}  // namespace

std::string Run_Name(const Powder_Numor_Type& numor) { return "Numor " + std::to_string(numor.numor); }

Status Find_Active(std::span<const Powder_Numor_Type> numors, const std::vector<bool>& active, Active_Runs& runs) {
    if (numors.empty()) return Status::Fail(" Number of Numors in the List was zero!");
    for (std::size_t i = 0; i < std::min(numors.size(), active.size()); ++i)
        if (active[i]) runs.push_back(&numors[i]);
    return runs.empty() ? Status::Fail(" Number of active Numors in the List was zero!") : Status::Done();
}

Status Check_Wavelengths(const Active_Runs& runs) {
    for (const Powder_Numor_Type* run : std::span(runs).subspan(1))
        if (!(std::fabs(run->wave - runs.front()->wave) <= 0.1f))
            return Status::Fail("Impossible to add the numors selected. Not all Numors have the same Wavelength!");
    return Status::Done();
}

Status Check_Shapes(const Active_Runs& runs) {
    for (const Powder_Numor_Type* run : runs)
        if (run->nbdata < 0 || (run->counts.frames() > 0 && run->counts.values() != static_cast<std::size_t>(run->nbdata)))
            return Status::Fail(Shape(*run) + ", where its head tells " + std::to_string(run->nbdata));
    return Status::Done();
}

double Told_Decimal(float value) {
    for (const double scale : {1e3, 1e4, 1e5}) {
        const double decimal = std::round(static_cast<double>(value) * scale) / scale;
        if (static_cast<float>(decimal) == value) return decimal;
    }
    return static_cast<double>(value);
}

std::optional<double> Monitor_Factor(double wanted, double monitor) {
    const double factor = wanted / monitor;
    if (!(monitor > 0) || !std::isfinite(factor)) return {};
    return factor;
}

void Fill_Head(const Powder_Numor_Type& numor, Diffraction_Pattern_Type& p) {
    const auto part = [](const std::string& text) { return std::string(Trim(text)); };
    p.title = Kept_Text(part(numor.title) + ", Instr: " + part(numor.instrm) + ", Header:" + part(numor.header), title_width);
    p.radiation = "neutrons_cw", p.scat_var = "2theta";
    p.legend_x = "2theta(degrees)", p.legend_y = "Intensity (arb. units)";
    p.instr = part(numor.instrm);
    p.TSetting = numor.conditions[0], p.TSample = numor.conditions[2];
    p.conv[0] = numor.wave;
    p.sigma_is_variance = true;
    p.constant_step = true;
}

void Leave_Without_Points(double xmin, double xmax, Diffraction_Pattern_Type& p) {
    p.npts = 0;
    p.xmin = static_cast<float>(xmin), p.xmax = static_cast<float>(xmax);
    if (!std::isfinite(p.xmin)) p.xmin = 0;
    if (!(p.xmax > p.xmin) || !std::isfinite(p.xmax)) p.xmax = p.xmin + std::max(1.0f, std::fabs(p.xmin));
}

Status Points_Of_Range(double xmin, double xmax, double step, std::size_t& points) {
    const double last = std::round((xmax - xmin) / step);
    if (!(last < most_converted_points))
        return Status::Fail("The runs give " + IRealToString(static_cast<float>(last + 1)) + " points, which is more than " +
                            std::to_string(most_converted_points) + "\n(from " + IRealToString(static_cast<float>(xmin)) + " to " +
                            IRealToString(static_cast<float>(xmax)) + " by steps of " + IRealToString(static_cast<float>(step)) + ")");
    points = static_cast<std::size_t>(last) + 1;
    return Status::Done();
}

Status Check_Calibration(const Calibration_Detector_Type& cal, std::string_view instrument) {
    if (!cal.cal_instrument.empty() && cal.cal_instrument != instrument)
        return Status::Fail("The calibration is one of " + cal.cal_instrument + ", and the runs are of " + std::string(instrument));
    const auto cells = static_cast<std::size_t>(std::max(cal.ndet, 0)) * static_cast<std::size_t>(std::max(cal.npoints_det, 0));
    if (cells == 0 || cal.cal_effic.size() != cells || cal.cal_active.size() != cells)
        return Status::Fail("The calibration does not tell the efficiency of each cell");
    if (std::find(cal.cal_active.begin(), cal.cal_active.end(), true) == cal.cal_active.end())
        return Status::Fail("The calibration has no active cell");
    for (std::size_t i = 0; i < cells; ++i)
        if (cal.cal_active[i] && !(std::fabs(1 / static_cast<double>(cal.cal_effic[i])) < 1e30))
            return Status::Fail("The calibration has no efficiency for its active cell " + std::to_string(i + 1));
    for (const float position : cal.cal_pos)
        if (!std::isfinite(position)) return Status::Fail("The calibration has a position that is no number");
    return Status::Done();
}

Status Other_Size(const Calibration_Detector_Type& cal, std::size_t cells, const Powder_Numor_Type& numor) {
    return Status::Fail("The calibration is one of " + std::to_string(cal.cal_effic.size()) + " cells, and " + Run_Name(numor) + " has " +
                        std::to_string(cells));
}

Status Take_Mean(const Mean_Sums& sums, double xmax, Diffraction_Pattern_Type& p) {
    const std::size_t n = sums.y.size();
    if (Status status = Allocate_Diffraction_Pattern(p, static_cast<std::int32_t>(n)); status.failed) return status;
    for (std::size_t i = 0; i < n; ++i) {
        const double cells = sums.cells[i];
        p.x[i] = static_cast<float>(sums.X(i));
        p.nd[i] = sums.cells[i];
        p.y[i] = cells > 0 ? static_cast<float>(sums.y[i] / cells) : 0.0f;
        p.sigma[i] = cells > 0 ? static_cast<float>(std::fabs(sums.variance[i]) / (cells * cells)) : 1.0f;
    }
    p.xmin = static_cast<float>(sums.xmin), p.xmax = static_cast<float>(xmax);
    Set_Y_Limits(p);
    return Status::Done();
}

Grid_Part Points_Between(const Mean_Sums& sums, double low, double high) {
    const double points = static_cast<double>(sums.y.size());
    const double first = std::clamp(std::ceil((low - sums.xmin) / sums.step - grid_play), 0.0, points);
    const double behind = std::clamp(std::floor((high - sums.xmin) / sums.step + grid_play) + 1, first, points);
    return {static_cast<std::size_t>(first), static_cast<std::size_t>(behind)};
}

int Threads_For([[maybe_unused]] int wanted, [[maybe_unused]] std::size_t work) {
#ifdef _OPENMP
    constexpr std::size_t least_work = 200'000;  // evaluations; fewer are done before another thread has begun
    if (wanted > 0) return wanted;
    return work < least_work ? 1 : omp_get_max_threads();
#else
    return 1;
#endif
}

}  // namespace vntl
