// Where on the screen a window goes that is used with another one in sight.
#pragma once

#include <QWidget>

namespace vntl {

// Beside its owner where the screen has room, else in a corner of it, and over no other dialog or window that stands there.
QPoint Place_Beside(const QWidget& widget, const QWidget& owner);

}  // namespace vntl
