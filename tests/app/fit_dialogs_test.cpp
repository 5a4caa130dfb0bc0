// The dialogs of a fit's starting values: what they show, their buttons, what they refuse, and what they store.
#include <cmath>

#include "app/testing.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

class Fit_Dialogs : public Program {
protected:
    // Three Gaussian peaks on a level background, of angles and of times.
    void SetUp() override {
        Program::SetUp();
        std::ofstream of_angles(directory / "angles.xye"), of_times(directory / "times.xye");
        of_angles << "three peaks\n";
        of_times << "XYDATA\nTITLE three peaks\nINTER 1.0 1.0 0 0.0\nTEMP 295.0\nLegend_X TOF (micro-seconds)\nLegend_Y counts\n";
        for (int i = 0; i <= 1400; ++i) {
            const double x = 18 + 0.01 * i;
            double y = 200 - 2 * (x - 18) + (i * 7919 % 13);  // with a ripple: a search looks for what is above it
            for (const double at : {20.0, 24.0, 29.0}) y += 5000 * std::exp(-4 * std::log(2) * std::pow((x - at) / 0.12, 2));
            of_angles << x << ' ' << y << ' ' << std::sqrt(y) << '\n';
            of_times << 200 * x << ' ' << y << ' ' << std::sqrt(y) << '\n';
        }
        for (std::ofstream* file : {&of_angles, &of_times}) *file << "0 0 0\n";
    }
    static std::string Chosen(const std::string& file, double scale) {
        std::string text = "open " + file + "\ncommand 40095\n";
        for (const double x : {18.5, 31.5})
            for (const char* what : {"down", "up"}) text += std::string("mouse data ") + what + ' ' + std::to_string(x * scale) + " 200\n";
        return text + "command 40194\nset 1356 0.1\npress OK\n";
    }
    static Json Cells(const Json& dialog, int number) {
        for (const Json& field : dialog["fields"])
            if (field["field"] == number) return field["value"];
        ADD_FAILURE() << "no field " << number;
        return {};
    }
    static std::string Column(const Json& cells, std::size_t column) {
        std::string text;
        for (const Json& row : cells) text += row[column].get<std::string>();
        return text;
    }

    const std::string angles = Chosen("angles.xye", 1), times = Chosen("times.xye", 200);
};

TEST_F(Fit_Dialogs, ButtonsChangeTheFlagsOfPeaksAlone) {
    struct Case {
        const std::string& chosen;
        int button, grid;
        std::size_t column;
        const char* flags;  // after it
    };
    // Rows behind the three peaks and nodes are disabled.
    const Case cases[] = {{angles, 1719, 1624, 2, "000"},   {angles, 1718, 1624, 2, "111"},   {angles, 1728, 1625, 2, "00000"},
                          {angles, 1727, 1625, 2, "11100"}, {angles, 1730, 1625, 6, "00000"}, {angles, 1729, 1625, 6, "11100"},
                          {angles, 1731, 1625, 8, "11100"}, {angles, 1732, 1625, 8, "00000"}, {angles, 1733, 1625, 8, "11100"},
                          {angles, 1733, 1625, 6, "00000"}, {times, 1719, 1052, 2, "000"},    {times, 1718, 1052, 2, "111"},
                          {times, 1724, 1630, 2, "00000"},  {times, 1723, 1630, 2, "11100"},  {times, 1720, 1630, 6, "11100"},
                          {times, 1721, 1630, 6, "00000"},  {times, 1722, 1630, 10, "11100"}, {times, 1722, 1630, 8, "00000"},
                          {times, 1725, 1630, 12, "11100"}, {times, 1725, 1630, 4, "00000"}};
    for (const std::string* chosen : {&angles, &times}) {
        std::string script = *chosen + "command 40150\n";
        for (const Case& c : cases)
            if (&c.chosen == chosen) script += "press " + std::to_string(c.button) + "\nprint dialog\n";
        const auto run = Script(script + "press Cancel\n");
        EXPECT_EQ(run.errors, "");
        std::size_t i = 0;
        for (const Case& c : cases)
            if (&c.chosen == chosen) {
                EXPECT_EQ(Column(Cells(run.With("dialog").at(i++), c.grid), c.column), c.flags) << c.button;
            }
    }
}

TEST_F(Fit_Dialogs, WhatIsNoNumberKeepsTheDialogOpenAndIsMarked) {
    const std::string node = " Error in the Background parameters on line: ", peak = " Error in the Peak parameters on line: ";
    struct Case {
        const std::string& chosen;
        const char* cells;
        std::vector<int> marked;
        std::string told;
    };
    const Case cases[] = {
        {angles,
         "cell 1624 1 2 x\ncell 1624 2 3 nan\ncell 1625 2 1 x\ncell 1625 4 1 x\n",
         {1624, 1625},
         node + "2\n" + node + "3\n" + peak + "1"},
        {angles, "cell 1624 1 2 18.5\n", {1624}, node + "2\nIts position must be above that of the line before it"},
        {angles, "cell 1614 1 1 x\n", {1614}, " Error in the wavelength fields!"},
        {angles, "cell 1614 1 1 -1\n", {1614}, " Error in the wavelength fields!"},
        {angles, "cell 1615 1 3 inf\n", {1615}, " Errors in the Profiles parameters!"},
        {angles, "cell 1619 3 1 x\n", {1619}, " Errors in the Asymmetry parameters!"},
        {angles, "set 1612 0\n", {1612}, "Cycles: \"0\" is not a whole number from 1 to 9999"},
        {times, "cell 1053 1 3 x\n", {1053}, "Profiles values were undefined! Please check it!"},
        {times, "cell 1630 12 3 x\n", {1630}, peak + "3"},
    };
    for (const Case& c : cases) {
        const auto run = Script(c.chosen + "print fit\ncommand 40150\n" + c.cells + "press 1\nprint dialog\npress Cancel\nprint fit\n");
        const Texts boxes = run.Boxes();
        ASSERT_GE(boxes.size(), 2u) << run.output << run.errors;
        EXPECT_EQ(boxes[1], c.told);
        EXPECT_EQ(run.Marked().at(0), c.marked) << c.cells;
        EXPECT_EQ(run.With("fit").at(0), run.With("fit").at(1)) << c.cells;  // cancelled: nothing is stored
    }
}

// No peak is active, so that no fit changes what was stored.
TEST_F(Fit_Dialogs, WhatWasEditedIsStoredAndTheRestKeepsItsDigits) {
    const auto inactive = [&](const std::string& grid) {
        std::string text;
        for (const char* row : {"1", "2", "3"}) text += "cell " + grid + " 1 " + row + " 0\n";
        return text;
    };
    const auto run =
        Script(angles + "print fit\ncommand 40150\n" + inactive("1625") +
               "set 1612 7\ncell 1614 1 1 1.5406\ncell 1614 2 1 1.5444\ncell 1614 4 1 1\ncell 1615 1 2 -0.25\ncell 1619 1 1 0.02\n"
               "cell 1619 4 1 1\ncell 1624 1 1 18.75\ncell 1624 2 1 210\ncell 1625 2 2 24.5\nset 1622 1\nset 1738 1\npress 1\n"
               "print fit\ncommand 40150\nprint dialog\nset 1738 0\npress 1726\npress 1\nprint fit\n");
    const auto fits = run.With("fit");
    ASSERT_EQ(fits.size(), 3u) << run.output << run.errors;
    const Json before = fits[0]["fit"], after = fits[1]["fit"], last = fits[2]["fit"], dialog = run.With("dialog").at(0);
    EXPECT_EQ(after["Ncyc"], 7);
    EXPECT_NEAR(after["lambda2"].get<double>(), 1.5444, 1e-6);
    EXPECT_EQ(after["ratio_flag"], 1);
    EXPECT_EQ(after["prof"][1], -0.25);
    EXPECT_EQ(after["asym_flag"], Json::parse("[0,1]"));
    EXPECT_EQ(after["x_ini"], 18.75);
    EXPECT_EQ(after["y_ini"], 210);
    EXPECT_EQ(after["peaks"][1]["pos"], 24.5);
    for (const char* kept : {"pos", "shift_width"}) EXPECT_EQ(after["peaks"][0][kept], before["peaks"][0][kept]) << kept;
    const double width = before["peaks"][0]["shift_width"], height = before["peaks"][0]["intensity"];
    EXPECT_NEAR(after["peaks"][0]["intensity"].get<double>(), height * 1.6064467 * width, 1e-4 * height);
    EXPECT_EQ(last["peaks"][0]["intensity"], after["peaks"][0]["intensity"]);  // an area already
    EXPECT_EQ(last["peaks"][0]["shift_width"], 0);
    EXPECT_EQ(Cells(dialog, 1738), "1");
    EXPECT_EQ(Cells(dialog, 1621), "1");  // the output is chosen anew each time
}

// A height becomes an area with the width that was measured, before widths become a law.
TEST_F(Fit_Dialogs, TimesOfFlightBeginWithAreasAndACoefficient) {
    const auto run =
        Script(times + "print fit\ncommand 40150\ncell 1630 1 1 0\ncell 1630 1 2 0\ncell 1630 1 3 0\nset 1631 9.5\npress 1\nprint fit\n");
    const auto fits = run.With("fit");
    ASSERT_EQ(fits.size(), 2u) << run.output << run.errors;
    const Json before = fits[0]["fit"], after = fits[1]["fit"];
    EXPECT_EQ(after["d2tof"], 6000);
    EXPECT_EQ(after["peaks"][1]["shift_width"], 0);
    const double width = before["peaks"][1]["shift_width"], height = before["peaks"][1]["intensity"];
    EXPECT_NEAR(after["peaks"][1]["intensity"].get<double>(), height * 1.6064467 * width, 1e-4 * height * width);
}

TEST_F(Fit_Dialogs, AnIrfFileFillsWhatItGives) {
    std::ofstream(directory / "one.irf") << "an instrument\nWAVE 1.5406 1.5444 0.5\nASYM 0.02 0.03\n";
    const auto run = Script(angles +
                            "command 40150\ncell 1615 1 1 4\ncell 1619 1 1 7\nfiles one.irf\npress 1050\nprint dialog\n"
                            "files cancel\npress 1050\nprint dialog\npress Cancel\n");
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 2u) << run.output << run.errors;
    EXPECT_NE(Cells(dialogs[0], 1632).get<std::string>().find("one.irf"), std::string::npos);
    EXPECT_EQ(Cells(dialogs[0], 1614)[0][1], "1.544400");
    EXPECT_EQ(Cells(dialogs[0], 1619)[0][0], "0.02000");
    EXPECT_EQ(std::stod(Cells(dialogs[0], 1615)[0][0].get<std::string>()), 4);  // typed, and not in the file
    EXPECT_EQ(Cells(dialogs[1], 1632), "");
}

}  // namespace
}  // namespace vntl
