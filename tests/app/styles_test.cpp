// Styles through all doors: menu, script, command line, settings that are saved and read, and the desk that remembers the choice.
#include "app/testing.hpp"

namespace vntl {
namespace {

class Styles_Doors : public Program {
protected:
    static std::vector<std::string> Names(const Run_Result& run) {
        std::vector<std::string> names;
        for (const Json& line : run.With("style")) names.push_back(line["style"]["name"]);
        return names;
    }
    static int Background(const Run_Result& run, std::size_t which) { return run.With("prefs").at(which)["prefs"]["frame_background"]; }
};

using Strings = std::vector<std::string>;

TEST_F(Styles_Doors, MenuAndScriptAndWhatIsRemembered) {
    fs::create_directories(directory / "home/.qxs");
    const Run_Result run = Script(
        "print prefs\nprint picture\ncommand 40554\nprint style\nstyle dark\nprint style\nprint menu 40556\nprint menu 40553\n"
        "command 40019\nprint style\nstyle Default\nprint prefs\nprint picture\nstyle Screen\nexit\n",
        {Pattern("rising.xye")});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Names(run), (Strings{"Paper", "Dark", "Dark"})) << "a reset keeps the style";
    EXPECT_EQ(run.With("checked").at(0)["checked"], true);
    EXPECT_EQ(run.With("checked").at(1)["checked"], false);
    EXPECT_EQ(run.With("prefs").at(0), run.With("prefs").at(1)) << "Default gives back what was";
    EXPECT_EQ(Names(Script("print style\n")), Strings{"Screen"}) << "the next start";
    EXPECT_EQ(Names(Script("print style\n", {"--style", "PAPER"})), Strings{"Paper"});
    EXPECT_EQ(Names(Script("print style\nexit\n", {"--style", "default"})), Strings{"Default"});
    EXPECT_EQ(Names(Script("print style\n")), Strings{"Screen"}) << "the command line is for one run";
    const auto picture = [this](const Strings& style) {
        Strings arguments = {"--export", "a.svg", Pattern("rising.xye")};
        arguments.insert(arguments.end(), style.begin(), style.end());
        EXPECT_EQ(Run(arguments).errors, "");
        return Text_Of(directory / "a.svg");
    };
    EXPECT_EQ(picture({}), picture({"--style", "Default"})) << "an export is as the settings say";
    EXPECT_NE(picture({}), picture({"--style", "dark"}));
}

TEST_F(Styles_Doors, WhatIsNoStyleIsRefused) {
    Write("bad.set", "no settings");
    for (const std::string name : {"nostyle", "bad.set", "missing.set"}) {
        for (const Strings& form : {Strings{"--export", "a.png", Pattern("rising.xye")}, Strings{"--script", "script.vns"}}) {
            Write("script.vns", "print style\n");
            Strings arguments = form;
            arguments.insert(arguments.end(), {"--style", name});
            const Run_Result run = Run(arguments);
            EXPECT_EQ(run.status, 2) << name;
            EXPECT_NE(run.errors.find(name), std::string::npos) << run.errors;
            EXPECT_EQ(run.output, "");
        }
        const Run_Result run = Script("style Dark\nstyle " + name + "\nprint style\n");
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(Names(run), Strings{"Dark"});
    }
    EXPECT_FALSE(fs::exists(directory / "a.png"));
}

// Saved from within a style, the settings have what the user changed and nothing that the style brought: "Default" comes back as it was.
// A settings file with a look is a style too.
TEST_F(Styles_Doors, SettingsKeepTheLook) {
    const Run_Result saved = Script(
        "print style\nstyle Paper\npref frame_background 1,2,3\ncommand 40033\npress \"Save global preferences\"\npress Exit\nstyle "
        "Default\n"
        "print style\nprint prefs\n");
    EXPECT_EQ(saved.status, 0) << saved.errors << saved.output;
    const fs::path file = directory / "home/.qxs/vntl050.set";
    EXPECT_EQ(saved.With("style").at(1), saved.With("style").at(0));
    const Run_Result next = Script("print style\nprint prefs\nstyle Dark\nstyle Default\nprint style\nprint prefs\n");
    EXPECT_EQ(next.With("style").at(0), saved.With("style").at(0));
    EXPECT_EQ(next.With("style").at(1), saved.With("style").at(0));
    EXPECT_EQ(next.With("prefs").at(0), saved.With("prefs").at(0));
    EXPECT_EQ(Background(next, 1), 1 + 256 * 2 + 65536 * 3);
    Write("mine.set", Text_Of(file) + "fitted_margins T\n");
    const Run_Result mine = Run({"--script", "script.vns", "--style", "mine.set", "--record", "again.vns"});
    EXPECT_EQ(mine.status, 0) << mine.errors;
    EXPECT_NE(Text_Of(directory / "again.vns").find("style " + (directory / "mine.set").string() + " rows\n"), std::string::npos);
}

}  // namespace
}  // namespace vntl
