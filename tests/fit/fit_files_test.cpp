// The files of a fit: what is written reads back, what is read is what stands there, and what is damaged is refused by the told words.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "fit/irf_file.hpp"
#include "fit/pik_file.hpp"

namespace vntl {
namespace {

namespace fs = std::filesystem;

class Fit_Files : public testing::Test {
protected:
    void SetUp() override {
        directory = fs::temp_directory_path() / ("fit_files_" + std::to_string(::getpid()));
        fs::create_directories(directory);
    }
    void TearDown() override { fs::remove_all(directory); }
    std::string File(const std::string& name, const std::string& text) const {
        std::ofstream(directory / name, std::ios::binary) << text;
        return directory / name;
    }
    static Fit_State State(Fit_Kind kind) {
        const bool flight = kind == Fit_Kind::time_of_flight;
        Fit_State state;
        state.x_ini = flight ? 3700 : 18.5f, state.x_fin = flight ? 6300 : 31.5f;
        state.lambda1 = 1.540599f, state.lambda2 = 1.54439f, state.d2tof = 7476.9f;
        state.ratio = {0.5f, 0};
        state.asym = {Fit_Value{0.03f, 1}, Fit_Value{0.025f, 0}};
        for (std::size_t i = 0; i < 6; ++i) state.prof[i] = {0.25f * static_cast<float>(i), static_cast<int>(i % 2)};
        state.corrmax = 70, state.iw = 1, state.constr = true, state.percent = 12;
        state.chi2 = 1.25f;
        state.peaks.resize(3);
        for (std::size_t k = 0; k < 3; ++k) {
            float value = state.x_ini + 1 + static_cast<float>(k);
            int flag = 0;
            for (Fit_Value* v : Values_Of(kind, state.peaks[k])) *v = {value, ++flag % 2}, value = 0.125f * static_cast<float>(flag);
        }
        state.peaks[1].active = false;
        return state;
    }
    static std::vector<Background_Mark> Nodes(const Fit_State& state) {
        return {{state.x_ini, 300, 1}, {(state.x_ini + state.x_fin) / 2, 250.5f, 0}, {state.x_fin, 200, 1}};
    }

    fs::path directory;
};

TEST_F(Fit_Files, APikFileReadsBackAndIsWrittenTheSame) {
    for (const Fit_Kind kind : {Fit_Kind::constant_wavelength, Fit_Kind::time_of_flight}) {
        const Fit_State state = State(kind);
        Fit_State read;
        const auto nodes = Nodes(state);
        const std::string text = Pik_Text(kind, state, nodes, "a title", kind == Fit_Kind::time_of_flight ? "TOF" : "2theta");
        std::vector<Background_Mark> read_nodes;
        Fit_Kind read_kind = kind == Fit_Kind::time_of_flight ? Fit_Kind::constant_wavelength : Fit_Kind::time_of_flight;
        ASSERT_EQ(Read_Pik_File(File("a.pik", text), read, read_nodes, read_kind).message, "");
        EXPECT_EQ(read_kind, kind);
        const bool cw = kind == Fit_Kind::constant_wavelength;
        for (const char* line : {cw ? "\n   18.5000   31.5000     3     2   100     0     0     0     1    70     1    12\n"
                                    : "\n      3700.0000      6300.0000     3     2   100     0     0     0     1    70     1    12\n",
                                 cw ? "\n      0.030000     1      <= Asymmetry-1(S_L)     &    '  \n"
                                    : "\n        0.2500     1      <= Global-Beta  &       \n"})
            EXPECT_NE(text.find(line), std::string::npos) << line << text;
        EXPECT_EQ(read_nodes, nodes);
        read.chi2 = state.chi2;
        EXPECT_EQ(Pik_Text(kind, read, read_nodes, "a title", kind == Fit_Kind::time_of_flight ? "TOF" : "2theta"), text);
        ASSERT_EQ(read.peaks.size(), 2u);  // the active ones
        const auto was = Values_Of(kind, std::as_const(state.peaks[2])), is = Values_Of(kind, std::as_const(read.peaks[1]));
        for (std::size_t i = 0; i < was.size(); ++i) EXPECT_EQ(*is[i], *was[i]) << i;
        EXPECT_EQ(std::tuple(read.iw, read.constr, read.percent, read.corrmax), std::tuple(1, true, 12.0f, 70));
    }
}

TEST_F(Fit_Files, NumbersThatDoNotFitStayReadable) {
    Fit_State state = State(Fit_Kind::constant_wavelength), read;
    const auto nodes = Nodes(state);
    state.peaks[0].intensity.value = 3.5e12f;
    state.peaks[2].intensity.value = -4.25e9f;
    state.Ncyc = 123456, state.percent = 1e7f;
    std::vector<Background_Mark> read_nodes;
    Fit_Kind kind{};
    ASSERT_EQ(Read_Pik_File(File("a.pik", Pik_Text(kind, state, nodes, "", "2theta")), read, read_nodes, kind).message, "");
    EXPECT_NEAR(read.peaks[0].intensity.value / 3.5e12f, 1, 1e-5);
    EXPECT_NEAR(read.peaks[1].intensity.value / -4.25e9f, 1, 1e-5);
    EXPECT_EQ(std::tuple(read.Ncyc, read.percent), std::tuple(123456, 1e7f));
}

TEST_F(Fit_Files, NamesOfPikFiles) {
    const Fit_State state = State(Fit_Kind::constant_wavelength);
    EXPECT_EQ(Pik_Name(Fit_Kind::constant_wavelength, state, Nodes(state), "p/a"), "p/a-185-315.pik");
    EXPECT_EQ(Pik_Name(Fit_Kind::constant_wavelength, state, std::vector<Background_Mark>{{-1, 0}, {40, 0}}, "a"), "a-18-31.pik");
    const std::string stem = directory / "b";
    for (const char* name : {"b.pik", "b_01.pik", "b_02.pik"}) {
        const std::string next = Pik_Name(Fit_Kind::time_of_flight, state, {}, stem);
        EXPECT_EQ(next, directory / name);
        File(name, "");
    }
}

// A small file of angles with one part replaced.
std::string Angles(const std::string& head = "20 30 2 1 50 0 0 0 1 0 1 5.0", const std::string& nodes = "20 100 1\n30 90 0\n",
                   const std::string& peaks = "25.0, 100.0, 0.1D0, 0.0 1 1 1 0\n") {
    return "! made by hand\n  title\n! Ang_init and so on\n!\n " + head +
           "\n1.54 1.55 <= Lambda1\n0.5 0 <= ratio\n0.01\t1\n0.02 0\n0.1 1\n0.2 0\n0.3 0\n0 0\n0.5 1\n0 0\n! nodes\n" + nodes + peaks;
}

TEST_F(Fit_Files, DamagedPikFilesAreRefused) {
    std::string nodes_121;
    for (int i = 0; i < 121; ++i) nodes_121 += std::to_string(20 + 0.05 * i) + " 1 1\n";
    std::string nodes_120 = nodes_121.substr(0, nodes_121.rfind('\n', nodes_121.size() - 2) + 1);
    const struct {
        std::string text, told;
    } cases[] = {
        {Angles(), ""},
        {Angles("20 30 120 1 50 0 0 0 1 0 1 5", nodes_120), ""},
        {Angles("20 30 121 1 50 0 0 0 1 0 1 5", nodes_121), " => Error: too many background parameters ! "},
        {Angles("20 30 2 401 50 0 0 0 1 0 1 5"), " => Error: too many peaks ! "},
        {"", "  => Error in pik input file at reading TITLE !"},
        {"! only\n! comments\n", "  => Error in pik input file at reading TITLE !"},
        {"title\n", " => End of pik-file at reading, title in file: title"},
        {Angles("20 30 2 1 50 0 0 0 1 0 1"), " => Error at reading: tof/2theta_ini, tof/2theta_fin, n_ba, etc ! "},
        {Angles("30 20 2 1 50 0 0 0 1 0 1 5"), " => Error at reading: tof/2theta_ini, tof/2theta_fin, n_ba, etc ! "},
        {Angles("20 30 -2 1 50 0 0 0 1 0 1 5"), " => Error at reading: tof/2theta_ini, tof/2theta_fin, n_ba, etc ! "},
        {Angles("20 30 2 1 50 0 0 0 1 0 1 5", "20 100 1\n19 90 0\n"), " => Error at reading background parameter: 19 90 0"},
        {Angles("20 30 2 1 50 0 0 0 1 0 1 5", "20 nan 1\n30 90 0\n"), " => Error at reading background parameter: 20 nan 1"},
        {Angles("20 30 2 2 50 0 0 0 1 0 1 5"), " => End of pik-file at reading, title in file: title"},
        {Angles("20 30 2 1 50 0 0 0 1 0 1 5", "20 100 1\n30 90 0\n", "25 100 0.1 0\n"),
         " => Error at reading peak parameter: 25 100 0.1 0"},
        {std::string(3000, '\0'), "  => Error in pik input file at reading TITLE !"},
    };
    for (const auto& c : cases) {
        Fit_State state;
        state.x_ini = 7;
        std::vector<Background_Mark> nodes = {{1, 2}};
        Fit_Kind kind = Fit_Kind::time_of_flight;
        const Status status = Read_Pik_File(File("c.pik", c.text), state, nodes, kind);
        EXPECT_EQ(status.message.substr(0, c.told.size()), c.told);
        EXPECT_EQ(status.failed, !c.told.empty());
        if (!status.failed) continue;
        EXPECT_EQ(state.x_ini, 7);
        EXPECT_EQ(nodes.size(), 1u);
        EXPECT_EQ(kind, Fit_Kind::time_of_flight);
    }
    Fit_State state;
    std::vector<Background_Mark> nodes;
    Fit_Kind kind{};
    EXPECT_EQ(Read_Pik_File("/no/such.pik", state, nodes, kind).message, "ERROR opening the file: /no/such.pik");
    ASSERT_TRUE(Read_Pik_File(File("d.pik", Angles("21 29 2 1 50 0 0 0 1 0 1 5")), state, nodes, kind).ok());
    EXPECT_EQ(std::tuple(state.x_ini, state.x_fin, state.y_ini, state.y_fin), std::tuple(20.0f, 30.0f, 100.0f, 90.0f));  // to the nodes
    EXPECT_EQ(std::tuple(state.Ncyc, state.iw, state.corrmax, state.constr, state.percent), std::tuple(50, 1, 50, true, 5.0f));
    EXPECT_EQ(state.peaks.at(0).shift_width, (Fit_Value{0.1f, 1}));
    // A time of flight without and with the word behind `Jobt`.
    for (const char* head : {"20 30 0 0 50 0 0 3 60 1 5", "20 30 0 0 50 0 0 0 3 60 1 5"}) {
        const std::string text = "title\n! TOF_init\n" + std::string(head) + "\n5000\n.7 0\n.3 0\n0 0\n0 0\n0 0\n0 0\n";
        ASSERT_EQ(Read_Pik_File(File("e.pik", text), state, nodes, kind).message, "");
        EXPECT_EQ(std::tuple(state.iw, state.corrmax, state.constr, state.percent, state.d2tof), std::tuple(3, 60, true, 5.0f, 5000.0f))
            << head;
    }
}

TEST_F(Fit_Files, IrfFiles) {
    Irf_File irf;
    EXPECT_EQ(Read_Irf_File("/no/file", irf).message, "Error when openning the IRF File: /no/file.irf");
    EXPECT_EQ(Read_Irf_File(File("empty.irf", ""), irf).message.find("Error reading IRF File: "), 0u);
    File("a.irf",
         "a diffractometer IRESO: 5\n! comment\n\n# another\nJOBT NEUT\nWave 1.54 1.55 0.5 comment\nASYM 0.01 0.02\nALFBT 1 2 3 4\n"
         "ALFBE 5 6 7 8\nSIGMA 1.5 2.5 bad\nSIGMA 1 nan 2\nD2TOF 7476.9\nGEOM SYNC 0.5\nPROF 7 1 2 3\n  1 2 3 4 5 6\n6 5 4 3 2 1\n9 9 9 9 "
         "9 9\n"
         "20.0 0.1 0.2\n21.0 0.1 0.2 0.03 0.04\n12\n");
    ASSERT_TRUE(Read_Irf_File(directory / "a", irf).ok());
    EXPECT_EQ(std::tuple(irf.ireso, irf.jobt, irf.geometry, irf.profile, irf.table_length, irf.profile_rows.size(), irf.table.size()),
              std::tuple(5, std::optional(3), std::optional(3), std::optional(7), 12, 2u, 2u));
    EXPECT_FALSE(irf.sigma);
    Fit_State state;
    Apply_Irf(irf, Fit_Kind::constant_wavelength, state);
    EXPECT_EQ(std::tuple(state.lambda2, state.ratio.value, state.asym[1].value), std::tuple(1.55f, 0.5f, 0.02f));
    const float order[] = {1, 2, 3, 6, 5, 4};  // U, V, W, Z, Eta0, X
    for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(state.prof[i].value, order[i]) << i;
    state = {};
    Apply_Irf(irf, Fit_Kind::time_of_flight, state);
    EXPECT_EQ(std::tuple(state.d2tof, state.prof[prof_alpha].value, state.prof[prof_beta].value, state.prof[prof_sig2].value),
              std::tuple(7476.9f, 3.0f, 2.0f, 0.0f));
    ASSERT_TRUE(Read_Irf_File(File("b.irf", "title\n10 0.1 0.2 0.03 0.04\n20 0.1 0.2 0.05 0.06\n"), irf).ok());
    EXPECT_EQ(irf.ireso, 8);
    EXPECT_EQ((*irf.asym)[1], 0.04f);
}

// The relations of Thompson, Cox and Hastings, put in again.
TEST_F(Fit_Files, WidthsAreSplit) {
    for (const float h : {1e-4f, 0.1f, 7.0f})
        for (const float eta : {1e-5f, 0.2f, 0.7f, 0.999f}) {
            const auto parts = Split_Width(h, eta);
            ASSERT_TRUE(parts);
            const double g = parts->gaussian / h, l = parts->lorentzian / h;
            EXPECT_NEAR(1.36603 * l - 0.47719 * l * l + 0.11116 * l * l * l, eta, 3e-7);
            EXPECT_NEAR(std::pow(g, 5) + 2.69269 * std::pow(g, 4) * l + 2.42843 * g * g * g * l * l + 4.47163 * g * g * l * l * l +
                            0.07842 * g * std::pow(l, 4) + std::pow(l, 5),
                        1, 3e-6);
        }
    for (const auto& [h, eta] : {std::pair(1e-7f, 0.5f), {0.1f, 1.01f}, {0.1f, 0.0f}, {NAN, 0.5f}}) EXPECT_FALSE(Split_Width(h, eta));
    const Fit_State state = State(Fit_Kind::constant_wavelength);
    const std::vector<float> h = {0.1f, 0.1f}, eta = {0.5f, 2};
    EXPECT_EQ(Irf_Text(state, h, eta, true),
              "! Resolution function (IRESO=8) : 2theta(deg.)   HG(deg.)   HL(deg.)   S_L   D_L\n"
              "       2    <<<< Include number of points in the following list\n"
              "    19.500000     0.075334     0.042216     0.030000     0.025000\n"
              "    21.500000    ******    ******     0.030000     0.025000\n");
}

}  // namespace
}  // namespace vntl
