// One model fitted to many patterns, each as Run_Fit fits one, without any window.
#pragma once

#include <optional>
#include <span>

#include "base/ask.hpp"
#include "fit/run_fit.hpp"
#include "fit/series_table.hpp"

namespace vntl {

struct Series_Model {
    Fit_Kind kind = Fit_Kind::constant_wavelength;
    Fit_State state;
    std::vector<Background_Mark> nodes;
};

// From which values a fit starts: from what the last fit that succeeded has found, or from those of the model.
enum class Series_Start { result_before, model };

struct Series_Row {
    int row = 0;
    std::string file;
    const Diffraction_Pattern_Type* pattern = nullptr;  // stays as it is while the series runs
    std::optional<Fit_Kind> kind;                       // that x of the pattern allows
};

struct Series_Failure {
    int row = 0;
    std::string file, why;
};

struct Series_Result {
    Series_Table table;
    std::vector<Series_Failure> failures;  // rows that have no line in the table
    int not_tried = 0;                     // rows that the user's cancelling left out
};

// Each fit runs in a thread of its own, while this thread waits through `progress`; with starting values that do not depend on each other
// at most `at_once` of them run at a time. A fit that has not converged is in the table and says so. A row fails when it makes no fit, when
// its chi-square or a parameter is no number, and when what was found would not make a fit: a peak outside of the window or without width.
// Cancelled, it ends between iterations; the rows finished by then stay.
Series_Result Fit_Series(const Series_Model& model, std::span<const Series_Row> rows, Series_Start start, int at_once, Progress& progress);

}  // namespace vntl
