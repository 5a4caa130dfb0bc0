#include "toolkit/qt/dialog_fields.hpp"

#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "toolkit/qt/application.hpp"

namespace vntl {

namespace {

QString Q(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

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

class Image_Field : public Dialog_Widget {
public:
    explicit Image_Field(const Dialog_Field& field) : Dialog_Widget(field), label_(new QLabel) {
        constexpr int side = 64;
        label_->setPixmap(Resource_Icon(field.image).pixmap(side, side));
    }
    QWidget* widget() override { return label_; }
    std::string Value() const override { return field().image; }

private:
    QLabel* label_;
};

class Radio_Field : public Dialog_Widget {
public:
    Radio_Field(const Dialog_Field& field, QButtonGroup* group) : Dialog_Widget(field), button_(new QRadioButton(Q(field.label))) {
        group->addButton(button_, field.number);
    }
    QWidget* widget() override { return button_; }
    std::string Value() const override { return button_->isChecked() ? "1" : "0"; }
    Status Set(const std::string& value) override {
        if (value != "1") return Status::Fail("a radio button takes the value 1");
        button_->click();
        return Status::Done();
    }

private:
    QRadioButton* button_;
};

class Button_Field : public Dialog_Widget {
public:
    Button_Field(const Dialog_Field& field, int dialog) : Dialog_Widget(field), button_(new QPushButton(Q(field.label))) {
        button_->setDefault(field.number == button_ok);
        button_->setAutoDefault(field.number == button_ok);
        QObject::connect(button_, &QPushButton::clicked, button_, [dialog, number = field.number] {
            Post_Message({Message_Kind::push_button, {.win = dialog, .value1 = number}});
        });
    }
    QWidget* widget() override { return button_; }
    Status Press() override {
        button_->click();
        return Status::Done();
    }

private:
    QPushButton* button_;
};

}  // namespace

std::string Dialog_Widget::Label() const { return Bare_Label(field_.label); }
Status Dialog_Widget::Set(const std::string&) { return Status::Fail("field " + std::to_string(field_.number) + " takes no value"); }
Status Dialog_Widget::Press() { return Status::Fail("field " + std::to_string(field_.number) + " is no push button"); }

std::string_view Kind_Name(Field_Kind kind) {
    switch (kind) {
        case Field_Kind::label:
            return "label";
        case Field_Kind::radio:
            return "radio";
        case Field_Kind::image:
            return "image";
        case Field_Kind::push_button:
            return "push_button";
    }
    return "";
}

std::string Bare_Label(std::string_view label) { return Q(label).remove('&').trimmed().toStdString(); }

std::unique_ptr<Dialog_Widget> Build_Field(const Dialog_Field& field, int dialog, QButtonGroup* group) {
    switch (field.kind) {
        case Field_Kind::label:
            return std::make_unique<Label_Field>(field);
        case Field_Kind::radio:
            return std::make_unique<Radio_Field>(field, group);
        case Field_Kind::image:
            return std::make_unique<Image_Field>(field);
        case Field_Kind::push_button:
            return std::make_unique<Button_Field>(field, dialog);
    }
    return nullptr;
}

}  // namespace vntl
