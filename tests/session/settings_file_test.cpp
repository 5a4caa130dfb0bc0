// The settings file: its columns, round trips, damage of every line, texts from elsewhere, and files that cannot be written.
#include "session/settings_file.hpp"

#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "base/text.hpp"
#include "session/preference_table.hpp"
#include "session/testing.hpp"
#include "small_disk.hpp"

namespace vntl {
namespace {

using Lines = std::vector<std::string>;

Lines Lines_Of(const std::string& text) {
    Lines lines;
    for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) lines.push_back(text.substr(at, text.find('\n', at) - at));
    return lines;
}

std::string Text_Of(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    return text;
}

// Every value away from its default.
Preferences Unusual() {
    Preferences prefs;
    for (const Preference& p : Preference_Table()) (void)Set_Preference(prefs, p.name, Other_Value(p));
    prefs.saturation = Preferences().saturation;  // which no file keeps
    prefs.graph2d.legend.colour = 0;
    prefs.graph3d.graph3d_title = "  \xC3\xA9 < b";
    prefs.environment.cmd_run = "run < x";
    return prefs;
}

Preferences Of_Linux() {
    Preferences prefs;
    Configuration config;
    config.os_tag = "LINU";
    Set_Programs_Of_System(config, prefs.environment);
    return prefs;
}

Lines Default_Lines() { return Lines_Of(Settings_Text(Of_Linux(), {})); }

void Expect_Same(const Preferences& a, const Preferences& b) {
    for (const Preference& p : Preference_Table()) EXPECT_EQ(Value_Of(p, a), Value_Of(p, b)) << p.name;
}

TEST(Settings_File, ColumnsOfTheDefaults) {
    const Lines lines = Default_Lines();
    ASSERT_EQ(lines.size(), 59u);
    // A colour is red + 256 green + 65536 blue: (130, 200, 130) is 8571010.
    const std::pair<std::size_t, std::string> told[] = {
        {1, "<<<<< Preferences setting file (do not edit and modify) >>>>>"},
        {2, "Vantrelo-2006 Version: 0.50 June 2013"},
        {3, "<-- Main window Preferences -->"},
        {4, "  800  500   8571010  16711680  T"},
        {5, "<-- Environment Preferences -->"},
        {6, "  F  T"},
        {7, std::string(512, ' ')},
        {8, "gedit" + std::string(195, ' ')},
        {15, "xterm -e                      "},
        {16, "<-- Profile Data Preferences -->"},
        {17, "       255         0         1       255         2         5  T"},
        {29, "<-- Graph 2D Preferences -->"},
        {33, "   4194432         3         1         1        20"},
        {39, "<-- Preferences Profile PRF-->"},
        {43, "  12632256  T  F  T  T"},
        {44, "<-- Graph 2D Contour Preferences -->"},
        {45, "Plot 2D contour multi file" + std::string(154, ' ')},
        {49, "<-- Graph 3D Preferences -->"},
        {52, "<-- Graph 3D Surface Preferences -->"},
        {55, "         1"},
        {56, "<-- QuickView PRF Preferences -->"},
        {58, "  T"},
    };
    for (const auto& [number, line] : told) EXPECT_EQ(lines[number - 1], line) << number;
    EXPECT_EQ(lines[47].substr(0, 30) + lines[47].substr(180), "  12517376  16449536  16717591       255       223");
}

TEST(Settings_File, ComesBackByteForByte) {
    for (const Preferences& prefs : {Of_Linux(), Unusual()}) {
        const std::string text = Settings_Text(prefs, {});
        Preferences read;
        ASSERT_TRUE(Read_Settings_Text(read, text).ok());
        Expect_Same(read, prefs);
        EXPECT_EQ(Settings_Text(read, {}), text);
        Preferences of_windows;
        ASSERT_TRUE(Read_Settings_Text(of_windows, "\xEF\xBB\xBF" + Replace_All(text, "\n", "\r\n") + "more").ok());
        Expect_Same(of_windows, prefs);
    }
}

TEST(Settings_File, OlderFilesLackOneOrTwoPrograms) {
    struct Older {
        Lines between;  // the line of the unzipping program and the heading behind it
        std::string prg_refine, cmd_run;
    };
    const Older files[] = {
        {{}, "before", "before"},
        {{" my qx2k  "}, "my qx2k", "before"},
        {{"konsole -e"}, "before", "konsole -e"},
        {{""}, "before", "before"},
        {{"", ""}, "before", "before"},
        {{"refine", ""}, "refine", "before"},
        {{"", "a < b"}, "before", "a < b"},
        {{std::string(40, 'r'), "qx2k"}, std::string(30, 'r'), "qx2k"},
    };
    for (const Older& file : files) {
        Lines lines = Default_Lines();
        lines.erase(lines.begin() + 13, lines.begin() + 15);
        lines.insert(lines.begin() + 13, file.between.begin(), file.between.end());
        for (const char* heading : {"<-- Profile Data Preferences -->", "<-- another heading"}) {
            if (heading != lines[13 + file.between.size()] && file.cmd_run == "a < b") continue;
            lines[13 + file.between.size()] = heading;
            Preferences prefs;
            prefs.environment.prg_refine = prefs.environment.cmd_run = "before";
            EXPECT_EQ(Read_Settings_Text(prefs, Text_Of(lines)).message, "") << testing::PrintToString(file.between);
            EXPECT_EQ(prefs.environment.prg_refine, file.prg_refine) << testing::PrintToString(file.between);
            EXPECT_EQ(prefs.environment.cmd_run, file.cmd_run) << testing::PrintToString(file.between);
            EXPECT_EQ(prefs.quick_view.qv_excl_colour, WRGB(192, 192, 192));
        }
    }
}

// The last line of each message.
const std::map<int, std::string> messages = {
    {1, "Error reading line 1 of header"},
    {2, "Error reading line 2 of header"},
    {3, "Error reading line 1 of main window preferences values"},
    {4, "Error reading main window preferences values"},
    {5, "Error reading title section environment"},
    {15, "Error reading enviroment preferences values"},
    {16, "Error reading title section profiles data"},
    {28, "Error reading setting of profiles data"},
    {29, "Error reading title section graphic 2D"},
    {38, "Error reading graphic 2D preferences values"},
    {43, "Error reading PRF preferences values"},
    {48, "Error reading graphic 2D contour preferences values"},
    {51, "Error reading graphic 3D preferences values"},
    {55, "Error reading graphic 3D Surface preferences values"},
    {59, "Error reading QuickView preferences values"},
};
const std::set<int> headings = {1, 2, 3, 5, 16, 29, 39, 44, 49, 52, 56}, texts = {7, 8, 9, 10, 11, 12, 13, 14, 15, 30, 31, 45, 50, 53};

struct Damage {
    std::string name;
    std::function<void(Lines&, Lines::iterator)> hurt;
};

void Overwrite(std::string& line, char with) {
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c != ' '; }, with);
}

const Damage damages[] = {
    {"halved", [](Lines&, auto line) { line->resize(line->size() / 2); }},
    {"without its last character", [](Lines&, auto line) { line->pop_back(); }},
    {"letters", [](Lines&, auto line) { Overwrite(*line, 'x'); }},
    {"stars", [](Lines&, auto line) { Overwrite(*line, '*'); }},
    {"commas", [](Lines&, auto line) { std::replace(line->begin(), line->end(), ' ', ','); }},
    {"blanks", [](Lines&, auto line) { line->assign(line->size(), ' '); }},
    {"the end of the file", [](Lines& all, auto line) { all.erase(line, all.end()); }},
    {"deleted", [](Lines& all, auto line) { all.erase(line); }},
    {"doubled", [](Lines& all, auto line) { all.insert(line, std::string(*line)); }},
};

// Of a file with that damage to that line.
bool May_Be_Read(const std::string& damage, int number) {
    if (damage == "the end of the file") return false;
    if (damage == "deleted") return number == 14 || number == 15;  // as in older files
    if (damage == "doubled") return number == 59;
    return headings.count(number) + texts.count(number) > 0;
}

// A damaged line of numbers gives its own message, as does one where the file ends. A line that is gone or comes twice shows there or
// further down.
TEST(Settings_File, DamageOfEveryLineIsTold) {
    const Preferences before = Unusual();
    for (const auto& [name, hurt] : damages)
        for (int number = 1; number <= 59; ++number) {
            SCOPED_TRACE(name + ' ' + std::to_string(number));
            Lines lines = Default_Lines();
            hurt(lines, lines.begin() + number - 1);
            Preferences prefs = before;
            const Status status = Read_Settings_Text(prefs, Text_Of(lines));
            EXPECT_EQ(status.ok(), May_Be_Read(name, number)) << status.message;
            if (status.ok()) continue;
            auto shown = messages.lower_bound(number);
            if (name == "deleted" || name == "doubled")
                shown = std::find_if(shown, messages.end(), [&](const auto& row) { return row.second == status.message; });
            ASSERT_NE(shown, messages.end()) << status.message;
            EXPECT_EQ(status.message, shown->second);
            Expect_Same(prefs, before);
        }
}

TEST(Settings_File, NumbersComeToTheNearestAndTheLaterColourCounts) {
    Lines lines = Default_Lines();
    lines[3] = "   -5    0        -1  99999999  F";
    lines[16] = "  16777216        99-999999999         3         02147483648  f";
    lines[31] = "         1         2         3  F";
    lines[32] = "   4194432         0        17        10-999999999";
    lines[42] = "         4  T  F  T  T";
    Preferences prefs;
    ASSERT_TRUE(Read_Settings_Text(prefs, Text_Of(lines)).ok());
    const std::pair<const char*, Preference_Value> nearest[] = {
        {"win_width", 1},
        {"win_height", 1},
        {"colour_a", Colour(0)},
        {"colour_b", Colour(0xffffff)},
        {"keep_settings", false},
        {"profile_styles/1/line_colour", Colour(0xffffff)},
        {"profile_styles/1/line_style", 4},
        {"profile_styles/1/line_pitch", 1},
        {"profile_styles/1/marker_type", 1},
        {"profile_styles/1/marker_size", 1000},
        {"profile_styles/1/match_colours", false},
        {"title_pos", 1},
        {"title_font", 4},
        {"title_style", 9},
        {"title_size", 1},
        {"excl_colour", Colour(4)},
        {"excl_show", true},
    };
    for (const auto& [name, value] : nearest) EXPECT_EQ(Value_Of(*Find_Preference(name), prefs), value) << name;
}

TEST(Settings_File, Texts) {
    std::string accents, sixty;
    for (int i = 0; i < 60; ++i) (i < 50 ? accents : sixty) += "\xC3\xA9";
    sixty = accents + sixty;
    struct Text_Row {
        std::string line, read;
        bool failed = false;
    };
    const Text_Row rows[] = {
        {"", ""},
        {"  in front and behind  ", "  in front and behind"},
        {std::string(60, 'x'), std::string(50, 'x')},
        {sixty, accents},
        {"\xE9t\xE9", "\xC3\xA9t\xC3\xA9"},  // Latin-1
        {"a\tb", "", true},
        {std::string("a\0b", 3), "", true},
    };
    for (const Text_Row& row : rows) {
        Lines lines = Default_Lines();
        lines[29] = row.line;
        Preferences prefs;
        EXPECT_EQ(Read_Settings_Text(prefs, Text_Of(lines)).failed, row.failed) << row.line;
        EXPECT_EQ(prefs.graph2d.title_single, row.read);
    }
    for (const auto& [title, read] :
         {std::pair{"Maps (Saturation:    100.0 )", "Maps"}, {"(Saturation: )", ""}, {"Saturation:", "Saturation:"}}) {
        Preferences prefs;
        prefs.contour.contour_title = title;
        EXPECT_TRUE(Read_Settings_Text(prefs, Settings_Text(prefs, {})).ok());
        EXPECT_EQ(prefs.contour.contour_title, read);
    }
    Preferences prefs;
    prefs.environment.quendrix_dir = "/a\nb";  // a directory may have such a name
    prefs.graph2d.title_single = sixty;
    const Lines lines = Lines_Of(Settings_Text(prefs, {}));
    ASSERT_EQ(lines.size(), 59u);
    EXPECT_EQ(Trim(lines[6]), "/a b");
    EXPECT_EQ(lines[29], accents);
}

class Settings_On_Disk : public testing::Test {
protected:
    void SetUp() override {
        Test_Directory::Set("HOME", directory.Make("home"));
        ASSERT_TRUE(Init_Configure(config, 4, 14).ok());
    }
    std::string Save() const { return Write_Preferences(prefs, config, Settings_Mode::local).message; }

    Test_Directory directory;
    const std::string folder = directory.path + "/home/.qxs", file = folder + "/vntl050.set";
    Configuration config;
    Preferences prefs = Of_Linux();
};

TEST_F(Settings_On_Disk, WhatCannotBeWrittenStays) {
    namespace fs = std::filesystem;
    const std::string refusal = "Unable to write setting file", named = refusal + ": " + file;
    EXPECT_EQ(Save(), "");
    const std::string old = Test_Directory::Contents(file);
    EXPECT_EQ(old, Settings_Text(prefs, config));
    prefs = Unusual();
    {
        const Small_Disk disk(100);
        EXPECT_EQ(Save(), named);
    }
    fs::permissions(file, fs::perms::owner_read);
    EXPECT_EQ(Save(), named);
    EXPECT_EQ(Test_Directory::Contents(file), old);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1) << "nothing is left beside it";
    for (const char* home : {"", "  "}) {
        Test_Directory::Set("HOME", home);
        EXPECT_EQ(Save(), refusal);
    }
    Test_Directory::Set("HOME", directory.path + "/home");
    fs::remove_all(folder);
    directory.Make("home/.qxs/vntl050.set");
    EXPECT_EQ(Save(), named);
    fs::remove_all(folder);
    directory.Write("home/.qxs", "a file");
    EXPECT_EQ(Save(), named);
}

TEST_F(Settings_On_Disk, WhatIsNoSettingsFileIsRefused) {
    const std::string long_title = Settings_Text(prefs, config) + std::string(1 << 20, '\n');
    directory.Write("long", long_title);
    directory.Write("binary", std::string(5000, '\0'));
    directory.Write("empty", "");
    const std::pair<const char*, const char*> files[] = {{"missing", "Unable to read setting file"},
                                                         {"home", "Unable to read setting file"},
                                                         {"long", "Unable to read setting file"},
                                                         {"binary", "Error reading line 2 of header"},
                                                         {"empty", "Error reading line 1 of header"}};
    for (const auto& [name, message] : files) EXPECT_EQ(Read_Preferences(prefs, name).message, message) << name;
    Expect_Same(prefs, Of_Linux());
}

}  // namespace
}  // namespace vntl
