#include "toolkit/qt/icons.hpp"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

namespace vntl {

namespace {

constexpr double disabled_opacity = 0.35;

class Svg_Icon : public QIconEngine {
public:
    explicit Svg_Icon(QByteArray picture) : picture_(std::move(picture)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText;
        QByteArray picture = picture_;
        picture.replace("currentColor", QApplication::palette().color(QPalette::Active, role).name().toLatin1());
        QSvgRenderer renderer(picture);
        painter->save();
        if (mode == QIcon::Disabled) painter->setOpacity(disabled_opacity);
        renderer.render(painter, rect);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new Svg_Icon(*this); }

private:
    QByteArray picture_;
};

}  // namespace

QIcon Resource_Icon(const std::string& name) {
    QFile file(":/icons/" + QString::fromStdString(name) + ".svg");
    return file.open(QIODevice::ReadOnly) ? QIcon(new Svg_Icon(file.readAll())) : QIcon();
}

}  // namespace vntl
