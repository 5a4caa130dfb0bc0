#include "fit/least_squares.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "fit/lm_minimise.hpp"
#include "fit/written.hpp"

namespace vntl {

namespace {

float Reduced_Chi2(double norm, int m, int n) {
    constexpr double largest = 1e15;
    return static_cast<float>(norm < largest ? norm * norm / std::max(1, m - n) : norm);
}

std::string End_Text(LM_End end, float initial_chi2, const LSQ_Conditions& c) {
    const std::string initial = "Initial Chi2:" + Written("(E12.5)", initial_chi2) + "     Convergence reached: ";
    const std::string tol = Written("(G12.5)", c.tol);
    switch (end) {
        case LM_End::stopped:
            return "";
        case LM_End::small_gain:
            return initial + "The relative error in the sum of squares is at most " + tol;
        case LM_End::small_step:
            return initial + "The relative error between x and the solution is at most " + tol;
        case LM_End::both:
            return initial + "The relative error in the sum of squares and the difference between x and the solution are both at most " +
                   tol;
        case LM_End::orthogonal:
            return initial + "Residuals vector is orthogonal to the columns of the Jacobian to machine precision";
        case LM_End::calls:
            return "Convergence NOT reached: Number of calls to model function with iflag=1 has reached " + Written("(I6)", c.icyc);
        case LM_End::no_gain:
            return "Convergence NOT reached: Provided tolerance " + tol +
                   " is too small! No further reduction in the sum of squares is possible";
        case LM_End::no_step:
            return "Convergence NOT reached: Provided tolerance " + tol +
                   " is too small! No further improvement in the approximate solution x is possible";
    }
    return "";
}

// What rounding of the derivatives to single precision leaves of a column that depends on the others, of its squared norm: curvature that
// small says nothing of the parameter.
constexpr double noise_of_column = 16.0 * std::numeric_limits<float>::epsilon() * std::numeric_limits<float>::epsilon();

// The inverse of the curvature with a diagonal of 1; empty when it is singular.
std::vector<double> Normalised_Inverse(const Square_Matrix& curvature, const std::vector<double>& scale) {
    const int n = curvature.n();
    Square_Matrix normal(n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            normal(i, j) = i == j ? 1 : curvature(i, j) / (scale[static_cast<std::size_t>(i)] * scale[static_cast<std::size_t>(j)]);
    if (!Invert(normal)) return {};
    for (int j = 0; j < n; ++j)
        if (!(normal(j, j) * noise_of_column < 1)) return {};
    return std::move(normal.values());
}

// Standard deviations of the free variables; none when the curvature is singular. A parameter of which the residuals do not depend is
// named.
std::vector<float> Standard_Deviations(const Square_Matrix& curvature, LSQ_Run& run) {
    const auto n = static_cast<std::size_t>(curvature.n());
    std::vector<double> scale;
    for (int i = 0; i < curvature.n(); ++i) scale.push_back(std::sqrt(curvature(i, i)));
    const auto bad = std::ranges::find_if(scale, [](double root) { return !(root > 0 && std::isfinite(root)); });
    if (bad == scale.end()) run.inverse = Normalised_Inverse(curvature, scale);
    std::vector<float> sig(n);
    if (run.inverse.empty()) {
        if (bad != scale.end())
            run.infout = "Final Singular Matrix!, problem with parameter #" + Written("(I3)", static_cast<int>(bad - scale.begin()) + 1);
        run.lsq_error = true;
        run.lsq_message = " Singular Matrix at the end of LM_Der for calculating std deviations ...";
    } else {
        for (std::size_t j = 0; j < n; ++j) sig[j] = static_cast<float>(std::sqrt(run.inverse[j * n + j]) / scale[j]);
    }
    return sig;
}

// The number of the parameter's free variable, from 0; -1 when it is fixed. `next` counts those without codes of their own.
int Variable_Of(const LSQ_State_Vector& vs, const LSQ_Parameter& parameter, int& next) {
    if (parameter.code == 0) return -1;
    return vs.code_given ? parameter.code - 1 : next++;
}

void For_Free(auto& vs, int npvar, auto act) {
    int next = 0;
    for (auto& parameter : vs.parameters) {
        const int j = Variable_Of(vs, parameter, next);
        if (j >= 0 && j < npvar) act(parameter, static_cast<std::size_t>(j));
    }
}

std::vector<float> Free_Variables(const LSQ_State_Vector& vs, int npvar) {
    std::vector<float> x(static_cast<std::size_t>(npvar));
    std::vector<bool> taken(x.size());
    For_Free(vs, npvar, [&](const LSQ_Parameter& parameter, std::size_t j) {
        if (!taken[j]) x[j] = parameter.pv;
        taken[j] = true;
    });
    return x;
}

void Set_Free_Variables(LSQ_State_Vector& vs, std::span<const float> x, std::span<const float> x0) {
    int next = 0;
    for (LSQ_Parameter& parameter : vs.parameters) {
        const int j = Variable_Of(vs, parameter, next);
        if (j < 0 || j >= static_cast<int>(x.size())) continue;
        const auto at = static_cast<std::size_t>(j);
        if (vs.code_given)
            parameter.pv += (x[at] - x0[at]) * parameter.mul;
        else
            parameter.pv = x[at];
    }
}

}  // namespace

int Free_Parameters(const LSQ_State_Vector& vs) {
    return static_cast<int>(std::ranges::count_if(vs.parameters, [](const LSQ_Parameter& parameter) { return parameter.code != 0; }));
}

std::vector<float> Values_Of(const LSQ_State_Vector& vs) {
    std::vector<float> pv;
    for (const LSQ_Parameter& parameter : vs.parameters) pv.push_back(parameter.pv);
    return pv;
}

LSQ_Run LM_Der(const LSQ_Model& model, int m, LSQ_Conditions& c, LSQ_State_Vector& vs, const Work_Control* stop) {
    LSQ_Run run;
    c.reached = false;
    c.nfev = c.njev = 0;
    if (c.npvar < 1 || m < c.npvar || !(c.tol >= 0) || c.npvar > max_lsq_parameters) {
        run.infout =
            "Improper input parameters in LM-optimization (n,m,tol): nb of free (refined) parameters: " + Written("(I5)", c.npvar) +
            ", number of observations: " + Written("(I5)", m) + ", tolerance: " + Written("(F10.7)", c.tol);
        return run;
    }
    const std::vector<float> x0 = Free_Variables(vs, c.npvar);
    std::vector<float> x = x0;
    run.names.resize(x.size());
    For_Free(vs, c.npvar, [&](const LSQ_Parameter& parameter, std::size_t j) {
        if (run.names[j].empty()) run.names[j] = parameter.nampar;
    });

    run.residuals.resize(static_cast<std::size_t>(m));
    Jacobian none(0, 0);
    if (model(Model_Call::residuals, x, run.residuals, none) < 0) return run;
    const float initial_chi2 = Reduced_Chi2(Norm(run.residuals), m, c.npvar);
    const LM_Minimum minimum = LM_Minimise(model, x, run.residuals, c, stop);
    c.nfev = minimum.nfev;
    c.njev = minimum.njev;
    c.reached = minimum.end >= LM_End::small_gain && minimum.end <= LM_End::orthogonal;
    run.chi2 = Reduced_Chi2(Norm(run.residuals), m, c.npvar);
    run.infout = End_Text(minimum.end, initial_chi2, c);
    std::vector<float> sig(x.size());
    if (minimum.curvature.n() > 0) sig = Standard_Deviations(minimum.curvature, run);

    Set_Free_Variables(vs, x, x0);
    for (LSQ_Parameter& parameter : vs.parameters) parameter.spv = 0;
    For_Free(vs, c.npvar,
             [&](LSQ_Parameter& parameter, std::size_t j) { parameter.spv = vs.code_given ? sig[j] * parameter.mul : sig[j]; });
    return run;
}

}  // namespace vntl
