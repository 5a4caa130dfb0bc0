// The operations on dialogs and their fields.
#include <QAbstractButton>
#include <QButtonGroup>
#include <algorithm>
#include <cmath>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/dialog_window.hpp"
#include "toolkit/qt/keys.hpp"
#include "toolkit/qt/main_window.hpp"

namespace vntl {

namespace {

std::vector<Dialog_Resource>& Resources() {
    static std::vector<Dialog_Resource> resources;
    return resources;
}

Dialog_Window* Selected() { return The_Toolkit().Dialog(The_Toolkit().selected_dialog); }

// The field of the selected dialog, as its kind; null where there is none of that kind.
template <class Kind = Dialog_Widget>
Kind* Selected_Field(int field) {
    const Dialog_Window* dialog = Selected();
    return dialog == nullptr ? nullptr : dynamic_cast<Kind*>(dialog->Field(field));
}

void Put_Number(int field, double value, std::string_view format = {}) {
    if (Dialog_Widget* widget = Selected_Field(field)) widget->Put_Number(value, format);
}

std::optional<double> Number_Of(int field) {
    const Dialog_Widget* widget = Selected_Field(field);
    return widget == nullptr ? std::nullopt : widget->Number();
}

int Whole_Number_Of(int field) { return static_cast<int>(Number_Of(field).value_or(0)); }

std::string Number_Text(int number) { return std::to_string(number); }

// The field that a script acts on; fails where there is none, or one that takes no input.
Status Field_To_Act_On(int dialog, int number, Dialog_Widget*& field) {
    Dialog_Window* window = The_Toolkit().Dialog(dialog);
    field = window == nullptr ? nullptr : window->Field(number);
    if (field == nullptr) return Status::Fail("dialog " + Number_Text(dialog) + " has no field " + Number_Text(number));
    if (field->widget()->isEnabled() && field->Takes_Input()) {
        window->Enter_Panel(number);
        return Status::Done();
    }
    return Status::Fail("field " + Number_Text(number) + " (" + Bare_Label(field->field().label) + ") is disabled");
}

// A path without the blanks around its slashes.
std::string Bare_Path(std::string_view path) {
    std::string bare = Bare_Label(path);
    for (std::size_t slash = bare.find('/'); slash != std::string::npos; slash = bare.find('/', slash + 1)) {
        while (slash > 0 && bare[slash - 1] == ' ') bare.erase(--slash, 1);
        while (slash + 1 < bare.size() && bare[slash + 1] == ' ') bare.erase(slash + 1, 1);
    }
    return bare;
}

// Whether a text is the field's label, or that behind some of the titles around it, parted by '/'. Titles and labels may hold one.
bool Is_Path_Of(const Dialog_Widget& field, std::string_view bare_text) {
    const std::vector<std::string>& titles = field.titles;
    for (unsigned named = 0; named < 1u << titles.size(); ++named) {
        std::string path;
        for (std::size_t i = 0; i < titles.size(); ++i)
            if ((named >> i & 1u) != 0) path += titles[i] + '/';
        if (Bare_Path(path + field.field().label) == bare_text) return true;
    }
    return false;
}

}  // namespace

void Register_Dialogs(std::span<const Dialog_Resource> resources) {
    for (const Dialog_Resource& resource : resources) {
        std::erase_if(Resources(), [&](const Dialog_Resource& known) { return known.number == resource.number; });
        Resources().push_back(resource);
    }
}

void WDialogLoad(int dialog) {
    Toolkit& toolkit = The_Toolkit();
    toolkit.selected_dialog = dialog;
    if (toolkit.Dialog(dialog) != nullptr) return;
    for (const Dialog_Resource& resource : Resources())
        if (resource.number == dialog)
            toolkit.dialogs.push_back(std::make_unique<Dialog_Window>(resource, toolkit.Find_Window(toolkit.selected_window)));
}

void WDialogSelect(int dialog) { The_Toolkit().selected_dialog = dialog; }

void WDialogShow(int field, Show_Kind kind, std::span<const int> commands) {
    if (Dialog_Window* dialog = Selected()) dialog->Show(field, kind, commands);
}

void WDialogHide() {
    if (Dialog_Window* dialog = Selected()) dialog->hide();
}

void WDialogUnload() {
    Toolkit& toolkit = The_Toolkit();
    const int number = toolkit.selected_dialog;
    const auto loaded =
        std::find_if(toolkit.dialogs.begin(), toolkit.dialogs.end(), [number](const auto& dialog) { return dialog->number() == number; });
    if (loaded == toolkit.dialogs.end()) return;
    auto dialog = std::move(*loaded);  // known no more before it goes: others come to the front meanwhile
    toolkit.dialogs.erase(loaded);
    std::erase(toolkit.order, number);
    std::erase_if(toolkit.wanted, [number](const auto& wish) { return wish.first == number; });
    if (dialog->Is_Panel()) dialog->Owner()->Put_Panel(nullptr);
    dialog.reset();
    // What was still to be said to it is void.
    std::erase_if(toolkit.queue, [number](const Message& message) { return message.record.win == number; });
}

bool WDialogLoaded(int dialog) { return The_Toolkit().Dialog(dialog) != nullptr; }

bool WDialogModal(int dialog) {
    const Dialog_Window* window = The_Toolkit().Dialog(dialog);
    return window != nullptr && window->isVisible() && window->Holds_Others();
}

bool WDialogIsPanel(int dialog) {
    const Dialog_Window* window = The_Toolkit().Dialog(dialog);
    return window != nullptr && window->Is_Panel();
}

int WDialogFocus() {
    const Dialog_Window* dialog = Selected();
    return dialog == nullptr ? 0 : dialog->Focus();
}

bool Modal_Loop_Serves(int command) {
    const auto& dialogs = The_Toolkit().dialogs;
    return The_Toolkit().Holding_Window() == nullptr && std::none_of(dialogs.begin(), dialogs.end(), [&](const auto& dialog) {
               return dialog->isVisible() && dialog->Holds_Others() && !dialog->Lets_Through(command);
           });
}

void WDialogFieldState(int field, int state) {
    Dialog_Widget* widget = Selected_Field(field);
    if (widget == nullptr) return;
    widget->Set_State(state);
    if (widget->caption != nullptr) widget->caption->setEnabled(state != field_disabled);
}

void WDialogColour(int field, Colour colour) {
    if (Dialog_Widget* widget = Selected_Field(field)) widget->Put_Colour(colour);
}

std::optional<Colour> WDialogGetColour(int field) {
    const Dialog_Widget* widget = Selected_Field(field);
    return widget == nullptr ? std::nullopt : widget->Shown_Colour();
}

void WDialogClearField(int field) {
    if (Dialog_Widget* widget = Selected_Field(field)) widget->Clear();
}

void WDialogPutString(int field, std::string_view text) {
    if (Dialog_Widget* widget = Selected_Field(field)) widget->Put(text);
}

std::string WDialogGetString(int field) {
    const Dialog_Widget* widget = Selected_Field(field);
    return widget == nullptr ? std::string() : widget->Value();
}

void WDialogPutReal(int field, float value, std::string_view format) { Put_Number(field, value, format); }
std::optional<float> WDialogGetReal(int field) {
    const auto value = Number_Of(field);
    return value ? std::optional(static_cast<float>(*value)) : std::nullopt;
}

void WDialogPutInteger(int field, int value) { Put_Number(field, value); }

std::optional<int> WDialogGetInteger(int field) {
    const auto value = Number_Of(field);
    return value && std::trunc(*value) == *value && std::fabs(*value) < 2147483648.0 ? std::optional(static_cast<int>(*value))
                                                                                     : std::nullopt;
}

void WDialogRangeInteger(int field, int lo, int hi) {
    if (Dialog_Widget* widget = Selected_Field(field)) widget->Range(lo, hi);
}

void WDialogPutCheckBox(int field, int value) { Put_Number(field, value); }
int WDialogGetCheckBox(int field) { return Whole_Number_Of(field); }

void WDialogPutRadioButton(int field) {
    const Dialog_Widget* widget = Selected_Field(field);
    if (widget != nullptr && widget->field().kind == Field_Kind::radio) Put_Number(field, 1);
}

int WDialogGetRadioButton(int group) {
    Dialog_Window* dialog = Selected();
    return dialog == nullptr ? 0 : std::max(0, dialog->Group(group)->checkedId());
}

void WDialogPutMenu(int field, std::span<const std::string> choices, int chosen) {
    if (auto* menu = Selected_Field<Menu_Widget>(field)) {
        menu->Put_Choices(choices);
        menu->Put_Number(chosen, {});
    }
}

void WDialogPutOption(int field, int chosen) { Put_Number(field, chosen); }
int WDialogGetMenu(int field) { return Whole_Number_Of(field); }
void WDialogPutTrackbar(int field, int value) { Put_Number(field, value); }
int WDialogGetTrackbar(int field) { return Whole_Number_Of(field); }
void WDialogRangeProgressBar(int field, int lo, int hi) { WDialogRangeInteger(field, lo, hi); }
void WDialogPutProgressBar(int field, int value) { Put_Number(field, value); }

void WDialogPutImage(int field, const Bitmap& bitmap) { WDialogPutBitmap(field, bitmap, 0); }
void WDialogPutBitmap(int field, const Bitmap& bitmap, int width) {
    if (auto* image = Selected_Field<Image_Widget>(field)) image->Put_Bitmap(bitmap, width);
}

void WDialogSetTab(int field, int page) { Put_Number(field, page); }
int WDialogGetTab(int field) { return Whole_Number_Of(field); }

void WDialogTabState(int field, int page, int state) {
    if (auto* tab = Selected_Field<Tab_Widget>(field)) tab->Page_State(page, state);
}

int WDialogInsertTreeViewItem(int field, int parent, std::string_view text) {
    auto* tree = Selected_Field<Tree_Widget>(field);
    return tree == nullptr ? 0 : tree->Insert(parent, text);
}

int WDialogGetTreeView(int field) { return Whole_Number_Of(field); }
void WDialogPutTreeView(int field, int item) { Put_Number(field, item); }

// --- grids -------------------------------------------------------------------------------------------------------------------

void WGridRows(int field, int rows) {
    if (auto* grid = Selected_Field<Grid_Widget>(field)) grid->Rows(rows);
}

int WInfoGrid(int field) {
    const auto* grid = Selected_Field<Grid_Widget>(field);
    return grid == nullptr ? 0 : grid->Rows();
}

void WGridLabelRow(int field, int row, std::string_view text) {
    if (auto* grid = Selected_Field<Grid_Widget>(field)) grid->Label_Row(row, text);
}

void WGridPutCellString(int field, int column, int row, std::string_view text) {
    if (auto* grid = Selected_Field<Grid_Widget>(field)) grid->Put_Cell(column, row, text);
}

void WGridPutCellReal(int field, int column, int row, float value, std::string_view format) {
    if (auto* grid = Selected_Field<Grid_Widget>(field)) grid->Put_Cell_Real(column, row, value, format);
}

void WGridPutCellInteger(int field, int column, int row, int value) { WGridPutCellString(field, column, row, Number_Text(value)); }

void WGridPutCellCheckBox(int field, int column, int row, int value) { WGridPutCellString(field, column, row, value != 0 ? "1" : "0"); }

std::string WGridGetCellString(int field, int column, int row) {
    const auto* grid = Selected_Field<Grid_Widget>(field);
    return grid == nullptr ? std::string() : grid->Cell(column, row);
}

std::optional<float> WGridGetCellReal(int field, int column, int row) {
    float value = 0;
    if (WInfoGridCell(field, column, row, 1) == 1 && IStringToReal(WGridGetCellString(field, column, row), value)) return value;
    return {};
}

std::optional<int> WGridGetCellInteger(int field, int column, int row) {
    int value = 0;
    if (Parse_Integer(WGridGetCellString(field, column, row), value)) return value;
    return {};
}

int WGridGetCellCheckBox(int field, int column, int row) { return WGridGetCellString(field, column, row) == "1"; }

void WGridPutString(int field, int column, std::span<const std::string> texts) {
    for (int row = 1; row <= std::min(WInfoGrid(field), static_cast<int>(texts.size())); ++row)
        WGridPutCellString(field, column, row, texts[static_cast<std::size_t>(row - 1)]);
}

void WGridPutReal(int field, int column, std::span<const float> values, std::string_view format) {
    for (int row = 1; row <= std::min(WInfoGrid(field), static_cast<int>(values.size())); ++row)
        WGridPutCellReal(field, column, row, values[static_cast<std::size_t>(row - 1)], format);
}

void WGridPutCheckBox(int field, int column, std::span<const int> values) {
    for (int row = 1; row <= std::min(WInfoGrid(field), static_cast<int>(values.size())); ++row)
        WGridPutCellCheckBox(field, column, row, values[static_cast<std::size_t>(row - 1)]);
}

std::vector<std::optional<float>> WGridGetReal(int field, int column) {
    std::vector<std::optional<float>> values;
    for (int row = 1; row <= WInfoGrid(field); ++row) values.push_back(WGridGetCellReal(field, column, row));
    return values;
}

std::vector<int> WGridGetCheckBox(int field, int column) {
    std::vector<int> values;
    for (int row = 1; row <= WInfoGrid(field); ++row) values.push_back(WGridGetCellCheckBox(field, column, row));
    return values;
}

void WGridState(int field, int column, int state) {
    if (auto* grid = Selected_Field<Grid_Widget>(field)) grid->Column_State(column, state);
}

void WGridStateCell(int field, int column, int row, int state) {
    if (auto* grid = Selected_Field<Grid_Widget>(field)) grid->Cell_State(column, row, state);
}

void WDialogMarkField(int field, std::string_view why) {
    if (Dialog_Widget* widget = Selected_Field(field)) widget->Mark_Refused(why);
}

void WGridMarkCell(int field, int column, int row, std::string_view why) {
    if (auto* grid = Selected_Field<Grid_Widget>(field)) grid->Mark_Cell_Refused(column, row, why);
}

void WDialogClearMarks(int dialog) {
    const Dialog_Window* window = The_Toolkit().Dialog(dialog);
    if (window == nullptr) return;
    for (const auto& field : window->fields())
        if (field->Refused()) field->Clear_Refused();
}

int WInfoGridCell(int field, int column, int row, int what) {
    const auto* grid = Selected_Field<Grid_Widget>(field);
    return grid != nullptr && what == 1 && grid->Valid(column, row);
}

// --- for scripts -------------------------------------------------------------------------------------------------------------

Dialog_View Describe_Dialog(int dialog) {
    Dialog_View view;
    const Dialog_Window* window = The_Toolkit().Dialog(dialog);
    if (window == nullptr) return view;
    view.number = dialog;
    view.title = window->windowTitle().toStdString();
    for (const auto& field : window->fields()) {
        Field_View shown{field->field().number, std::string(Kind_Name(field->field().kind)),          Bare_Label(field->field().label),
                         field->Value(),        field->widget()->isEnabled() && field->Takes_Input(), {}};
        shown.marked = field->Refused();
        shown.titles = field->titles;
        if (const auto* grid = dynamic_cast<const Grid_Widget*>(field.get()))
            for (int row = 1; row <= grid->Rows(); ++row) {
                shown.cells.emplace_back();
                for (std::size_t column = 1; column <= field->field().columns.size(); ++column)
                    shown.cells.back().push_back(grid->Cell(static_cast<int>(column), row));
            }
        view.fields.push_back(std::move(shown));
    }
    return view;
}

Status Act_Set_Field(int dialog, int number, const std::string& value) {
    Dialog_Widget* field = nullptr;
    const Status status = Field_To_Act_On(dialog, number, field);
    return status.failed ? status : field->Set(value);
}

Status Act_Set_Cell(int dialog, int number, const std::string& column, int row, const std::string& value) {
    Dialog_Widget* field = nullptr;
    const Status status = Field_To_Act_On(dialog, number, field);
    if (status.failed) return status;
    auto* grid = dynamic_cast<Grid_Widget*>(field);
    return grid == nullptr ? Status::Fail("field " + Number_Text(number) + " is no grid") : grid->Set_Cell(column, row, value);
}

Status Act_Select(int dialog, int number, const std::string& path) {
    Dialog_Widget* field = nullptr;
    const Status status = Field_To_Act_On(dialog, number, field);
    if (status.failed) return status;
    auto* tree = dynamic_cast<Tree_Widget*>(field);
    return tree == nullptr ? Status::Fail("field " + Number_Text(number) + " is no tree") : tree->Select(path);
}

Status Act_Press(int dialog, int number) {
    Dialog_Widget* field = nullptr;
    const Status status = Field_To_Act_On(dialog, number, field);
    return status.failed ? status : field->Press();
}

Status Act_Key(int window, int code) {
    Dialog_Window* const dialog = The_Toolkit().Dialog(window);
    if (dialog != nullptr) dialog->Await_Activation();
    QWidget* target = dialog;
    if (Window* editor = The_Toolkit().Find_Window(window); editor != nullptr && editor->editor() != nullptr) target = editor->editor();
    if (target == nullptr) return Status::Fail("window " + Number_Text(window) + " takes no keys");
    Send_Key(target->focusWidget() != nullptr ? *target->focusWidget() : *target, code);
    if (dialog != nullptr) dialog->Enter_Panel(0);
    return Status::Done();
}

Status Act_Front(int window) {
    Toolkit& toolkit = The_Toolkit();
    if (!WindowToFront(window)) return Status::Fail("dialog " + Number_Text(window) + " is not open");
    if (toolkit.Front() != window) return Status::Fail("what is in front holds the others back");
    if (toolkit.witness != nullptr) toolkit.witness->Saw_Front(window);
    return Status::Done();
}

Status Field_By_Label(int dialog, const std::string& label, int& number) {
    const Dialog_Window* window = The_Toolkit().Dialog(dialog);
    int found = 0;
    if (window != nullptr)
        for (const auto& field : window->fields())
            if (Is_Path_Of(*field, Bare_Path(label))) number = field->field().number, ++found;
    if (found == 1) return Status::Done();
    return Status::Fail((found == 0 ? "no field is labelled " : "several fields are labelled ") + label);
}

}  // namespace vntl
