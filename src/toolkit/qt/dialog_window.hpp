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
class QLabel;
class QPushButton;

namespace vntl {

class Window;

class Dialog_Window : public QDialog {
public:
    Dialog_Window(const Dialog_Resource& resource, Window* owner);
    ~Dialog_Window() override;

    int number() const { return number_; }
    Window* Owner() const { return owner_; }
    Dialog_Widget* Field(int number) const;
    const std::vector<std::unique_ptr<Dialog_Widget>>& fields() const { return fields_; }
    QButtonGroup* Group(int number);

    void Show(int field, Show_Kind kind, std::span<const int> commands);
    bool Holds_Others() const { return modal_; }  // what is done elsewhere waits for its end
    bool Lets_Through(int command) const;

    bool Is_Panel() const { return panel_; }
    int Focus() const;            // the field that the user is in, 0 none
    void Enter_Panel(int field);  // as a user goes there, 0 where the keys have led him; of other dialogs nothing
    void Leave_Panel();           // for another place of the window

    void
    Await_Activation();  // for a key that comes at once: until the windowing system has made it the active window, for a moment at most

    void reject() override;  // Escape and the close box press the cancelling button

protected:
    bool event(QEvent*) override;
    void keyPressEvent(QKeyEvent*) override;

private:
    using Rows = std::vector<std::vector<Dialog_Field>>;
    void Lay_Out(QGridLayout& grid, const Rows& rows);
    void Lay_Out_Row(QGridLayout& grid, int row, const std::vector<Dialog_Field>& fields);
    void Lay_Out_Close_Row(QGridLayout& grid, int row, const std::vector<Dialog_Field>& fields);
    QWidget* Build(const Dialog_Field& field);
    QWidget* Build_Page(const Dialog_Page& page);
    QWidget* Build_Frame(const Dialog_Field& field);
    QLabel* Caption(const Dialog_Field& field);  // the label of an entry that has been built
    void Narrow(QWidget& widget) const;
    void Stand_Aside();
    void Stand_In_Window();
    void Now_In(int field);  // of a panel
    void Focus_Moved(QWidget* left, QWidget* entered);
    int Number_Of(const QWidget* widget) const;  // of the field that holds the widget, 0 none

    int number_;
    Window* owner_;  // that it belongs to
    bool close_;     // it is laid out close
    bool panel_ = false, modal_ = false;
    int in_field_ = 0;  // of a panel, that the user is in
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
