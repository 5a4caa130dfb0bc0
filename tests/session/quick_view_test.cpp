// The profile files of a directory: which of them are found and read, what is told of them, the view of the one in hand, and its way into
// the store. The files are written from one model of a refinement, whose numbers are what is expected.
#include "session/quick_view.hpp"

#include <sys/stat.h>

#include <cmath>

#include "patterns/prf_files.hpp"
#include "session/ranges.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;
namespace fs = std::filesystem;

test::Model Small_Model(double kelvin = 293.5, std::size_t points = 60) {
    test::Model model = test::Make_Model(1, 5, false, points);
    model.title = test::Form("Two oxides TEMP: %.3f", kelvin);
    model.zero = model.cosine = model.sine = 0;
    return model;
}
std::string Small_File(double kelvin = 293.5) { return Whole(test::Columns(Small_Model(kelvin))); }

struct Quick : testing::Test {
    Texts Names() const {
        Texts names;
        for (const Quick_File& file : quick.files) names.push_back(file.name);
        return names;
    }
    bool Look() { return Look_Through(s, ask, folder); }

    Test_Directory dir;
    std::string folder = dir.Make("folder");
    Session s;
    Quick_View& quick = s.quick_view;
    Scripted_Ask ask;
};

TEST_F(Quick, FilesOfEveryKindStandInTheOrderThatPeopleExpect) {
    test::Model model = Small_Model(), flight = Small_Model(4.2);
    flight.flight = true;
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
    EXPECT_EQ(quick.files[3].temperature, "   Temperature:     4.20 K --  -268.96 C");
    EXPECT_EQ(quick.files[4].temperature, "   Temperature:  1200.00 K --   926.84 C");
    for (int index = 1; index <= 8; ++index) {
        EXPECT_TRUE(Show_Quick_File(s, index).ok() && quick.plot.Shown_View().Drawable()) << index;
        EXPECT_EQ(quick.info.kind, index == 2 ? Row_Kind::mono : Row_Kind::prf);
    }
}

TEST_F(Quick, ADirectoryThatCannotBeLookedThroughLeavesWhatWasThere) {
    dir.Write("folder/good.prf", Small_File());
    ASSERT_TRUE(Look());
    const std::string file = dir.Write("one.prf", Whole(test::Columns(Small_Model(5, 2)))), full = dir.Make("full");
    for (int i = 0; i < 2000; ++i) fs::create_hard_link(file, full + '/' + std::to_string(i) + (i % 2 == 0 ? ".prf" : ".xrf.prf"));
    fs::create_hard_link(file, full + "/more.XRF");
    const std::pair<std::string, std::string> rows[] = {
        {dir.Make("empty"), "No PRF/XRF file in the selected directory "},
        {dir.path + "/gone", "The directory " + dir.path + "/gone cannot be read: No such file or directory"},
        {full, "Too many PRF/XRF (> 400) files in the selected directory "}};
    for (const auto& [directory, text] : rows) {
        EXPECT_FALSE(Look_Through(s, ask, directory));
        EXPECT_EQ(ask.Last_Box(), "Error Message|" + text);
    }
    fs::remove(full + "/more.XRF");
    for (const bool reading : {false, true}) {
        Cancelling_Ask cancelling(5, reading);
        EXPECT_FALSE(Look_Through(s, cancelling, full));
    }
    EXPECT_TRUE(quick.directory == folder && Names() == Texts{"good.prf"} && quick.Holds_Profile());
    EXPECT_TRUE(Look_Through(s, ask, full));
    EXPECT_EQ(quick.status[1], "( 1 / 2000 )");
    dir.Make("bad");
    dir.Write("bad/1.prf", "no");
    EXPECT_TRUE(Look_Through(s, ask, dir.path + "/bad"));
    EXPECT_EQ(ask.Last_Box(), "Error Message|No valid PRF file in the selected directory");
    EXPECT_TRUE(quick.Count() == 0 && quick.index == 0 && !quick.Holds_Profile() && quick.status[0].empty());
}

// 20 % below the intensities; a constant one has 5 % of it on both sides, or 1.
TEST_F(Quick, AFileStandsInItsWholeRangeAndIsNamedWhenItTurnedBad) {
    const struct {
        double low, high;
        std::size_t points;
        View whole;
        float base;
    } rows[] = {{100, 300, 60, {10, 12.95f, 60, 300}, 72},
                {1000, 1000, 20, {10, 10.95f, 950, 1050}, 993},
                {0, 0, 20, {10, 10.95f, -1, 1}, -0.14f},
                {-20, -20, 20, {10, 10.95f, -21, -19}, -20.14f},
                {100, 100, 1, {9.5f, 10.5f, 95, 105}, 99.3f}};
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        test::Model model = Small_Model(300, rows[i].points);
        for (std::size_t k = 0; k < model.y.size(); ++k) model.y[k] = k % 2 == 0 ? rows[i].low : rows[i].high;
        dir.Write("folder/" + std::to_string(i) + ".prf", Whole(test::Columns(model)));
    }
    ASSERT_TRUE(Look());
    for (int index = 1; const auto& row : rows) {
        ASSERT_TRUE(Show_Quick_File(s, index++).ok());
        const View view = quick.plot.Shown_View();
        EXPECT_FLOAT_EQ(view.x1, row.whole.x1);
        EXPECT_FLOAT_EQ(view.x2, row.whole.x2);
        EXPECT_FLOAT_EQ(view.y1, row.whole.y1);
        EXPECT_FLOAT_EQ(view.y2, row.whole.y2);
        EXPECT_FLOAT_EQ(quick.plot.diff_base, row.base);
    }
    dir.Write("folder/1.prf", "no profile any more\n");
    EXPECT_EQ(Show_Quick_File(s, 2).message, "ERROR in file: 1.prf\nERROR: Reading line 2");
    EXPECT_TRUE(!quick.Holds_Profile() && Show_Quick_File(s, 3).ok() && quick.Holds_Profile());
    fs::remove_all(folder);
    EXPECT_EQ(Show_Quick_File(s, 1).message, "ERROR in file: 0.prf\nERROR 00: File not found");
}

struct Handing_Over : Quick {
    void SetUp() override {
        dir.Write("folder/taken.prf", Small_File());
        ASSERT_TRUE(Look());
        points = quick.pattern.x;
    }
    void Fill(int rows, const std::string& scat_var = "2theta") {
        for (int row = 0; row < rows; ++row) s.store.Append(Tiny_Pattern(12, 0, scat_var), {});
        Set_Xspace(s, scat_var);
        Plot_Ranges(s);
    }
    // The box that it led to, "" for none; the profile in hand stays as it is.
    std::string Take(bool opens) {
        ask.boxes.clear();
        EXPECT_EQ(Hand_Over(s, ask).opened, opens);
        Plot_Ranges(s);
        EXPECT_TRUE(Check_Invariants(s).ok()) << Check_Invariants(s).message;
        EXPECT_TRUE(quick.pattern.x == points && quick.pattern.scat_var == "2theta");
        return ask.Last_Box();
    }
    std::vector<float> points;
    const std::string question = "Warning|The main window contain a PRF profile:\ntaken.prf\nDo you want overwrite this profile?";
};

TEST_F(Handing_Over, AddsARowOrTakesThePlaceOfTheRefinedOneUpToAFullTable) {
    Fill(2000);
    EXPECT_EQ(Take(false), "Error Message|The maximum number of profiles has been attained!");
    s.store.Drop_Last();
    EXPECT_EQ(Take(true), "");
    EXPECT_TRUE(s.store.nperfiles() == 2000 && s.store.prf_loaded && s.store.Pattern(2000).x == points);
    EXPECT_EQ(s.recent.Slot(1), folder + "/taken.prf");
    s.store.Pattern(2000).y[0] = 7;
    ask.answer = Box_Answer::no;
    EXPECT_EQ(Take(false), question);
    EXPECT_EQ(s.store.Pattern(2000).y[0], 7);
    ask.answer = Box_Answer::yes;
    EXPECT_EQ(Take(true), question);
    EXPECT_NE(s.store.Pattern(2000).y[0], 7);
}

TEST_F(Handing_Over, TheMainWindowMustBeAbleToTakeIt) {
    Fill(2, "TOF");
    EXPECT_EQ(Take(false), "Error Message|Present space: TOF, file in 2theta,\nIt is not possible to merge different scattering variables");
    Fill(1, "d-spacing");  // to which the copy is brought
    EXPECT_EQ(Take(true), "");
    EXPECT_NEAR(s.store.Pattern(4).x.back(), 1.54056 / 2 / std::sin(points.front() * 3.14159265 / 360), 1e-4);
    for (const Plot_Form form :
         {Plot_Form::calculation, Plot_Form::multi_log, Plot_Form::contour, Plot_Form::graph3d, Plot_Form::surface}) {
        s.plot.plot_type = form;
        EXPECT_FALSE(Hand_Over(s, ask).opened);
        EXPECT_EQ(ask.Last_Box(), "Warning|Unable to add profile to main\nwindow in mode 2D contour, 3D, 3D Surf\nor fitting");
    }
}

}  // namespace
}  // namespace vntl
