// Spectral lines: where the peak under the pointer would stand for the other wavelengths of the tube.
#pragma once

#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Spectral_Lines_Dialog_Resource();

// The wavelengths of row 1 that the lines take; nothing changes on cancel.
void Spectral_Lines_Dialog(Session&);

void Spectral_Lines_On(Session&);
void Spectral_Lines_Off(Session&);
void Tell_Without_Spectral_Lines(Session&);     // in the status bar, where the button would draw none
void Toggle_Spectral_Line(Session&, int line);  // 0 K-alpha1, 1 K-alpha2, 2 K-beta, 3 L-alpha1 of tungsten

}  // namespace vntl
