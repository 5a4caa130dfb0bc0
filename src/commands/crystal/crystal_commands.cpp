// Reflections of a cell and space group.
#include "commands/crystal/hkl_gen.hpp"
#include "commands/crystal/hkl_gen_dialogs.hpp"
#include "commands/families.hpp"

namespace vntl {

namespace {

constexpr Command commands[] = {
    {command::hkl_gen, "HKL Gen", "hkl", Hkl_Gen, "", "Show the reflections of a cell and space group"},
};

}  // namespace

Command_Family Crystal_Commands() { return {commands, Hkl_Gen_Dialog_Resources}; }

}  // namespace vntl
