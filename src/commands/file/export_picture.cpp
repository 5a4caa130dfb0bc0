#include "commands/file/export_picture.hpp"

#include <cmath>
#include <memory>

#include "plot/plot.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

void Picture_Size::Put(Hardcopy_Driver driver, Hardcopy_Options& options) const {
    const bool image = driver == Hardcopy_Driver::bit_image;
    const double scale = millimetres ? (image ? dots_per_inch : pixels_an_inch) / mm_an_inch : 1;
    options.width = image ? std::round(scale * width) : scale * width;
    options.height = image ? std::round(scale * height) : scale * height;
    options.dots_per_inch = dots_per_inch;
}

Picture_Size Size_Of_Window() { return {.width = static_cast<double>(WInfoWindow(1)), .height = static_cast<double>(WInfoWindow(2))}; }

Status Check_Picture_Name(const std::string& file) {
    Hardcopy_Driver driver{};
    Image_Format format{};
    if (Driver_Of_Name(file, driver, format)) return Status::Done();
    return Status::Fail("A picture's name ends in .png, .bmp, .jpg, .pcx, .svg, .pdf, .ps, .dxf, .cgm, .emf or .wmf: " + file);
}

Status Export_Picture(const Draw_Routine& draw, const std::string& file, const Picture_Size& size) {
    if (const Status status = Check_Picture_Name(file); status.failed) return status;
    Hardcopy_Driver driver{};
    Hardcopy_Options options;
    Driver_Of_Name(file, driver, options.format);
    size.Put(driver, options);
    return HardCopy(driver, file, options, draw);
}

Status Export_Window(const std::string& file) {
    const int window = Picture_Window();
    WindowSelect(window);
    return Export_Picture(Service_Of(window).picture, file, Size_Of_Window());
}

namespace {

struct Styled {
    Preferences prefs;
    Look look;
};

}  // namespace

Status Picture_In_Style(const Session& session, std::string_view style, Draw_Routine& draw) {
    const auto styled = std::make_shared<Styled>();
    styled->prefs = session.prefs;
    styled->look = session.look;
    if (!style.empty())
        if (const Status status = Style_Of_Session(session, style, styled->prefs, styled->look); status.failed) return status;
    draw = [&session, styled](Device& device) {
        const Plot_State& plot = session.plot;
        Draw_With_Marks({session.store, plot, session.lists, styled->prefs, session.config, styled->look, session.desk, plot.zone}, device);
    };
    return Status::Done();
}

}  // namespace vntl
