// Fields that hold one value: texts, numbers, lists, sliders, progress bars.
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QSlider>
#include <algorithm>
#include <cmath>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "toolkit/qt/dialog_fields.hpp"

namespace vntl {

namespace {

constexpr int usual_string_width = 24, usual_number_width = 12;

// A width that shows so many characters of the widget's font.
void Show_Characters(QLineEdit& line, int characters) {
    const int room = line.fontMetrics().horizontalAdvance('0') * (characters + 1);
    line.setMinimumWidth(room + 2 * line.fontMetrics().averageCharWidth());
}

template <class Edit>
void Show_State(Edit& edit, int state) {
    edit.setEnabled(state != field_disabled);
    edit.setReadOnly(state == field_read_only);
    Mark_Read_Only(&edit, state == field_read_only);
}

class String_Field : public Dialog_Widget {
public:
    explicit String_Field(const Dialog_Field& field) : Dialog_Widget(field), line_(new QLineEdit) {
        Show_Characters(*line_, field.width > 0 ? field.width : usual_string_width);
        QObject::connect(line_, &QLineEdit::textEdited, line_, [this] { changed(); });
    }
    QWidget* widget() override { return line_; }
    std::string Value() const override { return line_->text().toStdString(); }
    void Put(std::string_view text) override {
        line_->setText(Q(text));
        line_->setCursorPosition(0);
        Tell_Whole();
    }
    Status Set(const std::string& value) override {
        line_->setText(Q(value));
        changed();
        return Status::Done();
    }
    void Set_State(int state) override {
        if (state_ == field_read_only) line_->setToolTip({});
        state_ = state;
        Show_State(*line_, state);
        Tell_Whole();
    }

protected:
    // What only shows its text tells it whole to a hand that rests on it.
    void Tell_Whole() {
        if (state_ == field_read_only) line_->setToolTip(line_->text());
    }

    QLineEdit* line_;
};

// At first as large as it must be, where a dialog has told how many lines it shows.
class Lines_Edit : public QPlainTextEdit {
public:
    explicit Lines_Edit(bool no_larger) : no_larger_(no_larger) {}
    QSize sizeHint() const override { return no_larger_ ? minimumSize() : QPlainTextEdit::sizeHint(); }

private:
    bool no_larger_;
};

// Lines of text in columns. TAB leads to the next field, as in the others.
class Text_Field : public Dialog_Widget {
public:
    explicit Text_Field(const Dialog_Field& field) : Dialog_Widget(field), edit_(new Lines_Edit(field.rows_seen > 0)) {
        edit_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        edit_->setLineWrapMode(QPlainTextEdit::NoWrap);
        edit_->setTabChangesFocus(true);
        const int characters = field.width > 0 ? field.width : usual_text_width,
                  lines = field.rows_seen > 0 ? field.rows_seen : usual_lines;
        const QFontMetrics metrics = edit_->fontMetrics();
        const int border = 2 * edit_->frameWidth() + static_cast<int>(2 * edit_->document()->documentMargin());
        const int bar = edit_->verticalScrollBar()->sizeHint().width();
        edit_->setMinimumSize(metrics.horizontalAdvance('0') * characters + border + bar, metrics.lineSpacing() * lines + border + bar);
        QObject::connect(edit_, &QPlainTextEdit::textChanged, edit_, [this] {
            if (!putting_) changed();
        });
    }
    QWidget* widget() override { return edit_; }
    std::string Value() const override { return edit_->toPlainText().toStdString(); }
    void Put(std::string_view text) override {
        putting_ = true;
        edit_->setPlainText(Q(text));
        putting_ = false;
    }
    Status Set(const std::string& value) override {
        Put(value);
        changed();
        return Status::Done();
    }
    void Set_State(int state) override {
        state_ = state;
        Show_State(*edit_, state);
    }

private:
    static constexpr int usual_text_width = 60, usual_lines = 8;

    QPlainTextEdit* edit_;
    bool putting_ = false;  // the program writes, not the user
};

class Real_Field : public String_Field {
public:
    explicit Real_Field(const Dialog_Field& field) : String_Field(field) {
        line_->setMinimumWidth(0);
        Show_Characters(*line_, field.width > 0 ? field.width : usual_number_width);
        QObject::connect(line_, &QLineEdit::textChanged, line_, [this] { Mark_Invalid(line_, !Number(), "This is not a number"); });
    }
    std::optional<double> Number() const override {
        float value = 0;
        return IStringToReal(Value(), value) ? std::optional<double>(value) : std::nullopt;
    }
    void Put_Number(double value, std::string_view format) override {
        if (!format.empty()) field_.format = format;
        Put(Real_Text(value, field_.format));
    }
    Status Set(const std::string& value) override {
        (void)String_Field::Set(value);
        return Number() ? Status::Done() : Status::Fail("field " + std::to_string(field().number) + " holds no number: " + value);
    }
};

// Takes any text, so that what a user types stays, and marks what is no whole number of the range.
class Whole_Number_Box : public QAbstractSpinBox {
public:
    Whole_Number_Box(int lo, int hi) : lo_(lo), hi_(hi) {
        connect(lineEdit(), &QLineEdit::textChanged, this, [this] { Mark(); });
    }
    QLineEdit& line() { return *lineEdit(); }
    std::optional<int> Whole() const {
        int value = 0;
        if (Parse_Integer(text().toStdString(), value) && value >= lo_ && value <= hi_) return value;
        return {};
    }
    void Range(int lo, int hi) {
        lo_ = lo, hi_ = hi;
        Mark();
    }
    void stepBy(int steps) override {
        int value = lo_;
        Parse_Integer(text().toStdString(), value);
        const long long next = std::clamp<long long>(static_cast<long long>(value) + steps, lo_, hi_);
        lineEdit()->setText(QString::number(next));
        stepped();
    }
    std::function<void()> stepped = [] {};

protected:
    StepEnabled stepEnabled() const override {
        if (isReadOnly()) return StepNone;
        int value = lo_;
        Parse_Integer(text().toStdString(), value);
        return (value < hi_ ? StepUpEnabled : StepNone) | (value > lo_ ? StepDownEnabled : StepNone);
    }
    QValidator::State validate(QString&, int&) const override { return QValidator::Acceptable; }

private:
    void Mark() { Mark_Invalid(this, !Whole(), QString("A whole number from %1 to %2").arg(lo_).arg(hi_)); }

    int lo_, hi_;
};

class Integer_Field : public Dialog_Widget {
public:
    explicit Integer_Field(const Dialog_Field& field) : Dialog_Widget(field), box_(new Whole_Number_Box(field.lo, field.hi)) {
        const auto digits = static_cast<int>(std::max(std::to_string(field.lo).size(), std::to_string(field.hi).size()));
        Show_Characters(box_->line(), field.width > 0 ? field.width : std::clamp(digits, 3, usual_number_width));
        constexpr int arrows = 3;  // characters
        box_->setMinimumWidth(box_->line().minimumWidth() + arrows * box_->fontMetrics().averageCharWidth());
        box_->stepped = [this] { changed(); };
        QObject::connect(&box_->line(), &QLineEdit::textEdited, box_, [this] { changed(); });
    }
    QWidget* widget() override { return box_; }
    std::string Value() const override { return box_->text().toStdString(); }
    std::optional<double> Number() const override {
        const auto value = box_->Whole();
        return value ? std::optional<double>(*value) : std::nullopt;
    }
    void Put(std::string_view text) override { box_->line().setText(Q(text)); }
    void Put_Number(double value, std::string_view) override { Put(std::to_string(static_cast<int>(value))); }
    void Clear() override {
        Put({});
        Mark_Invalid(box_, false, {});  // nothing is in it yet
    }
    void Range(int lo, int hi) override { box_->Range(lo, hi); }
    Status Set(const std::string& value) override {
        Put(value);
        changed();
        return Number() ? Status::Done()
                        : Status::Fail("field " + std::to_string(field().number) + " holds no whole number of its range: " + value);
    }
    void Set_State(int state) override {
        state_ = state;
        box_->setEnabled(state != field_disabled);
        box_->setReadOnly(state == field_read_only);
        Mark_Read_Only(box_, state == field_read_only);
    }

private:
    Whole_Number_Box* box_;
};

class Menu_Field : public Menu_Widget {
public:
    explicit Menu_Field(const Dialog_Field& field) : Menu_Widget(field), box_(new QComboBox) {
        box_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        Put_Choices(field.choices);
        QObject::connect(box_, &QComboBox::activated, box_, [this] { changed(); });
    }
    QWidget* widget() override { return box_; }
    std::string Value() const override { return box_->currentText().toStdString(); }
    std::optional<double> Number() const override { return box_->currentIndex() + 1; }
    void Put_Number(double value, std::string_view) override { box_->setCurrentIndex(static_cast<int>(value) - 1); }
    void Put_Choices(std::span<const std::string> choices) override {
        box_->clear();
        for (const std::string& choice : choices) box_->addItem(Q(choice));
    }
    void Clear() override { box_->clear(); }
    Status Set(const std::string& value) override {
        int index = box_->findText(Q(value)) + 1;
        if (index == 0 && !Parse_Integer(value, index)) index = 0;
        if (index < 1 || index > box_->count()) return Status::Fail("the list has no entry " + value);
        box_->setCurrentIndex(index - 1);
        changed();
        return Status::Done();
    }

private:
    QComboBox* box_;
};

class Trackbar_Field : public Dialog_Widget {
public:
    explicit Trackbar_Field(const Dialog_Field& field) : Dialog_Widget(field), slider_(new QSlider(Qt::Horizontal)) {
        slider_->setMinimumWidth(slider_->fontMetrics().averageCharWidth() * (field.width > 0 ? field.width : usual_string_width));
        Range(field.lo, field.hi);
        QObject::connect(slider_, &QSlider::actionTriggered, slider_, [this] { changed(); });
    }
    QWidget* widget() override { return slider_; }
    std::string Value() const override { return std::to_string(slider_->sliderPosition()); }
    std::optional<double> Number() const override { return slider_->sliderPosition(); }
    void Put_Number(double value, std::string_view) override { slider_->setValue(static_cast<int>(value)); }
    void Range(int lo, int hi) override {
        slider_->setRange(lo, hi);
        slider_->setPageStep(std::max(1, (hi - lo) / 10));
    }
    Status Set(const std::string& value) override {
        int place = 0;
        if (!Parse_Integer(value, place) || place < slider_->minimum() || place > slider_->maximum())
            return Status::Fail("the slider has no place " + value);
        slider_->setValue(place);
        changed();
        return Status::Done();
    }

private:
    QSlider* slider_;
};

class Progress_Field : public Dialog_Widget {
public:
    explicit Progress_Field(const Dialog_Field& field) : Dialog_Widget(field), bar_(new QProgressBar) {
        bar_->setMinimumWidth(bar_->fontMetrics().averageCharWidth() * 40);
        Range(field.lo, field.hi);
        bar_->setValue(field.lo);
    }
    QWidget* widget() override { return bar_; }
    std::string Value() const override { return std::to_string(bar_->value()); }
    std::optional<double> Number() const override { return bar_->value(); }
    void Put(std::string_view text) override { text.empty() ? bar_->resetFormat() : bar_->setFormat(Q(text)); }
    void Put_Number(double value, std::string_view) override { bar_->setValue(static_cast<int>(value)); }
    void Range(int lo, int hi) override { bar_->setRange(lo, hi); }

private:
    QProgressBar* bar_;
};

}  // namespace

std::unique_ptr<Dialog_Widget> Build_Entry(const Dialog_Field& field) {
    switch (field.kind) {
        case Field_Kind::string:
            return std::make_unique<String_Field>(field);
        case Field_Kind::text:
            return std::make_unique<Text_Field>(field);
        case Field_Kind::real:
            return std::make_unique<Real_Field>(field);
        case Field_Kind::integer:
            return std::make_unique<Integer_Field>(field);
        case Field_Kind::menu:
            return std::make_unique<Menu_Field>(field);
        case Field_Kind::trackbar:
            return std::make_unique<Trackbar_Field>(field);
        case Field_Kind::progress_bar:
            return std::make_unique<Progress_Field>(field);
        default:
            return nullptr;
    }
}

}  // namespace vntl
