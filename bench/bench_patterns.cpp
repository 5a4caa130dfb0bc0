// Reading of large text patterns, as a ratio to one plain read of the same file in the same run ("reads").
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>

#include "base/os.hpp"
#include "base/text_file.hpp"
#include "patterns/read_pattern.hpp"

namespace {

using namespace vntl;

double Milliseconds(const std::function<void()>& work) {
    double best = 1e30;
    for (int i = 0; i < 5; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        best = std::min(best, std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}

// A plain read into memory that the program did not have before, as a program that opens one file needs it.
double Plain_Read(const std::string& name) {
    return Milliseconds([&] {
        const int file = open(name.c_str(), O_RDONLY);
        const auto size = static_cast<std::size_t>(lseek(file, 0, SEEK_END));
        lseek(file, 0, SEEK_SET);
        void* bytes = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        benchmark::DoNotOptimize(read(file, bytes, size));
        munmap(bytes, size);
        close(file);
    });
}

void Read(benchmark::State& state, const char* ending, const char* mode, const std::function<void(std::FILE*)>& write) {
    const std::string name = (std::filesystem::temp_directory_path() / "vantrelo_bench").string() + ending;
    std::FILE* file = std::fopen(name.c_str(), "w");
    write(file);
    std::fclose(file);
    const double plain = Plain_Read(name);
    Diffraction_Pattern_Type pattern;
    double best = 1e30;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        if (Read_Pattern(name, pattern, mode).failed) state.SkipWithError("not read");
        best = std::min(best, std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    state.counters["reads"] = best / plain;
    state.counters["points"] = pattern.npts;
    IOsDeleteFile(name);
}

void Read_Xysigma(benchmark::State& state) {
    Read(state, ".xye", "XYSIGMA", [](std::FILE* file) {
        for (int i = 0; i < 1'000'000; ++i)
            std::fprintf(file, "%8.4f %6d %5.1f\n", 5 + 1e-4 * i, (i % 6000 * 7919) % 5000, (i % 300) / 10.0);
    });
}
BENCHMARK(Read_Xysigma)->Unit(benchmark::kMillisecond);

void Read_Free_Format(benchmark::State& state) {
    Read(state, ".dat", "FREEFORMAT", [](std::FILE* file) {
        std::fprintf(file, "title\n5.0 0.0001 104.9999\n");
        for (int i = 0; i < 1'000'000; ++i) std::fprintf(file, i % 10 == 9 ? "%8d\n" : "%8d", (i % 6000 * 7919) % 50000);
    });
}
BENCHMARK(Read_Free_Format)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
