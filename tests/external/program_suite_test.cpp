// What is told of the suite's programs on each system. The names of programs and the form of their lines are conventions of the suite,
// typed here anew.
#include "external/program_suite.hpp"

#include <gtest/gtest.h>

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

TEST(Program_Suite_Test, NamesOnThreeSystems) {
    ASSERT_EQ(std::size(rows), program_roles);
    for (std::size_t place = 0; place < program_roles; ++place) {
        const Row& row = rows[place];
        const Role role = static_cast<Role>(place);
        EXPECT_EQ(Name_Of(role), row.role);
        EXPECT_EQ(Program_Of_System(role, "WIND"), row.windows) << row.role;
        EXPECT_EQ(Program_Of_System(role, "LINU"), row.linux) << row.role;
        EXPECT_EQ(Program_Of_System(role, "MACO"), row.macos) << row.role;
    }
    EXPECT_TRUE(Has_Programs("MACO") && !Has_Programs("linu") && !Has_Programs(""));
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
