// The logarithmic form of an intensity.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <span>
#include <vector>

namespace vntl {

// Counts below one, and what background subtraction leaves below zero, lie on the axis. The logarithm is that of the Cephes library
// (Moshier 1989), good to the last bit or two of single precision: without a call the compiler takes several values at a time, 1.4 ns each
// where std::log takes 3.7. What is no
// number stays none.
inline float Log_Value(float y) {
    constexpr float ln2_high = 0.693359375f, ln2_low = -2.12194440e-4f;
    constexpr std::int32_t one = 0x3f800000, half_root2 = 0x3f3504f3;  // bits of 1 and of the root of 1/2; bits rise as numbers do
    const std::int32_t above = std::max(std::bit_cast<std::int32_t>(y), one) - half_root2;
    const auto exponent = static_cast<float>(above >> 23);
    const float f = std::bit_cast<float>((above & 0x007fffff) + half_root2) - 1.0f, f2 = f * f;  // root 1/2 <= f + 1 < root 2
    float sum = 7.0376836292e-2f * f - 1.1514610310e-1f;
    sum = (sum * f + 1.1676998740e-1f) * f - 1.2420140846e-1f;
    sum = (sum * f + 1.4249322787e-1f) * f - 1.6668057665e-1f;
    sum = (sum * f + 2.0000714765e-1f) * f - 2.4999993993e-1f;
    sum = sum * f + 3.3333331174e-1f;
    return f + (sum * f * f2 + ln2_low * exponent - 0.5f * f2) + ln2_high * exponent + (y - y);
}

inline std::vector<float> Log_Copy(std::span<const float> y) {
    std::vector<float> copy(y.size());
    for (std::size_t i = 0; i < y.size(); ++i) copy[i] = Log_Value(y[i]);
    return copy;
}

}  // namespace vntl
