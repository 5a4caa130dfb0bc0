// Joining an x space, and what the axes and the menu show of it.
#include "session/xspace.hpp"

#include "session/changes.hpp"
#include "session/load.hpp"
#include "session/ranges.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

Status Join(Session& s, const std::string& scat_var, const std::string& legend_x = {}, const std::string& legend_y = {}) {
    Diffraction_Pattern_Type p;
    p.scat_var = scat_var;
    p.legend_x = legend_x;
    p.legend_y = legend_y;
    Scripted_Ask ask;
    return Check_Load_Xspace(s, ask, p, "file");
}

const char merge[] = "It is not possible to merge different x-spaces";
const char vars[] = "It is not possible to merge different scattering variables";
const char no_conversion[] = "conversion of xspace is not permitted";

struct Answer {
    std::string first, second;  // lines; "" accepts
};
const Answer yes{"", ""};
const Answer no_constants{"Load profile cancelled", ""};  // nobody answers the question for them

// The decisions of a space, by the file's kind: angle, time of flight, integrated intensity, general abscissa.
struct Row {
    std::string present;
    Answer theta, tof, mono, general;
};

TEST(Xspace, EveryMeetingOfAPresentSpaceAndAFile) {
    const std::string ii = "Integrated Intensity";
    const Row rows[] = {
        {"2theta",
         yes,
         {"Present space: 2theta, file in TOF,", std::string(vars) + " "},
         {"Present Space: 2theta, file type Integrated Intensity,", no_conversion},
         {"Present Space: 2theta, file type: General Abcisa,", merge}},
        {"TOF",
         {"Present space: TOF, file in 2theta,", vars},
         yes,
         {"Present space: TOF, file type Integrated Intensity,", no_conversion},
         {"Present Space: TOF, file type: General Abcisa,", merge}},
        {"mono",
         {"Present space: " + ii + ", file in 2theta,", no_conversion},
         {"Present space: " + ii + ", file in TOF,", no_conversion},
         {"Present space: " + ii + ", file type " + ii + ",", "only one profile of type Integrated Intensity can be plotted at same time"},
         {"Present Space: " + ii + ", file type: General Abcisa,", merge}},
        {"d-space",
         no_constants,
         no_constants,
         {"Present space: d-spacing, file type Integrated Intensity,",
          "only a single Integrated Intensity type is allowed at the same time"},
         {"Present Space: d-spacing, file type: General Abcisa,", merge}},
        {"q-space",
         no_constants,
         no_constants,
         {"Present Space: q-space, file type Integrated Intensity ,",
          "only one profile of type Integrated Intensity is allowed at same time"},
         {"Present Space: q-space, file type: General Abcisa,", merge}},
        {"s-space",
         no_constants,
         no_constants,
         {"Present Space: s-space, file type Integrated Intensity,", "only one Integrated Intensity pattern is allowed at the same time"},
         {"Present Space: s-space, file type: General Abcisa,", merge}},
        {"Energy",
         {"Present space: Energy, file in 2Theta,", merge},
         {"Present space: Energy, file in TOF,", merge},
         {"Present Space: Energy, file type Integrated Intensity ", merge},
         {"Present Space: Energy, file type General Abcisa ", merge}},
    };
    for (const Row& row : rows) {
        const std::pair<std::string, Answer> cells[] = {{" 2theta ", row.theta},   {"TOF", row.tof},        {"mono", row.mono},
                                                        {"Distance", row.general}, {"Lambda", row.general}, {"Angle", row.general}};
        for (const auto& [file, answer] : cells) {
            SCOPED_TRACE(row.present + " meets " + file);
            Session s;
            Set_Xspace(s, row.present);
            const Status status = Join(s, file);
            EXPECT_EQ(status.message, answer.second.empty() ? answer.first : answer.first + "\n" + answer.second);
            EXPECT_EQ(status.failed, !answer.first.empty());
            EXPECT_EQ(Told(s.plot.xspace), row.present);
        }
        Session s;
        Set_Xspace(s, row.present);
        EXPECT_EQ(Join(s, "parsec").message, "Unknown scattering variable: parsec");
        EXPECT_EQ(Join(s, "q-space").message, row.present == "q-space" ? "" : "Unknown scattering variable: q-space");
        EXPECT_EQ(Join(s, "s-space").message, "Unknown scattering variable: s-space");
        EXPECT_EQ(Join(s, "d-space").ok(), row.present == "d-space");
        EXPECT_EQ(Told(s.plot.xspace), row.present);
        EXPECT_EQ(Join(s, "d-spacing").ok(), row.present == "d-space");
        EXPECT_EQ(Told(s.plot.xspace), row.present == "d-space" ? "d-spacing" : row.present);
    }
    for (const char* general : {"Lambda", "Energy", "Temperature", "Frequency", "Time", "Distance", "r.l.u.", "Angle"}) {
        Session s;
        EXPECT_TRUE(Join(s, general).ok());
        EXPECT_TRUE(Join(s, general).ok()) << general;
    }
}

TEST(Xspace, TheFirstFileSetsTheSpaceAndItsTitles) {
    struct Case {
        const char *scat_var, *legend_x, *legend_y;
        bool accepted;
        const char *x_title, *y_title;
    };
    for (const Case& c :
         {Case{"2theta", "angle", "counts", true, "2theta (deg)", "Intensity (arb. units)"},
          Case{"TOF", "", "", true, "TOF (\u00b5sec)", "Intensity (arb. units)"},
          Case{"mono", "", "", true, "sin(theta)/lambda", "Fcalc. - Fobs."},
          Case{"d-spacing", "", "", true, "d-spacing (\u00c5)", "Intensity (arb. units)"},
          Case{"Distance", "r (nm)", "G", true, "r (nm)", "G"}, Case{"Angle", "Phi(degrees)", "I", true, "Phi(degrees)", "I"},
          Case{"Angle", "", "", true, "Angle (deg)", "Intensity (arb. units)"}, Case{"Distance", "r (nm)", "", true, "r (nm)", "G(R)"},
          Case{"Energy", "", "G", true, "Energy", "F(Energy)."}, Case{"Time", "", "", true, "Time", "F(time)"},
          Case{"d-spacing", "d-spacing(Angstroms)", "Counts", true, "d-spacing (\u00c5)", "Intensity (arb. units)"},
          Case{"d-spacing", "d(A)", "", true, "d(A)", "Intensity (arb. units)"},
          Case{"d-space", "d(A)", "", true, "d-spacing (\u00c5)", "Intensity (arb. units)"},
          Case{"q-space", "Q(1/Angstrom)", "Counts", true, "Q (\u00c5-1)", "Intensity (arb. units)"},
          Case{"s-space", "", "", false, "", ""}, Case{"", "", "", false, "", ""}}) {
        SCOPED_TRACE(c.scat_var);
        Session s;
        EXPECT_EQ(Join(s, c.scat_var, c.legend_x, c.legend_y).ok(), c.accepted);
        EXPECT_EQ(Told(s.plot.xspace), c.accepted ? c.scat_var : "----");
        EXPECT_EQ(s.plot.xlabel_text, c.x_title);
        EXPECT_EQ(s.plot.ylabel_text, c.y_title);
    }
    Session s;
    Set_Xspace(s, "Distance", true);
    EXPECT_EQ(s.plot.ylabel_text, "G(R) x 1000");
    Set_Xspace(s, "2theta", true, "my angle", "my counts");
    EXPECT_EQ(s.plot.xlabel_text + "|" + s.plot.ylabel_text, "my angle|Intensity (arb. units)");
}

TEST(Xspace, TheMenuFollowsTheSpace) {
    struct Case {
        const char* space;
        int checked;        // 0 none
        bool d_q_s;         // enabled
        int constants = 0;  // command enabled, 0 none
    };
    Session s;
    for (const Case& c :
         {Case{"2theta", 40042, true, 40087}, Case{"TOF", 40043, true, 40088}, Case{"d-spacing", 40017, true}, Case{"q-space", 40089, true},
          Case{"s-space", 40081, true}, Case{"mono", 0, false}, Case{"r.l.u.", 0, false}, Case{"Angle", 0, false}}) {
        SCOPED_TRACE(c.space);
        const unsigned before = s.interface.revision;
        Set_Xspace(s, c.space);
        EXPECT_NE(s.interface.revision, c.checked != 0 ? before : before - 1);
        for (const int command : {40042, 40043, 40017, 40089, 40081})
            EXPECT_EQ(s.interface.Checked(command), command == c.checked) << command;
        for (const int command : {40017, 40089, 40081}) EXPECT_EQ(s.interface.Enabled(command), c.d_q_s) << command;
        for (const int command : {40087, 40088}) EXPECT_EQ(s.interface.Enabled(command), command == c.constants) << command;
    }
}

// Back to what the files were measured in: only where all of them share it.
TEST(Xspace, TheWayBackNeedsOneVariableOfAllRows) {
    for (const std::string first : {"2theta", "TOF", "d-spacing"})
        for (const std::string second : {"2theta", "TOF", "d-spacing"}) {
            SCOPED_TRACE(first + ", " + second);
            Session s;
            for (const std::string& variable : {first, second}) s.store.Append(Tiny_Pattern(12, 0, variable), {});
            Set_Xspace(s, "d-spacing");
            Plot_Ranges(s);
            EXPECT_EQ(s.store.mixed_scat_var, first != second);
            EXPECT_EQ(s.interface.Enabled(command::to_two_theta), first == second && first == "2theta");
            EXPECT_EQ(s.interface.Enabled(command::to_tof), first == second && first == "TOF");
        }
}

// A row that was read in Q stands beside one that was brought there: both go to d and s and return; no row goes to angles, which one of
// them never had. d = 2 pi / Q and s = Q / 2 pi.
TEST(Xspace, RowsReadInQConvertBesideThoseBroughtThere) {
    constexpr double two_pi = 6.283185307179586;
    Session s;
    Scripted_Ask ask;
    const auto load = [&](const char* variable, std::vector<float> x, float wavelength) {
        Diffraction_Pattern_Type p = Tiny_Pattern(4, 0, variable);
        p.x = std::move(x), p.xmin = p.x.front(), p.xmax = p.x.back();
        p.conv[0] = wavelength;
        EXPECT_EQ(Load_Row(s, ask, "/x/new.xye", "XYSIGMA", {Status::Done(), p}), Load_Result::added) << ask.Last_Box();
    };
    load("q-space", {1, 2, 4, 5}, 0);
    load("2theta", {20, 40, 60, 80}, 1.5f);
    load("q-space", {1, 2, 4, 8}, 0.4f);
    Plot_Ranges(s);
    EXPECT_EQ(Told(s.plot.xspace), "q-space");
    EXPECT_TRUE(s.store.mixed_scat_var);
    const auto before = s.store.Pattern(1).x;
    const struct {
        X_Space space;
        double first, last;
    } steps[] = {{X_Space::d_space, two_pi / 5, two_pi}, {X_Space::s_space, 1 / two_pi, 5 / two_pi}, {X_Space::q_space, 1, 5}};
    for (const auto& step : steps) {
        ASSERT_TRUE(Convert_Xspace(s, ask, step.space).ok());
        EXPECT_NEAR(s.store.Pattern(1).x.front(), step.first, 1e-5);
        EXPECT_NEAR(s.store.Pattern(1).x.back(), step.last, 1e-5);
        EXPECT_NEAR(D_Spacing(s, step.first).value_or(two_pi), two_pi, 1e-5) << "where x is no spacing itself";
        EXPECT_EQ(D_Spacing(s, step.first).has_value(), step.space != X_Space::d_space);
        for (const X_Space back : {X_Space::two_theta, X_Space::tof}) EXPECT_EQ(Convert_Xspace(s, ask, back).message, mixed_scat_var_text);
    }
    while (s.plot.xspace != X_Space::q_space || s.store.Pattern(1).x != before) ASSERT_TRUE(Undo_Change(s));
    EXPECT_EQ(s.plot.xlabel_text, "Q (\u00c5-1)");
    EXPECT_TRUE(ask.constants_asked.empty());

    // Rows of Q alone know no angle either.
    Session alone;
    alone.store.Append(Tiny_Pattern(12, 0, "q-space"), {});
    Set_Xspace(alone, "q-space");
    Plot_Ranges(alone);
    for (const int command : {command::to_two_theta, command::to_tof}) EXPECT_FALSE(alone.interface.Enabled(command));
    for (const int command : {command::to_d, command::to_s}) EXPECT_TRUE(alone.interface.Enabled(command));
}

}  // namespace
}  // namespace vntl
