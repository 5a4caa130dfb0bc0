// Key codes of the program and those of the windowing system.
#pragma once

#include <QKeyEvent>
#include <string_view>

namespace vntl {

int Code_Of(const QKeyEvent& event);  // 0 for a key that has none

// Presses and releases the key at the widget, as a user would.
void Send_Key(QWidget& widget, int code);

}  // namespace vntl
