#include "toolkit/qt/panel_column.hpp"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QScrollBar>
#include <algorithm>

#include "toolkit/dialog.hpp"

namespace vntl {

namespace {

// What the wheel would change on its way down the column.
bool Turns_By_Wheel(const QObject* widget) {
    return qobject_cast<const QComboBox*>(widget) != nullptr || qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
}

}  // namespace

Panel_Column::Panel_Column(QWidget* panel) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setWidget(panel);
    panel->installEventFilter(this);
    for (QWidget* widget : panel->findChildren<QWidget*>())
        if (Turns_By_Wheel(widget)) {
            widget->installEventFilter(this);
            widget->setFocusPolicy(Qt::StrongFocus);
        }
    Fit();
}

void Panel_Column::Let_Go() {
    if (QWidget* panel = takeWidget()) panel->removeEventFilter(this);
}

void Panel_Column::Fit() {
    const int needed = std::max(panel_width, widget()->minimumSizeHint().width());
    setFixedWidth(needed + verticalScrollBar()->sizeHint().width());
}

bool Panel_Column::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) Fit();
    const bool passes = event->type() == QEvent::Wheel && Turns_By_Wheel(watched) && !static_cast<QWidget*>(watched)->hasFocus();
    if (!passes) return QScrollArea::eventFilter(watched, event);
    event->ignore();  // the column takes it
    return true;
}

}  // namespace vntl
