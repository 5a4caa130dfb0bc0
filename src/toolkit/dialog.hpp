// Dialogs: declarative tables of numbered fields, shown modal or modeless, and addressed by field number.
//
// A dialog resource is a table of rows of fields; the layout follows from it, so that every font size and screen density looks right.
// The operations act on the dialog selected last. A field that the dialog does not have, or that is of another kind, is passed over, and
// reading it gives nothing.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.hpp"
#include "base/status.hpp"

namespace vntl {

class Bitmap;

enum class Field_Kind {
    label,          // a text; `heading`: larger and bold
    string,         // one line of text
    text,           // lines of text in columns, ended by '\n'; its label stands above it
    real,           // a number, shown by `format`
    integer,        // a whole number from `lo` to `hi`, with spin arrows
    check_box,      // 0 or 1
    radio,          // one of the fields with the same `group`, which is the number of the first
    menu,           // a drop-down list of `choices`
    trackbar,       // a slider from `lo` to `hi`
    progress_bar,   // from `lo` to `hi`; its text, where it gets one, stands in it in place of the percentage
    image,          // an icon of the resources, or a bitmap
    frame,          // a titled box around the rows of its one page
    tab,            // pages of rows, one seen at a time
    tree,           // items under items
    grid,           // cells in rows and typed columns
    push_button,    // 1 the default button, 2 cancel; both stand at the foot of the dialog. An `image` is seen in place of its label
    colour_button,  // a push button that shows a colour
};

enum class Cell_Kind { string, real, integer, check_box };

struct Grid_Column {
    std::string heading;
    Cell_Kind kind = Cell_Kind::string;
    std::string format = {};  // of a real, "(f10.4)"
    int width = 12;           // characters that are seen
};

struct Dialog_Field;

// Fields of one row stand side by side; rows stand under one another.
struct Dialog_Page {
    std::string title = {};
    std::vector<std::vector<Dialog_Field>> rows = {};
};

struct Dialog_Field {
    int number = 0;
    Field_Kind kind = Field_Kind::label;
    std::string label = {};                 // '&' before the mnemonic letter; of an entry it stands at its left
    int group = 0;                          // radio: number of the group's first field
    std::string image = {};                 // image, push button: name of an icon
    bool heading = false;                   // label: larger and bold
    int width = 0;                          // entries: characters that are seen, 0 the usual number
    std::string format = {};                // real: edit descriptor such as "(f8.5)", empty for the shortest text
    int lo = 0, hi = 100;                   // integer, trackbar, progress bar
    std::vector<std::string> choices = {};  // menu
    std::vector<Grid_Column> columns = {};  // grid
    int grid_rows = 0;                      // grid: rows at first
    int rows_seen = 0;                      // grid, text: rows that it has room for, 0 the usual number; grid, as many as at first: no more
    std::vector<Dialog_Page> pages = {};    // frame: one; tab: any number
    bool label_above = false;               // of an entry that is alone in its row: above it, as long as it is
    bool unseen_label = false;              // of an entry, a mark, a colour: not shown, the fields around it tell what it is
};

struct Dialog_Resource {
    int number = 0;
    std::string title;
    std::vector<std::vector<Dialog_Field>> rows;
    bool close = false;  // narrow margins and buttons, as wide as the column that it stands in: for a panel
};

inline constexpr int button_ok = 1, button_cancel = 2;

void Register_Dialogs(std::span<const Dialog_Resource> resources);  // a number that is known already is replaced

// A semi-modeless dialog is modal, and stands beside the picture that it is used with. A panel stands in its window, left of the drawing
// area, in a column that can be scrolled and is as wide as the panel needs, at least `panel_width` pixels. The picture is drawn anew by who
// shows it. It holds nobody back, nor does it go to the front: it is there while a user fills its fields. ENTER in one of them is the
// message key_down of the dialog, with the field as value2; a field that is left, for whatever place of the window, is told by
// field_changed.
enum class Show_Kind { modal = 1, modeless = 2, semi_modeless = 3, panel = 4 };
inline constexpr int panel_width = 165;

void WDialogLoad(int dialog);  // builds and selects it; it belongs to the window selected last
void WDialogSelect(int dialog);
// Shows it; `field` has the focus, 0 the first. `commands`: those of the main window that a modal dialog lets through.
void WDialogShow(int field, Show_Kind kind, std::span<const int> commands = {});
void WDialogHide();
void WDialogUnload();
bool WDialogLoaded(int dialog);
bool WDialogModal(int dialog);  // it is open, and holds the others back
bool WDialogIsPanel(int dialog);
int WDialogFocus();                   // the field that the user is in, 0 none
bool Modal_Loop_Serves(int command);  // of the main window: false while a modal dialog that does not let it through, or a window that holds
                                      // the others back, is open

enum Field_State { field_disabled = 0, field_enabled = 1, field_read_only = 2 };
void WDialogFieldState(int field, int state);
void WDialogColour(int field, Colour colour);  // of a colour button's patch, or of the text of another field
std::optional<Colour> WDialogGetColour(int field);
void WDialogClearField(int field);  // empties an entry, a menu, a tree, the cells of a grid

void WDialogPutString(int field, std::string_view text);
std::string WDialogGetString(int field);
// `format` stays the field's for later values; empty: as it is. Reading gives nothing for a text that is no number.
void WDialogPutReal(int field, float value, std::string_view format = {});
std::optional<float> WDialogGetReal(int field);
void WDialogPutInteger(int field, int value);
std::optional<int> WDialogGetInteger(int field);  // nothing for a text that is no whole number of the field's range
void WDialogRangeInteger(int field, int lo, int hi);
void WDialogPutCheckBox(int field, int value);
int WDialogGetCheckBox(int field);
void WDialogPutRadioButton(int field);  // sets this one of its group
int WDialogGetRadioButton(int group);   // number of the field set, 0 none
void WDialogPutMenu(int field, std::span<const std::string> choices, int chosen);
void WDialogPutOption(int field, int chosen);  // from 1; 0 none
int WDialogGetMenu(int field);
void WDialogPutTrackbar(int field, int value);
int WDialogGetTrackbar(int field);
void WDialogRangeProgressBar(int field, int lo, int hi);
void WDialogPutProgressBar(int field, int value);
void WDialogPutImage(int field, const Bitmap& bitmap);
void WDialogSetTab(int field, int page);  // from 1
int WDialogGetTab(int field);
void WDialogTabState(int field, int page, int state);

// Adds an item under `parent`, 0 for the top; its number, from 1 in the order of insertion.
int WDialogInsertTreeViewItem(int field, int parent, std::string_view text);
int WDialogGetTreeView(int field);  // number of the chosen item, 0 none
void WDialogPutTreeView(int field, int item);

// --- grids: columns and rows count from 1 --------------------------------------------------------------------------------------
void WGridRows(int field, int rows);  // cells that stay keep what they hold
int WInfoGrid(int field);             // number of rows
void WGridLabelRow(int field, int row, std::string_view text);
void WGridPutCellString(int field, int column, int row, std::string_view text);
void WGridPutCellReal(int field, int column, int row, float value, std::string_view format = {});
void WGridPutCellInteger(int field, int column, int row, int value);
void WGridPutCellCheckBox(int field, int column, int row, int value);
std::string WGridGetCellString(int field, int column, int row);
std::optional<float> WGridGetCellReal(int field, int column, int row);
std::optional<int> WGridGetCellInteger(int field, int column, int row);
int WGridGetCellCheckBox(int field, int column, int row);
// Whole columns; putting makes no rows.
void WGridPutString(int field, int column, std::span<const std::string> texts);
void WGridPutReal(int field, int column, std::span<const float> values, std::string_view format = {});
void WGridPutCheckBox(int field, int column, std::span<const int> values);
std::vector<std::optional<float>> WGridGetReal(int field, int column);
std::vector<int> WGridGetCheckBox(int field, int column);
void WGridState(int field, int column, int state);
void WGridStateCell(int field, int column, int row, int state);
// Tells which field, or cell of a grid, holds what was refused: a red frame or ground, the focus, and the reason as its tool tip. The mark
// goes when the user changes the field, or presses a button of the dialog.
void WDialogMarkField(int field, std::string_view why);
void WGridMarkCell(int field, int column, int row, std::string_view why);
void WDialogClearMarks(int dialog);
int WInfoGridCell(int field, int column, int row, int what);  // what 1: 1 when the cell holds a valid value

// --- for scripts: what a user sees and does ------------------------------------------------------------------------------------
struct Field_View {
    int number;
    std::string kind, label, value;
    bool enabled;
    std::vector<std::vector<std::string>> cells;  // of a grid, row by row
    bool marked = false;                          // as refused
    std::vector<std::string> titles = {};         // titles of page and frame, and the label that leads its row
};
struct Dialog_View {
    int number = -1;
    std::string title;
    std::vector<Field_View> fields;
};
Dialog_View Describe_Dialog(int dialog);
// They fail on a disabled or read-only field and on a value that it does not take.
Status Act_Set_Field(int dialog, int field, const std::string& value);
Status Act_Set_Cell(int dialog, int field, const std::string& column, int row, const std::string& value);  // column: number or heading
Status Act_Select(int dialog, int field, const std::string& path);                                         // the item's texts joined by '/'
Status Act_Press(int dialog, int field);
Status Act_Key(int dialog, int code);  // a key to the field that has the focus
Status Act_Front(int window);          // brings a window or dialog to the front, as a user does
// The field of a label, or of a path "page/section/label" any part of which but the last may be left out. Fails on none and on two.
Status Field_By_Label(int dialog, const std::string& label, int& field);

}  // namespace vntl
