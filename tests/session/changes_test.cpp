// Every change of rows and lists goes back bit for bit, and comes again.
#include <functional>

#include "session/arrange_rows.hpp"
#include "session/changes.hpp"
#include "session/load.hpp"
#include "session/move_rows.hpp"
#include "session/ranges.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

template <class T>
void Put(std::string& bytes, const std::vector<T>& values) {
    bytes += std::to_string(values.size()) + ':';
    bytes.append(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T));
}

// All that a change may touch, byte by byte.
std::string Bytes_Of(const Session& s) {
    std::string bytes = std::string(Told(s.plot.xspace)) + s.plot.xlabel_text + s.plot.ylabel_text + std::string(Told(s.plot.plot_type));
    for (int row = 1; row <= s.store.nperfiles(); ++row) {
        const Diffraction_Pattern_Type& p = s.store.Pattern(row);
        const PRF_Info_Add_Type& info = s.store.Info(row);
        bytes += p.title + p.scat_var + info.file_name + std::string(Told(info.kind));
        Put(bytes, std::vector{p.xmin, p.xmax, p.ymin, p.ymax, p.step, info.x_shift_total, info.y_mult_total});
        Put(bytes, std::vector(p.conv.begin(), p.conv.end()));
        for (const auto* array : {&p.x, &p.y, &p.sigma, &p.ycalc, &p.bgr, &info.refl_position}) Put(bytes, *array);
        for (const auto* array : {&p.istat, &p.nd}) Put(bytes, *array);
        Put(bytes, std::vector(info.excl_min.begin(), info.excl_min.begin() + info.nexcl));
        Put(bytes, std::vector(info.excl_max.begin(), info.excl_max.begin() + info.nexcl));
        bytes += s.store.shown(row) ? 's' : 'h';
        bytes += s.store.show_ycalc_of[static_cast<std::size_t>(row - 1)] ? 'c' : '-';
    }
    Put(bytes, std::vector<int>{s.plot.first_pattern, s.plot.last_pattern, s.store.profiles_uniform, s.store.show_reflections,
                                s.store.ProfilePRFactive, s.store.prf_loaded});
    Put(bytes, std::vector{s.shift.x, s.shift.y});
    const View view = s.plot.Shown_View(), all = s.plot.Whole_Range();
    for (const View& v : {view, all}) Put(bytes, std::vector{v.x1, v.x2, v.y1, v.y2});
    for (const Peak_Mark& peak : s.lists.peaks) Put(bytes, std::vector{peak.x, peak.y, peak.bgr});
    for (const Background_Mark& point : s.lists.background) Put(bytes, std::vector{point.x, point.y});
    return bytes;
}

// Rows of angles with every array, marks and a region; the view is a part of the whole.
void Fill(Session& s, int rows) {
    for (int row = 1; row <= rows; ++row) {
        Diffraction_Pattern_Type p = Tiny_Pattern(40, static_cast<float>(row));
        for (std::size_t i = 0; i < p.x.size(); ++i) {
            p.sigma[i] = static_cast<float>(i) + 0.1f;
            p.bgr[i] = 3 * p.sigma[i];
            p.nd[i] = p.istat[i] = static_cast<std::int32_t>(i);
        }
        p.conv = {1.54f, 1.544f, 0.5f, 1.39f, 0};
        p.monitor = 900 + 100 * static_cast<float>(row);
        Set_Y_Limits(p);
        PRF_Info_Add_Type info;
        info.file_name = "row" + std::to_string(row);
        info.kind = Row_Kind::data;
        Add_Excluded_Region(info, 12, 13);
        s.store.Append(std::move(p), std::move(info));
    }
    s.store.profiles_uniform = rows > 1;
    Set_Xspace(s, "2theta");
    Plot_Ranges(s);
    s.plot.Show({11, 19, 5, 300});
}

struct Change_Case {
    const char* name;
    int rows;
    std::function<void(Session&, Ask&)> change;
    const char* label;  // of the menu behind "Undo "
};

const std::vector<Change_Case>& Changes() {
    static const std::vector<Change_Case> cases = {
        {"offset", 3,
         [](Session& s, Ask&) {
             EXPECT_TRUE(Offset_Rows(s, {1, 3}, 0.1f, -7).ok());
         },
         "shift of 2 profiles"},
        {"scale x", 2, [](Session& s, Ask&) { EXPECT_TRUE(Scale_X_Of_Rows(s, {2}, 1.1f, 0.3f).ok()); }, "scaling of x of row2"},
        {"mirrored x", 1, [](Session& s, Ask&) { EXPECT_TRUE(Scale_X_Of_Rows(s, {1}, -1.1f, 0.3f).ok()); }, "scaling of x of row1"},
        {"scale y", 2,
         [](Session& s, Ask&) {
             EXPECT_TRUE(Scale_Y_Of_Rows(s, {1, 2}, -2.3f, 0).ok());
         },
         "scaling of y of 2 profiles"},
        {"to d", 2, [](Session& s, Ask& ask) { EXPECT_TRUE(Convert_Xspace(s, ask, X_Space::d_space).ok()); }, "conversion to d-space"},
        {"to Q", 1, [](Session& s, Ask& ask) { EXPECT_TRUE(Convert_Xspace(s, ask, X_Space::q_space).ok()); }, "conversion to q-space"},
        {"added rows", 1,
         [](Session& s, Ask&) {
             Row_Change change(s, "two rows");
             for (int i = 0; i < 2; ++i) s.store.Append_Copy(1);
             s.store.profile_shown[2] = false;
             change.Keep();
         },
         "two rows"},
        {"deletion", 5,
         [](Session& s, Ask&) {
             Delete_Rows(s, {1, 2, 4});
         },
         "deletion of 3 profiles"},
        {"deletion of all but one", 2, [](Session& s, Ask&) { Delete_Rows(s, {2}); }, "deletion of row2"},
        {"deletion of all", 3, [](Session& s, Ask&) { Delete_Rows(s, All_Rows(s)); }, "deletion of 3 profiles"},
        {"copy", 1, [](Session& s, Ask&) { EXPECT_TRUE(Copy_First_Row(s).ok()); }, "copy of row1"},
        {"sorting", 4,
         [](Session& s, Ask&) {
             Sort_Rows(s, {3, 1, 4, 2});
         },
         "sorting of 4 profiles"},
        {"shift", 3,
         [](Session& s, Ask&) {
             EXPECT_TRUE(Shift_Rows(s, {0.1f, -7}).ok());
         },
         "shift of 3 profiles"},
        {"normalization", 3, [](Session& s, Ask&) { EXPECT_TRUE(Normalize_Rows(s, 777).ok()); }, "normalization of 3 profiles"},
        {"lists", 1,
         [](Session& s, Ask&) {
             Row_Change change(s, "found peaks");
             s.lists.peaks = {{11, 12, 13}, {14, 15, 16}};
             s.lists.background.clear();
             change.Keep();
         },
         "found peaks"},
    };
    return cases;
}

TEST(Changes, GoBackAndComeAgainBitForBit) {
    for (const Change_Case& c : Changes()) {
        SCOPED_TRACE(c.name);
        Session s;
        Scripted_Ask ask;
        Fill(s, c.rows);
        s.lists.peaks = {{12, 3, 1}};
        s.lists.background = {{11, 2}, {17, 4}};
        s.store.profile_shown[1] = s.store.show_reflections = false;
        s.store.show_ycalc_of[0] = true;
        const std::string before = Bytes_Of(s);
        c.change(s, ask);
        Plot_Ranges(s);
        const std::string after = Bytes_Of(s);
        ASSERT_NE(before, after);
        for (int round = 0; round < 2; ++round) {
            ASSERT_TRUE(Undo_Change(s));
            EXPECT_EQ(Bytes_Of(s), before);
            EXPECT_TRUE(Check_Invariants(s).ok());
            EXPECT_FALSE(Undo_Change(s));
            Show_Changes(s);
            EXPECT_EQ(s.interface.labels[command::redo], std::string("Redo ") + c.label);
            ASSERT_TRUE(Redo_Change(s));
            EXPECT_EQ(Bytes_Of(s), after);
            EXPECT_TRUE(Check_Invariants(s).ok());
            EXPECT_FALSE(Redo_Change(s));
            Show_Changes(s);
            EXPECT_EQ(s.interface.labels[command::undo], std::string("Undo ") + c.label);
            EXPECT_TRUE(s.interface.Enabled(command::undo) && !s.interface.Enabled(command::redo));
        }
    }
}

// One pattern and several have logarithmic forms of their own; those that are left by a change come back with it.
TEST(Changes, TheFormComesBackWithTheRows) {
    const auto delete_two = [](Session& s) { Delete_Rows(s, {2, 3}); };
    const auto delete_all = [](Session& s) { Delete_Rows(s, All_Rows(s)); };
    const auto copy = [](Session& s) { EXPECT_TRUE(Copy_First_Row(s).ok()); };
    struct Case {
        int rows;
        std::function<void(Session&)> change;
        Plot_Form after;
    };
    for (const Case& c : {Case{3, delete_two, Plot_Form::single}, Case{3, delete_all, Plot_Form::none},
                          Case{1, delete_all, Plot_Form::none}, Case{1, copy, Plot_Form::multi_log}}) {
        Session s;
        Fill(s, c.rows);
        c.rows == 1 ? Set_Menu_Log_Of_One(s) : Set_Menu_Graph(s, true);
        Plot_Ranges(s);
        s.plot.Show({11, 19, 1, 3});
        const std::string before = Bytes_Of(s);
        c.change(s);
        Plot_Ranges(s);
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(s.plot.plot_type, c.after);
            Show_Changes(s);
            EXPECT_TRUE(s.interface.Enabled(command::undo));
            ASSERT_TRUE(Undo_Change(s));
            EXPECT_EQ(Bytes_Of(s), before);
            EXPECT_EQ(s.plot.y_scale == Y_Scale::logarithm, c.rows == 1);
            ASSERT_TRUE(Redo_Change(s));
        }
    }
}

// The scale is the user's, who has chosen another one since.
TEST(Changes, TheScaleOfTheScreenStays) {
    Session s;
    Fill(s, 3);
    Plot_Ranges(s);
    Choose_Scale(s, Y_Scale::logarithm);
    Delete_Rows(s, {2, 3});
    Plot_Ranges(s);
    for (const Y_Scale scale : {Y_Scale::root, Y_Scale::linear, Y_Scale::logarithm}) {
        Choose_Scale(s, scale);
        ASSERT_TRUE(Undo_Change(s));
        EXPECT_EQ(s.plot.Scale(), scale) << Told(scale);
        ASSERT_TRUE(Redo_Change(s));
    }
}

// Constants that are typed on the way to another space go back with the conversion, in one step; without the conversion none are stored.
TEST(Changes, TypedConstantsGoBackWithTheirConversion) {
    Session s;
    Scripted_Ask ask;
    Fill(s, 2);
    s.store.Pattern(2).conv[0] = 0;
    const std::string before = Bytes_Of(s);
    ask.constants = {{{1.54f, 1.544f}, {2.5f, 0}}};
    ASSERT_TRUE(Convert_Xspace(s, ask, X_Space::d_space).ok());
    EXPECT_EQ(s.store.Pattern(2).conv[0], 2.5f);
    ASSERT_TRUE(Undo_Change(s));
    Show_Changes(s);
    EXPECT_EQ(s.interface.labels[command::redo], "Redo conversion to d-space");
    EXPECT_EQ(Bytes_Of(s), before);
    EXPECT_FALSE(Undo_Change(s));
    ASSERT_TRUE(Redo_Change(s));
    EXPECT_EQ(s.plot.xspace, X_Space::d_space);
    EXPECT_EQ(s.store.Pattern(2).conv[0], 2.5f);
    ASSERT_TRUE(Undo_Change(s));

    ask.constants = {{{1.54f, 1.544f}, {-1, 0}}};  // no wavelength: refused, and nothing is stored
    EXPECT_TRUE(Convert_Xspace(s, ask, X_Space::d_space).failed);
    EXPECT_EQ(Bytes_Of(s), before);
    EXPECT_FALSE(Undo_Change(s));
}

TEST(Changes, OneThatIsNotKeptLeavesNothing) {
    Session s;
    Fill(s, 2);
    const std::string before = Bytes_Of(s);
    {
        Row_Change change(s, "half a change", {1, 2}, all_parts);
        s.store.Pattern(1).x[3] = s.store.Pattern(2).ycalc[1] = 99;
        s.store.Info(2).nexcl = 0;
        s.store.Append_Copy(1);
        s.lists.peaks.push_back({1, 2, 3});
        EXPECT_TRUE(change.Keep(Status::Fail("no")).failed);
    }
    EXPECT_EQ(Bytes_Of(s), before);
    EXPECT_FALSE(Undo_Change(s));
    {
        Row_Change nothing(s, "nothing");
        nothing.Keep();
    }
    EXPECT_FALSE(Undo_Change(s));
}

TEST(Changes, ANewOneForgetsWhatWasUndoneAndLoadingForgetsAll) {
    Session s;
    Scripted_Ask ask;
    Fill(s, 1);
    for (const float dx : {1.0f, 2.0f}) ASSERT_TRUE(Offset_Rows(s, {1}, dx, 0).ok());
    ASSERT_TRUE(Undo_Change(s));
    ASSERT_TRUE(Scale_Y_Of_Rows(s, {1}, 2, 0).ok());
    EXPECT_FALSE(Redo_Change(s));
    Load_Row(s, ask, "/x.xy", "XYSIGMA", {Status::Done(), Tiny_Pattern()});
    EXPECT_FALSE(Undo_Change(s));
    ASSERT_TRUE(Offset_Rows(s, {2}, 1, 0).ok());
    Reset_Profiles(s);
    EXPECT_FALSE(Undo_Change(s));
}

TEST(Changes, FiftyStepsAreKept) {
    Session s;
    Fill(s, 1);
    const float first = s.store.Pattern(1).x[0];
    for (int i = 0; i < 60; ++i) ASSERT_TRUE(Offset_Rows(s, {1}, 1, 0).ok());
    int steps = 0;
    while (Undo_Change(s)) ++steps;
    EXPECT_EQ(steps, 50);
    EXPECT_EQ(s.store.Pattern(1).x[0], first + 10);
}

// Two changes that go together lose the first of them when it becomes too old: the second is then a step of its own.
TEST(Changes, AStepOfTwoMayLoseItsFirst) {
    Session s;
    Fill(s, 1);
    for (const bool with_previous : {false, true}) {
        Row_Change change(s, "pair", {1}, part_y);
        s.store.Pattern(1).y[0] += 1;
        change.Keep(with_previous);
    }
    for (int i = 0; i < 49; ++i) ASSERT_TRUE(Offset_Rows(s, {1}, 1, 0).ok());
    const float y = s.store.Pattern(1).y[0];
    for (int i = 0; i < 50; ++i) ASSERT_TRUE(Undo_Change(s)) << i;
    EXPECT_EQ(s.store.Pattern(1).y[0], y - 1);
    EXPECT_FALSE(Undo_Change(s));
}

// Rows that go and rows that change places are moved, with the memory of their points.
TEST(Changes, DeletionAndSortingCopyNoPoint) {
    Session s;
    Fill(s, 4);
    const auto memory = [&s](int row) { return std::pair(s.store.Pattern(row).x.data(), s.store.Pattern(row).ycalc.data()); };
    const std::vector first{memory(1), memory(2), memory(3), memory(4)};
    Sort_Rows(s, {4, 2, 1, 3});
    EXPECT_EQ((std::vector{memory(1), memory(2), memory(3), memory(4)}), (std::vector{first[3], first[1], first[0], first[2]}));
    Delete_Rows(s, {1, 3});
    ASSERT_TRUE(Undo_Change(s) && Undo_Change(s));
    EXPECT_EQ((std::vector{memory(1), memory(2), memory(3), memory(4)}), first);
}

// A change that holds more than the history may is made all the same, and what came before it cannot go back over it.
TEST(Changes, OneTooLargeEndsTheHistory) {
    Session s;
    Fill(s, 1);
    ASSERT_TRUE(Offset_Rows(s, {1}, 1, 0).ok());
    Diffraction_Pattern_Type& p = s.store.Pattern(1);
    p.npts = static_cast<std::int32_t>(Change_History::most_bytes / sizeof(float) + 1);
    p.x.resize(static_cast<std::size_t>(p.npts), 100);
    ASSERT_TRUE(Scale_X_Of_Rows(s, {1}, 2, 0).ok());
    EXPECT_EQ(s.interface.status[0], "The scaling of x of row1 is too large to be undone");
    EXPECT_FALSE(Undo_Change(s));
    Delete_Rows(s, {1});
    EXPECT_EQ(s.interface.status[0], "The deletion of row1 is too large to be undone");
    EXPECT_EQ(s.store.nperfiles(), 0);
    EXPECT_FALSE(Undo_Change(s));
}

// The oldest changes go when all of them together hold too much.
TEST(Changes, ManyLargeOnesPushTheOldestOut) {
    Session s;
    Fill(s, 1);
    Diffraction_Pattern_Type& p = s.store.Pattern(1);
    p.npts = static_cast<std::int32_t>(Change_History::most_bytes / sizeof(float) / 3);
    for (auto* array : {&p.x, &p.y}) array->assign(static_cast<std::size_t>(p.npts), 1);
    for (int i = 0; i < 5; ++i) ASSERT_TRUE(Scale_Y_Of_Rows(s, {1}, 2, 0).ok());
    int steps = 0;
    while (Undo_Change(s)) ++steps;
    EXPECT_EQ(steps, 2);
}

TEST(Changes, TheViewStaysWhereThePlotHasBecomeLogarithmic) {
    Session s;
    Fill(s, 2);
    ASSERT_TRUE(Offset_Rows(s, {1}, 1, 0).ok());
    Set_Menu_Graph(s, true);
    Plot_Ranges(s);
    ASSERT_TRUE(Undo_Change(s));
    EXPECT_TRUE(s.plot.Is_Log());
    EXPECT_LT(s.plot.y_view_max, 20);  // the logarithm of the intensities
}

}  // namespace
}  // namespace vntl
