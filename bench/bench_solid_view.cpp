// A surface of 500 patterns of 1,000 points in its window: what it takes to put it there, until it is seen, and to turn it.
//
// "turn" is the ratio of a turn to that, 1/20 at most on a graphics card; "projection" the ratio of a turn to the projection of the same
// view by our own hand. "opengl" is 2 where a card draws, 1 where the processor does in its place, 0 where the window shows that
// projection.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLWidget>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "bench/timing.hpp"
#include "solid/w3d_draw.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/main_window.hpp"
#include "toolkit/solid_view.hpp"

namespace {

using namespace vntl;

constexpr int patterns = 500, points = 1000, window_width = 800, window_height = 600;

std::shared_ptr<const W3d> Surface() {
    constexpr int peaks = 12;
    auto solid = std::make_shared<W3d>();
    solid->materials.fill(WRGB(60, 140, 220));
    for (int k = 0; k < patterns; ++k)
        for (int i = 0; i < points; ++i) {
            const float x = -1.5f + 3.0f * static_cast<float>(i) / (points - 1), z = -1 + 2.0f * static_cast<float>(k) / (patterns - 1);
            float high = -0.8f;
            for (int p = 0; p < peaks; ++p) {
                const float from = (x + 1.4f - 0.25f * static_cast<float>(p) - 0.05f * std::sin(3 * z)) / 0.02f;
                high += 1.8f / (1 + from * from);
            }
            solid->vertices.push_back({x, high, z});
        }
    solid->sheets = {{0, points, patterns, 1}};
    return solid;
}

// Until everything that was asked of the card is done.
void Finish_Frame() {
    QCoreApplication::processEvents();
    auto* area = dynamic_cast<QOpenGLWidget*>(The_Toolkit().Find_Window(model_window)->Surface(1));
    if (area == nullptr) return;
    area->makeCurrent();
    area->context()->functions()->glFinish();
}

void Solid_Turn(benchmark::State& state) {
    const std::shared_ptr<const W3d> solid = Surface();
    W3d_View view{.light = From_Polar(45, 0, 12), .mode = static_cast<Render_Mode>(state.range(0))};
    double azimuth = -45;
    const auto show = [&](bool turning) {
        view.eye = From_Polar(22.5, azimuth += 1, 20);
        W3dShow(view, turning);
        Finish_Frame();
    };
    const auto best = [](const auto& work) { return std::min({Milliseconds(work), Milliseconds(work), Milliseconds(work)}); };
    const double build = best([&] { W3dPut(solid), show(false); });
    Bitmap paper(window_width, window_height);
    const double projection = best([&] { Draw_W3d(*solid, view, paper.Drawing()); });
    show(true);
    double turn = 1e30;
    for (auto _ : state) turn = std::min(turn, Milliseconds([&] { show(true); }));
    state.counters["build_ms"] = build;
    state.counters["turn"] = turn / build;
    state.counters["projection"] = turn / projection;
    state.counters["opengl"] = static_cast<double>(*The_Toolkit().opengl);
}
BENCHMARK(Solid_Turn)->ArgName("mode")->DenseRange(0, 5)->Iterations(20)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    unsetenv("QT_QPA_PLATFORM");  // OpenGL draws on a display alone
    vntl::WInitialise(argc, argv, true);
    vntl::WindowOpenChild(vntl::model_window, "Solid", window_width, window_height, vntl::Child_Kind::solid);
    vntl::WindowShow();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    vntl::WTerminate();
}
