// Runs of neutron diffractometers through the real program: by name, by number, compressed; the chooser of an instrument, the input of the
// program that merges runs, the listing of a header.
#include <array>
#include <cstdlib>

#include "app/stand_ins.hpp"
#include "app/testing.hpp"
#include "base/text.hpp"
#include "instrument/numor_text.hpp"

namespace vntl {
namespace {

class Numors : public Program {
protected:
    static constexpr int points = 12;
    static constexpr const char* print = "print rows\nprint data 1\nprint state\n";

    // Counts of a run tell its number, so that a row tells which run it is.
    void Make_Run(const fs::path& file, int numor, const std::string& instrument = "R3B") const {
        Numor_Frame frame{.time = 30, .monitor = 5000, .angles = {4.5}, .counts = {}};
        for (int i = 0; i < points; ++i) frame.counts.push_back(numor % 1000 + i);
        std::vector<Numor_Frame> frames(instrument == "R5B" ? 2 : 1, frame);  // a bank is moved
        frames.back().angles[0] += 0.25 * static_cast<double>(frames.size() - 1);
        Numor_Text run = Numor_Text::Of(instrument, frames);
        run.numor = numor;
        run.F(18) = 2.52, run.F(46) = 300, run.F(47) = 299, run.F(48) = 301.5;
        fs::create_directories((directory / file).parent_path());
        Write(file, run.Text());
    }
    // The same, packed by the system's own program, under a name that ends in ".Z".
    void Pack(const fs::path& file) const {
        const std::string name = Quoted(directory / file);
        ASSERT_EQ(std::system(("gzip -c " + name + " >" + name + ".Z && rm " + name).c_str()), 0);
    }
    static std::vector<std::string> Names(const Run_Result& run) {
        std::vector<std::string> names;
        for (const Json& row : run.With("kind")) names.push_back(row["file_name"]);
        return names;
    }
    static std::string Number(int numor) { return std::to_string(numor); }
};

TEST_F(Numors, SelectedRunsTakeThePlaceOfTheRows) {
    for (const int numor : {100001, 100002, 100003}) Make_Run("data/r3b/" + Number(numor), numor);
    const auto run = Script("open " + Pattern("rising.xye") + "\nfiles data/r3b/100003 data/r3b/100001\ncommand 40212\n" + print +
                            "files cancel\ncommand 40212\nprint rows\n");
    EXPECT_EQ(Names(run), (Texts{"100003", "100001", "100003", "100001"})) << run.output << run.errors;
    const Json row = run.With("kind").at(0), data = run.With("x").at(0);
    const Json fields = Json::parse(R"({"kind": "DATA", "format": "", "instr": "R3B", "npts": 12, "monitor": 5000, "count_time": 30,
        "TSample": 301.5, "TSetting": 300, "scat_var": "2theta", "radiation": "neutrons_cw"})");
    for (const auto& [name, value] : fields.items()) EXPECT_EQ(row[name], value) << name;
    EXPECT_TRUE(Contains(row["title"].get<std::string>(), ", Instr: R3B")) << row["title"];
    for (int i = 0; i < points; ++i) {
        EXPECT_NEAR(data["x"][static_cast<std::size_t>(i)].get<double>(), 4.5 + 0.05 * i, 1e-5);
        EXPECT_EQ(data["y"][static_cast<std::size_t>(i)], 3 + i);
    }
    EXPECT_EQ(run.With("plot_type").at(0)["profiles_uniform"], true);
    EXPECT_TRUE(run.status == 0 && run.Told().empty());
}

TEST_F(Numors, WhatNeedsACalibrationIsToldOnceAndRunsThatAreOpenedLikeFilesStandBeside) {
    for (const int numor : {100001, 100002}) Make_Run("data/r5b/" + Number(numor), numor, "R5B");
    const auto run =
        Script("files data/r5b/100001 data/r5b/100002\ncommand 40212\nopen data/r5b/100001\ndrop data/r5b/100002\nprint rows\n");
    EXPECT_EQ(Names(run), (Texts{"100001", "100002", "100001", "100002"})) << run.output << run.errors;
    const Texts told = run.Told();
    ASSERT_EQ(told.size(), 3u) << run.output;
    EXPECT_TRUE(told[0].starts_with("100001 and 1 more: The counts of R5B need a calibration")) << told[0];
}

TEST_F(Numors, WithoutATreeTheInstrumentIsAskedFor) {
    Make_Run("runs/100007", 100007);
    Write("runs/notes", "no run at all\n");
    const auto run = Script(std::string("files runs/100007\ncommand 40212\nprint dialog\npress 2\nprint rows\n"
                                        "files runs/100007\ncommand 40212\npress 1\nprint rows\n"
                                        "files runs/100007\ncommand 40212\nset \"Instrument Name:\" R22\npress 1\nprint rows\n"
                                        "files runs/notes\ncommand 40212\nset \"Instrument Type:\" \"Single-crystal Diffractometers\"\n"
                                        "print dialog\nset \"Instrument Group:\" ") +
                            "\"Three-axis spectrometers\"\nprint dialog\npress 2\n");
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 3u) << run.output << run.errors;
    EXPECT_EQ(dialogs[0]["title"], "KVR Instrument");
    EXPECT_EQ(Field_Value(dialogs[0], "Instrument Type:") + ", " + Field_Value(dialogs[0], "Instrument Name:"),
              "Powder Diffractometers, R3B");
    EXPECT_EQ(Field_Value(dialogs[1], "Instrument Name:"), "R6");
    EXPECT_EQ(Field_Value(dialogs[2], "Instrument Type:"), "Three-axis Spectrometers");
    EXPECT_EQ(Names(run), (Texts{"100007", "100007"})) << run.output;  // another instrument's reader refuses it, and the row stays
    const Texts told = run.Told();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_TRUE(Contains(told[0], "This numor does not correspond with R22 Format")) << told[0];
    EXPECT_EQ(run.status, 1);
}

TEST_F(Numors, ARangeIsFoundInItsDirectoryAndHolesAreToldOnce) {
    for (const int numor : {100001, 100003, 100006}) Make_Run("runs/" + Number(numor), numor);
    Make_Run("runs/100005", 100005);
    Pack("runs/100005");
    Write("runs/100004", "half a run\n");
    const auto run = Script(std::string("command 40211\nprint dialog\ndirectory runs\npress .Browse...\nprint dialog\npress 1\n") + print +
                            "command 40211\nprint dialog\nset \"Initial Numor\" 100006\npress 1\nprint rows\n");
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 3u) << run.output << run.errors;
    EXPECT_EQ(dialogs[0]["title"], "KVR 2-axes Diffractometer and Numors");
    const Json at_first = Json::parse(R"x({"Instrument Name:": "R3B", "Data Directory": "", "Initial Numor": "0", "Final Numor": "0",
        "Un-Compressed": "1", "Save file to run Rawmerge       File Name:": "0", "File Name:": "rawmerge.inp",
        "Monitor for normalization in Rawmerge": "10000.00", "X,Y, Sigma": "1", "Temperature interval to add numors (in K)": "0.500",
        "Prepend a CodeFile to names     Codefile:": "0", "Codefile:": "",
        "Append the Temperature (in 0.01K) to the name of the files": "0", "Save only the Rawmerge file": "0",
        "Directory for saving input file for Rawmerge and data files": "", "Save each Numor independently": "1",
        "Number of numors in each block to be added:": "0"})x");
    for (const auto& [label, value] : at_first.items()) EXPECT_EQ(Field_Value(dialogs[0], label), value) << label;
    const std::string runs = fs::canonical(directory / "runs");
    for (const Json& dialog : {dialogs[1], dialogs[2]})  // the session keeps them
        EXPECT_EQ(Field_Value(dialog, "Data Directory") + ' ' + Field_Value(dialog, "Initial Numor") + ' ' +
                      Field_Value(dialog, "Final Numor") + ' ' + Field_Value(dialog, "Compressed"),
                  runs + " 100001 100006 0");
    EXPECT_EQ(Names(run), (Texts{"100001", "100003", "100005.Z", "100006", "100006"})) << run.output;
    const Texts told = run.Told();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_TRUE(told[0].starts_with("4 opened, 2 refused") && Contains(told[0], "100002") && Contains(told[0], "100004")) << told[0];
}

TEST_F(Numors, ABlankDirectoryIsTheTreeOfTheInstitute) {
    Make_Run("tree/data/r3b/r3b_23/123456", 123456);
    Make_Run("tree/data-1/r3b/r3b_23/123457", 123457);
    Pack("tree/data-1/r3b/r3b_23/123457");
    const auto run = Script(
        "command 40211\nset \"Initial Numor\" 123456\nset \"Final Numor\" 123457\npress 1\nprint rows\n"
        "command 40211\ndirectory tree/data-1/r3b/r3b_23\npress .Browse...\nprint dialog\npress 2\n",
        {}, "KVRDATA=tree");
    EXPECT_EQ(Names(run), (Texts{"123456", "123457.Z"})) << run.output << run.errors;
    EXPECT_EQ(Field_Value(run.With("dialog").at(0), "Compressed"), "1");  // all that lie there are
}

TEST_F(Numors, WhereAllFailTheRowsStay) {
    Make_Run("data/r5b/000001", 1);
    const auto run = Script("open " + Pattern("rising.xye") +
                            "\nfiles data/r5b/000001 data/r5b/000002\ncommand 40212\nprint rows\n"
                            "command 40211\npress 1\nprint rows\n");
    EXPECT_EQ(Names(run), (Texts{"rising.xye", "rising.xye"})) << run.output << run.errors;
    const Texts told = run.Told();
    ASSERT_EQ(told.size(), 2u);
    EXPECT_TRUE(told[0].starts_with("0 opened, 2 refused") && Contains(told[0], "000001") && Contains(told[0], "R5B")) << told[0];
    EXPECT_TRUE(Contains(told[1], "000000")) << told[1];
    EXPECT_EQ(run.status, 1);
}

TEST_F(Numors, TheTableTakesTwoThousand) {
    Make_Run("runs/102001", 102001);
    const fs::path runs = directory / "runs";
    for (int numor = 100001; numor <= 102000; ++numor) fs::create_hard_link(runs / "102001", runs / Number(numor));
    const auto range = [](int first, int last) {
        return "command 40211\nset \"Data Directory\" runs\nset \"Initial Numor\" " + Number(first) + "\nset \"Final Numor\" " +
               Number(last) + "\npress 1\nprint state\n";
    };
    const auto full = Script(range(100001, 102001) + range(102001, 102001));
    EXPECT_EQ(full.Told(), Texts{"The maximum number of profiles has been attained!"}) << full.errors;
    EXPECT_EQ(full.With("plot_type").at(0)["nperfiles"], 2000) << full.output;
    EXPECT_EQ(full.With("plot_type").at(1)["nperfiles"], 1);  // the full table leaves
    for (int numor = 100002; numor <= 102000; ++numor) fs::remove(runs / Number(numor));
    const auto cut = Script(range(100001, 999999));
    const Texts told = cut.Told();
    ASSERT_EQ(told.size(), 2u);
    EXPECT_TRUE(told[0].starts_with("2 opened, 1999 refused")) << told[0].substr(0, 200);
    EXPECT_EQ(told[1], "The numors from 102002 to 999999 were not looked for: no more than 2000 can be opened.");
}

TEST_F(Numors, AProgramThatUnpacksIsTheUsersChoice) {
    for (const int numor : {100001, 100002}) {
        Make_Run("data/r3b/" + Number(numor), numor);
        Pack("data/r3b/" + Number(numor));
    }
    const Stand_Ins stand_ins(directory / "bin", directory / "notes", {"my_unzip", "idle_unzip"});
    stand_ins.Do("my_unzip", "gzip -dc <\"$1\" >\"${1%.Z}\"; ls >\"$notes/seen\"");
    const std::string open = "files data/r3b/100001.Z data/r3b/100002.Z\ncommand 40212\nprint rows\nprint data 2\n";
    const std::string temporary = directory / "temporary";
    fs::create_directory(temporary);
    const auto places = [&](const std::string& program) {
        const auto run = Script("programs on\npref cmd_unzip " + Word(directory / "bin" / program) + '\n' + open, {}, "TEMP=" + temporary);
        EXPECT_EQ(Names(run), (Texts{"100001.Z", "100002.Z"})) << run.output << run.errors;
        EXPECT_EQ(run.With("x").at(0)["y"][0], 2);
        EXPECT_TRUE(run.Told().empty()) << run.output;
        EXPECT_TRUE(fs::is_empty(temporary));  // at the end nothing is left
        return stand_ins.Started(2);
    };
    for (const Start& start : places("my_unzip")) {
        EXPECT_TRUE(start.directory.starts_with(temporary + '/')) << start.directory;
        EXPECT_TRUE(start.words == Texts{"100001.Z"} || start.words == Texts{"100002.Z"});
    }
    EXPECT_EQ(Text_Of(directory / "notes/seen"), "100001\n100002\n100002.Z\n");
    EXPECT_EQ(places("idle_unzip").size(), 2u);  // leaves no file: unpacked in memory

    // Without one nothing else is needed.
    EXPECT_EQ(Names(Script(open, {}, "TEMP=/none")), (Texts{"100001.Z", "100002.Z"}));
    Make_Run("data/r3b/100003", 100003);
    const auto none = Script("programs on\npref cmd_unzip " + Word(directory / "bin/my_unzip") +
                                 "\nfiles data/r3b/100001.Z data/r3b/100003\ncommand 40212\nprint rows\n",
                             {}, "TEMP=/none");
    EXPECT_EQ(Names(none), Texts{"100003"});
    ASSERT_EQ(none.Told().size(), 1u) << none.output;
    EXPECT_TRUE(Contains(none.Told()[0], "100001.Z: No temporary directory was found in your system")) << none.Told()[0];
}

// --- the input of Rawmerge ---------------------------------------------------------------------------------------------------------

TEST_F(Numors, TheInputOfRawmergeIsWrittenAlone) {
    fs::create_directory(directory / "out");
    const std::string here = fs::canonical(directory);
    const std::string range = "set \"Data Directory\" /runs/\nset \"Initial Numor\" 123456\nset \"Final Numor\" 123470\n";
    const auto run = Script("open " + Pattern("rising.xye") + "\ncommand 40211\n" + range +
                            "set \"Instrument Name:\" R5B\nset \"Save only the Rawmerge file\" 1\nset \"Inst=5 Format\" 1\n"
                            "set \"Monitor for normalization in Rawmerge\" 99.01\nset \"Codefile:\" abc\n"
                            "set \"Prepend a CodeFile to names     Codefile:\" 1\nset \"File Name:\" my.inp\n"
                            "set \"Add blocks of N Numors\" 1\nset \"Number of numors in each block to be added:\" 5\n"
                            "directory out\npress .Browse..\npress 1\nprint rows\n"
                            "command 40211\nprint dialog\nset \"Save file to run Rawmerge       File Name:\" 0\nprint dialog\npress 2\n");
    const std::string line = "-ins R5B -dir /runs/ -num 123456  123470 -nor 99.01 -fmt 2 -cod abc -add N    5";
    EXPECT_EQ(Text_Of(directory / "out/my.inp"), line + '\n') << run.output << run.errors;
    EXPECT_EQ(run.Told(), Texts{"Input File for Rawmerge: my.inp has been created \nThe directory to store data files is: " + here +
                                "/out\nThe written command line is: " + line});
    EXPECT_EQ(Names(run), Texts{"rising.xye"});
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 2u);
    EXPECT_EQ(Field_Value(dialogs[0], "File Name:") + Field_Value(dialogs[0], "Save only the Rawmerge file") +
                  Field_Value(dialogs[1], "Save only the Rawmerge file"),
              "my.inp10");

    // An older file is replaced; the runs are opened too.
    Make_Run("runs/123456", 123456);
    Write("rawmerge.inp", "older\nand longer than the new one\n");
    const auto both = Script(
        "command 40211\nset \"Data Directory\" runs\nset \"Initial Numor\" 123456\nset \"Final Numor\" 123456\n"
        "set \"Save file to run Rawmerge       File Name:\" 1\npress 1\nprint rows\n");
    const std::string written = "-ins R3B -dir " + here + "/runs -num 123456  123456 -nor 10000.00 -fmt 1";
    EXPECT_EQ(Text_Of(directory / "rawmerge.inp"), written + '\n');
    EXPECT_EQ(both.Told(), Texts{"Input File for Rawmerge: rawmerge.inp has been created \nThe written command line is: " + written});
    EXPECT_EQ(Names(both), Texts{"123456"});
}

TEST_F(Numors, WhatIsRefusedKeepsTheDialogOpen) {
    fs::create_directory(directory / "folder.inp");
    const auto refused = [](const std::string& label, const std::string& value) {
        return "set \"" + label + "\" \"" + value + "\"\npress 1\nprint dialog\n";
    };
    const std::string monitor = "Monitor for normalization in Rawmerge", interval = "Temperature interval to add numors (in K)";
    const auto run = Script(
        "command 40211\nset \"Initial Numor\" 5\n" + refused("Final Numor", "4") + refused("Final Numor", "x") +
        "set \"Final Numor\" 6\nset \"Save only the Rawmerge file\" 1\n" + refused(monitor, "2e9") + refused(monitor, "x") + "set \"" +
        monitor + "\" 0\nset \"Adds Numors with temperatures within a range of +/- dT\" 1\n" + refused(interval, "10000") +
        "set \"Add blocks of N Numors\" 1\npress 1\nprint dialog\n"
        "set \"Add Numors into a single file\" 1\n" +
        refused("Prepend a CodeFile to names     Codefile:", "1") + "set \"Codefile:\" c\n" + refused("File Name:", " ") +
        refused("File Name:", "folder.inp") + refused("File Name:", "none/a.inp") + "set \"File Name:\" a.inp\npress 1\nprint state\n");
    const Texts told = {"No Numors for allocating are present!!!",
                        "Final Numor: \"x\" is not a number from 0 to 999999",
                        monitor + ": ",
                        monitor + ": \"x\" is not a number",
                        interval + ": ",
                        "Number of numors in each block to be added: A block has 1 to 9999 numors",
                        "Codefile: The codefile is missing",
                        "The input file for Rawmerge needs a name",
                        "The input file for Rawmerge cannot be written: ",
                        "The input file for Rawmerge cannot be written: ",
                        "Input File for Rawmerge: a.inp has been created "};
    const Texts boxes = run.Told();
    ASSERT_EQ(boxes.size(), told.size()) << run.output << run.errors;
    for (std::size_t i = 0; i < told.size(); ++i) EXPECT_EQ(boxes[i].rfind(told[i], 0), 0u) << boxes[i];
    for (const std::vector<int>& marked : run.Marked()) EXPECT_EQ(marked.size(), 1u);
    EXPECT_EQ(run.With("plot_type").size(), 1u);  // the dialog has closed
    EXPECT_TRUE(Contains(Text_Of(directory / "a.inp"), " -num 5       6 -fmt 1 -cod c -add \n"));
}

// --- the header --------------------------------------------------------------------------------------------------------------------

TEST_F(Numors, TheHeaderOfARunIsShown) {
    Make_Run("data/r3b/100001", 100001);
    Pack("data/r3b/100001");
    Make_Run("data/r3b/100002", 100002, "R22");
    const auto run = Script(
        "files data/r3b/100001.Z\ncommand 40210\nprint dialog\npress 1\nfiles data/r3b/100002\ncommand 40210\n"
        "files data/r3b/100009\ncommand 40210\nfiles cancel\ncommand 40210\nprint rows\n");
    const auto dialogs = run.With("dialog");
    ASSERT_EQ(dialogs.size(), 1u) << run.output << run.errors;
    const std::string listing = Field_Value(dialogs[0], "Listing");
    for (const char* text : {"100001", "R3B", "TITLE:", "SCAN_START:", "4.5", "Temp-SAMPLE:", "301.5"})
        EXPECT_TRUE(Contains(listing, text)) << text << '\n' << listing;
    const Texts told = run.Told();
    ASSERT_EQ(told.size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) EXPECT_TRUE(Contains(told[i], i == 0 ? "data/r3b/100002" : "data/r3b/100009")) << told[i];
    EXPECT_TRUE(Contains(told[0], "This numor does not correspond with R3B Format")) << told[0];
    EXPECT_TRUE(run.With("kind").empty());
    EXPECT_EQ(run.status, 1);
}

}  // namespace
}  // namespace vntl
