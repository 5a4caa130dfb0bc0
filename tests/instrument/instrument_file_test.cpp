// Descriptions of instruments: every keyword, what is refused in them and how, the listing, the text that reads back, a new UB matrix.
#include "instrument/instrument_file.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

#include "base/text.hpp"

namespace vntl {
namespace {

namespace fs = std::filesystem;

class Instrument_File : public testing::Test {
protected:
    const std::string directory = fs::temp_directory_path() / ("instruments_" + std::to_string(::getpid()));
    void SetUp() override { fs::create_directories(directory); }
    void TearDown() override { fs::remove_all(directory); }

    std::string Make(const std::string& name, const std::string& text) const {
        std::ofstream(directory + '/' + name, std::ios::binary) << text;
        return directory + '/' + name;
    }
    static std::string Bytes(const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
};

struct Reading {
    Status status;
    Diffractometer_Type instrument;
    bool ub_read = false;
    std::vector<std::string> warnings;

    explicit Reading(const std::string& text, const std::string& name = "i.instrm") {
        instrument.info = "as before";
        status = Read_Instrm_Text(text, name, instrument, ub_read, warnings);
    }
};

const std::string size_line = "DIM_XZP 64 32 32 16\n";

// Every field has a value of its own, in the forms that files have: cases, commas, exponents of Fortran, comments inside sections.
const std::string whole_text =
    "! a comment\nINFO      Hot neutrons, a test\nName      R6-hot-neutrons-2\ngeom      Normal beam, lifting arm\n"
    "BLFR      y-up-down\nDIST_UNITS cm\nANGL_UNITS rad\nDET_TYPE  Vertical_banana ipsd=1\n"
    "DIST_DET  4.885D+02 behind the sample\nWAVE      0.8405\nWAV_LIMITS 0.5, 3.5\nDIM_XY    64.5 32.25 4 3\n"
    "GAPS_DET  2.25, 1.75\nGAMMA_NU_CENTRE 12.5 -3.5\nROT_ORDER  zxy\nTILT_ANGLES 0.11 0.12 0.13\nRESOL     0.45\n"
    "GAM+_LIMITS 1.5 120.5\nGAM-_LIMITS -110.5 -2.5\nNU_LIMITS -14.5 13.5\nX_LIMITS  1.25 39.5\nZ_LIMITS  2.75 38.5\n"
    "SETTING   1 0.01 0.02, 0.03 1.1 0.04, 0.05 0.06 1.2\nUBMAT     rows\n# a*, b*, c*\n   2.0 0.0 0.0\n\n   0.0 4.0 0.0\n"
    "   0.0 0.0 8.0\nNUM_ANG   2\nANG_LIMITS         Min      Max    Offset  Velocity(deg/s)\n"
    " 'Two Theta'   -5.5 125.5  0.015 0.25\n! the other one\n Omega,-49.5,48.5\nRANGE_TIME\n OMEGA 2\n  0.5 7.5\n  9.5 11.5\n"
    " 'two theta' 0\nNUM_DISP  1\nDISP_LIMITS\n X-table -21.5 22.5 0.35\nDET_OFF   0.21 0.22 0.23\nDISP_CENTRE 0.31 0.32 0.33\n"
    "A_KEYWORD_OF_TOMORROW 1 2 3\nDET_ALPHAS\n 0.91 0.92 0.93 0.94 ! the first row\n 0.95 0.96 0.97 0.98\n 0.99 1.01 1.02\n"
    " 1.03\nRESOLUTION_SURFACE 3 2\n 0.41 0.42 0.43\n 0.44 0.46 0.47\n";

Diffractometer_Type Whole_Instrument() {
    Diffractometer_Type i;
    i.info = "Hot neutrons, a test", i.name_inst = "R6-hot-neutr", i.geom = "Normal beam, li", i.igeom = 3;
    i.BL_frame = "y-up-d", i.dist_units = "cm", i.angl_units = "rad", i.detector_type = "Vertical_banana", i.ipsd = 1;
    i.dist_samp_detector = 488.5f, i.wave = 0.8405f, i.wave_min = 0.5f, i.wave_max = 3.5f, i.d_min = 0.45f;
    i.horiz = 64.5f, i.vert = 32.25f, i.np_horiz = 4, i.np_vert = 3, i.cgap = 2.25f, i.agap = 1.75f;
    i.gamma_c = 12.5f, i.nu_c = -3.5f, i.rot_order = "zxy", i.tilt = {0.11f, 0.12f, 0.13f};
    i.gamma_p_min = 1.5f, i.gamma_p_max = 120.5f, i.gamma_n_min = -110.5f, i.gamma_n_max = -2.5f;
    i.nu_min = -14.5f, i.nu_max = 13.5f, i.x_min = 1.25f, i.x_max = 39.5f, i.z_min = 2.75f, i.z_max = 38.5f;
    i.e1 = {1, 0.01f, 0.02f}, i.e2 = {0.03f, 1.1f, 0.04f}, i.e3 = {0.05f, 0.06f, 1.2f};
    i.UB = {{{2, 0, 0}, {0, 4, 0}, {0, 0, 8}}}, i.UB_inverse = {{{0.5f, 0, 0}, {0, 0.25f, 0}, {0, 0, 0.125f}}};
    i.num_ang = 2, i.ang_names[0] = "Two Theta", i.ang_names[1] = "Omega";
    i.ang_limits[0] = {-5.5f, 125.5f}, i.ang_limits[1] = {-49.5f, 48.5f}, i.ang_offsets[0] = 0.015f, i.ang_velocity[0] = 0.25f;
    i.range_time[1] = {{0.5f, 7.5f}, {9.5f, 11.5f}};
    i.num_disp = 1, i.disp_names[0] = "X-table", i.disp_limits[0] = {-21.5f, 22.5f}, i.disp_offsets[0] = 0.35f;
    i.det_offsets = {0.21f, 0.22f, 0.23f}, i.disp_centre = {0.31f, 0.32f, 0.33f};
    i.alphas = {4, 3, {0.91f, 0.92f, 0.93f, 0.94f, 0.95f, 0.96f, 0.97f, 0.98f, 0.99f, 1.01f, 1.02f, 1.03f}};
    i.resolution_surface = {3, 2, {0.41f, 0.42f, 0.43f, 0.44f, 0.46f, 0.47f}};
    return i;
}

// An instrument comes back from the text that is made of it.
void Expect_Back(const Diffractometer_Type& i, const std::string& name = "i.instrm") {
    const Reading read(Instrm_File_Text(i), name);
    EXPECT_TRUE(read.status.ok() && read.instrument == i) << read.status.message << '\n' << Instrm_File_Text(i);
}

TEST_F(Instrument_File, EveryKeywordSetsItsField) {
    for (const char* end : {"\n", "\r\n", "\r"}) {
        const Reading read(Replace_All(whole_text, "\n", end));
        ASSERT_TRUE(read.status.ok()) << read.status.message;
        EXPECT_TRUE(read.instrument == Whole_Instrument()) << Instrm_File_Text(read.instrument);
        EXPECT_TRUE(read.ub_read && read.warnings.empty());
    }
    const std::vector<std::string> silent = Reading(size_line + "nu_limits -1 1\nX_LIMITS 0 1").warnings;
    ASSERT_EQ(silent.size(), 1u);
    EXPECT_TRUE(silent[0].starts_with("i.instrm: ") && silent[0].ends_with(": GAM+_LIMITS, GAM-_LIMITS, Z_LIMITS")) << silent[0];
    const Reading least(size_line);  // all else has a default, the unit matrix among them
    Diffractometer_Type expected;
    expected.horiz = 64, expected.vert = 32, expected.np_horiz = 32, expected.np_vert = 16, expected.igeom = 1;
    EXPECT_TRUE(least.status.ok() && least.instrument == expected && !least.ub_read) << least.status.message;
}

TEST_F(Instrument_File, TheFirstWordCountsWholeAndTheSpellingsAreEqual) {
    const auto fields = [](const std::string& lines) { return Instrm_File_Text(Reading(lines).instrument); };
    EXPECT_EQ(fields(size_line + "WAVES 3\nWAVE\t0.5\n"), fields("dim_xz 64,32,32,16\n  wave 0.5 A\n"));
    EXPECT_EQ(fields(size_line + "GAPS_CA_AN 2 3\nGN_CENTRE 4 5\nWAVE_LIMITS 6 7"),
              fields("GAPS_DET 2 3\nGAMMA_NU_CENTRE 4 5\nWAV_LIMITS 6 7\nDIM_XZP 64 32 32. 16.0"));
    EXPECT_EQ(Reading(size_line + "INFO " + std::string(300, 'x') + "\nALPHA_NONE\n").instrument.info, std::string(80, 'x'));
}

TEST_F(Instrument_File, WordsOfTheGeometryTellItsCode) {
    const std::pair<const char*, int> codes[] = {{"LAUE plate", 3},
                                                 {"Normal beam 4C", 3},
                                                 {"a long text before Lifting counter", 3},
                                                 {"4C-Diff High-Chi, Eulerian cradle", 2},
                                                 {"4c", 1},
                                                 {"eulerian", 1},
                                                 {"kappa", 0}};
    for (const auto& [text, code] : codes) {
        const Reading read(size_line + "WAVE_LIMITS 1 2\nGEOM " + text);
        EXPECT_EQ(read.instrument.igeom, code) << text << read.status.message;
        Expect_Back(read.instrument);
    }
    EXPECT_EQ(Reading(size_line + "IGEOM 2\nGEOM kappa").instrument.igeom, 2);
}

TEST_F(Instrument_File, EachFaultIsToldByItsClause) {
    const std::string motors = "NUM_ANG 2\nANG_LIMITS\nOm 0 1 0 1\nPhi 0 1 0 1\n";
    const std::pair<std::string, std::vector<const char*>> faults[] = {
        {", reading the wavelength", {"WAVE", "WAVE -1", "WAVE nan", "WAVE 1e39", "WAVE 1.5x"}},
        {", reading the wavelength limits", {"WAV_LIMITS 1"}},
        {", reading the dimensions of the detector",
         {"DIM_XZP 64 64 32", "DIM_XY 64 64 32 31.5", "DIM_XZ 64 64 0 32", "DIM_XZ 64 64 32 1e9"}},
        {", reading the gaps between anodes and between cathodes", {"GAPS_DET 2 x"}},
        {", reading Gamma and Nu of detector centre", {"GN_CENTRE 1 ,"}},
        {", reading the distance sample-detector", {"DIST_DET inf"}},
        {", reading the Tilt Angles", {"TILT_ANGLES 1 2"}},
        {", reading the resolution d_min value", {"RESOL d"}},
        {", reading the Gamma(positive) limits", {"GAM+_LIMITS 1 /"}},
        {", reading the Gamma(negative) limits", {"GAM-_LIMITS **** 1"}},
        {", reading the Nu limits", {"NU_LIMITS 1"}},
        {", reading the X limits", {"X_LIMITS 1"}},
        {", reading the Z limits", {"Z_LIMITS 1"}},
        {", reading the UB-matrix",
         {"UBMAT\n1 0 0\n0 1 0", "UBMAT\n1 0 0\n0 1 0\nWAVE 1", "UBMAT\n1 0 0\n0 1 0\n0 0 NaN", "UBMAT\n.1 .2 .3\n.4 .5 .6\n.7 .8 .9"}},
        {", reading the setting vectors", {"SETTING 1 0 0 0 1 0 0 0"}},
        {", reading the type of detector (ipsd)", {"DET_TYPE flat ipsd", "DET_TYPE flat ipsd 7", "DET_TYPE"}},
        {", reading the code of the geometry", {"IGEOM 4"}},
        {", reading the number of angular motors", {"NUM_ANG 16"}},
        {", reading the number of displacement motors", {"NUM_DISP -1"}},
        {", Number of angular motors missing!", {"ANG_LIMITS\nOm 0 1 0 1"}},
        {", Number of displacement motors missing!", {"DISP_LIMITS\nX 0 1 0"}},
        {", reading the angular names, limits, offsets and velocities",
         {"NUM_ANG 2\nANG_LIMITS\nOm 0 1 0 1\n", "NUM_ANG 1\nANG_LIMITS\nOm 0\n", "NUM_ANG 1\nANG_LIMITS\nOm ,, 1\n",
          "NUM_ANG 1\nANG_LIMITS\n'Om 0 1\n"}},
        {", reading the displacement limits", {"NUM_DISP 1\nDISP_LIMITS\nX 0 1 z\n"}},
        {", reading the detector offsets", {"DET_OFF 1 2"}},
        {", reading the centre of the displacements", {"DISP_CENTRE 1 2"}},
        {", the number of angular motors is needed before giving range_time values", {"RANGE_TIME"}},
        {", reading pairs range - time for motor: Om", {"(motors)RANGE_TIME\nOm 1\n0 x"}},
        {", reading name of motor and number of pairs range - time",
         {"(motors)RANGE_TIME\nOm x", "(motors)RANGE_TIME\nOm -1", "(motors)RANGE_TIME\nChi 0", "(motors)RANGE_TIME\nOm 0\nOm 0"}},
        {", reading section of pairs range - time", {"(motors)RANGE_TIME\nOm 2000000000\n0 1\n", "(motors)RANGE_TIME\nOm 0"}},
        {", reading the efficiency of 2D-detector", {"DET_ALPHAS\n1 1 1\n", "DET_ALPHAS\n1 1 ***\n"}},
        {", reading the dimension of resolution surface of the 2D-detector", {"RESOLUTION_SURFACE 2", "RESOLUTION_SURFACE 0 2"}},
        {", reading the resolution surface of 2D-detector",
         {"RESOLUTION_SURFACE 2 2\n1 2 3", "RESOLUTION_SURFACE 2 2\n1 2 3 4 5", "RESOLUTION_SURFACE 2 2\n1 2\n3 inf",
          "RESOLUTION_SURFACE 2000000000 2000000000\n1 2 3"}},
        {", the limits of the angular motors (ANG_LIMITS) are missing", {"NUM_ANG 1", "(motors)NUM_ANG 3"}},
        {", the limits of the displacement motors (DISP_LIMITS) are missing", {"NUM_DISP 1"}},
        {", the wavelength limits (WAVE_LIMITS) are missing", {"GEOM Laue"}},
    };
    const auto refused = [](const std::string& text, const std::string& message) {
        const Reading read(text);
        EXPECT_EQ(read.status.message, message) << text;
        EXPECT_TRUE(read.status.failed && read.instrument.info == "as before") << text;
    };
    for (const auto& [clause, spoilt] : faults)
        for (const char* lines : spoilt) refused(size_line + Replace_All(lines, "(motors)", motors), "Error in file: i.instrm" + clause);
    for (const char* text : {"", "INFO x", "\x01\x02"})
        refused(text, "Error in file: i.instrm, the dimensions of the detector (DIM_XZP) are missing");
}

TEST_F(Instrument_File, TheStateStaysUntilAFileIsWhole) {
    Instrument_State state;
    std::vector<std::string> warnings;
    const auto read = [&](const std::string& file) { return Read_Current_Instrm(file, state, warnings).message; };
    EXPECT_EQ(read(directory), "Error opening the file: " + directory);
    EXPECT_FALSE(state.Current_Instrm_Set || state.Current_Orient.set);
    const std::string good = Make("good.instrm", whole_text), bad = Make("bad.instrm", "INFO bad\nUBMAT\n1 0 0\n0 1 0\n0 0 1\n");
    EXPECT_EQ(read(good), "");
    EXPECT_EQ(read(bad), "Error in file: " + bad + ", the dimensions of the detector (DIM_XZP) are missing");
    EXPECT_EQ(read(directory + "/none"), "Error opening the file: " + directory + "/none");
    EXPECT_TRUE(state.Current_Instrm_Set && state.Current_Instrm == Whole_Instrument());
    EXPECT_TRUE(state.Current_Orient.set && state.Current_Orient.UB == Whole_Instrument().UB && state.Current_Orient.wave == 0.8405f);
    EXPECT_EQ(read(Make("plain.instrm", size_line)), "");  // another instrument; the orientation is that of the last matrix
    EXPECT_EQ(state.Current_Instrm.UB, unit_matrix);
    EXPECT_EQ(state.Current_Orient.UB, Whole_Instrument().UB);
}

TEST_F(Instrument_File, EfficienciesLieBesideTheDescription) {
    Make("cells.eff", "! two rows\n0.5 0.75\n1.0 1.25\n");
    Make("few.eff", "1 1 1\n");
    Make("words.eff", "1 1 1 1\nUBMAT\n");
    const std::string name = directory + "/i.instrm", size = "DIM_XZP 1 1 2 2\n";
    for (const std::string& text : {"ALPHA_FILE cells.eff\n" + size, size + "ALPHA_FILE " + directory + "/cells.eff"}) {
        const Reading read(text, name);
        ASSERT_TRUE(read.status.ok()) << read.status.message;
        EXPECT_TRUE((read.instrument.alphas == Real_Table{2, 2, {0.5f, 0.75f, 1.0f, 1.25f}}));
        Expect_Back(read.instrument, name);
    }
    EXPECT_EQ(Reading(size + "ALPHA_FILE none.eff", name).status.message, "Error the alpha file: none.eff, does not exist!");
    EXPECT_EQ(Reading(size + "ALPHA_FILE", name).status.message, "Error the alpha file: , does not exist!");
    for (const std::string file : {"few.eff", "words.eff"})
        EXPECT_EQ(Reading(size + "ALPHA_FILE " + file, name).status.message,
                  "Error in file: " + file + ", reading the efficiency of 2D-detector");
}

TEST_F(Instrument_File, TheLastOfSeveralCountsAndTimesMayStandBeforeTheNames) {
    Make("cells.eff", "1 2 3 4");
    const Reading read(
        "NUM_ANG 2\nRANGE_TIME\nOm 1\n1 2\nPhi 0\nANG_LIMITS\nPhi 0 1\nOm 0 1\nRANGE_TIME\nOm 1\n3 4\nPhi 1\n5 6\n"
        "DIM_XZP 9 9 9 9\nDET_ALPHAS\n5 6\nALPHA_FILE cells.eff\nDIM_XZP 1 1 4 1\nWAVE 1\nWAVE 2",
        directory + "/i.instrm");
    ASSERT_TRUE(read.status.ok()) << read.status.message;
    using Times = std::vector<std::pair<float, float>>;
    EXPECT_TRUE(read.instrument.range_time[0] == Times({{5, 6}}) && read.instrument.range_time[1] == Times({{3, 4}}));
    EXPECT_TRUE((read.instrument.alphas == Real_Table{4, 1, {1, 2, 3, 4}}) && read.instrument.wave == 2);
    const Reading early(size_line + "NUM_ANG 2\nRANGE_TIME\nOm 1\n1 2\nPhi 0\nANG_LIMITS\nOmega 0 1\nPhi 0 1\n");
    EXPECT_TRUE(early.status.ok() && early.instrument.range_time[0] == Times({{1, 2}})) << early.status.message;
}

TEST_F(Instrument_File, GapsChangePlacesWhereThePixelsTellSo) {
    // The pitch is 80 / 160 horizontally and 64 / 32 vertically.
    const std::string size = "DIM_XZP 80 64 160 32\nGAM+_LIMITS 0 1\nGAM-_LIMITS 0 1\nNU_LIMITS 0 1\nX_LIMITS 0 1\nZ_LIMITS 0 1\n";
    const std::tuple<const char*, float, float, std::size_t> cases[] = {
        {"2 0.5", 2, 0.5f, 0}, {"0.5 2", 2, 0.5f, 1}, {"0.507 1.97", 1.97f, 0.507f, 1}, {"0.52 2", 0.52f, 2, 0}, {"0.5 3", 0.5f, 3, 0}};
    for (const auto& [gaps, cathodes, anodes, warnings] : cases) {
        const Reading read(std::string("GAPS_CA_AN ") + gaps + '\n' + size);
        EXPECT_TRUE(read.status.ok());
        EXPECT_EQ(std::tuple(read.instrument.cgap, read.instrument.agap, read.warnings.size()), std::tuple(cathodes, anodes, warnings));
        EXPECT_TRUE(read.warnings.empty() || Contains(read.warnings[0], "i.instrm"));
    }
}

TEST_F(Instrument_File, DefaultInstruments) {
    Instrument_State state;
    const Diffractometer_Type& i = state.Current_Instrm;
    Set_Default_Instrument(state, "Laue");
    EXPECT_TRUE(state.Current_Instrm_Set);
    EXPECT_EQ(std::tuple(i.info, i.detector_type, i.igeom, i.ipsd), std::tuple("Default Laue diffractrometer", "Flat_rect", 3, 2));
    EXPECT_EQ(std::tuple(i.horiz, i.vert, i.np_horiz, i.np_vert), std::tuple(256, 198, 2560, 1980));
    EXPECT_EQ(std::tuple(i.wave_min, i.wave_max, i.dist_samp_detector, i.ang_names[0]), std::tuple(0.7f, 5.5f, 488.0f, "Gamma"));
    Expect_Back(i);
    Set_Default_Instrument(state, {}, std::array{0.5f, 2.5f});
    EXPECT_EQ(std::tuple(i.info, i.igeom, i.num_ang), std::tuple("Default 4-cercles diffractrometer", 2, 4));
    EXPECT_EQ(std::tuple(i.horiz, i.vert, i.agap, i.cgap, i.np_horiz, i.np_vert), std::tuple(64, 64, 2, 2, 32, 32));
    EXPECT_EQ(std::tuple(i.wave_min, i.wave_max, i.name_inst, i.geom), std::tuple(0.5f, 2.5f, "4C-Diff High", "Eulerian cradle"));
    EXPECT_EQ(i.ang_names[0] + i.ang_names[1] + i.ang_names[2] + i.ang_names[3], "2ThetaOmegaChiPhi");
    Expect_Back(i);
}

// What a record can hold that stands in the way of its own text: names that are no words, numbers of every size.
TEST_F(Instrument_File, TheTextReadsBackAsTheSameInstrument) {
    Diffractometer_Type i = Whole_Instrument();
    Expect_Back(i);
    const char* names[] = {"", "it's", "\"", "3*1", "a,b", "!a", "#", "WAVE", "UBMAT", "a / b", "'", "\xC3\xA9tage", "same", "same"};
    i.num_ang = i.num_disp = static_cast<int>(std::size(names));
    std::ranges::copy(names, i.ang_names.begin());
    std::ranges::copy(names, i.disp_names.begin());
    for (std::size_t k = 0; k < std::size(names); ++k) i.range_time[k].assign(k % 3, {static_cast<float>(k) / 7, 1e-38f});
    constexpr float extreme = std::numeric_limits<float>::max();
    i.ang_limits[3] = {-extreme, extreme};
    i.tilt = {1.0f / 3, 1e-45f, -2.0f / 3e7f};
    i.UB[0] = {0.1f, 1e-20f, -1.0f / 3};
    ASSERT_TRUE(Invert_Matrix(i.UB, i.UB_inverse));
    i.detector_type.clear();
    Expect_Back(i);
    const Reading fewer(size_line + "NUM_ANG 2\nANG_LIMITS\nOm 0 1\nPhi 0 1 2 3\nRANGE_TIME\nOm 0\nPhi 1\n2 3\nNUM_ANG 1\n");
    EXPECT_TRUE(fewer.status.ok());
    Expect_Back(fewer.instrument);
    i.info = "two\nlines";
    EXPECT_EQ(Reading(Instrm_File_Text(i)).instrument.info, "two lines");
    EXPECT_TRUE(Contains(Instrm_File_Text(i), "\nRESOLUTION SURFACE OF THE INSTRUMENT:\n"));
    i.resolution_surface = {};
    EXPECT_TRUE(Contains(Instrm_File_Text(i), "\n => No resolution surface has been provided\n"));
    EXPECT_TRUE(Contains(Instrm_File_Text(i), "\nANG_LIMITS         Min      Max    Offset  Velocity(deg/s)\n"));
}

TEST_F(Instrument_File, TheListingTellsEveryField) {
    Instrument_State state;
    EXPECT_EQ(Write_Current_Instrm_data(state).size(), 4u);
    state.Current_Instrm = Reading(whole_text).instrument;
    state.Current_Instrm_Set = true;
    for (const std::string& line : Write_Current_Instrm_data(state)) EXPECT_FALSE(line.starts_with("LAMBDA")) << "of one wavelength";
    state.Current_Instrm.geom = "Laue";
    const std::vector<std::string> lines = Write_Current_Instrm_data(state);
    EXPECT_EQ(lines[1], " ---   INFORMATION ABOUT THE CURRENT INSTRUMENT AND ORIENTATION MATRIX   --- ");
    EXPECT_TRUE(lines[0] == lines[2] && lines[0].find_first_not_of(" -") == std::string::npos);
    // Each number of the file stands somewhere, apart from the efficiencies, of which the extremes do.
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    std::istringstream words(text), asked(Replace_All(whole_text.substr(0, whole_text.find("DET_ALPHAS")), ",", " "));
    const std::vector<std::string> told{std::istream_iterator<std::string>(words), {}};
    int numbers = 0;
    for (std::string word; asked >> word;) {
        double wanted = 0, value = 0;
        if (!Parse_Real(word, wanted)) continue;
        ++numbers;
        EXPECT_TRUE(std::ranges::any_of(told, [&](const std::string& w) { return Parse_Real(w, value) && value == wanted; })) << word;
    }
    EXPECT_GT(numbers, 60);
    std::size_t at = 0;  // labels in their order
    std::istringstream labels(
        "INFO: Hot neutrons, a test\n|NAME: |GEOM: |BL_FRAME: |DIST_UNITS: |ANGL_UNITS: |DET_TYPE: Vertical_banana\n|"
        "DIST_SDETR: 488.5 cm|LAMBDA_MIN: 0.5 Angstroms\n|LAMBDA_MAX: 3.5 Angstroms\n|HORIZ_SIZE: |VERT_SIZE: |ANODE_GAP: 1.75|"
        "CATHODE_GAP: 2.25|HORIZ_PXEL: 4\n|VERT_PXEL: 3\n|GN_CENTRE: |NUMBER_ANG: 2\n|"
        "  Names of Angular Motors, Limits (Min-Max), Offsets and velocities (deg/s):   \n|Two Theta|NUMBER_DISP: 1\n|"
        "  Names of Displacement Motors, Limits (Min-Max) and Offsets:   \n|X-table|DET_OFFSET: |e1_COMPNT: |e2_COMPNT: |"
        "e3_COMPNT: |ALPHAS: 4 x 3 efficiencies from 0.91 to 1.03\n|RESOLUTION SURFACE OF THE INSTRUMENT: ");
    for (std::string label; std::getline(labels, label, '|');) {
        const std::size_t found = text.find(label, at);
        ASSERT_NE(found, std::string::npos) << label << '\n' << text;
        at = found;
    }
    Set_Default_Instrument(state, "Laue");
    const std::vector<std::string> laue = Write_Current_Instrm_data(state);
    for (const char* line : {"LAMBDA_MIN: 0.7 Angstroms", "ALPHAS: all 1", " => No resolution surface has been provided"})
        EXPECT_TRUE(std::ranges::count(laue, line)) << line;
}

// The rows of the inverse are the edges of the cell: those of corundum, by its published lengths and angles.
TEST_F(Instrument_File, TheExampleHoldsTheCellOfItsCrystal) {
    Instrument_State state;
    std::vector<std::string> warnings;
    const Status status = Read_Current_Instrm(SOURCE_TREE "/examples/four_circles.instrm", state, warnings);
    ASSERT_TRUE(status.ok()) << status.message;
    EXPECT_TRUE(warnings.empty() && state.Current_Orient.set && state.Current_Instrm.igeom == 2);
    const Matrix3& edges = state.Current_Orient.UB_inverse;
    const auto product = [&](std::size_t i, std::size_t j) {
        return edges[i][0] * edges[j][0] + edges[i][1] * edges[j][1] + edges[i][2] * edges[j][2];
    };
    const float a = 4.7589f, c = 12.991f, metric[3][3] = {{a * a, -a * a / 2, 0}, {-a * a / 2, a * a, 0}, {0, 0, c * c}};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) EXPECT_NEAR(product(i, j), metric[i][j], 1e-3) << i << ' ' << j;
    Expect_Back(state.Current_Instrm);
}

// --- a new UB matrix ---------------------------------------------------------------------------------------------------------------

const Matrix3 new_ub = {{{0.25f, -0.5f, 0}, {0.5f, 0.125f, 0}, {0, 0, -1.5f}}};
// The rows in columns of 16 with nine decimals, laid out by hand.
const std::string new_rows[] = {"     0.250000000    -0.500000000     0.000000000", "     0.500000000     0.125000000     0.000000000",
                                "     0.000000000     0.000000000    -1.500000000"};
const std::string rows_text = new_rows[0] + '\n' + new_rows[1] + '\n' + new_rows[2] + '\n';

struct Update : Instrument_File {
    Instrument_State state;
    Update() { Set_Default_Instrument(state); }

    Status Put(const std::string& file, std::optional<float> wave = {}, const Matrix3& ub = new_ub) {
        return Update_Current_Instrm_UB(file, ub, wave, state);
    }
};

TEST_F(Update, ChangesTheLinesOfMatrixAndWavelengthAlone) {
    struct Case {
        std::string before, after;
    };
    const std::string ub = "UBMAT\n" + rows_text;
    const Case cases[] = {
        {"WAVE_LIMITS 1 2\n wave 3 ! old\nUBMAT\n1 0 0\n0 1 0\n0 0 1\nX 1\n", "WAVE_LIMITS 1 2\nWAVE    0.84005\n" + ub + "X 1\n"},
        {"WAVE 3\n\tubmat old\n# kept\n1 0 0\n\n0 1 0\n****\n",
         "WAVE    0.84005\n\tubmat old\n# kept\n" + new_rows[0] + "\n\n" + new_rows[1] + '\n' + new_rows[2] + '\n'},
        {"INFO \xE9", "INFO \xE9\nWAVE    0.84005\n" + ub},  // a last line without an end
        {"WAVE 1\nUBMAT", "WAVE    0.84005\n" + ub},
        {"UBMAT\n1 0 0\nWAVE 1", "UBMAT\n" + rows_text + "WAVE    0.84005"},  // rows that are missing
        {"WAVE 1\nUBMAT\n1 0 0\n0 1 0\n0 0 1", "WAVE    0.84005\n" + ub.substr(0, ub.size() - 1)},
        {"NUM_ANG 2\nANG_LIMITS\nWave 0 1\nUBMAT 0 1\nRANGE_TIME\nWave 1\n0 1\nUBMAT 0\nWAVE 1\nUBMAT\n1 0 0\n0 1 0\n0 0 1\n",
         "NUM_ANG 2\nANG_LIMITS\nWave 0 1\nUBMAT 0 1\nRANGE_TIME\nWave 1\n0 1\nUBMAT 0\nWAVE    0.84005\n" + ub},  // names of motors
        {"NUM_DISP 1\nDISP_LIMITS\n wave 0 1\nWAVE 1\x1a", "NUM_DISP 1\nDISP_LIMITS\n wave 0 1\nWAVE    0.84005\n" + ub + "\x1a"},
        {"\xEF\xBB\xBFWAVE 1\n", "\xEF\xBB\xBFWAVE    0.84005\n" + ub},
    };
    for (const Case& c : cases) {
        for (const char* end : {"\n", "\r\n", "\r"}) {
            const std::string before = Replace_All(c.before, "\n", end);
            if (*end != '\n' && !Contains(before, end)) continue;  // nothing tells its line ends
            const std::string file = Make("i.instrm", before);
            const Status status = Put(file, 0.84005f);
            ASSERT_TRUE(status.ok()) << status.message;
            EXPECT_EQ(Bytes(file), Replace_All(c.after, "\n", end));
            EXPECT_EQ(Bytes(file + ".bak"), before);
        }
    }
    Make("one.instrm", "X");
    EXPECT_TRUE(Put(directory + "/one.instrm").ok());
    EXPECT_EQ(Bytes(directory + "/one.instrm"), "X\n" + ub);  // and no wavelength
}

TEST_F(Update, TheCurrentInstrumentAndTheFileAgreeAndTheVersionBeforeIsKept) {
    const std::string file = Make("i.instrm", whole_text);
    std::vector<std::string> warnings;
    ASSERT_TRUE(Read_Current_Instrm(file, state, warnings).ok());
    ASSERT_TRUE(Put(file, 1.25f).ok());
    Diffractometer_Type expected = Whole_Instrument();
    expected.wave = 1.25f;
    expected.UB = new_ub;
    ASSERT_TRUE(Invert_Matrix(new_ub, expected.UB_inverse));
    EXPECT_TRUE(state.Current_Instrm == expected && Reading(Bytes(file)).instrument == expected);
    EXPECT_TRUE(state.Current_Orient.set && state.Current_Orient.UB == new_ub && state.Current_Orient.wave == 1.25f);
    EXPECT_EQ(Bytes(file + ".bak"), whole_text);
    const std::string first = Bytes(file);
    ASSERT_TRUE(Put(file, {}, unit_matrix).ok());
    EXPECT_EQ(Bytes(file + ".bak"), first);
    EXPECT_TRUE(Contains(Bytes(file), "WAVE    1.25000\n"));
    EXPECT_EQ(Reading(Bytes(file)).instrument.UB, unit_matrix);
}

TEST_F(Update, WhatCannotBeWrittenChangesNothing) {
    const std::string file = Make("i.instrm", whole_text), open = "Error opening the file: ";
    const Diffractometer_Type before = state.Current_Instrm;
    const auto refused = [&](const Status& status, const std::string& part) {
        EXPECT_TRUE(status.failed && Contains(status.message, part)) << part << " / " << status.message;
        EXPECT_FALSE(Contains(status.message, "*"));
        EXPECT_TRUE(state.Current_Instrm == before && Bytes(file) == whole_text);
    };
    const auto with = [](float value) { return Matrix3{{{value, 0, 0}, {0, 1, 0}, {0, 0, 1}}}; };
    refused(Put(file, {}, with(0)), "cannot be inverted");
    refused(Put(file, {}, with(NAN)), "cannot be inverted");
    refused(Put(file, {}, with(1e-12f)), "too small");  // it would be written as zero
    refused(Put(file, {}, with(1e7f)), "too large");
    refused(Put(file, {}, {{{1, -12345.5f, 0}, {0, 1, 0}, {0, 0, 1}}}), "too large");  // it would touch the number before
    for (const float wave : {0.0f, -1.0f, NAN, INFINITY, 1e-6f, 10000.0f}) refused(Put(file, wave), "wavelength");
    refused(Put(directory + "/none"), open + directory + "/none");
    refused(Put(Make("empty", "")), open + directory + "/empty => ZERO lines found!");
    EXPECT_FALSE(fs::exists(file + ".bak") || fs::exists(directory + "/none.bak") || fs::exists(directory + "/empty.bak"));

    fs::create_directory(file + ".bak");
    refused(Put(file), "Error opening the backup file: " + file + ".bak");
    fs::remove(file + ".bak");
    const auto ub_line =
        std::count(whole_text.begin(), whole_text.begin() + static_cast<std::ptrdiff_t>(whole_text.find("   2.0 0.0")), '\n') + 1;
    ::chmod(file.c_str(), 0444);
    const std::string columns(ub_line < 100 ? 2 : 1, ' ');
    refused(Put(file), "Error updating the file: " + file + " at line:" + columns + std::to_string(ub_line));
    EXPECT_FALSE(fs::exists(file + ".bak"));
    ::chmod(file.c_str(), 0644);
    if (::geteuid() == 0) {  // a link that somebody else has laid
        constexpr uid_t somebody = 65534;
        Make("victim", "precious");
        fs::create_symlink(directory + "/victim", file + ".bak");
        ASSERT_EQ(::lchown((file + ".bak").c_str(), somebody, somebody), 0);
        refused(Put(file), "Error opening the backup file: " + file + ".bak");
        EXPECT_EQ(Bytes(directory + "/victim"), "precious");
    }
    Instrument_State none;
    EXPECT_EQ(Update_Current_Instrm_UB(file, new_ub, {}, none).message,
              " Current Instrument not set! (call subroutine: Read_Current_Instrm) ");
}

}  // namespace
}  // namespace vntl
