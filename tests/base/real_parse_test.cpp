// Numbers out of text, against std::from_chars on millions of random texts, and the spellings that it does not know.
#include "base/real_parse.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>

namespace vntl {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int texts = 500'000;
#else
constexpr int texts = 10'000'000;
#endif

template <class Real>
void Expect_Same(std::string_view text, const char* (*parse)(const char*, const char*, Real&)) {
    Real ours = -1, reference = -1;
    const char* const last = text.data() + text.size();
    const char* const end = parse(text.data(), last, ours);
    const auto [reference_end, error] = std::from_chars(text.data(), last, reference);
    if (error == std::errc::result_out_of_range) reference = std::abs(ours) > 1 ? std::numeric_limits<Real>::infinity() : Real{0};
    ASSERT_EQ(end, reference_end) << text;
    ASSERT_EQ(std::abs(ours), std::abs(reference)) << text;
}

// Random texts of the shapes that files hold: fixed and scientific, short and long, and shortest texts of random bits.
TEST(Real_Parse, AgreesWithTheLibrary) {
    std::mt19937_64 random(20);
    char text[80];
    for (int i = 0; i < texts; ++i) {
        const std::uint64_t bits = random();
        const int shape = static_cast<int>(bits & 7);
        char* end = text;
        if (shape == 0) {
            const float value = std::bit_cast<float>(static_cast<std::uint32_t>(bits >> 32));
            end = std::to_chars(text, text + sizeof text, std::isfinite(value) ? value : 1.5f).ptr;
        } else if (shape == 1) {
            const double value = std::bit_cast<double>(random());
            end = std::to_chars(text, text + sizeof text, std::isfinite(value) ? value : 1.5).ptr;
        } else {
            if (bits & 8) *end++ = '-';
            end = std::to_chars(end, text + sizeof text, bits >> (8 + (bits >> 4 & 31) + (shape == 2 ? 0 : 12))).ptr;
            if (shape >= 3) {
                *end++ = '.';
                const int digits = static_cast<int>(bits >> 40) & (shape == 7 ? 15 : 7);
                for (int k = 0; k < digits; ++k) *end++ = static_cast<char>('0' + (bits >> (3 * k + 11)) % 10);
            }
            if (shape >= 6) {
                *end++ = bits & 16 ? 'e' : 'E';
                end = std::to_chars(end, text + sizeof text, static_cast<int>(bits >> 20 & 127) - 64).ptr;
            }
        }
        const std::string_view view(text, static_cast<std::size_t>(end - text));
        Expect_Same<float>(view, Parse_Float);
        Expect_Same<double>(view, Parse_Double);
        if (HasFatalFailure()) return;
    }
}

// Texts exactly between two floats, a hair to either side, at the ends of the range, and longer than any buffer.
TEST(Real_Parse, RoundsTiesAndRangeEndsRight) {
    const std::string zeros(2000, '0');
    const std::string cases[] = {"16777217",
                                 "16777219",
                                 "16777217.00000000000000000000000000001",
                                 "16777216.99999999999999999999999999999",
                                 "1.00000005960464477539062500",
                                 "1.00000005960464477539062501",
                                 "1.00000005960464477539062499",
                                 "1.4e-45",
                                 "0.7e-45",
                                 "0.71e-45",
                                 "1.17549435e-38",
                                 "3.4028235e38",
                                 "3.4028236e38",
                                 "3.40282357e38",
                                 "1e39",
                                 "1e-50",
                                 "0.0",
                                 "0." + zeros + "1e2001",
                                 "1" + zeros + "e-2000",
                                 "9007199254740993",
                                 "4.9e-324",
                                 "2.4e-324",
                                 "1.7976931348623159e308",
                                 "0." + zeros,
                                 "5" + zeros,
                                 "123456789012345678901234567890e-20"};
    for (const std::string& text : cases) {
        Expect_Same<float>(text, Parse_Float);
        Expect_Same<double>(text, Parse_Double);
    }
}

TEST(Real_Parse, KnowsTheSpellingsOfFortran) {
    struct Case {
        const char* text;
        double value;
        int used;
    };
    const Case cases[] = {{"+1.5", 1.5, 4},
                          {".5", 0.5, 2},
                          {"1.", 1, 2},
                          {"1.5D+03", 1500, 7},
                          {"1.5d3,", 1500, 5},
                          {"1.5+3", 1500, 5},
                          {"-2.5-1 ", -0.25, 6},
                          {"1e", 1, 1},
                          {"1e+", 1, 1},
                          {"1.5+x", 1.5, 3},
                          {"1-2", 0.01, 3},
                          {"3*1.0", 3, 1},
                          {"1..2", 1, 2},
                          {"12345678", 12345678, 8},
                          {"1E99999999999999999999", INFINITY, 22},
                          {"-Infinity", -INFINITY, 9},
                          {"infx", INFINITY, 3},
                          {"1D-99999999999999999999", 0, 23}};
    for (const Case& c : cases) {
        const std::string_view text(c.text);
        float f = -7;
        double d = -7;
        EXPECT_EQ(Parse_Float(text.data(), text.data() + text.size(), f) - text.data(), c.used) << text;
        EXPECT_EQ(Parse_Double(text.data(), text.data() + text.size(), d) - text.data(), c.used) << text;
        EXPECT_EQ(d, c.value) << text;
        EXPECT_EQ(f, static_cast<float>(c.value)) << text;
    }
    for (const std::string_view text : {"", ".", "-", "+.", "e5", "--1", "+-1", "x", " 1", "in", "-.e1", ",1"}) {
        float f = -7;
        EXPECT_EQ(Parse_Float(text.data(), text.data() + text.size(), f), text.data()) << text;
        EXPECT_EQ(f, -7) << text;
    }
    float nan = 0;
    const std::string_view name = "NaN";
    EXPECT_EQ(Parse_Float(name.data(), name.data() + 3, nan), name.data() + 3);
    EXPECT_TRUE(std::isnan(nan));
}

TEST(Real_Parse, ReadsIntegersThatFit) {
    struct Case {
        const char* text;
        bool good;
        int value, used;
    };
    for (const Case& c : {Case{"12,", true, 12, 2},
                          {"+7", true, 7, 2},
                          {"-2147483648", true, -2147483647 - 1, 11},
                          {"2147483648", false, 5, 0},
                          {"", false, 5, 0},
                          {"+", false, 5, 0},
                          {"+-1", false, 5, 0},
                          {"1.5", true, 1, 1},
                          {"99999999999999", false, 5, 0}}) {
        int value = 5;
        const std::string_view text(c.text);
        const char* cursor = text.data();
        EXPECT_EQ(Parse_Int(cursor, text.data() + text.size(), value), c.good) << text;
        EXPECT_EQ(value, c.value) << text;
        EXPECT_EQ(cursor - text.data(), c.used) << text;
    }
}

}  // namespace
}  // namespace vntl
