// Reflections of a cell and space group.
#include "commands/families.hpp"

namespace vntl {

namespace {

constexpr Command commands[] = {
    {command::hkl_gen, "HKL Gen", "hkl", nullptr, "", "Show the reflections of a cell and space group"},
};

}  // namespace

Command_Family Crystal_Commands() { return {commands}; }

}  // namespace vntl
