// Runs become patterns: against the pattern that the counts were drawn from, against averages made point by point with a dense solver, and
// against what sums of counts must keep.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "base/spline.hpp"
#include "instrument/block_spline.hpp"
#include "instrument/simulated_instrument.hpp"

namespace vntl::test {
namespace {

using Runs = std::vector<Powder_Numor_Type>;

struct Converted {
    Diffraction_Pattern_Type p;
    std::vector<std::string> warnings;
    Status status;
};
Converted Convert(const Runs& runs, const Numor_Conversion& how = {}, std::vector<bool> active = {}) {
    Converted made;
    if (active.empty()) active.assign(runs.size(), true);
    made.status = PowderNumors_To_DiffPattern(runs, active, made.p, how, made.warnings);
    return made;
}
Diffraction_Pattern_Type Pattern(const Runs& runs, const Numor_Conversion& how = {}) {
    Converted made = Convert(runs, how);
    EXPECT_TRUE(made.status.ok()) << made.status.message;
    return made.p;
}

double Sum(std::span<const float> values) {
    double sum = 0;
    for (const float v : values) sum += static_cast<double>(v);
    return sum;
}

// --- splines -----------------------------------------------------------------------------------------------------------------------

using Doubles = std::vector<double>;

// Second derivatives of the spline with chord ends from its equations: a full matrix, whose diagonal outweighs the rest.
Doubles Dense_Spline(const Doubles& x, const Doubles& y) {
    const std::size_t n = x.size();
    std::vector<Doubles> a(n, Doubles(n + 1, 0.0));
    const auto slope = [&](std::size_t i) { return (y[i + 1] - y[i]) / (x[i + 1] - x[i]); };
    a[0][0] = 2, a[0][1] = 1;
    a[n - 1][n - 1] = 2, a[n - 1][n - 2] = 1;
    for (std::size_t i = 1; i + 1 < n; ++i) {
        a[i][i - 1] = x[i] - x[i - 1], a[i][i] = 2 * (x[i + 1] - x[i - 1]), a[i][i + 1] = x[i + 1] - x[i];
        a[i][n] = 6 * (slope(i) - slope(i - 1));
    }
    for (std::size_t c = 0; c < n; ++c)
        for (std::size_t r = 0; r < n; ++r) {
            const double f = a[r][c] / a[c][c];
            for (std::size_t k = n + 1; r != c && k-- > c;) a[r][k] -= f * a[c][k];
        }
    Doubles m(n);
    for (std::size_t i = 0; i < n; ++i) m[i] = a[i][n] / a[i][i];
    return m;
}

// Cubics that are put together: second derivatives are chosen, values follow. A chord has the slope of an end where the second
// derivative there is minus half of that of the next point.
TEST(Conversion, SplinesHaveTheSlopesOfTheirChords) {
    Dice dice(1);
    constexpr std::size_t columns = 3;
    for (const std::size_t n : {2u, 3u, 4u, 9u, 40u}) {
        Doubles x(n), m(n), column(n), y(n * columns), scratch(n), found(n * columns);
        for (std::size_t i = 1; i < n; ++i) x[i] = x[i - 1] + dice.Between(0.02, 0.2);
        for (std::size_t i = 1; i + 1 < n; ++i) m[i] = dice.Between(-10, 10);
        if (n > 2) m[0] = -m[1] / 2, m[n - 1] = -m[n - 2] / 2;
        double slope = dice.Between(-3, 3);
        for (std::size_t i = 0; i + 1 < n; ++i) {
            const double h = x[i + 1] - x[i];
            column[i + 1] = column[i] + slope * h + h * h * (2 * m[i] + m[i + 1]) / 6;
            slope += h * (m[i] + m[i + 1]) / 2;
        }
        const Doubles dense = Dense_Spline(x, column);
        for (std::size_t i = 0; i < n; ++i) EXPECT_NEAR(dense[i], m[i], 1e-9);
        for (std::size_t i = 0; i < y.size(); ++i) y[i] = column[i / columns] * static_cast<double>(i % columns + 1);
        Block_Spline(x, y, columns, scratch, found);
        for (std::size_t i = 0; i < y.size(); ++i) EXPECT_NEAR(found[i], m[i / columns] * static_cast<double>(i % columns + 1), 1e-8) << n;
    }
}

// --- true calibrations -------------------------------------------------------------------------------------------------------------

// Distances from the true pattern in standard deviations, over the points that some cell covers.
void Expect_Noise(const Diffraction_Pattern_Type& p, int least_points, double scale = 1) {
    double sum = 0, squares = 0;
    int points = 0;
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        if (p.nd[i] == 0) continue;
        const double true_y = scale * True_Counts(static_cast<double>(p.x[i]));
        const double pull = (static_cast<double>(p.y[i]) - true_y) / std::sqrt(static_cast<double>(p.sigma[i]));
        sum += pull, squares += pull * pull, ++points;
    }
    EXPECT_GE(points, least_points);
    EXPECT_NEAR(std::sqrt(squares / points), 1, 0.1);
    EXPECT_NEAR(sum / points, 0, 0.1);
}

struct Simulated {
    Calibration_Detector_Type cal;
    Runs runs;
};

// Positions are whole steps away from 6.0 k, so that all frames stand on the points of the pattern; or anywhere, with uneven frames.
Simulated Simulated_Bank(const std::string& instrument, int cells, int heights, double distance, bool whole_steps = true,
                         std::size_t frames = 200, double step = 0.05) {
    Dice dice(7);
    Simulated made{Calibration_Of(instrument, cells, heights, dice), {}};
    for (int k = 0; k < cells; ++k) {
        const double shift = dice.Between(-10, 10);
        made.cal.cal_pos.push_back(static_cast<float>(distance * k + step * (whole_steps ? std::round(shift) : shift)));
    }
    // Zones of tubes begin and end somewhere; the third tube is dead.
    for (int k = 0; heights > 1 && k < cells; ++k)
        for (int i = 0; i < heights; ++i)
            if (i < k % 4 || i >= heights - k % 3 || k == 2) made.cal.cal_active[made.cal.Cell(i, k)] = false;
    for (int run = 0; run < 3; ++run) {
        Doubles angles = Even_Angles(2 + (whole_steps ? 0.15 : 0.137) * run, step, frames);
        for (double& angle : angles)
            if (run == 1 && !whole_steps) angle += dice.Between(-0.4, 0.4) * step;
        made.runs.push_back(Bank_Run(made.cal, 100 + run, angles, dice));
        made.runs.back().time = 50.0f + static_cast<float>(run);
    }
    return made;
}

double Zone(const Calibration_Detector_Type& cal, int tube) {
    const auto first = cal.cal_active.begin() + tube * cal.npoints_det;
    return static_cast<double>(std::count(first, first + cal.npoints_det, true));
}
double Longest_Zone(const Calibration_Detector_Type& cal) {
    double longest = 0;
    for (int tube = 0; tube < cal.ndet; ++tube) longest = std::max(longest, Zone(cal, tube));
    return longest;
}

TEST(Conversion, TrueCalibrationsGiveThePatternBack) {
    const Simulated r3a = Simulated_Bank("R3A", 25, 1, 6.0), r5b = Simulated_Bank("R5B", 128, 16, 1.25, true, 80);
    for (const Simulated* bank : {&r3a, &r5b}) {
        const float wanted = 3 * normal_monitor;
        const Diffraction_Pattern_Type p = Pattern(bank->runs, {.vnorm = wanted, .cal = &bank->cal});
        Expect_Noise(p, 2500, 3 * Longest_Zone(bank->cal) / bank->cal.npoints_det);  // which counts the pattern
        EXPECT_EQ(std::tuple(p.instr, p.monitor, p.norm_monitor, p.count_time), std::tuple("R3A", wanted, wanted, 153));
        EXPECT_TRUE(p.constant_step && p.sigma_is_variance && p.step == 0.05f);
    }

    Dice dice(3);
    Calibration_Detector_Type r8 = Calibration_Of("R8", 9, 64, dice);
    Runs runs;
    for (int bank = 0; bank < 9; ++bank) r8.cal_pos.push_back(static_cast<float>(0.125 * std::round(dice.Between(-4, 4))));
    for (int run = 0; run < 60; ++run) runs.push_back(R8_Run(r8, 5000 + run, 3 + 0.125 * run, dice.Between(500, 2000), dice));
    Expect_Noise(Pattern(runs, {.vnorm = 500.0f, .cal = &r8}), 1000, 0.5);

    // R22: cells at uneven places, out of order; R3B: an even grid. Dead cells count what is no pattern.
    for (const std::string instrument : {"R22", "R3B"}) {
        Calibration_Detector_Type line = Calibration_Of(instrument, 1, 1600, dice);
        std::vector<double> places, efficiencies(line.cal_effic.begin(), line.cal_effic.end());
        for (int i = 0; i < 1600; ++i) {
            line.cal_pos.push_back(static_cast<float>(0.1 * (i ^ 5) + dice.Between(-0.04, 0.04)));
            line.cal_index.push_back(i ^ 5);
            places.push_back(instrument == "R22" ? 3.25 + static_cast<double>(line.cal_pos.back()) : 3.25 + 0.1 * i);
        }
        Runs lines;
        for (int run = 0; run < 4; ++run) {
            lines.push_back(Line_Run(instrument, 7 + run, 3.25, 0.1, places, efficiencies, 250.0 * (run + 1), dice));
            for (std::size_t i = 0; i < 1600; ++i)
                if (!line.cal_active[i]) lines.back().counts.Frame(0)[i] = 77777;
        }
        const Diffraction_Pattern_Type p = Pattern(lines, {.vnorm = 2 * normal_monitor, .cal = &line});
        Expect_Noise(p, 1300, 2);
        EXPECT_TRUE(!p.constant_step && std::is_sorted(p.x.begin(), p.x.end()));
        EXPECT_EQ(p.npts, std::count(line.cal_active.begin(), line.cal_active.end(), true));
        EXPECT_EQ(std::pair(p.monitor, p.norm_monitor), std::pair(2500.0f, 2 * normal_monitor));
        const Diffraction_Pattern_Type by_time = Pattern(lines, {.vnorm = -120.0f, .cal = &line});  // of 240 seconds
        EXPECT_FLOAT_EQ(by_time.norm_monitor, 1250);
        Expect_Noise(by_time, 1300, 1.25);
    }
}

// --- brute force -------------------------------------------------------------------------------------------------------------------

// A cell of a scan, or a bank of R8: points by rising angle, as they are normalised and divided by efficiencies.
struct Track {
    Doubles x, y, monitor, reciprocal;

    void Add(double at, double count, double of_monitor, double reciprocal_efficiency) {
        x.push_back(at), y.push_back(count), monitor.push_back(of_monitor), reciprocal.push_back(reciprocal_efficiency);
    }
};

// The mean at each point over all tracks, each found for itself. Cells further than `gap` from each other have nothing between them.
void Expect_Mean(const Diffraction_Pattern_Type& p, const std::vector<Track>& tracks, double xmin, double value, double gap = 1e9) {
    EXPECT_NEAR(p.xmin, xmin, 1e-5);
    std::vector<Doubles> derivatives;
    for (const Track& track : tracks) derivatives.push_back(Dense_Spline(track.x, track.y));
    const double step = static_cast<double>(p.step);
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        const double x = xmin + step * static_cast<double>(i);
        double y = 0, variance = 0;
        int cells = 0;
        for (std::size_t k = 0; k < tracks.size(); ++k) {
            const Track& track = tracks[k];
            if (x < track.x.front() - 1e-5 || x > track.x.back() + 1e-5) continue;
            std::size_t left = 0;
            while (left + 2 < track.x.size() && x > track.x[left + 1] - 1e-5) ++left;
            const double distance = track.x[left + 1] - track.x[left], b = std::clamp((x - track.x[left]) / distance, 0.0, 1.0);
            if (distance > gap && std::min(b, 1 - b) * distance > 1e-5) continue;
            const auto between = [&](const Doubles& values) { return (1 - b) * values[left] + b * values[left + 1]; };
            const double v = Splint(track.x, track.y, derivatives[k], x);
            y += v, variance += v * value * between(track.reciprocal) / between(track.monitor), ++cells;
        }
        ASSERT_EQ(p.nd[i], cells) << i << " " << x;
        const double n = std::max(cells, 1);
        EXPECT_NEAR(p.y[i], y / n, 3e-4 * std::fabs(y / n)) << i;
        EXPECT_NEAR(p.sigma[i], cells > 0 ? std::fabs(variance) / n / n : 1.0, 3e-4 * std::fabs(variance) + 1e-6) << i;
    }
}

// What a tube counts: its active zone, by efficiency, as if it were the longest.
TEST(Conversion, BanksAreTheMeanOfAllCells) {
    Simulated plain = Simulated_Bank("R3A", 5, 1, 1.0, false, 24);
    plain.cal.cal_active[3] = false;
    const Simulated tubes = Simulated_Bank("R5B", 5, 6, 1.0, false, 24);
    for (const auto& [bank, calibrated] : {std::pair<const Simulated*, bool>(&plain, true), {&plain, false}, {&tubes, true}}) {
        const Calibration_Detector_Type& cal = bank->cal;
        const Diffraction_Pattern_Type p = Pattern(bank->runs, {.vnorm = 700.0f, .cal = calibrated ? &cal : nullptr});
        const auto heights = static_cast<std::size_t>(cal.npoints_det);
        std::vector<Track> tracks;
        double low = 1e9, high = -1e9;
        for (const auto& run : bank->runs)
            for (std::size_t k = 0; k < 5; ++k) {
                const double zone = Zone(cal, static_cast<int>(k)), stretch = calibrated ? Longest_Zone(cal) / zone : 1;
                if (calibrated && zone == 0) continue;
                Track track;
                for (std::size_t f = 0; f < 24; ++f) {
                    const auto item = run.tmc_ang.Frame(f);
                    const double monitor = calibrated ? static_cast<double>(item[frame_monitor]) : 700;
                    const double shift = calibrated ? static_cast<double>(cal.cal_pos[k]) : -6.0 * static_cast<double>(k);
                    double sum = 0, squares = 0;
                    for (std::size_t h = 0; h < heights; ++h) {
                        const double count = static_cast<double>(run.counts.Frame(f)[(4 - k) * heights + h]);
                        const double effic = calibrated ? static_cast<double>(cal.cal_effic[k * heights + h]) : 1;
                        if (!calibrated || cal.cal_active[k * heights + h]) sum += count / effic, squares += count / effic / effic;
                    }
                    track.Add(static_cast<double>(item[frame_angle]) + shift, sum * stretch * 700 / monitor, monitor,
                              stretch * squares / sum);
                }
                low = std::min(low, track.x.front()), high = std::max(high, track.x.back());
                tracks.push_back(track);
            }
        EXPECT_TRUE(std::fabs(p.xmax - high) < 1e-5 && p.npts == static_cast<int>(std::lround((high - low) / 0.05)) + 1) << p.xmax;
        Expect_Mean(p, tracks, low, 700);
        EXPECT_TRUE(calibrated || std::count(p.nd.begin(), p.nd.end(), 0) > 0);  // 24 frames do not reach over 6 degrees
    }
}

// The same for R8: the points are those that lie on a living cell or between two of them.
TEST(Conversion, R8IsTheMeanOfItsBanks) {
    Dice dice(5);
    Calibration_Detector_Type cal = Calibration_Of("R8", 9, 64, dice);
    for (int bank = 0; bank < 9; ++bank) cal.cal_pos.push_back(static_cast<float>(dice.Between(-0.4, 0.4)));
    for (std::size_t i = 0; i < 64; ++i) cal.cal_active[3 * 64 + i] = i == 20;            // a bank without two cells
    for (std::size_t i = 0; i < 64; ++i) cal.cal_active[5 * 64 + i] = i != 0 && i != 63;  // dead ends
    Runs runs;
    for (int run = 0; run < 3; ++run) runs.push_back(R8_Run(cal, 50 + run, 3.1 + 0.41 * run, dice.Between(500, 2000), dice));
    for (const bool calibrated : {true, false})
        for (const int only : {0, 4, 6}) {
            const Diffraction_Pattern_Type p = Pattern(runs, {.cal = calibrated ? &cal : nullptr, .bank = only});
            const double value = static_cast<double>(runs[0].monitor);
            EXPECT_EQ(std::tuple(p.instr, p.monitor, p.step), std::tuple("R8", runs[0].monitor, 0.125f));
            double xmin = 1e9;
            std::vector<Track> tracks;
            for (const auto& run : runs)
                for (std::size_t bank = 0; bank < 9; ++bank) {
                    const double start = static_cast<double>(run.tmc_ang.Frame(0)[frame_angle]) + 15.0 * static_cast<double>(bank) +
                                         (calibrated ? static_cast<double>(cal.cal_pos[bank]) : 0.0);
                    Track track;
                    for (std::size_t c = 0; c < 64; ++c) {
                        if (calibrated && !cal.cal_active[bank * 64 + c]) continue;
                        const double r = calibrated ? 1 / static_cast<double>(cal.cal_effic[bank * 64 + c]) : 1,
                                     monitor = static_cast<double>(run.monitor);
                        track.Add(start + 0.125 * static_cast<double>(c),
                                  static_cast<double>(run.counts.Frame(bank)[c]) * value / monitor * r, monitor, r);
                    }
                    if (track.x.size() < 2) continue;
                    xmin = std::min(xmin, track.x.front());
                    if (only == 0 || bank + 1 == static_cast<std::size_t>(only)) tracks.push_back(track);
                }
            Expect_Mean(p, tracks, xmin, value, 0.13);
            EXPECT_EQ(*std::max_element(p.nd.begin(), p.nd.end()) > 0, !calibrated || only != 4);
        }
}

// --- what sums keep ----------------------------------------------------------------------------------------------------------------

TEST(Conversion, SumsHoldEveryCount) {
    Dice dice(11);
    const Doubles places = Even_Angles(-3.5, 0.1, 1600), one(1600, 1.0);
    Runs runs;
    double counts = 0;
    for (int run = 0; run < 5; ++run) {
        runs.push_back(Line_Run("R3B", 123456 + run, -3.5, 0.1, places, one, 1000, dice));
        runs.back().scans[0] += 0.02f * static_cast<float>(run);
        if (run != 2) counts += Sum(runs.back().counts.All());
    }
    const Converted made = Convert(runs, {}, {true, true, false, true, true});
    const Diffraction_Pattern_Type& p = made.p;
    ASSERT_TRUE(made.status.ok()) << made.status.message;
    EXPECT_EQ(Sum(p.y), counts);
    EXPECT_EQ(p.y, p.sigma);
    EXPECT_EQ(p.title, "Y2O3, Instr: R3B, Header:R3B user  Numors added from  123456 to  123460");
    for (std::size_t i = 0; i < 1600; ++i) EXPECT_EQ(p.x.at(i), static_cast<float>(places[i])) << i;  // no drift
    EXPECT_EQ(std::tuple(p.npts, p.xmax, p.ymax), std::tuple(1600, p.x.back(), *std::max_element(p.y.begin(), p.y.end())));
    EXPECT_EQ(std::tuple(p.monitor, p.norm_monitor, p.count_time), std::tuple(4000, 4000, 240));
    EXPECT_EQ(std::tuple(p.TSetting, p.TSample, p.conv[0]), std::tuple(10, 12, 1.594f));
    EXPECT_EQ(p.radiation + " " + p.scat_var + " " + p.instr, "neutrons_cw 2theta R3B");
    EXPECT_TRUE(p.has_y && p.has_sigma && p.al_x && p.constant_step);
    EXPECT_EQ(p.nd, std::vector<std::int32_t>(1600, 1));

    // By efficiency: as above, cell by cell.
    Calibration_Detector_Type cal = Calibration_Of("R3B", 1, 1600, dice);
    Powder_Numor_Type plain, divided;
    const std::vector<bool> all(5, true);
    ASSERT_TRUE(Add_Numors(runs, all, plain).ok() && Add_Numors_Cal(runs, all, divided, cal).ok());
    EXPECT_EQ(divided.monitor, 5000);
    for (std::size_t i = 0; i < 1600; ++i) EXPECT_FLOAT_EQ(divided.counts.All()[i] * cal.cal_effic[i], plain.counts.All()[i]);
}

TEST(Conversion, PointsOfABankHoldTheCountsOfTheirFrames) {
    Dice dice(13);
    // Scans that fall, frames in any order, and other steps belong to the same points.
    Runs runs;
    for (const double start : {7.25, 6.0, 5.5}) {
        Doubles angles = Even_Angles(start, 0.05, 150);
        if (start > 7) std::reverse(angles.begin(), angles.end());
        if (start < 6) std::swap(angles[20], angles[100]), std::swap(angles[0], angles[149]);
        runs.push_back(Scan_Run("R3A", 1, 25, angles, [&](std::size_t, std::size_t) { return dice.Counts(300); }));
    }
    std::map<long, std::pair<double, int>> at;  // thousandths of a degree
    for (const auto& run : runs)
        for (std::size_t f = 0; f < 150; ++f)
            for (std::size_t c = 0; c < 25; ++c) {
                auto& [counts, cells] =
                    at[std::lround((static_cast<double>(run.tmc_ang.Frame(f)[frame_angle]) - 6.0 * static_cast<double>(24 - c)) * 1000)];
                counts += static_cast<double>(run.counts.Frame(f)[c]), ++cells;
            }
    const Diffraction_Pattern_Type p = Pattern(runs);
    double total = 0, expected = 0;
    for (const auto& [thousandths, sum] : at) expected += sum.first;
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        const auto& [counts, cells] = at[std::lround(static_cast<double>(p.x[i]) * 1000)];
        EXPECT_EQ(p.nd[i], cells) << p.x[i];
        EXPECT_NEAR(p.y[i] * static_cast<float>(p.nd[i]), counts, 1e-3 * counts) << p.x[i];
        EXPECT_NEAR(p.sigma[i], cells > 0 ? counts / cells / cells : 1.0, 1e-4 * counts);
        total += static_cast<double>(p.y[i]) * p.nd[i];
    }
    EXPECT_NEAR(total, expected, 1e-6 * expected);
    EXPECT_EQ(p.monitor, normal_monitor);  // of the first frame
}

TEST(Conversion, ResultsDoNotDependOnThreads) {
    const Simulated r3a = Simulated_Bank("R3A", 25, 1, 6.0, false), r5b = Simulated_Bank("R5B", 128, 4, 1.25, false, 60);
    Dice dice(3);
    Simulated r8{Calibration_Of("R8", 9, 64, dice), {}};
    r8.cal.cal_pos.assign(9, 0.03f);
    for (int run = 0; run < 9; ++run) r8.runs.push_back(R8_Run(r8.cal, run, 3 + 0.11 * run, 1000, dice));
    for (const Simulated* s : {&r3a, &r5b, static_cast<const Simulated*>(&r8)}) {
        const Diffraction_Pattern_Type one = Pattern(s->runs, {.cal = &s->cal, .threads = 1});
        EXPECT_EQ(one.monitor, s->runs[0].tmc_ang.Frame(0)[frame_monitor]);  // where none is wanted
        for (const int threads : {0, 2, 8}) {
            const Diffraction_Pattern_Type several = Pattern(s->runs, {.cal = &s->cal, .threads = threads});
            EXPECT_TRUE(one.x == several.x && one.y == several.y && one.sigma == several.sigma && one.nd == several.nd) << threads;
        }
    }
}

// --- forms of runs -----------------------------------------------------------------------------------------------------------------

TEST(Conversion, TubesOfR5bAreSummed) {
    Dice dice(17);
    const Runs tubes = {Scan_Run("R5B", 1, 128 * 5, Even_Angles(800, 0.5, 7), [&](std::size_t, std::size_t) { return dice.Counts(40); })};
    Runs sums = {Scan_Run("R5B", 1, 128, Even_Angles(800, 0.5, 7),
                          [&](std::size_t f, std::size_t c) { return Sum(tubes[0].counts.Frame(f).subspan(5 * c, 5)); })};
    const Converted made = Convert(tubes);
    EXPECT_EQ(made.p.y, Pattern(sums).y);
    ASSERT_EQ(made.warnings.size(), 1u);
    EXPECT_NE(made.warnings[0].find("calibration"), std::string::npos);
    EXPECT_EQ(*std::min_element(made.p.nd.begin(), made.p.nd.end()), 0);  // 3 degrees of 6
    EXPECT_EQ(made.p.npts, static_cast<int>((127 * 6 + 3) / 0.5) + 1);
}

TEST(Conversion, FallingScansWorkLikeRisingOnes) {
    Dice dice(19);
    const Doubles one(40, 1.0), rising = Even_Angles(10, 0.5, 40);
    Powder_Numor_Type up = Line_Run("R3B", 1, 10, 0.5, rising, one, 1000, dice), down = up;
    std::reverse(down.counts.All().begin(), down.counts.All().end());
    down.scans = {29.5f, -0.5f, 0};
    const Diffraction_Pattern_Type turned = Pattern({down});
    EXPECT_TRUE(Pattern({up}).x == turned.x && Pattern({up}).y == turned.y && turned.step == 0.5f && turned.xmin == 10);

    // Cells of R22 at one place are one point.
    Calibration_Detector_Type cal = Calibration_Of("R22", 1, 40, dice);
    cal.cal_active.assign(40, true);
    for (int i = 0; i < 40; ++i) cal.cal_pos.push_back(static_cast<float>(i / 2)), cal.cal_index.push_back(i);
    up.instrm = "R22";
    const Diffraction_Pattern_Type p = Pattern({up}, {.cal = &cal});
    EXPECT_EQ(std::tuple(p.npts, p.nd.at(7), p.x.at(7), p.step), std::tuple(20, 2, 17.0f, 1.0f));
}

TEST(Conversion, WhatHasNoStepHasNoPoints) {
    Dice dice(23);
    const auto bank = [](const Doubles& angles) { return Scan_Run("R3A", 1, 25, angles, [](std::size_t, std::size_t) { return 5.0; }); };
    Powder_Numor_Type still = Line_Run("R3B", 1, 10, 0, Doubles(3, 1.0), Doubles(3, 1.0), 1000, dice);
    Powder_Numor_Type nothing = Line_Run("R3B", 1, 0, 0, {}, {}, 1000, dice), unknown = bank({1, 2});
    nothing.scans[1] = std::numeric_limits<float>::infinity();
    for (const auto& run : {bank({10}), bank({10, 10, 11}), bank({}), still, nothing}) {
        const Diffraction_Pattern_Type p = Pattern({run});
        EXPECT_TRUE(p.npts == 0 && p.x.empty() && p.y.empty() && p.xmax > p.xmin && std::isfinite(p.xmin) && std::isfinite(p.xmax));
        EXPECT_NE(p.title.find(" Numors added from "), std::string::npos);
    }
    EXPECT_EQ(Pattern({bank({10})}).xmin, 10 - 24 * 6);
    unknown.instrm = "R4";
    EXPECT_TRUE(Pattern({unknown}).title.empty());  // nothing is filled

    const Converted with_single = Convert({bank(Even_Angles(10, 0.5, 9)), bank({80})});
    EXPECT_EQ(with_single.p.y, Pattern({bank(Even_Angles(10, 0.5, 9))}).y);
    EXPECT_EQ(with_single.warnings.size(), 1u);
}

// --- refusals ----------------------------------------------------------------------------------------------------------------------

TEST(Conversion, WhatCannotBeAddedIsTold) {
    using Run = Powder_Numor_Type;
    using Change = std::function<void(Run&)>;
    Dice dice(29);
    const Simulated bank = Simulated_Bank("R3A", 25, 1, 6.0, true, 4);
    Calibration_Detector_Type cal = bank.cal, dead = cal, small = Calibration_Of("R3A", 24, 1, dice);
    Calibration_Detector_Type r8_cal = Calibration_Of("R8", 9, 64, dice);
    dead.cal_active.assign(25, false);
    small.cal_pos.assign(24, 1);
    r8_cal.cal_pos.assign(9, 0);
    const Run line = Line_Run("R22", 1, 10, 0.5, Doubles(3, 1.0), Doubles(3, 1.0), 1000, dice);
    const Run r8 = R8_Run(r8_cal, 8, 3, 1000, dice);
    const auto changed = [](Run run, const Change& change) {
        run.numor = 777;
        change(run);
        return run;
    };
    const auto scan = [&](const Change& change) { return Runs{bank.runs[0], changed(bank.runs[1], change)}; };
    const auto lines = [&](const Change& change) { return Runs{line, changed(line, change)}; };
    const auto angle = [&](std::size_t frame, float value) { return scan([=](Run& r) { r.tmc_ang.Frame(frame)[frame_angle] = value; }); };
    const auto monitor = [](float value) { return [value](Run& r) { r.monitor = value; }; };
    const Runs no_time = {changed(line, [](Run&r) { r.time = 0; })}, r8_dark = {r8, changed(r8, monitor(0))};
    const Runs dark = scan([](Run& r) { r.tmc_ang.Frame(2)[frame_monitor] = 0; });
    const float first = bank.runs[1].tmc_ang.Frame(0)[frame_angle];
    Runs fine = angle(1, first + 0.0001f);
    fine.erase(fine.begin());
    const std::string impossible = "Impossible to add the numors selected. Not all Numors have the same ";
    const struct {
        Runs runs;
        Numor_Conversion how;
        std::string message;  // a part of it
    } faults[] = {
        {{}, {}, " Number of Numors in the List was zero!"},
        {{changed(line, [](Run& r) { r.instrm = " "; })}, {}, " The Instrument name for the first active numor was empty!"},
        {lines([](Run& r) { r.wave += 0.11f; }), {}, impossible + "Wavelength!"},
        {scan([](Run& r) { r.wave -= 0.11f; }), {}, impossible + "Wavelength!"},
        {lines([](Run& r) { r.scans[0] -= 0.11f; }), {}, impossible + "initial Angle!"},
        {lines([](Run& r) { r.counts = Frame_Values(4, 1), r.nbdata = 4; }), {}, "number of counts!\nNumor 1: 1 x 3\nNumor 777: 1 x 4"},
        {lines([](Run& r) { r.nbdata = 4; }), {}, "Numor 777"},
        {lines([](Run& r) { r.instrm = "R3B"; }), {}, "Numor 777 of R3B"},
        {no_time, {.vnorm = -10.0f}, "The time of Numor 777 is 0"},
        {{changed(line, monitor(0))}, {.vnorm = 10.0f}, "The monitor of Numor 777 is 0"},
        {{line}, {.cal = &cal}, "The calibration is one of R3A"},
        {{line}, {.bank = 1}, "R8 alone"},
        {{changed(line, [](Run& r) { r.scans[1] = NAN; })}, {}, "no number"},
        {bank.runs, {.cal = &small}, "one of 24 cells, and Numor 100 has 25"},
        {bank.runs, {.cal = &dead}, "no active cell"},
        {bank.runs, {.vnorm = -1.0f}, "above 0"},
        {bank.runs, {.vnorm = NAN}, "no number"},
        {dark, {.cal = &cal}, "The monitor of frame 3 of Numor 777 is 0"},
        {angle(2, first), {}, "The frames 1 and 3 of Numor 777 have the same angle"},
        {angle(2, INFINITY), {}, "The angle of frame 3 of Numor 777"},
        {scan([](Run& r) { r.tmc_ang = Frame_Values(3, 4); }), {}, "Numor 777 does not tell the angle"},
        {scan([](Run& r) { r.counts = Frame_Values(24, 4), r.nbdata = 24; }), {}, "Numor 777 has 24 counts in a frame, and Numor 100 25"},
        {fine, {}, "more than 500000"},
        {{r8}, {.bank = 10}, "banks 1 to 9"},
        {{r8}, {.cal = &bank.cal}, "one of R3A"},
        {r8_dark, {}, "The monitor of Numor 777 is 0"},
        {{changed(r8, [](Run& r) { r.counts = Frame_Values(64, 8); })}, {}, "R8 has 9 of 64"},
    };
    for (const auto& fault : faults) {
        const Converted made = Convert(fault.runs, fault.how);
        EXPECT_TRUE(made.status.failed && made.p.npts == 0) << fault.message;
        EXPECT_NE(made.status.message.find(fault.message), std::string::npos) << made.status.message << "\n" << fault.message;
    }
    for (const std::vector<bool>& active : {std::vector<bool>{false}, {false, true}})
        EXPECT_EQ(Convert({line}, {}, active).status.message, " Number of active Numors in the List was zero!");
    Run sum;
    EXPECT_TRUE(Add_Numors_Cal(std::vector{line}, {true}, sum, cal).failed);
    // Differences of a tenth are none; without a wanted monitor the first run of R8 needs none.
    EXPECT_TRUE(Convert(lines([](Run& r) { r.wave += 0.09f, r.scans[0] -= 0.09f; })).status.ok());
    EXPECT_TRUE(Convert({r8_dark[1]}).status.ok());
}

}  // namespace
}  // namespace vntl::test
