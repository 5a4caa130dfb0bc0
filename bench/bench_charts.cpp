// A sequential refinement of 10,000 runs: reading it, and with curves of one and of ten of its rows, in plain reads of the same file.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "base/os.hpp"
#include "bench/plain_read.hpp"
#include "bench/timing.hpp"
#include "charts/seq_file.hpp"

namespace {

using namespace vntl;

constexpr int runs = 10000, parameters = 20, first_parameter = 6;

std::string Written_File() {
    const std::string name = (std::filesystem::temp_directory_path() / "vantrelo_bench.seq").string();
    std::FILE* file = std::fopen(name.c_str(), "w");
    for (int run = 0; run < runs; ++run) {
        const double kelvin = 10 + 0.03 * run;
        std::fprintf(file, "NEW_REFINEMENT Ramp\nNUMPAR %d\nN_PATT 1\nNPHASE 1\n\"ramp_%05d.xye\" %d %.4f\n", parameters, run, run + 1,
                     kelvin);
        std::fprintf(file, "GLOBAL_CHI_2 %.4f\nR_FACTOR Rp %.3f 0\nR_FACTOR Rwp %.3f 0\nR_FACTOR Rexp 5.5 0\n", 1 + 1e-5 * run, 5.3, 6.1);
        for (int k = 0; k < parameters; ++k)
            std::fprintf(file, "PARAMETER Parameter_%d_of_phase_1 %.6f %.6f\n", k, 4.1569 + 1e-6 * kelvin * (k + 1), 0.00021);
    }
    std::fclose(file);
    return name;
}

void Sequential_Results(benchmark::State& state) {
    const std::string name = Written_File();
    std::vector<Seq_Choice> rows;
    for (int k = 0; k < state.range(0); ++k) rows.push_back({first_parameter + k, true});
    double least = 1e30, plain = 1e30;
    for ([[maybe_unused]] auto round : state) {
        Seq_File seq;
        Generic_Plots plots;
        bool good = false;
        least = std::min(least, Milliseconds([&] { good = seq.Read(name).ok() && (rows.empty() || seq.Curves(1, rows, plots).ok()); }));
        plain = std::min(plain, Milliseconds([&] { Plain_Read(name); }));
        if (!good || seq.nblocks() != runs) state.SkipWithError("not read");
    }
    state.counters["best_ms"] = least;
    state.counters["reads"] = least / plain;
    IOsDeleteFile(name);
}
BENCHMARK(Sequential_Results)->ArgName("rows")->Arg(0)->Arg(1)->Arg(10)->Iterations(20)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
