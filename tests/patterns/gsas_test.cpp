// GSAS: files written by the test column by column from known numbers, and real files against their own columns.
#include <algorithm>
#include <cmath>
#include <sstream>

#include "patterns/gsas.hpp"
#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

constexpr auto bad_bank = " Error in Intensity file, check your instr parameter!";
constexpr auto constant_only = " => Only BINTYP=CONST is allowed for ESD data";

std::string Counts(int n) {
    return Lines(n, 10, [](int i) { return Printed("%8d", 1000 + 7 * i); });
}
std::string Pairs(int n) {
    return Lines(n, 10, [](int i) { return i % 3 == 0 ? Printed("  %6d", 100 + i) : Printed("%2d%6d", i % 3 * 5, 100 + i); });
}
std::string Deviations(int n) {
    return Lines(n, 5, [](int i) { return Printed("%7d.%7d.", 500 + i, 20 + i % 4); });
}
std::string Triples(int n) {
    return Lines(n, 4, [](int i) { return Printed("%8d%7d%5d", 64000 + 32 * i + i * i, 2000 + i, 50 + i); });
}
std::string Stated(int n, double from, double step) {
    return Lines(n, 1, [=](int i) { return Printed("%15.6f %12.4f %10.4f", from + step * i, 300.5 + i, 2.5); });
}

Diffraction_Pattern_Type Good(const std::string& text, bool flight = false, int bank = 0) {
    return test::Good([=](std::string_view lines, auto& p) { return Read_Gsas(lines, flight, bank, p); }, text);
}

std::string Message(const std::string& text, bool flight = false, int bank = 0) {
    Diffraction_Pattern_Type p;
    return Read_Gsas(text, flight, bank, p).message;
}

TEST(Gsas, CountsOfDetectors) {
    const auto p = Good("garnet  \nBANK 1 25 3 CONST 2400 5 0 0\n" + Pairs(25));
    EXPECT_EQ(p.title, "garnet");
    ASSERT_EQ(p.npts, 25);
    EXPECT_EQ(p.xmin, 24);
    EXPECT_EQ(p.step, 0.05f);
    EXPECT_FLOAT_EQ(p.xmax, 25.2f);
    EXPECT_TRUE(p.constant_step && p.sigma_is_variance);
    for (int i = 0; i < 25; ++i) {
        const float detectors = i % 3 == 0 ? 1.0f : static_cast<float>(i % 3 * 5);  // none told counts as one
        const float y = static_cast<float>(100 + i);
        const auto at = static_cast<std::size_t>(i);
        EXPECT_FLOAT_EQ(p.x[at], 24 + 0.05f * static_cast<float>(i));
        EXPECT_EQ(p.y[at], y);
        EXPECT_EQ(p.sigma[at], y / detectors);
    }
    EXPECT_EQ(p.ymin, 100);
    EXPECT_EQ(p.ymax, 124);
    EXPECT_EQ(Good("a\nBANK 1 1 1 CONST 2400 5 0 0 STD\n 2   -40\n").sigma[0], 20);
}

TEST(Gsas, CountsOfFlight) {
    const auto p = Good("a\nBANK 1 23 3 CONST 5000 10 0 0 STD\n" + Counts(23), true);
    ASSERT_EQ(p.npts, 23);
    EXPECT_EQ(p.xmin, 5000);
    EXPECT_EQ(p.xmax, 5220);
    EXPECT_EQ(p.y[22], 1154);
    EXPECT_EQ(p.sigma[22], 1154);
}

TEST(Gsas, CountsWithDeviations) {
    const auto p = Good("a\nBANK  1     13     3 CONST     300.00      5.00 0 0 ESD\n" + Deviations(13));
    ASSERT_EQ(p.npts, 13);
    EXPECT_EQ(p.xmin, 3);
    EXPECT_EQ(p.y[6], 506);
    EXPECT_EQ(p.sigma[6], 22 * 22);
    EXPECT_TRUE(p.constant_step);
    EXPECT_EQ(Good("a\nBANK 1 3 1 CONST 300 5 0 0 ESD\n" + Deviations(3), true).xmin, 300);
}

TEST(Gsas, TriplesOfTimes) {
    const auto p = Good("a\nBANK 1 9 3 RALF 64000. 32. 64000. 0.00080 ALT\n" + Triples(9), true);
    ASSERT_EQ(p.npts, 8);
    EXPECT_EQ(p.xmin, 2000);
    EXPECT_EQ(p.step, 1);
    EXPECT_EQ(p.xmax, p.x[7]);
    EXPECT_FALSE(p.constant_step);
    for (int i = 0; i < 8; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const float dx = static_cast<float>(32 + 2 * i + 1) / 32;
        EXPECT_EQ(p.x[at], static_cast<float>(64000 + 32 * i + i * i) / 32);
        EXPECT_FLOAT_EQ(p.y[at], 1000 * static_cast<float>(2000 + i) / dx);
        EXPECT_FLOAT_EQ(p.sigma[at], std::pow(1000 * static_cast<float>(50 + i) / dx, 2.0f));
    }
    const auto constant = Good("a\nBANK 1 9 3 CONST 64000. 32. 0 0 ALT\n" + Triples(9), true);
    ASSERT_EQ(constant.npts, 9);
    EXPECT_EQ(constant.xmin, 2000);
    EXPECT_EQ(constant.step, 1);
    EXPECT_EQ(constant.x[0], 2000);
    EXPECT_EQ(constant.xmax, constant.x[8]);
    EXPECT_EQ(constant.y[8], 2008);
    EXPECT_EQ(constant.sigma[8], 58 * 58);
    EXPECT_TRUE(constant.constant_step);
}

TEST(Gsas, BanksThatStopShort) {
    struct Case {
        const char* bank;  // that claims 60 points
        std::string (*records)(int);
        bool flight;
        int left_out = 0;  // of the records
    };
    const auto stated = [](int n) { return Stated(n, 50, 0.1); };
    for (const Case& c : {Case{"CONST 2400 5 0 0 STD", Pairs, false}, Case{"CONST 2400 5 0 0 STD", Counts, true},
                          Case{"CONST 2400 5 0 0 ESD", Deviations, false}, Case{"RALF 64000 32 0 0 ALT", Triples, true, 1},
                          Case{"CONST 64000 32 0 0 ALT", Triples, true}, Case{"CONS 50 0.1 0 0 FXYE", stated, false}})
        for (const int n : {2, 20, 23, 59, 60})
            for (const std::string end : {"", "\n   \n", "wrong\n", "BANK 2 5 1 CONST 2400 5 0 0\n"}) {
                SCOPED_TRACE(Printed("%s, %d records, then ", c.bank, n) + end);
                const auto whole = Good(std::string("a\nBANK 1 60 6 ") + c.bank + '\n' + c.records(60), c.flight);
                const auto p = Good(std::string("a\nBANK 1 60 6 ") + c.bank + '\n' + c.records(n) + end, c.flight);
                ASSERT_EQ(p.npts, n - c.left_out);
                EXPECT_EQ(p.npts_claimed, n < 60 ? 60 : 0);
                EXPECT_EQ(p.xmax, p.x.back());
                EXPECT_EQ(p.ymin, *std::min_element(p.y.begin(), p.y.end()));
                EXPECT_TRUE(std::equal(p.x.begin(), p.x.end(), whole.x.begin()));
                EXPECT_TRUE(std::equal(p.y.begin(), p.y.end(), whole.y.begin()));
                EXPECT_TRUE(std::equal(p.sigma.begin(), p.sigma.end(), whole.sigma.begin()));
            }
    EXPECT_EQ(Good("a\nBANK 1 60 6 CONST 2400 5 0 0\n" + Pairs(20) + "      12 wrong\n").npts, 21);
    EXPECT_EQ(Good("a\nBANK 1 2000000000 6 CONST 2400 5 0 0\n" + Pairs(20)).npts_claimed, 2000000000);
}

TEST(Gsas, EveryFault) {
    EXPECT_EQ(Message(""), " => Error in the input GSAS-file: BANK not found!");
    EXPECT_EQ(Message("a\n# BANK\nBAN\n1 2 3\n"), " => Error in the input GSAS-file: BANK not found!");
    const std::string two = "a\nBANK 1 10 1 CONST 2400 5 0 0\n" + Pairs(10) + "BANK 2 10 1 CONST 2400 5 0 0\n" + Pairs(10);
    EXPECT_EQ(Message(two, false, 3), " Error in Intensity file, BANK number: 3 not found!");
    EXPECT_EQ(Message(two, false, 12), " Error in Intensity file, BANK number:12 not found!");
    EXPECT_EQ(Message("a\nBANK\n"), " Error in Intensity file, BANK number: 1 not found!");
    for (const char* words : {"0 1 CONST 2400 5 0 0", "-3 1 CONST 2400 5 0 0", "some 1 CONST 2400 5", "99999999999 1 CONST 2400 5 0 0",
                              "10 1 CONST 2400 5 0 0", "10 1 CONST nan 5 0 0", "10 1 CONST 2400 1e99 0 0", "10 1 CONST",
                              "10 1 CONST 2400 5 0 0 XYZ", "1 1 RALF 2400 5 0 0 ALT", "10 1 SLOG 2400 5 0 0 FXYE"})
        EXPECT_EQ(Message(std::string("a\nBANK 1 ") + words + "\n"), bad_bank) << words;
    for (const char* words : {"", "SLOG 2400 5 0 0", "RALF 2400 5 0 0 ESD", "COND 2400 5 0 0 STD", "TIME_MAP 1 0 0 0 STD"})
        EXPECT_EQ(Message(std::string("a\nBANK 1 10 1 ") + words + '\n' + Pairs(10)), constant_only) << words;
    EXPECT_EQ(Message("a\nBANK 1 10 1 SLOG 2400 5 0 0 ALT\n" + Triples(10)), " =>  Only BINTYP=RALF or CONST is allowed for ALT data");
}

TEST(Gsas, BanksByNumber) {
    const std::string text = "several\nBANK 3 10 1 CONST 300 5 0 0\n" + Pairs(10) + "BANK 1 12 2 CONST 100 5 0 0\n" + Pairs(12) +
                             "BANK 7 10 1 SLOG 1 5 0 0\n" + Pairs(10) + "BANK 4 4 1 CONST 400 5 0 0 ESD\n" + Deviations(2);
    EXPECT_EQ(Gsas_Banks(text), (std::vector<int>{3, 1, 7, 4}));
    EXPECT_EQ(Good(text).xmin, 1);
    EXPECT_EQ(Good(text, false, 4).xmin, 4);
    EXPECT_EQ(Good(text.substr(0, text.find("BANK 1"))).xmin, 3);  // no bank 1: the first one
    EXPECT_EQ(Message(text.substr(0, text.find("BANK 1")), false, 1), " Error in Intensity file, BANK number: 1 not found!");

    std::vector<Diffraction_Pattern_Type> banks;
    std::vector<std::string> messages;
    ASSERT_TRUE(Read_Gsas_Banks(text, false, banks, messages).ok());
    ASSERT_EQ(banks.size(), 3u);
    EXPECT_EQ(banks[0].title, "several (bank 3)");
    EXPECT_EQ(banks[1].npts, 12);
    EXPECT_EQ(banks[2].title, "several (bank 4)");
    EXPECT_EQ(banks[2].npts, 2);
    EXPECT_EQ(banks[2].npts_claimed, 4);
    EXPECT_EQ(messages, (std::vector<std::string>{"Bank 7: => Only BINTYP=CONST is allowed for ESD data"}));

    ASSERT_TRUE(Read_Gsas_Banks("one\nBANK 2 10 1 CONST 300 5 0 0\n" + Pairs(10), false, banks, messages).ok());
    EXPECT_EQ(banks.at(0).title, "one");
    EXPECT_EQ(Read_Gsas_Banks("a\nBANK 1 0\nBANK 2 5 1 SLOG\n", false, banks, messages).message, bad_bank);
    EXPECT_EQ(Read_Gsas_Banks("a\n", false, banks, messages).message, " => Error in the input GSAS-file: BANK not found!");
    // Many banks that claim many points hold what they hold; lines of blanks in front of a number are zeros, up to what a file can stand
    // for.
    std::string claims;
    for (int i = 0; i < 3000; ++i) claims += "BANK 1 30000 9 CONST 1 1 0 0\n" + std::string(200, '\n') + "       1\n";
    ASSERT_TRUE(Read_Gsas_Banks(claims, false, banks, messages).ok());
    EXPECT_EQ(banks.size() + messages.size(), 2000u);
    std::size_t points = 0;
    for (const auto& bank : banks) points += bank.x.capacity();
    EXPECT_LE(points, 32768 + claims.size() / 2);
}

TEST(Gsas, RecordsThatStateX) {
    const auto angles = Good("a\nBANK 1 30 30 CONS 50.000000 0.099987  0 0 FXYE\n" + Stated(30, 50, 0.0999868));
    EXPECT_FLOAT_EQ(angles.xmin, 0.5f);
    EXPECT_FLOAT_EQ(angles.step, 0.00099987f);
    EXPECT_TRUE(angles.constant_step);
    EXPECT_EQ(angles.y[3], 303.5f);
    EXPECT_EQ(angles.sigma[3], 6.25f);
    EXPECT_FALSE(Good("a\nBANK 1 30 30 CONS 50 0.2 0 0 FXYE\n" + Stated(30, 50, 0.1)).constant_step);

    for (const char* binning : {"SLOG", "RALF", "TIME_MAP", "COND", "LOG6", "slog"}) {
        const auto p = Good(Printed("a\nBANK 1 30 30 %s 5000 60000 0.001 0 fxye\n", binning) + Stated(30, 5000, 5), true);
        EXPECT_EQ(p.xmin, 5000) << binning;
        EXPECT_EQ(p.xmax, 5145) << binning;
        EXPECT_FLOAT_EQ(p.step, 5) << binning;
        EXPECT_FALSE(p.constant_step) << binning;
    }
    EXPECT_EQ(Good("a\nBANK 1 3 3 SLOG 1 2 3 0 FXYE\n1 4 1\n2 nan nan\n3 5 1\n", true).ymax, 5);  // a gap in y is kept
    EXPECT_EQ(Good("a\nBANK 1 3 3 SLOG 1 2 3 0 FXYE\n1 4 1\n2 4 1\nnan 5 1\n", true).npts, 2);
    const auto p = Good("a\nBANK 1 4 4 SLOG 5000 60000 1e-3 0 FXY\n1 4\n# note\n\n2,9,\n3 -1\n4 1\n5 1\n", true);
    ASSERT_EQ(p.npts, 4);
    EXPECT_EQ(p.sigma, (std::vector<float>{4, 9, 1, 1}));
}

TEST(Gsas, HeadsOfToday) {
    std::string head = "title\nInstrument parameter file:a.prm\n";
    for (int i = 0; i < 40; ++i) head += "# comment BANK " + std::to_string(i) + '\n';
    EXPECT_EQ(Good(head + "Time-map 1\nbank 1 25 3 const 2400 5 0 0 std\n" + Pairs(25)).y[24], 124);
    EXPECT_EQ(Good("Bank 1 of the second day\nBANK 1 25 3 CONST 2400 5 0 0\n" + Pairs(25)).title, "Bank 1 of the second day");
    EXPECT_EQ(Good("a\nBANK 1 13 3 CONST 300.00 5.00 ESD\n" + Deviations(13)).sigma[1], 21 * 21);  // coefficients left out
    EXPECT_EQ(Good("a\nBANK 1 5 5 SLOG " + std::string(60, ' ') + "1 2 3 0 FXYE\n" + Stated(5, 5, 5), true).npts, 5);
    EXPECT_EQ(Good(std::string(100, 'x') + "\nBANK 1 1 1 CONST 1 1\n       1\n").title.size(), 80u);
    EXPECT_EQ(Good("Granat bei 20\xB0"
                   "C\nBANK 1 1 1 CONST 1 1\n       1\n")
                  .title,
              "Granat bei 20\xC2\xB0"
              "C");
}

TEST(Gsas, TimeMaps) {
    // Channels of 1 microsecond from 1000 on, from the sixth on of 2; a clock of 100 ns.
    const std::string values = Lines(7, 10, [](int i) {
        constexpr int map[] = {1, 10000, 10, 6, 10050, 20, 10150};
        return Printed("%8d", map[i]);
    });
    const std::string bank = "BANK 1 9 1 TIME_MAP 3 0 0 0 STD\n" + Counts(9);
    for (const std::string& map :
         {"TIME_MAP 3 7 1 TIME_MAP 100\n" + values, std::string("time-map 3 7 1\n1 10000 10 6\n10050 20 10150\n")}) {
        const auto p = Good("a\n" + map + bank, true);
        ASSERT_EQ(p.npts, 9);
        EXPECT_EQ(p.x, (std::vector<float>{1000, 1001, 1002, 1003, 1004, 1005, 1007, 1009, 1011}));
        EXPECT_EQ(p.y[4], 1028);
        EXPECT_EQ(p.y[5], 1035 / 2.0f);
        EXPECT_EQ(p.sigma[5], 1035 / 4.0f);
        EXPECT_FALSE(p.constant_step);
    }
    EXPECT_EQ(Message("a\nTIME_MAP 2 7 1 TIME_MAP 100\n" + values + bank, true), " => The TIME_MAP of the bank could not be read");
    EXPECT_EQ(Message("a\nTIME_MAP 3 7 1 TIME_MAP 100\nwhat\n" + bank, true), " => The TIME_MAP of the bank could not be read");
}

TEST(Gsas, FlightIsGuessed) {
    const auto guess = [](const std::string& words) { return Gsas_Is_Flight("a\nBANK 1 1000 100 " + words + '\n'); };
    for (const char* words : {"RALF 1 1 1 1 ALT", "SLOG 1 2 3 0 FXYE", "time_map 1 STD", "LOG6 1 1", "CONST 18000 1", "CONS 2000 20"})
        EXPECT_TRUE(guess(words)) << words;
    for (const char* words : {"CONST 1000 16 0 0 ESD", "cons 50 0.1 0 0 FXYE", "CONST what", ""}) EXPECT_FALSE(guess(words)) << words;
    EXPECT_FALSE(Gsas_Is_Flight("no bank\n"));
}

// The fields of `width` columns behind a bank line, `per_line` to a line, cut without any reader.
std::vector<double> Columns_Of(const std::string& text, const std::string& mark, std::size_t n, std::size_t first, std::size_t width,
                               std::size_t pitch) {
    std::istringstream lines(text.substr(text.find(mark)));
    std::string line;
    std::getline(lines, line);
    std::vector<double> values;
    while (values.size() < n && std::getline(lines, line))
        for (std::size_t at = first; at < 80 && values.size() < n; at += pitch) values.push_back(std::atof(line.substr(at, width).c_str()));
    return values;
}

TEST(Gsas, RealFilesOfAngles) {
    struct Case {
        const char* name;
        int npts;
        float xmin, step;
        std::size_t first, width, pitch;  // of the columns of y
    };
    for (const Case& c :
         {Case{"gsas/fap_lab_std.gsas", 5753, 15, 0.02f, 0, 8, 8}, Case{"gsas/garnet_cwn_std_pairs.gsas", 2679, 24, 0.05f, 2, 6, 8},
          Case{"gsas/lamno3_50k_esd.gsas", 3296, 3, 0.05f, 0, 8, 16}, Case{"gsas/alumina_esd.gsa", 3300, 3, 0.05f, 0, 8, 16}}) {
        const std::string text = Real_File(c.name);
        if (text.empty()) GTEST_SKIP() << c.name;
        const auto p = Good(text);
        ASSERT_EQ(p.npts, c.npts) << c.name;
        EXPECT_EQ(p.xmin, c.xmin) << c.name;
        EXPECT_FLOAT_EQ(p.step, c.step) << c.name;
        EXPECT_FALSE(Gsas_Is_Flight(text)) << c.name;
        const auto y = Columns_Of(text, "BANK", p.y.size(), c.first, c.width, c.pitch);
        ASSERT_EQ(y.size(), p.y.size()) << c.name;
        const bool deviations = c.pitch == 16;
        const auto s = Columns_Of(text, "BANK", p.y.size(), deviations ? 8 : 0, deviations ? 8 : 2, c.pitch);
        for (std::size_t i = 0; i < y.size(); ++i) {
            ASSERT_EQ(p.y[i], y[i]) << c.name << ' ' << i;
            ASSERT_FLOAT_EQ(p.sigma[i], static_cast<float>(deviations ? s[i] * s[i] : y[i] / (c.width == 8 || s[i] == 0 ? 1 : s[i])))
                << c.name << ' ' << i;
        }
    }
}

TEST(Gsas, RealFilesOfFlight) {
    struct Case {
        const char* name;
        std::vector<int> banks;
        int npts;
        float xmin;
    };
    for (const Case& c : {Case{"gsas/gem05984_ralf_alt.gss", {1, 2, 3, 4}, 2719, 81743.0f / 32},
                          Case{"gsas/pg3_22049_tof.gsa", {4}, 5199, 25978.813f}, Case{"gsas/vulcan_435.gda", {1, 2}, 2487, 5000},
                          Case{"gsas/vulcan_440.gda", {1, 2}, 2487, 5000}, Case{"gsas/vulcan_445.gda", {1, 2}, 2487, 5000}}) {
        const std::string text = Real_File(c.name);
        if (text.empty()) GTEST_SKIP() << c.name;
        EXPECT_EQ(Gsas_Banks(text), c.banks) << c.name;
        EXPECT_TRUE(Gsas_Is_Flight(text)) << c.name;
        EXPECT_FLOAT_EQ(Good(text, true).xmin, c.xmin) << c.name;
        std::vector<Diffraction_Pattern_Type> banks;
        std::vector<std::string> messages;
        ASSERT_TRUE(Read_Gsas_Banks(text, true, banks, messages).ok()) << c.name;
        EXPECT_TRUE(messages.empty()) << c.name;
        ASSERT_EQ(banks.size(), c.banks.size()) << c.name;
        for (const auto& p : banks) {
            EXPECT_EQ(p.npts, c.npts) << c.name;
            for (std::size_t i = 1; i < p.x.size(); ++i) ASSERT_GT(p.x[i], p.x[i - 1]) << c.name << ' ' << i;
        }
    }
}

TEST(Gsas, RealSynchrotronFileCutShort) {
    const std::string text = Real_File("gsas/11bm_fxye_head.fxye");
    if (text.empty()) GTEST_SKIP();
    const auto p = Good(text);
    EXPECT_EQ(p.npts, 378);
    EXPECT_EQ(p.npts_claimed, 49494);
    EXPECT_EQ(p.xmin, 0.5f);
    EXPECT_FLOAT_EQ(p.xmax, 0.87694997f);
    EXPECT_FLOAT_EQ(p.step, 0.00099987f);
    EXPECT_TRUE(p.constant_step);
    EXPECT_FLOAT_EQ(p.sigma[0], 32.809444f * 32.809444f);
}

}  // namespace
}  // namespace vntl::test
