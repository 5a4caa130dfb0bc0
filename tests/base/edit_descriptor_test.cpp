// Edit descriptors beyond the table: formats over several lines, texts and logicals, bad formats and bad fields, round trips.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "base/edit_descriptor.hpp"

namespace vntl {
namespace {

Edit_Reader::Next_Line Lines(std::vector<std::string_view> lines) {
    return [lines = std::move(lines), i = std::size_t{0}](std::string_view& line) mutable {
        if (i == lines.size()) return false;
        line = lines[i++];
        return true;
    };
}

TEST(Edit_Notation, RefusesAndQuotesBadFormats) {
    const std::string deep(40, '('), deep_close(40, ')');
    const std::string bad[] = {"",
                               "F8.0",
                               "(",
                               "(F8.0",
                               "(F8)",
                               "(F.2)",
                               "(Q5)",
                               "(8)",
                               "(0F8.0)",
                               "(F8.0,,I2)",
                               "(,I2)",
                               "(I2,)",
                               "(I2,())",
                               "('abc)",
                               "(T)",
                               "(T0)",
                               "(-3F8.1)",
                               "(3:)",
                               "(3T5)",
                               "(I99999)",
                               "(F8.9999)",
                               "(9999999F8.0)",
                               "(99999999999999999999F8.0)",
                               "(L)",
                               "(I)",
                               "(G0.3)",
                               "(E8.)",
                               "(I2.3)",
                               "(999P,F8.1)",
                               deep + "I2" + deep_close,
                               "(100000(100000(100000(1X))))",
                               "(9999('abcdefghijkl'))",
                               "(100000/)"};
    for (const std::string& text : bad) {
        const Edit_Format format(text);
        EXPECT_TRUE(format.status().failed) << text;
        EXPECT_NE(format.status().message.find("Bad format \"" + text.substr(0, 80)), std::string::npos) << format.status().message;
        int value = 5;
        EXPECT_EQ(Read_Record("1", format, value).message, format.status().message);
        std::string out;
        EXPECT_EQ(Write_Record(out, format, 1).message, format.status().message);
        EXPECT_EQ(value, 5);
        EXPECT_EQ(out, "");
    }
}

TEST(Edit_Notation, AcceptsTheUsualSpellings) {
    const char* good[] = {"(10(I2,F8.0))",
                          "(5E16.8)",
                          " ( 6 i10 , l3 ) x",
                          "(1P5E12.4)",
                          "('text',A)",
                          "(2(F5.1)3X,2F4.1)",
                          "()",
                          "(1X,I3/)",
                          "(\"it's\",3(1X,2(I2,A4)),T80,A)",
                          "(-2P,F8.2)",
                          "(99999F8.0)",
                          "(E14.6E3)",
                          "(E14.6E14.6)",
                          "(1000(F8.3,2X))"};
    for (const char* text : good) EXPECT_TRUE(Edit_Format(text).status().ok()) << Edit_Format(text).status().message;
}

TEST(Edit_Reading, ReadsCountsOverLines) {
    const Edit_Format pairs("(10(I2,F8.0))"), plain("(10F8.0)"), step("(3F8.2)"), whole("(4I6)");
    int n = 0;
    float y = 0;
    EXPECT_TRUE(Read_Record(" 1   1234.", pairs, n, y).ok());
    EXPECT_EQ(n, 1);
    EXPECT_FLOAT_EQ(y, 1234);

    std::vector<float> counts(12, -1.0f);
    Edit_Reader reader(plain, Lines({"      1.     2.0       3    4       5.       6.       7.       8.      9.      10", "    11.5"}));
    EXPECT_TRUE(reader.Read(counts));
    EXPECT_EQ(reader.lines(), 2);
    EXPECT_FLOAT_EQ(counts[10], 11.5f);
    EXPECT_FLOAT_EQ(counts[11], 0);  // the line is short

    float first = 0, increment = 0, last = 0;
    EXPECT_TRUE(Read_Record("10.00   0.02    15000", step, first, increment, last).ok());
    EXPECT_FLOAT_EQ(increment, 0.02f);
    EXPECT_FLOAT_EQ(last, 150);

    std::vector<double> y4(4);
    EXPECT_TRUE(Read_Record("    12    -3 1 2 3      ", whole, y4).ok());
    EXPECT_EQ(y4, (std::vector<double>{12, -3, 123, 0}));
}

TEST(Edit_Reading, ReadsTextsLogicalsTabsAndSlashes) {
    const Edit_Format format("(A4,1X,L3,T1,2X,A,/,I3,TL3,A3,TR1,'xx',G5.1)");
    std::string a, rest, same;
    bool flag = false;
    int n = 0;
    double x = 0;
    Edit_Reader reader(format, Lines({"ab c .T title of it  ", "042 zz 15"}));
    EXPECT_TRUE(reader.Read(a, flag, rest, n, same, x)) << reader.status().message;
    EXPECT_EQ(a, "ab c");
    EXPECT_TRUE(flag);
    EXPECT_EQ(rest, " c .T title of it");
    EXPECT_EQ(n, 42);
    EXPECT_EQ(same, "042");
    EXPECT_DOUBLE_EQ(x, 1.5);

    // A text of 3 characters keeps the last ones of a wider field.
    const Edit_Format wide("(A6,A1,A)");
    std::string cut, one, plain;
    Edit_Reader texts(wide, "abcdefghijkl");
    EXPECT_TRUE(texts.Read_Text(cut, 3) && texts.Read_Text(one, 3) && texts.Read_Text(plain, 3));
    EXPECT_EQ(cut + '/' + one + '/' + plain, "def/g/hij");
}

TEST(Edit_Reading, ReportsBadFieldsWithTheirColumns) {
    struct Case {
        const char* format;
        const char* line;
        const char* message;
    };
    const Case cases[] = {
        {"(2F8.0)", "    12.0    1x.0", "Bad value \"    1x.0\" in columns 9 to 16"},
        {"(T4,F3.0,F3.0)", "abc1.2--1", "Bad value \"--1\" in columns 7 to 9"},
        {"(I3,F4.1)", "  12.3.", "Bad value \"2.3.\" in columns 4 to 7"},
        {"(2F4.0)", "1\t2 3", "Bad value \"1\t2 \" in columns 1 to 4"},
        {"(F4.0)", "   1", "The lines end before the format (F4.0) has all its values"},
        {"(F4.0,(1X))", "   1", "The format (F4.0,(1X)) has too few fields"},
        {"(F4.0,A)", "   1", "The format (F4.0,A) has no real field where one is needed"},
        {"(2F0.1)", "   1", "The format (2F0.1) has a field without a width, which cannot be read"},
        {"(2F8.0)", "E3", "Bad value \"E3\" in columns 1 to 2"},
    };
    for (const Case& c : cases) {
        const Edit_Format format(c.format);
        float a = 0, b = 0;
        EXPECT_EQ(Read_Record(c.line, format, a, b).message, c.message) << c.format;
    }
    const Edit_Format logical("(L3)"), whole("(I12)");
    bool flag = true;
    int n = 7;
    EXPECT_EQ(Read_Record(" yes", logical, flag).message, "Bad value \" ye\" in columns 1 to 3");
    EXPECT_TRUE(Read_Record("", logical, flag).ok());
    EXPECT_FALSE(flag);
    EXPECT_TRUE(Read_Record("  4000000000", whole, n).failed);
    EXPECT_EQ(n, 7);
    const Edit_Format slashes("(1000/,F1.0)");
    float x = 0;
    Edit_Reader reader(slashes, Lines({"1", "2"}));
    EXPECT_FALSE(reader.Read(x));
    EXPECT_TRUE(reader.ended());
}

TEST(Edit_Writing, KeepsCharactersWholeAndTypesApart) {
    const Edit_Format text("(A3,'|')"), real("(F8.3)"), whole("(I4)");
    std::string out;
    EXPECT_TRUE(Write_Record(out, text, "a\xC3\xA5\xC3\xA5").ok());  // five bytes, the last letter would be halved
    EXPECT_EQ(out, "a\xC3\xA5|\n");
    EXPECT_TRUE(Write_Record(out, real, 3).failed);
    EXPECT_TRUE(Write_Record(out, whole, 3.0).failed);
    EXPECT_TRUE(Write_Record(out, whole, true).failed);
    std::string several;
    EXPECT_TRUE(Write_Record(several, whole, std::vector<int>{1, 2}).ok());
    EXPECT_EQ(several, "   1\n   2\n");
}

// 17 digits bring every double back, 9 every float.
TEST(Edit_Writing, RoundTrips) {
    const Edit_Format wide("(1P,E25.16E3)"), narrow("(1PE16.8)"), fixed("(F20.9)");
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const double x = std::bit_cast<double>(random());
        const float f = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        const double small = std::ldexp(static_cast<double>(random() >> 40), -10);
        if (!std::isfinite(x) || !std::isfinite(f)) continue;
        std::string out;
        double back = 0, back_small = 0;
        float back_f = 0;
        EXPECT_TRUE(Write_Record(out, wide, x).ok() && Read_Record(out.substr(0, 25), wide, back).ok());
        EXPECT_EQ(back, x) << out;
        out.clear();
        EXPECT_TRUE(Write_Record(out, narrow, f).ok() && Read_Record(out.substr(0, 16), narrow, back_f).ok());
        EXPECT_EQ(back_f, f) << out;
        out.clear();
        EXPECT_TRUE(Write_Record(out, fixed, small).ok() && Read_Record(out.substr(0, 20), fixed, back_small).ok());
        EXPECT_NEAR(back_small, small, 0.51e-9);
    }
}

}  // namespace
}  // namespace vntl
