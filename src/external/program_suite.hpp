// The programs that work beside this one: what each is called on each system, where it stands, and how its command begins.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/command_line.hpp"

namespace vntl {

// cmd_: programs of the desktop. prg_: programs of the suite.
enum class Program_Role {
    cmd_editor,
    cmd_files,
    cmd_browser,
    cmd_pdf,
    cmd_unzip,
    cmd_console,
    cmd_run,  // stands before a program that writes to a console
    prg_refine,
    prg_tabedit,
    prg_studio,
    prg_linker,
    prg_repsolve,
    prg_mapper,
    prg_dicvol,
    prg_vecfind,
    prg_treor,
    prg_rawmerge,
    prg_ito,
    prg_radiox
};
inline constexpr std::size_t program_roles = 19;

std::string_view Name_Of(Program_Role role);  // "cmd_editor"

// What a system calls the program by itself; blank for one that it has not, and for a system without programs.
std::string_view Program_Of_System(Program_Role role, std::string_view os_tag);
bool Has_Programs(std::string_view os_tag);
char Separator_Of(std::string_view os_tag);  // of paths; that of an unknown system is '/'

// What is in use.
struct Program_Suite {
    std::array<std::string, program_roles> programs;
    std::string quendrix_dir;  // where the suite stands, blank for nobody knows
    std::string os_tag;
    char sep = '/';      // of paths on that system
    std::string opener;  // of the desktop: opens a file or a directory by what is chosen for its kind

    const std::string& Of(Program_Role role) const { return programs[static_cast<std::size_t>(role)]; }

    // `quendrix_dir`, separator, the program's name; begins with the separator where nobody knows the directory. A program that the user
    // names by its path stands there.
    std::string Suite_Path(Program_Role role) const;
    // A file of the suite's documents.
    std::string Document(std::string_view name) const;

    // Commands that files and words follow: the program by its name alone, by its path in the suite, and by that path in a console.
    Command_Line By_Name(Program_Role role) const;
    Command_Line In_Suite(Program_Role role) const;
    Command_Line In_Console(Program_Role role) const;
};

// The directory in which a program reads a file; blank for a bare name.
std::string Directory_Of(std::string_view file, char separator = '/');
// A name with its directory, as a program that runs in `directory` is told of it: what lies there loses its directory.
std::string Name_Seen_From(std::string_view directory, const std::string& file, char separator = '/');

// The programs of a system, none of them chosen by the user.
Program_Suite Suite_Of_System(std::string_view os_tag);

}  // namespace vntl
