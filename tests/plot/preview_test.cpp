// A thinned curve covers, in each column of pixels, what all its points cover: lowest and highest found anew over all points.
#include "plot/preview.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>

namespace vntl {
namespace {

using Extent = std::map<int, std::pair<float, float>>;

Extent Covered(const std::vector<float>& x, const std::vector<float>& y, float x1, float x2, int columns) {
    Extent extent;
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (!(x[i] >= x1 && x[i] < x2) || !std::isfinite(y[i])) continue;
        const int column = static_cast<int>(std::floor((static_cast<double>(x[i]) - x1) / (static_cast<double>(x2) - x1) * columns));
        auto [place, added] = extent.try_emplace(column, y[i], y[i]);
        place->second = {std::min(place->second.first, y[i]), std::max(place->second.second, y[i])};
    }
    return extent;
}

TEST(Preview, AThinnedCurveCoversThePixelsOfTheWholeOne) {
    std::mt19937 random(5);
    std::vector<float> x, y;
    for (int i = 0; i < 100'000; ++i) {
        x.push_back(5 + static_cast<float>(i) * 0.001f);
        y.push_back(static_cast<float>(random() % 100'000));
    }
    y[500] = std::numeric_limits<float>::quiet_NaN();
    for (const auto& [x1, x2, columns] : {std::tuple(5.0f, 105.0f, 700), {20.0f, 21.0f, 700}, {30.0f, 30.004f, 700}, {0.0f, 200.0f, 1}}) {
        const Thinned_Curve thin = Thin_Curve(x, y, x1, x2, columns);
        EXPECT_EQ(Covered(thin.x, thin.y, x1, x2, columns), Covered(x, y, x1, x2, columns)) << x1;
        EXPECT_LE(thin.x.size(), 4u * static_cast<unsigned>(columns) + 2) << x1;
        EXPECT_TRUE(std::is_sorted(thin.x.begin(), thin.x.end())) << x1;
        EXPECT_EQ(thin.x.front() < x1, x1 > 5) << "the line comes in from the side";
    }
    EXPECT_TRUE(Thin_Curve({}, {}, 0, 1, 10).x.empty());
    EXPECT_TRUE(Thin_Curve(x, y, 1, 1, 10).x.empty());
    EXPECT_EQ(Thin_Curve(x, y, 200, 300, 10).x.size(), 1u) << "only the point before the window";
}

}  // namespace
}  // namespace vntl
