// Windows of their own together: which files open them, what they hold back, and in which order they may be left.
#include "app/testing.hpp"

namespace vntl {
namespace {

class Windows_Together : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        for (const char* name : {"a", "b"})
            std::ofstream(directory / (std::string(name) + ".gdf"))
                << "TITLE of " << name << "\nN_PLOTS 1\n{/ curve\nN_POINTS 2\n1 2\n3 4\n/}\n";
        std::ofstream(directory / "runs.SEQ") << "NEW_REFINEMENT Runs\nNUMPAR 0\nN_PATT 1\nNPHASE 1\nf 1 0\nGLOBAL_CHI_2 1\n"
                                                 "R a 1 0\nR b 2 0\nR c 3 0\n";
    }
    // Titles of the plots of generic graphics, each time that they are printed.
    static std::string Titles(const Run_Result& run) {
        std::string titles;
        for (const Json& line : run.With("generic")) titles += line["generic"]["title"].get<std::string>() + '|';
        return titles;
    }
    static int Count(const std::string& text, const std::string& part) {
        int count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
        return count;
    }
};

TEST_F(Windows_Together, FilesOpenTheWindowThatShowsThem) {
    const Run_Result named = Script("print generic\nclose\nprint state\n", {"a.gdf"});
    EXPECT_EQ(named.status, 0) << named.errors;
    EXPECT_EQ(Titles(named), "of a|");
    EXPECT_EQ(named.With("plot_type").size(), 1u);
    // Rows first, then one window after another.
    const std::string drop = "drop a.gdf " + Pattern("rising.xye") + " runs.SEQ\n";
    const Run_Result dropped = Script(drop + "print rows\nprint generic\nclose\npress OK\nprint generic\nclose\nprint state\n");
    EXPECT_EQ(dropped.status, 0) << dropped.errors;
    EXPECT_EQ(dropped.With("row").size(), 1u);
    EXPECT_EQ(Titles(dropped), "of a|Runs|");
    EXPECT_EQ(dropped.With("plot_type").at(0)["plot_type"], "single");
    const Run_Result missing = Script("print generic\nclose\n", {"missing.gdf"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.Boxes().back().find("missing.gdf"), std::string::npos);
}

TEST_F(Windows_Together, OneWithALoopOfItsOwnHoldsTheOthersBack) {
    const Run_Result run = Script(
        "command 40030\nmain\ncommand 40179\nmain\ndialog 40\ncommand 40014\nprint menu 40014\nprint menu 40205\nprint picture\n"
        "files b.gdf\ncommand 40200\nprint generic\ncommand 40206\ncommand 40203\npress 2\ncommand 40203\nprint generic\n"
        "command 40205\ndialog 40\nprint menu 40103\nmain\nprint menu 40030\ncommand 40019\nprint menu 40030\nprint quickview\n"
        "dialog 40\nclose\nprint menu 40030\nprint quickview\n");
    EXPECT_EQ(Count(run.errors, "holds the others back"), 2) << run.errors;
    EXPECT_EQ(Count(run.errors, "has no command 40014") + Count(run.errors, "there is no command 40014"), 2) << run.errors;
    EXPECT_EQ(Count(run.errors, "while a dialog is open"), 1) << run.errors;
    EXPECT_EQ(Count(run.errors, "line "), 5) << run.errors;
    EXPECT_EQ(run.With("texts").at(0)["texts"][1]["text"], "Generic Graphics Mode");
    EXPECT_EQ(Titles(run), "of b||");
    std::string states;
    for (const Json& item : run.With("enabled")) states += std::to_string(item["id"].get<int>()) + (item["enabled"] == true ? "+ " : "- ");
    EXPECT_EQ(states, "40205+ 40103- 40030- 40030- 40030+ ");
    EXPECT_EQ(run.With("quickview").at(0)["quickview"]["open"], true);
    EXPECT_EQ(run.With("quickview").at(1)["quickview"]["open"], false);
}

TEST_F(Windows_Together, TheModelTurnsOnBehindItsDialogsAndAScriptEndsInAnyOfThem) {
    for (int k = 0; k < 4; ++k) {
        std::ofstream file(directory / ("s" + std::to_string(k) + ".xye"));
        for (int i = 0; i < 20; ++i) file << i << ' ' << 10 + i * k << " 1\n";
    }
    const std::string open = "drop s0.xye s1.xye s2.xye s3.xye\ncommand 40022\ncommand 40040\nprint timers\n";
    const Run_Result run = Script(open +
                                  "command 40046\ntimer 1\nprint model3d\ncommand 40062\ntimer 1\nprint model3d\npress 2\n"
                                  "mouse wheelup 600 400\ncommand 40059\nprint timers\nprint model3d\ncommand 40062\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.With("timers").at(0)["timers"], Json::parse(R"([{"window":43,"number":1,"ms":30,"repeat":true}])"));
    EXPECT_EQ(run.With("timers").at(1)["timers"].size(), 0u);
    const double azimuths[] = {-40, -35, -35}, distances[] = {20, 20, 21};
    for (std::size_t k = 0; k < 3; ++k) {
        const Json model = run.With("model3d").at(k)["model3d"];
        EXPECT_NEAR(model["azimuth"].get<double>(), azimuths[k], 1e-4) << k;
        EXPECT_NEAR(model["distance"].get<double>(), distances[k], 1e-4) << k;
    }
}

}  // namespace
}  // namespace vntl
