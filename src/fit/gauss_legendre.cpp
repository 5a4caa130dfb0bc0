#include "fit/gauss_legendre.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <mutex>
#include <numbers>
#include <utility>

namespace vntl {

namespace {

constexpr std::array sizes = {4, 6, 8, 12, 16, 24, 32, 48, 64, 96, 128, 192, 256, 384, 512, 768, 1024, 1536, 2048};

// The roots of the Legendre polynomial of degree n by Newton's method, from the usual first guess.
Gauss_Rule Make_Rule(int n) {
    Gauss_Rule rule{std::vector<double>(static_cast<std::size_t>(n)), std::vector<double>(static_cast<std::size_t>(n))};
    constexpr int most_steps = 50;
    for (int i = 0; i < (n + 1) / 2; ++i) {
        double u = std::cos(std::numbers::pi * (i + 0.75) / (n + 0.5)), slope = 1;
        for (int step = 0; step < most_steps; ++step) {
            double last = 1, p = u;
            for (int k = 2; k <= n; ++k) last = std::exchange(p, ((2 * k - 1) * u * p - (k - 1) * last) / k);
            slope = n * (u * p - last) / (u * u - 1);
            const double change = p / slope;
            u -= change;
            if (std::fabs(change) < 1e-15) break;
        }
        const auto high = static_cast<std::size_t>(n - 1 - i), low = static_cast<std::size_t>(i);
        rule.node[high] = (1 + u) / 2;
        rule.node[low] = (1 - u) / 2;
        rule.weight[high] = rule.weight[low] = 1 / ((1 - u * u) * slope * slope);
    }
    return rule;
}

}  // namespace

const Gauss_Rule& Gauss_Legendre(int points) {
    static std::array<std::once_flag, sizes.size()> made;
    static std::array<Gauss_Rule, sizes.size()> rules;
    const auto found = std::lower_bound(sizes.begin(), sizes.end() - 1, points);
    const auto i = static_cast<std::size_t>(found - sizes.begin());
    std::call_once(made[i], [i] { rules[i] = Make_Rule(sizes[i]); });
    return rules[i];
}

}  // namespace vntl
