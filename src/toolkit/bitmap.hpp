// Off-screen pictures.
#pragma once

#include <memory>
#include <string>

#include "drawing/device.hpp"
#include "toolkit/hardcopy.hpp"

namespace vntl {

// A picture in pixels, 24-bit colour. The device of a bitmap draws on it until another call of WBitmapDevice or its end.
class Bitmap {
public:
    // 1 to 32767 each. With more dots an inch letters that must be legible and lines have more pixels, to come out in their size.
    Bitmap(int width, int height, double dots_per_inch = pixels_an_inch);
    Bitmap(Bitmap&&) noexcept;
    Bitmap& operator=(Bitmap&&) noexcept;
    ~Bitmap();

    int Width() const;
    int Height() const;
    Device& Drawing();                 // draws into it
    Colour Pixel(int x, int y) const;  // x from the left, y from the top
    // The bytes of a file of it, with colours, dots an inch and quality of the options; empty where the format cannot hold it.
    std::string Encoded(Image_Format format, const Hardcopy_Options& options) const;

    // For tests: with false every point is drawn by itself, to the same picture.
    void Reduce(bool on);

    struct Implementation;
    Implementation& implementation() const { return *implementation_; }

private:
    std::unique_ptr<Implementation> implementation_;
};

// In an image field of the dialog selected last: `width` pixels of 1/96 inch wide, as sharp as the screen is.
void WDialogPutBitmap(int field, const Bitmap& bitmap, int width);

}  // namespace vntl
