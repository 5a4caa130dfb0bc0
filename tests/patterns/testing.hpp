// What the tests of the readers share: real files of other projects, the habits of other writers, and comparisons.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "base/text.hpp"
#include "patterns/pattern.hpp"
#include "patterns/sample_files.hpp"
#include "real_path.hpp"

namespace vntl::test {

inline std::string Text_Of(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// A real file, empty where those files are not to be had; the test is then skipped.
inline std::string Real_File(const std::string& name) { return Text_Of(Real_Path(name)); }

using Reader = std::function<Status(std::string_view, Diffraction_Pattern_Type&)>;

// The pattern of a good text: nothing of another one is left, and all arrays have its length, but for those that no measurement fills.
inline Diffraction_Pattern_Type Good(const Reader& read, const std::string& text) {
    Diffraction_Pattern_Type p;
    p.title = "of another file";
    p.y.resize(3);
    const Status status = read(text, p);
    EXPECT_TRUE(status.ok()) << status.message;
    EXPECT_NE(p.title, "of another file");
    const auto points = static_cast<std::size_t>(p.npts);
    for (const std::size_t size : {p.x.size(), p.y.size(), p.sigma.size()}) EXPECT_EQ(size, points);
    for (const std::size_t size : {p.istat.size(), p.ycalc.size(), p.bgr.size(), p.nd.size()}) EXPECT_TRUE(size == points || size == 0);
    return p;
}

inline void Expect_Faults(const Reader& read, const std::vector<std::pair<std::string, std::string>>& faults) {
    for (const auto& [text, message] : faults) {
        Diffraction_Pattern_Type p;
        const Status status = read(text, p);
        EXPECT_TRUE(status.failed) << text.substr(0, 80);
        EXPECT_EQ(status.message, message) << text.substr(0, 80);
    }
}

inline void Expect_Same(const Diffraction_Pattern_Type& a, const Diffraction_Pattern_Type& b, const std::string& what) {
    const auto arrays = [](const auto& p) { return std::tuple(p.x, p.y, p.sigma, p.istat, p.nd, p.ycalc, p.bgr, p.conv); };
    const auto numbers = [](const auto& p) {
        return std::tuple(p.npts, p.xmin, p.xmax, p.step, p.ymin, p.ymax, p.TSample, p.TSetting, p.monitor, p.constant_step);
    };
    const auto texts = [](const auto& p) {
        return std::tuple(std::string(Trim_Right(p.title)), p.legend_x, p.legend_y, p.scat_var, p.radiation, p.instr);
    };
    EXPECT_EQ(numbers(a), numbers(b)) << what;
    EXPECT_EQ(texts(a), texts(b)) << what;
    EXPECT_EQ(arrays(a), arrays(b)) << what;
}

// The same file (lines ended by LF) as other programs and systems would have written it: a name and a text each.
inline std::vector<std::pair<std::string, std::string>> Habits(const std::string& text) {
    std::string open_end = text;
    while (open_end.ends_with('\n')) open_end.pop_back();
    return {{"CR LF", Replace_All(text, "\n", "\r\n")},
            {"CR", Replace_All(text, "\n", "\r")},
            {"trailing blanks", Replace_All(text, "\n", "   \n")},
            {"no last line end", open_end},
            {"Latin-1", Replace_All(text, "\xC3\xA4", "\xE4")}};
}

}  // namespace vntl::test
