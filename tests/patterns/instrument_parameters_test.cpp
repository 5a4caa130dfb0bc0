// Instrument parameter files: real ones by the numbers that stand in them, and the same instrument in every layout that is in use.
#include "patterns/instrument_parameters.hpp"

#include "patterns/testing.hpp"

namespace vntl::test {
namespace {

std::vector<Instrument_Bank> Banks(const std::string& text) {
    std::vector<Instrument_Bank> banks;
    const Status status = Read_Instrument_Parameters(text, banks);
    EXPECT_TRUE(status.ok() && Is_Instrument_Parameters(text.substr(0, 8192))) << status.message << text.substr(0, 80);
    return banks;
}

std::string Fault(const std::string& text) {
    std::vector<Instrument_Bank> banks(2);
    const Status status = Read_Instrument_Parameters(text, banks);
    EXPECT_TRUE(status.failed && banks.empty()) << text.substr(0, 80);
    return status.message;
}

TEST(Instrument_Parameters, RealFilesGiveWhatStandsInThem) {
    const std::string flight = Real_File("formats/samples/gsas2_tof.instprm"), line = Real_File("formats/samples/gsas2_xray.instprm"),
                      doublet = Real_File("formats/samples/gsas_xray_doublet.prm");
    if (flight.empty()) GTEST_SKIP();
    const Instrument_Bank tof = Banks(flight).at(0), single = Banks(line).at(0), tube = Banks(doublet).at(0);
    EXPECT_TRUE(tof.flight && tof.radiation == "neutrons_tof" && tof.number == 1 && !tof.numbered);
    EXPECT_EQ(tof.difC, 22600.2479192);
    EXPECT_EQ(tof.difA, -0.900917699636);
    EXPECT_EQ(tof.difB, 2.62346571719);
    EXPECT_EQ(tof.zero, -8.51764244829);
    EXPECT_EQ(tof.two_theta, 90);
    EXPECT_EQ(tof.flight_path, 63.183);
    EXPECT_NEAR(505.556 * tof.flight_path * std::sin(std::acos(-1.0) / 4), tof.difC, 0.01 * tof.difC);  // the geometry says the same
    EXPECT_TRUE(!single.flight && single.radiation == "xrays_cw");
    EXPECT_EQ(single.lam1, 1.148407);
    EXPECT_EQ(single.lam2 + single.ratio, 0);
    EXPECT_EQ(single.polarisation, 0.99);
    EXPECT_TRUE(!tube.flight && tube.numbered && tube.number == 1 && tube.radiation == "xrays_cw");
    EXPECT_EQ(tube.lam1, 1.5405);
    EXPECT_EQ(tube.lam2, 1.5443);
    EXPECT_EQ(tube.ratio, 0.5);
    EXPECT_EQ(tube.polarisation, 0.7);
}

const std::string ruler = "            123456789012345678901234567890123456789012345678901234567890\n";
std::string Record(const std::string& text) { return text + std::string(80 - text.size(), ' ') + '\n'; }

// The layout's widths, with values that leave no blank between them.
TEST(Instrument_Parameters, RecordsAreCutAtTheirColumns) {
    const std::string flight = ruler + Record("INS   BANK      3") + Record("INS   HTYPE   PNTR") + Record("INS   FPATH1     60.0000") +
                               Record("INS  1 ICONS22591.8600-123.45678-10.000000") + Record("INS  1BNKPAR    3.1830   90.0000") +
                               Record("INS  2 ICONS  12345.67") + Record("INS 12 ICONS 5000.0000    0.0000     1.500");
    for (const auto& [habit, text] : Habits(flight)) {
        const auto banks = Banks(text);
        ASSERT_EQ(banks.size(), 3u) << habit;
        EXPECT_EQ(banks[0].difC, 22591.86) << habit;
        EXPECT_EQ(banks[0].difA, -123.45678) << habit;
        EXPECT_EQ(banks[0].zero, -10) << habit;
        EXPECT_NEAR(banks[0].flight_path, 63.183, 1e-9) << habit;
        EXPECT_EQ(banks[0].two_theta, 90) << habit;
        EXPECT_EQ(banks[1].difC, 12345.67) << habit;
        EXPECT_EQ(banks[2].number, 12) << habit;
        EXPECT_EQ(banks[2].zero, 1.5) << habit;
    }
    EXPECT_EQ(Banks(Replace_All(flight.substr(ruler.size()), "\n", "")).size(), 3u);  // no line end in the file
    struct Case {
        std::string record;
        double lam1, lam2, zero, ratio;
    };
    for (const Case& c : {Case{" 1.5401231 1.5445671      12.5       0.5", 1.5401231, 1.5445671, 0.125, 0},
                          Case{"  1.5405  1.5443  -0.40 0 0.7 0 0.5", 1.5405, 1.5443, -0.004, 0.5},
                          Case{"1.5405,1.5443,0,0,0.7,0,0.5", 1.5405, 1.5443, 0, 0.5}, Case{"    1.540562", 1.540562, 0, 0, 0},
                          Case{" 1.5405 0 0 0 0.7 0 0.5", 1.5405, 0, 0, 0}, Case{" 1.5405931  1.54448 0.5", 1.5405931, 1.54448, 0.005, 0},
                          Case{"\t1.909 0 25", 1.909, 0, 0.25, 0},
                          Case{"  1.540500  1.544300       0.0         0       0.7    0       0.5   ", 1.5405, 1.5443, 0, 0.5}}) {
        const Instrument_Bank bank = Banks("INS   HTYPE   PNCR\nINS  1 ICONS" + c.record).at(0);
        EXPECT_EQ(bank.lam1, c.lam1) << c.record;
        EXPECT_EQ(bank.lam2, c.lam2) << c.record;
        EXPECT_NEAR(bank.zero, c.zero, 1e-12) << c.record;
        EXPECT_EQ(bank.ratio, c.ratio) << c.record;
        EXPECT_EQ(bank.radiation, "neutrons_cw");
    }
    EXPECT_EQ(Banks(Record("INS  1 ICONS  1.540500") + Record("INS  1 IRAD     3")).at(0).radiation, "xrays_cw");  // of that anode
    EXPECT_FALSE(Banks(Record("INS  1 ICONS  1.540500")).at(0).flight);  // a value tells what the type does not
    EXPECT_TRUE(Banks(Record("INS  1 ICONS  5123.000")).at(0).flight);
}

TEST(Instrument_Parameters, KeysComeInAnyOrderAndBanksUnderTheirHeads) {
    const std::string text =
        "# a remark\n#Bank 4: GSAS-II instrument parameter file; do not add/delete items!\ndifA:-1.5\nType:PNT\nZero:-8.5\ndifC:5000.25\n"
        "#Bank 2: the same\nType:PXC\nI(L2)/I(L1):0.5\nLam2:1.5443\nPolariz.:0.7\nLam1:1.5405\n"
        "#Bank 9\nType:PXE\n2-theta:7.5\n#Bank 3\nType : PNC; lam : 1.9 A ; Zero:0.02\n";
    for (const auto& [habit, written] : Habits(text)) {
        const auto banks = Banks(written);
        ASSERT_EQ(banks.size(), 3u) << habit;  // energies have no constants of this kind
        EXPECT_EQ(banks[0].number, 4) << habit;
        EXPECT_TRUE(banks[0].flight && banks[0].difC == 5000.25 && banks[0].difA == -1.5 && banks[0].zero == -8.5) << habit;
        EXPECT_TRUE(banks[1].number == 2 && banks[1].lam1 == 1.5405 && banks[1].lam2 == 1.5443 && banks[1].ratio == 0.5) << habit;
        EXPECT_TRUE(banks[2].number == 3 && banks[2].lam1 == 1.9 && banks[2].zero == 0.02 && banks[2].radiation == "neutrons_cw") << habit;
    }
    EXPECT_EQ(Banks("#GSAS-II instrument parameter file\n#Bank: no number\nType:PXC\nLam:0.4\n").at(0).number, 1);
    EXPECT_EQ(Banks("\xEF\xBB\xBFType:PXC\nLam:0.4\nBank:5\n").at(0).number, 5);
}

TEST(Instrument_Parameters, OtherFilesAndEmptyOnesSaySo) {
    const std::string other = "This is no instrument parameter file", none = "No bank of this instrument file tells a wavelength or a difC";
    const std::string png = "\x89PNG\r\n\x1a\n" + std::string(5000, '\0');
    for (const std::string& text :
         {std::string(), std::string("# only a remark\n"), std::string("INSTRUMENT D1B\nICONS 1.5\n"),
          std::string("Type: document\nLam: b\n"), std::string("10.0 5 2\n10.1 6 2\n"), png, std::string("INS"), std::string("INS 12")}) {
        EXPECT_EQ(Fault(text), other) << text.substr(0, 40);
        EXPECT_FALSE(Is_Instrument_Parameters(text));
    }
    for (const char* text :
         {"Type:PXC\nLam:0\n", "Type:PNT\nLam:1.5\n", "Type:PXC\nLam:nan\n", "Type:PXC\nLam:1e300\n", "Type:PNT\ndifC:-22600\n",
          "Type:PNT\ndifC:1e8\n", "INS   HTYPE   PXCR\nINS  1 ICONS\n", "INS   BANK      2\n", "Type:PXE\nLam:1.5\n"})
        EXPECT_EQ(Fault(text), none) << text;
    std::string many;
    for (int i = 1; i <= 5000; ++i) many += "#Bank " + std::to_string(i) + "\nType:PNT\ndifC:5000\n";
    EXPECT_EQ(Banks(many).size(), 2000u);
}

}  // namespace
}  // namespace vntl::test
