// What the files of the model's window share.
#pragma once

#include <span>
#include <vector>

#include "commands/application.hpp"
#include "solid/w3d_view.hpp"
#include "toolkit/dialog.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/window.hpp"

namespace vntl {

// --- the picture -----------------------------------------------------------------------------------------------------------------

W3d_View View_Of(const Model3D&);

// The operations that show something act on the window of the model.

// The only road to the screen. `turning`: the next picture follows at once, and this one may be coarse.
void Draw_Model(const Model3D&, bool turning = false);

void Take_Solid(Model3D&, W3d solid);            // in place of the present one
void Show_Solid(Model3D&);                       // after it, its factors or its material have changed
void Show_View(Model3D&, bool turning = false);  // after the eye has moved

// What a window does in which a solid is only looked at: the hand turns it, the wheel moves the eye, repaints and sizes draw it.
void Serve_Model_View(Model3D&, const Message& message);
void Put_Model_On(const Model3D&, Device&);  // as a picture; nothing without a solid

// A model of a grid of its own, as measured, in the window of the model over the window `owner`; comes back when that is closed, and
// leaves it to the caller to show again what lies below. The filter smooths that grid. Too large a grid is refused in a box.
void Show_Model_Of(Application&, PlotGrid grid, std::string x_title, int owner = viewer_window);

// A box that says so where the window selected last has none.
void Tell_Lack_Of_OpenGL(Application&);

// --- dialogs ---------------------------------------------------------------------------------------------------------------------

std::vector<Dialog_Resource> Model_Dialogs();

void Scale_Dialog(Model3D&);
void Info_Dialog(const Model3D&);

// Where the light and the observer stand: dialogs that stay open while the window is served.
std::vector<int> Position_Dialogs();
void Open_Light_Dialog(const Model3D&);
void Open_View_Dialog(const Model3D&);
void Serve_Position_Dialog(Model3D&, const Message& message);
void Follow_In_Dialogs(const Model3D&);  // shows places and colours that have changed by another way
std::vector<Dialog_Resource> Position_Resources();

// --- files -----------------------------------------------------------------------------------------------------------------------

void Save_W3d(Configuration&, Ask&, const Model3D&);

std::span<const Menu_Entry> Model_Menu();

}  // namespace vntl
