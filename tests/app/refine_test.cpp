// Programs that are waited for, and the rows that they leave: stand-ins take their places, in a directory that PATH names first.
#include <algorithm>

#include "app/stand_ins.hpp"
#include "base/text.hpp"
#include "patterns/prf_files.hpp"

namespace vntl {
namespace {

using std::string_literals::operator""s;

class Refinement : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        fs::create_directories(directory / "elsewhere");
        stand_ins = Stand_Ins(directory / "bin", directory / "notes", {"xterm", "wqx2k", "Radiox"});
        const test::Model a = test::Make_Model(2, 10, false), b = test::Make_Model(3, 6, true);
        test::Model flight = a;
        flight.flight = true, flight.cosine = 7476.9;
        Write("notes/good", test::Whole(test::Columns(a)));
        Write("other.prf", test::Whole(test::Classic(b)));
        Write("notes/mono", test::Whole(test::Integrated(b)));
        Write("notes/flight", test::Whole(test::Columns(flight, 8)));
        Write("notes/pairs", test::Whole(test::Pair_Distribution(a)));
        Write("data.xye", "data\n10 1 1\n10.1 2 1\n10.2 3 1\n10.3 4 1\n");
        Write("r.pcr", Control(1));
        Write("r.dat", "");
        Write("r.osl", "");
    }

    static std::string Control(int job) { return "COMM x\n!Job Npr Nph\n " + std::to_string(job) + " 7 1\n"; }
    std::string Path(const std::string& name) const { return (directory / name).string(); }
    static std::string Run_On(const std::string& file) { return "files " + file + "\ncommand 40135\n"; }

    // The programs are started, but for `off`; `act`: what a stand-in does.
    Run_Result Do(const std::string& act, const std::string& script, bool off = false) const {
        for (const char* name : {"wqx2k", "Radiox"}) stand_ins.Do(name, act);
        return Script((off ? "" : "programs on\n") + ("pref quendrix_dir " + Word(Path("bin"))) + '\n' + script +
                          "print rows\nprint state\nprint paths\n",
                      {}, "PATH=" + Quoted(Path("bin")) + ":$PATH");
    }
    // Names and kinds of the rows at the end.
    static std::string Rows(const Run_Result& run) {
        std::string all;
        for (const Json& row : run.With("kind")) all += row["file_name"].get<std::string>() + ' ' + row["kind"].get<std::string>() + ' ';
        return all;
    }
    static Json View(const Json& state) { return {state["plot_type"], state["x_view_min"], state["x_view_max"], state["y_view_max"]}; }
    // One box with this in it; blank for none.
    static void Expect_Box(const Run_Result& run, const std::string& part, const std::string& of) {
        const Texts told = run.Told();
        EXPECT_EQ(told.size(), part.empty() ? 0u : 1u) << of << run.output;
        EXPECT_TRUE(told.empty() || Contains(told[0] + '|', part)) << of << told[0];
    }

    Stand_Ins stand_ins;
};

constexpr const char* not_found = "Error loading PRF file ...\nPRF File not found";
constexpr const char* unknown = "Error loading PRF file ...\nUnknown PRF Format";
constexpr const char* open_data = "open data.xye\n";
constexpr const char* other_space = "Present space: 2theta, file in TOF,";

TEST_F(Refinement, TheResultOfARunIsARow) {
    const auto run = Do("cp \"$notes/good\" \"$1.prf\"", Run_On("r.pcr") + "command 40017\nprint state\n" + Run_On("r.pcr"));
    EXPECT_EQ(run.status, 0) << run.output << run.errors;
    EXPECT_EQ(Rows(run), "r.prf PRF ");
    Expect_Box(run, "", "its own row is replaced without a question, in the space that the user has chosen");
    for (const Json& state : run.With("plot_type"))
        EXPECT_EQ((Json{state["xspace"], state["plot_type"], state["prf_loaded"]}), (Json{"d-space", "single", true}));
    EXPECT_EQ(run.With("paths").back()["paths"]["pcr_file"], Path("r.pcr"));
    EXPECT_EQ(run.With("plot_type").back()["status"][0], "Quendrix has ended");

    const auto radiox = Do("cp \"$notes/pairs\" \"${1%.osl}.prf\"", "files r.osl\ncommand 40207\nfiles r.osl\ncommand 40207\n");
    EXPECT_EQ(radiox.status, 0) << radiox.output << radiox.errors;
    EXPECT_EQ(Rows(radiox), "r.prf PRF ");
    EXPECT_EQ(radiox.With("xspace").back()["xspace"], "Distance");
    EXPECT_EQ(radiox.With("xspace").back()["ylabel_text"], "G(R) x 1000");
}

TEST_F(Refinement, WhatARunLeavesDecides) {
    const std::string open_other = "files other.prf\ncommand 40016\n";
    const std::string question = "The main window contain a PRF profile:\nother.prf\nDo you want overwrite this profile?|";
    const struct {
        std::string act, before;
        const char *old, *rows;
        std::string box;  // a part of what the box says; blank for none
        int status;
    } cases[] = {
        {"cp \"$notes/good\" \"$1.prf\"", "", "old", "r.prf PRF ", "", 0},
        {"cp \"$notes/good\" \"$1_1.prf\"", "", "old", "r_1.prf PRF ", "", 0},
        {"cp \"$notes/good\" \"$1.prf\"", open_data, nullptr, "data.xye DATA r.prf PRF ", "", 0},
        {"cp \"$notes/good\" \"$1.prf\"", open_other + "answer yes\n", nullptr, "r.prf PRF ", question, 0},
        {"cp \"$notes/good\" \"$1.prf\"", open_other + "answer no\n", nullptr, "other.prf PRF ", question, 0},
        {"cp \"$notes/flight\" \"$1.prf\"", open_data, nullptr, "data.xye DATA ", other_space, 0},
        {":", open_data, "old", "data.xye DATA ", not_found + "\nThe program has not written "s + Path("r.prf"), 1},
        {":", open_data, nullptr, "data.xye DATA ", not_found + "|"s, 1},
        {"kill -9 $$", "", nullptr, "", not_found, 1},
        {"head -c 3000 \"$notes/good\" >\"$1.prf\"; kill -9 $$", open_data, nullptr, "data.xye DATA ", unknown, 1},
        {"echo rubbish >\"$1.prf\"", "", nullptr, "", unknown, 1},
        {"mkdir \"$1.prf\"", "", nullptr, "", not_found, 1},
    };
    const auto clear = [&](const char* old) {
        fs::remove_all(directory / "r.prf");
        fs::remove_all(directory / "r_1.prf");
        if (old != nullptr) Write("r.prf", Text_Of(directory / "notes/good"));
    };
    for (const auto& c : cases) {
        clear(c.old);
        const auto run = Do(c.act, c.before + Run_On("r.pcr"));
        EXPECT_EQ(run.status, c.status) << c.act << run.errors;
        EXPECT_EQ(Rows(run), c.rows) << c.act;
        Expect_Box(run, c.box, c.act);
    }
    clear(nullptr);
    const auto nothing = Do(":", open_data + "command 40096\ncommand 40093\nmouse data down 10.2 3\nmouse data up 10.2 3\nprint peaks\n"s +
                                     Run_On("r.pcr") + "print peaks\n");
    EXPECT_EQ(nothing.With("peaks").at(0)["peaks"].size(), 1u);
    EXPECT_EQ(nothing.With("peaks")[0], nothing.With("peaks").at(1)) << "a run that brings nothing costs no list";
    const auto scale = Do("cp \"$notes/good\" \"$1.prf\"", "open data.xye data.xye\ncommand 40226\n" + Run_On("r.pcr"));
    EXPECT_EQ(scale.With("plot_type").back()["plot_type"], "multi_log");
    clear(nullptr);
    // Where it stands alone another kind of result takes its place; where it does not, it stays.
    Write("notes/kinds", "mono mono flight good good flight");
    const std::string next = "set -- $(cat \"$notes/kinds\"); cp \"$notes/$1\" r.prf; shift; echo \"$@\" >\"$notes/kinds\"";
    const auto alone = Do(next, Run_On("r.pcr") + Run_On("r.pcr") + "print rows\n" + Run_On("r.pcr") + "print state\n" + Run_On("r.pcr"));
    Expect_Box(alone, "", "alone");
    EXPECT_EQ(Rows(alone), "r.prf MONO r.prf PRF ");
    EXPECT_EQ(alone.With("xspace").at(0)["xspace"], "TOF");
    EXPECT_EQ(alone.With("xspace").at(1)["xspace"], "2theta");
    const auto beside = Do(next, open_data + Run_On("r.pcr") + Run_On("r.pcr"));
    Expect_Box(beside, other_space, "beside");
    EXPECT_EQ(Rows(beside), "data.xye DATA r.prf PRF ");
    EXPECT_EQ(beside.With("xspace").back()["xspace"], "2theta");
}

TEST_F(Refinement, AStoppedWaitLeavesEverythingAsItWas) {
    const std::string act = "cp \"$notes/good\" \"$1.prf\"; exec sleep 20";
    const auto run = Do(act, "open data.xye\ncommand 40137\nprint state\nfiles r.pcr\ncommand 40135\nresize 900 700\nkey Escape\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Rows(run), "data.xye DATA ");
    Expect_Box(run, "", "stopped");
    const std::vector<Json> states = run.With("plot_type");
    ASSERT_EQ(states.size(), 2u);
    EXPECT_EQ(states[1]["status"][0], "Quendrix goes on by itself");
    EXPECT_EQ(View(states[0]), View(states[1]));
    EXPECT_EQ(run.With("started").size(), 1u);

    fs::remove(directory / "bin/wqx2k");
    const auto missing = Do("", open_data + Run_On("r.pcr"));
    Expect_Box(missing, "", "missing");
    EXPECT_EQ(missing.With("plot_type").back()["status"][0], "The program wqx2k was not found.");
    EXPECT_EQ(missing.With("started").size(), 0u);
}

TEST_F(Refinement, TheDataFileOfAJob) {
    Write("two.pcr", Control(-2));
    Write("bare.pcr", Control(1)), Write("my data.xys", ""), Write("elsewhere/d.xys", "");
    Write("empty.pcr", ""), Write(".pcr", Control(2));
    const struct {
        const char *files, *line, *box;
    } cases[] = {
        {"files two.pcr", "two lprompt", ""},
        {"files bare.pcr\nfiles \"my data.xys\"", "bare \"my data.xys\" lprompt", ""},
        {"files bare.pcr\nfiles elsewhere/d.xys", "bare {}/elsewhere/d.xys lprompt", ""},
        {"files bare.pcr\nfiles cancel", nullptr, ""},
        {"files cancel", nullptr, ""},
        {"files absent.pcr", nullptr, "absent.pcr"},
        {"files empty.pcr", nullptr, "empty.pcr"},
        {"files elsewhere", nullptr, "elsewhere"},
        {"files .pcr", nullptr, ".pcr"},
    };
    for (const auto& c : cases) {
        const auto run = Do("", "open data.xye\ncommand 40137\nprint state\n"s + c.files + "\ncommand 40135\n", true);
        const std::vector<Json> started = run.With("started"), states = run.With("plot_type");
        ASSERT_EQ(started.size(), c.line == nullptr ? 0u : 1u) << c.files;
        if (c.line != nullptr) {
            EXPECT_EQ(started[0]["started"], "xterm -e wqx2k " + Replace_All(c.line, "{}", directory.string()));
            continue;
        }
        EXPECT_EQ(View(states[0]), View(states[1])) << c.files;
        EXPECT_EQ(run.With("paths").back()["paths"]["pcr_file"], "") << c.files;
        Expect_Box(run, c.box, c.files);
    }

    // With the programs off what stands there is taken, whenever it was written; a ".new" becomes the control file all the same.
    Write("r.new", Control(3)), Write("r_1.prf", Text_Of(directory / "notes/good"));
    const auto run = Do("", Run_On("r.new"), true);
    EXPECT_EQ(Rows(run), "r_1.prf PRF ");
    EXPECT_EQ(run.With("started").front()["started"], "xterm -e wqx2k r lprompt");
    EXPECT_EQ(Text_Of(directory / "r.pcr") + Text_Of(directory / "r.pcr.bak"), Control(3) + Control(1));
    EXPECT_EQ(run.With("paths").back()["paths"]["pcr_file"], Path("r.pcr"));
    stand_ins.Started(0);
    Write("r.new", Control(2));
    fs::permissions(directory / "r.pcr", fs::perms::owner_read);
    const auto refused = Do("", Run_On("r.new"));
    Expect_Box(refused, Path("r.pcr"), "refused");
    EXPECT_EQ(refused.With("started").size(), 0u);
}

}  // namespace
}  // namespace vntl
