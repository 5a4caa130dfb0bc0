#include "toolkit/qt/drawing_area.hpp"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>
#include <utility>

#include "base/page.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/bitmap_qt.hpp"

namespace vntl {

namespace {

constexpr int smallest_width = 240, smallest_height = 160;
constexpr int wheel_step = 120;  // eighths of a degree

int Button_Number(Qt::MouseButton button) { return button == Qt::LeftButton ? 1 : button == Qt::MiddleButton ? 2 : 3; }

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

Drawing_Area::Drawing_Area(int window, int pane) : window_(window), pane_(pane) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName("Plot");
    setMinimumSize(smallest_width, smallest_height);
}

QSize Drawing_Area::Pixels() const {
    const double ratio = devicePixelRatioF();
    return {std::max(1, qRound(width() * ratio)), std::max(1, qRound(height() * ratio))};
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

void Drawing_Area::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QImage& image = shown_.isNull() ? picture_ : shown_;
    if (image.isNull())
        painter.fillRect(rect(), Qt::white);
    else
        painter.drawImage(rect(), image);
}

void Drawing_Area::resizeEvent(QResizeEvent*) { Post_Message({Message_Kind::resize, {.win = window_, .value4 = pane_}}); }

void Drawing_Area::Post_Mouse(Message_Kind kind, QPointF at, int value) {
    // A button may go up before the program has seen that it went down, and could ask for its end.
    const bool ends_a_press = kind == Message_Kind::mouse_up && std::exchange(pressed_, false);
    if (kind != Message_Kind::wheel && !ends_a_press && !The_Toolkit().Wants(window_, kind)) return;
    WIN_MESSAGE record;
    record.win = window_;
    record.value1 = value;
    record.value4 = pane_;
    record.x = at.x() / width() * page_width;
    record.y = (1 - at.y() / height()) * page_height;
    Post_Message({kind, record});
}

void Drawing_Area::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::BackButton || event->button() == Qt::ForwardButton)
        Post_Message({Message_Kind::key_down, {.win = window_, .value1 = event->button() == Qt::BackButton ? key_back : key_forward}});
    else
        Post_Mouse(Message_Kind::mouse_down, event->position(), Button_Number(event->button()));
    pressed_ = The_Toolkit().Wants(window_, Message_Kind::mouse_down);
}

void Drawing_Area::mouseReleaseEvent(QMouseEvent* event) {
    Post_Mouse(Message_Kind::mouse_up, event->position(), Button_Number(event->button()));
}

void Drawing_Area::mouseMoveEvent(QMouseEvent* event) { Post_Mouse(Message_Kind::mouse_move, event->position(), 0); }

void Drawing_Area::wheelEvent(QWheelEvent* event) {
    turned_ += event->angleDelta().y();
    const int steps = turned_ / wheel_step;
    turned_ -= steps * wheel_step;
    for (int i = 0; i < std::abs(steps); ++i) Post_Mouse(Message_Kind::wheel, event->position(), steps > 0 ? 1 : -1);
}

}  // namespace vntl
