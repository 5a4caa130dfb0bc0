#include "commands/file/export_picture.hpp"

#include "commands/select_files.hpp"
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
