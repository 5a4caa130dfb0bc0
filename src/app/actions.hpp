// What the commands of the main window do, one short function each.
#pragma once

#include "commands/plot/view.hpp"

namespace vntl {

struct Application;

void Command_Open_Pattern(Application&);
void Open_Recent_File(Application&, int slot);
void Command_Export(Application&);
void Command_Reset(Application&);
void Command_Exit(Application&);
void Command_Focus(Application&);
void Command_Target(Application&);
void Command_About(Application&);
void Command_Gestures(Application&);
void Command_Copy_Picture(Application&);
void Command_Copy_Data(Application&);
void Command_View_Back(Application&);
void Command_View_Forward(Application&);
void Command_Start_Drag(Application&);
void Command_End_Drag(Application&);
void Command_Text_Editor(Application&);
void Command_Edit_Control_File(Application&);
void Show_Graph_2D(Application&, bool log);
void Move_And_Redraw(Application&, View_Move);

template <int slot>
void Command_Recent(Application& app) {
    Open_Recent_File(app, slot);
}
template <bool log>
void Command_Graph_2D(Application& app) {
    Show_Graph_2D(app, log);
}
template <View_Move move>
void Command_Move(Application& app) {
    Move_And_Redraw(app, move);
}

}  // namespace vntl
