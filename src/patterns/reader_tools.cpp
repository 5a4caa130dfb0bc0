#include "patterns/reader_tools.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/huge_pages.hpp"
#include "base/text.hpp"

namespace vntl {

std::size_t Most_Points(std::size_t bytes) {
    constexpr std::size_t zero_fill = 32768;  // arrays of them take a megabyte
    return zero_fill + bytes / 2;
}

Status Allocate_Told(Diffraction_Pattern_Type& pattern, double npts, std::size_t bytes, std::string_view message) {
    if (!(npts >= 1) || npts > static_cast<double>(Most_Points(bytes)) || npts > most_claimed) return Status::Fail(message);
    return Allocate_Diffraction_Pattern(pattern, static_cast<std::int32_t>(npts));
}

Status Allocate_Measured(Diffraction_Pattern_Type& p, std::size_t n) {
    if (n < 1 || static_cast<double>(n) > most_claimed) return Status::Fail(no_points_told);
    p.npts = static_cast<std::int32_t>(n);
    for (auto* reals : {&p.x, &p.y, &p.sigma}) Assign_Many(*reals, n, 0.0f);
    p.has_y = p.has_sigma = true;
    p.al_x = p.al_y = p.al_sigma = true;
    return Status::Done();
}

void Set_Grid(Diffraction_Pattern_Type& p) {
    const float xmin = p.xmin, step = p.step;
    float* const x = p.x.data();
    const auto n = static_cast<std::int32_t>(p.x.size());
    for (std::int32_t i = 0; i < n; ++i) x[i] = xmin + static_cast<float>(i) * step;
}

void Set_Grid_End(Diffraction_Pattern_Type& p) { p.xmax = static_cast<float>(p.npts - 1) * p.step + p.xmin; }

void Set_Count_Variances(Diffraction_Pattern_Type& p) {
    for (std::size_t i = 0; i < p.y.size(); ++i) p.sigma[i] = std::fabs(p.y[i]);
}

void Keep_Points(Diffraction_Pattern_Type& p, int n) {
    p.npts = n;
    const auto size = static_cast<std::size_t>(n);
    for (auto* reals : {&p.x, &p.y, &p.sigma, &p.ycalc, &p.bgr}) reals->resize(size);
    for (auto* integers : {&p.istat, &p.nd}) integers->resize(size);
}

std::string Numbered(const std::string& title, std::size_t number) {
    const std::string words = "range " + std::to_string(number);
    return title.empty() ? words : std::string(Cut(title, title_width - words.size() - 2)) + ", " + words;
}

void End_At_Last_Number(Diffraction_Pattern_Type& p, std::size_t n, double claimed) {
    if (static_cast<double>(n) < claimed) p.npts_claimed = static_cast<std::int32_t>(std::min(claimed, most_claimed));
    if (n == p.y.size()) return;
    Keep_Points(p, static_cast<int>(n));
    for (auto* reals : {&p.x, &p.y, &p.sigma, &p.ycalc, &p.bgr}) reals->shrink_to_fit();
    for (auto* integers : {&p.istat, &p.nd}) integers->shrink_to_fit();
}

}  // namespace vntl
