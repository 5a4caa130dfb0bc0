#include "toolkit/qt/drawing_area.hpp"

#include <QPainter>
#include <utility>

#include "toolkit/qt/bitmap_qt.hpp"

namespace vntl {

namespace {

// The pixels of `image` that the recorded shapes can touch, with room for pens and letters.
QRect Pixels_Of(const Recording_Device& overlay, const QImage& image) {
    const std::optional<Rect> bounds = overlay.Bounds();
    if (!bounds) return {};
    constexpr double room = 4;
    const double sx = image.width() / overlay.Width(), sy = image.height() / overlay.Height();
    const QRectF rect(bounds->x1 * sx - room, image.height() - bounds->y2 * sy - room, (bounds->x2 - bounds->x1) * sx + 2 * room,
                      (bounds->y2 - bounds->y1) * sy + 2 * room);
    return rect.intersected(QRectF(image.rect())).toAlignedRect();
}

}  // namespace

Drawing_Area::Drawing_Area(int window, int pane) : messages_(*this, window, pane) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName("Plot");
}

void Drawing_Area::Put_Bitmap(QImage image) {
    picture_ = std::move(image);
    shown_ = {};
    covered_ = {};
    update();
}

// Only the pixels under the old and the new shapes are touched, so that a shape that follows the mouse costs no redraw.
void Drawing_Area::Put_Overlay(const Recording_Device& overlay) {
    if (picture_.isNull()) return;
    const QRect before = covered_, now = Pixels_Of(overlay, picture_);
    if (before.isEmpty() && now.isEmpty()) return;
    if (shown_.isNull()) shown_ = picture_.copy();
    if (!before.isEmpty()) {
        QPainter painter(&shown_);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(before, picture_, before);
    }
    if (!now.isEmpty()) overlay.Replay(*Make_Image_Device(shown_));
    covered_ = now;
    Update_Pixels(before);
    Update_Pixels(now);
}

void Drawing_Area::Update_Pixels(const QRect& pixels) {
    if (pixels.isEmpty()) return;
    const double sx = static_cast<double>(width()) / picture_.width(), sy = static_cast<double>(height()) / picture_.height();
    update(QRectF(pixels.x() * sx, pixels.y() * sy, pixels.width() * sx, pixels.height() * sy).toAlignedRect().adjusted(-1, -1, 1, 1));
}

bool Drawing_Area::event(QEvent* event) { return messages_.Tell(*event) || QWidget::event(event); }

void Drawing_Area::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QImage& image = shown_.isNull() ? picture_ : shown_;
    if (image.isNull())
        painter.fillRect(rect(), Qt::white);
    else
        painter.drawImage(rect(), image);
}

}  // namespace vntl
