// Statements at random, from a seed: whatever a user does in whatever order, the program keeps its session in order and ends by itself.
#include <random>
#include <sstream>
#include <string_view>

#include "app/testing.hpp"
#include "instrument/instrument_file.hpp"
#include "instrument/numor_text.hpp"
#include "instrument/simulated_crystal.hpp"
#include "patterns/prf_files.hpp"
#include "patterns/sample_files.hpp"

namespace vntl {
namespace {

constexpr int statements = 2500;

// Words and phrases to choose from, behind bars.
constexpr const char* files =
    "rising.xye|rising.xye|calculated.xys|calculated.xys|mixed_case.Xy|eleven_points.dat|eleven_points.dat|flight.xye|no_extension|text."
    "txt|"
    "refined.prf|refined.prf|cut.prf|results.seq|table.gdf|pie.gdf|bad.gdf|saved.w3d|peaks.xrf|falling.xye|noise.xye|empty.dat|ten_points."
    "dat|huge_claim.dat|strange.dat|home|missing.xye|"
    "data/r3b/100001|data/r3b/100003|missing.buf|good.buf|good.buf|mixed.buf|bad.buf|bank.3t2|saved.dat|saved.xys|\"\"|\"odd \\\" "
    "#.xye\"|/";
constexpr const char* keys = "Escape|Escape|Enter|Tab|Space|Backspace|Delete|Left|Up|Home|End|F1|F5|Back|Forward|a|z|\"#\"";
constexpr const char* fields = "1|2|1001|1002|1003|1004|1010|1599|1603|1701|1702|\"Free Format (Inst. 0)\"|OK|Cancel|Text";
constexpr const char* formats = "1002|1003|1004|1005|1006|1007|1008|1009|1010|1011|1599|1600|1601|1602|1603";
constexpr const char* values = "0|1|-1|12|1e30|abc|\"\"|999999999999|\"two words\"";
constexpr const char* what =
    "rows|state|pointer|cursor|menu|menu 40105|toolbars|peaks|background|hklgen|fit|dialog|picture|recent|prefs|paths|timing|data 1|data 2 "
    "3 "
    "5|data 99|"
    "reflections 1|excluded 1|waterfall|picture full|grid|grid full|timers";
constexpr const char* preferences =
    "pref legend_pos 4|pref legend_pos 1|pref legend_size 1000|pref title_size 1000|pref title_single \"\xff # title\"|pref ylabel_pos 9|"
    "pref xscale_size 1|pref xscale_style 7|pref excl_ignore_sides 1|pref excl_ignore_sides 0|pref excl_show 0|pref refl_live 1|"
    "pref hide_negative 0|pref profile_styles/1/marker_size 1000|pref profile_styles/1/line_style -1|pref profile_styles/2/marker_type 1|"
    "pref profile_styles/13/line_pitch 1|pref colour_a 1,2,3|pref win_width 1|pref frame_background abc|"
    "pref contour_type 1|pref contour_type 3|pref contour_type 4|pref contour_type 5|pref contour_levels 13|pref contour_granularity 0|"
    "pref surface_type 2|pref surface_type 3|pref surface_type 4|pref saturation_on 1|pref saturation_value -1|pref saturation_on 0|"
    "style paper temperature|style paper rows|style Screen|style DARK|style Default|style nostyle|style text.set";
constexpr const char* odd = " |# a remark|\"unclosed|print|mouse down|set|\xff\xfe|open|files|cell 1 2|dialog x|directory \"\"";
// What is done most, so that long ways through the program come about.
constexpr const char* commands =
    "40553|40554|40556|40557|40027|40226|40508|40549|40550|40551|40551|40021|40111|40106|40109|40133|40116|40118|40119|40136|40137|40503|"
    "40504|40105|40105|40113|"
    "40501|40502|40505|40018|"
    "40107|"
    "40108|40117|40142|40188|40192|40197|40128|40132|40135|40207|40082|40085|40104|40015|40009|40038|40067|40070|40044|40019|40102|40031|"
    "40227|40028|40125|40031|40125";

// What opens a dialog, and what is done in it.
constexpr const char* dialogs =
    "40100|40123|40101|40559|40162|40163|40020|40090|40092|40180|40159|40017|40042|40043|40089|40081|40087|40088|40545|40023|40149|40115|"
    "40124|"
    "40151|"
    "40034|"
    "40044|40044|40122|40220|40222|40025|40025|40026|40036|40037|40141|40141|40158|40158|40157|40208|40209|40209|"
    "40552|40552|40010|40002|40098|40160|40177|40191|40161|40213|40213|40210|40210|40211|40211|40212|40212";
constexpr const char* dialog_fields =
    "4720|4720|4721|4723|4724|4725|1020|1021|1282|1990|2201|2202|2203|2204|2205|1330|1647|1226|1227|1530|1531|1666|1314|1316|1317|1327|"
    "1306|1307|1356|1357|1358|1359|"
    "1712|1713|1714|1715|1721|1722|"
    "1732|"
    "1741|1802|1804|1812|1821|1822|1823|1824|1794|1795|1796|1799|1845|1848|1849|1850|1450|1451|1453|1460|1460|1461|1463|1465|1470|1473|"
    "1611|1614|1615|1631|1633|1241|1242|1251|1257|1271|1276|1901|1910|2135|2136|2137|2140|2141|2150|2101|2102|2105|2106|2112|4601|4605|"
    "4606|4607|4609|4611|4622|4623|4624|4625|4802|4803|4807|4420|4423|4424|4424|4426|4427|4428|4429|4431|4432|4433|4434|4438|4440|4443|"
    "4450|4451|4452";
constexpr const char* dialog_buttons =
    "4727|1|1|1|2|1437|1438|1441|1442|1332|1333|1528|1529|1532|1533|1534|1665|1328|1716|1717|1724|1725|1738|1739|1740|1752|1753|1754|1782|"
    "1800|"
    "1800|2002|2003|2004|2006|4602|1612|1632|2130|2131|2132|2133|3|4422|4437";
constexpr const char* grids =
    "1331 4|1331 4|1527 2|1527 2|1527 3|1527 4|1305 2|1318 2|1318 3|1711 3|1711 3|1723 3|1736 3|1742 1|1781 2|1791 3|1791 4";
constexpr const char* modes =
    "40096|40097|40093|40094|40558|40147|40138|40139|40144|40145|40148|40095|40099|40110|40216|40217|40218|40219|40221";

// What opens a window of its own, what is done in it, and how both that hold the others back are left.
constexpr const char* own_windows = "40030|40022|40022|40179|40155";
constexpr const char* own_window_deeds =
    "command 40127|command 40131|command 40131|command 40103|command 40126|command 40114|command 40200|command 40203|command 40198|"
    "command 40195|command 40196|command 40201|command 40206|command 40046|command 40047|command 40062|command 40061|command 40063|"
    "command 40048|command 40040|command 40071|command 40073|command 40074|command 40059|command 40050|command 40052|command 40053|"
    "command 40054|command 40078|command 40223|command 40032|command 40039|command 40065|timer 1|timer 1|timer 2|press 1|press 2|"
    "set 1 -1|set \"Ang. Elevation\" 90|set Distance 2|set \"X Axis (Right/Left)\" 0.1|mouse wheelup 600 400|mouse wheeldown 600 400|"
    "mouse down 500 300|mouse move 700 500|mouse up 900 500|mouse data down 12 10|mouse data up 14 100|mouse down right 600 400|"
    "resize 300 200|resize 900 700|print model3d|print generic|print quickview|print picture|print menu|print dialog|export a.svg|main|"
    "cell 1 1 1 1|cell 2 2 5 1|key Escape";
const std::string leave_own_windows =
    "press 2\ndialog 43\ncommand 40041\npress 2\ndialog 42\ncommand 40205\npress 2\ndialog 44\ncommand 40532\nmain";

// What a change that is taken back and made again leaves as it was.
const std::string undo_and_redo =
    "print changes\nprint rows\nprint data 1\nprint peaks\nprint background\nprint changes\nmain\ncommand 40506\nmain\ncommand 40507\n"
    "print changes\nprint rows\nprint data 1\nprint peaks\nprint background\nprint changes";

// Files of instruments: each one whole, cut short, and with some of its characters replaced.
std::vector<test::Sample_File> Instrument_Files() {
    std::mt19937 random(7);
    std::vector<test::Sample_File> all;
    for (const test::Sample_File& whole : test::Sample_Files(40)) {
        all.push_back(whole);
        all.push_back({whole.code, "half " + whole.name, whole.text.substr(0, random() % whole.text.size())});
        all.push_back({whole.code, "bad " + whole.name, whole.text});
        for (int i = 0; i < 5; ++i) all.back().text[random() % whole.text.size()] = "019-.Ex \n\xE9"[random() % 10];
    }
    return all;
}

class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {
        for (const test::Sample_File& file : Instrument_Files()) instrument_files_ += '"' + file.name + "\"|";
    }
    std::string Statement() {
        const int choice = Below(100);
        if (choice < 8) return Files("drop");
        if (choice < 14) return Files("open") + (Below(2) == 0 ? Format_Answers() : "");
        if (choice < 17)
            return "files " + (Below(2) == 0 ? One_Of(files)
                                             : One_Of("data/r3b/100001|data/r3b/100003|text.txt|cancel|cancel|saved.w3d|a.png|b.svg|c.gif|/"
                                                      "x/d.ps|good.buf|saved.buf|saved|saved.xys|bank.3t2"));
        if (choice < 27) return Command();
        if (choice < 32) return Dialog();
        if (choice < 35) return "command " + One_Of(modes);
        if (choice < 65) return Mouse();
        if (choice < 69) return "key " + One_Of(keys);
        if (choice == 69) return Below(3) == 0 ? Viewer() : Own_Window();
        if (choice < 73) return "press " + One_Of("1|2|1|2|1002|OK|Find next");
        if (choice < 76) return "set " + One_Of(fields) + ' ' + One_Of(values);
        if (choice < 77) return "cell " + One_Of(fields) + " 1 " + std::to_string(Below(4)) + ' ' + One_Of(values);
        if (choice < 78) return "select " + One_Of(fields) + ' ' + One_Of(values);
        if (choice < 79) return "answer " + One_Of("yes|no|ok|cancel|retry|abort|ignore");
        if (choice == 80 || choice == 94) return undo_and_redo;
        if (choice == 79) return List();
        if (choice < 81)
            return Below(2) == 0 ? One_Of(preferences)
                                 : One_Of(
                                       "waterfall 0.2 hidden|waterfall 1|waterfall 0.01 temperature|waterfall 0|waterfall -1|directory "
                                       "home|colour 1 2 3|colour 1 2 300|programs off|timer 1|timer -1");
        if (choice == 81) return Below(3) == 0 ? Quick_View() : Reflections();
        if (choice < 84) return "resize " + std::to_string(1 + Below(Below(8) == 0 ? 1500 : 500)) + ' ' + std::to_string(1 + Below(700));
        if (choice < 89)
            return One_Of("main|main|main|dialog 156|dialog 128|dialog 40|dialog 41|dialog 401|dialog 104|dialog 403|dialog 0|dialog -7");
        // A window that is surely not the main one is opened before it is closed; behind a dialog, the dialog closes.
        if (choice < 91) return leave_own_windows + "\ncommand " + One_Of("40505|40018|40107|40179") + "\nclose";
        if (choice < 97) return "print " + One_Of(what);
        return choice < 99 ? "export " + One_Of("a.png|b.svg|c.pdf|d.xyz") : One_Of(odd);
    }

private:
    int Below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

    std::string One_Of(const char* phrases) {
        std::vector<std::string> list;
        std::istringstream text(phrases);
        for (std::string phrase; std::getline(text, phrase, '|');) list.push_back(phrase);
        return list[static_cast<std::size_t>(Below(static_cast<int>(list.size())))];
    }

    std::string Files(const std::string& verb) {
        std::string statement = verb;
        for (int i = Below(3); i >= 0; --i, ++opened_)
            statement += ' ' + (Below(2) == 0 ? One_Of(files) : One_Of(instrument_files_.c_str()));
        if (opened_ < 12) return statement;
        opened_ = 0;
        return "press 2\npress 1\nmain\ncommand 40019\n" + statement;
    }

    // Answers of the dialog that asks for a format: another one than proposed, or one for all banks.
    std::string Format_Answers() {
        const std::string banks = Below(2) == 0 ? "\nset 1702 1" : "", format = Below(3) == 0 ? "\nset " + One_Of(formats) + " 1" : "";
        return banks + format + "\npress " + One_Of("1|1|1|2");
    }

    // The model needs four patterns.
    std::string Own_Window() {
        std::string text = leave_own_windows + (Below(2) == 0 ? "\ncommand 40019\ndrop rising.xye rising.xye rising.xye rising.xye" : "");
        text += "\ndirectory .\nfiles " + One_Of("results.seq|table.gdf|pie.gdf|bad.gdf|solid.w3d") + "\ncommand " + One_Of(own_windows) +
                "\npress 1";
        for (int i = Below(25); i > 0; --i) text += '\n' + One_Of(own_window_deeds);
        return text + '\n' + leave_own_windows;
    }

    // Runs of two detectors, or nothing, and whatever its panel and its commands are good for.
    std::string Viewer() {
        std::string text = leave_own_windows + "\ncommand 40169\ndialog 450\nset 4503 " + One_Of("area.instrm|area.instrm|text.txt|/x") +
                           "\npress 4502\ndirectory " + One_Of("frames|frames|frames|data/r3b|home") + "\npress 4506\npress 4511";
        for (int i = 10 + Below(40); i > 0; --i) {
            const int choice = Below(10);
            if (choice < 2) text += "\ndialog " + One_Of("44|45|46|47|450|450|451");
            if (choice == 2 || choice == 3) text += "\ndialog 44\ncommand " + std::to_string(40530 + Below(15));
            if (choice == 4) text += "\ndialog 450\nset " + std::to_string(4501 + Below(40)) + ' ' + One_Of("1|2|3|9999|-1|abc|7");
            if (choice == 5 || choice == 6) text += "\ndialog 450\npress " + std::to_string(4501 + Below(40));
            if (choice == 7) text += "\nset 4601 " + One_Of("\"0.1 0 0 0 0.1 0 0 0 0.1\"|\"1e30 0 0 0 1 0 0 0 1e-30\"|nan|1") + "\npress 1";
            if (choice == 8) text += '\n' + Mouse();
            if (choice == 9) text += "\nprint " + One_Of("viewer|frame full|volume|section|omega|pixel 3 4 2|pixel 1e300 -1e300 1|picture");
        }
        return text + '\n' + leave_own_windows;
    }

    // What is done in the list of patterns, and back.
    std::string List() {
        const std::string a = std::to_string(1 + Below(6)), b = std::to_string(1 + Below(6));
        std::string text = "press 2\nmain\nlist " + One_Of("open|open|open|open|close");
        for (int i = Below(6); i > 0; --i)
            text += "\nlist " + One_Of("choose|choose|tick|tick|move|rename|point|width|sort") + ' ' + a + ' ' +
                    One_Of("1|2|3|on|off|off|before|\"a # name\"|\"\"") + ' ' + (Below(2) == 0 ? b : "") + '\n' +
                    One_Of(
                        "list move up|list move down|list tick 1 2 off|list choose 1 2|list point 1|list rename 1 x|print list|"
                        "command 40560|command 40561|command 40562|command 40563|command 40548\nset 4731 y\npress 1");
        return text + (Below(2) == 0 ? "\n" + undo_and_redo : "");
    }

    // Marks of a cell, with the dialogs of the tool open.
    std::string Reflections() {
        return "press 2\nmain\ncommand 40154\nset 1436 1.54\nset 1439 5000\nset 1431 " + One_Of("1|15|194|227|\"R -3 c:R\"") +
               "\npress 1\npress 1437\npress 1442\ndialog 156\nset 1460 " + std::to_string(Below(201) - 100);
    }

    std::string Quick_View() {
        return "press 2\nmain\ncommand 40030\ndirectory " + One_Of(".|.|.|home|/x") + "\ncommand 40127\nprint quickview\ncommand " +
               One_Of("40131|40131|40103|40126|40126|40114");
    }

    // A dialog that is opened, filled, and mostly left again.
    std::string Dialog() {
        std::string text = "main\ncommand " + One_Of(dialogs);
        for (int i = Below(4); i > 0; --i)
            text += Below(2) == 0 ? "\ncell " + One_Of(grids) + ' ' + std::to_string(1 + Below(3)) + ' ' + One_Of("1|1|0|2.5|-3|abc|1e30")
                                  : "\nset " + One_Of(dialog_fields) + ' ' + One_Of("1|1|0|2|1.54|5000|-2|abc");
        text += (Below(8) == 0 ? "\ntimer 480" : "");  // a preview is drawn
        text += "\npress " + One_Of(dialog_buttons) + (Below(2) == 0 ? "\nanswer yes\npress 1" : "\npress 2");
        return text + (Below(3) == 0 ? "\nmain\n" + undo_and_redo : "");
    }

    // The program is not left.
    std::string Command() {
        const int number = Below(4) == 0 ? 40510 + Below(14) : 40001 + Below(230);
        return "command " + (Below(3) != 0 ? One_Of(commands) : std::to_string(number == 40005 ? 40019 : number));
    }

    // A place, mostly near the box; its far ends are as far as a double goes.
    std::string Place(double from, double to) {
        if (Below(40) == 0) return One_Of(" -1e300| 1e300| 1e38| -3e38| 1e20| -1e9| 0| 1e-300");
        return ' ' + std::to_string(from + (to - from) * (Below(1401) - 200) / 1000);
    }

    std::string Mouse() {
        const std::string action = One_Of("down|up|move|move|wheelup|wheeldown") + One_Of("| left| left| left| middle| right");
        return Below(3) == 0 ? "mouse data " + action + Place(9, 16) + Place(0, 150)
                             : "mouse " + action + Place(180, 1020) + Place(120, 680);
    }

    std::mt19937 random_;
    std::string instrument_files_;
    int opened_ = 0;
};

class Monkey : public Program, public testing::WithParamInterface<unsigned> {
protected:
    void SetUp() override {
        directory = fs::temp_directory_path() / ("vantrelo_monkey_" + std::to_string(GetParam()) + '_' + std::to_string(::getpid()));
        fs::remove_all(directory);
        fs::create_directories(directory / "home");
        for (const auto& file : fs::directory_iterator(TEST_DATA "/patterns")) fs::copy_file(file, directory / file.path().filename());
        for (const test::Sample_File& file : Instrument_Files()) std::ofstream(directory / file.name) << file.text;
        const std::string refined = test::Whole(test::Columns(test::Make_Model(2, 10, false)));
        std::ofstream(directory / "refined.prf") << refined;
        std::ofstream(directory / "cut.prf") << refined.substr(0, refined.size() / 2);
        std::ofstream(directory / "peaks.xrf") << test::Whole(test::Peak_Fit(test::Make_Model(1, 10, false)));
        std::ofstream(directory / "good.buf") << "TITLE listed\nrising.xye\ncalculated.xys\n";
        std::ofstream(directory / "mixed.buf") << "flight.xye\neleven_points.dat\nrefined.prf\nrising.xye\n";
        std::ofstream(directory / "bad.buf") << "rising.xye\nmissing.xye\n";
        std::ofstream(directory / "bank.3t2") << "\nlambda : 1.2\n\n2 3 9 0.5\n:1\n:10\n:1e5\n:0\n:295\n\n\n:counts\n1 2 3 4 5 6\n";
        std::ofstream(directory / "results.seq") << "NEW_REFINEMENT a\nNUMPAR 1\nN_PATT 1\nNPHASE 1\nf 1 0\nGLOBAL_CHI_2 1\n"
                                                    "R a 1 0\nR b 2 0\nR c 3 0\nP cell 4 0.1\n";
        std::ofstream(directory / "table.gdf") << "TITLE t\nN_PLOTS 1\nPLOT_TYPE polar\n{/ a\nN_POINTS 2\n1 2\n3 nan\nlegend\n/}\n";
        std::ofstream(directory / "pie.gdf") << "N_PLOTS 1\nPLOT_TYPE piechart\n{/ a\nN_POINTS 2\n1 2 x\n3 4 y\n/}\n";
        std::ofstream(directory / "bad.gdf") << "N_PLOTS 40\n{/ a\n";
        fs::create_directories(directory / "data/r3b");
        std::string run = Numor_Text::Of("R3B", {{.counts = {3, 5, 9, 4, 2}}}).Text();
        for (const char* name : {"100001", "100003"}) {
            std::ofstream(directory / "data/r3b" / name) << run;
            run.resize(run.size() * 3 / 4);
        }
        fs::create_directories(directory / "frames");
        test::Simulated_Crystal crystal = test::Simulated_Crystal::Of(2, "omega");
        crystal.nx = crystal.ny = 12, crystal.frames = 6, crystal.pitch = 10, crystal.step = 3;
        std::ofstream(directory / "area.instrm") << Instrm_File_Text(crystal.Instrument());
        std::string frames = crystal.Text().Text();
        for (const char* name : {"1", "2", "3"}) {
            std::ofstream(directory / "frames" / name) << frames;
            frames.resize(frames.size() * 9 / 10);
        }
        std::ofstream(directory / "text.txt") << "Two lines\nof text";
    }
};

// Compares what was printed before each undo with what was printed behind its redo.
void Compare_Rounds(const Run_Result& run) {
    std::vector<Json> looks(1);
    for (const Json& line : run.lines) {
        looks.back().push_back(line);
        if (!line.contains("changes")) continue;
        if (looks.size() < 4) {
            looks.emplace_back();
            continue;
        }
        // Opening marks, before, between, behind.
        EXPECT_EQ(looks[1], looks[3]) << looks[0].back();
        looks.assign(1, {});
    }
}

TEST_P(Monkey, LeavesTheSessionInOrder) {
    Generator generator(GetParam());
    std::string script;
    for (int i = 0; i < statements; ++i) script += generator.Statement() + '\n';
    const Run_Result run = Script(script + "print spacegroup \"P 1\"\n");  // which nothing else prints
    EXPECT_TRUE(run.status == 0 || run.status == 1) << run.status << " from seed " << GetParam();
    for (const std::string_view fault : {"contradicts itself", "Sanitizer", "runtime error"})
        if (const std::size_t at = run.errors.find(fault); at != std::string::npos)
            ADD_FAILURE() << "seed " << GetParam() << ": " << run.errors.substr(run.errors.rfind('\n', at) + 1, 2000);
    for (const std::string& box : run.Boxes()) EXPECT_FALSE(box.starts_with("Fault")) << box << " from seed " << GetParam();
    Compare_Rounds(run);
    EXPECT_EQ(run.With("spacegroup").size(), 1u) << "the run of seed " << GetParam() << " ended before its time";
}

INSTANTIATE_TEST_SUITE_P(Seeds, Monkey, testing::Range(1u, 9u));

}  // namespace
}  // namespace vntl
