// A session full of rows with the noise of counting, for benchmarks of whole plots.
#pragma once

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <utility>

#include "session/ranges.hpp"
#include "session/session.hpp"

namespace vntl {

// Peaks at random places on a falling background, other ones in each row.
inline Diffraction_Pattern_Type Synthetic_Pattern(int row, int points, int peaks) {
    Diffraction_Pattern_Type p;
    p.npts = points;
    p.scat_var = "2theta";
    constexpr float first = 5, last = 120, width = 0.08f;
    std::mt19937 random(static_cast<unsigned>(row));
    for (int i = 0; i < points; ++i) p.x.push_back(first + (last - first) * static_cast<float>(i) / static_cast<float>(points - 1));
    for (const float x : p.x) p.y.push_back(100 + 200 * std::exp(-x / 40));
    for (int peak = 0; peak < peaks; ++peak) {
        const float at = std::uniform_real_distribution<float>(first, last)(random);
        const float top = std::exponential_distribution<float>(1 / 1500.0f)(random);
        for (std::size_t i = 0; i < p.x.size(); ++i) p.y[i] += top / (1 + (p.x[i] - at) * (p.x[i] - at) / (width * width));
    }
    std::normal_distribution<float> noise;
    for (float& y : p.y) y = std::max(0.0f, std::round(y + std::sqrt(y) * noise(random)));
    p.xmin = p.x.front();
    p.xmax = p.x.back();
    Set_Y_Limits(p);
    return p;
}

inline void Fill_Store(Session& session, int rows, int points, int peaks) {
    Set_Default_Preferences(session.prefs);
    for (int row = 1; row <= rows; ++row) {
        PRF_Info_Add_Type info;
        info.kind = Row_Kind::data;
        info.file_name = "pattern_" + std::to_string(row) + ".dat";
        session.store.Append(Synthetic_Pattern(row, points, peaks), std::move(info));
    }
    Plot_Ranges(session);
}

}  // namespace vntl
