// Off-screen pictures.
#pragma once

#include <memory>
#include <string>

#include "base/status.hpp"
#include "toolkit/device.hpp"

namespace vntl {

// A picture in pixels, 24-bit colour. The device of a bitmap draws on it until another call of WBitmapDevice or its end.
class Bitmap {
public:
    Bitmap(int width, int height);  // 1 to 32767 each
    Bitmap(Bitmap&&) noexcept;
    Bitmap& operator=(Bitmap&&) noexcept;
    ~Bitmap();

    int Width() const;
    int Height() const;
    Device& Drawing();                                                      // draws into it
    Colour Pixel(int x, int y) const;                                       // x from the left, y from the top
    Status Save(const std::string& file, double dots_per_inch = 96) const;  // .png, .bmp, .jpg by its ending

    // For tests: with false every point is drawn by itself, to the same picture.
    void Reduce(bool on);

    struct Implementation;
    Implementation& implementation() const { return *implementation_; }

private:
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace vntl
