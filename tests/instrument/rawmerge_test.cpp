// The command line for the program that merges runs: each rule by itself, and what has no room in its columns.
#include "instrument/rawmerge.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace vntl {
namespace {

std::string Line(const Rawmerge_Input& input) {
    std::string line = "as it was";
    EXPECT_FALSE(Rawmerge_Line(input, line));
    return line;
}

// Written by hand from the widths: I8 twice, F12.2, I4, F8.3.
TEST(Rawmerge, EachChoiceHasItsWords) {
    const Rawmerge_Input input{.instrument = "R3B", .data_directory = "/d x/", .first = 123456, .last = 123470};
    const std::string begin = "-ins R3B -dir /d x/ -num 123456  123470";
    EXPECT_EQ(Line(input), begin + " -nor 10000.00 -fmt 1");

    const struct {
        float monitor;
        const char* words;
    } monitors[] = {{0, ""}, {-5, ""}, {99, ""}, {99.01f, " -nor 99.01"}, {99.004f, " -nor 99.00"}, {999999936, " -nor 999999936.00"}};
    for (const auto& [monitor, words] : monitors) {
        Rawmerge_Input normalised = input;
        normalised.monitor = monitor;
        EXPECT_EQ(Line(normalised), begin + words + " -fmt 1") << monitor;
    }

    Rawmerge_Input adding = input;
    adding.monitor = 0;
    adding.block = 12;
    const std::pair<Rawmerge_Adding, const char*> modes[] = {
        {Rawmerge_Adding::blocks, " -add N   12"}, {Rawmerge_Adding::all, " -add "}, {Rawmerge_Adding::temperatures, " -add T    0.500"}};
    for (const auto& [mode, words] : modes) {
        adding.adding = mode;
        EXPECT_EQ(Line(adding), begin + " -fmt 1" + words);
    }

    Rawmerge_Input all{.instrument = "R5B", .data_directory = "/d", .first = 7, .last = 999999, .interval = 9999.999f};
    all.instrument_5 = all.prepends_code = all.appends_temperature = true;
    all.codefile = " co2 ", all.adding = Rawmerge_Adding::temperatures;
    EXPECT_EQ(Line(all), "-ins R5B -dir /d -num 7  999999 -nor 10000.00 -fmt 2 -cod co2 -lab T -add T 9999.999");
}

TEST(Rawmerge, WhatHasNoRoomOrIsMissingIsRefused) {
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    const Rawmerge_Input input{.instrument = "R3A", .data_directory = "/d", .codefile = "c", .block = 5};
    using I = Rawmerge_Item;
    using R = Rawmerge_Input;
    constexpr auto blocks = Rawmerge_Adding::blocks, temperatures = Rawmerge_Adding::temperatures;
    const std::pair<I, void (*)(R&)> faults[] = {
        {I::data_directory, [](R& x) { x.data_directory = "/a\nb"; }},
        {I::monitor, [](R& x) { x.monitor = 1e9f; }},
        {I::monitor, [](R& x) { x.monitor = none; }},
        {I::codefile, [](R& x) { x.prepends_code = true, x.codefile = "  "; }},
        {I::block, [](R& x) { x.adding = blocks, x.block = 0; }},
        {I::block, [](R& x) { x.adding = blocks, x.block = 10000; }},
        {I::interval, [](R& x) { x.adding = temperatures, x.interval = 10000; }},
        {I::interval, [](R& x) { x.adding = temperatures, x.interval = none; }},
    };
    for (const auto& [item, spoil] : faults) {
        Rawmerge_Input spoilt = input;
        spoil(spoilt);
        std::string line = "as it was";
        const auto fault = Rawmerge_Line(spoilt, line);
        ASSERT_TRUE(fault) << line;
        EXPECT_TRUE(fault->item == item && line == "as it was") << line;
    }
    // What is not asked for is not looked at.
    Rawmerge_Input unused = input;
    unused.block = 0;
    unused.interval = none;
    EXPECT_EQ(Line(unused), "-ins R3A -dir /d -num 0       0 -nor 10000.00 -fmt 1");
}

}  // namespace
}  // namespace vntl
