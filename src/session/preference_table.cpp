#include "session/preference_table.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/text.hpp"

namespace vntl {

namespace {

using Page = Preference_Page;

// The member at the end of a path: At<&Preferences::window, &Window_Prefs::win_width>.
template <auto... path>
Preference_Target At(Preferences& prefs) {
    return &(prefs.*....*path);
}

constexpr int largest_size = 1000;
constexpr int plot_title_width = 50;

// --- the rows ----------------------------------------------------------------------------------------------------------------------

void Add_Window(std::vector<Preference>& table) {
    constexpr auto window = &Preferences::window;
    const std::vector<Preference> rows = {
        {"win_width", At<window, &Window_Prefs::win_width>, 800, 1, largest_window_side, {4, 1}, {}, "i5", Page::none, true},
        {"win_height", At<window, &Window_Prefs::win_height>, 500, 1, largest_window_side, {4, 2}, {}, "i5", Page::none, true},
        {"colour_a", At<window, &Window_Prefs::colour_a>, WRGB(130, 200, 130), 0, 0, {4, 3}, {}, "i10", Page::none, true},
        {"colour_b", At<window, &Window_Prefs::colour_b>, WRGB(0, 0, 255), 0, 0, {4, 4}, {}, "i10", Page::none, true},
        {"keep_settings", At<window, &Window_Prefs::keep_settings>, true, 0, 1, {4, 5}, {}, "l3", Page::none, true},
    };
    table.insert(table.end(), rows.begin(), rows.end());
}

// The twelve slots, in a cycle of six colours.
void Add_Styles(std::vector<Preference>& table) {
    constexpr std::array<Colour, 6> cycle = {WRGB(255, 0, 0), WRGB(0, 0, 255),   WRGB(255, 255, 0),
                                             WRGB(0, 255, 0), WRGB(255, 0, 255), WRGB(0, 255, 255)};
    constexpr int first_line = 17;
    for (int slot = 0; slot < profile_style_slots; ++slot) {
        const auto index = static_cast<std::size_t>(slot);
        const Colour colour = cycle[index % cycle.size()];
        int item = 0;
        const auto add = [&](const char* name, auto member, Preference_Value standard, int lo, int hi, std::string_view edit) {
            const auto target = [index, member](Preferences& prefs) -> Preference_Target { return &(prefs.profile_styles[index].*member); };
            const std::string path = "profile_styles/" + std::to_string(slot + 1) + '/' + name;
            table.push_back({path, target, std::move(standard), lo, hi, {first_line + slot, ++item}, {}, edit, Page::profiles_data});
        };
        add("line_colour", &ProfileStyle::line_colour, colour, 0, 0, "i10");
        add("line_style", &ProfileStyle::line_style, 0, -1, 4, "i10");
        add("line_pitch", &ProfileStyle::line_pitch, 1, 1, 5, "i10");
        add("marker_colour", &ProfileStyle::marker_colour, colour, 0, 0, "i10");
        add("marker_type", &ProfileStyle::marker_type, 2, 1, 8, "i10");
        add("marker_size", &ProfileStyle::marker_size, 5, 1, largest_size, "i10");
        add("match_colours", &ProfileStyle::match_colours, true, 0, 1, "l3");
    }
}

// What the texts of a plot do not share. A text without a place on the page has no positions, one without a colour in the file no line
// item.
struct Text_Row {
    const char* name;
    Text_Prefs Graph2D_Prefs::*text;
    int line;
    int pos, positions;
    Colour colour;
    int size;
    bool colour_in_file, pos_in_file;
};
constexpr Text_Row text_rows[] = {
    {"title", &Graph2D_Prefs::title, 33, 3, 4, WRGB(128, 0, 64), 20, true, true},
    {"xlabel", &Graph2D_Prefs::xlabel, 34, 3, 4, WRGB(0, 64, 128), 15, true, true},
    {"ylabel", &Graph2D_Prefs::ylabel, 35, 7, 10, WRGB(0, 64, 128), 15, true, true},
    {"legend", &Graph2D_Prefs::legend, 36, 3, 4, 0, 10, false, true},
    {"xscale", &Graph2D_Prefs::xscale, 37, 0, 0, 0, 12, true, false},
    {"yscale", &Graph2D_Prefs::yscale, 38, 0, 0, 0, 12, true, false},
};

// In the file a line holds colour, position (of a scale its format), font, style and size; that of the legend has no colour.
void Add_Texts(std::vector<Preference>& table) {
    for (const Text_Row& row : text_rows) {
        const int second = row.colour_in_file ? 2 : 1;
        const auto add = [&](const char* name, auto member, Preference_Value standard, int lo, int hi, int item) {
            const auto target = [text = row.text, member](Preferences& prefs) -> Preference_Target {
                return &(prefs.graph2d.*text.*member);
            };
            const Settings_Place place = item == 0 ? Settings_Place{} : Settings_Place{row.line, item};
            table.push_back({std::string(row.name) + name, target, std::move(standard), lo, hi, place, {}, "i10", Page::graph_2d});
        };
        add("_pos", &Text_Prefs::pos, row.pos, row.positions == 0 ? 0 : 1, row.positions, row.pos_in_file ? second : 0);
        add("_font", &Text_Prefs::font, 1, 1, 4, second + 1);
        add("_style", &Text_Prefs::style, 1, 1, 9, second + 2);
        add("_size", &Text_Prefs::size, row.size, 1, largest_size, second + 3);
        add("_colour", &Text_Prefs::colour, row.colour, 0, 0, row.colour_in_file ? 1 : 0);
    }
}

void Add_Graph_2D(std::vector<Preference>& table) {
    constexpr auto graph = &Preferences::graph2d;
    using G = Graph2D_Prefs;
    const std::vector<Preference> head = {
        {"frame_background", At<graph, &G::frame_background>, WRGB(150, 200, 150), 0, 0, {32, 1}, {}, "i10", Page::graph_2d},
        {"frame_foreground", At<graph, &G::frame_foreground>, WRGB(235, 235, 235), 0, 0, {32, 2}, {}, "i10", Page::graph_2d},
        {"title_single", At<graph, &G::title_single>, std::string(), 0, plot_title_width, {30, 1}, {}, "a", Page::graph_2d},
        {"title_multi", At<graph, &G::title_multi>, std::string("Plot multi file"), 0, plot_title_width, {31, 1}, {}, "a", Page::graph_2d},
    };
    const std::vector<Preference> foot = {
        {"xscale_format", At<graph, &G::xscale_format>, 0, 0, 99, {37, 2}, {}, "i10", Page::graph_2d},
        {"yscale_format", At<graph, &G::yscale_format>, 0, 0, 99, {38, 2}, {}, "i10", Page::graph_2d},
    };
    table.insert(table.end(), head.begin(), head.end());
    Add_Texts(table);
    table.insert(table.end(), foot.begin(), foot.end());
}

void Add_Prf(std::vector<Preference>& table) {
    constexpr auto prf = &Preferences::prf;
    using P = PRF_Prefs;
    const std::vector<Preference> rows = {
        {"ycalc_colour", At<prf, &P::ycalc_colour>, WRGB(0, 0, 0), 0, 0, {40, 1}, {}, "i10", Page::profile_prf},
        {"ycalc_style", At<prf, &P::ycalc_style>, 0, 0, 4, {40, 2}, {}, "i10", Page::profile_prf},
        {"ycalc_pitch", At<prf, &P::ycalc_pitch>, 1, 1, 5, {40, 3}, {}, "i10", Page::profile_prf},
        {"ycalc_marker", At<prf, &P::ycalc_marker>, 2, 1, 8, {40, 4}, {}, "i10", Page::profile_prf},
        {"ycalc_marker_size", At<prf, &P::ycalc_marker_size>, 5, 1, largest_size, {40, 5}, {}, "i10", Page::profile_prf},
        {"ydif_colour", At<prf, &P::ydif_colour>, WRGB(0, 0, 255), 0, 0, {41, 1}, {}, "i10", Page::profile_prf},
        {"ydif_style", At<prf, &P::ydif_style>, 0, 0, 4, {41, 2}, {}, "i10", Page::profile_prf},
        {"ydif_pitch", At<prf, &P::ydif_pitch>, 1, 1, 5, {41, 3}, {}, "i10", Page::profile_prf},
        {"ydif_marker", At<prf, &P::ydif_marker>, 2, 1, 8, {41, 4}, {}, "i10", Page::profile_prf},
        {"ydif_marker_size", At<prf, &P::ydif_marker_size>, 5, 1, largest_size, {41, 5}, {}, "i10", Page::profile_prf},
        {"refl_colour", At<prf, &P::refl_colour>, WRGB(0, 128, 0), 0, 0, {42, 1}, {}, "i10", Page::profile_prf},
        {"refl_pitch", At<prf, &P::refl_pitch>, 1, 1, 5, {42, 2}, {}, "i10", Page::profile_prf},
        {"excl_colour", At<prf, &P::excl_colour>, WRGB(192, 192, 192), 0, 0, {32, 3}, {43, 1}, "i10", Page::profile_prf},
        {"refl_live", At<prf, &P::refl_live>, false, 0, 1, {42, 3}, {}, "l3", Page::profile_prf},
        {"excl_show", At<prf, &P::excl_show>, true, 0, 1, {32, 4}, {43, 2}, "l3", Page::profile_prf},
        {"excl_match", At<prf, &P::excl_match>, true, 0, 1, {43, 4}, {}, "l3", Page::profile_prf},
        {"excl_ignore_sides", At<prf, &P::excl_ignore_sides>, false, 0, 1, {43, 3}, {}, "l3", Page::profile_prf},
        {"hide_negative", At<prf, &P::hide_negative>, true, 0, 1, {43, 5}, {}, "l3", Page::profile_prf},
    };
    table.insert(table.end(), rows.begin(), rows.end());
}

void Add_Contour(std::vector<Preference>& table) {
    constexpr auto contour = &Preferences::contour;
    using C = Contour_Prefs;
    constexpr int title_width = 180, largest_count = 1000;
    const std::vector<Preference> rows = {
        {"contour_title",
         At<contour, &C::contour_title>,
         std::string("Plot 2D contour multi file"),
         0,
         title_width,
         {45, 1},
         {},
         "a",
         Page::contour},
        {"contour_background", At<contour, &C::contour_background>, WRGB(214, 214, 214), 0, 0, {46, 1}, {}, "i10", Page::contour},
        {"contour_foreground", At<contour, &C::contour_foreground>, WRGB(255, 255, 202), 0, 0, {46, 2}, {}, "i10", Page::contour},
        {"contour_min_colour", At<contour, &C::contour_min_colour>, WRGB(50, 50, 235), 0, 0, {46, 3}, {}, "i10", Page::contour},
        {"contour_max_colour", At<contour, &C::contour_max_colour>, WRGB(235, 50, 50), 0, 0, {46, 4}, {}, "i10", Page::contour},
        {"contour_type", At<contour, &C::contour_type>, 1, 1, 5, {47, 1}, {}, "i10", Page::contour},
        {"contour_levels", At<contour, &C::contour_levels>, 20, 0, largest_count, {47, 2}, {}, "i10", Page::contour},
        {"contour_granularity", At<contour, &C::contour_granularity>, 30, 0, largest_count, {47, 3}, {}, "i10", Page::contour},
    };
    table.insert(table.end(), rows.begin(), rows.end());
    // From the least band upward.
    constexpr std::array<Colour, contour_colours> palette = {0xBF0000, 0xFB0000, 0xFF1717, 0xFF3E3E, 0xB8831F, 0xD6B04E, 0xFF8080,
                                                             0xDEDE03, 0xD5FE67, 0xA9F50A, 0x80F50A, 0x21F810, 0x12DE87, 0x35F7C7,
                                                             0x00EAEA, 0x00FFFF, 0x3E3EFF, 0x3C3CFF, 0x0000FF, 0x0000DF};
    for (int band = 0; band < contour_colours; ++band) {
        const auto index = static_cast<std::size_t>(band);
        const auto target = [index](Preferences& prefs) -> Preference_Target { return &prefs.contour.contour_palette[index]; };
        table.push_back(
            {"contour_palette/" + std::to_string(band + 1), target, palette[index], 0, 0, {48, band + 1}, {}, "i10", Page::contour});
    }
    table.push_back({"saturation_on", At<&Preferences::saturation, &Saturation::saturation_on>, false, 0, 1, {}, {}, {}, Page::contour});
    table.push_back(
        {"saturation_value", At<&Preferences::saturation, &Saturation::saturation_value>, 1e6f, 0, 0, {}, {}, {}, Page::contour});
}

void Add_Graphs_3D(std::vector<Preference>& table) {
    constexpr auto graph = &Preferences::graph3d;
    constexpr auto surface = &Preferences::surface;
    using S = Surface_Prefs;
    constexpr int title_width = 150;
    const std::vector<Preference> rows = {
        {"graph3d_title",
         At<graph, &Graph3D_Prefs::graph3d_title>,
         std::string("Plot 3D multi file"),
         0,
         title_width,
         {50, 1},
         {},
         "a",
         Page::graph_3d},
        {"graph3d_background",
         At<graph, &Graph3D_Prefs::graph3d_background>,
         WRGB(220, 200, 253),
         0,
         0,
         {51, 1},
         {},
         "i10",
         Page::graph_3d},
        {"surface_title",
         At<surface, &S::surface_title>,
         std::string("Plot 3D surface multi file"),
         0,
         title_width,
         {53, 1},
         {},
         "a",
         Page::surface_3d},
        {"surface_background", At<surface, &S::surface_background>, WRGB(193, 193, 132), 0, 0, {54, 1}, {}, "i10", Page::surface_3d},
        {"surface_lattice", At<surface, &S::surface_lattice>, WRGB(198, 255, 198), 0, 0, {54, 2}, {}, "i10", Page::surface_3d},
        {"surface_min_colour", At<surface, &S::surface_min_colour>, WRGB(128, 0, 0), 0, 0, {54, 3}, {}, "i10", Page::surface_3d},
        {"surface_max_colour", At<surface, &S::surface_max_colour>, WRGB(255, 255, 0), 0, 0, {54, 4}, {}, "i10", Page::surface_3d},
        {"surface_type", At<surface, &S::surface_type>, 1, 1, 4, {55, 1}, {}, "i10", Page::surface_3d},
    };
    table.insert(table.end(), rows.begin(), rows.end());
}

void Add_Quick_View(std::vector<Preference>& table) {
    constexpr auto view = &Preferences::quick_view;
    using Q = Quick_View_Prefs;
    const std::vector<Preference> rows = {
        {"qv_background", At<view, &Q::qv_background>, WRGB(164, 202, 246), 0, 0, {57, 1}, {}, "i10", Page::quick_view},
        {"qv_foreground", At<view, &Q::qv_foreground>, WRGB(255, 255, 255), 0, 0, {57, 2}, {}, "i10", Page::quick_view},
        {"qv_excl_match", At<view, &Q::qv_excl_match>, true, 0, 1, {58, 1}, {}, "l3", Page::quick_view},
        {"qv_excl_colour", At<view, &Q::qv_excl_colour>, WRGB(192, 192, 192), 0, 0, {59, 1}, {}, "i10", Page::quick_view},
    };
    table.insert(table.end(), rows.begin(), rows.end());
}

// The programs are those of the operating system, which the start of the program puts in their places.
void Add_Environment(std::vector<Preference>& table) {
    constexpr auto environment = &Preferences::environment;
    using E = Environment_Prefs;
    constexpr int directory_width = 512, command_width = 200, program_width = 30;
    const auto text = [&table](const char* name, auto target, int width, int line) {
        table.push_back({name, target, std::string(), 0, width, {line, 1}, {}, "a", Page::environment, true});
    };
    table.push_back({"always_save_context", At<environment, &E::always_save_context>, false, 0, 1, {6, 1}, {}, "l3", Page::environment});
    table.push_back({"use_internal_editor", At<environment, &E::use_internal_editor>, true, 0, 1, {6, 2}, {}, "l3", Page::environment});
    text("quendrix_dir", At<environment, &E::quendrix_dir>, directory_width, 7);
    text("cmd_editor", At<environment, &E::cmd_editor>, command_width, 8);
    text("cmd_browser", At<environment, &E::cmd_browser>, command_width, 9);
    text("cmd_pdf", At<environment, &E::cmd_pdf>, command_width, 10);
    text("cmd_cif_viewer", At<environment, &E::cmd_cif_viewer>, command_width, 11);
    text("cmd_ps_viewer", At<environment, &E::cmd_ps_viewer>, command_width, 12);
    text("cmd_unzip", At<environment, &E::cmd_unzip>, command_width, 13);
    text("prg_refine", At<environment, &E::prg_refine>, program_width, 14);
    text("cmd_run", At<environment, &E::cmd_run>, program_width, 15);
}

// --- values as texts -----------------------------------------------------------------------------------------------------------------

std::optional<bool> Logical_Of(std::string_view text) {
    if (text == "1" || text == "true") return true;
    if (text == "0" || text == "false") return false;
    return {};
}

// A control character would break the line of the settings file, or of the plot.
bool Is_One_Line(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](unsigned char c) { return c < ' '; });
}

Status Refused(const Preference& p, std::string_view text, const std::string& wanted) {
    return Status::Fail("\"" + std::string(text) + "\" is no value of " + p.name + ", which is " + wanted);
}

struct Setter {
    const Preference& preference;
    std::string_view text;

    Status operator()(int* value) const {
        int number = 0;
        if (!Parse_Integer(text, number) || number < preference.lo || number > preference.hi)
            return Refused(preference, text,
                           "a whole number from " + std::to_string(preference.lo) + " to " + std::to_string(preference.hi));
        *value = number;
        return Status::Done();
    }
    Status operator()(float* value) const {
        double number = 0;
        if (!Parse_Real(text, number) || !std::isfinite(static_cast<float>(number))) return Refused(preference, text, "a number");
        *value = static_cast<float>(number);
        return Status::Done();
    }
    Status operator()(bool* value) const {
        const std::optional<bool> logical = Logical_Of(text);
        if (!logical) return Refused(preference, text, "0 or 1");
        *value = *logical;
        return Status::Done();
    }
    Status operator()(Colour* value) const {
        const std::optional<Colour> colour = Colour_Of_Text(text);
        if (!colour) return Refused(preference, text, "a colour: red + 256 green + 65536 blue, or red,green,blue");
        *value = *colour;
        return Status::Done();
    }
    Status operator()(std::string* value) const {
        std::string line = To_Utf8(text);
        if (Characters(line) > static_cast<std::size_t>(preference.hi) || !Is_One_Line(line))
            return Refused(preference, line, "one line of at most " + std::to_string(preference.hi) + " characters");
        *value = std::move(line);
        return Status::Done();
    }
};

void To_Default(const Preference& preference, Preferences& prefs) {
    std::visit([&](auto* value) { *value = std::get<std::remove_pointer_t<decltype(value)>>(preference.standard); },
               preference.target(prefs));
}

}  // namespace

std::optional<Colour> Colour_Of_Text(std::string_view text) {
    std::array<int, 3> parts{};
    int one = 0;
    constexpr int largest = 0xffffff;
    if (Parse_Integer(text, one)) return one >= 0 && one <= largest ? std::optional(static_cast<Colour>(one)) : std::nullopt;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::size_t comma = i + 1 < parts.size() ? text.find(',') : text.size();
        if (comma == std::string_view::npos || !Parse_Integer(Trim(text.substr(0, comma)), parts[i]) || parts[i] < 0 || parts[i] > 255)
            return {};
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return WRGB(static_cast<unsigned>(parts[0]), static_cast<unsigned>(parts[1]), static_cast<unsigned>(parts[2]));
}

const std::vector<Preference>& Preference_Table() {
    static const std::vector<Preference> table = [] {
        std::vector<Preference> rows;
        for (const auto add : {Add_Window, Add_Styles, Add_Graph_2D, Add_Prf, Add_Contour, Add_Graphs_3D, Add_Quick_View, Add_Environment})
            add(rows);
        return rows;
    }();
    return table;
}

const Preference* Find_Preference(std::string_view name) {
    for (const Preference& preference : Preference_Table())
        if (preference.name == name) return &preference;
    return nullptr;
}

Preference_Value Value_Of(const Preference& preference, const Preferences& prefs) {
    // A target is for writing too; here it is only read.
    return std::visit([](const auto* value) { return Preference_Value(*value); }, preference.target(const_cast<Preferences&>(prefs)));
}

Status Set_Preference(Preferences& prefs, std::string_view name, std::string_view text) {
    const Preference* preference = Find_Preference(name);
    if (preference == nullptr) return Status::Fail("there is no preference " + std::string(name));
    return std::visit(Setter{*preference, text}, preference->target(prefs));
}

Preferences::Preferences() {
    for (const Preference& preference : Preference_Table()) To_Default(preference, *this);
}

void Set_Default_Preferences(Preferences& prefs) {
    for (const Preference& preference : Preference_Table())
        if (!preference.kept) To_Default(preference, prefs);
}

}  // namespace vntl
