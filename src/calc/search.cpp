// The rules of the search: the window, the grid of twice the density, the background, peaks and shoulders, what is kept of them.
//
// The slope of a peak rises to a top, falls through zero at the peak and goes on to a bottom. A shoulder does not bring it to zero: on the
// falling side of a peak it is a hump of the slope below zero, on the rising side a dip above zero.
#include "calc/search.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "calc/search_curve.hpp"

namespace vntl {

namespace {

constexpr double nothing_found = -1e30;
constexpr double no_background = -1;
constexpr double doublet_tolerance = 0.005, half_height_tolerance = 0.2;
constexpr int reach = 3;  // neighbours on either side that the noise and a shoulder are judged by
constexpr int least_background_points = 2;

constexpr std::string_view too_few_points = " The number of determined background points is too low, peak search impossible!";
constexpr std::string_view no_peak = " ! No peak detected ! ";
constexpr std::string_view no_curve = "The first profile has no calculated curve and background";

struct Peak {
    double x, y;
    double bgr = no_background;
};

struct Points {
    Column x, y;
    int size() const { return x.size(); }
};

// Largest minus smallest of v(from) to v(to). What is no number at its start has no range, and passes no test for a small one.
double Range_Of(const Column& v, int from, int to) {
    double low = v(from), high = v(from);
    for (int i = from + 1; i <= to; ++i) {
        low = std::min(low, v(i));
        high = std::max(high, v(i));
    }
    return high - low;
}

// The points of the window. Satellites are what a refined model left, on top of its background.
Points Points_In_Window(const Diffraction_Pattern_Type& p, float x_from, float x_to, bool satellites) {
    const std::size_t n = std::min(p.x.size(), p.y.size());
    std::size_t i = 0;
    while (i < n && !(p.x[i] >= x_from)) ++i;
    if (i == n) i = 0;
    Points w;
    for (; i < n && p.x[i] <= x_to; ++i) {
        const double y = p.y[i];
        w.x.Add(p.x[i]);
        w.y.Add(satellites ? std::max(0.0, y - p.ycalc[i] + p.bgr[i]) : y);
    }
    return w;
}

// The pattern on a grid of twice the density, with its first and second derivative. `m` is the number of derivatives.
struct Fine_Curve {
    Column x, y, first, second;
    int m = 0;

    Fine_Curve(const Points& w, int iterations) {
        const int n = w.size();
        const Column spline = Loose_Spline(w.x, w.y);
        const double h = ((w.x(n) - w.x(1)) / (n - 1)) / 2;
        int left = 1;
        for (int k = 1; k <= 2 * n - 2; ++k) {
            const double at = w.x(1) + (k - 1) * h;
            while (left < n - 1 && w.x(left + 1) <= at) ++left;
            x.Add(at);
            y.Add(Spline_Value(w.x, w.y, spline, left, at));
        }
        x.Add(w.x(n));
        y.Add(w.y(n));
        second = Loose_Spline(x, y);
        m = 2 * n - 2;
        first = First_Derivative(x, y, second, m);
        for (int pass = 0; pass < iterations; ++pass) Smooth_Derivative(first);
        second.Keep(m);
    }
};

int Intervals_Of(const Points& w) { return static_cast<int>(std::sqrt(w.size())); }

// The lowest point of each interval, where the derivative hardly changes. An interval without points takes that of the one before again.
Points Background_Points(const Points& w, const Fine_Curve& fine, double threshold) {
    const int n = w.size(), intervals = Intervals_Of(w);
    double slope_range = nothing_found;
    for (int i = 1; i <= fine.m - 2; ++i) slope_range = std::max(slope_range, std::fabs(fine.first(i) - fine.first(i + 2)));

    Points found;
    int i = 2, lowest = 2;
    for (int k = 1; k <= intervals; ++k) {
        const double end = w.x(1) + k * (w.x(n) - w.x(1)) / intervals;
        for (double least = HUGE_VAL; i <= n - 1 && w.x(i) < end; ++i) {
            if (!(w.y(i) < least)) continue;
            least = w.y(i);
            lowest = i;
        }
        if (!(Range_Of(fine.first, 2 * lowest - 2, 2 * lowest) < slope_range * threshold)) continue;
        found.x.Add(w.x(lowest));
        found.y.Add((w.y(lowest - 1) + w.y(lowest) + w.y(lowest + 1)) / 3);
    }
    return found;
}

// --- peaks: the derivative goes through zero ----------------------------------------------------------------------------------------

// From the top of the rise before place i to the bottom of the fall behind it.
double Drop_At(const Fine_Curve& fine, int i) {
    const Column& d = fine.first;
    int top = i, bottom = i + 1;
    while (top > 2 && d(top) < d(top - 1)) --top;
    while (bottom + 1 < fine.m && d(bottom + 1) < d(bottom)) ++bottom;
    return d(top) - d(bottom);
}

void Add_Crossings(const Fine_Curve& fine, double threshold, std::vector<Peak>& peaks) {
    struct Crossing {
        int at;
        double drop;
    };
    const Column &d = fine.first, &x = fine.x, &y = fine.y;
    std::vector<Crossing> crossings;
    double largest = nothing_found;
    for (int i = 2; i <= fine.m - 2; ++i) {
        if (!(d(i) > 0 && d(i + 1) < 0)) continue;
        crossings.push_back({i, Drop_At(fine, i)});
        largest = std::max(largest, crossings.back().drop);
    }
    for (const auto& [i, drop] : crossings) {
        if (!(drop > largest * threshold)) continue;
        const double step = d(i) / (d(i) - d(i + 1));
        peaks.push_back({x(i) + step * (x(i + 1) - x(i)), y(i) + step * (y(i + 1) - y(i))});
    }
}

// --- shoulders: the derivative turns without going through zero -----------------------------------------------------------------------

double Noise(const Fine_Curve& fine, const Points& background) {
    double noise = 0;
    for (int k = 1; k <= background.size(); ++k) {
        const int j = fine.x.First_Above(reach + 1, fine.m - 2, background.x(k), fine.m - 2);
        noise = std::max(noise, Range_Of(fine.first, j - reach, std::min(j + reach, fine.m)));
    }
    return noise;
}

// `sign` +1: a local maximum at i with three steps down on either side; -1: a local minimum.
bool Turns_At(const Column& d, int i, double sign) {
    for (int k = 0; k < reach; ++k)
        if (!(sign * d(i + k) > sign * d(i + k + 1) && sign * d(i - k) > sign * d(i - k - 1))) return false;
    return true;
}

void Add_Falling_Shoulders(const Fine_Curve& fine, double limit, std::vector<Peak>& peaks) {
    const Column &d = fine.first, &dd = fine.second;
    int p = 1;
    for (int i = reach + 1; i <= fine.m - reach; ++i) {
        if (!(d(i) < 0 && Turns_At(d, i, 1))) continue;
        int k = i;
        while (k < fine.m - 2 && !(d(k) < d(k + 1))) ++k;
        if (!(std::fabs(d(k) - d(i)) > limit)) continue;
        // The place rises with i. Where the one of the shoulder before already lies behind i, nothing between the two qualifies, so
        // that no point is looked at twice.
        p = std::max(p, i);
        while (p < fine.m - 1 && !(dd(p) < dd(p + 1))) ++p;
        peaks.push_back({fine.x(p), fine.y(p)});
    }
}

void Add_Rising_Shoulders(const Fine_Curve& fine, double limit, std::vector<Peak>& peaks) {
    const Column &d = fine.first, &dd = fine.second;
    int p = fine.m;
    for (int i = fine.m - reach; i >= reach + 1; --i) {
        if (!(d(i) > 0 && Turns_At(d, i, -1))) continue;
        int k = i;
        while (k > 3 && !(d(k - 1) < d(k))) --k;
        if (!(std::fabs(d(k) - d(i)) > limit)) continue;
        p = std::min(p, i);
        while (p > 2 && !(dd(p) < dd(p - 1))) --p;
        peaks.push_back({fine.x(p), fine.y(p)});
    }
}

// --- what stays ---------------------------------------------------------------------------------------------------------------------

// A spline goes through each point once, however many intervals took it.
Points Without_Repeats(const Points& background) {
    Points once;
    for (int i = 1; i <= background.size(); ++i) {
        if (i > 1 && background.x(i) == background.x(i - 1)) continue;
        once.x.Add(background.x(i));
        once.y.Add(background.y(i));
    }
    return once;
}

void Put_On_Background(const Points& background, std::vector<Peak>& peaks) {
    const Points points = Without_Repeats(background);
    const Column spline = Loose_Spline(points.x, points.y);
    for (Peak& peak : peaks) {
        if (!(peak.x > points.x(1))) continue;
        const bool level = points.size() == 1;
        peak.bgr = level ? points.y(1) : Spline_Value(points.x, points.y, spline, Interval_Of(points.x, peak.x), peak.x);
    }
}

bool Stands_Out(const Fine_Curve& fine, const Peak& peak, double threshold) {
    if (!(peak.bgr >= 0)) return false;
    const int j = fine.x.First_Above(reach + 1, fine.m - 2, peak.x, fine.m - 1);
    for (int i = j - reach; i <= j + 1; ++i)
        if (!(fine.y(i) > peak.bgr * (1 + threshold))) return false;
    return true;
}

// The second peak of a pair whose place and height are those of K-alpha2 goes. All pairs are judged on the list as it stands.
void Drop_Doublets(double ratio, std::vector<Peak>& peaks) {
    const auto sine = [](const Peak& peak) { return std::sin(peak.x * std::numbers::pi / 360); };
    std::vector<bool> drops(peaks.size(), false);
    for (std::size_t i = 0; i + 1 < peaks.size(); ++i) {
        const Peak &first = peaks[i], &next = peaks[i + 1];
        const double height = (next.y - next.bgr) / (first.y - first.bgr);
        drops[i + 1] = std::fabs(sine(next) / sine(first) - ratio) < doublet_tolerance && std::fabs(height - 0.5) < half_height_tolerance;
    }
    std::size_t place = 0;
    std::erase_if(peaks, [&](const Peak&) { return drops[place++]; });
}

PKB_Type Result_Of(const Points& background) {
    PKB_Type result;
    result.np = background.size();
    for (int i = 1; i <= background.size(); ++i) {
        result.x.push_back(static_cast<float>(background.x(i)));
        result.y.push_back(static_cast<float>(background.y(i)));
    }
    return result;
}

PKB_Type Result_Of(const std::vector<Peak>& peaks) {
    PKB_Type result;
    result.np = static_cast<std::int32_t>(peaks.size());
    for (const Peak& peak : peaks) {
        result.x.push_back(static_cast<float>(peak.x));
        result.y.push_back(static_cast<float>(peak.y));
        result.bgr.push_back(static_cast<float>(peak.bgr));
    }
    return result;
}

}  // namespace

Search_Radiation Radiation_Of_Search(int search_radiation, float lambda_of_pattern) {
    switch (search_radiation) {
        case 1:
            return {lambda_of_pattern, lambda_of_pattern, 1.0f, 0};
        case 2:
            return {1.540599f, 1.54439f, 0.5f, 1.0025};
        case 3:
            return {0.70926f, 0.71354f, 0.5f, 1.006};
        case 4:
            return {1.78892f, 1.79285f, 0.5f, 1.0022};
        default:
            return {1.540599f, 1.540599f, 1.0f, 0};
    }
}

Status Search_Pattern(const Diffraction_Pattern_Type& pattern, float x_from, float x_to, Search_Mode mode,
                      const Search_Parameters& parameters, PKB_Type& result) {
    const bool satellites = mode == Search_Mode::satellites;
    const std::size_t points = std::min(pattern.x.size(), pattern.y.size());
    if (satellites && (pattern.ycalc.size() < points || pattern.bgr.size() < points)) return Status::Fail(no_curve);
    const Points w = Points_In_Window(pattern, x_from, x_to, satellites);
    if (Intervals_Of(w) < least_background_points) return Status::Fail(too_few_points);

    const int iterations = std::clamp(parameters.Iterations, 0, largest_iterations);
    Fine_Curve fine(w, iterations);
    const Points background = Background_Points(w, fine, parameters.bkg_threshold);
    if (background.size() < least_background_points) return Status::Fail(too_few_points);
    if (mode == Search_Mode::background) {
        result = Result_Of(background);
        return Status::Done();
    }

    for (int pass = 0; pass < iterations; ++pass) Smooth_Derivative(fine.second);
    std::vector<Peak> peaks;
    Add_Crossings(fine, parameters.peak_threshold, peaks);
    const double limit = Noise(fine, background) * parameters.shoulder_threshold;
    Add_Falling_Shoulders(fine, limit, peaks);
    Add_Rising_Shoulders(fine, limit, peaks);
    if (peaks.empty()) return Status::Fail(no_peak);
    std::stable_sort(peaks.begin(), peaks.end(), [](const Peak& a, const Peak& b) { return a.x < b.x; });

    Put_On_Background(background, peaks);
    std::erase_if(peaks, [&](const Peak& peak) { return !Stands_Out(fine, peak, parameters.peak_threshold); });
    const double doublet = Radiation_Of_Search(parameters.search_radiation, 0).doublet_ratio;
    if (doublet > 0) Drop_Doublets(doublet, peaks);
    result = Result_Of(peaks);
    return Status::Done();
}

}  // namespace vntl
