// Constant wavelength: pseudo-Voigt peaks of one or two wavelengths, whose width and mixing follow the angle, with axial divergence.
#include <algorithm>
#include <cmath>
#include <future>
#include <limits>
#include <numbers>
#include <system_error>

#include "fit/axial_profile.hpp"
#include "fit/background_line.hpp"
#include "fit/peak_model.hpp"

namespace vntl {

namespace {

enum Common { ratio, s_l, d_l, caglioti_u, caglioti_v, caglioti_w, size_z, eta_0, eta_x };
enum Of_Peak { position, intensity, shift_width, shift_eta };

constexpr double degree = std::numbers::pi / 180;
constexpr float least_divergence = 1e-5f, one_divergence = 0.0002f;  // of S_L + D_L; of D_L, below which the two are one
constexpr float near_right_angle = 0.4f;                             // degrees: a peak there is symmetric
constexpr double least_gauss = 0.0001, least_eta = 1e-6;
constexpr float widths_of_reach = 40;

// One line of a peak: its shape, and how width, mixing and place follow the parameters.
struct Line {
    bool exists = false;
    bool second = false;  // of the second wavelength
    Axial_Peak shape;
    double factor = 0;  // of the peak's intensity
    double place_by_position = 1;
    double width_by_u = 0, width_by_v = 0, width_by_w = 0, width_by_z = 0, width_by_place = 0;
};

struct Placed_Line {
    int peak, number;
    Line line;
};

// The points to which a line contributes, and what it is there.
struct Drawn_Line {
    Axial_Peak shape;
    bool drawn = false;
    std::size_t begin = 0, count = 0;
    Profile_Curve curve;
};

class CW_Model final : public Peak_Model {
public:
    CW_Model(const Fit_Constants& constants, const LSQ_State_Vector& vs, std::span<const float> x)
        : layout_{Layout_Of(Fit_Kind::constant_wavelength, static_cast<int>(constants.node_x.size()), 0)},
          two_(constants.two_wavelengths),
          lambda_ratio_(constants.lambda_ratio),
          x_(x),
          background_(constants.node_x, x) {
        layout_.peaks = std::max(0, (vs.np() - layout_.Peak(0)) / layout_.of_a_peak);
        drawn_.resize(static_cast<std::size_t>(2 * layout_.peaks));
        const auto value = [&](int p) { return vs.parameters[static_cast<std::size_t>(p)].pv; };
        const auto is_free = [&](int p) { return vs.parameters[static_cast<std::size_t>(p)].code != 0; };
        hps_ = value(d_l) <= least_divergence;
        divergence_is_free_ = is_free(s_l) || is_free(d_l);
    }

    void Values(std::span<const float> pv, std::span<float> y, std::span<float> bgr) override {
        background_.Values(pv.subspan(static_cast<std::size_t>(layout_.Node(0)), static_cast<std::size_t>(layout_.nodes)), bgr);
        sum_.assign(bgr.begin(), bgr.end());
        For_Lines(pv, [&](int peak, const Line& line, const Drawn_Line& drawn) {
            Add(line.factor * Of(pv, peak, intensity), drawn.curve.value, drawn, std::span(sum_));
        });
        std::ranges::transform(sum_, y.begin(), [](double v) { return static_cast<float>(v); });
    }

    void Derivatives(std::span<const float> pv, std::span<const int> parameters, std::span<const float> weight,
                     Jacobian& columns) override {
        std::vector<int> column_of(pv.size(), -1);
        for (std::size_t c = 0; c < parameters.size(); ++c) {
            const std::span<float> column = columns.Column(static_cast<int>(c));
            const int p = parameters[c];
            column_of[static_cast<std::size_t>(p)] = static_cast<int>(c);
            if (p >= layout_.Node(0) && p < layout_.Peak(0))
                background_.Derivative(p - layout_.Node(0), weight, column);
            else
                std::ranges::fill(column, 0.0f);
        }
        For_Lines(pv, [&](int peak, const Line& line, const Drawn_Line& drawn) {
            const auto add = [&](int p, double factor, const std::vector<float>& values) {
                const int c = column_of[static_cast<std::size_t>(p)];
                if (c >= 0) Add_Weighted(factor, values, weight, drawn, columns.Column(c));
            };
            Add_By_Common(pv, peak, line, drawn, add);
            Add_By_Own(pv, peak, line, drawn, add);
        });
    }

    void Add_Peak(std::span<const float> pv, int peak, std::span<float> y) override {
        for (int number = 0; number < Lines_Of_Peak(); ++number) {
            const Line line = Line_At(pv, peak, number);
            if (!line.exists) continue;
            Drawn_Line& drawn = At(peak, number);
            Draw(line, drawn);
            Add(line.factor * Of(pv, peak, intensity), drawn.curve.value, drawn, y);
        }
    }

    Width Width_Of(std::span<const float> pv, int peak) const override {
        const Axial_Peak shape = Line_At(pv, peak, 0).shape;
        return {shape.fwhm, shape.eta};
    }

private:
    int Lines_Of_Peak() const { return two_ ? 2 : 1; }
    double Of(std::span<const float> pv, int peak, int p) const { return pv[static_cast<std::size_t>(layout_.Peak(peak) + p)]; }

    template <class Act>
    void For_Lines(std::span<const float> pv, Act act) {
        std::vector<Placed_Line> lines;
        for (int peak = 0; peak < layout_.peaks; ++peak)
            for (int number = 0; number < Lines_Of_Peak(); ++number)
                if (const Line line = Line_At(pv, peak, number); line.exists) lines.push_back({peak, number, line});
        Draw(lines);
        for (const Placed_Line& placed : lines) act(placed.peak, placed.line, At(placed.peak, placed.number));
    }

    // The line of the first wavelength, or of the second, which a peak near 180 degrees does not have.
    Line Line_At(std::span<const float> pv, int peak, int number) const {
        Line line;
        double place = Of(pv, peak, position);
        line.factor = 1 / (1 + static_cast<double>(pv[ratio]));
        if (number == 1) {
            const double theta = place / 2 * degree, sine = std::sin(theta) * lambda_ratio_;
            if (std::fabs(sine) >= 1) return {};
            line.second = true;
            place = 2 * std::asin(sine) / degree;
            line.place_by_position = lambda_ratio_ * std::cos(theta) / std::sqrt(1 - sine * sine);
            line.factor *= pv[ratio];
        }
        line.exists = true;
        const double tangent = std::tan(place / 2 * degree), cosine = std::cos(place / 2 * degree);
        const double u = pv[caglioti_u], v = pv[caglioti_v], w = pv[caglioti_w], z = pv[size_z];
        const double square = (u * tangent + v) * tangent + w, gauss = std::sqrt(square);  // a law below 0 gives no width
        if (gauss > least_gauss) {
            line.width_by_w = 1 / (2 * gauss);
            line.width_by_v = tangent * line.width_by_w;
            line.width_by_u = tangent * line.width_by_v;
        }
        line.width_by_z = 1 / cosine;
        line.width_by_place = degree / 2 * ((2 * u * tangent + v) * line.width_by_w + z * std::sin(place / 2 * degree)) / (cosine * cosine);
        const double eta = pv[eta_0] + pv[eta_x] * place + Of(pv, peak, shift_eta);
        line.shape = {.position = static_cast<float>(place),
                      .fwhm = static_cast<float>(gauss + z / cosine + Of(pv, peak, shift_width)),
                      .eta = static_cast<float>(eta < least_eta ? least_eta : eta)};
        line.shape.divergent = pv[s_l] + pv[d_l] >= least_divergence && std::fabs(place - 90) >= near_right_angle;
        if (line.shape.divergent) line.shape.divergence = Divergence_At(pv);
        return line;
    }

    bool One_Divergence(std::span<const float> pv) const { return hps_ || pv[d_l] < one_divergence; }
    Axial_Divergence Divergence_At(std::span<const float> pv) const {
        const double s = pv[s_l], d = pv[d_l];
        return One_Divergence(pv) ? Axial_Divergence{std::fabs(s - d) / 2, (s + d) / 2} : Axial_Divergence{std::fabs(s), d};
    }

    Drawn_Line& At(int peak, int number) { return drawn_[static_cast<std::size_t>(2 * peak + number)]; }

    // Divergent lines are worth a second thread, which draws every other one: they do not touch each other.
    void Draw(const std::vector<Placed_Line>& lines) {
        constexpr std::size_t worth_a_thread = 4;
        std::vector<const Placed_Line*> stale;
        std::size_t divergent = 0;
        for (const Placed_Line& placed : lines) {
            const Drawn_Line& drawn = At(placed.peak, placed.number);
            if (drawn.drawn && drawn.shape == placed.line.shape) continue;
            stale.push_back(&placed);
            divergent += placed.line.shape.divergent ? 1 : 0;
        }
        const auto draw = [&](std::size_t first, std::size_t step) {
            for (std::size_t i = first; i < stale.size(); i += step) Draw(stale[i]->line, At(stale[i]->peak, stale[i]->number));
        };
        if (divergent < worth_a_thread) return draw(0, 1);
        std::future<void> other;
        try {
            other = std::async(std::launch::async, draw, 1, 2);
        } catch (const std::system_error&) {  // no thread to be had
            draw(1, 2);
        }
        draw(0, 2);
        if (other.valid()) other.get();
    }

    // A line whose shape and place stay is drawn already.
    void Draw(const Line& line, Drawn_Line& drawn) const {
        if (drawn.drawn && drawn.shape == line.shape) return;
        drawn.shape = line.shape;
        drawn.drawn = true;
        const float reach = widths_of_reach * line.shape.fwhm, centre = line.shape.position;
        if (!(reach > 0) || !std::isfinite(reach + centre + line.shape.eta)) {
            // No shape: the solver sees that the step leads nowhere.
            drawn.begin = 0;
            drawn.count = x_.size();
            const std::vector<float> none(x_.size(), std::numeric_limits<float>::quiet_NaN());
            drawn.curve = {none,
                           none,
                           none,
                           none,
                           divergence_is_free_ ? none : std::vector<float>{},
                           divergence_is_free_ ? none : std::vector<float>{}};
            return;
        }
        const auto begin = std::ranges::upper_bound(x_, centre - reach);
        const auto end = std::lower_bound(begin, x_.end(), centre + reach);
        drawn.begin = static_cast<std::size_t>(begin - x_.begin());
        drawn.count = static_cast<std::size_t>(end - begin);
        Draw_Profile(line.shape, divergence_is_free_, x_.subspan(drawn.begin, drawn.count), drawn.curve);
    }

    template <class Number>
    static void Add(double factor, const std::vector<float>& values, const Drawn_Line& drawn, std::span<Number> to) {
        const std::span<Number> range = to.subspan(drawn.begin, drawn.count);
        const auto scale = static_cast<Number>(factor);
        for (std::size_t j = 0; j < range.size(); ++j) range[j] += scale * static_cast<Number>(values[j]);
    }

    static void Add_Weighted(double factor, const std::vector<float>& values, std::span<const float> weight, const Drawn_Line& drawn,
                             std::span<float> column) {
        const std::span<float> range = column.subspan(drawn.begin, drawn.count);
        const std::span<const float> weights = weight.subspan(drawn.begin, drawn.count);
        const auto scale = static_cast<float>(factor);
        for (std::size_t j = 0; j < range.size(); ++j) range[j] += scale * values[j] * weights[j];
    }

    template <class Add>
    void Add_By_Common(std::span<const float> pv, int peak, const Line& line, const Drawn_Line& drawn, Add add) const {
        const double all = Of(pv, peak, intensity), share = all * line.factor, one = 1 + static_cast<double>(pv[ratio]);
        const Profile_Curve& curve = drawn.curve;
        if (two_) add(ratio, -share / one + (line.second ? all / one : 0), curve.value);
        if (line.shape.divergent && divergence_is_free_) {
            const bool one_only = One_Divergence(pv);
            const double part = one_only ? share / 2 : share, other = one_only ? share / 2 : 0;
            const double side = one_only && pv[s_l] < pv[d_l] ? -1 : 1;  // of the modulus of S_L - D_L
            add(s_l, side * part, curve.by_s);
            add(s_l, other, curve.by_h);
            add(d_l, part, curve.by_h);
            add(d_l, -side * other, curve.by_s);
        }
        add(caglioti_u, share * line.width_by_u, curve.by_width);
        add(caglioti_v, share * line.width_by_v, curve.by_width);
        add(caglioti_w, share * line.width_by_w, curve.by_width);
        add(size_z, share * line.width_by_z, curve.by_width);
        add(eta_0, share, curve.by_eta);
        add(eta_x, share * line.shape.position, curve.by_eta);
    }

    // The width and the mixing of a peak that moves follow their laws.
    template <class Add>
    void Add_By_Own(std::span<const float> pv, int peak, const Line& line, const Drawn_Line& drawn, Add add) const {
        const double share = Of(pv, peak, intensity) * line.factor, moved = share * line.place_by_position;
        const Profile_Curve& curve = drawn.curve;
        const int first = layout_.Peak(peak);
        add(first + position, moved, curve.by_position);
        add(first + position, moved * line.width_by_place, curve.by_width);
        if (pv[eta_x] != 0) add(first + position, moved * pv[eta_x], curve.by_eta);
        add(first + intensity, line.factor, curve.value);
        add(first + shift_width, share, curve.by_width);
        add(first + shift_eta, share, curve.by_eta);
    }

    Parameter_Layout layout_;
    bool two_;
    double lambda_ratio_;
    std::span<const float> x_;
    Background_Line background_;
    bool hps_ = false;  // S_L describes the divergence alone
    bool divergence_is_free_ = false;
    std::vector<Drawn_Line> drawn_;
    std::vector<double> sum_;
};

}  // namespace

std::unique_ptr<Peak_Model> Constant_Wavelength_Model(const Fit_Constants& constants, const LSQ_State_Vector& vs,
                                                      std::span<const float> x) {
    return std::make_unique<CW_Model>(constants, vs, x);
}

}  // namespace vntl
