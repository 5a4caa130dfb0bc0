// Other programs through the real one: stand-ins write down what they are given, and what is told of them is compared with that.
#include "app/stand_ins.hpp"
#include "base/text.hpp"

#include <cmath>
#include <map>

namespace vntl {
namespace {

class Programs_Test : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        suite = directory / "the suite";
        work = directory / "in $(touch x) \"here\" é";
        fs::create_directories(work);
        stand_ins = Stand_Ins(suite, directory / "notes",
                              {"wqx2k", "tabedit", "qx_studio", "glinker", "grepsolve", "gmapper", "dicvol06", "vecfind", "treor90",
                               "Rawmerge", "ito15", "Radiox"});
        Stand_Ins(directory / "bin", directory / "notes", {"gedit", "gnome-open", "firefox", "acroread", "xterm", "env"});
        // Another desktop, with none of the usual programs.
        Stand_Ins(directory / "other bin", directory / "notes", {"xdg-open"});
        for (const char* bin : {"bin", "other bin"}) fs::create_symlink("/usr/bin/timeout", directory / bin / "timeout");
    }

    Run_Result Do(const std::string& script, const std::string& bin = "bin", const Texts& files = {}) const {
        // File 9 is one of ours that others would take over.
        return Script(script, files, "9</dev/null QUENDRIX=" + Quoted(suite) + " PATH=" + Quoted(directory / bin));
    }
    void Set_Refinement_File(const fs::path& file) const {
        fs::create_directories(directory / "home/.qxs");
        Write("home/.qxs/quendrix.dir", file.parent_path().string() + '\n' + file.filename().string() + '\n');
    }
    std::string Touch(const fs::path& file) const {
        Write(file, file.filename());
        return file;
    }
    static std::string Status_Bar(const Run_Result& run, std::size_t state = 0) { return run.With("plot_type").at(state)["status"][0]; }
    static Texts Lines(const Run_Result& run) {
        Texts lines;
        for (const Json& line : run.With("started")) lines.push_back(line["started"]);
        return lines;
    }

    // A command by the statements that lead to it, and what it starts.
    struct Row {
        std::string statements;
        Texts words;
        std::string directory;
        bool waited = false;
    };
    std::string Line(const Texts& words) const {
        std::string line;
        for (const std::string& word : words) {
            const bool number = word.find_first_not_of("0123456789") == std::string::npos;  // which stands in six columns
            const bool program = fs::path(word).parent_path() == suite;
            line += (line.empty() ? "" : " ") + (number ? std::string(6 - word.size(), ' ') + word : program ? word : Told(word));
        }
        return line;
    }
    // The rows with programs off, and the same with programs on: both are told alike, and the programs get it word for word.
    void Expect_Starts(const std::vector<Row>& rows, const std::string& before = {}) const {
        std::string script = before;
        for (const char* way : {"programs off\n", "programs on\n"}) {
            script += way;
            for (const Row& row : rows) script += row.statements;
        }
        const Run_Result run = Do(script);
        EXPECT_EQ(run.status, rows[0].waited ? 1 : 0) << run.errors << "a run that is waited for lacks its result here";
        const auto told = run.With("started");
        ASSERT_EQ(told.size(), 2 * rows.size()) << run.output << run.errors;
        std::vector<Texts> expected, received, missing;
        const auto expect = [&](const Row& row, std::size_t program) {
            expected.push_back({fs::path(row.words[program]).filename(), row.directory, "end leads 0 1 2 "});
            expected.back().insert(expected.back().end(), row.words.begin() + static_cast<std::ptrdiff_t>(program) + 1, row.words.end());
        };
        for (std::size_t i = 0; i < told.size(); ++i) {
            const Row& row = rows[i % rows.size()];
            EXPECT_EQ(told[i],
                      (Json{{"started", Line(row.words)}, {"arguments", row.words}, {"directory", row.directory}, {"waited", row.waited}}));
            if (i >= rows.size()) continue;
            expect(row, 0);
            if (row.words.size() == 1 || row.words[1] != "-e") continue;
            expected.back()[4] = suite / row.words[2];  // which the terminal finds by its path alone
            expect(row, 2);
        }
        for (const Start& start : stand_ins.Started(expected.size())) {
            received.push_back({start.name, start.directory, start.state});
            received.back().insert(received.back().end(), start.words.begin(), start.words.end());
        }
        std::sort(expected.begin(), expected.end());
        std::sort(received.begin(), received.end());
        std::set_difference(expected.begin(), expected.end(), received.begin(), received.end(), std::back_inserter(missing));
        EXPECT_EQ(missing, std::vector<Texts>()) << "of " << expected.size();
        for (const fs::path& place : {directory, work, suite, directory / "home", directory / "bin"})
            EXPECT_FALSE(fs::exists(place / "x")) << "something else ran";
    }

    fs::path suite, work;
    Stand_Ins stand_ins;
};

// Every command that starts a program at once; `file` stands for its file.
struct Plain_Command {
    const char *number, *program;
    bool of_suite;
    std::string file;
};
const Plain_Command plain_commands[] = {
    {"40108", "qx_studio", true, "pcr"},
    {"40117", "tabedit", true, "pcr"},
    {"40129", "glinker", true, "pcr"},
    {"40134", "gmapper", true, "pcr"},
    {"40104", "gedit", false, "pcr"},
    {"40142", "grepsolve", true, ""},
    {"40128", "xterm", false, ""},
    {"40132", "gnome-open", false, ""},
    {"40107", "gedit", false, ""},
    {"40082", "gedit", false, "Docs/quendrix.ins"},
    {"40121", "gedit", false, "Docs/qx2k.inf"},
    {"40076", "gedit", false, "Docs/vantrelo-2006_news.txt"},
    {"40084", "firefox", false, "Docs/qx_frame.htm"},
    {"40156", "firefox", false, "Docs/Quendrix_News.htm"},
    {"40085", "acroread", false, "Docs/Quendrix_Manual.pdf"},
    {"40086", "acroread", false, "Docs/Manual_Quendrix_Studio.pdf"},
};
std::string All_Plain_Commands(const std::string& behind_each = {}) {
    std::string script = "pref use_internal_editor 0\n";
    for (const Plain_Command& row : plain_commands) script += "command " + std::string(row.number) + '\n' + behind_each;
    return script;
}

// Those that let the user choose the file.
struct File_Command {
    const char *number, *program, *ending;
    bool in_console;
};
constexpr File_Command file_commands[] = {{"40178", "vecfind", ".sat", true},
                                          {"40188", "dicvol06", ".dic", false},
                                          {"40192", "ito15", ".ito", false},
                                          {"40193", "treor90", ".inp", false},
                                          {"40197", "Rawmerge", ".inp", true}};
std::string On_File(const std::string& number, const std::string& file) { return "files " + Word(file) + "\ncommand " + number + '\n'; }

// --- every name is one word ----------------------------------------------------------------------------------------------

TEST_F(Programs_Test, AFileThatIsChosenIsOneWord) {
    for (const File_Command& row : file_commands) {
        std::vector<Row> rows;
        for (const std::string& name : odd_names) {
            const std::string file = Touch(work / (name + row.ending)), program = row.program;
            Texts words = row.in_console ? Texts{"xterm", "-e", suite / program} : Texts{suite / program};
            if (program == "Rawmerge") words.push_back("-fil");
            words.push_back(program == "ito15" ? "ito_inp.dat" : file);
            rows.push_back({On_File(row.number, file), words, work});
        }
        Expect_Starts(rows);
    }
    // A name in another encoding than the desktop's: the report cannot show its letters, the program gets them.
    const std::string file = Touch(work / "caf\xE9.dic");
    EXPECT_EQ(Do("programs on\n" + On_File("40188", file)).status, 0);
    EXPECT_EQ(stand_ins.Started(1).at(0).words, Texts{file});
}

// A run leaves its control file to the commands behind it; the others are started once. Every other job is one of several patterns, which
// names its data itself.
TEST_F(Programs_Test, TheFileOfARefinementIsOneWordForEveryCommand) {
    std::vector<Row> rows;
    for (const std::string& name : odd_names) {
        const bool with_data = (&name - &odd_names[0]) % 2 == 0;
        const std::string pcr = Touch(work / (name + ".pcr")), osl = Touch(work / (name + ".osl")),
                          seen = (name[0] == '-' ? "./" : "") + name;
        Write(pcr, std::string("COMM odd\n") + (with_data ? "" : "NPATT 2\n") + "!Job Npr\n   0   7\n");
        if (with_data) Touch(work / (name + ".dat"));
        rows.push_back({On_File("40135", pcr), {"xterm", "-e", "wqx2k", seen}, work, true});
        if (with_data) rows.back().words.push_back(seen + ".dat");
        rows.back().words.push_back("lprompt");
        const Texts simulation = {"xterm", "-e", suite / "Radiox", osl, "calcp"};
        rows.push_back({On_File("40207", osl), simulation, work, true});
        rows.push_back(
            {"command 40213\nset 2135 \"5 5 5 90 90 90\"\nset 2136 \"P 1\"\nset 2150 " + Word(osl) + "\nanswer yes\npress \"Run Radiox\"\n",
             simulation, work, true});
        for (const Plain_Command& row : plain_commands) {
            if (row.file != "pcr" && name != "plain") continue;
            rows.push_back(
                {"command " + std::string(row.number) + '\n', {row.of_suite ? suite / row.program : fs::path(row.program)}, directory});
            if (!row.file.empty()) rows.back().words.push_back(row.file == "pcr" ? fs::path(pcr) : suite / row.file);
        }
    }
    Expect_Starts(rows, "pref use_internal_editor 0\n");
}

TEST_F(Programs_Test, NamesOfASeriesAreWords) {
    const char* labels[] = {"Save PRF files", "Save HKL files", "Save MIC/SIZ/STR files", "Save DIS files", "Generate CALC files"};
    std::vector<Row> rows;
    for (const std::string& name : odd_names) {
        const std::size_t marks = rows.size() + 8;  // each differs in some row from each other one
        const std::string pcr = Touch(work / (name + ".pcr")), temperatures = Touch(work / (name + ".T"));
        const std::string first = std::to_string(rows.size()), last = rows.size() % 2 == 0 ? "120" : "999999";
        Row row = {"command 40161\n" + ("files " + Word(pcr)) + "\npress \"Select PCR file\"\nset \"Data file code [.ext] :\" -d\n" +
                       "set \"Enter first number :\" " + first + "\nset \"Enter last number :\" " + last + '\n',
                   {suite / "wqx2k", "seq", work / name, "./-d", first, last},
                   work};
        for (std::size_t k = 0; k < std::size(labels); ++k) {
            const bool set = (marks >> k & 1) != 0;
            if (set) row.statements += "set \"" + std::string(labels[k]) + "\" 1\n";
            row.words.push_back(set ? "Y" : "N");
        }
        if (rows.size() % 2 == 1) {
            row.statements += "files " + Word(temperatures) + "\npress \"Select Temperature file\"\n";
            // It lies where the program runs; what begins with "-" there is no option.
            row.words.insert(row.words.end(), {"-temp", (name[0] == '-' ? "./" : "") + name + ".T"});
        }
        row.statements += "press OK\n";
        rows.push_back(row);
    }
    Expect_Starts(rows);
}

// The program gets the file that was just saved. Bare names, but for that which runs in a terminal: they are found beside the suite.
TEST_F(Programs_Test, PeaksAreSavedAndReadUnderEveryName) {
    std::string pattern = "peaks\n! Scattering variable: 2theta\n! lambda = 1.5\n";
    for (int i = 0; i < 600; ++i)
        pattern +=
            std::to_string(20 + 0.02 * i) + ' ' + std::to_string(100 + i % 3 + 4000 * std::exp(-0.03 * (i - 200) * (i - 200))) + " 1\n";
    Write("peaks.xye", pattern);
    const std::pair<const char*, File_Command> formats[] = {
        {"40177", file_commands[0]}, {"40098", file_commands[1]}, {"40160", file_commands[2]}, {"40191", file_commands[3]}};
    std::vector<Row> rows;
    for (const auto& [number, row] : formats)
        for (const std::string& name : odd_names) {
            const std::string saved = Touch(work / (name + row.ending)), file = row.program == std::string("ito15") ? "ito_inp.dat" : saved;
            rows.push_back({"answer yes\nanswer yes\n" + On_File(number, saved) + "press 1\n",
                            row.in_console ? Texts{"xterm", "-e", suite / row.program, file} : Texts{row.program, file}, work});
        }
    Expect_Starts(rows, "open peaks.xye\ncommand 40096\ncommand 40092\npress 1\n");
    const std::string copy = Text_Of(work / "ito_inp.dat");
    EXPECT_TRUE(copy.starts_with("peaks") && copy == Text_Of(work / (odd_names.back() + ".ito"))) << copy;
}

// --- files that are not as they should be --------------------------------------------------------------------------------

TEST_F(Programs_Test, ACancelledSelectionStartsNothingAndCostsNothing) {
    std::string script = "programs on\nopen " + Pattern("rising.xye") + "\nprint state\n";
    for (const File_Command& row : file_commands) script += "files cancel\ncommand " + std::string(row.number) + '\n';
    script += "files cancel\ncommand 40135\nfiles cancel\ncommand 40207\n";
    const Run_Result run = Do(script + "print state\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.With("started").size() + stand_ins.Started(0).size(), 0u);
    EXPECT_EQ(run.With("plot_type").at(0), run.With("plot_type").at(1));
}

// Ito's file is in the way, or is the one that was chosen.
TEST_F(Programs_Test, ItoReadsACopy) {
    const std::string own = Touch(work / "ito_inp.dat"), file = Touch(work / "new.ito");
    EXPECT_EQ(Do(On_File("40192", own)).status, 0);
    EXPECT_EQ(Text_Of(own), "ito_inp.dat");
    EXPECT_EQ(Do(On_File("40192", file)).status, 0);
    EXPECT_EQ(Text_Of(own), "new.ito");
    fs::remove(own);
    fs::create_directories(own);
    const Run_Result in_the_way = Do("programs on\n" + On_File("40192", file) + On_File("40192", work / "missing.ito"));
    EXPECT_EQ(in_the_way.status, 1);
    ASSERT_EQ(in_the_way.Told().size(), 2u);
    EXPECT_TRUE(Contains(in_the_way.Told()[0], "ito_inp.dat") && Contains(in_the_way.Told()[1], "missing.ito")) << in_the_way.output;
    EXPECT_EQ(in_the_way.With("started").size(), 0u);
}

TEST_F(Programs_Test, AControlFileThatIsNotThereIsPassedToTabeditAlone) {
    const auto words = [&] {
        std::string all;
        for (const Json& line : Do("command 40108\ncommand 40117\ncommand 40129\ncommand 40134\n").With("started"))
            all += std::to_string(line["arguments"].size());
        return all;
    };
    EXPECT_EQ(words(), "1111") << "nobody knows of one";
    Set_Refinement_File(work / "missing.pcr");
    EXPECT_EQ(words(), "1211");
    Set_Refinement_File(Touch(work / "without_point"));
    EXPECT_EQ(words(), "1211");
}

TEST_F(Programs_Test, DocumentsInTextAreShownByTheInternalEditorWhereThatIsOn) {
    fs::create_directories(suite / "Docs");
    const Run_Result run = Do("programs on\ncommand 40082\nmain\ncommand 40121\nmain\ncommand 40084\n");
    EXPECT_EQ(stand_ins.Started(1).at(0).name, "firefox");
    ASSERT_EQ(run.Told().size(), 2u) << "documents that are not there";
    EXPECT_TRUE(Contains(run.Told()[0], "quendrix.ins") && Contains(run.Told()[1], "qx2k.inf")) << run.output;
}

// --- how they are found and started --------------------------------------------------------------------------------------

TEST_F(Programs_Test, AProgramOutlivesOursAndKeepsOffItsOutput) {
    stand_ins.Do("firefox", "echo '{\"noise\":1}'; echo noise >&2");
    stand_ins.Do("grepsolve", "/bin/sleep 1.5; : >\"$notes/outlived\"");
    const Run_Result run = Do("programs on\ncommand 40084\ncommand 40142\n", "bin", {Pattern("rising.xye")});
    EXPECT_FALSE(fs::exists(directory / "notes/outlived"));
    EXPECT_EQ(run.With("noise").size(), 0u) << "standard output is that of the script";
    for (int i = 0; i < 500 && !fs::exists(directory / "notes/outlived"); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_TRUE(fs::exists(directory / "notes/outlived"));
    EXPECT_TRUE(Contains(Text_Of(directory / "err.txt"), "noise"));
}

TEST_F(Programs_Test, AMissingProgramIsNamedInTheStatusBar) {
    for (const bool known : {true, false}) {
        fs::remove_all(suite);
        if (known) fs::create_directories(suite);
        fs::remove(directory / "other bin/xdg-open");
        std::string script = "programs on\n" + All_Plain_Commands("print state\n");
        Texts names;
        for (const Plain_Command& row : plain_commands) names.push_back(row.program);
        for (const File_Command& row : file_commands) {
            script += On_File(row.number, Touch(work / ("a" + std::string(row.ending)))) + "print state\n";
            names.push_back(row.in_console ? "xterm" : row.program);
        }
        const Run_Result run = Do(script, "other bin");
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(run.Told().size() + run.With("started").size(), 0u);
        for (std::size_t i = 0; i < names.size(); ++i)
            EXPECT_TRUE(Contains(Status_Bar(run, i), names[i])) << names[i] << Status_Bar(run, i);
    }
}

TEST_F(Programs_Test, TheDesktopOpensWhatHasNoProgram) {
    const std::string pcr = Touch(work / "a b.pcr");
    Set_Refinement_File(pcr);
    EXPECT_EQ(Do("programs on\n" + All_Plain_Commands(), "other bin").status, 0);
    std::map<std::string, int> opened, expected = {{directory.string(), 1}, {pcr, 1}};
    for (const Start& start : stand_ins.Started(5 + 9))
        if (start.name == "xdg-open") ++opened[start.words.size() == 1 ? start.words[0] : "not one word"];
    for (const Plain_Command& row : plain_commands)
        if (row.file.starts_with("Docs")) ++expected[suite / row.file];
    EXPECT_EQ(opened, expected);

    // One that the user chose is not replaced; and with programs off the line of the table is told.
    const Run_Result chosen = Do("programs on\npref cmd_browser \"/no/such browser\"\ncommand 40084\nprint state\n", "other bin");
    EXPECT_EQ(chosen.With("started").size(), 0u);
    EXPECT_TRUE(Contains(Status_Bar(chosen), "/no/such")) << Status_Bar(chosen);
    EXPECT_EQ(Lines(Do("command 40132\n", "other bin")), Texts{"gnome-open"});
}

TEST_F(Programs_Test, ProgramsThatPreferencesName) {
    const std::string path = directory / "my $browser", file = Touch(work / "a.sat"), page = suite / "Docs/qx_frame.htm",
                      vecfind = suite / "vecfind";
    fs::copy_file(directory / "bin/firefox", path);
    const Run_Result run =
        Do("programs on\npref cmd_browser " + Word(path) + "\ncommand 40084\npref cmd_browser " + Word('"' + path + "\" --new 'x y'") +
           "\ncommand 40084\npref cmd_run \"\"\n" + On_File("40178", file) + "pref cmd_run \"env -i\"\n" + On_File("40178", file));
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Lines(run), (Texts{path + ' ' + Told(page), '"' + path + "\" --new 'x y' " + Told(page), vecfind + ' ' + Told(file),
                                 "env -i " + vecfind + ' ' + Told(file)}));
    std::vector<Texts> words;
    for (const Start& start : stand_ins.Started(4)) words.push_back(start.words);  // the stand-in of "env" runs nothing
    EXPECT_EQ(words, (std::vector<Texts>{{"-i", vecfind, file}, {"--new", "'x", "y'", page}, {page}, {file}}));
}

// --- what is told of other systems -----------------------------------------------------------------------------------

TEST_F(Programs_Test, LinesOfOtherSystems) {
    const std::string pcr = Touch(work / "a b.pcr"), dic = Touch(work / "c d.dic"), inp = Touch(work / "i.inp");
    Set_Refinement_File(pcr);
    const struct {
        std::string system, suite, lines;
    } cases[] = {
        {"WIND", R"(C:\Quendrix Suite)",
         R"($S\qx_studio.exe $P|$S\tabedit.exe $P|$S\glinker.exe $P|$S\gmapper.exe $P|notepad.exe $P|$S\grepsolve.exe|cmd.exe|)"
         R"(explorer.exe|notepad.exe|notepad.exe "$S\Docs\quendrix.ins"|notepad.exe "$S\Docs\qx2k.inf"|)"
         R"(notepad.exe "$S\Docs\vantrelo-2006_news.txt"|C:\Program Files\Internet Explorer\iexplore.exe "$S\Docs\qx_frame.htm"|)"
         R"(C:\Program Files\Internet Explorer\iexplore.exe "$S\Docs\Quendrix_News.htm"|explorer.exe "$S\Docs\Quendrix_Manual.pdf"|)"
         R"(explorer.exe "$S\Docs\Manual_Quendrix_Studio.pdf"|$S\wdicvol06.exe $D|cmd /t:0e /c $S\Rawmerge -fil $I|)"},
        {"MACO", "/Applications/qx",
         "$S/qx_studio $P|$S/tabedit $P|$S/glinker $P|$S/gmapper $P|bbedit $P|$S/grepsolve|xterm|open .|bbedit|"
         "bbedit $S/Docs/quendrix.ins|bbedit $S/Docs/qx2k.inf|bbedit $S/Docs/vantrelo-2006_news.txt|"
         "open -a firefox $S/Docs/qx_frame.htm|open -a firefox $S/Docs/Quendrix_News.htm|open -a acroread $S/Docs/Quendrix_Manual.pdf|"
         "open -a acroread $S/Docs/Manual_Quendrix_Studio.pdf|$S/dicvol06 $D|xterm -e $S/Rawmerge -fil $I|"},
        {"UNKN", "/opt/qx", ""},  // a system without programs
    };
    for (const auto& row : cases) {
        const Run_Result run = Do("os " + row.system + "\npref quendrix_dir " + Word(row.suite) + '\n' + All_Plain_Commands() +
                                  On_File("40188", dic) + On_File("40197", inp) + "print state\n");
        EXPECT_EQ(run.status, 0) << run.errors;
        std::string lines, expected = row.lines;
        for (const std::string& line : Lines(run)) lines += line + '|';
        for (const auto& [sign, text] : {std::pair("$S", row.suite), {"$P", Told(pcr)}, {"$D", Told(dic)}, {"$I", Told(inp)}})
            expected = Replace_All(expected, sign, text);
        EXPECT_EQ(lines, expected) << row.system;
        EXPECT_TRUE(!lines.empty() || !Status_Bar(run).empty());
    }
}

TEST_F(Programs_Test, TheTableIsPrinted) {
    const Run_Result run =
        Do("pref cmd_editor /opt/ed\nprint programs\nprint programs WIND\nprint programs UNKN\nprint programs LINU MACO\n"
           "os MACO\nprint programs\n");
    EXPECT_TRUE(run.status == 1 && Contains(run.errors, "line 4: ") && Contains(run.errors, "line 5: ")) << run.errors;
    std::string all;
    for (const Json& line : run.With("programs")) {
        EXPECT_EQ(line["programs"].size(), 19u);
        for (const char* role : {"cmd_editor", "cmd_files"}) all += line["programs"][role].get<std::string>() + '|';
    }
    EXPECT_EQ(all, "/opt/ed|gnome-open|notepad.exe|explorer.exe|/opt/ed|open .|") << "what was chosen stays";
}

TEST_F(Programs_Test, PagesWithoutAnAddressAreDisabled) {
    const Run_Result run = Do("print menu 40079\nprint menu 40080\nprint menu 40130\ncommand 40079\n");
    for (const Json& entry : run.With("built")) EXPECT_EQ(entry["built"], false) << entry;
    EXPECT_EQ(run.With("built").size(), 3u);
    EXPECT_EQ(run.With("started").size(), 0u);
}

}  // namespace
}  // namespace vntl
