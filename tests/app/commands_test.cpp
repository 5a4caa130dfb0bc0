// Every command through the real program: its number, its label, and where a user can choose it.
#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>
#include <string_view>

#include "app/testing.hpp"

namespace vntl {
namespace {

// A command a line: number; its state without a pattern, with one and with several; label ("*": a label that may change).
// 1 enabled, 0 disabled, . as it was before, ? not looked at here, such as the x spaces, which follow from the patterns.
// What one pattern leaves is what a finished calculation leaves: each may be enabled, and nothing in one is.
constexpr const char* table = R"(
40002 ?0. Save background
40005 111 Exit
40006 111 X space
40008 ?0. Save peaks
40009 011 Save Buffer file...
40010 ??? Free Format
40014 111 Open Pattern file (*.dat)
40015 111 Open Buffer file (*.buf)
40016 111 Open Rietveld/Profile file (*.prf)
40017 0?? d-space
40018 111 About
40019 111 Reset
40020 011 Fourier filtering
40021 011 Focus
40022 001 OpenGL 3D model
40023 011 Show
40024 010 Profile fitting
40025 011 Sorting
40026 001 Normalize(Monitor)
40027 001 Graph 2D
40028 001 Graph 3D
40030 111 Quick View PRF
40031 001 Graph 2D Contour
40033 111 Preferences...
40034 011 Admin excluded regions
40035 011 Smoothing
40036 ??? Focus Profile
40037 011 Delete
40038 ??? *
40042 0?? 2theta
40043 0?? Time (TOF)
40044 011 Save Graphic into file...
40067 ??? *
40068 ??? *
40069 ??? *
40070 ??? *
40076 ??? Vantrelo-2006 news?
40079 ??? Download Quendrix Suite
40080 ??? Download Vantrelo-2006
40081 0?? s-space
40082 ??? Quendrix user's guide (ASCII)
40084 ??? HTML format
40085 ??? PDF file
40086 ??? Quendrix Studio user's guide
40087 0?? Change wavelength
40088 0?? Change ddt1/dtt2
40089 0?? Q-space
40090 ??? Polynomial filtering
40091 010 Peak detection
40092 ?0. Auto detection
40093 ?0. Insert peak
40094 ?0. Delete peak
40095 .10 Enable
40096 ?1. Enable
40097 ?0. Disabled
40098 ??? Dicvol Format
40099 .00 Disabled
40100 001 Summation
40101 001 Difference
40102 011 Copy profile
40104 111 Edit a PCR file
40105 011 Shift all profiles graphically
40106 011 Left
40107 111 Text editor
40108 111 Run Quendrix Studio
40109 011 Right
40110 011 Select excluded regions
40111 111 View target at centre
40113 000 *
40115 011 Scaling Y
40116 011 Right
40117 111 Run Tabedit
40118 011 Go Up
40119 011 Go Down
40120 011 Background
40121 ??? QXnews Text Editor
40122 011 Print...
40123 001 Average
40124 011 Scaling X
40125 001 Graph 3D Surface
40128 111 Open Cmd window
40129 111 Run GLinker
40130 ??? *
40132 111 Explorer
40133 011 All left
40134 111 Run GMapper
40135 111 Run Quendrix
40136 011 Contract graph
40137 011 Expand graph
40138 ?1. Enable
40139 ?0. Disabled
40141 001 Shift
40142 111 Run Repsolve
40144 ?0. Insert point
40145 ?0. Delete point
40146 ?0. Clear all
40147 ?0. Clear all
40148 ?0. Clear all
40149 011 Offset/Align
40150 .00 Start/Repeat Refinement
40151 011 Insert excluded regions
40154 011 HKL Gen
40155 ??? View result of sequential refinements
40156 ??? QXnews HTML
40157 111 Open Raw Data file (3t2, g44)
40158 001 Playing
40159 ?0. Auto detection
40160 ??? Ito Format
40161 111 Run Quendrix sequential refinement
40162 011 Multiply Y / Shift X / Normalize
40163 011 Apply Eff. Corr.
40169 ??? Vantrelo 2D
40177 ??? Vecfind Format
40178 111 Run Vecfind
40179 ??? Vantrelo Generic Graphs
40180 ?0. Satellites detection
40188 111 Run Dicvol
40191 ??? Treor Format
40192 111 Run Ito
40193 111 Run Treor
40194 ?0. Auto detection
40197 111 Run Rawmerge
40207 111 Run Radiox
40208 ??? Free Format File (.dat)
40209 ??? XY / XYS Data File (.xys)
40210 111 View Header Numor...
40211 111 Open KVR Instrument + Numors
40212 111 Open Numor File (KVR)
40213 111 Prepare a OSL file for Radiox
40215 011 Spectral Lines
40216 ??? K-alpha1
40217 ??? K-alpha2
40218 ??? K-beta
40219 ??? L-alpha1 (W)
40220 ??? Enable
40221 ??? Disabled
40222 ??? Settings
40224 .0. Load PIK/NEW file
40225 .0. Edit PIK-file
40226 001 Graph 2D (Log-Scale)
40227 001 Graph 2D Contour (Log-Scale)
)";

enum Column { empty, one, several };  // of the states

struct Expected {
    std::string states, label;
};

std::map<int, Expected> Expected_Commands() {
    std::map<int, Expected> commands;
    std::istringstream lines(table);
    Expected command;
    for (int id = 0; lines >> id >> command.states >> std::ws && std::getline(lines, command.label);) commands[id] = command;
    return commands;
}

TEST_F(Program, EveryFormOffersItsCommands) {
    struct Step {
        std::string statement, plot_type;
        Column column;
    };
    const std::string open = "open " + Pattern("rising.xye");
    const Step steps[] = {
        {"# start", "none", empty},
        {open, "single", one},
        {open, "multi", several},
        {"command 40226", "multi_log", several},
        {"command 40027", "multi", several},
        {"command 40019", "none", empty},
        {open, "single", one},
        {"command 40019", "none", empty},  // leaves other states behind than several patterns do
    };
    std::string script;
    for (const Step& step : steps) script += step.statement + "\nprint menu\nprint state\n";
    const auto run = Script(script);
    EXPECT_EQ(run.status, 0) << run.errors;

    const auto states = run.With("plot_type");
    ASSERT_EQ(states.size(), std::size(steps)) << run.errors;
    const auto commands = Expected_Commands();
    const std::string_view text = table;
    ASSERT_EQ(static_cast<long>(commands.size()) + 1, std::count(text.begin(), text.end(), '\n')) << "a line of the table is wrong";
    std::map<int, bool> enabled;  // as expected; no entry where it is not looked at
    for (const auto& [id, command] : commands)
        if (command.states[empty] == '.') enabled[id] = false;  // nothing runs at the start

    auto line = run.lines.begin();
    for (std::size_t i = 0; i < std::size(steps); ++i) {
        const Step& step = steps[i];
        SCOPED_TRACE("step " + std::to_string(i + 1) + ", " + step.statement);
        EXPECT_EQ(states[i]["plot_type"], step.plot_type);
        EXPECT_EQ(states[i]["status"][4], step.plot_type);
        std::map<int, Json> menu;
        for (; !line->contains("plot_type"); ++line)
            if (line->contains("built")) {
                EXPECT_TRUE(menu.emplace((*line)["id"], *line).second) << (*line)["id"] << " stands twice";
            }
        ++line;
        for (const auto& [id, command] : commands) {
            const char state = command.states[step.column];
            if (state == '?') enabled.erase(id);
            if (state == '0' || state == '1') enabled[id] = state == '1';
            ASSERT_TRUE(menu.contains(id)) << id << " is missing";
            if (command.label != "*") {
                EXPECT_EQ(menu[id]["label"], command.label) << id;
            }
            if (enabled.contains(id)) {
                EXPECT_EQ(menu[id]["enabled"], enabled[id]) << id << ' ' << command.label;
            }
        }
    }
}

TEST_F(Program, DisabledCommandsFailWithTheirLineAndChangeNothing) {
    const std::string look = "print state\nprint menu\nprint rows\n";
    // Without a pattern there is nothing to move, focus, write or plot; with one there is no graph of several, no sum, no shift to end.
    const std::vector<std::pair<std::string, std::vector<int>>> cases = {
        {"", {40106, 40109, 40116, 40118, 40119, 40133, 40136, 40137, 40021, 40044, 40027, 40226}},
        {"open " + Pattern("rising.xye") + '\n', {40027, 40226, 40100, 40113}},
    };
    for (const auto& [first, disabled] : cases) {
        std::string script = first + look;
        const auto before = std::count(script.begin(), script.end(), '\n');
        for (const int id : disabled) script += "command " + std::to_string(id) + '\n';
        const auto run = Script(script + look);
        EXPECT_EQ(run.status, 1);
        for (std::size_t i = 0; i < disabled.size(); ++i) {
            const std::string error =
                "line " + std::to_string(before + static_cast<long>(i) + 1) + ": command " + std::to_string(disabled[i]);
            EXPECT_NE(run.errors.find(error), std::string::npos) << error << " is not in\n" << run.errors;
        }
        std::vector<Json> lines;
        for (const Json& line : run.lines)
            if (!line.contains("box")) lines.push_back(line);
        ASSERT_EQ(lines.size() % 2, 0u);
        for (std::size_t i = 0; i < lines.size() / 2; ++i) EXPECT_EQ(lines[i], lines[lines.size() / 2 + i]);
    }
}

// The numbers of the three scales come from the mathematics of the window in counts.
TEST_F(Program, OneKeyStepsThroughTheScalesOfOnePatternAndOfSeveral) {
    const std::string open = "open " + Pattern("rising.xye") + '\n',
                      look = "print state\nprint menu 40549\nprint menu 40508\nprint menu 40550\nprint menu 40100\n";
    for (const bool several : {false, true}) {
        const auto run = Script(open + (several ? open : "") + "command 40137\n" + look + "key Ctrl+L\n" + look +
                                "mouse down right 600 400\nprint state\ncommand 40137\nkey Ctrl+L\n" + look + "key Ctrl+L\n" + look);
        EXPECT_EQ(run.status, 0) << run.errors;
        const auto states = run.With("plot_type"), menu = run.With("checked");
        ASSERT_EQ(states.size(), 5u);
        const char* const linear = several ? "multi" : "single";
        const char* const forms[] = {linear, "multi_log", "multi_log", linear, linear};
        const char* const scales[] = {"linear", "logarithm", "logarithm", "root", "linear"};
        for (std::size_t i = 0; i < 5; ++i) {
            EXPECT_EQ(states[i]["plot_type"], forms[i]) << several << i;
            EXPECT_EQ(states[i]["y_scale"], scales[i]) << several << i;
        }
        for (std::size_t i = 0; i < 4; ++i) {
            for (std::size_t scale = 0; scale < 3; ++scale) EXPECT_EQ(menu[4 * i + scale]["checked"], scale == i % 3) << several << i;
            EXPECT_EQ(menu[4 * i + 3]["enabled"], several) << i;  // the commands of one pattern stay those of one
        }
        for (const char* end : {"x_view_min", "x_view_max"})
            for (const std::size_t i : {1u, 3u, 4u}) EXPECT_EQ(states[0][end], states[i][end]) << several << i;
        const double top = states[0]["y_view_max"];
        EXPECT_NEAR(states[1]["y_view_max"].get<double>(), std::log(top), 1e-5);
        EXPECT_NEAR(states[4]["y_view_max"].get<double>(), top, 1e-3 * top);
    }
}

TEST_F(Program, TheTargetIsToggledInEveryForm) {
    const std::string toggle = "command 40111\nprint menu 40111\ncommand 40111\nprint menu 40111\n",
                      open = "open " + Pattern("rising.xye") + '\n';
    const auto run = Script(toggle + open + toggle + open + toggle + "command 40226\n" + toggle);
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto menu = run.With("checked");
    ASSERT_EQ(menu.size(), 8u);
    for (std::size_t i = 0; i < menu.size(); ++i) EXPECT_EQ(menu[i]["checked"], i % 2 == 0) << "toggle " << i + 1;
}

}  // namespace
}  // namespace vntl
