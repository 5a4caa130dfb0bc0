// The filters on a million points, as a ratio to a plain pass that reads and writes them in the same run ("passes").
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "bench/timing.hpp"
#include "calc/smoothing.hpp"

namespace {

using namespace vntl;

constexpr int points = 1'000'000;

template <class Filter>
void Measure(benchmark::State& state, Filter filter) {
    std::vector<float> counts(points);
    for (int i = 0; i < points; ++i)
        counts[static_cast<std::size_t>(i)] = static_cast<float>(1000 + 500 * std::sin(0.001 * i) + i * 37 % 41);
    double best = 1e30, plain = 1e30;
    for (auto _ : state) {
        std::vector<float> y = counts;
        plain = std::min(plain, Milliseconds([&] {
                             for (float& v : y) v *= 1.0001f;
                             benchmark::DoNotOptimize(y.data());
                         }));
        best = std::min(best, Milliseconds([&] { filter(y); }));
    }
    state.counters["filter_ms"] = best;
    state.counters["passes"] = best / plain;
}

void Fourier(benchmark::State& state) {
    Measure(state, [](std::vector<float>& y) { Fourier_Filter(y, 5); });
}
void Five_Points(benchmark::State& state) {
    Measure(state, [](std::vector<float>& y) { Five_Point_Filter(y); });
}
BENCHMARK(Fourier)->Unit(benchmark::kMillisecond);
BENCHMARK(Five_Points)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
