// Raw files of neutron instruments.
#include "commands/families.hpp"

namespace vntl {

namespace {

constexpr Command commands[] = {
    {command::open_raw, "Open Raw Data file (3t2, g44)", "open_raw", nullptr, "",
     "Open raw data of the powder diffractometers 3T2 and G4.4"},
    {command::open_numor, "Open Numor File (KVR)", "open_numor", nullptr, "", "Open neutron data by their run numbers"},
    {command::open_instrument, "Open KVR Instrument + Numors", "", nullptr, "", "Open a description of an instrument, then runs of it"},
    {command::view_numor_header, "View Header Numor...", "", nullptr, "", "Show the header of a run"},
};

}  // namespace

Command_Family Instrument_Commands() { return {commands}; }

}  // namespace vntl
