// A model made on one pattern is fitted to a series of them, through the real windows.
#include <algorithm>
#include <cmath>
#include <map>
#include <random>

#include "app/testing.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

class Series_Of_Fits : public Program {
protected:
    // Two Gaussian peaks that wander while the sample warms up, with the noise of counting.
    static constexpr int good = 5;
    static constexpr double fwhm = 0.12, areas[] = {2000, 1200};
    static double Position(int i, int k) { return (k == 0 ? 20.5 : 22) + 0.02 * i; }
    static double Temperature(int i) { return i == 3 ? 0 : 100 + 50.5 * i; }

    void SetUp() override {
        Program::SetUp();
        for (int i = 0; i < good; ++i) Write("p" + std::to_string(i) + ".xye", i, 19);
        Write("bad.xye", 0, 40);
    }
    void Write(const std::string& name, int i, double from) const {
        std::mt19937 engine(static_cast<unsigned>(i) + 1);
        std::ofstream file(directory / name);
        file << "XYDATA\nTITLE series\nINTER 1.0 1.0 0 0.0\nTEMP " << Temperature(i) << "\nLegend_X 2theta\nLegend_Y counts\n";
        for (int j = 0; j <= 500; ++j) {
            const double x = from + 0.01 * j;
            double y = 150;
            for (int k = 0; k < 2; ++k)
                y += areas[k] * std::sqrt(4 * std::log(2) / M_PI) / fwhm *
                     std::exp(-4 * std::log(2) * std::pow((x - Position(i, k)) / fwhm, 2));
            const double n = static_cast<double>(std::poisson_distribution<long>(y)(engine));
            file << x << ' ' << n << ' ' << std::sqrt(std::max(n, 1.0)) << '\n';
        }
        file << "0 0 0\n";
    }
    static std::string Click(double x, double y) {
        std::string text;
        for (const char* what : {"down", "up"})
            text += std::string("mouse data ") + what + ' ' + std::to_string(x) + ' ' + std::to_string(y) + '\n';
        return text;
    }
    // The lines of a table by the names of its columns; none of its fields here is between quotes.
    std::vector<std::map<std::string, std::string>> Table(const fs::path& name) const {
        std::istringstream lines(Text_Of(directory / name));
        const auto cells = [](const std::string& line) {
            Texts found;
            std::istringstream stream(line + ',');
            for (std::string cell; std::getline(stream, cell, ',');) found.push_back(cell);
            return found;
        };
        std::string line;
        std::getline(lines, line);
        const Texts names = cells(line);
        std::vector<std::map<std::string, std::string>> table;
        while (std::getline(lines, line)) {
            const Texts values = cells(line);
            EXPECT_EQ(values.size(), names.size()) << line;
            table.emplace_back();
            for (std::size_t i = 0; i < std::min(names.size(), values.size()); ++i) table.back()[names[i]] = values[i];
        }
        return table;
    }
    void Expect_The_Truth(const std::vector<std::map<std::string, std::string>>& table) const {
        ASSERT_EQ(table.size(), static_cast<std::size_t>(good));
        for (int i = 0; i < good; ++i) {
            std::map<std::string, std::string> fit = table[static_cast<std::size_t>(i)];
            const std::string name = fit["file"];
            SCOPED_TRACE(name);
            EXPECT_EQ(name, "p" + std::to_string(i) + ".xye");
            EXPECT_EQ(fit["temperature"].empty(), Temperature(i) == 0);
            if (Temperature(i) != 0) {
                EXPECT_NEAR(std::stod(fit["temperature"]), Temperature(i), 1e-4);
            }
            EXPECT_EQ(fit["converged"], "1");
            EXPECT_NEAR(std::stod(fit["chi2"]), 1, 0.25);
            for (int k = 0; k < 2; ++k) {
                const std::string number = std::to_string(k + 1);
                const double sd = std::stod(fit["sd(Bragg_Pos_" + number + ")"]);
                EXPECT_TRUE(sd > 1e-5 && sd < 0.01) << sd;
                EXPECT_NEAR(std::stod(fit["Bragg_Pos_" + number]), Position(i, k), 4 * sd);
                // The area is that of two lines of one ratio: twice the one that is seen.
                EXPECT_NEAR(std::stod(fit["Intensity_" + number]) / 2, areas[k], 4 * std::stod(fit["sd(Intensity_" + number + ")"]) / 2);
            }
        }
    }
    static Texts Last_Box(const Run_Result& run) {
        Texts lines;
        std::istringstream text(run.Boxes().empty() ? std::string() : run.Boxes().back());
        for (std::string line; std::getline(text, line);) lines.push_back(line);
        return lines;
    }

    const std::string model = "open p0.xye\ncommand 40095\n" + Click(19.5, 150) + Click(23.5, 150) +
                              "command 40194\nset 1356 0.1\npress OK\ncommand 40150\npress 1\ncommand 40099\n";
    const std::string others = "open p1.xye\nopen p2.xye\nopen bad.xye\nopen p3.xye\nopen p4.xye\n";
};

TEST_F(Series_Of_Fits, AModelOfOnePatternFollowsTheOthers) {
    const auto run = Script(model + others + "print fit\nprint rows\ncommand 40509\nprint dialog\npress 1\nprint fit\nprint rows\n" +
                            "command 40509\nset \"the same first values: those of the model\" 1\nset 1768 again.CSV\npress 1\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto fits = run.With("fit");
    ASSERT_EQ(fits.size(), 2u);
    EXPECT_EQ(fits[0]["fit"]["Npeak"], 2);
    EXPECT_GE(fits[0]["fit"]["Nbac"], 2);
    EXPECT_EQ(fits[0], fits[1]);
    const auto rows = run.With("row");
    ASSERT_EQ(rows.size(), 12u);
    for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(rows[i], rows[i + 6]);
    for (const char* name : {"p0_series.csv", "again.csv"}) Expect_The_Truth(Table(name));
    const Texts told = Last_Box(run);
    ASSERT_EQ(told.size(), 5u) << run.output;
    EXPECT_EQ(told[0], "5 profiles fitted, in the tables");
    EXPECT_EQ(fs::path(told[2]).filename(), "again.seq");
    EXPECT_EQ(told[4].find("4, bad.xye: There are no points between 19.5"), 0u) << told[4];

    const std::string blocks = Text_Of(directory / "p0_series.seq");
    EXPECT_EQ(blocks.find("NEW_REFINEMENT "), 0u);
    EXPECT_NE(blocks.find("\"p1.xye\" 2 150.5000\nGLOBAL_CHI_2 "), std::string::npos) << blocks;
    EXPECT_NE(blocks.find("\"p3.xye\" 5 0.0000\n"), std::string::npos);
}

TEST_F(Series_Of_Fits, AFileOfAFitIsAModelToo) {
    ASSERT_EQ(Script(model).status, 0);
    const auto run = Script("open p0.xye\n" + others + "command 40509\nprint dialog\npress 1\nfiles bad.xye\npress 1764\n" +
                            "files p0-195-235.pik\npress 1764\nprint dialog\npress 1\nprint fit\n");
    const Texts boxes = run.Boxes();
    ASSERT_GE(boxes.size(), 4u) << run.output;
    EXPECT_EQ(boxes[boxes.size() - 4].find("There is no model to fit"), 0u) << boxes[boxes.size() - 4];
    EXPECT_EQ(boxes[boxes.size() - 2], "Error Reading the PIK file!");
    Expect_The_Truth(Table("p0_series.csv"));
    EXPECT_EQ(run.With("fit").at(0)["fit"]["Npeak"], 0);
}

TEST_F(Series_Of_Fits, ABadNameIsRefusedAndATableIsReplacedOnDemand) {
    std::ofstream(directory / "p0_series.seq") << "kept";
    const auto run = Script(model + others + "command 40509\nset 1768 nowhere/table\npress 1\nprint dialog\nset 1768 \" .csv\"\npress 1\n" +
                            "set 1768 p0_series\nanswer no\npress 1\nprint dialog\npress Cancel\n");
    Texts boxes = run.Boxes();
    ASSERT_GE(boxes.size(), 3u) << run.output;
    boxes.erase(boxes.begin(), boxes.end() - 3);
    EXPECT_EQ(boxes[0].find("This file cannot be written:\n"), 0u) << boxes[0];
    EXPECT_EQ(boxes[1], "The table needs a name");
    EXPECT_EQ(boxes[2].find("A table is there already:\n"), 0u) << boxes[2];
    const auto marked = run.Marked();
    ASSERT_EQ(marked.size(), 2u);
    EXPECT_EQ(marked[0], std::vector<int>{1768});
    EXPECT_EQ(Text_Of(directory / "p0_series.seq"), "kept");
    EXPECT_FALSE(fs::exists(directory / "p0_series.csv"));
    ASSERT_EQ(Script(model + others + "command 40509\nanswer yes\npress 1\n").status, 0);
    Expect_The_Truth(Table("p0_series.csv"));
    EXPECT_EQ(Text_Of(directory / "p0_series.seq").find("NEW_REFINEMENT"), 0u);
}

}  // namespace
}  // namespace vntl
