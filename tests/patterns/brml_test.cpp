// BRML: real archives against their own statistics and the export of the same scan, and scans written here in every layout of their rows.
#include "patterns/lab/brml.hpp"

#include <algorithm>
#include <sstream>

#include "patterns/lab/rasx.hpp"
#include "patterns/reading.hpp"
#include "zip_file.hpp"

namespace vntl::test {
namespace {

std::string Axis(const std::string& id, const std::string& shown, double start, double increment) {
    return Printed(
        "<ScanAxisInfo AxisId=\"%s\" "
        "VisibleName=\"%s\"><Reference>0</Reference><Start>%.6f</Start><Increment>%.6f</Increment></ScanAxisInfo>",
        id.c_str(), shown.c_str(), start, increment);
}

// Views of columns from place 0 on: "MeasuredTime", "AbsorptionFactor", "counts", "sensor °C", and else an axis.
std::string Views(const std::vector<std::string>& columns) {
    std::string views;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string& name = columns[i];
        const std::string view = Printed("<RawDataView Start=\"%d\" Length=\"1\" ", static_cast<int>(i));
        if (name == "MeasuredTime" || name == "AbsorptionFactor")
            views += view + "LogicName=\"" + name + "\" />";
        else if (name == "counts")
            views += view +
                     "><Recording LogicName=\"ScanCounter\" VisibleName=\"Counter\" Category=\"Count\"><Unit Base=\"Counts\"/>"
                     "<BlankingValue>-9999</BlankingValue></Recording></RawDataView>";
        else if (name.starts_with("sensor "))
            views += view + "><Recording LogicName=\"Temperature\" Category=\"Value\"><Unit Base=\"" + name.substr(7) +
                     "\"/></Recording></RawDataView>";
        else
            views += view + "><Varying><FieldDefinitions FieldName=\"" + name + "\"><VisibleName>" + name +
                     "</VisibleName></FieldDefinitions></Varying></RawDataView>";
    }
    return "<DataViews>" + views + "</DataViews>";
}

std::string Route(const std::string& axes, const std::vector<std::string>& columns, const std::vector<std::string>& rows,
                  const std::string& name = "LockedCoupled", int points = 0) {
    std::string text = "<DataRoute><ScanInformation ScanName=\"" + name + "\" VisibleName=\"" + name + "\"><MeasurementPoints>" +
                       std::to_string(points) + "</MeasurementPoints><TimePerStepEffective>2</TimePerStepEffective><ScanAxes>" + axes +
                       "</ScanAxes></ScanInformation>";
    for (const std::string& row : rows) text += "<Datum>" + row + "</Datum>\n";
    return text + Views(columns) + "</DataRoute>";
}

const std::string tube =
    "<FixedInformation><Tube VisibleName=\"T\"><WaveLengthAlpha1 Unit=\"nm\" Value=\"0.15406\"/>"
    "<WaveLengthBeta Unit=\"\xC3\x85\" Value=\"1.39222\"/><TubeMaterial>Cu</TubeMaterial></Tube></FixedInformation>";
std::string Document(const std::string& routes) {
    return "<?xml version=\"1.0\"?><RawData><DataRoutes>" + routes + "</DataRoutes>" + tube + "</RawData>";
}

Zip_Member Container(const std::vector<std::string>& named) {
    std::string list;
    for (const std::string& name : named) list += "<string>Experiment0\\" + name + "</string>";
    return {"Experiment0/DataContainer.xml",
            "<DataContainer><RawDataReferenceList>" + list +
                "</RawDataReferenceList><MeasurementInfo SampleName=\"Corundum\" UserName=\"me\"/></DataContainer>"};
}

Reading Read(const std::string& archive) { return Read_By(Read_Brml, archive); }

Reading Read_Routes(const std::string& routes) {
    return Read(Zip_File({Container({}), {"Experiment0/RawData0.xml", Document(routes), true}}));
}

Diffraction_Pattern_Type One(const std::string& route) { return Only(Read_Routes(route)); }

const std::vector<std::string> plain = {"MeasuredTime", "AbsorptionFactor", "TwoTheta", "counts"};
const std::string two_theta = Axis("TwoTheta", "2Theta", 10, 0.5);

TEST(Brml, ARowAPointWithWhatItsDocumentsTell) {
    const auto p =
        One(Route(Axis("Theta", "Theta", 5, 0.25) + two_theta, plain, {"2,1,10,16", "2,0,10.5,25", "2,4,11,36"}, "LockedCoupled", 5));
    EXPECT_EQ(p.x, (std::vector<float>{10, 10.5f, 11}));
    EXPECT_EQ(p.y, (std::vector<float>{16, 25, 36}));
    EXPECT_EQ(p.sigma, (std::vector<float>{16, 25, 144}));  // 36 = 4 x 9 counts, whose variance is 16 x 9
    EXPECT_EQ(p.conv, (std::array<float, 5>{1.5406f, 0, 0, 1.39222f, 0}));
    EXPECT_EQ(std::tuple(p.npts, p.npts_claimed, p.bank, p.xmin, p.xmax, p.step, p.ymin, p.ymax),
              std::tuple(3, 5, 0, 10.0f, 11.0f, 0.5f, 16.0f, 36.0f));
    EXPECT_EQ(std::tuple(p.title, p.radiation, p.scat_var, p.count_time, p.constant_step),
              std::tuple("Corundum", "xrays_cw", "", 2.0f, true));
    EXPECT_EQ(Fact(p, "Anode") + Fact(p, "User") + Fact(p, "Scan axis"), "CumeLockedCoupled");
}

TEST(Brml, ColumnsStandAnywhereAndAnglesAreRoundedOrTheirOwn) {
    const auto p =
        One(Route(Axis("TwoTheta", "2Theta", 10.00004, 0.500036), {"counts", "H", "Goniometer#TwoTheta#Position", "MeasuredTime"},
                  {"16,0.1,10,2", "25,0.2,10.5001,2", "36,0.3,11.0001,2"}));
    EXPECT_EQ(p.y, (std::vector<float>{16, 25, 36}));
    EXPECT_FLOAT_EQ(p.x[2], 10.00004f + 2 * 0.500036f);  // finer than the rows
    EXPECT_TRUE(p.constant_step);
    const std::string behind = Replace_All(Axis("TwoTheta", "2Theta", 15, 0.500036), "<Reference>0", "<Reference>-5");
    EXPECT_FLOAT_EQ(One(Route(behind, plain, {"2,1,10,16", "2,1,10.5,25", "2,1,11.0001,36"})).x[2], 10 + 2 * 0.500036f);
    const auto own = One(Route(two_theta, plain, {"2,1,10,16", "2,1,10.6,25", "2,1,11,36"}));
    EXPECT_EQ(own.x, (std::vector<float>{10, 10.6f, 11}));
    EXPECT_FALSE(own.constant_step);
    const auto falling = One(Route(Axis("TwoTheta", "2Theta", 11, -0.5), plain, {"2,1,11,16", "2,1,10.5,25", "2,1,10,36"}));
    EXPECT_EQ(falling.x, (std::vector<float>{10, 10.5f, 11}));
    EXPECT_EQ(falling.y, (std::vector<float>{36, 25, 16}));
    const std::string apart = "</FieldDefinitions></Varying></RawDataView><RawDataView Start=\"1\" Length=\"1\" ><Varying>";
    const std::string fields =
        Replace_All(Route(two_theta, {"H", "TwoTheta", "counts"}, {"1,10,16", "2,10.6,25"}), apart, "</FieldDefinitions>");
    EXPECT_EQ(One(fields).x, (std::vector<float>{10, 10.6f}));  // two fields of one view
    const std::string timed = Route(two_theta, plain, {"3,1,10,16"}), told = "<TimePerStepEffective>2</TimePerStepEffective>";
    EXPECT_EQ(One(Replace_All(timed, told, "<TimePerStep>5</TimePerStep>")).count_time, 5);
    EXPECT_EQ(One(Replace_All(timed, told, "")).count_time, 3);
    const std::string rates = Replace_All(Route(two_theta, plain, {"2,1,10,16", "2,4,10.5,36"}), "\"Counts\"", "\"CountsPerSecond\"");
    EXPECT_EQ(One(rates).sigma, (std::vector<float>{8, 72}));  // at 2 seconds each
    const std::string again = Replace_All(Route(two_theta, plain, {"2,1,10,1", "2,1,10.5,1", "2,1,11,1", "2,1,11.5,1"}), "<DataViews>",
                                          "<DatumRun number=\"0\"/><DataViews>");
    EXPECT_EQ(One(again).npts, 4);  // rows count once, whatever the document says
    EXPECT_EQ(One(Route(two_theta, {"MeasuredTime", "counts"}, {"2,16", "2,25"})).x,
              (std::vector<float>{10, 10.5f}));  // no angles in the rows
}

TEST(Brml, RowsWithoutAValueAreLeftOutAtTheirPlace) {
    const auto p = One(Route(two_theta, plain, {"2,1,10,16", "2,1,10.5,-9999", "2,1,11", "2,1,11.5,none", "", "2,1,12,25,7"}));
    EXPECT_EQ(p.x, (std::vector<float>{10, 12}));
    EXPECT_FALSE(p.constant_step);
    EXPECT_EQ(p.y, (std::vector<float>{16, 25}));
}

TEST(Brml, OtherAxesAndTemperatures) {
    const auto phi = One(Route(Axis("TwoTheta", "2Theta", 30, 0) + Axis("Phi", "Phi", 0, 90), {"Phi", "counts"}, {"0,5", "90,6"}));
    EXPECT_EQ(std::tuple(phi.scat_var, phi.legend_x, phi.xmax), std::tuple("Angle", "Phi(degrees)", 90.0f));
    const std::string record = Route("",
                                     {"sensor \xC2\xB0"
                                      "C"},
                                     {"20", "30"}, "NonAmbientModeData");
    const auto warm = One(record + Route(two_theta, plain, {"2,1,10,16"}));
    EXPECT_FLOAT_EQ(warm.TSample, 298.15f);
    EXPECT_EQ(One(Route(two_theta, {"sensor Kelvin", "counts"}, {"80,5", "90,6"})).TSample, 85);
}

TEST(Brml, ScansOfSeveralDocumentsInTheOrderOfTheContainer) {
    const std::string good = Route(two_theta, plain, {"2,1,10,16"}), empty = Route(two_theta, plain, {});
    const std::string second = Document(Route(two_theta, plain, {"2,1,10,99"}));
    auto reading = Read(Zip_File({{"x/Experiment0/RawData10.xml", second},
                                  {"x/Experiment0/RawData2.xml", Document(good + empty + good)},
                                  {"x/Experiment0/RawData3.xml", "<left out/>"},
                                  {"x/" + Container({}).name, Container({"RawData10.xml", "RawData2.xml"}).bytes}}));
    EXPECT_EQ(reading.status.message, "");
    ASSERT_EQ(reading.patterns.size(), 3u);
    EXPECT_EQ(reading.patterns[0].y[0], 99);
    EXPECT_EQ(reading.patterns[2].title, "Corundum, range 4");
    EXPECT_EQ(reading.patterns[2].bank, 4);
    EXPECT_EQ(reading.notes.failed, std::vector<std::string>{"Scan 3 holds no points"});

    const std::string warm = Replace_All(Document(good), "<TubeMaterial>", "<TubeTemperature Unit=\"K\" Value=\"310\"/><TubeMaterial>");
    reading = Read(Zip_File({{"Experiment0/RawData10.xml", second},
                             {"Experiment0/RawData9.xml", Replace_All(warm, "\"nm\" Value=\"0.15406\"", "\"pm\" Value=\"154.06\"")}}));
    ASSERT_EQ(reading.patterns.size(), 2u);
    EXPECT_EQ(reading.patterns[1].y[0], 99);  // as people order names
    EXPECT_EQ(std::pair(reading.patterns[0].TSample, reading.patterns[0].conv[0]), std::pair(0.0f, 1.5406f));

    std::string wrong = Zip_File({{"Experiment0/RawData0.xml", Document(good)}, {"Experiment0/RawData1.xml", second}});
    wrong[wrong.find(",99<")] = ';';  // its checksum tells
    reading = Read(wrong);
    EXPECT_EQ(reading.patterns.size(), 1u);
    EXPECT_EQ(reading.notes.failed, std::vector<std::string>{"RawData1.xml: This zip archive is damaged or cut short"});

    const std::string cut = Document(good + good);
    reading = Read(Zip_File({{"Experiment0/RawData0.xml", cut.substr(0, cut.rfind("<Datum>"))}}));  // one whole scan
    EXPECT_EQ(reading.patterns.size(), 1u);
    ASSERT_EQ(reading.notes.failed.size(), 1u);
    EXPECT_TRUE(reading.notes.failed[0].starts_with("RawData0.xml: Its XML ends too early"));
}

TEST(Brml, ADetectorThatStoodStill) {
    const std::string still =
        "<DataRoute><ScanInformation ScanName=\"Still\"><ScaleAxes>" + Axis("TwoTheta", "2Theta", 20, 0.1) +
        "</ScaleAxes></ScanInformation><Datum>1,4,9,16</Datum><Datum>1,5,6,7</Datum><DataViews><RawDataView Start=\"1\" Length=\"3\">"
        "<Recording Category=\"Count\"/></RawDataView></DataViews></DataRoute>";
    const auto reading = Read_Routes(still);
    ASSERT_EQ(reading.patterns.size(), 2u);
    EXPECT_EQ(reading.patterns[1].y, (std::vector<float>{5, 6, 7}));
    EXPECT_FLOAT_EQ(reading.patterns[1].xmax, 20.2f);
    EXPECT_EQ(reading.patterns[1].title, "Corundum, range 2");
    EXPECT_EQ(Read_Routes(Replace_All(still, "Length=\"3\"", "Length=\"4\"")).status.message, "Scan 1 holds no counts");  // beyond the rows
}

TEST(Brml, EveryFaultAndWarning) {
    const std::pair<std::string, std::string> faults[] = {
        {"", "This file holds no scan"},
        {Route(two_theta, {}, {"1,2"}), "Scan 1 does not tell what its columns are"},
        {Route(two_theta, {"MeasuredTime", "TwoTheta"}, {"1,2"}), "Scan 1 holds no counts"},
        {Route(two_theta, plain, {"1,1,10"}), "Scan 1 holds no counts"},  // its column is beyond the rows
        {Route("", plain, {"2,1,10,16"}), "Scan 1 has no axis that moves"},
        {Route("<ScanAxisInfo AxisId=\"TwoTheta\"/>", {"counts"}, {"5"}), "Scan 1 tells no angles"},
    };
    for (const auto& [routes, message] : faults) EXPECT_EQ(Read_Routes(routes).status.message, message);
    EXPECT_EQ(Read(Zip_File({{"a.txt", "b"}})).status.message, "This zip archive holds no scans of a diffractometer");
    EXPECT_EQ(Read_Routes(Route(two_theta, {"TwoTheta", "counts", "counts"}, {"10,1,2"})).notes.warnings,
              std::vector<std::string>{"Scan 1 has another counter, Counter, which is left out"});
    EXPECT_EQ(Read_Routes(Route(two_theta, plain, {"2,1,10,1", "4,1,10.5,1"})).notes.warnings,
              std::vector<std::string>{"Scan 1 was measured with times that differ from step to step"});
}

TEST(Brml, RecognisedByTheNamesOfItsMembers) {
    const std::string archive =
        Zip_File({{"Experiment0/MeasurementContainer.xml", std::string(9000, ' ')}, {"Experiment0/RawData0.xml", "<a/>"}});
    EXPECT_TRUE(Is_Brml(archive.substr(0, 8192)));
    EXPECT_FALSE(Is_Rasx(archive));
    EXPECT_FALSE(Is_Brml(Zip_File({{"word/document.xml", "Experiment0/RawData0.xml"}, {"RawData0.xml", ""}, {"Experiment/a.txt", ""}})));
    EXPECT_FALSE(Is_Brml(Zip_File({{"Data0/Profile0.txt", "1 2 1"}})));
}

TEST(Brml, ARealFileAgreesWithItsStatistics) {
    const std::string archive = Real_File("formats/samples/bruker_hr_rec_space.brml");
    if (archive.empty()) GTEST_SKIP();
    EXPECT_TRUE(Is_Brml(archive.substr(0, 8192)));
    const auto reading = Read(archive);
    ASSERT_EQ(reading.patterns.size(), 1u) << reading.status.message;
    const auto& p = reading.patterns.front();
    EXPECT_EQ(std::tuple(p.npts, p.xmin, p.xmax, p.count_time), std::tuple(2001, 44.0f, 48.0f, 1.0f));
    EXPECT_EQ(p.ymax, 495559.8f);  // Maximum and MaximumChannel of the file
    EXPECT_EQ(std::max_element(p.y.begin(), p.y.end()) - p.y.begin(), 910);
    EXPECT_FLOAT_EQ(p.sigma[910] / p.y[910], 8.3f);
    double sum = 0;
    for (const float y : p.y) sum += static_cast<double>(y);
    EXPECT_NEAR(sum / p.npts, 6640.5512743628178, 1e-3);  // its Mean
}

TEST(Brml, ARealFileAgreesWithTheExportOfItsScan) {
    const std::string archive = Real_File("formats/samples/bruker_lynxeye_same_scan.brml");
    const std::string text = Real_File("formats/samples/bruker_raw400_lynxeye_export_cps.xy");
    if (archive.empty() || text.empty()) GTEST_SKIP();
    const auto reading = Read(archive);
    ASSERT_EQ(reading.patterns.size(), 1u) << reading.status.message;
    const auto& p = reading.patterns.front();
    ASSERT_EQ(p.npts, 1399);
    std::istringstream rows(text);
    for (std::size_t i = 0; i < p.x.size(); ++i) {
        double x = 0, rate = 0;
        ASSERT_TRUE(rows >> x >> rate) << i;
        ASSERT_NEAR(p.x[i], x, 1e-4) << i;
        ASSERT_NEAR(p.y[i] / p.count_time, rate, 6e-4) << i;
    }
    EXPECT_FLOAT_EQ(p.step, 0.035756389865f);
    EXPECT_EQ(p.conv, (std::array<float, 5>{1.5406f, 1.54439f, 0.5f, 1.39222f, 0}));
    EXPECT_EQ(p.title, "SRL-I-49_SbI3");
    EXPECT_EQ(Fact(p, "Voltage (kV)") + Fact(p, "Goniometer radius (mm)"), "40280");
}

}  // namespace
}  // namespace vntl::test
