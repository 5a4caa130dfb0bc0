#include "toolkit/hardcopy.hpp"

#include <algorithm>
#include <cmath>

#include "base/text.hpp"
#include "base/write_file.hpp"
#include "pictures/recolour.hpp"
#include "pictures/vector_device.hpp"
#include "toolkit/bitmap.hpp"

namespace vntl {

namespace {

constexpr double largest_side = 32767, most_pixels = 150e6;

struct Ending {
    std::string_view text;
    Hardcopy_Driver driver;
    Image_Format format = Image_Format::png;
};
constexpr std::array<Ending, 12> endings = {{{".png", Hardcopy_Driver::bit_image, Image_Format::png},
                                             {".bmp", Hardcopy_Driver::bit_image, Image_Format::bmp},
                                             {".pcx", Hardcopy_Driver::bit_image, Image_Format::pcx},
                                             {".jpg", Hardcopy_Driver::bit_image, Image_Format::jpeg},
                                             {".jpeg", Hardcopy_Driver::bit_image, Image_Format::jpeg},
                                             {".svg", Hardcopy_Driver::svg},
                                             {".pdf", Hardcopy_Driver::pdf},
                                             {".ps", Hardcopy_Driver::postscript},
                                             {".dxf", Hardcopy_Driver::dxf},
                                             {".cgm", Hardcopy_Driver::cgm},
                                             {".emf", Hardcopy_Driver::metafile},
                                             {".wmf", Hardcopy_Driver::metafile}}};

std::string Lower_Ending(std::string_view file) {
    const std::size_t point = file.find_last_of("./");
    return point == std::string_view::npos ? std::string() : Lower(file.substr(point));
}

std::unique_ptr<Vector_Device> Open_Drawing(Hardcopy_Driver driver, const std::string& file, const Hardcopy_Options& options) {
    const double width = options.width * points_a_pixel, height = options.height * points_a_pixel;
    switch (driver) {
        case Hardcopy_Driver::postscript:
            return Open_Vector_Device(Vector_Format::postscript, file, width, height, options);
        case Hardcopy_Driver::svg:
            return Open_Vector_Device(Vector_Format::svg, file, width, height, options);
        case Hardcopy_Driver::pdf:
            return Open_Vector_Device(Vector_Format::pdf, file, width, height, options);
        case Hardcopy_Driver::dxf:
            return Open_Dxf(file, width, height, options);
        case Hardcopy_Driver::cgm:
            return Open_Cgm(file, width, height, options);
        case Hardcopy_Driver::metafile:
            return Open_Metafile(file, width, height, options);
        default:
            return nullptr;
    }
}

Status Write_Drawing(Hardcopy_Driver driver, const std::string& file, const Hardcopy_Options& options, const Draw_Routine& draw) {
    const auto device = Open_Drawing(driver, file, options);
    if (device == nullptr) return Status::Fail("No file is written by this driver: " + file);
    Draw_Recoloured(*device, options.colours, options.use_colour, draw);
    return device->Close();
}

Status Write_Bit_Image(const std::string& file, Image_Format format, const Hardcopy_Options& options, const Draw_Routine& draw) {
    Bitmap bitmap(static_cast<int>(std::lround(options.width)), static_cast<int>(std::lround(options.height)), options.dots_per_inch);
    const auto recoloured = [&](Device& device) { Draw_Recoloured(device, options.colours, options.use_colour, draw); };
    if (options.image_colours == Image_Colours::black_white)
        Draw_In_Ink(bitmap.Drawing(), recoloured);
    else
        recoloured(bitmap.Drawing());
    const std::string bytes = bitmap.Encoded(format, options);
    return !bytes.empty() && Replace_File(file, bytes) ? Status::Done() : Status::Fail_File("The picture cannot be written: " + file);
}

std::string Size_Text(const Hardcopy_Options& options) {
    const auto side = [](double value) { return std::to_string(std::llround(std::clamp(value, -1e9, 1e9))); };
    return side(options.width) + " x " + side(options.height);
}

}  // namespace

bool Driver_Of_Name(std::string_view file, Hardcopy_Driver& driver, Image_Format& format) {
    const auto found = std::ranges::find(endings, Lower_Ending(file), &Ending::text);
    if (found == endings.end()) return false;
    driver = found->driver;
    if (driver == Hardcopy_Driver::bit_image) format = found->format;
    return true;
}

bool Fits_Hardcopy(double width, double height) {
    return width >= 1 && height >= 1 && width <= largest_side && height <= largest_side && width * height <= most_pixels;
}

Status HardCopy(Hardcopy_Driver driver, const std::string& file, const Hardcopy_Options& options, const Draw_Routine& draw) {
    if (!Fits_Hardcopy(options.width, options.height))
        return Status::Fail("A picture of " + Size_Text(options) + " is too large or empty: " + file);
    Hardcopy_Options own = options;
    Hardcopy_Driver named = driver;
    Image_Format format = options.format;
    const bool told = Driver_Of_Name(file, named, format) && named == driver;
    if (driver == Hardcopy_Driver::bit_image) return Write_Bit_Image(file, format, options, draw);
    if (told && driver == Hardcopy_Driver::metafile) own.old_metafile = Lower_Ending(file) == ".wmf";
    return Write_Drawing(driver, file, own, draw);
}

}  // namespace vntl
