#include "toolkit/qt/dialog_window.hpp"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "toolkit/qt/application.hpp"
#include "toolkit/qt/main_window.hpp"

namespace vntl {

namespace {

std::vector<Dialog_Resource>& Resources() {
    static std::vector<Dialog_Resource> resources;
    return resources;
}

bool At_Foot(const Dialog_Field& field) {
    return field.kind == Field_Kind::push_button && (field.number == button_ok || field.number == button_cancel);
}

Dialog_Window* Selected() { return The_Toolkit().Dialog(The_Toolkit().selected_dialog); }

Dialog_Widget* Selected_Field(int field) {
    const Dialog_Window* dialog = Selected();
    return dialog == nullptr ? nullptr : dialog->Field(field);
}

// The field that a script acts on; fails where there is none, or a disabled one.
Status Field_To_Act_On(int dialog, int number, Dialog_Widget*& field) {
    const Dialog_Window* window = The_Toolkit().Dialog(dialog);
    field = window == nullptr ? nullptr : window->Field(number);
    if (field == nullptr) return Status::Fail("dialog " + std::to_string(dialog) + " has no field " + std::to_string(number));
    if (field->widget()->isEnabled()) return Status::Done();
    return Status::Fail("field " + std::to_string(number) + " (" + field->Label() + ") is disabled");
}

}  // namespace

Dialog_Window::Dialog_Window(const Dialog_Resource& resource, QWidget* parent) : QDialog(parent), number_(resource.number) {
    setWindowTitle(QString::fromStdString(resource.title));
    auto* column = new QVBoxLayout(this);
    auto* foot = new QDialogButtonBox(this);
    for (const auto& fields : resource.rows) {
        auto* row = new QHBoxLayout;
        for (const Dialog_Field& field : fields) {
            fields_.push_back(Build_Field(field, number_, field.group != 0 ? Group(field.group) : nullptr));
            QWidget* widget = fields_.back()->widget();
            if (At_Foot(field))
                foot->addButton(static_cast<QPushButton*>(widget),
                                field.number == button_ok ? QDialogButtonBox::AcceptRole : QDialogButtonBox::RejectRole);
            else
                row->addWidget(widget);
        }
        row->addStretch(1);
        if (row->count() > 1)
            column->addLayout(row);
        else
            delete row;
    }
    column->addSpacing(6);
    column->addWidget(foot);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

Dialog_Window::~Dialog_Window() = default;

QButtonGroup* Dialog_Window::Group(int number) {
    QButtonGroup*& group = groups_[number];
    if (group == nullptr) group = new QButtonGroup(this);
    return group;
}

Dialog_Widget* Dialog_Window::Field(int number) const {
    const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const auto& field) { return field->field().number == number; });
    return found == fields_.end() ? nullptr : found->get();
}

void Dialog_Window::reject() {
    const int button = Field(button_cancel) != nullptr ? button_cancel : button_ok;
    Post_Message({Message_Kind::push_button, {.win = number_, .value1 = button}});
}

// --- the operations ----------------------------------------------------------------------------------------------------------

void Register_Dialogs(std::span<const Dialog_Resource> resources) { Resources().assign(resources.begin(), resources.end()); }

void WDialogLoad(int dialog) {
    Toolkit& toolkit = The_Toolkit();
    toolkit.selected_dialog = dialog;
    if (toolkit.Dialog(dialog) != nullptr) return;
    for (const Dialog_Resource& resource : Resources())
        if (resource.number == dialog) toolkit.dialogs.push_back(std::make_unique<Dialog_Window>(resource, toolkit.main.get()));
}

void WDialogSelect(int dialog) { The_Toolkit().selected_dialog = dialog; }

void WDialogShow(int field, Show_Kind kind) {
    Dialog_Window* dialog = Selected();
    if (dialog == nullptr) return;
    dialog->setWindowModality(kind == Show_Kind::modeless ? Qt::NonModal : Qt::ApplicationModal);
    dialog->show();
    if (Dialog_Widget* first = dialog->Field(field)) first->widget()->setFocus();
}

void WDialogUnload() {
    std::erase_if(The_Toolkit().dialogs, [](const auto& dialog) { return dialog.get() == Selected(); });
}

bool WDialogLoaded(int dialog) { return The_Toolkit().Dialog(dialog) != nullptr; }

int WDialogFront() {
    const auto& dialogs = The_Toolkit().dialogs;
    const auto found = std::find_if(dialogs.rbegin(), dialogs.rend(), [](const auto& dialog) { return dialog->isVisible(); });
    return found == dialogs.rend() ? -1 : (*found)->number();
}

void WDialogFieldState(int field, int state) {
    if (Dialog_Widget* widget = Selected_Field(field)) widget->widget()->setEnabled(state != 0);
}

void WDialogPutString(int field, std::string_view text) {
    if (Dialog_Widget* widget = Selected_Field(field)) widget->Put(text);
}

std::string WDialogGetString(int field) {
    const Dialog_Widget* widget = Selected_Field(field);
    return widget == nullptr ? std::string() : widget->Value();
}

void WDialogPutRadioButton(int field) {
    Dialog_Window* dialog = Selected();
    const Dialog_Widget* widget = Selected_Field(field);
    if (widget == nullptr || widget->field().kind != Field_Kind::radio) return;
    dialog->Group(widget->field().group)->button(field)->setChecked(true);
}

int WDialogGetRadioButton(int group) {
    Dialog_Window* dialog = Selected();
    return dialog == nullptr ? 0 : std::max(0, dialog->Group(group)->checkedId());
}

Dialog_View Describe_Dialog(int dialog) {
    Dialog_View view;
    const Dialog_Window* window = The_Toolkit().Dialog(dialog);
    if (window == nullptr) return view;
    view.number = dialog;
    view.title = window->windowTitle().toStdString();
    for (const auto& field : window->fields())
        view.fields.push_back({field->field().number, std::string(Kind_Name(field->field().kind)), field->Label(), field->Value(),
                               field->widget()->isEnabled()});
    return view;
}

Status Act_Set_Field(int dialog, int number, const std::string& value) {
    Dialog_Widget* field = nullptr;
    const Status status = Field_To_Act_On(dialog, number, field);
    return status.failed ? status : field->Set(value);
}

Status Act_Press(int dialog, int number) {
    Dialog_Widget* field = nullptr;
    const Status status = Field_To_Act_On(dialog, number, field);
    return status.failed ? status : field->Press();
}

Status Field_By_Label(int dialog, const std::string& label, int& number) {
    const Dialog_Window* window = The_Toolkit().Dialog(dialog);
    int found = 0;
    if (window != nullptr)
        for (const auto& field : window->fields())
            if (field->Label() == Bare_Label(label)) number = field->field().number, ++found;
    if (found == 1) return Status::Done();
    return Status::Fail((found == 0 ? "no field is labelled " : "several fields are labelled ") + label);
}

}  // namespace vntl
