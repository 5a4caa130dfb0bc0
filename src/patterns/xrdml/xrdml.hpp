// XRDML, a laboratory diffractometer's XML, of its versions 1.0 to 2.2. It is not parsed: tags are sought one after the other, outside
// comments.
//
//   <sample type="To be analyzed"><id>B1</id><name>Corundum</name></sample>                   title: the name, or else the id
//   <xrdMeasurement measurementType="Scan" status="Completed">
//    <usedWavelength intended="K-Alpha 1">
//     <kAlpha1 unit="Angstrom">1.5405980</kAlpha1>                                            conv(1)
//     <kAlpha2 unit="Angstrom">1.5444260</kAlpha2>                                            conv(2)
//     <kBeta unit="Angstrom">1.3922500</kBeta>                                                conv(4)
//     <ratioKAlpha2KAlpha1>0.5000</ratioKAlpha2KAlpha1>                                       conv(3)
//    </usedWavelength>
//    <incidentBeamPath> ... </incidentBeamPath><diffractedBeamPath> ... </diffractedBeamPath> facts
//    <scan scanAxis="Gonio" status="Completed"><dataPoints>
//     <positions axis="2Theta" unit="deg">                                                    and one for each other axis
//      <startPosition>5.0100</startPosition>                                                  xmin
//      <endPosition>89.9900</endPosition>                                                     xmax
//     </positions>                                          or <listPositions>, or <commonPosition> of an axis that stood
//     <commonCountingTime unit="seconds">10.00</commonCountingTime>                           seconds a step, or a list <countingTimes>
//     <beamAttenuationFactors>182 182 1 1 ...</beamAttenuationFactors>                        or <commonBeamAttenuationFactor>
//     <intensities unit="counts">8 11 6 10 ...</intensities>                                  or <counts unit="counts">; "cps" are rates
//    </dataPoints></scan>
//   </xrdMeasurement>
//
// Tags may have a namespace prefix and their attributes any order and either quote; a list may be as long as it likes, on one line or on
// several, and hold numbers that are not whole. The text may be UTF-16, and may have no declaration.
//
//   - Scans of one measurement at the same positions of all axes and the same temperature add up, point by point, neighbours or not; their
//     times add up too. Any other scan, and any of a further measurement, is a pattern by itself: its title ends with what tells it from
//     the others (", Psi 5") and its number (", range 3"). A scan without positions was made at those of the one before it.
//   - Lists of <intensities> are the scans, those of <counts> where a measurement has none of the former. <counts> are multiplied by their
//     factors f: f n, with variance f^2 n. <intensities> have theirs applied already, which leaves their variance: f times the intensity.
//   - The axis is the one that moves: the scan's scanAxis where that names one, else 2Theta, else the first. A scan of Phi, Omega or Z at
//     a fixed 2Theta is a pattern over that axis. Points that were measured downwards are given upwards.
//   - A scan that was aborted is left out where others are complete. Where it stands alone, or the file ends within a list, the points that
//     are there keep their places: the range is the one that was meant, and its number of points is told by a longer list beside the
//     counts, by the step of other scans over the axis, or by the start of a continuous scan, which lies half a step behind a round angle.
//     Where nothing tells it the points fill the range, with a warning.
//   - Counting times that differ, and corrections for divergence, are not applied; a warning tells of them.
#pragma once

#include <string_view>
#include <vector>

#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

bool Is_Xrdml(std::string_view text);

// Reads every pattern of a file, 2000 at most. A scan that cannot be read is named in `notes.failed`; it fails where none can be read.
Status Read_Xrdml_Scans(std::string_view text, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

// Reads the first of them into a fresh pattern.
Status Read_Xrdml(std::string_view text, Diffraction_Pattern_Type& pattern);

}  // namespace vntl
