// A text under edit keeps the bytes that it does not change.
#include "base/source_text.hpp"

#include <gtest/gtest.h>

#include <random>

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

TEST(Source_Text, WhatIsNotEditedGoesBackAsItCame) {
    for (const std::string bytes : {"", "\n", "a", "a\n", "a\r\nb\rc\nd", "\r\r\n\n\r",
                                    "\xEF\xBB\xBF"
                                    "a\n",
                                    "\xEF\xBB\xBF\xEF\xBB\xBF\n",
                                    "\xE2\x80\xA9"
                                    "a\xE2\x80\xA8\n",
                                    "\xE5\n\xC3\xA5\n", "\xE2\x80\n\xE2", "\xEF\xB7\x90x\xEF\xB7\x91",
                                    "\xFF\xFE"
                                    "a"}) {
        const Source_Text source(bytes);
        EXPECT_EQ(source.Bytes_Of(source.Lines()), bytes);
    }
    const std::string zero("a\0b\n\0", 5);
    EXPECT_EQ(Source_Text(zero).Bytes_Of(Source_Text(zero).Lines()), zero);
}

TEST(Source_Text, AnEditChangesItsLinesAlone) {
    struct Edit {
        const char* what;
        std::string before;
        Texts lines;
        std::string after;
    };
    const Edit edits[] = {
        {"a line is parted: its end stands behind the second half", "a\nbc\r\nd\n", {"a", "b", "c", "d", ""}, "a\nb\nc\r\nd\n"},
        {"two lines are joined", "a\r\nb\nc\rd", {"ab", "c", "d"}, "ab\nc\rd"},
        {"a line goes", "a\r\nb\nc\rd", {"a", "c", "d"}, "a\r\nc\rd"},
        {"a line comes", "a\r\nb\r\nc\rd", {"a", "b", "new", "c", "d"}, "a\r\nb\r\nnew\r\nc\rd"},
        {"behind a last line without an end", "a\r\nb", {"a", "b", "c"}, "a\r\nb\r\nc"},
        {"each end stays", "a\r\nb\nc\r", {"x", "y", "z", ""}, "x\r\ny\nz\r"},
        {"all goes",
         "\xEF\xBB\xBF"
         "a\n",
         {""},
         "\xEF\xBB\xBF"},
        {"Latin-1 stays Latin-1", "\xE5 x\nx\n", {"\xC3\xA5 q", "\xC3\xA5", ""}, "\xE5 q\n\xE5\n"},
        {"beside UTF-8", "\xE5 x\n\xC3\xA5 x\n", {"\xC3\xA5 q", "\xC3\xA5 q", ""}, "\xE5 q\n\xC3\xA5 q\n"},
        {"a letter that Latin-1 lacks", "\xE5 x\n\xE5\n", {"\xC3\xA5 \xCE\xB8", "\xC3\xA5", ""}, "\xC3\xA5 \xCE\xB8\n\xE5\n"},
        {"letters that would be taken for UTF-8", "\xE5\nx", {"\xC3\xA5", "\xC3\x83\xC2\xA5"}, "\xE5\n\xC3\x83\xC2\xA5"},
        {"a line moves", "a\rb\r\nc\nd\n", {"b", "c", "a", "d", ""}, "b\r\nc\na\nd\n"},
    };
    for (const Edit& edit : edits) {
        const std::string after = Source_Text(edit.before).Bytes_Of(edit.lines);
        EXPECT_EQ(after, edit.after) << edit.what;
        if (edit.what[0] != 'e') {  // and what is written is read as it was meant
            EXPECT_EQ(Source_Text(after).Lines(), edit.lines) << edit.what;
        }
    }
}

// Lines taken out and put in at random, among many that are equal: what is kept rises in both texts, and is as much as a table of all
// common sequences finds, less a few.
TEST(Source_Text, KeptLinesAgainstTheLongestCommonSequence) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        Texts old, now;
        for (int i = 0; i < 60; ++i) old.push_back(random() % 3 == 0 ? "" : std::to_string(random() % 80));
        for (const std::string& line : old) {
            if (random() % 12 != 0) now.push_back(line);
            if (random() % 12 == 0) now.push_back("new " + std::to_string(random() % 5));
        }
        std::vector<std::vector<int>> longest(old.size() + 1, std::vector<int>(now.size() + 1));
        for (std::size_t i = 1; i <= old.size(); ++i)
            for (std::size_t k = 1; k <= now.size(); ++k)
                longest[i][k] = old[i - 1] == now[k - 1] ? longest[i - 1][k - 1] + 1 : std::max(longest[i - 1][k], longest[i][k - 1]);
        int kept = 0;
        std::size_t next = 0;
        const std::vector<std::size_t> from = Kept_Lines(old, now);
        for (std::size_t k = 0; k < now.size(); ++k) {
            if (from[k] == no_line) continue;
            ASSERT_TRUE(from[k] >= next && old[from[k]] == now[k]);
            next = from[k] + 1;
            ++kept;
        }
        EXPECT_GE(kept, longest.back().back() - 8) << round;
    }
}

}  // namespace
}  // namespace vntl
