// Changing the scale of x through the real windows: the menu, the dialogs of constants, the boxes, and files that join later.
#include <algorithm>
#include <cmath>
#include <fstream>
#include <numbers>

#include "app/testing.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

constexpr double degree = std::numbers::pi / 180;

double Spacing(double two_theta, double lambda) { return lambda / (2 * std::sin(two_theta / 2 * degree)); }

Texts Spaces(const Run_Result& run) {
    Texts spaces;
    for (const Json& state : run.With("xspace")) spaces.push_back(state["xspace"]);
    return spaces;
}

// The boxes behind the one about the preferences.
Texts Told(const Run_Result& run) {
    Texts boxes = run.Boxes();
    if (!boxes.empty()) boxes.erase(boxes.begin());
    return boxes;
}

Json Field(const Json& dialog, int number) {
    for (const Json& field : dialog["fields"])
        if (field["field"] == number) return field;
    ADD_FAILURE() << "no field " << number << " in " << dialog;
    return {};
}

TEST_F(Program, FromAnglesThroughAllScalesAndBack) {
    std::string script = "open " + Pattern("rising.xye") + "\nprint state\nprint data 1\ncommand 40017\ncell 1305 2 1 1.5406\npress OK\n";
    for (const char* command : {"", "40089", "40081", "40042"}) {
        if (*command != 0) script += std::string("command ") + command + '\n';
        script += "print state\nprint data 1\n";
    }
    script += "command 40042\nprint rows\nprint menu 40042\nprint menu 40087\n";
    const auto run = Script(script);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Spaces(run), (Texts{"2theta", "d-space", "q-space", "s-space", "2theta"}));
    const auto states = run.With("xspace");
    EXPECT_EQ(states[1]["xlabel_text"], "d-spacing (\u00c5)");
    EXPECT_EQ(states[2]["xlabel_text"], "Q (\u00c5-1)");
    const auto data = run.With("x");
    ASSERT_EQ(data.size(), 5u);
    const std::size_t n = data[0]["x"].size();
    for (std::size_t i = 0; i < n; ++i) {
        const double d = Spacing(data[0]["x"][i], 1.5406);
        EXPECT_NEAR(data[1]["x"][n - 1 - i].get<double>(), d, 1e-6 * d);
        EXPECT_NEAR(data[2]["x"][i].get<double>(), 2 * std::numbers::pi / d, 1e-6);
        EXPECT_NEAR(data[3]["x"][i].get<double>(), 1 / d, 1e-6);
        EXPECT_NEAR(data[4]["x"][i].get<double>(), data[0]["x"][i].get<double>(), 4e-6);
    }
    EXPECT_EQ(data[1]["y"][0], data[0]["y"][n - 1]);
    EXPECT_EQ(data[4]["y"], data[0]["y"]);
    EXPECT_NEAR(states[1]["x_view_min"].get<double>(), data[1]["x"][0].get<double>(), 1e-5);
    EXPECT_EQ(Told(run), Texts{"Same xspace..."});
    EXPECT_EQ(run.With("box").back()["icon"], "information");
    for (const Json& menu : run.With("checked")) EXPECT_EQ(menu["enabled"], true) << menu;
}

// Presets against the lines of copper and molybdenum as they are published, and what a file's title tells is proposed.
TEST_F(Program, PresetsAndTitlesGiveWavelengths) {
    for (const char* name : {"plain.xye", "wl0.4137.xye"}) {
        std::ofstream out(directory / name);
        out << "Alumina at 300 K\n";
        for (int i = 0; i < 30; ++i) out << 20 + i << ' ' << 100 + i << " 3\n";
        out << "0 0 0\n";
    }
    const auto run = Script(
        "open plain.xye\ncommand 40087\nset Preset \"Cu K-alpha1 and K-alpha2\"\nprint dialog\npress OK\nprint rows\n"
        "open wl0.4137.xye\ncommand 40087\nprint dialog\nset Preset \"Mo K-alpha1+2 (mean)\"\nprint dialog\npress 1328\nprint dialog\n"
        "set 1327 1.594\nprint dialog\npress OK\nprint rows\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto dialogs = run.With("dialog"), rows = run.With("kind");
    ASSERT_EQ(dialogs.size(), 5u);
    const auto lambda = [&](std::size_t dialog, std::size_t row, std::size_t column) {
        return std::stod(Field(dialogs[dialog], 1305)["value"][row][column].get<std::string>());
    };
    EXPECT_NEAR(lambda(0, 0, 1), 1.5405929, 1e-6);
    EXPECT_NEAR(lambda(0, 0, 2), 1.5444274, 1e-6);
    EXPECT_NEAR(lambda(1, 0, 1), 1.5405929, 1e-6);
    EXPECT_NEAR(lambda(1, 1, 1), 0.4137, 1e-6) << "the name of the file tells it";
    EXPECT_NEAR(lambda(2, 0, 1), 1.5405929, 1e-6) << "rows keep what they have";
    EXPECT_EQ(Field(dialogs[2], 1327)["value"].get<std::string>().substr(Field(dialogs[2], 1327)["value"].get<std::string>().find('0')),
              "0.710747");
    for (const std::size_t row : {0, 1}) EXPECT_NEAR(lambda(3, row, 1), (2 * 0.70931715 + 0.713607) / 3, 1e-6);
    EXPECT_EQ(Field(dialogs[3], 1990)["value"], "Mo K-alpha1+2 (mean)");
    EXPECT_EQ(Field(dialogs[4], 1990)["value"], "Custom");
    ASSERT_EQ(rows.size(), 3u);
}

TEST_F(Program, TheTableOfWavelengths) {
    const auto run =
        Script("open " + Pattern("rising.xye") + ' ' + Pattern("rising.xye") +
               "\ncommand 40017\nprint dialog\ncell 1305 2 1 1.5\npress Cancel\nprint rows\n"  // nothing is stored
               "command 40017\ncell 1305 2 2 abc\npress OK\nprint dialog\ncell 1305 2 2 0\nprint dialog\ncell 1305 3 1 2.5\npress OK\n"
               "print dialog\ncell 1305 2 1 2\nprint dialog\npress Cancel\nprint rows\nprint state\n"
               "command 40087\nset 1327 1.25\npress 1328\nprint dialog\npress OK\nprint rows\ncommand 40017\nprint state\n");
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;  // the cell of words alone
    const auto boxes = Told(run);
    ASSERT_EQ(boxes.size(), 4u) << run.output;
    for (const std::size_t cancelled : {0, 3}) EXPECT_EQ(boxes[cancelled], "Conversion of xspace cancelled");
    EXPECT_NE(boxes[1].find("is not a number"), std::string::npos) << boxes[1];
    EXPECT_EQ(boxes[2], "Invalid value of wavelength found in:\nrising.xye\nrising.xye\n");
    const auto dialogs = run.With("dialog");
    EXPECT_EQ(dialogs.at(0)["dialog"], 129);
    EXPECT_EQ(dialogs.at(0)["title"], "Convert Xspace");
    EXPECT_EQ(Field(dialogs[0], 1305)["value"].size(), 2u);
    EXPECT_EQ(Field(dialogs[0], 1305)["value"][1][0], "rising.xye");
    EXPECT_EQ(run.Marked(), (std::vector<std::vector<int>>{{}, {1305}, {}, {1305}, {}, {}}));  // up to the next change of the field
    EXPECT_EQ(std::stod(Field(dialogs.at(3), 1305)["value"][0][2].get<std::string>()), 2.5);   // what was typed is still there
    const Json grid = Field(dialogs.at(5), 1305);
    for (const Json& cells : grid["value"]) EXPECT_EQ(std::stod(cells[1].get<std::string>()), 1.25);
    const auto rows = run.With("conv");
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_EQ(rows[0]["conv"][0], 0);
    EXPECT_EQ(rows[2]["conv"], rows[0]["conv"]);  // typed, and not stored
    EXPECT_EQ(rows[4]["conv"][0], 1.25);
    EXPECT_EQ(Spaces(run), (Texts{"2theta", "d-space"}));
}

TEST_F(Program, TheTableOfFlight) {
    const auto run = Script("open " + Pattern("flight.xye") +
                            "\ncommand 40081\nprint dialog\nset 1306 500\nset 1307 5\npress 1328\npress OK\ncommand 40043\n"
                            "print state\nprint data 1 1 1\nprint rows\ncommand 40088\npress Cancel\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.With("dialog").at(0)["dialog"], 135);
    EXPECT_EQ(run.With("dialog")[0]["title"], "Convert Xspace from TOF");
    EXPECT_EQ(Field(run.With("dialog")[0], 1318)["value"][0][0], "flight.xye");
    EXPECT_EQ(Spaces(run), Texts{"TOF"});
    EXPECT_NEAR(run.With("x").at(0)["x"][0].get<double>(), 5000, 2e-3);
    EXPECT_EQ(run.With("conv").at(0)["conv"][1], 5);
    EXPECT_TRUE(Told(run).empty()) << run.output;
}

TEST_F(Program, AFileJoinsInDWithItsConstants) {
    const std::string angles = "open " + Pattern("rising.xye"), times = "open " + Pattern("flight.xye");
    const auto run = Script(angles + "\ncommand 40017\ncell 1305 2 1 1.5\npress OK\n" +                                //
                            angles + "\nprint dialog\npress Cancel\n" +                                                //
                            angles + "\nset 1314 abc\npress OK\nset 1314 0\npress OK\nprint dialog\npress Cancel\n" +  //
                            angles + "\nset 1314 3\npress OK\nprint menu 40042\n" +                                    //
                            times + "\nprint dialog\nset 1316 0\npress OK\npress Cancel\n" +                           //
                            times +
                            "\nset 1316 500\nset 1317 0\npress OK\nprint data 1\nprint data 2\nprint data 3\nprint state\n"
                            "print menu 40042\ncommand 40042\nprint state\n");
    const auto boxes = Told(run);
    ASSERT_EQ(boxes.size(), 6u) << run.output;
    for (const std::size_t cancelled : {0, 3, 5}) EXPECT_EQ(boxes[cancelled], "Load profile cancelled");
    EXPECT_EQ(run.Marked(), (std::vector<std::vector<int>>{{}, {1314}, {}}));
    EXPECT_NE(boxes[1].find("is not a number"), std::string::npos) << boxes[1];
    EXPECT_EQ(boxes[2], "lambda<=0 - Value incorrect for rising.xye\nOperation cancelled.");
    EXPECT_EQ(boxes[4], "vtt1 <= 0 - Value incorrect for flight.xye\nOperation cancelled.");
    const auto dialogs = run.With("dialog");
    EXPECT_EQ(dialogs.at(0)["dialog"], 124);
    EXPECT_EQ(dialogs[0]["title"], "Set lambda to...");
    EXPECT_EQ(Field(dialogs[0], 1315)["value"], "rising.xye");
    EXPECT_EQ(dialogs.at(2)["dialog"], 134);
    EXPECT_EQ(dialogs[2]["title"], "Set dtt1/dtt2 to...");
    EXPECT_EQ(Field(dialogs[2], 1315)["value"], "flight.xye");
    const auto data = run.With("x");
    ASSERT_EQ(data.size(), 3u);
    for (std::size_t i = 0; i < data[0]["x"].size(); ++i)
        EXPECT_NEAR(data[1]["x"][i].get<double>(), 2 * data[0]["x"][i].get<double>(), 1e-5);
    EXPECT_NEAR(data[2]["x"][0].get<double>(), 10, 1e-5);

    // Rows of angles and times together have no way back: the menu is closed to them.
    const auto menu = run.With("checked");
    EXPECT_EQ(menu.at(0)["enabled"], true);
    EXPECT_EQ(menu.at(1)["enabled"], false);
    EXPECT_NE(run.errors.find("command 40042"), std::string::npos) << run.errors;
    EXPECT_EQ(Spaces(run), (Texts{"d-space", "d-space"}));
    EXPECT_EQ(run.With("xspace").back()["nperfiles"], 3);
}

// The lists are in the units in which they were found: a single profile that moves on leaves them behind.
TEST_F(Program, AConversionOfASingleProfileEmptiesTheLists) {
    const std::string find = "open " SOURCE_TREE "/examples/corundum_cuka.xye\ncommand 40096\ncommand 40092\npress OK\nprint peaks\n";
    const auto run = Script(find + "command 40017\nset 1327 1.5406\npress 1328\npress OK\nprint peaks\nprint state\nprint background\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto peaks = run.With("peaks");
    ASSERT_EQ(peaks.size(), 2u) << run.output << run.errors;
    EXPECT_GT(peaks[0]["peaks"].size(), 10u);
    EXPECT_TRUE(peaks[1]["peaks"].empty());
    EXPECT_EQ(run.With("xspace").at(0)["status"][0], "The lists of peaks and background points have been emptied");
}

}  // namespace
}  // namespace vntl
