#include "commands/options/preferences_form.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace vntl {

namespace {

using Row = std::vector<Dialog_Field>;
using Rows = std::vector<Row>;

// --- menus -------------------------------------------------------------------------------------------------------------------------

constexpr const char* line_styles[] = {"-None-", "Solid", "Dotted", "Dashed", "DotDash", "DotDotDash"};
constexpr const char* marker_types[] = {"-none-", "circle", "custom1", "custom2", "custom3", "custom4", "custom5", "custom6"};
constexpr const char* fonts[] = {"Courier", "Helvetica/Arial", "Times Roman", "Symbol"};
constexpr const char* text_styles[] = {"Normal", "Bold", "Italic", "Underline", "Opaque", "B+I", "B+I+U", "I+U", "B+U"};
constexpr const char* places[] = {"-none-", "Left", "Centre", "Right"};
constexpr const char* y_places[] = {"-none-",    "Top/Vert",  "Top/Rot-",  "Top/Rot+",  "Cent/Vert",
                                    "Cent/Rot-", "Cent/Rot+", "Bott/Vert", "Bott/Rot-", "Bott/Rot+"};
constexpr const char* legend_places[] = {"No leyend", "In left", "In right", "Out right"};
constexpr const char* contour_types[] = {"Line base - fine", "Line base - gross", "Fill base - granulated", "Fill base - smooth",
                                         "Fill custom - granulated"};
constexpr const char* level_counts[] = {"4", "8", "12", "16", "20"};
constexpr const char* surface_types[] = {"Graduated contouring, smooth shading", "Uniform colour", "Graduated colour", "Variable"};

constexpr Menu_Values menu_of_line_styles{line_styles, -1};
constexpr Menu_Values menu_of_prf_line_styles{std::span(line_styles).subspan(1), 0};  // the curves of a refinement have a line
constexpr Menu_Values menu_of_markers{marker_types};
constexpr Menu_Values menu_of_fonts{fonts};
constexpr Menu_Values menu_of_text_styles{text_styles};
constexpr Menu_Values menu_of_places{places};
constexpr Menu_Values menu_of_y_places{y_places};
constexpr Menu_Values menu_of_legend_places{legend_places};
constexpr Menu_Values menu_of_contour_types{contour_types};
constexpr Menu_Values menu_of_level_counts{level_counts, 4, 4};
constexpr Menu_Values menu_of_surface_types{surface_types};

// --- building ----------------------------------------------------------------------------------------------------------------------

constexpr std::array<Preference_Page, 8> tabs = {Preference_Page::environment, Preference_Page::graph_2d,      Preference_Page::graph_3d,
                                                 Preference_Page::surface_3d,  Preference_Page::profiles_data, Preference_Page::profile_prf,
                                                 Preference_Page::quick_view,  Preference_Page::contour};

constexpr int first_field = 4000, fields_a_page = 100, first_text = 4900, first_path_button = 4050;
constexpr int title_width = 50;  // characters that are seen, of paths too

Field_Kind Kind_Of(const Preference& preference, const Menu_Values& menu) {
    constexpr std::array<Field_Kind, 5> kinds = {Field_Kind::integer, Field_Kind::check_box, Field_Kind::real, Field_Kind::colour_button,
                                                 Field_Kind::string};  // in the order of the types
    return menu.texts.empty() ? kinds[preference.standard.index()] : Field_Kind::menu;
}

class Builder {
public:
    // The field of a preference, with its label.
    Dialog_Field Of(const std::string& preference, const char* label, const Menu_Values& menu = {}) {
        return Made(*Find_Preference(preference), label, label, menu);
    }
    // The same in a row of several, whose headings tell what each is.
    Dialog_Field In_Row(const std::string& row, const std::string& preference, const char* label, const Menu_Values& menu = {}) {
        Dialog_Field field = Made(*Find_Preference(preference), label, row + ", " + label, menu);
        field.unseen_label = true;
        return field;
    }
    Dialog_Field Text(std::string text) { return {++texts_, Field_Kind::label, std::move(text)}; }
    Row Headings(const std::vector<const char*>& texts) {
        Row row;
        for (const char* text : texts) row.push_back(Text(text));
        return row;
    }
    // A path, with the button that chooses it.
    Row Path(const char* name, const char* label, const char* title, const char* filter) {
        Row row = {Of(name, label)};
        const int button = first_path_button + static_cast<int>(form.paths.size());
        form.paths.push_back({button, row[0].number, title, filter});
        row.push_back({button, Field_Kind::push_button, "..."});
        return row;
    }
    // Fewer values than the preference can have.
    Dialog_Field Narrowed(Dialog_Field field, int lo, int hi) {
        form.fields.back().lo = field.lo = lo;
        form.fields.back().hi = field.hi = hi;
        return field;
    }

    Preferences_Form form;

private:
    Dialog_Field Made(const Preference& preference, const char* label, std::string name, const Menu_Values& menu) {
        const int tab = Tab_Of(preference.page);
        const int number = first_field + fields_a_page * tab + ++fields_on_page_[static_cast<std::size_t>(tab - 1)];
        const Field_Kind kind = Kind_Of(preference, menu);
        form.fields.push_back({number, std::move(name), &preference, kind, menu, preference.lo, preference.hi});
        return {.number = number,
                .kind = kind,
                .label = label,
                .width = kind == Field_Kind::string ? title_width : 0,
                .lo = preference.lo,
                .hi = preference.hi,
                .choices = {menu.texts.begin(), menu.texts.end()}};
    }

    std::array<int, tabs.size()> fields_on_page_{};
    int texts_ = first_text;
};

Dialog_Field Section(std::string title, Rows rows) {
    return {.kind = Field_Kind::frame, .label = std::move(title), .pages = {{.rows = std::move(rows)}}};
}

// --- pages -------------------------------------------------------------------------------------------------------------------------

Dialog_Page Environment_Page(Builder& build) {
    constexpr const char* programs = "Programs files|*.exe;*|";
    const auto program = [&](const char* name, const char* label, const char* title) { return build.Path(name, label, title, programs); };
    const Rows suite = {
        build.Path("quendrix_dir", "Path Quendrix", "Select Quendrix Directory", ""),
        build.Path("prg_refine", "Quendrix exe", "Select Quendrix Executable file", "Input executable Quendrix File |*.exe|")};
    const Rows utilities = {program("cmd_editor", "Text editor", "Select text editor program"),
                            program("cmd_browser", "Web navigator", "Select web navigator program"),
                            program("cmd_pdf", "PDF reader", "Select PDF reader program"),
                            program("cmd_cif_viewer", "CIF viewer", "Select CIF viewer program"),
                            program("cmd_ps_viewer", "PS viewer", "Select PS viewer program"),
                            program("cmd_unzip", "Compression", "Select Compression program"),
                            {build.Of("cmd_run", "Prefix command for invoking console programs")}};
    return {"Environment",
            {{Section(" Quendrix Suite context", suite)},
             {Section(" Program utilities", utilities)},
             {build.Of("always_save_context", "Always save context"), build.Of("use_internal_editor", "Use internal text editor")}}};
}

// One text of the plot: what it has besides font, style and size differs.
Row Row_Of_Text(Builder& build, const char* shown, const std::string& preference, bool coloured, Dialog_Field place) {
    const auto field = [&](const char* member, const char* label, const Menu_Values& menu = {}) {
        return build.In_Row(shown, preference + member, label, menu);
    };
    return {build.Text(shown),
            coloured ? field("_colour", "Colour") : build.Text({}),
            std::move(place),
            field("_font", "Font", menu_of_fonts),
            field("_style", "Style", menu_of_text_styles),
            field("_size", "Size")};
}

Dialog_Page Graphic_2D_Page(Builder& build) {
    const auto placed = [&](const char* shown, const std::string& preference, bool coloured, const Menu_Values& menu) {
        return Row_Of_Text(build, shown, preference, coloured, build.In_Row(shown, preference + "_pos", "Position", menu));
    };
    const auto scale = [&](const char* shown, const std::string& preference) {
        return Row_Of_Text(build, shown, preference, true, build.In_Row(shown, preference + "_format", "Format"));
    };
    const Rows frame = {{build.Of("frame_background", "Background"), build.Of("frame_foreground", "Foreground")}};
    const Rows texts = {build.Headings({"", "Colour", "Position", "Font", "Style", "Size"}), placed("Title", "title", true, menu_of_places),
                        placed("Label X", "xlabel", true, menu_of_places), placed("Label Y", "ylabel", true, menu_of_y_places),
                        placed("Legend", "legend", false, menu_of_legend_places)};
    const Rows scales = {build.Headings({"", "Colour", "Format", "Font", "Style", "Size"}), scale("Scale X", "xscale"),
                         scale("Scale Y", "yscale")};
    const Rows titles = {{build.Of("title_single", "Title for graph single file")},
                         {build.Of("title_multi", "Title for graph multi file")}};
    return {"Graphic 2D",
            {{Section("Frame Graph 2D", frame)},
             {Section("Title and Axes Graph 2D", texts)},
             {Section("Scales Graph 2D", scales)},
             {Section("Title graph 2D", titles)}}};
}

Dialog_Page Graphic_3D_Page(Builder& build) {
    return {"Graphic 3D",
            {{Section("Frame Graph 3D", {{build.Of("graph3d_background", "Background")}})},
             {Section("Title graph 3D", {{build.Of("graph3d_title", "Title for graph multi file 3D")}})}}};
}

Dialog_Page Surface_Page(Builder& build) {
    const Rows colours = {{build.Of("surface_background", "Background"), build.Of("surface_lattice", "Lattice"),
                           build.Of("surface_min_colour", "Minimun Z"), build.Of("surface_max_colour", "Maximum Z")}};
    return {"Graphic 3D Surf",
            {{Section("Frame Graph 3D surface", colours)},
             {Section("Surface", {{build.Of("surface_type", "Type graph", menu_of_surface_types)}})},
             {Section("Title graph 3D surface", {{build.Of("surface_title", "Title for graph multi file 3D surface")}})}}};
}

// Two sections side by side, with a line a slot in both.
Dialog_Page Profiles_Data_Page(Builder& build) {
    Rows lines = {build.Headings({"", "Colour", "Style", "Pitch"})}, markers = {build.Headings({"", "Colour", "Type", "Size", "Match"})};
    for (int slot = 1; slot <= profile_style_slots; ++slot) {
        const std::string number = std::to_string(slot), path = "profile_styles/" + number + '/';
        const auto line = [&](const char* member, const char* label, const Menu_Values& menu = {}) {
            return build.In_Row("Line " + number, path + member, label, menu);
        };
        const auto marker = [&](const char* member, const char* label, const Menu_Values& menu = {}) {
            return build.In_Row("Marker " + number, path + member, label, menu);
        };
        lines.push_back({build.Text(number), line("line_colour", "Colour"), line("line_style", "Style", menu_of_line_styles),
                         line("line_pitch", "Pitch")});
        markers.push_back({build.Text(number), marker("marker_colour", "Colour"), marker("marker_type", "Type", menu_of_markers),
                           marker("marker_size", "Size"), marker("match_colours", "Match")});
    }
    return {"Profiles Data", {{Section("Line preferences", lines), Section("Marker preferences", markers)}}};
}

Dialog_Page Profile_Prf_Page(Builder& build) {
    const auto curve = [&](const char* shown, const std::string& preference) {
        const auto field = [&](const char* member, const char* label, const Menu_Values& menu = {}) {
            return build.In_Row(shown, preference + member, label, menu);
        };
        return Row{build.Text(shown),
                   field("_colour", "Colour"),
                   field("_style", "Style", menu_of_prf_line_styles),
                   field("_pitch", "Pitch"),
                   field("_marker", "Marker", menu_of_markers),
                   field("_marker_size", "Size")};
    };
    const Rows curves = {build.Headings({"", "Colour", "Style", "Pitch", "Marker", "Size"}), curve("Ycalc", "ycalc"),
                         curve("Ydif", "ydif")};
    const Rows reflexions = {
        {build.Of("refl_colour", "Colour"), build.Of("refl_pitch", "Pitch"), build.Of("refl_live", "Enable Live mode  Reflexions")}};
    const Rows excluded = {{build.Of("excl_show", "Show exclude regions")},
                           {build.Of("excl_colour", "Colour"), build.Of("excl_match", "Match color with foreground")},
                           {build.Of("excl_ignore_sides", "Ignore exclude region at sides")}};
    const Rows head = {{build.Text("Profile PRF :"),
                        {prf_file_field, Field_Kind::label},
                        build.Text("    Line of Profiles Data :"),
                        {prf_style_field, Field_Kind::label}}};
    return {"Profile PRF",
            {{Section({}, head)},
             {Section(" Ycalc / Ydif preferences .", curves)},
             {Section(" Reflexions preferences .", reflexions)},
             {Section("Exclude regions preferences", excluded)},
             {Section("Axe Y", {{build.Of("hide_negative", "Hide negative values")}})}}};
}

Dialog_Page Quick_View_Page(Builder& build) {
    return {"QuickView PRF",
            {{Section("Frame QuickView", {{build.Of("qv_background", "Background"), build.Of("qv_foreground", "Foreground")}})},
             {Section("Exclude regions QuickView", {{build.Of("qv_excl_match", "Exclude regions in the colour of the foreground")}})}}};
}

Dialog_Page Contour_Page(Builder& build) {
    const Rows colours = {{build.Of("contour_background", "Background"), build.Of("contour_foreground", "Foreground"),
                           build.Of("contour_min_colour", "Minimun Z"), build.Of("contour_max_colour", "Maximum Z")}};
    constexpr int finest = 50, grossest = 3, columns = 10;
    const Rows type = {{build.Of("contour_type", "Type graph", menu_of_contour_types)}};
    Rows custom = {{build.Of("contour_levels", "# Levels", menu_of_level_counts),
                    build.Narrowed(build.Of("contour_granularity", "Granularity"), grossest, finest)}};
    Row line;
    for (int band = 1; band <= contour_colours; ++band) {
        line.push_back(build.Of("contour_palette/" + std::to_string(band), ("C" + std::to_string(band)).c_str()));
        if (band % columns == 0) custom.push_back(std::exchange(line, {}));
    }
    const Rows saturation = {{build.Of("saturation_on", "Apply Saturation Value")},
                             {build.Of("saturation_value", "Saturation Value (counts)")}};
    return {"Graph 2D contour",
            {{Section("Frame Graph 2D contour", colours)},
             {Section("Contour", type)},
             {Section("Fill custom", custom)},
             {Section("Saturation", saturation)},
             {Section("Title graph 2D contour", {{build.Of("contour_title", "Title for graph multi file 2D contour")}})}}};
}

Preferences_Form Built_Form() {
    Builder build;
    std::vector<Dialog_Page> pages;
    for (const auto page : {Environment_Page, Graphic_2D_Page, Graphic_3D_Page, Surface_Page, Profiles_Data_Page, Profile_Prf_Page,
                            Quick_View_Page, Contour_Page})
        pages.push_back(page(build));
    build.form.resource = {preferences_dialog,
                           "Preferences",
                           {{{.number = pages_field, .kind = Field_Kind::tab, .label = "Pages", .pages = std::move(pages)}},
                            {{told_field, Field_Kind::label}},
                            {{save_global_button, Field_Kind::push_button, "Save &global preferences"},
                             {save_local_button, Field_Kind::push_button, "Save &local pref."},
                             {load_local_button, Field_Kind::push_button, "L&oad local pref."},
                             {apply_button, Field_Kind::push_button, "&Apply"},
                             {exit_button, Field_Kind::push_button, "E&xit"}}}};
    return std::move(build.form);
}

}  // namespace

const Preference_Field* Preferences_Form::With_Number(int number) const {
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const Preference_Field& field) { return field.number == number; });
    return found == fields.end() ? nullptr : &*found;
}

int Preferences_Form::Number_Of(std::string_view name) const {
    for (const Preference_Field& field : fields)
        if (field.preference->name == name) return field.number;
    return 0;
}

const Preferences_Form& The_Preferences_Form() {
    static const Preferences_Form form = Built_Form();
    return form;
}

int Tab_Of(Preference_Page page) { return static_cast<int>(std::find(tabs.begin(), tabs.end(), page) - tabs.begin()) + 1; }

}  // namespace vntl
