// What the ways from runs to a pattern share.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "instrument/numors_to_pattern.hpp"

namespace vntl {

using Active_Runs = std::vector<const Powder_Numor_Type*>;  // in the order of the list

// The runs that are flagged; " Number of Numors in the List was zero!", " Number of active Numors in the List was zero!".
Status Find_Active(std::span<const Powder_Numor_Type> numors, const std::vector<bool>& active, Active_Runs& runs);

// Wavelengths that differ by more than 0.1 angstroms from that of the first run.
Status Check_Wavelengths(const Active_Runs& runs);

// Each run has `nbdata` counts in each of its frames.
Status Check_Shapes(const Active_Runs& runs);

std::string Run_Name(const Powder_Numor_Type& numor);  // "Numor 123456"

// The decimal that a file told, where the float beside it is `value`: thousandths of a degree and the like add up without drift then.
double Told_Decimal(float value);

// A factor that counts by monitor `monitor` are multiplied with, or none where the monitor counted nothing.
std::optional<double> Monitor_Factor(double wanted, double monitor);

// Texts of the pattern, wavelength, and temperatures of a run.
void Fill_Head(const Powder_Numor_Type& numor, Diffraction_Pattern_Type& pattern);

// A pattern without points, whose range is no fault of its own.
void Leave_Without_Points(double xmin, double xmax, Diffraction_Pattern_Type& pattern);

// Points from xmin to xmax: nint((xmax - xmin) / step) + 1 of them. Fails for more than most_converted_points.
Status Points_Of_Range(double xmin, double xmax, double step, std::size_t& points);

// The calibration is made for the instrument (one of R3A, R5B, R8, R22), and its arrays have the sizes that it tells.
Status Check_Calibration(const Calibration_Detector_Type& cal, std::string_view instrument);
Status Other_Size(const Calibration_Detector_Type& cal, std::size_t cells, const Powder_Numor_Type& numor);

// Sums of what the cells tell of each point of an even grid; the mean is the pattern.
struct Mean_Sums {
    double xmin = 0, step = 0;
    std::vector<double> y, variance;
    std::vector<std::int32_t> cells;

    double X(std::size_t i) const { return xmin + static_cast<double>(i) * step; }
};
Status Take_Mean(const Mean_Sums& sums, double xmax, Diffraction_Pattern_Type& pattern);

// Points of the grid from `low` to `high`, `first` up to but not with `behind`. Points that meet an end but for rounding are among them.
struct Grid_Part {
    std::size_t first = 0, behind = 0;
};
Grid_Part Points_Between(const Mean_Sums& sums, double low, double high);

// What OpenMP is asked for: `wanted`, or as many as it chooses for 0; one for little work.
int Threads_For(int wanted, std::size_t work);

// Calls `add` for parts of the points that make up all of them. Each thread has points of its own, so that each sum is made in one order.
template <class Add>
void For_Parts(std::size_t points, [[maybe_unused]] int threads, Add add) {
    const std::size_t parts = threads > 1 ? static_cast<std::size_t>(threads) * 4 : 1;
#ifdef _OPENMP
#pragma omp parallel for num_threads(threads) schedule(dynamic)
#endif
    for (std::ptrdiff_t part = 0; part < static_cast<std::ptrdiff_t>(parts); ++part) {
        const auto number = static_cast<std::size_t>(part);
        add(Grid_Part{points * number / parts, points * (number + 1) / parts});
    }
}

}  // namespace vntl
