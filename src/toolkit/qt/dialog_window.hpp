// A dialog on the screen, laid out from its resource.
#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "toolkit/qt/dialog_fields.hpp"

class QButtonGroup;
class QGridLayout;
class QPushButton;

namespace vntl {

class Dialog_Window : public QDialog {
public:
    Dialog_Window(const Dialog_Resource& resource, QWidget* parent);
    ~Dialog_Window() override;

    int number() const { return number_; }
    Dialog_Widget* Field(int number) const;
    const std::vector<std::unique_ptr<Dialog_Widget>>& fields() const { return fields_; }
    QButtonGroup* Group(int number);

    void Show(int field, Show_Kind kind, std::span<const int> commands);
    bool Holds_Others() const { return modal_; }  // what is done elsewhere waits for its end
    bool Lets_Through(int command) const;

    void
    Await_Activation();  // for a key that comes at once: until the windowing system has made it the active window, for a moment at most

    void reject() override;  // Escape and the close box press the cancelling button

protected:
    bool event(QEvent*) override;

private:
    using Rows = std::vector<std::vector<Dialog_Field>>;
    void Lay_Out(QGridLayout& grid, const Rows& rows);
    void Lay_Out_Row(QGridLayout& grid, int row, const std::vector<Dialog_Field>& fields);
    QWidget* Build(const Dialog_Field& field);
    QWidget* Build_Page(const Dialog_Page& page);
    QWidget* Build_Frame(const Dialog_Field& field);
    void Stand_Aside();
    void Focus_Moved(QWidget* left, QWidget* entered);
    int Number_Of(const QWidget* widget) const;  // of the field that holds the widget, 0 none

    int number_;
    bool modal_ = false;
    bool awaited_ = false;
    std::vector<std::string> titles_;  // titles around what is being built
    bool stretches_ = false;           // a grid or a tree takes the room that a user gives
    std::vector<int> commands_;
    QDialogButtonBox* foot_;
    std::vector<std::pair<QPushButton*, QDialogButtonBox::ButtonRole>> at_foot_;
    std::vector<std::unique_ptr<Dialog_Widget>> fields_;
    std::map<int, QButtonGroup*> groups_;
};

}  // namespace vntl
