// Programs that are waited for, and the rows that they leave: stand-ins take their places, in a directory that PATH names first.
#include <algorithm>

#include "app/script.hpp"
#include "app/testing.hpp"
#include "patterns/prf_files.hpp"

namespace vntl {
namespace {

using std::string_literals::operator""s;
using Words = std::vector<std::string>;

class Refinement : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        fs::create_directories(directory / "bin");
        fs::create_directories(directory / "elsewhere");
        // Whatever runs writes down its directory and its words, and then does what the file "act" tells.
        Stand_In("xterm", "shift\nexec \"$@\"\n");
        for (const char* name : {"wqx2k", "Radiox"})
            Stand_In(name, "told='" + Told().string() + "'\nhere='" + directory.string() +
                               "'\nprintf '%s\\0' \"$PWD\" \"$@\" >>\"$told\"\n. \"$here/act\"\n");
        const test::Model a = test::Make_Model(2, 10, false), b = test::Make_Model(3, 6, true);
        test::Model flight = a;
        flight.flight = true, flight.cosine = 7476.9;
        Write("good", test::Whole(test::Columns(a)));
        Write("other.prf", test::Whole(test::Classic(b)));
        Write("mono", test::Whole(test::Integrated(b)));
        Write("flight", test::Whole(test::Columns(flight, 8)));
        Write("pairs", test::Whole(test::Pair_Distribution(a)));
        Write("data.xye", "data\n10 1 1\n10.1 2 1\n10.2 3 1\n10.3 4 1\n");
        Write("r.pcr", Control(1));
        Write("r.dat", "");
        Write("r.osl", "");
    }

    void Write(const std::string& name, const std::string& text) const { std::ofstream(directory / name, std::ios::binary) << text; }
    void Stand_In(const std::string& name, const std::string& text) const {
        Write("bin/" + name, "#!/bin/sh\n" + text);
        fs::permissions(directory / "bin" / name, fs::perms::owner_all);
    }
    static std::string Control(int job) { return "COMM x\n!Job Npr Nph\n " + std::to_string(job) + " 7 1\n"; }
    fs::path Told() const { return directory / "told"; }
    std::string Path(const std::string& name) const { return (directory / name).string(); }

    // What the stand-ins were given since the last time.
    Words Taken() const {
        std::ifstream file(Told(), std::ios::binary);
        Words words;
        for (std::string word; std::getline(file, word, '\0');) words.push_back(word);
        fs::remove(Told());
        return words;
    }

    static std::string As_Word(const std::string& text) { return Statement_Line({text}); }
    static std::string Run_On(const std::string& file) { return "files " + As_Word(file) + "\ncommand 40135\n"; }

    // The programs are started, but for `off`; `act`: what a stand-in does.
    Run_Result Do(const std::string& act, const std::string& script, bool off = false) const {
        Write("act", act + '\n');
        return Script((off ? "" : "programs on\n") + ("pref quendrix_dir " + As_Word(Path("bin"))) + '\n' + script +
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
    // Texts of the boxes, each with a bar behind it, without the one about settings that opens a new user's session.
    static std::string All_Boxes(const Run_Result& run) {
        std::string all;
        for (const std::string& text : run.Boxes())
            if (!text.starts_with("WARNING: No preferences file")) all += text + '|';
        return all;
    }
};

constexpr const char* not_found = "Error loading PRF file ...\nPRF File not found";
constexpr const char* unknown = "Error loading PRF file ...\nUnknown PRF Format";

TEST_F(Refinement, TheResultOfARunIsARow) {
    const auto run = Do("cp \"$here/good\" \"$1.prf\"", Run_On("r.pcr") + "command 40017\nprint state\n" + Run_On("r.pcr"));
    EXPECT_EQ(run.status, 0) << run.output << run.errors;
    EXPECT_EQ(Rows(run), "r.prf PRF ");
    EXPECT_EQ(All_Boxes(run), "");  // its own row is replaced without a question, in the space that the user has chosen
    for (const Json& state : run.With("plot_type")) {
        EXPECT_EQ(state["xspace"], "d-space");
        EXPECT_EQ(state["plot_type"], "single");
        EXPECT_EQ(state["prf_loaded"], true);
    }
    EXPECT_EQ(run.With("paths").back()["paths"]["pcr_file"], Path("r.pcr"));
    EXPECT_EQ(run.With("plot_type").back()["status"][0], "Quendrix has ended");
    EXPECT_EQ(Taken(), (Words{directory, "r", "r.dat", "lprompt", directory, "r", "r.dat", "lprompt"}));
    ASSERT_EQ(run.With("started").size(), 2u);
    const Json started = run.With("started").front();
    EXPECT_EQ(started["started"], "xterm -e wqx2k r r.dat lprompt");
    EXPECT_EQ(started["arguments"], (Words{"xterm", "-e", "wqx2k", "r", "r.dat", "lprompt"}));
    EXPECT_EQ(started["directory"], directory.string());
    EXPECT_EQ(started["waited"], true);
}

TEST_F(Refinement, WhatARunLeavesDecides) {
    const std::string open_data = "open data.xye\n", open_other = "files other.prf\ncommand 40016\n";
    const std::string question = "The main window contain a PRF profile:\nother.prf\nDo you want overwrite this profile?|";
    const struct {
        std::string act, before;
        const char *old, *rows;
        std::string box;  // a part of what the boxes say; blank for none
        int status;
    } cases[] = {
        {"cp \"$here/good\" \"$1.prf\"", "", "old", "r.prf PRF ", "", 0},
        {"cp \"$here/good\" \"$1_1.prf\"", "", "old", "r_1.prf PRF ", "", 0},
        {"cp \"$here/good\" \"$1.prf\"", open_data, nullptr, "data.xye DATA r.prf PRF ", "", 0},
        {"cp \"$here/good\" \"$1.prf\"", open_other + "answer yes\n", nullptr, "r.prf PRF ", question, 0},
        {"cp \"$here/good\" \"$1.prf\"", open_other + "answer no\n", nullptr, "other.prf PRF ", question, 0},
        {"cp \"$here/flight\" \"$1.prf\"", open_data, nullptr, "data.xye DATA ", "Present space: 2theta, file in TOF,", 0},
        {":", open_data, "old", "data.xye DATA ", not_found + "\nThe program has not written "s + Path("r.prf"), 1},
        {":", open_data, nullptr, "data.xye DATA ", not_found + "|"s, 1},
        {"kill -9 $$", "", nullptr, "", not_found, 1},
        {"head -c 3000 \"$here/good\" >\"$1.prf\"; kill -9 $$", open_data, nullptr, "data.xye DATA ", unknown, 1},
        {"echo rubbish >\"$1.prf\"", "", nullptr, "", unknown, 1},
        {"mkdir \"$1.prf\"", "", nullptr, "", not_found, 1},
    };
    for (const auto& c : cases) {
        fs::remove_all(directory / "r.prf");
        fs::remove_all(directory / "r_1.prf");
        if (c.old != nullptr) Write("r.prf", Text_Of(directory / "good"));
        const auto run = Do(c.act, c.before + Run_On("r.pcr"));
        EXPECT_EQ(run.status, c.status) << c.act << run.errors;
        EXPECT_EQ(Rows(run), c.rows) << c.act;
        const std::string boxes = All_Boxes(run);
        EXPECT_EQ(std::count(boxes.begin(), boxes.end(), '|'), c.box.empty() ? 0 : 1) << c.act << boxes;
        EXPECT_NE(boxes.find(c.box), std::string::npos) << c.act << boxes;
    }
    fs::remove_all(directory / "r.prf");
    // Where it stands alone another kind of result takes its place; where it does not, it stays.
    Write("kinds", "mono mono flight good");
    const std::string next = "set -- $(cat \"$here/kinds\"); cp \"$here/$1\" r.prf; shift; echo \"$@\" >\"$here/kinds\"";
    const auto alone = Do(next, Run_On("r.pcr") + Run_On("r.pcr") + "print rows\n" + Run_On("r.pcr") + "print state\n" + Run_On("r.pcr"));
    EXPECT_EQ(All_Boxes(alone), "");
    EXPECT_EQ(Rows(alone), "r.prf MONO r.prf PRF ");
    ASSERT_EQ(alone.With("xspace").size(), 2u);
    EXPECT_EQ(alone.With("xspace")[0]["xspace"], "TOF");
    EXPECT_EQ(alone.With("xspace")[1]["xspace"], "2theta");
    Write("kinds", "good flight");
    const auto beside = Do(next, open_data + Run_On("r.pcr") + Run_On("r.pcr"));
    EXPECT_NE(All_Boxes(beside).find("Present space: 2theta, file in TOF,"), std::string::npos);
    EXPECT_EQ(Rows(beside), "data.xye DATA r.prf PRF ");
    EXPECT_EQ(beside.With("xspace").back()["xspace"], "2theta");
}

TEST_F(Refinement, AStoppedWaitLeavesEverythingAsItWas) {
    const std::string until = "cp \"$here/good\" \"$1.prf\"; exec sleep 20";
    const auto run = Do(until, "open data.xye\ncommand 40137\nprint state\nfiles r.pcr\ncommand 40135\nresize 900 700\nkey Escape\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Rows(run), "data.xye DATA ");
    EXPECT_EQ(All_Boxes(run), "");
    const std::vector<Json> states = run.With("plot_type");
    ASSERT_EQ(states.size(), 2u);
    EXPECT_EQ(states[1]["status"][0], "Quendrix goes on by itself");
    EXPECT_EQ(View(states[0]), View(states[1]));
    EXPECT_EQ(run.With("started").front()["waited"], true);
    EXPECT_EQ(Taken(), (Words{directory, "r", "r.dat", "lprompt"}));

    fs::remove(directory / "bin/wqx2k");
    const auto missing = Do("", "open data.xye\n" + Run_On("r.pcr"));
    EXPECT_EQ(All_Boxes(missing), "");
    EXPECT_EQ(missing.With("plot_type").back()["status"][0], "The program wqx2k was not found.");
    EXPECT_EQ(missing.With("started").size(), 0u);
}

TEST_F(Refinement, TheDataFileOfAJob) {
    Write("two.pcr", Control(-2)), Write("many.pcr", "COMM\n!\nNPATT 2\n"), Write("two.dat", "");
    Write("i.pcr", Control(1)), Write("i.int", "");
    Write("bare.pcr", Control(1)), Write("my data.xys", ""), Write("elsewhere/d.xys", "");
    Write("empty.pcr", ""), Write(".pcr", Control(2));
    const struct {
        const char *files, *line, *box;
    } cases[] = {
        {"files two.pcr", "two lprompt", ""},
        {"files many.pcr", "many lprompt", ""},
        {"files i.pcr", "i i.int lprompt", ""},
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
            std::string line = "xterm -e wqx2k "s + c.line;
            if (const std::size_t at = line.find("{}"); at != std::string::npos) line.replace(at, 2, directory.string());
            EXPECT_EQ(started[0]["started"], line);
            EXPECT_EQ(started[0]["directory"], directory.string());
            continue;
        }
        EXPECT_EQ(View(states[0]), View(states[1])) << c.files;
        EXPECT_EQ(run.With("paths").back()["paths"]["pcr_file"], "") << c.files;
        const std::string boxes = All_Boxes(run);
        EXPECT_EQ(boxes.empty(), *c.box == '\0') << c.files << boxes;
        EXPECT_NE(boxes.find(c.box), std::string::npos) << c.files << boxes;
    }

    // With the programs off what stands there is taken, whenever it was written; a ".new" becomes the control file all the same.
    Write("r.new", Control(3)), Write("r_1.prf", Text_Of(directory / "good"));
    const auto run = Do("", Run_On("r.new"), true);
    EXPECT_EQ(Rows(run), "r_1.prf PRF ");
    EXPECT_EQ(run.With("started").front()["started"], "xterm -e wqx2k r lprompt");
    EXPECT_EQ(Text_Of(directory / "r.pcr") + Text_Of(directory / "r.pcr.bak"), Control(3) + Control(1));
    EXPECT_EQ(run.With("paths").back()["paths"]["pcr_file"], Path("r.pcr"));
    EXPECT_FALSE(fs::exists(Told()));
    fs::permissions(directory / "r.pcr", fs::perms::owner_read);
    const auto refused = Do("", Run_On("r.new"));
    EXPECT_NE(All_Boxes(refused).find(Path("r.pcr")), std::string::npos);
    EXPECT_EQ(refused.With("started").size(), 0u);
}

TEST_F(Refinement, RadioxIsGivenItsFileAndLeavesAPairDistribution) {
    const std::string act = "cp \"$here/pairs\" \"${1%.osl}.prf\"";
    const auto run = Do(act, "files r.osl\ncommand 40207\nfiles r.osl\ncommand 40207\nfiles cancel\ncommand 40207\n");
    EXPECT_EQ(run.status, 0) << run.output << run.errors;
    EXPECT_EQ(Rows(run), "r.prf PRF ");
    EXPECT_EQ(run.With("xspace").back()["xspace"], "Distance");
    EXPECT_EQ(run.With("xspace").back()["ylabel_text"], "G(R) x 1000");
    EXPECT_EQ(run.With("started").front()["started"], "xterm -e " + Path("bin/Radiox") + ' ' + Path("r.osl") + " calcp");
    EXPECT_EQ(Taken(), (Words{directory, Path("r.osl"), "calcp", directory, Path("r.osl"), "calcp"}));
    const auto off = Do(act, "files r.osl\ncommand 40207\n", true);
    EXPECT_EQ(Rows(off), "r.prf PRF ");
    EXPECT_FALSE(fs::exists(Told()));
}

TEST_F(Refinement, LettersOfNamesMeanNothing) {
    const Words names = {"a b",  "it's", "say \"x\"", "$(touch x)", "`touch x`", "a;touch x",          "-x", "--", "é∞", "100%", "a\nb",
                         "a\\b", "*",    "~",         "#",          "a&b|c",     std::string(200, 'n')};
    Words expected;
    std::string script;
    for (const std::string& name : names) {
        Write(name + ".pcr", Control(1)), Write(name + ".dat", ""), Write(name + ".osl", "");
        script += Run_On(name + ".pcr") + "files " + As_Word(name + ".osl") + "\ncommand 40207\n";
        const std::string guard = name.starts_with('-') ? "./" : "";
        expected.insert(expected.end(), {directory, guard + name, guard + name + ".dat", "lprompt"});
        expected.insert(expected.end(), {directory, Path(name + ".osl"), "calcp"});
    }
    const auto files = [&] {
        std::size_t n = 0;
        for (const auto& entry : fs::directory_iterator(directory)) n += entry.path() != Told();
        return n;
    };
    const auto same = [&](const Run_Result& run) {
        Words words;
        for (const Json& started : run.With("started")) {
            words.push_back(started["directory"]);
            const Words all = started["arguments"];
            words.insert(words.end(), all.begin() + 3, all.end());
        }
        return words == expected;
    };
    Do("", "", true);
    const std::size_t before = files();
    EXPECT_TRUE(same(Do("", script, true)));
    EXPECT_FALSE(fs::exists(Told()));
    EXPECT_TRUE(same(Do("", script)));
    EXPECT_EQ(Taken(), expected);
    EXPECT_EQ(files(), before);
}

}  // namespace
}  // namespace vntl
