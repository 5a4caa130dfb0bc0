// A window with menu bar, toolbars, drawing area, editor or solid, and status bar.
#pragma once

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <map>

#include "toolkit/qt/drawing_area.hpp"
#include "toolkit/qt/solid_pane.hpp"
#include "toolkit/qt/text_edit.hpp"
#include "toolkit/row_list.hpp"
#include "toolkit/window.hpp"

class QHBoxLayout;
class QToolBar;

namespace vntl {

class Panel_Column;
class Row_List;

class Window : public QMainWindow {
public:
    Window(int number, const std::string& title, Child_Kind kind, QWidget* parent);

    void Split(int panes, bool side_by_side);
    void Resize_Area(int width, int height);
    void Resize_Room(int width, int height);  // of panel and drawing area together
    Drawing_Area* Area(int pane = 1) const;   // null for a pane that it has not
    QWidget* Surface(int pane) const;         // of that pane, whatever it shows; null for an editor
    Text_Edit* editor() const { return editor_; }
    Solid_Pane* solid() const { return solid_; }
    void Hold_Others();                               // from the time when it is shown
    int Holds_Since() const { return holds_since_; }  // counts the windows that hold others back; 0: this one does not
    void Put_Panel(QWidget* panel);                   // at the left; null: none any more
    Row_List* list() const { return list_; }          // null as long as it was never open
    void Open_List(const Row_List_Resource& resource, int width);
    void Close_List();
    void Add_To(QMenu& menu, std::span<const Menu_Entry> entries);  // commands that the menu bar has already are the same ones
    void Focus_Content();
    int number() const { return number_; }
    QAction* Action(int command) const;
    std::vector<int> Commands() const;  // by number

    void Set_Menu(std::span<const Menu_Entry> bar);
    void Hint_At_Grey_Menus(const QString& why);
    void Set_Toolbar(const Toolbar_Resource* table, int row);
    void Set_Status_Parts(std::span<const int> widths);
    QLabel* Status_Part(int part) const;
    void Set_Timer(int milliseconds, int number, bool repeat);
    std::vector<Timer_View> Timers() const;  // by number

protected:
    bool event(QEvent*) override;
    void closeEvent(QCloseEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void dragEnterEvent(QDragEnterEvent*) override;
    void dropEvent(QDropEvent*) override;
    void timerEvent(QTimerEvent*) override;
    QMenu* createPopupMenu() override { return nullptr; }  // the program decides which toolbars stand

private:
    void Show_Content(QWidget* content);
    template <class Change>
    void Without_Resize_Message(const Change& change);
    void Add_Entries(QMenu& menu, std::span<const Menu_Entry> entries);
    QMenu* Add_Popup(const Menu_Entry& entry);
    void Add_Toolbar(const Toolbar_Resource& table, int row);

    struct Timer {
        int number, milliseconds;
        bool repeat;
    };

    int number_;
    int holds_since_ = 0;
    QHBoxLayout* room_;  // panel and what the window shows
    QWidget* content_ = nullptr;
    Panel_Column* panel_ = nullptr;
    Row_List* list_ = nullptr;
    std::vector<Drawing_Area*> areas_;
    Text_Edit* editor_ = nullptr;
    Solid_Pane* solid_ = nullptr;
    std::vector<QLabel*> parts_;
    std::map<int, QAction*> actions_;
    std::map<int, QToolBar*> toolbars_;  // by row
    std::map<int, Timer> timers_;        // by the number that the windowing system gave
};

}  // namespace vntl
