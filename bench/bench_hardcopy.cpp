// A picture of many points as a file of each kind, from the store to the text that would be written, beside the redraw of the same rows
// on the screen: "redraws" is the ratio of the two, 20 at most. "MB" is the size of the file.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>

#include "bench/synthetic_rows.hpp"
#include "bench/timing.hpp"
#include "commands/ask_user.hpp"
#include "plot/plot.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/hardcopy.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"

namespace {

using namespace vntl;

constexpr int width = 1200, height = 800;

struct Format {
    const char* name;
    const char* ending;
};
constexpr Format formats[] = {{"PostScript", ".ps"}, {"SVG", ".svg"}, {"PDF", ".pdf"}, {"DXF", ".dxf"},
                              {"CGM", ".cgm"},       {"EMF", ".emf"}, {"WMF", ".wmf"}};

void Write_File(benchmark::State& state, const Format& format) {
    Session session;
    Fill_Store(session, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), 40);
    const auto draw = [&session](Device& device) { Draw_With_Marks(Scene_Of(session), device); };
    double redraw = 1e30, best = 1e30;
    Bitmap bitmap(width, height);
    for (int i = 0; i < 10; ++i) redraw = std::min(redraw, Milliseconds([&] { draw(bitmap.Drawing()); }));
    const std::string file = (std::filesystem::temp_directory_path() / "vantrelo_bench").string() + format.ending;
    Hardcopy_Driver driver{};
    Hardcopy_Options options;
    if (!Driver_Of_Name(file, driver, options.format)) state.SkipWithError("no such format");
    for (auto _ : state)
        best = std::min(best, Milliseconds([&] {
                            if (HardCopy(driver, file, options, draw).failed) state.SkipWithError("not written");
                        }));
    state.counters["best_ms"] = best;
    state.counters["redraws"] = best / redraw;
    state.counters["MB"] = static_cast<double>(std::filesystem::file_size(file)) / 1e6;
    std::filesystem::remove(file);
}

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    vntl::WInitialise(argc, argv, true);
    for (const Format& format : formats)
        benchmark::RegisterBenchmark(format.name, [format](benchmark::State& state) { Write_File(state, format); })
            ->Args({100, 20000})
            ->Args({1, 1'000'000})
            ->Iterations(3)
            ->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    vntl::WTerminate();
}
