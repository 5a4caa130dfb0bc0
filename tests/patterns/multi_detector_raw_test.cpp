// Raw files of many detectors: numbers set by the test, each told failure, and counts that do not fit.
#include "patterns/multi_detector_raw.hpp"

#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

const std::vector<std::string> good_lines = {"Y2O3 in vanadium",
                                             "3T2   lambda :  1.2252 A",
                                             "cryostat",
                                             "  3    4    6.000    0.050",
                                             "detectors shift :   6.000",
                                             "alpha1 divergency :  10.0",
                                             "monitor value :  100000.",
                                             "omega :   0.000",
                                             "sample temperature :  295.0",
                                             "sample owner : N. N.",
                                             "",
                                             "descriptors : efficiencies counts",
                                             " .5 0.  2",
                                             " 10  20  30 11 21 31",
                                             " 12, 22, 32",
                                             " 13  23  33"};

// The file with one line (from 1) replaced, or cut in front of it where there is no text for it.
std::string File_With(std::size_t number = 0, const char* line = nullptr) {
    std::string text;
    for (std::size_t i = 0; i < good_lines.size(); ++i) {
        if (i + 1 == number && line == nullptr) break;
        text += (i + 1 == number ? line : good_lines[i]) + '\n';
    }
    return text;
}

std::vector<Diffraction_Pattern_Type> Read(const std::string& text, bool correct) {
    std::vector<Diffraction_Pattern_Type> patterns;
    const Status status = Read_Multi_Detector_Text(text, "run.3t2", correct, patterns);
    EXPECT_TRUE(status.ok()) << status.message;
    return patterns;
}

TEST(Multi_Detector_Raw, EachDetectorIsAPattern) {
    for (const auto& [habit, text] : Habits(File_With()))
        for (const bool correct : {true, false}) {
            const auto patterns = Read(text, correct);
            ASSERT_EQ(patterns.size(), 3u) << habit;
            for (std::size_t k = 0; k < 3; ++k) {
                const Diffraction_Pattern_Type& p = patterns[k];
                const float efficiency = !correct || k == 1 ? 1.0f : k == 0 ? 0.5f : 2.0f;  // one of 0 counts as 1
                EXPECT_EQ(p.title, "Detector No. " + std::to_string(k + 1) + " of run.3t2");
                ASSERT_EQ(p.npts, 4);
                for (std::size_t i = 0; i < 4; ++i) {
                    const float count = static_cast<float>(10 * (k + 1) + i);
                    EXPECT_FLOAT_EQ(p.x[i], 6.0f * static_cast<float>(k + 1) + 0.05f * static_cast<float>(i));
                    EXPECT_FLOAT_EQ(p.y[i], count / efficiency) << habit;
                    EXPECT_FLOAT_EQ(p.sigma[i], count / efficiency / efficiency);
                    EXPECT_EQ(p.nd[i], 1);
                }
                EXPECT_EQ(p.xmin, p.x.front());
                EXPECT_EQ(p.xmax, p.x.back());
                EXPECT_EQ(p.ymax, p.y.back());
                EXPECT_EQ(p.conv[0], 1.2252f);
                EXPECT_EQ(p.TSample, 295);
                EXPECT_EQ(p.monitor, 100000);
            }
        }
    std::string plain = File_With(12, "descriptors : counts");
    plain.erase(plain.find(good_lines[12]), good_lines[12].size());
    EXPECT_EQ(Read(plain, true)[0].y[0], 10);
    EXPECT_FLOAT_EQ(Read(File_With(5, "detectors shift : -2.5"), true)[2].x[0], 1);
}

TEST(Multi_Detector_Raw, WhatDoesNotFitIsTold) {
    const struct {
        std::size_t number;
        const char* line;  // null: the file ends before it
        const char* message;
    } faults[] = {{1, nullptr, "ERROR: Reading line #1"},
                  {2, "3T2 wavelength 1.2", "ERROR: Reading line #2: wavelength"},
                  {2, "lambda : 0", "ERROR: Reading line #2: wavelength"},
                  {3, nullptr, "ERROR: Reading line #4:"},
                  {4, "3 4 6.0", "ERROR: Reading line #4:"},
                  {4, "3 1 6.0 0.05", "ERROR: Reading line #4:"},
                  {4, "3.5 4 6.0 0.05", "ERROR: Reading line #4:"},
                  {4, "3 4 6.0 -0.05", "ERROR: Reading line #4:"},
                  {4, "2001 4 6.0 0.05", "ERROR: Reading line #4:"},
                  {5, "6.0", "ERROR: Reading line #5: detectors shift"},
                  {6, "alpha1 divergency : inf", "ERROR: Reading line #6: alpha1 divergency"},
                  {7, "monitor value : many", "ERROR: Reading line #7: monitor value"},
                  {8, "omega :", "ERROR: Reading line #8: omega"},
                  {9, nullptr, "ERROR: Reading line #9: sample temperature"},
                  {10, nullptr, "ERROR: Reading line #10: sample owner"},
                  {11, nullptr, "ERROR: Reading line #12: descriptors"},
                  {12, "descriptors : efficiencies", "ERROR: Reading line #12: descriptors"},
                  {14, "10 20 3O 11 21 31", "ERROR: Reading line #14: counts"},
                  {15, "12 1e99 32", "ERROR: Reading line #15: counts"}};
    for (const auto& fault : faults) {
        std::vector<Diffraction_Pattern_Type> patterns(1);
        const Status status = Read_Multi_Detector_Text(File_With(fault.number, fault.line), "run.3t2", true, patterns);
        EXPECT_EQ(status.message, fault.message) << fault.number;
        EXPECT_EQ(patterns.size(), 1u) << "nothing is lost";
    }
    const std::string other =
        "ERROR: The numbers behind the head are not the 15 that 3 detectors at 4 positions give with their efficiencies";
    std::vector<Diffraction_Pattern_Type> patterns;
    for (const std::string& text : {File_With() + "1", File_With(16, "13 23"), File_With(13)})
        EXPECT_EQ(Read_Multi_Detector_Text(text, "", true, patterns).message, other);
    const Status huge = Read_Multi_Detector_Text(File_With(4, "2000 16000000 6.0 0.05"), "", true, patterns);
    EXPECT_NE(huge.message.find("32000002000"), std::string::npos) << huge.message;

    EXPECT_EQ(Read_Multi_Detector_Raw("/nowhere/run.3t2", true, patterns).message, "ERROR 00: File not found");
    EXPECT_EQ(Read_Multi_Detector_Raw("/", true, patterns).message, "Error open file");
}

}  // namespace
}  // namespace vntl::test
