// Rows of reflection ticks under a refined profile, one a phase, in a band between the data and the difference curve.
//
// With m phases the band is divided into 8 m + 20 units: the first tick starts 10 units under the top of the band, a tick is 7 units
// long and rows are 8 units apart, which leaves 11 units above the foot of the band.
#pragma once

namespace vntl {

struct Bragg_Row {
    float top, bottom;  // ends of a tick, measured from the foot of the band
};

inline Bragg_Row Bragg_Row_Of(float band, int phases, int phase) {
    const float unit = band / static_cast<float>(8 * phases + 20);
    const float start = static_cast<float>(8 * (phase - 1) + 10);
    return {band - start * unit, band - (start + 7) * unit};
}

}  // namespace vntl
