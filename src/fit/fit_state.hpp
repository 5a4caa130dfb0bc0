// The state of a fit of single peaks over a background, with no model of a structure: what is known of the peaks, what is refined, and what
// the last fit found. It stays between fits, so that one starts where the last one ended.
#pragma once

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "patterns/listed_points.hpp"

namespace vntl {

inline constexpr int max_fit_peaks = 400, max_fit_nodes = 120;

// Which peak shape describes the pattern.
enum class Fit_Kind { constant_wavelength, time_of_flight };

// A value that a fit may refine.
struct Fit_Value {
    float value = 0;
    int flag = 0;  // 1 refined, 0 fixed
    float sd = 0;  // standard deviation from the last fit; 0 of a fixed value

    bool operator==(const Fit_Value&) const = default;
};

// x in the units of the pattern, degrees of 2theta or microseconds.
struct Fit_Peak {
    Fit_Value pos;
    Fit_Value intensity;     // integrated; of an estimated peak the height, until the starting values are accepted
    bool is_height = false;  // the intensity is a height still
    float top = 0;           // y of the mark on the plot
    bool marked = false;     // the estimate has found its width: half_x, half_y is its point at half height (half_x 0: not drawn)
    float half_x = 0, half_y = 0;
    Fit_Value shift_width;              // Shift-FWHM, or Shift-sigma: what the width, or sigma^2, of this peak has beyond the common law
    Fit_Value shift_alpha, shift_beta;  // time of flight
    Fit_Value shift_eta;
    bool active = true;  // takes part in the fit

    bool Has_Half_Width() const { return marked && half_x != 0; }

    bool operator==(const Fit_Peak&) const = default;
};

// What is written beside the listing and the peaks.
enum class Fit_Output { none, irf, ipc };

// Numbers of the state's `prof`.
enum CW_Profile { prof_u, prof_v, prof_w, prof_z, prof_eta0, prof_x };
enum TOF_Profile { prof_alpha, prof_beta, prof_sig2, prof_sig1, prof_sig0, prof_eta };

struct Fit_State {
    // The window: its ends are points on the background.
    bool lower_set = false, upper_set = false;
    float x_ini = 0, y_ini = 0, x_fin = 0, y_fin = 0;

    int Ncyc = 100;                  // most evaluations of the model
    float lambda1 = 0, lambda2 = 0;  // angstrom
    Fit_Value ratio;                 // intensity of the second wavelength to that of the first
    float d2tof = 0;                 // microseconds an angstrom
    std::array<Fit_Value, 2> asym;   // S_L, D_L
    std::array<Fit_Value, 6> prof;   // see CW_Profile and TOF_Profile
    std::vector<Fit_Peak> peaks;     // at most max_fit_peaks

    // Kept for files.
    int iw = 0;           // weighting scheme
    bool constr = false;  // box constraints asked for
    float percent = 0;    // largest change of a parameter
    int corrmax = 70;     // percent, from which on the listing names a correlation

    // Of the last fit.
    bool reached = false;  // it has converged
    float chi2 = 0;        // reduced
    std::string infout;    // how it ended

    bool peaks_ready = false;    // the peaks come from a search, and no fit has seen them
    bool pik_loaded = false;     // the list of peaks is built
    bool nodes_given = false;    // the nodes come from a file: they are not built from the peaks
    bool done = false;           // a fit has run to its end: no marks
    bool range_pending = false;  // the window is to be chosen anew

    // Chosen in the dialog of starting values.
    Fit_Output output = Fit_Output::none;
    bool plot_individual = false, save_calculated = false;

    // Two wavelengths are one when they differ by less than a file can say.
    bool Two_Wavelengths() const { return std::fabs(lambda2 - lambda1) >= 1e-6f; }
    float lambda_ratio() const { return Two_Wavelengths() && lambda1 != 0 ? lambda2 / lambda1 : 1.0f; }

    bool operator==(const Fit_State&) const = default;
};

// The values of a peak in the order of its flags: position, intensity, shift of the width, (of alpha, of beta,) of eta.
std::vector<Fit_Value*> Values_Of(Fit_Kind kind, Fit_Peak& peak);
std::vector<const Fit_Value*> Values_Of(Fit_Kind kind, const Fit_Peak& peak);

int Active_Peaks(const Fit_State& state);

}  // namespace vntl
