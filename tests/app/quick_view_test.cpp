// Quick View through the real windows: its commands, what it shows of a directory, the mouse in it, and the profile that the main window
// takes over.
#include <array>

#include "app/testing.hpp"
#include "patterns/prf_files.hpp"

namespace vntl {
namespace {

class Quick_View_Window : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        for (const char* name : {"runs/run2.prf", "runs/run10.PRF", "runs/a.prf", "one/only.prf"}) {
            fs::create_directories((directory / name).parent_path());
            test::Model model = test::Make_Model(1, 4, false);
            model.zero = model.cosine = model.sine = 0;
            for (std::size_t i = 0; i < model.y.size(); ++i) model.y[i] = i % 2 == 0 ? 0 : 2000;
            std::ofstream(directory / name) << test::Whole(test::Columns(model));
        }
    }
    // With the window open and a directory looked through.
    Run_Result In_Window(const std::string& script, const std::string& runs = "runs") const {
        return Script("command 40030\nprint picture\ndirectory " + runs + "\ncommand 40127\n" + script);
    }
    static std::string States(const Run_Result& run) {
        std::string states;
        for (const Json& item : run.With("enabled")) states += item["enabled"] == true ? '1' : '0';
        return states;
    }
    static Json Shown(const Run_Result& run, std::size_t which) { return run.With("quickview").at(which)["quickview"]; }
};

TEST_F(Quick_View_Window, WalksThroughADirectoryAndHandsOver) {
    const std::string states = "print menu 40103\nprint menu 40131\nprint menu 40126\n";
    const Run_Result run = In_Window(states + "print quickview\ncommand 40131\n" + states + "command 40126\ncommand 40131\n" + states +
                                     "command 40103\ncommand 40131\nanswer yes\ncommand 40126\nprint rows\nprint picture\n");
    EXPECT_EQ(States(run), "011111101");
    const Json first = Shown(run, 0);
    const std::string file = (directory / "runs/a.prf").string() + "   Temperature:   293.50 K --    20.34 C";
    EXPECT_EQ(first["files"], (Json{"a.prf", "run2.prf", "run10.PRF"}));
    EXPECT_EQ(first["status"], (Json{file, "( 1 / 3 )", "", ""}));
    EXPECT_EQ(first["full"], (Json{10.0, 19.9500008, -400.0, 2000.0}));
    EXPECT_EQ(run.Boxes().back(), "The main window contain a PRF profile:\nrun2.prf\nDo you want overwrite this profile?");
    EXPECT_EQ(run.With("file_name").at(0)["file_name"], "run10.PRF");
    const std::vector<Json> pictures = run.With("texts");
    EXPECT_EQ(pictures.at(0)["texts"][0]["text"], "Select the directory to view");
    EXPECT_EQ(pictures.at(1)["texts"][0]["text"], "Two oxides CELL: 4.75 Chi2: 2.375 TEMP: 293.5");
    EXPECT_TRUE(run.status == 0 && run.errors.empty()) << run.errors;
    EXPECT_EQ(States(In_Window(states, "one")), "001");
}

TEST_F(Quick_View_Window, TheMouseReadsAndZooms) {
    const Run_Result run = In_Window(
        "mouse data move 12 500\nprint quickview\nmouse data down 14 900\nmouse move 10 10\nmouse data up 12 100\nprint quickview\n"
        "mouse data down 13 100\nmouse data up 13.015 900\nmouse data down 13 100\nkey Escape\nmouse data up 13.5 900\n"
        "mouse data down 13 500\nmouse data up 13.5 500\nresize 700 500\nprint quickview\n"
        "mouse down right 600 400\nprint quickview\nmouse data wheelup 12 100\nprint quickview\ncommand 40131\nprint quickview\n");
    EXPECT_EQ(Shown(run, 0)["status"][2], "X=      12.0000");
    EXPECT_EQ(Shown(run, 0)["status"][3], "Y=        500.0");
    EXPECT_EQ(Shown(run, 1)["status"][2], "");
    // A rectangle; three that are no view; the whole; a fifth of the way to the pointer; another file.
    const std::array<double, 4> whole = {10, 19.95, -400, 2000}, zoomed = {12, 14, 100, 900}, wheeled = {10.4, 18.36, -400, 2000};
    for (std::size_t which = 0; const std::array<double, 4>& expected : {whole, zoomed, zoomed, whole, wheeled, whole}) {
        const auto view = Shown(run, which++)["view"].get<std::array<double, 4>>();
        for (std::size_t end = 0; end < 4; ++end) EXPECT_NEAR(view[end], expected[end], 1e-3) << which;
    }
}

TEST_F(Quick_View_Window, ThereIsOneUntilItIsClosed) {
    for (const std::string close : {"command 40114\n", "close\n"}) {
        const Run_Result run = In_Window(
            "export quick.png\npref qv_background 1,2,3\nexport other.png\nmain\nprint menu 40030\n"
            "command 40033\nprint dialog\npress 2\nmain\ncommand 40019\nprint quickview\ndialog 40\n" +
            close + "print quickview\nprint menu 40030\ncommand 40030\nprint quickview\n");
        EXPECT_EQ(States(run), "01") << close << run.errors;
        EXPECT_EQ(Shown(run, 0)["count"], 3) << "a new start leaves it";
        for (const std::size_t which : {1u, 2u}) {
            EXPECT_EQ(Shown(run, which)["open"], which == 2);
            EXPECT_EQ(Shown(run, which)["count"], 0);
        }
        EXPECT_NE(Text_Of(directory / "quick.png"), Text_Of(directory / "other.png"));
        const Json dialog = run.With("dialog").at(0);
        for (const Json& field : dialog["fields"]) EXPECT_TRUE(field["kind"] != "tab" || field["value"] == "7") << "the place of its page";
    }
}

}  // namespace
}  // namespace vntl
