// The running program: the session, the way to ask the user, and how it ends. What a command acts on.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include "base/programs.hpp"
#include "charts/seq_file.hpp"
#include "commands/ask_user.hpp"
#include "commands/instrument/numor_series.hpp"
#include "external/osl_panels.hpp"
#include "instrument/data_directories.hpp"
#include "instrument/diffractometer.hpp"
#include "plot/model_state.hpp"
#include "session/desk/pattern_list.hpp"
#include "session/session.hpp"
#include "session/viewer_2d.hpp"

namespace vntl {

// What the panel of the viewer was given last, by its fields: one is written over when that changes, and not while the user fills it.
struct Panel_Memory {
    std::map<int, std::string> given;
    int edited = 0;  // the field that the user has changed, and that nothing was taken of yet
};

// What the window's list of patterns was given last.
struct List_On_Window {
    std::vector<Listed_Row> rows;
    int width = 0;
};

struct Application {
    Session session;
    Ask_User ask{session.config};
    Programs programs;        // that commands start
    Generic_Plots generic;    // in the window of generic graphics
    Seq_File generic_source;  // the sequential refinement that they are drawn of, if they are
    Pdf_Input pdf;            // of the dialog that prepares the input of Radiox
    Model3D model;            // in the window of the model
    Model3D zone_model;       // of a part of the viewer's picture
    Viewer2D viewer;          // of area detectors
    Panel_Memory panel_memory;
    List_On_Window list;
    Data_Directories directories;       // of runs and instruments
    Instrument_State instrument;        // the one in use
    Numor_Series series;                // of runs that were opened last by their numbers
    std::string data_dir;               // where the data file of a refinement was chosen last, blank for nowhere yet
    bool failed = false;                // a reader or a check failed: exit status 1
    bool leaving = false;               // the message loop ends
    unsigned note_timed = 0;            // note of the status bar for which the timer is running
    bool lack_of_opengl_told = false;   // the user knows that this display has none
    std::array<int, 2> toolbars{0, 0};  // on the window now

    Application() = default;
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
};

}  // namespace vntl
