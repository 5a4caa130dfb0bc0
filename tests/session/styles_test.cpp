// Styles of pictures: their colours as all readers see them, their files, and the way into a style and back.
#include "session/desk/styles.hpp"

#include "base/colour_map.hpp"
#include "base/contrast.hpp"
#include "base/text.hpp"
#include "colour_difference.hpp"
#include "session/desk/own_settings.hpp"
#include "session/desk/row_styles.hpp"
#include "session/preference_table.hpp"
#include "session/session.hpp"
#include "session/settings_file.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

struct Styled {
    Preferences prefs;
    Look look;
};

Styled In_Style(std::string_view name) {
    Styled styled;
    EXPECT_EQ(Load_Style(name, styled.prefs, styled.look).message, "");
    return styled;
}

void Expect_Same(const Preferences& a, const Preferences& b) {
    for (const Preference& p : Preference_Table()) EXPECT_EQ(Value_Of(p, a), Value_Of(p, b)) << p.name;
}

class Styles : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(All, Styles, testing::Values("Paper", "Screen", "Dark"));

// CIEDE2000 from 10 on is told at a glance; 12 curves of a plot are more than most plots have.
TEST_P(Styles, CurvesAreToldApartByAllReaders) {
    const Preferences prefs = In_Style(GetParam()).prefs;
    const auto& slots = prefs.profile_styles;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        EXPECT_GE(Contrast(slots[i].line_colour, prefs.graph2d.frame_foreground), 3) << i;
        EXPECT_EQ(slots[i].line_colour, slots[i].marker_colour);
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_GT(test::Difference_For_All(slots[i].line_colour, slots[j].line_colour), i < 8 ? 12 : 10) << i << ' ' << j;
    }
    const Colour refined[] = {slots[0].line_colour, prefs.prf.ycalc_colour, prefs.prf.ydif_colour, prefs.prf.refl_colour};
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < i; ++j) EXPECT_GT(test::Difference_For_All(refined[i], refined[j]), 12) << "refinement " << i << ' ' << j;
    for (int band = 1; band < contour_colours; ++band) {
        const auto at = static_cast<std::size_t>(band);
        EXPECT_GT(test::Lab(prefs.contour.contour_palette[at])[0], test::Lab(prefs.contour.contour_palette[at - 1])[0] + 2) << band;
    }
}

TEST_P(Styles, TextsCanBeReadAndTheFileComesBack) {
    const auto [prefs, look] = In_Style(GetParam());
    for (const Text_Prefs& text :
         {prefs.graph2d.title, prefs.graph2d.xlabel, prefs.graph2d.ylabel, prefs.graph2d.xscale, prefs.graph2d.yscale})
        EXPECT_GE(Contrast(text.colour, prefs.graph2d.frame_background), 7);
    EXPECT_GE(Contrast(prefs.window.colour_b, prefs.window.colour_a), 4.5);
    EXPECT_GE(Contrast(look.ink, prefs.graph2d.frame_background), 4.5);
    EXPECT_TRUE(Is_Colour_Map(look.series_map));
    EXPECT_EQ(look.least_marker_gap, 4);
    EXPECT_TRUE(look.fitted_margins && look.minor_ticks && look.superscripts && look.count_ticks && look.pinned_difference);
    Preferences read;
    Look read_look;
    ASSERT_TRUE(Read_Settings_Text(read, Settings_Text(prefs, {}, look), &read_look).ok());
    Expect_Same(read, prefs);
    EXPECT_EQ(read_look, look);
}

TEST(Look_Lines, WhatIsNoValueKeepsTheOneBefore) {
    Look look = In_Style("Paper").look;
    look.least_contrast = 3.25f;
    const Look before = look;
    for (const char* line : {"", "ink", "ink -1", "ink 1,2", "least_contrast 22", "least_contrast nan", "frame_width -1", "minor_ticks 2",
                             "series_map rainbow", "Minor_ticks F", "minor_ticksF", "no_name 1", "<-- heading -->"})
        Read_Look_Text(look, line);
    EXPECT_EQ(look, before);
    Read_Look_Text(look, "minor_ticks T\r\n ink  1,2,3 \r\nseries_map\r\nminor_ticks F");
    EXPECT_EQ(look.ink, WRGB(1, 2, 3));
    EXPECT_EQ(look.series_map, "");
    EXPECT_FALSE(look.minor_ticks);
    Look again;
    Read_Look_Text(again, Look_Text(before));
    EXPECT_EQ(again, before);
    EXPECT_EQ(Look_Text(Look()), "") << "settings of a program without styles have their told lines alone";
}

// The user's own preferences, none of them a default.
void Make_Unusual(Session& session) {
    for (const Preference& p : Preference_Table()) (void)Set_Preference(session.prefs, p.name, Other_Value(p));
    session.look.frame_width = 7;
}

TEST(Choose_Style, DefaultBringsBackTheUsersOwn) {
    Session session;
    Make_Unusual(session);
    const Preferences own = session.prefs;
    const Look own_look = session.look;
    for (const char* name : {"paper", "DARK", "Screen", "dark"}) {
        ASSERT_TRUE(Choose_Style(session, name).ok());
        const Styled style = In_Style(name);
        EXPECT_EQ(session.look, style.look) << name;
        EXPECT_EQ(session.prefs.graph2d.frame_background, style.prefs.graph2d.frame_background) << name;
        EXPECT_EQ(session.prefs.profile_styles[11].marker_type, style.prefs.profile_styles[11].marker_type) << name;
        EXPECT_EQ(session.prefs.quick_view.qv_background, style.prefs.quick_view.qv_background) << name;
        EXPECT_EQ(session.prefs.graph2d.title_multi, "another text") << "what is shown is the user's";
        EXPECT_EQ(session.prefs.prf.excl_ignore_sides, own.prf.excl_ignore_sides);
        EXPECT_EQ(session.prefs.window.win_width, own.window.win_width);
        EXPECT_EQ(session.prefs.environment.cmd_editor, own.environment.cmd_editor);
        session.prefs.graph2d.frame_foreground = 77;  // goes with the style
    }
    EXPECT_EQ(session.style.name, "Dark");
    EXPECT_EQ(session.desk.style, "Dark");
    EXPECT_TRUE(session.interface.Checked(command::style_dark));
    EXPECT_FALSE(session.interface.Checked(command::style_default));
    Preferences shown;
    Look shown_look;
    ASSERT_TRUE(Style_Of_Session(session, "default", shown, shown_look).ok());
    Expect_Same(shown, own);
    EXPECT_EQ(Settings_On_White(session).graph2d.title.colour, own.graph2d.title.colour) << "light texts are for dark pages";
    ASSERT_TRUE(Choose_Style(session, "default").ok());
    Expect_Same(session.prefs, own);
    EXPECT_EQ(session.look, own_look);
    EXPECT_TRUE(session.interface.Checked(command::style_default));
}

TEST(Choose_Style, WhatIsSavedOrLoadedIsTheUsersOwn) {
    Session session;
    ASSERT_TRUE(Choose_Style(session, "Dark").ok());
    session.prefs.graph2d.frame_foreground = 77;
    Settings_Saved(session);
    ASSERT_TRUE(Choose_Style(session, "Paper").ok());
    ASSERT_TRUE(Choose_Style(session, "Default").ok());
    Preferences expected;
    expected.graph2d.frame_foreground = 77;
    Expect_Same(session.prefs, expected);
    EXPECT_EQ(session.look, Look()) << "what the style brought goes with it";
    ASSERT_TRUE(Choose_Style(session, "Paper").ok());
    ASSERT_TRUE(Read_Settings_Text(session.prefs, Settings_Text(Preferences(), {}), &session.look).ok());
    Take_Settings(session);
    EXPECT_EQ(session.style.name, "Default");
    EXPECT_EQ(session.desk.style, "Default");
    EXPECT_EQ(session.look, Look());
    ASSERT_TRUE(Choose_Style(session, "Default").ok());
    Expect_Same(session.prefs, Preferences());
}

TEST(Choose_Style, FilesOfTheUser) {
    const Test_Directory directory;
    const Styled paper = In_Style("Paper");
    std::string text = Settings_Text(paper.prefs, {}, paper.look);
    const std::string good = directory.Write("mine.set", text), told = directory.Write("told.SET", Settings_Text(paper.prefs, {}));
    const std::string cut = directory.Write("cut.set", text.substr(0, text.find("<-- Graph 3D Surface"))),
                      none = directory.Write("none.set", "x");
    Session session;
    Make_Unusual(session);
    ASSERT_TRUE(Choose_Style(session, "Dark").ok());
    const Preferences before = session.prefs;
    const Look look = session.look;
    for (const std::string& bad : {cut, none, directory.Make("folder.set"), directory.path + "/missing.set", std::string("Pap"),
                                   std::string(), directory.Write("paper.txt", text)}) {
        const Status status = Choose_Style(session, bad);
        EXPECT_TRUE(status.failed) << bad;
        EXPECT_TRUE(Contains(status.message, bad)) << status.message;
        Expect_Same(session.prefs, before);
        EXPECT_EQ(session.look, look);
        EXPECT_EQ(session.style.name, "Dark");
    }
    ASSERT_TRUE(Choose_Style(session, good).ok());
    EXPECT_EQ(session.style.name, good);
    EXPECT_EQ(session.look, paper.look);
    EXPECT_FALSE(session.interface.Checked(command::style_dark));
    ASSERT_TRUE(Choose_Style(session, told).ok());
    EXPECT_EQ(session.look, Look()) << "without a line of the look";
}

// --- colours along a series ----------------------------------------------------------------------------------------------------------

struct Series : testing::Test {
    Series() {
        for (int row = 0; row < 15; ++row) {
            Fresh_Pattern fresh;
            fresh.pattern = Tiny_Pattern();
            (void)Load_Row(session, ask, "row" + std::to_string(row), "XYSIGMA", std::move(fresh));
        }
        for (int row = 0; row < 15; ++row) session.store.Pattern(row + 1).TSample = static_cast<float>(2000 - 10 * row * row);
    }
    Row_Styles Styles(bool by_temperature) const { return {session.store, styled.prefs, styled.look, by_temperature}; }
    void Hide(int row) { session.store.profile_shown[static_cast<std::size_t>(row - 1)] = false; }

    Session session;
    Scripted_Ask ask;
    const Styled styled = In_Style("Paper");
};

TEST_F(Series, ColoursRunAlongTheShownRows) {
    ASSERT_EQ(session.store.nperfiles(), 15);
    Hide(1), Hide(8);
    const Row_Styles styles = Styles(false);
    ASSERT_TRUE(styles.Is_Series());
    EXPECT_EQ(styles.First(), 2);
    EXPECT_EQ(styles.Last(), 15);
    EXPECT_EQ(styles.Of(2).line_colour, Map_Colour("ember", 0));
    EXPECT_EQ(styles.Of(9).line_colour, Map_Colour("ember", 0.5)) << "the seventh of thirteen";
    EXPECT_EQ(styles.Of(15).marker_colour, Map_Colour("ember", 1));
    EXPECT_EQ(styles.Of(15).line_style, 0);
    Hide(9);
    EXPECT_FALSE(Styles(false).Is_Series()) << "twelve rows have slots of their own";
    EXPECT_EQ(Styles(false).Of(14).line_colour, styled.prefs.profile_styles[1].line_colour);
}

TEST_F(Series, OrAlongTheirTemperatures) {
    const Row_Styles styles = Styles(true);
    ASSERT_TRUE(styles.By_Temperature());
    EXPECT_EQ(styles.First(), 40);
    EXPECT_EQ(styles.Last(), 2000);
    EXPECT_EQ(styles.Of(15).line_colour, Map_Colour("ember", 0)) << "the coldest";
    EXPECT_EQ(styles.Of(8).line_colour, Map_Colour("ember", 0.75)) << "2000 - 490 of 40 to 2000";
    session.store.Pattern(3).TSample = 0;
    EXPECT_TRUE(Styles(true).Is_Series());
    EXPECT_FALSE(Styles(true).By_Temperature()) << "one that is not known";
    EXPECT_EQ(Styles(true).First(), 1);
    Hide(3);
    EXPECT_TRUE(Styles(true).By_Temperature()) << "which is not shown";
}

}  // namespace
}  // namespace vntl
