// Saving a pattern through the real program: the dialogs, the questions, what cannot be written, and that what was saved opens again.
#include <sys/stat.h>

#include "app/testing.hpp"
#include "base/text.hpp"

namespace vntl {
namespace {

class Save_Pattern : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        std::string columns = "! Legend_X d(A)\n! Scattering variable: d-spacing\n";
        for (int i = 0; i < 40; ++i) columns += std::to_string(1 + 0.01 * i) + ' ' + std::to_string(100 + i * i) + " 12.5\n";
        std::ofstream(directory / "d.xye") << columns;
        std::ofstream(directory / "angles.xye") << Replace_All(columns, "d-spacing", "2theta");
        fs::create_directories(directory / "dir.old/again");
    }
    // Statements behind semicolons; "dat X" and "xys X" save as X, the latter as its dialog stands.
    Run_Result Do(const std::string& statements, int status = 0, const std::string& environment = {}) {
        std::string text;
        std::istringstream in(statements);
        for (std::string one; std::getline(in, one, ';');)
            text += one.starts_with("dat ")   ? "files " + one.substr(4) + "\ncommand 40208\n"
                    : one.starts_with("xys ") ? "files " + one.substr(4) + "\ncommand 40209\npress 1\n"
                                              : one + '\n';
        Run_Result run = Script(text, {}, environment);
        EXPECT_EQ(run.status, status) << statements << '\n' << run.output << run.errors;
        return run;
    }
    std::string Saved(const std::string& name) const { return Text_Of(directory / name); }
};

TEST_F(Save_Pattern, WhatWasSavedOpensAndIsSavedAgainToTheSameBytes) {
    Do("open d.xye;xys d;dat d;dat dir.old/e;command 40019;open d.xys;xys dir.old/again/d.xys");
    EXPECT_NE(Saved("d.xys").find("\n! File name: d.xys\n! Scattering variable: d-spacing\n     d(A)     Intensity     Sigma\n"),
              std::string::npos);
    EXPECT_EQ(Saved("dir.old/again/d.xys"), Saved("d.xys"));
    EXPECT_EQ(Saved("dir.old/e.dat"), Saved("d.dat"));                     // the point of a directory is no extension
    Script("press 1\nfiles dir.old/again/d\ncommand 40208\n", {"d.dat"});  // past the question about its format
    EXPECT_EQ(Saved("dir.old/again/d.dat"), Saved("d.dat"));

    // Rows beyond the twentieth keep no uncertainties.
    std::string rows, hidden;
    for (int row = 1; row <= 21; ++row) rows += "open angles.xye;";
    for (int row = 1; row <= 20; ++row) hidden += "cell 1736 3 " + std::to_string(row) + " 0;";
    const std::string last_shown = "command 40023;" + hidden + "press 1739;press 1740;";
    const auto run = Do(rows + "xys first;" + last_shown + "xys last;open last.xys;command 40023;cell 1736 3 21 0;press 1739;press 1740;" +
                        "xys dir.old/last");
    EXPECT_NE(Saved("first.xys").find("12.5000\n"), std::string::npos);
    EXPECT_EQ(Saved("last.xys").find("12.5000\n"), std::string::npos);
    EXPECT_EQ(Saved("dir.old/last.xys"), Saved("last.xys"));
}

TEST_F(Save_Pattern, ADialogChoosesRangeAndBackground) {
    const auto run = Do("open angles.xye;files a;command 40209;print dialog;set \"Xmin =\" 1.2;set \"Xmax =\" 1.3;set \"B =\" 100;press 1");
    const Json dialog = run.With("dialog").at(0);
    EXPECT_EQ(dialog["title"], "Export Data as *.xys");
    for (const auto& [label, value] :
         std::vector<std::pair<std::string, std::string>>{{"Xmin =", "1"}, {"Xmax =", "1.38"}, {"A =", "0.0000"}, {"B =", "0.0000"}})
        EXPECT_NE(dialog.dump().find("\"label\":\"" + label + "\",\"value\":\"" + value), std::string::npos) << label << dialog;
    const std::string text = Saved("a.xys");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 6 + 11) << text;
    EXPECT_NE(text.find("        1.2000          400.0000         12.5000\n"), std::string::npos) << text;

    EXPECT_EQ(Do("open angles.xye;command 40209;set \"A =\" much;print dialog;press 1;print dialog;press 2", 1).Marked().back().size(), 1u);
    Do("open angles.xye;files b;command 40209;set \"Xmin =\" 500;press 1");
    EXPECT_EQ(Saved("b.xys"), Replace_All(text.substr(0, Saved("b.xys").size()), "a.xys", "b.xys"));  // the head alone
}

TEST_F(Save_Pattern, AFileThatIsThereIsReplacedOnlyWhereTheUserSaysSo) {
    for (const bool dat : {true, false})
        for (const char* answer : {"yes", "no", ""}) {
            const std::string name = dat ? "old.dat" : "old.xys";
            std::ofstream(directory / name) << "of old";
            const auto run =
                Do("open angles.xye;" + (*answer != '\0' ? "answer " + std::string(answer) + ';' : "") + (dat ? "dat old" : "xys old.xys"));
            const Json box = run.With("box").back();
            EXPECT_EQ(box["box"], dat ? "Overwrite DAT file?" : "Overwrite XY file?");
            EXPECT_EQ(box["text"], "The file exist,\nDo you want overwrite it?");
            EXPECT_EQ(Saved(name) == "of old", answer != std::string("yes")) << name << answer;
        }
    const auto left = Do("open angles.xye;files cancel;command 40208;command 40209;press 2;print rows");
    EXPECT_EQ(left.Boxes().size(), 1u) << left.output;
}

TEST_F(Save_Pattern, WhatCannotBeWrittenIsToldAndTheOldFileStays) {
    const std::string of_dat = "Unable to write Free Format Pattern File!", of_xys = "Unable to write XY Pattern File!";
    for (const char* name : {"old.dat", "old.xys"}) {
        std::ofstream(directory / name) << "of old";
        ::chmod((directory / name).c_str(), 0444);
    }
    for (const std::string name : {"old", "dir.old", "nowhere/new"}) {
        EXPECT_EQ(Do("open angles.xye;answer yes;dat " + name + (name == "dir.old" ? "/" : ""), 1).Boxes().back(), of_dat) << name;
        EXPECT_EQ(Do("open angles.xye;answer yes;xys " + name + (name == "dir.old" ? "/" : ""), 1).Boxes().back(), of_xys) << name;
    }
    // Files may not grow beyond two kilobytes, as on a disk that is full.
    const std::string full = "sh -c 'trap \"\" XFSZ; ulimit -f 4; exec \"$@\"' sh";
    for (const char* name : {"old.dat", "old.xys"}) ::chmod((directory / name).c_str(), 0644);
    const auto run = Do("open angles.xye;answer yes;xys old.xys;print state", 1, full);
    EXPECT_TRUE(run.Boxes().back().starts_with(of_xys + "\nNothing of it was written; the disk may be full: ")) << run.output;
    EXPECT_EQ(Saved("old.dat") + Saved("old.xys"), "of oldof old");
}

TEST_F(Save_Pattern, WithoutARowShownThereIsNothingToSave) {
    const std::string hide = "open angles.xye;command 40023;cell 1736 3 1 0;press 1739;press 1740;";
    for (const std::string save : {"dat a", "command 40209"})
        EXPECT_EQ(Do(hide + save).Boxes().back(), "Number of Points to Save was Wrong!") << save;
    EXPECT_FALSE(fs::exists(directory / "a.dat"));
}

}  // namespace
}  // namespace vntl
