// What the tests of the readers share: real files of other projects, the habits of other writers, and comparisons.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>

#include "base/text.hpp"
#include "patterns/pattern.hpp"

namespace vntl::test {

// Path of a real file, empty where those files are not to be had; the test is then skipped.
inline std::string Real_File(const std::string& name) {
    const char* set = std::getenv("VANTRELO_DATA");
    const std::filesystem::path folder =
        set != nullptr ? std::filesystem::path(set) : std::filesystem::path(SOURCE_TREE) / "../shared/data";
    const std::filesystem::path file = folder / name;
    return std::filesystem::exists(file) ? file.string() : std::string();
}

inline std::string Text_Of(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void Expect_Same(const Diffraction_Pattern_Type& a, const Diffraction_Pattern_Type& b, const std::string& what) {
    EXPECT_EQ(a.npts, b.npts) << what;
    EXPECT_EQ(a.x, b.x) << what;
    EXPECT_EQ(a.y, b.y) << what;
    EXPECT_EQ(a.sigma, b.sigma) << what;
    EXPECT_EQ(a.nd, b.nd) << what;
    EXPECT_EQ(a.ycalc, b.ycalc) << what;
    EXPECT_EQ(a.bgr, b.bgr) << what;
    EXPECT_EQ(a.conv, b.conv) << what;
    EXPECT_EQ(Trim_Right(a.title), Trim_Right(b.title)) << what;
    EXPECT_EQ(a.TSample, b.TSample) << what;
    EXPECT_EQ(a.monitor, b.monitor) << what;
    EXPECT_EQ(a.xmin, b.xmin) << what;
    EXPECT_EQ(a.xmax, b.xmax) << what;
    EXPECT_EQ(a.step, b.step) << what;
}

// The same file as other programs and systems would have written it: line ends of three kinds, blanks at the ends of lines, no last line
// end. `read` reads a text; what it gives must be what the plain text (lines ended by LF) gives.
inline void Expect_Habits_Do_Not_Matter(const std::string& text,
                                        const std::function<Status(std::string_view, Diffraction_Pattern_Type&)>& read) {
    Diffraction_Pattern_Type plain;
    const Status status = read(text, plain);
    ASSERT_TRUE(status.ok()) << status.message;
    std::string whole = text;
    if (whole.ends_with('\n')) whole.pop_back();
    const std::pair<const char*, std::string> habits[] = {{"CR LF", Replace_All(text, "\n", "\r\n")},
                                                          {"CR", Replace_All(text, "\n", "\r")},
                                                          {"trailing blanks", Replace_All(text, "\n", "   \n")},
                                                          {"no last line end", whole}};
    for (const auto& [habit, changed] : habits) {
        Diffraction_Pattern_Type pattern;
        const Status again = read(changed, pattern);
        ASSERT_TRUE(again.ok()) << habit << ": " << again.message;
        Expect_Same(pattern, plain, habit);
    }
}

}  // namespace vntl::test
