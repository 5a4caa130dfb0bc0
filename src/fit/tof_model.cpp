// Time of flight: each peak is a pulse's shape (fit/back_to_back), whose Gaussian variance follows the d-spacing.
#include <algorithm>
#include <array>
#include <cmath>

#include "fit/back_to_back.hpp"
#include "fit/background_line.hpp"
#include "fit/peak_model.hpp"

namespace vntl {

namespace {

enum Common { global_alpha, global_beta, sig_2, sig_1, sig_0, global_eta, common_count };
enum Of_Peak { position, intensity, shift_sigma, shift_alpha, shift_beta, shift_eta };

// A peak at one set of parameters.
struct TOF_Peak {
    double position = 0, intensity = 0;
    Back_To_Back shape;
    std::array<double, 3> variance_by_sig{};  // derivatives of the variance by Sig-2, Sig-1, Sig-0
    double variance_by_position = 0, variance_by_shift = 0;
};

// The points to which a peak contributes, and what it is there.
struct Drawn_Peak {
    double position = 0;
    Back_To_Back shape;
    bool drawn = false;
    std::size_t begin = 0, count = 0;
    Shape_Curve curve;
};

class TOF_Model final : public Peak_Model {
public:
    TOF_Model(const Fit_Constants& constants, const LSQ_State_Vector& vs, std::span<const float> x)
        : layout_{Layout_Of(Fit_Kind::time_of_flight, static_cast<int>(constants.node_x.size()), 0)},
          d2tof_(static_cast<double>(constants.d2tof)),
          x_(x),
          line_(constants.node_x, x) {
        layout_.peaks = std::max(0, (vs.np() - layout_.Peak(0)) / layout_.of_a_peak);
        drawn_.resize(static_cast<std::size_t>(layout_.peaks));
        const auto is_free = [&](int p) { return vs.parameters[static_cast<std::size_t>(p)].code != 0; };
        eta_is_free_ = is_free(global_eta);
        for (int k = 0; k < layout_.peaks; ++k) eta_is_free_ = eta_is_free_ || is_free(layout_.Peak(k) + shift_eta);
    }

    void Values(std::span<const float> pv, std::span<float> y, std::span<float> bgr) override {
        line_.Values(pv.subspan(static_cast<std::size_t>(layout_.Node(0)), static_cast<std::size_t>(layout_.nodes)), bgr);
        sum_.assign(bgr.begin(), bgr.end());
        const std::vector<TOF_Peak> peaks = Draw(pv);
        for (std::size_t k = 0; k < peaks.size(); ++k) Add(peaks[k].intensity, drawn_[k].curve.value, drawn_[k], std::span(sum_));
        std::ranges::transform(sum_, y.begin(), [](double value) { return static_cast<float>(value); });
    }

    void Derivatives(std::span<const float> pv, std::span<const int> parameters, std::span<const float> weight,
                     Jacobian& columns) override {
        const std::vector<TOF_Peak> peaks = Draw(pv);
        for (std::size_t c = 0; c < parameters.size(); ++c) {
            const std::span<float> column = columns.Column(static_cast<int>(c));
            const int p = parameters[c];
            if (p >= layout_.Node(0) && p < layout_.Peak(0)) {
                line_.Derivative(p - layout_.Node(0), weight, column);
                continue;
            }
            std::ranges::fill(column, 0.0f);
            if (p < layout_.Node(0))
                for (std::size_t k = 0; k < peaks.size(); ++k) Add_By_Common(p, peaks[k], drawn_[k], column);
            else {
                const auto k = static_cast<std::size_t>((p - layout_.Peak(0)) / layout_.of_a_peak);
                Add_By_Own((p - layout_.Peak(0)) % layout_.of_a_peak, peaks[k], drawn_[k], column);
            }
            for (std::size_t j = 0; j < column.size(); ++j) column[j] *= weight[j];
        }
    }

    void Add_Peak(std::span<const float> pv, int peak, std::span<float> y) override {
        const auto k = static_cast<std::size_t>(peak);
        const TOF_Peak at = Peak_At(pv, peak, Uses_Eta(pv));
        Draw(at, drawn_[k]);
        Add(at.intensity, drawn_[k].curve.value, drawn_[k], y);
    }

    Width Width_Of(std::span<const float> pv, int peak) const override {
        const Back_To_Back shape = Peak_At(pv, peak, true).shape;
        return {static_cast<float>(shape.fwhm), static_cast<float>(shape.eta)};
    }

private:
    // The Lorentzian part counts where it is there in a peak, and where it may come.
    bool Uses_Eta(std::span<const float> pv) const {
        constexpr float none = 1e-5f;
        bool uses = eta_is_free_ || std::fabs(pv[global_eta]) > none;
        for (int k = 0; k < layout_.peaks; ++k) uses = uses || std::fabs(pv[static_cast<std::size_t>(layout_.Peak(k) + shift_eta)]) > none;
        return uses;
    }

    TOF_Peak Peak_At(std::span<const float> pv, int k, bool lorentzian) const {
        constexpr double fwhm_of_sigma = 2.35482, no_variance = 0.0001;
        const auto common = [&](int p) { return static_cast<double>(pv[static_cast<std::size_t>(p)]); };
        const auto own = [&](int p) { return static_cast<double>(pv[static_cast<std::size_t>(layout_.Peak(k) + p)]); };
        TOF_Peak peak;
        peak.position = own(position);
        peak.intensity = own(intensity);
        const double d = d2tof_ != 0 ? peak.position / d2tof_ : 0, d2 = d * d;
        const double law = (common(sig_2) * d2 + common(sig_1)) * d2 + common(sig_0), variance = own(shift_sigma) + law;
        peak.shape = {.alpha = common(global_alpha) + own(shift_alpha),
                      .beta = common(global_beta) + own(shift_beta),
                      .fwhm = fwhm_of_sigma * std::sqrt(std::fabs(variance)),
                      .eta = common(global_eta) + own(shift_eta),
                      .lorentzian = lorentzian};
        // The modulus of a negative variance falls where the variance rises.
        peak.variance_by_shift = variance < 0 ? -1 : 1;
        if (law > no_variance)
            peak.variance_by_sig = {peak.variance_by_shift * d2 * d2, peak.variance_by_shift * d2, peak.variance_by_shift};
        if (d2tof_ != 0) peak.variance_by_position = peak.variance_by_shift * (4 * common(sig_2) * d2 + 2 * common(sig_1)) * d / d2tof_;
        return peak;
    }

    std::vector<TOF_Peak> Draw(std::span<const float> pv) {
        const bool lorentzian = Uses_Eta(pv);
        std::vector<TOF_Peak> peaks;
        for (int k = 0; k < layout_.peaks; ++k) peaks.push_back(Peak_At(pv, k, lorentzian));
        for (std::size_t k = 0; k < peaks.size(); ++k) Draw(peaks[k], drawn_[k]);
        return peaks;
    }

    // A peak whose shape and place stay is drawn already.
    void Draw(const TOF_Peak& peak, Drawn_Peak& drawn) const {
        if (drawn.drawn && drawn.position == peak.position && drawn.shape == peak.shape) return;
        drawn.position = peak.position;
        drawn.shape = peak.shape;
        drawn.drawn = true;
        // Each side reaches as far as its exponential and the width carry it; a number that is none leaves no point out.
        const auto reach = [&](double rate) {
            constexpr double widths = 15, twice_ln2 = 1.3862944;
            return widths * (twice_ln2 / rate + peak.shape.fwhm);
        };
        const double before = -reach(peak.shape.alpha), behind = reach(peak.shape.beta);
        const bool no_shape = !(peak.shape.alpha > 0 && peak.shape.beta > 0);
        const auto distance = [&](float x) { return static_cast<double>(x) - peak.position; };
        const auto begin = no_shape ? x_.begin() : std::ranges::partition_point(x_, [&](float x) { return distance(x) < before; });
        const auto end = no_shape ? x_.end() : std::partition_point(begin, x_.end(), [&](float x) { return !(distance(x) > behind); });
        drawn.begin = static_cast<std::size_t>(begin - x_.begin());
        drawn.count = static_cast<std::size_t>(end - begin);
        Draw_Shape(peak.shape, peak.position, x_.subspan(drawn.begin, drawn.count), drawn.curve);
    }

    // to += factor * values; a curve that is not there adds nothing.
    template <class Number>
    static void Add(double factor, const std::vector<float>& values, const Drawn_Peak& drawn, std::span<Number> to) {
        const std::span<Number> range = to.subspan(drawn.begin, drawn.count);
        const Number scale = static_cast<Number>(factor);
        for (std::size_t j = 0; j < values.size(); ++j) range[j] += scale * static_cast<Number>(values[j]);
    }

    static void Add_By_Common(int p, const TOF_Peak& peak, const Drawn_Peak& drawn, std::span<float> column) {
        const Shape_Curve& curve = drawn.curve;
        if (p == global_alpha) return Add(peak.intensity, curve.by_alpha, drawn, column);
        if (p == global_beta) return Add(peak.intensity, curve.by_beta, drawn, column);
        if (p == global_eta) return Add(peak.intensity, curve.by_eta, drawn, column);
        Add(peak.intensity * peak.variance_by_sig[static_cast<std::size_t>(p - sig_2)], curve.by_variance, drawn, column);
    }

    static void Add_By_Own(int p, const TOF_Peak& peak, const Drawn_Peak& drawn, std::span<float> column) {
        const Shape_Curve& curve = drawn.curve;
        switch (p) {
            case position:  // the peak moves, and its width with the d-spacing
                Add(-peak.intensity, curve.by_delta, drawn, column);
                return Add(peak.intensity * peak.variance_by_position, curve.by_variance, drawn, column);
            case intensity:
                return Add(1, curve.value, drawn, column);
            case shift_sigma:
                return Add(peak.intensity * peak.variance_by_shift, curve.by_variance, drawn, column);
            case shift_alpha:
                return Add(peak.intensity, curve.by_alpha, drawn, column);
            case shift_beta:
                return Add(peak.intensity, curve.by_beta, drawn, column);
            default:
                return Add(peak.intensity, curve.by_eta, drawn, column);
        }
    }

    Parameter_Layout layout_;
    double d2tof_;
    std::span<const float> x_;
    Background_Line line_;
    bool eta_is_free_ = false;
    std::vector<Drawn_Peak> drawn_;
    std::vector<double> sum_;
};

}  // namespace

std::unique_ptr<Peak_Model> Time_Of_Flight_Model(const Fit_Constants& constants, const LSQ_State_Vector& vs, std::span<const float> x) {
    return std::make_unique<TOF_Model>(constants, vs, x);
}

}  // namespace vntl
