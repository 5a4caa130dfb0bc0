// Dialogs through the real windows, in this process: what a script does in a user's place, and what the program reads then.
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <nlohmann/json.hpp>
#include <numeric>
#include <sstream>

#include "app/demonstration.hpp"
#include "app/main_window.hpp"
#include "app/script.hpp"
#include "commands/modal.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {
namespace {

namespace demo = demonstration;
using Json = nlohmann::json;
using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

constexpr int small = 910, about = 40018;

Dialog_Resource Small_Dialog(int number) {
    return {number,
            "Small",
            {{{1001, Field_Kind::string, "&Same"}, {1002, Field_Kind::string, "Sa&me "}},
             {{1003, Field_Kind::check_box, "Own"}},
             {{button_ok, Field_Kind::push_button, "OK"}}}};
}

class Dialogs : public testing::Test {
protected:
    void SetUp() override {
        WindowOpen(700, 500, "Test", "vantrelo");
        WindowShow();
        Register_Dialogs(std::array{demo::Resource(), Small_Dialog(small), Small_Dialog(small + 1)});
        WDialogLoad(demo::number);
        demo::Fill();
        app.session.interface.Enable(about, true);
    }
    void TearDown() override {
        for (const int dialog : {demo::number, small, small + 1}) {
            WDialogSelect(dialog);
            WDialogUnload();
        }
        Forget_Messages();
    }
    static void Forget_Messages() {
        while (WMessagePeek()) continue;
    }

    // Runs `loop` while the script acts; `failed` holds the lines of the statements that failed.
    template <class Loop>
    void Act(const std::string& script, const Loop& loop) {
        std::ostringstream output, errors;
        {
            Script_Runner runner(app, script, output, errors);
            loop();
        }
        printed = output.str();
        failed.clear();
        std::istringstream lines(errors.str());
        for (std::string line; std::getline(lines, line);) failed.push_back(std::stoi(line.substr(5)));
    }

    int Run(const std::string& script, int first = 0, std::span<const int> let_through = {}) {
        WDialogSelect(demo::number);
        WDialogShow(first, Show_Kind::modal, let_through);
        int pressed = 0;
        Act(script, [&] { pressed = Run_Modal(demo::number); });
        return pressed;
    }

    // Pairs of fields left and entered until a button is pressed.
    std::vector<std::pair<int, int>> Heard(const std::string& script) {
        std::vector<std::pair<int, int>> fields;
        Forget_Messages();
        Act(script, [&] {
            for (Message message = WMessage(); message.kind != Message_Kind::push_button; message = WMessage())
                if (message.kind == Message_Kind::field_changed) fields.emplace_back(message.record.value1, message.record.value2);
        });
        return fields;
    }

    Application app;
    std::string printed;
    Numbers failed;
};

TEST_F(Dialogs, AScriptFillsEveryKindAndTheProgramReadsIt) {
    EXPECT_EQ(Run("set Title \"two  words\"\nset Wavelength \" 1.79 \"\nset 905 5000\nset Radiation 3\nset Radiation \"Neutrons (CW)\"\n"
                  "set Raw 1\nset Difference 1\nset \"Keep the scale\" 1\nset \"Mark the peaks\" 0\nset Smoothing 50\nset Pages 1\n"
                  "set Pages Phases\nselect Phases Corundum/O\ncell Peaks 2theta 1 26.5\ncell Peaks 4 1 -7\ncell 916 Use 1 0\n"
                  "cell Peaks Name 1 \"a b\"\nprint dialog\npress Colour...\n"),
              demo::colour);
    EXPECT_TRUE(failed.empty());
    EXPECT_EQ(WDialogGetReal(demo::wavelength), 1.79f);
    EXPECT_EQ(WDialogGetInteger(demo::points), 5000);
    EXPECT_EQ(WDialogGetRadioButton(demo::raw), demo::difference);
    EXPECT_EQ((Numbers{WDialogGetMenu(demo::radiation), WDialogGetCheckBox(demo::keep_scale), WDialogGetCheckBox(demo::mark_peaks),
                       WDialogGetTrackbar(demo::width), WDialogGetTab(demo::pages), WDialogGetTreeView(demo::tree)}),
              (Numbers{2, 1, 0, 50, 2, 3}));
    EXPECT_EQ(WGridGetCellReal(demo::grid, demo::position, 1), 26.5);
    EXPECT_EQ(WGridGetCellInteger(demo::grid, demo::order, 1), -7);
    const Json dialog = Json::parse(printed);
    std::map<std::string, Json> values;
    for (const Json& field : dialog["fields"]) values[field["kind"]] = field["value"];
    EXPECT_EQ(values.size(), 15u);  // a frame has no number
    EXPECT_EQ((Json{values["string"], values["tree"], values["colour_button"], values["progress_bar"]}),
              (Json{"as received", "Corundum/O", "200 40 30", "80"}));
    EXPECT_EQ(values["grid"][0], Json({"0", "a b", "26.5", "-7", "100.0"}));
}

TEST_F(Dialogs, BadTextIsNamedStaysAndIsNeverReadAsANumber) {
    for (const char* bad : {"1,54", "nan", "inf", "1e999", "\"\"", "1.5 x", "0x10"}) {
        Run("set Wavelength " + std::string(bad) + "\ncell Peaks 2theta 3 " + bad + '\n');
        EXPECT_EQ(failed, (Numbers{1, 2})) << bad;
        EXPECT_FALSE(WDialogGetReal(demo::wavelength)) << bad;
        EXPECT_EQ(WInfoGridCell(demo::grid, demo::position, 3, 1), 0) << bad;
        const auto column = WGridGetReal(demo::grid, demo::position);
        EXPECT_TRUE(column.at(1) && !column.at(2) && column.at(3)) << bad;
    }
    EXPECT_EQ(WDialogGetString(demo::wavelength), "0x10");
    for (const char* bad : {"0", "5001", "12.5", "99999999999", "\"\"", "1e3"}) {
        Run("set Points " + std::string(bad) + '\n');
        EXPECT_EQ(failed, Numbers{1}) << bad;
        EXPECT_FALSE(WDialogGetInteger(demo::points)) << bad;
    }
    Run("cell Peaks Order 2 1.5\ncell Peaks Order 3 2147483648\nprint dialog\n");
    EXPECT_FALSE(WGridGetCellInteger(demo::grid, demo::order, 2) || WGridGetCellInteger(demo::grid, demo::order, 3));
    EXPECT_NE(printed.find("2147483648"), std::string::npos);  // what was typed is still to be seen
    WDialogPutInteger(demo::points, 7000);
    EXPECT_FALSE(WDialogGetInteger(demo::points));
    WDialogRangeInteger(demo::points, 1, 9000);
    EXPECT_EQ(WDialogGetInteger(demo::points), 7000);
}

TEST_F(Dialogs, WhatTakesNoInputRefusesTheScript) {
    for (const int state : {field_disabled, field_read_only}) {
        for (int field = demo::title; field <= demo::tree; ++field) WDialogFieldState(field, state);
        Run("set Title x\nset Wavelength 2\nset Points 2\nset Radiation 2\nset \"Keep the scale\" 1\nset Smoothed 1\nset Smoothing 2\n"
            "press Colour...\nselect Phases Zincite\ncell Peaks Name 1 x\nset Pages Phases\n");
        EXPECT_EQ(failed.size(), 11u) << state;
        EXPECT_EQ(WDialogGetReal(demo::wavelength), 1.54056f);
        EXPECT_EQ(WDialogGetCheckBox(demo::keep_scale), 0);
    }
    for (int field = demo::title; field <= demo::tree; ++field) WDialogFieldState(field, field_enabled);
    WGridState(demo::grid, demo::use, field_disabled);
    WGridRows(demo::grid, 6);
    WDialogTabState(demo::pages, 2, field_disabled);
    Run("set Title x\ncell Peaks Name 3 x\ncell Peaks Name 6 x\ncell Peaks Intensity 1 5\ncell Peaks Name 2 x\ncell Peaks Use 6 1\n"
        "cell Peaks Intensity 6 1\nset Pages Phases\nset Note x\n");
    EXPECT_EQ(failed, (Numbers{4, 5, 6, 7, 8, 9}));  // the disabled cell is so still, and a row that comes has the states of its columns
}

TEST_F(Dialogs, PlacesThatAreNotThere) {
    Run("set Nothing 1\nset 77 1\nset Radiation Electrons\nset Radiation 0\nset Radiation 4\nset Pages Nowhere\nset Pages 3\n"
        "select Phases Al\nselect Phases Corundum/Zn\nselect Title x\ncell Peaks 2theta 0 1\ncell Peaks 2theta 6 1\ncell Peaks Width 1 1\n"
        "cell Peaks 6 1 1\ncell Peaks Use 1 yes\ncell Title 1 1 x\npress Title\npress 99\nset Smoothing 51\nset Smoothing -1\n"
        "set \"Keep the scale\" 2\nset Raw 0\nset Progress 3\nset 902 x\nset Title\n");
    EXPECT_EQ(failed.size(), 25u);
    WDialogLoad(small);
    WDialogShow(0, Show_Kind::modal);
    Act("set Same x\nset 1002 x\nset \"  Own\" 1\n", [&] { Run_Modal(small); });
    EXPECT_EQ(failed, Numbers{1});  // two fields have that label
    EXPECT_EQ(WDialogGetString(1002) + WDialogGetString(1001), "x");
    WDialogPutString(77, "x");
    WGridRows(1001, 5);
    EXPECT_EQ(WDialogGetMenu(1001) + WDialogGetTreeView(1001) + WInfoGrid(1001) + WDialogGetCheckBox(77), 0);
    EXPECT_FALSE(WDialogGetReal(77) || WDialogGetInteger(1001) || WGridGetCellReal(1001, 1, 1));
}

TEST_F(Dialogs, KeysPressButtonsAndMoveTheFocus) {
    for (const int first : {demo::title + 0, demo::points + 0, demo::radiation + 0, demo::raw + 0, demo::width + 0, demo::grid + 0}) {
        EXPECT_EQ(Run("key Enter\npress Defaults\n", first), button_ok) << first;
        EXPECT_EQ(Run("key Escape\npress Defaults\n", first), button_cancel) << first;
    }
    EXPECT_EQ(Run("key Enter\npress Defaults\n", button_cancel), button_cancel);
    EXPECT_EQ(Run("close\npress Defaults\n"), button_cancel);
    Run("key Up\nkey Up\nkey Down\n", demo::points);
    EXPECT_EQ(WDialogGetInteger(demo::points), 3402);
    WDialogFieldState(button_cancel, field_disabled);
    WDialogFieldState(button_ok, field_disabled);
    EXPECT_EQ(Run("key Escape\nkey Enter\npress Defaults\n"), demo::defaults);
    WDialogLoad(small);
    WDialogShow(0, Show_Kind::modal);  // the first field has the focus, and the one button is what Escape presses
    Act("key a\nkey Tab\nkey b\nkey Escape\n", [&] { EXPECT_EQ(Run_Modal(small), button_ok); });
    EXPECT_EQ(WDialogGetString(1001) + WDialogGetString(1002), "ab");
}

TEST_F(Dialogs, ChangesAndMovesAreToldOnceTheyAreAskedFor) {
    WDialogShow(demo::title, Show_Kind::modal);
    EXPECT_TRUE(Heard("key Tab\nset Title x\npress OK\n").empty());
    WMessageEnable(demo::number, Message_Kind::field_changed, true);
    WDialogShow(demo::title, Show_Kind::modal);
    using Moves = std::vector<std::pair<int, int>>;
    EXPECT_EQ(Heard("key Tab\nkey Tab\npress OK\n"), (Moves{{demo::title, demo::radiation}, {demo::radiation, demo::wavelength}}));
    const auto changes = Heard(
        "set Title y\nset Wavelength bad\nset Radiation 2\nset Raw 1\ncell Peaks Name 1 z\nset Pages 2\nselect Phases Zincite\n"
        "set Smoothing 3\npress OK\n");
    Numbers changed;
    for (const auto& [left, entered] : changes)
        if (left == entered) changed.push_back(left);
    EXPECT_EQ(changed,
              (Numbers{demo::title, demo::wavelength, demo::radiation, demo::raw, demo::grid, demo::pages, demo::tree, demo::width}));
    demo::Fill();
    WDialogSetTab(demo::pages, 1);
    WDialogPutTreeView(demo::tree, 1);
    EXPECT_FALSE(WMessagePeek());  // only what a user does is news
    WDialogFieldState(demo::colour, field_disabled);
    WDialogShow(demo::width, Show_Kind::modal);
    EXPECT_EQ(Heard("key Tab\npress OK\n"), (Moves{{demo::width, demo::pages}}));  // onto the row of tabs
}

TEST_F(Dialogs, TheKeyboardGetsThroughAGridAndItsCells) {
    const auto times = [](int n, const std::string& statement) {
        std::string script;
        for (int i = 0; i < n; ++i) script += statement;
        return script;
    };
    WMessageEnable(demo::number, Message_Kind::field_changed, true);
    WDialogShow(demo::grid, Show_Kind::modal);
    const auto moves = Heard(times(26, "key Tab\n") + "press OK\n");  // from the first cell to the last and out
    EXPECT_NE(std::find(moves.begin(), moves.end(), std::pair<int, int>{demo::grid, demo::threshold}), moves.end());
    // ENTER ends the editing of a cell and presses no button; a button pressed in the middle of it takes what was typed.
    const std::string third_name = "key Home\n" + times(5, "key Up\n") + "key Right\nkey Down\n";  // over the disabled one
    EXPECT_EQ(Run(third_name + "key 4\nkey 2\nkey Enter\npress Defaults\n", demo::grid), demo::defaults);
    EXPECT_EQ(WGridGetCellString(demo::grid, demo::name, 3), "42");
    EXPECT_EQ(Run(third_name + "key 4\nkey 3\npress OK\n", demo::grid), button_ok);
    EXPECT_EQ(WGridGetCellString(demo::grid, demo::name, 3), "43");
    WDialogShow(demo::grid, Show_Kind::modal);
    Act(third_name + "key 4\ntimer 7\n", [] {
        while (WMessage().kind != Message_Kind::timer) continue;
    });
    WDialogUnload();  // while a cell is being edited
    EXPECT_FALSE(WDialogLoaded(demo::number));
}

TEST_F(Dialogs, GridsGrowShrinkAndHoldThousandsOfRows) {
    const auto valid = [](int column, int row) { return WInfoGridCell(demo::grid, column, row, 1); };
    WGridRows(demo::grid, 2);
    WGridRows(demo::grid, 8);
    EXPECT_EQ(WGridGetCellString(demo::grid, demo::name, 2) + WGridGetCellString(demo::grid, demo::position, 2), "1 0 435.1522");
    EXPECT_EQ(valid(demo::position, 2) + valid(demo::name, 3) + valid(demo::use, 3), 3);
    EXPECT_EQ(valid(demo::position, 3) + valid(demo::position, 9) + valid(0, 1) + valid(6, 1), 0);
    WGridPutCheckBox(demo::grid, demo::use, std::array{1, 0, 1, 1, 1, 0, 0, 1, 1, 1});  // more than there are rows
    EXPECT_EQ(WGridGetCheckBox(demo::grid, demo::use), (Numbers{1, 0, 1, 1, 1, 0, 0, 1}));
    WGridPutCellReal(demo::grid, demo::position, 3, 12.3456789f, "(f8.2)");
    EXPECT_EQ(WGridGetCellString(demo::grid, demo::position, 3), "12.35");
    WDialogClearField(demo::grid);
    EXPECT_EQ(WGridGetCheckBox(demo::grid, demo::use), Numbers(8, 0));
    EXPECT_FALSE(WGridGetCellReal(demo::grid, demo::position, 3));
    WGridRows(demo::grid, -3);
    EXPECT_EQ(WInfoGrid(demo::grid), 0);
    constexpr int many = 2000;
    const auto start = std::chrono::steady_clock::now();
    WGridRows(demo::grid, many);
    std::vector<float> angles(many);
    std::iota(angles.begin(), angles.end(), 0.5f);
    WGridPutReal(demo::grid, demo::position, angles);
    WGridPutString(demo::grid, demo::name, Texts(many, "name"));
    WGridState(demo::grid, demo::name, field_read_only);
    Run("cell Peaks 2theta 2000 7.25\nprint dialog\n");
    const auto values = WGridGetReal(demo::grid, demo::position);
    EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 3);
    EXPECT_EQ(values.at(1998), 1998.5);
    EXPECT_EQ(values.at(1999), 7.25);
}

TEST_F(Dialogs, FormatsLimitsListsAndEmptying) {
    WDialogPutReal(demo::wavelength, 0.5);
    EXPECT_EQ(WDialogGetString(demo::wavelength), "0.50000");
    WDialogPutReal(demo::wavelength, 2, "(f6.1)");
    WDialogPutReal(demo::wavelength, 3);
    EXPECT_EQ(WDialogGetString(demo::wavelength), "3.0");
    WDialogPutReal(demo::wavelength, 123456789.0f);  // too wide for its format: no number is better than a wrong one
    EXPECT_TRUE(!WDialogGetReal(demo::wavelength) || WDialogGetReal(demo::wavelength).value() > 1.2e8);
    WDialogPutTrackbar(demo::width, 1000);
    EXPECT_EQ(WDialogGetTrackbar(demo::width), 50);
    WDialogRangeProgressBar(demo::progress, 0, 10);
    WDialogPutProgressBar(demo::progress, 10);
    EXPECT_EQ(WDialogGetString(demo::progress), "10");
    WDialogPutMenu(demo::radiation, Texts{"one", "two"}, 2);
    EXPECT_EQ(WDialogGetMenu(demo::radiation), 2);
    WDialogPutOption(demo::radiation, 0);
    EXPECT_EQ(WDialogGetMenu(demo::radiation), 0);
    for (int field = demo::title; field <= demo::tree; ++field) WDialogClearField(field);
    EXPECT_EQ(WDialogGetString(demo::title), "");
    EXPECT_FALSE(WDialogGetReal(demo::wavelength) || WDialogGetInteger(demo::points));
    EXPECT_EQ(WDialogInsertTreeViewItem(demo::tree, 0, "New"), 1);
    WDialogSetTab(demo::pages, 2);
    Run("set Radiation 1\nselect Phases Corundum\n", demo::tree);
    EXPECT_EQ(failed.size(), 2u);
    EXPECT_EQ(WDialogGetTreeView(demo::tree), 0);  // the focus alone chooses nothing
    Run("select Phases New\n");
    EXPECT_EQ(WDialogGetTreeView(demo::tree), 1);
}

TEST_F(Dialogs, AModalDialogLetsThroughWhatItWasGivenAndHoldsTheRest) {
    Numbers served;
    std::vector<Message_Kind> meanwhile;
    Register_Window(main_window, {.message = [&](const Message& message) {
                        if (message.kind == Message_Kind::command) served.push_back(message.record.value1);
                        meanwhile.push_back(message.kind);
                    }});
    EXPECT_EQ(Run("command 40018\ntimer 7\ndrop a.dat\nmouse move 1 1\nresize 640 480\npress OK\n", 0, std::array{about}), button_ok);
    EXPECT_EQ(served, Numbers{about});
    EXPECT_TRUE(failed.empty());
    EXPECT_EQ(meanwhile, (std::vector{Message_Kind::command, Message_Kind::timer, Message_Kind::resize}));
    EXPECT_EQ(Run("command 40018\nmain\ndialog 910\npress Cancel\n"), button_cancel);
    EXPECT_EQ(failed, (Numbers{1, 2, 3}));
    WDialogHide();
    EXPECT_TRUE(Modal_Loop_Serves(about));
    Register_Window(main_window, {.message = [&](const Message& message) {
                        if (message.kind != Message_Kind::command) return;
                        WDialogLoad(small);  // another one over it
                        WDialogShow(0, Show_Kind::modal);
                        EXPECT_EQ(Run_Modal(small), button_ok);
                        WDialogUnload();
                    }});
    Run("command 40018\ncommand 40018\ndialog 900\nset Own 1\nprint dialog\ntimer 7\npress OK\nset Title outer\npress Defaults\n", 0,
        std::array{about});
    EXPECT_EQ(failed, (Numbers{2, 3}));  // the one that waits is out of reach
    EXPECT_EQ(Json::parse(printed)["dialog"], small);
    EXPECT_EQ(WDialogGetString(demo::title), "outer");
}

TEST_F(Dialogs, ModelessDialogsComeToTheFrontAndGoInAnyOrder) {
    for (const int dialog : {small, small + 1, demo::number}) {
        WDialogLoad(dialog);
        WDialogShow(0, Show_Kind::modeless);
    }
    EXPECT_TRUE(Modal_Loop_Serves(about));
    Numbers from;
    Act("press OK\ndialog 910\nset 1001 a\npress OK\ndialog 911\npress OK\nmain\nset 1001 b\ndialog 77\ndialog 900\npress 1\n", [&] {
        while (from.size() < 4)
            if (const Message message = WMessage(); message.kind == Message_Kind::push_button) from.push_back(message.record.win);
    });
    EXPECT_EQ(from, (Numbers{demo::number, small, small + 1, demo::number}));
    EXPECT_EQ(failed, (Numbers{8, 9}));
    WDialogSelect(small);
    EXPECT_EQ(WDialogGetString(1001), "a");
    // What still waits for a dialog that goes is void, and nothing else is.
    for (const int dialog : {small, main_window, small + 1, small}) Post_Message({Message_Kind::push_button, {.win = dialog, .value1 = 1}});
    WDialogUnload();
    WDialogUnload();
    EXPECT_EQ(WMessage().record.win, main_window);
    EXPECT_EQ(WMessage().record.win, small + 1);
    EXPECT_FALSE(WMessagePeek());
    EXPECT_EQ(WindowFront(), demo::number);
    WDialogSelect(demo::number);
    WDialogUnload();
    EXPECT_EQ(WindowFront(), main_window);  // it was brought to the front after the other one
    WDialogLoad(small);                     // again, as new
    EXPECT_EQ(WDialogGetString(1001), "");
}

// What is pasted goes into the cells that a hand could change, and past the others.
TEST_F(Dialogs, CellsOfTheClipboardPassByWhatCannotBeChanged) {
    const auto cell = [](int column, int row) { return WGridGetCellString(demo::grid, column, row); };
    for (const int row : {1, 2, 3})
        for (const int column : {demo::name, demo::position}) {
            WGridStateCell(demo::grid, column, row, field_enabled);
            WGridPutCellString(demo::grid, column, row, "0");
        }
    WGridStateCell(demo::grid, demo::name, 1, field_disabled);
    WGridStateCell(demo::grid, demo::position, 2, field_read_only);
    WClipboardPutText("1\tone\t1.5\n0\ttwo\t2.5\n1\tthree\t3.5\n");
    Run("key Home\nkey Ctrl+v\npress OK\n", demo::grid);
    EXPECT_TRUE(failed.empty());
    EXPECT_EQ(cell(demo::name, 1) + cell(demo::name, 2) + cell(demo::name, 3), "0twothree");
    EXPECT_EQ(WGridGetCellReal(demo::grid, demo::position, 1), 1.5f);
    EXPECT_EQ(cell(demo::position, 2), "0");
    EXPECT_EQ(WGridGetCellReal(demo::grid, demo::position, 3), 3.5f);
    EXPECT_EQ(WGridGetCellCheckBox(demo::grid, demo::use, 1) + WGridGetCellCheckBox(demo::grid, demo::use, 3), 2);
    EXPECT_EQ(WGridGetCellCheckBox(demo::grid, demo::use, 2), 0);
}

TEST_F(Dialogs, AScriptTellsOfProgramsAndStartsThemWhenItMay) {
    Application application;
    std::ostringstream output, errors;
    {
        Script_Runner runner(application, "", output, errors);
        Running_Program running;
        EXPECT_TRUE(application.programs.Start(Command_Line().In("/").Program("/no/such/program").File("a b"), running).ok());
        EXPECT_TRUE(running.Ended_Within(std::chrono::milliseconds(0)));
        application.programs.Switch(true);  // "programs on"
        EXPECT_TRUE(application.programs.Start(Command_Line().Program("/no/such/program").File("b")).failed);
    }
    EXPECT_EQ(output.str(),
              "{\"started\":\"/no/such/program \\\"a b\\\"\",\"arguments\":[\"/no/such/program\",\"a "
              "b\"],\"directory\":\"/\",\"waited\":true}\n");
}

}  // namespace
}  // namespace vntl
