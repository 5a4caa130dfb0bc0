// The profile files of a directory: which of them are found and read, what is told of them, the view of the one in hand, and its way into
// the store. The files are written from one model of a refinement, whose numbers are what is expected.
#include "session/quick_view.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "patterns/prf_files.hpp"
#include "session/changes.hpp"
#include "session/ranges.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;
namespace fs = std::filesystem;

test::Model Small_Model(double temperature = 293.5) {
    test::Model model = test::Make_Model(2, 5, false, 60);
    model.title = test::Form("Two oxides TEMP: %.3f", temperature);
    return model;
}
std::string Small_File(double temperature = 293.5) { return Whole(test::Columns(Small_Model(temperature))); }

// Observed and calculated intensities that are all the same, from x = 10 on.
std::string Flat_File(double y, std::size_t points = 20) {
    test::Model model = test::Make_Model(1, 0, false, points);
    std::fill(model.y.begin(), model.y.end(), y);
    model.zero = model.cosine = model.sine = 0;
    return Whole(test::Columns(model));
}

struct Quick : testing::Test {
    Quick() { s.quick_view.open = true; }
    Texts Names() const {
        Texts names;
        for (const Quick_File& file : quick.files) names.push_back(file.name);
        return names;
    }
    std::string Name_In_Hand() const { return quick.Count() == 0 ? "" : Names()[static_cast<std::size_t>(quick.index - 1)]; }
    void Expect_View(double x1, double x2, double y1, double y2) const {
        const View view = quick.plot.Shown_View();
        EXPECT_FLOAT_EQ(view.x1, static_cast<float>(x1));
        EXPECT_FLOAT_EQ(view.x2, static_cast<float>(x2));
        EXPECT_FLOAT_EQ(view.y1, static_cast<float>(y1));
        EXPECT_FLOAT_EQ(view.y2, static_cast<float>(y2));
    }
    bool Look() { return Look_Through(s, ask, folder); }

    Test_Directory dir;
    std::string folder = dir.Make("folder");
    Session s;
    Quick_View& quick = s.quick_view;
    Scripted_Ask ask;
};

TEST_F(Quick, FilesOfEveryKindStandInTheOrderThatPeopleExpect) {
    const test::Model model = Small_Model(), flight = [] {
        test::Model m = Small_Model(4.2);
        m.flight = true;
        return m;
    }();
    const std::pair<const char*, std::string> files[] = {{"run10.prf", Whole(test::Classic(model))},
                                                         {"run9.PRF", Small_File(1200)},
                                                         {"RUN2.Prf", Whole(test::Columns(flight, 8))},
                                                         {"a.xrf", Whole(test::Peak_Fit(model, "any"))},
                                                         {"B1.XRF", Whole(test::Peak_Fit(model))},
                                                         {"mono.prf", Whole(test::Integrated(model))},
                                                         {"pairs.prf", Whole(test::Pair_Distribution(model))},
                                                         {"bad10.prf", "no profile\n"},
                                                         {"bad9.xrf", ""},
                                                         {"igor.prf", "IGOR\nX\n"},
                                                         {"notes.txt", "prf"},
                                                         {"prf", Small_File()}};
    for (const auto& [name, text] : files) dir.Write("folder/" + std::string(name), text);
    dir.Make("folder/directory.prf");
    fs::create_symlink(dir.Write("elsewhere.dat", Small_File(77)), folder + "/linked.prf");
    fs::create_symlink("/nowhere/at/all", folder + "/dangling.prf");
    fs::create_symlink("/dev/zero", folder + "/endless.prf");
    ASSERT_EQ(mkfifo((folder + "/pipe.prf").c_str(), 0600), 0);
    EXPECT_TRUE(Look());
    EXPECT_EQ(Names(), (Texts{"linked.prf", "mono.prf", "pairs.prf", "RUN2.Prf", "run9.PRF", "run10.prf", "a.xrf", "B1.XRF"}));
    EXPECT_EQ(ask.boxes, Texts{"Attention|Unkown format files:\nbad10.prf\ndangling.prf\nendless.prf\nigor.prf\npipe.prf\nbad9.xrf"});
    const std::pair<std::size_t, const char*> temperatures[] = {{0, "   Temperature:    77.00 K --  -196.16 C"},
                                                                {3, "   Temperature:     4.20 K --  -268.96 C"},
                                                                {4, "   Temperature:  1200.00 K --   926.84 C"}};
    for (const auto& [file, text] : temperatures) EXPECT_EQ(quick.files[file].temperature, text);
    for (int index = 1; index <= quick.Count(); ++index) {
        SCOPED_TRACE(quick.files[static_cast<std::size_t>(index - 1)].name);
        EXPECT_TRUE(Show_Quick_File(s, index).ok());
        EXPECT_TRUE(quick.Holds_Profile() && quick.plot.Shown_View().Drawable());
        EXPECT_EQ(quick.info.kind, index == 2 ? Row_Kind::mono : Row_Kind::prf);
        EXPECT_EQ(quick.status[0], folder + '/' + Name_In_Hand() + quick.files[static_cast<std::size_t>(index - 1)].temperature);
        EXPECT_EQ(quick.status[1], "( " + std::to_string(index) + " / 8 )");
    }
    EXPECT_EQ(s.store.nperfiles(), 0);
}

TEST_F(Quick, WhatADirectoryLacksIsTold) {
    dir.Write("folder/good.prf", Small_File());
    ASSERT_TRUE(Look());
    const auto keeps = [&](const std::string& directory, const std::string& box) {
        ask.boxes.clear();
        EXPECT_FALSE(Look_Through(s, ask, directory)) << directory;
        EXPECT_EQ(ask.boxes, Texts{"Error Message|" + box});
        EXPECT_EQ(quick.directory, folder);
        EXPECT_TRUE(Name_In_Hand() == "good.prf" && quick.Holds_Profile());
    };
    keeps(dir.Make("empty"), "No PRF/XRF file in the selected directory ");
    keeps(dir.path + "/gone", "The directory " + dir.path + "/gone cannot be read: No such file or directory");
    dir.Make("bad");
    dir.Write("bad/1.prf", "no");
    ask.boxes.clear();
    EXPECT_TRUE(Look_Through(s, ask, dir.path + "/bad"));
    EXPECT_EQ(ask.boxes, (Texts{"Attention|Unkown format files:\n1.prf", "Error Message|No valid PRF file in the selected directory"}));
    EXPECT_TRUE(quick.open && quick.Count() == 0 && quick.index == 0 && !quick.Holds_Profile() && quick.status[0].empty());
}

TEST_F(Quick, TwoThousandFilesAndNoMore) {
    const std::string file = dir.Write("one.prf", Flat_File(5, 2));
    for (int i = 0; i < 1990; ++i) fs::create_hard_link(file, folder + '/' + std::to_string(i) + ".prf");
    for (int i = 0; i < 10; ++i) dir.Write("folder/" + std::to_string(i) + ".xrf", Whole(test::Peak_Fit(Small_Model())));
    EXPECT_TRUE(Look());
    EXPECT_EQ(quick.Count(), 2000);
    EXPECT_EQ(quick.status[1], "( 1 / 2000 )");
    EXPECT_EQ(Names()[1989], "1989.prf");
    EXPECT_TRUE(ask.boxes.empty());
    fs::create_hard_link(file, folder + "/more.prf");
    EXPECT_FALSE(Look());
    EXPECT_EQ(ask.boxes, Texts{"Error Message|Too many PRF/XRF (> 400) files in the selected directory "});
    EXPECT_EQ(quick.Count(), 2000);
}

TEST_F(Quick, WhoEndsTheReadingKeepsWhatWasThere) {
    dir.Write("folder/good.prf", Small_File());
    ASSERT_TRUE(Look());
    const std::string other = dir.Make("other");
    for (int i = 0; i < 6; ++i) dir.Write("other/" + std::to_string(i) + ".prf", i == 1 ? "no" : Small_File());
    for (const int last : {0, 1, 5})
        for (const bool reading : {false, true}) {
            Cancelling_Ask cancelling(last, reading);
            EXPECT_FALSE(Look_Through(s, cancelling, other));
            EXPECT_TRUE(cancelling.boxes.empty());
            EXPECT_EQ(Names(), Texts{"good.prf"});
        }
}

TEST_F(Quick, AFileStandsInItsWholeRangeFirst) {
    test::Model model = Small_Model();
    model.zero = model.cosine = model.sine = 0;
    dir.Write("folder/1.prf", Whole(test::Columns(model)));
    const struct {
        const char* name;
        std::string text;
        double x1, x2, y1, y2, base;
    } flat[] = {{"2.prf", Flat_File(1000), 10, 10.95, 950, 1050, 993},
                {"3.prf", Flat_File(0), 10, 10.95, -1, 1, -0.14},
                {"4.prf", Flat_File(-20), 10, 10.95, -21, -19, -20.14},
                {"5.prf", Flat_File(100, 1), 9.5, 10.5, 95, 105, 99.3}};
    for (const auto& row : flat) dir.Write("folder/" + std::string(row.name), row.text);
    ASSERT_TRUE(Look());
    const auto [least, most] = std::minmax_element(model.y.begin(), model.y.end());
    const double span = *most - *least;
    Expect_View(10, model.X(59), *least - 0.2 * span, *most);
    EXPECT_FLOAT_EQ(quick.plot.diff_base, static_cast<float>(*least - 0.14 * span));
    for (int index = 2; const auto& row : flat) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(Show_Quick_File(s, index++).ok()) << ask.Last_Box();
        Expect_View(row.x1, row.x2, row.y1, row.y2);
        EXPECT_FLOAT_EQ(quick.plot.diff_base, static_cast<float>(row.base));
    }
}

TEST_F(Quick, ARectangleOfSomeWidthBecomesTheView) {
    test::Model model = Small_Model();
    std::fill(model.y.begin(), model.y.end(), 100), model.y[3] = 0, model.y[4] = 200;
    model.zero = model.cosine = model.sine = 0;
    for (const char* name : {"1.prf", "2.prf"}) dir.Write("folder/" + std::string(name), Whole(test::Columns(model)));
    ASSERT_TRUE(Look());
    const View whole = quick.plot.Whole_Range();
    const struct {
        double x1, y1, x2, y2;
        bool zooms;
    } rectangles[] = {{11, 20, 12, 150, true}, {12, 150, 11.5, 30, true}, {11, -30, 11.019, 199, false}, {11.5, 30, 11.521, 90, true},
                      {11, 50, 12, 50, false}, {9, -100, 14, 300, true},  {11, 20, 11, 20, false}};
    for (const auto& r : rectangles) {
        const Plot_State::Place a = quick.plot.Page_At({r.x1, r.y1}), b = quick.plot.Page_At({r.x2, r.y2});
        const View before = quick.plot.Shown_View();
        Zoom_To(quick, {true, a.x, a.y, b.x, b.y});
        SCOPED_TRACE(r.x1);
        const View& now = quick.plot.Shown_View();
        if (!r.zooms) {
            EXPECT_EQ(now, before);
            continue;
        }
        EXPECT_NEAR(now.x1, std::min(r.x1, r.x2), 1e-5);
        EXPECT_NEAR(now.x2, std::max(r.x1, r.x2), 1e-5);
        EXPECT_NEAR(now.y1, std::min(r.y1, r.y2), 1e-3);
        EXPECT_NEAR(now.y2, std::max(r.y1, r.y2), 1e-3);
    }
    EXPECT_EQ(quick.plot.Whole_Range(), whole);
    Read_Out(quick, quick.plot.Page_At({11.25, -12.54}));
    EXPECT_EQ(quick.status[2], "X=      11.2500");
    EXPECT_EQ(quick.status[3], "Y=        -12.5");
    Read_Out(quick, quick.plot.Page_At({11.25, 301}));
    EXPECT_EQ(quick.status[2] + quick.status[3], "");
    ASSERT_TRUE(Show_Quick_File(s, 2).ok());
    EXPECT_EQ(quick.plot.Shown_View(), whole) << "a new file, and no old view";
    Zoom_To(quick, {true, 300, 300, 500, 500});
    Show_Whole(quick);
    EXPECT_EQ(quick.plot.Shown_View(), whole);
}

TEST_F(Quick, AFileThatTurnedBadIsNamedAndPassedOver) {
    for (const char* name : {"1.prf", "2.prf", "3.prf"}) dir.Write("folder/" + std::string(name), Small_File());
    ASSERT_TRUE(Look());
    dir.Write("folder/2.prf", "no profile any more\n");
    const Status status = Show_Quick_File(s, 2);
    EXPECT_EQ(status.message, "ERROR in file: 2.prf\nERROR: Reading line 2");
    EXPECT_TRUE(status.of_file && !quick.Holds_Profile() && quick.index == 2);
    EXPECT_TRUE(Show_Quick_File(s, 3).ok() && quick.Holds_Profile());
    fs::remove_all(folder);
    EXPECT_EQ(Show_Quick_File(s, 1).message, "ERROR in file: 1.prf\nERROR 00: File not found");
    EXPECT_TRUE(!quick.Holds_Profile() && quick.Count() == 3);
}

// --- the way into the store ----------------------------------------------------------------------------------------------------------

struct Handing_Over : Quick {
    void SetUp() override {
        dir.Write("folder/taken.prf", Small_File());
        ASSERT_TRUE(Look());
        points = quick.pattern.x;
    }
    void Fill(int rows, const std::string& scat_var = "2theta") {
        for (int row = 0; row < rows; ++row) {
            PRF_Info_Add_Type info;
            info.kind = Row_Kind::data;
            s.store.Append(Tiny_Pattern(12, 0, scat_var), std::move(info));
        }
        Set_Xspace(s, scat_var);
        Plot_Ranges(s);
    }
    // What it opened, with the boxes; nobody but the store has noticed.
    bool Take() {
        ask.boxes.clear();
        const Open_Result result = Hand_Over(s, ask);
        Plot_Ranges(s);
        EXPECT_TRUE(Check_Invariants(s).ok()) << Check_Invariants(s).message;
        EXPECT_EQ(quick.pattern.x, points);
        EXPECT_EQ(quick.pattern.scat_var, "2theta");
        return result.opened;
    }
    std::vector<float> points;
    const std::string question = "Warning|The main window contain a PRF profile:\ntaken.prf\nDo you want overwrite this profile?";
};

TEST_F(Handing_Over, AddsARowOrTakesThePlaceOfTheRefinedOne) {
    Row_Change(s, "nothing").Keep();
    EXPECT_TRUE(Take());
    ASSERT_EQ(s.store.nperfiles(), 1);
    EXPECT_TRUE(ask.boxes.empty() && s.store.prf_loaded && s.plot.plot_type == Plot_Form::single);
    EXPECT_EQ(s.store.Pattern(1).x, points);
    EXPECT_EQ(s.store.Info(1).refl_label, quick.info.refl_label);
    EXPECT_EQ(s.store.Info(1).directory, folder);
    EXPECT_EQ(s.recent.Slot(1), folder + "/taken.prf");

    s.store.Pattern(1).y[0] = 7;
    ask.answer = Box_Answer::no;
    EXPECT_FALSE(Take());
    EXPECT_EQ(ask.boxes, Texts{question});
    EXPECT_EQ(s.store.Pattern(1).y[0], 7);
    ask.answer = Box_Answer::yes;
    EXPECT_TRUE(Take());
    EXPECT_EQ(s.store.nperfiles(), 1);
    EXPECT_NE(s.store.Pattern(1).y[0], 7);
}

TEST_F(Handing_Over, TheFormOfTheMainWindowMustTakeIt) {
    Fill(3);
    for (const Plot_Form form : {Plot_Form::calculation, Plot_Form::multi_log, Plot_Form::contour, Plot_Form::contour_log,
                                 Plot_Form::graph3d, Plot_Form::surface}) {
        ask.boxes.clear();
        s.plot.plot_type = form;
        EXPECT_FALSE(Hand_Over(s, ask).opened);
        EXPECT_EQ(ask.boxes, Texts{"Warning|Unable to add profile to main\nwindow in mode 2D contour, 3D, 3D Surf\nor fitting"});
        EXPECT_EQ(s.store.nperfiles(), 3);
    }
    s.plot.plot_type = Plot_Form::multi;
    EXPECT_TRUE(Take());
    EXPECT_EQ(s.store.nperfiles(), 4);
}

TEST_F(Handing_Over, ASpaceThatCannotTakeItSaysSo) {
    Fill(1, "TOF");
    EXPECT_FALSE(Take());
    EXPECT_EQ(ask.boxes,
              Texts{"Error Message|Present space: TOF, file in 2theta,\nIt is not possible to merge different scattering variables"});
    EXPECT_EQ(s.store.nperfiles(), 1);
}

// The copy goes to d by the wavelength of the file, and not the profile in hand: Take looks.
TEST_F(Handing_Over, TheRowIsBroughtToThePresentSpace) {
    Fill(1, "d-spacing");
    EXPECT_TRUE(Take());
    const float sine = std::sin(points.back() * std::numbers::pi_v<float> / 360);
    EXPECT_NEAR(s.store.Pattern(2).x.front(), 1.54056f / 2 / sine, 1e-5);
    EXPECT_EQ(s.store.Info(2).kind, Row_Kind::prf);
}

TEST_F(Handing_Over, AFullTableTakesItInThePlaceOfARefinedProfileAlone) {
    const std::string full = "Error Message|The maximum number of profiles has been attained!";
    Fill(2000);
    ask.answer = Box_Answer::yes;
    EXPECT_FALSE(Take());
    EXPECT_EQ(ask.boxes, Texts{full});
    s.store.Drop_Last();
    EXPECT_TRUE(Take());
    EXPECT_TRUE(ask.boxes.empty());
    EXPECT_EQ(s.store.nperfiles(), 2000);
    s.store.Pattern(2000).y[0] = 7;
    EXPECT_TRUE(Take());
    EXPECT_EQ(ask.boxes, Texts{question});
    EXPECT_NE(s.store.Pattern(2000).y[0], 7);
}

}  // namespace
}  // namespace vntl
