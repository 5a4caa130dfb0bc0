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

TEST(Program_Suite_Test, LinesOnThreeSystems) {
    const struct {
        const char *system, *directory, *studio, *vecfind, *browser, *pdf, *nobody_knows;
    } cases[] = {
        {"WIND", R"(C:\Quendrix Suite)", R"(C:\Quendrix Suite\qx_studio.exe "a b.pcr")",
         R"(cmd /t:0e /c C:\Quendrix Suite\vecfind.exe "a b.pcr")",
         R"(C:\Program Files\Internet Explorer\iexplore.exe C:\Quendrix Suite\Docs\x.htm)", "", R"(\Radiox)"},
        {"LINU", "/opt/qx", R"(/opt/qx/qx_studio "a b.pcr")", R"(xterm -e /opt/qx/vecfind "a b.pcr")", "firefox /opt/qx/Docs/x.htm",
         "acroread", "/Radiox"},
        {"MACO", "/Applications/qx", R"(/Applications/qx/qx_studio "a b.pcr")", R"(xterm -e /Applications/qx/vecfind "a b.pcr")",
         "open -a firefox /Applications/qx/Docs/x.htm", "open -a acroread", "/Radiox"},
    };
    for (const auto& row : cases) {
        Program_Suite suite = Suite_Of_System(row.system);
        EXPECT_EQ(suite.Suite_Path(Role::prg_radiox), row.nobody_knows);
        suite.quendrix_dir = row.directory;
        // The file alone is told in quotes, the path of the program never: it is one word all the same.
        EXPECT_EQ(suite.In_Suite(Role::prg_studio).File("a b.pcr").line(), row.studio);
        EXPECT_EQ(suite.In_Suite(Role::prg_studio).File("a b.pcr").words().size(), 2u);
        EXPECT_EQ(suite.In_Console(Role::prg_vecfind).File("a b.pcr").line(), row.vecfind);
        EXPECT_EQ(suite.In_Console(Role::prg_vecfind).words().back(), suite.Suite_Path(Role::prg_vecfind));
        EXPECT_EQ(suite.By_Name(Role::cmd_pdf).line(), row.pdf);
        std::string browser = suite.By_Name(Role::cmd_browser).File(suite.Document("x.htm")).line();
        std::erase(browser, '"');
        EXPECT_EQ(browser, row.browser);
    }
    // A program that the user names by its path needs no suite.
    Program_Suite suite = Suite_Of_System("LINU");
    for (const char* path : {"/home/me/my qx2k", R"(D:\tools\wqx2k.exe)"}) {
        suite.programs[static_cast<std::size_t>(Role::prg_refine)] = path;
        EXPECT_EQ(suite.In_Suite(Role::prg_refine).words(), std::vector<std::string>{path});
    }
}

}  // namespace
}  // namespace vntl
