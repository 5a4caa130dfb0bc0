// The window of area detectors by scripts: a simulated crystal tells where its spots are and what each pixel counted.
#include <algorithm>
#include <cmath>
#include <numeric>
#include <sstream>

#include "app/testing.hpp"
#include "instrument/instrument_file.hpp"
#include "instrument/simulated_crystal.hpp"

namespace vntl {
namespace {

using test::Simulated_Crystal;
using Texts = std::vector<std::string>;

// Fields of the panel.
constexpr int initial = 4507, final_numor = 4508, first_run = 4513, next_run = 4515, first_frame = 4517, next_frame = 4520, sum = 4522,
              angles = 4525, scan_type = 4527, reflection = 4529, accept = 4535, projection = 4536;

class Viewer_Window : public Program {
protected:
    static Simulated_Crystal Crystal(int kind = 2, const std::string& scan = "omega", int frames = 20) {
        Simulated_Crystal made = Simulated_Crystal::Of(kind, scan);
        made.nx /= 2, made.ny /= 2, made.pitch *= 2, made.step *= 2, made.frames = frames;
        return made;
    }
    static Numor_Text Text_Of_Run(const Simulated_Crystal& crystal) {
        Numor_Text run = crystal.Text();
        for (Numor_Frame& frame : run.frames) frame.total = std::accumulate(frame.counts.begin(), frame.counts.end(), 0.0);
        return run;
    }

    // Runs in the directory `runs`, and the instrument of the first.
    void Put(const std::vector<Simulated_Crystal>& crystals) const {
        fs::create_directories(directory / "runs");
        for (const Simulated_Crystal& crystal : crystals) Write("runs/" + std::to_string(crystal.numor), Text_Of_Run(crystal).Text());
        Write("x.instrm", Instrm_File_Text(crystals.front().Instrument()));
    }
    static constexpr const char* read_all = "set 4503 x.instrm;#4502;directory runs;#4506;#4511;";

    // Opens the viewer and runs statements behind semicolons: "?" prints the viewer, "??" the panel, "#" presses one of its fields, "@" is
    // the mouse over the picture in units of its axes, a number a command of the window.
    Run_Result Do(const std::string& statements, bool succeeds = true, const Texts& files = {}) const {
        std::string text = "command 40169\n";
        std::istringstream all(statements);
        for (std::string statement; std::getline(all, statement, ';');) {
            const bool command = !statement.empty() && std::isdigit(statement[0]) != 0;
            if (statement == "??" || statement.starts_with("#") || statement.starts_with("set 45")) text += "dialog 450\n";
            if (command || statement.starts_with("@")) text += "dialog 44\n";
            if (statement.starts_with("?")) statement = statement == "?" ? "print viewer" : "print dialog";
            if (statement.starts_with("#")) statement = "press " + statement.substr(1);
            if (statement.starts_with("@")) statement = "mouse data " + statement.substr(1);
            text += (command ? "command " : "") + statement + '\n';
        }
        Run_Result run = Script(text, files);
        EXPECT_LE(run.status, 1) << statements;
        EXPECT_EQ(run.errors.find("line ") == std::string::npos, succeeds) << statements << '\n' << run.errors;
        return run;
    }
    static std::string Matrix_Text(const Matrix3d& matrix) {
        std::string text;
        char number[32];
        for (const Vector3d& row : matrix)
            for (const double value : row) std::snprintf(number, sizeof number, "%.12g ", value), text += number;
        return text;
    }
    static std::string Read_Matrix(const std::string& text) { return "#4537;set 4601 \"" + text + "\";press 1;"; }

    static std::vector<Json> All(const Run_Result& run, const std::string& topic) {
        std::vector<Json> found;
        for (const Json& line : run.With(topic)) found.push_back(topic == "dialog" ? line : line[topic]);
        return found;
    }
    static Json Field(const Json& dialog, int number) {
        for (const Json& field : dialog["fields"])
            if (field["field"] == number) return field;
        return {};
    }
    // Which of these fields are enabled, as '1' and '0'.
    static std::string Enabled(const Json& dialog, std::initializer_list<int> fields) {
        std::string states;
        for (const int number : fields) states += Field(dialog, number).value("enabled", false) ? '1' : '0';
        return states;
    }
    static void Expect_Values(const Json& object, const char* wanted, const std::string& where = {}) {
        const Json values = Json::parse(wanted);
        for (const auto& [name, value] : values.items()) EXPECT_EQ(object.value(name, Json("missing")), value) << name << ' ' << where;
    }
};

TEST_F(Viewer_Window, OpensInFrontWithItsCommandsAndItsPanel) {
    const Run_Result run = Script("command 40169\nprint menu\nprint viewer\nprint picture\ndialog 450\nprint dialog\nmain\n");
    Texts labels;
    for (const Json& item : run.With("id")) labels.push_back(item["label"]);
    for (const char* label :
         {"Set Current Instrument", "Open  Numor", "Reset", "Exit 2D Menu", "BitMap", "Contour Plot", "Open GL 3D Surface",
          "Reload Information for plots", "Linear intensity scale", "Root square intensity scale", "Logarithimic intensity scale",
          "rectangle select", "line select", "Cross Section Plot", "Omega Scan", "3D Plot"})
        EXPECT_EQ(std::count(labels.begin(), labels.end(), label), 1) << label;
    ASSERT_EQ(run.With("viewer").size(), 1u) << run.errors;
    Expect_Values(run.With("viewer")[0]["viewer"], R"({"numors": [], "current_numor": 0, "nframes": 0, "plot_kind": 0, "side_plot": 0,
        "intensity_scale": 0, "select_kind": 0, "recip_mode": false, "projection_mode": false, "view_axis": "L-View", "ub_inverse": null,
        "volume": null, "section_x": null, "window": 44, "panel": 450})");
    ASSERT_EQ(run.With("dialog").size(), 1u);
    EXPECT_EQ(Enabled(run.With("dialog")[0], {4502, 4506, 4511, first_run, next_run, first_frame, next_frame, sum, accept, projection}),
              "1100000000");
    EXPECT_FALSE(run.With("texts")[0]["texts"].empty());  // the welcome
    EXPECT_NE(run.errors.find("holds the others back"), std::string::npos) << run.errors;
}

// After each statement: run, frame, whether one can go back and forward in frames and in runs, and the title.
TEST_F(Viewer_Window, WalksThroughRunsAndFrames) {
    Simulated_Crystal one = Crystal(2, "omega", 1), last = Crystal(2, "omega", 3);
    one.numor = 123457, last.numor = 123459;
    Put({Crystal(2, "omega", 5), one, last});
    const std::string frames = "2D contour plot of projection for all frames";
    const auto title = [](int numor, int frame) {
        return "2D contour plot, Numor: " + std::to_string(numor) + "  Frame: " + std::to_string(frame);
    };
    const struct {
        std::string statement;
        int run, frame;
        std::string buttons, title;
    } steps[] = {
        {"", 1, 1, "0101", title(123456, 1)},      {"#4520", 1, 2, "1101", title(123456, 2)}, {"#4521", 1, 5, "1001", title(123456, 5)},
        {"#4518", 1, 4, "1101", title(123456, 4)}, {"#4522", 1, 4, "0001", frames},           {"#4536", 1, 4, "1101", title(123456, 4)},
        {"#4515", 2, 1, "0011", title(123457, 1)}, {"#4516", 3, 1, "0110", title(123459, 1)}, {"#4521", 3, 3, "1010", title(123459, 3)},
        {"#4514", 2, 1, "0011", title(123457, 1)}, {"#4513", 1, 1, "0101", title(123456, 1)}};
    std::string statements = read_all;
    for (const auto& step : steps) statements += step.statement + (step.statement.empty() ? "" : ";") + "?;??;";
    const Run_Result run = Do(statements);
    const auto viewers = All(run, "viewer"), panels = All(run, "dialog");
    ASSERT_EQ(viewers.size(), std::size(steps)) << run.errors << run.output;
    for (std::size_t i = 0; i < std::size(steps); ++i) {
        EXPECT_EQ(viewers[i]["current_numor"], steps[i].run) << i;
        EXPECT_EQ(viewers[i]["current_frame"], steps[i].frame) << i;
        EXPECT_EQ(viewers[i]["title"], steps[i].title) << i;
        EXPECT_EQ(Enabled(panels[i], {first_frame, next_frame, first_run, next_run}), steps[i].buttons) << i;
        EXPECT_EQ(Enabled(panels[i], {4518, 4521, 4514, 4516}), steps[i].buttons) << i;
    }
    EXPECT_EQ(viewers[0]["numors"], (Json{123456, 123457, 123459}));
    EXPECT_EQ(Field(panels[0], initial)["value"], "123456");
    EXPECT_EQ(Field(panels[0], final_numor)["value"], "123459");
    EXPECT_TRUE(run.Told().empty()) << run.output;
}

// Every pixel, in the order of each machine; scales, angles, totals.
TEST_F(Viewer_Window, ShowsWhatEachPixelCounted) {
    for (const auto& [kind, scan, angle] : {std::tuple{1, "omega", "32.00 18.00 21.00 37.00"},
                                            {2, "phi", "32.00 14.00 21.00 41.00"},
                                            {3, "q-scan", "32.80 18.00 21.40 36.20"}}) {
        const Simulated_Crystal crystal = Crystal(kind, scan, 6);
        Put({crystal});
        const Run_Result run =
            Do(std::string(read_all) + "#4520;#4520;#4520;#4520;print frame full;??;40539;print frame;print omega;40538;print frame");
        const auto frames = All(run, "frame"), omegas = All(run, "omega"), panels = All(run, "dialog");
        ASSERT_TRUE(frames.size() == 3 && omegas.size() == 1 && panels.size() == 1) << run.errors;
        const auto counts = crystal.Counts();
        std::size_t at = 0;
        for (const Json& row : frames[0]["z"])
            for (const Json& value : row) ASSERT_EQ(value, static_cast<double>(counts[4].at(at++))) << kind << ' ' << at;
        EXPECT_EQ(at, counts[4].size());
        const auto most = static_cast<double>(*std::max_element(counts[4].begin(), counts[4].end()));
        EXPECT_NEAR(frames[1]["max"].get<double>(), std::log(most), 1e-5);
        EXPECT_NEAR(frames[2]["max"].get<double>(), std::sqrt(most), 1e-4);
        EXPECT_EQ(Field(panels[0], angles)["value"], angle);
        EXPECT_EQ(Field(panels[0], scan_type)["value"], scan);
        EXPECT_TRUE(Field(panels[0], reflection)["value"].get<std::string>().starts_with(kind == 3 ? " => Q-scan: (" : " ===> hkl: ("));
        EXPECT_EQ(omegas[0]["x"], (Json{1.0, 2.0, 3.0, 4.0, 5.0, 6.0}));
        EXPECT_NEAR(omegas[0]["y"][2].get<double>(), std::log(std::accumulate(counts[2].begin(), counts[2].end(), 0.0)), 1e-5);
    }
}

TEST_F(Viewer_Window, TheMouseZoomsDrawsLinesAndReads) {
    const Simulated_Crystal crystal = Crystal();
    Put({crystal});
    const auto spots = crystal.Spots(2);
    ASSERT_FALSE(spots.empty());
    const auto& spot = spots.front();
    const auto frame = std::lround(spot.frame), px = std::lround(spot.px), py = std::lround(spot.py);
    const std::string pixel = std::to_string(px) + ' ' + std::to_string(py);
    std::string walk;
    for (int i = 1; i < frame; ++i) walk += "#4520;";
    const Run_Result run =
        Do(read_all + walk + "@move " + pixel + ";?;print pixel " + pixel + ' ' + std::to_string(frame) +
           ";40541;@down left 3 4;@move 9.5 12.25;" +
           "@up left 9.5 12.25;?;print section;print frame full;40542;?;dialog 44;print picture;40542;40540;" +
           "@down left 5 6;@move 11 15;@up left 11 15;?;@down left 9 9;@up left 9 9;?;@down right 9 9;?;@down left 5 6;dialog 44;key "
           "Escape;@up left 11 15;?");
    const auto viewers = All(run, "viewer");
    ASSERT_EQ(viewers.size(), 7u) << run.errors << run.output.substr(0, 3000);
    const long long counted =
        crystal.Counts()[static_cast<std::size_t>(frame - 1)][static_cast<std::size_t>((py - 1) * crystal.nx + px - 1)];
    EXPECT_EQ(viewers[0]["status"], (Json{" X= " + std::to_string(px), " Y= " + std::to_string(py), " Int= " + std::to_string(counted), "",
                                          " Numor= 123456 Frame= " + std::to_string(frame)}));
    ASSERT_EQ(All(run, "pixel").size(), 1u);
    EXPECT_TRUE(All(run, "pixel")[0]["hkl"].is_null());
    ASSERT_EQ(All(run, "section").size(), 1u) << run.errors;
    const Json section = All(run, "section")[0];
    ASSERT_EQ(section["y"].size(), 50u);
    EXPECT_NEAR(section["y"][0].get<double>(), All(run, "frame")[0]["z"][3][2].get<double>(), 0.01);
    EXPECT_NEAR(section["x"][49].get<double>(), std::hypot(6.5, 8.25), 1e-3);
    EXPECT_EQ(viewers[2]["side_plot"], 1);
    const auto view = [&](std::size_t i) {
        return Json{viewers[i]["x_view_min"], viewers[i]["x_view_max"], viewers[i]["y_view_min"], viewers[i]["y_view_max"]};
    };
    const Json whole = {1.0, double(crystal.nx), 1.0, double(crystal.ny)};
    EXPECT_EQ(view(2), whole);
    EXPECT_EQ(view(3), (Json{5.0, 11.0, 6.0, 15.0}));
    EXPECT_EQ(view(4), view(3)) << "a click is no rectangle";
    EXPECT_EQ(view(5), whole);
    EXPECT_EQ(view(6), whole) << "Escape lets a rectangle go";
}

// Planes and sums of planes are those of the volume.
TEST_F(Viewer_Window, BuildsReciprocalSpace) {
    const Simulated_Crystal crystal = Crystal(2, "omega", 24);
    Put({crystal});
    const Run_Result run =
        Do(read_all + Read_Matrix(Matrix_Text(crystal.UB())) +
           "print volume full;?;#4520;#4520;print frame full;?;#4536;print frame full;?;??;#4536;set 4534 1;#4535;?;print frame "
           "full;print pixel 12 12 12;set 4534 2;#4535;?");
    ASSERT_EQ(All(run, "volume").size(), 1u) << run.errors << run.output;
    const Json volume = All(run, "volume")[0];
    const auto frames = All(run, "frame"), viewers = All(run, "viewer");
    ASSERT_TRUE(frames.size() == 3 && viewers.size() == 5) << run.errors;
    EXPECT_EQ(volume["used"].get<long long>() + volume["dropped"].get<long long>(), crystal.nx * crystal.ny * crystal.frames);
    const Json &z = volume["z"], &h = volume["h_values"], &k = volume["k_values"], &l = volume["l_values"];
    const auto cell = [&](std::size_t ih, std::size_t ik, std::size_t il) { return z[(il * k.size() + ik) * h.size() + ih].get<double>(); };
    EXPECT_EQ(frames[0]["z"][3][4], cell(4, 3, 2));
    EXPECT_NEAR(frames[0]["x"][4].get<double>(), h[4].get<double>(), 1e-6);
    EXPECT_NEAR(frames[0]["y"][3].get<double>(), k[3].get<double>(), 1e-6);
    double all = 0;
    for (std::size_t il = 0; il < l.size(); ++il) all += cell(2, 1, il);
    EXPECT_NEAR(frames[1]["z"][1][2].get<double>(), all, 1e-4 * all + 1e-4);
    EXPECT_EQ(frames[2]["z"][3][5], cell(0, 5, 3));  // across h: k and l
    const struct {
        std::size_t viewer;
        const char* values;
    } views[] = {
        {0, R"V({"recip_mode": true, "view_axis": "L-View", "current_frame": 1, "x_label": " H-(r.l.u.)", "y_label": " K-(r.l.u.)"})V"},
        {2, R"V({"projection_mode": true, "title": "Reciprocal Space contour plot projection along L:"})V"},
        {3, R"V({"view_axis": "H-View", "current_frame": 1, "x_label": " K-(r.l.u.)", "y_label": " L-(r.l.u.)"})V"},
        {4, R"V({"view_axis": "K-View", "x_label": " H-(r.l.u.)", "y_label": " L-(r.l.u.)"})V"}};
    for (const auto& [viewer, values] : views) Expect_Values(viewers[viewer], values, std::to_string(viewer));
    const std::string cut = viewers[1]["title"];
    ASSERT_TRUE(cut.starts_with("Reciprocal Space contour plot cut at qL:")) << cut;
    EXPECT_NEAR(std::stod(cut.substr(cut.find(':') + 1)), l[2].get<double>(), 1e-3);
    EXPECT_EQ(Enabled(All(run, "dialog")[0], {first_frame, next_frame}), "00");
    EXPECT_FALSE(All(run, "pixel")[0]["hkl"].is_null());
    for (const char* told : {"       h-min(r.l.u.) : ", "   l-steps(1/angstr) : "})
        EXPECT_NE(run.errors.find(told), std::string::npos) << told;
}

TEST_F(Viewer_Window, AnotherRunLeavesReciprocalSpaceAndKeepsTheMatrix) {
    Simulated_Crystal other = Crystal(2, "phi", 8);
    other.numor = 123457;
    Put({Crystal(2, "omega", 6), other});
    const Run_Result run = Do(read_all + Read_Matrix(Matrix_Text(other.UB())) + "?;#4515;?;print volume;#4535;?;40531;?;??", false);
    const auto viewers = All(run, "viewer");
    ASSERT_EQ(viewers.size(), 4u) << run.errors;
    EXPECT_EQ(viewers[0]["recip_mode"], true);
    Expect_Values(viewers[1], R"({"recip_mode": false, "volume": null, "current_numor": 2, "current_frame": 1})");
    EXPECT_EQ(viewers[1]["ub"], viewers[0]["ub"]);
    EXPECT_FALSE(viewers[1]["ub"].is_null());
    EXPECT_NE(run.errors.find("no volume of reciprocal space has been built"), std::string::npos) << run.errors;
    Expect_Values(viewers[2], R"({"recip_mode": true, "current_numor": 2, "current_frame": 1})");
    Expect_Values(viewers[3], R"({"recip_mode": false, "numors": [], "ub": null, "current_numor": 0})", "after Reset");
}

TEST_F(Viewer_Window, RefusalsKeepTheRunOnTheScreen) {
    Put({Crystal(2, "omega", 4)});
    fs::create_directories(directory / "empty");
    Write("bare.instrm", "NAME R6\nDIM_XZP 100 100 0 0\n");
    Numor_Text cut = Text_Of_Run(Crystal(2, "omega", 4)), still = cut;
    still.F(18) = 0;
    Write("cut", cut.Text().substr(0, cut.Text().size() - 3000));
    Write("still", still.Text());
    const struct {
        std::string statements, told;
    } refusals[] = {{"#4502;", ""},  // the same instrument again
                    {"40530;set 4653 \"\";set 4652 1;press 1;press 2", " An instrument file should be given!"},
                    {"set 4503 nowhere;#4502", "nowhere"},
                    {"set 4530 77;#4533", "Please, Select a Year and the Reactor cycle on the respective list!!"},
                    {"set 4530 77;set 4531 2;set 4532 3;#4533", "Given Numor not found! Please check it!"},
                    {"set 4512 99;key Enter", "Searched Numor is not loaded in the list, change the range and re-start reading!"},
                    {"set 4509 5;set 4510 6;#4511", "No Numors for allocating are present!!!"},
                    {"directory empty;#4506", "empty"},
                    {"#4537;set 4601 \"1 2 3 2 4 6 0 0 1\";press 1;press 2", " Error reading the UB-Matrix"},
                    {"files cut;40166", "cut"},
                    {"@down left 3 3;@move 4 9;@up left 4 9;40544", "You need to increase the zone to PLOT"},
                    {"@down left 3 3;@move 4 9;@up left 4 9;40538;40537", ""}};
    for (const auto& [statements, told] : refusals) {
        const Run_Result run = Do(read_all + std::string("#4520;") + statements + ";?", true);
        const Texts boxes = run.Told();
        if (told.empty())
            EXPECT_TRUE(boxes.empty()) << statements << boxes.front();
        else
            EXPECT_TRUE(boxes.size() == 1 && boxes[0].find(told) != std::string::npos) << statements << run.output;
        ASSERT_EQ(run.With("viewer").size(), 1u) << statements << run.errors;
        Expect_Values(run.With("viewer")[0]["viewer"], R"({"numors": [123456], "current_frame": 2, "recip_mode": false})", statements);
    }
    for (const auto& [statements, told] :
         {std::pair{std::string("set 4503 bare.instrm;#4502;directory runs;#4506;#4511"), "Pixels by Frame is zero!!!"},
          {"set 4503 x.instrm;#4502;files still;40166;" + Read_Matrix(Matrix_Text(Crystal().UB())), "wavelength"}}) {
        const Run_Result run = Do(statements + ";?");
        ASSERT_FALSE(run.Told().empty()) << statements << run.output;
        EXPECT_NE(run.Told().back().find(told), std::string::npos) << run.Told().back();
    }
}

TEST_F(Viewer_Window, ClosingLeavesTheMainWindowAsItWas) {
    Put({Crystal(2, "omega", 4)});
    for (const std::string way : {"40532", "dialog 44;close"}) {
        const Run_Result run = Do(read_all + std::string("40543;40542;") + way + ";print state;print viewer", false,
                                  {SOURCE_TREE "/examples/corundum_cuka.xye"});
        EXPECT_NE(run.errors.find(" Leaving 2D mode"), std::string::npos) << run.errors;
        EXPECT_NE(run.errors.find("the viewer of area detectors is not open"), std::string::npos) << run.errors;
        ASSERT_EQ(run.With("plot_type").size(), 1u) << run.errors;
        const Run_Result alone = Script("print state\n", {SOURCE_TREE "/examples/corundum_cuka.xye"});
        EXPECT_EQ(run.With("plot_type")[0], alone.With("plot_type")[0]) << way;
    }
    const Run_Result ended = Do(std::string(read_all) + "quit");
    EXPECT_NE(ended.errors.find(" Leaving 2D mode"), std::string::npos) << ended.errors;
}

}  // namespace
}  // namespace vntl
