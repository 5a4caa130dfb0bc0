// Conversion of all rows from one x space to another, as ratios to a plain pass that reads and writes the same arrays in the same run
// ("passes"). There and back: each way has its own figure, and that of its plain pass is taken beside it.
#include <benchmark/benchmark.h>

#include "bench/timing.hpp"
#include "calc/x_conversion.hpp"
#include "session/session.hpp"
#include "session/xspace.hpp"

namespace {

using namespace vntl;

constexpr int rows = 2000, points = 5000;

class No_Questions : public Ask {
public:
    Box_Answer Box(const Message_Box&) override { return Box_Answer::ok; }
    std::vector<std::string> Select_Files(std::string_view, std::string_view) override { return {}; }
    std::optional<Format_Choice> Data_Format(const Format_Question&) override { return {}; }
};

Session Fill(const char* space, X_Constants constants, float first, float last) {
    Session session;
    for (int row = 0; row < rows; ++row) {
        Diffraction_Pattern_Type p;
        p.npts = points;
        p.scat_var = space;
        p.conv = constants;
        p.nd.assign(points, 1);
        for (int i = 0; i < points; ++i) {
            p.x.push_back(first + (last - first) * static_cast<float>(i) / (points - 1));
            p.y.push_back(static_cast<float>((row + i) * 7919 % 5000));
        }
        session.store.Append(std::move(p), {});
    }
    Set_Xspace(session, space);
    return session;
}

void Plain_Pass(Session& session) {
    for (int row = 1; row <= rows; ++row) {
        Diffraction_Pattern_Type& p = session.store.Pattern(row);
        for (auto* reals : {&p.x, &p.y})
            for (float& value : *reals) value = -value;
        for (std::int32_t& value : p.nd) value = -value;
    }
    benchmark::ClobberMemory();
}

struct Best {
    double conversion = 1e30, plain = 1e30;
};

void Convert(Session& session, X_Space target, benchmark::State& state, Best& best) {
    No_Questions nobody;
    best.plain = std::min(best.plain, Milliseconds([&] { Plain_Pass(session); }));
    Plain_Pass(session);  // the signs are as before
    best.conversion = std::min(best.conversion, Milliseconds([&] {
                                   if (Convert_Xspace(session, nobody, target).failed) state.SkipWithError("not converted");
                               }));
}

void There_And_Back(benchmark::State& state, Session session, X_Space target) {
    const X_Space origin = session.plot.xspace;
    Best there, back;
    for (auto _ : state) {
        Convert(session, target, state, there);
        Convert(session, origin, state, back);
    }
    state.counters["there_ms"] = there.conversion;
    state.counters["there_passes"] = there.conversion / there.plain;
    state.counters["back_ms"] = back.conversion;
    state.counters["back_passes"] = back.conversion / back.plain;
}

void Angle_To_D(benchmark::State& state) { There_And_Back(state, Fill("2theta", {1.5406f}, 5, 155), X_Space::d_space); }
void Angle_To_Q(benchmark::State& state) { There_And_Back(state, Fill("2theta", {1.5406f}, 5, 155), X_Space::q_space); }
void Time_To_D(benchmark::State& state) { There_And_Back(state, Fill("TOF", {1000, -3}, 500, 30000), X_Space::d_space); }
BENCHMARK(Angle_To_D)->Unit(benchmark::kMillisecond)->Iterations(8);
BENCHMARK(Angle_To_Q)->Unit(benchmark::kMillisecond)->Iterations(8);
BENCHMARK(Time_To_D)->Unit(benchmark::kMillisecond)->Iterations(8);

}  // namespace

BENCHMARK_MAIN();
