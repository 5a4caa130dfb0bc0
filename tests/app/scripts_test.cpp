// Session scripts through the real program: what a user does, each message that he may meet, and what bad input leaves behind.
#include "app/testing.hpp"

namespace vntl {
namespace {

const std::string error_in = "ERROR in file: ";

TEST_F(Program, OpensMovesAndExports) {
    const auto run = Script("open " + Pattern("rising.xye") +
                            "\nprint state\ncommand 40106\ncommand 40137\ncommand 40119\nprint state\ncommand 40133\ncommand 40116\n"
                            "print state\ncommand 40111\nprint menu 40111\ncommand 40111\nprint menu 40111\ncommand 40021\nprint state\n"
                            "export a.png\nexport b.svg\nexport c.pdf\nexport d.ps\nexport e.gif\nprint timing\n");
    EXPECT_EQ(run.status, 1);  // the picture that ends in .gif
    const auto states = run.With("plot_type");
    ASSERT_EQ(states.size(), 4u);
    EXPECT_EQ(states[0]["plot_type"], "single");
    EXPECT_EQ(states[0]["nperfiles"], 1);
    EXPECT_EQ(states[0]["xspace"], "2theta");
    const double x1 = states[0]["x_view_min"], x2 = states[0]["x_view_max"], width = x2 - x1;
    EXPECT_NEAR(x1, 10, 1e-6);
    EXPECT_NEAR(x2, 13.8, 1e-5);
    EXPECT_NEAR(states[1]["x_view_min"].get<double>(), x1 - 0.1 * width + 0.05 * width, 1e-4);
    EXPECT_NEAR(states[1]["x_view_max"].get<double>(), x2 - 0.1 * width - 0.05 * width, 1e-4);
    EXPECT_NEAR(states[2]["x_view_max"].get<double>(), x2, 1e-4);
    EXPECT_NEAR(states[2]["x_view_max"].get<double>() - states[2]["x_view_min"].get<double>(), 0.9 * width, 1e-4);
    const auto menu = run.With("checked");
    ASSERT_EQ(menu.size(), 2u);
    EXPECT_EQ(menu[0]["checked"], true);
    EXPECT_EQ(menu[1]["checked"], false);
    EXPECT_EQ(menu[0]["label"], "View target at centre");
    for (const char* file : {"a.png", "b.svg", "c.pdf", "d.ps"}) EXPECT_GT(fs::file_size(directory / file), 1000u) << file;
    EXPECT_FALSE(fs::exists(directory / "e.gif"));
    EXPECT_NE(run.errors.find("line 20: "), std::string::npos) << run.errors;
}

TEST_F(Program, FilesThatWaitAreNotThoseOfAnOpen) {
    const auto run = Script("files " + Pattern("rising.xye") + "\nopen " + Pattern("mixed_case.Xy") + "\ncommand 40014\nprint rows\n");
    ASSERT_EQ(run.With("kind").size(), 2u) << run.errors;
    EXPECT_EQ(run.With("kind")[0]["file_name"], "mixed_case.Xy");
    EXPECT_EQ(run.With("kind")[1]["file_name"], "rising.xye");
}

TEST_F(Program, ASelectionComesInReverseAndEachByItsOwnName) {
    const auto run = Script("open " + Pattern("eleven_points.dat") + ' ' + Pattern("calculated.xys") + ' ' + Pattern("rising.xye") +
                            "\npress 1\nprint rows\nprint state\nprint recent\n");
    const auto rows = run.With("kind");
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[2]["format"], "FreeFormat");
    EXPECT_EQ(rows[0]["file_name"], "rising.xye");
    EXPECT_EQ(rows[1]["file_name"], "calculated.xys");
    EXPECT_EQ(rows[1]["kind"], "RIETV");
    EXPECT_EQ(rows[1]["format"], "XYSIGMA");
    EXPECT_EQ(run.With("plot_type").at(0)["profiles_uniform"], true);
}

TEST_F(Program, EveryMessageOfALoad) {
    const auto run =
        Script("open missing.xye\nopen " + Pattern("falling.xye") + "\nopen " + Pattern("noise.xye") + "\nopen " + std::string(TEST_DATA) +
               "\npress OK\nopen " + Pattern("empty.dat") + "\npress 1\nopen " + Pattern("ten_points.dat") + "\npress 1\nopen " +
               Pattern("huge_claim.dat") + "\npress 1\nopen " + Pattern("strange.dat") + "\nset 1002 1\npress 1\nprint state\nopen " +
               Pattern("rising.xye") + "\nopen " + Pattern("flight.xye") + "\nprint state\n");
    EXPECT_EQ(run.status, 1);
    const auto boxes = run.Boxes();
    const std::string expected[] = {
        error_in + "missing.xye\nThe file " + (directory / "missing.xye").string().substr(0, 20),
        "ERROR Opening file: falling.xye\nxmin value >= xmax value",
        error_in + "noise.xye\n",
        error_in + "data\nError opening the file: ",
        error_in + "empty.dat\nEnd of file *.dat",
        error_in + "ten_points.dat\nError in Intensity file, Problems reading 2Theta_ini, Step, 2Theta_end",
        error_in + "huge_claim.dat\nError in Intensity file, Number of intensities values is wrong!!",
        "Unknown scattering variable: furlongs",
        "Present space: 2theta, file in TOF,\nIt is not possible to merge different scattering variables",
    };
    ASSERT_EQ(boxes.size(), std::size(expected) + 1) << run.output << run.errors;  // after the one about the preferences
    for (std::size_t i = 0; i < std::size(expected); ++i) EXPECT_EQ(boxes[i + 1].substr(0, expected[i].size()), expected[i]);
    EXPECT_EQ(run.With("plot_type").at(0)["nperfiles"], 0);
    EXPECT_EQ(run.With("plot_type").at(1)["nperfiles"], 1);
}

TEST_F(Program, RecentFilesAndDropsOpenByExtension) {
    fs::copy_file(Pattern("no_extension"), directory / "no_extension");  // the contents speak for it
    const auto run = Script("drop no_extension\ncommand 40038\nopen " + Pattern("mixed_case.Xy") + "\ncommand 40038\n" + "open " +
                            Pattern("rising.xye") + "\nprint menu 40038\nprint menu 40070\nprint recent\nprint rows\n");
    ASSERT_EQ(run.Boxes().size(), 1u) << run.output;
    const auto menu = run.With("built");
    EXPECT_EQ(menu.at(0)["label"], "1. " + Pattern("rising.xye"));
    EXPECT_EQ(menu.at(1)["label"], "5. <Empty>");
    EXPECT_EQ(menu.at(1)["enabled"], false);
    EXPECT_EQ(run.With("recent").at(0)["recent"][0], Pattern("rising.xye"));
    EXPECT_EQ(run.With("kind").size(), 5u);
}

TEST_F(Program, TheFormatDialogAsksAndCancels) {
    const auto run = Script("open " + Pattern("eleven_points.dat") + "\nprint dialog\npress Cancel\nprint state\nopen " +
                            Pattern("eleven_points.dat") + "\nset \"R3B, R22 (Inst. 3)\" 1\nset 1010 1\nclose\nopen " +
                            Pattern("eleven_points.dat") + "\ncommand 40018\npress 1\nprint state\n");
    const Json dialog = run.With("dialog").at(0);
    EXPECT_EQ(dialog["dialog"], 104);
    EXPECT_EQ(dialog["title"], "Format of the data file");
    EXPECT_EQ(dialog["fields"][1]["label"], "Free Format (Inst. 0)");
    EXPECT_EQ(dialog["fields"][1]["value"], "1");
    EXPECT_EQ(run.With("plot_type").at(0)["nperfiles"], 0);
    EXPECT_EQ(run.With("plot_type").at(1)["nperfiles"], 1);
    EXPECT_NE(run.errors.find("line 10: command 40018"), std::string::npos) << run.errors;  // not served by the dialog
}

TEST_F(Program, TheFormatDialogNamesWhatItSeesAndOpensAllBanks) {
    std::ofstream file(directory / "two banks.gsa");
    file << "title\n";
    for (int bank = 1; bank <= 2; ++bank) {
        file << "BANK " << bank << " 20 20 SLOG 1000.0 3000.0 0.001 0 FXYE\n";
        for (int i = 0; i < 20; ++i) file << 1000 * bank + 10 * i << ' ' << 50 * bank + i << " 1.5\n";
    }
    file.close();
    const auto run = Script("open \"two banks.gsa\"\nprint dialog\nset \"Open all 2 banks as profiles\" 1\npress OK\nprint rows\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const Json fields = run.With("dialog").at(0)["fields"];
    EXPECT_EQ(fields[11]["field"], 1599);
    EXPECT_EQ(fields[11]["value"], "1");
    EXPECT_EQ(fields[28]["value"], "The file looks like GSASTOF.");
    const auto rows = run.With("kind");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1]["title"], "title (bank 2)");
    EXPECT_EQ(rows[1]["format"], "GSASTOF");
    EXPECT_EQ(rows[1]["scat_var"], "TOF");
}

TEST_F(Program, TheFormatDialogNamesTheFilesAndTakesEachAsItIsRecognised) {
    std::string names;
    for (int i = 1; i <= 9; ++i) {
        const std::string name = "f" + std::to_string(i) + (i == 9 ? ".txt" : ".dat");
        fs::copy_file(Pattern(i == 9 ? "rising.xye" : "eleven_points.dat"), directory / name);
        names += ' ' + name;
    }
    const auto run = Script("open" + names + ' ' + Pattern("calculated.xys") + "\nprint dialog\npress 1\nprint rows\nopen f1.dat f2.dat\n" +
                            "print dialog\npress 1\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const Json first = run.With("dialog").at(0)["fields"], alike = run.With("dialog").at(1)["fields"];
    EXPECT_EQ(first[1], (Json{{"field", 1700}, {"kind", "radio"}, {"label", "As recognised"}, {"value", "1"}, {"enabled", true}}));
    const std::string files = first[29]["value"];
    EXPECT_EQ(files.find("f9.txt (XYSIGMA)\nf8.dat (FreeFormat)\n"), 0u) << files;
    EXPECT_NE(files.find("\nand 3 more"), std::string::npos) << files;
    const auto rows = run.With("kind");
    ASSERT_EQ(rows.size(), 10u);
    EXPECT_EQ(rows[1]["format"], "XYSIGMA");
    EXPECT_EQ(rows[2]["format"], "FreeFormat");
    EXPECT_EQ(alike[1]["label"], "Free Format (Inst. 0)");
    EXPECT_EQ(alike[28]["value"], "The files look like FreeFormat.");
    EXPECT_EQ(alike[29]["value"], "f2.dat\nf1.dat");
}

// What a load left out stands in the status bar until the next command or move of the mouse; the box of a long choice is told whole.
TEST_F(Program, ALoadTellsWhatItLeftOut) {
    std::string text = "t\n", names;
    for (int i = 0; i < 30; ++i) text += std::to_string(10 + i) + (i == 4 ? " nan 1\n" : " 5 1\n");
    std::ofstream(directory / "lost.xye") << text;
    std::ofstream(directory / "back.xye") << text.insert(text.find("\n15 ") + 1, "12.5 5 1\n");
    for (int i = 0; i < 30; ++i) {
        names += " bad" + std::to_string(i) + ".xye";
        std::ofstream(directory / ("bad" + std::to_string(i) + ".xye")) << "t\nno numbers\n";
    }
    const auto run = Script("open lost.xye\nprint state\nmouse move 600 400\nprint state\nopen lost.xye\ncommand 40137\nprint state\n" +
                            std::string("answer no\nopen back.xye\nanswer yes\nopen back.xye\ndrop lost.xye") + names + "\nprint state\n");
    EXPECT_EQ(run.status, 1) << run.errors;
    const auto states = run.With("plot_type");
    ASSERT_EQ(states.size(), 4u) << run.errors;
    EXPECT_EQ(states[0]["status"][0], "1 point without a number was left out of lost.xye");
    for (const std::size_t later : {1u, 2u}) EXPECT_EQ(states[later]["status"][0], "");
    EXPECT_EQ(states[3]["status"][0], "1 point without a number was left out of lost.xye");
    EXPECT_EQ(states[3]["nperfiles"], 4);
    const auto boxes = run.Boxes();
    ASSERT_EQ(boxes.size(), 4u);
    for (const std::size_t question : {1u, 2u}) EXPECT_EQ(boxes[question].find("back.xye: x falls at point 6 (line 7).\n"), 0u) << boxes[1];
    EXPECT_EQ(boxes[3].find("1 opened, 30 refused\n\nERROR in file: bad0.xye\nError reading "), 0u) << boxes[3];
    EXPECT_NE(boxes[3].find("\n\nERROR in file: bad29.xye\n"), std::string::npos);
}

TEST_F(Program, PrintsStructures) {
    fs::create_directories(directory / "there");
    std::ofstream(directory / "there/salt.osl") << "cell 5.64 5.64 5.64 90 90 90\nspgr F m -3 m\natom Na1 NA 0 0 0 1.5\n"
                                                   "atom Cl1 CL .5 .5 .5 0 0.5\naniso beta 1 2 3 4 5 6\n";
    fs::copy(directory / "there/salt.osl", directory / "salt.txt");
    std::ofstream(directory / "p5.osl") << "cell 5 5 5 90 90 90\nspgr P 5\n";
    const auto run = Script(
        "print structure there/salt.osl\nprint structure salt.txt osl\nprint structure p5.osl\n"
        "print structure lost.osl\nprint structure salt.txt PCR\nprint structure\n");
    EXPECT_EQ(run.status, 1);
    const Json told = Json::parse(
        R"({"structure": {"mode": "OSL", "cell": [5.63999987, 5.63999987, 5.63999987, 90, 90, 90], "symbol": "F M -3 M",
            "hall": "-F 4 2 3", "number": 225, "multiplicity": 192, "atoms": [
            {"label": "Na1", "symbol": "Na", "x": 0, "y": 0, "z": 0, "biso": 1.5, "occupancy": 1, "multiplicity": 4,
             "thermal": "isotr", "aniso": [0, 0, 0, 0, 0, 0]},
            {"label": "Cl1", "symbol": "Cl", "x": 0.5, "y": 0.5, "z": 0.5, "biso": 0, "occupancy": 0.5, "multiplicity": 4,
             "thermal": "aniso", "aniso": [1, 2, 3, 4, 5, 6]}]}})");
    ASSERT_EQ(run.With("structure").size(), 2u) << run.output;
    for (const Json& line : run.With("structure")) EXPECT_EQ(line, told);
    for (const char* error : {"line 3:  Problems reading the Space Group symbol/number", "lost.osl",
                              " No Phase information was found in this PCR file. Please, check it! ", "usage: print structure FILE [MODE]"})
        EXPECT_NE(run.errors.find(error), std::string::npos) << error << '\n' << run.errors;
}

TEST_F(Program, BadStatementsAreNamedAndTheScriptGoesOn) {
    const auto run = Script(
        "frobnicate\nopen \"unclosed\ncommand 40014\ncommand 40017\ncommand 99999\nprint nothing\nprint data 1\npress 1\nanswer maybe\n"
        "mouse up left a b\nresize 0 5\nkey Nonsense\nprint state # still here\n");
    EXPECT_EQ(run.status, 1);
    for (int line = 1; line <= 12; ++line)
        EXPECT_NE(run.errors.find("line " + std::to_string(line) + ": "), std::string::npos) << line << run.errors;
    EXPECT_EQ(run.With("plot_type").size(), 1u);
}

TEST_F(Program, AnswersThatABoxDoesNotOfferFail) {
    const auto run = Script("answer yes\nopen missing.xye\n");
    EXPECT_NE(run.errors.find("line 1: "), std::string::npos) << run.errors;
    EXPECT_EQ(run.With("box").back()["answer"], "ok");
}

TEST_F(Program, StartUp) {
    EXPECT_EQ(Run({"--version"}).output, "Vantrelo-2006 Version: 0.50 June 2013\n");
    EXPECT_EQ(Run({"--help"}).status, 0);
    for (const auto& wrong : std::vector<std::vector<std::string>>{{"--nonsense"},
                                                                   {"--export", "a.png"},
                                                                   {"--script"},
                                                                   {"--size", "1x1", "a"},
                                                                   {"--export", "a.png", "--size", "big", "a"},
                                                                   {"--script", "nowhere.vns"}})
        EXPECT_EQ(Run(wrong).status, 2) << wrong.front();
    for (const char* name : {"prose", "prose.txt", "prose.x.y"}) {
        std::ofstream(directory / name) << "nothing to be seen\n";
        const auto unknown = Script("print state\n", {name});
        EXPECT_EQ(unknown.Boxes().at(1), "ERROR: Unkown Data File format");
        EXPECT_EQ(unknown.status, 1);
    }
    const auto by_contents = Script("print rows\n", {Pattern("no_extension")});
    EXPECT_EQ(by_contents.With("kind").at(0)["format"], "FreeFormat");
    EXPECT_EQ(by_contents.status, 0);
    const auto several = Script("print rows\nprint state\n", {Pattern("eleven_points.dat"), Pattern("rising.xye")});
    EXPECT_EQ(several.With("kind").at(0)["format"], "FreeFormat");
    EXPECT_EQ(several.With("kind").at(1)["format"], "XYSIGMA");
    EXPECT_EQ(several.status, 0) << several.errors;
    EXPECT_EQ(several.With("box").at(0)["box"], "Loading preferences file");
    EXPECT_EQ(several.With("box").at(0)["icon"], "information");
}

TEST_F(Program, NamesWithOddLetters) {
    const fs::path odd = directory / "a \"b\" 100% \xC3\xA9 <i>.xye";
    fs::copy_file(Pattern("rising.xye"), odd);
    const auto run = Script("open \"a \\\"b\\\" 100% \xC3\xA9 <i>.xye\"\nprint rows\n");
    ASSERT_EQ(run.With("kind").size(), 1u) << run.output;
    EXPECT_EQ(run.With("kind")[0]["file_name"], odd.filename().string());
}

TEST_F(Program, ExportWithoutAWindow) {
    const auto good = Run({"--export", "x.png", "--size", "640x400", Pattern("rising.xye"), Pattern("calculated.xys")});
    EXPECT_EQ(good.status, 0) << good.errors;
    EXPECT_EQ(Text_Of(directory / "x.png").substr(16, 8), std::string("\0\0\2\x80\0\0\1\x90", 8));  // 640 x 400 in the PNG's own head
    const auto partly = Run({"--export", "y.svg", "missing.xye", Pattern("rising.xye")});
    EXPECT_EQ(partly.status, 1);
    EXPECT_NE(partly.errors.find("missing.xye"), std::string::npos);
    EXPECT_TRUE(fs::exists(directory / "y.svg"));
    EXPECT_EQ(Run({"--export", "z.png", "missing.xye"}).status, 1);
    EXPECT_FALSE(fs::exists(directory / "z.png"));
    EXPECT_EQ(Run({"--export", "w.png", "--format", "freeformat", Pattern("rising.xye")}).status, 1);
}

// What runs without a window asks nothing of a display, answering or not; a window says what it lacks.
TEST_F(Program, ADisplayThatDoesNotAnswer) {
    std::ofstream(directory / "a.vns") << "print state\n";
    for (const std::string display :
         {"-u DISPLAY -u WAYLAND_DISPLAY", "-u WAYLAND_DISPLAY DISPLAY=:987", "-u DISPLAY WAYLAND_DISPLAY=nowhere",
          "DISPLAY=:987 WAYLAND_DISPLAY=nowhere XDG_SESSION_TYPE=wayland"}) {
        const std::string environment = "env -u QT_QPA_PLATFORM " + display;
        EXPECT_EQ(Run({"--script", "a.vns"}, environment).status, 0) << display;
        EXPECT_EQ(Run({"--export", "a.png", Pattern("rising.xye")}, environment).status, 0) << display;
        for (const std::vector<std::string>& window : {std::vector<std::string>{}, {"--record", "b.vns"}}) {
            const Run_Result run = Run(window, environment);
            EXPECT_EQ(run.status, 1) << display;
            EXPECT_EQ(run.errors, "vantrelo: no display answers; --script and --export work without one\n");
        }
    }
    EXPECT_EQ(Run({"--script", "a.vns"}, "env DISPLAY=:987 QT_QPA_PLATFORM=xcb").status, 0);
}

TEST_F(Program, StandardOutputThatFails) {
    std::ofstream(directory / "a.vns") << "print state\n";
    for (const std::string to : {">/dev/full", ">&-", "| true"}) {
        const std::string environment = "sh -c '{ \"$@\"; echo $? >status; } " + to + "' sh";
        for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--script", "a.vns"}, {"--help"}}) {
            if (to == "| true" && arguments.front() == "--help") continue;  // which of the two is faster nobody knows
            Run(arguments, environment);
            EXPECT_EQ(Text_Of(directory / "status"), "1\n") << to << arguments.front();
        }
        Run({"--export", "a.png", Pattern("rising.xye")}, environment);
        EXPECT_EQ(Text_Of(directory / "status"), "0\n") << "it writes nothing there";
    }
}

TEST_F(Program, APictureOverAFileThatIsNotToBeWritten) {
    for (const char* name : {"a.png", "a.jpg", "a.bmp", "a.pcx", "a.svg", "a.pdf", "a.ps", "a.dxf", "a.cgm", "a.emf", "a.wmf"}) {
        const std::string ending = fs::path(name).extension();
        const fs::path file = directory / name, longest = directory / (std::string(255 - ending.size(), 'n') + ending);
        std::ofstream(file) << "kept";
        fs::permissions(file, fs::perms::owner_read);
        const Run_Result run = Script("open " + Pattern("rising.xye") + "\nexport " + file.string() + '\n');
        EXPECT_EQ(run.status, 1) << name;
        EXPECT_NE(run.errors.find("The picture cannot be written: " + file.string()), std::string::npos) << run.errors;
        EXPECT_EQ(Run({"--export", name, Pattern("rising.xye")}).status, 1) << name;
        EXPECT_EQ(Text_Of(file), "kept");
        fs::remove(file);
        fs::create_symlink(longest.filename(), file);
        EXPECT_EQ(Run({"--export", name, Pattern("rising.xye")}).status, 0) << name;
        EXPECT_TRUE(fs::is_symlink(file));
        EXPECT_GT(Text_Of(longest).size(), 1000u) << name;
    }
}

TEST_F(Program, EmptyNamesAndADirectoryThatIsGone) {
    const std::string a = directory / "a.vns", b = directory / "b.vns", suite = directory / "suite";
    const std::string gone = "sh -c 'mkdir gone; cd gone; rmdir ../gone; exec \"$@\"' sh";
    std::ofstream(a) << "print state\n";
    fs::create_directories(suite);
    fs::copy_file(Pattern("rising.xye"), suite + "/named.xye");
    std::ofstream(suite + "/vantrelo.dir") << suite << '\n';
    using Names = std::vector<std::string>;
    for (const std::string& environment : {std::string(), gone, "QUENDRIX=" + Quoted(suite) + ' ' + gone})
        for (const Names& files : {Names{""}, {"named.xye"}, {"", "named.xye"}, {" "}, {"\"\""}}) {
            Names arguments = {"--script", a, "--record", b};
            arguments.insert(arguments.end(), files.begin(), files.end());
            const Run_Result run = Run(arguments, environment);
            EXPECT_EQ(run.status, 1) << environment << files.front() << run.errors;
            EXPECT_NE(run.output.find("\"nperfiles\":0"), std::string::npos) << run.output;
            EXPECT_TRUE(Text_Of(b).starts_with("resize ")) << Text_Of(b);
            arguments = {"--export", directory / "c.png"};
            arguments.insert(arguments.end(), files.begin(), files.end());
            EXPECT_EQ(Run(arguments, environment).status, 1) << files.front();
        }
    std::ofstream(a) << "open " + Pattern("rising.xye") + "\ncommand 40162\npress 1534\nexit\n";
    const Run_Result lists = Run({"--script", a}, gone);
    EXPECT_EQ(lists.status, 1) << "no place for the file of efficiencies";
    EXPECT_NE(lists.output.find("cannot be written: vantrelo-2006.eff"), std::string::npos) << lists.output;
    EXPECT_EQ(Run({"--script", a, "--record", "b.vns"}, gone).status, 2);
}

TEST_F(Program, TheEndLeavesEveryDialogThatComes) {
    const std::string file = ' ' + Pattern("rising.xye");
    const auto run =
        Script("open" + file + "\ncommand 40017\ncell 1305 2 1 1.5406\npress OK\ndrop" + file + file + file + "\nprint dialog\n");
    EXPECT_EQ(run.With("dialog").size(), 1u);  // which asks for constants, once a file
    EXPECT_EQ(run.status, 0) << run.errors;
}

TEST_F(Program, ExitWritesTheRecentFilesAndQuitDoesNot) {
    Script("open " + Pattern("rising.xye") + "\nquit\n");
    EXPECT_FALSE(fs::exists(directory / "vantrelo.mlf"));
    Script("open " + Pattern("rising.xye") + "\nexit\nprint state\n");
    EXPECT_EQ(Text_Of(directory / "vantrelo.mlf"), Pattern("rising.xye") + "\n");
    EXPECT_EQ(Text_Of(directory / "home/.qxs/vantrelo.sel"), TEST_DATA "/patterns\n");  // where the next selector opens
    std::ofstream(directory / "vantrelo.mlf", std::ios::binary) << "\xff\xfe\n\n"
                                                                << std::string(100000, 'x') << "\n"
                                                                << Pattern("rising.xye") << "\n\0\n";
    EXPECT_EQ(Script("print recent\ncommand 40019\n").status, 0);
}

TEST_F(Program, StartsWithoutAHomeOrWithOneThatCannotBeWritten) {
    std::ofstream(directory / "script.vns") << "print state\n";
    EXPECT_EQ(Run({"--script", "script.vns"}, "HOME=").status, 0);
    EXPECT_EQ(Run({"--script", "script.vns"}, "HOME=/proc").status, 0);
    EXPECT_EQ(Run({"--script", "script.vns"}, "QUENDRIX=/nowhere").status, 0);
}

TEST_F(Program, TheTableHoldsTwoThousandPatterns) {
    std::string names;
    for (int i = 0; i < 2001; ++i) names += ' ' + Pattern("rising.xye");
    const auto run = Script("open" + names + "\nprint state\nprint data 21\n");
    EXPECT_EQ(run.Boxes().back(), "The maximum number of profiles has been attained!");
    EXPECT_EQ(run.With("plot_type").at(0)["nperfiles"], 2000);
    const Json row = run.With("x").at(0);
    EXPECT_TRUE(row.contains("nd") && !row.contains("sigma") && !row.contains("ycalc"));
}

TEST_F(Program, TheMouseReadsZoomsAndGoesBack) {
    const auto run = Script("open " + Pattern("rising.xye") + "\nmouse data move 12.05 110\nprint state\nmouse move 10 10\nprint state\n" +
                            "mouse data down 11 105\nmouse data move 12 115\nmouse data up 13 120\nprint state\n" +
                            "mouse data down 12 110\nmouse data up 12 110\nmouse data wheelup 12 110\nprint state\n" +
                            "mouse data down 12 110\nkey Escape\nmouse data up 12.5 115\nmouse down right 600 400\nprint state\nopen " +
                            Pattern("calculated.xys") + "\nmouse data move 12.05 110\nprint state\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto states = run.With("plot_type");
    ASSERT_EQ(states.size(), 6u);
    EXPECT_EQ(states[0]["status"][1], " N= 21 rising.xye I= 120(10)");  // 10.00, 10.10, ... 12.00 is the 21st
    EXPECT_EQ(states[0]["status"][2], " X= 12.0500");
    EXPECT_EQ(states[0]["status"][3], " Y= 110.0");
    EXPECT_EQ(states[1]["status"][2], "");
    const auto view = [&](std::size_t i, const char* limit) { return states[i][limit].get<double>(); };
    EXPECT_NEAR(view(2, "x_view_min"), 11, 1e-4);
    EXPECT_NEAR(view(2, "x_view_max"), 13, 1e-4);
    EXPECT_NEAR(view(2, "y_view_min"), 105, 1e-3);
    EXPECT_NEAR(view(2, "y_view_max"), 120, 1e-3);
    EXPECT_NEAR(view(3, "x_view_min"), 11.2, 1e-4);  // the wheel leaves 0.8 of the width about 12; the click changed nothing
    EXPECT_NEAR(view(3, "x_view_max"), 12.8, 1e-4);
    EXPECT_NEAR(view(4, "x_view_max"), 13.8, 1e-4);
    EXPECT_EQ(states[5]["status"][1], "Pointed Pattern 1 rising.xye I= 120(10)");
}

TEST_F(Program, APictureTellsWhatIsDrawn) {
    const auto run = Script("open " + Pattern("rising.xye") + "\nprint picture full\n");
    const Json picture = run.With("markers").at(0);
    ASSERT_GE(picture["markers"].size(), 1u);  // the row, then the symbol of the legend
    EXPECT_EQ(picture["markers"][0]["glyph"], 221);
    EXPECT_EQ(picture["markers"][0]["colour"], 255);
    EXPECT_EQ(picture["markers"][0]["n"], 39);
    const auto first = picture["markers"][0]["points"][0];
    EXPECT_NEAR(first[0].get<double>(), 180, 1e-3);  // left edge of the zone: 0.15 of 1200
    EXPECT_NEAR(first[1].get<double>(), 120 + 560 * 0.05 / 1.1, 1e-2);
    EXPECT_EQ(picture["texts"][0]["text"], "rising");
}

TEST_F(Program, PreferencesAreSetByNameAndShowAtOnce) {
    const auto run =
        Script("open " + Pattern("rising.xye") +
               "\npref profile_styles/1/marker_colour 1,2,3\npref profile_styles/1/marker_type 3\npref title_single \"Silicon, 4 K\"\n"
               "pref legend_pos 9\npref colour 1\npref title_size\nprint prefs\nprint picture\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors,
              "line 5: \"9\" is no value of legend_pos, which is a whole number from 1 to 4\nline 6: there is no preference colour\n"
              "line 7: usage: pref NAME VALUE\n");
    const Json prefs = run.With("prefs").at(0)["prefs"], picture = run.With("markers").at(0);
    EXPECT_EQ(prefs["profile_styles"][0]["marker_colour"], 1 + 256 * 2 + 65536 * 3);
    EXPECT_EQ(prefs["legend_pos"], 3);
    EXPECT_EQ(picture["markers"][0]["glyph"], 222);
    EXPECT_EQ(picture["markers"][0]["colour"], 1 + 256 * 2 + 65536 * 3);
    EXPECT_EQ(picture["texts"][0]["text"], "Silicon, 4 K");
}

TEST_F(Program, APreferenceKeepsTheViewUntilTheRangeIsAnother) {
    const auto run =
        Script("open " + Pattern("rising.xye") +
               "\ncommand 40151\nset from 9\nset to 11.01\npress \"Select all\"\npress OK\ncommand 40137\nprint state\npref title_size 30\n"
               "print state\npref excl_ignore_sides true\nprint state\npref excl_ignore_sides yes\nprint state\n"
               "pref excl_ignore_sides false\nprint state\npref title_single \"K\xE4lte in Kelvin\"\nexport a.svg\n");
    EXPECT_EQ(run.errors, "line 13: \"yes\" is no value of excl_ignore_sides, which is 0 or 1\n");
    const auto states = run.With("plot_type");
    ASSERT_EQ(states.size(), 5u) << run.output;
    const auto left = [&](std::size_t i) { return states[i]["x_view_min"].get<double>(); };
    EXPECT_GT(left(0), 10.1) << "the view is a part";
    EXPECT_EQ(left(1), left(0));
    EXPECT_NEAR(left(2), 11.01, 1e-4);
    EXPECT_EQ(states[2]["drawn_x1"], states[2]["x_view_min"]) << "the window shows it already";
    EXPECT_EQ(left(3), left(2));
    EXPECT_NEAR(left(4), 10, 1e-4);
    EXPECT_TRUE(fs::exists(directory / "a.svg")) << "a title in Latin-1 is drawn too";
}

}  // namespace
}  // namespace vntl
