// What the commands of the main window do, one short function each.
#pragma once

#include "commands/plot/view.hpp"

namespace vntl {

struct Application;

void Command_Open_Pattern(Application&);
void Command_Open_Prf(Application&);
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
void Command_Change_Wavelength(Application&);
void Command_Change_Dtt(Application&);
void Command_Sum(Application&);
void Command_Average(Application&);
void Command_Difference(Application&);
void Command_Multiply(Application&);
void Command_Efficiency(Application&);
void Command_Smooth_Fourier(Application&);
void Command_Smooth_Polynomial(Application&);
void Command_Peaks_On(Application&);
void Command_Peaks_Off(Application&);
void Command_Search_Peaks(Application&);
void Command_Search_Satellites(Application&);
void Command_Clear_Peaks(Application&);
void Command_Background_On(Application&);
void Command_Background_Off(Application&);
void Command_Search_Background(Application&);
void Command_Clear_Background(Application&);
void Command_To_2theta(Application&);
void Command_To_Tof(Application&);
void Command_To_D(Application&);
void Command_To_Q(Application&);
void Command_To_S(Application&);
void Command_Insert_Peak(Application&);
void Command_Delete_Peak(Application&);
void Command_Insert_Background(Application&);
void Command_Delete_Background(Application&);
void Command_Fit_On(Application&);
void Command_Fit_Off(Application&);
void Command_Show(Application&);
void Command_Insert_Excluded(Application&);
void Command_Select_Excluded(Application&);
void Command_Admin_Excluded(Application&);
void Command_Offset_Align(Application&);
void Command_Scaling_X(Application&);
void Command_Scaling_Y(Application&);
void Command_Lines_On(Application&);
void Command_Lines_Off(Application&);
void Command_Lines_Settings(Application&);
void Toggle_Line(Application&, int line);
void Show_Graph_2D(Application&, bool log);
void Move_And_Redraw(Application&, View_Move);

template <int slot>
void Command_Recent(Application& app) {
    Open_Recent_File(app, slot);
}
template <int line>
void Command_Toggle_Line(Application& app) {
    Toggle_Line(app, line);
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
