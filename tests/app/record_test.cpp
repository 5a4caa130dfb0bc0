// Recording: the statements that are written down while a user, or another script, works do the same again.
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <thread>

#include "app/testing.hpp"

namespace vntl {
namespace {

class Record : public Program {
protected:
    // Runs statements (behind semicolons, "@" the mouse) under a recorder, then what was recorded: rows, state and pictures must be the
    // same.
    std::string Replay(const std::string& statements, const std::vector<std::string>& exported = {}) {
        std::string script;
        for (const char c : statements) script += c == ';' ? "\n" : c == '@' ? "mouse " : std::string(1, c);
        const std::string looks = "main\nprint rows\nprint state\nprint menu 40503\nprint menu 40504\nprint menu 40113\n";
        std::ofstream(directory / "a.vns") << script + "\n" + looks + "export a.png\n";
        const Run_Result first = Run({"--script", "a.vns", "--record", "b.vns"});
        for (const std::string& file : exported) fs::rename(directory / file, directory / ("first " + file));
        const std::string recorded = Text_Of(directory / "b.vns");
        const Run_Result second = Script(recorded + looks + "export b.png\n");
        EXPECT_EQ(second.errors, "") << recorded;
        EXPECT_EQ(second.status, first.status) << recorded << first.errors;
        const auto looked = [](const std::string& output) { return output.substr(std::min(output.find("{\"row\":"), output.size())); };
        EXPECT_EQ(looked(second.output), looked(first.output)) << recorded;
        EXPECT_GT(Text_Of(directory / "a.png").size(), 1000u) << first.errors;
        EXPECT_TRUE(Text_Of(directory / "a.png") == Text_Of(directory / "b.png")) << "the pictures differ\n" << recorded;
        for (const std::string& file : exported) {
            EXPECT_GT(Text_Of(directory / file).size(), file.ends_with(".buf") ? 10u : 1000u) << file;
            EXPECT_TRUE(Text_Of(directory / file) == Text_Of(directory / ("first " + file))) << file << " differs\n" << recorded;
        }
        return recorded;
    }
    static int Count(const std::string& text, const std::string& part) {
        int count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
        return count;
    }
};

TEST_F(Record, FilesDialogsAndTheMouse) {
    std::ofstream(directory / "columns.dat") << "t\n1 10 1\n2 20 1\n3 30 1\n4 20 1\n5 10 1\n";
    const std::string recorded = Replay(
        "resize 700 450;open columns.dat;set 1010 1;press OK;open columns.dat columns.dat;press Cancel;open columns.dat;set 1010 "
        "1;close;drop " +
            Pattern("eleven_points.dat") + ' ' + Pattern("calculated.xys") +
            ";@data move 5 50;@move 400.123456789 300;@down 250 200;@move 500 400;@up 950.5 640.25;@wheelup 333.3333333333 500;@wheeldown "
            "800 500;"
            "command 40226;@wheelup 600 300;command 40105;@down 600 400;@move 650.7 420;@move 700.1 300;@up 710 310;@down 500 400;@move "
            "600 500;"
            "key Escape;command 40505;press 1;command 40018;close;@down right 400 400;@down 300 300;@move 500 500;key Escape;@up 700 600;"
            "@wheelup 600 400;command 40106;command 40503;resize 900 600;command 40044;set 4803 1;files one.png;press OK;press OK;"
            "command 40044;files cancel;press OK;command 40044;set 4802 1;files \"two pages.svg\";press OK;set 4605 3;press OK;timer 3",
        {"one.png", "two pages.svg"});
    EXPECT_TRUE(recorded.starts_with("resize 800 500\nlist close\nresize 800 500\n") && recorded.ends_with("\n")) << recorded;
    EXPECT_EQ(Count(recorded, "\npress 2\n"), 2);
    EXPECT_EQ(Count(recorded, "\nmouse down "), 5);
    EXPECT_EQ(Count(recorded, "\ncommand 40044\nfiles cancel\npress 1\n"), 1);
    EXPECT_EQ(Count(recorded, "\nmouse move 650.7 420\nmouse move 700.1 300\n"), 1) << "each move under a button";
    EXPECT_EQ(Count(recorded, "\nmouse move "), 6) << "a free mouse leaves its last place alone\n" << recorded;
}

// A list that is opened again asks again.
TEST_F(Record, ListsOfFiles) {
    std::ofstream(directory / "columns.dat") << "t\n1 10 1\n2 20 1\n3 30 1\n4 20 1\n5 10 1\n";
    std::ofstream(directory / "two.buf") << "TITLE two\ncolumns.dat\n" << Pattern("rising.xye") << '\n';
    const std::string recorded = Replay(
        "files two.buf;command 40015;set 1010 1;press OK;command 40019;command 40038;set 1010 1;press OK;"
        "drop two.buf;press Cancel;files saved;command 40009;drop saved.buf;press OK",
        {"saved.buf"});
    EXPECT_EQ(Count(recorded, "\ncommand 40015\n"), 1) << recorded;
    EXPECT_EQ(Count(recorded, "\ndrop "), 3) << recorded;
}

TEST_F(Record, NamesOfEveryKind) {
    std::string script;
    for (const std::string name : {"two words.xye", "a\"quote.xye", "hash # mark.xye", "#first.xye", "back\\slash.xye", "end\\",
                                   "\xC3\xA9t\xC3\xA9 \xE6\xBC\xA2.xye", "tab\tin.xye", "'single'.xye", "-minus.xye", "cancel"}) {
        fs::copy_file(Pattern("rising.xye"), directory / name);
        std::string word;
        for (const char c : name) word += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
        script += "drop \"" + word + "\";open \"" + word + (name.ends_with("xye") ? "\";" : "\";press 1;");
    }
    EXPECT_EQ(Count(Replay(script + "command 40068;command 40027"), "40068"), 0) << "a recent file is written down by its name";
    std::ofstream(directory / "c.vns") << "quit\n";
    fs::copy_file(Pattern("rising.xye"), directory / "broken\nquit\r.xye");
    for (const std::size_t count : {1u, 2u}) {
        std::vector<std::string> arguments = {"--script", "c.vns", "--record", "d.vns", "broken\nquit\r.xye", Pattern("rising.xye")};
        arguments.resize(4 + count);
        Run(arguments);
        const std::string recorded = Text_Of(directory / "d.vns");
        EXPECT_EQ(Count(recorded, "\nquit"), 0) << "a name with a line end stays one line";
        EXPECT_EQ(Script(recorded + "print state\n").With("plot_type").at(0)["nperfiles"], count) << recorded;
    }
    for (const std::vector<std::string>& files : {std::vector<std::string>{"two words.xye"}, {"'single'.xye", "#first.xye"}}) {
        std::vector<std::string> arguments = {"--script", "c.vns", "--record", "d.vns"};
        arguments.insert(arguments.end(), files.begin(), files.end());
        std::ofstream(directory / "c.vns") << "mouse wheelup 600 400\nprint data 1\nprint state\n";
        const Run_Result first = Run(arguments), second = Script(Text_Of(directory / "d.vns") + "print data 1\nprint state\n");
        EXPECT_EQ(second.With("plot_type").at(0)["nperfiles"], files.size());
        EXPECT_EQ(second.output, first.output) << Text_Of(directory / "d.vns");
    }
}

TEST_F(Record, WhichWindowIsInFront) {
    const std::string recorded = Replay("command 40107;resize 500 300;main;drop " + Pattern("rising.xye") +
                                        ";command 40106;dialog 41;command 40521;main;command 40505;close");
    EXPECT_EQ(Count(recorded, "\nmain\n"), 3) << recorded;
}

TEST_F(Record, PreferencesThatAScriptOrAUserSets) {
    const std::string recorded =
        Replay("open " + Pattern("rising.xye") +
               ";pref title_single \"a # \\\"title\\\"\";command 40106;pref frame_background 9,8,7;command 40033;colour 1 2 3;press \"Line "
               "preferences/1/Colour\";set 1/Match 0;colour 4 5 6;press \"Marker preferences/1/Colour\";set Title/Size 30;set \"Label "
               "Y/Position\" "
               "Top/Vert;set Pages 8;set \"Title for graph single file\" \"ends in a blank \";press Apply;set Title/Size 50;press Exit");
    EXPECT_EQ(Count(recorded, "\npref "), 2) << recorded;
}

TEST_F(Record, WhatIsTypedIntoTheEditor) {
    const std::string typed = "command 40107;key a;key Space;key Enter;key !;key \xC3\xA9;key \\;files text.txt;command 40513";
    Replay(typed);
    EXPECT_EQ(Text_Of(directory / "text.txt"), "a \n!\xC3\xA9\\") << "and not an empty one in its place";
}

TEST_F(Record, AFileThatIsNotToBeWrittenIsRefusedBeforeAnythingIsRead) {
    std::ofstream(directory / "a.vns") << "print state\n";
    fs::copy_file(Pattern("rising.xye"), directory / "named.xye");
    fs::create_symlink("named.xye", directory / "link.vns");
    std::ofstream(directory / "notes.vns") << "print state\nopen questions\nremember the milk\n";
    std::ofstream(directory / "remarks.txt") << "# open the door\n";
    std::ofstream(directory / "marked.vns") << "quit\n";
    fs::permissions(directory / "marked.vns", fs::perms::owner_read);
    for (const std::string file : {"no/such/directory.vns", "home", "/dev/null/x", "/dev/full", "a.vns", "./a.vns", "named.xye", "link.vns",
                                   "home/../named.xye", "new.xye", "notes.vns", "marked.vns", "remarks.txt"})
        for (const std::string script : {"a.vns", "missing.vns"}) {
            if (file.ends_with("a.vns") && script != "a.vns") continue;
            const Run_Result run = Run({"--script", script, "--record", file, "named.xye", "new.xye"});
            EXPECT_EQ(run.status, 2) << file;
            EXPECT_NE(run.errors.find(file), std::string::npos) << run.errors;
            EXPECT_EQ(run.output, "");
        }
    EXPECT_EQ(Text_Of(directory / "named.xye"), Text_Of(Pattern("rising.xye")));
    EXPECT_EQ(Text_Of(directory / "a.vns"), "print state\n");
    for (const char* old : {"", " \n", "# none yet\n", "# a session\nopen \"a b\"\n\nquit\n"}) {
        std::ofstream(directory / "b.vns") << old;
        EXPECT_EQ(Run({"--script", "a.vns", "--record", "b.vns"}).status, 0) << old;
        EXPECT_TRUE(Text_Of(directory / "b.vns").starts_with("resize ")) << old;
    }
}

// The suite's last directory becomes the working one; names of the command line are those of the directory at start.
TEST_F(Record, StandsInTheDirectoryAtStart) {
    fs::create_directories(directory / "suite");
    std::ofstream(directory / "suite/vantrelo.dir") << (directory / "suite").string() << '\n';
    std::ofstream(directory / "a.vns") << "print state\n";
    fs::copy_file(Pattern("rising.xye"), directory / "a.xye");
    const std::string suite = "QUENDRIX=" + Quoted(directory / "suite");
    EXPECT_EQ(Run({"--script", "a.vns", "--record", "b.vns", "a.xye"}, suite).status, 0);
    EXPECT_EQ(Count(Text_Of(directory / "b.vns"), "\nopen " + (directory / "a.xye").string() + "\n"), 1) << Text_Of(directory / "b.vns");
}

TEST_F(Record, AFullDiskIsToldOnceAndAtOnce) {
    std::ofstream script(directory / "a.vns");
    for (int i = 0; i < 600; ++i) script << "timer 3\n";  // more than eight blocks of 512 bytes
    script << "print state\n";
    script.close();
    const Run_Result run = Run({"--script", "a.vns", "--record", "b.vns"}, "sh -c 'ulimit -f 8; exec \"$@\"' sh");
    EXPECT_EQ(run.status, 1) << run.errors;
    EXPECT_EQ(Count(run.output, "The recording cannot be written.\\n"), 1) << run.output;
    EXPECT_LT(run.output.find("The recording"), run.output.find("plot_type")) << run.output;
    const std::string recorded = Text_Of(directory / "b.vns"), first = "resize 800 500\nlist close\nresize 800 500\nstyle Default rows\n",
                      each = "timer 3\n";
    EXPECT_EQ(recorded.size(), first.size() + each.size() * ((8 * 512 - first.size()) / each.size())) << "whole statements alone";
    EXPECT_TRUE(recorded.ends_with('\n' + each));
}

TEST_F(Record, WhatWasDoneIsOnDiskWhenTheProgramIsKilled) {
    std::ofstream script(directory / "a.vns");
    script << "open " + Pattern("rising.xye") + "\nmouse wheelup 600 400\ncommand 40111\ncommand 40106\ncommand 40021\n";
    for (int i = 0; i < 100000; ++i) script << "print data 1\n";
    script.close();
    const std::string a = directory / "a.vns", b = directory / "b.vns", home = directory / "home";
    const pid_t child = ::fork();
    if (child == 0) {
        ::setenv("HOME", home.c_str(), 1);
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        ::freopen("/dev/null", "w", stdout);
        ::execl(VANTRELO_PROGRAM, "vantrelo", "--script", a.c_str(), "--record", b.c_str(), nullptr);
        ::_exit(127);
    }
    for (int i = 0; i < 3000 && Count(Text_Of(b), "command 40106") == 0; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    for (int i = 0; i < 100 && Count(Text_Of(b), "command 40021") == 0; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "it was over already";
    const std::string recorded = Text_Of(b);
    EXPECT_EQ(Count(recorded, "rising.xye\ncommand 40014\nmouse wheelup 600 400\ncommand 40111\ncommand 40106\ncommand 40021\n"), 1)
        << recorded;
    EXPECT_TRUE(recorded.ends_with('\n')) << "no statement in part";
}

}  // namespace
}  // namespace vntl
