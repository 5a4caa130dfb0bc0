// Moving and rescaling of whole rows: points, ranges and regions go together.
#include "calc/rescale.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace vntl {
namespace {

struct Row {
    Diffraction_Pattern_Type pattern;
    PRF_Info_Add_Type info;
};

Row Three_Points() {
    Row row;
    EXPECT_TRUE(Allocate_Diffraction_Pattern(row.pattern, 3).ok());
    row.pattern.x = {10, 20, 40};
    row.pattern.y = {1, 5, -3};
    row.pattern.sigma = {1, 2, 3};
    row.pattern.ycalc = {7, 8, 9};
    row.pattern.nd = {4, 5, 6};
    row.pattern.xmin = 10, row.pattern.xmax = 40, row.pattern.ymin = -3, row.pattern.ymax = 5;
    row.info.nexcl = 1;
    row.info.excl_min[0] = 12;
    row.info.excl_max[0] = 18;
    return row;
}

using Values = std::vector<float>;

TEST(Rescale, AnOffsetMovesPointsRangesAndRegions) {
    Row row = Three_Points();
    Offset_Row(row.pattern, row.info, -2, 100);
    EXPECT_EQ(row.pattern.x, (Values{8, 18, 38}));
    EXPECT_EQ(row.pattern.y, (Values{101, 105, 97}));
    EXPECT_EQ((Values{row.pattern.xmin, row.pattern.xmax, row.pattern.ymin, row.pattern.ymax}), (Values{8, 38, 97, 105}));
    EXPECT_EQ((Values{row.info.excl_min[0], row.info.excl_max[0], row.info.excl_min[1]}), (Values{10, 16, 0}));
    EXPECT_EQ(row.pattern.sigma, (Values{1, 2, 3}));
    EXPECT_EQ(row.pattern.ycalc, (Values{107, 108, 109}));
}

TEST(Rescale, ANegativeFactorTurnsTheOrderRound) {
    Row row = Three_Points();
    Scale_X_Of_Row(row.pattern, row.info, -1, 100);
    EXPECT_EQ(row.pattern.x, (Values{60, 80, 90}));
    EXPECT_EQ(row.pattern.y, (Values{-3, 5, 1}));
    EXPECT_EQ(row.pattern.sigma, (Values{3, 2, 1}));
    EXPECT_EQ(row.pattern.nd, (std::vector<std::int32_t>{6, 5, 4}));
    EXPECT_EQ((Values{row.pattern.xmin, row.pattern.xmax, row.info.excl_min[0], row.info.excl_max[0]}), (Values{60, 90, 82, 88}));
    Scale_Y_Of_Row(row.pattern, -2, 0);
    EXPECT_EQ(row.pattern.y, (Values{6, -10, -2}));
    EXPECT_EQ((Values{row.pattern.ymin, row.pattern.ymax}), (Values{-10, 6}));
}

TEST(Rescale, WhatLeavesTheRangeOfNumbersIsSeen) {
    const Row row = Three_Points();
    EXPECT_TRUE(Stays_Finite_X(row.pattern, 1e30f, 0));
    EXPECT_FALSE(Stays_Finite_X(row.pattern, 1e38f, 0));
    EXPECT_FALSE(Stays_Finite_Y(row.pattern, 1, std::numeric_limits<float>::infinity()));
}

}  // namespace
}  // namespace vntl
