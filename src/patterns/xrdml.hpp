// XRDML, a laboratory diffractometer's XML. It is not parsed: tags are sought as plain text, outside comments.
//
//   <xrdMeasurement measurementType="Scan" status="Completed">
//    <usedWavelength intended="K-Alpha 1">
//     <kAlpha1 unit="Angstrom">1.5405980</kAlpha1>                      conv(1)
//     <kAlpha2 unit="Angstrom">1.5444260</kAlpha2>                      conv(2)
//     <kBeta unit="Angstrom">1.3922500</kBeta>                          conv(4)
//     <ratioKAlpha2KAlpha1>0.5000</ratioKAlpha2KAlpha1>                 conv(3)
//    </usedWavelength>
//    <scan><dataPoints>
//     <positions axis="2Theta" unit="deg">
//      <startPosition>5.0100</startPosition>                            xmin
//      <endPosition>89.9900</endPosition>                               xmax
//     </positions>
//     <intensities unit="counts">8 11 6 10 ...</intensities>            or <counts unit="counts"> ... </counts>
//    </dataPoints></scan>
//   </xrdMeasurement>                                                   nothing behind the first one is read
//
// The first list gives the number of points and with it the step; y is the sum of the lists of all scans, point by point. Lists of
// <intensities> are the scans, those of <counts> where the file has none of the former.
//
// Beyond that, for what newer files hold:
//   - tags may have a namespace prefix and their attributes any order and either quote; a list may be as long as it likes, on one line or
//     on several, and hold numbers that are not whole;
//   - <beamAttenuationFactors> beside a list of <counts>, a factor f for each point or one for all, multiply it: f n counts, with variance
//     f^2 n; <intensities> have theirs applied already;
//   - <listPositions> of the axis give x point by point, the step is then their mean distance and not constant;
//   - start and end are those of the first scan; a scan that states others, or the same for another number of points, is left out of
//     the sum;
//   - the axis is the one that moves: the scan's scanAxis where that names one, else 2Theta, else the first. A scan of Phi, Omega or
//   another
//     angle, in which 2Theta has a <commonPosition>, is a pattern over that angle, and the other axes must stand alike in all scans of
//     the sum.
#pragma once

#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

bool Is_Xrdml(std::string_view text);

// Reads every pattern of a file.
Status Read_Xrdml_Scans(std::string_view text, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

// Reads the text of a file into a fresh pattern.
Status Read_Xrdml(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
