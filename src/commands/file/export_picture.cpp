#include "commands/file/export_picture.hpp"

#include <array>
#include <optional>

#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/select_files.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/vector_device.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

namespace {

constexpr double points_a_pixel = 72.0 / 96.0;
constexpr int max_side = 32767;
constexpr long long max_pixels = 150'000'000;

struct Ending {
    std::string_view text;
    std::optional<Vector_Format> vector;  // nothing: pixels
};
constexpr std::array<Ending, 7> endings = {{{".png", {}},
                                            {".bmp", {}},
                                            {".jpg", {}},
                                            {".svg", Vector_Format::svg},
                                            {".pdf", Vector_Format::pdf},
                                            {".ps", Vector_Format::postscript},
                                            {".jpeg", {}}}};

using Draw = std::function<void(Device&)>;

Status Export_Vector(const Draw& draw, Vector_Format format, const std::string& file, int width, int height) {
    const auto device = Open_Vector_Device(format, file, width * points_a_pixel, height * points_a_pixel);
    draw(*device);
    return device->Close();
}

Status Export_Pixels(const Draw& draw, const std::string& file, int width, int height) {
    Bitmap bitmap(width, height);
    draw(bitmap.Drawing());
    return bitmap.Save(file);
}

}  // namespace

Status Export_Picture(const Draw& draw, const std::string& file, int width, int height) {
    if (width < 1 || height < 1 || width > max_side || height > max_side || static_cast<long long>(width) * height > max_pixels)
        return Status::Fail("A picture of " + std::to_string(width) + " x " + std::to_string(height) + " is too large or empty: " + file);
    const std::string extension = Lower(Extension_Of(file));
    for (const Ending& ending : endings) {
        if (extension != ending.text) continue;
        return ending.vector ? Export_Vector(draw, *ending.vector, file, width, height) : Export_Pixels(draw, file, width, height);
    }
    return Status::Fail("A picture's name ends in .png, .bmp, .jpg, .svg, .pdf or .ps: " + file);
}

Status Export_Window(const std::string& file) {
    const int window = Picture_Window();
    WindowSelect(window);
    return Export_Picture(Service_Of(window).picture, file, WInfoWindow(1), WInfoWindow(2));
}

Status Export_Plot(Configuration& config, Ask& ask) {
    const auto chosen =
        Select_Files(config, Select_Kind::save,
                     "PNG picture (*.png)|*.png|Scalable Vector Graphics (*.svg)|*.svg|PDF (*.pdf)|*.pdf|PostScript (*.ps)|*.ps|Pictures "
                     "(*.bmp;*.jpg)|*.bmp;*.jpg|",
                     "Exporting Graphics", "plot.png");
    if (chosen.empty()) return Status::Done();
    Status status = Export_Window(chosen.front());
    if (status.failed) ask.Error(status.message);
    return status;
}

}  // namespace vntl
