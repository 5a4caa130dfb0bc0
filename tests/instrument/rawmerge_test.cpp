// The command line for the program that merges runs: each rule by itself, and what has no room in its columns.
#include "instrument/rawmerge.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace vntl {
namespace {

// Written by hand from the widths: I8 twice, F12.2, I4, F8.3.
TEST(Rawmerge, EachChoiceHasItsWordsOrIsRefused) {
    using R = Rawmerge_Input;
    using I = Rawmerge_Item;
    constexpr auto blocks = Rawmerge_Adding::blocks, temperatures = Rawmerge_Adding::temperatures;
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    const struct {
        void (*change)(R&);
        const char* words;
        std::optional<I> refused = {};
    } cases[] = {
        {[](R&) {}, " -nor 10000.00 -fmt 1"},
        {[](R& x) { x.monitor = 0; }, " -fmt 1"},
        {[](R& x) { x.monitor = -5; }, " -fmt 1"},
        {[](R& x) { x.monitor = 99; }, " -fmt 1"},
        {[](R& x) { x.monitor = 99.01f; }, " -nor 99.01 -fmt 1"},
        {[](R& x) { x.monitor = 999999936; }, " -nor 999999936.00 -fmt 1"},
        {[](R& x) { x.monitor = 0, x.adding = blocks, x.block = 12; }, " -fmt 1 -add N   12"},
        {[](R& x) { x.monitor = 0, x.adding = Rawmerge_Adding::all; }, " -fmt 1 -add "},
        {[](R& x) { x.monitor = 0, x.adding = temperatures; }, " -fmt 1 -add T    0.500"},
        {[](R& x) { x.instrument_5 = x.prepends_code = x.appends_temperature = true, x.codefile = " co2 "; },
         " -nor 10000.00 -fmt 2 -cod co2 -lab T"},
        {[](R& x) { x.adding = temperatures, x.interval = 9999.999f; }, " -nor 10000.00 -fmt 1 -add T 9999.999"},
        {[](R& x) { x.block = 0, x.interval = none; }, " -nor 10000.00 -fmt 1"},  // what is not asked for is not looked at
        {[](R& x) { x.data_directory = "/a\nb"; }, "", I::data_directory},
        {[](R& x) { x.monitor = 1e9f; }, "", I::monitor},
        {[](R& x) { x.monitor = none; }, "", I::monitor},
        {[](R& x) { x.prepends_code = true, x.codefile = "  "; }, "", I::codefile},
        {[](R& x) { x.adding = blocks, x.block = 0; }, "", I::block},
        {[](R& x) { x.adding = blocks, x.block = 10000; }, "", I::block},
        {[](R& x) { x.adding = temperatures, x.interval = 10000; }, "", I::interval},
        {[](R& x) { x.adding = temperatures, x.interval = none; }, "", I::interval},
    };
    for (const auto& [change, words, refused] : cases) {
        R input{.instrument = "R3B", .data_directory = "/d x/", .first = 7, .last = 123470};
        change(input);
        std::string line = "as it was";
        const auto fault = Rawmerge_Line(input, line);
        EXPECT_EQ(line, refused ? "as it was" : std::string("-ins R3B -dir /d x/ -num 7  123470") + words);
        EXPECT_TRUE(fault ? fault->item == refused : !refused) << words;
    }
}

}  // namespace
}  // namespace vntl
