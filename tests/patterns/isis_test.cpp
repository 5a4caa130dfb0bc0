// ISIS: files of several banks written by the test from known numbers.
#include "patterns/isis.hpp"
#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

constexpr auto wrong_number = " Error in Intensity file, wrong number of patterns !";
constexpr auto bad_record = " Error reading an ISIS profile DATA file";

// Records i = 0..n-1 of x = from + 2 i, y = 3 + i, deviation 0.5.
std::string Records(int n, int from, const char* deviation = "0.5") {
    return Lines(n, 1, [=](int i) { return Printed("%d.0  %d.0  %s", from + 2 * i, 3 + i, deviation); });
}

std::vector<Diffraction_Pattern_Type> Good(const std::string& text, int capacity = 7) {
    std::vector<Diffraction_Pattern_Type> banks;
    const Status status = Read_Isis(text, capacity, banks);
    EXPECT_TRUE(status.ok()) << status.message;
    for (const auto& p : banks) EXPECT_EQ(p.x.size(), static_cast<std::size_t>(p.npts));
    return banks;
}

std::string Message(const std::string& text, int capacity = 7) {
    std::vector<Diffraction_Pattern_Type> banks(3);
    const Status status = Read_Isis(text, capacity, banks);
    EXPECT_TRUE(banks.empty());
    return status.message;
}

TEST(Isis, PointsOfTwoBanks) {
    const auto banks = Good("nickel\nany fac_y 10.0 text\n  BANK 1 4\n" + Records(4, 1000) + "BANK 2\n! note\n# note\n" + Records(3, 500));
    ASSERT_EQ(banks.size(), 2u);
    const auto& p = banks[0];
    EXPECT_EQ(p.title, "nickel");
    EXPECT_EQ(p.radiation, "neutrons_tof");
    EXPECT_EQ(p.scat_var, "TOF");
    EXPECT_EQ(p.legend_x, "TOF (micro-seconds)");
    EXPECT_EQ(p.legend_y, "Intensity (arb. units)");
    EXPECT_FALSE(p.constant_step);
    EXPECT_TRUE(p.sigma_is_variance);
    EXPECT_EQ(p.x, (std::vector<float>{1000, 1002, 1004, 1006}));
    EXPECT_EQ(p.y, (std::vector<float>{30, 40, 50, 60}));
    EXPECT_EQ(p.sigma, (std::vector<float>{25, 25, 25, 25}));
    EXPECT_EQ(p.xmin, 1000);
    EXPECT_EQ(p.xmax, 1006);
    EXPECT_FLOAT_EQ(p.step, 6.0f / 4);  // the sum of the three steps by the number of points
    EXPECT_EQ(p.ymin, 30);
    EXPECT_EQ(p.ymax, 60);
    EXPECT_EQ(p.TSample, 0);
    EXPECT_EQ(p.monitor, 0);
    EXPECT_EQ(banks[1].npts, 3);
    EXPECT_EQ(banks[1].title, "nickel");
}

TEST(Isis, Histograms) {
    const auto banks = Good("a\nBANK 1 RALF\n" + Records(5, 100) + "\nleft over\nBANK 2\n" + Records(3, 50));
    ASSERT_EQ(banks.size(), 2u);
    ASSERT_EQ(banks[0].npts, 4);  // the last record is the right edge
    EXPECT_EQ(banks[0].y, (std::vector<float>{1500, 2000, 2500, 3000}));
    EXPECT_EQ(banks[0].sigma[0], 500.0f * 500 / 2 / 2);
    EXPECT_EQ(banks[0].xmax, 106);
    EXPECT_EQ(banks[0].step, 2);
    EXPECT_EQ(banks[1].npts, 2);  // RALF of the first bank is for all
    EXPECT_EQ(Good("a\nBANK 1\n" + Records(3, 50) + "BANK 2 RALF\n" + Records(3, 50))[1].npts, 3);
}

TEST(Isis, VariancesThatAreNoneAndRecordsOfZeros) {
    const auto some = Good("a\nBANK\n0.0 0.0 0.0\n1 2 0\n2 3 0.5\n-0.05 0.05 0.1\n")[0];
    EXPECT_EQ(some.npts, 2);
    EXPECT_EQ(some.sigma, (std::vector<float>{1000, 250000}));  // without a deviation: the factor
    const auto none = Good("a\nfac_y 1\nBANK\n1 2 0\n2 -3 0\n")[0];
    EXPECT_EQ(none.sigma, (std::vector<float>{2, 3}));  // none at all: the intensity
    const auto histogram = Good("a\nfac_y 1\nBANK RALF\n1 2 0\n3 4 0\n5 6 0\n")[0];
    EXPECT_EQ(histogram.sigma, (std::vector<float>{1, 2}));
}

TEST(Isis, EveryFault) {
    std::string eight = "a\n";
    for (int i = 0; i < 8; ++i) eight += "BANK\n" + Records(2, 100);
    EXPECT_EQ(Good(eight, 8).size(), 8u);
    EXPECT_EQ(Message(eight, 7), wrong_number);
    EXPECT_EQ(Message("a\nBANK\nwrong\nBANK\n", 1), wrong_number);  // before any record
    EXPECT_EQ(Message("a\nBANK\n" + Records(3, 100), 0), wrong_number);
    EXPECT_EQ(Message(""), wrong_number);
    EXPECT_EQ(Message("a\nb\n1 2 3\n"), wrong_number);
    for (const char* line : {"1 2", "1 2 x", "nan 2 3", "inf 2 3", "", "1 2 3e"})
        EXPECT_EQ(Message("a\nBANK\n" + Records(3, 100) + line + '\n' + Records(3, 200)), bad_record) << line;
}

TEST(Isis, WhatOthersWrite) {
    EXPECT_EQ(Good("a\nBANK\n" + Records(3, 100) + "\n  \nBANK\n1,2,3\n 2\t3\t4 rest\n2*7 1\n\n")[0].npts, 3);
    const auto empty = Good("a\nBANK\nBANK\n" + Records(3, 100));  // one bank without a point, the other one read
    ASSERT_EQ(empty.size(), 2u);
    EXPECT_EQ(empty[0].npts, 0);
    EXPECT_EQ(empty[1].npts, 3);
    EXPECT_EQ(Good("300\xB0\nBANK\n" + Records(3, 100))[0].title, "300\xC2\xB0");
}

}  // namespace
}  // namespace vntl::test
