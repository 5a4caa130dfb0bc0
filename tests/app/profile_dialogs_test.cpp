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
