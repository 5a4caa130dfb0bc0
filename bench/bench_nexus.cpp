// Reading of a NeXus file of 10 MB, as a ratio to one plain read of the same file in the same run ("reads"): the other program's start, the
// file's way to it and the numbers' way back are part of it.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "base/os.hpp"
#include "bench/plain_read.hpp"
#include "patterns/read_pattern.hpp"
#include "tests/patterns/nexus_file.hpp"

namespace {

using namespace vntl;

std::string File_Of_Points(hsize_t n, hid_t type) {
    std::vector<double> x(n), y(n), errors(n);
    for (hsize_t i = 0; i < n; ++i) {
        x[i] = 5 + 1e-4 * static_cast<double>(i);
        y[i] = static_cast<double>((i % 6000 * 7919) % 50000);
        errors[i] = std::sqrt(y[i]);
    }
    test::Nexus_File file;
    file.Group("entry", "NXentry").Group("entry/data", "NXdata").Text("entry/data", "signal", "I").Text("entry/data", "axes", "tth");
    file.Values("entry/data/I", y, {n}, "", type).Values("entry/data/I_errors", errors, {n}, "", type);
    return file.Values("entry/data/tth", x, {n}, "deg", type).Bytes();
}

void Read_Nexus(benchmark::State& state, hsize_t n, hid_t type) {
    using Clock = std::chrono::steady_clock;
    const auto milliseconds = [](Clock::time_point start) {
        return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    };
    const std::string name = (std::filesystem::temp_directory_path() / "vantrelo_bench.nxs").string(), bytes = File_Of_Points(n, type);
    std::FILE* file = std::fopen(name.c_str(), "w");
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
    double plain = 1e30, best = 1e30;
    for (int i = 0; i < 5; ++i) {
        const auto start = Clock::now();
        Plain_Read(name);
        plain = std::min(plain, milliseconds(start));
    }
    Diffraction_Pattern_Type pattern;
    for (auto _ : state) {
        const auto start = Clock::now();
        if (Read_Pattern(name, pattern, "NEXUS").failed) state.SkipWithError("not read");
        best = std::min(best, milliseconds(start));
    }
    state.counters["reads"] = best / plain;
    state.counters["points"] = pattern.npts;
    IOsDeleteFile(name);
}
BENCHMARK_CAPTURE(Read_Nexus, doubles, 433'000, H5T_IEEE_F64LE)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Read_Nexus, singles, 866'000, H5T_IEEE_F32LE)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
