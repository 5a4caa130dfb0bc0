#include "instrument/bank_scan.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "base/conversions.hpp"
#include "instrument/block_spline.hpp"

namespace vntl {

namespace {

constexpr double cell_distance = 6.0;  // degrees, of the cells of a bank that nobody calibrated
constexpr std::size_t tubes_of_r5b = 128;

// The cells of the bank in the order of their positions, which is the reverse of that of the counts: position k is cell `cells` - 1 - k.
struct Bank {
    std::size_t cells = 0;
    std::size_t heights = 1;         // counts of a cell, which are added
    std::vector<double> position;    // degrees from the angle of the frame
    std::vector<char> on;            // cells that are used
    std::vector<double> reciprocal;  // of the efficiency, `heights` of each cell; 0 of what is dead
    std::vector<double> stretch;     // of a cell, to the longest active zone
    bool calibrated = false;
};

// A run in the work arrays. Frames stand in the order of rising angles.
struct Scan {
    const Powder_Numor_Type* run = nullptr;
    std::size_t frames = 0;
    std::size_t first_frame = 0;  // in arrays of frames
    std::size_t row = 0;          // of its first frame in arrays of rows
    bool even = false;            // its frames are as far from each other as the points
};

struct Work {
    std::vector<Scan> scans;
    // A value of each frame of all scans.
    std::vector<std::size_t> order;      // frames as the file has them
    std::vector<double> angle, monitor;  // of each frame
    std::vector<double> to_part;         // of the way from the frame before: 1 by the difference of their angles
    double value = 1;                    // of the monitor, to which is normalised
    // Rows of the scans that are at work: a value of each cell.
    std::vector<double> scratch;  // one value a row
    std::vector<double> y, derivatives;
    std::vector<double> weight;     // variance of a count by its value, before the monitor; one row for all where it is that of a cell
    std::size_t weight_stride = 0;  // from a row to the next
};

Status Take_Layout(const Powder_Numor_Type& first, std::string_view instrument, const Calibration_Detector_Type* cal, Bank& bank) {
    const auto counts = static_cast<std::size_t>(first.nbdata);
    bank.calibrated = cal != nullptr;
    if (cal == nullptr) {
        bank.heights = instrument == "R5B" && counts > 0 && counts % tubes_of_r5b == 0 ? counts / tubes_of_r5b : 1;
        bank.cells = counts / bank.heights;
        return Status::Done();
    }
    if (Status status = Check_Calibration(*cal, instrument); status.failed) return status;
    if (cal->cal_effic.size() != counts) return Other_Size(*cal, counts, first);
    bank.heights = static_cast<std::size_t>(cal->npoints_det);
    bank.cells = static_cast<std::size_t>(cal->ndet);
    if (cal->cal_pos.size() != bank.cells)
        return Status::Fail("The calibration has " + std::to_string(cal->cal_pos.size()) + " positions, and " + std::to_string(bank.cells) +
                            " detectors");
    return Status::Done();
}

void Take_Cells(const Calibration_Detector_Type* cal, Bank& bank) {
    bank.position.resize(bank.cells);
    bank.on.assign(bank.cells, 1);
    bank.reciprocal.assign(bank.cells * bank.heights, 1.0);
    bank.stretch.assign(bank.cells, 1.0);
    for (std::size_t k = 0; k < bank.cells; ++k)
        bank.position[k] = cal != nullptr ? Told_Decimal(cal->cal_pos[k]) : -cell_distance * static_cast<double>(k);
    if (cal == nullptr) return;
    std::vector<std::size_t> active(bank.cells, 0);
    for (std::size_t i = 0; i < bank.reciprocal.size(); ++i) {
        if (cal->cal_active[i]) ++active[i / bank.heights];
        bank.reciprocal[i] = cal->cal_active[i] ? 1 / static_cast<double>(cal->cal_effic[i]) : 0.0;
    }
    const auto longest = static_cast<double>(*std::max_element(active.begin(), active.end()));
    for (std::size_t k = 0; k < bank.cells; ++k) {
        bank.on[k] = active[k] > 0;
        if (active[k] > 0) bank.stretch[k] = longest / static_cast<double>(active[k]);
    }
}

// Frames of each run in the order of their angles. Nothing is done with what they hold.
Status Take_Frames(const Active_Runs& runs, Work& work) {
    for (const Powder_Numor_Type* run : runs) {
        const std::size_t frames = run->counts.frames();
        if (run->nbdata != runs.front()->nbdata)
            return Status::Fail(Run_Name(*run) + " has " + std::to_string(run->nbdata) + " counts in a frame, and " +
                                Run_Name(*runs.front()) + " " + std::to_string(runs.front()->nbdata));
        if (run->tmc_ang.frames() < frames || (frames > 0 && run->tmc_ang.values() <= frame_angle))
            return Status::Fail(Run_Name(*run) + " does not tell the angle of each frame");
        const Scan scan{run, frames, work.order.size()};
        work.order.resize(scan.first_frame + frames);
        const auto order = std::span(work.order).subspan(scan.first_frame);
        std::iota(order.begin(), order.end(), std::size_t{0});
        const auto angle = [run](std::size_t frame) { return run->tmc_ang.Frame(frame)[frame_angle]; };
        for (const std::size_t frame : order)
            if (!std::isfinite(angle(frame)))
                return Status::Fail("The angle of frame " + std::to_string(frame + 1) + " of " + Run_Name(*run) + " is no number");
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return angle(a) < angle(b); });
        for (const std::size_t frame : order) {
            work.angle.push_back(Told_Decimal(angle(frame)));
            work.to_part.push_back(frame == order.front() ? 0.0 : 1 / (work.angle.back() - work.angle[work.angle.size() - 2]));
            work.monitor.push_back(static_cast<double>(run->tmc_ang.Frame(frame)[frame_monitor]));
        }
        work.scans.push_back(scan);
    }
    return Status::Done();
}

// From a frame to the next of the first run, in the order in which they were measured.
double Step_Of(const Powder_Numor_Type& first) {
    if (first.counts.frames() < 2) return 0;
    return std::fabs(Told_Decimal(first.tmc_ang.Frame(1)[frame_angle]) - Told_Decimal(first.tmc_ang.Frame(0)[frame_angle]));
}

struct Range {
    double low = std::numeric_limits<double>::infinity(), high = -low;
};

Range Range_Of(const Bank& bank, const Work& work) {
    Range range;
    for (const Scan& scan : work.scans) {
        if (scan.frames == 0) continue;
        for (std::size_t k = 0; k < bank.cells; ++k) {
            if (bank.on[k] == 0) continue;
            range.low = std::min(range.low, work.angle[scan.first_frame] + bank.position[k]);
            range.high = std::max(range.high, work.angle[scan.first_frame + scan.frames - 1] + bank.position[k]);
        }
    }
    return range;
}

// Two frames at one angle would ask for an infinite slope between them.
Status Check_Frames(const Bank& bank, const Work& work) {
    for (const Scan& scan : work.scans)
        for (std::size_t i = scan.first_frame; i < scan.first_frame + scan.frames; ++i) {
            const std::string frame = std::to_string(work.order[i] + 1);
            if (i > scan.first_frame && !(work.angle[i] > work.angle[i - 1]))
                return Status::Fail("The frames " + std::to_string(work.order[i - 1] + 1) + " and " + frame + " of " + Run_Name(*scan.run) +
                                    " have the same angle, " + IRealToString(static_cast<float>(work.angle[i])));
            if (bank.calibrated && !Monitor_Factor(work.value, work.monitor[i]))
                return Status::Fail("The monitor of frame " + frame + " of " + Run_Name(*scan.run) + " is " +
                                    IRealToString(static_cast<float>(work.monitor[i])) + ": its counts cannot be normalised");
        }
    return Status::Done();
}

// A count of each cell, from a row of the file.
void Take_Row(const Bank& bank, std::span<const float> counts, double factor, double* y) {
    const std::size_t cells = bank.cells;
    for (std::size_t k = 0; k < cells; ++k) y[k] = static_cast<double>(counts[cells - 1 - k]) * bank.reciprocal[k] * factor;
}

// The same of tubes whose active zone is added, with the variance that follows, by the sum.
void Take_Tubes(const Bank& bank, std::span<const float> counts, double factor, double* y, double* weight) {
    for (std::size_t k = 0; k < bank.cells; ++k) {
        const std::size_t heights = bank.heights;
        const float* const tube = counts.data() + (bank.cells - 1 - k) * heights;
        const double* const reciprocal = bank.reciprocal.data() + k * heights;
        double sum = 0, size = 0, variance = 0, plain = 0, plain_variance = 0;
        for (std::size_t i = 0; i < heights; ++i) {
            const double r = reciprocal[i], count = static_cast<double>(tube[i]);
            sum += count * r;
            size += std::fabs(count * r);
            variance += std::fabs(count) * r * r;
            plain += std::fabs(r);
            plain_variance += r * r;
        }
        y[k] = sum * bank.stretch[k] * factor;
        // Where nothing was counted every cell of the zone stands for its share.
        weight[k] = bank.stretch[k] * (size > 0 ? variance / size : plain > 0 ? plain_variance / plain : 1.0);
    }
}

void Fill_Scan(const Bank& bank, const Scan& scan, Work& work) {
    const std::size_t cells = bank.cells;
    for (std::size_t i = 0; i < scan.frames; ++i) {
        const auto counts = scan.run->counts.Frame(work.order[scan.first_frame + i]);
        const double factor = bank.calibrated ? work.value / work.monitor[scan.first_frame + i] : 1.0;
        double* const y = work.y.data() + (scan.row + i) * cells;
        if (bank.heights == 1)
            Take_Row(bank, counts, factor, y);
        else
            Take_Tubes(bank, counts, factor, y, work.weight.data() + (scan.row + i) * cells);
    }
    const auto rows = [&](std::vector<double>& values, std::size_t columns) {
        return std::span(values).subspan(scan.row * columns, scan.frames * columns);
    };
    const auto angle = std::span(work.angle).subspan(scan.first_frame, scan.frames);
    Block_Spline(angle, rows(work.y, cells), cells, rows(work.scratch, 1), rows(work.derivatives, cells));
}

// Every scan writes rows of its own.
void Fill_Scans(const Bank& bank, std::span<const Scan> scans, [[maybe_unused]] int several, Work& work) {
#ifdef _OPENMP
#pragma omp parallel for num_threads(several) schedule(static)
#endif
    for (std::ptrdiff_t i = 0; i < static_cast<std::ptrdiff_t>(scans.size()); ++i)
        Fill_Scan(bank, scans[static_cast<std::size_t>(i)], work);
}

// A cell of a scan, frame by frame, and the points to which it tells something.
struct Cell_Walk {
    const double *angle, *to_part, *monitor;  // of the frames
    const double *y, *m, *weight;             // of the frame before the point
    std::size_t next, next_weight;            // from a frame to the next
    double position, value;
    bool calibrated;
    std::size_t first, behind;  // points
    double* sum;
    double* variance;
    std::int32_t* count;

    Cell_Walk(const Bank& bank, const Work& work, const Scan& scan, std::size_t cell, Grid_Part band, Mean_Sums& sums)
        : angle(work.angle.data() + scan.first_frame),
          to_part(work.to_part.data() + scan.first_frame),
          monitor(work.monitor.data() + scan.first_frame),
          y(work.y.data() + scan.row * bank.cells + cell),
          m(work.derivatives.data() + scan.row * bank.cells + cell),
          weight(work.weight.data() + scan.row * work.weight_stride + cell),
          next(bank.cells),
          next_weight(work.weight_stride),
          position(bank.position[cell]),
          value(work.value),
          calibrated(bank.calibrated),
          sum(sums.y.data()),
          variance(sums.variance.data()),
          count(sums.cells.data()) {
        const Grid_Part part = Points_Between(sums, angle[0] + position, angle[scan.frames - 1] + position);
        first = std::max(part.first, band.first), behind = std::min(part.behind, band.behind);
    }

    // Point i, between frame `left` and the one behind it.
    void Add(const Spline_Weights& of, std::size_t left, std::size_t i) const {
        const double at_point = of.Value(y[0], y[next], m[0], m[next]);
        double f = 1;
        if (calibrated)
            f = (of.left * weight[0] + of.right * weight[next_weight]) * value / (of.left * monitor[left] + of.right * monitor[left + 1]);
        sum[i] += at_point;
        variance[i] += f * at_point;
        count[i] += 1;
    }
    void Move(std::size_t frames) { y += frames * next, m += frames * next, weight += frames * next_weight; }
};

void Add_Cell(Cell_Walk walk, std::size_t frames, const Mean_Sums& sums) {
    const double xmin = sums.xmin, step = sums.step, first = walk.angle[0], last = walk.angle[frames - 1];
    std::size_t left = 0;
    for (std::size_t i = walk.first; i < walk.behind; ++i) {
        const double at = std::clamp(xmin + static_cast<double>(i) * step - walk.position, first, last);
        for (; walk.angle[left + 1] < at; ++left) walk.Move(1);
        const double from = walk.angle[left], to = walk.angle[left + 1];
        walk.Add({(at - from) * walk.to_part[left + 1], to - from}, left, i);
    }
}

// Of frames that are a step of the pattern apart: all points lie at the same part of their way from a frame to the next.
void Add_Even_Cell(Cell_Walk walk, std::size_t frames, const Mean_Sums& sums) {
    if (walk.first >= walk.behind) return;
    const double place = std::max((sums.X(walk.first) - walk.position - walk.angle[0]) / sums.step, 0.0);
    std::size_t left = std::min(static_cast<std::size_t>(place), frames - 2);
    const Spline_Weights of(std::min(place - static_cast<double>(left), 1.0), sums.step);
    walk.Move(left);
    const std::size_t behind = std::min(walk.behind, walk.first + (frames - 1 - left));
    for (std::size_t i = walk.first; i < behind; ++i, ++left, walk.Move(1)) walk.Add(of, left, i);
    if (behind == walk.behind) return;
    // The last frame has none behind it.
    left = frames - 2;
    walk.y -= walk.next, walk.m -= walk.next, walk.weight -= walk.next_weight;
    walk.Add({1.0, sums.step}, left, behind);
}

bool Is_Even(const Work& work, const Scan& scan, double step) {
    const double* const angle = work.angle.data() + scan.first_frame;
    for (std::size_t i = 1; i < scan.frames; ++i)
        if (std::fabs(angle[i] - angle[0] - static_cast<double>(i) * step) > 1e-7 * step) return false;
    return true;
}

void Add_Scans(const Bank& bank, std::span<const Scan> scans, int several, const Work& work, Mean_Sums& sums) {
    For_Parts(sums.y.size(), several, [&](Grid_Part part) {
        for (const Scan& scan : scans)
            for (std::size_t cell = 0; cell < bank.cells; ++cell)
                if (bank.on[cell] != 0) (scan.even ? Add_Even_Cell : Add_Cell)({bank, work, scan, cell, part, sums}, scan.frames, sums);
    });
}

// Scans stand one behind the other in the arrays of rows; how many rows they take.
std::size_t Place_Scans(std::span<Scan> scans) {
    std::size_t rows = 0;
    for (Scan& scan : scans) scan.row = std::exchange(rows, rows + scan.frames);
    return rows;
}

// A few scans at a time, which stay near the processor: one for a thread alone, enough for several to share.
void Sum_Scans(const Bank& bank, int threads, Work& work, Mean_Sums& sums) {
    for (Scan& scan : work.scans) scan.even = Is_Even(work, scan, sums.step);
    const int several = Threads_For(threads, work.angle.size() * bank.cells);
    const std::size_t together = several > 1 ? 16 * static_cast<std::size_t>(several) : 1;
    const std::span all(work.scans);
    const auto some = [&](std::size_t first) { return all.subspan(first, std::min(together, all.size() - first)); };
    std::size_t rows = 0;
    for (std::size_t first = 0; first < all.size(); first += together) rows = std::max(rows, Place_Scans(some(first)));
    work.scratch.resize(rows);
    work.y.resize(rows * bank.cells);
    work.derivatives.resize(rows * bank.cells);
    if (bank.heights == 1) {
        work.weight.resize(bank.cells);
        std::transform(bank.reciprocal.begin(), bank.reciprocal.end(), work.weight.begin(), [](double r) { return std::fabs(r); });
    } else {
        work.weight.resize(rows * bank.cells);
        work.weight_stride = bank.cells;
    }
    for (std::size_t first = 0; first < all.size(); first += together) {
        Fill_Scans(bank, some(first), several, work);
        Add_Scans(bank, some(first), several, work, sums);
    }
}

void Leave_Out_Single_Frames(Work& work, std::vector<std::string>& warnings) {
    std::erase_if(work.scans, [&warnings](const Scan& scan) {
        if (scan.frames < 2) warnings.push_back(Run_Name(*scan.run) + " has a single frame or none, and is left out");
        return scan.frames < 2;
    });
}

void Warn_Of_Uncalibrated(const Bank& bank, std::string_view instrument, const Numor_Conversion& how, std::vector<std::string>& warnings) {
    if (bank.calibrated) return;
    if (instrument == "R5B")
        warnings.push_back("The counts of R5B need a calibration: without one its " + std::to_string(bank.cells) +
                           " detectors are drawn 6.0 degrees apart, which is not where they stand.");
    if (how.vnorm) warnings.push_back("Without a calibration the counts of " + std::string(instrument) + " are not normalised.");
}

void Finish_Head(const Active_Runs& runs, double value, Diffraction_Pattern_Type& p) {
    Fill_Head(*runs.front(), p);
    p.instr = "R3A";
    p.monitor = p.norm_monitor = static_cast<float>(value);
    double time = 0;
    for (const Powder_Numor_Type* run : runs) time += static_cast<double>(run->time);
    p.count_time = static_cast<float>(time);
}

}  // namespace

Status Convert_Bank_Scan(const Active_Runs& runs, std::string_view instrument, const Numor_Conversion& how, Diffraction_Pattern_Type& p,
                         std::vector<std::string>& warnings) {
    Bank bank;
    Work work;
    if (Status status = Take_Layout(*runs.front(), instrument, how.cal, bank); status.failed) return status;
    Take_Cells(how.cal, bank);
    if (Status status = Take_Frames(runs, work); status.failed) return status;
    const Powder_Numor_Type& first = *runs.front();
    const bool told = how.vnorm && *how.vnorm != 0;
    if (told)
        work.value = static_cast<double>(*how.vnorm);
    else if (first.counts.frames() > 0)
        work.value = static_cast<double>(first.tmc_ang.Frame(0)[frame_monitor]);
    Finish_Head(runs, work.value, p);
    Warn_Of_Uncalibrated(bank, instrument, how, warnings);

    const double step = Step_Of(first);
    p.step = static_cast<float>(step);
    if (step > 0) Leave_Out_Single_Frames(work, warnings);
    const Range range = Range_Of(bank, work);
    if (!(step > 0) || range.low > range.high) {
        const bool found = range.low <= range.high;
        Leave_Without_Points(found ? range.low : 0, found ? range.high : 0, p);
        return Status::Done();
    }
    if (Status status = Check_Frames(bank, work); status.failed) return status;
    std::size_t points = 0;
    if (Status status = Points_Of_Range(range.low, range.high, step, points); status.failed) return status;
    Mean_Sums sums{range.low, step, std::vector<double>(points, 0.0), std::vector<double>(points, 0.0),
                   std::vector<std::int32_t>(points, 0)};
    Sum_Scans(bank, how.threads, work, sums);
    return Take_Mean(sums, range.high, p);
}

}  // namespace vntl
