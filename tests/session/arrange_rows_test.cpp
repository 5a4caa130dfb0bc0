// Rows deleted, copied, sorted, set apart and normalized: what is there behind each.
#include "session/arrange_rows.hpp"

#include <algorithm>
#include <functional>
#include <random>

#include "session/changes.hpp"
#include "session/move_rows.hpp"
#include "session/ranges.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

// Rows "f1", "f2", ...: three points from x = 10, y = 10, 20, 30 times the row, monitors of a thousand times the row.
void Fill(Session& s, int rows) {
    for (int row = 1; row <= rows; ++row) {
        Diffraction_Pattern_Type p = Tiny_Pattern(3);
        const auto factor = static_cast<float>(row);
        p.y = {10 * factor, 20 * factor, 30 * factor};
        p.title = "t" + std::to_string(row);
        p.monitor = 1000 * factor;
        Set_Y_Limits(p);
        PRF_Info_Add_Type info;
        info.file_name = "f" + std::to_string(row);
        info.kind = Row_Kind::data;
        Add_Excluded_Region(info, 11, 12);
        s.store.Append(std::move(p), std::move(info));
    }
    s.plot.xspace = X_Space::two_theta;
    s.store.profiles_uniform = rows > 1;
    Plot_Ranges(s);
}

std::string Names(const Session& s) {
    std::string names;
    for (int row = 1; row <= s.store.nperfiles(); ++row) names += s.store.Info(row).file_name + ' ';
    return names;
}

// The order by passes of exchanges of neighbours, as many passes as rows.
template <class Key, class After>
std::vector<int> By_Exchange(std::vector<Key> keys, After after) {
    std::vector<int> order(keys.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int>(i) + 1;
    for (std::size_t pass = 0; pass < keys.size(); ++pass)
        for (std::size_t i = 0; i + 1 < keys.size(); ++i)
            if (after(keys[i], keys[i + 1])) std::swap(keys[i], keys[i + 1]), std::swap(order[i], order[i + 1]);
    return order;
}

TEST(Arrange_Rows, TheOrderIsThatOfExchangedNeighbours) {
    std::mt19937 random(3);
    for (int rows = 0; rows <= 60; ++rows) {
        std::vector<float> keys;  // many of them equal
        std::vector<std::string> texts;
        for (int i = 0; i < rows; ++i) {
            keys.push_back(static_cast<float>(random() % 12) - 4);
            texts.push_back(std::string(1, static_cast<char>('a' + random() % 3)));
        }
        EXPECT_EQ(Order_Of(keys, false), By_Exchange(keys, std::greater<>())) << rows;
        EXPECT_EQ(Order_Of(keys, true), By_Exchange(keys, std::less<>())) << rows;
        EXPECT_EQ(Order_Of(texts, false), By_Exchange(texts, std::greater<>())) << rows;
        EXPECT_EQ(Order_Of(texts, true), By_Exchange(texts, std::less<>())) << rows;
    }
    EXPECT_EQ(Order_Of({"run10", "Run9", "run9", "run1"}, false), (std::vector{4, 2, 3, 1}));
}

TEST(Arrange_Rows, SortingMovesRowsAndLeavesFlagsAtTheirPlaces) {
    Session s;
    Fill(s, 4);
    s.store.Info(4).kind = Row_Kind::prf;
    s.store.Pattern(4).scat_var = "TOF";
    Plot_Ranges(s);
    s.store.profile_shown[1] = false;
    s.store.show_ycalc_of[2] = true;
    s.plot.Show({11, 12, 5, 6});
    s.plot.row_move.rows = {1, 3};
    Sort_Rows(s, {4, 1, 3, 2});
    EXPECT_EQ(Names(s), "f4 f1 f3 f2 ");
    EXPECT_EQ(s.store.Pattern(2).title, "t1");
    EXPECT_EQ(s.store.ProfilePRFactive, 1);
    EXPECT_TRUE(s.store.prf_loaded && s.store.mixed_scat_var);
    EXPECT_FALSE(s.interface.Enabled(command::to_two_theta));
    EXPECT_FALSE(s.store.shown(2));
    EXPECT_TRUE(s.store.shown(1) && s.store.show_ycalc_of[2]);
    EXPECT_EQ(s.plot.Shown_View(), (View{11, 12, 5, 6}));
    EXPECT_TRUE(s.plot.row_move.rows.empty());
    Sort_Rows(s, {1, 2, 3, 4});  // no change
    ASSERT_TRUE(Undo_Change(s));
    EXPECT_EQ(Names(s), "f1 f2 f3 f4 ");
    EXPECT_EQ(s.store.ProfilePRFactive, 4);
    EXPECT_FALSE(Undo_Change(s));
}

TEST(Arrange_Rows, DeletionLeavesTheOtherRowsAndOfAllOfThemNothing) {
    struct Case {
        std::vector<int> rows;
        const char* left;
        Plot_Form form;
    };
    for (const Case& c : {Case{{2, 4}, "f1 f3 f5 ", Plot_Form::multi}, Case{{1, 2, 3, 5}, "f4 ", Plot_Form::single},
                          Case{{}, "f1 f2 f3 f4 f5 ", Plot_Form::multi}, Case{{1, 2, 3, 4, 5}, "", Plot_Form::none}}) {
        Session s;
        Fill(s, 5);
        s.shift = {1, 2};
        s.lists.peaks = {{1, 2, 3}};
        Delete_Rows(s, c.rows);
        Plot_Ranges(s);
        EXPECT_EQ(Names(s), c.left);
        EXPECT_EQ(s.plot.plot_type, c.form);
        EXPECT_EQ(s.store.profiles_uniform, s.store.nperfiles() > 0);
        EXPECT_EQ(s.plot.xspace == X_Space::none, s.store.nperfiles() == 0);
        EXPECT_EQ(s.shift, (Row_Shift{1, 2}));
        EXPECT_TRUE(Check_Invariants(s).ok()) << Check_Invariants(s).message;
    }
}

TEST(Arrange_Rows, ACopyIsARowOfItsOwn) {
    Session s;
    Fill(s, 2);
    s.store.show_ycalc_of[0] = true;
    s.store.Info(1).file_name = std::string(200, 'n');
    ASSERT_TRUE(Copy_First_Row(s).ok());
    s.store.Pattern(1).y[0] = -1;
    const Diffraction_Pattern_Type& copy = s.store.Pattern(3);
    EXPECT_EQ(copy.title, ("Copy of " + std::string(200, 'n')).substr(0, title_width));
    EXPECT_EQ(copy.y, (std::vector<float>{10, 20, 30}));
    EXPECT_EQ(s.store.Info(3).file_name, "<copy>");
    EXPECT_EQ(s.store.Info(3).kind, Row_Kind::copy);
    EXPECT_EQ(s.store.Info(3).nexcl, 1);
    EXPECT_FALSE(s.store.show_ycalc_of[2]);
    while (!s.store.full()) s.store.Append_Copy(2);
    EXPECT_EQ(Copy_First_Row(s).message, table_full_text);
    EXPECT_EQ(s.store.nperfiles(), max_profiles);
}

struct Numbers_Case {
    const char* what;
    std::function<Status(Session&)> change;
    std::string refusal;
    std::vector<float> x, y;  // first point of each row
};

TEST(Arrange_Rows, ShiftAndNormalizationGoByTheNumbersGiven) {
    const auto refined = [](Session& s) { s.store.prf_loaded = true; };
    const auto monitor = [](Session& s, float value) { s.store.Pattern(2).monitor = value; };
    const std::string prf = "Profile PRF in memory. Operation not permitted";
    const std::string no_monitor = "Normalization impossible: some profile has no valid monitor";
    const std::vector<float> x{10, 10, 10}, y{10, 20, 30};
    const Numbers_Case cases[] = {
        {"shift",
         [](Session& s) {
             return Shift_Rows(s, {1, -4});
         },
         "",
         {10, 11, 12},
         {10, 16, 22}},
        {"and back",
         [](Session& s) {
             EXPECT_TRUE(Shift_Rows(s, {1, -4}).ok());
             return Shift_Rows(s, {0, 0});
         },
         "", x, y},
        {"further, from what was given last",
         [](Session& s) {
             s.shift = {1, 5};
             return Shift_Rows(s, {3, 5});
         },
         "",
         {10, 12, 14},
         y},
        {"the same",
         [](Session& s) {
             return s.shift = {2, 3}, Shift_Rows(s, {2, 3});
         },
         "", x, y},
        {"too far",
         [](Session& s) {
             return Shift_Rows(s, {0, 3e38f});
         },
         "Values of f3 would leave the range of numbers", x, y},
        {"shift beside a refinement",
         [&](Session& s) {
             return refined(s), Shift_Rows(s, {1, 1});
         },
         prf, x, y},
        // The monitors are 1000, 2000, 3000.
        {"normalization", [](Session& s) { return Normalize_Rows(s, 3000); }, "", x, {30, 30, 30}},
        {"twice",
         [](Session& s) { return Normalize_Rows(s, 3000).failed ? Status::Cancel() : Normalize_Rows(s, 1000); },
         "",
         x,
         {30, 15, 10}},
        {"to the average", [](Session& s) { return Normalize_Rows(s, 0.5f); }, "", x, {20, 20, 20}},
        {"to too much", [](Session& s) { return Normalize_Rows(s, 3e38f); }, "Values of f1 would leave the range of numbers", x, y},
        {"normalization beside a refinement", [&](Session& s) { return refined(s), Normalize_Rows(s, 1); }, prf, x, y},
        {"of rows that came one by one", [](Session& s) { return s.store.profiles_uniform = false, Normalize_Rows(s, 1); },
         "Normalization impossible: non-uniform profiles", x, y},
        {"of a row without a monitor", [&](Session& s) { return monitor(s, 0.5f), Normalize_Rows(s, 1); }, no_monitor, x, y},
        {"of a monitor that is none", [&](Session& s) { return monitor(s, NAN), Normalize_Rows(s, 1); }, no_monitor, x, y},
    };
    for (const Numbers_Case& c : cases) {
        SCOPED_TRACE(c.what);
        Session s;
        Fill(s, 3);
        EXPECT_EQ(c.change(s).message, c.refusal);
        for (int row = 1; row <= 3; ++row) {
            const Diffraction_Pattern_Type& p = s.store.Pattern(row);
            const auto i = static_cast<std::size_t>(row - 1);
            EXPECT_FLOAT_EQ(p.x[0], c.x[i]);
            EXPECT_FLOAT_EQ(p.y[0], c.y[i]);
            EXPECT_FLOAT_EQ(s.store.Info(row).excl_min[0], c.x[i] + 1);
            EXPECT_EQ((std::vector{p.xmin, p.xmax, p.ymin, p.ymax}), (std::vector{p.x[0], p.x[2], p.y[0], p.y[2]}));
        }
        EXPECT_TRUE(c.refusal.empty() || !Undo_Change(s));
    }
}

}  // namespace
}  // namespace vntl
