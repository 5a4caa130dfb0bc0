// Constants of instrument files: which bank a row takes, what is refused, and what lies beside a pattern.
#include "session/row_constants.hpp"

#include <algorithm>
#include <functional>

#include "base/text.hpp"
#include "patterns/sample_files.hpp"
#include "session/changes.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

const std::string flight_file =
    "#Bank 1: a\nType:PNT\ndifC:5000\ndifA:-1.5\nZero:-8.5\n#Bank 4: b\ndifC:7000\nType:PNT\n#Bank 6: c\nType:PNC\nLam:1.9\n";
const std::string tube = "INS   HTYPE   PXCR\nINS  1 ICONS  1.540500  1.544300       0.0         0       0.7    0       0.5\n";
const std::string line = "Type:PXC\nLam:0.4\nZero:0.01\n";

class Choosing_Ask : public Scripted_Ask {
public:
    bool Banks_Of_Rows(Instrument_Question& question, const Bank_Check& check) override {
        questions.push_back(question);
        if (choose) choose(question);
        const Wrong_Bank found = check(question);
        wrong.push_back(std::to_string(found.row) + ' ' + found.text);
        return found.text.empty();
    }
    std::function<void(Instrument_Question&)> choose;
    std::vector<Instrument_Question> questions;
    std::vector<std::string> wrong;
};

struct Row_Constants : testing::Test {
    // A file of the layouts, its first line that of an instrument file where one is named.
    std::string Pattern(const std::string& name, const std::string& as, const std::string& head = {}) {
        const auto files = test::Sample_Files(40);
        const auto file = std::ranges::find(files, name, &test::Sample_File::name);
        std::string text = file->text;
        if (!head.empty()) text.insert(text.find('\n') + 1, head + '\n');
        return dir.Write(as, text);
    }
    std::string Convs() const {
        std::string text;
        for (int row = 1; row <= s.store.nperfiles(); ++row)
            for (int i = 0; i < 3; ++i) text += test::Printed("%g%s", s.store.Pattern(row).conv[i], i < 2 ? " " : "; ");
        return text;
    }
    std::string Take(const std::string& file) {
        notice.clear();
        const Status status = Constants_From_File(s, ask, file, notice);
        return status.cancelled ? "cancelled" : status.message;
    }
    void Open_Banks() {
        ask.format = 11;
        ask.all_banks = true;
        Open_Pattern_File(s, ask, Pattern("several.gda", "banks.dat"));
        ASSERT_EQ(s.store.nperfiles(), 2);
    }

    Test_Directory dir;
    Session s;
    Choosing_Ask ask;
    std::string notice;
};

TEST_F(Row_Constants, EachRowTakesItsBankAndUndoGivesThemBack) {
    const std::string file = dir.Write("Flight.instprm", flight_file);
    Open_Banks();
    EXPECT_EQ(ask.boxes.size(), 0u) << ask.Last_Box();
    const auto sigma = s.store.Pattern(1).sigma, x = s.store.Pattern(1).x;
    s.store.Pattern(1).conv[2] = 9;
    EXPECT_EQ(Take(file), "");
    EXPECT_EQ(Convs(), "5000 -1.5 9; 7000 0 0; ");
    EXPECT_TRUE(s.store.Pattern(1).sigma == sigma && s.store.Pattern(1).x == x);  // zero is not applied
    EXPECT_TRUE(Contains(notice, "not used, of bank 1: zero = -8.5")) << notice;
    EXPECT_EQ(s.recent.Slot(1), file);
    EXPECT_EQ(s.store.changes.Text_To_Undo(), "constants from Flight.instprm of 2 profiles");
    EXPECT_TRUE(Undo_Change(s));
    EXPECT_EQ(Convs(), "0 0 9; 0 0 0; ");
    ASSERT_EQ(ask.questions.size(), 1u);
    EXPECT_EQ(ask.questions[0].banks.size(), 3u);

    s.store.Pattern(2).bank = 3;  // not in the file: no neighbour stands in for it
    EXPECT_EQ(Take(file), "cancelled");
    EXPECT_EQ(ask.wrong.back(), "2 Flight.instprm has no bank 3 for banks.dat");
    const std::pair<std::function<void(Instrument_Question&)>, std::string> choices[] = {
        {[](auto& q) { q.rows[1].bank = 6; }, "2 Bank 6 of Flight.instprm tells wavelengths"},
        {[](auto& q) { q.rows[1].bank = 0; }, "2 Flight.instprm has no bank 0 for banks.dat"},
        {[](auto& q) { q.rows[0].chosen = q.rows[1].chosen = false; }, "0 No row is chosen"},
        {[](auto& q) { q.rows[1].chosen = false; }, "0 "}};
    for (const auto& [choose, told] : choices) {
        ask.choose = choose;
        Take(file);
        EXPECT_EQ(ask.wrong.back(), told);
    }
    EXPECT_EQ(Convs(), "5000 -1.5 9; 0 0 0; ");
}

TEST_F(Row_Constants, WhatDoesNotFitIsRefusedByASentence) {
    const std::string angles = dir.Write("Tube.prm", tube), times = dir.Write("Flight.instprm", "Type:PNT\ndifC:5000\n"),
                      other = dir.Write("other.prm", "a = 1\n");
    EXPECT_TRUE(Contains(Take(angles), "open a pattern first"));
    Open_Files(s, ask, {Pattern("std.gsas", "cw.gsas")});
    ASSERT_EQ(s.store.nperfiles(), 1);
    EXPECT_EQ(Take(times), "Flight.instprm tells constants of time of flight,\nand the profiles are in 2theta");
    EXPECT_EQ(Take(other), "ERROR in file: other.prm\nThis is no instrument parameter file");
    EXPECT_TRUE(Contains(Take(dir.path + "/none.prm"), "none.prm"));
    EXPECT_EQ(Take(""), "cancelled");  // the selector
    s.store.Pattern(1).bank = 7;       // of angles: the only bank is the diffractometer's
    EXPECT_EQ(Take(angles), "");
    EXPECT_EQ(Convs(), "1.5405 1.5443 0.5; ");
    ASSERT_TRUE(Convert_Xspace(s, ask, X_Space::d_space).ok());
    EXPECT_FALSE(s.interface.Enabled(command::constants_from_file));
    EXPECT_EQ(Take(angles),
              "Constants can be given while x is 2theta or TOF.\nThe profiles are shown over d-space: go back by the menu X space first");
    ASSERT_TRUE(Convert_Xspace(s, ask, X_Space::two_theta).ok());
    EXPECT_TRUE(s.interface.Enabled(command::constants_from_file));
    s.interface.Enable(command::constants_from_file, false);
    Reset_Profiles(s);
    Open_Files(s, ask, {Pattern("several.gda", "t.gda")});
    EXPECT_EQ(Take(angles), "Tube.prm tells wavelengths,\nand the profiles are in TOF");
}

TEST_F(Row_Constants, PatternsThatTellTheirWavelengthKeepIt) {
    const std::string file = Pattern("std.gsas", "cw.gsas", "# lambda 1.25");
    dir.Write("cw.prm", tube);
    ask.answer = Box_Answer::yes;
    Open_Files(s, ask, {file});
    EXPECT_EQ(Convs(), "1.25 0 0; ");
    EXPECT_TRUE(ask.boxes.empty()) << ask.Last_Box();
}

// A file of the pattern's own name goes before the one of its head; what cannot be used is as if it were not there.
TEST_F(Row_Constants, WhatLiesBesideIsOfferedOnce) {
    struct Case {
        std::string beside, text, head, conv;
    };
    const Case cases[] = {
        {"cw.instprm", line, "", "0.4 0 0; "},
        {"CW.PRM", tube, "", "1.5405 1.5443 0.5; "},
        {"cw.Iparm", tube, "", "1.5405 1.5443 0.5; "},
        {"Lab.prm", tube, "Instrument parameter file:LAB.prm", "1.5405 1.5443 0.5; "},
        {"lab.ins", tube, "Instrument parameter file: C:\\data\\lab.ins  ", "1.5405 1.5443 0.5; "},
        {"lab.prm", tube, "", "0 0 0; "},
        {"cw.prm", flight_file.substr(0, 60), "", "0 0 0; "},
        {"cw.prm", "another program's\n", "", "0 0 0; "},
        {"cw.txt", tube, "", "0 0 0; "},
    };
    for (const Case& c : cases) {
        const Test_Directory here;
        const std::string file = Pattern("std.gsas", "cw.gsas", c.head);
        std::filesystem::copy_file(file, here.path + "/cw.gsas");
        const std::string beside = here.Write(c.beside, c.text);
        const bool offered = c.conv[0] != '0' || c.conv[1] == '.';
        for (const Box_Answer answer : {Box_Answer::no, Box_Answer::yes}) {
            Reset_Profiles(s);
            ask.boxes.clear();
            ask.answer = answer;
            Open_Files(s, ask, {here.path + "/cw.gsas", here.path + "/cw.gsas"});
            ASSERT_EQ(s.store.nperfiles(), 2) << c.beside;
            const std::string expected = answer == Box_Answer::yes ? c.conv : "0 0 0; ";
            EXPECT_EQ(Convs(), expected + expected) << c.beside;
            EXPECT_EQ(ask.boxes.size(), offered ? 1u : 0u) << c.beside << ask.Last_Box();
            EXPECT_EQ(Contains(ask.Last_Box(), "cw.gsas and 1 more: lambda") && Contains(ask.Last_Box(), c.beside), offered)
                << ask.Last_Box();
        }
        EXPECT_EQ(s.store.changes.Text_To_Undo(), offered ? "constants of instrument files of 2 profiles" : "");
        ask.boxes.clear();
        Reset_Profiles(s);
        Open_Files(s, ask, {beside, here.path + "/cw.gsas"});  // named with it: asked about, not offered
        const bool good = c.text == tube || c.text == line, by_name = c.beside != "cw.txt" && c.beside != "lab.ins";
        EXPECT_TRUE(!by_name || ask.boxes.size() == (good ? 0u : 1u)) << c.beside << ask.Last_Box();
    }
}

TEST_F(Row_Constants, BanksOfFlightAreOfferedTheirOwnAlone) {
    dir.Write("banks.instprm", flight_file);
    ask.answer = Box_Answer::yes;
    Open_Banks();
    EXPECT_EQ(Convs(), "5000 -1.5 0; 7000 0 0; ");
    EXPECT_TRUE(Contains(ask.Last_Box(), "Not used: zero = -8.5")) << ask.Last_Box();
    Reset_Profiles(s);
    dir.Write("banks.instprm", "#Bank 3\nType:PNT\ndifC:5000\n");
    ask.boxes.clear();
    Open_Pattern_File(s, ask, dir.path + "/banks.dat");
    EXPECT_EQ(Convs(), "0 0 0; 0 0 0; ");
    EXPECT_TRUE(ask.boxes.empty()) << ask.Last_Box();
    // One bank alone is opened: bank 1, wherever it stands.
    ask.all_banks = false;
    const std::string several = Test_Directory::Contents(dir.path + "/banks.dat");
    for (const std::string& text : {several, Replace_All(Replace_All(several, "BANK 1 ", "BANK 9 "), "BANK 4 ", "BANK 1 ")})
        for (const auto& [beside, conv] :
             {std::pair{std::string("#Bank 3\nType:PNT\ndifC:5000\n"), "0 0 0; "}, {flight_file, "5000 -1.5 0; "}}) {
            Reset_Profiles(s);
            dir.Write("banks.instprm", beside);
            dir.Write("banks.dat", text);
            Open_Pattern_File(s, ask, dir.path + "/banks.dat");
            EXPECT_EQ(Convs(), conv) << text.substr(0, 60);
        }
}

}  // namespace
}  // namespace vntl
