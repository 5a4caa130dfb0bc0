#include "commands/help/gestures.hpp"

#include "commands/modal.hpp"

namespace vntl {

namespace {

constexpr int gestures_dialog = 403;
constexpr int field_heading = 1001, field_first = 1002;

struct Gesture {
    std::string_view hand, effect;
};
constexpr Gesture gestures[] = {
    {"Move the mouse", "Reads x, y, the point's number or the nearest shown pattern, and d"},
    {"Left button, drag", "Draws a rectangle; releasing it makes it the view"},
    {"Right button", "Back to the whole range"},
    {"Wheel", "A narrower or wider range of x about the pointer; over the scale of y, of y"},
    {"Middle button, drag", "Moves the view with the hand, in every mode; over a map too"},
    {"Over a map", "Reads x, the nearest pattern and its intensity; a rectangle takes x and patterns"},
    {"A graph in space, left button, drag", "Turns and tilts it by a degree a move"},
    {"Escape", "Lets a rectangle or a drag lapse, ends a mode of the mouse, an insertion or a deletion"},
    {"Alt+Left, Alt+Right", "Back and forward through the views; mice with such buttons do the same"},
    {"Ctrl+Left, Ctrl+Right", "Moves the view by a tenth of its width"},
    {"Ctrl+Home, Ctrl+End", "Moves the view to the first or the last point"},
    {"Ctrl+Up, Ctrl+Down", "Moves the view by a twentieth of its height"},
    {"Ctrl+=, Ctrl+-", "A narrower or wider range of x about the middle"},
    {"Ctrl+F", "Fits the range of y to the points in view"},
    {"Ctrl+L", "Logarithms of the intensities, square roots, and back"},
    {"Ctrl+G, then left button, drag", "The plot follows the hand at half its speed; the right button ends it"},
    {"Peaks or background enabled, click", "Inserts or deletes at the pointer, as chosen in the menu"},
    {"Select excluded regions, drag", "The stretch drawn over is excluded"},
    {"Offset/Align, drag", "Moves the chosen profiles from where the drag began to where it ends"},
    {"Scaling X, Scaling Y", "A click on a reference, then a drag: its end over the reference is the factor of x, or y"},
    {"Spectral lines enabled, left button", "Lines where the peak would stand for the tube's other wavelengths"},
    {"Ctrl+Z, Ctrl+Shift+Z", "Takes the last change of profiles or lists back, and makes it again"},
    {"Ctrl+C, Ctrl+Shift+C", "Copies the picture, or the points in view as text"},
    {"F9, then F6", "Opens the list of patterns, and goes there with the keys; Escape or F6 goes back"},
    {"In the list: Space, F2, Delete", "Shows or hides the chosen patterns, names one, deletes them"},
    {"In the list: drag, Ctrl+Shift+Up or Down", "Moves the chosen patterns to another place"},
    {"Drop files on the window", "Opens them"},
};

}  // namespace

Dialog_Resource Gestures_Dialog_Resource() {
    Dialog_Resource resource{gestures_dialog, "Mouse and keys", {{{field_heading, Field_Kind::label, "Over the plot", 0, "", true}}}};
    int field = field_first;
    for (const Gesture& gesture : gestures) {
        resource.rows.push_back(
            {{field, Field_Kind::label, std::string(gesture.hand)}, {field + 1, Field_Kind::label, std::string(gesture.effect)}});
        field += 2;
    }
    resource.rows.push_back({{button_ok, Field_Kind::push_button, "OK"}});
    return resource;
}

void Gestures_Dialog() {
    WDialogLoad(gestures_dialog);
    WDialogShow(button_ok, Show_Kind::modal);
    Run_Modal(gestures_dialog);
    WDialogUnload();
}

}  // namespace vntl
