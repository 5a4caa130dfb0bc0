// Maps and graphs in space, in the real windows: which rows they show, what the mouse does over them, and what is told where they cannot
// be.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "app/testing.hpp"

namespace vntl {
namespace {

constexpr int two_d = 40027, two_d_log = 40226, contour = 40031, contour_log = 40227, lines_3d = 40028, surface = 40125;

class Many_Patterns : public Program {
protected:
    // Rows of 101 points from 10 to 20: a peak that moves with the row, at the temperatures told; 0 for none.
    void Make(const std::vector<double>& temperatures, int points = 101) {
        open_ = "drop";
        for (std::size_t row = 1; row <= temperatures.size(); ++row) {
            const std::string name = "s" + std::to_string(row) + ".xys";
            std::ofstream file(directory / name);
            file << "XYDATA\nTITLE row " << row << "\nTEMP " << temperatures[row - 1] << "\n#\n1\n2\n3\n";
            for (int i = 0; i <= points; ++i) {  // the last record is the end
                const double x = 10 + 10.0 * i / (points - 1), from = x - 14 - 0.05 * static_cast<double>(row);
                file << x << ' ' << 10 + 1000 * std::exp(-from * from) << " 1\n";
            }
            open_ += ' ' + name;
        }
    }
    void Make(std::size_t rows) { Make(std::vector<double>(rows)); }

    // Opens the rows and runs statements behind semicolons: "?" prints the state, "@" is the mouse, "! N" a command.
    Run_Result Do(const std::string& statements, bool succeeds = true) {
        std::string text = open_ + "\n";
        for (const char c : statements)
            text += c == ';' ? "\n" : c == '@' ? "mouse " : c == '?' ? "print state" : c == '!' ? "command" : std::string(1, c);
        Run_Result run = Script(text + '\n');
        EXPECT_EQ(run.status == 0, succeeds) << run.errors << run.output;
        return run;
    }
    std::vector<Json> States(const std::string& statements) { return Do(statements).With("plot_type"); }

    static std::string Command(int id) { return "! " + std::to_string(id); }
    static std::string Part(const Json& state, std::size_t part) { return state["status"][part - 1]; }
    static std::array<double, 4> Window(const Json& s) { return {s["x_view_min"], s["x_view_max"], s["first_pattern"], s["last_pattern"]}; }

    std::string open_;
};

TEST_F(Many_Patterns, EachFormShowsTheSameRowsAndLeadsToTheOthers) {
    Make(6);
    std::string script = "?";
    const std::pair<int, const char*> forms[] = {{contour, "graph2dcontour"},
                                                 {contour_log, "graph2dcontour_log"},
                                                 {contour, "graph2dcontour"},
                                                 {lines_3d, "graph3d"},
                                                 {surface, "graph3dsurf"},
                                                 {contour_log, "graph2dcontour_log"},
                                                 {surface, "graph3dsurf"},
                                                 {lines_3d, "graph3d"},
                                                 {two_d_log, "multi_log"},
                                                 {lines_3d, "graph3d"},
                                                 {two_d, "multi"},
                                                 {surface, "graph3dsurf"}};
    for (const auto& [command, form] : forms) script += ";" + Command(command) + ";?;print grid";
    const Run_Result run = Do(script);
    const auto states = run.With("plot_type"), grids = run.With("grid");
    ASSERT_EQ(states.size(), std::size(forms) + 1);
    for (std::size_t i = 0; i < std::size(forms); ++i) {
        const Json& state = states[i + 1];
        const std::string form = forms[i].second;
        EXPECT_EQ(state["plot_type"], form);
        EXPECT_EQ(Part(state, 5), form);
        EXPECT_EQ(state["log_scale"], form.find("log") != std::string::npos) << form;
        EXPECT_EQ(Window(state), (std::array<double, 4>{10, 20, 1, 6})) << form;
        const bool in_space = form.starts_with("graph3d");
        EXPECT_EQ(Part(state, 3), in_space ? " Rotation :     0.00" : "") << form;
        EXPECT_EQ(Part(state, 4), in_space ? " Elevation :    22.00" : "") << form;
        EXPECT_EQ(grids[i]["grid"]["nx"], 99);  // without the first and the last point
        EXPECT_EQ(grids[i]["grid"]["ny"], 6);
    }
}

TEST_F(Many_Patterns, ARefusalLeavesFormGridAndView) {
    struct Case {
        std::size_t rows;
        int points;
        int before, command;
        std::string text;
    };
    const std::string y = "ERROR: Data points along Y < 4", x = "ERROR: Data points along X < 10";
    for (const Case& c : {Case{3, 101, two_d_log, contour, y}, Case{3, 101, two_d, contour_log, y}, Case{3, 101, lines_3d, surface, y},
                          Case{5, 11, two_d_log, contour, x}, Case{5, 11, two_d, surface, x}}) {
        Make(std::vector<double>(c.rows), c.points);
        const Run_Result run = Do(Command(c.before) + ";?;" + Command(c.command) + ";?;print grid");
        EXPECT_EQ(run.Boxes().back(), c.text);
        const auto states = run.With("plot_type");
        EXPECT_EQ(states[0], states[1]) << c.text;
        EXPECT_EQ(run.With("grid")[0]["grid"]["nx"], 0);
    }
}

// The grid's own range, and not the drawn window, spans the plot box.
TEST_F(Many_Patterns, APlaceOnAMapIsReadInTheUnitsOfItsGrid) {
    struct Case {
        std::vector<double> temperatures;
        double y;
        int row;
    };
    for (const Case& c : {Case{{0, 0, 0, 0, 0, 0}, 3.3, 3}, Case{{300, 310, 320, 400, 410, 500}, 370, 4},
                          Case{{500, 410, 400, 320, 310, 300}, 355, 4}, Case{{500, 410, 400, 320, 310, 300}, 499, 1}}) {
        Make(c.temperatures);
        const std::string y = std::to_string(c.y);
        const auto states =
            States(Command(contour) + ";@data move 14.25 " + y + ";?;@move 180.1 120.1;?;@move 1019.9 679.9;?;@move 100 400;?");
        EXPECT_EQ(Part(states[0], 3), " X= 14.2500");
        EXPECT_EQ(Part(states[0], 4), " Pattern: " + std::to_string(c.row)) << c.y;
        const auto x = [&](std::size_t i) { return std::stod(Part(states[i], 3).substr(3)); };
        EXPECT_NEAR(x(1), 10.1, 0.005);  // the first point that is drawn
        EXPECT_NEAR(x(2), 19.9, 0.005);
        const bool falls = c.temperatures.front() > c.temperatures.back();
        EXPECT_EQ(Part(states[1], 4), falls ? " Pattern: 6" : " Pattern: 1");
        EXPECT_EQ(Part(states[3], 3) + Part(states[3], 4), "");
    }
}

TEST_F(Many_Patterns, ARectangleOnAMapTakesItsRowsAndX) {
    struct Case {
        std::vector<double> temperatures;
        double x1, y1, x2, y2;
        std::array<double, 4> window;
        bool refused;
    };
    const std::vector<double> none(9), rising = {10, 20, 30, 40, 50, 60, 70, 80, 90}, falling = {90, 80, 70, 60, 50, 40, 30, 20, 10};
    const std::array<double, 4> whole = {10, 20, 1, 9};
    for (const Case& c :
         {Case{none, 12.5, 2.6, 16.5, 7.4, {12.5, 16.5, 3, 7}, false}, Case{none, 16.5, 7.4, 12.5, 2.6, {12.5, 16.5, 3, 7}, false},
          Case{none, 12.5, -5, 30, 99, {12.5, 20, 1, 9}, false}, Case{none, 12.5, 3, 12.515, 9, whole, false},
          Case{none, 12.5, 3, 16.5, 4, whole, true}, Case{none, 12.05, 2, 12.95, 8, whole, true},
          Case{rising, 12.5, 25, 16.5, 71, {12.5, 16.5, 3, 7}, false}, Case{falling, 12.5, 25, 16.5, 71, {12.5, 16.5, 3, 7}, false},
          Case{rising, 12.5, 42, 16.5, 48, whole, true}, Case{falling, 12.5, 5, 16.5, 55, {12.5, 16.5, 5, 9}, false}}) {
        Make(c.temperatures);
        const auto at = [](const char* what, double x, double y) {
            return std::string("@data ") + what + " left " + std::to_string(x) + ' ' + std::to_string(y);
        };
        const std::string drag =
            at("down", c.x1, c.y1) + ";@data move " + std::to_string(c.x2) + ' ' + std::to_string(c.y2) + ';' + at("up", c.x2, c.y2);
        const Run_Result run =
            Do(Command(contour_log) + ';' + drag + ";?;print grid;@down right 500 400;?" + (c.window == whole ? "" : ";! 40503;?"));
        const auto states = run.With("plot_type");
        for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(Window(states[0])[i], c.window[i], 2e-4) << c.x1 << ' ' << c.y1 << ' ' << i;
        EXPECT_EQ(run.Boxes().size(), c.refused ? 2u : 1u);  // behind that of the start
        EXPECT_EQ(run.With("grid")[0]["grid"]["ny"], c.window[3] - c.window[2] + 1);
        EXPECT_EQ(states[0]["plot_type"], "graph2dcontour_log");
        EXPECT_EQ(Window(states[1]), whole);
        EXPECT_EQ(Window(states.back()), Window(states[0])) << "the view before";
    }
}

// A degree a move, whatever the distance; a level move leaves that angle.
TEST_F(Many_Patterns, AGraphInSpaceTurnsByADegreeAMove) {
    Make(4);
    for (const int form : {lines_3d, surface}) {
        std::string script =
            Command(form) + ";@move 500 400;?;@down left 500 400;@move 501 400;?;@move 900 399;?;@move 900 399;?;@move 10 799;?";
        for (int i = 0; i < 60; ++i) script += ";@move " + std::to_string(i) + ' ' + std::to_string(i);
        script +=
            ";?;key Escape;?;@move 700 700;?;@down left 700 700;@move 600 600;@up left 600 600;@move 5 5;?;@wheelup 600 400;?;@down right "
            "1 1;?";
        const auto states = States(script);
        const std::pair<double, double> turned[] = {{0, 22}, {1, 22}, {2, 21},  {2, 21},  {1, 22}, {59, 45},
                                                    {0, 22}, {0, 22}, {-1, 21}, {-1, 21}, {-1, 21}};
        ASSERT_EQ(states.size(), std::size(turned));
        for (std::size_t i = 0; i < states.size(); ++i) {
            EXPECT_EQ(states[i]["view_rotation"], turned[i].first) << i;
            EXPECT_EQ(states[i]["view_elevation"], turned[i].second) << i;
            std::array<char, 64> text{};
            std::snprintf(text.data(), text.size(), " Rotation : %8.2f", turned[i].first);
            EXPECT_EQ(Part(states[i], 3), text.data()) << i;
        }
        EXPECT_NEAR(states[9]["x_view_min"].get<double>(), 11, 1e-5);
        EXPECT_EQ(Window(states[10]), Window(states[0]));
    }
}

// The saturation goes with the next preparation.
TEST_F(Many_Patterns, PreferencesReachThePicture) {
    Make(5);
    const Run_Result run = Do("pref saturation_on 1;pref saturation_value 200;" + Command(contour) +
                              ";?;print grid full;pref contour_type 5;pref contour_levels 13;"
                              "pref contour_title \"Heating\";print picture;" +
                              Command(contour_log) + ";print picture;print prefs");
    EXPECT_EQ(run.With("grid")[0]["grid"]["z_max"], 200);
    EXPECT_EQ(run.With("grid")[0]["grid"]["z"].size(), 5u);
    EXPECT_EQ(run.With("plot_type")[0]["saturation_value"], 200);
    EXPECT_EQ(run.With("prefs")[0]["prefs"]["contour_palette"].size(), 20u);
    const auto pictures = run.With("texts");
    const auto holds = [&](std::size_t i, const std::string& text) {
        return pictures[i].dump().find('"' + text + '"') != std::string::npos;
    };
    EXPECT_TRUE(holds(0, "Heating") && holds(0, "1 Min") && holds(0, "12 Max") && !holds(0, "20 Max") && holds(0, "Pattern"));
    EXPECT_TRUE(holds(1, "Heating (Log-Scale)"));
}

// An axis without extent of its own would have no place for them.
TEST_F(Many_Patterns, EqualIntensitiesStandInTheMiddleOfTheirAxis) {
    Make(4);
    for (int row = 1; row <= 4; ++row) {
        std::ofstream file(directory / ("s" + std::to_string(row) + ".xys"));
        for (int i = 0; i <= 20; ++i) file << 10 + i << " 7 1\n";
    }
    const auto pictures = Do(Command(lines_3d) + ";print picture;" + Command(surface) + ";print picture").With("texts");
    for (const Json& picture : pictures)
        for (const char* number : {"\"4\"", "\"7\"", "\"10\""})
            EXPECT_NE(picture["texts"].dump().find(number), std::string::npos) << number;
}

// By its statement, the slider, the field beside it and its buttons; the view back undoes a visit of the dialog, and Cancel all of it.
TEST_F(Many_Patterns, AWaterfallFollowsStatementsAndItsDialog) {
    Make({100, 400, 200});
    const std::string dialog = Command(40552) + ";", look = "print waterfall;";
    const Run_Result run = Do("print state;waterfall 0.5 temperature hidden;" + look + dialog + "set 4720 20;" + look + "set 4721 7.5;" +
                                  look + "set 4721 200;press 1;" + look + "print dialog;set 4721 8;press 1;" + look + "! 40503;" + look +
                                  dialog + "set Even 1;set 4725 0;press 4727;" + look + "set 4720 100;press 2;" + look +
                                  "! 40031;waterfall 2;print state;! 40027;print state",
                              false);
    const double height = run.With("y_all_max").at(0)["y_all_max"].get<double>() - run.With("y_all_max").at(0)["y_all_min"].get<double>();
    const auto looks = run.With("waterfall");
    const std::vector<std::pair<double, std::array<double, 3>>> expected = {
        {0.5, {0, 2, 2. / 3}},  {0.2, {0, 2, 2. / 3}}, {0.075, {0, 2, 2. / 3}}, {0.075, {0, 2, 2. / 3}},
        {0.08, {0, 2, 2. / 3}}, {0.5, {0, 2, 2. / 3}}, {0, {0, 0, 0}},          {0.5, {0, 2, 2. / 3}}};
    ASSERT_EQ(looks.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const auto& [offset, places] = expected[i];
        EXPECT_NEAR(looks[i]["waterfall"]["offset"], offset, 1e-6) << i;
        for (std::size_t row = 0; row < 3; ++row)
            EXPECT_NEAR(looks[i]["waterfall"]["rows"][row], offset * places[row] * height, 1e-5 * height) << i;
    }
    EXPECT_TRUE(looks[0]["waterfall"]["hidden_lines"]);
    EXPECT_FALSE(looks[6]["waterfall"]["hidden_lines"]);
    EXPECT_EQ(run.Marked().at(0), std::vector<int>{4721});
    EXPECT_NE(run.errors.find("between 0 and 1"), std::string::npos);
    const Json whole = run.With("plot_type").back();
    EXPECT_NEAR(whole["y_view_max"].get<double>(), whole["y_all_max"].get<double>() + 1.05 * height, 1e-4 * height);
}

TEST_F(Many_Patterns, EveryFormIsWrittenToEveryKindOfFile) {
    Make({300, 310, 320, 330, 340});
    std::string script;
    for (const int form : {contour, contour_log, lines_3d, surface}) {
        script += Command(form);
        for (const char* ending : {".png", ".svg", ".pdf", ".ps"}) script += ";export p" + std::to_string(form) + ending;
        script += ";! 40501;resize 640 480;resize 1200 800;";
    }
    Do(script);
    for (const int form : {contour, contour_log, lines_3d, surface})
        for (const char* ending : {".png", ".svg", ".pdf", ".ps"})
            EXPECT_GT(fs::file_size(directory / ("p" + std::to_string(form) + ending)), 2000u);
}

}  // namespace
}  // namespace vntl
