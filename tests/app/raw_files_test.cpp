// Raw files of many detectors through the real program: every way in, the question about efficiencies, a full table, other x spaces.
#include "app/testing.hpp"

namespace vntl {
namespace {

class Raw_Files : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        std::ofstream(directory / "run.3t2") << Raw(20, 60);
        std::ofstream(directory / "many.g44") << Raw(1990, 2);
        std::ofstream(directory / "short.g44") << Raw(3, 4) << "7\n";
        std::ofstream flight(directory / "flight.xye");
        flight << "! Scattering variable: TOF\n";
        for (int i = 0; i < 20; ++i) flight << 1000 + i << " 5 1\n";
    }
    // Efficiencies are 2, counts 100 and more.
    static std::string Raw(int detectors, int positions) {
        std::string text = "run\nlambda : 1.2252\n\n" + std::to_string(detectors) + ' ' + std::to_string(positions) +
                           " 6.0 0.05\ndetectors shift : 6.0\nalpha1 divergency : 10\nmonitor value : 1e5\nomega : 0\n"
                           "sample temperature : 295\nsample owner : N. N.\n\ndescriptors : efficiencies counts\n";
        for (int i = 0; i < detectors; ++i) text += "2 ";
        for (int i = 0; i < detectors * positions; ++i) text += (i % 10 == 0 ? "\n" : " ") + std::to_string(100 + i % 7);
        return text + '\n';
    }
};

TEST_F(Raw_Files, EveryWayInGivesARowADetector) {
    const std::string print = "print rows\nprint data 3\nprint state\n";
    const auto first = Script("files run.3t2\ncommand 40157\nprint dialog\npress 1\n" + print);
    EXPECT_EQ(first.With("dialog").at(0)["title"], "Raw Data (Efficiency Correction)");
    const auto rows = first.With("kind");
    ASSERT_EQ(rows.size(), 20u) << first.output << first.errors;
    EXPECT_EQ(rows[2]["title"], "Detector No. 3 of run.3t2");
    EXPECT_EQ(rows[2]["kind"], "DATA");
    EXPECT_EQ(rows[2]["file_name"], "run.3t2");
    EXPECT_EQ(first.With("x").at(0)["x"][0], 18.0);
    EXPECT_EQ(first.With("x").at(0)["y"][0], 51.0);
    EXPECT_EQ(first.With("plot_type").at(0)["profiles_uniform"], true);
    const auto tail = [](const Run_Result& run) { return run.output.substr(run.output.find("{\"row\":3,\"x\"")); };
    EXPECT_EQ(tail(Script("drop run.3t2\npress 1\n" + print)), tail(first));
    EXPECT_EQ(tail(Script("press 1\n" + print, {"run.3t2"})), tail(first));
    EXPECT_EQ(tail(Script("files run.3t2\ncommand 40157\npress 1\ncommand 40019\ncommand 40038\npress 1\n" + print)), tail(first));
    EXPECT_EQ(Run({"--export", "a.png", "run.3t2"}).status, 0);

    const auto counted = Script("files run.3t2\ncommand 40157\nset \"DO NOT correct for Efficiency\" 1\npress 1\n" + print);
    EXPECT_EQ(counted.With("x").at(0)["y"][0], 102.0);
    for (const char* left : {"files cancel\ncommand 40157\n", "files run.3t2\ncommand 40157\npress 2\n"})
        EXPECT_EQ(Script(left + print).With("kind").size(), 0u);
}

TEST_F(Raw_Files, WhatFailsKeepsTheViewOfTheUser) {
    const auto run = Script("drop run.3t2\npress 1\ncommand 40137\nprint state\ndrop short.g44\npress 1\nprint state\n");
    const auto states = run.With("plot_type");
    ASSERT_EQ(states.size(), 2u) << run.output << run.errors;
    EXPECT_GT(states[0]["x_view_min"], states[0]["x_all_min"]);
    for (const char* side : {"x_view_min", "x_view_max", "y_view_min", "y_view_max"}) EXPECT_EQ(states[1][side], states[0][side]) << side;
}

TEST_F(Raw_Files, WhatFailsIsToldOnceAndKeepsTheRowsThatAreThere) {
    const struct {
        const char *statements, *box;
        std::size_t rows;
        int status;
    } cases[] = {
        {"files absent.3t2\ncommand 40157\npress 1\n", "ERROR in file: absent.3t2\nERROR 00: File not found", 0, 1},
        {"files short.g44\ncommand 40157\npress 1\n", "ERROR in file: short.g44\nERROR: The numbers behind the head are not the 15", 0, 1},
        {"open flight.xye\nfiles run.3t2\ncommand 40157\npress 1\n", "Present space: TOF, file in 2theta,", 1, 0},
        {"files many.g44\ncommand 40157\npress 1\nfiles run.3t2\ncommand 40157\npress 1\n",
         "The maximum number of profiles has been attained!", 2000, 1},
    };
    for (const auto& c : cases) {
        const auto run = Script(std::string(c.statements) + "print rows\n");
        EXPECT_EQ(run.status, c.status) << c.statements << run.errors;
        EXPECT_EQ(run.Boxes().size(), 2u) << run.output.substr(0, 2000);  // the first one is about preferences
        EXPECT_NE(run.Boxes().back().find(c.box), std::string::npos) << run.Boxes().back();
        EXPECT_EQ(run.With("kind").size(), c.rows);
    }
}

}  // namespace
}  // namespace vntl
