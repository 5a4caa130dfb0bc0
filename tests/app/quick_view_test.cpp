// Quick View through the real windows: its commands, what it shows of a directory, the mouse in it, and the profile that the main window
// takes over.
#include <algorithm>
#include <array>

#include "app/testing.hpp"
#include "patterns/prf_files.hpp"

namespace vntl {
namespace {

class Quick_View_Window : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        fs::create_directories(directory / "runs");
        for (const char* name : {"run2.prf", "run10.PRF", "a.xrf"}) Write(std::string("runs/") + name, name[0] == 'a');
        Write("runs/broken.prf", false, 30);
        fs::create_directories(directory / "one");
        Write("one/only.prf", false);
        fs::create_directories(directory / "none");
    }
    // x from 10 to 19.95, observed 0 to 2000 and under it nothing.
    void Write(const std::string& name, bool peaks, std::size_t bytes = std::string::npos) const {
        test::Model model = test::Make_Model(1, 4, false);
        model.zero = model.cosine = model.sine = 0;
        model.excluded.clear();
        for (std::size_t i = 0; i < model.y.size(); ++i) model.y[i] = i % 2 == 0 ? 0 : 2000;
        std::ofstream(directory / name) << test::Whole(peaks ? test::Peak_Fit(model) : test::Columns(model)).substr(0, bytes);
    }
    // With the window open; its print of the commands that walk and hand over, behind "states".
    Run_Result In_Window(std::string script, const std::vector<std::string>& files = {}) const {
        const std::string states = "print menu 40103\nprint menu 40131\nprint menu 40126\n";
        for (std::size_t at = 0; (at = script.find("states\n", at)) != std::string::npos;) script.replace(at, 7, states);
        return Script("command 40030\n" + script, files);
    }
    static std::string States(const Run_Result& run) {
        std::string states;
        for (const Json& item : run.With("enabled")) states += item["enabled"] == true ? '1' : '0';
        return states;
    }
    static Json Shown(const Run_Result& run, std::size_t which) { return run.With("quickview").at(which)["quickview"]; }
    static bool Has_Text(const Json& picture, const std::string& text) {
        return std::any_of(picture["texts"].begin(), picture["texts"].end(), [&](const Json& one) { return one["text"] == text; });
    }
};

TEST_F(Quick_View_Window, WalksThroughADirectoryAndTellsOfEachFile) {
    const Run_Result run = In_Window(
        "states\nprint picture\ndirectory runs\ncommand 40127\nstates\nprint quickview\nprint picture\ncommand 40131\nstates\n"
        "command 40131\nstates\nprint quickview\ncommand 40103\nstates\nprint quickview\ndirectory one\ncommand 40127\nstates\n"
        "directory none\ncommand 40127\nstates\nprint quickview\n");
    EXPECT_EQ(States(run),
              "000"
              "011"
              "111"
              "101"
              "111"
              "001"
              "001");
    EXPECT_EQ(run.Boxes(), (std::vector<std::string>{run.Boxes().at(0), "Unkown format files:\nbroken.prf",
                                                     "No PRF/XRF file in the selected directory "}));
    EXPECT_EQ(run.status, 1) << "a file could not be read";
    const std::vector<Json> pictures = run.With("texts");
    EXPECT_TRUE(Has_Text(pictures.at(0), "Select the directory to view"));
    EXPECT_TRUE(Has_Text(pictures.at(1), "Two oxides CELL: 4.75 Chi2: 2.375 TEMP: 293.5"));
    const std::string runs = (directory / "runs").string(), kelvin = "   Temperature:   293.50 K --    20.34 C";
    const Json first = Shown(run, 0), third = Shown(run, 1), second = Shown(run, 2), only = Shown(run, 3);
    EXPECT_EQ(first["files"], (Json{"run2.prf", "run10.PRF", "a.xrf"}));
    EXPECT_EQ(first["dir"], runs);
    EXPECT_EQ(first["temps"], Json(std::vector<std::string>(3, kelvin)));
    EXPECT_TRUE(first["open"] == true && first["count"] == 3 && first["index"] == 1);
    EXPECT_EQ(first["status"], (Json{runs + "/run2.prf" + kelvin, "( 1 / 3 )", "", ""}));
    EXPECT_EQ(third["status"][0], runs + "/a.xrf" + kelvin);
    EXPECT_EQ(second["status"][1], "( 2 / 3 )");
    EXPECT_EQ(only["files"], Json{"only.prf"}) << "a directory without files leaves what was there";
    EXPECT_EQ(first["full"], (Json{10.0, 19.9500008, -400.0, 2000.0}));
}

TEST_F(Quick_View_Window, TheMouseReadsAndZooms) {
    const Run_Result run = In_Window(
        "mouse down 300 300\nmouse up 600 600\ndirectory runs\ncommand 40127\nmouse data move 12 500\nprint quickview\n"
        "mouse move 10 10\nprint quickview\nmouse data down 12 100\nmouse data move 13 900\nmouse data up 14 1000\nprint quickview\n"
        "mouse data down 13 100\nmouse data move 13.01 900\nmouse data up 13.015 1000\nprint quickview\n"
        "mouse data down 13 100\nmouse data move 13.5 900\nkey Escape\nmouse data up 13.5 900\nprint quickview\n"
        "resize 700 500\nprint quickview\nmouse down right 600 400\nprint quickview\n"
        "mouse data down 12 100\nmouse data up 14 1000\ncommand 40131\nprint quickview\n"
        "mouse data wheelup 12 100\nprint quickview\nmouse data wheeldown 12 100\nmouse data wheeldown 19 0\nprint quickview\n");
    EXPECT_EQ(Shown(run, 0)["status"][2], "X=      12.0000");
    EXPECT_EQ(Shown(run, 0)["status"][3], "Y=        500.0");
    EXPECT_EQ(Shown(run, 1)["status"][2], "");
    const auto view = [&](std::size_t which) { return Shown(run, which)["view"].get<std::array<double, 4>>(); };
    const std::array<double, 4> zoomed = {12, 14, 100, 1000}, whole = {10, 19.95, -400, 2000};
    for (std::size_t end = 0; end < 4; ++end) {
        for (const std::size_t which : {2u, 3u, 4u, 5u}) EXPECT_NEAR(view(which)[end], zoomed[end], 1e-3) << which;
        for (const std::size_t which : {6u, 7u}) EXPECT_NEAR(view(which)[end], whole[end], 1e-3) << which;
    }
    EXPECT_NEAR(view(8)[0], 10.4, 1e-3);  // a fifth of the way to the pointer
    EXPECT_NEAR(view(8)[1], 18.36, 1e-3);
    EXPECT_EQ(view(9), view(7)) << "no farther than all of it";
    EXPECT_EQ(run.errors, "");
}

TEST_F(Quick_View_Window, TheMainWindowTakesTheProfileOver) {
    const Run_Result run = In_Window(
        "directory runs\ncommand 40127\ncommand 40126\nprint state\ncommand 40131\nanswer no\ncommand 40126\nprint rows\n"
        "answer yes\ncommand 40126\nprint rows\nprint state\nprint recent\nprint quickview\nmain\ncommand 40021\nprint state\n");
    EXPECT_EQ(run.errors, "");
    const std::string question = "The main window contain a PRF profile:\nrun2.prf\nDo you want overwrite this profile?";
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '?'), 2) << run.output;
    EXPECT_EQ(run.Boxes().at(2), question);
    EXPECT_EQ(run.Boxes().at(3), question);
    const auto states = run.With("plot_type"), rows = run.With("file_name");
    EXPECT_TRUE(states.at(0)["nperfiles"] == 1 && states[0]["prf_loaded"] == true && states[0]["plot_type"] == "single");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0]["file_name"], "run2.prf");
    EXPECT_EQ(rows[1]["file_name"], "run10.PRF");
    EXPECT_EQ(states.at(1)["nperfiles"], 1);
    EXPECT_EQ(run.With("recent").at(0)["recent"][0], (directory / "runs/run10.PRF").string());
    EXPECT_EQ(Shown(run, 0)["index"], 2);
    // A map has no room for it.
    std::string drop = "drop";
    for (int i = 0; i < 4; ++i) drop += ' ' + Pattern("rising.xye");
    const Run_Result map = Script(drop + "\ncommand 40031\ncommand 40030\ndirectory one\ncommand 40127\ncommand 40126\nprint state\n");
    EXPECT_EQ(map.Boxes().back(), "Unable to add profile to main\nwindow in mode 2D contour, 3D, 3D Surf\nor fitting");
    EXPECT_EQ(map.With("plot_type").at(0)["nperfiles"], 4);
}

TEST_F(Quick_View_Window, ThereIsOneUntilItIsClosed) {
    for (const std::string close : {"command 40114\n", "close\n"}) {
        const Run_Result run =
            In_Window("directory one\ncommand 40127\nmain\nprint menu 40030\ncommand 40019\nprint quickview\ndialog 40\n" + close +
                      "print quickview\nprint menu 40030\nprint state\ncommand 40030\nprint quickview\n");
        EXPECT_EQ(run.errors, "") << close;
        EXPECT_EQ(States(run), "01") << close;
        EXPECT_TRUE(Shown(run, 0)["open"] == true && Shown(run, 0)["count"] == 1) << "a new start leaves it";
        EXPECT_TRUE(Shown(run, 1)["open"] == false && Shown(run, 1)["count"] == 0);
        EXPECT_TRUE(Shown(run, 2)["open"] == true && Shown(run, 2)["count"] == 0);
    }
    const Run_Result left = In_Window("directory one\ncommand 40127\nmain\ncommand 40005\nprint state\n");
    EXPECT_TRUE(left.status == 0 && left.With("plot_type").empty());
}

TEST_F(Quick_View_Window, ItsPictureIsExportedAndThePreferencesAreItsOwn) {
    const Run_Result run = In_Window(
        "directory one\ncommand 40127\nresize 640 420\nexport quick.png\nexport quick.svg\npref qv_background 1,2,3\nexport other.png\n"
        "main\nexport main.png\ncommand 40033\nprint dialog\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(Text_Of(directory / "quick.svg").starts_with("<?xml"));
    EXPECT_NE(Text_Of(directory / "quick.png"), Text_Of(directory / "other.png"));
    EXPECT_NE(Text_Of(directory / "main.png"), Text_Of(directory / "other.png"));
    const Json dialog = run.With("dialog").at(0);
    const auto pages = std::find_if(dialog["fields"].begin(), dialog["fields"].end(), [](const Json& f) { return f["kind"] == "tab"; });
    ASSERT_NE(pages, dialog["fields"].end());
    EXPECT_EQ((*pages)["value"], "7");  // the place of its page
}

}  // namespace
}  // namespace vntl
