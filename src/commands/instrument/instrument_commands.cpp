// Raw files of neutron instruments.
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/file/opened.hpp"
#include "commands/instrument/instrument_numors_dialog.hpp"
#include "commands/instrument/numor_header.hpp"
#include "commands/instrument/open_numors_command.hpp"
#include "commands/instrument/select_instrument_dialog.hpp"
#include "session/load.hpp"

namespace vntl {

namespace {

void Open_Raw(Application& app) { Show_Opened(app, Open_Raw_File(app.session, app.ask)); }

std::vector<Dialog_Resource> Dialogs() {
    return {Instrument_Numors_Dialog_Resource(), Select_Instrument_Dialog_Resource(), Numor_Header_Dialog_Resource()};
}

constexpr Command commands[] = {
    {command::open_raw, "Open Raw Data file (3t2, g44)", "open_raw", Open_Raw, "",
     "Open raw data of the powder diffractometers 3T2 and G4.4"},
    {command::open_numor, "Open Numor File (KVR)", "open_numor", Open_Selected_Numors, "",
     "Open runs of a neutron powder diffractometer in the place of the profiles"},
    {command::open_instrument, "Open KVR Instrument + Numors", "", Open_Numors_Of_Instrument, "",
     "Open the runs of an instrument by their numbers, and write the input of Rawmerge"},
    {command::view_numor_header, "View Header Numor...", "", View_Numor_Header, "", "Show what the header of a run tells"},
};

}  // namespace

Command_Family Instrument_Commands() { return {commands, Dialogs}; }

}  // namespace vntl
