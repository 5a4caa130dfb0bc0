// A pane of a window: shows its bitmap with the overlay over it, and tells mouse and size as messages.
#pragma once

#include <QImage>
#include <QWidget>

#include "drawing/recording.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

class Drawing_Area : public QWidget {
public:
    Drawing_Area(int window, int pane);

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
    void Update_Pixels(const QRect& pixels);

    int window_, pane_;
    QImage picture_;        // as it was put
    QImage shown_;          // with the overlay; null as long as there was none
    QRect covered_;         // pixels that the overlay may have changed
    bool pressed_ = false;  // a button went down that was told; the program hears of its end too
    int turned_ = 0;        // of the wheel, eighths of a degree that make no whole step yet
};

}  // namespace vntl
