// Constants of instrument files through the real windows: the menu, the dialog of rows, drops, the offer, and the batch export.
#include <algorithm>
#include <cmath>

#include "app/testing.hpp"
#include "patterns/sample_files.hpp"
#include "real_path.hpp"

namespace vntl {
namespace {

class Instrument_Constants : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        for (const auto& file : test::Sample_Files(40))
            if (file.name == "std.gsas") Write("cw.gsas", file.text);
        Write("Tube.prm", "INS   HTYPE   PXCR\nINS  2 ICONS  1.540500  1.544300      12.5         0       0.7    0       0.5\n");
        Write("Line.instprm", "Type:PXC\nLam:0.4\n");
    }
    static Json Field(const Json& dialog, int number) {
        for (const Json& field : dialog["fields"])
            if (field["field"] == number) return field;
        return {};
    }
    static std::vector<Json> Convs(const Run_Result& run) {
        const auto shown = [](const Json& value) { return std::round(value.get<double>() * 1e6) / 1e6; };  // single precision
        std::vector<Json> convs;
        for (const Json& row : run.With("conv")) convs.push_back({shown(row["conv"][0]), shown(row["conv"][1]), shown(row["conv"][2])});
        return convs;
    }
};

const Json none = {0.0, 0.0, 0.0}, single = {0.4, 0.0, 0.0}, doublet = {1.5405, 1.5443, 0.5};

TEST_F(Instrument_Constants, ByTheMenuForTheRowsThatAreChosen) {
    const auto run = Script(
        "print menu 40545\ndrop cw.gsas cw.gsas\nprint menu 40545\nfiles Tube.prm\ncommand 40545\nprint dialog\n"
        "press 4715\npress OK\nprint dialog\npress 4714\ncell 4713 2 1 7\npress OK\nprint dialog\ncell 4713 2 1 x\npress OK\n"
        "cell 4713 2 1 2\ncell 4713 1 2 0\npress OK\nprint rows\nprint state\ncommand 40506\nprint rows\ncommand 40507\nprint rows\n"
        "files cancel\ncommand 40545\nfiles Line.instprm\ncommand 40545\npress Cancel\nprint rows\ncommand 40087\npress Cancel\n"
        "files cw.gsas\ncommand 40545\n");
    const auto menus = run.With("enabled");
    EXPECT_TRUE(menus.at(0)["enabled"] == false && menus.at(1)["enabled"] == true);
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 3u) << run.output << run.errors;
    EXPECT_EQ(dialogs[0]["title"], "Constants of the rows");
    const Json banks = Field(dialogs[0], 4712)["value"], rows = Field(dialogs[0], 4713)["value"];
    ASSERT_TRUE(banks.size() == 1 && rows.size() == 2) << dialogs[0];
    EXPECT_TRUE(banks[0][0] == "2" && banks[0][1] == "xrays_cw" && banks[0][3] == "zero = 0.125\u00b0") << banks;
    EXPECT_EQ(banks[0][2], "lambda 1 = 1.5405 \u00c5, lambda 2 = 1.5443 \u00c5, ratio = 0.5");
    for (const Json& row : rows) EXPECT_TRUE(row[0] == "1" && row[1] == "2" && row[2] == "cw.gsas") << row;
    EXPECT_EQ(run.Marked(), (std::vector<std::vector<int>>{{}, {4713}, {4713}}));
    EXPECT_EQ(run.Told(), (std::vector<std::string>{"No row is chosen", "Tube.prm has no bank 7 for cw.gsas",
                                                    "Bank of row 1:\n\"x\" is not a whole number",
                                                    "ERROR in file: cw.gsas\nThis is no instrument parameter file"}));
    EXPECT_EQ(Convs(run), (std::vector<Json>{doublet, none, none, none, doublet, none, doublet, none}));
    EXPECT_EQ(run.With("status").at(0)["status"][0],
              "Constants of cw.gsas from Tube.prm: lambda 1 = 1.5405 \u00c5, lambda 2 = 1.5443 \u00c5, ratio = 0.5; not used: zero = "
              "0.125\u00b0");
}

TEST_F(Instrument_Constants, ADropAsksWhichRowsAndAFileBesideIsOffered) {
    Write("cw.PRM", "INS   HTYPE   PXCR\nINS  1 ICONS  1.540500  1.544300       0.0         0       0.7    0       0.5\n");
    const auto run = Script(
        "answer no\ndrop cw.gsas\nprint rows\ndrop Line.instprm\nprint dialog\npress OK\nprint rows\ncommand 40019\n"
        "drop Line.instprm cw.gsas\ncell 4713 1 1 0\npress OK\nprint dialog\npress Cancel\nprint rows\ncommand 40019\n"
        "answer yes\ndrop cw.gsas\nprint rows\ncommand 40017\ndrop Line.instprm\ncommand 40019\ndrop Line.instprm\n");
    EXPECT_EQ(Convs(run), (std::vector<Json>{none, single, none, doublet})) << run.output << run.errors;
    EXPECT_EQ(run.Marked(), (std::vector<std::vector<int>>{{}, {4713}}));
    const auto told = run.Told();
    const auto has = [&](const std::string& part) {
        return std::count_if(told.begin(), told.end(), [&](const std::string& box) { return box.find(part) != std::string::npos; });
    };
    EXPECT_EQ(has("cw.gsas: lambda 1 = 1.5405 \u00c5, lambda 2 = 1.5443 \u00c5, ratio = 0.5, from cw.PRM (bank 1)"), 2) << run.output;
    EXPECT_EQ(has("go back by the menu X space first"), 1);
    EXPECT_EQ(has("open a pattern first"), 1);
}

TEST_F(Instrument_Constants, CommandLineBatchAndRecording) {
    Write("cw.prm", "INS   HTYPE   PXCR\nINS  1 ICONS  1.540500\n");
    const auto batch = Run({"--export", "plot.svg", "cw.gsas"});
    EXPECT_EQ(batch.status, 0) << batch.errors;
    EXPECT_NE(batch.errors.find("cw.gsas: lambda = 1.5405 \u00c5, from cw.prm (bank 1)"), std::string::npos) << batch.errors;
    const auto given = Run({"--export", "plot.svg", "Line.instprm", "cw.gsas"});
    EXPECT_TRUE(given.status == 0 && given.errors.empty()) << given.errors;
    EXPECT_EQ(Run({"--export", "other.svg", "cw.prm"}).status, 1);

    Write("first.vns", "press OK\nprint rows\ndrop Tube.prm\npress Cancel\n");
    const auto first = Run({"--record", "session.vns", "--script", "first.vns", "cw.gsas", "Line.instprm"});
    const std::string text = Text_Of(directory / "session.vns");
    EXPECT_NE(text.find("drop " + (directory / "cw.gsas").string() + ' ' + (directory / "Line.instprm").string()), std::string::npos)
        << text;
    EXPECT_NE(text.find("Tube.prm\n"), std::string::npos) << text;
    EXPECT_EQ(first.status, 0) << first.errors;
    EXPECT_EQ(Convs(Script(text + "print rows\n")), std::vector<Json>{single});
}

TEST_F(Instrument_Constants, RealFilesGoToRows) {
    const std::string samples = test::Real_Path("formats/samples/"), flights = test::Real_Path("gsas/vulcan_440.gda");
    if (!fs::exists(flights)) GTEST_SKIP();
    fs::copy_file(flights, directory / "vulcan_440.gda");
    fs::copy_file(samples + "gsas2_tof.instprm", directory / "vulcan.PRM");  // as its head tells, in other letters
    const auto run = Script("answer yes\ndrop vulcan_440.gda\nprint rows\ncommand 40019\ndrop cw.gsas\ndrop " + samples +
                            "gsas_xray_doublet.prm\npress OK\nprint rows\ndrop " + samples +
                            "gsas2_xray.instprm\npress OK\nprint rows\ndrop " + samples + "gsas2_tof.instprm\n");
    const auto convs = Convs(run);
    ASSERT_EQ(convs.size(), 3u) << run.output << run.errors;
    EXPECT_NEAR(convs[0][0].get<double>(), 22600.2479192, 1e-3);
    EXPECT_NEAR(convs[0][1].get<double>(), -0.900917699636, 1e-6);
    EXPECT_EQ(convs[1], doublet);
    EXPECT_NEAR(convs[2][0].get<double>(), 1.148407, 1e-6);
    EXPECT_NE(run.Told().at(0).find("Not used: difB = 2.6234658 \u00b5s\u00c5, zero = -8.517642 \u00b5s"), std::string::npos) << run.output;
    EXPECT_NE(run.Told().back().find("tells constants of time of flight"), std::string::npos) << run.output;
}

}  // namespace
}  // namespace vntl
