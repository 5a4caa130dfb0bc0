// Windows: the main one and its children, each with menu, toolbars and status bar, and what is shown in them.
//
// Operations without a window's number act on the window selected last.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/ask.hpp"
#include "drawing/recording.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

// One entry of a menu resource. A popup has entries of its own; command 0 with an empty label is a separating line.
struct Menu_Entry {
    int command = 0;       // popups may have a number too
    std::string label;     // '&' before the mnemonic letter
    std::string shortcut;  // "Ctrl+O", empty for none
    std::string hint;      // shown in the status bar, and with the label at a toolbar's button
    std::string icon;      // name of an icon of the toolbars, empty for none
    std::vector<Menu_Entry> entries;
    bool popup = false;
    bool checkable = false;
};

// A table of buttons: size of their pictures at the usual font, then commands of the window's menu, 0 a gap.
struct Toolbar_Resource {
    int number = 0;
    int button_width = 16, button_height = 16;
    std::vector<int> commands;
};

// What a child window shows: a bitmap, a text, or a solid in space (toolkit/solid_view).
enum class Child_Kind { plot, editor, solid };

void WindowOpen(int width, int height, const std::string& title, const std::string& icon);
// A child that holds the others back has a message loop of its own: as long as it is open the user can act in it and its dialogs alone.
// A child of another window than the main one, its `owner`, is open no longer than that, and the user can act in it as in the owner.
void WindowOpenChild(int number, const std::string& title, int width, int height, Child_Kind kind, bool holds_others = false,
                     int owner = main_window);
void WindowCloseChild(int number);  // and its dialogs, and the windows that it owns
bool WindowIsOpen(int number);
void WindowShow();  // when its menu and status bar are there
void WindowSelect(int number);
void WindowTitle(const std::string& title);
void WindowSplit(int panes, bool side_by_side);  // divides the drawing area; each pane is drawn on and sends mouse messages of its own
void WindowStatusBarParts(std::span<const int> widths);      // hundredths of a character's width, -1 the rest
void WindowOutStatusBar(int part, const std::string& text);  // part from 1
std::string WindowStatusBarText(int part);
int WInfoWindow(int what, int pane = 1);   // 1 width, 2 height of the drawing area in device pixels, 3 how many of them an inch has
void WindowResize(int width, int height);  // of the drawing area; a resize message follows
void WCursorShape(int shape);              // 0 arrow, 3 cross, 6 hand
int WindowFront();                         // number of the window or dialog in front
bool WindowToFront(int number);            // false when it is not open

// Entries without a mnemonic letter get one that no other entry of their menu has, as long as there are letters. F10 leads into the bar.
void WMenu(std::span<const Menu_Entry> bar);
enum Menu_What { menu_enabled = 1, menu_checked = 2 };
void WMenuSetState(int command, int what, int value);
// What the status bar says at a menu of which no entry can be chosen, as the states stand now.
void WMenuGreyHint(const std::string& why);
int WMenuGetState(int command, int what);  // -1 for a command that no menu holds
std::vector<int> WMenuCommands();          // of the menu, by number
void WMenuSetString(int command, const std::string& text);
std::string WMenuGetString(int command);

void Register_Toolbars(std::span<const Toolbar_Resource> tables);
inline constexpr int first_toolbar_row = 1, second_toolbar_row = 4;
void WMenuToolbar(int table, int row);  // 0 removes the bar of that row

// Puts the bitmap on the window and gives it away: the window keeps it for repaints. One that shows a solid takes none, nor an overlay.
void WBitmapPut(Bitmap bitmap, int pane = 1);

// The shapes that lie over the bitmap: marks, picks, read-out box, rubber shapes; replaces the last ones.
void WOverlayPut(const Recording_Device& overlay, int pane = 1);

bool Box_Offers(Box_Buttons buttons, Box_Answer answer);
Box_Answer Box_Default(const Message_Box& box);  // of the button that has the focus

// A message box; the answer is its button (the cancelling one when the box is closed).
Box_Answer WMessageBox(const Message_Box& box);

// Common file dialog, in `directory` or, when that is blank, the current one. Filter: label and pattern pairs, each followed by a
// vertical bar. Full paths; none on cancel. `save` asks itself before the name of a file that is there is taken, `save_unasked` leaves that
// to the caller.
enum class Select_Kind { open, open_multiple, save, save_unasked };
std::vector<std::string> WSelectFile(std::string_view filter, Select_Kind kind, const std::string& name, std::string_view title,
                                     const std::string& directory = {});
std::optional<std::string> WSelectDir(const std::string& directory, std::string_view title);  // nothing on cancel
std::optional<Colour> WSelectColour(Colour present);

// --- the clipboard -------------------------------------------------------------------------------------------------------------
void WClipboardPutBitmap(const Bitmap& bitmap);
void WClipboardPutText(const std::string& text);
std::string WClipboardText();

// --- the text in an editor window ----------------------------------------------------------------------------------------------
Status WEditFile(const std::string& file);         // loads it; blank: an empty text without a file
Status WEditSave(const std::string& file);         // every byte that was not edited as it came
bool WEditChangedOnDisk(const std::string& file);  // it is the text's own file, and holds something else than was read or saved last
std::string WEditName();                           // of the file, empty for none
bool WEditChanged();
std::string WEditText();
bool WEditFind(const std::string& text, bool match_case);  // the next place, from the start again behind the last one
enum class Edit_Action { undo, redo, cut, copy, paste, select_all };
void WEditDo(Edit_Action action);

// Who acts in a user's place. Boxes and selectors ask it first; the box or selector is still reported when it answers nothing.
class Stand_In {
public:
    virtual ~Stand_In() = default;
    virtual Box_Answer Answer_Box(const Message_Box& box) = 0;
    virtual std::vector<std::string> Answer_Select(Select_Kind kind) = 0;
    virtual std::optional<std::string> Answer_Directory() = 0;
    virtual std::optional<Colour> Answer_Colour() = 0;
};
void Set_Stand_In(Stand_In*);  // null: the user

// Who writes down what the user does, told in the order in which it happens.
class Witness {
public:
    virtual ~Witness() = default;
    virtual void Saw_Message(const Message& message) = 0;  // taken from the queue
    virtual void Saw_Field(int dialog, int field, const std::string& value) = 0;
    virtual void Saw_Cell(int dialog, int field, int column, int row, const std::string& value) = 0;
    virtual void Saw_Item(int dialog, int field, const std::string& path) = 0;
    virtual void Saw_Front(int window) = 0;  // a window or dialog that was brought to the front
    virtual void Saw_Answer(const Message_Box& box, Box_Answer answer) = 0;
    virtual void Saw_Files(const std::vector<std::string>& files) = 0;
    virtual void Saw_Directory(const std::optional<std::string>& directory) = 0;
    virtual void Saw_Colour(const std::optional<Colour>& colour) = 0;
};
void Set_Witness(Witness*);  // null: nobody

}  // namespace vntl
