// What is told of the suite's programs on each system. The names of programs and the form of their lines are conventions of the suite,
// typed here anew.
#include "external/program_suite.hpp"

#include <gtest/gtest.h>

#include "external/programs_topic.hpp"

namespace vntl {
namespace {

using Role = Program_Role;

struct Row {
    const char *role, *windows, *linux, *macos;
};
constexpr Row rows[] = {
    {"cmd_editor", "notepad.exe", "gedit", "bbedit"},
    {"cmd_files", "explorer.exe", "gnome-open", "open ."},
    {"cmd_browser", R"(C:\Program Files\Internet Explorer\iexplore.exe)", "firefox", "open -a firefox"},
    {"cmd_pdf", "", "acroread", "open -a acroread"},
    {"cmd_unzip", "7zFM ", "gzip", ""},
    {"cmd_console", "cmd.exe", "xterm", "xterm"},
    {"cmd_run", "cmd /t:0e /c", "xterm -e", "xterm -e"},
    {"prg_refine", "wqx2k.exe", "wqx2k", "wqx2k"},
    {"prg_tabedit", "tabedit.exe", "tabedit", "tabedit"},
    {"prg_studio", "qx_studio.exe", "qx_studio", "qx_studio"},
    {"prg_linker", "glinker.exe", "glinker", "glinker"},
    {"prg_repsolve", "grepsolve.exe", "grepsolve", "grepsolve"},
    {"prg_mapper", "gmapper.exe", "gmapper", "gmapper"},
    {"prg_dicvol", "wdicvol06.exe", "dicvol06", "dicvol06"},
    {"prg_vecfind", "vecfind.exe", "vecfind", "vecfind"},
    {"prg_treor", "wtreor90.exe", "treor90", "treor90"},
    {"prg_rawmerge", "Rawmerge", "Rawmerge", "Rawmerge"},
    {"prg_ito", "wito15.exe", "ito15", "ito15"},
    {"prg_radiox", "Radiox", "Radiox", "Radiox"},
};

// What `print programs` tells; an empty object and the message where it fails.
Json Told(std::vector<std::string> words, std::string* message = nullptr) {
    Json told = Json::object();
    const Status status = Programs_Topic(Suite_Of_System("MACO")).print(words, [&](const Json& object) { told = object; });
    if (message != nullptr) *message = status.message;
    EXPECT_EQ(status.failed, told.empty());
    return told.empty() ? told : told.at("programs");
}

TEST(Program_Suite_Test, NamesOnThreeSystems) {
    const Json windows = Told({"WIND"}), linux_programs = Told({"LINU"}), macos = Told({"MACO"});
    ASSERT_EQ(windows.size(), std::size(rows));
    std::size_t place = 0;
    for (const Row& row : rows) {
        EXPECT_EQ(windows.value(row.role, "none"), row.windows) << row.role;
        EXPECT_EQ(linux_programs.value(row.role, "none"), row.linux) << row.role;
        EXPECT_EQ(macos.value(row.role, "none"), row.macos) << row.role;
        EXPECT_EQ(Name_Of(static_cast<Role>(place++)), row.role);
    }
    EXPECT_EQ(Told({}), macos) << "those in use";
    std::string message;
    for (const std::vector<std::string>& wrong : {std::vector<std::string>{"UNKN"}, {"linu"}, {""}, {"LINU", "MACO"}}) {
        EXPECT_TRUE(Told(wrong, &message).empty());
        EXPECT_NE(message, "") << wrong[0];
    }
}

TEST(Program_Suite_Test, PathsOfTheSuite) {
    EXPECT_EQ(Suite_Of_System("WIND").Suite_Path(Role::prg_radiox), "\\Radiox") << "nobody knows where";
    Program_Suite suite = Suite_Of_System("LINU");
    suite.quendrix_dir = "/opt/qx";
    EXPECT_EQ(suite.Suite_Path(Role::prg_radiox) + ' ' + suite.Document("x.htm"), "/opt/qx/Radiox /opt/qx/Docs/x.htm");
    // A program that the user names by its path needs no suite.
    for (const char* path : {"/home/me/my qx2k", R"(D:\tools\wqx2k.exe)"}) {
        suite.programs[static_cast<std::size_t>(Role::prg_refine)] = path;
        EXPECT_EQ(suite.In_Suite(Role::prg_refine).words(), std::vector<std::string>{path});
    }
}

}  // namespace
}  // namespace vntl
