// What is done in the list of patterns, and back again.
#include "session/desk/pattern_list.hpp"

#include <functional>

#include "session/arrange_rows.hpp"
#include "session/changes.hpp"
#include "session/ranges.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

// Rows a, b, c, ...; the second is hidden, the third has its calculated curve shown.
void Fill(Session& s, int rows) {
    for (int row = 1; row <= rows; ++row) {
        PRF_Info_Add_Type info;
        info.file_name = std::string(1, static_cast<char>('a' + row - 1));
        info.kind = Row_Kind::data;
        s.store.Append(Tiny_Pattern(5, static_cast<float>(row)), std::move(info));
    }
    if (rows > 1) s.store.profile_shown.reset(1);
    if (rows > 2) s.store.show_ycalc_of.set(2);
    Set_Xspace(s, "2theta");
    Plot_Ranges(s);
}

// The names in order: "-" before a hidden row, "+" behind one with its calculated curve, "*" behind a chosen one.
std::string Look(const Session& s) {
    std::string look;
    for (int row = 1; row <= s.store.nperfiles(); ++row) {
        look += (s.store.shown(row) ? "" : "-") + Row_Name(s.store, row);
        look += s.store.show_ycalc_of[static_cast<std::size_t>(row - 1)] ? "+" : "";
        look += s.store.is_chosen(row) ? "* " : " ";
    }
    return look;
}

struct Act {
    const char *name, *behind;  // the look behind it; blank: nothing changes, and nothing is recorded
    std::function<bool(Session&)> act;
    const char* label = "";  // of the menu behind "Undo "
};

TEST(Pattern_List, ActsGoBackAndComeAgain) {
    const std::string before = "a -b* c+ d* e ";
    const Act acts[] = {
        {"hide", "-a -b* -c+ d* e ",
         [](Session& s) {
             return Tick_Rows(s, {1, 2, 3}, false);
         },
         "hiding of 2 profiles"},
        {"show", "a b* c+ d* e ",
         [](Session& s) {
             return Tick_Rows(s, {2, 4}, true);
         },
         "showing of b"},
        {"show what is shown", "",
         [](Session& s) {
             return Tick_Rows(s, {1, 3}, true);
         }},
        {"rows that are none", "",
         [](Session& s) {
             return Tick_Rows(s, {0, 6, -4, 99999}, false);
         }},
        {"alone", "-a b* -c+ -d* -e ", [](Session& s) { return Show_Alone(s, {2}); }, "showing of b alone"},
        {"nobody alone", "", [](Session& s) { return Show_Alone(s, {}); }},
        {"to the front", "-b* d* a c+ e ",
         [](Session& s) {
             return Place_Rows(s, {4, 2}, 1);
         },
         "moving of 2 profiles"},
        {"to the end", "-b* d* e a c+ ",
         [](Session& s) {
             return Place_Rows(s, {1, 3}, 6);
         },
         "moving of 2 profiles"},
        {"among themselves", "a c+ -b* d* e ",
         [](Session& s) {
             return Place_Rows(s, {2, 4}, 4);
         },
         "moving of 2 profiles"},
        {"to where it is", "", [](Session& s) { return Place_Rows(s, {3}, 4); }},
        {"before no row", "", [](Session& s) { return Place_Rows(s, {3}, 7); }},
        {"a place up", "-b* a d* c+ e ", [](Session& s) { return Step_Chosen(s, false); }, "moving of 2 profiles"},
        {"a place down", "a c+ -b* e d* ", [](Session& s) { return Step_Chosen(s, true); }, "moving of 2 profiles"},
        {"name", "a -first try* c+ d* e ", [](Session& s) { return Rename_Row(s, 2, "  first\ntry "); }, "renaming of b"},
        {"name of the file", "", [](Session& s) { return Rename_Row(s, 3, "c"); }},
        {"blank", "", [](Session& s) { return Rename_Row(s, 3, " "); }},
        {"deletion", "-b* d* ",
         [](Session& s) {
             return Delete_Rows(s, {1, 3, 5}), true;
         },
         "deletion of 3 profiles"},
        {"all deleted", " ", [](Session& s) { return Delete_Rows(s, All_Rows(s)), true; }, "deletion of 5 profiles"},
    };
    for (const Act& act : acts) {
        SCOPED_TRACE(act.name);
        Session s;
        Fill(s, 5);
        Choose_Rows(s, {2, 4, 9});
        s.plot.pointed_row = 5;
        ASSERT_EQ(Look(s), before);
        const bool changes = *act.behind != 0;
        EXPECT_EQ(act.act(s), changes);
        EXPECT_EQ(s.store.changes.Text_To_Undo(), act.label);
        const std::string behind = changes ? std::string(act.behind == std::string(" ") ? "" : act.behind) : before;
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(Look(s), behind);
            if (s.store.nperfiles() == 0) Plot_Ranges(s);  // as the plot that is made anew
            const Status status = Check_Invariants(s);
            EXPECT_TRUE(status.ok()) << status.message;
            if (!changes) break;
            EXPECT_TRUE(Undo_Change(s));
            EXPECT_EQ(Look(s), before);
            EXPECT_TRUE(Redo_Change(s));
        }
    }
}

// A sorting leaves the told flags at their places and takes the chosen rows along.
TEST(Pattern_List, SortingTakesChosenRowsAlong) {
    Session s;
    Fill(s, 4);
    Choose_Rows(s, {1, 3});
    Sort_Rows(s, {3, 4, 1, 2});
    EXPECT_EQ(Look(s), "c* -d a+* b ");
    EXPECT_TRUE(Undo_Change(s));
    EXPECT_EQ(Look(s), "a* -b c+* d ");
}

TEST(Pattern_List, NamesAreShortLinesAndStayWithTheirRows) {
    Session s;
    Fill(s, 2);
    EXPECT_TRUE(Rename_Row(s, 1, std::string(5000, 'x')));
    EXPECT_EQ(Row_Name(s.store, 1), std::string(longest_name, 'x'));
    EXPECT_TRUE(Copy_First_Row(s).ok());  // is no second row of that name
    EXPECT_EQ(Row_Name(s.store, 3), "<copy>");
    EXPECT_TRUE(Rename_Row(s, 1, ""));
    EXPECT_EQ(Row_Name(s.store, 1), "a");
    s.store.Pattern(2).bank = 7;
    EXPECT_EQ(Row_Name(s.store, 2), "b (bank 7)");
    EXPECT_FALSE(Rename_Row(s, 2, "b (bank 7)"));
}

// A tick or a name leaves a running calculation, and the view, as they are.
TEST(Pattern_List, LooksChangeNoView) {
    Session s;
    Fill(s, 3);
    s.plot.Show({11, 12, 3, 4});
    Set_Calculation_Mode(s, Click_Mode::background);
    EXPECT_TRUE(Tick_Rows(s, {3}, false) && Rename_Row(s, 1, "z"));
    EXPECT_TRUE(Undo_Change(s) && Undo_Change(s) && Redo_Change(s));
    EXPECT_EQ(s.plot.plot_type, Plot_Form::calculation);
    EXPECT_EQ(s.plot.Shown_View().x2, 12);
    EXPECT_EQ(Look(s), "a -b -c+ ");
}

}  // namespace
}  // namespace vntl
