#include "commands/file/save_graphic.hpp"

#include <algorithm>
#include <optional>

#include "base/os.hpp"
#include "commands/file/hardcopy_options.hpp"
#include "commands/file/page_setup.hpp"
#include "commands/modal.hpp"
#include "plot/plot.hpp"
#include "session/desk/picture_names.hpp"
#include "session/session.hpp"
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

Draw_Routine Stamped(Draw_Routine picture, const Configuration& config) {
    return [picture = std::move(picture), &config](Device& device) {
        picture(device);
        Graphics g(device);
        Stamp_Plot(config, g);
    };
}

Picture Picture_Of(int window, const Configuration& config, bool stamped) {
    WindowSelect(window);
    const Draw_Routine& picture = Service_Of(window).picture;
    const Draw_Routine draw = stamped ? Stamped(picture, config) : picture;
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

// --- exporting ---------------------------------------------------------------------------------------------------------------------

// The main window's picture can be drawn in any style; other windows have a look of their own. A picture for print carries no name of the
// program: that belongs to the default style.
Picture_Source Source_Of(const Session& session, int window) {
    const auto in_style = [&session, window](const std::string& style, Draw_Routine& draw) {
        Draw_Routine picture = Service_Of(window).picture;
        const Status status = window == main_window ? Picture_In_Style(session, style, picture) : Status::Done();
        const bool own_look = window == main_window && Style_Name(style.empty() ? session.style.name : style) != default_style;
        if (status.ok()) draw = own_look ? picture : Stamped(std::move(picture), session.config);
        return status;
    };
    return {in_style, window == main_window ? Style_Names() : std::vector<std::string>()};
}

// Without an extension: after the data, where the last picture went, or else where the data are.
std::string Proposed_File(const Session& session, int window) {
    const std::string name = window == main_window ? Picture_Name(session.store) : "filename";
    const Profile_Store& store = session.store;
    std::string directory = session.desk.export_folder;
    if (!IOsDirExists(directory) && window == main_window && store.nperfiles() > 0)
        directory = store.Info(std::max(1, store.First_Shown())).directory;
    return IOsDirExists(directory) ? In_Directory(directory, name) : name;
}

Picture_Size Remembered_Size(const Desk& desk) { return {desk.export_width, desk.export_height, true, desk.export_dpi}; }

void Remember(Desk& desk, const Hardcopy_Choice& choice, bool with_style) {
    desk.export_width = choice.size.width;
    desk.export_height = choice.size.height;
    desk.export_dpi = choice.size.dots_per_inch;
    if (with_style) desk.export_style = choice.style;
    if (!choice.to_clipboard) desk.export_folder = Directory_Part(choice.file);
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

Status Export_Plot(Session& session, Ask& ask) {
    Configuration& config = session.config;
    const std::optional<Hardcopy_Driver> driver = Ask_Format(config);
    if (!driver) return Status::Cancel();
    const Save_Form& form = Hardcopy_Form(*driver);
    const int window = Picture_Window();
    const std::string file = Name_To_Save(config, ask, form, Proposed_File(session, window) + std::string(form.extension));
    if (file.empty()) return Status::Cancel();
    const Picture_Source source = Source_Of(session, window);
    Hardcopy_Choice choice;
    choice.file = file;
    choice.size = Remembered_Size(session.desk);
    choice.style = session.desk.export_style;
    if (!Hardcopy_Options_Dialog(config, ask, *driver, choice, source)) return Status::Cancel();
    if (choice.file.empty() && !choice.to_clipboard) return Status::Fail(incorrect_name);
    Draw_Routine draw;
    if (const Status status = source.in_style(choice.style, draw); status.failed) return status;
    const Status written =
        choice.to_clipboard ? HardCopy_To_Clipboard(choice.options, draw) : HardCopy(*driver, choice.file, choice.options, draw);
    if (written.failed) return written;
    Remember(session.desk, choice, !source.styles.empty());
    session.interface.Note(choice.to_clipboard ? "The picture was copied to the clipboard" : "Saved: " + choice.file);
    return written;
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
