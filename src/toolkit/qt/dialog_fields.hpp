// The kinds of dialog fields: how each is built, filled, read and acted on.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "toolkit/dialog.hpp"

class QButtonGroup;

namespace vntl {

inline QString Q(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

// One numbered field on the screen. Each kind is a class; its values pass as text.
class Dialog_Widget {
public:
    explicit Dialog_Widget(const Dialog_Field& field) : field_(field) {}
    virtual ~Dialog_Widget() = default;

    const Dialog_Field& field() const { return field_; }
    virtual QWidget* widget() = 0;  // owned by the dialog
    virtual QWidget* Focus_Widget() { return widget(); }
    virtual std::string Value() const { return {}; }
    virtual Status Set(const std::string& value);  // as a user would
    virtual Status Press();
    virtual void Put(std::string_view) {}  // a text of the program
    virtual void Put_Number(double, std::string_view) {}
    virtual std::optional<double> Number() const { return {}; }  // nothing: no valid number
    virtual void Range(int, int) {}
    virtual void Put_Colour(Colour);
    virtual std::optional<Colour> Shown_Colour() const { return {}; }
    virtual void Clear() { Put({}); }
    virtual void Set_State(int state);
    virtual void Mark_Refused(std::string_view why);
    virtual void Clear_Refused();
    bool Refused() const { return refused_; }
    bool Takes_Input() const { return state_ == field_enabled; }
    int State() const { return state_; }

    QWidget* caption = nullptr;       // the label that stands before it, greyed with it
    std::vector<std::string> titles;  // where it stands, from the outside: titles of page and frame, and the label that leads its row

    // Called when the user, or a script in his place, has changed the value.
    std::function<void()> changed = [] {};

protected:
    Dialog_Field field_;
    int state_ = field_enabled;
    bool refused_ = false;

private:
    QWidget* frame_ = nullptr;  // of the mark, over the field
};

class Image_Widget : public Dialog_Widget {
public:
    using Dialog_Widget::Dialog_Widget;
    virtual void Put_Bitmap(const Bitmap&, int width) = 0;  // 0: a pixel of the bitmap is one of the screen
};

class Menu_Widget : public Dialog_Widget {
public:
    using Dialog_Widget::Dialog_Widget;
    virtual void Put_Choices(std::span<const std::string> choices) = 0;
};

// Pages of fields; the dialog lays them out and hands each page over.
class Tab_Widget : public Dialog_Widget {
public:
    using Dialog_Widget::Dialog_Widget;
    virtual void Add_Page(QWidget* page, const std::string& title) = 0;
    virtual void Page_State(int page, int state) = 0;
};

class Tree_Widget : public Dialog_Widget {
public:
    using Dialog_Widget::Dialog_Widget;
    virtual int Insert(int parent, std::string_view text) = 0;
    virtual Status Select(const std::string& path) = 0;  // as a user would
    virtual std::string Path() const = 0;
};

// Columns and rows count from 1; a place outside is passed over.
class Grid_Widget : public Dialog_Widget {
public:
    using Dialog_Widget::Dialog_Widget;
    virtual void Rows(int rows) = 0;
    virtual int Rows() const = 0;
    virtual void Label_Row(int row, std::string_view text) = 0;
    virtual void Put_Cell(int column, int row, std::string_view text) = 0;
    virtual void Put_Cell_Real(int column, int row, double value, std::string_view format) = 0;
    virtual std::string Cell(int column, int row) const = 0;
    virtual bool Valid(int column, int row) const = 0;
    virtual void Mark_Cell_Refused(int column, int row, std::string_view why) = 0;
    virtual void Cell_State(int column, int row, int state) = 0;
    virtual void Column_State(int column, int state) = 0;
    virtual Status Set_Cell(const std::string& column, int row, const std::string& value) = 0;  // as a user would
    // Called when the user has changed a cell.
    std::function<void(int column, int row)> cell_changed = [](int, int) {};
};

// Name of a kind as scripts see it.
std::string_view Kind_Name(Field_Kind kind);

// A label without '&' and outer blanks.
std::string Bare_Label(std::string_view label);

// A real in single precision as a field shows it: by an edit descriptor, outer blanks cut, or the shortest text that reads back the same.
std::string Real_Text(double value, std::string_view format);

// Marks a widget whose text is no valid value, and takes the mark away.
void Mark_Invalid(QWidget* widget, bool invalid, const QString& why);
void Mark_Read_Only(QWidget* widget, bool read_only);

// `dialog` is the number under which a push button posts its message; `group` holds the radio buttons of the field's group.
std::unique_ptr<Dialog_Widget> Build_Field(const Dialog_Field& field, int dialog, QButtonGroup* group);
std::unique_ptr<Dialog_Widget> Build_Entry(const Dialog_Field& field);      // string, real, integer, menu, trackbar, progress bar
std::unique_ptr<Dialog_Widget> Build_Container(const Dialog_Field& field);  // tab, tree
std::unique_ptr<Dialog_Widget> Build_Grid(const Dialog_Field& field);

}  // namespace vntl
