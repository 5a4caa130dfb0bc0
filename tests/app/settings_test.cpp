// The start of the program with a settings file, a damaged one, and one that alone knows the suite; the system tag of a script.
#include "app/testing.hpp"
#include "session/preference_table.hpp"
#include "session/settings_file.hpp"

namespace vntl {
namespace {

class Settings_Start : public Program {
protected:
    void SetUp() override {
        Program::SetUp();
        fs::create_directories(directory / "home/.qxs");
        file = directory / "home/.qxs/vntl050.set";
        prefs.window.win_width = 640;
        prefs.window.win_height = 420;
        prefs.graph2d.frame_background = WRGB(1, 2, 3);
        prefs.environment.cmd_editor = "my editor";
    }
    void Write(const std::string& text) const { std::ofstream(file, std::ios::binary) << text; }
    std::string Text() const { return Settings_Text(prefs, {}); }

    Preferences prefs;
    std::string file;
};

TEST_F(Settings_Start, EveryPreferenceComesBackAndTheWindowHasItsSize) {
    Write(Text());
    const Run_Result run = Script("print prefs\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(run.Boxes().empty()) << run.output;
    const Json read = run.With("prefs").at(0)["prefs"];
    const Json told = {{"win_width", 640},       {"frame_background", WRGB(1, 2, 3)}, {"cmd_editor", "my editor"},
                       {"saturation_on", false}, {"saturation_value", 1e6},           {"prg_refine", "wqx2k"}};  // a blank line leaves it
    for (const auto& [name, value] : told.items()) EXPECT_EQ(read[name], value) << name;
    for (const Preference& p : Preference_Table()) EXPECT_TRUE(read.contains(p.name.substr(0, p.name.find('/')))) << p.name;
    EXPECT_EQ(Run({"--script", "script.vns", "--record", "b.vns"}).status, 0);
    EXPECT_TRUE(Text_Of(directory / "b.vns").starts_with("resize 640 420\n"));
    EXPECT_EQ(Run({"--export", "a.svg", Pattern("rising.xye")}).errors, "");
    const std::string picture = Text_Of(directory / "a.svg");
    fs::remove(file);
    EXPECT_EQ(Run({"--export", "a.svg", Pattern("rising.xye")}).errors, "") << "a file that is missing is no failure here";
    EXPECT_NE(Text_Of(directory / "a.svg"), picture);
}

TEST_F(Settings_Start, ADamagedFileIsToldAndLeavesTheDefaults) {
    std::string text = Text();
    Write(text.replace(text.find("<-- Graph 2D Contour"), 1, "\n"));
    const std::string told =
        "ERROR: loading preferences file.\nError reading graphic 2D contour preferences values\nDefault preferences will be used";
    const Run_Result run = Script("print prefs\nprint paths\n");
    EXPECT_EQ(run.Boxes(), std::vector<std::string>{told});
    EXPECT_EQ(run.status, 1) << "a file could not be read";
    const Json read = run.With("prefs").at(0)["prefs"];
    EXPECT_EQ(read["win_width"], 800);
    EXPECT_EQ(read["frame_background"], WRGB(150, 200, 150));
    EXPECT_EQ(read["cmd_editor"], "gedit");
    EXPECT_EQ(Run({"--export", "a.svg", Pattern("rising.xye")}).status, 1);
    EXPECT_EQ(Run({"--export", "a.svg", Pattern("rising.xye")}).errors, "Loading preferences file: " + told + "\n");
    EXPECT_GT(fs::file_size(directory / "a.svg"), 1000u) << "and drawn with the defaults";
}

TEST_F(Settings_Start, TheSuiteThatTheFileAloneKnowsIsSearched) {
    const std::string suite = directory / "suite", other = directory / "other", work = directory / "work";
    for (const std::string& folder : {suite, other, work}) fs::create_directories(folder);
    std::ofstream(directory / "home/.qxs/tqx.set") << "LASTDIR = " << work << '\n';
    struct Start {
        std::string of_file, environment, quendrix_dir, last_dir;
    };
    const Start starts[] = {
        {suite, "", suite, work},
        {suite + "/", "", suite, work},
        {directory / "gone", "", "", ""},
        {"", "QUENDRIX=" + Quoted(other), other, work},
        {suite, "QUENDRIX=" + Quoted(other), suite, work},
        {directory / "gone", "QUENDRIX=" + Quoted(other), other, work},
    };
    for (const Start& start : starts) {
        prefs.environment.quendrix_dir = start.of_file;
        Write(Text());
        const Run_Result run = Script("print paths\n", {Pattern("rising.xye")}, start.environment);
        const Json paths = run.With("paths").at(0)["paths"];
        EXPECT_EQ(paths["quendrix_dir"], start.quendrix_dir) << start.of_file << start.environment;
        EXPECT_EQ(paths["last_dir"], start.last_dir) << start.of_file << start.environment;
        EXPECT_EQ(paths["launch_dir"], directory.string());
    }
}

TEST_F(Settings_Start, AScriptChoosesTheSystem) {
    const Run_Result run = Script("os WIND\nprint paths\nos UNKN\nprint paths\nos linux\nos\nprint paths\n");
    EXPECT_EQ(run.status, 1);
    const std::string usage = ": usage: os WIND|LINU|MACO|UNKN\n";
    EXPECT_EQ(run.errors, "line 5" + usage + "line 6" + usage);
    std::string tags;
    for (const Json& line : run.With("paths")) tags += line["paths"]["os_tag"].get<std::string>() + line["paths"]["sep"].get<std::string>();
    EXPECT_EQ(tags, "WIND/UNKN/UNKN/");
}

}  // namespace
}  // namespace vntl
