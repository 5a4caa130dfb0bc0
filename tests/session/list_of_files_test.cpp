// Lists of files through every door: their rows, who is asked and told, and what is left where one of their files fails.
#include "session/list_of_files.hpp"

#include "base/os.hpp"
#include "base/text.hpp"
#include "base/write_file.hpp"
#include "patterns/prf_files.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

using Names = std::vector<std::string>;

std::string Records(int first_y, int columns = 3) {
    std::string text = "title\n";
    for (int i = 0; i < 15; ++i) text += std::to_string(10 + i) + ' ' + std::to_string(first_y + i) + " 1" + (columns > 3 ? " 7\n" : "\n");
    return text + "0 0 0\n";
}

// The first values of the rows, which tell the files apart.
std::string First_Values(const Session& s) {
    std::string text;
    for (int row = 1; row <= s.store.nperfiles(); ++row) text += std::to_string(static_cast<int>(s.store.Pattern(row).y.at(0))) + " ";
    return text;
}

struct Lists : testing::Test {
    Test_Directory dir;
    Session s;
    Scripted_Ask ask;
    std::string a = dir.Write("a.xye", Records(100)), b = dir.Write("b.xye", Records(200)), c = dir.Write("c.xye", Records(300));
    std::string tof = dir.Write("tof.xye", "t\n! Scattering variable: TOF\n" + Records(400)),
                curve = dir.Write("curve.xye", Records(500, 4));
    std::string dat = dir.Write("plain.dat", "10.0 1.0 24.0 my sample\n1 2 3 4 5 6 7 8\n9 10 11 12 13 14 15\n");

    // What stood in the store before a list of one more line fails or not.
    Open_Result Open(Session& session, const std::string& text) { return Open_Buffer_File(session, ask, dir.Write("list.buf", text)); }
};

TEST_F(Lists, EveryDoorGivesTheSameRows) {
    const std::string list = dir.Write("run.buf", "COMMENT a furnace\nTITLE Heating\n" + b + "\na.xye\n\ncurve.xye\n");
    const auto by_door = [&](int door, Session& session) {
        Open_Result result;
        ask.selection = {list};
        if (door == 0) return Open_Buffer_File(session, ask);
        if (door == 1) return Open_Buffer_File(session, ask, "run.buf");
        if (door == 2) return Open_Files(session, ask, {"run.buf"});
        if (door == 3) return Open_Pattern_File(session, ask);
        EXPECT_TRUE(Open_File_By_Extension(session, ask, list, result).ok());
        return result;
    };
    for (int door = 0; door < 5; ++door) {
        Session session;
        const Open_Result result = by_door(door, session);
        EXPECT_EQ(First_Values(session), "200 100 500 ") << door;
        EXPECT_EQ(result.rows_added, 3);
        EXPECT_EQ(result.notice, "a furnace");
        EXPECT_FALSE(result.failed);
        EXPECT_TRUE(session.store.profiles_uniform);
        for (int row = 1; row <= 3; ++row) {
            EXPECT_EQ(session.store.Pattern(row).title, "Heating");
            EXPECT_EQ(session.store.Info(row).kind, Row_Kind::data);
            EXPECT_FALSE(session.store.show_ycalc_of[static_cast<std::size_t>(row - 1)]);
        }
        EXPECT_EQ(session.recent.Slot(1), list);
        EXPECT_EQ(session.recent.Slot(2), "-");
        EXPECT_TRUE(Check_Invariants(session).ok()) << Check_Invariants(session).message;
    }
    EXPECT_TRUE(ask.boxes.empty() && ask.questions.empty()) << ask.Last_Box();
    EXPECT_EQ(ask.selector_title, "Select data files to open");
    ask.selection.clear();
    EXPECT_TRUE(Open_Buffer_File(s, ask).cancelled);
    EXPECT_EQ(ask.selector_title + '|' + ask.selector_filter, "Load Buffer Data File|Buffer Data File (*.buf)|*.buf|");

    // Among other names its files stand in its place, and a curve of a refinement outside of the list stays one.
    Open_Files(s, ask, {c, list, curve, "run.buf"});
    EXPECT_EQ(First_Values(s), "300 200 100 500 500 200 100 500 ");
    EXPECT_EQ(s.store.Info(5).kind, Row_Kind::rietv);
    EXPECT_EQ(s.recent.Slot(1) + s.recent.Slot(2) + s.recent.Slot(3), list + curve + c);
    EXPECT_EQ(s.store.Pattern(5).title, "title");
}

TEST_F(Lists, OneQuestionAboutNamesThatDoNotTellTheirFormat) {
    const std::string list = dir.Write("mixed.buf", "a.xye\nplain.dat\nplain.dat\n");
    EXPECT_TRUE(Open_Buffer_File(s, ask, list).cancelled);
    EXPECT_TRUE(Open_Files(s, ask, {list, b}).cancelled);
    EXPECT_EQ(s.recent.Slot(1), "-");
    ask.format = 1;
    EXPECT_EQ(Open_Files(s, ask, {b, list}).rows_added, 4);
    ASSERT_EQ(ask.questions.size(), 3u);
    EXPECT_EQ(ask.questions.back().files, (Names{"plain.dat", "plain.dat"}));
    EXPECT_EQ(First_Values(s), "200 100 1 1 ");
    EXPECT_EQ(Open_Files(s, ask, {list}, 9).rows_added, 0);  // a format that is told rules all, and nobody is asked
    EXPECT_EQ(ask.questions.size(), 3u);
}

// Each leaves the store as it is.
TEST_F(Lists, WhatIsNoListIsRefused) {
    dir.Make("folder.buf");
    const std::string unable = "Error Message|Unable to read buffer file ";
    const struct {
        std::string name, text, reason;
    } cases[] = {
        {"empty.buf", "", "It names no file"},
        {"opening.buf", "TITLE x\nCOMMENT y\n\n", "It names no file"},
        {"itself.buf", "a.xye\nitself.buf\n", "It names a list of files: " + dir.path + "/itself.buf"},
        {"other.buf", "a.xye\n/d/OTHER.BUF\n", "It names a list of files: /d/OTHER.BUF"},
        {"named so", "a.xye\nnamed so\n", "It names a list of files: " + dir.path + "/named so"},
        {"folder.buf", "", "Is a directory: " + dir.path + "/folder.buf"},
        {"zip.buf", "PK\3\4" + std::string(400, '\7'), "This is a binary file (zip archive), which no reader takes"},
        {"bytes.buf", std::string("a.xye\n\0\1\2\3\4\n", 12), "This is a binary file, which no reader takes"},
        {"huge.buf", std::string(20 << 20, 'n'), "Line 1 is no name of a file"},
        {"data.buf", Records(1), "The contents look like the format XYSIGMA"},
        {"a.xye", Records(100), "It is no list of files"},
    };
    Open_Files(s, ask, {c});
    for (const auto& [name, text, reason] : cases) {
        const std::string path = name == "folder.buf" ? dir.path + "/folder.buf" : dir.Write(name, text);
        const Open_Result result = Open_Buffer_File(s, ask, path);
        EXPECT_TRUE(result.failed && result.rows_added == 0) << name;
        EXPECT_EQ(ask.Last_Box(), unable + path + '\n' + reason);
    }
    EXPECT_TRUE(Open_Buffer_File(s, ask, "absent.buf").failed);
    EXPECT_EQ(ask.Last_Box(), "File doesn't exist...|File doesn't exist\n" + dir.path + "/absent.buf");
    EXPECT_EQ(First_Values(s), "300 ");
    EXPECT_EQ(s.recent.Slot(1), c);

    EXPECT_TRUE(Open_Files(s, ask, {"absent.buf", b, "empty.buf"}).failed);
    EXPECT_EQ(ask.Last_Box(), "Error Message|1 opened, 2 refused\n\nFile doesn't exist\n" + dir.path + "/absent.buf\n\n" +
                                  unable.substr(unable.find('|') + 1) + dir.path + "/empty.buf\nIt names no file");
    EXPECT_EQ(First_Values(s), "300 200 ");
}

TEST_F(Lists, AFileThatFailsLeavesNoRowAndOneThatDoesNotFitIsPassedOver) {
    dir.Write("words.xye", "title\nno numbers\n");
    dir.Make("folder.xye");
    const struct {
        std::string name, reason;
    } fails[] = {{"absent.xye", "The file " + dir.path + "/absent.xye doesn't exist"},
                 {"words.xye", "Error reading a profile DATA file of XYSigma format"},
                 {"folder.xye", "Error opening the file: " + dir.path + "/folder.xye"},
                 {"absent.dat", "The file " + dir.path + "/absent.dat doesn't exist"}};
    for (const auto& [name, reason] : fails) {
        Session session;
        Open_Files(session, ask, {c, curve});
        session.lists.peaks.push_back({});
        const Open_Result result = Open_Files(session, ask, {a, dir.Write("list.buf", "b.xye\ntof.xye\n" + name + "\na.xye\n"), b});
        EXPECT_TRUE(result.failed && result.rows_added == 0 && result.notice.empty());
        EXPECT_EQ(session.store.nperfiles(), 0) << name;
        EXPECT_TRUE(session.lists.peaks.empty());
        EXPECT_EQ(ask.Last_Box().find("Error Message|ERROR Opening file: " + dir.path + '/' + name + '\n' + reason), 0u) << ask.Last_Box();
        EXPECT_NE(ask.Last_Box().find("\nNo profile is left.\n\ntof.xye: Present space"), std::string::npos) << ask.Last_Box();
        EXPECT_TRUE(Check_Invariants(session).ok()) << Check_Invariants(session).message;
        EXPECT_EQ(session.recent.Slot(1), dir.path + "/list.buf");  // to be opened again when the file is there
    }
    ask.boxes.clear();
    EXPECT_EQ(Open(s, "a.xye\ntof.xye\nb.xye\n").rows_added, 2);
    ASSERT_EQ(ask.boxes.size(), 1u);
    EXPECT_EQ(ask.boxes[0].find("Error Message|2 opened, 1 refused\n\ntof.xye: Present space"), 0u) << ask.boxes[0];
    EXPECT_EQ(First_Values(s), "100 200 ");
}

TEST_F(Lists, TheStoreTakesItsMostAndOneBoxSaysSo) {
    std::string text;
    for (int i = 0; i < 1'000'000; ++i) text += "a.xye\n";
    EXPECT_EQ(Open(s, text).rows_added, max_profiles);
    EXPECT_EQ(ask.boxes, Names{"Error Message|" + std::string(table_full_text)});
    // Names that bring no row are read on, up to a bound.
    Session other;
    ask.boxes.clear();
    Open_Files(other, ask, {a});
    std::string refused;
    for (int i = 0; i < 20'003; ++i) refused += "tof.xye\n";
    EXPECT_EQ(Open(other, refused).rows_added, 0);
    ASSERT_EQ(ask.boxes.size(), 1u);
    EXPECT_EQ(ask.boxes[0].find("Error Message|0 opened, 20000 refused\n"), 0u) << ask.boxes[0].substr(0, 200);
    EXPECT_TRUE(ask.boxes[0].ends_with("\n\nand 18001 more")) << ask.boxes[0].substr(ask.boxes[0].size() - 200);
}

TEST_F(Lists, WhatIsSavedOpensAgainAndIsSavedTheSame) {
    std::string banks = "two banks\n";
    for (int bank = 1; bank <= 2; ++bank) {
        banks += "BANK " + std::to_string(bank) + " 20 20 CONST 2000 50 0 0 STD";
        for (int i = 0; i < 20; ++i) banks += (i % 10 == 0 ? "\n     " : "     ") + std::to_string(400 + i);
        banks += '\n';
    }
    const std::string gsa = dir.Write("banks.gsa", banks),
                      prf = dir.Write("p.prf", test::Whole(test::Columns(test::Make_Model(1, 3, false))));
    Open_Files(s, ask, {b, a, curve, a, prf});
    ask.format = 10, ask.all_banks = true;
    EXPECT_EQ(Open_Pattern_File(s, ask, gsa).rows_added, 2);
    s.store.Append_Copy(1);
    s.store.Info(s.store.nperfiles()).kind = Row_Kind::copy;
    std::string text;
    ASSERT_TRUE(List_Of_Rows(s, text).ok());
    EXPECT_EQ(text, b + '\n' + a + '\n' + a + '\n' + gsa + '\n') << "neither the calculated curve, nor the refinement, nor the copy";

    const auto saved_again = [&](const std::string& list) {
        Session session;
        EXPECT_FALSE(Open(session, list).failed) << ask.Last_Box();
        std::string again;
        EXPECT_TRUE(List_Of_Rows(session, again).ok());
        return again;
    };
    const std::string kinds =
        a + '\n' + dir.Write("blank  name.Xye", Records(1)) + '\n' + dir.Write("#1.XYS", Records(1)) + '\n' + a + '\n';
    const std::size_t asked = ask.questions.size();
    EXPECT_EQ(saved_again(kinds), kinds);
    EXPECT_EQ(ask.questions.size(), asked);
    EXPECT_EQ(saved_again(text), text);
    EXPECT_EQ(ask.questions.size(), asked + 1);

    s.store.Info(2).file_name = "a\nb.xye";
    EXPECT_EQ(List_Of_Rows(s, text).message, "A list cannot hold the name of row 2");
    Session empty;
    ASSERT_TRUE(List_Of_Rows(empty, text).ok());
    EXPECT_EQ(text, "");
}

}  // namespace
}  // namespace vntl
