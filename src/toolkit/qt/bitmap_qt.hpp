// The raster picture behind `Bitmap`, for the windows that show it, and a device that draws on any image.
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <memory>

#include "drawing/device.hpp"
#include "toolkit/bitmap.hpp"

namespace vntl {

inline QColor Q_Colour(Colour c) { return {static_cast<int>(Red(c)), static_cast<int>(Green(c)), static_cast<int>(Blue(c))}; }

// Draws on `image`, which must outlive the device and be 32 bits a pixel: Format_RGB32 or, for shapes laid over a picture,
// Format_ARGB32_Premultiplied. Nobody else may paint on the image between two calls of the device while a painter of its own is open.
// With `reduced` false every point of a series is drawn by itself. `pixel`: pixels of the image to one of 1/96 inch.
std::unique_ptr<Device> Make_Image_Device(QImage& image, bool reduced = true, double pixel = 1);

// The font of a text style on a raster device: family, em in pixels, weight and slant.
QFont Raster_Font(const Text_Style& style);

struct Bitmap::Implementation {
    QImage image;
    bool reduced = true;
    double pixel = 1;
    std::unique_ptr<Device> device;  // draws on `image`; made at the first call of Drawing
};

}  // namespace vntl
