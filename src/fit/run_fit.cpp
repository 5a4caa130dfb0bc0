#include "fit/run_fit.hpp"

#include <algorithm>
#include <cmath>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "fit/peak_model.hpp"

namespace vntl {

namespace {

constexpr float least_sigma = 1e-5f, sigma_of_unknown = 10;
constexpr float no_second_asymmetry = 1e-5f;  // D_L: S_L alone describes the asymmetry

float Sigma_Of_Point(const Diffraction_Pattern_Type& pattern, std::size_t i) {
    const bool given = i < pattern.sigma.size();
    const float value = given ? pattern.sigma[i] : pattern.y[i];  // counts without deviations are their own variances
    const float sigma = given && !pattern.sigma_is_variance ? value : std::sqrt(value);
    return sigma >= least_sigma && std::isfinite(sigma) ? sigma : sigma_of_unknown;
}

Status Check_Nodes(std::span<const Background_Mark> nodes) {
    if (nodes.empty()) return Status::Fail("ERROR: The background line is not yet selected!");
    if (nodes.size() > max_fit_nodes) return Status::Fail("ERROR: The background has more than 120 points!");
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (!std::isfinite(nodes[i].x) || !std::isfinite(nodes[i].y))
            return Status::Fail("ERROR: Background point " + std::to_string(i + 1) + " is no number!");
        if (i > 0 && !(nodes[i].x > nodes[i - 1].x))
            return Status::Fail("ERROR: The background points are not in rising order: point " + std::to_string(i + 1) + " at " +
                                IRealToString(nodes[i].x));
    }
    return Status::Done();
}

Status Check_Peaks(const Fit_State& state) {
    int number = 0;
    if (Active_Peaks(state) == 0) return Status::Fail("ERROR: No peak has been selected!");
    if (state.peaks.size() > max_fit_peaks) return Status::Fail("The maximum number of peaks to fit was reached!");
    for (const Fit_Peak& peak : state.peaks) {
        ++number;
        if (peak.active && !(peak.pos.value >= state.x_ini && peak.pos.value <= state.x_fin))
            return Status::Fail("ERROR: Peak " + std::to_string(number) + " at " + IRealToString(peak.pos.value) +
                                " is outside of the range of the fit!");
    }
    return Status::Done();
}

Status Take_Observations(const Diffraction_Pattern_Type& pattern, const Fit_State& state, LSQ_Data& data) {
    for (std::size_t i = 0; i < pattern.x.size(); ++i) {
        const float x = pattern.x[i], y = pattern.y[i];
        if (!(x > state.x_ini && x < state.x_fin)) continue;
        if (!std::isfinite(y)) return Status::Fail("ERROR: The intensity at " + IRealToString(x) + " is no number!");
        data.x.push_back(x);
        data.y.push_back(y);
        data.sw.push_back(Sigma_Of_Point(pattern, i));
    }
    if (data.x.empty())
        return Status::Fail("ERROR: There are no points between " + IRealToString(state.x_ini) + " and " + IRealToString(state.x_fin) +
                            "!");
    data.yc.resize(data.x.size());
    data.bgr.resize(data.x.size());
    return Status::Done();
}

// Values that the model can be computed of, whatever they are.
Status Check_Values(const Fit_Problem& problem, const LSQ_State_Vector& vs) {
    for (const LSQ_Parameter& parameter : vs.parameters)
        if (!std::isfinite(parameter.pv)) return Status::Fail("ERROR: The starting value of " + parameter.nampar + " is no number!");
    if (problem.kind == Fit_Kind::time_of_flight) return Status::Done();
    if (!std::isfinite(problem.state.lambda1) || !std::isfinite(problem.state.lambda2))
        return Status::Fail("ERROR: A wavelength is no number!");
    if (!(problem.state.ratio.value > -1)) return Status::Fail("ERROR: The Ka2/Ka1-ratio must be above -1!");
    return Status::Done();
}

// At the start every peak has a width, and exponentials decay.
Status Check_Widths(const Fit_Problem& problem) {
    const LSQ_State_Vector vs = State_Vector(problem.kind, problem.state, problem.nodes);
    if (Status status = Check_Values(problem, vs); status.failed) return status;
    const std::vector<float> pv = Values_Of(vs);
    const std::unique_ptr<Peak_Model> model = Model_Of(problem, vs);
    int number = 0, active = 0;
    for (const Fit_Peak& peak : problem.state.peaks) {
        ++number;
        if (!peak.active) continue;
        const float fwhm = model->Width_Of(pv, active++).fwhm;
        if (!(fwhm > 0) || !std::isfinite(fwhm))
            return Status::Fail("ERROR: Peak " + std::to_string(number) + " at " + IRealToString(peak.pos.value) + " has no width!");
        if (problem.kind == Fit_Kind::constant_wavelength) continue;
        const auto& prof = problem.state.prof;
        if (!(prof[prof_alpha].value + peak.shift_alpha.value > 0 && prof[prof_beta].value + peak.shift_beta.value > 0))
            return Status::Fail("ERROR: Alpha and beta of peak " + std::to_string(number) + " must be above 0!");
    }
    return Status::Done();
}

// The model as the solver asks it: residuals of the observations, and their derivatives by the free parameters.
class Weighted_Model {
public:
    Weighted_Model(Fit_Problem& problem, const LSQ_State_Vector& vs, const Tell_Iteration& tell)
        : data_(problem.data), tell_(tell), model_(Model_Of(problem, vs)), pv_(Values_Of(vs)) {
        for (int p = 0; p < vs.np(); ++p)
            if (vs.parameters[static_cast<std::size_t>(p)].code != 0) free_.push_back(p);
        for (const float sigma : data_.sw) {
            inverse_.push_back(1 / sigma);
            minus_inverse_.push_back(-1 / sigma);
        }
    }

    int operator()(Model_Call call, std::span<const float> x, std::span<float> fvec, Jacobian& fjac) {
        for (std::size_t k = 0; k < free_.size(); ++k) pv_[static_cast<std::size_t>(free_[k])] = x[k];
        if (call == Model_Call::derivatives) model_->Derivatives(pv_, free_, minus_inverse_, fjac);
        if (call != Model_Call::residuals) return 0;
        model_->Values(pv_, data_.yc, data_.bgr);
        double sum = 0;
        for (std::size_t j = 0; j < fvec.size(); ++j) {
            fvec[j] = (data_.y[j] - data_.yc[j]) * inverse_[j];
            sum += static_cast<double>(fvec[j]) * fvec[j];
        }
        const int freedom = std::max(1, data_.nobs() - static_cast<int>(free_.size()));
        Judge(static_cast<float>(sum / freedom));
        return 0;
    }

    Peak_Model& model() { return *model_; }

private:
    void Judge(float chi2) {
        if (!(chi2 <= lowest_)) return;
        lowest_ = chi2;
        ++iterations_;
        if (tell_) tell_({iterations_, chi2, data_.yc});
    }

    LSQ_Data& data_;
    const Tell_Iteration& tell_;
    std::unique_ptr<Peak_Model> model_;
    std::vector<float> pv_;
    std::vector<int> free_;
    std::vector<float> inverse_, minus_inverse_;
    float lowest_ = 1e30f;
    int iterations_ = 0;
};

void Take_Peaks(const Fit_Problem& problem, std::span<const float> pv, Peak_Model& model, Fit_Result& result) {
    const int peaks = Active_Peaks(problem.state);
    for (int i = 0; i < peaks; ++i) {
        const Peak_Model::Width width = model.Width_Of(pv, i);
        result.fwhm.push_back(width.fwhm);
        result.eta.push_back(width.eta);
    }
    if (!problem.state.plot_individual || peaks > most_peaks_drawn_alone) return;
    result.shares.assign(static_cast<std::size_t>(peaks), std::vector<float>(problem.data.x.size()));
    for (int i = 0; i < peaks; ++i) model.Add_Peak(pv, i, result.shares[static_cast<std::size_t>(i)]);
}

}  // namespace

std::unique_ptr<Peak_Model> Model_Of(const Fit_Problem& problem, const LSQ_State_Vector& vs) {
    Fit_Constants constants{
        .two_wavelengths = problem.state.Two_Wavelengths(), .lambda_ratio = problem.state.lambda_ratio(), .d2tof = problem.state.d2tof};
    for (const Background_Mark& node : problem.nodes) constants.node_x.push_back(node.x);
    const auto make = problem.kind == Fit_Kind::constant_wavelength ? Constant_Wavelength_Model : Time_Of_Flight_Model;
    return make(constants, vs, problem.data.x);
}

Status Make_Fit_Problem(Fit_Kind kind, const Fit_State& state, std::span<const Background_Mark> nodes,
                        const Diffraction_Pattern_Type& pattern, Fit_Problem& problem) {
    Fit_Problem made{kind, state, {nodes.begin(), nodes.end()}, {}};
    if (!(state.x_fin > state.x_ini)) return Status::Fail("ERROR: The range of the fit is empty!");
    if (Status status = Check_Nodes(nodes); status.failed) return status;
    if (Status status = Check_Peaks(state); status.failed) return status;
    made.nodes.front().x = state.x_ini;
    if (made.nodes.size() > 1) made.nodes.back().x = state.x_fin;
    if (Status status = Check_Nodes(made.nodes); status.failed) return status;
    if (kind == Fit_Kind::constant_wavelength && made.state.asym[1].value <= no_second_asymmetry) made.state.asym[1].value = 0;
    if (Status status = Take_Observations(pattern, state, made.data); status.failed) return status;
    if (Status status = Check_Widths(made); status.failed) return status;
    problem = std::move(made);
    return Status::Done();
}

Fit_Result Run_Fit(Fit_Problem& problem, Work_Control& control, const Tell_Iteration& tell) {
    Fit_Result result;
    result.vs = State_Vector(problem.kind, problem.state, problem.nodes);
    result.c.icyc = problem.state.Ncyc;
    result.c.npvar = Free_Parameters(result.vs);
    result.c.iw = problem.state.iw;
    result.c.constr = problem.state.constr;
    result.c.percent = problem.state.percent;

    Weighted_Model model(problem, result.vs, tell);
    const LSQ_State_Vector& vs = result.vs;
    result.run = LM_Der(std::ref(model), problem.data.nobs(), result.c, result.vs, &control);
    const std::vector<float> pv = Values_Of(vs);
    model.model().Values(pv, problem.data.yc, problem.data.bgr);
    Take_Parameters(vs, problem.kind, problem.state, problem.nodes);
    problem.state.corrmax = result.c.corrmax;
    problem.state.reached = result.c.reached;
    problem.state.chi2 = result.run.chi2;
    if (control.Cancelled() && result.run.infout.empty()) result.run.infout = "Stopped: the best values so far are kept";
    problem.state.infout = result.run.infout;
    if (result.run.lsq_error && !Contains(problem.state.infout, "Singular")) problem.state.infout += "\n" + result.run.lsq_message;
    Take_Peaks(problem, pv, model.model(), result);
    return result;
}

}  // namespace vntl
