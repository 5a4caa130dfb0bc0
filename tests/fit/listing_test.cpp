// The listing, line by line as its readers know it; agreement factors and correlations are worked out beside the numbers.
#include "fit/listing.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace vntl {
namespace {

Fit_State Starting_Values() {
    Fit_State state;
    state.x_ini = 24.5f, state.x_fin = 131.0625f, state.lambda1 = 1.540562f, state.lambda2 = 1.54439f;
    state.ratio = {0.5f, 0, 0};
    state.asym = {{{0.01f, 1, 0.00025f}, {0.0125f, 0, 0}}};
    state.prof = {{{0.004f, 1, 0.0005f}, {-0.002f, 0, 0}, {0.0101f, 1, 2e9f}, {}, {0.5f, 1, 0.0625f}, {}}};
    state.peaks.resize(3);
    state.peaks[0].pos = {25.578125f, 1, 0.000122f};
    state.peaks[0].intensity = {20000, 1, 125.5f};
    state.peaks[0].shift_width = {-0.0125f, 1, 0.00125f};
    state.peaks[1].intensity = {1e9f, 1, 0};
    state.peaks[1].active = false;
    state.peaks[2].pos.value = 130.578125f;
    state.peaks[2].intensity = {55.25f, 1, 4.5f};
    state.peaks[2].shift_eta = {0.125f, 1, 1e7f};
    return state;
}
const std::vector<Background_Mark> nodes = {{24.5f, 101.25f, 1, 3.5f}, {131.0625f, 90, 0, 0}};

TEST(Listing, OfConstantWavelength) {
    EXPECT_EQ(Listing_Heading(Fit_Kind::constant_wavelength, Starting_Values(), nodes, "quartz, 300 K", "2theta", 9), R"(

            ------------------------------------ 
     --- PROGRAM: Lorvane (Embedded in Vantrelo-2006 ---
                (version 5.0 November - 2015) 
            ------------------------------------ 
 => TITLE: quartz, 300 K
 => 2theta range, peaks and cycles read 
 => 2theta(init)    :        24.500
 => 2theta(fin )    :       131.062
 => Number of peaks :    2
 => Number of background points :    2
 => Number of cycles:  100
 => Wave (A)               :      1.540562      1.544390

 => Global parameters                 Flag
 => Kalph2/Kalph1 ratio    :      0.500000  0
 => Asymmetry parameter S_L:      0.010000  1
 => Asymmetry parameter D_L:      0.012500  0

      Profile Parameters for Pseudo-Voigt
        pV(x) = ETA* L(x) + (1-ETA)* G(x)
    FWHM = SQRT((U tanT + V) tanT + W) + Z/cosT
    ETA  = Eta0 + X * 2T 

 => Parameter  U           :      0.004000  1
 => Parameter  V           :     -0.002000  0
 => Parameter  W           :      0.010100  1
 => Parameter  Z           :      0.000000  0
 => Parameter Eta0         :      0.500000  1
 => Parameter  X           :      0.000000  0

 => Background parameters
      Scatt. Variable     Background  Flag
           24.5000          101.2500   1
          131.0625           90.0000   0

      Position      Intensity      D-Gamma         D-Eta          Flags

     25.578125      20000.00     -0.012500      0.000000       1  1  1  0
    130.578125         55.25      0.000000      0.125000       0  1  0  1

 => Total number of refined parameters:    9

)");
    // A deviation that does not fit loses decimals first; intensities are halved, so that the largest is 10000.
    EXPECT_EQ(Listing_Values(Fit_Kind::constant_wavelength, Starting_Values(), nodes), R"(  ----------------------------------------
  Final parameters and Standard Deviations
  ----------------------------------------
  Global Profile Parameters:  
Kalph2/Kalph1 ratio:         0.500000        0.000000
Asymmetry-1(S_L)   :         0.010000        0.000250
Asymmetry-2(D_L)   :         0.012500        0.000000
  U-Caglioti       :         0.004000        0.000500
  V-Caglioti       :        -0.002000        0.000000
  W-Caglioti       :         0.010100 2000000000.0000
  Z-(Z/cosTheta)   :         0.000000        0.000000
  Eta0(PV-function):         0.500000        0.062500
X(Eta=Eta0+X 2Theta:         0.000000        0.000000
  Background Parameters:
      2Theta/Pos      Background 
       24.5000        101.2500      3.5000
      131.0625         90.0000      0.0000
  Scale factor applied to all integrated intensities:   0.5000000
  Reflection Parameters:
          Position         Intensity        Shift-FWHM         Shift-Eta
 25.578125 0.00012  10000.00   62.75 -0.012500 0.00125  0.000000 0.00000
130.578125 0.00000     27.62    2.25  0.000000 0.00000  0.125000 0.1E+08
)");
}

TEST(Listing, OfTimeOfFlight) {
    Fit_State state;
    state.x_ini = 9000, state.x_fin = 11000.5f, state.Ncyc = 40;
    state.prof = {{{0.7f, 1, 0.01f}, {0.3f, 0, 0}, {}, {1250.5f, 1, 12.25f}, {}, {0.25f, 1, 0.125f}}};
    const Fit_Value values[] = {{10000.0625f, 1, 0.0625f}, {875, 1, 5.25f}, {-3.5f, 1, 0.5f}, {0.0125f, 1, 0.001f}, {0.25f}, {0.125f}};
    state.peaks.resize(1);
    for (std::size_t k = 0; k < 6; ++k) *Values_Of(Fit_Kind::time_of_flight, state.peaks[0])[k] = values[k];
    const std::vector<Background_Mark> line = {{9000, 10, 1, 0.5f}};
    EXPECT_EQ(Listing_Heading(Fit_Kind::time_of_flight, state, line, "", "TOF (microsec)", 8), R"(

            ------------------------------------ 
                  --- PROGRAM: Tessyl ---
                 (version 4.0 June - 2015) 
            ------------------------------------ 
 => TITLE: 
 => TOF range, peaks and cycles read 
 => TOF(init)       :       9000.000
 => TOF(fin )       :      11000.500
 => Number of peaks :     1
 => Number of background points :     1
 => Number of cycles:    40

 => Global parameters          Flag
 => Global-Alpha      0.700000  1
 => Global-Beta       0.300000  0
 => Sig-2             0.000000  0
 => Sig-1          1250.500000  1
 => Sig-0             0.000000  0
 => Global-Eta        0.250000  1

 => Background parameters
      Scatt. Variable     Background  Flag
         9000.0000           10.0000   1

    Position       Intensity    Shift-Sigma   Shift-alpha    Shift-beta    Shift-Eta       Flags

  10000.062500        875.00     -3.500000      0.012500      0.250000      0.125000      1 1 1 1 0 0

 => Total number of refined parameters:    8

)");
    EXPECT_EQ(Listing_Values(Fit_Kind::time_of_flight, state, line), R"(  ----------------------------------------
  Final parameters and Standard Deviations
  ----------------------------------------
  Global Profile Parameters:  
     Global-Alpha  :         0.700000        0.010000
     Global-Beta   :         0.300000        0.000000
        Sig-2      :         0.000000        0.000000
        Sig-1      :      1250.500000       12.250000
        Sig-0      :         0.000000        0.000000
  Eta (PV-function):         0.250000        0.125000
  Background Parameters:
        TOF        Background 
     9000.0000         10.0000      0.5000
  Scale factor applied to all integrated intensities:   1.0000000
  Reflection Parameters:
         TOF-Bragg         Intensity       Shift-sigma       Shift-alpha        Shift-beta         Shift-eta
10000.0625  0.0625    875.00    5.25   -3.5000  0.5000  0.012500 0.00100  0.250000 0.00000  0.125000 0.00000
)");
}

TEST(Listing, TellsHowAFitEnded) {
    EXPECT_EQ(End_Of_Fit_Text("Ended", 1.25f, "\r\n"), "Ended\r\n => Final   Chi2:        1.25000");
    EXPECT_EQ(End_Of_Fit_Text("", std::numeric_limits<float>::quiet_NaN(), "\n"), "\n => Final   Chi2:            NaN");
}

// Three free parameters of four. N^-1 has the correlations 0.9, -0.95 and 0.704 (of 100 0.704 sqrt(4 * 9) / sqrt(4 * 9)).
LSQ_State_Vector Parameters() {
    LSQ_State_Vector vs;
    vs.parameters = {{"U-Caglioti", 0.5f, 0.25f, 1, 0, 1},
                     {"fixed", 7, 0, 1, 0, 0},
                     {"background_1", -1234567.5f, 0.125f, 1, 0, 1},
                     {"Bragg_Pos_1", 38.5f, 0.00012f, 1, 0, 1}};
    return vs;
}

// y 10, 20, 30, 40 of which 1, 1, 2, 0 are not calculated: 100 * 4 / 100; sum w d^2 = 1 + 0.25 + 1: 100 sqrt(2.25 / 100); 100 sqrt(1 /
// 100).
const LSQ_Data four_points = {{1, 2, 3, 4}, {10, 20, 30, 40}, {1, 2, 2, 10}, {9, 21, 28, 40}, {}};
const std::vector<float> weights = {1, 0.25f, 0.25f, 0.01f};

TEST(Listing, OfTheSolver) {
    LSQ_Run run;
    run.chi2 = 2.25f;
    run.names = {"U-Caglioti", "background_1", "Bragg_Pos_1"};
    run.inverse = {1, 1.8, -2.85, 1.8, 4, 4.224, -2.85, 4.224, 9};
    LSQ_Conditions c;
    c.npvar = 3;
    const std::string text = Info_LSQ_Output(0, four_points, weights, c, Parameters(), run);
    EXPECT_EQ(text, R"(
  Rfact=    4.000   Rwfact=   15.000   Rex=   10.000

  Final value of Marquardt F-Lambda =            0.000

 => Correlation Matrix: 

    Correlation:  90 > 70% for parameters:   U-Caglioti & background_1
    Correlation:  70 > 70% for parameters:   background_1 & Bragg_Pos_1

 => There are   2 values of Correlation > 70%


      FINAL LIST OF REFINED PARAMETERS AND STANDARD DEVIATIONS
      --------------------------------------------------------


    #   Parameter name                       No.(Model)         Final-Value   Standard Deviation

    1    U-Caglioti                                   1             0.50000             0.25000
    2    background_1                                 3      -1234567.50000             0.12500
    3    Bragg_Pos_1                                  4            38.50000             0.00012

 => Final value of Chi2:   0.22500E+01
)");
    EXPECT_EQ(Fit_File_Text(four_points, weights), R"(!        X             Y-obs          Y-calc           Sigma
          1.0000         10.0000          9.0000          1.0000
          2.0000         20.0000         21.0000          2.0000
          3.0000         30.0000         28.0000          2.0000
          4.0000         40.0000         40.0000         10.0000
)");

    // Without an inverse nothing is correlated; more parameters than points, and no intensity at all, give 0.
    run.inverse.clear();
    c.npvar = 5;
    LSQ_Data dark = four_points;
    dark.y = {0, 0, -1, 1};
    for (const auto& [data, factors] : {std::pair(four_points, "  Rfact=    4.000   Rwfact=   15.000   Rex=    0.000\n"),
                                        std::pair(dark, "  Rfact=    0.000   Rwfact=    0.000   Rex=    0.000\n")}) {
        const std::string bare = Info_LSQ_Output(0, data, weights, c, Parameters(), run);
        EXPECT_NE(bare.find(factors), std::string::npos) << bare;
        EXPECT_NE(bare.find(" => Correlation Matrix: \n\n\n => There is no correlations greater than 70%\n\n\n      FINAL"),
                  std::string::npos)
            << bare;
    }
}

}  // namespace
}  // namespace vntl
