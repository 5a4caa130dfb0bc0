// RASX: real archives against the counts that they tell, and archives written here.
#include "patterns/lab/rasx.hpp"

#include "patterns/lab/brml.hpp"
#include "patterns/reading.hpp"
#include "zip_file.hpp"

namespace vntl::test {
namespace {

const std::string conditions =
    "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?><MeasurementConditions><GeneralInformation><SampleName>Quartz</SampleName>"
    "<Operator>me</Operator></GeneralInformation><XrayGenerator><TargetName>Cu</TargetName><WaveType>Ka</WaveType><Voltage>45</Voltage>"
    "<VoltageUnit>kV</VoltageUnit><WavelengthKbeta>1.392246</WavelengthKbeta><WavelengthKalpha1>1.540593</WavelengthKalpha1>"
    "<WavelengthKalpha2>1.544414</WavelengthKalpha2></XrayGenerator><Axes><Axis Name=\"CW_Temperature1\" Unit=\"C\" Position=\"18\"/>"
    "<Axis Name=\"Phi\" Unit=\"deg\" Position=\"30\" State=\"Oscillation\"/></Axes><ScanInformation><AxisName>TwoTheta</AxisName>"
    "<Step>0.5</Step><Speed>10</Speed><SpeedUnit>deg/min</SpeedUnit><IntensityUnit>counts</IntensityUnit><DataCount>5</DataCount>"
    "</ScanInformation><RASHeader><Pair><string>*HW_SAMPLE_NAME</string><string>Powder</string></Pair><Pair>"
    "<string>*FILE_MD5</string><string/></Pair></RASHeader></MeasurementConditions>";
const std::string profile =
    "\xEF\xBB\xBF"
    "10.0000\t16\t1\r\n10.5000\t25.5\t1\r\n11.0000\t36\t1\r\n";

Reading Read(const std::string& archive) { return Read_By(Read_Rasx, archive); }

Reading Read(const std::string& columns, const std::string& xml) {
    return Read(Zip_File({{"Data0/Profile0.txt", columns, true}, {"Data0/MesurementConditions0.xml", xml, true}}));
}

Diffraction_Pattern_Type One(const std::string& xml, const std::string& columns = profile) {
    const Reading reading = Read(columns, xml);
    EXPECT_TRUE(reading.notes.warnings.empty());
    return Only(reading);
}

TEST(Rasx, ColumnsAndConditions) {
    const auto p = One(conditions);
    EXPECT_EQ(p.x, (std::vector<float>{10, 10.5f, 11}));
    EXPECT_EQ(p.y, (std::vector<float>{16, 25.5f, 36}));
    EXPECT_EQ(p.sigma, p.y);
    EXPECT_EQ(p.conv, (std::array<float, 5>{1.540593f, 1.544414f, 0, 1.392246f, 0}));
    EXPECT_EQ(std::tuple(p.npts, p.npts_claimed, p.xmin, p.xmax, p.step, p.ymax, p.bank), std::tuple(3, 5, 10.0f, 11.0f, 0.5f, 36.0f, 0));
    EXPECT_EQ(std::tuple(p.title, p.radiation, p.scat_var, p.count_time, p.TSample, p.constant_step),
              std::tuple("Quartz", "xrays_cw", "", 3.0f, 0.0f, true));
    EXPECT_EQ(Facts(p),
              "Time a step (s)=3;Sample=Quartz;User=me;Anode=Cu;WaveType=Ka;Voltage (kV)=45;WavelengthKbeta=1.392246;"
              "WavelengthKalpha1=1.540593;WavelengthKalpha2=1.544414;CW_Temperature1=18 C;Phi=30 deg, oscillation;Scan axis=TwoTheta;"
              "Step=0.5;Speed=10;SpeedUnit=deg/min;IntensityUnit=counts;DataCount=5;HW_SAMPLE_NAME=Powder;");
}

TEST(Rasx, WhatConditionsChange) {
    EXPECT_EQ(One(Replace_All(conditions, ">Ka<", ">Ka1<")).conv, (std::array<float, 5>{1.540593f, 0, 0, 1.392246f, 0}));
    EXPECT_EQ(One(Replace_All(conditions, ">Ka<", ">Kb<")).conv, (std::array<float, 5>{1.392246f, 0, 0, 1.392246f, 0}));
    EXPECT_FLOAT_EQ(One(Replace_All(conditions, "deg/min", "deg/sec")).count_time, 0.05f);
    EXPECT_EQ(One(conditions, "11 36\n10.5 25\n10 16\n").y, (std::vector<float>{16, 25, 36}));  // measured downwards
    EXPECT_FALSE(One(conditions, "10 1\n10.5 2\n12 3\n").constant_step);
    const auto rate = One(Replace_All(conditions, ">counts<", ">cps<"));
    EXPECT_TRUE(rate.per_second);
    EXPECT_EQ(rate.sigma[2], 12);
    EXPECT_EQ(One(Replace_All(conditions, ">deg/min<", ">sec/step<")).count_time, 10);
    EXPECT_EQ(One(Replace_All(conditions, ">TwoTheta<", ">Phi<")).legend_x, "Phi(degrees)");
    EXPECT_EQ(One(Replace_All(conditions, ">TwoTheta<", ">OmegaTwoTheta<")).legend_x, "Omega(degrees)");
    EXPECT_EQ(One(Replace_All(conditions, ">TwoTheta<", ">TwoThetaOmega<")).legend_x, "");
    const std::string hot = "<Axis Name=\"Temp\" Unit=\"C\" Position=\"500\" EndPosition=\"510\"/><Axis Name=\"Phi\"";
    EXPECT_FLOAT_EQ(One(Replace_All(conditions, "<Axis Name=\"Phi\"", hot)).TSample, 778.15f);
}

TEST(Rasx, SeveralScansAndWhatTheyLack) {
    const std::string second = "12 5\n12.5 6\n";
    const auto reading = Read(Zip_File({{"Data10/Profile0.txt", second},
                                        {"Data2/Profile2.txt", "none\n"},
                                        {"Data0/MeasurementConditions0.xml", conditions},
                                        {"Data0/Profile0.txt", profile},
                                        {"root.xml", "<Root/>"}}));
    ASSERT_EQ(reading.patterns.size(), 2u) << reading.status.message;
    EXPECT_EQ(reading.patterns[0].title, "Quartz, range 1");
    EXPECT_EQ(reading.patterns[1].y, (std::vector<float>{5, 6}));
    EXPECT_EQ(reading.patterns[1].bank, 3);
    EXPECT_EQ(reading.notes.failed, std::vector<std::string>{"Scan 2 holds no points"});
    const auto together = Read(Zip_File({{"Data0/Profile0.txt", profile},
                                         {"Data0/Profile1.txt", second},
                                         {"Data0/MesurementConditions0.xml", conditions},
                                         {"Data0/MesurementConditions1.xml", Replace_All(conditions, "Quartz", "Mica")}}));
    EXPECT_EQ(together.patterns.at(0).title + ", " + together.patterns.at(1).title, "Quartz, range 1, Mica, range 2");
    EXPECT_EQ(reading.notes.warnings.back(), "Scan 3 comes without its conditions: neither axis nor wavelength is known");
}

TEST(Rasx, FaultsAndWarnings) {
    EXPECT_EQ(Read("", conditions).status.message, "Scan 1 holds no points");
    EXPECT_EQ(Read(Zip_File({{"a", "b"}})).status.message, "This zip archive holds no scans of a diffractometer");
    const auto odd = Read("10\t16\t8.3\n10.5\tnone\n11\t1e30\n12\t25\t0\n", conditions + "<");
    EXPECT_EQ(odd.patterns.front().y, (std::vector<float>{16, 25}));
    EXPECT_EQ(odd.notes.warnings,
              (std::vector<std::string>{
                  "Scan 1 has 2 lines that are no numbers, which are left out",
                  "Scan 1 was measured with an attenuator, and its file does not tell whether the counts are corrected for it"}));
    EXPECT_TRUE(Read("10\t16\t0\n", conditions).notes.warnings.empty());
    const auto cut = Read(profile, conditions.substr(0, conditions.find("<Axes>")));
    EXPECT_EQ(cut.patterns.front().title, "Quartz");
    EXPECT_EQ(cut.notes.warnings.size(), 1u);
}

TEST(Rasx, RecognisedByTheNamesOfItsMembers) {
    const std::string archive =
        Zip_File({{"root.xml", "<Root/>"}, {"Data0/MesurementConditions0.xml", conditions}, {"Data0/Profile0.txt", profile}});
    EXPECT_TRUE(Is_Rasx(archive.substr(0, 110)));
    EXPECT_FALSE(Is_Brml(archive));
    EXPECT_FALSE(Is_Rasx(Zip_File({{"Data0/Profile0.xml", ""}, {"Data/Profile0.txt.bak", ""}, {"Profile0.txt", ""}})));
}

TEST(Rasx, RealFiles) {
    struct Known {
        const char* name;
        int npts;
        float first, last, y, kelvin, time;
    };
    for (const Known& known : {Known{"rigaku_rasx_powder.rasx", 2726, 10, 119, 170.55354309082f, 0, 2.4f},
                               Known{"rigaku_rasx_high_temperature.rasx", 1042, 44, 48.9968f, 2.16424083709717f, 823.15f, 7.2f}}) {
        const std::string archive = Real_File(std::string("formats/samples/") + known.name);
        if (archive.empty()) GTEST_SKIP();
        EXPECT_TRUE(Is_Rasx(archive.substr(0, 8192)));
        const auto reading = Read(archive);
        ASSERT_EQ(reading.patterns.size(), 1u) << reading.status.message;
        const auto& p = reading.patterns.front();
        EXPECT_EQ(std::tuple(p.npts, p.xmin, p.xmax, p.y[0], p.TSample),
                  std::tuple(known.npts, known.first, known.last, known.y, known.kelvin));
        EXPECT_FLOAT_EQ(p.count_time, known.time);
        EXPECT_EQ(std::tuple(p.npts_claimed, p.constant_step, p.conv[0], p.conv[1]), std::tuple(0, true, 1.540593f, 0.0f));
        EXPECT_TRUE(Contains(Facts(p), "Anode=Cu;WaveType=Ka1;"));
    }
}

}  // namespace
}  // namespace vntl::test
