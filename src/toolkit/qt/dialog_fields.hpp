// The kinds of dialog fields: how each is built, filled, read and acted on.
#pragma once

#include <QWidget>
#include <memory>

#include "toolkit/dialog.hpp"

class QButtonGroup;

namespace vntl {

// One numbered field on the screen. Each kind is a class; its values pass as text.
class Dialog_Widget {
public:
    explicit Dialog_Widget(const Dialog_Field& field) : field_(field) {}
    virtual ~Dialog_Widget() = default;

    const Dialog_Field& field() const { return field_; }
    virtual QWidget* widget() = 0;  // owned by the dialog
    virtual std::string Value() const { return {}; }
    virtual std::string Label() const;
    virtual Status Set(const std::string& value);  // as a user would
    virtual Status Press();
    virtual void Put(std::string_view) {}  // a text of the program

private:
    Dialog_Field field_;
};

// Name of a kind as scripts see it.
std::string_view Kind_Name(Field_Kind kind);

// A label without '&' and outer blanks.
std::string Bare_Label(std::string_view label);

// `dialog` is the number under which a push button posts its message; `group` holds the radio buttons of the field's group.
std::unique_ptr<Dialog_Widget> Build_Field(const Dialog_Field& field, int dialog, QButtonGroup* group);

}  // namespace vntl
