// Lists in fixed columns: whatever stands in the fields, the quick ways give what the edit descriptors give.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "base/text_file.hpp"
#include "patterns/plain_columns.hpp"

namespace vntl {
namespace {

// Fields as files have them, and now and then anything.
std::string Field(std::mt19937& random, std::size_t width) {
    const auto one_of = [&](std::string_view letters) { return letters[random() % letters.size()]; };
    std::string field;
    const bool odd = random() % 40 == 0;
    const std::size_t digits = random() % (width + 1);
    for (std::size_t i = 0; i < digits; ++i) field += one_of(odd ? "0123456789 .-+eE,nain\t" : "0123456789");
    if (random() % 4 == 0 && width > 2 && !field.empty()) field[random() % field.size()] = '.';
    if (random() % 8 == 0 && !field.empty()) field.front() = '-';
    if (random() % 6 == 0) field.insert(0, width - field.size(), ' ');
    if (random() % 6 == 0) field.append(width - field.size(), ' ');
    return std::string(width - field.size(), ' ') + field;
}

template <int per_line, int... widths>
void Compare(const char* layout) {
    const Edit_Format format(layout);
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        const int n = static_cast<int>(random() % 60);
        std::string text;
        for (int i = 0; i < n + 2; ++i) {
            for (const int width : {widths...}) text += Field(random, static_cast<std::size_t>(width));
            if (i % per_line == per_line - 1) text += random() % 10 == 0 ? "  beyond\n" : "\n";
        }
        Line_Cursor lines(text), same(text);
        Edit_Reader reader(format, [&](std::string_view& line) { return same.Next(line); });
        const Groups_Read read = Read_Groups<per_line, widths...>(
            format, [&](std::string_view& line) { return lines.Next(line); }, n,
            [&](std::size_t i, const auto& group) {
                for (const float value : group) {
                    float wanted = 0;
                    ASSERT_TRUE(reader.Read(wanted)) << text << i;
                    ASSERT_TRUE(value == wanted || (std::isnan(value) && std::isnan(wanted))) << text << i << ' ' << value << ' ' << wanted;
                }
            });
        if (testing::Test::HasFatalFailure()) return;
        float value = 0;
        bool more = true;
        for (std::size_t i = 0; i < sizeof...(widths); ++i) more = more && reader.Read(value);
        ASSERT_TRUE(read.count == n || !more) << text << read.count;
    }
}

TEST(Plain_Columns, QuickWaysGiveWhatTheFormatGives) {
    Compare<10, 8>("(10F8.0)");
    Compare<5, 8, 8>("(10F8.0)");
    Compare<10, 2, 6>("(10(I2,F6.0))");
    Compare<10, 2, 8>("(10(I2,F8.0))");
    Compare<5, 6, 10>("(5(F6.0,F10.0))");
    Compare<4, 8, 7, 5>("(4(F8.0,F7.0,F5.0))");
}

}  // namespace
}  // namespace vntl
