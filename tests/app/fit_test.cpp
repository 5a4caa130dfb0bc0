// A fit as a user makes it: window, peaks, starting values, the result on the plot and in files.
#include <cmath>
#include <random>

#include "app/testing.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

class Fits : public Program {
protected:
    // Three Gaussian peaks on a slope from 18 to 32 degrees, with the noise of counting.
    static constexpr double positions[] = {20, 24, 29}, areas[] = {900, 2500, 1400}, fwhm = 0.12;

    void SetUp() override {
        Program::SetUp();
        std::mt19937 engine(3);
        std::ofstream angles(directory / "angles.xye"), times(directory / "times.xye");
        angles << "three peaks\n";
        times << "XYDATA\nTITLE three peaks\nINTER 1.0 1.0 0 0.0\nTEMP 295.0\nLegend_X TOF (micro-seconds)\nLegend_Y counts\n";
        for (int i = 0; i <= 1400; ++i) {
            const double x = 18 + 0.01 * i;
            double y = 300 - 4 * (x - 18), t = 200;
            for (std::size_t k = 0; k < 3; ++k) {
                y += areas[k] * std::sqrt(4 * std::log(2) / M_PI) / fwhm *
                     std::exp(-4 * std::log(2) * std::pow((x - positions[k]) / fwhm, 2));
                const double delta = 200 * (x - positions[k]), alpha = 0.6, beta = 0.25, s = positions[k] / 6;  // sigma, along with d
                const auto side = [&](double a, double d) {
                    return std::exp(a / 2 * (a * s * s + 2 * d)) * std::erfc((a * s * s + d) / (std::sqrt(2) * s));
                };
                if (std::fabs(delta) < 150)
                    t += 10 * areas[k] * alpha * beta / (2 * (alpha + beta)) * (side(alpha, delta) + side(beta, -delta));
            }
            const auto line = [&](std::ofstream& file, double at, double mean) {
                const double n = static_cast<double>(std::poisson_distribution<long>(mean)(engine));
                file << at << ' ' << n << ' ' << std::sqrt(std::max(n, 1.0)) << '\n';
            };
            line(angles, x, y);
            line(times, 200 * x, t);
        }
        for (std::ofstream* file : {&angles, &times}) *file << "0 0 0\n";
    }
    static std::string Click(double x, double y) {
        std::string text;
        for (const char* what : {"down", "up"})
            text += std::string("mouse data ") + what + ' ' + std::to_string(x) + ' ' + std::to_string(y) + '\n';
        return text;
    }
    static Texts Told(const Run_Result& run) {
        const Texts boxes = run.Boxes();
        return {boxes.begin() + std::min<long>(1, std::ssize(boxes)), boxes.end()};
    }
    static Json Fit(const Run_Result& run, std::size_t i) { return run.With("fit").at(i)["fit"]; }

    const std::string chosen = "open angles.xye\ncommand 40095\n" + Click(18.5, 300) + Click(31.5, 245);
    const std::string found = chosen + "command 40194\nset 1356 0.1\npress OK\n";
};

TEST_F(Fits, FindsThePeaksThatWereSimulated) {
    const auto run =
        Script(found + "print fit\nprint state\ncommand 40150\nprint dialog\npress 1\nprint fit\nprint state\nprint rows\nprint data 1\n" +
               "print reflections 1\ncommand 40099\nprint state\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const Texts told = Told(run);
    ASSERT_EQ(told.size(), 1u) << run.output;
    EXPECT_EQ(told[0].find("Initial Chi2:"), 0u) << told[0];
    EXPECT_NE(told[0].find("\n => Final   Chi2:"), std::string::npos) << told[0];
    const Json before = Fit(run, 0), fit = Fit(run, 1);
    EXPECT_EQ(before["Nbac"], 2);
    EXPECT_EQ(before["Npeak"], 3);
    EXPECT_EQ(before["prof"][4], 0.5);
    EXPECT_EQ(fit["Nbac"], 3);  // a node at the first of three peaks
    EXPECT_EQ(fit["reached"], true);
    EXPECT_NEAR(fit["chi2"].get<double>(), 1, 0.12);
    const double counted_twice = 1 + fit["ratio"].get<double>();  // one line of two with the ratio 1
    for (std::size_t k = 0; k < 3; ++k) {
        const Json peak = fit["peaks"][k];
        EXPECT_NEAR(peak["pos"].get<double>(), positions[k], 4 * peak["sd"][0].get<double>());
        EXPECT_NEAR(peak["intensity"].get<double>() / counted_twice, areas[k], 4 * peak["sd"][1].get<double>() / counted_twice);
        EXPECT_NEAR(peak["shift_width"].get<double>(), fwhm, 5 * peak["sd"][2].get<double>());
        EXPECT_GT(peak["sd"][2].get<double>(), 0);
        EXPECT_EQ(peak["sd"][3], 0);
    }
    const auto states = run.With("plot_type");
    EXPECT_EQ(states[0]["status"][0], "Insert or delete peaks can be done before fitting procedure");
    EXPECT_EQ(states[1]["status"][0].get<std::string>().find("=> Iteration number: "), 1u);
    EXPECT_EQ(states[1]["prf_loaded"], true);
    EXPECT_NEAR(states[1]["x_view_min"].get<double>(), 18.5, 1e-5);
    EXPECT_EQ(states[2]["prf_loaded"], false);
    EXPECT_EQ(states[2]["plot_type"], "single");
    const Json data = run.With("ycalc").at(0);
    EXPECT_EQ(data["ycalc"][10], data["y"][10]);    // outside of the window
    EXPECT_NE(data["ycalc"][700], data["y"][700]);  // in it
    const Json reflections = run.With("reflections").at(0)["reflections"];
    EXPECT_EQ(reflections.at(2)["label"], "Peak #3");
    const std::string listing = Text_Of(directory / "angles_pf.out");
    for (const char* text : {"Lorvane", "three peaks", "FINAL LIST OF REFINED PARAMETERS", "Bragg_Pos_2"})
        EXPECT_NE(listing.find(text), std::string::npos) << text;
    EXPECT_TRUE(fs::exists(directory / "angles-185-315.pik"));
    EXPECT_FALSE(fs::exists(directory / "angles_pf.irf"));
}

TEST_F(Fits, ARepeatTheFileAndUndoGoOnFromTheResult) {
    const auto run =
        Script(found + "command 40150\nset 1738 1\nset 1622 1\npress 1\nprint fit\nprint rows\ncommand 40150\npress 1\nprint fit\n" +
               "command 40146\nprint fit\nprint state\nfiles angles-185-315.pik\ncommand 40224\nprint dialog\npress 1\nprint fit\n" +
               "command 40506\nprint fit\nprint state\ncommand 40507\nprint fit\nprint state\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const Json first = Fit(run, 0), second = Fit(run, 1), cleared = Fit(run, 2), loaded = Fit(run, 3), undone = Fit(run, 4),
               redone = Fit(run, 5);
    EXPECT_NEAR(first["chi2"].get<double>(), second["chi2"].get<double>(), 1e-4);
    EXPECT_EQ(cleared["Npeak"], 0);
    EXPECT_EQ(cleared["Nbac"], 0);
    EXPECT_NEAR(loaded["chi2"].get<double>(), first["chi2"].get<double>(), 1e-4);
    EXPECT_EQ(loaded["Nbac"], first["Nbac"]);
    EXPECT_EQ(undone["fit_done"], false);
    EXPECT_EQ(redone, loaded);
    const auto states = run.With("plot_type");
    EXPECT_EQ(states[0]["status"][0], "Select the range for fitting procedure on two Background points");
    EXPECT_EQ(states[1]["prf_loaded"], false);
    EXPECT_EQ(states[2]["prf_loaded"], true);

    std::vector<Json> rows = run.With("row");
    ASSERT_EQ(rows.size(), 4u);  // the pattern and three peaks
    EXPECT_EQ(rows[3]["title"], "Peak_number:  3");
    std::istringstream curves(Text_Of(directory / "lorvane_obscalc.xyy"));
    std::string line;
    std::getline(curves, line);
    EXPECT_EQ(line.size(), 12u * 6);
    const std::string irf = Text_Of(directory / "angles_pf.irf");
    EXPECT_EQ(std::count(irf.begin(), irf.end(), '\n'), 2 + 3);
}

TEST_F(Fits, UndoTakesBackOneFitAndOneStepOfTheChoice) {
    const auto run = Script(found +
                            "command 40150\npress 1\nprint fit\ncommand 40150\npress 1\ncommand 40506\nprint fit\n"
                            "command 40506\nprint fit\ncommand 40506\nprint fit\nprint peaks\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Fit(run, 0), Fit(run, 1));  // the repeat is gone, whose starting values were those of the first fit's end
    EXPECT_EQ(Fit(run, 2)["fit_done"], false);
    EXPECT_EQ(Fit(run, 2)["Npeak"], 3);
    EXPECT_EQ(Fit(run, 3)["Npeak"], 0);
    EXPECT_EQ(run.With("peaks").back()["peaks"].size(), 3u);  // found, and not taken yet
}

TEST_F(Fits, RefusalsLeaveEverythingAsItWas) {
    std::ofstream(directory / "bad.pik") << "title\n! Ang_init\n 18.0 31.0 2\n";
    std::ofstream(directory / "flight.pik") << "title\n!\n 18.0 31.0 0 0 9 0 0 0 70 0 0\n5000\n.7 0\n.3 0\n0 0\n0 0\n0 0\n0 0\n";
    const auto run = Script("open angles.xye\ncommand 40095\ncommand 40150\n" + Click(18.5, 300) + Click(31.5, 245) + "command 40150\n" +
                            Click(20, 900) +
                            "print fit\nfiles bad.pik\ncommand 40224\nfiles flight.pik\ncommand 40224\nprint fit\ncommand 40150\npress "
                            "Cancel\nprint fit\ncommand 40099\n");
    const Texts told = Told(run);
    ASSERT_EQ(told.size(), 6u) << run.output;
    EXPECT_EQ(told[4].find("The PIK file is one of time of flight: "), 0u) << told[4];
    EXPECT_EQ(told[0], "ERROR: The background line is not yet selected!");
    EXPECT_EQ(told[1], "ERROR: No peak has been selected!");
    EXPECT_EQ(told[2].find(" => Error at reading: tof/2theta_ini"), 0u) << told[2];
    EXPECT_EQ(told[3], "Error Reading the PIK file!");
    EXPECT_EQ(Fit(run, 0), Fit(run, 1));
    EXPECT_EQ(Fit(run, 2)["prof"][4], 0.5);  // what the estimate frees stays when its dialog is left
    EXPECT_EQ(Fit(run, 2)["Nbac"], 2);
}

TEST_F(Fits, TimeOfFlight) {
    const auto run = Script(
        "open times.xye\ncommand 40095\n" + Click(3700, 200) + Click(6300, 200) +
        "command 40194\nset 1356 0.1\npress OK\ncommand 40150\nprint dialog\ncell 1053 2 1 1\ncell 1053 2 2 1\npress 1\nprint fit\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const Json fit = Fit(run, 0);
    EXPECT_NEAR(fit["chi2"].get<double>(), 1, 0.15);
    EXPECT_NEAR(fit["prof"][0].get<double>(), 0.6, 4 * fit["prof_sd"][0].get<double>());
    EXPECT_NEAR(fit["prof"][3].get<double>(), std::pow(25 / 6.0, 2), 4 * fit["prof_sd"][3].get<double>());  // d = t/5000
    EXPECT_NEAR(fit["prof"][1].get<double>(), 0.25, 4 * fit["prof_sd"][1].get<double>());
    for (std::size_t k = 0; k < 3; ++k) {
        const Json peak = fit["peaks"][k];
        EXPECT_NEAR(peak["pos"].get<double>(), 200 * positions[k], 4 * peak["sd"][0].get<double>());
        EXPECT_NEAR(peak["intensity"].get<double>(), 10 * areas[k], 4 * peak["sd"][1].get<double>());
    }
    EXPECT_TRUE(fs::exists(directory / "times.pik"));
    EXPECT_NE(Text_Of(directory / "times_pf.out").find("Tessyl"), std::string::npos);
}

}  // namespace
}  // namespace vntl
