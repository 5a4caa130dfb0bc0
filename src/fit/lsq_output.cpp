// What a run of the least squares tells in the listing.
#include <algorithm>
#include <cmath>

#include "base/text.hpp"
#include "fit/least_squares.hpp"
#include "fit/written.hpp"

namespace vntl {

namespace {

std::string Agreement(const LSQ_Data& data, std::span<const float> w, const LSQ_Conditions& c) {
    const Agreement_Factors factors = Agreement_Of(data, w, c.npvar);
    return "\n" + Written("('  Rfact= ',F8.3,'   Rwfact= ',F8.3,'   Rex= ',F8.3)", factors.rfact, factors.rwfact, factors.rex) + "\n";
}

// Pairs of parameters whose correlation is above the limit, in percent.
std::string Correlations(const LSQ_Conditions& c, const LSQ_Run& run) {
    const std::size_t n = run.names.size();
    const auto inverse = [&](std::size_t i, std::size_t j) { return run.inverse[i * n + j]; };
    std::string text = "\n => Correlation Matrix: \n\n";
    int count = 0;
    const std::string limit = Written("(I2)", c.corrmax);
    for (std::size_t i = 0; !run.inverse.empty() && i < n; ++i)
        for (std::size_t j = i + 1; j < n; ++j) {
            const double percent = 100 * inverse(i, j) / std::sqrt(inverse(i, i) * inverse(j, j));
            if (!(percent > c.corrmax)) continue;
            ++count;
            text += "    Correlation:" + Written("(I4)", static_cast<int>(std::lround(std::min(percent, 100.0)))) + " > " + limit +
                    "% for parameters:   " + std::string(Trim(run.names[i])) + " & " + std::string(Trim(run.names[j])) + "\n";
        }
    if (count == 0) return text + "\n => There is no correlations greater than " + limit + "%\n";
    return text + "\n => There are " + Written("(I3)", count) + " values of Correlation > " + limit + "%\n";
}

std::string Final_List(const LSQ_State_Vector& vs) {
    std::string text =
        "\n\n      FINAL LIST OF REFINED PARAMETERS AND STANDARD DEVIATIONS\n"
        "      --------------------------------------------------------\n\n"
        "\n    #   Parameter name                       No.(Model)         Final-Value   Standard Deviation\n\n";
    int running = 0, number = 0;
    for (const LSQ_Parameter& parameter : vs.parameters) {
        ++number;
        if (parameter.code == 0) continue;
        std::string name = parameter.nampar;
        name.resize(std::max<std::size_t>(name.size(), 40), ' ');
        text += Written("(I5)", ++running) + "    " + name + Written("(I6,2F20.5)", number, parameter.pv, parameter.spv) + "\n";
    }
    return text;
}

}  // namespace

std::vector<float> Weights_Of(const LSQ_Data& data) {
    std::vector<float> weights;
    for (const float sigma : data.sw) weights.push_back(1 / (sigma * sigma));
    return weights;
}

Agreement_Factors Agreement_Of(const LSQ_Data& data, std::span<const float> w, int npvar) {
    double difference = 0, observed = 0, weighted = 0;
    for (std::size_t i = 0; i < data.y.size(); ++i) {
        const double d = static_cast<double>(data.y[i]) - data.yc[i];
        difference += std::fabs(d);
        observed += data.y[i];
        weighted += w[i] * d * d;
    }
    const auto ratio = [observed](double part) { return observed > 0 ? part / observed : 0; };
    const auto root = [&ratio](double part) { return static_cast<float>(100 * std::sqrt(std::max(0.0, ratio(part)))); };
    return {static_cast<float>(100 * ratio(difference)), root(weighted), root(data.nobs() - npvar)};
}

std::string Info_LSQ_Output(float f_lambda, const LSQ_Data& data, std::span<const float> w, const LSQ_Conditions& c,
                            const LSQ_State_Vector& vs, const LSQ_Run& run) {
    return Agreement(data, w, c) + "\n  Final value of Marquardt F-Lambda = " + Written("(F16.3)", f_lambda) + "\n" + Correlations(c, run) +
           Final_List(vs) + "\n => Final value of Chi2: " + Written("(E13.5)", run.chi2) + "\n";
}

std::string Fit_File_Text(const LSQ_Data& data, std::span<const float> w) {
    std::string text = "!        X             Y-obs          Y-calc           Sigma\n";
    for (std::size_t i = 0; i < data.x.size(); ++i)
        text += Written("(4F16.4)", data.x[i], data.y[i], data.yc[i], w[i] > 0 ? std::sqrt(1 / w[i]) : 0.0f) + "\n";
    return text;
}

}  // namespace vntl
