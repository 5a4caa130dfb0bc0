#include "commands/file/save_graphic.hpp"

#include <optional>

#include "base/os.hpp"
#include "commands/file/hardcopy_options.hpp"
#include "commands/file/page_setup.hpp"
#include "commands/modal.hpp"
#include "plot/plot.hpp"
#include "toolkit/window.hpp"
#include "toolkit/window_service.hpp"

namespace vntl {

namespace {

constexpr int format_dialog = 480, first_format = 4801, metafile_format = 4806;
constexpr struct {
    int field;
    const char* label;
    Hardcopy_Driver driver;
} formats[] = {{first_format, "&PostScript (PS)", Hardcopy_Driver::postscript},
               {4802, "&Scalable Vector Graphics (SVG)", Hardcopy_Driver::svg},
               {4803, "&BMP, PCX or PNG", Hardcopy_Driver::bit_image},
               {4804, "&Autocad (DXF)", Hardcopy_Driver::dxf},
               {4805, "&Computer Graphics Metafile (CGM)", Hardcopy_Driver::cgm},
               {metafile_format, "&Windows Metafile (XMF, EMF)", Hardcopy_Driver::metafile},
               {4807, "Portable &Document Format (PDF)", Hardcopy_Driver::pdf}};

constexpr const char *incorrect_name = "Incorrect Filename ", *no_system = "Error detecting the Operating System";

// What is drawn: the picture of a window with its marks, in the window's size, and the stamp over it.
struct Picture {
    Draw_Routine draw;
    double width = 0, height = 0;
};

Picture Picture_Of(int window, const Configuration& config, bool stamped) {
    WindowSelect(window);
    const auto draw = [&picture = Service_Of(window).picture, &config, stamped](Device& device) {
        picture(device);
        if (!stamped) return;
        Graphics g(device);
        Stamp_Plot(config, g);
    };
    return {draw, static_cast<double>(WInfoWindow(1)), static_cast<double>(WInfoWindow(2))};
}

// Nothing on cancel.
std::optional<Hardcopy_Driver> Ask_Format(const Configuration& config) {
    WDialogLoad(format_dialog);
    WDialogPutRadioButton(first_format);
    if (!config.os_tag.starts_with("WIND")) WDialogFieldState(metafile_format, field_disabled);
    WDialogShow(first_format, Show_Kind::modal);
    std::optional<Hardcopy_Driver> chosen;
    if (Run_Modal(format_dialog) == button_ok)
        for (const auto& format : formats)
            if (WDialogGetRadioButton(first_format) == format.field) chosen = format.driver;
    WDialogUnload();
    return chosen;
}

// --- printing ----------------------------------------------------------------------------------------------------------------------

Page_Setup Usual_Page(const Picture& picture) {
    Page_Setup setup;
    setup.paper = Usual_Paper();
    setup.landscape = picture.width >= picture.height;
    return setup;
}

// The picture in the middle of a sheet, within its margins.
Hardcopy_Options On_A_Sheet(const Picture& picture) {
    constexpr double mm_an_inch = 25.4, points_an_inch = 72;
    const Page_Setup setup = Usual_Page(picture);
    const Paper& paper = Papers()[setup.paper];
    const Rect place = Picture_On_Sheet(setup, picture.width / picture.height);
    Hardcopy_Options options;
    options.width = (place.x2 - place.x1) / mm_an_inch * pixels_an_inch;
    options.height = (place.y2 - place.y1) / mm_an_inch * pixels_an_inch;
    options.paper_width = (setup.landscape ? paper.height : paper.width) / mm_an_inch * points_an_inch;
    options.paper_height = (setup.landscape ? paper.width : paper.height) / mm_an_inch * points_an_inch;
    return options;
}

// The page that "Page Setup" describes.
Status Print_To_Printer(Configuration& config, Ask& ask, const Picture& picture, const std::vector<std::string>& printers) {
    Page_Setup setup = Usual_Page(picture);
    setup.file = "filename.pdf";
    if (!Page_Setup_Dialog(config, ask, printers, setup)) return Status::Cancel();
    if (setup.printer.empty() && setup.file.empty()) return Status::Fail(incorrect_name);
    return Print_Page(setup, picture.width / picture.height, picture.draw);
}

Status Print_To_Postscript(Configuration& config, Ask& ask, const Picture& picture) {
    const std::vector<std::string> printers = Printer_Names();
    Hardcopy_Choice choice{"filename.ps", On_A_Sheet(picture)};
    Status printed = Status::Cancel();
    const auto to_printer = [&] {
        printed = Print_To_Printer(config, ask, picture, printers);
        return !printed.cancelled;
    };
    if (!Print_Options_Dialog(config, ask, choice, !printers.empty(), to_printer)) return printed;
    if (choice.file.empty()) return Status::Fail(incorrect_name);
    return HardCopy(Hardcopy_Driver::postscript, choice.file, choice.options, picture.draw);
}

}  // namespace

std::vector<Dialog_Resource> Save_Graphic_Resources() {
    Dialog_Resource resource{format_dialog, "Select Graphic Format File", {}};
    for (const auto& format : formats)
        resource.rows.push_back({{.number = format.field, .kind = Field_Kind::radio, .label = format.label, .group = first_format}});
    resource.rows.push_back({{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}});
    std::vector<Dialog_Resource> resources = Hardcopy_Options_Resources();
    resources.push_back(std::move(resource));
    resources.push_back(Page_Setup_Resource());
    return resources;
}

Status Export_Plot(Configuration& config, Ask& ask) {
    const std::optional<Hardcopy_Driver> driver = Ask_Format(config);
    if (!driver) return Status::Cancel();
    const Save_Form& form = Hardcopy_Form(*driver);
    const std::string file = Name_To_Save(config, ask, form, "filename" + std::string(form.extension));
    if (file.empty()) return Status::Cancel();
    const Picture picture = Picture_Of(Picture_Window(), config, true);
    Hardcopy_Choice choice{file, {}};
    choice.options.width = picture.width;
    choice.options.height = picture.height;
    if (!Hardcopy_Options_Dialog(config, ask, *driver, choice, true)) return Status::Cancel();
    if (choice.to_clipboard) return HardCopy_To_Clipboard(choice.options, picture.draw);
    if (choice.file.empty()) return Status::Fail(incorrect_name);
    return HardCopy(*driver, choice.file, choice.options, picture.draw);
}

Status Print_Window(Configuration& config, Ask& ask, int window, bool stamped) {
    const std::string_view system = std::string_view(config.os_tag).substr(0, 4);
    const Picture picture = Picture_Of(window, config, stamped);
    if (system == "LINU" || system == "MACO") return Print_To_Postscript(config, ask, picture);
    if (system == "WIND") return Print_To_Printer(config, ask, picture, Printer_Names());
    return Status::Fail(no_system);
}

Status Print_Plot(Configuration& config, Ask& ask) { return Print_Window(config, ask, Picture_Window(), true); }

}  // namespace vntl
