#include "instrument/bank_r8.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/conversions.hpp"
#include "base/spline.hpp"
#include "instrument/block_spline.hpp"

namespace vntl {

namespace {

constexpr double bank_distance = 15.0, cell_distance = 0.125;  // degrees
constexpr double play = 1e-6;                                  // of the distance of cells

// A bank of a run: the spline through its active cells.
struct Bank_Spline {
    double start = 0;   // angle of cell 0
    double factor = 1;  // of the counts, by the monitor
    std::size_t bank = 0;
    std::vector<double> x, y, derivatives;
};

struct Cells {
    std::vector<char> on;             // of each bank and cell
    std::vector<std::size_t> number;  // of an active cell among those of its bank
    std::vector<double> reciprocal;   // of the efficiency
    std::vector<double> shift;        // of each bank, degrees
};

constexpr std::size_t Cell(std::size_t bank, std::size_t cell) { return bank * r8_cells + cell; }

Status Take_Cells(const Powder_Numor_Type& first, const Calibration_Detector_Type* cal, Cells& cells) {
    const std::size_t all = r8_banks * r8_cells;
    cells.on.assign(all, 1);
    cells.reciprocal.assign(all, 1.0);
    cells.shift.assign(r8_banks, 0.0);
    if (cal != nullptr) {
        if (Status status = Check_Calibration(*cal, "R8"); status.failed) return status;
        if (cal->ndet != static_cast<int>(r8_banks) || cal->cal_pos.size() != r8_banks || cal->cal_effic.size() != all)
            return Other_Size(*cal, all, first);
        for (std::size_t i = 0; i < all; ++i) {
            cells.on[i] = cal->cal_active[i];
            if (cells.on[i] != 0) cells.reciprocal[i] = 1 / static_cast<double>(cal->cal_effic[i]);
        }
        std::transform(cal->cal_pos.begin(), cal->cal_pos.end(), cells.shift.begin(), Told_Decimal);
    }
    cells.number.resize(all);
    for (std::size_t bank = 0; bank < r8_banks; ++bank)
        for (std::size_t cell = 0, next = 0; cell < r8_cells; ++cell) {
            cells.number[Cell(bank, cell)] = next;
            if (cells.on[Cell(bank, cell)] != 0) ++next;
        }
    return Status::Done();
}

Status First_Angle(const Powder_Numor_Type& run, double& angle) {
    if (run.counts.frames() != r8_banks || run.counts.values() != r8_cells)
        return Status::Fail(Run_Name(run) + " has " + std::to_string(run.counts.frames()) + " banks of " +
                            std::to_string(run.counts.values()) + " counts, and R8 has 9 of 64");
    const bool told = run.tmc_ang.frames() > 0 && run.tmc_ang.values() > frame_angle;
    angle = Told_Decimal(told ? run.tmc_ang.Frame(0)[frame_angle] : run.scans[0]);
    return std::isfinite(angle) ? Status::Done() : Status::Fail("The angle of " + Run_Name(run) + " is no number");
}

// To the monitor of the first run, which needs no monitor itself then, or to the one that is wanted.
Status Factor_Of(const Powder_Numor_Type& run, const Powder_Numor_Type& first, double value, bool told, double& factor) {
    const double monitor = static_cast<double>(run.monitor);
    const std::optional<double> by_monitor = Monitor_Factor(value, monitor);
    if (!told && &run == &first)
        factor = 1;
    else if (by_monitor && value > 0)
        factor = *by_monitor;
    else
        return Status::Fail("The monitor of " + Run_Name(monitor > 0 ? first : run) + " is " +
                            IRealToString(monitor > 0 ? first.monitor : run.monitor) + ": counts cannot be normalised by it");
    return Status::Done();
}

void Add_Bank(const Cells& cells, const Powder_Numor_Type& run, Bank_Spline bank, std::vector<Bank_Spline>& splines) {
    const auto counts = run.counts.Frame(bank.bank);
    bank.x.reserve(r8_cells);
    bank.y.reserve(r8_cells);
    for (std::size_t cell = 0; cell < r8_cells; ++cell) {
        if (cells.on[Cell(bank.bank, cell)] == 0) continue;
        bank.x.push_back(bank.start + cell_distance * static_cast<double>(cell));
        bank.y.push_back(static_cast<double>(counts[cell]) * cells.reciprocal[Cell(bank.bank, cell)] * bank.factor);
    }
    const std::size_t n = bank.x.size();
    if (n < 2) return;
    const auto chord = [&bank](std::size_t i) { return (bank.y[i + 1] - bank.y[i]) / (bank.x[i + 1] - bank.x[i]); };
    bank.derivatives = Spline(bank.x, bank.y, chord(0), chord(n - 2));
    splines.push_back(std::move(bank));
}

// Adds what a bank tells of the points of `band`. Points are as far from each other as cells are: all lie at the same part of their way
// from a cell to the next.
void Add_Points(const Cells& cells, const Bank_Spline& bank, Grid_Part band, Mean_Sums& sums) {
    const Grid_Part part = Points_Between(sums, bank.x.front(), bank.x.back());
    const std::size_t first = std::max(part.first, band.first), behind = std::min(part.behind, band.behind);
    if (first >= behind) return;
    const double place = std::max((sums.X(first) - bank.start) / cell_distance, 0.0);
    std::size_t low = static_cast<std::size_t>(place + play);
    const double rest = place - static_cast<double>(low);
    const bool on_cell = std::fabs(rest) <= play;
    const Spline_Weights weights(on_cell ? 0.0 : rest, cell_distance);
    const std::size_t to_right = on_cell ? 0 : 1;
    for (std::size_t i = first; i < behind && low + to_right < r8_cells; ++i, ++low) {
        const std::size_t a = Cell(bank.bank, low), b = a + to_right;
        if (cells.on[a] == 0 || cells.on[b] == 0) continue;
        const std::size_t left = cells.number[a], right = cells.number[b];
        const double value = weights.Value(bank.y[left], bank.y[right], bank.derivatives[left], bank.derivatives[right]);
        const double reciprocal = weights.left * std::fabs(cells.reciprocal[a]) + weights.right * std::fabs(cells.reciprocal[b]);
        sums.y[i] += value;
        sums.variance[i] += bank.factor * reciprocal * value;
        sums.cells[i] += 1;
    }
}

void Add_Banks(const Cells& cells, const std::vector<Bank_Spline>& splines, const Numor_Conversion& how, Mean_Sums& sums) {
    For_Parts(sums.y.size(), Threads_For(how.threads, splines.size() * r8_cells), [&](Grid_Part part) {
        for (const Bank_Spline& bank : splines)
            if (how.bank == 0 || bank.bank + 1 == static_cast<std::size_t>(how.bank)) Add_Points(cells, bank, part, sums);
    });
}

void Find_Range(const std::vector<Bank_Spline>& splines, [[maybe_unused]] int threads, double& xmin, double& xmax) {
    double low = std::numeric_limits<double>::infinity(), high = -low;
    [[maybe_unused]] const int several = Threads_For(threads, splines.size());
#ifdef _OPENMP
#pragma omp parallel for num_threads(several) reduction(min : low) reduction(max : high)
#endif
    for (std::ptrdiff_t i = 0; i < static_cast<std::ptrdiff_t>(splines.size()); ++i) {
        low = std::min(low, splines[static_cast<std::size_t>(i)].x.front());
        high = std::max(high, splines[static_cast<std::size_t>(i)].x.back());
    }
    xmin = low, xmax = high;
}

void Finish_Head(const Active_Runs& runs, double value, Diffraction_Pattern_Type& p) {
    Fill_Head(*runs.front(), p);
    p.instr = "R8";
    p.step = static_cast<float>(cell_distance);
    p.monitor = p.norm_monitor = static_cast<float>(value);
    double time = 0;
    for (const Powder_Numor_Type* run : runs) time += static_cast<double>(run->time);
    p.count_time = static_cast<float>(time);
}

}  // namespace

Status Convert_R8(const Active_Runs& runs, const Numor_Conversion& how, Diffraction_Pattern_Type& p) {
    const Powder_Numor_Type& first = *runs.front();
    const bool told = how.vnorm && *how.vnorm != 0;
    const double value = static_cast<double>(told ? *how.vnorm : first.monitor);
    Cells cells;
    if (Status status = Take_Cells(first, how.cal, cells); status.failed) return status;
    std::vector<Bank_Spline> splines;
    for (const Powder_Numor_Type* run : runs) {
        double angle = 0, factor = 1;
        if (Status status = First_Angle(*run, angle); status.failed) return status;
        if (Status status = Factor_Of(*run, first, value, told, factor); status.failed) return status;
        for (std::size_t bank = 0; bank < r8_banks; ++bank)
            Add_Bank(cells, *run, {angle + bank_distance * static_cast<double>(bank) + cells.shift[bank], factor, bank, {}, {}, {}},
                     splines);
    }
    if (splines.empty()) return Status::Fail("No bank of the calibration has two active cells");
    double xmin = 0, xmax = 0;
    Find_Range(splines, how.threads, xmin, xmax);
    std::size_t points = 0;
    if (Status status = Points_Of_Range(xmin, xmax, cell_distance, points); status.failed) return status;
    Finish_Head(runs, value, p);
    Mean_Sums sums{xmin, cell_distance, std::vector<double>(points, 0.0), std::vector<double>(points, 0.0),
                   std::vector<std::int32_t>(points, 0)};
    Add_Banks(cells, splines, how, sums);
    return Take_Mean(sums, xmax, p);
}

}  // namespace vntl
