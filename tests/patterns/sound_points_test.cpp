// Points out of order, repeated, or without a number: found, sorted, averaged and left out. Means and variances are worked out in the rows.
#include "patterns/sound_points.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <numeric>
#include <random>

namespace vntl {
namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();

// y tells the place of a point, every other array follows from it.
Diffraction_Pattern_Type With_X(std::vector<float> x) {
    Diffraction_Pattern_Type p;
    EXPECT_TRUE(Allocate_Diffraction_Pattern(p, static_cast<int>(x.size())).ok());
    for (std::size_t i = 0; i < x.size(); ++i) {
        const int place = static_cast<int>(i) + 1;
        p.y[i] = static_cast<float>(place);
        p.sigma[i] = static_cast<float>(4 * place);
        p.ycalc[i] = static_cast<float>(100 + place);
        p.bgr[i] = static_cast<float>(200 + place);
        p.istat[i] = 300 + place;
        p.nd[i] = place;
    }
    p.x = std::move(x);
    p.constant_step = true;
    return p;
}

TEST(Sound_Points, EveryFaultIsSeenAtEveryPlace) {
    for (const std::size_t n : {1u, 2u, 3u, 17u, 64u}) {
        std::vector<float> x(n);
        std::iota(x.begin(), x.end(), 1.0f);
        EXPECT_TRUE(Has_Sound_Points(With_X(x))) << n;
        for (std::size_t i = 0; i < n; ++i)
            for (const float fault : {nan, inf, -inf}) {
                Diffraction_Pattern_Type p = With_X(x);
                p.y[i] = fault;
                EXPECT_FALSE(Has_Sound_Points(p)) << n << ' ' << i;
                p = With_X(x);
                p.x[i] = fault;
                EXPECT_FALSE(Has_Sound_Points(p)) << n << ' ' << i;
                EXPECT_FALSE(First_Fall(p).has_value());
                EXPECT_EQ(Leave_Out_Points_Without_Numbers(p), 1);
                EXPECT_EQ(p.npts, static_cast<int>(n) - 1);
                EXPECT_TRUE(Has_Sound_Points(p) && !p.constant_step);
                EXPECT_EQ(std::accumulate(p.istat.begin(), p.istat.end(), 0), 300 * (n - 1) + n * (n + 1) / 2 - (i + 1));
            }
        for (std::size_t i = 1; i < n; ++i)
            for (const float before : {0.0f, 1.0f}) {  // falls, repeats
                Diffraction_Pattern_Type p = With_X(x);
                p.x[i] = p.x[i - 1] * before;
                EXPECT_FALSE(Has_Sound_Points(p));
                ASSERT_TRUE(First_Fall(p).has_value());
                EXPECT_EQ(First_Fall(p)->point, static_cast<int>(i) + 1);
            }
    }
}

TEST(Sound_Points, SortingAveragesWhatRepeats) {
    for (const bool variances : {true, false}) {
        Diffraction_Pattern_Type p = With_X({3, 1, 2, 3, 1, 1, 5});
        p.sigma_is_variance = variances;
        Sort_By_X(p);
        ASSERT_EQ(p.npts, 4);
        EXPECT_EQ(p.x, (std::vector<float>{1, 2, 3, 5}));
        EXPECT_EQ(p.y, (std::vector<float>{13.0f / 3, 3, 2.5f, 7}));  // (2 + 5 + 6)/3, 3, (1 + 4)/2, 7
        EXPECT_EQ(p.ycalc, (std::vector<float>{100 + 13.0f / 3, 103, 102.5f, 107}));
        EXPECT_EQ(p.bgr, (std::vector<float>{200 + 13.0f / 3, 203, 202.5f, 207}));
        EXPECT_EQ(p.istat, (std::vector<int>{302, 303, 301, 307}));
        EXPECT_EQ(p.nd, (std::vector<int>{13, 3, 5, 7}));
        // Variances 8, 20, 24 and 4, 16: their sums over 9 and over 4. Deviations: the roots of the sums of squares, over 3 and 2.
        const std::vector<float> sigma = variances ? std::vector<float>{52.0f / 9, 12, 5, 28}
                                                   : std::vector<float>{std::sqrt(1040.0f) / 3, 12, std::sqrt(272.0f) / 2, 28};
        for (std::size_t i = 0; i < 4; ++i) EXPECT_FLOAT_EQ(p.sigma[i], sigma[i]) << i;
        EXPECT_EQ(p.xmin, 1);
        EXPECT_EQ(p.xmax, 5);
        EXPECT_EQ(p.ymax, 7);
    }
    Diffraction_Pattern_Type bare = With_X({2, 1, 3});
    bare.sigma.clear(), bare.istat.clear(), bare.ycalc.clear(), bare.bgr.clear();
    Sort_By_X(bare);
    EXPECT_EQ(bare.y, (std::vector<float>{2, 1, 3}));
    EXPECT_TRUE(bare.sigma.empty() && bare.ycalc.empty());

    std::mt19937 random(3);  // a shuffled pattern comes back point by point
    std::vector<float> x(500);
    std::iota(x.begin(), x.end(), 0.0f);
    std::shuffle(x.begin(), x.end(), random);
    Diffraction_Pattern_Type p = With_X(x);
    Sort_By_X(p);
    ASSERT_TRUE(Has_Sound_Points(p) && p.npts == 500);
    for (int i = 0; i < 500; ++i) EXPECT_EQ(x[static_cast<std::size_t>(p.nd[i] - 1)], static_cast<float>(i));
}

TEST(Sound_Points, TheLineOfAFallIsThatOfTheFile) {
    const std::string path = (std::filesystem::temp_directory_path() / ("vntl_fall" + std::to_string(getpid()))).string();
    const std::pair<const char*, int> files[] = {{"title\n# 3.5\n1 7\n 2.5 7\n3.5 7\n2.5 7\n4 7\n", 6},
                                                 {"3.5\r\n2.5\r\n", 2},
                                                 {"1,7\n\n3.5,7\n\n# remark\n2.5,7\n", 6},
                                                 {"350 7\n250 7\n", 0},
                                                 {"3.5 7\n3 7\n2.5 7\n", 0},
                                                 {"", 0}};
    for (const auto& [text, line] : files) {
        std::ofstream(path) << text;
        EXPECT_EQ(Line_Of_Fall(path, {5, 2.5f, 3.5f, 3.5f}), line) << text;
    }
    std::filesystem::remove(path);
    EXPECT_EQ(Line_Of_Fall(path, {5, 2.5f, 3.5f, 3.5f}), 0);
}

}  // namespace
}  // namespace vntl
