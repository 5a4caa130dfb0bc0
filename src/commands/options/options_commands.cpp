// Menu "Options".
#include "commands/families.hpp"

namespace vntl {

namespace {

constexpr Command commands[] = {
    {command::preferences, "Preferences...", "preferences", nullptr, "", "Colours, styles, texts and programs"},
};

}  // namespace

Command_Family Options_Commands() { return {commands}; }

}  // namespace vntl
