#include "toolkit/qt/place_beside.hpp"

#include <QScreen>
#include <algorithm>
#include <vector>

#include "toolkit/qt/application.hpp"
#include "toolkit/qt/dialog_window.hpp"
#include "toolkit/qt/main_window.hpp"

namespace vntl {

namespace {

std::vector<QRect> Taken_Beside(const QWidget& widget, const QWidget& owner) {
    std::vector<QRect> taken;
    const auto add = [&](const QWidget& other) {
        if (&other != &widget && other.isWindow() && other.isVisible()) taken.push_back(other.frameGeometry());
    };
    for (const auto& dialog : The_Toolkit().dialogs) add(*dialog);
    for (const auto& [number, window] : The_Toolkit().windows)
        if (window->parentWidget() == &owner) add(*window);
    return taken;
}

}  // namespace

QPoint Place_Beside(const QWidget& widget, const QWidget& owner) {
    const QRect window = owner.frameGeometry(), screen = owner.screen()->availableGeometry();
    const QSize own = widget.size() + window.size() - owner.size();  // with a frame as the owner has
    const int left = window.x() - own.width(), inside = window.x() + window.width() - own.width();
    const int below = window.y() + window.height(), foot = below - own.height();
    std::vector<QPoint> places = {{window.x() + window.width(), window.y()}, {left, window.y()}, {window.x(), below}};
    const std::vector<QRect> taken = Taken_Beside(widget, owner);
    for (const QRect& other : taken) places.emplace_back(other.x(), other.y() + other.height());
    places.emplace_back(inside, window.y());
    places.emplace_back(inside, foot);
    const auto free = [&](QPoint place) {
        const QRect room(place, own);
        return screen.contains(room) &&
               std::none_of(taken.begin(), taken.end(), [&](const QRect& other) { return other.intersects(room); });
    };
    const auto found = std::find_if(places.begin(), places.end(), free);
    // What is wider than the owner still has its left side on the screen.
    const int farthest_right = screen.x() + screen.width() - own.width();
    const QPoint over(std::max(screen.x(), std::min(inside, farthest_right)), window.y());
    return found == places.end() ? over : *found;
}

}  // namespace vntl
