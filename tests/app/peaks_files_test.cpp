// Lists of peaks and of background points, saved for other programs: the dialogs, each way out of them, and what is started then.
#include <sys/stat.h>

#include <cmath>

#include "app/testing.hpp"
#include "base/text.hpp"

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

constexpr const char *dicvol = "40098", *ito = "40160", *treor = "40191", *vecfind = "40177", *free_list = "40010", *background = "40002";

class Peaks_Files : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        Write_Pattern("p.xye", "2theta", 20, 0.02, "! lambda = 1.5\n");
        Write_Pattern("d.xye", "d-spacing", 1, 0.002);
        Write_Pattern("t.xye", "TOF", 5000, 10, "! DIFC 7000\n");
    }
    // Peaks at the points 200, 500 and 900.
    void Write_Pattern(const std::string& name, const std::string& variable, double from, double step, const std::string& head = {}) const {
        std::ofstream file(directory / name);
        file << "Of " << name << '\n' << head << "! Scattering variable: " << variable << '\n';
        for (int i = 0; i < 1200; ++i) {
            double y = 100 + 0.2 * std::sin(0.2 * i) + 0.15 * std::cos(0.47 * i);
            for (const auto& [centre, height] : {std::pair(200, 1000.0), {500, 400.0}, {900, 5000.0}})
                y += height * std::exp(-0.03 * (i - centre) * (i - centre));
            file << from + step * i << ' ' << y << " 1\n";
        }
    }
    // Statements behind semicolons; "find" looks for peaks, "points" for points of the background.
    Run_Result Do(const std::string& statements, int status = 0, const std::string& environment = {}) const {
        std::string text;
        std::istringstream in(statements);
        for (std::string one; std::getline(in, one, ';');)
            text += one == "find"     ? "command 40096\ncommand 40092\npress 1\n"
                    : one == "points" ? "command 40138\ncommand 40159\npress 1\n"
                                      : one + '\n';
        Run_Result run = Script(text, {}, environment);
        EXPECT_EQ(run.status, status) << statements << '\n' << run.output << run.errors;
        return run;
    }
    // But of the box about preferences.
    static Texts Told(const Run_Result& run) {
        Texts all;
        for (const Json& box : run.With("box"))
            if (box["box"] != "Loading preferences file")
                all.push_back(box["box"].get<std::string>() + '|' + box["text"].get<std::string>());
        return all;
    }
    std::string Saved(const std::string& name) const { return Text_Of(directory / name); }
};

// --- what the dialogs show ---------------------------------------------------------------------------------------------------------

TEST_F(Peaks_Files, DialogsOpenWithTheValuesOfPatternAndSearch) {
    const struct {
        const char* command;
        int dialog;
        std::string wavelength, wavelength_of_copper, values;
    } cases[] = {
        {dicvol, 150, "1.5", "1.540599",
         "# of lines used=3|2-theta angle=1|Q specified=0|Cubic=1|Tetragonal=1|Hexagonal=1|Orthorhombic=1|Monoclinic=0|Triclinic=0|Amax=25|"
         "Bmax=25|Cmax=25|BEmin=90|BEmax=125|VOLmin=0|VOLmax=2500|Mol. weight=0|Density=0|Density error=0|EPS=0.03|FOM=10|"
         "Impurity lines=0|A priori zero search=0|Zero refinement=1|DICVOL06 option=0|"},
        {treor, 168, "1.5", "1.540599", "2Theta angle=1|d-spacing=0|Cell edge max=20|Vol_max=1500|Beta_max=125|Zero=0|F.O.M.=10|"},
        {ito, 167, "1.5", "1.540599", "Zero shift=0|"},
        // A search for doublets of copper changes the wavelength of the others.
        {vecfind, 164, "       1.50000", "       1.50000",
         "Lattice=P|Cell=   5.5000  5.5000  6.0000   90.0   90.0   90.0|Tolerance=  0.300|K range=   0.0  0.5    0.0  0.5    0.0  0.5|"
         "Number of points=      100         100         100|Short Output=1|Long Output=0|Search only special k-vectors=0|"},
    };
    for (const auto& one : cases) {
        const std::string show = std::string("command ") + one.command + ";print dialog;press 2;";
        const auto run = Do("open p.xye;find;" + show + "command 40092;set 1021 1;press 1;" + show);
        const auto dialogs = run.With("dialog");
        ASSERT_EQ(dialogs.size(), 2u) << run.output;
        EXPECT_EQ(dialogs[0]["dialog"], one.dialog);
        EXPECT_EQ(Field_Value(dialogs[0], "Title"), "Of p.xye") << one.dialog;
        std::istringstream values(one.values);
        for (std::string label, value; std::getline(values, label, '=') && std::getline(values, value, '|');)
            EXPECT_EQ(Field_Value(dialogs[0], label), value) << label;
        EXPECT_EQ(Field_Value(dialogs[0], "Wavelength"), one.wavelength) << one.dialog;
        EXPECT_EQ(Field_Value(dialogs[1], "Wavelength"), one.wavelength_of_copper) << one.dialog;
    }
    EXPECT_TRUE(Contains(Do("open p.xye;find;command 40191;set Zero 1", 1).errors, "(Zero) is disabled"));
}

TEST_F(Peaks_Files, EachDialogNamesTheUnitAndOneThatTheProgramCannotSayIsWarnedOf) {
    const struct {
        std::string open, unit, of_dicvol, of_treor;
        std::string says;  // by dicvol, treor, ito, vecfind
    } cases[] = {
        {"open p.xye", "2theta in degrees", "2-theta angle", "2Theta angle", "yyyy"},
        {"open d.xye", "d in \u00c5", "d-spacing", "d-spacing", "yyny"},
        {"open p.xye;command 40017", "d in \u00c5", "d-spacing", "d-spacing", "yyny"},
        {"open p.xye;command 40089", "q = 2\u03c0/d in 1/\u00c5", "2-theta angle", "2Theta angle", "nnny"},
        {"open p.xye;command 40081", "s = 1/d in 1/\u00c5", "2-theta angle", "2Theta angle", "nnny"},
        {"open t.xye", "time of flight in \u00b5s", "Q specified", "2Theta angle", "nn-y"},  // ITO's columns are too short for it
    };
    const char *commands[] = {dicvol, treor, ito, vecfind}, *names[] = {"DICVOL06", "TREOR90", "ITO15", "Vecfind"};
    for (const auto& one : cases) {
        std::string script = one.open + ";find";
        Texts expected;
        std::size_t starts = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            if (one.says[i] == '-') continue;
            script += std::string(";files saved;answer yes;answer yes;command ") + commands[i] + ";print dialog;press 1";
            if (one.says[i] == 'n') expected.push_back("Warning Message|The positions of the list are ");
            expected.push_back(std::string("Running ") + names[i] + "|Do you want to run " + names[i] + '?');
            ++starts;
        }
        const auto run = Do(script);
        const Texts told = Told(run);
        ASSERT_EQ(told.size(), expected.size()) << run.output;
        for (std::size_t i = 0; i < told.size(); ++i) EXPECT_TRUE(told[i].starts_with(expected[i])) << told[i];
        EXPECT_EQ(run.With("started").size(), starts);
        const auto dialogs = run.With("dialog");
        for (const Json& dialog : dialogs) EXPECT_TRUE(Contains(dialog.dump(), "Positions of the list: " + one.unit)) << dialog;
        EXPECT_EQ(Field_Value(dialogs[0], one.of_dicvol) + Field_Value(dialogs[1], one.of_treor), "11") << one.open;
        if (one.open == "open t.xye") {
            EXPECT_EQ(Field_Value(dialogs[0], "Wavelength"), "0") << "the constants of a clock are no wavelength";
        }
        for (const char* file : {"saved.dic", "saved.inp", "saved.ito", "saved.sat"}) fs::remove(directory / file);
    }
    const auto run = Do("open p.xye;command 40089;find;answer no;files q;command 40098;press 1");
    EXPECT_EQ(Told(run).size(), 1u) << run.output;
    EXPECT_FALSE(fs::exists(directory / "q.dic"));
}

// --- what is refused ---------------------------------------------------------------------------------------------------------------

TEST_F(Peaks_Files, ARefusalLeavesTheDialogOpenWithTheFieldMarked) {
    const struct {
        const char *command, *label, *value, *told, *good;
    } cases[] = {
        {dicvol, "# of lines used", "0", "# of lines used: \"0\" is not a whole number from 1 to 999", "2"},
        {dicvol, "Amax", "123456", "The file cannot hold Amax, 123456", "12"},
        {dicvol, "VOLmax", "wide", "VOLmax: \"wide\" is not a number", "900"},
        {dicvol, "Wavelength", "1000", "The file cannot hold Wavelength, 1000", "1.2"},
        {dicvol, "Density error", "100000", "The file cannot hold Density error, 1e+05", "0.1"},
        {treor, "Beta_max", "12345", "The file cannot hold Beta_max, 12345", "0"},
        {treor, "F.O.M.", "1e9", "The file cannot hold F.O.M., 1e+09", "20"},
        {ito, "Zero shift", "123456", "The file cannot hold zero shift, 123456", "0.1"},
    };
    for (const auto& one : cases) {
        const bool no_number = !std::string_view(one.told).starts_with("The file");  // which a script is told of too
        const std::string extension = one.command == dicvol ? ".dic" : one.command == treor ? ".inp" : ".ito";
        fs::remove(directory / ("saved" + extension));
        const std::string set = std::string(";set \"") + one.label + "\" ";
        const auto run = Do(std::string("open p.xye;find;answer ok;answer no;command ") + one.command + ";set Title mine" + set +
                                one.value + ";press 1;print dialog" + set + one.good + ";files saved;press 1",
                            no_number ? 1 : 0);
        const Texts told = Told(run);
        ASSERT_EQ(told.size(), 2u) << run.output << run.errors;
        EXPECT_TRUE(told[0].starts_with(std::string("Error Message|") + one.told)) << told[0];
        EXPECT_TRUE(told[1].starts_with("Running ")) << told[1];
        ASSERT_EQ(run.Marked().size(), 1u);
        EXPECT_EQ(run.Marked()[0].size(), 1u) << one.label;
        const std::string file = Saved("saved" + extension);
        EXPECT_NE(file.find("mine"), std::string::npos) << "other values stay";
        EXPECT_EQ(file.find('*'), one.command == treor ? file.find("END*") + 3 : std::string::npos);
    }
    // What no field holds marks none.
    const auto run = Do("open t.xye;find;command 40160;press 1;print dialog");
    EXPECT_TRUE(Told(run).at(0).starts_with("Error Message|The file cannot hold the position of peak 2, ")) << run.output;
    EXPECT_TRUE(run.Marked().at(0).empty());
}

TEST_F(Peaks_Files, WithoutAListNothingIsAsked) {
    for (const char* command : {free_list, dicvol, ito, treor, vecfind})
        EXPECT_EQ(Told(Do("open p.xye;command 40096;command " + std::string(command))), Texts{"Error Message|No peaks has been selected"});
    EXPECT_EQ(Told(Do("open p.xye;command 40138;command 40002")), Texts{"Error Message|No background points has been selected"});
}

// --- the way to the file -----------------------------------------------------------------------------------------------------------

struct Saving {
    const char *command, *extension, *failure;
    bool asks;
};
constexpr Saving savings[] = {{free_list, ".aps", "Unable to write peaks data file!", false},
                              {dicvol, ".dic", "Unable to write peaks data file!", true},
                              {ito, ".ito", "Unable to write peaks data file!", true},
                              {treor, ".inp", "Unable to write peaks data file!", true},
                              {vecfind, ".sat", "Unable to write Satellites data file!", true},
                              {background, ".bgr", "Unable to write background points data file!", false}};
std::string Search_For(const Saving& saving) { return saving.command == background ? "open p.xye;points;" : "open p.xye;find;"; }
// The command, and the dialog as it stands.
std::string Save_By(const Saving& saving) { return std::string("command ") + saving.command + (saving.asks ? ";press 1;" : ";"); }

TEST_F(Peaks_Files, CancellingAtAnyStepChangesNothing) {
    const std::string look = "print peaks;print background;print rows;print data 1;print state;print changes;";
    for (const Saving& saving : savings) {
        const std::string old = std::string("old") + saving.extension, command = std::string("command ") + saving.command;
        std::ofstream(directory / old) << "of old";
        const auto run = Do(Search_For(saving) + look + (saving.asks ? command + ";press 2;" : "") + "files cancel;" + Save_By(saving) +
                            "answer no;files " + old + ';' + Save_By(saving) + look);
        EXPECT_EQ(Told(run), Texts{"Over Write this file?|The file exist,\nDo you want overwrite it?"}) << run.output;
        EXPECT_EQ(Saved(old), "of old");
        for (const char* topic : {"peaks", "background", "kind", "x", "plot_type", "changes"}) {
            const auto lines = run.With(topic);
            ASSERT_EQ(lines.size(), 2u) << topic;
            EXPECT_EQ(lines[0], lines[1]) << saving.command;
        }
        EXPECT_TRUE(run.With("started").empty());
    }
}

TEST_F(Peaks_Files, WhatCannotBeWrittenIsToldAndTheOldFileStays) {
    for (const Saving& saving : savings) {
        const std::string name = std::string("old") + saving.extension, failure = std::string("Error Message|") + saving.failure;
        fs::create_directories(directory / ("taken" + std::string(saving.extension)));
        std::ofstream(directory / name) << "of old";
        const std::string save = ';' + Save_By(saving);
        for (const std::string& file : {std::string("nowhere/new"), "taken" + std::string(saving.extension)})
            EXPECT_EQ(Told(Do(Search_For(saving) + "files " + file + save, 1)), Texts{failure}) << file;
        ::chmod((directory / name).c_str(), 0444);
        EXPECT_EQ(Told(Do(Search_For(saving) + "answer yes;files " + name + save, 1)).back(), failure);
        ::chmod((directory / name).c_str(), 0644);
        fs::create_symlink("/dev/full", directory / ("full" + std::string(saving.extension)));  // takes no byte, as a full disk
        const auto run = Do(Search_For(saving) + "answer yes;files full" + saving.extension + save, 1);
        EXPECT_TRUE(Told(run).back().starts_with(failure)) << run.output;
        EXPECT_EQ(Saved(name), "of old");
        EXPECT_TRUE(run.With("started").empty());
        // Yes replaces it.
        Do(Search_For(saving) + "answer yes;answer no;files " + name + save);
        EXPECT_NE(Saved(name), "of old");
    }
}

// --- starting ----------------------------------------------------------------------------------------------------------------------

TEST_F(Peaks_Files, WithoutACopyAndWithoutAYesNothingIsStarted) {
    fs::create_directories(directory / "ito_inp.dat");
    const auto run = Do("open p.xye;find;files a;command 40160;press 1", 1);
    EXPECT_EQ(Told(run).size(), 2u) << run.output;
    EXPECT_TRUE(run.With("started").empty());
    EXPECT_TRUE(Do("open p.xye;find;answer no;files a;command 40098;press 1").With("started").empty());
}

// The same peaks as a plain list, which is read as points, and the points of the background.
TEST_F(Peaks_Files, PlainListsHoldWhatWasFound) {
    const auto run =
        Do("open p.xye;find;print peaks;files list.aps;command 40010;command 40097;points;print background;files b;command 40002");
    EXPECT_TRUE(Told(run).empty()) << run.output;
    for (const auto& [topic, file] : {std::pair("peaks", "list.aps"), {"background", "b.bgr"}}) {
        std::istringstream lines(Saved(file));
        std::string line;
        for (const char* head : {"! Data file : ", "! Format    : ", "! "})
            EXPECT_TRUE(std::getline(lines, line) && line.starts_with(head)) << line;
        std::size_t count = 0;
        const Json list = run.With(topic).at(0)[topic];
        for (const Json& entry : list) {
            double x = 0, y = 0;
            ASSERT_TRUE(std::getline(lines, line) && std::istringstream(line) >> x >> y) << file;
            EXPECT_NEAR(x, entry["x"].get<double>(), 5.1e-6);
            EXPECT_NEAR(y, entry["y"].get<double>(), 1e-3);
            ++count;
        }
        EXPECT_GE(count, 3u);
        EXPECT_FALSE(std::getline(lines, line));
    }
}

}  // namespace
}  // namespace vntl
