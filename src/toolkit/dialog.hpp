// Dialogs: declarative tables of numbered fields, shown modal or modeless, and addressed by field number.
//
// A dialog resource is a table of rows of fields; the layout follows from it, so that every font size and screen density looks right.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

// A further kind is one more class in qt/dialog_fields.cpp.
enum class Field_Kind { label, radio, image, push_button };

struct Dialog_Field {
    int number = 0;
    Field_Kind kind = Field_Kind::label;
    std::string label;     // '&' before the mnemonic letter
    int group = 0;         // radio: number of the group's first field
    std::string image;     // image: name of a resource
    bool heading = false;  // label: larger and bold
};

// Fields of one row stand side by side; rows stand under one another. Push buttons 1 and 2 go to the foot of the dialog.
struct Dialog_Resource {
    int number = 0;
    std::string title;
    std::vector<std::vector<Dialog_Field>> rows;
};

inline constexpr int button_ok = 1, button_cancel = 2;

void Register_Dialogs(std::span<const Dialog_Resource> resources);

enum class Show_Kind { modal = 1, modeless = 2, semi_modeless = 3 };

void WDialogLoad(int dialog);  // builds and selects it
void WDialogSelect(int dialog);
void WDialogShow(int field, Show_Kind kind);  // `field` has the focus, 0 the first
void WDialogUnload();
bool WDialogLoaded(int dialog);
int WDialogFront();  // number of the dialog in front, -1 when the main window is

void WDialogFieldState(int field, int state);  // 0 disabled, 1 enabled
void WDialogPutString(int field, std::string_view text);
std::string WDialogGetString(int field);
void WDialogPutRadioButton(int field);  // sets this one of its group
int WDialogGetRadioButton(int group);   // number of the field set, 0 none

// For scripts: what a user sees and does in the dialog in front.
struct Field_View {
    int number;
    std::string kind, label, value;
    bool enabled;
};
struct Dialog_View {
    int number = -1;
    std::string title;
    std::vector<Field_View> fields;
};
Dialog_View Describe_Dialog(int dialog);
Status Act_Set_Field(int dialog, int field, const std::string& value);  // fails on a disabled field and on a value that it does not take
Status Act_Press(int dialog, int field);
Status Field_By_Label(int dialog, const std::string& label, int& field);  // fails on none and on two of that label

}  // namespace vntl
