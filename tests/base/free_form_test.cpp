// Free-form records. The outcomes of the first table are those that gfortran 12 gives for the same text (with LF for the lone CR).
#include "base/free_form.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace vntl {
namespace {

TEST(Free_Form, ReadsFourNumbers) {
    struct Case {
        const char* text;
        std::vector<float> values;  // -7 where a place is left as it was
    };
    const Case cases[] = {{"1,\n2,3,4", {1, 2, 3, 4}},
                          {"1\n,2,3,4", {1, 2, 3, 4}},
                          {",,3,4", {-7, -7, 3, 4}},
                          {"2*5,2*", {5, 5, -7, -7}},
                          {"1 , , 2 3", {1, -7, 2, 3}},
                          {"1/2 3 4", {1, -7, -7, -7}},
                          {"/", {-7, -7, -7, -7}},
                          {"1 2\n3 4 5\n6", {1, 2, 3, 4}},
                          {"3*7.\n8", {7, 7, 7, 8}},
                          {"5*1", {1, 1, 1, 1}},
                          {"1.5+3 1d2 1-2 2", {1500, 100, 0.01f, 2}},
                          {"1,\n,2,3", {1, -7, 2, 3}},
                          {"1 2 3*\n4 5", {1, 2, -7, -7}},
                          {"2*1 3*2", {1, 1, 2, 2}},
                          {"\n\r\n1\r\n\t2\r3\t,\t4", {1, 2, 3, 4}},
                          {"100000000*1", {1, 1, 1, 1}}};
    for (const Case& c : cases) {
        std::vector<float> values(4, -7.0f);
        Free_Form_Reader reader(c.text);
        EXPECT_TRUE(reader.Read(values)) << c.text << reader.status().message;
        EXPECT_EQ(values, c.values) << c.text;
        EXPECT_EQ(reader.given(), 4u - static_cast<std::size_t>(std::count(c.values.begin(), c.values.end(), -7.0f)));
    }
}

TEST(Free_Form, ReportsBadItemsWithTheirLine) {
    struct Case {
        const char* text;
        const char* message;
    };
    const Case cases[] = {{"1 2 3 4abc", "Line 5: \"4abc\" is not a number"},
                          {"1\n2\r\n3 x1", "Line 7: \"x1\" is not a number"},
                          {"0*1 2 3 4", "Line 5: \"0*1\" is not a number"},
                          {"2 * 5 6 7", "Line 5: \"*\" is not a number"},
                          {"1 2 2*y", "Line 5: \"y\" is not a number"},
                          {"-2*1", "Line 5: \"-2*1\" is not a number"},
                          {"99999999999*1", "Line 5: \"99999999999*1\" is not a number"},
                          {"1 2\n3\n", "Line 7: the text ends before all values are read"},
                          {"1e 2 3 4", "Line 5: \"1e\" is not a number"},
                          {"1;2;3;4", "Line 5: \"1;2;3;4\" is not a number"}};
    for (const Case& c : cases) {
        std::vector<double> values(4);
        Free_Form_Reader reader(c.text, 5);
        EXPECT_FALSE(reader.Read(values));
        EXPECT_EQ(reader.status().message, c.message) << c.text;
        EXPECT_FALSE(reader.Read(values));
        EXPECT_EQ(reader.status().message, c.message) << "the first failure stays";
    }
    int n = 3;
    Free_Form_Reader whole("1.5");
    EXPECT_FALSE(whole.Read(n));
    EXPECT_EQ(whole.status().message, "Line 1: \"1.5\" is not a whole number");
    std::string text = "as it was";
    Free_Form_Reader open("'no end\n'");
    EXPECT_FALSE(open.Read(text));
    EXPECT_EQ(text, "as it was");
}

TEST(Free_Form, ReadsRecordsOfMixedKinds) {
    Free_Form_Reader reader("3 0.02 'it''s \"a\" title' rest dropped\n\n 1 2\n3 dropped\n2*4 'x'\n2*'a b', \"\" word/\nlast line");
    int n = 0;
    double step = 0;
    std::string title, a, b, c, d;
    EXPECT_TRUE(reader.Read(n, step, title));
    EXPECT_EQ(title, "it's \"a\" title");
    EXPECT_EQ(reader.Line_Number(), 2);
    std::vector<float> counts(static_cast<std::size_t>(n));
    EXPECT_TRUE(reader.Read(counts));
    EXPECT_EQ(counts, (std::vector<float>{1, 2, 3}));
    float x = 0;
    EXPECT_TRUE(reader.Read(n, x, a));  // one count serves an integer and a real
    EXPECT_EQ(n, 4);
    EXPECT_EQ(x, 4);
    EXPECT_TRUE(reader.Read(a, b, c, d));
    EXPECT_EQ(a + '/' + b + '/' + c + '/' + d, "a b/a b//word");
    EXPECT_FALSE(reader.At_End());
    EXPECT_EQ(reader.Rest(), "last line");
    EXPECT_TRUE(reader.Skip_Line());
    EXPECT_TRUE(reader.At_End());
    EXPECT_FALSE(reader.Read(x));
    EXPECT_TRUE(reader.ended());
}

// Shortest texts of random floats, ten a line with every separator, come back bit for bit.
TEST(Free_Form, RoundTrips) {
    std::mt19937 random(3);
    std::vector<float> written(50000);
    std::string text;
    const char* const separators[] = {" ", "\n", ",", "\t", " , ", "\r\n", ",\n"};
    for (float& value : written) {
        value = std::ldexp(static_cast<float>(static_cast<int>(random())), static_cast<int>(random() % 100) - 80);
        char digits[40];
        std::snprintf(digits, sizeof digits, "%.9g", static_cast<double>(value));
        text += digits;
        text += separators[random() % 7];
    }
    std::vector<float> read(written.size());
    Free_Form_Reader reader(text);
    EXPECT_TRUE(reader.Read(read)) << reader.status().message;
    EXPECT_EQ(read, written);
    EXPECT_TRUE(reader.At_End());
}

}  // namespace
}  // namespace vntl
