// Starting another program from a session full of rows, in bare starts of the same program measured in between; and saving the peaks for
// each program that reads them, in parts of the 5 ms within which it shall be done.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "base/programs.hpp"
#include "base/write_file.hpp"
#include "bench/synthetic_rows.hpp"
#include "bench/timing.hpp"
#include "external/peaks_file.hpp"
#include "external/program_suite.hpp"

extern char** environ;

namespace vntl {
namespace {

constexpr int rows = 2000, points = 5000, rounds = 400;

double Median(std::vector<double>& times) {
    std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2), times.end());
    return times[times.size() / 2];
}

// The ends of the programs are waited for between the measurements.
void Start_With_Full_Store(benchmark::State& state) {
    Session session;
    Fill_Store(session, rows, points, 3);
    const Programs programs;
    Program_Suite suite = Suite_Of_System("LINU");
    suite.quendrix_dir = "/bin";
    suite.programs[static_cast<std::size_t>(Program_Role::prg_studio)] = "true";
    suite.programs[static_cast<std::size_t>(Program_Role::cmd_editor)] = "true";
    const bool in_suite = state.range(0) == 1;
    for ([[maybe_unused]] auto round : state) {
        std::vector<double> starts, bare;
        for (int i = 0; i < rounds; ++i) {
            Running_Program running;
            starts.push_back(Milliseconds([&] {
                Command_Line command = in_suite ? suite.In_Suite(Program_Role::prg_studio) : suite.By_Name(Program_Role::cmd_editor);
                if (programs.Start(command.File("/home/some one/model.pcr"), running).failed) state.SkipWithError("it was not started");
            }));
            if (!running.Ended_Within(std::chrono::seconds(10))) state.SkipWithError("it does not end");
            char name[] = "true", file[] = "/home/some one/model.pcr";
            char* words[] = {name, file, nullptr};
            pid_t process = 0;
            bare.push_back(
                Milliseconds([&] { benchmark::DoNotOptimize(posix_spawn(&process, "/bin/true", nullptr, nullptr, words, environ)); }));
            int status = 0;
            if (waitpid(process, &status, 0) != process) state.SkipWithError("the bare one was not started");
        }
        const double start = Median(starts), least = Median(bare);
        state.counters["start_ms"] = start;
        state.counters["bare_starts"] = start / least;
    }
}
BENCHMARK(Start_With_Full_Store)->Arg(1)->Arg(0)->ArgName("by_path")->Iterations(1)->Unit(benchmark::kMillisecond);

Status Peaks_Text(Peaks_Format format, const Points_Source& source, const std::vector<Peak_Mark>& peaks, std::string& text) {
    switch (format) {
        case Peaks_Format::free_format:
            return Free_Peaks_File(source, peaks, text);
        case Peaks_Format::vecfind:
            return Vecfind_File(source, Vecfind_Input_Of(source, "", "title", 1.54f), peaks, text);
        case Peaks_Format::dicvol:
            return Dicvol_File(source, {.title = {}, .lines = static_cast<int>(peaks.size()), .wavelength = 1.54f}, peaks, text);
        case Peaks_Format::ito:
            return Ito_File({.title = {}, .wavelength = 1.54f}, peaks, text);
        case Peaks_Format::treor:
            break;
    }
    return Treor_File(source, {.title = {}, .wavelength = 1.54f}, peaks, text);
}

void Save_Peaks(benchmark::State& state) {
    constexpr double allowed = 5;
    const std::string file = std::filesystem::temp_directory_path() / "vantrelo_bench_peaks.txt";
    std::vector<Peak_Mark> peaks;
    for (int i = 0; i < 400; ++i) peaks.push_back({5 + 0.3f * static_cast<float>(i), 1000.5f + static_cast<float>(i * 37 % 91), 10.25f});
    const Points_Source source = {
        .path = file, .file_name = "a.dat", .instr = "XYDATA", .scat_var = "2theta", .xspace = "2theta", .date = Date_Text_Of_Now()};
    double save = std::numeric_limits<double>::max();
    for ([[maybe_unused]] auto round : state)
        save =
            std::min(save, Milliseconds([&] {
                         std::string text;
                         if (Peaks_Text(static_cast<Peaks_Format>(state.range(0)), source, peaks, text).failed || !Replace_File(file, text))
                             state.SkipWithError("it was not saved");
                     }));
    std::filesystem::remove(file);
    state.counters["save_ms"] = save;
    state.counters["allowed"] = save / allowed;
}
BENCHMARK(Save_Peaks)->DenseRange(0, 4)->ArgName("format")->Iterations(50)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vntl

BENCHMARK_MAIN();
