#include "toolkit/qt/area_messages.hpp"

#include <cmath>
#include <utility>

#include "base/page.hpp"
#include "toolkit/qt/application.hpp"

namespace vntl {

namespace {

constexpr int smallest_width = 240, smallest_height = 160;
constexpr int wheel_step = 120;  // eighths of a degree

int Button_Number(Qt::MouseButton button) { return button == Qt::LeftButton ? 1 : button == Qt::MiddleButton ? 2 : 3; }

}  // namespace

Area_Messages::Area_Messages(QWidget& area, int window, int pane) : area_(area), window_(window), pane_(pane) {
    area.setMouseTracking(true);
    area.setFocusPolicy(Qt::StrongFocus);
    area.setMinimumSize(smallest_width, smallest_height);
}

bool Area_Messages::Tell(QEvent& event) {
    switch (event.type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            Press(static_cast<const QMouseEvent&>(event));
            return true;
        case QEvent::MouseButtonRelease: {
            const auto& release = static_cast<const QMouseEvent&>(event);
            Post_Mouse(Message_Kind::mouse_up, release.position(), Button_Number(release.button()));
            return true;
        }
        case QEvent::MouseMove:
            Post_Mouse(Message_Kind::mouse_move, static_cast<const QMouseEvent&>(event).position(), 0);
            return true;
        case QEvent::Wheel:
            Turn(static_cast<const QWheelEvent&>(event));
            return true;
        case QEvent::Resize:
            Post_Message({Message_Kind::resize, {.win = window_, .value4 = pane_}});
            return false;
        default:
            return false;
    }
}

void Area_Messages::Press(const QMouseEvent& event) {
    if (event.button() == Qt::BackButton || event.button() == Qt::ForwardButton)
        Post_Message({Message_Kind::key_down, {.win = window_, .value1 = event.button() == Qt::BackButton ? key_back : key_forward}});
    else
        Post_Mouse(Message_Kind::mouse_down, event.position(), Button_Number(event.button()));
    pressed_ = The_Toolkit().Wants(window_, Message_Kind::mouse_down);
}

void Area_Messages::Turn(const QWheelEvent& event) {
    turned_ += event.angleDelta().y();
    const int steps = turned_ / wheel_step;
    turned_ -= steps * wheel_step;
    for (int i = 0; i < std::abs(steps); ++i) Post_Mouse(Message_Kind::wheel, event.position(), steps > 0 ? 1 : -1);
}

void Area_Messages::Post_Mouse(Message_Kind kind, QPointF at, int value) {
    // A button may go up before the program has seen that it went down, and could ask for its end.
    const bool ends_a_press = kind == Message_Kind::mouse_up && std::exchange(pressed_, false);
    if (kind != Message_Kind::wheel && !ends_a_press && !The_Toolkit().Wants(window_, kind)) return;
    WIN_MESSAGE record;
    record.win = window_;
    record.value1 = value;
    record.value4 = pane_;
    record.x = at.x() / area_.width() * page_width;
    record.y = (1 - at.y() / area_.height()) * page_height;
    Post_Message({kind, record});
}

QSize Pixels_Of(const QWidget& area) {
    const double ratio = area.devicePixelRatioF();
    return {std::max(1, qRound(area.width() * ratio)), std::max(1, qRound(area.height() * ratio))};
}

}  // namespace vntl
