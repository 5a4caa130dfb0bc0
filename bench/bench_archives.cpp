// Reading of archives of XML, as a ratio to unpacking the same members in the same run ("unpackings").
#include <benchmark/benchmark.h>
#include <zip.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/os.hpp"
#include "base/text_file.hpp"
#include "patterns/lab/brml.hpp"
#include "patterns/lab/rasx.hpp"

namespace {

using namespace vntl;

struct Member {
    std::string name, bytes;
};

int Count(int i) { return (i % 6000 * 7919) % 50000; }

template <class... Values>
void Print(std::string& text, const char* layout, Values... values) {
    char line[200];
    std::snprintf(line, sizeof line, layout, values...);
    text += line;
}

std::vector<Member> Brml() {
    constexpr int points = 220000;
    std::string text =
        "<RawData><DataRoutes><DataRoute><ScanInformation ScanName=\"LockedCoupled\"><ScanAxes><ScanAxisInfo AxisId=\"TwoTheta\">"
        "<Start>5</Start><Increment>0.0005</Increment></ScanAxisInfo></ScanAxes></ScanInformation>\n";
    for (int i = 0; i < points; ++i) Print(text, "      <Datum>76.8,1,%.4f,%.4f,%d</Datum>\r\n", 5 + 5e-4 * i, 2.5 + 2.5e-4 * i, Count(i));
    text +=
        "<DataViews><RawDataView Start=\"1\" Length=\"1\" LogicName=\"AbsorptionFactor\"/><RawDataView Start=\"2\" Length=\"2\"><Varying>"
        "<FieldDefinitions FieldName=\"TwoTheta\"/></Varying></RawDataView><RawDataView Start=\"4\" Length=\"1\">"
        "<Recording Category=\"Count\"/></RawDataView></DataViews></DataRoute></DataRoutes></RawData>";
    return {{"Experiment0/RawData0.xml", text}};
}

std::vector<Member> Rasx() {
    constexpr int points = 360000;
    std::string text;
    for (int i = 0; i < points; ++i) Print(text, "%.4f\t%.13f\t1\r\n", 5 + 3e-4 * i, Count(i) / 7.0);
    return {{"Data0/Profile0.txt", text}};
}

void Write(const std::string& name, const std::vector<Member>& members) {
    zip_t* const archive = zip_open(name.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const Member& member : members)
        zip_file_add(archive, member.name.c_str(), zip_source_buffer(archive, member.bytes.data(), member.bytes.size(), 0), 0);
    zip_close(archive);
}

void Unpack(const std::string& name) {
    zip_t* const archive = zip_open(name.c_str(), ZIP_RDONLY, nullptr);
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
        zip_stat_t stat;
        zip_stat_index(archive, static_cast<zip_uint64_t>(i), 0, &stat);
        std::vector<char> bytes(stat.size);
        zip_file_t* const member = zip_fopen_index(archive, static_cast<zip_uint64_t>(i), 0);
        benchmark::DoNotOptimize(zip_fread(member, bytes.data(), bytes.size()));
        zip_fclose(member);
    }
    zip_discard(archive);
}

double Milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

using Reader = Status (*)(std::string_view, std::vector<Diffraction_Pattern_Type>&, Read_Notes&);

void Read(benchmark::State& state, const std::vector<Member>& members, Reader read) {
    const std::string name = (std::filesystem::temp_directory_path() / "vantrelo_bench.zip").string();
    Write(name, members);
    double best = 1e30, plain = 1e30;
    std::vector<Diffraction_Pattern_Type> patterns;
    for (auto _ : state) {
        plain = std::min(plain, Milliseconds([&] { Unpack(name); }));
        best = std::min(best, Milliseconds([&] {
                            Text_File file;
                            Read_Notes notes;
                            if (file.Open(name).failed || read(file.Text(), patterns, notes).failed) state.SkipWithError("not read");
                        }));
    }
    state.counters["unpackings"] = best / plain;
    if (!patterns.empty()) state.counters["points"] = patterns.front().npts;
    IOsDeleteFile(name);
}

void Read_Brml_Archive(benchmark::State& state) { Read(state, Brml(), Read_Brml); }
void Read_Rasx_Archive(benchmark::State& state) { Read(state, Rasx(), Read_Rasx); }
BENCHMARK(Read_Brml_Archive)->Unit(benchmark::kMillisecond)->Iterations(7);
BENCHMARK(Read_Rasx_Archive)->Unit(benchmark::kMillisecond)->Iterations(7);

}  // namespace

BENCHMARK_MAIN();
