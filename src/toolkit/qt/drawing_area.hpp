// A pane of a window: shows its bitmap with the overlay over it, and tells mouse and size as messages.
#pragma once

#include <QImage>
#include <QWidget>

#include "drawing/recording.hpp"
#include "toolkit/qt/area_messages.hpp"

namespace vntl {

class Drawing_Area : public QWidget {
public:
    Drawing_Area(int window, int pane);

    void Put_Bitmap(QImage image);
    void Put_Overlay(const Recording_Device& overlay);

protected:
    bool event(QEvent*) override;
    void paintEvent(QPaintEvent*) override;
    QSize sizeHint() const override { return {800, 500}; }

private:
    void Update_Pixels(const QRect& pixels);

    Area_Messages messages_;
    QImage picture_;  // as it was put
    QImage shown_;    // with the overlay; null as long as there was none
    QRect covered_;   // pixels that the overlay may have changed
};

}  // namespace vntl
