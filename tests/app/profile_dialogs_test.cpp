// Dialogs that act on rows as a whole: what is drawn, moving and scaling by numbers, excluded regions.
#include <cmath>

#include "app/testing.hpp"
#include "patterns/prf_files.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

class Profile_Dialogs : public Program {
protected:
    // Two rows of angles, rising lines; a refined profile of two phases.
    void SetUp() override {
        Program::SetUp();
        for (const char* name : {"a.xye", "b.xye"}) {
            std::ofstream file(directory / name);
            file << name << '\n';
            for (int i = 0; i <= 20; ++i) file << 10 + i << ' ' << 100 + 10 * i << " 1\n";
            file << "0 0 0\n";
        }
        test::Model model = test::Make_Model(2, 10, false);
        model.excluded.clear();
        std::ofstream(directory / "refined.prf") << test::Whole(test::Columns(model));
    }
    static Texts Told(const Run_Result& run) {
        const Texts boxes = run.Boxes();
        return {boxes.begin() + std::min<long>(1, std::ssize(boxes)), boxes.end()};
    }
    static Json Field(const Json& dialog, int number) {
        for (const Json& field : dialog["fields"])
            if (field["field"] == number) return field;
        return {};
    }
};

// Numbers of the fields of the dialog "GRAPH SHOW".
constexpr int loaded = 1731, ycalc = 1732, reflections = 1734, background = 1735, show_grid = 1736;

TEST_F(Profile_Dialogs, GraphShowChoosesPartsAndRows) {
    const auto run = Script(
        "drop a.xye b.xye\ncommand 40023\nprint dialog\npress Return\ndrop refined.prf\ncommand 40023\nprint dialog\n"
        "set 1734 0\nset 1735 1\ncell 1736 3 2 0\nprint picture\npress Apply\nprint picture\npress \"Deselect all\"\npress Return\n"
        "print rows\ncommand 40023\nprint dialog\npress \"Select all\"\npress Return\nprint rows\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto dialogs = run.With("dialog"), pictures = run.With("markers"), rows = run.With("shown");
    EXPECT_EQ(Field(dialogs.at(0), loaded)["value"], "File PRF loaded : <<< none >>>");
    EXPECT_EQ(Field(dialogs.at(1), loaded)["value"], "File PRF loaded : refined.prf");
    for (const int field : {ycalc, reflections, background}) {
        EXPECT_FALSE(Field(dialogs[0], field)["enabled"]) << field;
        EXPECT_TRUE(Field(dialogs[1], field)["enabled"]) << field;
    }
    EXPECT_EQ(Field(dialogs[1], show_grid)["value"][2][1], "PRF");
    EXPECT_EQ(Field(dialogs.at(2), reflections)["value"], "0");  // as applied
    EXPECT_EQ(Field(dialogs[2], background)["value"], "1");
    // Without the ticks, with the background's markers, and without row 2, whose line and markers go.
    EXPECT_GT(pictures.at(0)["lines"].size(), pictures.at(1)["lines"].size() + 15);
    EXPECT_EQ(pictures[0]["markers"].size(), pictures[1]["markers"].size());
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_FALSE(rows.at(i)["shown"]);
        EXPECT_TRUE(rows.at(3 + i)["shown"]);
    }
}

// The list is saved while the dialog is open, which goes on as if nothing had been; other commands wait.
TEST_F(Profile_Dialogs, GraphShowLetsTheBufferFileBeSaved) {
    const auto run = Script(
        "drop a.xye b.xye\ncommand 40023\nfiles list.buf\ncommand 40009\ncommand 40014\n"
        "cell 1736 3 2 0\npress Apply\npress Return\nprint rows\n");
    EXPECT_EQ(run.errors, "line 5: command 40014 is not served while a dialog is open\n");
    EXPECT_NE(Text_Of(directory / "list.buf").find("b.xye"), std::string::npos);
    EXPECT_FALSE(run.With("shown").at(1)["shown"]);
}

TEST_F(Profile_Dialogs, NumbersMoveAndScaleRows) {
    struct Case {
        const char* what;
        std::string statements;
        std::vector<double> x, y;  // first and last of row 1
    };
    const std::string row = "cell 1711 3 1 1\nset 1712 0\n";
    const Case cases[] = {
        {"offset", "command 40149\n" + row + "set 1713 -2\nset 1714 50\npress OK\n", {8, 28}, {150, 350}},
        {"scaling x", "command 40124\n" + row + "set 1713 10\nset 1714 20\nset 1715 30\npress OK\n", {10, 50}, {100, 300}},
        {"scaling x, nothing new", "command 40124\n" + row + "set 1713 10\nset 1714 20\nset 1715 20\npress OK\n", {10, 30}, {100, 300}},
        {"scaling y about 100", "command 40115\n" + row + "set 1713 100\nset 1714 200\nset 1715 150\npress OK\n", {10, 30}, {100, 200}},
        {"scaling x turned", "command 40124\n" + row + "set 1713 20\nset 1714 30\nset 1715 10\npress OK\n", {10, 30}, {300, 100}},
    };
    for (const Case& c : cases) {
        const auto run = Script("drop a.xye b.xye\nprint data 2\n" + c.statements + "print data 1\nprint data 2\n");
        EXPECT_EQ(run.errors, "") << c.what;
        EXPECT_EQ(Told(run), Texts{}) << c.what;
        const auto data = run.With("x");
        for (std::size_t end = 0; end < 2; ++end) {
            EXPECT_NEAR(data.at(1)["x"][20 * end].get<double>(), c.x[end], 1e-4) << c.what;
            EXPECT_NEAR(data.at(1)["y"][20 * end].get<double>(), c.y[end], 1e-3) << c.what;
        }
        EXPECT_EQ(data.at(0), data.at(2)) << c.what;
    }
    const auto refused = Script(
        "drop a.xye refined.prf\nprint rows\ncommand 40115\nprint dialog\npress \"Select all\"\nprint dialog\nset 1712 0\n"
        "print dialog\nset 1713 5\nset 1714 5\nset 1715 6\npress OK\nprint dialog\npress Cancel\ncommand 40124\npress OK\nprint dialog\n"
        "cell 1711 3 1 1\nprint dialog\npress Cancel\ncommand 40149\npress Cancel\n"
        "command 40149\ncell 1711 3 1 1\nset 1712 0\nset 1713 1e39\npress OK\nprint dialog\npress Cancel\nprint rows\n");
    const auto told = Told(refused);
    ASSERT_EQ(told.size(), 3u) << refused.output;
    EXPECT_EQ(told[0], "The present and the new Y value must differ from the Y reference");
    EXPECT_EQ(told[1], "No files have been selected for scaling X. Operation cancelled");
    EXPECT_EQ(refused.Marked(), (std::vector<std::vector<int>>{{}, {}, {}, {1714}, {1711}, {}, {1713}}));
    const auto dialogs = refused.With("dialog"), rows = refused.With("kind");
    EXPECT_FALSE(Field(dialogs.at(0), 1713)["enabled"]);
    EXPECT_TRUE(Field(dialogs.at(2), 1713)["enabled"]);
    EXPECT_EQ(Field(dialogs.at(1), 1711)["value"][0][2], "1");
    EXPECT_EQ(Field(dialogs[1], 1711)["value"][1][2], "0");  // a refined profile stays out
    EXPECT_EQ(rows.at(0), rows.at(2));
}

TEST_F(Profile_Dialogs, ExcludedRegionsAreGivenListedAndDeleted) {
    const auto run = Script(
        "drop a.xye b.xye\ncommand 40151\nset from 12\nset to 14\npress OK\nprint dialog\nset from 14\nset to 12\n"
        "press \"Select all\"\npress OK\nprint dialog\nset from 12\nset to 14.5\nprint dialog\npress OK\n"
        "command 40034\npress Insert\nset from 20\nset to 21\ncell 1723 3 2 1\npress OK\nprint excluded 2\n"
        "select Regions \"b.xye/( 1) 12.0000 /14.5000\"\nanswer yes\npress Delete\nprint excluded 2\n"
        "select Regions a.xye\nanswer no\npress Delete\nprint excluded 1\nanswer yes\npress Delete\nprint excluded 1\n"
        "select Regions \"a.xye/No excluded regions\"\npress Delete\nanswer yes\npress \"Delete all\"\npress Return\n"
        "print excluded 2\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(Told(run), (Texts{"ERROR: No profile selected to add excluded region", "ERROR: minimal X value >= maximal X value",
                                "Do you want to delete the excluded region\nNo 1 of profile: b.xye ?",
                                "Do you want to delete ALL excluded regions\nof profile: a.xye ?",
                                "Do you want to delete ALL excluded regions\nof profile: a.xye ?",
                                "Do you want to delete ALL excluded regions\nof ALL profiles?"}));
    EXPECT_EQ(run.Marked(), (std::vector<std::vector<int>>{{1723}, {1721}, {}}));
    const auto lists = run.With("excluded");
    EXPECT_EQ(lists.at(0)["excluded"], Json::parse("[[12.0,14.5],[20.0,21.0]]"));
    EXPECT_EQ(lists.at(1)["excluded"], Json::parse("[[20.0,21.0]]"));
    EXPECT_EQ(lists.at(2)["excluded"].size(), 1u);
    EXPECT_EQ(lists.at(3)["excluded"].size() + lists.at(4)["excluded"].size(), 0u);
}

Texts Names(const std::vector<Json>& rows, std::size_t first, std::size_t count) {
    Texts names;
    for (std::size_t i = first; i < first + count && i < rows.size(); ++i) names.push_back(rows[i]["file_name"]);
    return names;
}

TEST_F(Profile_Dialogs, DeletionAsksAndTakesTheMarkedRows) {
    const std::string two = "cell 1781 Delete 1 1\ncell 1781 Delete 3 1\n";
    const auto run = Script(
        "drop a.xye b.xye refined.prf\nmouse wheelup 600 400\nprint state\ncommand 40037\nprint dialog\npress OK\n"
        "command 40037\n" +
        two +
        "answer no\npress OK\nprint dialog\npress Cancel\nprint state\n"
        "command 40037\n" +
        two +
        "answer yes\npress OK\nprint rows\nprint state\n"
        "command 40037\npress \"Select all\"\npress \"Deselect all\"\nprint dialog\npress \"Select all\"\n"
        "answer yes\npress OK\nprint state\nprint menu 40506\ncommand 40506\nprint rows\nprint state\n"
        "command 40506\nprint rows\ncommand 40507\ncommand 40507\nprint state\ncommand 40019\nprint menu 40506\n");
    EXPECT_EQ(run.errors, "");
    const std::string ask = "The following profiles will be delete:\n\n", sure = "\nAre you sure?", some = "a.xye\nrefined.prf\n";
    EXPECT_EQ(Told(run), (Texts{ask + some + sure, ask + some + sure, ask + "b.xye\n" + sure}));
    EXPECT_EQ(run.With("box").back()["box"], "Warning");
    const auto dialogs = run.With("dialog"), states = run.With("plot_type"), rows = run.With("shown"), menus = run.With("built");
    EXPECT_EQ(Field(dialogs.at(0), 1781)["value"][2], Json({"refined.prf", "0", "PRF", "2theta", rows.at(4)["title"]}));
    EXPECT_EQ(Field(dialogs.at(1), 1781)["value"][0][1], "1");  // on "No" the marks stay
    EXPECT_EQ(Field(dialogs.at(2), 1781)["value"][0][1], "0");
    EXPECT_EQ(states.at(1), states.at(0));  // the view too
    EXPECT_EQ(Names(rows, 0, 1), (Texts{"b.xye"}));
    EXPECT_EQ(states.at(2)["plot_type"], "single");
    EXPECT_FALSE(states[2]["prf_loaded"]);
    EXPECT_EQ(states.at(3)["plot_type"], "none");
    EXPECT_EQ(menus.at(0)["label"], "Undo deletion of b.xye");
    EXPECT_EQ(states.at(4)["plot_type"], "single");
    EXPECT_EQ(Names(rows, 1, 4), (Texts{"b.xye", "a.xye", "b.xye", "refined.prf"}));
    EXPECT_EQ(states.at(5)["plot_type"], "none");
    EXPECT_FALSE(menus.at(1)["enabled"]);  // a new start ends the way back
    std::string many = "drop";
    for (int i = 0; i < 100; ++i) many += " a.xye";
    const auto long_list = Told(Script(many + "\nanswer no\ncommand 40037\npress \"Select all\"\npress OK\npress Cancel\n"));
    ASSERT_EQ(long_list.size(), 1u);
    EXPECT_EQ(long_list[0].size(), ask.size() + 500 + sure.size());
}

TEST_F(Profile_Dialogs, SortingGoesByTheChosenKey) {
    for (const char* name : {"run10", "Run9", "run1"}) {
        std::ofstream file(directory / (std::string(name) + ".dat"));
        file << "title " << 20 - std::string(name).size() << "\n2.42 A\n0'\n3 " << (name[3] == '9' ? 5 : 300) << " 2 0 1e5 1e5\n"
             << "10 1 12\n"
             << name[3] << " 2 3\n";
    }
    const auto run = Script(
        "open run1.dat run10.dat Run9.dat\nset 1005 1\npress OK\ncommand 40025\nprint dialog\npress Apply\nprint rows\n"
        "set Descending 1\npress Apply\nprint rows\nset Temperature 1\npress Apply\nprint rows\n"
        "cell 1791 Temperature 1 abc\npress Apply\nprint dialog\ncell 1791 Temperature 1 1\npress Apply\nprint rows\n"
        "set \"Custom field\" 1\nset Ascending 1\ncell 1791 4 3 0.5\npress Apply\nprint rows\nprint dialog\n"
        "press Return\nprint changes\nprint state\n");
    EXPECT_EQ(run.errors, "line 14: cell Temperature 1 holds no valid value: abc\n");
    const auto rows = run.With("shown"), dialogs = run.With("dialog");
    ASSERT_EQ(rows.size(), 15u);
    const Texts natural{"run1.dat", "Run9.dat", "run10.dat"}, falling{"run10.dat", "Run9.dat", "run1.dat"},
        warm_first{"run10.dat", "run1.dat", "Run9.dat"}, edited{"run1.dat", "Run9.dat", "run10.dat"},
        custom{"run10.dat", "run1.dat", "Run9.dat"};
    const Texts* expected[] = {&natural, &falling, &warm_first, &edited, &custom};
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(Names(rows, 3 * i, 3), *expected[i]) << i;
    EXPECT_EQ(Told(run), (Texts{"Row 1: \"abc\" is not a number"}));
    EXPECT_EQ(run.Marked(), (std::vector<std::vector<int>>{{}, {1791}, {}}));
    EXPECT_EQ(Field(dialogs.at(2), 1791)["value"][0][2], "300");  // a temperature is edited for the sort alone
    EXPECT_EQ(Field(dialogs[2], 1791)["value"][0][3], "1");
    EXPECT_EQ(run.With("changes").at(0)["changes"]["undo"], "sorting of 3 profiles");
}

TEST_F(Profile_Dialogs, ShiftNormalizationAndFocusTakeNumbers) {
    for (const char* name : {"one.dat", "two.dat"})
        std::ofstream(directory / name) << name << "\n2.42 A\n0'\n3 300 2 0 " << (name[0] == 'o' ? 1000 : 3000)
                                        << " 1e5\n10 1 12\n30 60 90\n";
    const auto shifted = Script(
        "drop a.xye b.xye b.xye\ncommand 40141\nset 1802 1\nset 1804 x\npress OK\nprint dialog\nset 1804 -50\npress OK\n"
        "print data 2\ncommand 40141\nprint dialog\nset 1804 3e38\npress OK\nset 1804 0\nprint dialog\n"
        "set 1802 1e39\npress OK\nprint dialog\npress Cancel\ncommand 40019\nprint state\n"
        "drop a.xye refined.prf\ncommand 40141\ncommand 40026\nprint rows\n");
    const Texts told = Told(shifted);
    ASSERT_EQ(told.size(), 5u) << shifted.output;
    EXPECT_EQ(told[0], "New value of Y: \"x\" is not a number");
    EXPECT_EQ(told[3], "Profile PRF in memory. Operation not permitted");
    EXPECT_EQ(told[4], told[3]);
    const auto dialogs = shifted.With("dialog");
    EXPECT_EQ(shifted.With("x").at(0)["x"][0], 11.0);
    EXPECT_EQ(shifted.With("x")[0]["y"][0], 50.0);
    EXPECT_EQ(Field(dialogs.at(1), 1801)["value"], "1");
    EXPECT_FALSE(Field(dialogs[1], 1803)["enabled"]);
    EXPECT_EQ(shifted.With("plot_type").at(0)["shift_x"], 1.0);  // for the whole run

    const auto normalized = Script(
        "drop a.xye\ncommand 40102\ncommand 40026\ncommand 40019\nopen one.dat two.dat\nset 1005 1\npress OK\ncommand 40026\n"
        "print dialog\nset 1812 none\npress OK\nprint dialog\nset 1812 6000\npress OK\nprint data 1\nprint data 2\n"
        "command 40026\nset 1812 0.5\npress OK\nprint data 1\ncommand 40506\nprint data 1\n");
    EXPECT_EQ(Told(normalized),
              (Texts{"Normalization impossible: non-uniform profiles", "Normalization Monitor: \"none\" is not a number"}));
    EXPECT_EQ(Field(normalized.With("dialog").at(0), 1811)["value"], "2000.00");
    EXPECT_EQ(normalized.Marked(), (std::vector<std::vector<int>>{{}, {1812}}));
    const auto data = normalized.With("x");
    const std::vector<double> first{60, 180, 40, 60};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(data.at(i)["y"][0].get<double>(), first[i]) << i;

    const auto focused = Script(
        "drop a.xye\nprint state\ncommand 40036\npress OK\nprint state\ncommand 40036\nset 1821 12\nset 1822 12\npress OK\n"
        "print dialog\nset 1822 22.5\nset 1824 -1e9\npress OK\nprint dialog\nset 1824 1e3\npress OK\nprint state\n"
        "command 40503\nprint state\ncommand 40504\ncommand 40036\nset 1823 -3e38\nset 1824 3e38\npress OK\nprint dialog\n"
        "press Cancel\nprint state\n");
    EXPECT_EQ(Told(focused), (Texts{"Xmin must be below Xmax", "Ymin must be below Ymax", "The window would leave the range of numbers"}));
    EXPECT_EQ(focused.Marked(), (std::vector<std::vector<int>>{{1821}, {1823}, {1824}}));
    const auto states = focused.With("plot_type");
    EXPECT_EQ(states.at(1), states.at(0));
    EXPECT_EQ((std::vector<double>{states.at(2)["x_view_min"], states[2]["x_view_max"], states[2]["y_view_max"], states[2]["drawn_x1"]}),
              (std::vector<double>{12, 22.5, 1000, 12}));
    EXPECT_EQ(states.at(3)["x_view_min"], states[0]["x_view_min"]);
    EXPECT_EQ(states.at(4)["x_view_min"], 12.0);
}

// Its fit and its reflections are there already, whatever was done to it since.
TEST_F(Profile_Dialogs, ARefinedProfileKeepsItsBarsAndItsCurvesThroughTheForms) {
    const std::string look = "print state\nprint menu 40095\nprint menu 40154\nprint menu 40099\nprint picture\n";
    const auto run =
        Script("drop refined.prf\n" + look + "command 40096\ncommand 40097\n" + look + "command 40138\ncommand 40139\n" + look +
               "drop a.xye\nprint state\nprint picture\ncommand 40226\nprint state\ncommand 40138\ncommand 40139\nprint state\n"
               "print picture\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto states = run.With("plot_type"), pictures = run.With("markers");
    for (const Json& menu : run.With("built")) EXPECT_FALSE(menu["enabled"]) << menu["id"];
    for (const Json& state : states) EXPECT_TRUE(state["prf_loaded"] && state["ProfilePRFactive"] == 1);
    for (const std::size_t i : {1u, 2u}) EXPECT_EQ(pictures.at(i), pictures.at(0)) << i;
    EXPECT_EQ(pictures.at(4), pictures.at(3));  // out of the logarithms, by way of a calculation
}

}  // namespace
}  // namespace vntl
