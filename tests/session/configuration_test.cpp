// Directories of the three systems, on a temporary directory; recent files.
#include "session/configuration.hpp"

#include <map>

#include "session/session.hpp"
#include "session/settings_file.hpp"
#include "session/testing.hpp"

namespace vntl {
namespace {

TEST(Configuration, TagsAndNames) {
    EXPECT_EQ(Os_Tag(4, 14) + Os_Tag(4, 3) + Os_Tag(6, 14) + Os_Tag(5, 0), "LINUMACOWINDUNKN");
    Configuration config;
    EXPECT_EQ(Init_Configure(config, 9, 0).message, "Fault: Unknown Operating System ");
    EXPECT_EQ(Settings_Directory(config, "/suite", Settings_Mode::global), "") << "no place is known";
    EXPECT_TRUE(Is_Os_Tag("UNKN") && Is_Os_Tag("MACO") && !Is_Os_Tag("") && !Is_Os_Tag("linu"));
    EXPECT_TRUE(Init_Configure(config, 6, 0).ok());
    EXPECT_EQ(config.sep, '\\');
    EXPECT_EQ(config.set_file, "vntl050.set");
    EXPECT_EQ(config.Window_Title(), "Vantrelo-2006 Version: 0.50-2012");

    std::string name;
    EXPECT_TRUE(Preferences_File_Name("v. 3.141", name).ok());
    EXPECT_EQ(name, "vntl314.set");
    for (const char* version : {"", "Version 5", ".50", "Version: 0.5", "x.50"})
        EXPECT_EQ(Preferences_File_Name(version, name).message, "Fault: /vntl_initialize/init_configure/03 bad setfilename") << version;
}

// The tag, and the place of a file in the settings directory: on Windows the suite's directory with '\' joined to it.
struct System {
    int family, sub_code;
};
struct Search : testing::TestWithParam<System> {
    Test_Directory dir;
    std::string home = dir.Make("home"), suite = dir.Make("suite"), work = dir.Make("work dir"), other = dir.Make("other");
    Configuration config;
    Preferences prefs;
    std::string& quendrix_dir = prefs.environment.quendrix_dir;

    void SetUp() override {
        Test_Directory::Set("HOME", home);
        Test_Directory::Set("QUENDRIX", suite);
        ASSERT_TRUE(Init_Configure(config, GetParam().family, GetParam().sub_code).ok());
    }
    void Settings_File(const std::string& name, const std::string& text) {
        if (config.os_tag != "WIND") dir.Make("home/.qxs");
        dir.Write(config.os_tag == "WIND" ? "suite\\" + name : "home/.qxs/" + name, text);
    }
    std::string Here() const { return std::filesystem::current_path().string(); }
};

TEST_P(Search, AnEmptyHouseIsNoError) {
    Search_Directories(config, quendrix_dir);
    EXPECT_EQ(quendrix_dir, suite);
    EXPECT_EQ(config.config_dir, config.os_tag == "WIND" ? suite : home + "/.qxs");
    EXPECT_EQ(std::filesystem::is_directory(home + "/.qxs"), config.os_tag != "WIND");
    EXPECT_EQ(config.last_dir + config.pcr_file, "");
    EXPECT_EQ(Here(), dir.path);
    EXPECT_EQ(Find_Preferences_File(config, quendrix_dir), "");
    Settings_File("vntl050.set", "x");
    EXPECT_NE(Find_Preferences_File(config, quendrix_dir), "");
}

TEST_P(Search, TheSuitesLastDirectoryGoesBeforeOurs) {
    Settings_File("tqx.set", "\n ! LASTD = nowhere\nFIRST = 1\n  lastdir = " + work + " \nLASTD = " + other + "\n");
    Settings_File("vantrelo.dir", other + "\n");
    const char separator[] = {config.sep, 0};
    Settings_File("quendrix.dir", "/some where\nrun.pcr\n");
    Search_Directories(config, quendrix_dir);
    EXPECT_EQ(config.last_dir, work);
    EXPECT_EQ(Here(), work);
    EXPECT_EQ(config.pcr_file, std::string("/some where") + separator + "run.pcr");

    Settings_File("quendrix.dir", std::string("first\nwith") + separator + "run.pcr\n");
    Settings_File("tqx.set", "no such line\n");
    std::filesystem::current_path(dir.path);
    Search_Directories(config, quendrix_dir);
    EXPECT_EQ(config.last_dir, "");
    EXPECT_EQ(Here(), dir.path);
    EXPECT_EQ(config.pcr_file, std::string("with") + separator + "run.pcr");
}

TEST_P(Search, OurLastDirectoryAndHalfAFileName) {
    Settings_File("vantrelo.dir", work + "\nsecond line\n");
    Settings_File("quendrix.dir", "only a directory\n\n");
    Test_Directory::Set("QUENDRIX", suite + config.sep);
    if (config.os_tag == "WIND") std::filesystem::create_directory(suite + "\\");  // a name of its own on this disk
    Search_Directories(config, quendrix_dir);
    EXPECT_EQ(quendrix_dir, suite);
    EXPECT_EQ(Here(), work);
    EXPECT_EQ(config.pcr_file, "");

    Write_Last_Directory(config, quendrix_dir);
    EXPECT_EQ(Test_Directory::Contents(suite + config.sep + "vantrelo.dir"), work + "\n");
}

TEST_P(Search, WithoutSuiteNothingIsReadOrWritten) {
    Settings_File("vantrelo.dir", work + "\n");
    for (const std::optional<std::string>& variable : {std::optional<std::string>(), std::optional<std::string>(dir.path + "/no such")}) {
        Test_Directory::Set("QUENDRIX", variable);
        Search_Directories(config, quendrix_dir);
        EXPECT_EQ(quendrix_dir + config.last_dir, "");
        EXPECT_EQ(Here(), dir.path);
        Write_Last_Directory(config, quendrix_dir);  // "/vantrelo.dir" is nobody's file
        EXPECT_FALSE(std::filesystem::exists("/vantrelo.dir") || std::filesystem::exists("\\vantrelo.dir"));
    }
    if (config.os_tag == "WIND") return;
    std::filesystem::remove_all(home + "/.qxs");
    for (const std::optional<std::string>& no_home : {std::optional<std::string>(), std::optional<std::string>("/proc/none")}) {
        Test_Directory::Set("HOME", no_home);
        Search_Directories(config, quendrix_dir);
        EXPECT_EQ(config.config_dir, no_home ? "/proc/none/.qxs" : "");
        EXPECT_EQ(Find_Preferences_File(config, quendrix_dir), "");
    }
}

// On Windows a local file goes before the suite's, and without a suite the directory of the start takes the place of its own, where nobody
// looks. Elsewhere there is one place.
TEST_P(Search, SettingsAreFoundWhereTheyWereSaved) {
    const bool windows = config.os_tag == "WIND";
    const std::string name = windows ? "\\vntl050.set" : "/vntl050.set", at_home = home + "/.qxs" + name;
    quendrix_dir = suite;
    std::filesystem::current_path(work);
    const auto save = [&](Settings_Mode mode) {
        EXPECT_TRUE(Write_Preferences(prefs, config, mode).ok());
        return vntl::Settings_File(config, prefs, mode);
    };
    EXPECT_EQ(save(Settings_Mode::global), windows ? suite + name : at_home) << "the directory is made";
    EXPECT_EQ(Find_Preferences_File(config, quendrix_dir), windows ? suite + name : at_home);
    EXPECT_EQ(save(Settings_Mode::local), windows ? work + name : at_home);
    EXPECT_EQ(Find_Preferences_File(config, quendrix_dir), windows ? work + name : at_home);
    quendrix_dir.clear();
    EXPECT_EQ(save(Settings_Mode::global), windows ? dir.path + name : at_home);
    EXPECT_TRUE(std::filesystem::exists(windows ? dir.path + name : at_home));
    quendrix_dir = dir.path + "/missing/suite";
    EXPECT_EQ(Write_Preferences(prefs, config, Settings_Mode::global).failed, windows);
    EXPECT_FALSE(std::filesystem::exists(dir.path + "/missing"));
}

TEST_P(Search, ProgramsOfTheSystem) {
    Environment_Prefs& programs = prefs.environment;
    programs.cmd_cif_viewer = "kept";
    Set_Programs_Of_System(config, programs);
    std::string all;
    for (const std::string& program : {programs.cmd_editor, programs.cmd_browser, programs.cmd_pdf, programs.cmd_unzip, programs.cmd_run,
                                       programs.prg_refine, programs.cmd_cif_viewer, programs.cmd_ps_viewer})
        all += program + '|';
    const std::map<std::string, std::string> told = {
        {"WIND", "notepad.exe|C:\\Program Files\\Internet Explorer\\iexplore.exe||7zFM |cmd /t:0e /c|wqx2k.exe|kept||"},
        {"LINU", "gedit|firefox|acroread|gzip|xterm -e|wqx2k|kept||"},
        {"MACO", "bbedit|open -a firefox|open -a acroread||xterm -e|wqx2k|kept||"},
    };
    EXPECT_EQ(all, told.at(config.os_tag));
}

INSTANTIATE_TEST_SUITE_P(Systems, Search, testing::Values(System{4, 14}, System{4, 1}, System{6, 0}),
                         [](const auto& system) { return Os_Tag(system.param.family, system.param.sub_code); });

TEST(Configuration, ExitFilesAreWrittenWhereTheyAreAllowed) {
    Test_Directory dir;
    Session s;
    ASSERT_TRUE(Init_Configure(s.config, 4, 14).ok());
    s.prefs.environment.quendrix_dir = dir.Make("suite");
    MRU_Add(s, "/x/a.xy");
    s.config.files_allowed = false;
    Write_Exit_Files(s);
    EXPECT_FALSE(std::filesystem::exists("vantrelo.mlf") || std::filesystem::exists("suite/vantrelo.dir"));
    s.config.files_allowed = true;
    Write_Exit_Files(s);
    EXPECT_EQ(Test_Directory::Contents("vantrelo.mlf"), "/x/a.xy\n");
    EXPECT_EQ(Test_Directory::Contents("suite/vantrelo.dir"), dir.path + "\n");
}

std::string Slots(const Recent_Files& recent) {
    std::string text;
    for (int slot = 1; slot <= recent_file_slots; ++slot) text += recent.Slot(slot) + " ";
    return text;
}

TEST(Recent, TheOrderOfTheSlots) {
    const std::pair<const char*, const char*> steps[] = {
        {"a", "a - - - - "},  {"a", "a - - - - "},     {"b", "b a - - - "},      {"c", "c b a - - "},
        {"a", "a b c - - "},  // a and c change places
        {"d", "d a b c - "},  {"e-f", "e-f d a b c "}, {"g", "g e-f d a b "},    {" b ", "b e-f d a g "},
        {"", "b e-f d a g "}, {"-", "b e-f d a g "},   {"x\ny", "b e-f d a g "},
    };
    Recent_Files recent;
    for (const auto& [path, slots] : steps) {
        recent.Add(path);
        EXPECT_EQ(Slots(recent), slots) << path;
    }
    recent.Add(std::string(200, 'k'));
    EXPECT_EQ(recent.Slot(1).size(), 200u);
    recent.Add(std::string(201, 'k'));
    EXPECT_EQ(recent.Slot(1).size(), 200u);
}

TEST(Recent, AListComesBackAndRubbishIsHarmless) {
    Test_Directory dir;
    Recent_Files recent, again;
    for (const char* path : {"/a b", "/\u00b5", "/c"}) recent.Add(path);
    recent.Write("list");
    again.Read("list");
    EXPECT_EQ(Slots(again), Slots(recent));
    again.Read("no such list");
    again.Read(dir.path);
    EXPECT_EQ(Slots(again), "/c /\u00b5 /a b - - ");

    const std::pair<std::string, const char*> rubbish[] = {
        {"", "- - - - - "},
        {"/1\r\n/2\n/3\n/4\n/5\n/6\n", "/1 /2 /3 /4 /5 "},
        {"\n\n/3\n-\n/5", "/3 /5 - - - "},
        {"/1\n/1\n" + std::string(5000, 'x') + "\n\x01\x02\x7f\n/5\n", "/1 /5 - - - "},
        {std::string("/a\0b\n/c\n", 8), "/c - - - - "},
    };
    for (const auto& [text, slots] : rubbish) {
        dir.Write("list", text);
        Recent_Files read;
        read.Read("list");
        EXPECT_EQ(Slots(read), slots);
    }
    Session s;
    s.recent.Add("/a");
    MRU_Show(s);
    EXPECT_EQ(s.interface.labels[40038] + "|" + s.interface.labels[40070], "1. /a|5. <Empty>");
    EXPECT_TRUE(s.interface.Enabled(40038));
    EXPECT_FALSE(s.interface.Enabled(40070));
}

}  // namespace
}  // namespace vntl
