#include "external/program_suite.hpp"

#include <algorithm>
#include <iterator>

#include "base/os.hpp"

namespace vntl {

namespace {

struct System {
    std::string_view tag;
    char separator;
    std::string_view opener;
};
constexpr System systems[] = {{"WIND", '\\', "explorer.exe"}, {"LINU", '/', "xdg-open"}, {"MACO", '/', "open"}};

// In the order of the roles; names in the order of the systems.
struct Program_Row {
    std::string_view role;
    std::array<std::string_view, std::size(systems)> names;
};
constexpr std::array<Program_Row, program_roles> table = {{
    {"cmd_editor", {"notepad.exe", "gedit", "bbedit"}},
    {"cmd_files", {"explorer.exe", "gnome-open", "open ."}},
    {"cmd_browser", {"C:\\Program Files\\Internet Explorer\\iexplore.exe", "firefox", "open -a firefox"}},
    {"cmd_pdf", {"", "acroread", "open -a acroread"}},
    {"cmd_unzip", {"7zFM ", "gzip", ""}},
    {"cmd_console", {"cmd.exe", "xterm", "xterm"}},
    {"cmd_run", {"cmd /t:0e /c", "xterm -e", "xterm -e"}},
    {"prg_refine", {"wqx2k.exe", "wqx2k", "wqx2k"}},
    {"prg_tabedit", {"tabedit.exe", "tabedit", "tabedit"}},
    {"prg_studio", {"qx_studio.exe", "qx_studio", "qx_studio"}},
    {"prg_linker", {"glinker.exe", "glinker", "glinker"}},
    {"prg_repsolve", {"grepsolve.exe", "grepsolve", "grepsolve"}},
    {"prg_mapper", {"gmapper.exe", "gmapper", "gmapper"}},
    {"prg_dicvol", {"wdicvol06.exe", "dicvol06", "dicvol06"}},
    {"prg_vecfind", {"vecfind.exe", "vecfind", "vecfind"}},
    {"prg_treor", {"wtreor90.exe", "treor90", "treor90"}},
    {"prg_rawmerge", {"Rawmerge", "Rawmerge", "Rawmerge"}},
    {"prg_ito", {"wito15.exe", "ito15", "ito15"}},
    {"prg_radiox", {"Radiox", "Radiox", "Radiox"}},
}};

const System* Find_System(std::string_view os_tag) {
    const auto found = std::find_if(std::begin(systems), std::end(systems), [&](const System& row) { return row.tag == os_tag; });
    return found == std::end(systems) ? nullptr : &*found;
}

}  // namespace

std::string_view Name_Of(Program_Role role) { return table[static_cast<std::size_t>(role)].role; }

std::string_view Program_Of_System(Program_Role role, std::string_view os_tag) {
    const System* system = Find_System(os_tag);
    return system == nullptr ? std::string_view() : table[static_cast<std::size_t>(role)].names[static_cast<std::size_t>(system - systems)];
}

bool Has_Programs(std::string_view os_tag) { return Find_System(os_tag) != nullptr; }

char Separator_Of(std::string_view os_tag) {
    const System* system = Find_System(os_tag);
    return system == nullptr ? '/' : system->separator;
}

Program_Suite Suite_Of_System(std::string_view os_tag) {
    Program_Suite suite;
    suite.os_tag = os_tag;
    for (std::size_t role = 0; role < program_roles; ++role)
        suite.programs[role] = Program_Of_System(static_cast<Program_Role>(role), os_tag);
    suite.sep = Separator_Of(os_tag);
    if (const System* system = Find_System(os_tag)) suite.opener = system->opener;
    return suite;
}

std::string Program_Suite::Suite_Path(Program_Role role) const {
    const std::string& name = Of(role);
    const bool path = name.starts_with('/') || name.starts_with('\\') || name.substr(0, 2).ends_with(':');
    return path ? name : quendrix_dir + sep + name;
}

std::string Program_Suite::Document(std::string_view name) const { return quendrix_dir + sep + "Docs" + sep + std::string(name); }

std::string Directory_Of(std::string_view file, char separator) {
    const std::string_view directory = Directory_Part(file, separator);
    return std::string(directory.empty() && file.starts_with(separator) ? file.substr(0, 1) : directory);
}

std::string Name_Seen_From(std::string_view directory, const std::string& file, char separator) {
    return Directory_Of(file, separator) == directory ? std::string(File_Part(file, separator)) : file;
}

Command_Line Program_Suite::By_Name(Program_Role role) const { return Command_Line(quendrix_dir).Program(Of(role)); }

Command_Line Program_Suite::In_Suite(Program_Role role) const {
    Command_Line command(quendrix_dir);
    return Of(role).empty() ? command : command.Program_At(Suite_Path(role));
}

Command_Line Program_Suite::In_Console(Program_Role role) const {
    return Of(role).empty() ? In_Suite(role) : By_Name(Program_Role::cmd_run).Program_At(Suite_Path(role));
}

}  // namespace vntl
