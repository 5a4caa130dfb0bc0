// The table of preferences: names, told defaults, places in the settings file, and values by text.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "session/preference_table.hpp"

namespace vntl {
namespace {

// A value as `pref` takes it.
std::string Text_Of(const Preference_Value& value) {
    return std::visit(
        [](const auto& v) {
            if constexpr (std::is_same_v<std::decay_t<decltype(v)>, std::string>)
                return v;
            else
                return std::to_string(v);
        },
        value);
}

// Another value that the preference takes.
std::string Other_Value(const Preference& p) {
    if (const bool* flag = std::get_if<bool>(&p.standard)) return *flag ? "0" : "1";
    if (const int* number = std::get_if<int>(&p.standard)) return std::to_string(*number == p.lo ? p.hi : p.lo);
    return std::holds_alternative<Colour>(p.standard) ? "1,2,3" : "another text";
}

TEST(Preference_Table, EveryRowSetsItsOwnValueAndNoOther) {
    for (const Preference& p : Preference_Table()) {
        SCOPED_TRACE(p.name);
        Preferences prefs;
        if (p.lo == p.hi && std::holds_alternative<int>(p.standard)) continue;  // a scale has no place to choose
        ASSERT_TRUE(Set_Preference(prefs, p.name, Other_Value(p)).ok());
        for (const Preference& q : Preference_Table()) EXPECT_EQ(Value_Of(q, prefs) == q.standard, &p != &q) << q.name;
        ASSERT_TRUE(Set_Preference(prefs, p.name, Text_Of(p.standard)).ok());
        EXPECT_EQ(Value_Of(p, prefs), p.standard);
    }
}

// The settings file has 59 lines; a value that it holds has one place of its own, and the values of a line count from 1 without a gap.
TEST(Preference_Table, PlacesFillTheirLines) {
    std::map<int, std::set<int>> lines;
    std::set<std::string> names, in_two_places;
    for (const Preference& p : Preference_Table()) {
        EXPECT_TRUE(names.insert(p.name).second) << p.name;
        if (p.second_place.line != 0) in_two_places.insert(p.name);
        for (const Settings_Place place : {p.place, p.second_place}) {
            const bool free = place.line == 0 || lines[place.line].insert(place.item).second;
            EXPECT_TRUE(free) << p.name;
        }
    }
    EXPECT_EQ(in_two_places, (std::set<std::string>{"excl_colour", "excl_show"}));
    const std::map<int, std::size_t> told = {{4, 5},  {17, 7}, {28, 7}, {30, 1}, {31, 1}, {32, 4}, {33, 5}, {34, 5},
                                             {35, 5}, {36, 4}, {37, 5}, {38, 5}, {40, 5}, {41, 5}, {42, 3}, {43, 5}};
    for (const auto& [line, values] : told) EXPECT_EQ(lines[line].size(), values) << line;
    for (const auto& [line, items] : lines) {
        EXPECT_TRUE(line >= 1 && line <= 59);
        EXPECT_EQ(*items.rbegin(), static_cast<int>(items.size())) << line;
    }
}

TEST(Preference_Table, DefaultsAreTheToldOnes) {
    const std::map<std::string, Preference_Value> told = {
        {"win_width", 800},
        {"win_height", 500},
        {"colour_a", WRGB(130, 200, 130)},
        {"keep_settings", true},
        {"profile_styles/1/line_colour", WRGB(255, 0, 0)},
        {"profile_styles/3/marker_colour", WRGB(255, 255, 0)},
        {"profile_styles/12/line_colour", WRGB(0, 255, 255)},
        {"profile_styles/7/line_style", 0},
        {"profile_styles/7/line_pitch", 1},
        {"profile_styles/7/marker_type", 2},
        {"profile_styles/7/marker_size", 5},
        {"frame_background", WRGB(150, 200, 150)},
        {"title_single", std::string()},
        {"title_multi", std::string("Plot multi file")},
        {"title_pos", 3},
        {"title_colour", WRGB(128, 0, 64)},
        {"title_size", 20},
        {"ylabel_pos", 7},
        {"xlabel_size", 15},
        {"legend_size", 10},
        {"yscale_size", 12},
        {"ycalc_marker", 2},
        {"ydif_colour", WRGB(0, 0, 255)},
        {"refl_colour", WRGB(0, 128, 0)},
        {"refl_live", false},
        {"excl_show", true},
        {"excl_colour", WRGB(192, 192, 192)},
        {"excl_ignore_sides", false},
        {"hide_negative", true},
    };
    const Preferences prefs;
    for (const auto& [name, value] : told) {
        ASSERT_NE(Find_Preference(name), nullptr) << name;
        EXPECT_EQ(Value_Of(*Find_Preference(name), prefs), value) << name;
    }
}

TEST(Preference_Table, OtherTextsAreRefusedAndChangeNothing) {
    const std::pair<const char*, const char*> refused[] = {
        {"win_width", "0"},
        {"win_width", "16385"},
        {"title_font", "5"},
        {"title_font", "2.5"},
        {"legend_pos", ""},
        {"refl_live", "yes"},
        {"colour_a", "-1"},
        {"colour_a", "16777216"},
        {"colour_a", "1,2"},
        {"colour_a", "1,2,256"},
        {"colour_a", "1,2,3,4"},
        {"profile_styles/0/line_style", "1"},
        {"profile_styles/13/line_style", "1"},
        {"title_multi", "fifty-one characters are one more than there is room"},
    };
    for (const auto& [name, text] : refused) {
        Preferences prefs;
        const Status status = Set_Preference(prefs, name, text);
        EXPECT_TRUE(status.failed) << name << ' ' << text;
        EXPECT_NE(status.message.find(name), std::string::npos) << status.message;
        for (const Preference& p : Preference_Table()) EXPECT_EQ(Value_Of(p, prefs), p.standard) << p.name;
    }
}

}  // namespace
}  // namespace vntl
