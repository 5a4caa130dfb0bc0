// A surface of 500 x 1,000 vertices with axes as a solid: its triangles for a graphics card, its file, and views from around it on a bitmap
// in each of the six modes, for which it is thinned to 100,000 facets.
//
// "copies" is the ratio to a copy of the vertices (or of the file's text), measured in the same run.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <vector>

#include "bench/timing.hpp"
#include "solid/w3d_draw.hpp"
#include "solid/w3d_file.hpp"
#include "solid/w3d_mesh.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/window.hpp"

namespace {

using namespace vntl;

constexpr int columns = 1000, rows = 500;

// Reflections as ridges over a floor, which move from row to row.
W3d Surface() {
    W3d solid;
    for (int k = 0; k < rows; ++k) {
        for (int i = 0; i < columns; ++i) {
            const float x = static_cast<float>(i) / (columns - 1), z = static_cast<float>(k) / (rows - 1);
            float height = 0;
            for (int peak = 1; peak < 12; ++peak) {
                const float from = (x - static_cast<float>(peak) / 12 - 0.02f * z) / 0.006f;
                height += static_cast<float>(1 + peak * 5 % 7) / 7 / (1 + from * from);
            }
            solid.vertices.push_back({3 * x - 1.5f, 2 * height - 0.8f, 2 * z - 1});
        }
    }
    solid.sheets.push_back({0, columns, rows, 1});
    solid.rods = {{{-1.5f, -0.8f, -1}, {1.5f, -0.8f, -1}, 0.025f, 0.005f}, {{-1.5f, -0.8f, -1}, {-1.5f, -0.8f, 1}, 0.025f, 0.005f}};
    for (int k = 0; k < 5; ++k) {
        const float share = static_cast<float>(k) / 4;
        solid.texts.push_back({std::to_string(20 + 20 * k) + ".0", 102, {3 * share - 1.5f, -0.8f, -1.25f}});
        solid.texts.push_back({std::to_string(100 * k) + ".0", 102, {-1.7f, -0.8f, 2 * share - 1}});
    }
    solid.texts.push_back({"2\u03b8 (degrees)", 102, {0, -0.8f, -1.4f}});
    solid.materials = {WRGB(64, 128, 255), 0, 0, 0, 0, WRGB(192, 212, 30)};
    return solid;
}

W3d_View View_From(double azimuth, Render_Mode mode) { return {From_Polar(22.5, azimuth, 20), From_Polar(45, 0, 12), mode}; }

// Times of `work`, and its ratio to a copy of so many bytes.
template <class Work>
void Measure(benchmark::State& state, std::size_t bytes, const Work& work) {
    const std::vector<char> from(bytes, 1);
    std::vector<char> to(bytes);
    double best = 1e30, copy = 1e30;
    for (auto _ : state) {
        best = std::min(best, Milliseconds(work));
        state.PauseTiming();
        copy = std::min(copy, Milliseconds([&] {
                            std::copy(from.begin(), from.end(), to.begin());
                            benchmark::DoNotOptimize(to.data());
                        }));
        state.ResumeTiming();
    }
    state.counters["best_ms"] = best;
    state.counters["copies"] = best / copy;
}

void Triangles(benchmark::State& state) {
    const W3d solid = Surface();
    Measure(state, solid.vertices.size() * sizeof(Vec3), [&] { benchmark::DoNotOptimize(Mesh_Of(solid)); });
}
BENCHMARK(Triangles)->Iterations(10)->Unit(benchmark::kMillisecond);

void Write(benchmark::State& state) {
    const W3d solid = Surface();
    const W3d_View view = View_From(-45, Render_Mode::gouraud);
    Measure(state, W3d_Text_Of(solid, view).size(), [&] { benchmark::DoNotOptimize(W3d_Text_Of(solid, view)); });
}
BENCHMARK(Write)->Iterations(10)->Unit(benchmark::kMillisecond);

void Read(benchmark::State& state) {
    const std::string text = W3d_Text_Of(Surface(), View_From(-45, Render_Mode::gouraud));
    Measure(state, text.size(), [&] {
        W3d solid;
        W3d_View view;
        if (Read_W3d_Text(text, solid, view).failed) std::abort();
    });
}
BENCHMARK(Read)->Iterations(10)->Unit(benchmark::kMillisecond);

void Turn(benchmark::State& state) {
    const W3d solid = Surface();
    Bitmap bitmap(800, 600);
    double azimuth = -45;
    Measure(state, solid.vertices.size() * sizeof(Vec3),
            [&] { Draw_W3d(solid, View_From(azimuth += 4, static_cast<Render_Mode>(state.range(0))), bitmap.Drawing()); });
}
BENCHMARK(Turn)->ArgName("mode")->DenseRange(0, 5)->Iterations(10)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    vntl::WInitialise(argc, argv, true);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    vntl::WTerminate();
}
