// Runs of powder diffractometers: adding them, and the mean over the cells of a bank, as ratios to a plain loop that sums all their counts
// in the same run ("passes").
#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

#include "bench/timing.hpp"
#include "instrument/numors_to_pattern.hpp"

namespace {

using namespace vntl;

std::vector<Powder_Numor_Type> Make_Runs(const char* instrument, int runs, std::size_t cells, std::size_t frames, bool even = true) {
    std::vector<Powder_Numor_Type> made(static_cast<std::size_t>(runs));
    for (int r = 0; r < runs; ++r) {
        Powder_Numor_Type& run = made[static_cast<std::size_t>(r)];
        run.numor = 100000 + r, run.instrm = instrument;
        run.monitor = 1000, run.scans = {2, 0.1f, 0};
        run.nbdata = static_cast<int>(cells), run.nframes = static_cast<int>(frames), run.nbang = 1;
        run.tmc_ang = Frame_Values(4, frames);
        run.counts = Frame_Values(cells, frames);
        for (std::size_t f = 0; f < frames; ++f) {
            run.tmc_ang.Frame(f)[frame_monitor] = 1000;
            run.tmc_ang.Frame(f)[frame_angle] = static_cast<float>(
                (5000.0 + 50.0 * static_cast<double>(f) + 13.0 * (r % 7) + (even ? 0.0 : 3.0 * static_cast<double>(f % 3))) / 1000);
        }
        std::size_t i = 0;
        for (float& count : run.counts.All()) count = static_cast<float>(1000 + i++ * 37 % 411);
    }
    return made;
}

double Plain_Pass(const std::vector<Powder_Numor_Type>& runs) {
    return Milliseconds([&] {
        double sum = 0;
        for (const auto& run : runs)
            for (const float count : run.counts.All()) sum += static_cast<double>(count);
        benchmark::DoNotOptimize(sum);
    });
}

template <class Work>
void Measure(benchmark::State& state, const std::vector<Powder_Numor_Type>& runs, Work work) {
    double best = 1e30, plain = 1e30;
    for (auto _ : state) {
        plain = std::min(plain, Plain_Pass(runs));
        best = std::min(best, Milliseconds(work));
    }
    state.counters["ms"] = best;
    state.counters["passes"] = best / plain;
}

void Adding(benchmark::State& state) {
    const auto runs = Make_Runs("R3B", 1000, 1600, 1);
    const std::vector<bool> active(runs.size(), true);
    Measure(state, runs, [&] {
        Powder_Numor_Type sum;
        if (Add_Numors(runs, active, sum).failed) state.SkipWithError("refused");
        benchmark::DoNotOptimize(sum.counts.All().data());
    });
}

void Convert(benchmark::State& state, const std::vector<Powder_Numor_Type>& runs, const Numor_Conversion& how) {
    const std::vector<bool> active(runs.size(), true);
    Measure(state, runs, [&] {
        Diffraction_Pattern_Type pattern;
        std::vector<std::string> warnings;
        if (PowderNumors_To_DiffPattern(runs, active, pattern, how, warnings).failed) state.SkipWithError("refused");
        benchmark::DoNotOptimize(pattern.y.data());
    });
}

void Bank_Scan(benchmark::State& state) {
    const auto runs = Make_Runs("R3A", 100, 25, 64, state.range(1) != 0);
    Calibration_Detector_Type cal;
    cal.cal_instrument = "R3A";
    cal.ndet = 25, cal.npoints_det = 1;
    cal.cal_effic.assign(25, 0.9f);
    cal.cal_active.assign(25, true);
    for (int k = 0; k < 25; ++k) cal.cal_pos.push_back(6.013f * static_cast<float>(k));
    Convert(state, runs, {.cal = state.range(0) != 0 ? &cal : nullptr});
}

void Banks_Of_R8(benchmark::State& state) { Convert(state, Make_Runs("R8", 200, 64, 9), {}); }

BENCHMARK(Adding)->Unit(benchmark::kMillisecond);
BENCHMARK(Bank_Scan)->ArgNames({"calibrated", "even"})->ArgsProduct({{0, 1}, {0, 1}})->Unit(benchmark::kMillisecond);
BENCHMARK(Banks_Of_R8)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
