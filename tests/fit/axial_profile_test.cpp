// Peaks of constant wavelength against an adaptive quadrature of the defining convolution over the angle of arrival, which
// tests/data/fit/axial_profiles.py made; derivatives against central differences.
#include "fit/axial_profile.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <tuple>

#include "fit/gauss_legendre.hpp"
#include "fit/peak_model.hpp"

namespace vntl {
namespace {

TEST(Axial_Profile, AgreesWithQuadrature) {
    struct Place {
        float offset;
        double gauss, lorentz;
    };
    std::map<std::tuple<float, double, double, float>, std::vector<Place>> peaks;
    std::ifstream table(std::string(TEST_DATA) + "/fit/axial_profiles.txt");
    float centre, width;
    double s, h;
    for (Place p{}; table >> centre >> s >> h >> width >> p.offset >> p.gauss >> p.lorentz;) peaks[{centre, s, h, width}].push_back(p);
    ASSERT_EQ(peaks.size(), 64u);
    double worst = 0;
    for (const auto& [key, places] : peaks) {
        std::tie(centre, s, h, width) = key;
        for (const float eta : {0.0f, 0.4f, 1.0f}) {
            std::vector<float> x;
            for (const Place& p : places) x.push_back(centre + p.offset);
            Profile_Curve curve;
            Draw_Profile({centre, width, eta, true, {s, h}}, false, x, curve);
            double largest = 0;
            for (const Place& p : places) largest = std::max(largest, (1 - eta) * p.gauss + eta * p.lorentz);
            for (std::size_t i = 0; i < places.size(); ++i) {
                const double told = (1 - eta) * places[i].gauss + eta * places[i].lorentz;
                const double error = std::fabs(curve.value[i] - told) / largest;
                EXPECT_LT(error, 1e-5) << centre << " s " << s << " h " << h << " H " << width << " at " << places[i].offset << " eta "
                                       << eta;
                worst = std::max(worst, error);
            }
        }
    }
    RecordProperty("worst", std::to_string(worst));
}

TEST(Axial_Profile, RulesIntegratePolynomials) {
    for (const int points : {1, 7, 100, 5000}) {
        const Gauss_Rule& rule = Gauss_Legendre(points);
        EXPECT_GE(static_cast<int>(rule.node.size()), std::min(points, 2048));
        double sum = 0, fifth = 0;
        for (std::size_t i = 0; i < rule.node.size(); ++i) {
            sum += rule.weight[i];
            fifth += rule.weight[i] * std::pow(rule.node[i], 5);
        }
        EXPECT_NEAR(sum, 1, 1e-13);
        EXPECT_NEAR(fifth, 1.0 / 6, 1e-13);
    }
}

// A model of two peaks with every parameter free, which a case changes.
struct Model_Case {
    const char* name;
    float position, s_l, d_l, u, v, w, z, eta0, x;
    bool two;
};

TEST(CW_Model, DerivativesAreThoseOfTheValues) {
    const Model_Case cases[] = {{"symmetric", 40, 0, 0, 0.01f, -0.006f, 0.012f, 0.02f, 0.3f, 0.002f, false},
                                {"doublet", 60, 0, 0, 0.01f, -0.006f, 0.012f, 0.02f, 0.3f, 0.002f, true},
                                {"divergent", 20, 0.03f, 0.02f, 0.01f, -0.006f, 0.012f, 0, 0.5f, 0, true},
                                {"wide detector", 25, 0.015f, 0.035f, 0.01f, -0.006f, 0.012f, 0.01f, 0.5f, 0, false},
                                {"S_L alone", 15, 0.03f, 0, 0.01f, -0.006f, 0.012f, 0.01f, 0.4f, 0, true},
                                {"to 0 degrees", 5, 0.05f, 0.04f, 0.01f, -0.006f, 0.03f, 0.01f, 0.4f, 0, false},
                                {"behind 90", 150, 0.04f, 0.03f, 0.01f, -0.006f, 0.012f, 0.01f, 0.5f, 0.001f, true},
                                {"at 90", 90.2f, 0.04f, 0.03f, 0.01f, -0.006f, 0.012f, 0.01f, 0.5f, 0, false}};
    for (const Model_Case& c : cases) {
        SCOPED_TRACE(c.name);
        Fit_State state;
        state.ratio.value = 0.5f;
        state.asym = {Fit_Value{c.s_l}, Fit_Value{c.d_l}};
        state.prof = {Fit_Value{c.u}, Fit_Value{c.v}, Fit_Value{c.w}, Fit_Value{c.z}, Fit_Value{c.eta0}, Fit_Value{c.x}};
        state.peaks.resize(2);
        state.peaks[0].pos.value = c.position;
        state.peaks[0].intensity.value = 100;
        state.peaks[1].pos.value = c.position + 0.5f;
        state.peaks[1].intensity.value = 60;
        state.peaks[1].shift_width.value = 0.03f;
        state.peaks[1].shift_eta.value = 0.1f;
        const std::vector<Background_Mark> nodes = {{c.position - 2, 10}, {c.position + 3, 20}};
        LSQ_State_Vector vs = State_Vector(Fit_Kind::constant_wavelength, state, nodes);
        std::vector<float> pv, x;
        std::vector<int> all;
        for (LSQ_Parameter& parameter : vs.parameters) {
            parameter.code = 1;
            all.push_back(static_cast<int>(pv.size()));
            pv.push_back(parameter.pv);
        }
        for (int i = 0; i < 160; ++i) x.push_back(c.position - 1.6f + 0.02f * static_cast<float>(i));
        const auto model = Constant_Wavelength_Model(
            {.node_x = {nodes[0].x, nodes[1].x}, .two_wavelengths = c.two, .lambda_ratio = 1.00246f, .d2tof = 0}, vs, x);
        Jacobian columns(static_cast<int>(x.size()), vs.np());
        const std::vector<float> weight(x.size(), 1);
        model->Derivatives(pv, all, weight, columns);
        const auto values = [&](std::vector<float> at) {
            std::vector<float> y(x.size()), bgr(x.size());
            model->Values(at, y, bgr);
            return y;
        };
        for (const int p : all) {
            const auto i = static_cast<std::size_t>(p);
            if (i == 2 && c.d_l == 0) continue;  // D_L of 0 has no lower side
            if ((i == 1 || i == 2) && c.s_l == 0) continue;
            if (i == 0 && !c.two) continue;  // told to be without effect on one line
            const bool is_position = p == 11 || p == 15;
            const float step = is_position ? 0.002f : i == 1 || i == 2 ? 0.001f : std::max(0.01f * std::fabs(pv[i]), 0.0005f);
            std::vector<float> low = pv, high = pv;
            low[i] -= step, high[i] += step;
            const std::vector<float> y1 = values(low), y2 = values(high);
            const std::span<const float> column = std::as_const(columns).Column(p);
            float largest = 0;
            for (const float d : column) largest = std::max(largest, std::fabs(d));
            const float noise = 4e-7f * *std::ranges::max_element(y1) / step;  // of the last digits of two values
            for (std::size_t j = 0; j < x.size(); ++j)
                EXPECT_NEAR((y2[j] - y1[j]) / (high[i] - low[i]), column[j], 0.006f * largest + noise)
                    << vs.parameters[i].nampar << " at " << x[j];
        }
    }
}

}  // namespace
}  // namespace vntl
