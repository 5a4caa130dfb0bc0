// The raster device: curves and markers by our own renderer, the rest by the windowing system's painter.
#include "toolkit/bitmap.hpp"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <optional>

#include "drawing/cell_raster.hpp"
#include "drawing/curve_raster.hpp"
#include "drawing/facet_raster.hpp"
#include "drawing/font_table.hpp"
#include "drawing/line_raster.hpp"
#include "drawing/line_unit.hpp"
#include "toolkit/qt/bitmap_qt.hpp"

namespace vntl {

namespace {

QString Q_Text(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

constexpr double farthest = 1e6;  // pixels: beyond it nothing can show, and integers stay small

class Image_Device : public Device {
public:
    Image_Device(QImage& image, bool reduced, double pixel) : Image_Device(image, reduced, pixel, {0, 0, image.width(), image.height()}) {}
    Image_Device(QImage& image, bool reduced, double pixel, Pixel_Rect bounds)
        : image_(image), reduced_(reduced), pixel_(pixel), unit_(Line_Unit(image.width(), image.height(), pixel)), bounds_(bounds) {
        Set_Clip({0, 0, Width(), Height()});
    }

    double Width() const override { return image_.width(); }
    double Height() const override { return image_.height(); }
    double Pixel() const override { return pixel_; }
    void Clear(Colour colour) override { image_.fill(Q_Colour(colour)); }

    void Set_Clip(const Rect& rect) override {
        const auto whole = [](double value, int least, int most) {
            return static_cast<int>(std::clamp(std::round(value), static_cast<double>(least), static_cast<double>(most)));
        };
        clip_ = {whole(rect.x1, bounds_.x1, bounds_.x2), whole(Height() - rect.y2, bounds_.y1, bounds_.y2),
                 whole(rect.x2, bounds_.x1, bounds_.x2), whole(Height() - rect.y1, bounds_.y1, bounds_.y2)};
    }

    std::vector<std::unique_ptr<Device>> Bands() override;

    bool Start_Backwards(long long points) override {
        constexpr long long many_points = 200'000;
        if (!reduced_ || points < many_points) return false;
        refused_ = false;
        layers_.emplace(bounds_);
        raster_.Draw_Below(&*layers_);
        return true;
    }

    bool End_Backwards() override {
        raster_.Draw_Below(nullptr);
        const bool done = layers_ && !refused_ && layers_->Put_On(Buffer());
        layers_.reset();
        return done;
    }

    void Polyline(std::span<const Point> points, const Pen& pen) override {
        if (pen.style == Line_Style::none || points.empty() || Refuses()) return;
        if (pen.style == Line_Style::solid && Upright(points)) {
            Crisp(points, pen);
            return;
        }
        if (pen.style == Line_Style::solid) {
            line_.clear();
            for (const Point& p : points) line_.push_back({At(p).x(), At(p).y()});
            lines_.Draw(Buffer(), clip_, line_, pen.width * unit_, pen.colour);
            return;
        }
        QPainter painter(&image_);
        Prepare(painter);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Q_Pen(pen));
        QPolygonF polygon;
        for (const Point& p : points) polygon << At(p);
        painter.drawPolyline(polygon);
    }

    void Curve(const Series& series, const Pen& pen) override {
        if (pen.style == Line_Style::none) return;
        if (pen.style == Line_Style::solid && series.x_scale > 0 && Rises(series)) {
            raster_.Curve(Buffer(), clip_, series, pen.width * unit_, pen.colour, reduced_);
            return;
        }
        if (Refuses()) return;
        QPainter painter(&image_);
        Prepare(painter);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Q_Pen(pen));
        QPolygonF polygon;
        const auto flush = [&] {
            if (polygon.size() > 1) painter.drawPolyline(polygon);
            polygon.clear();
        };
        for (std::size_t i = 0; i < series.x.size(); ++i) {
            if (series.Gap(i))
                flush();
            else
                polygon << At(series.At(i));
        }
        flush();
    }

    void Markers(const Series& series, const Marker_Style& style) override { raster_.Markers(Buffer(), clip_, series, style, reduced_); }

    void Fill(std::span<const Point> points, Colour colour) override {
        if (Refuses()) return;
        QPainter painter(&image_);
        Prepare(painter);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Q_Colour(colour));
        if (points.size() == 4 && Upright(points)) {
            const QPointF a = At(points[0]), b = At(points[2]);
            const QPoint from(qRound(std::min(a.x(), b.x())), qRound(std::min(a.y(), b.y())));
            const QPoint to(qRound(std::max(a.x(), b.x())), qRound(std::max(a.y(), b.y())));
            painter.fillRect(QRect(from, to - QPoint(1, 1)), Q_Colour(colour));
            return;
        }
        painter.setRenderHint(QPainter::Antialiasing);
        QPolygonF polygon;
        for (const Point& p : points) polygon << At(p);
        painter.drawPolygon(polygon);
    }

    void Under_Curve(const Series& series, double foot, Colour colour) override {
        if (series.x_scale > 0 && std::isfinite(foot) && Rises(series))
            raster_.Area(Buffer(), clip_, series, foot, colour, reduced_);
        else
            Device::Under_Curve(series, foot, colour);
    }

    void Ellipse(Point centre, double rx, double ry, bool filled, const Pen& pen) override {
        if (Refuses()) return;
        QPainter painter(&image_);
        Prepare(painter);
        painter.setRenderHint(QPainter::Antialiasing);
        if (filled) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(Q_Colour(pen.colour));
        } else {
            painter.setPen(Q_Pen(pen));
        }
        painter.drawEllipse(At(centre), std::min(rx, farthest), std::min(ry, farthest));
    }

    void Cells(const Cell_Image& image) override {
        if (!image.Shows() || Refuses()) return;
        const Rect& r = image.rect;
        Paint_Cells(Buffer(), clip_, {r.x1, Height() - r.y2, r.x2, Height() - r.y1}, image);
    }

    void Facets(const Facet_List& list) override {
        if (!Refuses()) Paint_Facets(Buffer(), clip_, list, unit_);
    }

    void Text(Point at, std::string_view text, const Text_Style& style) override {
        if (Refuses()) return;
        const QFont font = Raster_Font(style);
        if (font.pixelSize() < 1) return;
        const QString words = Q_Text(Written_Text(text, style.font));
        const QFontMetricsF metrics(font);
        const double width = metrics.horizontalAdvance(words);
        QPainter painter(&image_);
        Prepare(painter);
        painter.setRenderHints(QPainter::TextAntialiasing | QPainter::Antialiasing);
        painter.setFont(font);
        painter.translate(At(at));
        painter.rotate(-style.angle);
        const double left = style.justify == Justify::left ? 0 : style.justify == Justify::centre ? -0.5 * width : -width;
        if ((style.style & style_opaque) != 0)
            painter.fillRect(QRectF(left - 2, -metrics.ascent(), width + 4, metrics.height()), Q_Colour(Box_Behind(style.colour)));
        painter.setPen(Q_Colour(style.colour));
        painter.drawText(QPointF(left, 0), words);
    }

    double Text_Width(std::string_view text, const Text_Style& style) const override {
        return QFontMetricsF(Raster_Font(style)).horizontalAdvance(Q_Text(Written_Text(text, style.font)));
    }

private:
    // What the painter draws cannot lie below what is there.
    bool Refuses() {
        refused_ |= layers_.has_value();
        return layers_.has_value();
    }

    QPointF At(Point p) const {
        const auto near = [](double value) { return std::isfinite(value) ? std::clamp(value, -farthest, farthest) : 0.0; };
        return {near(p.x), near(Height() - p.y)};
    }

    static bool Upright(std::span<const Point> points) {
        for (std::size_t i = 1; i < points.size(); ++i)
            if (points[i].x != points[i - 1].x && points[i].y != points[i - 1].y) return false;
        return true;
    }

    void Prepare(QPainter& painter) const { painter.setClipRect(QRect(QPoint(clip_.x1, clip_.y1), QPoint(clip_.x2 - 1, clip_.y2 - 1))); }

    // Level and upright lines cover whole pixels: thousands of marks need no painter.
    void Crisp(std::span<const Point> points, const Pen& pen) {
        const int width = std::max(1, qRound(pen.width * unit_));
        const auto edge = [&](double value) { return static_cast<int>(std::floor(value - 0.5 * (width - 1))); };
        for (std::size_t i = 1; i < points.size(); ++i) {
            const QPointF a = At(points[i - 1]), b = At(points[i]);
            const int x1 = edge(std::min(a.x(), b.x())), x2 = edge(std::max(a.x(), b.x())) + width;
            const int y1 = edge(std::min(a.y(), b.y())), y2 = edge(std::max(a.y(), b.y())) + width;
            Fill_Pixels({x1, y1, x2, y2}, Argb(pen.colour));
        }
    }

    void Fill_Pixels(const Pixel_Rect& rect, std::uint32_t pixel) {
        const Pixel_Buffer buffer = Buffer();
        const int x1 = std::max(rect.x1, clip_.x1), x2 = std::min(rect.x2, clip_.x2);
        for (int y = std::max(rect.y1, clip_.y1); x1 < x2 && y < std::min(rect.y2, clip_.y2); ++y)
            std::fill_n(buffer.pixels + y * buffer.stride + x1, x2 - x1, pixel);
    }

    QPen Q_Pen(const Pen& pen) const {
        QPen result(Q_Colour(pen.colour), pen.width * unit_, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
        const auto dashes = Dash_Pattern(pen.style);
        if (dashes.empty()) return result;
        QList<qreal> pattern;
        for (const double length : dashes) pattern << length / pen.width;  // in widths of the pen
        result.setDashPattern(pattern);
        return result;
    }

    Pixel_Buffer Buffer() {
        return {reinterpret_cast<std::uint32_t*>(image_.bits()), image_.width(), image_.height(), image_.bytesPerLine() / 4};
    }

    QImage& image_;
    bool reduced_;
    double pixel_, unit_;
    Pixel_Rect bounds_, clip_{};
    Curve_Raster raster_;
    Line_Raster lines_;
    std::vector<Point> line_;             // in hand, in pixels
    std::optional<Under_Layers> layers_;  // while it draws backwards
    bool refused_ = false;
};

// Draws on some columns of another image's pixels.
class Band_Device : private std::unique_ptr<QImage>, public Image_Device {
public:
    Band_Device(std::unique_ptr<QImage> image, bool reduced, double pixel, Pixel_Rect bounds)
        : std::unique_ptr<QImage>(std::move(image)), Image_Device(**this, reduced, pixel, bounds) {}
};

std::vector<std::unique_ptr<Device>> Image_Device::Bands() {
    constexpr int bands = 2;
    std::vector<std::unique_ptr<Device>> devices;
    if (bounds_.x2 - bounds_.x1 < image_.width() || layers_) return devices;  // a part, or drawn backwards: cut no further
    uchar* const pixels = image_.bits();
    for (int band = 0; band < bands; ++band) {
        auto image = std::make_unique<QImage>(pixels, image_.width(), image_.height(), image_.bytesPerLine(), image_.format());
        const Pixel_Rect bounds{image_.width() * band / bands, 0, image_.width() * (band + 1) / bands, image_.height()};
        devices.push_back(std::make_unique<Band_Device>(std::move(image), reduced_, pixel_, bounds));
    }
    return devices;
}

}  // namespace

std::unique_ptr<Device> Make_Image_Device(QImage& image, bool reduced, double pixel) {
    return std::make_unique<Image_Device>(image, reduced, pixel);
}

QFont Raster_Font(const Text_Style& style) {
    const Font_Family& family = Family_Of(style.font);
    QFont font;
    font.setFamilies({family.family, family.fallback});
    font.setStyleHint(family.fixed_pitch ? QFont::TypeWriter : QFont::AnyStyle);
    font.setPixelSize(std::max(1, qRound(std::min(Em_Of_Cell(style.width, style.height), 4000.0))));
    font.setBold((style.style & style_bold) != 0);
    font.setItalic((style.style & style_italic) != 0);
    font.setUnderline((style.style & style_underline) != 0);
    font.setHintingPreference(QFont::PreferVerticalHinting);
    return font;
}

Bitmap::Bitmap(int width, int height, double dots_per_inch) : implementation_(std::make_unique<Implementation>()) {
    implementation_->image = QImage(std::clamp(width, 1, 32767), std::clamp(height, 1, 32767), QImage::Format_RGB32);
    implementation_->image.fill(Qt::white);
    if (dots_per_inch > 0) implementation_->pixel = dots_per_inch / pixels_an_inch;
}
Bitmap::Bitmap(Bitmap&&) noexcept = default;
Bitmap& Bitmap::operator=(Bitmap&&) noexcept = default;
Bitmap::~Bitmap() = default;

int Bitmap::Width() const { return implementation_->image.width(); }
int Bitmap::Height() const { return implementation_->image.height(); }

Device& Bitmap::Drawing() {
    Implementation& own = *implementation_;
    if (!own.device) own.device = Make_Image_Device(own.image, own.reduced, own.pixel);
    return *own.device;
}

void Bitmap::Reduce(bool on) {
    implementation_->reduced = on;
    implementation_->device.reset();
}

Colour Bitmap::Pixel(int x, int y) const {
    const QRgb rgb = implementation_->image.pixel(x, y);
    return WRGB(static_cast<unsigned>(qRed(rgb)), static_cast<unsigned>(qGreen(rgb)), static_cast<unsigned>(qBlue(rgb)));
}

}  // namespace vntl
