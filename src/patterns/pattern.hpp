// One diffraction pattern: the record that every reader fills and everything else works on.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/status.hpp"

namespace vntl {

// Widths of the text fields in characters; a reader cuts what is longer.
inline constexpr std::size_t title_width = 180;
inline constexpr std::size_t legend_width = 40;
inline constexpr std::size_t scat_var_width = 20;

// What the head of a file told beside the numbers of the pattern: a name and a text each, such as "Anode" and "Cu".
struct Head_Fact {
    std::string name, value;
};
using Head_Facts = std::vector<Head_Fact>;

// Texts and numbers of a pattern.
struct Pattern_Head {
    std::string title;
    std::string radiation;  // "neutrons_cw", "xrays_cw", "unknown", ...
    std::string scat_var;   // scattering variable of x: "2theta", "TOF", "d-spacing", "Distance", "Angle", ...
    std::string legend_x;   // axis legend, for example "2theta(degrees)"
    std::string legend_y;   // axis legend, for example "Intensity (arb. units)"
    std::string instr;      // format or instrument that the file was read as
    std::string filename;   // without its directory
    std::string filepath;   // directory with its final separator
    float xmin = 0, xmax = 0;
    float ymin = 0, ymax = 0;
    float scal = 0;
    float monitor = 0;
    float norm_monitor = 0;           // monitor to which the counts were normalised
    float count_time = 0;             // seconds a step
    float step = 0;                   // of x; the mean step where it is not constant
    float TSample = 0, TSetting = 0;  // kelvin; not above 0.0001 means unknown
    std::int32_t bank = 0;            // number in a file of several patterns, 0 where there is none
    std::int32_t npts = 0;
    std::int32_t npts_claimed = 0;  // points that the file's head promised, where the file holds fewer; otherwise 0
    bool constant_step = false;
    bool has_y = false, has_ycalc = false, has_bgr = false, has_sigma = false;  // the graphic routines may use that array
    bool sigma_is_variance = true;                                              // false: `sigma` holds standard deviations
    bool per_second = false;                                                    // y is counts a second
    bool al_x = false, al_y = false, al_ycalc = false, al_bgr = false, al_sigma = false, al_istat = false;  // allocated
    // Constant wavelength: lambda 1, lambda 2, ratio K-alpha2/K-alpha1, K-beta, free. Time of flight: dtt1, dtt2.
    std::array<float, 5> conv{};
    std::shared_ptr<const Head_Facts> facts;  // null where its file told nothing; copies share it
};

// Arrays have `npts` entries or none. Point numbers shown to a user count from 1; the vectors count from 0.
struct Diffraction_Pattern_Type : Pattern_Head {
    std::vector<float> x;  // strictly rising
    std::vector<float> y;
    std::vector<float> sigma;  // variances or standard deviations, see `sigma_is_variance`
    std::vector<std::int32_t> istat;
    std::vector<float> ycalc;
    std::vector<float> bgr;
    std::vector<std::int32_t> nd;  // number of detectors that contributed to the point
};

// Gives all seven arrays `n` zeros (default: `npts`), sets `npts` and the flags al_ and has_ of what was allocated.
// Fails with " Attempt to allocate Diffraction_Pattern with 0-dimension " when n < 1, changing nothing.
Status Allocate_Diffraction_Pattern(Diffraction_Pattern_Type& pattern, std::int32_t n);
Status Allocate_Diffraction_Pattern(Diffraction_Pattern_Type& pattern);

// Points at x or before it: the number of the last of them, 0 where all lie behind.
std::size_t Point_At(const Diffraction_Pattern_Type& pattern, float x);

// Every array in the opposite order.
void Turn_Round(Diffraction_Pattern_Type& pattern);

// Sets ymin and ymax to the extremes of the first `npts` values of y (NaN ignored); 0 and 0 without a number.
void Set_Y_Limits(Diffraction_Pattern_Type& pattern);

}  // namespace vntl
