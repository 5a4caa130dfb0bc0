// How far apart readers see two colours: CIEDE2000, for usual sight and for those who lack one kind of cones.
//
// All of it is written for the tests alone, from the publications: CIEDE2000 by Sharma, Wu and Dalal (2005), lack of cones by Machado,
// Oliveira and Fernandes (2009), matrices of severity 1, in linear light.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string_view>

#include "base/colour.hpp"

namespace vntl::test {

using Triple = std::array<double, 3>;

struct Sight {
    std::string_view name;
    std::array<Triple, 3> matrix;
};

inline constexpr std::array<Sight, 4> sights = {{
    {"usual", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
    {"protan", {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}}},
    {"deutan", {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}}},
    {"tritan", {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}},
}};

inline Triple Times(const std::array<Triple, 3>& matrix, const Triple& v) {
    Triple product{};
    for (std::size_t i = 0; i < 3; ++i) product[i] = matrix[i][0] * v[0] + matrix[i][1] * v[1] + matrix[i][2] * v[2];
    return product;
}

// CIELAB under D65.
inline Triple Lab(Colour colour, const Sight& sight = sights[0]) {
    const auto linear = [](unsigned part) { return part <= 10 ? part / 3294.6 : std::pow((part / 255.0 + 0.055) / 1.055, 2.4); };
    Triple seen = Times(sight.matrix, {linear(Red(colour)), linear(Green(colour)), linear(Blue(colour))});
    for (double& part : seen) part = std::clamp(part, 0.0, 1.0);
    const Triple xyz =
        Times({{{0.4124564, 0.3575761, 0.1804375}, {0.2126729, 0.7151522, 0.0721750}, {0.0193339, 0.1191920, 0.9503041}}}, seen);
    const auto f = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116; };
    const double x = f(xyz[0] / 0.95047), y = f(xyz[1]), z = f(xyz[2] / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

inline double Difference(const Triple& p, const Triple& q) {
    constexpr double degree = std::numbers::pi / 180;
    const auto seventh = [](double c) { return std::sqrt(std::pow(c, 7) / (std::pow(c, 7) + std::pow(25.0, 7))); };
    const auto hue = [](double a, double b) { return a == 0 && b == 0 ? 0.0 : std::fmod(std::atan2(b, a) / degree + 360, 360); };
    const double stretch = 1.5 - 0.5 * seventh(0.5 * (std::hypot(p[1], p[2]) + std::hypot(q[1], q[2])));
    const double c1 = std::hypot(stretch * p[1], p[2]), c2 = std::hypot(stretch * q[1], q[2]);
    const double h1 = hue(stretch * p[1], p[2]), h2 = hue(stretch * q[1], q[2]);
    const bool grey = c1 * c2 == 0, around = std::fabs(h1 - h2) > 180;
    const double turn = grey ? 0 : h2 - h1 - (around ? std::copysign(360, h2 - h1) : 0);
    const double middle = grey ? h1 + h2 : !around ? 0.5 * (h1 + h2) : 0.5 * (h1 + h2) + (h1 + h2 < 360 ? 180 : -180);
    const double lightness = 0.5 * (p[0] + q[0]), chroma = 0.5 * (c1 + c2);
    const double t = 1 - 0.17 * std::cos(degree * (middle - 30)) + 0.24 * std::cos(degree * 2 * middle) +
                     0.32 * std::cos(degree * (3 * middle + 6)) - 0.20 * std::cos(degree * (4 * middle - 63));
    const double off = (lightness - 50) * (lightness - 50);
    const double dl = (q[0] - p[0]) / (1 + 0.015 * off / std::sqrt(20 + off)), dc = (c2 - c1) / (1 + 0.045 * chroma);
    const double dh = 2 * std::sqrt(c1 * c2) * std::sin(0.5 * degree * turn) / (1 + 0.015 * chroma * t);
    const double rotation = 60 * std::exp(-std::pow((middle - 275) / 25, 2));
    return std::sqrt(dl * dl + dc * dc + dh * dh - 2 * seventh(chroma) * std::sin(degree * rotation) * dc * dh);
}

// The least of all readers.
inline double Difference_For_All(Colour a, Colour b) {
    double least = 1000;
    for (const Sight& sight : sights) least = std::min(least, Difference(Lab(a, sight), Lab(b, sight)));
    return least;
}

}  // namespace vntl::test
