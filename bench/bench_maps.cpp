// Maps of a series of 2000 patterns of 5,000 points: reflections that move with the temperature and give way to others, counts with the
// noise of counting, drawn on a bitmap in each of the five types.
//
// "passes" is the ratio to adding up all values of the grid once, measured in the same run.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <random>

#include "bench/timing.hpp"
#include "drawing/presentation.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/window.hpp"

namespace {

using namespace vntl;

constexpr int patterns = 2000, points = 5000, levels = 20;

struct Series_Grid {
    std::vector<float> x, y, z;
    Extremes range;

    Series_Grid() {
        constexpr int reflections = 20;
        constexpr float first = 5, last = 120, width = 0.08f;
        std::mt19937 random(1);
        std::normal_distribution<float> noise;
        std::array<std::array<float, 3>, reflections> peaks;  // place, height, shift
        for (auto& peak : peaks)
            peak = {std::uniform_real_distribution<float>(first, last)(random), std::exponential_distribution<float>(1 / 1500.0f)(random),
                    std::uniform_real_distribution<float>(-1, 1)(random)};
        for (int i = 0; i < points; ++i) x.push_back(first + (last - first) * static_cast<float>(i) / (points - 1));
        for (int k = 0; k < patterns; ++k) {
            const float share = static_cast<float>(k) / patterns;
            y.push_back(300 + 500 * share);
            for (const float at : x) z.push_back(100 + 200 * std::exp(-at / 40));
            float* const row = z.data() + z.size() - points;
            for (int p = 0; p < reflections; ++p) {
                const auto& [place, height, shift] = peaks[static_cast<std::size_t>(p)];
                const float part = 1 / (1 + std::exp((p % 2 == 0 ? share - 0.5f : 0.5f - share) * 40));
                for (int i = 0; i < points; ++i) {
                    const float from = (x[static_cast<std::size_t>(i)] - place - shift * share) / width;
                    row[i] += height * part / (1 + from * from);
                }
            }
            for (int i = 0; i < points; ++i) row[i] = std::max(0.0f, std::round(row[i] + std::sqrt(row[i]) * noise(random)));
        }
        range = Finite_Extremes(z);
    }
};

const Series_Grid& Grid() {
    static const Series_Grid grid;
    return grid;
}

void Draw(Device& device, int type) {
    const Series_Grid& grid = Grid();
    Graphics graphics(device);
    Presentation plot(graphics);
    plot.IPgArea(0.12f, 0.12f, 0.92f, 0.9f);
    plot.IPgUnitsXYZ(grid.x.front(), grid.x.back(), grid.y.front(), grid.y.back(), grid.range.low, grid.range.high);
    const unsigned option = type == 2 || type == 4 ? option_contoured + option_smooth : option_contoured;
    plot.IPgNewPlot(8, type <= 2 ? 10 : type <= 4 ? 2 : levels, points, patterns, option);
    plot.IPgStyle(1, {.line_colour = WRGB(50, 50, 235)});
    plot.IPgStyle(2, {.line_colour = WRGB(235, 50, 50)});
    std::array<float, levels> at{};
    for (int k = 1; k <= levels; ++k)
        at[static_cast<std::size_t>(k - 1)] = grid.range.low + static_cast<float>(k) * (grid.range.high - grid.range.low) / levels;
    if (type <= 2)
        plot.IPgContour2({grid.x, grid.y, grid.z});
    else if (type <= 4)
        plot.IPgConGrad2({grid.x, grid.y, grid.z});
    else
        plot.IPgConFill2({grid.x, grid.y, grid.z}, at, 30);
}

void Map(benchmark::State& state) {
    const Series_Grid& grid = Grid();
    Bitmap bitmap(1200, 800);
    double best = 1e30, pass = 1e30;
    for (auto _ : state) {
        best = std::min(best, Milliseconds([&] { Draw(bitmap.Drawing(), static_cast<int>(state.range(0))); }));
        state.PauseTiming();
        pass = std::min(pass, Milliseconds([&] { benchmark::DoNotOptimize(std::accumulate(grid.z.begin(), grid.z.end(), 0.0f)); }));
        state.ResumeTiming();
    }
    state.counters["best_ms"] = best;
    state.counters["passes"] = best / pass;
}
BENCHMARK(Map)->ArgName("type")->DenseRange(1, 5)->Iterations(10)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    vntl::WInitialise(argc, argv, true);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    vntl::WTerminate();
}
