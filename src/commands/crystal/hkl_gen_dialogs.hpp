// The dialogs of the tool that generates reflections: what they hold, and how they are filled and read.
#pragma once

#include <vector>

#include "session/hkl_gen.hpp"
#include "session/lists.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

inline constexpr int reflections_dialog = 128, cell_dialog = 156, group_dialog = 157;

std::vector<Dialog_Resource> Hkl_Gen_Dialog_Resources();

// --- symbol and constants: modal ---------------------------------------------------------------------------------------------------

// Asks for the space group and the constants of row 1. The dialog stays open below what it refuses; cancelled, it has changed nothing.
Status Hkl_Gen_Input(Session&);

// --- the cell and its sliders: modeless --------------------------------------------------------------------------------------------

enum Cell_Dialog_Field {
    button_start = 1437,
    button_stop = 1438,
    button_change = 1441,
    button_reflections = 1442,
    field_group = 1443,
    field_told = 1444,
    first_value = 1450,
    first_slider = 1460,
    first_fine = 1470,
    first_low_end = 1480,
    first_high_end = 1490,
    first_unit = 1910
};

void Show_Cell_Dialog(const Hkl_Gen_State&);
// Which fields take input: before the start the free parameters, behind it their sliders.
void Set_Cell_States(const Hkl_Gen_State&);
void Put_Cell(const Cell_Values& cell);
Cell_Values Cell_In_Dialog();                                             // 0 where a field holds no number
void Put_Slider(const Hkl_Gen_State&, std::size_t parameter, int place);  // with its ends and its box "Fine"
void Put_Told(std::string_view text);                                     // the line that tells how a generation went
void Mark_Wrong_Cell(const Hkl_Gen_State&, const std::string& why);       // the first free one that is not positive, else an angle

// --- what the pointer has found: modeless ------------------------------------------------------------------------------------------

void Show_Reflections_Dialog();
void Add_Reflections(const std::vector<Reflection_Mark>& marks);  // those that it does not hold yet
void Clear_Reflections();

}  // namespace vntl
