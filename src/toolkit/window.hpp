// Windows: the main one with its menu, toolbars and status bar, and what is shown in them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/ask.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/messages.hpp"
#include "toolkit/recording.hpp"

namespace vntl {

// One entry of a menu resource. A popup has entries of its own; command 0 with an empty label is a separating line.
struct Menu_Entry {
    int command = 0;       // popups may have a number too
    std::string label;     // '&' before the mnemonic letter
    std::string shortcut;  // "Ctrl+O", empty for none
    std::string hint;      // shown in the status bar
    std::string icon;      // name of an icon of the resources, empty for none
    std::vector<Menu_Entry> entries;
    bool popup = false;
    bool checkable = false;
};

void WindowOpen(int width, int height, const std::string& title, const std::string& icon);
void WindowShow();  // when its menu and status bar are there
void WindowTitle(const std::string& title);
void WindowStatusBarParts(std::span<const int> widths);      // hundredths of a millimetre, -1 the rest
void WindowOutStatusBar(int part, const std::string& text);  // part from 1
std::string WindowStatusBarText(int part);
int WInfoWindow(int what);                 // 1 width, 2 height of the main window's drawing area in device pixels
void WindowResize(int width, int height);  // of the drawing area; a resize message follows
void WCursorShape(int shape);              // 0 arrow, 3 cross, 6 hand

void WMenu(std::span<const Menu_Entry> bar);
enum Menu_What { menu_enabled = 1, menu_checked = 2 };
void WMenuSetState(int command, int what, int value);
int WMenuGetState(int command, int what);  // -1 for a command that no menu holds
void WMenuSetString(int command, const std::string& text);
std::string WMenuGetString(int command);

// Puts the bitmap on the main window and gives it away: the window keeps it for repaints.
void WBitmapPut(Bitmap bitmap);

// The shapes that lie over the bitmap: marks, picks, read-out box, rubber shapes; replaces the last ones.
void WOverlayPut(const Recording_Device& overlay);

bool Box_Offers(Box_Buttons buttons, Box_Answer answer);
Box_Answer Box_Default(const Message_Box& box);  // of the button that has the focus

// A message box; the answer is its button (the cancelling one when the box is closed).
Box_Answer WMessageBox(const Message_Box& box);

// Common file dialog. Filter: label and pattern pairs, each followed by a vertical bar. Full paths; none on cancel.
enum class Select_Kind { open, open_multiple, save };
std::vector<std::string> WSelectFile(std::string_view filter, Select_Kind kind, const std::string& name, std::string_view title);

// Who acts in a user's place. Boxes and selectors ask it first; the box or selector is still reported when it answers nothing.
class Stand_In {
public:
    virtual ~Stand_In() = default;
    virtual Box_Answer Answer_Box(const Message_Box& box) = 0;
    virtual std::vector<std::string> Answer_Select(Select_Kind kind) = 0;
};
void Set_Stand_In(Stand_In*);  // null: the user

}  // namespace vntl
