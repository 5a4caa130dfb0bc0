// RASX, a zip archive of columns and XML of Rigaku diffractometers.
//
//   Data0/Profile0.txt                  columns parted by TABs: x, y, factor; a byte-order mark in front
//   Data0/MesurementConditions0.xml     (so spelt)
//     <SampleName/> <Comment/> <Operator/>                                      title
//     <XrayGenerator> <TargetName>Cu</TargetName> <WaveType>Ka1</WaveType>      Ka1: Ka2 has been taken out of the beam
//       <WavelengthKalpha1/> <WavelengthKalpha2/> <WavelengthKbeta/>            conv, in angstroms
//     <Axis Name="Temp" Unit="C" Position="550" EndPosition="550"/>             of the sample; CW_Temperature1 is the cooling water's
//     <ScanInformation> <AxisName>TwoTheta</AxisName> <Step/> <Speed/> <SpeedUnit>deg/min</SpeedUnit>
//       <IntensityUnit>counts</IntensityUnit> <DataCount>2726</DataCount>       counts, or counts a second ("cps")
//     <RASHeader><Pair><string>*KEY</string><string>value</string></Pair> ...   the same and more once again
//   Data1/ ...                          further scans
//
// A factor other than 1 belongs to an attenuator, and files do not tell whether y has been multiplied by it: y is given as it stands, with
// a warning. A 0 tells nothing.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Rasx(std::string_view head);

// Reads every scan of a file. Those that cannot be read are told of in the notes; fails when none can, with the first reason, and for an
// archive that is damaged, encrypted or too large.
Status Read_Rasx(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
