// The modes of the mouse that change rows and lists: what they do, and that a right button, Escape and another plot form leave all as it
// was.
#include <cmath>

#include "app/testing.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

class Mouse_Modes : public Program {
protected:
    // Rows from 10 to 30 with y = 100 x; the last line of a file is its end.
    void SetUp() override {
        Program::SetUp();
        for (const char* name : {"a.xye", "b.xye"}) {
            std::ofstream file(directory / name);
            file << name << '\n';
            for (int i = 0; i <= 200; ++i) file << 10 + 0.1 * i << ' ' << 1000 + 10 * i << " 1\n";
            file << "0 0 0\n";
        }
    }
    static std::string Drag(double x1, double y1, double x2, double y2) {
        const auto at = [](const char* what, double x, double y) {
            return std::string("mouse data ") + what + ' ' + std::to_string(x) + ' ' + std::to_string(y) + '\n';
        };
        return at("down", x1, y1) + at("move", 0.5 * (x1 + x2), 0.5 * (y1 + y2)) + at("move", x2, y2) + at("up", x2, y2);
    }
    static std::string Click(double x, double y) { return Drag(x, y, x, y); }
    // Boxes behind the one about the preferences.
    static Texts Told(const Run_Result& run) {
        const Texts boxes = run.Boxes();
        return {boxes.begin() + std::min<long>(1, std::ssize(boxes)), boxes.end()};
    }
    static std::string Hint(const Json& state) { return state["status"][0]; }
};

const std::string both = "open a.xye b.xye\n";

TEST_F(Mouse_Modes, ABandBecomesAnExcludedRegion) {
    const auto run =
        Script("open a.xye\ncommand 40110\nprint state\nprint menu 40110\n" + Drag(15, 2000, 17, 2100) +
               "print menu 40110\nprint excluded 1\ncommand 40110\n" + Drag(22, 2000, 20, 2000) +
               // beyond the box at the left
               "command 40110\nmouse data down 12 2000\nmouse up 20 400\nprint excluded 1\nprint state\n"
               "open b.xye\ncommand 40110\n" +
               Drag(24, 2000, 25, 2000) + "print dialog\npress OK\ncell 1723 3 2 1\npress OK\nprint excluded 1\nprint excluded 2\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto states = run.With("plot_type"), menus = run.With("built"), lists = run.With("excluded");
    EXPECT_EQ(states.at(0)["MoveMode"], 2);
    EXPECT_EQ(states.at(1)["MoveMode"], 0);
    EXPECT_FALSE(menus.at(0)["enabled"]);
    EXPECT_TRUE(menus.at(1)["enabled"]);
    const auto near = [](const Json& region, double lo, double hi) {
        EXPECT_NEAR(region[0].get<double>(), lo, 1e-4);
        EXPECT_NEAR(region[1].get<double>(), hi, 1e-4);
    };
    ASSERT_EQ(lists.at(0)["excluded"].size(), 1u);
    near(lists[0]["excluded"][0], 15, 17);
    ASSERT_EQ(lists.at(1)["excluded"].size(), 3u);
    near(lists[1]["excluded"][1], 20, 22);
    near(lists[1]["excluded"][2], 10, 12);
    EXPECT_EQ(Told(run), Texts{"ERROR: No profile selected to add excluded region"});
    ASSERT_EQ(run.With("dialog").size(), 1u);
    EXPECT_EQ(lists.at(2)["excluded"].size(), 3u);
    ASSERT_EQ(lists.at(3)["excluded"].size(), 1u);
    near(lists[3]["excluded"][0], 24, 25);
}

// By the mouse where there is one row, through the dialog where there are several: the other rows get the region.
TEST_F(Mouse_Modes, AFullListOfRegionsIsTold) {
    std::string script = "open a.xye\n";
    for (int i = 0; i < 101; ++i) script += "command 40110\n" + Drag(11 + 0.1 * i, 2000, 11.25 + 0.1 * i, 2000);
    const auto run = Script(script +
                            "print excluded 1\ndrop b.xye\ncommand 40151\nset from 12\nset to 14\npress \"Select all\"\npress OK\n"
                            "print excluded 1\nprint excluded 2\n");
    const auto lists = run.With("excluded");
    for (const std::size_t i : {0, 1}) EXPECT_EQ(lists.at(i)["excluded"].size(), 100u) << i;
    EXPECT_EQ(lists.at(2)["excluded"].size(), 1u);
    EXPECT_EQ(Told(run), (Texts{"Profile No 1has too much number of Excluded Regions", "Profile No 1 has too many Excluded Regions"}));
}

TEST_F(Mouse_Modes, ALineMovesTheChosenRows) {
    const std::string choose = "command 40149\ncell 1711 3 2 1\npress OK\n";
    const auto run =
        Script(both + "command 40149\nprint dialog\npress OK\npress Cancel\n" + choose + "print state\n" + Drag(15, 1500, 17, 1700) +
               choose + "answer yes\n" + Drag(15, 1500, 17, 1700) + "print rows\nprint data 1\nprint data 2\nprint state\n");
    const auto told = Told(run);
    ASSERT_EQ(told.size(), 3u) << run.output;
    EXPECT_EQ(told[0], "No files have been selected for offset/align. Operation cancelled");
    EXPECT_EQ(told[1].substr(0, 63), "The following profiles will be shift to\nthe relative position: ");
    EXPECT_NE(told[1].find("\na.xye"), std::string::npos);
    const auto states = run.With("plot_type"), data = run.With("x"), rows = run.With("kind");
    EXPECT_EQ(states.at(0)["MoveMode"], 3);
    EXPECT_EQ(states.at(1)["MoveMode"], 0);
    // The first box takes its default answer, yes; so the row has moved twice, and row 1 not at all.
    EXPECT_NEAR(data.at(0)["x"][0].get<double>(), 10, 1e-6);
    EXPECT_NEAR(data.at(1)["x"][0].get<double>(), 14, 1e-3);
    EXPECT_NEAR(data.at(1)["y"][0].get<double>(), 1400, 0.5);
    for (const auto& [name, value] : {std::pair{"xmin", 14.0}, {"xmax", 34.0}, {"ymin", 1400.0}, {"ymax", 3400.0}})
        EXPECT_NEAR(rows.at(1)[name].get<double>(), value, 1) << name;
}

TEST_F(Mouse_Modes, APivotAndADragScaleAnAxis) {
    const auto run = Script(both + "command 40124\ncell 1711 3 1 1\npress OK\nprint state\n" + Drag(14, 1500, 16, 1500) + "print state\n" +
                            Click(20, 1500) +
                            "print state\nmouse data down 22 1500\nmouse data move 18 1500\nprint state\nmouse move 100 400\nprint state\n"
                            "mouse data move 25 1500\nanswer yes\nmouse data up 25 1500\nprint data 1\nprint data 2\n"
                            "command 40115\ncell 1711 3 2 1\npress OK\n" +
                            Click(20, 2000) + "mouse data down 20 1900\nmouse data move 20 2100\nprint state\nanswer no\n" +
                            "mouse data up 20 1500\nprint data 2\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto states = run.With("plot_type"), data = run.With("x");
    const Texts hints = {"Select pivot reference point to scaling X.",
                         "Select pivot reference point to scaling X.",
                         "Select multiply factor to scaling X.",
                         "Warning, X final value can't be lower that X ref selected.",
                         "Warning, out of plotting zone.",
                         "Warning, Y final value can't be upper that Y ref selected."};
    for (std::size_t i = 0; i < hints.size(); ++i) EXPECT_EQ(Hint(states.at(i)), hints[i]) << i;
    const auto told = Told(run);
    ASSERT_EQ(told.size(), 3u) << run.output;
    EXPECT_EQ(told[0], "Error selecting X ref. Try again!");
    const std::string start = "The following profiles will be scaling at X according\nto following equation: X' = ";
    ASSERT_EQ(told[1].substr(0, start.size()), start);
    EXPECT_NEAR(std::stod(told[1].substr(start.size())), 1.25, 1e-5);
    EXPECT_NEAR(data.at(0)["x"][0].get<double>(), 12.5, 1e-4);
    EXPECT_NEAR(data.at(0)["x"][200].get<double>(), 37.5, 1e-3);
    EXPECT_EQ(data.at(1), data.at(2));  // the row that was not chosen, and the answer no
}

TEST_F(Mouse_Modes, ClicksChangeTheListOfPeaks) {
    std::string many = "open a.xye\ncommand 40096\ncommand 40093\n";
    for (int i = 0; i < 402; ++i) many += Click(29.5 - 0.04 * i, 2000);
    const auto run = Script(many + "print peaks\ncommand 40147\n" + Click(15, 1200) + Click(20, 1900) + Click(12, 1100) +
                            "print peaks\ncommand 40094\n" + Click(15.1, 1000) + Click(17, 1000) + "print peaks\nprint state\n");
    const auto lists = run.With("peaks");
    EXPECT_EQ(lists.at(0)["peaks"].size(), 401u);
    EXPECT_EQ(Told(run), (Texts{"The limit number of peaks has been attained!", "No peaks found in this position for removing"}));
    const auto x = [](const Json& list) {
        std::vector<double> values;
        for (const Json& peak : list["peaks"]) values.push_back(std::round(peak["x"].get<double>()));
        return values;
    };
    EXPECT_EQ(x(lists.at(1)), (std::vector<double>{12, 15, 20}));
    EXPECT_EQ(x(lists.at(2)), (std::vector<double>{12, 20}));
    EXPECT_EQ(Hint(run.With("plot_type").at(0)), "Peaks allocation: Delete peak, 2 peaks");
}

TEST_F(Mouse_Modes, ClicksChangeTheBackgroundAndTheWindowOfAFit) {
    std::string many = "open a.xye\ncommand 40138\ncommand 40144\n";
    for (int i = 0; i < 401; ++i) many += Click(29.5 - 0.04 * i, 2000);
    const auto run =
        Script(many + "print background\ncommand 40145\n" + Click(29.5, 2000) + Click(29.5, 1200) + "print background\ncommand 40139\n" +
               "command 40095\n" + Click(15, 1500) + Click(14, 1400) + Click(25, 2500) + "print state\n" + Click(20, 2200) +
               Click(22, 2200) + Click(20, 2300) + Click(28, 2000) + "print fit\ncommand 40099\nprint state\n");
    const auto lists = run.With("background");
    EXPECT_EQ(lists.at(0)["background"].size(), 400u);
    EXPECT_EQ(lists.at(1)["background"].size(), 399u);
    EXPECT_EQ(Told(run),
              (Texts{"The limit number of background points has been attained!", "No background point found in this position for removing",
                     "ERROR: The maximal X-value CANNOT\n       be lower than the minimal X-value"}));
    const Json fit = run.With("fit").at(0)["fit"];
    EXPECT_NEAR(fit["x_ini"].get<double>(), 15, 1e-4);
    EXPECT_NEAR(fit["x_fin"].get<double>(), 25, 1e-4);
    ASSERT_EQ(fit["peaks"].size(), 1u);  // added twice, deleted once; a click outside does nothing
    EXPECT_NEAR(fit["peaks"][0]["pos"].get<double>(), 22, 1e-3);
    EXPECT_EQ(Hint(run.With("plot_type").at(0)), "From now, you only need add/delete peaks into the range defined previously");
    EXPECT_EQ(run.With("plot_type").at(1)["plot_type"], "single");
}

TEST_F(Mouse_Modes, EachModeEndsWithoutAChange) {
    const std::string choose = "press \"Select all\"\npress OK\n";
    const std::string pivot = Click(20, 1500);
    const std::pair<std::string, int> modes[] = {
        {"command 40110\n", 2},          {"command 40149\n" + choose, 3},         {"command 40115\n" + choose, 4},
        {"command 40124\n" + choose, 5}, {"command 40124\n" + choose + pivot, 5}, {"command 40105\n", 1}};
    for (const auto& [begin, mode] : modes)
        for (const std::string end : {"mouse data down right 22 1600\n", "key Escape\nkey Escape\n", "command 40226\ncommand 40027\n"}) {
            const auto run =
                Script(both + "print state\nprint picture\nprint data 1\nprint data 2\nprint excluded 1\n" + begin + "print state\n" +
                       "mouse data down 22 1600\nmouse data move 22.5 1600\nprint picture\nmouse data move 22 1600\n" + end +
                       "print state\nprint picture\nprint data 1\nprint data 2\nprint excluded 1\nprint menu 40110\nprint menu 40105\n");
            EXPECT_EQ(run.errors, "") << begin << end;
            const auto states = run.With("plot_type"), data = run.With("x"), regions = run.With("excluded"), pictures = run.With("markers");
            EXPECT_EQ(states.at(1)["MoveMode"], mode) << begin;
            EXPECT_EQ(states.at(2)["MoveMode"], 0) << begin << end;
            for (const char* item : {"x_view_min", "x_view_max", "y_view_min", "y_view_max", "plot_type"})
                EXPECT_TRUE(mode == 1 || states[2][item] == states[0][item]) << begin << end << item;
            EXPECT_EQ(data.at(0), data.at(2)) << begin << end;
            EXPECT_EQ(data.at(1), data.at(3)) << begin << end;
            EXPECT_EQ(regions.at(0), regions.at(1)) << begin << end;
            EXPECT_TRUE(mode == 1 || pictures.at(0) == pictures.at(2)) << begin << end;  // nothing is left of what the hand drew
            for (const Json& menu : run.With("built")) EXPECT_TRUE(menu["enabled"]) << begin << end;
        }
}

// Each mode, however it ends, takes its hint, its cursor and its barred commands along; the line of hints shows d again. The first case is
// no mode: what all others must end like.
TEST_F(Mouse_Modes, AHintACursorAndAModeEndTogether) {
    const std::string choose = "press \"Select all\"\npress OK\n";
    struct Mode {
        std::string enter, hint, cursor = "cross";
        std::string off = "";     // the command that ends the calculation
        int move = 0, click = 0;  // its numbers
    };
    const Mode modes[] = {
        {"", "", "arrow"},
        {"command 40105\n", "", "hand", "", 1},
        {"command 40110\n", "Draw over the stretch to exclude", "cross", "", 2},
        {"command 40149\n" + choose, "Draw the way that the profiles shall go", "cross", "", 3},
        {"command 40115\n" + choose, "Select pivot reference point to scaling Y.", "cross", "", 4},
        {"command 40124\n" + choose, "Select pivot reference point to scaling X.", "cross", "", 5},
        {"command 40124\n" + choose + "mouse down 600 400\nmouse up 600 400\n", "Select multiply factor to scaling X.", "cross", "", 5},
        {"command 40095\n", "Select the range for fitting procedure on two Background points", "arrow", "40099", 0, 1},
        {"command 40095\nmouse down 600 400\nmouse up 600 400\n", "Select now the upper limit on background points", "arrow", "40099", 0,
         1},
        {"command 40096\n", "Peaks allocation:", "arrow", "40097", 0, 2},
        {"command 40096\ncommand 40093\n", "Peaks allocation: Insert peak", "cross", "40097", 0, 2},
        {"command 40096\ncommand 40094\n", "Peaks allocation: Delete peak", "cross", "40097", 0, 2},
        {"command 40138\n", "Background allocation:", "arrow", "40139", 0, 3},
        {"command 40138\ncommand 40144\n", "Background allocation: Insert point", "cross", "40139", 0, 3},
        {"command 40138\ncommand 40145\n", "Background allocation: Delete point", "cross", "40139", 0, 3}};
    struct Ending {
        std::string statements;
        bool of_calculations = true, several_rows = false;
    };
    const Ending endings[] = {{"OFF"},
                              {"drop b.xye\n"},
                              {"drop missing.xye\n"},
                              {"command 40019\n"},
                              {"command 40089\n"},
                              {"mouse down right 600 400\n", false},
                              {"mouse down 500 400\nmouse move 700 500\nkey Escape\n", false},
                              {"command 40016\n", false},
                              {"command 40226\n", false, true}};
    for (const Ending& ending : endings) {
        std::vector<Mode> cases;
        std::string script;
        for (const Mode& mode : modes) {
            const bool none = mode.enter.empty();
            if (!none && (ending.statements == "OFF" ? mode.off.empty() : !ending.of_calculations && mode.click != 0)) continue;
            cases.push_back(mode);
            script += "command 40019\nopen a.xye" + std::string(ending.several_rows ? " b.xye" : "") +
                      "\ncommand 40222\nset \"Wavelength:\" 4\npress OK\n" + mode.enter + "print state\nprint cursor\n" +
                      (ending.statements != "OFF" ? ending.statements
                       : none                     ? ""
                                                  : "command " + mode.off + '\n') +
                      "mouse up 700 500\nmouse move 600 400\nprint state\nprint cursor\nprint menu\n";
        }
        const auto run = Script(script);
        const auto states = run.With("plot_type"), menus = run.With("built"), cursors = run.With("cursor");
        ASSERT_EQ(states.size(), 2 * cases.size()) << ending.statements << run.errors;
        const std::size_t entries = menus.size() / cases.size();
        for (std::size_t i = 0; i < cases.size(); ++i) {
            const Mode& mode = cases[i];
            SCOPED_TRACE(mode.enter + ending.statements);
            const Json &during = states[2 * i], &behind = states[2 * i + 1];
            EXPECT_EQ(during["MoveMode"], mode.move);
            EXPECT_EQ(during["ClickMode"], mode.click);
            EXPECT_EQ(cursors.at(2 * i)["cursor"], mode.cursor);
            EXPECT_TRUE(mode.hint.empty() || Hint(during) == mode.hint) << Hint(during);
            EXPECT_EQ(behind["MoveMode"], 0);
            EXPECT_EQ(behind["ClickMode"], 0);
            EXPECT_EQ(cursors.at(2 * i + 1)["cursor"], "arrow");
            EXPECT_EQ(behind["status"], states[1]["status"]);
            EXPECT_EQ(Hint(behind).starts_with(" d= "), behind["nperfiles"] != 0);
            for (std::size_t entry = 0; entry < entries; ++entry)
                EXPECT_EQ(menus[i * entries + entry]["enabled"], menus[entry]["enabled"]) << menus[entry]["id"];
        }
    }
}

// Escape lets an insertion go, and the calculation goes on with its own hint. A note gives way to what comes next.
TEST_F(Mouse_Modes, EscapeEndsAnInsertionAndNotItsCalculation) {
    const auto run = Script(
        "open a.xye\ncommand 40222\nset \"Wavelength:\" 4\npress OK\ncommand 40096\ncommand 40093\nmouse data down 15 1500\nkey "
        "Escape\nprint state\nprint cursor\n" +
        Click(20, 1900) + "print peaks\ncommand 40093\n" + Click(20, 1900) +
        "print peaks\ncommand 40089\nprint state\n"
        "mouse down 600 400\nmouse up 600 400\nmouse move 600 400\nprint state\n");
    const auto states = run.With("plot_type"), lists = run.With("peaks");
    EXPECT_EQ(Hint(states.at(0)), "Peaks allocation:");
    EXPECT_EQ(run.With("cursor").at(0)["cursor"], "arrow");
    EXPECT_EQ(states[0]["ClickMode"], 2);
    EXPECT_EQ(lists.at(0)["peaks"].size(), 0u);
    EXPECT_EQ(lists.at(1)["peaks"].size(), 1u);
    EXPECT_EQ(Hint(states.at(1)), "The lists of peaks and background points have been emptied");
    EXPECT_TRUE(Hint(states.at(2)).starts_with(" d= "));
}

// The lists are in counts. Out of the logarithms the view shows the same intensities, and several rows have the form of several again.
TEST_F(Mouse_Modes, ACalculationOfALogarithmicFormIsInCounts) {
    const std::string menu = "print menu\n";
    const auto run =
        Script("open a.xye\nopen b.xye\nprint state\n" + menu + "command 40226\nprint state\ncommand 40138\nprint state\ncommand 40139\n" +
               "print state\n" + menu + "command 40226\n" + Drag(12, 7.2, 18, 7.8) +
               "command 40138\nprint state\nopen a.xye\nprint state\ncommand 40226\ncommand 40019\nprint state\n");
    EXPECT_EQ(run.status, 1);  // a calculation opens no file
    const auto states = run.With("plot_type"), menus = run.With("built");
    const auto form = [&states](std::size_t i) { return states.at(i)["plot_type"].get<std::string>(); };
    EXPECT_EQ(form(1) + form(2) + form(3), "multi_logcalculationmulti");
    for (const std::size_t i : {0u, 1u, 2u, 3u, 4u, 6u}) EXPECT_EQ(states.at(i)["log_scale"], i == 1) << i;
    for (const std::size_t i : {2u, 3u})
        for (const char* end : {"x_view_min", "x_view_max", "y_view_min", "y_view_max"})
            EXPECT_NEAR(states[i][end].get<double>(), states[0][end].get<double>(), 0.01) << i << end;
    const std::pair<const char*, double> zoomed[] = {
        {"x_view_min", 12}, {"x_view_max", 18}, {"y_view_min", std::exp(7.2)}, {"y_view_max", std::exp(7.8)}};
    for (const auto& [end, value] : zoomed) EXPECT_NEAR(states[4][end].get<double>(), value, 1e-4 * value) << end;
    for (std::size_t entry = 0; entry < menus.size() / 2; ++entry)
        EXPECT_EQ(menus[menus.size() / 2 + entry]["enabled"], menus[entry]["enabled"]) << menus[entry]["id"];
}

// At 600 pixels a pixel is two units of the page: up to eight of them across are a click.
TEST_F(Mouse_Modes, AHandThatShakesClicks) {
    const std::string choose = "cell 1711 3 1 1\npress OK\n";
    const auto shake = [](int units, const std::string& y = "400") {
        return "mouse down 600 400\nmouse move 602 400\nmouse move " + std::to_string(600 + units) + ' ' + y + "\nmouse up " +
               std::to_string(600 + units) + ' ' + y + "\n";
    };
    const auto run = Script("resize 600 400\nopen a.xye\nprint state\n" + shake(-8) + "print state\ncommand 40096\ncommand 40093\n" +
                            shake(8, "420") + "print peaks\ncommand 40097\ncommand 40110\n" + shake(8) +
                            "print excluded 1\ncommand 40149\n" + choose + shake(8) + "command 40124\n" + choose + shake(8) +
                            "print state\nkey Escape\ncommand 40124\n" + choose + shake(10) + "print state\nkey Escape\ncommand 40105\n" +
                            shake(8) + "print state\n" + shake(20) + "print state\nkey Escape\ncommand 40110\n" + shake(10) +
                            "print excluded 1\n" + shake(10, "420") + "print state\nresize 1200 400\n" + shake(6, "420") + "print state\n");
    const auto states = run.With("plot_type"), regions = run.With("excluded");
    const auto view = [&states](std::size_t i) { return std::pair{states.at(i)["x_view_min"], states.at(i)["x_view_max"]}; };
    EXPECT_EQ(run.With("peaks").at(0)["peaks"].size(), 1u);
    EXPECT_EQ(regions.at(0)["excluded"].size(), 0u);
    EXPECT_EQ(regions.at(1)["excluded"].size(), 1u);
    EXPECT_EQ(Told(run), Texts{"Error selecting X ref. Try again!"});
    EXPECT_EQ(Hint(states.at(2)), "Select multiply factor to scaling X.");
    EXPECT_EQ(Hint(states.at(3)), "Select pivot reference point to scaling X.");
    for (const std::size_t i : {1u, 4u}) EXPECT_EQ(view(i), view(0)) << i;
    for (const std::size_t i : {5u, 6u, 7u}) EXPECT_NE(view(i), view(i - 1)) << i;  // a drag, and a rectangle of either size of a window
}

TEST_F(Mouse_Modes, SpectralLinesFollowTheButton) {
    const auto run = Script(
        "open a.xye\nprint menu 40216\ncommand 40220\nprint dialog\npress OK\nset \"Wavelength:\" 4\nprint dialog\npress OK\n"
        "print rows\nprint menu 40220\nprint state\ncommand 40217\ncommand 40219\nprint menu 40217\nprint state\n"
        "mouse data down 20 1500\nmouse data move 25 2000\nmouse data up 25 2000\nprint state\ncommand 40221\n"
        "print menu 40217\nprint menu 40220\n");
    EXPECT_EQ(Told(run), Texts{"Some values were undefined"});
    const auto dialogs = run.With("dialog"), menus = run.With("built"), states = run.With("plot_type");
    EXPECT_EQ(dialogs.at(0)["fields"][1]["value"][0], (Json{"", "", "", "1.47630"}));
    EXPECT_EQ(dialogs.at(1)["fields"][1]["value"][0], (Json{"1.54059", "1.54431", "1.39220", "1.47630"}));
    const Json conv = run.With("conv").at(0)["conv"];
    for (const auto& [place, wavelength] : {std::pair{0, 1.54059}, {1, 1.54431}, {3, 1.3922}})
        EXPECT_NEAR(conv[static_cast<std::size_t>(place)].get<double>(), wavelength, 1e-6);
    const std::pair<bool, bool> expected[] = {
        {false, false}, {false, false}, {true, true}, {false, false}, {true, false}};  // enabled, checked
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(menus.at(i)["enabled"], expected[i].first) << i;
        EXPECT_EQ(menus.at(i)["checked"], expected[i].second) << i;
    }
    EXPECT_EQ(states.at(0)["status"][0].get<std::string>().find("No spectral line is chosen"), 0u);
    EXPECT_EQ(states.at(1)["status"][0], "");
    EXPECT_EQ(states.at(1)["x_view_min"], states.at(2)["x_view_min"]);  // the button zooms no rectangle
}

}  // namespace
}  // namespace vntl
