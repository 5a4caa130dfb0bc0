// Lines of every kind of line end, marks and encodings; what is no regular file is refused at once.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "base/free_form.hpp"
#include "base/os.hpp"
#include "base/scan.hpp"
#include "base/spline.hpp"
#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {
namespace {

std::vector<std::string> Lines(std::string_view text) {
    std::vector<std::string> lines;
    Line_Cursor cursor(text);
    for (std::string_view line; cursor.Next(line);) lines.emplace_back(line);
    EXPECT_EQ(lines.size(), Count_Lines(text)) << text;
    return lines;
}

TEST(Text_Files, EveryLineEnd) {
    using Texts = std::vector<std::string>;
    EXPECT_EQ(Lines(""), Texts());
    EXPECT_EQ(Lines("\n"), Texts({""}));
    EXPECT_EQ(Lines("a\nb"), Texts({"a", "b"}));
    EXPECT_EQ(Lines("a\r\nb\r\n"), Texts({"a", "b"}));
    EXPECT_EQ(Lines("a\rb\r"), Texts({"a", "b"}));
    EXPECT_EQ(Lines("a\r\rb\n\r\nc\r"), Texts({"a", "", "b", "", "c"}));
    EXPECT_EQ(Lines(std::string(1000, '\r')).size(), 1000u);
}

TEST(Text_Files, OnlyRegularFilesOpen) {
    const std::string directory = testing::TempDir(), name = directory + "t\xC3\xA9xt \"a\" 100%.txt";
    std::ofstream(name, std::ios::binary) << "\xEF\xBB\xBFhello";
    Text_File file;
    ASSERT_TRUE(file.Open(name).ok());
    EXPECT_EQ(file.Text(), "hello");
    EXPECT_TRUE(file.Open(directory).failed);
    EXPECT_TRUE(file.Open(name + "x").failed);
    EXPECT_TRUE(file.Open("/dev/zero").failed);
    const std::string pipe = directory + "pipe";
    ::mkfifo(pipe.c_str(), 0600);
    EXPECT_TRUE(file.Open(pipe).failed);
    IOsDeleteFile(pipe);
    IOsDeleteFile(name);
}

// What is not the shortest form, half of a pair, or beyond the last code point is no UTF-8: each byte is a letter of Latin-1.
TEST(Text, OnlyTheShortestFormIsUtf8) {
    for (const std::string bytes : {"\xC0\xAF", "\xC1\xBF", "\xE0\x80\xAF", "\xE0\x9F\xBF", "\xF0\x80\x80\xAF", "\xF0\x8F\xBF\xBF",
                                    "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xE2\x82", "\x80"})
        EXPECT_EQ(Characters(To_Utf8(bytes)), bytes.size()) << bytes;
    for (const std::string bytes : {"\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_EQ(To_Utf8(bytes), bytes);
}

TEST(Text, EncodingsAndCuts) {
    EXPECT_EQ(To_Utf8("\xB5m"), "\xC2\xB5m");
    EXPECT_EQ(To_Utf8("\xC2\xB5m"), "\xC2\xB5m");
    EXPECT_EQ(Cut("\xC2\xB5\xC3\x85x", 2), "\xC2\xB5\xC3\x85");
    EXPECT_EQ(Kept_Text(std::string(50, 'a') + "\xC3\x85", 51), std::string(50, 'a') + "\xC3\x85");
    EXPECT_EQ(Elide_Middle("abcdefghij", 5), "ab\xE2\x80\xA6ij");
    EXPECT_EQ(Trim_Right("a  "), "a");
    int whole = 0;
    double real = 0;
    EXPECT_TRUE(Parse_Integer(" 12 ", whole) && whole == 12);
    EXPECT_FALSE(Parse_Integer("12a", whole) || Parse_Integer("99999999999", whole) || Parse_Integer("", whole));
    EXPECT_TRUE(Parse_Real("1.5e3", real) && real == 1500);
    EXPECT_FALSE(Parse_Real("1,5", real));
}

TEST(Paths, Parts) {
    EXPECT_EQ(File_Part("/a/b.c/d"), "d");
    EXPECT_EQ(Directory_Part("/a/b.c/d"), "/a/b.c");
    EXPECT_EQ(Directory_Part("d"), "");
    EXPECT_EQ(Extension_Of("/a/b.c/d"), "");
    EXPECT_EQ(Extension_Of("/a/b.tar.gz"), ".gz");
    EXPECT_EQ(File_Part("C:\\x\\y", '\\'), "y");
}

TEST(Scan, FieldsByTemplate) {
    Field_Reader reader{Line_Cursor("! comment\n\n INTER  2.0 3.5 1 0.25\n1 2\nx\n")};
    Fields fields;
    EXPECT_EQ(reader.Find_Fields("6ffif", fields), 0);
    EXPECT_EQ(fields.real[0], 2);
    EXPECT_EQ(fields.real[1], 3.5f);
    EXPECT_EQ(fields.integer[2], 1);
    EXPECT_EQ(fields.real[3], 0.25f);
    EXPECT_EQ(reader.Find_Fields("ffff", fields), 0);
    EXPECT_EQ(fields.real[1], 2);
    EXPECT_EQ(fields.real[2], 0);
    EXPECT_EQ(reader.Find_Fields("f", fields), Field_Reader::misfit);
    EXPECT_EQ(reader.Find_Fields("f", fields), Field_Reader::end_of_file);
}

TEST(Scan, WordsAndNumbers) {
    std::vector<std::string_view> words;
    EXPECT_TRUE(Get_Words("one \"two three\" four", words, 10, 20).ok());
    ASSERT_EQ(words.size(), 3u);
    EXPECT_EQ(words[1], "two three");
    EXPECT_EQ(Get_Words("a \"b", words, 10, 20).message, "Non balanced quotes!");
    EXPECT_EQ(Get_Words("1 2 3 4 5 6 7 8 9 10 11", words, 10, 20).message, "Dimension of DIRE exceeded");
    EXPECT_EQ(words.size(), 10u);
    std::vector<float> reals;
    std::vector<int> ints;
    EXPECT_EQ(Get_Numbers("1.5 2 x", reals, ints), 2);
    EXPECT_EQ(Get_Numbers("1 nan", reals, ints), 1);
    std::array<float, 4> values{};
    EXPECT_TRUE(Read_Free_Reals("3*1.5, 2D0", values));
    EXPECT_EQ(values[3], 2);
    EXPECT_FALSE(Read_Free_Reals("1 2 3", values) || Read_Free_Reals("1,,3 4", values) || Read_Free_Reals("1 2 / 3 4", values));
}

// A natural spline has no second derivative at its ends; with the end slopes of a cubic it is that cubic, in closed form.
TEST(Spline, ReproducesACubicWithItsEndSlopes) {
    const std::vector<double> x = {0, 0.7, 1.1, 2.5, 3};
    std::vector<double> y;
    const auto cubic = [](double t) { return t * t * t - 2 * t * t + 0.5 * t + 1; };
    const auto slope = [](double t) { return 3 * t * t - 4 * t + 0.5; };
    for (const double t : x) y.push_back(cubic(t));
    const auto m = Spline(x, y, slope(0), slope(3));
    for (double t = 0; t <= 3; t += 0.1) EXPECT_NEAR(Splint(x, y, m, t), cubic(t), 1e-12);
    const auto natural = Spline(x, y);
    EXPECT_EQ(natural.front(), 0);
    EXPECT_EQ(natural.back(), 0);
}

}  // namespace
}  // namespace vntl
