// Other programs through the real one: stand-ins write down what they are given, and what is told of them is compared with that.
#include "app/script.hpp"
#include "app/stand_ins.hpp"

#include <cmath>
#include <map>

namespace vntl {
namespace {

using Texts = std::vector<std::string>;

// What a shell, a system or a script might take for its own.
const Texts odd_names = {"plain",       "two words", " ends in blanks ", "do\"uble",           "sing'le",    "$(touch x)",
                         "`touch x`",   "a;touch x", "a&touch x|b>x",    "50%PATH%",           "two\nlines", "-leading",
                         "back\\slash", "*?[a]~#!",  "écran→μ",          std::string(200, 'l')};

std::string Word(const std::string& text) { return Statement_Line({text}); }

// As a file is told.
std::string Told(const std::string& file) { return file.find(' ') == std::string::npos ? file : '"' + file + '"'; }

class Programs_Test : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        suite = directory / "the suite";
        work = directory / "in $(touch x) \"here\" é";
        fs::create_directories(work);
        of_suite = Stand_Ins(suite, directory / "notes",
                             {"wqx2k", "tabedit", "qx_studio", "glinker", "grepsolve", "gmapper", "dicvol06", "vecfind", "treor90",
                              "Rawmerge", "ito15", "Radiox"});
        desktop = Stand_Ins(directory / "bin", directory / "notes", {"gedit", "gnome-open", "firefox", "acroread", "xterm", "env"});
        // Another desktop, with none of the usual programs.
        opener = Stand_Ins(directory / "other bin", directory / "notes", {"xdg-open"});
        for (const char* bin : {"bin", "other bin"}) fs::create_symlink("/usr/bin/timeout", directory / bin / "timeout");
    }

    std::string Environment(const std::string& bin = "bin") const {
        return "QUENDRIX=" + Quoted(suite) + " PATH=" + Quoted(directory / bin);
    }
    Run_Result Do(const std::string& script, const std::string& bin = "bin", const Texts& files = {}) const {
        return Script(script, files, Environment(bin));
    }
    void Set_Refinement_File(const fs::path& file) const {
        fs::create_directories(directory / "home/.qxs");
        std::ofstream(directory / "home/.qxs/quendrix.dir") << file.parent_path().string() << '\n' << file.filename().string() << '\n';
    }
    std::string Touch(const fs::path& file) const {
        std::ofstream(file) << file.filename().string();
        return file;
    }
    static std::string Status_Bar(const Run_Result& run, std::size_t state = 0) { return run.With("plot_type").at(state)["status"][0]; }
    bool Nothing_Else_Ran() const {
        for (const fs::path& place : {directory, work, suite, directory / "home", directory / "bin"})
            if (fs::exists(place / "x")) return false;
        return true;
    }

    fs::path suite, work;
    Stand_Ins of_suite, desktop, opener;
};

// --- programs that read a file ---------------------------------------------------------------------------------------

struct File_Command {
    const char *number, *program, *ending, *option;
    bool in_console;
};
constexpr File_Command file_commands[] = {{"40178", "vecfind", ".sat", nullptr, true},
                                          {"40188", "dicvol06", ".dic", nullptr, false},
                                          {"40192", "ito15", ".ito", nullptr, false},
                                          {"40193", "treor90", ".inp", nullptr, false},
                                          {"40197", "Rawmerge", ".inp", "-fil", true}};

class Programs_With_Files : public Programs_Test, public testing::WithParamInterface<File_Command> {};
INSTANTIATE_TEST_SUITE_P(Commands, Programs_With_Files, testing::ValuesIn(file_commands),
                         [](const auto& row) { return std::string(row.param.program); });

TEST_P(Programs_With_Files, EveryNameIsOneWord) {
    const File_Command& row = GetParam();
    const bool ito = row.program == std::string("ito15");
    const std::string path = suite / row.program;
    std::string script;
    Texts files;
    for (const std::string& name : odd_names) files.push_back(Touch(work / (name + row.ending)));
    for (const std::string& file : files)
        for (const char* way : {"off", "on"})
            script += "programs " + std::string(way) + "\nfiles " + Word(file) + "\ncommand " + row.number + '\n';
    const Run_Result run = Do(script);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.Boxes().size(), 1u) << "that of the preferences";
    const auto told = run.With("started");
    ASSERT_EQ(told.size(), 2 * files.size());

    std::vector<Texts> told_words;
    for (std::size_t i = 0; i < told.size(); ++i) {
        const std::string file = ito ? "ito_inp.dat" : files[i / 2], option = row.option == nullptr ? "" : std::string(row.option) + ' ';
        EXPECT_EQ(told[i]["started"], (row.in_console ? "xterm -e " : "") + path + ' ' + option + Told(file)) << i;
        EXPECT_EQ(told[i]["directory"], work.string());
        EXPECT_EQ(told[i]["waited"], false);
        Texts words = row.in_console ? Texts{"xterm", "-e", path} : Texts{path};
        if (row.option != nullptr) words.push_back(row.option);
        words.push_back(file);
        EXPECT_EQ(told[i]["arguments"].get<Texts>(), words);
        if (i % 2 == 1) told_words.push_back(words);
    }

    std::vector<Texts> received;
    for (const Start& start : of_suite.Started(files.size() * (row.in_console ? 2 : 1))) {
        EXPECT_EQ(start.directory, work) << "of " << start.name;
        if (start.name == row.program) {
            received.push_back(row.in_console ? Texts{"xterm", "-e", path} : Texts{path});
            received.back().insert(received.back().end(), start.words.begin(), start.words.end());
        }
    }
    std::sort(told_words.begin(), told_words.end());
    EXPECT_EQ(received, told_words);
    EXPECT_TRUE(Nothing_Else_Ran());
    if (ito) {
        EXPECT_EQ(Text_Of(work / "ito_inp.dat"), odd_names.back() + ".ito");
    }
}

// A name in another encoding than the desktop's: the report cannot show its letters, the program gets them.
TEST_F(Programs_Test, ANameOfAnotherEncodingIsReceivedByteForByte) {
    const std::string file = Touch(work / "caf\xE9.dic");
    const Run_Result run = Do("programs on\nfiles " + Word(file) + "\ncommand 40188\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(of_suite.Started(1).at(0).words, Texts{file});
}

TEST_F(Programs_Test, ACancelledSelectionStartsNothingAndCostsNothing) {
    std::string script = "programs on\nopen " + Pattern("rising.xye") + "\nprint state\n";
    for (const File_Command& row : file_commands) script += "files cancel\ncommand " + std::string(row.number) + '\n';
    const Run_Result run = Do(script + "print state\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.With("started").size() + of_suite.Started(0).size(), 0u);
    const auto states = run.With("plot_type");
    EXPECT_EQ(states.at(0), states.at(1));
}

// Ito's file is in the way, or is the one that was chosen.
TEST_F(Programs_Test, ItoReadsACopy) {
    const std::string own = Touch(work / "ito_inp.dat"), file = Touch(work / "new.ito");
    const auto choose = [](const std::string& name) { return "files " + Word(name) + "\ncommand 40192\n"; };
    const Run_Result itself = Do("programs on\n" + choose(own));
    EXPECT_EQ(itself.status, 0) << itself.errors;
    EXPECT_EQ(Text_Of(own), "ito_inp.dat");
    EXPECT_EQ(Do("programs on\n" + choose(file)).status, 0);
    EXPECT_EQ(Text_Of(own), "new.ito");
    EXPECT_EQ(of_suite.Started(2).at(1).words, Texts{"ito_inp.dat"});
    fs::remove(own);
    fs::create_directories(own);
    const Run_Result in_the_way = Do("programs on\n" + choose(file) + choose(work / "missing.ito"));
    EXPECT_EQ(in_the_way.status, 1);
    ASSERT_EQ(in_the_way.Boxes().size(), 3u) << "behind that of the preferences";
    EXPECT_NE(in_the_way.Boxes()[1].find("ito_inp.dat"), std::string::npos) << in_the_way.Boxes()[1];
    EXPECT_NE(in_the_way.Boxes()[2].find("missing.ito"), std::string::npos) << in_the_way.Boxes()[2];
    EXPECT_EQ(in_the_way.With("started").size(), 0u);
}

TEST_F(Programs_Test, AFileOfTheRootIsReadThere) {
    const Run_Result run = Do("files /missing.dic\ncommand 40188\n");
    ASSERT_EQ(run.With("started").size(), 1u);
    EXPECT_EQ(run.With("started")[0]["directory"], "/");
}

// --- programs that need none, or the control file --------------------------------------------------------------------

// Every command that starts a program at once; `file` stands for its file.
struct Plain_Command {
    const char *number, *program;
    bool of_suite;
    const char* file;
};
constexpr Plain_Command plain_commands[] = {
    {"40108", "qx_studio", true, "pcr"},
    {"40117", "tabedit", true, "pcr"},
    {"40129", "glinker", true, "pcr"},
    {"40134", "gmapper", true, "pcr"},
    {"40142", "grepsolve", true, ""},
    {"40128", "xterm", false, ""},
    {"40132", "gnome-open", false, ""},
    {"40104", "gedit", false, "pcr"},
    {"40107", "gedit", false, ""},
    {"40082", "gedit", false, "Docs/quendrix.ins"},
    {"40121", "gedit", false, "Docs/qx2k.inf"},
    {"40076", "gedit", false, "Docs/vantrelo-2006_news.txt"},
    {"40084", "firefox", false, "Docs/qx_frame.htm"},
    {"40156", "firefox", false, "Docs/Quendrix_News.htm"},
    {"40085", "acroread", false, "Docs/Quendrix_Manual.pdf"},
    {"40086", "acroread", false, "Docs/Manual_Quendrix_Studio.pdf"},
};
std::string All_Plain_Commands() {
    std::string script = "pref use_internal_editor 0\n";
    for (const Plain_Command& row : plain_commands) script += "command " + std::string(row.number) + '\n';
    return script;
}

TEST_F(Programs_Test, EveryCommandWithItsFile) {
    for (const char* name : {"two words $(touch x);é.pcr", "%PATH%'\"`touch x`.pcr", "-l.pcr"}) {
        const std::string pcr = Touch(work / name);
        Set_Refinement_File(pcr);
        const Run_Result run = Do("programs off\n" + All_Plain_Commands() + "programs on\n" + All_Plain_Commands(), "bin",
                                  name[0] == '-' ? Texts{Pattern("rising.xye")} : Texts{});
        EXPECT_EQ(run.status, 0) << run.errors;
        const auto told = run.With("started");
        const std::size_t count = std::size(plain_commands);
        ASSERT_EQ(told.size(), 2 * count);
        std::vector<Texts> expected;
        for (std::size_t i = 0; i < count; ++i) {
            const Plain_Command& row = plain_commands[i];
            const std::string role = row.of_suite ? suite / row.program : fs::path(row.program);
            const std::string file = row.file == std::string("pcr") ? pcr : *row.file == 0 ? "" : (suite / row.file).string();
            expected.push_back(file.empty() ? Texts{role} : Texts{role, file});
            EXPECT_EQ(told[i]["started"], file.empty() ? role : role + ' ' + Told(file)) << row.number;
            EXPECT_EQ(told[i]["arguments"].get<Texts>(), expected.back()) << row.number;
            EXPECT_EQ(told[i]["waited"], false) << row.number;
            EXPECT_EQ(told[i], told[i + count]) << "with programs on";
            expected.back()[0] = row.program;
        }
        std::vector<Texts> received;
        for (const Start& start : of_suite.Started(count)) {
            received.push_back({start.name});
            received.back().insert(received.back().end(), start.words.begin(), start.words.end());
        }
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(received, expected);
        EXPECT_TRUE(Nothing_Else_Ran());
    }
}

TEST_F(Programs_Test, AControlFileThatIsNotThereIsPassedToTabeditAlone) {
    const std::string commands = "command 40108\ncommand 40117\ncommand 40129\ncommand 40134\n";
    const auto words = [&] {
        std::string all;
        for (const Json& line : Do(commands).With("started")) all += std::to_string(line["arguments"].size());
        return all;
    };
    EXPECT_EQ(words(), "1111") << "nobody knows of one";
    Set_Refinement_File(work / "missing.pcr");
    EXPECT_EQ(words(), "1211");
    Set_Refinement_File(Touch(work / "without_point"));
    EXPECT_EQ(words(), "1211");
    Set_Refinement_File(Touch(work / "there.pcr"));
    EXPECT_EQ(words(), "2222");
}

TEST_F(Programs_Test, DocumentsInTextAreShownByTheInternalEditorWhereThatIsOn) {
    fs::create_directories(suite / "Docs");
    const Run_Result run = Do("programs on\ncommand 40082\nmain\ncommand 40121\nmain\ncommand 40084\n");
    ASSERT_EQ(run.With("started").size(), 1u) << "the pages, by the browser";
    EXPECT_EQ(desktop.Started(1).at(0).name, "firefox");
    ASSERT_EQ(run.Boxes().size(), 3u) << "documents that are not there";
    EXPECT_NE(run.Boxes()[1].find("quendrix.ins"), std::string::npos);
    EXPECT_NE(run.Boxes()[2].find("qx2k.inf"), std::string::npos);
}

// --- a series of refinements --------------------------------------------------------------------------------------------

struct Series {
    std::string boxes;  // the marks that are set, each by its letter among "PHMDC"
    std::string first, last, told_numbers, marks;
};
const Series all_series[] = {{"", "1", "2", "     1      2", " N N N N N"},
                             {"PHMDC", "7", "120", "     7    120", " Y Y Y Y Y"},
                             {"HC", "0", "999999", "     0 999999", " N Y N N Y"}};

TEST_F(Programs_Test, ASeriesOfRefinementsGetsItsWords) {
    const std::string labels[] = {"Save PRF files", "Save HKL files", "Save MIC/SIZ/STR files", "Save DIS files", "Generate CALC files"};
    std::string script;
    std::vector<Texts> expected;
    Texts lines;
    const std::string path = suite / "wqx2k";
    for (const std::string& name : odd_names) {
        const Series& row = all_series[expected.size() % std::size(all_series)];
        const std::string pcr = Touch(work / (name + ".pcr")), temperatures = Touch(work / (name + ".T")), base = work / name;
        const bool with_temperatures = expected.size() % 2 == 1;
        // The file of temperatures lies where the program runs; what begins with "-" there is no option.
        const std::string seen = (name[0] == '-' ? "./" : "") + name + ".T";
        std::string dialog = "command 40161\nfiles " + Word(pcr) + "\npress \"Select PCR file\"\nset \"Data file code [.ext] :\" data_\n" +
                             "set \"Enter first number :\" " + row.first + "\nset \"Enter last number :\" " + row.last + '\n';
        for (std::size_t k = 0; k < 5; ++k)
            if (row.boxes.find("PHMDC"[k]) != std::string::npos) dialog += "set \"" + labels[k] + "\" 1\n";
        if (with_temperatures) dialog += "files " + Word(temperatures) + "\npress \"Select Temperature file\"\n";
        for (const char* way : {"off", "on"}) script += "programs " + std::string(way) + '\n' + dialog + "press OK\n";

        Texts words = {path, "seq", base, "data_", row.first, row.last};
        for (const char mark : row.marks)
            if (mark != ' ') words.emplace_back(1, mark);
        std::string line = path + " seq " + Told(base) + " data_ " + row.told_numbers + row.marks;
        if (with_temperatures) {
            words.insert(words.end(), {"-temp", seen});
            line += " -temp " + Told(seen);
        }
        expected.push_back(words);
        lines.push_back(line);
    }
    const Run_Result run = Do(script);
    EXPECT_EQ(run.status, 0) << run.errors;
    const auto told = run.With("started");
    ASSERT_EQ(told.size(), 2 * expected.size());
    for (std::size_t i = 0; i < told.size(); ++i) {
        EXPECT_EQ(told[i]["started"], lines[i / 2]);
        EXPECT_EQ(told[i]["arguments"].get<Texts>(), expected[i / 2]);
        EXPECT_EQ(told[i]["directory"], work.string());
        EXPECT_EQ(told[i]["waited"], false);
    }
    std::vector<Texts> received;
    for (const Start& start : of_suite.Started(expected.size())) {
        received.push_back({path});
        received.back().insert(received.back().end(), start.words.begin(), start.words.end());
        EXPECT_EQ(start.directory, work);
    }
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(received, expected);
    EXPECT_TRUE(Nothing_Else_Ran());
}

// --- programs that are waited for ---------------------------------------------------------------------------------------

// What stands behind "xterm -e" and the program; what they leave behind is looked at elsewhere.
TEST_F(Programs_Test, ARefinementAndASimulationGetTheirWords) {
    const std::string radiox = suite / "Radiox";
    std::string script;
    std::vector<Texts> expected;
    Texts lines;
    const auto expect = [&](const std::string& program, const Texts& files, const std::string& last) {
        expected.push_back({"xterm", "-e", program});
        lines.push_back("xterm -e " + program);
        for (const std::string& file : files) {
            expected.back().push_back(file);
            lines.back() += ' ' + Told(file);
        }
        expected.back().push_back(last);
        lines.back() += ' ' + last;
    };
    for (const std::string& name : odd_names) {
        const std::string pcr = work / (name + ".pcr"), osl = Touch(work / (name + ".osl")), seen = (name[0] == '-' ? "./" : "") + name;
        // Every other one is a job of several patterns, which names its data itself.
        const bool with_data = expected.size() % 4 == 0;
        std::ofstream(pcr) << "COMM odd\n" << (with_data ? "" : "NPATT 2\n") << "!Job Npr\n   0   7\n";
        if (with_data) Touch(work / (name + ".dat"));
        expect("wqx2k", with_data ? Texts{seen, seen + ".dat"} : Texts{seen}, "lprompt");
        expect(radiox, {osl}, "calcp");
        for (const char* way : {"off", "on"})
            script += "programs " + std::string(way) + "\nfiles " + Word(pcr) + "\ncommand 40135\nfiles " + Word(osl) + "\ncommand 40207\n";
    }
    const Run_Result run = Do(script);
    const auto told = run.With("started");
    ASSERT_EQ(told.size(), 2 * expected.size()) << run.errors;
    for (std::size_t i = 0; i < told.size(); ++i) {
        const std::size_t row = i / 4 * 2 + i % 2;  // two with programs off, the same two with programs on
        EXPECT_EQ(told[i]["started"], lines[row]);
        EXPECT_EQ(told[i]["arguments"].get<Texts>(), expected[row]);
        EXPECT_EQ(told[i]["directory"], work.string());
        EXPECT_EQ(told[i]["waited"], true);
    }
    std::vector<Texts> received;
    for (const Start& start : of_suite.Started(2 * expected.size())) {
        if (start.name == "xterm") continue;
        received.push_back({"xterm", "-e", start.name == "wqx2k" ? "wqx2k" : radiox});
        received.back().insert(received.back().end(), start.words.begin(), start.words.end());
        EXPECT_EQ(start.directory, work);
        EXPECT_EQ(start.input + ' ' + start.leads + ' ' + start.open, "end yes 0 1 2 ") << "in the terminal's place";
    }
    std::sort(expected.begin(), expected.end());
    std::sort(received.begin(), received.end());
    EXPECT_EQ(received, expected);
    EXPECT_TRUE(Nothing_Else_Ran());
}

// --- programs that read the peaks just saved -----------------------------------------------------------------------------

TEST_F(Programs_Test, PeaksAreSavedAndReadUnderEveryName) {
    {
        std::ofstream file(work / "peaks.xye");
        file << "peaks\n! Scattering variable: 2theta\n! lambda = 1.5\n";
        for (int i = 0; i < 600; ++i)
            file << 20 + 0.02 * i << ' ' << 100 + i % 3 + 4000 * std::exp(-0.03 * (i - 200) * (i - 200)) << " 1\n";
    }
    const struct {
        const char *number, *program, *ending;
        bool in_console;
    } formats[] = {{"40098", "dicvol06", ".dic", false},
                   {"40160", "ito15", ".ito", false},
                   {"40191", "treor90", ".inp", false},
                   {"40177", "vecfind", ".sat", true}};
    for (const auto& format : formats) {
        const bool ito = format.program == std::string("ito15");
        const std::string path = suite / format.program;
        // Bare names, but for that which runs in a terminal: they are found beside the suite.
        const std::string program = format.in_console ? path : format.program;
        std::string script = "open " + Word(work / "peaks.xye") + "\ncommand 40096\ncommand 40092\npress 1\n";
        std::vector<Texts> expected;
        Texts lines;
        for (const std::string& name : odd_names) {
            const std::string saved = work / (name + format.ending), file = ito ? "ito_inp.dat" : saved;
            for (const char* way : {"off", "on"})  // the second time over the first one's file
                script += "programs " + std::string(way) + "\nfiles " + Word(saved) + (way[1] == 'n' ? "\nanswer yes" : "") +
                          "\nanswer yes\ncommand " + format.number + "\npress 1\n";
            expected.push_back(format.in_console ? Texts{"xterm", "-e", program, file} : Texts{program, file});
            lines.push_back((format.in_console ? "xterm -e " : "") + program + ' ' + Told(file));
        }
        const Run_Result run = Do(script);
        EXPECT_EQ(run.status, 0) << run.errors;
        const auto told = run.With("started");
        ASSERT_EQ(told.size(), 2 * expected.size()) << format.program;
        for (std::size_t i = 0; i < told.size(); ++i) {
            EXPECT_EQ(told[i]["started"], lines[i / 2]);
            EXPECT_EQ(told[i]["arguments"].get<Texts>(), expected[i / 2]);
            EXPECT_EQ(told[i]["directory"], work.string());
        }
        std::vector<Texts> received;
        for (const Start& start : of_suite.Started(expected.size() * (format.in_console ? 2 : 1))) {
            if (start.name == "xterm") continue;
            received.push_back(format.in_console ? Texts{"xterm", "-e", program} : Texts{program});
            received.back().insert(received.back().end(), start.words.begin(), start.words.end());
            EXPECT_EQ(start.directory, work);
        }
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(received, expected);
        if (ito) {
            EXPECT_EQ(Text_Of(work / "ito_inp.dat"), Text_Of(work / (odd_names.back() + format.ending)));
        }
    }
    EXPECT_TRUE(Nothing_Else_Ran());
}

// --- how they are started --------------------------------------------------------------------------------------------

TEST_F(Programs_Test, AProgramHasASessionOfItsOwnAndNoneOfOurFiles) {
    desktop.Do("firefox", "echo '{\"noise\":1}'; echo noise >&2");
    of_suite.Do("grepsolve", "/bin/sleep 1.5; : >\"$notes/outlived\"");
    const auto before = std::chrono::steady_clock::now();
    const Run_Result run = Do("programs on\ncommand 40084\ncommand 40142\nprint state\n", "bin", {Pattern("rising.xye")});
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(20));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.With("noise").size(), 0u) << "standard output is that of the script";
    for (const Start& start : desktop.Started(2)) {
        EXPECT_EQ(start.input + ' ' + start.leads, "end yes") << start.name;
        EXPECT_EQ(start.open, "0 1 2 ") << start.name;
        EXPECT_EQ(start.directory, directory.string());
    }
    for (int i = 0; i < 500 && !fs::exists(directory / "notes/outlived"); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_TRUE(fs::exists(directory / "notes/outlived"));
    EXPECT_NE(Text_Of(directory / "err.txt").find("noise"), std::string::npos);
}

TEST_F(Programs_Test, AMissingProgramIsNamedInTheStatusBar) {
    for (const bool known : {true, false}) {
        fs::remove_all(suite);
        if (known) fs::create_directories(suite);
        fs::remove(directory / "other bin/xdg-open");
        std::string script = "programs on\npref use_internal_editor 0\n";
        for (const Plain_Command& row : plain_commands) script += "command " + std::string(row.number) + "\nprint state\n";
        for (const File_Command& row : file_commands)
            script += "files " + Word(Touch(work / ("a" + std::string(row.ending)))) + "\ncommand " + row.number + "\nprint state\n";
        const Run_Result run = Do(script, "other bin");
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_LE(run.Boxes().size(), 1u) << "that of the preferences";
        EXPECT_EQ(run.With("started").size(), 0u);
        std::size_t state = 0;
        for (const Plain_Command& row : plain_commands) {
            const std::string text = Status_Bar(run, state++);
            EXPECT_NE(text.find(row.program), std::string::npos) << row.number << ": " << text;
        }
        for (const File_Command& row : file_commands) {
            const std::string text = Status_Bar(run, state++);
            EXPECT_NE(text.find(row.in_console ? "xterm" : row.program), std::string::npos) << row.number << ": " << text;
        }
    }
}

// The reported line stays as told where a bare name is found beside the suite alone.
TEST_F(Programs_Test, ABareNameIsLookedForBesideTheSuiteToo) {
    fs::copy_file(directory / "bin/gedit", suite / "gedit");
    const std::string script = "programs on\npref use_internal_editor 0\ncommand 40107\n";
    const Run_Result run = Do(script, "other bin");
    ASSERT_EQ(run.With("started").size(), 1u);
    EXPECT_EQ(run.With("started")[0]["started"], "gedit");
    EXPECT_EQ(of_suite.Started(1).at(0).name, "gedit");
}

TEST_F(Programs_Test, TheDesktopOpensWhatHasNoProgram) {
    const std::string pcr = Touch(work / "a b.pcr");
    Set_Refinement_File(pcr);
    const Run_Result run = Do("programs on\n" + All_Plain_Commands() + "print state\n", "other bin");
    EXPECT_EQ(run.status, 0) << run.errors;
    std::map<std::string, int> opened;
    for (const Start& start : of_suite.Started(5 + 9))
        if (start.name == "xdg-open") {
            ASSERT_EQ(start.words.size(), 1u);
            ++opened[start.words[0]];
        }
    std::map<std::string, int> expected = {{directory.string(), 1}, {pcr, 1}};
    for (const Plain_Command& row : plain_commands)
        if (std::string(row.file).starts_with("Docs")) ++expected[suite / row.file];
    EXPECT_EQ(opened, expected);

    // One that the user chose is not replaced; and with programs off the line of the table is told.
    const Run_Result chosen = Do("programs on\npref cmd_browser \"/no/such browser\"\ncommand 40084\nprint state\n", "other bin");
    EXPECT_EQ(chosen.With("started").size(), 0u);
    EXPECT_NE(Status_Bar(chosen).find("/no/such"), std::string::npos) << Status_Bar(chosen);
    EXPECT_EQ(Do("command 40132\n", "other bin").With("started").at(0)["started"], "gnome-open");
}

TEST_F(Programs_Test, ProgramsThatPreferencesName) {
    Touch(directory / "my $browser");
    fs::copy_file(directory / "bin/firefox", directory / "my $browser", fs::copy_options::overwrite_existing);
    const std::string path = directory / "my $browser";
    const std::string file = Touch(work / "a.sat");
    const Run_Result run = Do("programs on\npref cmd_browser " + Word(path) + "\ncommand 40084\npref cmd_browser " +
                              Word('"' + path + "\" --new 'x y'") + "\ncommand 40084\npref cmd_run \"\"\nfiles " + Word(file) +
                              "\ncommand 40178\npref cmd_run \"env -i\"\nfiles " + Word(file) + "\ncommand 40178\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const std::string page = suite / "Docs/qx_frame.htm", vecfind = suite / "vecfind";
    Texts lines;
    for (const Json& line : run.With("started")) lines.push_back(line["started"]);
    EXPECT_EQ(lines, (Texts{path + ' ' + Told(page), '"' + path + "\" --new 'x y' " + Told(page), vecfind + ' ' + Told(file),
                            "env -i " + vecfind + ' ' + Told(file)}));
    const std::vector<Start> starts = of_suite.Started(4);  // the stand-in of "env" runs nothing
    ASSERT_EQ(starts.size(), 4u);
    EXPECT_EQ(starts[0].words, (Texts{"-i", vecfind, file}));
    EXPECT_EQ(starts[1].words, (Texts{"--new", "'x", "y'", page}));
    EXPECT_EQ(starts[2].words, Texts{page});
    EXPECT_EQ(starts[3].words, Texts{file});
}

// --- what is told of other systems -----------------------------------------------------------------------------------

TEST_F(Programs_Test, LinesOfOtherSystems) {
    const std::string pcr = Touch(work / "a b.pcr"), dic = Touch(work / "c d.dic"), inp = Touch(work / "i.inp");
    Set_Refinement_File(pcr);
    const std::string script = All_Plain_Commands() + "files " + Word(dic) + "\ncommand 40188\nfiles " + Word(inp) + "\ncommand 40197\n";
    const struct {
        const char *system, *directory;
        Texts lines;
    } cases[] = {
        {"WIND",
         R"(C:\Quendrix Suite)",
         {"S\\qx_studio.exe P", "S\\tabedit.exe P", "S\\glinker.exe P", "S\\gmapper.exe P", "S\\grepsolve.exe", "cmd.exe", "explorer.exe",
          "notepad.exe P", "notepad.exe", "notepad.exe \"S\\Docs\\quendrix.ins\"", "notepad.exe \"S\\Docs\\qx2k.inf\"",
          "notepad.exe \"S\\Docs\\vantrelo-2006_news.txt\"", "C:\\Program Files\\Internet Explorer\\iexplore.exe \"S\\Docs\\qx_frame.htm\"",
          "C:\\Program Files\\Internet Explorer\\iexplore.exe \"S\\Docs\\Quendrix_News.htm\"",
          "explorer.exe \"S\\Docs\\Quendrix_Manual.pdf\"", "explorer.exe \"S\\Docs\\Manual_Quendrix_Studio.pdf\"", "S\\wdicvol06.exe D",
          "cmd /t:0e /c S\\Rawmerge -fil I"}},
        {"MACO",
         "/Applications/qx",
         {"S/qx_studio P", "S/tabedit P", "S/glinker P", "S/gmapper P", "S/grepsolve", "xterm", "open .", "bbedit P", "bbedit",
          "bbedit S/Docs/quendrix.ins", "bbedit S/Docs/qx2k.inf", "bbedit S/Docs/vantrelo-2006_news.txt",
          "open -a firefox S/Docs/qx_frame.htm", "open -a firefox S/Docs/Quendrix_News.htm", "open -a acroread S/Docs/Quendrix_Manual.pdf",
          "open -a acroread S/Docs/Manual_Quendrix_Studio.pdf", "S/dicvol06 D", "xterm -e S/Rawmerge -fil I"}},
    };
    for (const auto& row : cases) {
        const Run_Result run = Do("os " + std::string(row.system) + "\npref quendrix_dir " + Word(row.directory) + '\n' + script);
        EXPECT_EQ(run.status, 0) << run.errors;
        Texts lines;
        for (const Json& line : run.With("started")) lines.push_back(line["started"]);
        Texts expected = row.lines;
        const std::map<char, std::string> stands_for = {{'S', row.directory}, {'P', Told(pcr)}, {'D', Told(dic)}, {'I', Told(inp)}};
        for (std::string& line : expected) {
            std::string whole;
            for (std::size_t i = 0; i < line.size(); ++i) {
                const bool alone = i == 0 || line[i - 1] == ' ' || line[i - 1] == '"';
                const bool ends = i + 1 == line.size() || line[i + 1] == '\\' || line[i + 1] == '/';
                const auto found = stands_for.find(line[i]);
                whole += alone && ends && found != stands_for.end() ? found->second : std::string(1, line[i]);
            }
            line = whole;
        }
        EXPECT_EQ(lines, expected) << row.system;
    }
}

TEST_F(Programs_Test, ASystemWithoutProgramsStartsNone) {
    const Run_Result run =
        Do("os UNKN\n" + All_Plain_Commands() + "files " + Word(Touch(work / "a.sat")) + "\ncommand 40178\nprint state\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.With("started"), std::vector<Json>());
    EXPECT_NE(Status_Bar(run), "");
}

TEST_F(Programs_Test, TheTableIsPrinted) {
    const Run_Result run =
        Do("pref cmd_editor /opt/ed\nprint programs\nprint programs WIND\nprint programs UNKN\nos MACO\nprint programs\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("line 4: "), std::string::npos) << run.errors;
    const auto told = run.With("programs");
    ASSERT_EQ(told.size(), 3u);
    const auto name = [&](std::size_t i, const char* role) { return told[i]["programs"][role].get<std::string>(); };
    EXPECT_EQ(name(0, "cmd_editor") + ' ' + name(0, "prg_refine"), "/opt/ed wqx2k");
    EXPECT_EQ(name(1, "cmd_editor") + ' ' + name(1, "prg_refine"), "notepad.exe wqx2k.exe");
    EXPECT_EQ(name(2, "cmd_editor") + ' ' + name(2, "cmd_files"), "/opt/ed open .") << "what was chosen stays";
}

TEST_F(Programs_Test, PagesWithoutAnAddressAreDisabled) {
    const Run_Result run = Do("print menu 40079\nprint menu 40080\nprint menu 40130\ncommand 40079\n");
    for (const Json& entry : run.With("built")) EXPECT_EQ(entry["built"], false) << entry;
    EXPECT_EQ(run.With("built").size(), 3u);
    EXPECT_EQ(run.With("started").size(), 0u);
}

}  // namespace
}  // namespace vntl
