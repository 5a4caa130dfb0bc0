// The menu "Preset" of dialogs that take a wavelength: the K-alpha lines of X-ray tubes, which fill the fields.
//
//   resource.rows.push_back({wavelength, unit, Preset_Field()});
//   Run_Modal(dialog, {.changed = Minding_Preset(wavelength)})
#pragma once

#include <functional>
#include <string>

#include "toolkit/dialog.hpp"

namespace vntl {

inline constexpr int preset_menu = 1990;  // in all dialogs

// What an entry of the menu stands for, in angstrom. One line: lambda2 is 0.
struct Wavelength_Preset {
    float lambda1 = 0, lambda2 = 0;
    float ratio = 0;  // of the intensities, lambda 2 to lambda 1
};

// A menu whose first entry is "Custom". `doublets`: K-alpha1 with K-alpha2 beside the lines alone, for dialogs with fields for both.
Dialog_Field Preset_Field(std::string label = "&Preset", bool doublets = false);

// What a dialog minds: a choice is handed to `fill`.
std::function<void(int)> Minding_Preset(std::function<void(const Wavelength_Preset&)> fill);

// The same for a dialog with one field of a wavelength, a number or a text, in front: a choice goes there, and what the user types there is
// shown in the menu.
std::function<void(int)> Minding_Preset(int field);

// Shows which entry has this wavelength; "Custom" for none.
void Show_Preset_Of(float wavelength);

}  // namespace vntl
