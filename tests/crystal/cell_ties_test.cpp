#include "crystal/cell_ties.hpp"

#include <cmath>

#include "crystal/cell.hpp"
#include "crystal/testing.hpp"

namespace vntl {
namespace {

constexpr const char* names[cell_parameters] = {"a", "b", "c", "alpha", "beta", "gamma"};

std::string Free_Of(const Cell_Ties& ties) {
    std::string free;
    for (std::size_t i = 0; i < cell_parameters; ++i)
        if (ties.Free(i)) free += std::string(free.empty() ? "" : " ") + names[i];
    return free;
}

TEST(Cell_Ties, ASettingOpensItsOwnParameters) {
    struct Case {
        const char *symbol, *free;
        Cell_Values tied;  // of 4, 5, 6, 91, 92, 93
    };
    const Case cases[] = {
        {"P -1", "a b c alpha beta gamma", {4, 5, 6, 91, 92, 93}},
        {"P 1 21/c 1", "a b c beta", {4, 5, 6, 90, 92, 90}},
        {"P 1 1 21/b", "a b c gamma", {4, 5, 6, 90, 90, 93}},
        {"P 21/b 1 1", "a b c alpha", {4, 5, 6, 91, 90, 90}},
        {"P b m n", "a b c", {4, 5, 6, 90, 90, 90}},
        {"I 41/a m d", "a c", {4, 4, 6, 90, 90, 90}},
        {"R -3 c", "a c", {4, 4, 6, 90, 90, 120}},
        {"R -3 c:R", "a alpha", {4, 4, 4, 91, 91, 91}},
        {"P 63/m m c", "a c", {4, 4, 6, 90, 90, 120}},
        {"227", "a", {4, 4, 4, 90, 90, 90}},
    };
    for (const Case& c : cases) {
        const Cell_Ties ties = Ties_Of(test::Group(c.symbol));
        EXPECT_EQ(Free_Of(ties), c.free) << c.symbol;
        EXPECT_EQ(ties.Tied({4, 5, 6, 91, 92, 93}), c.tied) << c.symbol;
    }
}

// The metric tensor of a tied cell is that of every cell which an operator makes of it, and the freedom is that of the crystal system.
TEST(Cell_Ties, TiesKeepTheMetricOfEveryGroup) {
    for (int number = 1; number <= 230; ++number) {
        const Space_Group_Type group = test::Group(std::to_string(number));
        const Cell_Ties ties = Ties_Of(group);
        const Cell_Values v = ties.Tied({5.5f, 6.5f, 7.5f, 85, 95, 100});
        Crystal_Cell_Type cell;
        ASSERT_TRUE(Set_Crystal_Cell({v[0], v[1], v[2]}, {v[3], v[4], v[5]}, cell).ok()) << number;
        double worst = 0;
        for (const Sym_Oper_Type& oper : group.operators)
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < 3; ++j) {
                    double image = 0;
                    for (int k = 0; k < 3; ++k)
                        for (int l = 0; l < 3; ++l) image += oper.rot[k][i] * cell.GD[k][l] * oper.rot[l][j];
                    worst = std::max(worst, std::fabs(image - cell.GD[i][j]));
                }
        EXPECT_LT(worst, 1e-4) << number;
        const std::size_t free = number < 3 ? 6 : number < 16 ? 4 : number < 75 ? 3 : number < 195 ? 2 : 1;
        std::size_t found = 0;
        for (std::size_t i = 0; i < cell_parameters; ++i) found += ties.Free(i);
        EXPECT_EQ(found, free) << number;
    }
}

}  // namespace
}  // namespace vntl
