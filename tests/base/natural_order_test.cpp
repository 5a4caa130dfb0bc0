// Names in the order that people expect.
#include "base/natural_order.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace vntl {
namespace {

TEST(Natural_Order, NumbersCountByTheirValue) {
    const char* rising[] = {"",
                            "-3",
                            "0.05 K",
                            "0.5",
                            "2",
                            "2.9.2004",
                            "2.10.2004",
                            "2a",
                            "2.5 K",
                            "02.75 K",
                            "10",
                            "99999999999999999999",
                            "100000000000000000000",
                            "a",
                            "A.1",
                            "a.9",
                            "a.10",
                            "La_T1.25K",
                            "la_T1.5K",
                            "La_T12.0K",
                            "lab",
                            "Run 1",
                            "run9.dat",
                            "run10.dat",
                            "\xc3\xa9"};
    for (std::size_t i = 0; i < std::size(rising); ++i)
        for (std::size_t j = 0; j < std::size(rising); ++j)
            EXPECT_TRUE(Compare_Natural(rising[i], rising[j]) == (i <=> j)) << rising[i] << " and " << rising[j];
    const std::pair<const char*, const char*> equivalent[] = {{"Run7", "rUN007"}, {"1.50", "1.5"}, {"x0", "x00"}, {"1.0", "1"}};
    for (const auto& [a, b] : equivalent) EXPECT_TRUE(Compare_Natural(a, b) == 0) << a;
}

}  // namespace
}  // namespace vntl
