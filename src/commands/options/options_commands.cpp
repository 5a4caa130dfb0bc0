// Menu "Options".
#include "commands/application.hpp"
#include "commands/families.hpp"
#include "commands/options/preferences_dialog.hpp"

namespace vntl {

namespace {

void Edit_Preferences(Application& app) { Preferences_Main(app.session, app.ask); }

constexpr Command commands[] = {
    {command::preferences, "Preferences...", "preferences", Edit_Preferences, "", "Colours, styles, texts and programs"},
};

std::vector<Dialog_Resource> Dialogs() { return {Preferences_Dialog_Resource()}; }

}  // namespace

Command_Family Options_Commands() { return {commands, Dialogs}; }

}  // namespace vntl
