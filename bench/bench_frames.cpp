// Runs with pictures: reading 50 MB of them into the store, as a ratio to plain reads of the same files in the same run ("reads"); frames
// of 512 x 512 out of it, whose counts are in memory or have to be read again; cuts through such a frame; a directory of 90,000 names.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/plain_read.hpp"
#include "bench/timing.hpp"
#include "instrument/frame_cuts.hpp"
#include "instrument/frame_store.hpp"
#include "tests/instrument/numor_text.hpp"

namespace {

using namespace vntl;

constexpr std::size_t all_bytes = 50'000'000;
constexpr int large_side = 512;

Numor_Text Run(const char* instrument, std::size_t nframes, int side) {
    std::vector<Numor_Frame> frames(nframes);
    const auto nbdata = static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
    for (std::size_t i = 0; i < nframes; ++i) {
        frames[i].angles = {10 + 0.05 * static_cast<double>(i), 0, 0, 0};
        for (std::size_t k = 0; k < nbdata; ++k) frames[i].counts.push_back(static_cast<long long>((i + k) % 6000 * 7919 % 50000));
    }
    return Numor_Text::Of(instrument, std::move(frames));
}

// A directory for files, which goes with it.
class Files {
public:
    Files() {
        std::filesystem::remove_all(directory_);
        std::filesystem::create_directory(directory_);
    }
    ~Files() { std::filesystem::remove_all(directory_); }

    const std::string& Directory() const { return directory_; }
    std::string Make(const std::string& name, const std::string& text) const {
        std::string file = directory_ + '/' + name;
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }

private:
    std::string directory_ = (std::filesystem::temp_directory_path() / "vantrelo_bench_frames").string();
};

Diffractometer_Type Instrument(const char* name, int side) {
    Diffractometer_Type instrument;
    instrument.name_inst = name;
    instrument.np_horiz = instrument.np_vert = side;
    return instrument;
}

void Read_Runs(benchmark::State& state) {
    const Files directory;
    const auto nframes = static_cast<std::size_t>(state.range(0));
    const int side = static_cast<int>(state.range(1));
    const std::string text = Run("R18", nframes, side).Text();
    std::vector<std::string> files;
    for (std::size_t bytes = 0; bytes < all_bytes; bytes += text.size())
        files.push_back(directory.Make(std::to_string(100000 + files.size()), text));
    double plain = 1e30, best = 1e30;
    for (int i = 0; i < 5; ++i) plain = std::min(plain, Milliseconds([&] { std::for_each(files.begin(), files.end(), Plain_Read); }));
    for (auto _ : state) {
        Frame_Store store;
        best = std::min(best, Milliseconds([&] {
                            for (const std::string& file : files)
                                if (store.Add(file, Instrument("R18", side)).failed) state.SkipWithError("not read");
                        }));
    }
    state.counters["reads"] = best / plain;
    state.counters["files"] = static_cast<double>(files.size());
}

void Step_Frames(benchmark::State& state, const char* instrument, std::size_t most_bytes) {
    const Files directory;
    Frame_Store store(most_bytes);
    if (store.Add(directory.Make("1", Run(instrument, 4, large_side).Text()), Instrument(instrument, large_side)).failed)
        state.SkipWithError("not read");
    Count_Matrix counts;
    int frame = 0;
    for (auto _ : state)
        if (store.Frame(1, frame++ % 4 + 1, counts).failed) state.SkipWithError("no frame");
}

void Cut_Frame(benchmark::State& state) {
    std::vector<float> axis(large_side), z(std::size_t{large_side} * large_side);
    for (std::size_t i = 0; i < axis.size(); ++i) axis[i] = static_cast<float>(i + 1);
    for (std::size_t i = 0; i < z.size(); ++i) z[i] = static_cast<float>(i * 7919 % 50000);
    for (auto _ : state) {
        std::vector<float> scaled = z;
        Scale_Intensities(scaled, Intensity_Scale::logarithm);
        benchmark::DoNotOptimize(Cross_Section({axis, axis, scaled}, 3, 500, 490, 20).y.data());
    }
}

void List_Directory(benchmark::State& state) {
    const Files directory;
    for (int numor = 0; numor < most_names; ++numor) directory.Make(Numor_Name(numor * 7919 % 1000000), "");
    std::vector<Run_In_Directory> runs;
    for (auto _ : state)
        if (Runs_In_Directory(directory.Directory(), runs).failed) state.SkipWithError("not read");
    state.counters["runs"] = static_cast<double>(runs.size());
}

BENCHMARK(Read_Runs)->ArgNames({"frames", "side"})->Args({1, 64})->Args({20, 128})->Args({1, 512})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Step_Frames, by_rows, "R6", most_bytes_of_counts)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Step_Frames, by_columns, "R18", most_bytes_of_counts)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Step_Frames, read_again, "R18", std::size_t{0})->Unit(benchmark::kMillisecond);
BENCHMARK(Cut_Frame)->Unit(benchmark::kMillisecond);
BENCHMARK(List_Directory)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
