// The volume of reciprocal space of a run with an area detector, as a ratio to plain sums of all its counts in the same run ("passes").
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

#include "bench/timing.hpp"
#include "instrument/reciprocal_volume.hpp"
#include "tests/instrument/simulated_crystal.hpp"

namespace {

using namespace vntl;
using test::Simulated_Crystal;

// A run whose frames lie in memory.
class Frames_In_Memory : public Frame_Source {
public:
    Frames_In_Memory(const Simulated_Crystal& crystal, int nx, int ny, int frames) : nx_(nx), ny_(ny) {
        run_.nframes = frames, run_.nbang = 1, run_.scantype = crystal.scan;
        run_.wave = static_cast<float>(crystal.wave);
        run_.gamma = static_cast<float>(crystal.gamma), run_.chi = static_cast<float>(crystal.chi);
        run_.phi = static_cast<float>(crystal.phi);
        run_.tmc_ang = Frame_Values(frame_angle + 1, static_cast<std::size_t>(frames));
        for (int f = 0; f < frames; ++f) {
            run_.tmc_ang.Frame(static_cast<std::size_t>(f))[frame_angle] = static_cast<float>(crystal.Angles(f + 1)[1]);
            Count_Matrix counts{ny, nx, std::vector<int>(static_cast<std::size_t>(nx * ny))};
            for (std::size_t i = 0; i < counts.counts.size(); ++i)
                counts.counts[i] = static_cast<int>((i + static_cast<std::size_t>(f)) * 7919 % 50);
            frames_.push_back(std::move(counts));
        }
    }

    const SXTAL_Numor_Type& Run() const override { return run_; }
    int nx() const override { return nx_; }
    int ny() const override { return ny_; }
    Status Frame(int frame, Count_Matrix& counts) override {
        counts = frames_[static_cast<std::size_t>(frame) - 1];
        return Status::Done();
    }

    double Plain_Pass() const {
        return Milliseconds([this] {
            double sum = 0;
            for (const Count_Matrix& frame : frames_)
                for (const int count : frame.counts) sum += count;
            benchmark::DoNotOptimize(sum);
        });
    }

private:
    int nx_, ny_;
    SXTAL_Numor_Type run_;
    std::vector<Count_Matrix> frames_;
};

void Build_Volume(benchmark::State& state) {
    const auto pixels = static_cast<int>(state.range(0)), frames = static_cast<int>(state.range(1));
    Simulated_Crystal crystal;
    crystal.nx = crystal.ny = pixels;
    crystal.pitch = 160.0 / pixels;
    crystal.step = 20.0 / frames;
    Frames_In_Memory run(crystal, pixels, pixels, frames);
    Pixel_Geometry geometry;
    std::vector<std::string> warnings;
    Matrix3d inverse{};
    if (Pixel_Geometry::Make(crystal.Instrument(), pixels, pixels, geometry, warnings).failed || !Invert(crystal.UB(), inverse)) {
        state.SkipWithError("no geometry");
        return;
    }
    double best = 1e30, plain = 1e30;
    std::size_t cells = 0;
    for (auto _ : state) {
        plain = std::min(plain, run.Plain_Pass());
        best = std::min(best, Milliseconds([&] {
                            Reciprocal_Volume volume;
                            if (Build_Reciprocal_Volume(run, geometry, inverse, volume).failed) state.SkipWithError("refused");
                            cells = volume.z.size();
                        }));
    }
    state.counters["ms"] = best;
    state.counters["passes"] = best / plain;
    state.counters["cells"] = static_cast<double>(cells);
}

BENCHMARK(Build_Volume)
    ->ArgNames({"pixels", "frames"})
    ->Args({64, 40})
    ->Args({256, 100})
    ->Args({512, 100})
    ->Iterations(10)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
