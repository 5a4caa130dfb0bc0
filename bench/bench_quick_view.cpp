// Looking through a folder of 500 profile files, in plain reads of the same files; and a step from one to the next with its picture, in
// pictures of the one in hand.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "bench/timing.hpp"
#include "plot/quick_view_picture.hpp"
#include "session/session.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/messages.hpp"

namespace vntl {
namespace {

constexpr int file_count = 500, points = 5000, reflections = 400;
constexpr int window_width = 400, window_height = 300;

class Silent : public Ask {
public:
    Box_Answer Box(const Message_Box&) override { return Box_Answer::ok; }
    std::vector<std::string> Select_Files(std::string_view, std::string_view) override { return {}; }
    std::optional<Format_Choice> Data_Format(const Format_Question&) override { return {}; }
};

std::filesystem::path Folder() { return std::filesystem::temp_directory_path() / "vantrelo_bench_quick_view"; }

void Write_File(int number) {
    std::FILE* file = std::fopen((Folder() / (std::to_string(number) + ".prf")).c_str(), "w");
    std::fprintf(file, "A furnace TEMP: %8.3f\n  1%7d%12.5f%12.5f%12.5f%12.5f%12.5f\n %d 0\n       0\n", 300.0 + number, points, 1.54056,
                 1.5444, 0.0, 0.0, 0.0, reflections);
    std::fprintf(file, "%-53.53s\n", " 2Theta\tYobs\tYcalc\tdiff\tBackg.............................................");
    for (int i = 0; i < points; ++i) {
        const double calculated = 100 + 900 * std::exp(-std::pow(std::fmod(i, 100) / 100 - 0.5, 2) * 200);
        const double observed = calculated + (i * 37 + number) % 61 - 30;
        std::fprintf(file, "%12.4f\t%8.1f\t%8.1f\t%8.1f\t%8.1f\n", 5 + 0.02 * i, observed, calculated, observed - calculated, 90.0);
    }
    std::fprintf(file, "Reflections of phase: 1\n");
    for (int j = 0; j < reflections; ++j)
        std::fprintf(file, "%12.4f%37s%8d\t(%3d%3d%3d)\t%3d%3d\n", 5 + 0.24 * j, "", 1, j % 9, j % 7, j % 5, 1, 1);
    std::fclose(file);
}

double Plain_Reads() {
    std::vector<char> bytes(4 << 20);
    return Milliseconds([&] {
        for (int i = 0; i < file_count; ++i) {
            std::FILE* file = std::fopen((Folder() / (std::to_string(i) + ".prf")).c_str(), "rb");
            benchmark::DoNotOptimize(std::fread(bytes.data(), 1, bytes.size(), file));
            std::fclose(file);
        }
    });
}

void Look_Through_Folder(benchmark::State& state) {
    double least = std::numeric_limits<double>::max(), least_plain = least;
    for ([[maybe_unused]] auto round : state) {
        Session session;
        Silent ask;
        session.config.threads = static_cast<int>(state.range(0));
        least = std::min(least, Milliseconds([&] { Look_Through(session, ask, Folder().string()); }));
        least_plain = std::min(least_plain, Plain_Reads());
        if (session.quick_view.Count() != file_count) state.SkipWithError("not every file was read");
    }
    state.counters["walk_ms"] = least;
    state.counters["reads"] = least / least_plain;
}
BENCHMARK(Look_Through_Folder)->Arg(1)->Arg(2)->ArgName("threads")->Iterations(5)->Unit(benchmark::kMillisecond);

void Step_To_Next(benchmark::State& state) {
    Session session;
    Silent ask;
    Look_Through(session, ask, Folder().string());
    const auto draw = [&session] {
        Bitmap bitmap(window_width, window_height);
        Draw_Quick_View(session.quick_view, session.prefs, bitmap.Drawing());
        benchmark::DoNotOptimize(bitmap.Pixel(1, 1));
    };
    double least = std::numeric_limits<double>::max(), least_draw = least;
    int index = 1;
    for ([[maybe_unused]] auto round : state) {
        index = index % file_count + 1;
        const double step = Milliseconds([&] {
            if (Show_Quick_File(session, index).failed) state.SkipWithError("a file cannot be read");
            draw();
        });
        least = std::min(least, step);
        least_draw = std::min(least_draw, Milliseconds(draw));
    }
    state.counters["step_ms"] = least;
    state.counters["redraws"] = least / least_draw;
}
BENCHMARK(Step_To_Next)->Iterations(100)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vntl

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    vntl::WInitialise(argc, argv, true);
    std::filesystem::create_directories(vntl::Folder());
    for (int i = 0; i < vntl::file_count; ++i) vntl::Write_File(i);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::filesystem::remove_all(vntl::Folder());
    vntl::WTerminate();
}
