// The main window: menu bar, drawing area, status bar.
#pragma once

#include <QAction>
#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <map>

#include "toolkit/window.hpp"

namespace vntl {

// Shows the stored bitmap with the overlay over it; tells mouse and size as messages.
class Drawing_Area : public QWidget {
public:
    explicit Drawing_Area(QWidget* parent);

    void Put_Bitmap(QImage image);
    void Put_Overlay(const Recording_Device& overlay);
    QSize Pixels() const;

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void wheelEvent(QWheelEvent*) override;
    QSize sizeHint() const override { return {800, 500}; }

private:
    void Post_Mouse(Message_Kind kind, QPointF at, int value);

    QImage picture_;  // as it was put
    QImage shown_;    // with the overlay; null where there is none
};

class Main_Window : public QMainWindow {
public:
    Main_Window(const std::string& title, const std::string& icon);

    void Resize_Area(int width, int height);
    Drawing_Area& area() { return *area_; }
    QAction* Action(int command) const;

    void Set_Menu(std::span<const Menu_Entry> bar);
    void Set_Status_Parts(std::span<const int> widths);
    QLabel* Status_Part(int part) const;
    void Set_Timer(int milliseconds, int number, bool repeat);

protected:
    void closeEvent(QCloseEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void dragEnterEvent(QDragEnterEvent*) override;
    void dropEvent(QDropEvent*) override;
    void timerEvent(QTimerEvent*) override;

private:
    void Add_Entries(QMenu& menu, std::span<const Menu_Entry> entries);
    QMenu* Add_Popup(const Menu_Entry& entry);

    struct Timer {
        int number;
        bool repeat;
    };

    Drawing_Area* area_;
    std::vector<QLabel*> parts_;
    std::map<int, QAction*> actions_;
    std::map<int, Timer> timers_;  // by the number that the windowing system gave
};

}  // namespace vntl
