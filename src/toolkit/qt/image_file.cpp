// A bitmap as the bytes of an image file: PNG, BMP and JPEG by the windowing system, PCX by our own writer.
#include <QBuffer>
#include <QImageWriter>
#include <cstring>
#include <optional>

#include "pictures/palette.hpp"
#include "pictures/pcx.hpp"
#include "toolkit/qt/bitmap_qt.hpp"

namespace vntl {

namespace {

constexpr double metres_an_inch = 0.0254;

const char* Name_Of(Image_Format format) {
    switch (format) {
        case Image_Format::bmp:
            return "bmp";
        case Image_Format::jpeg:
            return "jpeg";
        default:
            return "png";
    }
}

// Nothing for a picture of all colours.
std::optional<Indexed_Image> Few_Colours(const Pixel_Buffer& picture, Image_Colours colours) {
    switch (colours) {
        case Image_Colours::palette_256:
            return With_Palette(picture, 256);
        case Image_Colours::palette_16:
            return With_Palette(picture, 16);
        case Image_Colours::black_white:
            return In_Black_And_White(picture);
        default:
            return {};
    }
}

QImage Q_Image(const Indexed_Image& image) {
    QImage result(image.width, image.height, QImage::Format_Indexed8);
    if (result.isNull()) return result;
    QList<QRgb> table;
    for (const Colour colour : image.palette) table << Argb(colour);
    result.setColorTable(table);
    const auto width = static_cast<std::size_t>(image.width);
    for (int y = 0; y < image.height; ++y)
        std::memcpy(result.scanLine(y), image.indices.data() + static_cast<std::size_t>(y) * width, width);
    // The nearest of two colours is the colour itself.
    return table.size() == 2 ? result.convertToFormat(QImage::Format_Mono, table, Qt::ThresholdDither) : result;
}

std::string Written(QImage& image, Image_Format format, const Hardcopy_Options& options) {
    const int dots_a_metre = qRound(options.dots_per_inch / metres_an_inch);
    image.setDotsPerMeterX(dots_a_metre);
    image.setDotsPerMeterY(dots_a_metre);
    QByteArray bytes;
    QBuffer target(&bytes);
    QImageWriter writer(&target, Name_Of(format));
    if (format == Image_Format::jpeg) writer.setQuality(options.quality);
    return writer.write(image) ? bytes.toStdString() : std::string();
}

}  // namespace

std::string Bitmap::Encoded(Image_Format format, const Hardcopy_Options& options) const {
    QImage& image = implementation_->image;
    const Pixel_Buffer pixels{reinterpret_cast<std::uint32_t*>(image.bits()), image.width(), image.height(), image.bytesPerLine() / 4};
    const std::optional<Indexed_Image> few = Few_Colours(pixels, options.image_colours);
    if (format == Image_Format::pcx) return few ? Pcx_Of(*few, options.dots_per_inch) : Pcx_Of(pixels, options.dots_per_inch);
    if (!few) return Written(image, format, options);
    QImage indexed = Q_Image(*few);
    return Written(indexed, format, options);
}

}  // namespace vntl
