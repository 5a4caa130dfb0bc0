// The parameters of a fit as one vector: common ones first, then the heights of the background nodes, then a block a peak.
//
//   constant wavelength: ratio, S_L, D_L, U, V, W, Z, Eta0, X
//   time of flight:      Global-Alpha, Global-Beta, Sig-2, Sig-1, Sig-0, Global-Eta
#pragma once

#include <span>
#include <vector>

#include "fit/fit_state.hpp"
#include "fit/least_squares.hpp"

namespace vntl {

// Numbers of the parameters, from 0.
struct Parameter_Layout {
    int common;     // of the common parameters; the first node is the next one
    int nodes;      // of the background
    int of_a_peak;  // position, intensity, shifts
    int peaks;      // active ones

    int Node(int i) const { return common + i; }
    int Peak(int i) const { return common + nodes + i * of_a_peak; }  // its position; the others of the peak follow
    int np() const { return Peak(peaks); }
};
Parameter_Layout Layout_Of(Fit_Kind kind, int nodes, int active_peaks);

// Active peaks alone enter. The codes say free or fixed.
LSQ_State_Vector State_Vector(Fit_Kind kind, const Fit_State& state, std::span<const Background_Mark> nodes);

// Values and standard deviations back to where they came from; the y of the window's ends are those of the outer nodes.
void Take_Parameters(const LSQ_State_Vector& vs, Fit_Kind kind, Fit_State& state, std::span<Background_Mark> nodes);

}  // namespace vntl
