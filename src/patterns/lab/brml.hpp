// BRML, a zip archive of XML documents of Bruker diffractometers.
//
//   Experiment0/DataContainer.xml
//     <RawDataReferenceList><string>Experiment0/RawData0.xml</string> ...     the documents with scans, in their order
//     <MeasurementInfo SampleName="Corundum" UserName="..." Comment="..."/>   the title
//   Experiment0/RawData0.xml
//     <DataRoute>                                                             a scan, one of any number
//       <ScanInformation ScanName="LockedCoupled" VisibleName="...">
//         <MeasurementPoints>1399</MeasurementPoints>                         points that are promised
//         <TimePerStepEffective>76.8</TimePerStepEffective>                   seconds a step, for all channels of a detector
//         <ScanAxes><ScanAxisInfo AxisId="TwoTheta"><Start>10.0001</Start><Increment>0.0357563</Increment>
//       <Datum>76.8,1,10.0001,5.0001,1493</Datum>                             a row a point
//       <DataViews>                                                           what the columns of the rows are, behind them
//         <RawDataView Start="0" Length="1" LogicName="MeasuredTime"/>
//         <RawDataView Start="1" Length="1" LogicName="AbsorptionFactor"/>    f
//         <RawDataView Start="2" Length="2"> <FieldDefinitions AxisId="TwoTheta"/> <FieldDefinitions AxisId="Theta"/>
//         <RawDataView Start="4" Length="1"> <Recording Category="Count"/>    y
//     <FixedInformation> <Tube> <WaveLengthAlpha1 Unit="Å" Value="1.5406"/>  conv
//
// Columns are found by what they are called, wherever they stand; of several counters the first one is read. The counts have been
// multiplied by the absorber's factor f already: their variance is f y. The rows round their angles, so that x is start + i increment where
// all rows agree with it, else the angle of the row. x is 2theta where that moves, else the axis that does. A route of sensors
// ("NonAmbientModeData") is no scan, its temperature is that of the sample. A counter of many columns along a scale is a detector that
// stood still, each row of it a pattern.
#pragma once

#include <string_view>
#include <vector>

#include "base/status.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl {

// Whether the first bytes of a file, as few or as many as there are, say for certain that it is one.
bool Is_Brml(std::string_view head);

// Reads every scan of a file. Those that cannot be read are told of in the notes; fails when none can, with the first reason, and for an
// archive that is damaged, encrypted or too large.
Status Read_Brml(std::string_view bytes, std::vector<Diffraction_Pattern_Type>& patterns, Read_Notes& notes);

}  // namespace vntl
