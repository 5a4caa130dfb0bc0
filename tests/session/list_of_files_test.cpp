// Lists of files: their rows through each door, who is asked and told, and what is left where one of their files fails.
#include "session/list_of_files.hpp"

#include "patterns/prf_files.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

using Names = std::vector<std::string>;

std::string Records(int first_y, const char* behind = "") {
    std::string text = "title\n";
    for (int i = 0; i < 15; ++i) text += std::to_string(10 + i) + ' ' + std::to_string(first_y + i) + " 1" + behind + '\n';
    return text + "0 0 0\n";
}

// First value, title and kind of each row.
std::string Rows(const Session& s) {
    std::string text;
    for (int row = 1; row <= s.store.nperfiles(); ++row)
        text += std::to_string(static_cast<int>(s.store.Pattern(row).y.at(0))) + ' ' + s.store.Pattern(row).title + ' ' +
                std::string(Told(s.store.Info(row).kind)) + (s.store.show_ycalc_of[static_cast<std::size_t>(row - 1)] ? " curve; " : "; ");
    EXPECT_TRUE(Check_Invariants(s).ok()) << Check_Invariants(s).message;
    return text;
}

struct Lists : testing::Test {
    Test_Directory dir;
    Session s;
    Scripted_Ask ask;
    std::string a = dir.Write("a.xye", Records(100)), b = dir.Write("b.xye", Records(200)), curve = dir.Write("c.xye", Records(500, " 7")),
                tof = dir.Write("tof.xye", "t\n! Scattering variable: TOF\n" + Records(400)),
                dat = dir.Write("plain.dat", "10.0 1.0 24.0 free\n1 2 3 4 5 6 7 8\n9 10 11 12 13 14 15\n");

    Open_Result Open(Session& session, const std::string& text) { return Open_Buffer_File(session, ask, dir.Write("list.buf", text)); }
};

TEST_F(Lists, TheirFilesStandInTheirPlace) {
    const std::string list = dir.Write("run.buf", "COMMENT a furnace\nTITLE Hot\n" + b + "\na.xye\n\nc.xye\n");
    const std::string rows = "200 Hot DATA; 100 Hot DATA; 500 Hot DATA; ";
    ask.selection = {list};
    for (int door = 0; door < 4; ++door) {
        Session session;
        Open_Result result;
        if (door == 0) result = Open_Buffer_File(session, ask);
        if (door == 1) result = Open_Files(session, ask, {"run.buf"});
        if (door == 2) result = Open_Pattern_File(session, ask);
        if (door == 3) result.failed = Open_File_By_Extension(session, ask, list, result).failed || result.failed;
        EXPECT_EQ(Rows(session), rows) << door;
        EXPECT_TRUE(!result.failed && result.rows_added == 3 && result.notice == "a furnace" && session.store.profiles_uniform);
        EXPECT_EQ(session.recent.Slot(1) + session.recent.Slot(2), list + '-');
    }
    Open_Files(s, ask, {a, list, curve, "run.buf"});
    EXPECT_EQ(Rows(s), "100 title DATA; " + rows + "500 title RIETV curve; " + rows);
    EXPECT_EQ(s.recent.Slot(1) + s.recent.Slot(2) + s.recent.Slot(3), list + curve + a);
    EXPECT_TRUE(ask.boxes.empty() && ask.questions.empty()) << ask.Last_Box();
    ask.selection.clear();
    EXPECT_TRUE(Open_Buffer_File(s, ask).cancelled);
    EXPECT_EQ(ask.selector_title + '|' + ask.selector_filter, "Load Buffer Data File|Buffer Data File (*.buf)|*.buf|");
}

TEST_F(Lists, OneQuestionAboutNamesThatDoNotTellTheirFormat) {
    const std::string list = dir.Write("mixed.buf", "a.xye\nplain.dat\nplain.dat\n");
    EXPECT_TRUE(Open_Files(s, ask, {list, b}).cancelled);
    EXPECT_EQ(s.recent.Slot(1), "-");
    ask.format = 1;
    EXPECT_EQ(Open_Files(s, ask, {b, list}).rows_added, 4);
    EXPECT_EQ(ask.questions.back().files, (Names{"plain.dat", "plain.dat"}));
    EXPECT_EQ(Rows(s), "200 title DATA; 100 title DATA; 1 free DATA; 1 free DATA; ");
    Open_Files(s, ask, {list}, 9);  // a format that is told rules all, and nobody is asked
    EXPECT_EQ(ask.questions.size(), 2u);
}

TEST_F(Lists, WhatIsNoListIsRefusedAndTheStoreStays) {
    dir.Make("folder.buf");
    const std::string at = dir.path + '/', unable = "Unable to read buffer file " + at;
    const struct {
        std::string name, text, reason;
    } cases[] = {
        {"opening.buf", "TITLE x\nCOMMENT y\n\n", "It names no file"},
        {"itself.buf", "a.xye\nitself.buf\n", "It names a list of files: " + at + "itself.buf"},
        {"other.buf", "a.xye\n/d/OTHER.BUF\n", "It names a list of files: /d/OTHER.BUF"},
        {"named so", "a.xye\nnamed so\n", "It names a list of files: " + at + "named so"},
        {"folder.buf", "", "Is a directory: " + at + "folder.buf"},
        {"bytes.buf", std::string("a.xye\n\0\1\2\3\4\n", 12), "This is a binary file, which no reader takes"},
        {"huge.buf", std::string(20 << 20, 'n'), "Line 1 is no name of a file"},
        {"data.buf", Records(1), "The contents look like the format XYSIGMA"},
        {"a.xye", Records(100), "It is no list of files"},
    };
    Open_Files(s, ask, {b});
    for (const auto& [name, text, reason] : cases) {
        dir.Write(name, text);
        EXPECT_TRUE(Open_Buffer_File(s, ask, name).failed);
        EXPECT_EQ(ask.Last_Box(), "Error Message|" + unable + name + '\n' + reason);
    }
    EXPECT_TRUE(Open_Buffer_File(s, ask, "absent.buf").failed);
    EXPECT_EQ(ask.Last_Box(), "File doesn't exist...|File doesn't exist\n" + at + "absent.buf");
    EXPECT_TRUE(Open_Files(s, ask, {"absent.buf", a, "opening.buf"}).failed);
    EXPECT_EQ(ask.Last_Box(), "Error Message|1 opened, 2 refused\n\nFile doesn't exist\n" + at + "absent.buf\n\n" + unable +
                                  "opening.buf\nIt names no file");
    EXPECT_EQ(Rows(s), "200 title DATA; 100 title DATA; ");
}

TEST_F(Lists, AFileThatFailsLeavesNoRowAndOneThatDoesNotFitIsPassedOver) {
    const std::string words = dir.Write("words.xye", "title\nno numbers\n"), absent = dir.path + "/absent.dat";
    for (const auto& [name, reason] : {std::pair(words, std::string("Error reading a profile DATA file of XYSigma format")),
                                       std::pair(absent, "The file " + absent + " doesn't exist")}) {
        const std::string list = dir.Write("list.buf", "b.xye\ntof.xye\n" + name + "\na.xye\n");
        Open_Files(s, ask, {curve});
        s.lists.peaks.push_back({});
        const Open_Result result = Open_Files(s, ask, {a, list, b});
        EXPECT_TRUE(result.failed && result.rows_added == 0 && Rows(s).empty() && s.lists.peaks.empty());
        EXPECT_EQ(ask.Last_Box().find("Error Message|ERROR Opening file: " + name + '\n' + reason + "\nNo profile is left.\n\ntof.xye: "),
                  0u)
            << ask.Last_Box();
        EXPECT_EQ(s.recent.Slot(1), list);  // to be opened again when the file is there
    }
    EXPECT_EQ(Open(s, "a.xye\ntof.xye\nb.xye\n").rows_added, 2);
    EXPECT_EQ(ask.Last_Box().find("Error Message|2 opened, 1 refused\n\ntof.xye: Present space"), 0u) << ask.Last_Box();
    EXPECT_EQ(Rows(s), "100 title DATA; 200 title DATA; ");
}

TEST_F(Lists, TheStoreTakesItsMostAndOneBoxSaysSo) {
    std::string million, refused;
    for (int i = 0; i < 1'000'000; ++i) million += "a.xye\n";
    for (int i = 0; i < 20'003; ++i) refused += "tof.xye\n";
    EXPECT_EQ(Open(s, million).rows_added, max_profiles);
    EXPECT_EQ(ask.boxes, Names{"Error Message|" + std::string(table_full_text)});
    // Names that bring no row are read on, up to a bound.
    Session other;
    Open_Files(other, ask, {a});
    EXPECT_EQ(Open(other, refused).rows_added, 0);
    EXPECT_EQ(ask.boxes.size(), 2u);
    EXPECT_EQ(
        ask.boxes[1].find("Error Message|0 opened, 20000 refused\n\nlist.buf: too many names, those from line 20001 on were left out\n"),
        0u)
        << ask.boxes[1].substr(0, 200);
    EXPECT_TRUE(ask.boxes[1].ends_with("\n\nand 18001 more")) << ask.boxes[1].substr(ask.boxes[1].size() - 200);
}

TEST_F(Lists, WhatIsSavedOpensWithoutAQuestionAndIsSavedTheSame) {
    const std::string ranges = dir.Write("two  ranges.UXD", "_STEPSIZE=1\n_START=10\n_COUNTS\n1 2 3\n_START=20\n_COUNTS\n4 5 6\n");
    const std::string prf = dir.Write("p.prf", test::Whole(test::Columns(test::Make_Model(1, 3, false))));
    const auto saved = [](const Session& session) {
        std::string text;
        EXPECT_TRUE(List_Of_Rows(session, text).ok());
        return text;
    };
    EXPECT_EQ(saved(s), "");
    EXPECT_EQ(Open_Files(s, ask, {b, curve, ranges, prf, a, a}).rows_added, 7);
    s.store.Info(s.store.Append_Copy(1)).kind = Row_Kind::copy;
    const std::string text = saved(s);
    EXPECT_EQ(text, b + '\n' + ranges + '\n' + a + '\n' + a + '\n') << "neither a calculated curve, nor a refinement, nor a copy";
    Session again;
    EXPECT_EQ(Open(again, text).rows_added, 5);
    EXPECT_EQ(saved(again), text);
    EXPECT_TRUE(ask.boxes.empty() && ask.questions.empty()) << ask.Last_Box();
    s.store.Info(1).file_name = "a\nb.xye";
    std::string none;
    EXPECT_EQ(List_Of_Rows(s, none).message, "A list cannot hold the name of row 1");
}

}  // namespace
}  // namespace vntl
