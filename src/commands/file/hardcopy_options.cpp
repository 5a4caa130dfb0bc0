#include "commands/file/hardcopy_options.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/file/file_entry.hpp"
#include "commands/modal.hpp"
#include "session/configuration.hpp"

namespace vntl {

namespace {

constexpr int print_dialog = 487, printer_button = 3;
enum Field {
    file_field = 4601,
    browse_button,
    width_field,
    height_field,
    colours_field,
    stroke_field,
    use_field,
    end_mark_field,
    format_field,
    image_colours_field,
    density_field,
    quality_field,
    x_field,
    y_field,
    fill_field,
    options_frame,
    fonts_field,
    to_file_field,
    to_clipboard_field,
    old_systems_field,
    destination_frame
};
constexpr File_Entry::Fields file_fields{file_field, browse_button};

constexpr double mm_a_pixel = 25.4 / pixels_an_inch;
constexpr float farthest_mm = 1e6f;
constexpr std::string_view overwrite_title = "Overwrite graphic file?";

using Row = std::vector<Dialog_Field>;
using Rows = std::vector<Row>;

// --- fields that several dialogs have ----------------------------------------------------------------------------------------------

struct Whole_Number {
    int field;
    const char* label;
    int lo, hi;
};
constexpr Whole_Number width_number{width_field, "Image &width", 1, 32767}, height_number{height_field, "Image &height", 1, 32767},
    stroke_number{stroke_field, "&Stroke frequency", 4, 1000000}, density_number{density_field, "&Density (dpi)", 1, 10000},
    quality_number{quality_field, "&Quality (1-100)", 1, 100};

Dialog_Field Entry(const Whole_Number& number) {
    return {.number = number.field, .kind = Field_Kind::integer, .label = number.label, .width = 8, .lo = number.lo, .hi = number.hi};
}

// Nothing where the field holds none of its range: it is marked.
std::optional<int> Taken(const Whole_Number& number) {
    const std::optional<int> value = WDialogGetInteger(number.field);
    if (!value)
        Refuse_Field(number.field, Replace_All(number.label, "&", "") + ": a whole number from " + std::to_string(number.lo) + " to " +
                                       std::to_string(number.hi));
    return value;
}

bool Take(const Whole_Number& number, int& target) {
    const std::optional<int> value = Taken(number);
    if (value) target = *value;
    return value.has_value();
}

Dialog_Field Menu(int number, const char* label, std::vector<std::string> choices) {
    return {.number = number, .kind = Field_Kind::menu, .label = label, .choices = std::move(choices)};
}
Dialog_Field Colour_Menu(const char* label) {
    return Menu(colours_field, label, {"None", "Black and white exchanged", "Shades of grey", "Black lines on white"});
}

template <class Choice>
void Show(int field, Choice choice) {
    WDialogPutOption(field, static_cast<int>(choice));
}
template <class Choice>
void Take(int field, Choice& choice) {
    choice = static_cast<Choice>(std::max(1, WDialogGetMenu(field)));
}

void Show_Size(const Hardcopy_Options& options) {
    WDialogPutInteger(width_field, static_cast<int>(std::lround(options.width)));
    WDialogPutInteger(height_field, static_cast<int>(std::lround(options.height)));
}

bool Take_Size(Hardcopy_Options& options) {
    int width = 0, height = 0;
    if (!Take(width_number, width) || !Take(height_number, height)) return false;
    if (!Fits_Hardcopy(width, height)) {
        Refuse_Field(width_field, "A picture of " + std::to_string(width) + " x " + std::to_string(height) + " is too large");
        return false;
    }
    options.width = width;
    options.height = height;
    return true;
}

Row Size_Row() { return {Entry(width_number), Entry(height_number)}; }

// The name over the rest, which stands in a frame of its own.
Rows With_File(const char* title, Rows rows) {
    const Dialog_Field frame{.number = options_frame, .kind = Field_Kind::frame, .label = title, .pages = {{"", std::move(rows)}}};
    return {File_Entry::Row(file_fields, "&File"), {frame}};
}

// --- PostScript --------------------------------------------------------------------------------------------------------------------

Rows Postscript_Rows() {
    return With_File("Page", {{Entry(stroke_number)},
                              {Colour_Menu("Change &colours")},
                              {Menu(use_field, "&Use colour for", {"Everything", "Lines and texts", "Areas"})},
                              {{end_mark_field, Field_Kind::check_box, "Ctrl/&D terminator"}}});
}
void Show_Postscript(const Hardcopy_Options& options) {
    WDialogPutInteger(stroke_field, options.stroke_frequency);
    Show(colours_field, options.colours);
    Show(use_field, options.use_colour);
    WDialogPutCheckBox(end_mark_field, options.end_mark ? 1 : 0);
}
bool Take_Postscript(Hardcopy_Options& options) {
    Take(colours_field, options.colours);
    Take(use_field, options.use_colour);
    options.end_mark = WDialogGetCheckBox(end_mark_field) != 0;
    return Take(stroke_number, options.stroke_frequency);
}

// --- SVG and PDF -------------------------------------------------------------------------------------------------------------------

Rows Page_Rows() { return With_File("Page, in pixels of 1/96 inch", {Size_Row(), {Colour_Menu("Change &colours")}}); }
void Show_Page(const Hardcopy_Options& options) {
    Show_Size(options);
    Show(colours_field, options.colours);
}
bool Take_Page(Hardcopy_Options& options) {
    Take(colours_field, options.colours);
    return Take_Size(options);
}

// --- bit images --------------------------------------------------------------------------------------------------------------------

// In the order of the formats.
constexpr std::string_view image_extensions[] = {".bmp", ".pcx", ".png", ".jpg"};
std::string_view Extension_Of_Format() { return image_extensions[std::clamp(WDialogGetMenu(format_field), 1, 4) - 1]; }

Rows Image_Rows() {
    return With_File("Image, in pixels",
                     {{Menu(format_field, "For&mat :", {"BMP", "PCX", "PNG", "JPEG"}),
                       Menu(image_colours_field, "&Colours", {"24 bits a pixel", "256 colours", "16 colours", "Black and white"})},
                      Size_Row(),
                      {Entry(density_number), Entry(quality_number)}});
}
void Show_Image(const Hardcopy_Options& options) {
    Show(format_field, options.format);
    Show(image_colours_field, options.image_colours);
    Show_Size(options);
    WDialogPutInteger(density_field, options.dots_per_inch);
    WDialogPutInteger(quality_field, options.quality);
}
bool Take_Image(Hardcopy_Options& options) {
    Take(format_field, options.format);
    Take(image_colours_field, options.image_colours);
    return Take_Size(options) && Take(density_number, options.dots_per_inch) && Take(quality_number, options.quality);
}

// The name decides on the format, so what is shown of the two agrees.
void Image_Field_Changed(int field) {
    const std::string name(Trim(WDialogGetString(file_field)));
    Hardcopy_Driver driver{};
    Image_Format format{};
    if (!Driver_Of_Name(name, driver, format) || driver != Hardcopy_Driver::bit_image) return;
    if (field == file_field) Show(format_field, format);
    if (field == format_field && static_cast<int>(format) != WDialogGetMenu(format_field))
        WDialogPutString(file_field, name.substr(0, name.size() - Extension_Of(name).size()) + std::string(Extension_Of_Format()));
}

// --- DXF: millimetres --------------------------------------------------------------------------------------------------------------

struct Length {
    int field;
    const char* label;
};
constexpr Length dxf_width{width_field, "&Width"}, dxf_height{height_field, "&Height"}, dxf_x{x_field, "&X Pos"}, dxf_y{y_field, "&Y Pos"};

Dialog_Field Entry(const Length& length) {
    return {.number = length.field, .kind = Field_Kind::real, .label = length.label, .width = 10, .format = "(f12.2)"};
}

bool Take(const Length& length, double lo, double& target) {
    const std::string label = Replace_All(length.label, "&", "");
    const std::optional<float> value = Number_In_Field(length.field, label);
    if (!value) return false;
    target = *value;
    if (target >= lo && target <= farthest_mm) return true;
    Refuse_Field(length.field, label + ": a length that a drawing can have");
    return false;
}

Rows Dxf_Rows() {
    return With_File("Drawing, in millimetres",
                     {{Entry(dxf_width), Entry(dxf_height)},
                      {Entry(dxf_x), Entry(dxf_y)},
                      {Menu(fill_field, "Fill &density", {"1 (lines far apart)", "2", "3", "4 (lines close)", "5 (solid)"}),
                       Menu(colours_field, "&Colours", {"24 bits", "Colour numbers", "Black"})}});
}
void Show_Dxf(const Hardcopy_Options& options) {
    WDialogPutReal(width_field, static_cast<float>(options.width * mm_a_pixel));
    WDialogPutReal(height_field, static_cast<float>(options.height * mm_a_pixel));
    WDialogPutReal(x_field, static_cast<float>(options.x_pos));
    WDialogPutReal(y_field, static_cast<float>(options.y_pos));
    WDialogPutOption(fill_field, options.fill_density);
    Show(colours_field, options.dxf_colours);
}
bool Take_Dxf(Hardcopy_Options& options) {
    double width = 0, height = 0;
    Take(fill_field, options.fill_density);
    Take(colours_field, options.dxf_colours);
    if (!Take(dxf_width, mm_a_pixel, width) || !Take(dxf_height, mm_a_pixel, height)) return false;
    if (!Fits_Hardcopy(width / mm_a_pixel, height / mm_a_pixel)) {
        Refuse_Field(width_field, "The drawing is too large");
        return false;
    }
    options.width = width / mm_a_pixel;
    options.height = height / mm_a_pixel;
    return Take(dxf_x, -farthest_mm, options.x_pos) && Take(dxf_y, -farthest_mm, options.y_pos);
}

// --- CGM ---------------------------------------------------------------------------------------------------------------------------

Rows Cgm_Rows() {
    return With_File("Picture", {{Colour_Menu("Change &colour")},
                                 {{.number = fonts_field, .kind = Field_Kind::string, .label = "Font &names", .width = 36}}});
}
void Show_Cgm(const Hardcopy_Options& options) {
    Show(colours_field, options.colours);
    std::string names;
    for (const std::string& name : options.font_names) names += (names.empty() ? "" : ", ") + name;
    WDialogPutString(fonts_field, names);
}
bool Take_Cgm(Hardcopy_Options& options) {
    Take(colours_field, options.colours);
    const std::string text = WDialogGetString(fonts_field) + ',';
    std::size_t count = 0;
    for (std::size_t start = 0, end = 0; (end = text.find(',', start)) != std::string::npos; start = end + 1) {
        const std::string name(Trim(std::string_view(text).substr(start, end - start)));
        if (count < options.font_names.size() && !name.empty()) options.font_names[count] = name;
        count += name.empty() ? options.font_names.size() + 1 : 1;
    }
    if (count == options.font_names.size()) return true;
    Refuse_Field(fonts_field, "Font names: four names, with commas between them");
    return false;
}

// --- metafiles ---------------------------------------------------------------------------------------------------------------------

Rows Metafile_Rows() {
    const auto radio = [](int number, const char* label) {
        return Dialog_Field{.number = number, .kind = Field_Kind::radio, .label = label, .group = to_file_field};
    };
    const auto frame = [](int number, const char* label, Rows rows) {
        return Row{{.number = number, .kind = Field_Kind::frame, .label = label, .pages = {{"", std::move(rows)}}}};
    };
    return {frame(destination_frame, "Destination",
                  {{radio(to_file_field, "&File")}, File_Entry::Row(file_fields, "Name"), {radio(to_clipboard_field, "&Clipboard")}}),
            frame(options_frame, "Picture, in pixels of 1/96 inch",
                  {Size_Row(),
                   {Menu(format_field, "For&mat", {"EMF", "WMF"})},
                   {Colour_Menu("Change c&olours")},
                   {{old_systems_field, Field_Kind::check_box, "Windows &9x/Me compatible"}}})};
}
void Show_Metafile(const Hardcopy_Options& options) {
    WDialogPutRadioButton(to_file_field);
    WDialogPutOption(format_field, options.old_metafile ? 2 : 1);
    WDialogPutCheckBox(old_systems_field, options.old_systems ? 1 : 0);
    Show_Page(options);
}
bool Take_Metafile(Hardcopy_Options& options) {
    options.old_metafile = WDialogGetMenu(format_field) == 2;
    options.old_systems = WDialogGetCheckBox(old_systems_field) != 0;
    return Take_Page(options);
}

void Metafile_Field_Changed(int field) {
    const bool to_file = WDialogGetRadioButton(to_file_field) == to_file_field;
    for (const int of_file : {file_field, browse_button}) WDialogFieldState(of_file, to_file ? field_enabled : field_disabled);
    const std::string name(Trim(WDialogGetString(file_field)));
    const std::string_view extension = Extension_Of(name);
    const bool emf = Equal_No_Case(extension, ".emf"), wmf = Equal_No_Case(extension, ".wmf");
    if (!emf && !wmf) return;
    if (field == file_field) WDialogPutOption(format_field, wmf ? 2 : 1);
    const bool old = WDialogGetMenu(format_field) == 2;
    if (field == format_field && old != wmf)
        WDialogPutString(file_field, name.substr(0, name.size() - extension.size()) + (old ? ".wmf" : ".emf"));
}

// --- all of them -------------------------------------------------------------------------------------------------------------------

constexpr Save_Form Form(std::string_view filter, std::string_view extension) {
    return {"Exporting Graphics", filter, extension, overwrite_title, {}};
}

struct Driver_Dialog {
    Hardcopy_Driver driver;
    int number;
    const char* title;
    Save_Form form;
    Rows (*rows)();
    void (*show)(const Hardcopy_Options&);
    bool (*take)(Hardcopy_Options&);  // false where a field is refused
    void (*changed)(int) = nullptr;
};
constexpr Driver_Dialog dialogs[] = {
    {Hardcopy_Driver::postscript, 481, "PostScript", Form("PostScript (*.ps)|*.ps|", ".ps"), Postscript_Rows, Show_Postscript,
     Take_Postscript},
    {Hardcopy_Driver::svg, 482, "Scalable Vector Graphics (SVG)", Form("Scalable Vector Graphics (*.svg)|*.svg|", ".svg"), Page_Rows,
     Show_Page, Take_Page},
    {Hardcopy_Driver::pdf, 483, "Portable Document Format (PDF)", Form("Portable Document Format (*.pdf)|*.pdf|", ".pdf"), Page_Rows,
     Show_Page, Take_Page},
    {Hardcopy_Driver::bit_image, 484, "Bit image file (PCX/BMP/PNG/JPEG)",
     Form("Bit images (*.png;*.bmp;*.pcx;*.jpg;*.jpeg)|*.png;*.bmp;*.pcx;*.jpg;*.jpeg|", ".png"), Image_Rows, Show_Image, Take_Image,
     Image_Field_Changed},
    {Hardcopy_Driver::dxf, 485, "AutoCAD DXF", Form("Drawings for CAD (*.dxf)|*.dxf|", ".dxf"), Dxf_Rows, Show_Dxf, Take_Dxf},
    {Hardcopy_Driver::cgm, 486, "CGM", Form("Computer Graphics Metafile (*.cgm)|*.cgm|", ".cgm"), Cgm_Rows, Show_Cgm, Take_Cgm},
    {Hardcopy_Driver::metafile, 488, "Windows metafile (WMF/EMF)", Form("Metafiles (*.emf;*.wmf)|*.emf;*.wmf|", ".emf"), Metafile_Rows,
     Show_Metafile, Take_Metafile, Metafile_Field_Changed},
};

const Driver_Dialog& Dialog_Of(Hardcopy_Driver driver) {
    const auto* const found = std::ranges::find(dialogs, driver, &Driver_Dialog::driver);
    return found == std::end(dialogs) ? dialogs[0] : *found;
}

// The extension that a name without one gets: that of the format where the dialog has one.
std::string_view Extension_Shown(const Driver_Dialog& of) {
    if (of.driver == Hardcopy_Driver::bit_image) return Extension_Of_Format();
    if (of.driver == Hardcopy_Driver::metafile) return WDialogGetMenu(format_field) == 2 ? ".wmf" : ".emf";
    return of.form.extension;
}

bool Clipboard_Chosen(const Driver_Dialog& of) {
    return of.driver == Hardcopy_Driver::metafile && WDialogGetRadioButton(to_file_field) == to_clipboard_field;
}

// Takes what the fields hold; false, and the dialog stays, where something is refused. A blank name is taken as it is, whatever the rest.
bool Take_Choice(const Driver_Dialog& of, File_Entry& entry, Hardcopy_Choice& choice) {
    choice.to_clipboard = Clipboard_Chosen(of);
    const bool blank = Trim(WDialogGetString(file_field)).empty();
    if (blank && !choice.to_clipboard) {
        choice.file.clear();
        return true;
    }
    if (!of.take(choice.options)) return false;
    if (choice.to_clipboard) return true;
    const std::optional<std::string> file = entry.Take(Extension_Shown(of));
    if (file) choice.file = *file;
    return file.has_value();
}

// The dialog is loaded. `further`: what a button of it does besides, true when the dialog is to end.
bool Run_Options(const Driver_Dialog& of, int dialog, Configuration& config, Ask& ask, Hardcopy_Choice& choice, bool may_replace,
                 const std::function<bool(int)>& further) {
    File_Entry entry(file_fields, config, ask, of.form, may_replace ? choice.file : std::string());
    WDialogPutString(file_field, choice.file);
    of.show(choice.options);
    if (of.changed != nullptr) of.changed(file_field);
    WDialogShow(file_field, Show_Kind::modal);
    bool taken = false;
    for (int button = 0; !taken && button != button_cancel;) {
        button = Run_Modal(dialog, {.changed = of.changed});
        if (button == browse_button) {
            entry.Browse(dialog);
            if (of.changed != nullptr) of.changed(file_field);
        } else if (button == button_ok) {
            taken = Take_Choice(of, entry, choice);
        } else if (button != button_cancel && further(button)) {
            button = button_cancel;
        }
    }
    WDialogUnload();
    return taken;
}

Dialog_Resource Resource(const Driver_Dialog& of, int number, Row foot) {
    Dialog_Resource resource{number, of.title, of.rows()};
    resource.rows.push_back(std::move(foot));
    return resource;
}

}  // namespace

std::vector<Dialog_Resource> Hardcopy_Options_Resources() {
    const Row foot = {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}};
    std::vector<Dialog_Resource> resources;
    for (const Driver_Dialog& of : dialogs) resources.push_back(Resource(of, of.number, foot));
    Row print_foot = foot;
    print_foot.push_back({printer_button, Field_Kind::push_button, "&Printer..."});
    resources.push_back(Resource(Dialog_Of(Hardcopy_Driver::postscript), print_dialog, std::move(print_foot)));
    return resources;
}

const Save_Form& Hardcopy_Form(Hardcopy_Driver driver) { return Dialog_Of(driver).form; }

bool Hardcopy_Options_Dialog(Configuration& config, Ask& ask, Hardcopy_Driver driver, Hardcopy_Choice& choice, bool may_replace) {
    const Driver_Dialog& of = Dialog_Of(driver);
    WDialogLoad(of.number);
    if (driver == Hardcopy_Driver::metafile && !config.os_tag.starts_with("WIND")) WDialogFieldState(to_clipboard_field, field_disabled);
    return Run_Options(of, of.number, config, ask, choice, may_replace, [](int) { return false; });
}

bool Print_Options_Dialog(Configuration& config, Ask& ask, Hardcopy_Choice& choice, bool printer_known,
                          const std::function<bool()>& to_printer) {
    WDialogLoad(print_dialog);
    if (!printer_known) WDialogFieldState(printer_button, field_disabled);
    return Run_Options(Dialog_Of(Hardcopy_Driver::postscript), print_dialog, config, ask, choice, false, [&](int) {
        const bool printed = to_printer();
        WDialogSelect(print_dialog);
        return printed;
    });
}

}  // namespace vntl
