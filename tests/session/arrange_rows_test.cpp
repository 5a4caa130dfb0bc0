// Rows sorted, copied, set apart and normalized: what is there behind each.
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

constexpr const char* prf_refusal = "Profile PRF in memory. Operation not permitted";

TEST(Arrange_Rows, RowsAreSetApartFromTheFirst) {
    struct Case {
        Row_Shift last, given;
        bool refined;
        const char* refusal;
        float dx, dy;  // of row 2 against row 1
    };
    for (const Case& c : {Case{{0, 0}, {1, -4}, false, "", 1, -4}, Case{{1, -4}, {0, 0}, false, "", -1, 4},
                          Case{{2, 3}, {2, 3}, false, "", 0, 0}, Case{{0, 0}, {1, 1}, true, prf_refusal, 0, 0},
                          Case{{0, 0}, {0, 3e38f}, false, "Values of f3 would leave the range of numbers", 0, 0}}) {
        Session s;
        Fill(s, 3);
        s.shift = c.last;
        s.store.prf_loaded = c.refined;
        const Status status = Shift_Rows(s, c.given);
        EXPECT_EQ(status.message, c.refusal);
        EXPECT_EQ(s.shift, status.failed ? c.last : c.given);
        for (int row = 1; row <= 3; ++row) {
            const Diffraction_Pattern_Type& p = s.store.Pattern(row);
            const auto factor = static_cast<float>(row);
            const float x = 10 + (factor - 1) * c.dx, y = 10 * factor + (factor - 1) * c.dy;
            EXPECT_EQ((std::vector{p.x[0], p.xmin, p.xmax, s.store.Info(row).excl_min[0]}), (std::vector{x, x, x + 2, x + 1}));
            EXPECT_EQ((std::vector{p.y[0], p.ymin, p.ymax}), (std::vector{y, y, y + 20 * factor}));
        }
    }
}

// The rows have 10, 20, 30 counts at monitors of 1000, 2000, 3000.
TEST(Arrange_Rows, CountsComeToOneMonitor) {
    const char* none_valid = "Normalization impossible: some profile has no valid monitor";
    struct Case {
        float monitor, own_of_row_1;
        bool uniform, refined;
        const char* refusal;
        std::vector<float> y;
    };
    const std::vector<float> as_it_was{10, 20, 30};
    for (const Case& c : {Case{3000, 1000, true, false, "", {30, 30, 30}}, Case{0.5f, 1000, true, false, "", {20, 20, 20}},
                          Case{1, 1000, true, true, prf_refusal, as_it_was},
                          Case{1, 1000, false, false, "Normalization impossible: non-uniform profiles", as_it_was},
                          Case{1, 0.5f, true, false, none_valid, as_it_was}, Case{1, NAN, true, false, none_valid, as_it_was},
                          Case{3e38f, 1000, true, false, "Values of f1 would leave the range of numbers", as_it_was}}) {
        Session s;
        Fill(s, 3);
        s.store.Pattern(1).monitor = c.own_of_row_1;
        s.store.profiles_uniform = c.uniform;
        s.store.prf_loaded = c.refined;
        EXPECT_EQ(Normalize_Rows(s, c.monitor).message, c.refusal);
        for (int row = 1; row <= 3; ++row) {
            const Diffraction_Pattern_Type& p = s.store.Pattern(row);
            const float y = c.y[static_cast<std::size_t>(row - 1)];
            EXPECT_EQ((std::vector{p.y[0], p.ymin, p.ymax}), (std::vector{y, y, 3 * y}));
        }
        EXPECT_EQ(s.store.Pattern(3).monitor, 3000);  // so that a second time scales again
    }
}

}  // namespace
}  // namespace vntl
