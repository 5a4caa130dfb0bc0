// What the pointer reads out, snaps to and draws over the plot, against the columns of the files and moves by hand.
#include <array>
#include <cmath>

#include "app/testing.hpp"
#include "commands/plot/pointed_text.hpp"

namespace vntl {
namespace {

class Readouts : public Program {
protected:
    static constexpr int points = 201, top = 80;

    // y = 100 + 900 on a triangle about x = 18, with a deviation of 37 in the third column.
    void SetUp() override {
        Program::SetUp();
        for (const auto& [name, shift] : {std::pair{"a.xye", 0}, {"b.xye", 300}}) {
            std::ofstream file(directory / name);
            file << name << '\n';
            for (int i = 0; i < points; ++i) file << 10 + 0.1 * i << ' ' << Count(i) + shift << " 37\n";
        }
    }
    static int Count(int i) { return std::max(100, 1000 - 30 * std::abs(i - top)); }
    static std::string Click(double x, double y) {
        const std::string at = std::to_string(x) + ' ' + std::to_string(y) + '\n';
        return "mouse data down " + at + "mouse data up " + at;
    }
    static std::string Part(const Json& state, std::size_t n) { return state["status"][n - 1]; }
};

TEST(Intensity, HasTwoFiguresOfItsDeviationInBrackets) {
    struct Case {
        float value, deviation;
        const char* text;
    };
    const Case cases[] = {{1234, 35.2f, "1234(35)"},
                          {500, 1, "500.0(10)"},
                          {0.52f, 0.034f, "0.520(34)"},
                          {-3.5f, 0.0997f, "-3.50(10)"},
                          {54321, 233, "54321(233)"},
                          {99.96f, 9.97f, "100(10)"},
                          {500, 0, "500"},
                          {0.125f, NAN, "0.125"},
                          {2.5e7f, -1, "25000000"},
                          {3e30f, 1e15f, "3e+30"}};
    for (const Case& c : cases) EXPECT_EQ(Intensity_With_Deviation(c.value, c.deviation), c.text);
}

TEST_F(Readouts, NameAndDeviationStandBehindWhatIsToldOfAPoint) {
    const auto run = Script(
        "open a.xye\nmouse data move 18.02 300\nprint state\ncommand 40019\ndrop a.xye b.xye\nmouse data move 18.02 1250\nprint state\n"
        "mouse data move 25.05 120\nprint state\ncommand 40226\nmouse data move 18.02 7.1\nprint state\n");
    const auto states = run.With("plot_type");
    EXPECT_EQ(Part(states.at(0), 2), " N= 81 a.xye I= 1000(37)");
    EXPECT_EQ(Part(states.at(1), 2), "Pointed Pattern 2 b.xye I= 1300(37)");
    EXPECT_EQ(Part(states.at(2), 2), "Pointed Pattern 1 a.xye I= 100(37)");
    EXPECT_EQ(Part(states.at(3), 2), " N= 81, Pattern 2 b.xye I= 1300(37)");  // ln 1000 = 6.9, ln 1300 = 7.2
}

// The top is 0.15 and 1.5 away from the clicks: a hundredth of the view of 19.9 reaches it from the first alone.
TEST_F(Readouts, AClickSnapsToTheMaximumNearItWhileThatIsWanted) {
    const auto run =
        Script("open a.xye\nprint menu 40558\ncommand 40096\nprint menu 40558\ncommand 40093\n" + Click(17.85, 500) +
               "print state\nprint peaks\ncommand 40147\ncommand 40558\nprint menu 40558\n" + Click(17.85, 500) + "print peaks\n" +
               Click(18.1, 950) + "print state\nprint peaks\n" + Click(16.5, 500) + "print peaks\nprint state\ncommand 40097\n" +
               "command 40095\nprint menu 40558\n" + Click(12, 100) + Click(25, 100) + Click(18.15, 300) + "print fit\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto menus = run.With("built"), lists = run.With("peaks"), states = run.With("plot_type");
    const std::pair<bool, bool> wanted[] = {{false, false}, {true, false}, {true, true}, {true, true}};
    for (std::size_t i = 0; i < std::size(wanted); ++i)
        EXPECT_EQ(std::pair(menus.at(i)["enabled"].get<bool>(), menus[i]["checked"].get<bool>()), wanted[i]) << i;
    const auto near = [](const Json& peak, double x, double y, double room) {
        EXPECT_NEAR(peak["x"].get<double>(), x, room);
        EXPECT_NEAR(peak["y"].get<double>(), y, 50 * room);
    };
    near(lists.at(0)["peaks"].at(0), 17.85, 500, 0.01);
    near(lists.at(1)["peaks"].at(0), 18, 1000, 1e-5);
    EXPECT_EQ(lists.at(2)["peaks"].size(), 1u);  // the same top again
    EXPECT_EQ(Part(states.at(1), 1), "A peak stands there already");
    ASSERT_EQ(lists.at(3)["peaks"].size(), 2u);
    near(lists[3]["peaks"][0], 16.6, Count(66), 1e-5);  // the last point within 0.199 of 16.5, on the way up
    EXPECT_EQ(Part(states.at(0), 1) + '|' + Part(states.at(2), 1),
              "Peaks allocation: Insert peak, 1 peak|Peaks allocation: Insert peak, 2 peaks");
    EXPECT_NEAR(run.With("fit").at(0)["fit"]["peaks"].at(0)["pos"].get<double>(), 18, 1e-5);
}

TEST_F(Readouts, ListsTellHowManyTheyHold) {
    const auto run = Script(
        "open a.xye\ncommand 40096\ncommand 40092\npress OK\nprint state\nprint peaks\ncommand 40147\nprint state\ncommand "
        "40506\nprint state\ncommand 40097\ncommand 40138\ncommand 40144\n" +
        Click(12, 150) + Click(25, 150) + "mouse data move 20 300\nprint state\ncommand 40145\n" + Click(12, 150) +
        "print state\nkey Escape\nprint state\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto states = run.With("plot_type");
    const std::size_t found = run.With("peaks").at(0)["peaks"].size();
    const std::string peaks = std::to_string(found) + (found == 1 ? " peak" : " peaks");
    const std::string wanted[] = {"Peaks allocation: " + peaks + " found",
                                  "Peaks allocation: 0 peaks",
                                  "Peaks allocation: " + peaks,
                                  "Background allocation: Insert point, 2 background points",
                                  "Background allocation: Delete point, 1 background point",
                                  "Background allocation:"};
    for (std::size_t i = 0; i < std::size(wanted); ++i) EXPECT_EQ(Part(states.at(i), 1), wanted[i]) << i;
}

// Ghosts of a line and of a factor go with the mode, and the rows stay. Dialogs have theirs on the screen alone.
TEST_F(Readouts, GhostsFollowWhatMovesRows) {
    const std::string choose = "cell 1711 3 2 1\npress OK\n", look = "print pointer\n";
    const auto run = Script("drop a.xye b.xye\nprint data 2\ncommand 40149\n" + choose + "mouse data down 15 500\n" + look +
                            "mouse data move 17 700\n" + look + "key Escape\n" + look + "command 40124\n" + choose + Click(20, 500) +
                            "mouse data down 22 500\nmouse data move 25 500\n" + look + "mouse down right 600 400\n" + look +
                            "command 40149\ncell 1711 3 2 1\nset 1712 0\nset 1713 1.5\nset 1714 -20\npress Cancel\n" +
                            "command 40115\npress \"Select all\"\nset 1712 0\nset 1713 100\nset 1714 200\nset 1715 400\npress Cancel\n" +
                            "command 40141\nset 1802 0.5\nset 1804 40\npress Cancel\nprint data 2\n");
    const auto looks = run.With("pointer"), data = run.With("x");
    struct Case {
        std::size_t ghosts;
        std::array<double, 4> line{};  // of x, and of y
    };
    const Case cases[] = {{0}, {1, {1, 2, 1, 200}}, {0}, {1, {1.25, 0, 1, 0}}, {0}};
    ASSERT_EQ(looks.size(), std::size(cases)) << run.errors;
    for (std::size_t i = 0; i < looks.size(); ++i) {
        const Json ghosts = looks[i]["pointer"]["ghosts"];
        ASSERT_EQ(ghosts.size(), cases[i].ghosts) << i << ghosts;
        if (ghosts.empty()) continue;
        EXPECT_EQ(ghosts[0]["row"], 2) << i;
        for (std::size_t k = 0; k < 4; ++k)
            EXPECT_NEAR(ghosts[0][k < 2 ? "x" : "y"][k % 2].get<double>(), cases[i].line[k], k == 3 ? 0.5 : 1e-3) << i << ' ' << k;
    }
    EXPECT_EQ(data.at(0), data.at(1));
}

}  // namespace
}  // namespace vntl
