// The list of patterns in the real window: acts of scripts, their undo, and a recording that leads there again.
#include <algorithm>

#include "app/testing.hpp"

namespace vntl {
namespace {

class Pattern_List : public Program {
protected:
    static std::string Look(const Json& list) {
        std::string look;
        for (const Json& row : list["rows"])
            look += (row["shown"] == true ? "" : "-") + row["text"].get<std::string>() + (row["chosen"] == true ? "* " : " ");
        return look;
    }
    // Of each `print list`. What the window shows is what the session has.
    static std::vector<std::string> Looks(const Run_Result& run) {
        std::vector<std::string> looks;
        for (const Json& list : run.With("list")) {
            EXPECT_TRUE(list["carried"] == true || list["list"] == false) << list;
            looks.push_back(Look(list));
        }
        return looks;
    }
    // Patterns named a to d.
    void Make_Files() const {
        std::string points;
        for (int i = 0; i < 20; ++i) points += std::to_string(10 + i) + ' ' + std::to_string(5 + i % 7) + " 1\n";
        for (const char* name : {"a", "b", "c", "d"}) Write(std::string(name) + ".xye", points);
    }
    static std::string Opened() { return "drop a.xye b.xye c.xye d.xye\nlist open\n"; }
};

TEST_F(Pattern_List, EachActIsAStatementAndGoesBack) {
    Make_Files();
    const struct {
        const char *statement, *look;
    } acts[] = {{"list tick 2 3 off", "a.xye -b.xye -c.xye d.xye "},
                {"list move 4 before 1", "d.xye a.xye -b.xye -c.xye "},
                {"list choose 2 3", "d.xye a.xye* -b.xye* -c.xye "},
                {"list move down", "d.xye -c.xye a.xye* -b.xye* "},
                {"command 40561", "-d.xye -c.xye a.xye* b.xye* "},
                {"list rename 1 \"At 300 K\"", "-At 300 K -c.xye a.xye* b.xye* "},
                {"command 40562", "-At 300 K -c.xye -a.xye* -b.xye* "},
                {"command 40563", "At 300 K c.xye a.xye* b.xye* "},
                {"command 40560", "At 300 K c.xye "},
                {"list choose 2\ncommand 40548\nset 4731 sea\npress OK", "At 300 K sea* "}};
    std::string script = Opened();
    std::vector<std::string> looks, back;
    for (const auto& act : acts) {
        script += std::string(act.statement) + "\nprint list\n";
        looks.push_back(act.look);
    }
    for (int i = 0; i < 3; ++i) script += "command 40506\nprint list\n";
    looks.insert(looks.end(), {"At 300 K c.xye* ", "At 300 K c.xye* a.xye* b.xye* ", "-At 300 K -c.xye* -a.xye* -b.xye* "});
    const Run_Result run = Script(script);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Looks(run), looks);
    EXPECT_TRUE(run.Told().empty());
}

TEST_F(Pattern_List, ARecordingLeadsThereAgain) {
    Make_Files();
    Write("acts.vns", Opened() +
                          "list width 210\nlist choose 1 2\nlist choose 3\nlist move up\nlist tick 1 off\nlist rename 2 \"x \\\" #\"\n"
                          "list point 4\nlist move 1 3 before 5\nprint list\nprint rows\nprint changes\n");
    const Run_Result first = Run({"--script", "acts.vns", "--record", "again.vns"});
    EXPECT_EQ(first.status, 0) << first.errors;
    const std::string recorded = Text_Of(directory / "again.vns");
    EXPECT_EQ(recorded.find("choose 1 2"), std::string::npos) << recorded;  // others were chosen at once
    Write("again.vns", recorded + "print list\nprint rows\nprint changes\n");
    const Run_Result again = Run({"--script", "again.vns"});
    EXPECT_EQ(again.status, 0) << again.errors;
    EXPECT_EQ(first.output, again.output);
    EXPECT_NE(first.output.find("\"width\":210"), std::string::npos) << first.output;
}

// The picture beside the list is the one of its size; closed, all is as before.
TEST_F(Pattern_List, ThePictureFitsBesideIt) {
    Make_Files();
    const Run_Result run = Script(
        "drop a.xye b.xye\nresize 700 500\nexport before.png\nlist open\nlist width 300\nresize 700 500\n"
        "export beside.png\nprint list\nlist choose 2\nlist close\nresize 700 500\nexport behind.png\nprint list\n"
        "command 40019\nlist open\nprint list\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Text_Of(directory / "before.png"), Text_Of(directory / "beside.png"));
    EXPECT_EQ(Text_Of(directory / "before.png"), Text_Of(directory / "behind.png"));
    EXPECT_EQ(Looks(run), (std::vector<std::string>{"a.xye b.xye ", "a.xye b.xye ", ""}));
}

TEST_F(Pattern_List, WhatCannotBeIsRefused) {
    Make_Files();
    const char* refused[] = {"list",         "list tick 5 off", "list tick 1",         "list choose x", "list move 1 before 6",
                             "list point 5", "list width 0",    "list rename 0 a",     "list rename 1", "list move 1 2",
                             "list sort",    "command 40560",   "list move 1 after 2", "list tick on"};
    std::string script = "list choose 1\n" + Opened();
    for (const char* statement : refused) script += std::string(statement) + '\n';
    script += "command 40025\nlist tick 1 off\nclose\n";                                          // a dialog holds it back
    script += "command 40031\nlist tick 1 off\nlist move 1 before 3\nprint state\nprint list\n";  // a map shows all rows
    const Run_Result run = Script(script);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(static_cast<std::size_t>(std::count(run.errors.begin(), run.errors.end(), '\n')), std::size(refused) + 2) << run.errors;
    EXPECT_EQ(Looks(run), std::vector<std::string>{"a.xye b.xye c.xye d.xye "});
}

}  // namespace
}  // namespace vntl
