#include "fit/lm_minimise.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vntl {

namespace {

constexpr double precision = std::numeric_limits<float>::epsilon();  // of the values and residuals
constexpr double first_step = 100;                                   // bound of the first step, times the norm of the scaled values
constexpr double tiny = std::numeric_limits<float>::min();

using Vector = std::vector<double>;

// What the derivatives at one point tell.
struct Local_Model {
    Normal_Equations equations;
    Pivoted_Factor factor;
    Vector projected;  // Q'f, in the order of the pivots
    Vector norms;      // of the columns
};

Local_Model Linearise(const Jacobian& fjac, int m, int n, std::span<const float> fvec) {
    Local_Model local;
    local.equations = Products_Of_Columns(fjac, m, n, fvec);
    local.factor = Factor_With_Pivots(local.equations.c);
    for (int j = 0; j < n; ++j) local.norms.push_back(std::sqrt(std::max(0.0, local.equations.c(j, j))));
    for (const int column : local.factor.pivot) local.projected.push_back(local.equations.g[static_cast<std::size_t>(column)]);
    Solve_Transposed(local.factor.r, local.factor.rank, local.projected);
    std::fill(local.projected.begin() + local.factor.rank, local.projected.end(), 0.0);
    return local;
}

// Largest cosine between the residuals and a column.
double Largest_Cosine(const Local_Model& local, double fnorm) {
    double largest = 0;
    for (std::size_t j = 0; j < local.norms.size(); ++j)
        if (local.norms[j] > 0 && fnorm > 0) largest = std::max(largest, std::fabs(local.equations.g[j] / fnorm / local.norms[j]));
    return largest;
}

double Scaled_Norm(const Vector& diag, const Vector& values) {
    double sum = 0;
    for (std::size_t j = 0; j < diag.size(); ++j) sum += diag[j] * values[j] * diag[j] * values[j];
    return std::sqrt(sum);
}

// The step of the linear problem alone, where the factor's columns allow it.
Vector Gauss_Newton_Step(const Local_Model& local) {
    Vector in_order = local.projected, step(in_order.size());
    Solve_Upper(local.factor.r, local.factor.rank, in_order);
    for (std::size_t j = 0; j < step.size(); ++j)
        step[static_cast<std::size_t>(local.factor.pivot[j])] = static_cast<int>(j) < local.factor.rank ? in_order[j] : 0;
    return step;
}

// The factor of J'J + par D^2; what rounding leaves of a dependent column is kept from being negative.
Square_Matrix Damped_Factor(const Square_Matrix& c, const Vector& diag, double par) {
    constexpr double lift = 8;
    for (double more = par;; more *= lift) {
        Square_Matrix damped = c;
        for (int j = 0; j < c.n(); ++j) damped(j, j) += more * diag[static_cast<std::size_t>(j)] * diag[static_cast<std::size_t>(j)];
        if (Factor(damped) || !std::isfinite(more)) return damped;
        more = std::max(more, tiny);
    }
}

// The parameter of Levenberg and Marquardt, and the step: of all steps with |D step| <= delta the one that makes the linear problem
// least, to a tenth of delta.
Vector Bounded_Step(const Local_Model& local, const Vector& diag, double delta, double& par) {
    constexpr double close = 0.1, least_part = 0.001;
    constexpr int most_rounds = 10;
    const std::size_t n = diag.size();
    Vector step = Gauss_Newton_Step(local);
    double length = Scaled_Norm(diag, step), excess = length - delta;
    if (excess <= close * delta) {
        par = 0;
        return step;
    }
    const auto scaled_direction = [&](Vector& out) {  // D^2 step / |D step|
        for (std::size_t j = 0; j < n; ++j) out[j] = diag[j] * diag[j] * step[j] / length;
    };

    Vector work(n);
    double lower = 0;
    if (local.factor.rank == static_cast<int>(n)) {
        Vector direction(n);
        scaled_direction(direction);
        for (std::size_t j = 0; j < n; ++j) work[j] = direction[static_cast<std::size_t>(local.factor.pivot[j])];
        Solve_Transposed(local.factor.r, local.factor.rank, work);
        const double size = Norm(work);
        lower = excess / delta / size / size;
    }
    for (std::size_t j = 0; j < n; ++j) work[j] = local.equations.g[j] / diag[j];
    const double gradient = Norm(work);
    double upper = gradient / delta;
    if (upper == 0) upper = tiny / std::min(delta, close);
    par = std::min(std::max(par, lower), upper);
    if (par == 0) par = gradient / length;

    for (int round = 1;; ++round) {
        if (par == 0) par = std::max(tiny, least_part * upper);
        const Square_Matrix factor = Damped_Factor(local.equations.c, diag, par);
        step = local.equations.g;
        Solve_Transposed(factor, factor.n(), step);
        Solve_Upper(factor, factor.n(), step);
        length = Scaled_Norm(diag, step);
        const double before = excess;
        excess = length - delta;
        const bool close_enough = std::fabs(excess) <= close * delta;
        const bool lower_is_zero = lower == 0 && excess <= before && before < 0;
        if (close_enough || lower_is_zero || round == most_rounds) return step;
        scaled_direction(work);
        Solve_Transposed(factor, factor.n(), work);
        const double size = Norm(work), correction = excess / delta / size / size;
        if (excess > 0) lower = std::max(lower, par);
        if (excess < 0) upper = std::min(upper, par);
        par = std::max(lower, par + correction);
    }
}

// |J step|^2, from the products of the columns.
double Length_Of_Change(const Pivoted_Factor& f, const Vector& step) {
    const int n = f.r.n();
    double sum = 0;
    for (int i = 0; i < f.rank; ++i) {
        double element = 0;
        for (int j = i; j < n; ++j) element += f.r(i, j) * step[static_cast<std::size_t>(f.pivot[static_cast<std::size_t>(j)])];
        sum += element * element;
    }
    return std::sqrt(sum);
}

class Minimisation {
public:
    Minimisation(const LSQ_Model& model, std::vector<float>& x, std::vector<float>& fvec, const LSQ_Conditions& c, const Work_Control* stop)
        : model_(model), x_(x), fvec_(fvec), c_(c), stop_(stop), fjac_(static_cast<int>(fvec.size()), static_cast<int>(x.size())) {}

    LM_Minimum Run() {
        minimum_.nfev = 1;
        fnorm_ = Norm(fvec_);
        diag_.assign(x_.size(), 1);
        if (c_.icyc > 0 && std::isfinite(fnorm_))
            while (!ended_ && Iterate()) continue;
        if (c_.nprint > 0) Call(Model_Call::print);
        return std::move(minimum_);
    }

private:
    bool Call(Model_Call call) { return model_(call, x_, fvec_, fjac_) >= 0; }

    // From one set of derivatives to the next accepted step; false at the end.
    bool Iterate() {
        if (stop_ != nullptr && stop_->Cancelled()) return false;
        ++minimum_.njev;
        if (!Call(Model_Call::derivatives)) return false;
        if (c_.nprint > 0 && (iteration_ - 1) % c_.nprint == 0 && !Call(Model_Call::print)) return false;
        const Local_Model local = Linearise(fjac_, static_cast<int>(fvec_.size()), static_cast<int>(x_.size()), fvec_);
        minimum_.curvature = local.equations.c;
        if (!std::isfinite(Norm(local.norms))) return false;
        if (iteration_ == 1) Begin(local.norms);
        gradient_ = Largest_Cosine(local, fnorm_);
        if (gradient_ <= 0) return End(LM_End::orthogonal);
        for (std::size_t j = 0; j < diag_.size(); ++j) diag_[j] = std::max(diag_[j], local.norms[j]);
        while (!Try_Step(local))
            if (ended_) return false;
        return !ended_;
    }

    void Begin(const Vector& norms) {
        for (std::size_t j = 0; j < diag_.size(); ++j) diag_[j] = norms[j] > 0 ? norms[j] : 1;
        xnorm_ = Scaled_Norm(diag_, Vector(x_.begin(), x_.end()));
        delta_ = xnorm_ > 0 ? first_step * xnorm_ : first_step;
    }

    // True when the step was accepted.
    bool Try_Step(const Local_Model& local) {
        const Vector back = Bounded_Step(local, diag_, delta_, par_);  // x - back is tried
        const double pnorm = Scaled_Norm(diag_, back);
        if (iteration_ == 1) delta_ = std::min(delta_, pnorm);
        std::vector<float> tried(x_.size()), residuals(fvec_.size());
        for (std::size_t j = 0; j < x_.size(); ++j) tried[j] = static_cast<float>(static_cast<double>(x_[j]) - back[j]);
        ++minimum_.nfev;
        if (model_(Model_Call::residuals, tried, residuals, fjac_) < 0) {
            End(LM_End::stopped);
            return false;
        }
        double tried_norm = Norm(residuals);
        if (std::isnan(tried_norm)) tried_norm = std::numeric_limits<double>::infinity();

        double actual = -1;
        if (0.1 * tried_norm < fnorm_) actual = 1 - tried_norm / fnorm_ * (tried_norm / fnorm_);
        const double linear = Length_Of_Change(local.factor, back) / fnorm_, damping = std::sqrt(par_) * pnorm / fnorm_;
        const double predicted = linear * linear + damping * damping / 0.5, slope = -(linear * linear + damping * damping);
        const double ratio = predicted != 0 ? actual / predicted : 0;
        Set_Bound(ratio, actual, slope, tried_norm, pnorm);

        const bool accepted = ratio >= 1e-4;
        if (accepted) {
            x_ = std::move(tried);
            fvec_ = std::move(residuals);
            xnorm_ = Scaled_Norm(diag_, Vector(x_.begin(), x_.end()));
            fnorm_ = tried_norm;
            ++iteration_;
        }
        Test_For_End(std::fabs(actual), predicted, ratio);
        return accepted;
    }

    void Set_Bound(double ratio, double actual, double slope, double tried_norm, double pnorm) {
        if (!(ratio > 0.25)) {
            double shrink = actual >= 0 ? 0.5 : 0.5 * slope / (slope + 0.5 * actual);
            if (0.1 * tried_norm >= fnorm_ || !(shrink >= 0.1)) shrink = 0.1;
            delta_ = shrink * std::min(delta_, pnorm / 0.1);
            par_ /= shrink;
        } else if (par_ == 0 || ratio >= 0.75) {
            delta_ = pnorm / 0.5;
            par_ *= 0.5;
        }
    }

    void Test_For_End(double actual, double predicted, double ratio) {
        const double tol = static_cast<double>(c_.tol);
        const bool small_gain = actual <= tol && predicted <= tol && 0.5 * ratio <= 1, small_step = delta_ <= tol * xnorm_;
        if (small_gain || small_step)
            End(small_gain && small_step ? LM_End::both : small_gain ? LM_End::small_gain : LM_End::small_step);
        else if (gradient_ <= precision)
            End(LM_End::orthogonal);
        else if (delta_ <= precision * xnorm_)
            End(LM_End::no_step);
        else if (actual <= precision && predicted <= precision && 0.5 * ratio <= 1)
            End(LM_End::no_gain);
        else if (minimum_.nfev >= c_.icyc)
            End(LM_End::calls);
        else if (stop_ != nullptr && stop_->Cancelled())
            End(LM_End::stopped);
    }

    bool End(LM_End end) {
        minimum_.end = end;
        ended_ = true;
        return false;
    }

    const LSQ_Model& model_;
    std::vector<float>& x_;
    std::vector<float>& fvec_;
    const LSQ_Conditions& c_;
    const Work_Control* stop_;
    Jacobian fjac_;
    LM_Minimum minimum_;
    Vector diag_;
    double fnorm_ = 0, xnorm_ = 0, delta_ = 0, par_ = 0, gradient_ = 0;
    int iteration_ = 1;
    bool ended_ = false;
};

}  // namespace

LM_Minimum LM_Minimise(const LSQ_Model& model, std::vector<float>& x, std::vector<float>& fvec, const LSQ_Conditions& c,
                       const Work_Control* stop) {
    return Minimisation(model, x, fvec, c, stop).Run();
}

}  // namespace vntl
