// The search against a second, plain program of the same procedure on random patterns, and by hand where the outcome is known.
#include "calc/search.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <random>

namespace vntl {
namespace {

constexpr const char* too_few = " The number of determined background points is too low, peak search impossible!";
constexpr const char* no_peak = " ! No peak detected ! ";

// --- the plain program: arrays count from 1, one step after the other ---------------------------------------------------------------

using Array = std::vector<double>;

Array Spline_Of(const Array& x, const Array& y, int n) {
    Array p(n + 1), u(n + 1);
    p[1] = -0.5;
    u[1] = 0;
    for (int i = 2; i <= n - 1; ++i) {
        const double s = (x[i] - x[i - 1]) / (x[i + 1] - x[i - 1]);
        const double q = s * p[i - 1] + 2;
        p[i] = (s - 1) / q;
        u[i] = (y[i + 1] - y[i]) / (x[i + 1] - x[i]) - (y[i] - y[i - 1]) / (x[i] - x[i - 1]);
        u[i] = (6 * u[i] / (x[i + 1] - x[i - 1]) - s * u[i - 1]) / q;
    }
    p[n] = (0 - 0.5 * u[n - 1]) / (1 + 0.5 * p[n - 1]);
    for (int i = n - 1; i >= 1; --i) p[i] = p[i] * p[i + 1] + u[i];
    return p;
}

double At(const Array& x, const Array& y, const Array& c, int n, double where) {
    int low = 1, high = n;
    while (high - low > 1) {
        const int middle = (low + high) / 2;
        (x[middle] > where ? high : low) = middle;
    }
    const double h = x[high] - x[low], a = (x[high] - where) / h, b = (where - x[low]) / h;
    return a * y[low] + b * y[high] + ((a * a * a - a) * c[low] + (b * b * b - b) * c[high]) * h * h / 6;
}

void Smooth(Array& v, int m) {
    const double w[] = {0, 10, 5, 1};
    Array out(m + 1);
    for (int i = 1; i <= m; ++i) {
        double sum = 0, weights = 0;
        for (int k = -3; k <= 3; ++k)
            if (i + k >= 1 && i + k <= m) sum += w[std::abs(k)] * v[i + k], weights += w[std::abs(k)];
        out[i] = sum / weights;
    }
    std::copy_n(out.begin() + 1, m, v.begin() + 1);
}

struct Found {
    double x, y, bgr;
};
struct Plain_Result {
    std::string error;
    std::vector<Found> list;
};

double Span(const Array& d, int from, int to) {
    const auto [low, high] = std::minmax_element(d.begin() + from, d.begin() + to + 1);
    return *high - *low;
}

Plain_Result Plain_Search(const Diffraction_Pattern_Type& pattern, float x_from, float x_to, Search_Mode mode,
                          const Search_Parameters& parameters) {
    Array wx(1), wy(1);
    int first = 1;
    for (int i = 1; i <= pattern.npts; ++i)
        if (pattern.x[i - 1] >= x_from) {
            first = i;
            break;
        }
    for (int i = first; i <= pattern.npts && pattern.x[i - 1] <= x_to; ++i) {
        double y = pattern.y[i - 1];
        if (mode == Search_Mode::satellites) y = std::max(0.0, y - pattern.ycalc[i - 1] + pattern.bgr[i - 1]);
        wx.push_back(pattern.x[i - 1]);
        wy.push_back(y);
    }
    const int n = static_cast<int>(wx.size()) - 1, nb = static_cast<int>(std::sqrt(n));
    if (nb < 2) return {too_few, {}};

    const double h = (wx[n] - wx[1]) / (n - 1) / 2;
    const Array s = Spline_Of(wx, wy, n);
    Array xx(2 * n), yy(2 * n);
    for (int k = 1; k <= 2 * n - 2; ++k) {
        xx[k] = wx[1] + (k - 1) * h;
        yy[k] = At(wx, wy, s, n, xx[k]);
    }
    xx[2 * n - 1] = wx[n];
    yy[2 * n - 1] = wy[n];
    Array dd = Spline_Of(xx, yy, 2 * n - 1);
    const int m = 2 * n - 2;
    Array d(m + 1);
    for (int i = 1; i <= m; ++i) {
        const double step = i < m ? xx[i + 1] - xx[i] : xx[m] - xx[m - 1];
        d[i] = (At(xx, yy, dd, m, xx[i] + step / 2) - At(xx, yy, dd, m, xx[i] - step / 2)) / step;
    }
    for (int pass = 0; pass < parameters.Iterations; ++pass) Smooth(d, m);

    double slope = -1e30;
    for (int i = 1; i <= m - 2; ++i) slope = std::max(slope, std::abs(d[i] - d[i + 2]));
    std::vector<Found> background;
    int i = 2, j = 2;
    for (int k = 1; k <= nb; ++k) {
        const double end = wx[1] + k * (wx[n] - wx[1]) / nb;
        double lowest = std::numeric_limits<double>::infinity();
        for (; i <= n - 1 && wx[i] < end; ++i)
            if (wy[i] < lowest) lowest = wy[i], j = i;
        if (Span(d, 2 * j - 2, 2 * j) < slope * parameters.bkg_threshold)
            background.push_back({wx[j], (wy[j - 1] + wy[j] + wy[j + 1]) / 3, 0});
    }
    if (background.size() < 2) return {too_few, {}};
    if (mode == Search_Mode::background) return {"", background};

    for (int pass = 0; pass < parameters.Iterations; ++pass) Smooth(dd, m);
    std::vector<Found> peaks;
    double largest = -1e30;
    for (const bool keep : {false, true})
        for (int c = 2; c <= m - 2; ++c) {
            if (!(d[c] > 0 && d[c + 1] < 0)) continue;
            int top = c, bottom = c + 1;
            while (top > 2 && d[top] < d[top - 1]) --top;
            while (bottom + 1 < m && d[bottom + 1] < d[bottom]) ++bottom;
            const double drop = d[top] - d[bottom];
            if (!keep) largest = std::max(largest, drop);
            if (!keep || !(drop > largest * parameters.peak_threshold)) continue;
            const double part = d[c] / (d[c] - d[c + 1]);
            peaks.push_back({xx[c] + part * (xx[c + 1] - xx[c]), yy[c] + part * (yy[c + 1] - yy[c]), 0});
        }

    const auto first_beyond = [&](double x, int otherwise) {
        for (int c = 4; c <= m - 2; ++c)
            if (xx[c] > x) return c;
        return otherwise;
    };
    double noise = 0;
    for (const Found& point : background) {
        const int c = first_beyond(point.x, m - 2);
        noise = std::max(noise, Span(d, c - 3, std::min(c + 3, m)));
    }
    const double limit = noise * parameters.shoulder_threshold;
    for (const double sign : {1.0, -1.0})  // on a falling side d stands below 0 and rises to a hump; on a rising side all is turned
        for (int c = 4; c <= m - 3; ++c) {
            const auto e = [&](int k) { return sign * d[k]; };
            if (!(e(c) < 0 && e(c - 3) < e(c - 2) && e(c - 2) < e(c - 1) && e(c - 1) < e(c))) continue;
            if (!(e(c) > e(c + 1) && e(c + 1) > e(c + 2) && e(c + 2) > e(c + 3))) continue;
            int k = c, p = c;
            if (sign > 0) {
                while (k < m - 2 && !(d[k] < d[k + 1])) ++k;
                while (p < m - 1 && !(dd[p] < dd[p + 1])) ++p;
            } else {
                while (k > 3 && !(d[k - 1] < d[k])) --k;
                while (p > 2 && !(dd[p] < dd[p - 1])) --p;
            }
            if (std::abs(d[k] - d[c]) > limit) peaks.push_back({xx[p], yy[p], 0});
        }
    if (peaks.empty()) return {no_peak, {}};
    std::sort(peaks.begin(), peaks.end(), [](const Found& a, const Found& b) { return a.x < b.x; });

    const int points = static_cast<int>(background.size());
    Array bx(1), by(1);
    for (const Found& point : background) bx.push_back(point.x), by.push_back(point.y);
    const Array bs = Spline_Of(bx, by, points);
    std::vector<Found> kept;
    for (Found peak : peaks) {
        peak.bgr = peak.x <= bx[1] ? -1 : At(bx, by, bs, points, peak.x);
        const int c = first_beyond(peak.x, m - 1);
        bool above = peak.bgr >= 0;
        for (int k = c - 3; k <= c + 1; ++k) above = above && yy[k] > peak.bgr * (1 + parameters.peak_threshold);
        if (above) kept.push_back(peak);
    }

    const double ratios[] = {0, 1.0025, 1.006, 1.0022};
    const double ratio = ratios[parameters.search_radiation - 1], half = std::numbers::pi / 360;
    Plain_Result result;
    for (std::size_t k = 0; k < kept.size(); ++k) {
        const auto net = [&](std::size_t at) { return kept[at].y - kept[at].bgr; };
        const bool second = ratio > 0 && k > 0 && std::abs(std::sin(kept[k].x * half) / std::sin(kept[k - 1].x * half) - ratio) < 0.005 &&
                            std::abs(net(k) / net(k - 1) - 0.5) < 0.2;
        if (!second) result.list.push_back(kept[k]);
    }
    return result;
}

// --- patterns ----------------------------------------------------------------------------------------------------------------------

Diffraction_Pattern_Type Pattern(int n, double x0, double step, const std::function<double(double)>& height) {
    Diffraction_Pattern_Type p;
    if (n > 0) {
        EXPECT_TRUE(Allocate_Diffraction_Pattern(p, n).ok());
    }
    for (int i = 0; i < n; ++i) {
        p.x[i] = static_cast<float>(x0 + step * i);
        p.y[i] = static_cast<float>(height(p.x[i]));
    }
    p.step = static_cast<float>(step);
    return p;
}

double Gauss(double x, double centre, double fwhm) { return std::exp(-4 * std::numbers::ln2 * std::pow((x - centre) / fwhm, 2)); }

// Peaks of all heights over a sloping background with counting noise; some with steps, stretches without counts, or uneven x.
Diffraction_Pattern_Type Random_Pattern(unsigned seed) {
    std::mt19937 random(seed);
    const auto between = [&](double low, double high) { return low + (high - low) * static_cast<double>(random()) / 4294967296.0; };
    const int n = seed % 10 == 0 ? static_cast<int>(between(4, 40)) : static_cast<int>(between(60, 1200));
    const double x0 = between(5, 40), step = between(0.01, 0.06), width = n * step, level = between(5, 300);
    const double fwhm = between(3, 12) * step;
    std::vector<std::array<double, 2>> peaks(static_cast<std::size_t>(between(1, 25)));
    for (auto& [centre, height] : peaks) centre = x0 + between(0, width), height = level * std::pow(10, between(-1.5, 2));
    auto p = Pattern(n, x0, step, [&](double x) {
        double y = level * (1 - 0.5 * (x - x0) / width);
        for (const auto& [centre, height] : peaks) y += height * Gauss(x, centre, fwhm);
        return y;
    });
    p.bgr.assign(p.y.size(), static_cast<float>(level / 2));
    p.ycalc = p.y;
    for (float& y : p.ycalc) y *= 0.7f;
    std::normal_distribution<float> normal;
    for (float& y : p.y) y = std::round(y + std::sqrt(y) * normal(random));
    const auto from = p.y.begin() + n / 3, to = p.y.begin() + n / 2;
    if (seed % 5 == 1) std::fill(from, to, *from);
    if (seed % 5 == 2) std::for_each(from, to, [&](float& y) { y += static_cast<float>(2 * level); });
    if (seed % 5 == 3)
        for (std::size_t i = 1; i < p.x.size(); ++i) p.x[i] += static_cast<float>(step * between(-0.3, 0.3));
    return p;
}

Status Search(const Diffraction_Pattern_Type& p, PKB_Type& result, Search_Mode mode = Search_Mode::peaks,
              Search_Parameters parameters = {}) {
    return Search_Pattern(p, -1e30f, 1e30f, mode, parameters, result);
}

TEST(Search, GivesTheListsOfThePlainProgram) {
    int compared = 0, refused = 0;
    for (unsigned seed = 1; seed <= 200; ++seed) {
        const auto p = Random_Pattern(seed);
        Search_Parameters parameters;
        parameters.search_radiation = 1 + static_cast<int>(seed % 4);
        if (seed % 3 == 0) parameters = {0.1f, 0.5f, 0.2f, static_cast<int>(seed % 6), parameters.search_radiation};
        const float width = p.x.back() - p.x.front(), cut = seed % 4 == 0 ? 0.1f * width : 0.0f;
        const float from = p.x.front() + cut, to = p.x.back() - cut;
        for (const auto mode : {Search_Mode::peaks, Search_Mode::satellites, Search_Mode::background}) {
            const Plain_Result plain = Plain_Search(p, from, to, mode, parameters);
            PKB_Type result;
            const Status status = Search_Pattern(p, from, to, mode, parameters, result);
            const std::string what = "pattern " + std::to_string(seed) + " mode " + std::to_string(static_cast<int>(mode));
            ASSERT_EQ(status.message, plain.error) << what;
            ASSERT_EQ(static_cast<std::size_t>(result.np), plain.list.size()) << what;
            ASSERT_EQ(result.bgr.size(), mode == Search_Mode::background ? 0 : plain.list.size()) << what;
            refused += status.failed;
            for (std::size_t i = 0; i < plain.list.size(); ++i, ++compared) {
                ASSERT_NEAR(result.x[i], plain.list[i].x, 1e-5 * plain.list[i].x) << what << " point " << i;
                ASSERT_NEAR(result.y[i], plain.list[i].y, 1e-4 * (1 + std::abs(plain.list[i].y))) << what << " point " << i;
                if (mode != Search_Mode::background) {
                    ASSERT_NEAR(result.bgr[i], plain.list[i].bgr, 1e-4 * (1 + std::abs(plain.list[i].bgr))) << what << " point " << i;
                }
            }
        }
    }
    EXPECT_GT(compared, 5000);
    EXPECT_GT(refused, 5);
}

// --- by hand -----------------------------------------------------------------------------------------------------------------------

// Background 100 with ripples, so that its derivative is not flat, and peaks of FWHM 0.2 at the given places.
Diffraction_Pattern_Type Peaks_At(const std::vector<std::pair<double, double>>& peaks) {
    return Pattern(2001, 20.0, 0.02, [&](double x) {
        double y = 100 + 0.2 * std::sin(9.1 * x) + 0.15 * std::cos(23.7 * x);
        for (const auto& [centre, height] : peaks) y += height * Gauss(x, centre, 0.2);
        return y;
    });
}

TEST(Search, FindsPeaksWhereTheyAre) {
    const std::vector<std::pair<double, double>> peaks = {{25.013, 1000}, {33.337, 200}, {40.008, 5000}, {51.871, 300}};
    const auto p = Peaks_At(peaks);
    PKB_Type result;
    ASSERT_TRUE(Search(p, result).ok());
    ASSERT_EQ(result.np, 4);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(result.x[i], peaks[i].first, 0.004);
        EXPECT_NEAR(result.y[i], 100 + peaks[i].second, 0.01 * (100 + peaks[i].second));
        EXPECT_NEAR(result.bgr[i], 100, 1);
    }
    // The window: only what lies in it; one beyond the data begins at the first point.
    ASSERT_TRUE(Search_Pattern(p, 30, 45, Search_Mode::peaks, {}, result).ok());
    EXPECT_EQ(result.np, 2);
    ASSERT_TRUE(Search_Pattern(p, 100, 200, Search_Mode::peaks, {}, result).ok());
    EXPECT_EQ(result.np, 4);
    const Status below = Search_Pattern(p, 1, 2, Search_Mode::peaks, {}, result);
    EXPECT_EQ(below.message, too_few);
    EXPECT_EQ(result.np, 4);  // as it was
}

TEST(Search, DropsTheSecondOfADoublet) {
    const auto pair_of = [](double ratio) {
        return 2 / std::numbers::pi * 180 * std::asin(ratio * std::sin(22.5 * std::numbers::pi / 180));
    };
    struct {
        int radiation;
        double ratio, height;
        int peaks;
    } const cases[] = {
        {2, 1.0055, 500, 1}, {2, 1.0055, 1000, 2}, {2, 1.0055, 320, 1}, {2, 1.0055, 280, 2}, {2, 1.0055, 680, 1}, {2, 1.0055, 720, 2},
        {2, 1.0085, 500, 2}, {3, 1.0085, 500, 1},  {3, 1.0120, 500, 2}, {4, 1.0055, 500, 1}, {4, 1.0080, 500, 2}, {1, 1.0055, 500, 2},
    };
    for (const auto& [radiation, ratio, height, peaks] : cases) {
        PKB_Type result;
        Search_Parameters parameters;
        parameters.search_radiation = radiation;
        ASSERT_TRUE(Search(Peaks_At({{45, 1000}, {pair_of(ratio), height}}), result, Search_Mode::peaks, parameters).ok());
        EXPECT_EQ(result.np, peaks) << radiation << ' ' << ratio << ' ' << height;
        EXPECT_NEAR(result.x[0], 45, 0.01);
    }
}

TEST(Search, RefusesWithItsTextAndKeepsTheResult) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    auto with_nan = Peaks_At({{30, 1000}}), with_inf = with_nan;
    with_nan.y[700] = nan;
    with_inf.y[700] = inf;
    const auto few = [](int n) { return Pattern(n, 10, 0.1, [](double x) { return 100 + 3 * x; }); };
    struct {
        const char* what;
        Diffraction_Pattern_Type pattern;
        std::string text, background_text;
    } const cases[] = {
        {"no point", few(0), too_few, too_few},
        {"one", few(1), too_few, too_few},
        {"two", few(2), too_few, too_few},
        {"three", few(3), too_few, too_few},
        {"no counts", Pattern(500, 10, 0.1, [](double) { return 0; }), too_few, too_few},
        {"not a number", with_nan, too_few, too_few},
        {"infinite", with_inf, too_few, too_few},
        {"rising without a shoulder", Pattern(500, 10, 0.1, [](double x) { return x + 1000 / (1 + std::exp(30 - x)); }), no_peak, ""},
    };
    for (const auto& [what, pattern, text, background_text] : cases) {
        PKB_Type result{1, {7}, {8}, {9}};
        EXPECT_EQ(Search(pattern, result).message, text) << what;
        EXPECT_EQ(result.x, std::vector<float>{7}) << what;
        const Status background = Search(pattern, result, Search_Mode::background);
        EXPECT_EQ(background.message, background_text) << what;
    }
    for (const float odd : {nan, inf, 3e38f, -3e38f})
        for (const int n : {5, 10, 50})
            for (const auto mode : {Search_Mode::peaks, Search_Mode::satellites, Search_Mode::background}) {
                auto p = Random_Pattern(static_cast<unsigned>(n));
                p.y[p.y.size() / 2] = p.ycalc[1] = odd;
                PKB_Type result;
                if (Search(p, result, mode).failed) {
                    EXPECT_EQ(result.np, 0);
                }
                p.ycalc.clear();
                p.al_ycalc = p.has_ycalc = false;
                const Status bare = Search(p, result, mode);
                EXPECT_EQ(bare.failed, !bare.message.empty());
            }
}

TEST(Search, ShouldersAndPeaksBesideTheBackground) {
    // Rising only, with a shoulder on the flank.
    const auto flank = Pattern(1001, 20, 0.02, [](double x) {
        return 100 + 0.5 * x + 1000 / (1 + std::exp(-(x - 32) / 0.5)) + 400 / (1 + std::exp(-(x - 30) / 0.1));
    });
    PKB_Type result;
    ASSERT_TRUE(Search(flank, result).ok());
    ASSERT_GE(result.np, 1);
    EXPECT_NEAR(result.x[0], 30.3, 0.3);
    // A peak at the very beginning lies left of the first point of the background.
    ASSERT_TRUE(Search(Peaks_At({{20.1, 50000}, {35, 5000}}), result).ok());
    ASSERT_EQ(result.np, 1);
    EXPECT_NEAR(result.x[0], 35, 0.01);
    // All dropped in the end: nothing is found, and nothing is said.
    auto below = Peaks_At({{35, 5000}});
    for (float& y : below.y) y -= 1000;
    ASSERT_TRUE(Search(below, result).ok());
    EXPECT_EQ(result.np, 0);
}

}  // namespace
}  // namespace vntl
