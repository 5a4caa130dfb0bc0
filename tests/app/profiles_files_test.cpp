// Profile files of a refinement through the real program: each way in, the question about a second one, and what fails.
#include "app/testing.hpp"
#include "patterns/prf_files.hpp"

namespace vntl {
namespace {

class Profiles : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        const test::Model a = test::Make_Model(2, 10, false), b = test::Make_Model(3, 6, true);
        test::Model flight = a;
        flight.flight = true, flight.cosine = 7476.9;
        const std::string good = test::Whole(test::Columns(a));
        const std::pair<const char*, std::string> files[] = {{"a.prf", good},
                                                             {"b.PRF", test::Whole(test::Classic(b))},
                                                             {"peaks.xrf", test::Whole(test::Peak_Fit(a))},
                                                             {"single.prf", test::Whole(test::Integrated(b))},
                                                             {"flight.prf", test::Whole(test::Columns(flight, 8))},
                                                             {"cut.prf", good.substr(0, 3000)},
                                                             {"igor.prf", "IGOR\nX\n"},
                                                             {"data.xye", "data\n10 1 1\n10.1 2 1\n10.2 3 1\n10.3 4 1\n"}};
        for (const auto& [name, text] : files) std::ofstream(directory / name) << text;
    }
    // Statements behind semicolons. "load X" selects X for the command that opens a profile file, "?" prints what there is.
    Run_Result Do(const std::string& statements, int status = 0, const std::vector<std::string>& files = {}) {
        std::string text;
        std::istringstream in(statements);
        for (std::string one; std::getline(in, one, ';');)
            text += one == "?"                 ? "print rows\nprint reflections 1\nprint excluded 1\nprint data 1\nprint state\n"
                    : one.starts_with("load ") ? "files " + one.substr(5) + "\ncommand 40016\n"
                                               : one + '\n';
        Run_Result run = Script(text, files);
        EXPECT_EQ(run.status, status) << statements << '\n' << run.output << run.errors;
        return run;
    }
    // Names and kinds of the rows, in order.
    static std::string Rows(const Run_Result& run) {
        std::string all;
        for (const Json& row : run.With("kind")) all += row["file_name"].get<std::string>() + ' ' + row["kind"].get<std::string>() + ' ';
        return all;
    }
};

TEST_F(Profiles, EveryWayInGivesTheSameRow) {
    const auto first = Do("load a.prf;?");
    EXPECT_EQ(Rows(first), "a.prf PRF ");
    EXPECT_EQ(first.With("plot_type").at(0)["prf_loaded"], true);
    EXPECT_EQ(first.With("reflections").at(0)["reflections"].size(), 27u);
    EXPECT_EQ(first.With("excluded").at(0)["excluded"].size(), 2u);
    const auto tail = [](const Run_Result& run) { return Rows(run) + run.output.substr(run.output.find("{\"row\":1,\"reflections\"")); };
    EXPECT_EQ(tail(Do("drop a.prf;?")), tail(first));
    EXPECT_EQ(tail(Do("?", 0, {"a.prf"})), tail(first));
    EXPECT_EQ(tail(Do("load a.prf;command 40019;command 40038;?")), tail(first));  // reset, then the first of the recent files
    for (const char* picture : {"a.png", "a.pdf", "a.svg"}) {
        EXPECT_EQ(Run({"--export", picture, "a.prf"}).status, 0) << picture;
        EXPECT_GT(fs::file_size(directory / picture), 2000u) << picture;
    }
}

TEST_F(Profiles, ThePictureHasATickForEachReflectionInEverySpace) {
    const auto run = Do("load a.prf;print picture;print menu 40095;print menu 40099;print menu 40154;command 40017;print picture");
    for (const Json& picture : run.With("lines")) {
        int ticks = 0;
        for (const Json& line : picture["lines"]) ticks += line["n"] == 2 && line["colour"] == 128 * 256;
        EXPECT_EQ(ticks, 27);
    }
    for (const Json& menu : run.With("enabled")) EXPECT_EQ(menu["enabled"], false) << menu;
    const auto there = Do("load a.prf;command 40017;answer yes;load b.PRF;?"), later = Do("load b.PRF;command 40017;?");
    for (const char* what : {"reflections", "excluded", "x"}) EXPECT_EQ(there.With(what), later.With(what)) << what;
}

TEST_F(Profiles, ASecondOneAsksToOverwrite) {
    for (const bool yes : {true, false}) {
        const auto run = Do("load a.prf;open data.xye;answer " + std::string(yes ? "yes" : "no") + ";load b.PRF;?");
        EXPECT_EQ(Rows(run), yes ? "b.PRF PRF data.xye DATA " : "a.prf PRF data.xye DATA ");
        EXPECT_EQ(run.With("reflections").at(0)["reflections"].size(), yes ? 39u : 27u);
        const std::string title = run.With("box").back()["box"], text = run.Boxes().back();
        EXPECT_EQ(title, "Warning");
        for (const char* part : {"The main window contain a PRF profile:", "a.prf", "Do you want overwrite this profile?"})
            EXPECT_NE(text.find(part), std::string::npos) << text;
    }
}

TEST_F(Profiles, WhatFailsLeavesNothingBehind) {
    const struct {
        const char *statements, *box, *rows;
        int status;
    } cases[] = {
        {"load a.prf b.PRF", "Trying to select more than one file!", "", 0},
        {"load igor.prf", "ERROR: file type IGOR", "", 1},
        {"load absent.prf", "ERROR 00: File not found", "", 1},
        {"load a.prf;load cut.prf", "Error reading profile for Prf=+3", "a.prf PRF ", 1},
        {"load a.prf;load flight.prf", "Present space: 2theta, file in TOF,", "a.prf PRF ", 0},
        {"load peaks.xrf;load single.prf", "Present Space: 2theta, file type Integrated Intensity,", "peaks.xrf PRF ", 0},
        {"load single.prf;load a.prf", "Present space: Integrated Intensity, file in 2theta,", "single.prf MONO ", 0},
        {"load flight.prf;load a.prf", "Present space: TOF, file in 2theta,", "flight.prf PRF ", 0},
        {"files cancel;command 40016", "", "", 0},
    };
    for (const auto& c : cases) {
        const auto run = Do(std::string(c.statements) + ";print rows;print state", c.status);
        EXPECT_EQ(Rows(run), c.rows) << c.statements;
        EXPECT_EQ(run.With("plot_type").at(0)["prf_loaded"], *c.rows != '\0') << c.statements;
        EXPECT_NE(run.Boxes().back().find(c.box), std::string::npos) << c.statements << ": " << run.Boxes().back();
    }
}

}  // namespace
}  // namespace vntl
