// A fit from its starting values to its end, without any window: the observations, the runs of the solver, what came out.
#pragma once

#include <functional>
#include <memory>
#include <span>

#include "base/long_work.hpp"
#include "fit/fit_state.hpp"
#include "fit/least_squares.hpp"
#include "fit/peak_model.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

// A fit that is to run: it owns all that it needs, so that a thread of its own may run it.
struct Fit_Problem {
    Fit_Kind kind = Fit_Kind::constant_wavelength;
    Fit_State state;
    std::vector<Background_Mark> nodes;  // rising; the outer ones stand at the ends of the window
    LSQ_Data data;                       // the observations
};

// The points strictly inside the window. A point without a standard deviation counts with 10. Fails, naming what is wrong, without points,
// with values that are no numbers, and with nodes, peaks or flags that make no fit.
Status Make_Fit_Problem(Fit_Kind kind, const Fit_State& state, std::span<const Background_Mark> nodes,
                        const Diffraction_Pattern_Type& pattern, Fit_Problem& problem);

// The model of a problem, whose parameters `vs` holds. The problem's observations must outlive it.
std::unique_ptr<Peak_Model> Model_Of(const Fit_Problem& problem, const LSQ_State_Vector& vs);

inline constexpr int most_peaks_drawn_alone = 15;  // columns of their file fit a line

struct Fit_Iteration {
    int number = 0;         // of the evaluations that lowered chi-square
    float chi2 = 0;         // the lowest so far
    std::vector<float> yc;  // the calculated curve at the observations
};
using Tell_Iteration = std::function<void(Fit_Iteration)>;

struct Fit_Result {
    LSQ_Conditions c;
    LSQ_State_Vector vs;
    LSQ_Run run;
    std::vector<float> fwhm, eta;            // of the active peaks
    std::vector<std::vector<float>> shares;  // of each active peak at the observations, without background; where the state wants them
};

// Runs the solver once from the values of the problem. Ends between iterations when `control` is cancelled, with the best values.
// Afterwards the problem's state, nodes and data hold what was found: a further run goes on from there.
Fit_Result Run_Fit(Fit_Problem& problem, Work_Control& control, const Tell_Iteration& tell = {});

}  // namespace vntl
