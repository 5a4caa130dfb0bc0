#include "session/plot_grid.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>
#include <utility>

#include "calc/log_value.hpp"
#include "calc/smoothing.hpp"
#include "session/preferences.hpp"
#include "session/store.hpp"
#include "session/x_space.hpp"

namespace vntl {

namespace {

constexpr int fewest_patterns = 4, fewest_points = 10;

bool May_Be_A_Grid(X_Space xspace) {
    switch (xspace) {
        case X_Space::two_theta:
        case X_Space::tof:
        case X_Space::mono:
        case X_Space::distance:
        case X_Space::lambda:
            return true;
        default:
            return false;
    }
}

Status Check_Shared_X(const Profile_Store& store) {
    const int rows = store.nperfiles();
    for (int row = 2; row <= rows; ++row)
        if (store.Pattern(row).x.size() != store.Pattern(row - 1).x.size()) return Status::Fail("X Size mismatch data");
    const auto differs = [](const std::vector<float>& a, const std::vector<float>& b) {
        const bool same_bytes = !a.empty() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
        return !same_bytes && a != b;
    };
    for (int row = 2; row <= rows; ++row)
        if (differs(store.Pattern(row).x, store.Pattern(row - 1).x)) return Status::Fail("X-values of different patterns are not equal ");
    return Status::Done();
}

// In one direction from each row to the next.
bool Temperatures_Run(const Profile_Store& store) {
    const int rows = store.nperfiles();
    if (rows < 2) return false;
    const bool up = store.Pattern(2).TSample > store.Pattern(1).TSample;
    for (int row = 2; row <= rows; ++row) {
        const float before = store.Pattern(row - 1).TSample, here = store.Pattern(row).TSample;
        if (!(up ? here > before : here < before)) return false;
    }
    return true;
}

void Set_Axis_Of_Patterns(const Profile_Store& store, int first, PlotGrid& grid) {
    const bool temperatures = Temperatures_Run(store);
    grid.grid_y_label = temperatures ? "Temperature" : "Pattern";
    for (std::size_t k = 0; k < grid.grid_y.size(); ++k) {
        const int row = first + static_cast<int>(k);
        grid.grid_y[k] = temperatures ? store.Pattern(row).TSample : static_cast<float>(row);
    }
}

// One pattern's part of the grid: the told form of its intensities.
void Fill_Row(const float* y, std::size_t points, Intensities form, const Saturation& saturation, float* z) {
    if (form == Intensities::logarithms)
        std::transform(y, y + points, z, Log_Value);
    else
        std::copy(y, y + points, z);
    if (!saturation.saturation_on) return;
    const float most = saturation.saturation_value;
    for (std::size_t i = 0; i < points; ++i)
        if (z[i] > most) z[i] = most;
}

void Find_Range(PlotGrid& grid) {
    float lo = std::numeric_limits<float>::infinity(), hi = -lo;
    for (const float z : grid.grid_z) {
        if (!std::isfinite(z)) continue;
        lo = std::min(lo, z);
        hi = std::max(hi, z);
    }
    if (lo <= hi) grid.z_min = lo, grid.z_max = hi;
}

void Filter_Between_Gaps(std::span<float> z) {
    const auto finite = [](float v) { return std::isfinite(v); };
    for (auto from = z.begin(); from != z.end();) {
        from = std::find_if(from, z.end(), finite);
        const auto to = std::find_if_not(from, z.end(), finite);
        Five_Point_Filter({from, to});
        from = to;
    }
}

// Some columns at a time, as many as a line of the processor's cache holds of each pattern.
void Filter_Columns(PlotGrid& grid) {
    constexpr std::size_t at_a_time = 16;
    const std::size_t nx = grid.grid_x.size(), ny = grid.grid_y.size();
    std::vector<float> columns(at_a_time * ny);
    for (std::size_t first = 0; first < nx; first += at_a_time) {
        const std::size_t count = std::min(at_a_time, nx - first);
        for (std::size_t k = 0; k < ny; ++k)
            for (std::size_t i = 0; i < count; ++i) columns[i * ny + k] = grid.grid_z[k * nx + first + i];
        for (std::size_t i = 0; i < count; ++i) Filter_Between_Gaps(std::span(columns).subspan(i * ny, ny));
        for (std::size_t k = 0; k < ny; ++k)
            for (std::size_t i = 0; i < count; ++i) grid.grid_z[k * nx + first + i] = columns[i * ny + k];
    }
}

}  // namespace

Status Prepare_Multi_Data(const Profile_Store& store, X_Space xspace, float x1, float x2, int first, int last, Intensities form,
                          const Saturation& saturation, PlotGrid& grid) {
    if (!May_Be_A_Grid(xspace)) return Status::Fail("Graphic type not permitted in present xspace");
    if (const Status status = Check_Shared_X(store); status.failed) return status;
    first = std::max(first, 1);
    last = std::min(last, store.nperfiles());
    if (last - first + 1 < fewest_patterns) return Status::Fail("Data points along Y < 4");
    const std::vector<float>& x = store.Pattern(1).x;
    const auto begin = std::find_if(x.begin(), x.end(), [x1](float v) { return v > x1; });
    const auto end = std::find_if(x.rbegin(), x.rend(), [x2](float v) { return v < x2; }).base();
    if (end - begin < fewest_points) return Status::Fail("Data points along X < 10");

    PlotGrid fresh;
    const auto nx = static_cast<std::size_t>(end - begin), ny = static_cast<std::size_t>(last - first + 1);
    const auto from = static_cast<std::size_t>(begin - x.begin());
    fresh.grid_x.assign(begin, end);
    fresh.grid_y.resize(ny);
    fresh.grid_z.resize(nx * ny);
    Set_Axis_Of_Patterns(store, first, fresh);
    for (std::size_t k = 0; k < ny; ++k)
        Fill_Row(store.Pattern(first + static_cast<int>(k)).y.data() + from, nx, form, saturation, fresh.grid_z.data() + k * nx);
    Find_Range(fresh);
    grid = std::move(fresh);
    return Status::Done();
}

void Smooth_PlotGrid(PlotGrid& grid) {
    const std::size_t nx = grid.grid_x.size();
    for (std::size_t k = 0; k < grid.grid_y.size(); ++k) Filter_Between_Gaps(std::span(grid.grid_z).subspan(k * nx, nx));
    Filter_Columns(grid);
    Find_Range(grid);
    grid.smoothed = true;
}

int Nearest_Pattern(const PlotGrid& grid, int first, double y) {
    const auto nearest =
        std::min_element(grid.grid_y.begin(), grid.grid_y.end(), [y](float a, float b) { return std::fabs(a - y) < std::fabs(b - y); });
    return first + static_cast<int>(nearest - grid.grid_y.begin());
}

}  // namespace vntl
