// What a hand does on a pane of a window, and the pane's size, as messages.
#pragma once

#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

#include "toolkit/messages.hpp"

namespace vntl {

class Area_Messages {
public:
    Area_Messages(QWidget& area, int window, int pane);  // prepares the area, of which it is a part, for a hand

    bool Tell(QEvent& event);  // true: it needs no more than the telling

private:
    void Press(const QMouseEvent& event);
    void Turn(const QWheelEvent& event);
    void Post_Mouse(Message_Kind kind, QPointF at, int value);

    QWidget& area_;
    int window_, pane_;
    bool pressed_ = false;  // a button went down that was told; the program hears of its end too
    int turned_ = 0;        // of the wheel, eighths of a degree that make no whole step yet
};

QSize Pixels_Of(const QWidget& area);  // device pixels, at least one either way

}  // namespace vntl
