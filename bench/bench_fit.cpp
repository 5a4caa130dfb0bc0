// Whole fits from starting values 10 % off in width and 0.01 degrees in position, as ratios of their time to the same fits by lmder of
// MINPACK in double precision with plain models, run in the same program: `ratio` is what a goal speaks of. The reference of an asymmetric
// peak computes the nodes of its sum at each point; `ratio_kept` is against one that keeps them while the parameters stay.
//
// A folder named by VANTRELO_FIT_DATA gives the patterns single.xy and doublet.xy (x, counts, sigma) with single_truth.txt and
// doublet_truth.txt (position, area); without it they are simulated after the same law.
#include <benchmark/benchmark.h>
#include <minpack.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <random>

#include "bench/plain_peaks.hpp"
#include "bench/timing.hpp"
#include "fit/run_fit.hpp"

namespace {

using namespace vntl;

struct True_Peak {
    double position, area;
};

struct Case {
    const char* name;
    double goal;  // the ratio should stay below
    Fit_Kind kind = Fit_Kind::constant_wavelength;
    float asymmetry = 0;  // S_L and D_L
    bool free_asymmetry = false, doublet = false, eta = false;
    bool of_files = false;  // of symmetric peaks: the files' patterns, where there are files
};

// ---- data

float Width(double position) {
    const double t = std::tan(position / 2 * plain::degree);
    return static_cast<float>(std::sqrt((0.01 * t - 0.006) * t + 0.012));
}

std::vector<True_Peak> Angles_Of_Peaks() {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> shift(-0.3, 0.3), spread(0.8, 1.2);
    const double areas[] = {60, 120, 250, 500, 900};
    std::vector<True_Peak> peaks;
    for (int k = 0; k < 20; ++k)
        peaks.push_back({16.8 + 76.2 * (k + (k > 0 && k < 19 ? shift(random) : 0)) / 19, areas[random() % 5] * spread(random)});
    return peaks;
}

Fit_Peak Peak_At(double position, double area, double width, double eta) {
    Fit_Peak peak;
    const auto single = [](double value) { return static_cast<float>(value); };
    peak.pos = {single(position), 1};
    peak.intensity = {single(area), 1};
    peak.shift_width = {single(width), 1};
    peak.shift_eta = {single(eta), 1};
    return peak;
}

Fit_State Wavelengths_And_Window(const Case& c) {
    Fit_State state;
    state.x_ini = 14.99f;
    state.x_fin = 94.99f;
    state.lambda1 = 1.540599f;
    state.lambda2 = c.doublet ? 1.54439f : state.lambda1;
    state.ratio.value = c.doublet ? 0.5f : 0;
    for (Fit_Value& value : state.asym) value = {c.asymmetry, c.free_asymmetry ? 1 : 0};
    return state;
}

std::vector<Background_Mark> Nodes(const Fit_State& state, float first, float last) {
    return {{state.x_ini, first, 1}, {state.x_fin, last, 1}};
}

Fit_Constants Constants_Of(const Fit_State& state) {
    return {{state.x_ini, state.x_fin}, state.Two_Wavelengths(), state.lambda_ratio(), state.d2tof};
}

std::unique_ptr<Peak_Model> Our_Model(Fit_Kind kind, const Fit_State& state, const LSQ_State_Vector& vs, std::span<const float> x) {
    const auto make = kind == Fit_Kind::constant_wavelength ? Constant_Wavelength_Model : Time_Of_Flight_Model;
    return make(Constants_Of(state), vs, x);
}

Fit_Problem Made(Fit_Kind kind, const Fit_State& state, const std::vector<Background_Mark>& nodes,
                 const Diffraction_Pattern_Type& pattern) {
    Fit_Problem problem;
    if (const Status status = Make_Fit_Problem(kind, state, nodes, pattern, problem); status.failed) {
        std::cerr << status.message << "\n";
        std::exit(1);
    }
    return problem;
}

// Counts of the model at `truth`. The pattern's own y do not matter before.
void Count(Fit_Kind kind, const Fit_State& truth, const std::vector<Background_Mark>& nodes, Diffraction_Pattern_Type& pattern) {
    const Fit_Problem problem = Made(kind, truth, nodes, pattern);
    const LSQ_State_Vector vs = State_Vector(kind, truth, nodes);
    std::vector<float> pv, y(problem.data.x.size()), bgr(y);
    for (const LSQ_Parameter& parameter : vs.parameters) pv.push_back(parameter.pv);
    Our_Model(kind, truth, vs, problem.data.x)->Values(pv, y, bgr);
    std::mt19937 random(7);
    for (std::size_t i = 0; i < y.size(); ++i) {
        pattern.y[i] = static_cast<float>(std::poisson_distribution<int>(y[i])(random));
        pattern.sigma[i] = std::sqrt(std::max(pattern.y[i], 1.0f));
    }
}

Diffraction_Pattern_Type Points(double first, double step, int n) {
    Diffraction_Pattern_Type pattern;
    for (int i = 0; i < n; ++i) pattern.x.push_back(static_cast<float>(first + step * i));
    pattern.y.assign(pattern.x.size(), 0);
    pattern.sigma.assign(pattern.x.size(), 1);
    pattern.sigma_is_variance = false;
    pattern.npts = n;
    return pattern;
}

Diffraction_Pattern_Type Read_Points(const std::string& file) {
    Diffraction_Pattern_Type pattern;
    std::ifstream in(file);
    for (float x, y, sigma; in >> x >> y >> sigma;) {
        pattern.x.push_back(x);
        pattern.y.push_back(y);
        pattern.sigma.push_back(sigma);
    }
    pattern.sigma_is_variance = false;
    pattern.npts = static_cast<std::int32_t>(pattern.x.size());
    return pattern;
}

std::vector<True_Peak> Read_Peaks(const std::string& file) {
    std::vector<True_Peak> peaks;
    std::ifstream in(file);
    std::string heading;
    std::getline(in, heading);
    for (True_Peak peak{}; in >> peak.position >> peak.area;) peaks.push_back(peak);
    if (peaks.empty()) std::cerr << "No peaks in " << file << "\n";
    return peaks;
}

Fit_Problem Problem_Of_Angles(const Case& c) {
    Fit_State state = Wavelengths_And_Window(c);
    std::vector<Background_Mark> nodes = Nodes(state, 120, 72);
    const char* folder = std::getenv("VANTRELO_FIT_DATA");
    const bool from_file = folder && c.of_files;
    const std::string name = std::string(folder ? folder : "") + (c.doublet ? "/doublet" : "/single");
    const std::vector<True_Peak> peaks = from_file ? Read_Peaks(name + "_truth.txt") : Angles_Of_Peaks();
    Diffraction_Pattern_Type pattern = from_file ? Read_Points(name + ".xy") : Points(15, 0.02, 4000);
    if (!from_file) {
        Fit_State truth = state;
        if (c.of_files) truth.asym = {};
        for (const auto& [position, area] : peaks) truth.peaks.push_back(Peak_At(position, area, 0, 0));
        const float law[] = {0.01f, -0.006f, 0.012f, 0, 0.35f, 0.002f};
        for (std::size_t k = 0; k < 6; ++k) truth.prof[k].value = law[k];
        Count(Fit_Kind::constant_wavelength, truth, nodes, pattern);
    }
    for (const auto& [position, area] : peaks) {
        const double side = state.peaks.size() % 2 == 0 ? 1 : -1;
        state.peaks.push_back(
            Peak_At(position + 0.01 * side, area * (1 - 0.1 * side), Width(position) * (1 + 0.1 * side), 0.35 + 0.002 * position));
    }
    return Made(Fit_Kind::constant_wavelength, state, nodes, pattern);
}

// Six peaks of a pulsed source, a fifth of the width and a few microseconds off.
Fit_Problem Problem_Of_Flight(const Case& c) {
    Fit_State state;
    state.x_ini = 1999;
    state.x_fin = 20001;
    state.d2tof = 5000;
    const float law[] = {0.05f, 0.02f, 0, 400, 50, c.eta ? 0.35f : 0};
    for (std::size_t k = 0; k < 6; ++k) state.prof[k].value = law[k];
    for (const double position : {3500.0, 5200.0, 7400.0, 10300.0, 13800.0, 17500.0})
        state.peaks.push_back(Peak_At(position, 2e5 + 5e4 * static_cast<double>(state.peaks.size()), 0, 0));
    for (Fit_Peak& peak : state.peaks) peak.shift_eta.flag = 0;
    state.peaks[0].shift_width.flag = 0;  // Sig-1 is free
    std::vector<Background_Mark> nodes = Nodes(state, 120, 110);
    Diffraction_Pattern_Type pattern = Points(2000, 6, 3000);
    Count(Fit_Kind::time_of_flight, state, nodes, pattern);

    for (const int k : {0, 1, 3}) {
        state.prof[static_cast<std::size_t>(k)].flag = 1;
        state.prof[static_cast<std::size_t>(k)].value *= k == 1 ? 0.85f : 1.2f;
    }
    if (c.eta) state.prof[prof_eta] = {0.2f, 1};
    for (std::size_t k = 0; k < state.peaks.size(); ++k) {
        state.peaks[k].pos.value += k % 2 == 0 ? 3.0f : -3.0f;
        state.peaks[k].intensity.value *= 0.8f;
    }
    return Made(Fit_Kind::time_of_flight, state, nodes, pattern);
}

Fit_Problem Problem_Of(const Case& c) { return c.kind == Fit_Kind::time_of_flight ? Problem_Of_Flight(c) : Problem_Of_Angles(c); }

// ---- the reference

struct Reference {
    plain::Model* model;
    const LSQ_Data* data;
    std::vector<double> pv, dpv;
    std::vector<std::size_t> free;
};
Reference* reference = nullptr;  // MINPACK hands its model nothing of ours

extern "C" void Reference_Residuals(int* m, int* n, double* x, double* fvec, double* fjac, int* ldfjac, int* iflag) {
    Reference& r = *reference;
    for (int k = 0; k < *n; ++k) r.pv[r.free[static_cast<std::size_t>(k)]] = x[k];
    r.model->Prepare(r.pv);
    for (int j = 0; j < *m; ++j) {
        const auto at = static_cast<std::size_t>(j);
        const double sigma = r.data->sw[at];
        if (*iflag == 1) {
            fvec[j] = (r.data->y[at] - r.model->Value(r.data->x[at], {})) / sigma;
            continue;
        }
        std::ranges::fill(r.dpv, 0);
        r.model->Value(r.data->x[at], r.dpv);
        for (int k = 0; k < *n; ++k) fjac[j + k * *ldfjac] = -r.dpv[r.free[static_cast<std::size_t>(k)]] / sigma;
    }
}

struct Reference_Fit {
    double ms = 0, chi2 = 0;
    int nfev = 0;
};

Reference_Fit Fit_By_Reference(plain::Model& model, const Fit_Problem& problem) {
    Reference r{&model, &problem.data, {}, {}, {}};
    std::vector<double> x;
    for (const LSQ_Parameter& parameter : State_Vector(problem.kind, problem.state, problem.nodes).parameters) {
        if (parameter.code != 0) r.free.push_back(r.pv.size()), x.push_back(parameter.pv);
        r.pv.push_back(parameter.pv);
    }
    r.dpv = r.pv;
    reference = &r;
    int m = problem.data.nobs(), n = static_cast<int>(x.size()), most = problem.state.Ncyc, mode = 1, print = 0, info = 0, nfev = 0,
        njev = 0;
    double tol = 1e-5, none = 0, factor = 100;
    Reference_Fit fit;
    std::vector<double> fvec(static_cast<std::size_t>(m)), wa4(fvec), fjac(fvec.size() * x.size()), diag(x), qtf(x), wa1(x), wa2(x), wa3(x);
    std::vector<int> ipvt(x.size());
    fit.ms = Milliseconds([&] {
        lmder_(Reference_Residuals, &m, &n, x.data(), fvec.data(), fjac.data(), &m, &tol, &tol, &none, &most, diag.data(), &mode, &factor,
               &print, &info, &nfev, &njev, ipvt.data(), qtf.data(), wa1.data(), wa2.data(), wa3.data(), wa4.data());
    });
    for (const double f : fvec) fit.chi2 += f * f / (m - n);
    fit.nfev = nfev;
    return fit;
}

std::unique_ptr<plain::Model> Plain_Model(const Fit_Problem& problem, bool eta, bool keep_nodes) {
    const Fit_Constants constants = Constants_Of(problem.state);
    const Parameter_Layout layout = Layout_Of(problem.kind, 2, Active_Peaks(problem.state));
    if (problem.kind == Fit_Kind::time_of_flight) return std::make_unique<plain::Time_Of_Flight>(constants, layout, eta);
    return std::make_unique<plain::Constant_Wavelength>(constants, layout, keep_nodes);
}

// ---- where our own time goes

struct Shares {
    double shape = 0, algebra = 0;  // ms
};

// The same run of the solver with a watch around the model.
Shares Measure_Shares(const Fit_Problem& problem) {
    LSQ_State_Vector vs = State_Vector(problem.kind, problem.state, problem.nodes);
    std::vector<float> pv, minus_weight;
    std::vector<int> free;
    for (const LSQ_Parameter& parameter : vs.parameters) {
        if (parameter.code != 0) free.push_back(static_cast<int>(pv.size()));
        pv.push_back(parameter.pv);
    }
    LSQ_Data data = problem.data;
    for (const float sigma : data.sw) minus_weight.push_back(-1 / sigma);
    LSQ_Conditions c;
    c.icyc = problem.state.Ncyc;
    c.npvar = static_cast<int>(free.size());
    Shares shares;
    std::unique_ptr<Peak_Model> model;
    const double all = Milliseconds([&] {
        shares.shape += Milliseconds([&] { model = Our_Model(problem.kind, problem.state, vs, data.x); });
        LM_Der(
            [&](Model_Call call, std::span<const float> x, std::span<float> fvec, Jacobian& fjac) {
                for (std::size_t k = 0; k < free.size(); ++k) pv[static_cast<std::size_t>(free[k])] = x[k];
                shares.shape += Milliseconds([&] {
                    if (call == Model_Call::derivatives) model->Derivatives(pv, free, minus_weight, fjac);
                    if (call == Model_Call::residuals) model->Values(pv, data.yc, data.bgr);
                });
                for (std::size_t j = 0; call == Model_Call::residuals && j < fvec.size(); ++j)
                    fvec[j] = (data.yc[j] - data.y[j]) * minus_weight[j];
                return 0;
            },
            data.nobs(), c, vs);
    });
    shares.algebra = all - shares.shape;
    return shares;
}

// ---- cases

// The reference of a doublet is the asymmetric fit of a single wavelength; `ratio_doublet` is to the doublet's own.
void Fit(benchmark::State& state, const Case& c) {
    const Fit_Problem problem = Problem_Of(c);
    Case alone = c;
    alone.doublet = false;
    const Fit_Problem single = c.doublet ? Problem_Of(alone) : problem;
    const auto as_told = Plain_Model(problem, c.eta, false), kept = Plain_Model(problem, c.eta, true);
    const auto of_single = Plain_Model(single, c.eta, false);
    const auto least = [](double& best, double ms) { best = std::min(best, ms); };
    double ours = 1e30, told_ms = 1e30, kept_ms = 1e30, single_ms = 1e30;
    Fit_Result result;
    Reference_Fit last;
    Shares shares{1e30, 1e30};
    for (auto _ : state) {
        for (int repeat = 0; repeat < 5; ++repeat) {  // a reference takes longer: ours has its share of the time
            Fit_Problem fitted = problem;
            Work_Control control;
            least(ours, Milliseconds([&] { result = Run_Fit(fitted, control); }));
            const Shares now = Measure_Shares(problem);
            if (now.shape + now.algebra < shares.shape + shares.algebra) shares = now;
        }
        last = Fit_By_Reference(*as_told, problem);
        least(told_ms, last.ms);
        if (c.asymmetry > 0) least(kept_ms, Fit_By_Reference(*kept, problem).ms);
        if (c.doublet) least(single_ms, Fit_By_Reference(*of_single, single).ms);
    }
    const auto show = [&state](const char* name, double value) { state.counters[name] = value; };
    show("fit_ms", ours);
    show("reference_ms", told_ms);
    show("ratio", ours / (c.doublet ? single_ms : told_ms));
    show("goal", c.goal);
    if (c.doublet) show("ratio_doublet", ours / told_ms);
    if (c.asymmetry > 0) show("ratio_kept", ours / kept_ms);
    show("chi2", result.run.chi2);
    show("chi2_reference", last.chi2);
    show("calls", result.c.nfev);
    show("calls_reference", last.nfev);
    show("shape_%", 100 * shares.shape / ours);
    show("algebra_%", 100 * shares.algebra / ours);
    show("rest_%", 100 * (ours - shares.shape - shares.algebra) / ours);
}

const Case cases[] = {
    {.name = "Symmetric", .goal = 1.0 / 6, .of_files = true},
    {.name = "Asymmetric_Fixed", .goal = 1.0 / 12, .asymmetry = 0.01f},
    {.name = "Asymmetric_Free", .goal = 1.0 / 12, .asymmetry = 0.01f, .free_asymmetry = true},
    {.name = "Asymmetric_Doublet", .goal = 1.0 / 6, .asymmetry = 0.01f, .doublet = true},
    {.name = "Asymmetric_On_Symmetric", .goal = 1.0 / 12, .asymmetry = 0.01f, .of_files = true},
    {.name = "Asymmetric_On_Symmetric_Doublet", .goal = 1.0 / 6, .asymmetry = 0.01f, .doublet = true, .of_files = true},
    {.name = "Flight", .goal = 0.6, .kind = Fit_Kind::time_of_flight},
    {.name = "Flight_Eta", .goal = 0.6, .kind = Fit_Kind::time_of_flight, .eta = true},
};

}  // namespace

int main(int argc, char** argv) {
    for (const Case& c : cases) benchmark::RegisterBenchmark(c.name, Fit, c)->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
