// Names in the order that people expect.
#include "base/natural_order.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace vntl {
namespace {

TEST(Natural_Order, NumbersCountByTheirValue) {
    std::istringstream lines(
        "\n-3\n0.05 K\n0.5\n2\n2.9.2004\n2.10.2004\n2a\n2.5 K\n02.75 K\n10\n99999999999999999999\n100000000000000000000\na\nA.1\n"
        "a.9\na.10\nLa_T1.25K\nla_T1.5K\nLa_T12.0K\nlab\nRun 1\nrun9.dat\nrun10.dat\n\xc3\xa9\n");
    std::vector<std::string> rising;
    for (std::string line; std::getline(lines, line);) rising.push_back(line);
    for (std::size_t i = 0; i < rising.size(); ++i)
        for (std::size_t j = 0; j < rising.size(); ++j)
            EXPECT_TRUE(Compare_Natural(rising[i], rising[j]) == (i <=> j)) << rising[i] << " and " << rising[j];
    const std::pair<const char*, const char*> equivalent[] = {{"Run7", "rUN007"}, {"1.50", "1.5"}, {"x0", "x00"}, {"1.0", "1"}};
    for (const auto& [a, b] : equivalent) EXPECT_TRUE(Compare_Natural(a, b) == 0) << a;
}

}  // namespace
}  // namespace vntl
