// Diffractometers of which everything is known: the pattern, where each cell stands, what it counts of it, which are dead, and monitors
// that vary. Counts are drawn from Poisson distributions by a fixed generator.
#pragma once

#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "instrument/calibration.hpp"
#include "instrument/numor.hpp"
#include "instrument/numors_to_pattern.hpp"

namespace vntl::test {

inline constexpr float normal_monitor = 1000;

// Counts at `x` degrees, for the normal monitor and a cell of efficiency 1: broad lines, so that a spline through any frames follows them.
inline double True_Counts(double x) {
    double y = 2000 + 4 * x;
    for (int line = 0; line < 12; ++line) {
        const double t = (x - 4 - 13.7 * line) / 1.6;
        y += (3000 + 400 * (line % 3)) * std::exp(-t * t / 2);
    }
    return y;
}

class Dice {
public:
    explicit Dice(unsigned seed) : generator_(seed) {}

    double Between(double low, double high) { return low + (high - low) * static_cast<double>(generator_()) / 4294967296.0; }
    float Counts(double mean) { return static_cast<float>(std::poisson_distribution<int>(mean)(generator_)); }

private:
    std::mt19937 generator_;
};

// A run whose frames stand at `angles`, at the normal monitor; `counts` tells what a cell counts (frame, cell).
inline Powder_Numor_Type Scan_Run(const std::string& instrument, int numor, std::size_t cells, const std::vector<double>& angles,
                                  const std::function<double(std::size_t, std::size_t)>& counts) {
    const std::size_t frames = angles.size();
    Powder_Numor_Type run;
    run.numor = numor, run.instrm = instrument, run.title = " Y2O3 ", run.header = instrument + " user ", run.scantype = "2theta";
    run.wave = 1.594f, run.conditions = {10, 11, 12, 0, 0};
    run.time = 60, run.monitor = normal_monitor;
    run.nbdata = static_cast<int>(cells), run.nframes = static_cast<int>(frames), run.nbang = 1;
    run.tmc_ang = Frame_Values(4, frames);
    run.counts = Frame_Values(cells, frames);
    for (std::size_t f = 0; f < frames; ++f) {
        run.tmc_ang.Frame(f)[frame_monitor] = normal_monitor;
        run.tmc_ang.Frame(f)[frame_angle] = static_cast<float>(angles[f]);
        for (std::size_t c = 0; c < cells; ++c) run.counts.Frame(f)[c] = static_cast<float>(counts(f, c));
    }
    return run;
}

inline std::vector<double> Even_Angles(double start, double step, std::size_t n) {
    std::vector<double> angles(n);
    for (std::size_t i = 0; i < n; ++i) angles[i] = start + step * static_cast<double>(i);
    return angles;
}

// Efficiencies from 0.6 to 1.4, a dead cell now and then.
inline Calibration_Detector_Type Calibration_Of(const std::string& instrument, int detectors, int points, Dice& dice) {
    Calibration_Detector_Type cal;
    cal.cal_instrument = instrument;
    cal.ndet = detectors, cal.npoints_det = points;
    const auto cells = static_cast<std::size_t>(detectors * points);
    for (std::size_t i = 0; i < cells; ++i) {
        cal.cal_effic.push_back(static_cast<float>(dice.Between(0.6, 1.4)));
        cal.cal_active.push_back(dice.Between(0, 1) > 0.08);
    }
    return cal;
}

// Efficiency that a cell really has: a dead one counts what has nothing to do with the pattern.
inline double True_Counts(const Calibration_Detector_Type& cal, std::size_t cell, double x) {
    return cal.cal_active[cell] ? True_Counts(x) * static_cast<double>(cal.cal_effic[cell]) : 77777.0;
}

// Two dimensions of counts drawn: R3A and R5B, `heights` counts a tube.
inline Powder_Numor_Type Bank_Run(const Calibration_Detector_Type& cal, int numor, const std::vector<double>& angles, Dice& dice) {
    const auto cells = static_cast<std::size_t>(cal.ndet), heights = static_cast<std::size_t>(cal.npoints_det);
    std::vector<double> monitors(angles.size());
    for (double& monitor : monitors) monitor = std::round(dice.Between(0.5, 2) * static_cast<double>(normal_monitor));
    Powder_Numor_Type run = Scan_Run(cal.cal_instrument, numor, cells * heights, angles, [&](std::size_t f, std::size_t c) {
        const std::size_t k = cells - 1 - c / heights;  // positions run against the counts
        const double mean = True_Counts(cal, k * heights + c % heights, angles[f] + static_cast<double>(cal.cal_pos[k]));
        return dice.Counts(mean * monitors[f] / static_cast<double>(normal_monitor) / static_cast<double>(heights));
    });
    for (std::size_t f = 0; f < angles.size(); ++f) run.tmc_ang.Frame(f)[frame_monitor] = static_cast<float>(monitors[f]);
    return run;
}

inline Powder_Numor_Type R8_Run(const Calibration_Detector_Type& cal, int numor, double first_angle, double monitor, Dice& dice) {
    Powder_Numor_Type run = Scan_Run("R8", numor, 64, std::vector<double>(9, first_angle), [&](std::size_t bank, std::size_t c) {
        const double x =
            first_angle + 15.0 * static_cast<double>(bank) + 0.125 * static_cast<double>(c) + static_cast<double>(cal.cal_pos[bank]);
        return dice.Counts(True_Counts(cal, bank * 64 + c, x) * monitor / static_cast<double>(normal_monitor));
    });
    run.monitor = static_cast<float>(monitor);
    return run;
}

// One frame of cells at known places.
inline Powder_Numor_Type Line_Run(const std::string& instrument, int numor, double start, double step, const std::vector<double>& places,
                                  const std::vector<double>& efficiencies, double monitor, Dice& dice) {
    Powder_Numor_Type run = Scan_Run(instrument, numor, places.size(), {start}, [&](std::size_t, std::size_t c) {
        return dice.Counts(True_Counts(places[c]) * efficiencies[c] * monitor / static_cast<double>(normal_monitor));
    });
    run.scans = {static_cast<float>(start), static_cast<float>(step), 0};
    run.monitor = static_cast<float>(monitor);
    return run;
}

}  // namespace vntl::test
