// The windows of their own: the commands that open them, and what they serve.
#pragma once

#include <string>
#include <vector>

#include "base/topic.hpp"
#include "commands/command.hpp"

namespace vntl {

Command_Family Text_Editor_Commands();
Command_Family Quick_View_Commands();
Command_Family Generic_Graphics_Commands();
Command_Family Model_3D_Commands();
Command_Family Viewer_2D_Commands();

void Register_Text_Editor(Application&);
void Register_Quick_View(Application&);
void Register_Generic_Graphics(Application&);
void Register_Model_3D(Application&);
void Register_Viewer_2D(Application&);

// Opens the window of generic graphics with a file of it, and comes back when the window is closed.
void Show_Generic_File(Application&, const std::string& file);

// Shows the solid of a file in the window of the model until that is closed.
void Show_W3d_File(Application&, const std::string& file);

Topic Model_3D_Topic(const Application&);              // model3d
std::vector<Topic> Viewer_Topics(const Application&);  // viewer, frame, pixel, volume, section, omega

}  // namespace vntl
