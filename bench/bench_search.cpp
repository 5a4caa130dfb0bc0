// Search of a pattern, as a ratio to a plain pass that reads its points in the same run ("passes").
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "bench/timing.hpp"
#include "calc/search.hpp"

namespace {

using namespace vntl;

// A peak every 120 points over a falling background, with counting noise.
Diffraction_Pattern_Type Noisy_Pattern(int points) {
    Diffraction_Pattern_Type pattern;
    std::mt19937 random(1);
    pattern.npts = points;
    for (int i = 0; i < points; ++i) {
        const double place = (i % 120 - 60) / 4.0, height = 100.0 + i / 120 * 37 % 2000;
        const double counts = 300.0 * (1.0 - 0.5 * i / points) + height * std::exp(-place * place);
        pattern.x.push_back(5.0f + 0.005f * static_cast<float>(i));
        pattern.y.push_back(static_cast<float>(std::poisson_distribution<int>(counts)(random)));
    }
    return pattern;
}

void Plain_Pass(const Diffraction_Pattern_Type& pattern) {
    double sum = 0;
    for (std::size_t i = 0; i < pattern.x.size(); ++i) sum += static_cast<double>(pattern.x[i]) * static_cast<double>(pattern.y[i]);
    benchmark::DoNotOptimize(sum);
}

void Search(benchmark::State& state) {
    const Diffraction_Pattern_Type pattern = Noisy_Pattern(static_cast<int>(state.range(0)));
    PKB_Type found;
    double search = 1e30, plain = 1e30;
    for (auto _ : state) {
        plain = std::min(plain, Milliseconds([&] { Plain_Pass(pattern); }));
        search = std::min(search, Milliseconds([&] {
                              if (Search_Pattern(pattern, -1e30f, 1e30f, Search_Mode::peaks, {}, found).failed)
                                  state.SkipWithError("failed");
                          }));
    }
    state.counters["search_ms"] = search;
    state.counters["passes"] = search / plain;
    state.counters["peaks"] = found.np;
}
BENCHMARK(Search)->Arg(20000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
