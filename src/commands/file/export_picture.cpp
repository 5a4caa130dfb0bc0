#include "commands/file/export_picture.hpp"

#include <array>
#include <optional>

#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/select_files.hpp"
#include "plot/plot.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/window.hpp"

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

Status Export_Vector(Session& session, Vector_Format format, const std::string& file, int width, int height) {
    const auto device = Open_Vector_Device(format, file, width * points_a_pixel, height * points_a_pixel);
    Draw_With_Marks(session, *device);
    return device->Close();
}

Status Export_Pixels(Session& session, const std::string& file, int width, int height) {
    Bitmap bitmap(width, height);
    Draw_With_Marks(session, bitmap.Drawing());
    return bitmap.Save(file);
}

}  // namespace

Status Export_Picture(Session& session, const std::string& file, int width, int height) {
    if (width < 1 || height < 1 || width > max_side || height > max_side || static_cast<long long>(width) * height > max_pixels)
        return Status::Fail("A picture of " + std::to_string(width) + " x " + std::to_string(height) + " is too large or empty: " + file);
    const std::string extension = Lower(Extension_Of(file));
    for (const Ending& ending : endings) {
        if (extension != ending.text) continue;
        return ending.vector ? Export_Vector(session, *ending.vector, file, width, height) : Export_Pixels(session, file, width, height);
    }
    return Status::Fail("A picture's name ends in .png, .bmp, .jpg, .svg, .pdf or .ps: " + file);
}

Status Export_Plot(Session& session, Ask& ask) {
    const auto chosen =
        Select_Files(session, Select_Kind::save,
                     "PNG picture (*.png)|*.png|Scalable Vector Graphics (*.svg)|*.svg|PDF (*.pdf)|*.pdf|PostScript (*.ps)|*.ps|Pictures "
                     "(*.bmp;*.jpg)|*.bmp;*.jpg|",
                     "Exporting Graphics", "plot.png");
    if (chosen.empty()) return Status::Done();
    WindowSelect(main_window);
    Status status = Export_Picture(session, chosen.front(), WInfoWindow(1), WInfoWindow(2));
    if (status.failed) ask.Error(status.message);
    return status;
}

}  // namespace vntl
