// Opening by selector, by name, by a recent file and from a command line, with real small files.
#include <numeric>

#include "base/text.hpp"
#include "patterns/prf_files.hpp"
#include "session/load.hpp"
#include "session/session.hpp"
#include "session/testing.hpp"
#include "session/xspace.hpp"

namespace vntl {
namespace {

// Fifteen records x, y, sigma and a terminator; y(1) tells the files apart.
std::string Records(int first_y) {
    std::string text = "title\n";
    for (int i = 0; i < 15; ++i) text += std::to_string(10 + i) + ".0 " + std::to_string(first_y + i) + ".0 1.0\n";
    return text + "0.0 0.0 0.0\n";
}

std::string More_Records(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += std::to_string(25 + 0.01 * i) + " 7.0 1.0\n";
    return text;
}

std::string First_Values(const Session& s) {
    std::string text;
    for (int row = 1; row <= s.store.nperfiles(); ++row) text += std::to_string(static_cast<int>(s.store.Pattern(row).y.at(0))) + " ";
    return text;
}

struct Opening : testing::Test {
    Test_Directory dir;
    Session s;
    Scripted_Ask ask;
    std::string a = dir.Write("a.xye", Records(100)), b = dir.Write("b.xye", Records(200)), c = dir.Write("c.XYS", Records(300));
    std::string bad = dir.Write("bad.xye", "title\nno numbers\n"),
                tof = dir.Write("tof.xye", "t\n! Scattering variable: TOF\n" + Records(9));
    const std::string plain_list = "10.0 1.0 24.0 my sample\n1 2 3 4 5 6 7 8\n9 10 11 12 13 14 15\n";
    std::string dat = dir.Write("plain.dat", plain_list);
};

TEST_F(Opening, ASelectionIsReadFromTheLastNameToTheFirst) {
    ask.selection = {a, b, c};
    const Open_Result first = Open_Pattern_File(s, ask);
    EXPECT_EQ(First_Values(s), "300 200 100 ");
    EXPECT_EQ(ask.selector_title, "Select data files to open");
    EXPECT_EQ(ask.selector_filter,
              "Input Data File |*.dat;*.xy;*.xys;*.xye;*.gr;*.uxd;*.sub;*.udf;*.csv;*.xrdml;*.bac;*.gsa;*.gss;*.sim;*.mdi;*.cif;"
              "*.jcp;*.gsas;*.fxye;*.gda;*.raw;*.brml;*.rasx;*.ras;*.asc;*.cpi;*.chi;*.rd;*.sd;*.nxs|");
    EXPECT_TRUE(ask.proposals.empty() && ask.boxes.empty());
    EXPECT_EQ(first.rows_added, 3);
    EXPECT_GT(first.read_ms, 0);
    EXPECT_EQ(s.plot.read_ms, first.read_ms);
    EXPECT_TRUE(s.store.profiles_uniform);
    EXPECT_EQ(s.store.Info(1).format, "XYSIGMA");
    EXPECT_EQ(s.recent.Slot(1), a);

    Open_Pattern_File(s, ask);
    EXPECT_EQ(s.store.nperfiles(), 6);
    EXPECT_FALSE(s.store.profiles_uniform);
    EXPECT_TRUE(Check_Invariants(s).ok()) << Check_Invariants(s).message;
}

TEST_F(Opening, EachFileOfASelectionGoesByItsOwnName) {
    Session other;
    ask.selection = {a, dat};
    EXPECT_TRUE(Open_Pattern_File(other, ask).cancelled);  // no format chosen
    EXPECT_EQ(ask.proposals, std::vector<int>{1});
    EXPECT_EQ(other.store.nperfiles(), 0);
    ask.format = 1;
    for (const auto& selection : {std::vector{a, dat}, std::vector{dat, a}}) {
        Session both;
        ask.selection = selection;
        EXPECT_EQ(Open_Pattern_File(both, ask).rows_added, 2);
        EXPECT_EQ(ask.questions.back().files, std::vector<std::string>{"plain.dat"});
        const int plain = selection.back() == dat ? 1 : 2;
        EXPECT_EQ(both.store.Info(plain).format, "FreeFormat");
        EXPECT_EQ(both.store.Pattern(plain).title, "my sample");
        EXPECT_EQ(both.store.Info(3 - plain).format, "XYSIGMA");
    }
    ask.selection.clear();
    EXPECT_TRUE(Open_Pattern_File(other, ask).cancelled);
}

// A bank of 20 points from 20 degrees in steps of 0.5, in centidegrees.
std::string Constant_Bank() {
    std::string text = "title\nBANK 1 20 2 CONST 2000 50 0 0 STD";
    for (int i = 0; i < 20; ++i) text += (i % 10 == 0 ? "\n     " : "     ") + std::to_string(400 + i);
    return text + '\n';
}

TEST_F(Opening, OneQuestionIsAboutAllWhoseNamesDoNotTellTheirFormat) {
    std::string plain = "2theta,counts\n";
    for (int i = 0; i < 20; ++i) plain += std::to_string(10 + i) + ',' + std::to_string(600 + i) + '\n';
    const std::string csv = dir.Write("plain.csv", plain), xra = dir.Write("x.XRA", Constant_Bank()),
                      cwn = dir.Write("c.CWN", Constant_Bank()), prose = dir.Write("prose.txt", "nothing\n"),
                      list = dir.Write("list.txt", plain_list);
    struct Case {
        std::vector<std::string> selection, asked;
        int proposed;
        bool differ;
        std::string looks_like;
        int chosen;
        std::string formats;
    };
    const Case cases[] = {
        {{list, a, xra}, {"x.XRA (GSAS)", "list.txt (FreeFormat)"}, 0, true, "", 0, "GSAS XYSIGMA FreeFormat "},
        {{list, xra, cwn}, {"c.CWN (GSAS)", "x.XRA (GSAS)", "list.txt (FreeFormat)"}, 0, true, "", 10, "GSAS GSAS "},
        {{a, xra, csv, cwn}, {"c.CWN", "x.XRA"}, 10, false, "GSAS", 10, "GSAS COLUMNS GSAS XYSIGMA "},
        {{prose, dat}, {"plain.dat", "prose.txt"}, 1, false, "", 0, "FreeFormat "},
        {{csv, a}, {}, 0, false, "", 0, "XYSIGMA COLUMNS "},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.formats);
        Session session;
        Scripted_Ask user;
        user.selection = row.selection;
        user.format = row.chosen;
        Open_Pattern_File(session, user);
        ASSERT_EQ(user.questions.size(), row.asked.empty() ? 0u : 1u);
        for (const Format_Question& question : user.questions) {
            EXPECT_EQ(question.files, row.asked);
            EXPECT_EQ(question.proposed, row.proposed);
            EXPECT_EQ(question.differ, row.differ);
            EXPECT_EQ(question.looks_like, row.looks_like);
        }
        std::string formats;
        for (int i = 1; i <= session.store.nperfiles(); ++i) formats += session.store.Info(i).format + ' ';
        EXPECT_EQ(formats, row.formats) << user.Last_Box();
    }
}

// A file that came alone is told of at once; of several, one box at the end tells.
TEST_F(Opening, ASelectionPassesOverWhatIsRefused) {
    ask.selection = {a, tof, b};
    Open_Result result = Open_Pattern_File(s, ask);
    EXPECT_EQ(First_Values(s), "200 100 ");
    EXPECT_FALSE(result.failed);
    const std::string no_merge = "Present space: 2theta, file in TOF,\nIt is not possible to merge different scattering variables ";
    EXPECT_EQ(ask.boxes, std::vector<std::string>{"Error Message|2 opened, 1 refused\n\ntof.xye: " + no_merge});
    ask.selection = {a, bad, tof, c};
    result = Open_Pattern_File(s, ask);
    EXPECT_EQ(First_Values(s), "200 100 300 100 ");
    EXPECT_TRUE(result.failed);
    ASSERT_EQ(ask.boxes.size(), 2u);
    const std::string broken = "ERROR in file: bad.xye\nError reading a profile DATA file of XYSigma format";
    EXPECT_EQ(ask.Last_Box(), "Error Message|2 opened, 2 refused\n\ntof.xye: " + no_merge + "\n\n" + broken);
    Open_Pattern_File(s, ask, bad);
    EXPECT_EQ(ask.Last_Box(), "Error Message|" + broken);
    Open_Pattern_File(s, ask, tof);
    EXPECT_EQ(ask.Last_Box(), "Error Message|" + no_merge);
    result = Open_Pattern_File(s, ask, dir.path + "/missing.xye");
    EXPECT_EQ(ask.Last_Box(), "Error Message|ERROR in file: missing.xye\nThe file " + dir.path + "/missing.xye doesn't exist");
}

TEST_F(Opening, AFullTableEndsASelection) {
    while (s.store.nperfiles() < max_profiles - 1) s.store.Append(Tiny_Pattern(2), {});
    Set_Xspace(s, "2theta");
    const Open_Result result = Open_Files(s, ask, {bad, a, b, bad, c});
    EXPECT_TRUE(result.failed);
    EXPECT_EQ(result.rows_added, 1);
    ASSERT_EQ(ask.boxes.size(), 2u);  // what was not reached is not refused
    EXPECT_EQ(ask.boxes[0], "Error Message|" + std::string(table_full_text));
    EXPECT_EQ(ask.boxes[1].find("Error Message|1 opened, 1 refused\n\nERROR in file: bad.xye\n"), 0u) << ask.boxes[1];
}

// Fifteen points from x = 10, the fifth of which is at `x` with the intensity `y`.
std::string With_Fifth(const std::string& x, const std::string& y) {
    std::string text = Records(100);
    const std::string old = "14.0 104.0";
    return text.replace(text.find(old), old.size(), x + ' ' + y);
}

TEST_F(Opening, XThatDoesNotRiseIsSortedOrLeftOutOnceASelection) {
    const std::string falls = dir.Write("falls.xye", With_Fifth("12.5", "50.0")),
                      repeats = dir.Write("repeats.xye", With_Fifth("13.0", "3.0"));
    const std::string question = "Warning Message|falls.xye: x falls at point 5 (line 6).\nSort by x and average repeats?";
    for (const Box_Answer answer : {Box_Answer::yes, Box_Answer::no}) {
        const bool yes = answer == Box_Answer::yes;
        Session alone, several;
        Scripted_Ask user;
        user.answer = answer;
        EXPECT_FALSE(Open_Files(alone, user, {falls}).failed);
        EXPECT_EQ(user.boxes, std::vector<std::string>{question});
        EXPECT_EQ(alone.store.nperfiles(), yes ? 1 : 0);
        user.boxes.clear();
        EXPECT_FALSE(Open_Files(several, user, {a, falls, repeats, b}).failed);
        ASSERT_EQ(user.boxes.size(), yes ? 1u : 2u) << user.Last_Box();
        EXPECT_EQ(user.boxes[0].find(question), 0u) << user.boxes[0];
        EXPECT_EQ(several.store.nperfiles(), yes ? 4 : 2);
        EXPECT_TRUE(Check_Invariants(several).ok());
        if (!yes) {
            EXPECT_EQ(user.boxes[1],
                      "Error Message|2 opened, 2 refused\n\nERROR Opening file: falls.xye\nx falls at point 5 (line 6)\n\n"
                      "ERROR Opening file: repeats.xye\nx repeats at point 5 (line 6)");
            continue;
        }
        const Diffraction_Pattern_Type &sorted = several.store.Pattern(2), &merged = several.store.Pattern(3);
        EXPECT_EQ(sorted.npts, 15);
        EXPECT_EQ(sorted.x[3], 12.5f);
        EXPECT_EQ(sorted.y[3], 50.0f);
        EXPECT_EQ(merged.npts, 14);
        EXPECT_EQ(merged.y[3], 53.0f);  // of 103 and 3
        EXPECT_EQ(merged.sigma[3], 0.5f);
    }
}

TEST_F(Opening, PointsWithoutNumbersAreLeftOutAndCounted) {
    const std::string one = dir.Write("one.xye", With_Fifth("14.0", "nan"));
    std::string two_text = With_Fifth("14.0", "inf");
    const std::string two = dir.Write("two.xye", two_text.replace(two_text.find("10.0 100.0"), 10, "10.0 NaN"));
    std::string none_text = "t\n";
    for (int i = 0; i < 15; ++i) none_text += std::to_string(10 + i) + " nan 1\n";
    const std::string none = dir.Write("none.xye", none_text);
    EXPECT_EQ(Open_Files(s, ask, {one}).notice, "1 point without a number was left out of one.xye");
    EXPECT_EQ(s.store.Pattern(1).npts, 14);
    EXPECT_EQ(Open_Files(s, ask, {two}).notice, "2 points without a number were left out of two.xye");
    EXPECT_EQ(s.store.Pattern(2).xmin, 11.0f);
    EXPECT_EQ(Open_Files(s, ask, {one, a, two}).notice, "3 points without a number were left out of 2 profiles");
    EXPECT_EQ(Open_Files(s, ask, {a}).notice, "");
    EXPECT_TRUE(ask.boxes.empty());
    const Open_Result result = Open_Files(s, ask, {none});
    EXPECT_TRUE(result.failed && result.notice.empty());
    EXPECT_EQ(ask.Last_Box(), "Error Message|ERROR in file: none.xye\nnpts<1");
    EXPECT_TRUE(Check_Invariants(s).ok()) << Check_Invariants(s).message;
}

// No format would do for a binary file, so that none is asked for.
TEST_F(Opening, ABinaryFileIsToldAtOnce) {
    const std::string raw = "PK\3\4" + std::string(400, '\7'), told = "\nThis is a binary file (zip archive), which no reader takes";
    for (const char* name : {"scan.raw", "scan.dat"}) {
        ask.selection = {dir.Write(name, raw)};
        const Open_Result result = Open_Pattern_File(s, ask);
        EXPECT_TRUE(result.failed && !result.cancelled);
        EXPECT_EQ(ask.Last_Box(), std::string("Error Message|ERROR in file: ") + name + told);
    }
    EXPECT_TRUE(ask.proposals.empty());
    for (const char* name : {"scan.xye", "scan.prf", "scan.gsa"}) {
        Open_Files(s, ask, {dir.Write(name, raw)});
        EXPECT_EQ(ask.Last_Box(), std::string("Error Message|ERROR in file: ") + name + told);
    }
    EXPECT_EQ(s.store.nperfiles(), 0);
}

TEST_F(Opening, ARecentFileOpensByItsExtensionAsWritten) {
    ask.format = 1;
    const std::pair<std::string, std::string> cases[] = {
        {"   ", "Bad name: len_trim=0"},
        {"nopoint", "Bad name: without extension"},
        {"a.Xye", "Unknown file extension "},  // not there
        {"a.Dat", "Unknown file extension "},
        {"a.doc", "Unknown file extension "},
        {"/d.ir/nopoint", "Unknown file extension "},
        {a, ""},    // known to the readers alone
        {c, ""},    // in the list of the program
        {dat, ""},  // in the list, and the format is asked
        {dir.Write("noise.txt", "prose alone\n"), "Unknown file extension "},
        {dir.Write("noise", "prose alone\n"), Contains(dir.path, ".") ? "Unknown file extension " : "Bad name: without extension"},
        {dir.Write("b.Xye", Records(1)), ""},  // the letters of a file that is there do not matter
        {dir.Write("c.XRA", Constant_Bank()), ""},
        {dir.Write("c.txt", Records(1)), ""},
        {dir.Write("columns", Records(1)), ""},
    };
    for (const auto& [name, message] : cases) {
        Open_Result result;
        EXPECT_EQ(Open_File_By_Extension(s, ask, name, result).message, message) << name;
        EXPECT_EQ(result.rows_added, message.empty() ? 1 : 0) << name;
    }
    EXPECT_EQ(ask.proposals.size(), 1u);
    EXPECT_TRUE(ask.boxes.empty());
}

TEST_F(Opening, ACommandLineIsReadLeftToRightPastItsFailures) {
    const Open_Result result = Open_Files(s, ask, {a, bad, "no.prf", dat, b, tof});
    EXPECT_EQ(First_Values(s), "100 1 200 ");
    EXPECT_TRUE(result.failed && s.store.profiles_uniform && ask.proposals.empty());
    ASSERT_EQ(ask.boxes.size(), 1u);  // the reader, the profile file, the x space
    EXPECT_EQ(ask.boxes[0].find("Error Message|3 opened, 3 refused\n"), 0u) << ask.boxes[0];
    EXPECT_NE(ask.boxes[0].find("\n\nERROR in file: no.prf\nERROR 00: File not found\n\ntof.xye: Present"), std::string::npos);
    Session one;
    EXPECT_FALSE(Open_Files(one, ask, {a}, 9).failed);
    EXPECT_EQ(one.store.Info(1).format, "XYSIGMA");
    EXPECT_FALSE(one.store.profiles_uniform);
}

std::string Gsas_Banks(int banks) {
    std::string text = "two banks\n";
    for (int bank = 1; bank <= banks; ++bank) {
        text += "BANK " + std::to_string(bank) + " 20 20 SLOG 1000.0 3000.0 0.001 0 FXYE\n";
        for (int i = 0; i < 20; ++i) text += std::to_string(1000 * bank + 10 * i) + " " + std::to_string(100 * bank + i) + " 1.5\n";
    }
    return text;
}

TEST_F(Opening, BanksAndRangesBecomeRows) {
    const std::string banks = dir.Write("banks.gsa", Gsas_Banks(3)), one = dir.Write("one.gsa", Gsas_Banks(1));
    ask.format = 11;
    ask.all_banks = true;
    EXPECT_EQ(Open_Pattern_File(s, ask, banks).rows_added, 3);
    EXPECT_EQ(ask.questions.back().banks, 3);
    EXPECT_EQ(ask.questions.back().proposed, 11);
    EXPECT_EQ(ask.questions.back().looks_like, "GSASTOF");
    EXPECT_EQ(First_Values(s), "100 200 300 ");
    ask.all_banks = false;
    EXPECT_EQ(Open_Pattern_File(s, ask, banks).rows_added, 1);
    EXPECT_EQ(Open_Pattern_File(s, ask, one).rows_added, 1);
    EXPECT_EQ(ask.questions.back().banks, 1);
    EXPECT_EQ(Open_Files(s, ask, {banks}).rows_added, 1);  // nobody is asked: bank 1

    std::string isis = "ISIS title\nfac_y 1.0\n";
    for (int bank = 1; bank <= 8; ++bank) {
        isis += "BANK " + std::to_string(bank) + "\n";
        for (int i = 0; i < 15; ++i) isis += std::to_string(2000 + 10 * i) + " " + std::to_string(bank + i) + " 0.5\n";
    }
    ask.format = 14;
    Session other;
    const std::string eight = dir.Write("eight.dat", isis), seven = dir.Write("seven.dat", isis.substr(0, isis.find("BANK 8")));
    ask.selection = {seven, eight};  // the last one first: it has a bank too many, which ends no selection
    const Open_Result result = Open_Pattern_File(other, ask);
    EXPECT_TRUE(result.failed);
    EXPECT_EQ(result.rows_added, 7);
    EXPECT_EQ(ask.boxes.back().find("wrong number of patterns") != std::string::npos, true) << ask.boxes.back();
    EXPECT_EQ(other.store.Info(7).kind, Row_Kind::data);
}

TEST_F(Opening, AFailureTellsWhatTheContentsLookLike) {
    const std::string wrong = dir.Write("wrong.uxd", Gsas_Banks(1));
    EXPECT_TRUE(Open_Pattern_File(s, ask, wrong).failed);
    EXPECT_NE(ask.Last_Box().find("\nThe contents look like the format GSASTOF"), std::string::npos) << ask.Last_Box();
    EXPECT_EQ(s.store.nperfiles(), 0);
}

// Writes down all that it is asked and told, and answers every second question with yes.
class Writing_Ask : public Scripted_Ask {
public:
    Box_Answer Box(const Message_Box& box) override {
        log += "box " + box.title + '|' + box.text + '\n';
        return Yes() ? Box_Answer::yes : Box_Answer::no;
    }
    bool Constants_Of_File(Constants_Kind, Conversion_Constants& file, const Constants_Check&) override {
        log += "constants " + file.file_name + '\n';
        file.first = file.second = 1.5f;
        return Yes();
    }
    std::unique_ptr<Progress> Start_Progress(std::string_view, int total) override {
        struct Writing : Progress {
            explicit Writing(std::string& all) : log(all) {}
            bool Go_On(int done, std::string_view what) override {
                log += std::to_string(done) + ' ' + std::string(what) + '\n';
                return true;
            }
            std::string& log;
        };
        log += "of " + std::to_string(total) + '\n';
        return std::make_unique<Writing>(log);
    }
    bool Yes() { return ++questions_ % 2 == 0; }

    std::string log;

private:
    int questions_ = 0;
};

// Files of every fate, small ones behind large ones. Those that would end a selection stand together in the middle.
std::vector<std::string> Mixed_Files(const Test_Directory& dir) {
    std::vector<std::string> names;
    for (int i = 0; i < 48; ++i) {
        std::string name = std::to_string(i) + ".xye", text = Records(100 + i);
        const bool ends = i >= 20 && i < 28;
        if (i % 3 == 0) text.insert(text.find("0.0 0.0 0.0"), More_Records(2000));
        if (i % 5 == 3) text = "t\n! Scattering variable: TOF\n" + text;
        if (i % 5 == 4) text = "t\n! Scattering variable: Temperature\n" + text;
        if (i % 11 == 6) name = std::to_string(i) + ".unknown";
        if (ends && i % 4 == 0) text = "title\nno numbers\n";
        if (ends && i % 4 == 1) name = std::to_string(i) + ".buf", text = "TITLE of the list\n0.xye\n13.xye\n";
        if (ends && i % 4 == 2) name = std::to_string(i) + ".prf", text = test::Whole(test::Columns(test::Make_Model(2, 3 + i, false)));
        names.push_back(dir.Write(name, text));
        if (ends && i % 4 == 3) names.back() = dir.path + "/missing.xye";
    }
    return names;
}

std::string All_Of(const Session& s) {
    std::string all = s.recent.Slot(1) + s.recent.Slot(2) + ' ' + std::to_string(s.format_code) + std::to_string(s.store.profiles_uniform) +
                      std::string(Told(s.plot.xspace)) + '\n';
    for (int row = 1; row <= s.store.nperfiles(); ++row) {
        const Diffraction_Pattern_Type& p = s.store.Pattern(row);
        const PRF_Info_Add_Type& info = s.store.Info(row);
        for (const std::string& text : {p.title, p.filename, p.scat_var, info.file_name, info.format}) all += text + ' ';
        for (const double sum : {std::accumulate(p.x.begin(), p.x.end(), 0.0), std::accumulate(p.y.begin(), p.y.end(), 0.0)})
            all += std::to_string(sum) + ' ';
        all += std::to_string(info.nreflections) + '\n';
    }
    return all;
}

TEST_F(Opening, ThreadsThatReadAheadChangeNothingOfTheOrder) {
    const std::vector<std::string> names = Mixed_Files(dir);
    const auto open = [&](int threads, bool command_line, std::string_view space) {
        Session session;
        Writing_Ask told;
        session.config.threads = threads;
        Set_Xspace(session, space);
        told.selection = names;
        told.format = 9;
        const Open_Result result = command_line ? Open_Files(session, told, names) : Open_Pattern_File(session, told);
        EXPECT_TRUE(result.failed);
        EXPECT_TRUE(Check_Invariants(session).ok());
        return told.log + All_Of(session) + std::to_string(result.rows_added);
    };
    for (const bool command_line : {false, true})
        for (const std::string_view space : {"", "d-spacing"}) {
            const std::string alone = open(1, command_line, space);
            EXPECT_NE(alone.find("Do you want overwrite"), std::string::npos);
            EXPECT_NE(alone.find(command_line ? "\n49 47.xye" : "\n49 0.xye"), std::string::npos) << "a selection ends early";
            EXPECT_EQ(alone.find("constants 3") != std::string::npos, !space.empty());
            for (const int threads : {2, 3, 16}) EXPECT_EQ(open(threads, command_line, space), alone) << threads;
        }
}

TEST_F(Opening, ACancelKeepsTheRowsThatAreThere) {
    std::vector<std::string> names;
    for (int i = 0; i < 12; ++i) names.push_back(dir.Write(std::to_string(i) + ".xye", i == 2 ? "no numbers\n" : Records(i + 1)));
    for (const int last : {0, 1, 5})
        for (const bool reading : {false, true}) {
            Session session;
            Cancelling_Ask cancelling(last, reading);
            const Open_Result result = Open_Files(session, cancelling, names);
            EXPECT_EQ(result.rows_added, last == 5 ? 4 : last);
            EXPECT_EQ(session.store.nperfiles(), result.rows_added);
            EXPECT_EQ(cancelling.Last_Box().substr(0, 34), last == 5 ? "Error Message|4 opened, 1 refused\n" : "");
            EXPECT_TRUE(Check_Invariants(session).ok());
            EXPECT_EQ(session.recent.Slot(1), last == 0 ? "-" : names[static_cast<std::size_t>(last - 1)]);
        }
}

// A profile of a refinement is held to the same: its x rises, or it is asked about.
TEST_F(Opening, AProfileOfARefinementIsSortedToo) {
    const std::string text = test::Whole(test::Columns(test::Make_Model(1, 3, false)));
    std::vector<std::string> lines;
    for (std::size_t from = 0, end = 0; (end = text.find('\n', from)) != std::string::npos; from = end + 1)
        lines.push_back(text.substr(from, end + 1 - from));
    std::swap(lines[lines.size() / 2], lines[lines.size() / 2 + 1]);
    std::string turned;
    for (const std::string& line : lines) turned += line;
    Session straight;
    ASSERT_EQ(Open_Files(straight, ask, {dir.Write("straight.prf", text)}).rows_added, 1);
    for (const Box_Answer answer : {Box_Answer::no, Box_Answer::yes}) {
        ask.answer = answer;
        const Open_Result result = Open_Files(s, ask, {dir.Write("turned.prf", turned)});
        EXPECT_NE(ask.Last_Box().find("turned.prf: x falls at point "), std::string::npos) << ask.Last_Box();
        ASSERT_EQ(result.rows_added, answer == Box_Answer::yes ? 1 : 0);
    }
    EXPECT_EQ(s.store.Pattern(1).y, straight.store.Pattern(1).y);
    EXPECT_EQ(s.store.Pattern(1).ycalc, straight.store.Pattern(1).ycalc);
}

}  // namespace
}  // namespace vntl
