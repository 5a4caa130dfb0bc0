// The tool that lays the reflections of a cell and a space group over the first pattern, and lets sliders move the cell.
#pragma once

#include <vector>

#include "toolkit/messages.hpp"

namespace vntl {

struct Application;
struct Session;

// Asks for the space group, then shows the marks and the modeless dialog of the cell.
void Hkl_Gen(Application&);

// Its modeless dialogs, and their messages.
std::vector<int> Hkl_Gen_Dialogs();
bool Is_Of_Hkl_Gen(int dialog);
void Serve_Hkl_Gen(Application&, const Message&);

// After each message: where something else has ended its mode, rows that came or went, another x space, a new start, its dialogs go too.
void Follow_Hkl_Gen(Session&);

// The reflections that the pointer has found go to the dialog that collects them, when it is open.
void Collect_Pointed_Reflections(const Session&);

}  // namespace vntl
