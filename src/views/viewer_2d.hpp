// What the files of the viewer's window share.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "commands/application.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"

namespace vntl {

inline const Saturation& Saturation_Of(const Application& app) { return app.session.prefs.saturation; }

// --- what the window shows ---------------------------------------------------------------------------------------------------------

// After run, frame, mode or scale have changed: picture, panel, menu, status and the windows beside it.
void Show_Viewer(Application&);

void Choose_Side_Plot(Application&, int side);
void Choose_Plot_Kind(Application&, int kind);

// --- what menu, toolbar and panel do; each tells its failure in one box ------------------------------------------------------------

void Open_Numor_File(Application&);       // asks for it
void Choose_Run_Directory(Application&);  // likewise
void List_Run_Directory(Application&, const std::string& directory);
void Read_Runs(Application&, int from, int to);  // of the directory, by number
void Reload_Runs(Application&);                  // those that are there, from their files
void Search_Run(Application&, const std::string& instrument, int numor, std::optional<Reactor_Cycle> cycle);

void Step_To_Run(Application&, int index);  // from 1
void Go_To_Numor(Application&, int numor);
void Go_To_Frame(Application&, int frame);
void Switch_Projection(Application&);
void Accept_View(Application&, View_Axis axis);
void Read_UB_Matrix(Application&);  // asks for it, and builds the volume

void Set_Current_Instrument(Application&);                    // the dialog
void Load_Instrument(Application&, const std::string& file);  // " An instrument file should be given!" for a blank name
void Choose_Instrument_File(Application&);                    // asks for it, loads nothing
void Edit_Viewer_Preferences(Application&);

// --- the panel ---------------------------------------------------------------------------------------------------------------------

inline constexpr int viewer_panel = 450, ub_dialog = 451, current_instrument_dialog = 452;

Dialog_Resource Viewer_Panel_Resource();
std::vector<Dialog_Resource> Viewer_Dialogs();  // all three

void Open_Panel(Application&);
void Show_In_Panel(Application&);  // what the state tells; fields that the user is filling stay
void Handle_Panel(Application&, const Message& message);

// --- dialogs -----------------------------------------------------------------------------------------------------------------------

struct UB_Input {
    Matrix3d ub{}, inverse{};
};
// "Reading UB-Matrix", which begins with the matrix that is known and stays open below a text that is none; nothing on cancel.
std::optional<UB_Input> UB_Dialog(const Viewer2D&);

// "Use Default Instrument", for which `take` gets a blank name, or "Read Instrument File". It stays open below what `take` refuses; false
// on cancel.
bool Current_Instrument_Dialog(Application&, const std::function<Status(const std::string& file)>& take);

std::string Select_Instrument_File(Application&);  // blank on cancel

}  // namespace vntl
