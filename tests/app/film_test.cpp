// The film of the rows: what each step shows, the pace of its timer, and that nothing of it is left.
#include <sstream>

#include "app/testing.hpp"

namespace vntl {
namespace {

class Film : public Program {
protected:
    // The one in the middle knows its temperature.
    void SetUp() override {
        Program::SetUp();
        for (const std::string name : {"a", "b", "c"}) {
            std::ofstream file(directory / (name + ".xye"));
            if (name == "b")
                file << "XYDATA\nTITLE warm\nTEMP 300.0\n!\n!\n!\n";
            else
                file << "title of " << name << '\n';
            for (int i = 0; i <= 20; ++i) file << 10 + i << ' ' << 100 + 10 * i << " 1\n";
            file << "0 0 0\n";
        }
    }
    static Json Field(const Json& dialog, const std::string& label) {
        for (const Json& field : dialog["fields"])
            if (field["label"] == label) return field;
        return {};
    }
    // For each look its row, the rows shown and the interval of the running timer: "2:12@1000".
    static std::string Seen(const Run_Result& run) {
        const auto dialogs = run.With("dialog"), rows = run.With("shown"), timers = run.With("timers");
        std::string seen;
        for (std::size_t i = 0; i < dialogs.size(); ++i) {
            seen += (i == 0 ? "" : " ") + Field(dialogs[i], "Row")["value"].get<std::string>() + ':';
            for (std::size_t row = 0; row < 3; ++row)
                if (rows.at(3 * i + row)["shown"]) seen += std::to_string(row + 1);
            const Json& running = timers.at(i)["timers"];
            for (const Json& timer : running) {
                seen += '@' + std::to_string(timer["ms"].get<int>());
                EXPECT_TRUE(timer["window"] == 0 && timer["number"] == 1 && timer["repeat"] == true) << timer;
            }
            for (const char* button : {"Start", "Step"}) EXPECT_EQ(Field(dialogs[i], button)["enabled"], running.empty()) << seen;
        }
        return seen;
    }
};

const std::string three = "drop a.xye b.xye c.xye\n", look = "print dialog\nprint rows\nprint timers\n";

TEST_F(Film, StepsGoRoundStopStayAndBeginAnew) {
    struct Case {
        const char* statements;  // a look after each part
        const char* seen;
    };
    const Case cases[] = {
        {"#|timer 1|timer 1|timer 1", "1:1 2:2 3:3 1:1"},
        {"press Step|press Step|press Step|set Reverse 1|press Step|timer 1|timer 1", "2:2 3:3 1:1 1:1 3:3 2:2 1:1"},
        {"set Keep 1|press Step|press Step|press Step", "1:1 2:12 3:123 1:1"},
        {"set Keep 1|set Reverse 1|press Step|press Step|timer 1|timer 1", "1:1 1:1 3:3 2:23 1:123 3:3"},
        {"set \"Auto repeat\" 0|press Start|timer 1|timer 1|timer 1|press Step|timer 1", "1:1 1:1@1000 2:2@1000 3:3@1000 3:3 3:3 3:3"},
        {"set \"Auto repeat\" 0|set Reverse 1|press Step|press Start|timer 1", "1:1 1:1 1:1 1:1@1000 1:1"},
        {"set \"Auto repeat\" 0|set Keep 1|press Step|press Step|press Step", "1:1 1:1 2:12 3:123 3:123"},
        {"set Keep 1|press Step|press Step|press Back|set Keep 0|press Back", "1:1 2:12 3:123 1:123 1:123 1:1"},
        {"press Start|timer 1|timer 2|press Back|press Start|timer 1|press Pause|press Step",
         "1:1@1000 2:2@1000 2:2@1000 1:1 1:1@1000 2:2@1000 2:2 3:3"},
        {"set Speed 50|press Start|set Speed 100|set Speed 2|set Speed 3|press Pause|set Speed 7|press Start",
         "1:1 1:1@200 1:1@100 1:1@5000 1:1@3333 1:1 1:1 1:1@1428"},
    };
    for (const Case& c : cases) {
        std::istringstream parts(c.statements);
        std::string script = three + "command 40158\n";
        for (std::string part; std::getline(parts, part, '|');) script += part + '\n' + look;
        const auto run = Script(script);
        EXPECT_EQ(run.errors, "") << c.statements;
        EXPECT_EQ(Seen(run), c.seen) << c.statements;
    }
}

TEST_F(Film, TellsOfTheRowAndDrawsAllAlike) {
    const auto run =
        Script(three + "command 40158\nprint dialog\npress Step\nprint dialog\nprint picture\ntimer 1\nprint dialog\nprint picture\n");
    EXPECT_EQ(run.errors, "");
    // 300 - 273.16 in columns of eight
    const char* told[][3] = {
        {"a.xye", "title of a", ""}, {"b.xye", "warm", "  300.00 K      26.84 C"}, {"c.xye", "title of c", "  300.00 K      26.84 C"}};
    const auto dialogs = run.With("dialog"), pictures = run.With("markers");
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(Field(dialogs.at(i), "Profile :")["value"], told[i][0]);
        EXPECT_EQ(Field(dialogs[i], "Title :")["value"], told[i][1]);
        EXPECT_EQ(Field(dialogs[i], "Temperature :")["value"], told[i][2]);
    }
    EXPECT_EQ(pictures.at(0)["markers"], pictures.at(1)["markers"]);  // one curve of one style
    EXPECT_FALSE(pictures[0]["markers"].empty());
}

TEST_F(Film, LeavesRowsAndStylesAsTheyWere) {
    const std::string state = "print rows\nprint prefs\nprint timers\nprint picture\n";
    for (const char* way_out : {"press Close", "key Escape", "close"}) {
        const auto run =
            Script(three + "pref profile_styles/3/line_colour 1,2,3\ncommand 40023\ncell 1736 3 2 0\npress Apply\npress Return\n" + state +
                   "command 40158\npress Start\ntimer 1\n" + way_out + '\n' + state);
        EXPECT_EQ(run.errors, "") << way_out;
        const auto lines = run.lines;
        ASSERT_EQ(lines.size() % 2, 1u) << run.output;  // behind the box about the preferences
        const auto middle = lines.begin() + 1 + std::ssize(lines) / 2;
        EXPECT_EQ(std::vector(lines.begin() + 1, middle), std::vector(middle, lines.end())) << way_out;
        EXPECT_TRUE(run.With("timers").back()["timers"].empty()) << way_out;
    }
    EXPECT_EQ(Script(three + "command 40158\npress Start\nquit\n").errors, "");
}

TEST_F(Film, GoesThroughAFullTable) {
    std::string script = "drop";
    for (int i = 1; i <= 2000; ++i) {
        const std::string name = "r" + std::to_string(i) + ".xye";
        std::ofstream(directory / name) << "row\n1 1 1\n2 3 1\n3 2 1\n0 0 0\n";
        script += ' ' + name;
    }
    script += "\ncommand 40158\n";
    for (int i = 1; i < 2000; ++i) script += "timer 1\n";
    const auto run = Script(script + "print dialog\ntimer 1\nprint dialog\n");
    EXPECT_EQ(run.errors, "");
    const auto dialogs = run.With("dialog");
    EXPECT_EQ(Field(dialogs.at(0), "Row")["value"], "2000");
    EXPECT_EQ(Field(dialogs.at(0), "Profile :")["value"], "r2000.xye");
    EXPECT_EQ(Field(dialogs.at(1), "Row")["value"], "1");
}

}  // namespace
}  // namespace vntl
