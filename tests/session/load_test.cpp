// The Load sequence: what becomes a row, what is told to the user, and that a failure leaves no trace.
#include "session/load.hpp"

#include <limits>

#include "session/session.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

Fresh_Pattern Gives(Diffraction_Pattern_Type pattern) { return {Status::Done(), std::move(pattern)}; }

// All that a failed load must leave as it was.
std::string Fingerprint(const Session& s) {
    std::string text = std::to_string(s.store.nperfiles()) + std::string(Told(s.plot.xspace)) + s.plot.xlabel_text + s.plot.ylabel_text +
                       std::string(Told(s.plot.plot_type));
    for (int slot = 1; slot <= recent_file_slots; ++slot) text += "|" + s.recent.Slot(slot);
    for (int row = 1; row <= s.store.nperfiles(); ++row) {
        const Diffraction_Pattern_Type& p = s.store.Pattern(row);
        text +=
            "|" + std::string(Told(s.store.Info(row).kind)) + p.scat_var + std::to_string(p.npts) + " " + std::to_string(p.istat.size());
        for (const float v : p.y) text += " " + std::to_string(v);
    }
    return text + s.store.show_ycalc_of.to_string().substr(max_profiles - 30) + std::to_string(s.store.profiles_uniform) +
           std::to_string(s.interface.revision);
}

TEST(Load, FillsTheRowFromPathAndFormat) {
    Session s;
    Scripted_Ask ask;
    Diffraction_Pattern_Type longer = Tiny_Pattern(30, 1.0f);
    longer.npts = 20;
    EXPECT_EQ(Load_Row(s, ask, "/data/ni 5/run.1.cif", "CIF", Gives(longer)), Load_Result::added);
    Finish_Load(s, 0);
    const PRF_Info_Add_Type& info = s.store.Info(1);
    EXPECT_EQ(info.file_name, "run.1.cif");
    EXPECT_EQ(info.directory, "/data/ni 5");
    EXPECT_EQ(info.format, "CIF");
    EXPECT_EQ(info.kind, Row_Kind::rietv);
    EXPECT_TRUE(s.store.show_ycalc_of[0] && s.store.show_bgr_of[0]);
    EXPECT_EQ(s.store.Pattern(1).y.size(), 20u);
    EXPECT_EQ(Told(s.plot.xspace), "2theta");
    EXPECT_EQ(s.recent.Slot(1), "/data/ni 5/run.1.cif");
    EXPECT_TRUE(ask.boxes.empty());
    EXPECT_TRUE(Check_Invariants(s).ok()) << Check_Invariants(s).message;
}

// The sum over ycalc(2) to ycalc(10) decides: the first point and the eleventh and on do not count.
TEST(Load, KindFollowsFromTheCalculatedCurve) {
    struct Case {
        int from, to;  // points, from 1, that hold `value`
        float value;
        const char* kind;
    };
    for (const Case& c :
         {Case{1, 1, 5.0f, "DATA"}, Case{11, 12, 5.0f, "DATA"}, Case{2, 2, 0.0002f, "RIETV"}, Case{10, 10, 0.0002f, "RIETV"},
          Case{2, 10, 0.00001f, "DATA"}, Case{2, 3, std::numeric_limits<float>::quiet_NaN(), "DATA"}}) {
        Session s;
        Scripted_Ask ask;
        Diffraction_Pattern_Type p = Tiny_Pattern();
        for (int i = c.from; i <= c.to; ++i) p.ycalc[i - 1] = c.value;
        Load_Row(s, ask, "/a.xye", "XYSIGMA", Gives(p));
        EXPECT_EQ(Told(s.store.Info(1).kind), c.kind) << c.from << " to " << c.to;
        EXPECT_EQ(s.store.show_ycalc_of[0], s.store.Info(1).kind == Row_Kind::rietv);
        EXPECT_FALSE(s.store.show_bgr_of[0]);
    }
    // A curve that begins with a gap, where the refinement left points out.
    Session s;
    Scripted_Ask ask;
    Diffraction_Pattern_Type p = Tiny_Pattern();
    std::fill(p.ycalc.begin(), p.ycalc.end() - 1, std::numeric_limits<float>::quiet_NaN());
    p.ycalc.back() = 5;
    Load_Row(s, ask, "/a.cif", "CIF", Gives(p));
    EXPECT_TRUE(s.store.Info(1).kind == Row_Kind::rietv);
}

TEST(Load, EveryRefusalIsToldAndLeavesEverythingAsItWas) {
    struct Case {
        const char* what;
        Fresh_Pattern fresh;
        Load_Result result;
        const char* box;
    };
    const auto changed = [](auto change) {
        Diffraction_Pattern_Type p = Tiny_Pattern();
        change(p);
        return Gives(p);
    };
    const Case cases[] = {
        {"reader", {Status::Fail(" Bad line of b.dat "), {}}, Load_Result::failed, "Error Message|ERROR in file: b.dat\nBad line of b.dat"},
        {"range", changed([](auto& p) { p.xmax = p.xmin; }), Load_Result::failed,
         "Error Message|ERROR Opening file: b.dat\nxmin value >= xmax value"},
        {"range not a number", changed([](auto& p) { p.xmax = std::numeric_limits<float>::quiet_NaN(); }), Load_Result::failed,
         "Error Message|ERROR Opening file: b.dat\nxmin value >= xmax value"},
        {"no points", changed([](auto& p) { p.npts = 0; }), Load_Result::failed, "Error Message|ERROR in file: b.dat\nnpts<1"},
        {"falling", changed([](auto& p) { std::swap(p.x.front(), p.x.back()); }), Load_Result::failed,
         "Error Message|ERROR Opening file: b.dat\nx(1)>=x(npts)"},
        {"more points than values", changed([](auto& p) { p.npts = 2000000000; }), Load_Result::failed,
         "Error Message|ERROR Opening file: b.dat\nx(1)>=x(npts)"},
        {"x space", Gives(Tiny_Pattern(12, 9.0f, "TOF")), Load_Result::refused,
         "Error Message|Present space: 2theta, file in TOF,\nIt is not possible to merge different scattering variables "},
    };
    Session s;
    Scripted_Ask ask;
    Load_Row(s, ask, "/a.dat", "FreeFormat", Gives(Tiny_Pattern()));
    Finish_Load(s, 0);
    const std::string before = Fingerprint(s);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(Load_Row(s, ask, "/x/b.dat", "FreeFormat", c.fresh), c.result);
        Finish_Load(s, 1);
        EXPECT_EQ(ask.Last_Box(), c.box);
        EXPECT_EQ(Fingerprint(s), before);
    }
    EXPECT_EQ(ask.boxes.size(), std::size(cases));

    Session empty;  // a first file that fails does not set the x space either
    EXPECT_EQ(Load_Row(empty, ask, "/b", "", Gives(Tiny_Pattern(12, 0, "parsec"))), Load_Result::refused);
    EXPECT_EQ(ask.Last_Box(), "Error Message|Unknown scattering variable: parsec");
    EXPECT_EQ(Told(empty.plot.xspace), "----");
    EXPECT_EQ(empty.recent.Slot(1), "-");
}

TEST(Load, TheNotesTellWhatFilesClaimAndDoNotHold) {
    Session s;
    Scripted_Ask ask;
    Load_Notes notes;
    const auto load = [&](int claimed, bool lost, const char* name) {
        Diffraction_Pattern_Type p = Tiny_Pattern(12);
        p.npts_claimed = claimed;
        if (lost) p.y[3] = p.y[4] = std::numeric_limits<float>::infinity();
        EXPECT_EQ(Load_Row(s, ask, name, "", Gives(p), notes), Load_Result::added);
        return notes.Notice();
    };
    EXPECT_EQ(load(0, false, "/a.xy"), "");
    EXPECT_EQ(load(12, false, "/a.xy"), "");
    EXPECT_EQ(load(15, false, "/b.xy"), "b.xy: 12 of 15 claimed points");
    EXPECT_EQ(load(12, true, "/c.xy"), "2 points without a number were left out of c.xy; b.xy: 12 of 15 claimed points");
    EXPECT_EQ(load(20, true, "/d.xy"),
              "4 points without a number were left out of 2 profiles; 2 profiles with fewer points than claimed, 11 in all");
    Diffraction_Pattern_Type refused = Tiny_Pattern(12, 0, "parsec");
    refused.npts_claimed = 99;
    const std::string before = notes.Notice();
    EXPECT_EQ(Load_Row(s, ask, "/e.xy", "", Gives(refused), notes), Load_Result::refused);
    EXPECT_EQ(notes.Notice(), before);
    EXPECT_TRUE(Check_Invariants(s).ok());
}

TEST(Load, RowsBeyondTheTwentiethKeepXYAndNdAlone) {
    Session s;
    Scripted_Ask ask;
    for (int row = 1; row <= 23; ++row) ASSERT_EQ(Load_Row(s, ask, "/p", "CIF", Gives(Tiny_Pattern(12, 1.0f))), Load_Result::added);
    Finish_Load(s, 0);
    for (int row = 19; row <= 23; ++row) {
        SCOPED_TRACE(row);
        const Diffraction_Pattern_Type& p = s.store.Pattern(row);
        const bool whole = row <= 20;
        EXPECT_EQ(Told(s.store.Info(row).kind), whole ? "RIETV" : "DATA");
        for (const std::size_t length : {p.ycalc.size(), p.bgr.size(), p.sigma.size(), p.istat.size()}) EXPECT_EQ(length, whole ? 12u : 0u);
        EXPECT_EQ(p.x.size() + p.y.size() + p.nd.size(), 36u);
        EXPECT_EQ(p.has_ycalc || p.al_ycalc || s.store.show_ycalc_of[row - 1] || s.store.show_bgr_of[row - 1], whole);
    }
    EXPECT_TRUE(s.store.profiles_uniform);

    // Row 23 goes, row 22 stays purged, and a new row 21 after more removals is purged again.
    s.store.Take_Out({1, 2, 3});
    Load_Row(s, ask, "/p", "CIF", Gives(Tiny_Pattern(12, 1.0f)));
    Finish_Load(s, 20);
    EXPECT_EQ(s.store.nperfiles(), 21);
    EXPECT_TRUE(s.store.Pattern(21).sigma.empty());
    EXPECT_FALSE(s.store.show_ycalc_of[20]);
    EXPECT_FALSE(s.store.profiles_uniform);
    EXPECT_TRUE(Check_Invariants(s).ok()) << Check_Invariants(s).message;
}

TEST(Load, TheTableHoldsTwoThousandRows) {
    Session s;
    Scripted_Ask ask;
    const Fresh_Pattern fresh = Gives(Tiny_Pattern(2));
    for (int row = 1; row <= 2000; ++row) ASSERT_EQ(Load_Row(s, ask, "/p", "", fresh), Load_Result::added);
    EXPECT_EQ(Load_Row(s, ask, "/q", "", {Status::Fail("a fault that is not told"), {}}), Load_Result::table_full);
    EXPECT_EQ(ask.boxes, std::vector<std::string>{"Error Message|The maximum number of profiles has been attained!"});
    EXPECT_EQ(s.store.nperfiles(), 2000);
}

TEST(Load, RecentFilesHoldAbsoluteNamesThatFit) {
    Test_Directory dir;
    Session s;
    Scripted_Ask ask;
    const Fresh_Pattern fresh = Gives(Tiny_Pattern());
    for (const char* name : {"a.xy", "./a.xy", "sub/../a.xy"}) Load_Row(s, ask, name, "", fresh);
    EXPECT_EQ(s.recent.Slot(1), dir.path + "/a.xy");
    EXPECT_EQ(s.store.Info(2).directory, dir.path);
    EXPECT_EQ(s.recent.Slot(2), "-");
    Load_Row(s, ask, "/" + std::string(200, 'x') + ".xy", "", fresh);
    EXPECT_EQ(s.store.nperfiles(), 4);
    EXPECT_EQ(s.recent.Slot(1), dir.path + "/a.xy");
    EXPECT_EQ(s.interface.labels[40038], "1. " + dir.path + "/a.xy");
    EXPECT_TRUE(s.interface.Enabled(40038));
}

TEST(Reset, LeavesTheStateOfAStart) {
    Session s;
    Scripted_Ask ask;
    Load_Row(s, ask, "/p", "CIF", Gives(Tiny_Pattern(12, 1.0f)));
    Set_Menu_Single(s, true);
    s.store.profile_shown[0] = s.store.show_difference = false;
    s.plot.peak_insert = s.plot.show_target = true;
    s.plot.y_prf_bottom = s.plot.x_view_max = 4;
    s.lists.background.push_back({1, 2});
    s.interface.Check(40111, true);
    s.interface.Status_Text(3, " Rotation : 3");
    Reset_Profiles(s);
    Set_Menu_Empty(s);
    EXPECT_EQ(s.store.nperfiles(), 0);
    EXPECT_TRUE(s.store.shown(1) && s.store.show_difference && s.store.show_ycalc_of.none());
    EXPECT_EQ(Told(s.plot.xspace), "----");
    EXPECT_FALSE(s.plot.peak_insert || s.plot.show_target || s.interface.Checked(40111) || s.interface.Checked(40042));
    EXPECT_EQ(s.plot.y_prf_bottom + s.plot.x_view_max, 0);
    EXPECT_TRUE(s.lists.background.empty());
    EXPECT_EQ(s.interface.status[2], "");
    EXPECT_EQ(s.interface.status[4], "none");
    EXPECT_EQ(s.recent.Slot(1), "/p");
    EXPECT_TRUE(Check_Invariants(s).ok()) << Check_Invariants(s).message;
}

}  // namespace
}  // namespace vntl
