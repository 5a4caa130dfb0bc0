// The window of the model by scripts: where its corners, its eye and its light stand, what the hand and the timer do, dialogs and files.
#include <algorithm>
#include <cmath>
#include <sstream>

#include "app/testing.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

class Model_3D : public Program {
protected:
    // Rows of 23 points, of which a full view shows 21: intensities that the filter keeps, or a noise of the highest frequency.
    void Make(int rows, bool noise = false) {
        open_ = "drop";
        for (int k = 0; k < rows; ++k) {
            const std::string name = "s" + std::to_string(k) + ".xys";
            std::ofstream file(directory / name);
            file << "XYDATA\nTITLE row\nTEMP " << 300 + 10 * k << "\n#\n1\n2\n3\n";
            for (int i = -1; i <= 22; ++i)  // the last record is the end
                file << 10 + 0.5 * i << ' ' << (noise ? 1000 + ((i + k) % 2 == 0 ? 500 : -500) : Intensity(i, k)) << " 1\n";
            open_ += ' ' + name;
        }
    }
    static double Intensity(int i, int k) { return 100 + 3 * i * i + 20 * k; }

    // Opens the rows and the model and runs statements behind semicolons: "?" prints it, "@" is the mouse, a number a command.
    Run_Result Do(const std::string& statements, bool succeeds = true, const std::string& before = {}) {
        std::string text = open_ + '\n';
        std::istringstream all(before + ";40022;" + statements);
        for (std::string statement; std::getline(all, statement, ';');) {
            const bool command = !statement.empty() && std::isdigit(statement[0]) != 0;
            if (statement == "?") statement = "print model3d";
            if (statement.starts_with("@")) statement = "mouse " + statement.substr(1);
            text += (command ? "command " : "") + statement + '\n';
        }
        Run_Result run = Script(text);
        EXPECT_EQ(run.status == 0, succeeds) << statements << '\n' << run.errors << run.output;
        return run;
    }
    // What the model is after the statements, each time that it is printed.
    std::vector<Json> Models(const std::string& statements) {
        std::vector<Json> found;
        for (const Json& line : Do(statements).With("model3d")) found.push_back(line["model3d"]);
        return found;
    }
    static Texts Told(const Run_Result& run) {
        const Texts boxes = run.Boxes();
        return {boxes.begin() + !boxes.empty(), boxes.end()};  // behind the one about the preferences
    }
    static void Expect_Near(const Json& list, const std::vector<double>& wanted, const std::string& what) {
        ASSERT_EQ(list.size(), wanted.size()) << what;
        for (std::size_t k = 0; k < wanted.size(); ++k) EXPECT_NEAR(list[k].get<double>(), wanted[k], 1e-5) << what << ' ' << k;
    }

    std::string open_;
};

TEST_F(Model_3D, ItOpensWithTheSeriesInItsBox) {
    Make(5);
    const auto models = Models("print model3d full;40062;set 4331 0.5;set 4332 2;set 4333 5;press 1;print model3d full;print picture");
    ASSERT_EQ(models.size(), 2u);
    const Json& first = models[0];
    Expect_Near(first["eye"], {13.065629, 7.6536694, -13.065629}, "eye");
    Expect_Near(first["light"], {8.485281, 8.485281, 0}, "light");
    EXPECT_EQ(first["render_mode"], 4);
    EXPECT_EQ(first["spin_step"], 4);
    EXPECT_EQ(first["vertices"], 105);
    EXPECT_EQ(first["facets"], 80);
    const double least = Intensity(0, 0), most = Intensity(20, 4);
    for (const auto& [model, x, y, z] : {std::tuple{first, 1.0, 1.0, 1.0}, {models[1], 0.5, 2.0, 5.0}})
        for (int k = 0; k < 5; ++k)
            for (int i = 0; i < 21; ++i) {
                const double up = (Intensity(i, k) - least) * 2.5 * y / (most - least) - 2.5 * y / 3;
                Expect_Near(model["points"][static_cast<std::size_t>(21 * k + i)], {x * (-1.5 + 0.15 * i), up, z * (-1 + 0.5 * k)},
                            "vertex");
            }
}

struct Turn {
    std::string statements;
    double azimuth, elevation, distance;
};

TEST_F(Model_3D, TheHandTheWheelAndTheTimerMoveTheEye) {
    Make(4);
    std::string wheel_up, wheel_down;
    for (int i = 0; i < 12; ++i) wheel_up += "@wheelup 600 400;";
    for (int i = 0; i < 30; ++i) wheel_down += "@wheeldown 600 400;";
    const std::string rotation = "40047;set \"Ang. Rotation\" ";
    const Turn turns[] = {
        {"@wheelup 1 1", -45, 22.5, 21},
        {wheel_up, -45, 22.5, 30},
        {wheel_down, -45, 22.5, 2},
        {"@down left 600 400;@move 300 300", 0, 45, 20},
        {"@down left 600 400;@move 500 400;@move 300 300;@up left 300 300;@move 900 900", 0, 45, 20},
        {"@down right 600 400;@move 300 300;@up right 300 300", -45, 22.5, 20},
        {"@move 300 300", -45, 22.5, 20},
        {"@down left 600 400;@move -1000 400", -165, 22.5, 20},
        {"@down left 600 400;@move 2000 400", 105, 22.5, 20},
        {"@down left 0 800;@move 0 0", -45, 89.9, 20},
        {"@down left 0 800;@move 0 -99999;@move 0 99999;@move 0 99998", -45, -89.675, 20},
        {"@down left 0 0;@move 0 1e300", -45, -89.9, 20},
        {"timer 1;timer 2", -41, 22.5, 20},
        {"40074;timer 1;timer 1", -53, 22.5, 20},
        {rotation + "178;dialog 43;40040;timer 1;timer 1", -170, 22.5, 20},
        {rotation + "-178;press 2;40074;timer 1", 176, 22.5, 20},
        {"40047;set \"Ang. Elevation\" 90;set Distance 7", -45, 89.9, 7},
        {"40062;timer 1;resize 500 300;timer 1;press 2", -37, 22.5, 20},
    };
    for (const Turn& turn : turns) {
        const Json model = Models(turn.statements + ";?").back();
        EXPECT_NEAR(model["azimuth"].get<double>(), turn.azimuth, 1e-3) << turn.statements;
        EXPECT_NEAR(model["elevation"].get<double>(), turn.elevation, 1e-3) << turn.statements;
        EXPECT_NEAR(model["distance"].get<double>(), turn.distance, 1e-3) << turn.statements;
    }
    const Run_Result run = Do("40040;?;40074;?;40060;?;print timers;40071;?;40073;?;40059;print timers");
    std::vector<double> steps;
    for (const Json& line : run.With("model3d")) steps.push_back(line["model3d"]["spin_step"]);
    EXPECT_EQ(steps, (std::vector<double>{5, -5, -2, -1, 1}));
    const auto timers = run.With("timers");
    EXPECT_EQ(timers.at(0)["timers"], Json::parse(R"([{"window":43,"number":1,"ms":30,"repeat":true}])"));
    EXPECT_TRUE(timers.at(1)["timers"].empty());
}

TEST_F(Model_3D, RenderModesAndColoursAreChosen) {
    Make(4);
    const Run_Result run =
        Do("print menu 40054;40050;?;print menu 40050;print menu 40054;40053;?;print menu 40051;print menu 40055;colour 1 2 3;40063;"
           "colour 4 5 6;40048;?");
    std::vector<int> modes;
    for (const Json& line : run.With("model3d")) modes.push_back(line["model3d"]["render_mode"]);
    EXPECT_EQ(modes, (std::vector<int>{0, 3, 3}));
    EXPECT_EQ(run.With("model3d").back()["model3d"]["model_colour"], 1 + 256 * 2 + 65536 * 3);
    EXPECT_EQ(run.With("model3d").back()["model3d"]["edge_colour"], 4 + 256 * 5 + 65536 * 6);
    std::vector<bool> checked, enabled;
    for (const Json& line : run.With("id")) checked.push_back(line["checked"]), enabled.push_back(line["enabled"]);
    EXPECT_EQ(checked, (std::vector<bool>{true, true, false, false, false}));
    EXPECT_EQ(enabled, (std::vector<bool>{true, true, true, false, false}));
    EXPECT_NE(Do("40051", false).errors.find("command 40051 is disabled"), std::string::npos);
}

TEST_F(Model_3D, ABadScaleIsRefusedAndTheModelStays) {
    Make(4);
    const Run_Result run =
        Do("40062;set 4331 2;set 4332 0.1;press 1;print dialog;?;set 4332 5.01;press 1;set 4332 0.2;set 4333 5;press 1;?;40062;set 4331 "
           "1;press "
           "2;?");
    EXPECT_EQ(Told(run), Texts(2, "Invalid value. Try again."));
    EXPECT_EQ(run.Marked(), std::vector<std::vector<int>>{{4332}});
    const auto models = run.With("model3d");
    Expect_Near(models.at(0)["model3d"]["scale"], {1, 1, 1}, "refused");
    for (const std::size_t i : {1u, 2u}) Expect_Near(models.at(i)["model3d"]["scale"], {2, 0.2, 5}, "taken");
}

TEST_F(Model_3D, LightAndViewFollowTheirSliders) {
    Make(4);
    const Run_Result run =
        Do("40046;set \"Ang. Elevation\" 30;set \"Ang. Rotation\" -120;print dialog;@wheelup 1 1;?;dialog 43;40047;print dialog;@down left "
           "600 "
           "400;@move 300 300;print dialog;press 2;dialog 431;press 2;?");
    const double half = std::sqrt(3.0) / 2;
    for (const Json& line : run.With("model3d")) Expect_Near(line["model3d"]["light"], {-12 * half * 0.5, 6, -12 * half * half}, "light");
    const auto value = [](const Json& dialog, const std::string& label) {
        for (const Json& field : dialog["fields"])
            if (field["label"] == label) return field["value"].get<std::string>();
        return std::string();
    };
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 3u) << run.output;
    EXPECT_EQ(dialogs[0]["title"], "Vantrelo 3D Light Control");
    EXPECT_EQ(value(dialogs[0], "Z :"), "-9.000");
    EXPECT_EQ(dialogs[1]["title"], "Vantrelo 3D Obs. Control");
    EXPECT_EQ(value(dialogs[1], "Rotation :") + '|' + value(dialogs[1], "Elevation :") + '|' + value(dialogs[1], "Distance"),
              "-45.00|22.50|21");
    EXPECT_EQ(value(dialogs[2], "Rotation :") + '|' + value(dialogs[2], "Ang. Elevation") + '|' + value(dialogs[2], "X :"),
              "0.00|45|14.849");
}

// Each time the noise is multiplied twice, along and across, by what the filter makes of it: (-3 - 12 + 17 - 12 - 3)/35. The map that the
// model was made of shows its smoothed grid, and says so, until it is drawn anew.
TEST_F(Model_3D, TheFilterSmoothsOnceMoreAndTheMapToo) {
    Make(15, true);
    const Run_Result run =
        Do("40041;print state;print grid full;40022;?;40061;40061;close;print grid full;40227;40031;print state;print grid full", true,
           "40031;print grid full");
    const auto grids = run.With("grid"), states = run.With("plot_type");
    const double left = std::pow(13.0 / 35, 2);
    for (const auto& [i, noise] : {std::pair{0u, -500.0}, {1u, -500 * left}, {2u, -500 * std::pow(left, 3)}, {3u, -500.0}})
        EXPECT_NEAR(grids.at(i)["grid"]["z"][7][10].get<double>(), 1000 + noise, 2e-3) << i;
    std::vector<bool> smoothed;
    for (const Json& line : grids) smoothed.push_back(line["grid"]["smoothed"]);
    EXPECT_EQ(smoothed, (std::vector<bool>{false, true, true, false}));
    EXPECT_EQ(states.at(0)["status"][0], "smoothed");
    EXPECT_EQ(states.at(1)["status"][0], "");
    EXPECT_EQ(states.at(0)["plot_type"], "graph2dcontour");
}

TEST_F(Model_3D, ASolidIsSavedUnderItsExtension) {
    Make(4);
    fs::create_directories(directory / "d.x");
    const std::pair<const char*, const char*> names[] = {
        {"pic.dat", "pic.w3d"}, {"pic2", "pic2.w3d"}, {"a.b.c", "a.b.w3d"}, {"d.x/pic", "d.x/pic.w3d"}, {"e.W3D", "e.w3d"}};
    std::string statements;
    for (const auto& [chosen, saved] : names) statements += std::string("files ") + chosen + ";40223;";
    const Run_Result run = Do(statements + "files cancel;40223");
    for (const auto& [chosen, saved] : names) EXPECT_TRUE(Text_Of(directory / saved).starts_with("w3d ")) << chosen;
    for (const std::string& text : Told(run))
        EXPECT_EQ(text,
                  "This option saves the image to the disk as a file with extension .w3d. The file can be visualized with the utility: 3D "
                  "viewer. From the 3D viewer you can change the orientation and save the image in various formats");
    EXPECT_EQ(Told(run).size(), 6u);
    std::ofstream(directory / "pic.w3d") << "old";
    const Run_Result asked = Do("files pic;answer ok;answer no;40223");
    EXPECT_EQ(Told(asked).back(), "The file exist,\nDo you want overwrite it?");
    EXPECT_EQ(Text_Of(directory / "pic.w3d"), "old");
    Do("files pic;answer ok;answer yes;40223");
    EXPECT_TRUE(Text_Of(directory / "pic.w3d").starts_with("w3d "));
    EXPECT_EQ(Told(Do("files nowhere/pic;40223", false)).back(),
              "The 3D model file cannot be written:\n" + (directory / "nowhere/pic.w3d").string());
}

// From where it was seen and in its colours; its factors have become its shape.
TEST_F(Model_3D, ASavedSolidIsShownAgain) {
    Make(4);
    const std::string turned =
        "@down left 600 400;@move 300 300;@up left 300 300;@wheelup 1 1;40050;colour 9 8 7;40063;colour 6 5 4;40048;";
    const Run_Result run = Do(turned +
                              "40046;set 4311 10;press 2;40062;set 4331 3;press 1;print model3d full;files pic;40223;40041;"
                              "drop pic.w3d;print model3d full;print menu 40061;40062;set 4331 0.5;press 1;print model3d full;"
                              "40041;print state");
    const auto models = run.With("model3d");
    ASSERT_EQ(models.size(), 3u) << run.errors;
    const Json saved = models[0]["model3d"], shown = models[1]["model3d"], narrow = models[2]["model3d"];
    for (const char* same : {"render_mode", "vertices", "facets", "model_colour", "edge_colour", "points"})
        EXPECT_EQ(saved[same], shown[same]) << same;
    for (const char* near : {"eye", "light"})
        for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(saved[near][k].get<double>(), shown[near][k].get<double>(), 1e-4) << near;
    Expect_Near(shown["scale"], {1, 1, 1}, "scale");
    EXPECT_NEAR(narrow["points"][0][0].get<double>(), -1.5 * 3 * 0.5, 1e-5);
    EXPECT_EQ(run.With("id").at(0)["enabled"], false) << "there is no grid to smooth";
    EXPECT_EQ(run.With("plot_type").back()["nperfiles"], 4);
    std::ofstream(directory / "bad.w3d") << "w3d 1\nv 1 2\nend\n";
    const Run_Result alone = Script("print model3d\nclose\nprint state\ndrop bad.w3d\n", {"pic.w3d"});
    EXPECT_EQ(alone.With("model3d").at(0)["model3d"]["vertices"], 84);
    EXPECT_EQ(alone.With("plot_type").back()["plot_type"], "none");
    ASSERT_EQ(Told(alone).size(), 1u);
    EXPECT_NE(Told(alone)[0].find("bad.w3d"), std::string::npos) << Told(alone)[0];
}

TEST_F(Model_3D, ItsOtherCommandsTellShowAndPrint) {
    Make(5);
    const Run_Result run =
        Do("40032;40078;print dialog;press 1;40066;print dialog;press 1;40039;press 1;print picture;export out.svg;resize 300 200;"
           "close;print state");
    EXPECT_EQ(Told(run), Texts{"This option is not working presently, please use the W3D option. "});
    const Json info = run.With("dialog").at(0);
    EXPECT_EQ(info["title"], "Info model");
    EXPECT_EQ(info["fields"][0]["label"].get<std::string>() + info["fields"][0]["value"].get<std::string>(), "Vertices :105");
    EXPECT_EQ(info["fields"][1]["value"], "80");
    EXPECT_EQ(run.With("dialog").at(1)["title"], "About");
    EXPECT_NE(Text_Of(directory / "filename.ps").find("Vantrelo-2006 Version: 0.50"), std::string::npos) << "the stamp";
    const Json picture = run.With("texts").at(0);
    EXPECT_EQ(picture["fills"][0]["colour"], 192 * 65793);
    EXPECT_GT(fs::file_size(directory / "out.svg"), 1000u);
    EXPECT_EQ(run.With("plot_type").back()["plot_type"], "multi");
    EXPECT_NE(Do("main", false).errors.find("what is in front holds the others back"), std::string::npos);
}

TEST_F(Model_3D, WhereThereIsNoGridNothingOpens) {
    Make(3);
    const Run_Result few = Do("print model3d", false);
    EXPECT_EQ(Told(few), Texts{"ERROR: Data points along Y < 4"});
    EXPECT_NE(few.errors.find("no model is open"), std::string::npos);
    Make(4);
    EXPECT_EQ(Do("exit").With("plot_type").size(), 0u) << "the program ends with the window open";
}

}  // namespace
}  // namespace vntl
