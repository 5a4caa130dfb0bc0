#include "fit/state_vector.hpp"

#include <algorithm>
#include <string>

namespace vntl {

namespace {

constexpr const char* cw_names[] = {"Ka2/Ka1-ratio", "Asym-1(S_L)", "Asym-2(D_L)", "U-Caglioti", "V-Caglioti",
                                    "W-Caglioti",    "Z-parameter", "Eta0-PV",     "X-PV"};
constexpr const char* tof_names[] = {"Global-alpha", "Global-beta", "Global-Sig-2", "Global-Sig-1", "Global-Sig-0", "Global-eta"};
constexpr const char* cw_peak_names[] = {"Bragg_Pos_", "Intensity_", "Shf_Gamma_", "Shf_EtaPV_"};
constexpr const char* tof_peak_names[] = {"TOF___Pos_", "Intensity_", "Shf_Sigma_", "Shf_Alpha_", "Shf__Beta_", "Shf___Eta_"};

template <class State>
auto Common_Values(Fit_Kind kind, State& state) {
    std::vector<decltype(&state.ratio)> values;
    if (kind == Fit_Kind::constant_wavelength) {
        values.push_back(&state.ratio);
        for (auto& value : state.asym) values.push_back(&value);
    }
    for (auto& value : state.prof) values.push_back(&value);
    return values;
}

template <class Peak>
auto Peak_Values(Fit_Kind kind, Peak& peak) {
    std::vector<decltype(&peak.pos)> values{&peak.pos, &peak.intensity, &peak.shift_width};
    if (kind == Fit_Kind::time_of_flight) values.insert(values.end(), {&peak.shift_alpha, &peak.shift_beta});
    values.push_back(&peak.shift_eta);
    return values;
}

}  // namespace

std::vector<Fit_Value*> Values_Of(Fit_Kind kind, Fit_Peak& peak) { return Peak_Values(kind, peak); }
std::vector<const Fit_Value*> Values_Of(Fit_Kind kind, const Fit_Peak& peak) { return Peak_Values(kind, peak); }

int Active_Peaks(const Fit_State& state) {
    return static_cast<int>(std::ranges::count_if(state.peaks, [](const Fit_Peak& peak) { return peak.active; }));
}

Parameter_Layout Layout_Of(Fit_Kind kind, int nodes, int active_peaks) {
    return kind == Fit_Kind::constant_wavelength ? Parameter_Layout{9, nodes, 4, active_peaks}
                                                 : Parameter_Layout{6, nodes, 6, active_peaks};
}

LSQ_State_Vector State_Vector(Fit_Kind kind, const Fit_State& state, std::span<const Background_Mark> nodes) {
    const bool cw = kind == Fit_Kind::constant_wavelength;
    const auto names = cw ? std::span<const char* const>(cw_names) : tof_names;
    const auto peak_names = cw ? std::span<const char* const>(cw_peak_names) : tof_peak_names;
    LSQ_State_Vector vs;
    const auto add = [&vs](std::string name, float value, int flag) {
        vs.parameters.push_back({.nampar = std::move(name), .pv = value, .code = flag != 0 ? 1 : 0});
    };
    std::size_t n = 0;
    for (const Fit_Value* value : Common_Values(kind, state)) add(names[n++], value->value, value->flag);
    int number = 0;
    for (const Background_Mark& node : nodes) add("background_" + std::to_string(++number), node.y, node.flag);
    number = 0;
    for (const Fit_Peak& peak : state.peaks) {
        ++number;
        if (!peak.active) continue;
        n = 0;
        for (const Fit_Value* value : Values_Of(kind, peak)) add(peak_names[n++] + std::to_string(number), value->value, value->flag);
    }
    return vs;
}

void Take_Parameters(const LSQ_State_Vector& vs, Fit_Kind kind, Fit_State& state, std::span<Background_Mark> nodes) {
    auto next = vs.parameters.begin();
    const auto take = [&next](Fit_Value& value) {
        value.value = next->pv;
        value.sd = next->spv;
        ++next;
    };
    for (Fit_Value* value : Common_Values(kind, state)) take(*value);
    for (Background_Mark& node : nodes) {
        node.y = next->pv;
        node.sd = next->spv;
        ++next;
    }
    for (Fit_Peak& peak : state.peaks)
        for (Fit_Value* value : Values_Of(kind, peak)) peak.active ? take(*value) : void(value->sd = 0);
    if (nodes.empty()) return;
    state.y_ini = nodes.front().y;
    state.y_fin = nodes.back().y;
}

}  // namespace vntl
