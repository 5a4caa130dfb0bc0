// Opening 1000 files as a selection does, with one thread that reads and with two, in plain reads of the same files; and as many as the
// store takes by a list of them, in the time of a command line that names them.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "base/ask.hpp"
#include "base/write_file.hpp"
#include "bench/timing.hpp"
#include "patterns/file_list.hpp"
#include "session/load.hpp"
#include "session/session.hpp"

namespace vntl {
namespace {

constexpr int file_count = 1000, points = 5000;

class Silent : public Ask {
public:
    Box_Answer Box(const Message_Box&) override { return Box_Answer::ok; }
    std::vector<std::string> Select_Files(std::string_view, std::string_view) override { return {}; }
    std::optional<Format_Choice> Data_Format(const Format_Question&) override { return {}; }
};

const std::vector<std::string>& Files() {
    static const std::vector<std::string> files = [] {
        const auto directory = std::filesystem::temp_directory_path() / "vantrelo_bench_loading";
        std::filesystem::create_directories(directory);
        std::vector<std::string> names;
        for (int i = 0; i < file_count; ++i) {
            names.push_back((directory / (std::to_string(i) + ".xye")).string());
            std::FILE* file = std::fopen(names.back().c_str(), "w");
            std::fprintf(file, "title\n");
            for (int k = 0; k < points; ++k) std::fprintf(file, "%10.4f%12.2f%10.3f\n", 5 + 0.02 * k, 100.0 + (k * 37 + i) % 91, 10.5);
            std::fclose(file);
        }
        return names;
    }();
    return files;
}

double Plain_Reads() {
    std::vector<char> bytes(1 << 20);
    return Milliseconds([&] {
        for (const std::string& name : Files()) {
            std::FILE* file = std::fopen(name.c_str(), "rb");
            benchmark::DoNotOptimize(std::fread(bytes.data(), 1, bytes.size(), file));
            std::fclose(file);
        }
    });
}

void Load_Thousand(benchmark::State& state) {
    double least = std::numeric_limits<double>::max(), least_plain = least;
    for ([[maybe_unused]] auto round : state) {
        Session session;
        Silent ask;
        session.config.threads = static_cast<int>(state.range(0));
        least = std::min(least, Milliseconds([&] { Open_Files(session, ask, Files()); }));
        least_plain = std::min(least_plain, Plain_Reads());
        if (session.store.nperfiles() != file_count) state.SkipWithError("not every file was opened");
    }
    state.counters["load_ms"] = least;
    state.counters["reads"] = least / least_plain;
}
BENCHMARK(Load_Thousand)->Arg(1)->Arg(2)->ArgName("threads")->Iterations(5)->Unit(benchmark::kMillisecond);

// Twice the files fill the store.
std::vector<std::string> Names_For_All_Rows() {
    std::vector<std::string> names = Files();
    names.insert(names.end(), Files().begin(), Files().end());
    return names;
}

void Load_List(benchmark::State& state) {
    const std::vector<std::string> names = Names_For_All_Rows();
    const std::string list = std::filesystem::path(names.front()).replace_filename("all.buf").string();
    if (!Replace_File(list, File_List_Text(names))) state.SkipWithError("the list cannot be written");
    const auto open = [&](const std::vector<std::string>& files) {
        Session session;
        Silent ask;
        const double time = Milliseconds([&] { Open_Files(session, ask, files); });
        if (session.store.nperfiles() != max_profiles) state.SkipWithError("not every file was opened");
        return time;
    };
    double least_list = std::numeric_limits<double>::max(), least_names = least_list;
    bool list_first = false;  // in turn: who comes second finds memory in pieces
    for ([[maybe_unused]] auto round : state) {
        list_first = !list_first;
        if (list_first) least_list = std::min(least_list, open({list}));
        least_names = std::min(least_names, open(names));
        if (!list_first) least_list = std::min(least_list, open({list}));
    }
    state.counters["load_ms"] = least_list;
    state.counters["by_names"] = least_list / least_names;
}
BENCHMARK(Load_List)->Iterations(6)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vntl

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::filesystem::remove_all(std::filesystem::temp_directory_path() / "vantrelo_bench_loading");
}
