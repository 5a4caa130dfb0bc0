// Menu "Ext. Applications": sibling programs, and the tools of the desktop.
#include "commands/families.hpp"

namespace vntl {

namespace {

constexpr Command commands[] = {
    {command::run_quendrix, "Run Quendrix", "refine", nullptr, "", "Refine a structure"},
    {command::run_sequential, "Run Quendrix sequential refinement", "sequential_run", nullptr, "",
     "Refine a series of patterns one after another"},
    {command::run_studio, "Run Quendrix Studio", "studio", nullptr, "", "Open the studio of the suite"},
    {command::run_tabedit, "Run Tabedit", "", nullptr, "", "Edit the control file by forms"},
    {command::run_glinker, "Run GLinker", "", nullptr, "", "Link programs of the suite"},
    {command::run_gmapper, "Run GMapper", "", nullptr, "", "Draw maps of densities"},
    {command::run_repsolve, "Run Repsolve", "", nullptr, "", "Show representations"},
    {command::run_vecfind, "Run Vecfind", "", nullptr, "", "Look for a propagation vector"},
    {command::run_dicvol, "Run Dicvol", "", nullptr, "", "Index a pattern by Dicvol"},
    {command::run_ito, "Run Ito", "", nullptr, "", "Index a pattern by Ito"},
    {command::run_treor, "Run Treor", "", nullptr, "", "Index a pattern by Treor"},
    {command::run_rawmerge, "Run Rawmerge", "", nullptr, "", "Merge raw data"},
    {command::run_radiox, "Run Radiox", "", nullptr, "", "Simulate a pattern by Radiox"},
    {command::prepare_osl, "Prepare a OSL file for Radiox", "", nullptr, "", "Prepare the input of Radiox"},
    {command::console, "Open Cmd window", "console", nullptr, "", "Open a window for commands"},
    {command::explorer, "Explorer", "files", nullptr, "", "Open the file manager"},
};

}  // namespace

Command_Family External_Commands() { return {commands}; }

}  // namespace vntl
