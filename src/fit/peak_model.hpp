// The calculated curve of a fit: single peaks on a background of straight lines between nodes.
#pragma once

#include <memory>
#include <span>

#include "fit/state_vector.hpp"

namespace vntl {

// What of the state is no parameter.
struct Fit_Constants {
    std::vector<float> node_x = {};  // positions of the background nodes, at least one
    bool two_wavelengths = false;    // constant wavelength
    float lambda_ratio = 1;          // lambda 2 / lambda 1
    float d2tof = 0;                 // time of flight
};

// A model knows the parameters of one fit, numbered as in State_Vector, and the points at which it is asked, which rise. It keeps what
// it need not compute again while parameters stay. The same values come out whatever the number of threads.
class Peak_Model {
public:
    virtual ~Peak_Model() = default;

    // y of the points, and of the background alone, at the parameters' values `pv`.
    virtual void Values(std::span<const float> pv, std::span<float> y, std::span<float> bgr) = 0;

    // column[j] = weight[j] * dy/dp of point j for the parameter p of each column; every element of the columns is written.
    // `parameters[k]` is the number of the parameter of column k. `y` and `bgr` are not wanted: they are those of Values at the same pv.
    virtual void Derivatives(std::span<const float> pv, std::span<const int> parameters, std::span<const float> weight,
                             Jacobian& columns) = 0;

    // Adds the share of active peak `peak`, from 0, to y.
    virtual void Add_Peak(std::span<const float> pv, int peak, std::span<float> y) = 0;

    // Width (full width at half maximum) and mixing of an active peak at pv; for constant wavelength those of the first wavelength.
    struct Width {
        float fwhm = 0, eta = 0;
    };
    virtual Width Width_Of(std::span<const float> pv, int peak) const = 0;
};

// `x` must outlive the model. `vs` tells which parameters are free and how many peaks there are.
std::unique_ptr<Peak_Model> Constant_Wavelength_Model(const Fit_Constants& constants, const LSQ_State_Vector& vs, std::span<const float> x);
std::unique_ptr<Peak_Model> Time_Of_Flight_Model(const Fit_Constants& constants, const LSQ_State_Vector& vs, std::span<const float> x);

}  // namespace vntl
