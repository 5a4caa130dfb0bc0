#include "commands/file/hardcopy_options.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/os.hpp"
#include "base/text.hpp"
#include "commands/file/export/preview.hpp"
#include "commands/file/export/size_entry.hpp"
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
    destination_frame,
    mm_width_field,
    mm_height_field,
    keep_shape_field,
    style_field,
    preview_frame,
    preview_field
};
constexpr File_Entry::Fields file_fields{file_field, browse_button};

// Millimetres alone; with pixels of 1/96 inch; of an image; and the told ones of a drawing for CAD programs.
constexpr Size_Entry::Fields mm_size{mm_width_field, mm_height_field, keep_shape_field};
constexpr Size_Entry::Fields page_size{mm_width_field, mm_height_field, keep_shape_field, width_field, height_field};
constexpr Size_Entry::Fields image_size{mm_width_field, mm_height_field, keep_shape_field, width_field, height_field, density_field};
constexpr Size_Entry::Fields dxf_size{.mm_width = width_field,
                                      .mm_height = height_field,
                                      .keep_shape = keep_shape_field,
                                      .mm_width_label = "&Width",
                                      .mm_height_label = "&Height"};
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
constexpr Whole_Number stroke_number{stroke_field, "&Stroke frequency", 4, 1000000},
    density_number{density_field, "&Density (dpi)", 1, 10000}, quality_number{quality_field, "&Quality (1-100)", 1, 100};

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

// --- PostScript --------------------------------------------------------------------------------------------------------------------

Rows Postscript_Rows() {
    return {{Entry(stroke_number)},
            {Colour_Menu("Change &colours")},
            {Menu(use_field, "&Use colour for", {"Everything", "Lines and texts", "Areas"})},
            {{end_mark_field, Field_Kind::check_box, "Ctrl/&D terminator"}}};
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

Rows Page_Rows() { return {{Colour_Menu("Change &colours")}}; }
void Show_Page(const Hardcopy_Options& options) { Show(colours_field, options.colours); }
bool Take_Page(Hardcopy_Options& options) {
    Take(colours_field, options.colours);
    return true;
}

// --- bit images --------------------------------------------------------------------------------------------------------------------

// In the order of the formats.
constexpr std::string_view image_extensions[] = {".bmp", ".pcx", ".png", ".jpg"};
std::string_view Extension_Of_Format() { return image_extensions[std::clamp(WDialogGetMenu(format_field), 1, 4) - 1]; }

Rows Image_Rows() {
    return {{Entry(density_number), Entry(quality_number)},
            {Menu(format_field, "For&mat :", {"BMP", "PCX", "PNG", "JPEG"}),
             Menu(image_colours_field, "&Colours", {"24 bits a pixel", "256 colours", "16 colours", "Black and white"})}};
}
void Show_Image(const Hardcopy_Options& options) {
    Show(format_field, options.format);
    Show(image_colours_field, options.image_colours);
    WDialogPutInteger(quality_field, options.quality);
}
bool Take_Image(Hardcopy_Options& options) {
    Take(format_field, options.format);
    Take(image_colours_field, options.image_colours);
    return Take(density_number, options.dots_per_inch) && Take(quality_number, options.quality);
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
constexpr Length dxf_x{x_field, "&X Pos"}, dxf_y{y_field, "&Y Pos"};

Dialog_Field Entry(const Length& length) {
    return {.number = length.field, .kind = Field_Kind::real, .label = length.label, .width = 10, .format = "(f12.2)"};
}

bool Take(const Length& length, double& target) {
    const std::string label = Replace_All(length.label, "&", "");
    const std::optional<float> value = Number_In_Field(length.field, label);
    if (!value) return false;
    target = *value;
    if (std::fabs(target) <= farthest_mm) return true;
    Refuse_Field(length.field, label + ": a length that a drawing can have");
    return false;
}

Rows Dxf_Rows() {
    return {{Entry(dxf_x), Entry(dxf_y)},
            {Menu(fill_field, "Fill &density", {"1 (lines far apart)", "2", "3", "4 (lines close)", "5 (solid)"}),
             Menu(colours_field, "&Colours", {"24 bits", "Colour numbers", "Black"})}};
}
void Show_Dxf(const Hardcopy_Options& options) {
    WDialogPutReal(x_field, static_cast<float>(options.x_pos));
    WDialogPutReal(y_field, static_cast<float>(options.y_pos));
    WDialogPutOption(fill_field, options.fill_density);
    Show(colours_field, options.dxf_colours);
}
bool Take_Dxf(Hardcopy_Options& options) {
    Take(fill_field, options.fill_density);
    Take(colours_field, options.dxf_colours);
    return Take(dxf_x, options.x_pos) && Take(dxf_y, options.y_pos);
}

// --- CGM ---------------------------------------------------------------------------------------------------------------------------

Rows Cgm_Rows() {
    return {{Colour_Menu("Change &colour")}, {{.number = fonts_field, .kind = Field_Kind::string, .label = "Font &names", .width = 36}}};
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
    return {{Menu(format_field, "For&mat", {"EMF", "WMF"})},
            {Colour_Menu("Change c&olours")},
            {{old_systems_field, Field_Kind::check_box, "Windows &9x/Me compatible"}}};
}
Rows Metafile_Destination() {
    const auto radio = [](int number, const char* label) {
        return Dialog_Field{.number = number, .kind = Field_Kind::radio, .label = label, .group = to_file_field};
    };
    return {{radio(to_file_field, "&File")}, File_Entry::Row(file_fields, "Name"), {radio(to_clipboard_field, "&Clipboard")}};
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
    const char *title, *frame;
    Save_Form form;
    Size_Entry::Fields size;
    Rows (*rows)();
    void (*show)(const Hardcopy_Options&);
    bool (*take)(Hardcopy_Options&);  // false where a field is refused
    void (*changed)(int) = nullptr;
};
constexpr Driver_Dialog dialogs[] = {
    {Hardcopy_Driver::postscript, 481, "PostScript", "Page", Form("PostScript (*.ps)|*.ps|", ".ps"), mm_size, Postscript_Rows,
     Show_Postscript, Take_Postscript},
    {Hardcopy_Driver::svg, 482, "Scalable Vector Graphics (SVG)", "Page", Form("Scalable Vector Graphics (*.svg)|*.svg|", ".svg"),
     page_size, Page_Rows, Show_Page, Take_Page},
    {Hardcopy_Driver::pdf, 483, "Portable Document Format (PDF)", "Page", Form("Portable Document Format (*.pdf)|*.pdf|", ".pdf"),
     page_size, Page_Rows, Show_Page, Take_Page},
    {Hardcopy_Driver::bit_image, 484, "Bit image file (PCX/BMP/PNG/JPEG)", "Image",
     Form("Bit images (*.png;*.bmp;*.pcx;*.jpg;*.jpeg)|*.png;*.bmp;*.pcx;*.jpg;*.jpeg|", ".png"), image_size, Image_Rows, Show_Image,
     Take_Image, Image_Field_Changed},
    {Hardcopy_Driver::dxf, 485, "AutoCAD DXF", "Drawing, in millimetres", Form("Drawings for CAD (*.dxf)|*.dxf|", ".dxf"), dxf_size,
     Dxf_Rows, Show_Dxf, Take_Dxf},
    {Hardcopy_Driver::cgm, 486, "CGM", "Picture", Form("Computer Graphics Metafile (*.cgm)|*.cgm|", ".cgm"), mm_size, Cgm_Rows, Show_Cgm,
     Take_Cgm},
    {Hardcopy_Driver::metafile, 488, "Windows metafile (WMF/EMF)", "Picture", Form("Metafiles (*.emf;*.wmf)|*.emf;*.wmf|", ".emf"),
     page_size, Metafile_Rows, Show_Metafile, Take_Metafile, Metafile_Field_Changed},
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

// What the dialog of an export has beside its options: size, style, and a preview of them.
class Picture_Part {
public:
    Picture_Part(const Driver_Dialog& of, const Picture_Source& source)
        : of_(of), styles_(source.styles), size_(of.size, of.driver), preview_(of.number, preview_field, source.in_style) {}

    void Show(const Hardcopy_Choice& choice) {
        std::vector<std::string> choices = {"As on the screen"};
        choices.insert(choices.end(), styles_.begin(), styles_.end());
        const auto chosen = std::ranges::find_if(styles_, [&](const std::string& name) { return Equal_No_Case(name, choice.style); });
        WDialogPutMenu(style_field, choices, chosen == styles_.end() ? 1 : static_cast<int>(chosen - styles_.begin()) + 2);
        if (styles_.empty()) WDialogFieldState(style_field, field_disabled);
        size_.Show(choice.size, choice.keep_shape);
        Show_Preview();
    }
    void Changed(int field) {
        size_.Changed(field);
        Show_Preview();
    }
    void Timer(int number) { preview_.Timer(number); }
    bool Take(Hardcopy_Choice& choice) const {
        const std::optional<Picture_Size> size = size_.Take();
        if (!size) return false;
        choice.size = *size;
        choice.size.Put(of_.driver, choice.options);
        choice.keep_shape = size_.Keeps_Shape();
        choice.style = Style();
        return true;
    }

private:
    std::string Style() const {
        const int chosen = WDialogGetMenu(style_field);
        return chosen < 2 ? std::string() : styles_[static_cast<std::size_t>(chosen - 2)];
    }
    void Show_Preview() {
        Picture_Preview::Picture picture{.width = size_.Present().width,
                                         .height = size_.Present().height,
                                         .inches = size_.Present().width / mm_an_inch,
                                         .style = Style()};
        if (of_.driver != Hardcopy_Driver::dxf) {
            vntl::Take(colours_field, picture.colours);
            vntl::Take(use_field, picture.use_colour);
        }
        preview_.Show(picture);
    }

    const Driver_Dialog& of_;
    std::vector<std::string> styles_;
    Size_Entry size_;
    Picture_Preview preview_;
};

// Takes what the fields hold; false, and the dialog stays, where something is refused. A blank name is taken as it is, whatever the rest.
bool Take_Choice(const Driver_Dialog& of, File_Entry& entry, const Picture_Part* picture, Hardcopy_Choice& choice) {
    choice.to_clipboard = Clipboard_Chosen(of);
    const bool blank = Trim(WDialogGetString(file_field)).empty();
    if (blank && !choice.to_clipboard) {
        choice.file.clear();
        return true;
    }
    if (picture != nullptr && !picture->Take(choice)) return false;
    if (!of.take(choice.options)) return false;
    if (choice.to_clipboard) return true;
    const std::optional<std::string> file = entry.Take(Extension_Shown(of));
    if (file) choice.file = *file;
    return file.has_value();
}

// The dialog is loaded. `further`: what a button of it does besides, true when the dialog is to end. `picture`: of an export.
bool Run_Options(const Driver_Dialog& of, int dialog, Configuration& config, Ask& ask, Hardcopy_Choice& choice, Picture_Part* picture,
                 const std::function<bool(int)>& further) {
    File_Entry entry(file_fields, config, ask, of.form, picture != nullptr ? choice.file : std::string());
    WDialogPutString(file_field, choice.file);
    of.show(choice.options);
    const auto changed = [&](int field) {
        if (of.changed != nullptr) of.changed(field);
        if (picture != nullptr) picture->Changed(field);
    };
    Modal_Routines routines{.changed = changed};
    if (picture != nullptr) {
        picture->Show(choice);
        routines.timer = [picture](int number) { picture->Timer(number); };
    }
    changed(file_field);
    WDialogShow(file_field, Show_Kind::modal);
    bool taken = false;
    for (int button = 0; !taken && button != button_cancel;) {
        button = Run_Modal(dialog, routines);
        if (button == browse_button) {
            entry.Browse(dialog);
            changed(file_field);
        } else if (button == button_ok) {
            taken = Take_Choice(of, entry, picture, choice);
        } else if (button != button_cancel && further(button)) {
            button = button_cancel;
        }
    }
    WDialogUnload();
    return taken;
}

Dialog_Field Frame(int number, const char* title, Rows rows) {
    return {.number = number, .kind = Field_Kind::frame, .label = title, .pages = {{"", std::move(rows)}}};
}

Row Foot() { return {{button_ok, Field_Kind::push_button, "OK"}, {button_cancel, Field_Kind::push_button, "Cancel"}}; }

Dialog_Resource Export_Resource(const Driver_Dialog& of) {
    Rows rows = {Size_Entry::Millimetres(of.size), {Size_Entry::Keep_Shape(of.size)}};
    if (of.size.width != 0) {
        rows.push_back(Size_Entry::Pixels(of.size));
        rows.back().push_back({.label = of.size.density == 0 ? "pixels of 1/96 inch" : "pixels"});
    }
    for (Row& row : of.rows()) rows.push_back(std::move(row));
    rows.push_back({Menu(style_field, "Sty&le", {})});
    const bool metafile = of.driver == Hardcopy_Driver::metafile;
    Rows destination = metafile ? Metafile_Destination() : Rows{File_Entry::Row(file_fields, "&File")};
    return {of.number,
            of.title,
            {{Frame(options_frame, of.frame, std::move(rows)), Picture_Preview::Frame(preview_frame, preview_field)},
             {Frame(destination_frame, "Destination", std::move(destination))},
             Foot()}};
}

Dialog_Resource Print_Resource() {
    Row foot = Foot();
    foot.push_back({printer_button, Field_Kind::push_button, "&Printer..."});
    return {print_dialog,
            "PostScript",
            {File_Entry::Row(file_fields, "&File"), {Frame(options_frame, "Page", Postscript_Rows())}, std::move(foot)}};
}

}  // namespace

std::vector<Dialog_Resource> Hardcopy_Options_Resources() {
    std::vector<Dialog_Resource> resources;
    for (const Driver_Dialog& of : dialogs) resources.push_back(Export_Resource(of));
    resources.push_back(Print_Resource());
    return resources;
}

const Save_Form& Hardcopy_Form(Hardcopy_Driver driver) { return Dialog_Of(driver).form; }

bool Hardcopy_Options_Dialog(Configuration& config, Ask& ask, Hardcopy_Driver driver, Hardcopy_Choice& choice,
                             const Picture_Source& source) {
    const Driver_Dialog& of = Dialog_Of(driver);
    WDialogLoad(of.number);
    if (driver == Hardcopy_Driver::metafile && !config.os_tag.starts_with("WIND")) WDialogFieldState(to_clipboard_field, field_disabled);
    Picture_Part picture(of, source);
    return Run_Options(of, of.number, config, ask, choice, &picture, [](int) { return false; });
}

bool Print_Options_Dialog(Configuration& config, Ask& ask, Hardcopy_Choice& choice, bool printer_known,
                          const std::function<bool()>& to_printer) {
    WDialogLoad(print_dialog);
    if (!printer_known) WDialogFieldState(printer_button, field_disabled);
    return Run_Options(Dialog_Of(Hardcopy_Driver::postscript), print_dialog, config, ask, choice, nullptr, [&](int) {
        const bool printed = to_printer();
        WDialogSelect(print_dialog);
        return printed;
    });
}

}  // namespace vntl
