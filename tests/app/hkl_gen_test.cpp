// The tool that lays reflections over a pattern, through its windows: what it asks, refuses and shows, its sliders, and how it ends.
#include "app/testing.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

class Hkl_Gen : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        std::ofstream of_angles(directory / "angles.xye"), of_times(directory / "times.xye");
        of_angles << "level\n";
        of_times << "XYDATA\nTITLE level\nINTER 1.0 1.0 0 0.0\nTEMP 295.0\nLegend_X TOF (micro-seconds)\nLegend_Y counts\n";
        for (int i = 0; i <= 800; ++i) {
            of_angles << 10 + 0.1 * i << ' ' << 1000 + i << " 10\n";
            of_times << 2000 + 20 * i << ' ' << 1000 + i << " 10\n";
        }
        for (std::ofstream* file : {&of_angles, &of_times}) *file << "0 0 0\n";
    }
    // The field of the last dialog printed, or of another one of them.
    static Json Field(const Json& dialog, const std::string& label) {
        for (const Json& field : dialog["fields"])
            if (field["label"] == label) return field;
        ADD_FAILURE() << "no field " << label;
        return {};
    }
    static std::string Value(const Json& dialog, const std::string& label) { return Field(dialog, label)["value"]; }
    static bool Enabled(const Json& dialog, const std::string& label) { return Field(dialog, label)["enabled"]; }
    static std::string Enabled_Of(const Json& dialog, const std::string& prefix) {
        std::string enabled;
        for (const char* name : {"a", "b", "c", "alpha", "beta", "gamma"})
            if (Enabled(dialog, prefix + name)) enabled += std::string(enabled.empty() ? "" : " ") + name;
        return enabled;
    }
    // Texts of labels alone: the ends of the sliders.
    static bool Shows(const Json& dialog, const std::string& text) {
        for (const Json& field : dialog["fields"])
            if (field["kind"] == "label" && field["value"] == text) return true;
        return false;
    }
    static double First_X(const Json& printed) { return printed["hklgen"].at(0)["x"]; }
    static int Open_Dialog(const Json& printed) { return printed["dialog"]; }

    const std::string chosen = "open angles.xye\ncommand 40154\nset Wavelength 1.5406\nset \"Space group\" \"F m -3 m\"\npress OK\n";
    const std::string started = chosen + "set a 4\npress \"Start HKL Gen\"\n";
};

TEST_F(Hkl_Gen, WhatIsRefusedKeepsTheDialogOpenAndMarked) {
    const auto run = Script(
        "open angles.xye\ncommand 40154\nset Wavelength 0\nset \"Space group\" \"\"\npress OK\nprint dialog\nset Wavelength x\npress OK\n"
        "set Wavelength 1.5\npress OK\nprint dialog\nset \"Space group\" \"P 5\"\npress OK\nprint dialog\npress Cancel\nprint rows\n"
        "print state\nprint changes\ncommand 40154\nprint dialog\nset Wavelength 1.5\nset \"Space group\" \"P 4\"\npress OK\nprint rows\n"
        "print changes\n");
    Texts boxes = run.Boxes();
    boxes.erase(boxes.begin());  // of the missing preferences
    EXPECT_EQ(boxes, (Texts{"Bad wavelength", "Bad wavelength", "Empty SPGR field", "Bad SPGR, unknow CrystalSys"})) << run.errors;
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 4u) << run.output;
    const char* marked[] = {"Wavelength", "Space group", "Space group"};
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(Field(dialogs[i], marked[i])["marked"], true) << i;
    EXPECT_EQ(Value(dialogs[3], "Space group"), "P b m n");
    const auto rows = run.With("conv");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0]["conv"][0], 0);  // cancelled: nothing is stored
    EXPECT_EQ(rows[1]["conv"][0], 1.5);
    EXPECT_EQ(run.With("ClickMode").at(0)["ClickMode"], 0);
    const auto changes = run.With("changes");
    EXPECT_NE(changes.at(0), changes.at(1));  // the wavelength can be taken back
}

TEST_F(Hkl_Gen, ConstantsBelongToThePresentScaleOrToThatOfTheData) {
    const auto run = Script(
        "open times.xye\ncommand 40154\nset dtt1 0\nset dtt2 0\npress OK\nset dtt1 5000\nset dtt2 -2\npress OK\npress Close\ncommand "
        "40017\n"
        "command 40154\nprint dialog\npress OK\nprint dialog\npress \"Start HKL Gen\"\nprint hklgen\npress Close\ncommand 40019\n"
        "open angles.xye\ncommand 40154\nprint dialog\npress Cancel\n");
    EXPECT_EQ(run.Boxes().at(1), "Error: if dtt2=0 then dtt1 must be > 0") << run.errors;
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 3u) << run.output << run.errors;
    for (const char* label : {"2theta", "TOF", "Wavelength", "dtt1", "dtt2"}) EXPECT_FALSE(Enabled(dialogs[0], label)) << label;
    EXPECT_EQ(Value(dialogs[0], "TOF") + ' ' + Value(dialogs[0], "dtt1") + ' ' + Value(dialogs[0], "dtt2") + ' ' +
                  Value(dialogs[0], "Wavelength"),
              "1 5000 -2 ");
    EXPECT_EQ(Open_Dialog(dialogs[1]), 156);
    EXPECT_FALSE(run.With("hklgen").at(0)["hklgen"].empty());
    EXPECT_TRUE(Enabled(dialogs[2], "2theta") && Enabled(dialogs[2], "Wavelength"));
    EXPECT_FALSE(Enabled(dialogs[2], "TOF") || Enabled(dialogs[2], "dtt1"));
}

TEST_F(Hkl_Gen, FieldsFollowTheStateOfTheTool) {
    const auto run =
        Script(chosen +
               "set a 4\nprint dialog\npress \"Start HKL Gen\"\nprint dialog\nset \"Vary a\" 20\nprint dialog\n"
               "set \"Fine a\" 1\nprint dialog\nset \"Vary a\" -50\nprint dialog\npress \"Stop HKL Gen\"\nprint dialog\n"
               "press Change\nset \"Space group\" \"R -3 c:R\"\npress OK\nprint dialog\nset alpha 80\n"
               "press \"Start HKL Gen\"\nset \"Fine alpha\" 1\nset \"Vary alpha\" 100\nprint dialog\npress Close\nprint state\n");
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 8u) << run.output << run.errors;
    struct Case {
        const char *values, *fines, *a, *b, *slider_a, *slider_b, *low_end;
    };
    const Case cases[] = {{"a", "", "4", "4", "0", "0", "-50%"},
                          {"", "a", "4", "4", "0", "0", "-50%"},
                          {"", "a", "4.4", "4.4", "20", "20", "-50%"},
                          {"", "a", "4.4", "4.4", "0", "0", "-1%"},
                          {"", "a", "4.378", "4.378", "-50", "-50", "-1%"},
                          {"a", "", "4.378", "4.378", "0", "0", "-50%"}};
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const Case& c = cases[i];
        const Json& dialog = dialogs[i];
        EXPECT_EQ(Enabled_Of(dialog, ""), c.values) << i;
        EXPECT_EQ(Enabled_Of(dialog, "Fine "), c.fines) << i;
        EXPECT_EQ(Enabled_Of(dialog, "Vary "), c.fines) << i;
        EXPECT_EQ(Value(dialog, "a") + ' ' + Value(dialog, "b") + ' ' + Value(dialog, "Vary a") + ' ' + Value(dialog, "Vary b"),
                  std::string(c.a) + ' ' + c.b + ' ' + c.slider_a + ' ' + c.slider_b)
            << i;
        EXPECT_TRUE(Shows(dialog, c.low_end)) << i;
        const bool running = *c.fines != 0;
        EXPECT_TRUE(Enabled(dialog, "Start HKL Gen") != running && Enabled(dialog, "Change") != running &&
                    Enabled(dialog, "Stop HKL Gen") == running)
            << i;
    }
    EXPECT_EQ(Enabled_Of(dialogs[6], ""), "a alpha");
    EXPECT_TRUE(Shows(dialogs[7], "+5%"));
    for (const char* angle : {"alpha", "beta", "gamma"}) EXPECT_EQ(Value(dialogs[7], angle), "84");
    EXPECT_EQ(run.With("plot_type").back()["plot_type"], "single");
}

// F m -3 m begins with 1 1 1: sin(theta) = lambda sqrt(3)/(2 a).
TEST_F(Hkl_Gen, MarksFollowTheSlider) {
    const auto run = Script(started +
                            "print hklgen\nset \"Vary a\" 20\nprint hklgen\nprint picture\npress \"Stop HKL Gen\"\nset a -1\n"
                            "press \"Start HKL Gen\"\nprint dialog\nprint hklgen\nset a 3000\npress \"Start HKL Gen\"\nprint hklgen\n");
    const auto lists = run.With("hklgen");
    ASSERT_EQ(lists.size(), 4u) << run.output << run.errors;
    const double angle_of_1 = 360 / 3.14159265358979;
    EXPECT_NEAR(First_X(lists[0]), angle_of_1 * std::asin(1.5406 * std::sqrt(3.0) / 8), 1e-3);
    EXPECT_NEAR(First_X(lists[1]), angle_of_1 * std::asin(1.5406 * std::sqrt(3.0) / 8.8), 1e-3);
    std::size_t green = 0;
    const Json lines = run.With("lines").at(0)["lines"];
    for (const Json& line : lines)
        if (line["colour"] == 128 * 256) ++green;
    EXPECT_EQ(green, lists[1]["hklgen"].size());
    EXPECT_EQ(run.Boxes().at(1), "Wrong cell parameters");
    EXPECT_EQ(run.Marked().at(0), std::vector<int>{1450});
    EXPECT_EQ(run.Boxes().size(), 3u);  // too many
    EXPECT_EQ(lists[2], lists[1]);
    EXPECT_EQ(lists[3], lists[1]);
}

TEST_F(Hkl_Gen, ReflectionsUnderThePointerAreCollectedOnce) {
    const auto run = Script(started +
                            "press \"Reflections...\"\nmouse data move 38.9 990\nmouse data move 60 990\nmouse data move 38.9 990\n"
                            "mouse data move 45.3 990\ndialog 128\nprint dialog\npress Clear\nprint dialog\npress Close\nprint dialog\n"
                            "mouse data move 38.9 990\n");
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 3u) << run.output << run.errors;
    const Json cells = dialogs[0]["fields"].at(0)["value"];
    ASSERT_EQ(cells.size(), 2u) << cells;
    EXPECT_EQ(cells[0][0], "1 1 1");
    EXPECT_EQ(cells[0][1], "8");
    EXPECT_EQ(cells[0][2], "2.30940");  // 4/sqrt(3)
    EXPECT_EQ(cells[1][0], "2 0 0");
    EXPECT_TRUE(dialogs[1]["fields"].at(0)["value"].empty());
    EXPECT_EQ(Open_Dialog(dialogs[2]), 156);
}

// Whatever takes the rows, the scale or the mode away takes the tool along.
TEST_F(Hkl_Gen, NothingIsLeftBehind) {
    const Texts ends = {"press Close",         "key Escape",          "dialog 156\nclose",    "main\ncommand 40017",
                        "main\ncommand 40019", "main\ncommand 40506", "main\ndrop angles.xye"};
    for (const std::string& end : ends) {
        const auto run = Script(started + "press \"Reflections...\"\nmouse data move 38.9 990\ndialog 156\n" + end +
                                "\nprint dialog\nprint state\nprint menu 40014\nprint cursor\n");
        EXPECT_TRUE(run.errors.ends_with("no dialog is open\n")) << end << run.errors;
        const auto state = run.With("plot_type");
        ASSERT_EQ(state.size(), 1u) << end << run.output;
        EXPECT_EQ(state[0]["ClickMode"], 0) << end;
        EXPECT_NE(state[0]["plot_type"], "calculation") << end;
        EXPECT_EQ(run.With("id").at(0)["enabled"], true) << end;
    }
}

}  // namespace
}  // namespace vntl
