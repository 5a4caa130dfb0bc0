#include "commands/file/export_picture.hpp"

#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

Status Export_Picture(const Draw_Routine& draw, const std::string& file, int width, int height) {
    Hardcopy_Driver driver{};
    Hardcopy_Options options;
    if (!Driver_Of_Name(file, driver, options.format))
        return Status::Fail("A picture's name ends in .png, .bmp, .jpg, .pcx, .svg, .pdf, .ps, .dxf, .cgm, .emf or .wmf: " + file);
    options.width = width;
    options.height = height;
    return HardCopy(driver, file, options, draw);
}

Status Export_Window(const std::string& file) {
    const int window = Picture_Window();
    WindowSelect(window);
    return Export_Picture(Service_Of(window).picture, file, WInfoWindow(1), WInfoWindow(2));
}

}  // namespace vntl
