// Files of calibrations: numbers set by the test, in the forms that users write them, and each told failure.
#include "instrument/calibration.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "base/text.hpp"

namespace vntl::test {
namespace {

// Numbers value(0), value(1), ..., so many to a line.
std::string Numbers(std::size_t n, const std::function<double(std::size_t)>& value, std::size_t in_line = 10) {
    std::string text;
    for (std::size_t i = 0; i < n; ++i) text += std::to_string(value(i)) + ((i + 1) % in_line == 0 || i + 1 == n ? "\n" : " ");
    return text;
}
std::string Same(std::size_t n, const std::string& number) {
    std::string text;
    for (std::size_t i = 0; i < n; ++i) text += number + (i % 2 == 0 ? " " : ", ");
    return text + "\n";
}

Calibration_Detector_Type Read(const std::string& text, const std::string& instrument) {
    Calibration_Detector_Type cal;
    EXPECT_EQ(Read_Calibration_Text(text, "file.cal", instrument, cal).message, "");
    EXPECT_TRUE(cal.cal_effic.size() == static_cast<std::size_t>(cal.ndet * cal.npoints_det) &&
                cal.cal_active.size() == cal.cal_effic.size());
    return cal;
}

std::size_t Dead(const Calibration_Detector_Type& cal) {
    return static_cast<std::size_t>(std::count(cal.cal_active.begin(), cal.cal_active.end(), false));
}

double Rising(std::size_t i) { return 1 + 0.001 * static_cast<double>(i); }

// A zone of cells 3 to 3 + i % 4 of tube i, 8 cells a tube.
std::string R5b_File(int tubes) {
    const auto n = static_cast<std::size_t>(tubes);
    const auto angle = [](std::size_t i) { return 1.25 * static_cast<double>(i); };
    std::string text = "angles (degrees)\n" + Numbers(n, angle) + "Zones first, last\n";
    for (int i = 0; i < tubes; ++i) text += " 3 " + std::to_string(3 + i % 4) + "\n";
    return text + "EFFICIENCIES\n" + Numbers(8 * n, Rising, 8);
}
std::string R8_File() {
    const auto angle = [](std::size_t i) { return 0.01 * static_cast<double>(i) - 0.03; };
    const auto efficiency = [](std::size_t i) { return i == 70 ? 0.0 : i == 71 ? -1.0 : Rising(i); };
    return "ANGLES\n" + Numbers(9, angle, 4) + "effic of cells\n" + Numbers(576, efficiency, 8);
}
const std::string r22_file = " 5 points\n 0.2, 0.1 0.4\n 0.3 -0.5 behind the last\n 2.0 0. 4.0\n -1 0.5\n what stands behind is free\n";

TEST(Calibration, PositionsAndEfficienciesOfR3a) {
    const auto position = [](std::size_t i) { return i == 3 ? -18.0 : 6.0 * static_cast<double>(i); };
    const auto efficiency = [](std::size_t i) { return i == 7 ? -1.0 : i == 8 ? 0.0 : 0.9 + 0.01 * static_cast<double>(i); };
    for (const std::size_t in_line : {25u, 10u})  // as told, and over three lines
        for (const std::string end : {"\n", "\r\n"}) {
            const std::string text = Replace_All(
                "free text 1 2 3\n! a comment\n" + Numbers(25, position, in_line) + "\n" + Numbers(25, efficiency, in_line) + "more\n",
                "\n", end);
            const Calibration_Detector_Type cal = Read(text, "r3a");
            EXPECT_EQ(std::tuple(cal.cal_instrument, cal.ndet, cal.npoints_det), std::tuple("R3A", 25, 1));
            EXPECT_EQ(std::pair(cal.cal_pos.at(24), cal.cal_effic.at(24)), std::pair(144.0f, 1.14f));
            EXPECT_TRUE(Dead(cal) == 3 && !cal.cal_active[3] && !cal.cal_active[7] && !cal.cal_active[8]);
        }
    const auto down = [](std::size_t i) { return -6.0 * static_cast<double>(i); };
    EXPECT_EQ(Dead(Read("down\n" + Numbers(25, down, 25) + "25*1.0\n", "R3A")), 0u);
}

TEST(Calibration, TubesAndTheirZones) {
    for (const int tubes : {1, 7, 128}) {
        const Calibration_Detector_Type cal = Read("R5B, a title\n" + R5b_File(tubes), "R5B");
        ASSERT_EQ(std::tuple(cal.ndet, cal.npoints_det, cal.cal_pos.back()), std::tuple(tubes, 8, 1.25f * static_cast<float>(tubes - 1)));
        for (int tube = 0; tube < tubes; ++tube)
            for (int point = 0; point < 8; ++point) {
                const std::size_t cell = cal.Cell(point, tube);
                EXPECT_EQ(cal.cal_active[cell], point >= 2 && point <= 2 + tube % 4) << tube << " " << point;
                EXPECT_FLOAT_EQ(cal.cal_effic[cell], 1 + 0.001f * static_cast<float>(8 * tube + point));
            }
    }
    // Efficiencies of the zones alone; the second tube counts nothing.
    const Calibration_Detector_Type cal = Read("angles\n 1 2 3\nzones\n 2 3  0 0  1 4\nefficiencies\n .2 .3\n .1 .2 .3 .4\n", "R5B");
    EXPECT_EQ(cal.npoints_det, 4);
    EXPECT_EQ(cal.cal_effic, (std::vector<float>{1, .2f, .3f, 1, 1, 1, 1, 1, .1f, .2f, .3f, .4f}));
    EXPECT_EQ(Dead(cal), 6u);
}

TEST(Calibration, BanksOfR8) {
    const Calibration_Detector_Type cal = Read(R8_File(), "R8");
    EXPECT_EQ(std::tuple(cal.ndet, cal.npoints_det, cal.cal_pos.at(8), cal.cal_effic[cal.Cell(63, 8)]), std::tuple(9, 64, 0.05f, 1.575f));
    EXPECT_TRUE(Dead(cal) == 2 && !cal.cal_active[cal.Cell(6, 1)] && !cal.cal_active[cal.Cell(7, 1)]);
}

TEST(Calibration, FactorsOfR22) {
    const Calibration_Detector_Type cal = Read("# made by hand\n" + r22_file, "xR22x");
    EXPECT_EQ(cal.cal_pos, (std::vector<float>{0.2f, 0.1f, 0.4f, 0.3f, -0.5f}));
    EXPECT_EQ(cal.cal_effic, (std::vector<float>{0.5f, 1, 0.25f, 1, 2}));
    EXPECT_EQ(cal.cal_active, (std::vector<bool>{true, false, true, false, true}));
    EXPECT_EQ(cal.cal_index, (std::vector<int>{4, 1, 0, 3, 2}));
}

TEST(Calibration, WhatDoesNotFitIsTold) {
    const std::string good_r3a = "free\n" + Same(25, "1.5") + Same(25, "0.9");
    const std::string angles = " Problems reading Angles positions for Detectors in ",
                      effic = " Problems reading Efficiencies values for Detectors in ";
    const std::string r3a_positions = " Problems reading Positions of Detectors for R3A Instrument",
                      r3a_effic = " Problems reading Efficiency values for Detectors of R3A Instrument";
    const std::string zones = " Problems reading Zones values for Detectors in R5B Instrument",
                      active = " Problems reading active zones for Detectors in R5B Instrument";
    const std::string r22 = " R22 detector in calibration file: file.cal";
    const auto zone = [](const std::string& pair) { return "angles\n1 2\nzones\n1 2 " + pair + "\nefficiencies\n 1 1 1 1\n"; };
    const struct {
        std::string instrument, message;
        std::vector<std::string> texts;
    } faults[] = {
        {" r4 ", " Problems reading Calibration File for r4 Instrument", {good_r3a}},
        {"R3A", " Problems reading Calibration File for R3A Instrument", {""}},
        {"R5B", " Problems reading Calibration File for R5B Instrument", {" \n"}},
        {"R8", " Problems reading Calibration File for R8 Instrument", {""}},
        {"R3A",
         r3a_positions,
         {"free\n", "free\n" + Same(24, "1.5") + Same(25, "0.9"), "free\n" + Same(24, "1.5") + "x\n" + Same(25, "0.9"),
          "free\n" + Same(24, "1.5") + "nan\n" + Same(25, "0.9")}},
        {"R3A", r3a_effic, {"free\n" + Same(25, "1.5"), "free\n" + Same(25, "1.5") + Same(24, "0.9")}},
        {"R5B", angles + "R5B Instrument", {"zones\n1 2\n", "angles\n" + Same(129, "1"), "angles\n1 2 3,5x\nzones\n1 1\n"}},
        {"R5B", zones, {"angles\n1 2\n", "angles\n1 2\nzones\n1 2 3\n", zone("1 2 3 4")}},
        {"R5B", active, {zone("1 129"), zone("2 1"), zone("0 1"), zone("1 1.5")}},
        {"R5B", effic + "R5B Instrument", {zone("1 3"), "angles\n1\nzones\n1 2\n", zone("1 2") + "1*\n", zone("1 2") + "999999999*1.0\n"}},
        {"R8", angles + "R8 Instrument", {"angles\n1 2 3 4 5 6 7 8\neffic\n576*1\n", "effic\n576*1\n"}},
        {"R8", effic + "R8 Instrument", {"angles\n9*0\neffic\n575*1\n", "angles\n9*0\neffic\n577*1\n", "angles\n9*0\n"}},
        {"R22", " Problems reading Calibration File: file.cal, for R22 Instrument", {""}},
        {"R22", " Problem reading the number of points of the" + r22, {"many\n1 2\n1 1\n", "0\n"}},
        {"R22", " Problem reading cell positions of" + r22, {"2000000000\n1 2\n1 1\n", "3\n1 2 ?\n1 1 1\n", "3\n1 2 inf\n1 1 1\n"}},
        {"R22", " Problem reading efficiencies of" + r22, {"3\n1 2 3\n1 1\n", "3\n1 2 3\n1 1 /\n"}},
    };
    Calibration_Detector_Type cal;
    for (const auto& [instrument, told, texts] : faults)
        for (const std::string& text : texts) {
            const std::string message = Read_Calibration_Text(text, "file.cal", instrument, cal).message;
            EXPECT_EQ(message.substr(0, message.find('\n')), told) << text;
            EXPECT_EQ(Contains(message, "file.cal"), instrument != " r4 ") << message;
        }
    Read(good_r3a, "R3A"), Read(zone("1 2"), "R5B");
    for (const std::string name : {"R3A", "R5B", "R8", "R22"}) {
        const Status status = Read_Calibration_File("/nowhere/at.all", name, cal);
        EXPECT_TRUE(status.of_file && status.message.starts_with(" Problems reading Calibration File")) << status.message;
        EXPECT_TRUE(Contains(status.message, "/nowhere/at.all"));
    }
}

}  // namespace
}  // namespace vntl::test
