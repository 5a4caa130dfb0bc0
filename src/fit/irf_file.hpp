// IRF files: the resolution of an instrument.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/status.hpp"
#include "fit/fit_state.hpp"

namespace vntl {

// What the file gives; what it does not give is empty.
struct Irf_File {
    std::string title;
    int ireso = 0;  // kind of resolution
    std::optional<int> jobt;
    std::optional<int> profile;  // number of the shape, with `profile_values`
    std::array<float, 3> profile_values{};
    std::optional<std::array<float, 3>> range, wavelengths, sigma, gamma;
    std::optional<int> geometry;
    float geometry_value = 0;
    std::optional<float> cthm, rkk, twoth;
    std::optional<std::array<float, 2>> asym;
    std::optional<float> d2tof;
    std::optional<std::array<float, 4>> d2tot, alfbe, alfbt;
    std::vector<std::array<float, 6>> profile_rows;  // U, V, W, X, Eta0, Z; two at most
    std::vector<std::array<float, 3>> table;         // position and two widths
    int table_length = 0;                            // that the file claims
};

Status Read_Irf_File(const std::string& name, Irf_File& irf);
bool Read_Irf_Text(std::string_view text, Irf_File& irf);  // false without a first line

// What the file gave goes to the parameters of the model.
void Apply_Irf(const Irf_File& irf, Fit_Kind kind, Fit_State& state);

// A peak of full width H and mixing eta as a Gaussian and a Lorentzian convoluted: their widths (P. Thompson, D. E. Cox and J. B.
// Hastings, J. Appl. Cryst. 20, 1987, 79-83).
struct Width_Parts {
    float gaussian, lorentzian;
};
std::optional<Width_Parts> Split_Width(float fwhm, float eta);  // nothing for H < 1e-6, eta > 1 or < 1e-6

// The text that a fit adds to its resolution file: a line a peak; in front of a new file its heading.
std::string Irf_Text(const Fit_State& fitted, std::span<const float> fwhm, std::span<const float> eta, bool new_file);

}  // namespace vntl
