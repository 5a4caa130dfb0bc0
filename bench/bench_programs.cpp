// Starting another program from a session full of rows, in bare starts of the same program measured in between.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <vector>

#include "base/programs.hpp"
#include "bench/synthetic_rows.hpp"
#include "bench/timing.hpp"
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

}  // namespace
}  // namespace vntl

BENCHMARK_MAIN();
