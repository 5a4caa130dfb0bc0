// Menu "Ext. Applications": sibling programs, and the tools of the desktop.
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/external/osl_dialog.hpp"
#include "commands/external/refine.hpp"
#include "commands/external/sequential_dialog.hpp"
#include "commands/external/start.hpp"

namespace vntl {

namespace {

using Role = Program_Role;

// --- programs that need no file, or the current refinement file --------------------------------------------------------------------

template <Role role>
void Start_Of_Suite(Application& app) {
    Start_Program(app, Suite_Of(app).In_Suite(role));
}

template <Role role>
void Start_On_Refinement(Application& app) {
    Command_Line command = Suite_Of(app).In_Suite(role);
    if (const std::string file = Refinement_File(app.session.config); !file.empty()) command.File(file);
    Start_Program(app, command);
}

void Start_Tabedit(Application& app) {
    Command_Line command = Suite_Of(app).In_Suite(Role::prg_tabedit);
    if (const std::string& file = app.session.config.pcr_file; !file.empty()) command.File(file);
    Start_Program(app, command);
}

void Open_Console(Application& app) { Start_Program(app, Suite_Of(app).By_Name(Role::cmd_console)); }
void Open_Explorer(Application& app) { Open_With(app, Role::cmd_files); }

// --- programs that need a file that the user chooses --------------------------------------------------------------------------------

struct File_Program {
    Role role;
    bool in_console;
    std::string_view title, filter;
};
constexpr File_Program vecfind = {Role::prg_vecfind, true, "Run Vecfind program", "Select Vecfind file (*.sat)|*.sat;*.osl|"};
constexpr File_Program dicvol = {Role::prg_dicvol, false, "Run DICVOL06 program", "Select DICVOL06 file (*.dic)|*.dic;*.dic04;*.dic06|"};
constexpr File_Program ito = {Role::prg_ito, false, "Run ITO15 program", "Select ITO15 file (*.ito)|*.ito|"};
constexpr File_Program treor = {Role::prg_treor, false, "Run TREOR90 program", "Select TREOR90 file (*.inp)|*.inp|"};
constexpr File_Program rawmerge = {Role::prg_rawmerge, true, "Run Rawmerge program", "Select Rawmerge file (*.inp)|*.inp|"};

template <const File_Program& program>
void Start_On_File(Application& app) {
    const std::string file = Choose_File(app, program.title, program.filter);
    if (file.empty()) return;
    const Program_Suite suite = Suite_Of(app);
    Command_Line command = program.in_console ? suite.In_Console(program.role) : suite.In_Suite(program.role);
    command.In(Directory_Of(file));
    if (program.role == Role::prg_rawmerge) command.Word("-fil");
    if (program.role != Role::prg_ito)
        Start_Program(app, command.File(file));
    else if (Copy_For_Ito(app, file))
        Start_Program(app, command.File(ito_input));
}

// --- programs that a dialog prepares --------------------------------------------------------------------------------------------------

void Run_Sequential(Application& app) {
    Command_Line command;
    if (const Status status = Sequential_Dialog(app, command); status.failed)
        Tell(app, status);
    else
        Start_Program(app, command);
}

std::vector<Dialog_Resource> Dialogs() { return {Sequential_Dialog_Resource(), Osl_Dialog_Resource()}; }

constexpr Command commands[] = {
    {command::run_quendrix, "Run Quendrix", "refine", Run_Quendrix, "", "Refine a structure"},
    {command::run_sequential, "Run Quendrix sequential refinement", "sequential_run", Run_Sequential, "",
     "Refine a series of patterns one after another"},
    {command::run_studio, "Run Quendrix Studio", "studio", Start_On_Refinement<Role::prg_studio>, "", "Open the studio of the suite"},
    {command::run_tabedit, "Run Tabedit", "", Start_Tabedit, "", "Edit the control file by forms"},
    {command::run_glinker, "Run GLinker", "", Start_On_Refinement<Role::prg_linker>, "", "Link programs of the suite"},
    {command::run_gmapper, "Run GMapper", "", Start_On_Refinement<Role::prg_mapper>, "", "Draw maps of densities"},
    {command::run_repsolve, "Run Repsolve", "", Start_Of_Suite<Role::prg_repsolve>, "", "Show representations"},
    {command::run_vecfind, "Run Vecfind", "", Start_On_File<vecfind>, "", "Look for a propagation vector"},
    {command::run_dicvol, "Run Dicvol", "", Start_On_File<dicvol>, "", "Index a pattern by Dicvol"},
    {command::run_ito, "Run Ito", "", Start_On_File<ito>, "", "Index a pattern by Ito"},
    {command::run_treor, "Run Treor", "", Start_On_File<treor>, "", "Index a pattern by Treor"},
    {command::run_rawmerge, "Run Rawmerge", "", Start_On_File<rawmerge>, "", "Merge raw data"},
    {command::run_radiox, "Run Radiox", "", Run_Radiox, "", "Simulate a pattern by Radiox"},
    {command::prepare_osl, "Prepare a OSL file for Radiox", "", Prepare_Osl, "", "Prepare the input of Radiox"},
    {command::console, "Open Cmd window", "console", Open_Console, "", "Open a window for commands"},
    {command::explorer, "Explorer", "files", Open_Explorer, "", "Open the file manager"},
};

}  // namespace

Command_Family External_Commands() { return {commands, Dialogs}; }

}  // namespace vntl
