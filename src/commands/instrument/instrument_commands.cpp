// Raw files of neutron instruments.
#include "commands/families.hpp"

#include "commands/application.hpp"
#include "commands/file/opened.hpp"
#include "session/load.hpp"

namespace vntl {

namespace {

void Open_Raw(Application& app) { Show_Opened(app, Open_Raw_File(app.session, app.ask)); }

constexpr Command commands[] = {
    {command::open_raw, "Open Raw Data file (3t2, g44)", "open_raw", Open_Raw, "",
     "Open raw data of the powder diffractometers 3T2 and G4.4"},
    {command::open_numor, "Open Numor File (KVR)", "open_numor", nullptr, "", "Open neutron data by their run numbers"},
    {command::open_instrument, "Open KVR Instrument + Numors", "", nullptr, "", "Open a description of an instrument, then runs of it"},
    {command::view_numor_header, "View Header Numor...", "", nullptr, "", "Show the header of a run"},
};

}  // namespace

Command_Family Instrument_Commands() { return {commands}; }

}  // namespace vntl
