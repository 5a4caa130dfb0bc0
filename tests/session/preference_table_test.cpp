// The table of preferences: names, told defaults, places in the settings file, and values by text.
#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include "base/text.hpp"
#include "session/preference_table.hpp"
#include "session/testing.hpp"

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

std::vector<std::string> Words_Of(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

// "profile_styles/*/line_pitch" stands for that of each slot.
std::vector<std::string> Names_Of(const std::string& text) {
    std::vector<std::string> names;
    for (const std::string& word : Words_Of(text))
        for (int slot = 1; slot <= (word.find('*') == std::string::npos ? 1 : 12); ++slot)
            names.push_back(Replace_All(word, "*", std::to_string(slot)));
    return names;
}

// A line of the settings file: its values in their order, each with its descriptor.
struct Line {
    int number;
    std::string edits, names;
};

TEST(Preference_Table, LinesOfTheSettingsFile) {
    std::vector<Line> told = {
        {4, "i5 i5 i10 i10 l3", "win_width win_height colour_a colour_b keep_settings"},
        {6, "l3 l3", "always_save_context use_internal_editor"},
        {7, "a", "quendrix_dir"},
        {8, "a", "cmd_editor"},
        {9, "a", "cmd_browser"},
        {10, "a", "cmd_pdf"},
        {11, "a", "cmd_cif_viewer"},
        {12, "a", "cmd_ps_viewer"},
        {13, "a", "cmd_unzip"},
        {14, "a", "prg_refine"},
        {15, "a", "cmd_run"},
        {30, "a", "title_single"},
        {31, "a", "title_multi"},
        {32, "i10 i10 i10 l3", "frame_background frame_foreground excl_colour excl_show"},
        {33, "i10 i10 i10 i10 i10", "title_colour title_pos title_font title_style title_size"},
        {34, "i10 i10 i10 i10 i10", "xlabel_colour xlabel_pos xlabel_font xlabel_style xlabel_size"},
        {35, "i10 i10 i10 i10 i10", "ylabel_colour ylabel_pos ylabel_font ylabel_style ylabel_size"},
        {36, "i10 i10 i10 i10", "legend_pos legend_font legend_style legend_size"},
        {37, "i10 i10 i10 i10 i10", "xscale_colour xscale_format xscale_font xscale_style xscale_size"},
        {38, "i10 i10 i10 i10 i10", "yscale_colour yscale_format yscale_font yscale_style yscale_size"},
        {40, "i10 i10 i10 i10 i10", "ycalc_colour ycalc_style ycalc_pitch ycalc_marker ycalc_marker_size"},
        {41, "i10 i10 i10 i10 i10", "ydif_colour ydif_style ydif_pitch ydif_marker ydif_marker_size"},
        {42, "i10 i10 l3", "refl_colour refl_pitch refl_live"},
        {43, "i10 l3 l3 l3 l3", "excl_colour excl_show excl_ignore_sides excl_match hide_negative"},
        {45, "a", "contour_title"},
        {46, "i10 i10 i10 i10", "contour_background contour_foreground contour_min_colour contour_max_colour"},
        {47, "i10 i10 i10", "contour_type contour_levels contour_granularity"},
        {50, "a", "graph3d_title"},
        {51, "i10", "graph3d_background"},
        {53, "a", "surface_title"},
        {54, "i10 i10 i10 i10", "surface_background surface_lattice surface_min_colour surface_max_colour"},
        {55, "i10", "surface_type"},
        {57, "i10 i10", "qv_background qv_foreground"},
        {58, "l3", "qv_excl_match"},
        {59, "i10", "qv_excl_colour"},
    };
    Line palette{48, "", ""};
    for (int band = 1; band <= 20; ++band) palette.edits += "i10 ", palette.names += "contour_palette/" + std::to_string(band) + ' ';
    told.push_back(palette);
    for (int slot = 1; slot <= 12; ++slot)
        told.push_back({16 + slot, "i10 i10 i10 i10 i10 i10 l3",
                        Replace_All("@line_colour @line_style @line_pitch @marker_colour @marker_type @marker_size @match_colours", "@",
                                    "profile_styles/" + std::to_string(slot) + '/')});
    using Value = std::pair<std::string, std::string>;  // name and descriptor
    std::map<std::pair<int, int>, Value> expected;
    for (const Line& line : told) {
        const auto names = Words_Of(line.names), edits = Words_Of(line.edits);
        for (std::size_t i = 0; i < names.size(); ++i) expected[{line.number, static_cast<int>(i) + 1}] = {names[i], edits[i]};
    }
    std::map<std::pair<int, int>, Value> found;
    std::set<std::string> names, nowhere;
    for (const Preference& p : Preference_Table()) {
        EXPECT_TRUE(names.insert(p.name).second) << "twice: " << p.name;
        if (p.place.line == 0) nowhere.insert(p.name);
        for (const Settings_Place place : {p.place, p.second_place}) {
            if (place.line == 0) continue;
            const bool free = found.insert({{place.line, place.item}, {p.name, std::string(p.edit)}}).second;
            EXPECT_TRUE(free) << p.name << " stands where another one stands";
        }
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(nowhere, (std::set<std::string>{"legend_colour", "saturation_on", "saturation_value", "xscale_pos", "yscale_pos"}));
}

TEST(Preference_Table, DefaultsAreTheToldOnes) {
    const std::pair<Preference_Value, const char*> told[] = {
        {800, "win_width"},
        {500, "win_height"},
        {WRGB(130, 200, 130), "colour_a"},
        {WRGB(0, 0, 255), "colour_b ydif_colour"},
        {WRGB(255, 0, 0), "profile_styles/1/line_colour profile_styles/7/line_colour profile_styles/1/marker_colour"},
        {WRGB(0, 0, 255), "profile_styles/2/line_colour profile_styles/8/marker_colour"},
        {WRGB(255, 255, 0), "profile_styles/3/line_colour profile_styles/9/marker_colour"},
        {WRGB(0, 255, 0), "profile_styles/4/line_colour profile_styles/10/marker_colour"},
        {WRGB(255, 0, 255), "profile_styles/5/line_colour profile_styles/11/marker_colour"},
        {WRGB(0, 255, 255), "profile_styles/6/line_colour profile_styles/12/marker_colour"},
        {0, "profile_styles/*/line_style ycalc_style ydif_style xscale_format yscale_format"},
        {1, "profile_styles/*/line_pitch ycalc_pitch ydif_pitch refl_pitch"},
        {2, "profile_styles/*/marker_type ycalc_marker ydif_marker"},
        {5, "profile_styles/*/marker_size ycalc_marker_size ydif_marker_size"},
        {WRGB(150, 200, 150), "frame_background"},
        {WRGB(235, 235, 235), "frame_foreground"},
        {std::string(), "title_single"},
        {std::string("Plot multi file"), "title_multi"},
        {3, "title_pos xlabel_pos legend_pos"},
        {7, "ylabel_pos"},
        {1, "title_font xlabel_font ylabel_font legend_font xscale_font yscale_font"},
        {1, "title_style xlabel_style ylabel_style legend_style xscale_style yscale_style"},
        {20, "title_size"},
        {15, "xlabel_size ylabel_size"},
        {12, "xscale_size yscale_size"},
        {10, "legend_size"},
        {WRGB(128, 0, 64), "title_colour"},
        {WRGB(0, 64, 128), "xlabel_colour ylabel_colour"},
        {WRGB(0, 0, 0), "xscale_colour yscale_colour ycalc_colour"},
        {WRGB(0, 128, 0), "refl_colour"},
        {WRGB(192, 192, 192), "excl_colour"},
        {true, "keep_settings profile_styles/*/match_colours excl_show excl_match hide_negative"},
        {false, "refl_live excl_ignore_sides saturation_on"},
        {1e6f, "saturation_value"},
        {std::string("Plot 2D contour multi file"), "contour_title"},
        {WRGB(214, 214, 214), "contour_background"},
        {WRGB(255, 255, 202), "contour_foreground"},
        {WRGB(50, 50, 235), "contour_min_colour"},
        {WRGB(235, 50, 50), "contour_max_colour"},
        {1, "contour_type surface_type"},
        {20, "contour_levels"},
        {30, "contour_granularity"},
        {WRGB(0, 0, 0xBF), "contour_palette/1"},  // from blue
        {WRGB(0x1F, 0x83, 0xB8), "contour_palette/5"},
        {WRGB(0x03, 0xDE, 0xDE), "contour_palette/8"},
        {WRGB(0xDF, 0, 0), "contour_palette/20"},  // to red
        {std::string("Plot 3D multi file"), "graph3d_title"},
        {WRGB(220, 200, 253), "graph3d_background"},
        {std::string("Plot 3D surface multi file"), "surface_title"},
        {WRGB(193, 193, 132), "surface_background"},
        {WRGB(198, 255, 198), "surface_lattice"},
        {WRGB(128, 0, 0), "surface_min_colour"},
        {WRGB(255, 255, 0), "surface_max_colour"},
        {WRGB(164, 202, 246), "qv_background"},
        {WRGB(255, 255, 255), "qv_foreground"},
        {WRGB(192, 192, 192), "qv_excl_colour"},
        {true, "qv_excl_match use_internal_editor"},
        {false, "always_save_context"},
    };
    const Preferences prefs;
    for (const auto& [value, names] : told)
        for (const std::string& name : Names_Of(names)) {
            ASSERT_NE(Find_Preference(name), nullptr) << name;
            EXPECT_EQ(Value_Of(*Find_Preference(name), prefs), value) << name;
        }
}

TEST(Preference_Table, GoingBackToTheDefaultsLeavesTheWindowAndThePrograms) {
    Preferences prefs;
    for (const Preference& p : Preference_Table()) (void)Set_Preference(prefs, p.name, Other_Value(p));
    Set_Default_Preferences(prefs);
    const std::vector<std::string> kept_names = Words_Of(
        "win_width win_height colour_a colour_b keep_settings quendrix_dir cmd_editor cmd_browser cmd_pdf cmd_cif_viewer cmd_ps_viewer "
        "cmd_unzip prg_refine cmd_run");
    for (const Preference& p : Preference_Table()) {
        const bool kept = std::find(kept_names.begin(), kept_names.end(), p.name) != kept_names.end();
        EXPECT_EQ(Value_Of(p, prefs) == p.standard, !kept) << p.name;
    }
}

TEST(Preference_Table, WholeNumbersHaveTheirRanges) {
    struct Range_Row {
        int lo, hi;
        const char* names;
    };
    const Range_Row rows[] = {
        {1, 16384, "win_width win_height"},
        {-1, 4, "profile_styles/*/line_style"},  // -1 draws no line
        {0, 4, "ycalc_style ydif_style"},
        {1, 5, "profile_styles/*/line_pitch ycalc_pitch ydif_pitch refl_pitch"},
        {1, 8, "profile_styles/*/marker_type ycalc_marker ydif_marker"},
        {1, 4, "title_pos xlabel_pos legend_pos title_font xlabel_font ylabel_font legend_font xscale_font yscale_font"},
        {1, 10, "ylabel_pos"},
        {1, 9, "title_style xlabel_style ylabel_style legend_style xscale_style yscale_style"},
        {1, 5, "contour_type"},
        {1, 4, "surface_type"},
        {0, 1000, "contour_levels contour_granularity"},  // the map brings them into its ranges
        {1, 1000, "title_size legend_size xscale_size profile_styles/*/marker_size ycalc_marker_size ydif_marker_size"},
    };
    for (const auto& [lo, hi, names] : rows)
        for (const std::string& name : Names_Of(names)) {
            Preferences prefs;
            for (const int value : {lo, hi}) EXPECT_TRUE(Set_Preference(prefs, name, std::to_string(value)).ok()) << name << ' ' << value;
            for (const int value : {lo - 1, hi + 1})
                EXPECT_TRUE(Set_Preference(prefs, name, std::to_string(value)).failed) << name << ' ' << value;
        }
}

TEST(Preference_Table, TextsAreLinesOfUtf8) {
    const std::string accent = "\xC3\xA9";
    std::string fifty;
    for (int i = 0; i < 50; ++i) fifty += accent;
    Preferences prefs;
    EXPECT_TRUE(Set_Preference(prefs, "title_single", fifty).ok()) << "characters count, not bytes";
    EXPECT_TRUE(Set_Preference(prefs, "title_single", fifty + "e").failed);
    EXPECT_EQ(prefs.graph2d.title_single, fifty);
    EXPECT_TRUE(Set_Preference(prefs, "title_single", "\xE9").ok());
    EXPECT_EQ(prefs.graph2d.title_single, accent) << "Latin-1";
    for (const char* broken : {"a\nb", "a\rb", "a\tb"}) EXPECT_TRUE(Set_Preference(prefs, "title_single", broken).failed) << broken;
    EXPECT_TRUE(Set_Preference(prefs, "title_single", "").ok());
    EXPECT_EQ(prefs.graph2d.title_single, "");
}

TEST(Preference_Table, ColoursAndLogicalsHaveTwoForms) {
    Preferences prefs;
    for (const char* text : {"197121", "1,2,3", " 1, 2 ,3"}) {
        prefs.prf.refl_colour = 0;
        EXPECT_TRUE(Set_Preference(prefs, "refl_colour", text).ok()) << text;
        EXPECT_EQ(prefs.prf.refl_colour, 1u + 256u * 2 + 65536u * 3) << text;
    }
    for (const auto& [text, value] : {std::pair{"1", true}, {"0", false}, {"true", true}, {"false", false}}) {
        EXPECT_TRUE(Set_Preference(prefs, "refl_live", text).ok()) << text;
        EXPECT_EQ(prefs.prf.refl_live, value) << text;
    }
}

TEST(Preference_Table, OtherTextsAreRefusedAndChangeNothing) {
    const std::pair<const char*, const char*> refused[] = {
        {"title_font", "2.5"},
        {"title_font", "99999999999"},
        {"legend_pos", ""},
        {"refl_live", "yes"},
        {"saturation_value", "nan"},
        {"saturation_value", "1e39"},
        {"saturation_value", "much"},
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
