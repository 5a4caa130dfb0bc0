// Rows put in order, deleted and taken back, as ratios to one pass that reads all their points in the same run ("passes"). None of these
// copies a point, so that each is a small part of a pass.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <numeric>

#include "bench/timing.hpp"
#include "session/arrange_rows.hpp"
#include "session/changes.hpp"
#include "session/session.hpp"
#include "session/xspace.hpp"

namespace {

using namespace vntl;

constexpr int rows = 2000, points = 5000;

void Fill(Session& session) {
    for (int row = 0; row < rows; ++row) {
        Diffraction_Pattern_Type p;
        p.npts = points;
        p.scat_var = "2theta";
        p.TSample = static_cast<float>(row * 7919 % rows);
        for (int i = 0; i < points; ++i) {
            p.x.push_back(5 + 0.02f * static_cast<float>(i));
            p.y.push_back(static_cast<float>((row + i) * 7919 % 5000));
        }
        PRF_Info_Add_Type info;
        info.file_name = "run" + std::to_string(row * 7919 % rows) + ".dat";
        session.store.Append(std::move(p), std::move(info));
    }
    Set_Xspace(session, "2theta");
}

void Plain_Pass(const Session& session) {
    float sum = 0;
    for (int row = 1; row <= rows; ++row)
        for (const auto* array : {&session.store.Pattern(row).x, &session.store.Pattern(row).y})
            for (const float value : *array) sum += value;
    benchmark::DoNotOptimize(sum);
}

void By_Temperature(Session& session) {
    std::vector<float> keys;
    for (int row = 1; row <= rows; ++row) keys.push_back(session.store.Pattern(row).TSample);
    Sort_Rows(session, Order_Of(keys, false));
}

void By_Name(Session& session) {
    std::vector<std::string> keys;
    for (int row = 1; row <= rows; ++row) keys.push_back(session.store.Info(row).file_name);
    Sort_Rows(session, Order_Of(keys, false));
}

void Delete_Every_Second(Session& session) {
    std::vector<int> every_second;
    for (int row = 1; row <= rows; row += 2) every_second.push_back(row);
    Delete_Rows(session, every_second);
}

void Measure(benchmark::State& state, void (*change)(Session&)) {
    Session session;
    Fill(session);
    double there = 1e30, back = 1e30, plain = 1e30;
    for (auto _ : state) {
        plain = std::min(plain, Milliseconds([&] { Plain_Pass(session); }));
        there = std::min(there, Milliseconds([&] { change(session); }));
        back = std::min(back, Milliseconds([&] {
                            if (!Undo_Change(session)) state.SkipWithError("nothing to take back");
                        }));
    }
    state.counters["ms"] = there;
    state.counters["passes"] = there / plain;
    state.counters["undo_passes"] = back / plain;
}
BENCHMARK_CAPTURE(Measure, sort_by_temperature, By_Temperature)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, sort_by_name, By_Name)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, delete_every_second, Delete_Every_Second)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
