// Reading of runs, 50 MB of them in files, as a ratio to plain reads of the same files in the same run ("reads").
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/plain_read.hpp"
#include "bench/timing.hpp"
#include "instrument/read_numor.hpp"
#include "tests/instrument/numor_text.hpp"

namespace {

using namespace vntl;

constexpr std::size_t all_bytes = 50'000'000;

Numor_Text Run(const std::string& instrument, std::size_t nframes, std::size_t nbdata) {
    std::vector<Numor_Frame> frames(nframes);
    for (std::size_t i = 0; i < nframes; ++i) {
        frames[i].angles = {10 + 0.05 * static_cast<double>(i)};
        for (std::size_t k = 0; k < nbdata; ++k) frames[i].counts.push_back(static_cast<long long>((i + k) % 6000 * 7919 % 50000));
    }
    return Numor_Text::Of(instrument, std::move(frames));
}

struct Kind {
    const char* name;
    const char* instrument;
    std::size_t nframes, nbdata;
    char letter;
};
// Few frames in one block, frames of a two-dimensional detector, wide columns, and one large frame a file.
constexpr Kind kinds[] = {
    {"R3A", "R3A", 100, 25, 'I'}, {"R5B", "R5B", 50, 128 * 64, 'I'}, {"R5B wide", "R5B", 50, 128 * 64, 'J'}, {"R22", "R22", 1, 1600, 'I'}};

void Read_Runs(benchmark::State& state, const Kind& kind) {
    const std::string directory = (std::filesystem::temp_directory_path() / "vantrelo_bench_numors").string();
    std::filesystem::remove_all(directory);
    std::filesystem::create_directory(directory);
    Numor_Text run = Run(kind.instrument, kind.nframes, kind.nbdata);
    run.counts_letter = kind.letter;
    const std::string text = run.Text();
    std::vector<std::string> files;
    for (std::size_t bytes = 0; bytes < all_bytes; bytes += text.size()) {
        files.push_back(directory + '/' + std::to_string(100000 + files.size()));
        std::ofstream(files.back(), std::ios::binary) << text;
    }
    double plain = 1e30, best = 1e30;
    for (int i = 0; i < 5; ++i) plain = std::min(plain, Milliseconds([&] { std::for_each(files.begin(), files.end(), Plain_Read); }));
    for (auto _ : state)
        best = std::min(best, Milliseconds([&] {
                            for (const std::string& file : files) {
                                Powder_Numor_Type numor;
                                if (Read_Numor(file, kind.instrument, numor).failed) state.SkipWithError("not read");
                                benchmark::DoNotOptimize(numor.counts.All().data());
                            }
                        }));
    state.counters["reads"] = best / plain;
    state.counters["files"] = static_cast<double>(files.size());
    std::filesystem::remove_all(directory);
}

}  // namespace

int main(int argc, char** argv) {
    for (const Kind& kind : kinds)
        benchmark::RegisterBenchmark(kind.name, [&kind](benchmark::State& state) {
            Read_Runs(state, kind);
        })->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
