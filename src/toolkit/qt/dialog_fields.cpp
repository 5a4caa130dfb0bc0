// Labels, images, check boxes, radio and push buttons, and what all kinds share.
#include "toolkit/qt/dialog_fields.hpp"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QCheckBox>
#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <array>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/bitmap_qt.hpp"
#include "toolkit/qt/icons.hpp"

namespace vntl {

namespace {

constexpr std::array<std::string_view, 17> kind_names = {"label", "string", "text",     "real",         "integer",      "check_box",
                                                         "radio", "menu",   "trackbar", "progress_bar", "image",        "frame",
                                                         "tab",   "tree",   "grid",     "push_button",  "colour_button"};

QString Seen_Label(const Dialog_Field& field) { return field.unseen_label ? QString() : Q(field.label); }

class Label_Field : public Dialog_Widget {
public:
    explicit Label_Field(const Dialog_Field& field) : Dialog_Widget(field), label_(new QLabel(Q(field.label))) {
        label_->setTextFormat(Qt::PlainText);
        if (!field.heading) return;
        QFont font = label_->font();
        font.setBold(true);
        font.setPointSizeF(font.pointSizeF() * 1.15);
        label_->setFont(font);
    }
    QWidget* widget() override { return label_; }
    std::string Value() const override { return label_->text().toStdString(); }
    void Put(std::string_view text) override { label_->setText(Q(text)); }

private:
    QLabel* label_;
};

class Image_Field : public Image_Widget {
public:
    explicit Image_Field(const Dialog_Field& field) : Image_Widget(field), label_(new QLabel) {
        constexpr int side = 64;
        if (!field.image.empty()) label_->setPixmap(Resource_Icon(field.image).pixmap(side, side));
    }
    QWidget* widget() override { return label_; }
    std::string Value() const override { return field().image; }
    void Put_Bitmap(const Bitmap& bitmap, int width) override {
        QImage image = bitmap.implementation().image;
        if (width > 0) {
            const double density = label_->devicePixelRatioF();
            image = image.scaledToWidth(std::max(1, qRound(width * density)), Qt::SmoothTransformation);
            image.setDevicePixelRatio(density);
        }
        label_->setPixmap(QPixmap::fromImage(image));
    }
    void Clear() override { label_->clear(); }

private:
    QLabel* label_;
};

// A check box and a radio button differ in what a click may do.
template <class Button>
class Mark_Field : public Dialog_Widget {
public:
    Mark_Field(const Dialog_Field& field, QButtonGroup* group) : Dialog_Widget(field), button_(new Button(Seen_Label(field))) {
        if (group != nullptr) group->addButton(button_, field.number);
        QObject::connect(button_, &QAbstractButton::clicked, button_, [this] { changed(); });
    }
    QWidget* widget() override { return button_; }
    std::string Value() const override { return button_->isChecked() ? "1" : "0"; }
    std::optional<double> Number() const override { return button_->isChecked() ? 1 : 0; }
    void Put_Number(double value, std::string_view) override { button_->setChecked(value != 0); }
    void Clear() override { button_->setChecked(false); }
    Status Set(const std::string& value) override {
        constexpr bool radio = std::is_same_v<Button, QRadioButton>;
        if (radio && value != "1") return Status::Fail("a radio button takes the value 1");
        if (value != "0" && value != "1") return Status::Fail("a check box takes 0 or 1");
        if (radio || button_->isChecked() != (value == "1")) button_->click();
        return Status::Done();
    }

private:
    Button* button_;
};

// A cell that is being edited gets its text before the program reads it, by whatever way the button was pressed.
void Take_What_Is_Typed(const QWidget& window) {
    QWidget* focus = window.focusWidget();
    if (focus == nullptr || !window.isAncestorOf(focus) || focus->focusProxy() != nullptr) return;
    for (QWidget* over = focus->parentWidget(); over != nullptr && over != &window; over = over->parentWidget())
        if (auto* view = qobject_cast<QAbstractItemView*>(over)) return view->setFocus();
}

class Button_Field : public Dialog_Widget {
public:
    Button_Field(const Dialog_Field& field, int dialog) : Dialog_Widget(field), button_(new QPushButton(Seen_Label(field))) {
        if (!field.image.empty()) Show_Image();
        button_->setDefault(field.number == button_ok);
        button_->setAutoDefault(true);  // ENTER presses the button that has the focus
        QObject::connect(button_, &QPushButton::clicked, button_, [this, dialog, number = field.number] {
            Take_What_Is_Typed(*button_->window());
            Post_Message({Message_Kind::push_button, {.win = dialog, .value1 = number}});
        });
        if (field.kind == Field_Kind::colour_button) Put_Colour(0);
    }
    QWidget* widget() override { return button_; }
    std::string Value() const override {
        if (!colour_) return {};
        return std::to_string(Red(*colour_)) + ' ' + std::to_string(Green(*colour_)) + ' ' + std::to_string(Blue(*colour_));
    }
    Status Press() override {
        button_->click();
        return Status::Done();
    }
    void Put(std::string_view text) override { button_->setText(Q(text)); }
    void Put_Colour(Colour colour) override {
        if (field().kind != Field_Kind::colour_button) return Dialog_Widget::Put_Colour(colour);
        colour_ = colour;
        const int side = button_->fontMetrics().height();
        QPixmap patch(2 * side, side);
        patch.fill(Q_Colour(colour));
        QPainter painter(&patch);
        painter.setPen(button_->palette().color(QPalette::Mid));
        painter.drawRect(patch.rect().adjusted(0, 0, -1, -1));
        painter.end();
        button_->setIcon(patch);
        button_->setIconSize(patch.size());
    }
    std::optional<Colour> Shown_Colour() const override { return colour_; }

private:
    // The label is still the button's tool tip, its name for assistive programs, and what its mnemonic key comes from.
    void Show_Image() {
        const int side = 3 * button_->fontMetrics().height() / 2;
        const QString name = Q(Bare_Label(field().label));
        button_->setText({});
        button_->setShortcut(QKeySequence::mnemonic(Q(field().label)));
        button_->setIcon(Resource_Icon(field().image));
        button_->setIconSize({side, side});
        button_->setToolTip(name);
        button_->setAccessibleName(name);
    }

    QPushButton* button_;
    std::optional<Colour> colour_;
};

constexpr const char* read_only_property = "read_only";

// A red frame over a widget, which takes nothing from its layout and follows its size.
class Refusal_Frame : public QFrame {
public:
    explicit Refusal_Frame(QWidget* over) : QFrame(over) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setStyleSheet("border: 2px solid #d02020; background: transparent;");
        over->installEventFilter(this);
        setGeometry(over->rect());
        raise();
        show();
    }
    bool eventFilter(QObject* over, QEvent* event) override {
        if (event->type() == QEvent::Resize) setGeometry(static_cast<QWidget*>(over)->rect());
        return false;
    }
};

// What only shows its value stands on the ground of the dialog.
QColor Usual_Ground(const QWidget& widget) {
    const QPalette palette = QApplication::palette(&widget);
    return palette.color(QPalette::Active, widget.property(read_only_property).toBool() ? QPalette::Window : QPalette::Base);
}

QColor Invalid_Ground(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Window).lightness() < 128 ? QColor(110, 40, 40) : QColor(255, 214, 214);
}

// The colour that the program gave the text stays.
void Put_Ground(QWidget* widget, const QColor& ground) {
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Active, QPalette::Base, ground);
    palette.setColor(QPalette::Inactive, QPalette::Base, ground);
    widget->setPalette(palette);
}

}  // namespace

Status Dialog_Widget::Set(const std::string&) { return Status::Fail("field " + std::to_string(field_.number) + " takes no value"); }
Status Dialog_Widget::Press() { return Status::Fail("field " + std::to_string(field_.number) + " is no push button"); }

void Dialog_Widget::Mark_Refused(std::string_view why) {
    refused_ = true;
    if (frame_ == nullptr) frame_ = new Refusal_Frame(widget());
    frame_->setToolTip(Q(why));
    widget()->setToolTip(Q(why));
    Focus_Widget()->setFocus();
}

void Dialog_Widget::Clear_Refused() {
    refused_ = false;
    if (frame_ == nullptr) return;
    if (widget()->toolTip() == frame_->toolTip()) widget()->setToolTip({});  // another one tells of the text as it is now
    delete frame_;
    frame_ = nullptr;
}

void Dialog_Widget::Put_Colour(Colour colour) {
    QPalette palette = widget()->palette();
    palette.setColor(QPalette::WindowText, Q_Colour(colour));
    palette.setColor(QPalette::Text, Q_Colour(colour));
    widget()->setPalette(palette);
}

void Dialog_Widget::Set_State(int state) {
    state_ = state;
    widget()->setEnabled(state != field_disabled);
    // What has no read-only state of its own shows its value and takes no input.
    widget()->setAttribute(Qt::WA_TransparentForMouseEvents, state == field_read_only);
    if (state == field_read_only && widget()->focusPolicy() != Qt::NoFocus) widget()->setFocusPolicy(Qt::NoFocus);
    const bool shows_only = field_.kind == Field_Kind::label || field_.kind == Field_Kind::image || field_.kind == Field_Kind::progress_bar;
    if (state == field_enabled && !shows_only && widget()->focusPolicy() == Qt::NoFocus) widget()->setFocusPolicy(Qt::StrongFocus);
}

std::string_view Kind_Name(Field_Kind kind) { return kind_names[static_cast<std::size_t>(kind)]; }

std::string Bare_Label(std::string_view label) { return Q(label).remove('&').trimmed().toStdString(); }

std::string Real_Text(double value, std::string_view format) { return std::string(Trim(IRealToString(static_cast<float>(value), format))); }

void Mark_Read_Only(QWidget* widget, bool read_only) {
    widget->setProperty(read_only_property, read_only);
    if (widget->toolTip().isEmpty()) Put_Ground(widget, Usual_Ground(*widget));
}

void Mark_Invalid(QWidget* widget, bool invalid, const QString& why) {
    Put_Ground(widget, invalid ? Invalid_Ground(widget->palette()) : Usual_Ground(*widget));
    widget->setToolTip(invalid ? why : QString());
}

std::unique_ptr<Dialog_Widget> Build_Field(const Dialog_Field& field, int dialog, QButtonGroup* group) {
    switch (field.kind) {
        case Field_Kind::label:
            return std::make_unique<Label_Field>(field);
        case Field_Kind::image:
            return std::make_unique<Image_Field>(field);
        case Field_Kind::check_box:
            return std::make_unique<Mark_Field<QCheckBox>>(field, nullptr);
        case Field_Kind::radio:
            return std::make_unique<Mark_Field<QRadioButton>>(field, group);
        case Field_Kind::push_button:
        case Field_Kind::colour_button:
            return std::make_unique<Button_Field>(field, dialog);
        case Field_Kind::tab:
        case Field_Kind::tree:
            return Build_Container(field);
        case Field_Kind::grid:
            return Build_Grid(field);
        default:
            return Build_Entry(field);
    }
}

}  // namespace vntl
