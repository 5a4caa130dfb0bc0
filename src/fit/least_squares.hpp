// Nonlinear least squares: a caller gives a model, its parameters and the conditions of the run, and gets the parameters back with
// their standard deviations, the reduced chi-square, and a text that says how the run ended. Nothing here knows of diffraction.
//
// Observations weigh 1/sigma^2, so the standard deviations are those of the weights: they are not multiplied by the root of chi-square.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "base/long_work.hpp"
#include "base/status.hpp"

namespace vntl {

inline constexpr int max_lsq_parameters = 3000;

struct LSQ_Conditions {
    bool constr = false;   // box constraints asked for; kept for files, not used
    bool reached = false;  // out: the run ended by a convergence criterion
    int corrmax = 70;      // percent, from which on the listing names a correlation
    int nfev = 0;          // out: calls of the model with residuals
    int njev = 0;          // out: calls of the model with derivatives
    int icyc = 0;          // most calls of the model with residuals
    int npvar = 0;         // free parameters
    int iw = 0;            // weighting scheme; kept for files
    int nprint = 0;        // the model is called with a print request every so many iterations; 0 never
    float tol = 1e-5f;     // of the sum of squares and of the parameters
    float percent = 0;     // largest change of a parameter; kept for files
};

struct LSQ_Parameter {
    std::string nampar;
    float pv = 0;   // value
    float spv = 0;  // out: standard deviation, 0 of a fixed parameter
    float mul = 1;  // its change is this times the change of its free variable
    float dpv = 0;  // derivative of the model by it, for the model's own use
    int code = 0;   // 0 fixed; otherwise free, or the number of its free variable, from 1
};

struct LSQ_State_Vector {
    bool code_given = false;  // codes are numbers of free variables, which several parameters may share
    std::vector<LSQ_Parameter> parameters;

    int np() const { return static_cast<int>(parameters.size()); }
};

int Free_Parameters(const LSQ_State_Vector& vs);
std::vector<float> Values_Of(const LSQ_State_Vector& vs);

// Derivatives of the residuals, a column a free variable, each of `rows` floats one behind the other.
class Jacobian {
public:
    Jacobian(int rows, int columns) : rows_(static_cast<std::size_t>(rows)), values_(rows_ * static_cast<std::size_t>(columns)) {}

    std::span<float> Column(int k) { return std::span(values_).subspan(static_cast<std::size_t>(k) * rows_, rows_); }
    std::span<const float> Column(int k) const { return std::span(values_).subspan(static_cast<std::size_t>(k) * rows_, rows_); }

private:
    std::size_t rows_;
    std::vector<float> values_;
};

// What the solver asks of the model at the values `x` of the free variables. A negative answer ends the run.
enum class Model_Call { print = 0, residuals = 1, derivatives = 2 };

// residuals: fvec = (observed - calculated)/sigma. derivatives: fjac = d fvec/d x, every element; fvec is that of the same x.
using LSQ_Model = std::function<int(Model_Call, std::span<const float> x, std::span<float> fvec, Jacobian& fjac)>;

// What a run found beside the parameters.
struct LSQ_Run {
    float chi2 = 1e35f;      // sum of squares / max(1, m - n); at 1e30 and more the norm itself
    std::string infout;      // how it ended
    bool lsq_error = false;  // the final matrix is singular: there are no standard deviations
    std::string lsq_message;
    std::vector<std::string> names;  // of the free variables
    std::vector<double> inverse;     // of the normalised curvature, names.size() squared; empty when singular
    std::vector<float> residuals;    // of the last call
};

// Minimises the sum of squared residuals of `m` observations by the algorithm of Levenberg and Marquardt in the form of J. J. More
// (Lecture Notes in Mathematics 630, 1978, 105-116): scaled by the largest column norms seen, the step bounded. Values, residuals and
// derivatives are in single precision, whose precision (1.19e-7) the tests of convergence know. Sums over observations are taken in
// double precision, where a product of two singles is exact, and in one order whatever the number of threads.
//
// `stop` ends the run between iterations with the best values. npvar must be the number of free variables.
LSQ_Run LM_Der(const LSQ_Model& model, int m, LSQ_Conditions& c, LSQ_State_Vector& vs, const Work_Control* stop = nullptr);

struct LSQ_Data {
    std::vector<float> x, y, sw, yc, bgr;  // abscissa, observed, sigma, calculated, background

    int nobs() const { return static_cast<int>(x.size()); }
};

std::vector<float> Weights_Of(const LSQ_Data& data);  // 1/sigma^2

// In percent: sums of |y - yc| to y, and roots of the sums of w (y - yc)^2 to y and of nobs - npvar to y, which counting alone would
// leave. 0 where there is nothing to compare with.
struct Agreement_Factors {
    float rfact = 0, rwfact = 0, rex = 0;
};
Agreement_Factors Agreement_Of(const LSQ_Data& data, std::span<const float> w, int npvar);

// The final listing: agreement factors, correlations above `corrmax`, parameters with their standard deviations. `w` are the weights.
std::string Info_LSQ_Output(float f_lambda, const LSQ_Data& data, std::span<const float> w, const LSQ_Conditions& c,
                            const LSQ_State_Vector& vs, const LSQ_Run& run);

// x, observed, calculated and sigma of each observation, a line each below a heading.
std::string Fit_File_Text(const LSQ_Data& data, std::span<const float> w);

}  // namespace vntl
