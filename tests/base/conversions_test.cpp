// Numbers to texts and back, by formats and in free form, and the numbers of a line one after the other.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "base/conversions.hpp"

namespace vntl {
namespace {

TEST(Conversions, NumbersToTexts) {
    EXPECT_EQ(IntegerToString(42), "42");
    EXPECT_EQ(IntegerToString(-42, "(i5)"), "  -42");
    EXPECT_EQ(IntegerToString(7, "(I4.3)"), " 007");
    EXPECT_EQ(IntegerToString(123456, "(i5)"), "*****");
    EXPECT_EQ(IRealToString(1.54056f, "(f8.5)"), " 1.54056");
    EXPECT_EQ(IRealToString(-1234.5f, "(f6.2)"), "******");
    EXPECT_EQ(IRealToString(0.1f), "0.1");
    for (const char* bad : {"(f8.5", "f8.5", "(q5)", "()", "(i5)"}) EXPECT_EQ(IRealToString(1, bad), "") << bad;
    EXPECT_EQ(IntegerToString(1, "(f8.5)"), "");
}

TEST(Conversions, FreeFormReadsBackWhatItWrote) {
    std::mt19937 random(20270118);
    for (int k = 0; k < 10000; ++k) {
        const auto bits = static_cast<std::uint32_t>(random());
        const auto real = std::bit_cast<float>(bits);
        const auto integer = std::bit_cast<int>(bits);
        float real_back = 0;
        int integer_back = 0;
        EXPECT_EQ(IStringToReal(IRealToString(real), real_back), std::isfinite(real)) << real;
        EXPECT_TRUE(!std::isfinite(real) || real_back == real) << real;
        EXPECT_TRUE(IStringToInteger(IntegerToString(integer), integer_back));
        EXPECT_EQ(integer_back, integer);
    }
}

TEST(Conversions, TextsToNumbers) {
    const struct {
        const char* text;
        const char* format;
        bool good;
        float value;
    } reals[] = {{" 1.5D+03 ", "", true, 1500},
                 {"+.5", "", true, 0.5f},
                 {"1.5-3", "", true, 0.0015f},
                 {"12", "", true, 12},
                 {"", "", false, 0},
                 {" ", "", false, 0},
                 {"12 13", "", false, 0},
                 {"1,5", "", false, 0},
                 {"nan", "", false, 0},
                 {"1e99", "", false, 0},
                 {"1.54056", "(f8.5)", true, 1.54056f},
                 {"    1.25", "(f8.5)", true, 1.25f},
                 {"x", "(f8.5)", false, 0},
                 {"1.5", "(f8.5", false, 0},
                 {"1e99", "(f8.5)", false, 0},
                 {"", "(f8.5)", true, 0}};
    for (const auto& c : reals) {
        float value = 77;
        EXPECT_EQ(IStringToReal(c.text, value, c.format), c.good) << c.text << ' ' << c.format;
        EXPECT_EQ(value, c.good ? c.value : 77) << c.text << ' ' << c.format;
    }
    const struct {
        const char* text;
        const char* format;
        bool good;
        int value;
    } integers[] = {{" -17 ", "", true, -17}, {"+4", "", true, 4},         {"4.0", "", false, 0},   {"3000000000", "", false, 0},
                    {"4x", "", false, 0},     {"   42", "(i5)", true, 42}, {"x", "(i5)", false, 0}, {"3000000000", "(i10)", false, 0}};
    for (const auto& c : integers) {
        int value = 77;
        EXPECT_EQ(IStringToInteger(c.text, value, c.format), c.good) << c.text << ' ' << c.format;
        EXPECT_EQ(value, c.good ? c.value : 77) << c.text << ' ' << c.format;
    }
}

TEST(Conversions, RealsOfALine) {
    const std::string_view line = "\t 10.5,20 , -1.5D+02,,  3e-1  12abc 4";
    std::size_t at = 0;
    float value = 0;
    for (const float expected : {10.5f, 20.0f, -150.0f, 0.3f}) {
        ASSERT_TRUE(INextReal(line, at, value));
        EXPECT_EQ(value, expected);
    }
    EXPECT_FALSE(INextReal(line, at, value));  // stays there until the caller moves on
    EXPECT_FALSE(INextReal(line, at, value));
    EXPECT_EQ(at, line.find("12abc"));
    EXPECT_EQ(value, 0.3f);
    at += 5;
    EXPECT_TRUE(INextReal(line, at, value));
    EXPECT_EQ(value, 4);
    EXPECT_FALSE(INextReal(line, at, value));
    EXPECT_EQ(at, line.size());
    at = 1000;
    EXPECT_FALSE(INextReal(line, at, value));
    EXPECT_EQ(at, line.size());
}

}  // namespace
}  // namespace vntl
