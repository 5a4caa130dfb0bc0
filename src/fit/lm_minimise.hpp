// The minimiser of the least squares: steps of Levenberg and Marquardt inside a trust region.
#pragma once

#include "fit/normal_equations.hpp"

namespace vntl {

// How the minimisation ended.
enum class LM_End {
    stopped = 0,     // the model or the user ended it, or there was nothing to go by: no calls allowed, residuals or derivatives not finite
    small_gain = 1,  // the sum of squares changes by less than the tolerance
    small_step = 2,  // the variables do
    both = 3,
    orthogonal = 4,  // the residuals are orthogonal to all columns, to machine precision
    calls = 5,       // as many calls of the model as allowed
    no_gain = 6,     // the tolerance is too small: no further gain is possible
    no_step = 7      // or no further step
};

struct LM_Minimum {
    LM_End end = LM_End::stopped;
    Square_Matrix curvature;  // J'J where the derivatives were taken last; empty when they never were
    int nfev = 0, njev = 0;
};

// From `x`, whose residuals are in `fvec`, to the minimum. At the end both are those of the best values.
LM_Minimum LM_Minimise(const LSQ_Model& model, std::vector<float>& x, std::vector<float>& fvec, const LSQ_Conditions& c,
                       const Work_Control* stop);

}  // namespace vntl
