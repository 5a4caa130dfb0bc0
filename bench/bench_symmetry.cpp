// Reflections and settings of space groups as ratios to a peer that does the same in the same run (the headers of gemmi, a library of
// crystallography), and to a bare loop over the indices.
//
// The peer makes its list of what its headers offer: three loops over h k l, its test of the asymmetric unit, spacing, absence and
// multiplicity of each, and a comparison sort. A cubic cell of 30 angstroms gives some 43,400 reflections.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <gemmi/symmetry.hpp>
#include <gemmi/unitcell.hpp>
#include <iostream>
#include <string>
#include <vector>

#include "bench/timing.hpp"
#include "crystal/reflections.hpp"
#include "crystal/settings.hpp"

namespace {

using namespace vntl;

[[noreturn]] void Stop(const std::string& message) {
    std::cerr << message << "\n";
    std::exit(1);
}

void Check(const Status& status) {
    if (status.failed) Stop(status.message);
}

struct Case {
    const char* name;
    std::string symbol;
    std::array<float, 6> cell;
    float d_least;
    bool from_0;                        // no index of the peer's asymmetric unit is below 0; of the others l is not
    double goal_to_peer, goal_to_loop;  // the ratios should stay below; 0 where none is set

    Crystal_Cell_Type Cell() const {
        Crystal_Cell_Type made;
        Check(Set_Crystal_Cell({cell[0], cell[1], cell[2]}, {cell[3], cell[4], cell[5]}, made));
        return made;
    }
    Space_Group_Type Group() const {
        Space_Group_Type made;
        Check(Set_SpaceGroup(symbol, made));
        return made;
    }
};

// ---- reflections

struct Peer_Reflection {
    gemmi::Miller hkl;
    int mult;
    double d;
};

std::vector<Peer_Reflection> Peer_Reflections(const Case& c) {
    constexpr double margin = 1e-6;
    const gemmi::UnitCell cell(c.cell[0], c.cell[1], c.cell[2], c.cell[3], c.cell[4], c.cell[5]);
    const gemmi::SpaceGroup* group = gemmi::find_spacegroup_by_name(c.symbol);
    if (group == nullptr) Stop("the peer knows no group " + c.symbol);
    const gemmi::ReciprocalAsu asu(group);
    const gemmi::GroupOps operators = group->operations();
    const bool centrosymmetric = operators.is_centrosymmetric();
    const int order = static_cast<int>(operators.sym_ops.size()) * (centrosymmetric ? 1 : 2);
    const double least = c.d_least * (1 - margin), most = 1 / (least * least);
    const gemmi::Miller limit = cell.get_hkl_limits(least),
                        first = c.from_0 ? gemmi::Miller{0, 0, 0} : gemmi::Miller{-limit[0], -limit[1], 0};
    std::vector<Peer_Reflection> list;
    gemmi::Miller hkl;
    for (hkl[0] = first[0]; hkl[0] <= limit[0]; ++hkl[0])
        for (hkl[1] = first[1]; hkl[1] <= limit[1]; ++hkl[1])
            for (hkl[2] = first[2]; hkl[2] <= limit[2]; ++hkl[2]) {
                if (!asu.is_in(hkl)) continue;
                const double q = cell.calculate_1_d2(hkl);
                if (q == 0 || q > most || operators.is_systematically_absent(hkl)) continue;
                const int same = operators.epsilon_factor_without_centering(hkl);
                const bool centric = !centrosymmetric && operators.is_reflection_centric(hkl);
                list.push_back({hkl, order / (centric ? 2 * same : same), 1 / std::sqrt(q)});
            }
    std::sort(list.begin(), list.end(), [](const auto& a, const auto& b) { return a.d > b.d; });
    return list;
}

// How many points of half of the index box lie in the sphere: what any list needs at least when it tries them all.
std::size_t Count_In_Half_Sphere(const Crystal_Cell_Type& cell, double d_least) {
    const double most = 1 / (d_least * d_least);
    const auto limit = [&](std::size_t i) { return static_cast<int>(cell.cell[i] / d_least); };
    const Tensor3& g = cell.GR;
    std::size_t n = 0;
    for (int h = -limit(0); h <= limit(0); ++h)
        for (int k = -limit(1); k <= limit(1); ++k)
            for (int l = 0; l <= limit(2); ++l) {
                const double q =
                    g[0][0] * h * h + g[1][1] * k * k + g[2][2] * l * l + 2 * (g[0][1] * h * k + g[0][2] * h * l + g[1][2] * k * l);
                n += q <= most;
            }
    return n;
}

double Sum_Of_Mult(const auto& list, auto mult) {
    double sum = 0;
    for (const auto& reflection : list) sum += reflection.*mult;
    return sum;
}

void Reflections(benchmark::State& state, const Case& c) {
    const Crystal_Cell_Type cell = c.Cell();
    const Space_Group_Type group = c.Group();
    double ours = 1e30, peer = 1e30, loop = 1e30;
    for (auto _ : state) {
        Reflection_List_Type list;
        for (int repeat = 0; repeat < 5; ++repeat)  // the peer takes longer: ours has its share of the time
            ours = std::min(ours, Milliseconds([&] { Check(Hkl_Uni_Reflect(cell, group, true, c.d_least, 1e9f, "r", list)); }));
        std::vector<Peer_Reflection> theirs;
        peer = std::min(peer, Milliseconds([&] { theirs = Peer_Reflections(c); }));
        loop = std::min(loop, Milliseconds([&] { benchmark::DoNotOptimize(Count_In_Half_Sphere(cell, c.d_least)); }));
        if (list.Ref.size() != theirs.size() ||
            Sum_Of_Mult(list.Ref, &Reflection_Type::Mult) != Sum_Of_Mult(theirs, &Peer_Reflection::mult))
            Stop(c.symbol + ": the lists differ: " + std::to_string(list.NRef) + " " + std::to_string(theirs.size()));
        state.counters["reflections"] = list.NRef;
    }
    state.counters["ours_ms"] = ours;
    state.counters["peer_ms"] = peer;
    state.counters["loop_ms"] = loop;
    state.counters["to_peer"] = ours / peer;
    state.counters["to_loop"] = ours / loop;
    if (c.goal_to_peer > 0) state.counters["goal_to_peer"] = c.goal_to_peer;
    if (c.goal_to_loop > 0) state.counters["goal_to_loop"] = c.goal_to_loop;
}

// ---- settings

void All_Settings(benchmark::State& state) {
    double ours = 1e30, peer = 1e30;
    for (auto _ : state) {
        ours = std::min(ours, Milliseconds([] {
                            for (const Setting& setting : Settings()) benchmark::DoNotOptimize(Group_Of(setting).Operators().data());
                        }));
        peer = std::min(peer, Milliseconds([] {
                            for (const gemmi::SpaceGroup& setting : gemmi::spacegroup_tables::main)
                                benchmark::DoNotOptimize(setting.operations().sym_ops.data());
                        }));
    }
    state.counters["settings"] = static_cast<double>(Settings().size());
    state.counters["ours_ms"] = ours;
    state.counters["peer_ms"] = peer;
    state.counters["ratio"] = ours / peer;
    state.counters["goal"] = 5;
}

const Case cases[] = {
    {"Cubic_P", "P m -3 m", {30, 30, 30, 90, 90, 90}, 0.3875f, true, 1, 0},
    {"Cubic_F", "F m -3 m", {30, 30, 30, 90, 90, 90}, 0.2441f, true, 1, 0},
    {"Triclinic", "P -1", {31, 33, 37, 92, 97, 103}, 0.9112f, false, 0, 7},
    {"Monoclinic", "P 1 21/c 1", {31, 33, 37, 90, 97, 90}, 0.7312f, false, 0, 7},
};

}  // namespace

int main(int argc, char** argv) {
    for (const Case& c : cases) benchmark::RegisterBenchmark(c.name, Reflections, c)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("All_Settings", All_Settings)->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
