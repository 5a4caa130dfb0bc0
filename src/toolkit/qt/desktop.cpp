#include "toolkit/desktop.hpp"

#include <QApplication>
#include <QPalette>

namespace vntl {

bool Desktop_Is_Dark() {
    const QPalette palette = QApplication::palette();
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

}  // namespace vntl
