#include "toolkit/qt/dialog_window.hpp"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QButtonGroup>
#include <QDeadlineTimer>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "toolkit/qt/application.hpp"
#include "toolkit/qt/keys.hpp"
#include "toolkit/qt/main_window.hpp"
#include "toolkit/qt/place_beside.hpp"

namespace vntl {

namespace {

bool Ends_Dialog(const Dialog_Field& field) {
    return field.kind == Field_Kind::push_button && (field.number == button_ok || field.number == button_cancel);
}

// Other buttons of the same row stand at the foot too, at its other end.
QDialogButtonBox::ButtonRole Foot_Role(const Dialog_Field& field) {
    if (!Ends_Dialog(field)) return QDialogButtonBox::ResetRole;
    return field.number == button_ok ? QDialogButtonBox::AcceptRole : QDialogButtonBox::RejectRole;
}

bool Is_Entry(Field_Kind kind) {
    return kind == Field_Kind::string || kind == Field_Kind::real || kind == Field_Kind::integer || kind == Field_Kind::menu ||
           kind == Field_Kind::trackbar || kind == Field_Kind::progress_bar;
}

bool Shows_Label(const Dialog_Field& field) { return Is_Entry(field.kind) && !field.label.empty() && !field.unseen_label; }

// The field whose label tells what a row is about: its first text or entry, where others stand beside it that have no such label.
const Dialog_Field* Leader(const std::vector<Dialog_Field>& row) {
    const auto leads = [](const Dialog_Field& f) { return (f.kind == Field_Kind::label || Is_Entry(f.kind)) && !f.label.empty(); };
    const auto found = std::find_if(row.begin(), row.end(), leads);
    return row.size() < 2 || found == row.end() ? nullptr : &*found;
}

// What shows no label is still named: to assistive programs, and a colour to the hand that rests on it.
void Name_Unseen(QWidget& widget, const Dialog_Field& field, const Dialog_Field* leader) {
    const bool of_row = leader != nullptr && leader->kind == Field_Kind::label;
    const QString name = Q((of_row ? Bare_Label(leader->label) + ", " : std::string()) + Bare_Label(field.label));
    widget.setAccessibleName(name);
    if (field.kind == Field_Kind::colour_button) widget.setToolTip(name);
}

bool Takes_Room(Field_Kind kind) { return kind == Field_Kind::grid || kind == Field_Kind::tree || kind == Field_Kind::text; }

bool Labelled_Above(const Dialog_Field& field) { return (field.label_above || field.kind == Field_Kind::text) && !field.unseen_label; }

// An entry under its label.
QWidget* Under_Label(QLabel& label, QWidget& entry) {
    auto* both = new QWidget;
    auto* column = new QVBoxLayout(both);
    column->setContentsMargins({});
    column->addWidget(&label);
    column->addWidget(&entry, 1);
    return both;
}

constexpr int all_columns = -1, columns_a_field = 2;  // a label and an entry
constexpr int close_gap = 2;                          // pixels

}  // namespace

Dialog_Window::Dialog_Window(const Dialog_Resource& resource, Window* owner)
    : QDialog(owner), number_(resource.number), owner_(owner), close_(resource.close), foot_(new QDialogButtonBox(this)) {
    setWindowTitle(QString::fromStdString(resource.title));
    auto* column = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    Lay_Out(*grid, resource.rows);
    column->addLayout(grid, close_ ? 0 : 1);
    if (close_) {
        column->setContentsMargins(close_gap, close_gap, close_gap, close_gap);
        column->addStretch(1);  // a short panel stands at the top
    } else {
        column->addSpacing(6);
    }
    column->addWidget(foot_);
    for (const auto& [button, role] : at_foot_) foot_->addButton(button, role);  // last in the order of TAB
    foot_->setVisible(!foot_->buttons().isEmpty());
    if (!stretches_) column->setSizeConstraint(QLayout::SetFixedSize);
    connect(qApp, &QApplication::focusChanged, this, &Dialog_Window::Focus_Moved);
}

Dialog_Window::~Dialog_Window() {
    // What closing it does to the focus, and to a cell that is being edited, is no news any more.
    disconnect(qApp, nullptr, this, nullptr);
    for (const auto& field : fields_) field->widget()->blockSignals(true);
    hide();
}

void Dialog_Window::Lay_Out(QGridLayout& grid, const Rows& rows) {
    int row = 0;
    if (close_) {
        grid.setSpacing(close_gap);
        for (const auto& fields : rows) Lay_Out_Close_Row(grid, row++, fields);
        grid.setColumnStretch(1, 1);
        return;
    }
    for (const auto& fields : rows) {
        Lay_Out_Row(grid, row, fields);
        const bool stretch = std::any_of(fields.begin(), fields.end(),
                                         [](const Dialog_Field& f) { return Takes_Room(f.kind) || f.kind == Field_Kind::tab; });
        grid.setRowStretch(row++, stretch ? 1 : 0);
    }
    grid.setColumnStretch(grid.columnCount(), 1);
}

QLabel* Dialog_Window::Caption(const Dialog_Field& field) {
    auto* label = new QLabel(Q(field.label));
    label->setBuddy(Field(field.number)->Focus_Widget());
    Field(field.number)->caption = label;
    return label;
}

// What takes more room than it needs needs no more than its text. The keys step a number as well as arrows do.
void Dialog_Window::Narrow(QWidget& widget) const {
    if (auto* button = qobject_cast<QPushButton*>(&widget)) {
        button->setMinimumWidth(button->fontMetrics().horizontalAdvance(Q(Bare_Label(button->text().toStdString()))) + 4 * close_gap + 2);
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    } else if (auto* number = qobject_cast<QAbstractSpinBox*>(&widget)) {
        number->setButtonSymbols(QAbstractSpinBox::NoButtons);
        number->setMinimumWidth(number->findChild<QLineEdit*>()->minimumWidth() + 4 * close_gap);  // with its frame
        number->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    }
}

// A row takes the whole width: buttons alone share it, beside an entry they are as short as they can be. The labels of first entries stand
// in a column.
void Dialog_Window::Lay_Out_Close_Row(QGridLayout& grid, int row, const std::vector<Dialog_Field>& fields) {
    const bool entries = std::any_of(fields.begin(), fields.end(), [](const Dialog_Field& f) { return Is_Entry(f.kind); });
    auto* line = new QHBoxLayout;
    line->setSpacing(close_gap);
    int column = 0;
    for (const Dialog_Field& field : fields) {
        QWidget* widget = Build(field);
        Narrow(*widget);
        if (field.unseen_label) Name_Unseen(*widget, field, Leader(fields));
        if (Labelled_Above(field)) {
            widget = Under_Label(*Caption(field), *widget);
            widget->layout()->setSpacing(0);
        } else if (Shows_Label(field)) {
            QLabel* const label = Caption(field);
            if (&field == &fields.front())
                grid.addWidget(label, row, column++);
            else
                line->addWidget(label);
        }
        const bool short_button = entries && field.kind == Field_Kind::push_button;
        if (short_button) {
            widget->setFixedWidth(widget->minimumWidth());
            widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        }
        line->addWidget(widget, short_button ? 0 : 1);
    }
    grid.addLayout(line, row, column, 1, all_columns);
}

// Entries stand in columns, their labels before them, and so do labels that are alone in a row. Marks and buttons without an entry stand
// close.
void Dialog_Window::Lay_Out_Row(QGridLayout& grid, int row, const std::vector<Dialog_Field>& fields) {
    const bool labels = std::all_of(fields.begin(), fields.end(), [](const Dialog_Field& f) { return f.kind == Field_Kind::label; });
    const bool close = fields.size() > 1 && !labels && std::none_of(fields.begin(), fields.end(), [](const Dialog_Field& f) {
                           return Is_Entry(f.kind) || Takes_Room(f.kind) || f.kind == Field_Kind::frame || f.kind == Field_Kind::tab;
                       });
    const bool foot = std::any_of(fields.begin(), fields.end(), Ends_Dialog);
    auto* line = close ? new QHBoxLayout : nullptr;
    int column = 0;
    const Dialog_Field* const leader = Leader(fields);
    for (const Dialog_Field& field : fields) {
        QWidget* widget = Build(field);
        if (Dialog_Widget* const built = Field(field.number);
            built != nullptr && leader != nullptr && leader != &field && !Shows_Label(field))
            built->titles.push_back(Bare_Label(leader->label));
        if (foot && field.kind == Field_Kind::push_button) {
            at_foot_.emplace_back(static_cast<QPushButton*>(widget), Foot_Role(field));
            continue;
        }
        if (line != nullptr) {
            line->addWidget(widget);
            continue;
        }
        if (field.unseen_label) Name_Unseen(*widget, field, leader);
        if (Shows_Label(field) || Labelled_Above(field)) {
            QLabel* const label = Caption(field);
            if (Labelled_Above(field)) {
                grid.addWidget(Under_Label(*label, *widget), row, column, 1, all_columns);
                continue;
            }
            if (column > 0) label->setIndent(2 * label->fontMetrics().averageCharWidth());  // apart from the field before it
            grid.addWidget(label, row, column);
            grid.addWidget(widget, row, column + 1);
        } else {
            const bool alone = fields.size() == 1;
            const Qt::Alignment side = alone && field.kind == Field_Kind::colour_button ? Qt::AlignLeft : Qt::Alignment();
            grid.addWidget(widget, row, column, 1, alone ? all_columns : columns_a_field, side);
        }
        column += columns_a_field;
    }
    if (line == nullptr) return;
    line->addStretch(1);
    if (line->count() > 1)
        grid.addLayout(line, row, 0, 1, all_columns);
    else
        delete line;
}

// A short page stands at the top of the room that a taller one beside it, or behind another tab, needs.
static void Stand_At_Top(QGridLayout& grid, const Dialog_Page& page) {
    const bool takes_room = std::any_of(page.rows.begin(), page.rows.end(), [](const auto& row) {
        return std::any_of(row.begin(), row.end(), [](const Dialog_Field& f) { return Takes_Room(f.kind); });
    });
    if (!takes_room) grid.setRowStretch(grid.rowCount(), 1);
}

QWidget* Dialog_Window::Build_Page(const Dialog_Page& page) {
    auto* widget = new QWidget;
    auto* grid = new QGridLayout(widget);
    titles_.push_back(Bare_Label(page.title));
    Lay_Out(*grid, page.rows);
    titles_.pop_back();
    Stand_At_Top(*grid, page);
    return widget;
}

QWidget* Dialog_Window::Build_Frame(const Dialog_Field& field) {
    auto* box = new QGroupBox(Q(field.label));
    auto* grid = new QGridLayout(box);
    if (close_) grid->setContentsMargins(2 * close_gap, close_gap, 2 * close_gap, close_gap);
    const std::string title = Bare_Label(field.label);
    if (!title.empty()) titles_.push_back(title);
    for (const Dialog_Page& page : field.pages) {
        Lay_Out(*grid, page.rows);
        Stand_At_Top(*grid, page);
    }
    if (!title.empty()) titles_.pop_back();
    return box;
}

QWidget* Dialog_Window::Build(const Dialog_Field& field) {
    if (field.kind == Field_Kind::frame) return Build_Frame(field);
    stretches_ = stretches_ || Takes_Room(field.kind);
    fields_.push_back(Build_Field(field, number_, field.group != 0 ? Group(field.group) : nullptr));
    Dialog_Widget* widget = fields_.back().get();
    widget->titles = titles_;
    if (auto* tab = dynamic_cast<Tab_Widget*>(widget))
        for (const Dialog_Page& page : field.pages) tab->Add_Page(Build_Page(page), page.title);
    const int number = field.number;
    widget->changed = [this, widget, number] {
        Toolkit& toolkit = The_Toolkit();
        if (widget->Refused()) widget->Clear_Refused();
        if (panel_) toolkit.Activated(number_);
        if (toolkit.Wants(number_, Message_Kind::field_changed))
            Post_Message({Message_Kind::field_changed, {.win = number_, .value1 = number, .value2 = number}});
        if (toolkit.witness == nullptr || widget->field().kind == Field_Kind::grid) return;
        if (widget->field().kind == Field_Kind::tree)
            toolkit.witness->Saw_Item(number_, number, widget->Value());
        else
            toolkit.witness->Saw_Field(number_, number, widget->Value());
    };
    if (auto* grid = dynamic_cast<Grid_Widget*>(widget))
        grid->cell_changed = [this, grid, number](int column, int row) {
            if (Witness* witness = The_Toolkit().witness) witness->Saw_Cell(number_, number, column, row, grid->Cell(column, row));
        };
    // A key of its own presses a button that has not the focus.
    if (auto* button = qobject_cast<QPushButton*>(widget->widget()))
        connect(button, &QPushButton::clicked, this, [this] {
            if (panel_) The_Toolkit().Activated(number_);
        });
    return widget->widget();
}

QButtonGroup* Dialog_Window::Group(int number) {
    QButtonGroup*& group = groups_[number];
    if (group == nullptr) group = new QButtonGroup(this);
    return group;
}

Dialog_Widget* Dialog_Window::Field(int number) const {
    const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const auto& field) { return field->field().number == number; });
    return found == fields_.end() ? nullptr : found->get();
}

int Dialog_Window::Number_Of(const QWidget* widget) const {
    int number = 0;  // a tab control holds the fields of its pages; it is meant where none of them is
    for (const auto& field : fields_) {
        if (widget == nullptr || (field->widget() != widget && !field->widget()->isAncestorOf(widget))) continue;
        number = field->field().number;
        if (field->field().kind != Field_Kind::tab) break;
    }
    return number;
}

int Dialog_Window::Focus() const { return panel_ ? in_field_ : Number_Of(focusWidget()); }

void Dialog_Window::Now_In(int field) {
    const int left = std::exchange(in_field_, field);
    if (left != 0 && left != field && The_Toolkit().Wants(number_, Message_Kind::field_changed))
        Post_Message({Message_Kind::field_changed, {.win = number_, .value1 = left, .value2 = field}});
}

void Dialog_Window::Enter_Panel(int field) {
    if (!panel_) return;
    if (Dialog_Widget* const widget = Field(field)) widget->Focus_Widget()->setFocus();
    Now_In(field != 0 ? field : Number_Of(focusWidget()));
}

void Dialog_Window::Leave_Panel() {
    if (panel_) Now_In(0);
}

void Dialog_Window::Focus_Moved(QWidget* left, QWidget* entered) {
    if (panel_) {
        // In a script the statements alone decide where the user is. What is over the window for a while takes him nowhere.
        if (The_Toolkit().stand_in != nullptr || entered == nullptr || entered->window() != owner_) return;
        const bool here = isAncestorOf(entered);
        The_Toolkit().Activated(here ? number_ : owner_->number());
        return Now_In(here ? Number_Of(entered) : 0);
    }
    const int from = Number_Of(left), to = Number_Of(entered);
    if (from != 0 && to != 0 && from != to && The_Toolkit().Wants(number_, Message_Kind::field_changed))
        Post_Message({Message_Kind::field_changed, {.win = number_, .value1 = from, .value2 = to}});
}

// It goes to the front with the first field that a user enters.
void Dialog_Window::Stand_In_Window() {
    panel_ = true;
    layout()->setSizeConstraint(QLayout::SetDefaultConstraint);
    setWindowFlags(Qt::Widget);
    setAttribute(Qt::WA_Moved);  // its place is that of the column
    owner_->Put_Panel(this);
    show();
    auto& order = The_Toolkit().order;
    if (std::find(order.begin(), order.end(), number_) == order.end()) order.insert(order.begin(), number_);
}

void Dialog_Window::Show(int field, Show_Kind kind, std::span<const int> commands) {
    if (kind == Show_Kind::panel && owner_ != nullptr) return panel_ ? show() : Stand_In_Window();
    modal_ = kind != Show_Kind::modeless;
    commands_.assign(commands.begin(), commands.end());
    if (kind != Show_Kind::modal) Stand_Aside();
    // A menu must stay open to the commands that are let through; the others are dropped as they come.
    setWindowModality(modal_ && commands_.empty() ? Qt::ApplicationModal : Qt::NonModal);
    awaited_ = false;
    // Without a default button of its own a dialog has none: the toolkit would take the first at hand when it is shown.
    const auto offer_buttons = [this](bool on) {
        for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(on);
    };
    if (Field(button_ok) == nullptr) offer_buttons(false);
    show();
    offer_buttons(true);
    The_Toolkit().To_Front(number_);
    // The windowing system may activate the dialog later, and keys may come before.
    if (Dialog_Widget* first = Field(field))
        first->Focus_Widget()->setFocus();
    else if (focusWidget() == nullptr)
        focusNextPrevChild(true);
}

void Dialog_Window::Stand_Aside() {
    const QWidget* owner = parentWidget();
    if (owner == nullptr || !owner->isVisible()) return;
    adjustSize();
    move(Place_Beside(*this, *owner));
}

void Dialog_Window::Await_Activation() {
    constexpr int longest = 500, wink = 5;  // milliseconds
    if (awaited_) return;
    awaited_ = true;
    const QDeadlineTimer end(longest);
    while (!isActiveWindow() && !end.hasExpired()) QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, wink);
}

bool Dialog_Window::Lets_Through(int command) const { return std::find(commands_.begin(), commands_.end(), command) != commands_.end(); }

// What no field of a panel needs is a key of the window.
void Dialog_Window::keyPressEvent(QKeyEvent* event) {
    if (!panel_) return QDialog::keyPressEvent(event);
    const int field = Number_Of(focusWidget());
    if (Code_Of(*event) == key_enter && field != 0)
        Post_Message({Message_Kind::key_down, {.win = number_, .value1 = key_enter, .value2 = field}});
    else
        event->ignore();
}

void Dialog_Window::reject() {
    if (panel_) return;
    const int button = Field(button_cancel) != nullptr ? button_cancel : button_ok;
    if (const Dialog_Widget* field = Field(button); field != nullptr && !field->Takes_Input()) return;
    Post_Message({Message_Kind::push_button, {.win = number_, .value1 = button}});
}

bool Dialog_Window::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate && !panel_) The_Toolkit().Activated(number_);
    return QDialog::event(event);
}

}  // namespace vntl
