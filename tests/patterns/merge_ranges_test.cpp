// Ranges merged in counts a second: what all counts in all times give, by hand.
#include "patterns/merge_ranges.hpp"

#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

// Counts of a rate that rises along x, without noise: its mean is the same whatever the weights, its variance is not.
Diffraction_Pattern_Type Range(float start, float step, int points, float time, float rate_at_0 = 100, float slope = 3) {
    Diffraction_Pattern_Type p;
    p.title = "Quartz, range " + std::to_string(static_cast<int>(start));
    p.npts = points;
    p.count_time = time;
    p.conv[0] = 1.5406f;
    for (int i = 0; i < points; ++i) {
        const float x = start + static_cast<float>(i) * step;
        p.x.push_back(x);
        p.y.push_back((rate_at_0 + slope * x) * time);
        p.sigma.push_back(p.y.back());
    }
    return p;
}

TEST(Merge_Ranges, OneRateOfAllCountsInAllTime) {
    // 10 to 30 at one second, 25 to 50 at four, off the grid of the first; 60 to 70 behind a gap.
    const std::vector<Diffraction_Pattern_Type> ranges = {Range(60, 0.5f, 21, 2), Range(25.1f, 0.25f, 100, 4), Range(10, 0.5f, 41, 1)};
    ASSERT_EQ(Why_Not_Merged(ranges), "");
    const Diffraction_Pattern_Type p = Merge_Ranges(ranges);
    EXPECT_EQ(p.title, "Quartz");
    EXPECT_TRUE(p.per_second && !p.constant_step && p.count_time == 0 && p.bank == 0);
    EXPECT_FLOAT_EQ(p.xmin, 10);
    EXPECT_FLOAT_EQ(p.xmax, 70);
    EXPECT_EQ(p.npts, static_cast<int>(p.x.size()));
    EXPECT_EQ(p.npts, 21 + 100 + 31);  // the coarse one's own points up to 25, none of it in the overlap
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        const float x = p.x[i], rate = 100 + 3 * x;
        ASSERT_GT(x, i > 0 ? p.x[i - 1] : 0);
        ASSERT_NEAR(p.y[i], rate, 1e-3 * rate) << x;
        const float time = x < 25.05f ? 1 : x > 55 ? 2 : 4;
        const bool both = x > 25.05f && x < 30.05f;  // the second counts interpolate, the variance is below that of one of them
        ASSERT_NEAR(both ? std::min(p.sigma[i], rate / 4) : p.sigma[i], both ? p.sigma[i] : rate / time, 1e-3 * rate) << x;
    }
}

TEST(Merge_Ranges, CountsAtTheSamePlacesAddUp) {
    Diffraction_Pattern_Type a = Range(10, 1, 11, 1), b = Range(10, 1, 11, 3);
    a.y[4] = a.sigma[4] = 130;
    b.y[4] = b.sigma[4] = 330;  // 110 a second, where a has 130
    Diffraction_Pattern_Type rates = b;
    rates.per_second = true;
    for (std::size_t i = 0; i < rates.y.size(); ++i) rates.y[i] /= 3, rates.sigma[i] /= 9;
    for (const auto& second : {b, rates}) {
        const Diffraction_Pattern_Type p = Merge_Ranges(std::vector{a, second});
        ASSERT_EQ(p.npts, 11);
        EXPECT_NEAR(p.y[4], (130.0 + 330) / 4, 1e-3);
        EXPECT_NEAR(p.sigma[4], (130.0 + 330) / 16, 1e-3);  // of 460 counts in four seconds
    }
    // 110 counts a second behind an absorber of 10 weigh as those of a tenth of the time; a range within another one leaves what lies
    // behind it; between the grids, a count of neighbours has half their variance.
    Diffraction_Pattern_Type weak = Range(10, 1, 11, 1), within = Range(12, 1, 3, 1);
    weak.y[4] = 110, weak.sigma[4] = 1100;
    EXPECT_NEAR(Merge_Ranges(std::vector{a, weak}).y[4], (130 + 11) / 1.1, 1e-3);
    EXPECT_EQ(Merge_Ranges(std::vector{a, within}).sigma.back(), a.sigma.back());
    EXPECT_NEAR(Merge_Ranges(std::vector{Range(10, 1, 11, 1), Range(10.5f, 1, 10, 1)}).sigma[1], (133 + 133 / 2.0) / 4, 1e-2);
    // Two that meet in a point have it once.
    EXPECT_EQ(Merge_Ranges(std::vector{Range(10, 1, 11, 1), Range(20, 2, 11, 1)}).npts, 21);
}

TEST(Merge_Ranges, WhatCannotBeMergedSaysWhy) {
    const Diffraction_Pattern_Type good = Range(10, 1, 11, 1);
    const auto why = [&](void (*change)(Diffraction_Pattern_Type&)) {
        Diffraction_Pattern_Type other = Range(30, 1, 11, 1);
        change(other);
        return Why_Not_Merged(std::vector{good, other});
    };
    EXPECT_EQ(Why_Not_Merged({&good, 1}), "There is one range alone");
    EXPECT_EQ(why([](auto& p) { p.scat_var = "Angle"; }), "The ranges have different axes");
    EXPECT_EQ(why([](auto& p) { p.conv[0] = 0.7093f; }), "The ranges have different wavelengths");
    EXPECT_EQ(why([](auto& p) { p.count_time = 0; }), "The head tells no time a step of range 2");
    EXPECT_EQ(why([](auto& p) { p.x[3] = p.x[2]; }), "The points of range 2 are not in order");
    EXPECT_EQ(why([](auto& p) { p.per_second = true, p.count_time = 0; }), "");
}

}  // namespace
}  // namespace vntl::test
