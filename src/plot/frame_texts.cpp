#include "plot/frame_texts.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/conversions.hpp"
#include "base/text.hpp"
#include "plot/curve_style.hpp"
#include "plot/fitted_frame.hpp"
#include "plot/fitted_legend.hpp"
#include "plot/grid_map.hpp"
#include "plot/text_style.hpp"
#include "session/desk/overlay_place.hpp"
#include "session/desk/pattern_list.hpp"

namespace vntl {

namespace {

constexpr std::array<char, 5> along_x = {'N', 'N', 'L', 'C', 'R'};  // by the code of title and x label
constexpr std::array<std::string_view, 11> along_y = {"--", "--", "TV", "TR", "T9", "CV", "CR", "C9", "BV", "BR", "B9"};
constexpr std::array<float, 5> legend_x = {0, 0, 0.18f, 0.7f, 0.87f};  // fractions of the page's width: in left, in right, out right

constexpr int no_text = 1;  // code of "-none-"
constexpr std::size_t least_own_title = 5;
constexpr int legend_profiles = 32;  // with more there is no legend
constexpr float legend_top = 0.8f, legend_step = 0.02f;
constexpr float least_chi2 = 0.0001f;
constexpr float page_edge = 8, symbol_room = 40;  // page units that a legend text keeps from the right edge, and after its x
constexpr float frame_gap = 2;                    // and from the frame, inside it
constexpr int legend_in_right = 3;
constexpr int least_title_size = 12;  // that of the numbers of the scales

template <class T, std::size_t N>
T Entry(const std::array<T, N>& table, int code) {
    return code >= 0 && code < static_cast<int>(N) ? table[static_cast<std::size_t>(code)] : table[0];
}

std::string_view Title_Of_Row(const Diffraction_Pattern_Type& pattern) {
    const std::string_view title = pattern.title;
    return Trim(title.substr(0, title.find("CELL:")));
}

std::string_view Title_Text(const Scene& scene, int n) {
    const Graph2D_Prefs& prefs = scene.prefs.graph2d;
    if (n >= 2) return Trim(prefs.title_multi);
    const std::string_view own = Trim(prefs.title_single);
    return own.size() >= least_own_title ? own : Title_Of_Row(scene.store.Pattern(n));
}

// Covers the numbers of the y scale below the data's zero: a refined profile's ticks and difference curve lie there.
void Hide_Negative_Numbers(const Plot_Zone& zone, const Graph2D_Prefs& prefs, Presentation& p, const View& window) {
    Graphics& g = p.graphics();
    float gx = 0, zero = 0;
    p.IPgUnitsToGrUnits(window.x1, 0, gx, zero);
    const float foot = zone.y1 * page_height;
    if (!(zero > foot)) return;
    g.IGrColourN(prefs.frame_background);
    g.IGrFillPattern(fill_solid);
    g.IGrRectangle(0, 0.9f * foot, zone.x1 * page_width, 0.9f * std::min(zero, page_height));
}

// Where the legend begins. Inside the frame's right side it goes to the left as far as its longest name needs, so that none crosses the
// frame.
float Legend_X(const Scene& scene, const Graphics& g, int n) {
    const float x = Entry(legend_x, scene.prefs.graph2d.legend.pos) * page_width;
    if (scene.prefs.graph2d.legend.pos != legend_in_right) return x;
    float longest = 0;
    for (int row = 1; row <= n; ++row) longest = std::max(longest, g.Text_Width(Row_Name(scene.store, row)));
    const float inside = scene.zone.x2 * page_width - frame_gap - symbol_room - longest;
    return std::min(x, std::max(inside, scene.zone.x1 * page_width + page_edge));
}

std::string Logarithm_Of(std::string_view title) {
    constexpr std::string_view mark = "Log(";
    title = Trim(title);
    return title.starts_with(mark) ? std::string(title) : std::string(mark) + std::string(title) + ')';
}

std::string Root_Of(std::string_view title) { return "Sqrt(" + std::string(Trim(title)) + ')'; }

Axis_Scale Axis_Scale_Of(const Scene& scene) {
    if (!scene.look.count_ticks || scene.plot.Scale() == Y_Scale::linear) return Axis_Scale::even;
    return scene.plot.Scale() == Y_Scale::root ? Axis_Scale::root : Axis_Scale::logarithm;
}

// The title of an axis whose numbers are those of the scale tells of it.
std::string Title_On_Scale(const Scene& scene, std::string_view title) {
    if (scene.look.count_ticks || scene.plot.Scale() == Y_Scale::linear) return std::string(Trim(title));
    return scene.plot.Scale() == Y_Scale::root ? Root_Of(title) : Logarithm_Of(title);
}

Fitted_Frame Frame_Of(const Scene& scene, Graphics& g, int n, const View& window, std::string_view y_title) {
    const Graph2D_Prefs& prefs = scene.prefs.graph2d;
    Frame_Content content;
    if (n >= 1) content.title = Title_Text(scene, n);
    content.x_label = Trim(scene.plot.xlabel_text);
    content.y_label = Title_On_Scale(scene, y_title);
    if (window.Drawable()) content.window = window;
    content.y_scale = Axis_Scale_Of(scene);
    if (scene.store.prf_loaded && scene.prefs.prf.hide_negative) content.numbers_from = 0;
    if (Part_Of_Band(scene.store, scene.plot, scene.look) > 0)
        content.numbers_from = std::max<double>(content.numbers_from, Foot_Of_Data(scene.store, scene.plot, scene.look));
    content.beside = Fitted_Legend(scene, n, g.device()).Beside();
    return {std::move(content), scene.look, prefs, prefs.frame_background, g.device()};
}

bool Has_Legend(const Scene& scene) { return scene.prefs.graph2d.legend.pos != no_text && scene.store.nperfiles() <= legend_profiles; }

bool Tells_Chi2(const Scene& scene, int row) { return scene.store.prf_loaded && scene.store.Info(row).chi2 > least_chi2; }

// chi2 as a blank and eight columns with four decimals; stars where it does not fit.
std::string Chi2_Text(float chi2) { return IRealToString(chi2, "(1X,F8.4)"); }

// The font of the preference, or the largest smaller one in which the text has room, but none that is hard to read.
void Select_Shrunk(Graphics& g, Text_Prefs prefs, std::string_view text, float room) {
    for (Select_Text(g, prefs); prefs.size > least_title_size && g.Text_Width(text) > room; Select_Text(g, prefs)) --prefs.size;
}

}  // namespace

char Along_X(int code) { return Entry(along_x, code); }
std::string_view Y_Label_Place(int code) { return Entry(along_y, code); }

void Page_Units(Graphics& g) {
    g.IGrArea(0, 0, 1, 1);
    g.IGrUnits(0, 0, page_width, page_height);
}

void Draw_Page(const Plot_Zone& zone, Presentation& p, Colour background, Colour foreground) {
    Graphics& g = p.graphics();
    Page_Units(g);
    p.IPgArea(zone.x1, zone.y1, zone.x2, zone.y2);
    g.IGrPaletteBack(background);
    g.IGrClear();
    g.IGrFillPattern(fill_solid);
    g.IGrColourN(foreground);
    g.IGrRectangle(zone.x1 * page_width, zone.y1 * page_height, zone.x2 * page_width, zone.y2 * page_height);
}

void Write_Title(const Text_Prefs& prefs, const Plot_Zone& zone, Presentation& p, std::string_view title) {
    if (prefs.pos == no_text) return;
    const char position = Along_X(prefs.pos);
    const float room = Room_Along_X(zone, position);
    Select_Shrunk(p.graphics(), prefs, title, room);
    p.IPgTitle(Fit_Text(p.graphics(), title, room), position);
}

void Write_X_Label(const Text_Prefs& prefs, const Plot_Zone& zone, Presentation& p, std::string_view text) {
    if (prefs.pos == no_text) return;
    Select_Text(p.graphics(), prefs);
    const char position = Along_X(prefs.pos);
    p.IPgXLabel(Fit_Text(p.graphics(), Trim(text), Room_Along_X(zone, position)), position);
}

void Write_Y_Label(const Text_Prefs& prefs, Presentation& p, std::string_view text) {
    if (prefs.pos == no_text) return;
    Select_Text(p.graphics(), prefs);
    p.IPgYLabelLeft(Trim(text), Y_Label_Place(prefs.pos));
}

void Write_Y_Scale(const Text_Prefs& prefs, Presentation& p, const View& window) {
    Select_Text(p.graphics(), prefs);
    p.IPgYScale("TN", window.x1);
}

void Write_X_Scale(const Text_Prefs& prefs, Presentation& p, const View& window) {
    Select_Text(p.graphics(), prefs);
    p.IPgXScale("TN", window.y1);
}

void Write_In_Middle(Graphics& g, int font, float char_width, float char_height, std::string_view text) {
    g.WGrTextFont(font, 0, char_width, char_height);
    g.IGrColour("Black");
    g.IGrCharJustify(1);
    const float scale = std::min(1.0f, 0.9f * page_width / std::max(g.Text_Width(text), 1.0f));
    g.WGrTextFont(0, 0, scale * char_width, scale * char_height);
    g.IGrCharOut(0.5f * page_width, 0.5f * page_height, text);
    g.IGrCharJustify(0);
}

Plot_Zone Fitted_Zone(const Scene& scene, Graphics& g) {
    switch (scene.plot.plot_type) {
        case Plot_Form::graph3d:
        case Plot_Form::surface:
            return scene.zone;
        case Plot_Form::contour:
        case Plot_Form::contour_log:
            return Zone_Of_Map(scene, g);
        default:
            return Frame_Of(scene, g, scene.store.nperfiles(), scene.plot.Shown_View(), Y_Title(scene)).Zone();
    }
}

void Draw_Title(const Scene& scene, Presentation& p, int n) {
    if (n < 1) return;
    if (Lays_Out(scene.look)) return Frame_Of(scene, p.graphics(), n, scene.plot.Shown_View(), Y_Title(scene)).Write_Title(scene.zone);
    p.graphics().IGrLineWidth(1);
    Write_Title(scene.prefs.graph2d.title, scene.zone, p, Title_Text(scene, n));
}

void Draw_Scales(const Scene& scene, Presentation& p, const View& window) {
    const Graph2D_Prefs& prefs = scene.prefs.graph2d;
    if (Lays_Out(scene.look))
        return Frame_Of(scene, p.graphics(), scene.store.nperfiles(), window, Y_Title(scene)).Write_Scales(scene.zone);
    Write_Y_Scale(prefs.yscale, p, window);
    if (scene.store.prf_loaded && scene.prefs.prf.hide_negative) Hide_Negative_Numbers(scene.zone, prefs, p, window);
    Write_X_Scale(prefs.xscale, p, window);
}

std::string Y_Title(const Scene& scene) {
    const bool own_title = scene.prefs.graph2d.ylabel.pos != no_text && scene.store.nperfiles() > 0 && !scene.store.prf_loaded;
    const std::string_view own = own_title ? Trim(scene.store.Pattern(1).legend_y) : std::string_view();
    return own.empty() ? scene.plot.ylabel_text : std::string(own);
}

void Draw_Axis_Labels(const Scene& scene, Presentation& p, const View& window, std::string_view y_title, bool log) {
    const Graph2D_Prefs& prefs = scene.prefs.graph2d;
    if (Lays_Out(scene.look)) return Frame_Of(scene, p.graphics(), scene.store.nperfiles(), window, y_title).Write_Labels(scene.zone);
    const bool root = !log && scene.plot.Scale() == Y_Scale::root;
    Write_Y_Label(prefs.ylabel, p, log ? Logarithm_Of(y_title) : root ? Root_Of(y_title) : std::string(y_title));
    Write_X_Label(prefs.xlabel, scene.zone, p, scene.plot.xlabel_text);
}

void Draw_Target(const Plot_Zone& zone, const Look& look, Graphics& g) {
    const float w = page_width, h = page_height;
    g.IGrLineWidth(1);
    g.IGrFillPattern(fill_outline);
    g.IGrColourN(look.ink);
    const float middle_x = 0.5f * (zone.x1 + zone.x2) * w, middle_y = 0.5f * (zone.y1 + zone.y2) * h;
    g.IGrMoveTo(middle_x, zone.y1 * h);
    g.IGrLineTo(middle_x, zone.y2 * h);
    g.IGrMoveTo(zone.x1 * w, middle_y);
    g.IGrLineTo(zone.x2 * w, middle_y);
    constexpr Plot_Zone usual;
    const float wider = (zone.x2 - zone.x1) / (usual.x2 - usual.x1), higher = (zone.y2 - zone.y1) / (usual.y2 - usual.y1);
    for (const float size : {1.0f, 2.0f}) {
        const float half_x = 100 * size * wider, half_y = 80 * size * higher;
        g.IGrRectangle(middle_x - half_x, middle_y - half_y, middle_x + half_x, middle_y + half_y);
    }
}

void Draw_Frame(Presentation& p, const Look& look) {
    Graphics& g = p.graphics();
    g.IGrLineWidth(look.frame_width);
    g.IGrColourN(look.ink);
    p.IPgBorder();
    g.IGrLineWidth(1);
}

void Draw_Legend(const Scene& scene, Presentation& p, const View& window, int n) {
    Graphics& g = p.graphics();
    if (Lays_Out(scene.look)) return Fitted_Legend(scene, n, g.device()).Draw(window);
    const Text_Prefs& prefs = scene.prefs.graph2d.legend;
    if (!Has_Legend(scene)) return;
    Select_Font(g, prefs);
    const float x = Legend_X(scene, g, n);
    const float room = page_width - page_edge - x - symbol_room;
    const float chi2_scale = Legible_Scale(g, Char_Width(prefs.size), Char_Height(prefs.size));
    int line = 0;
    for (int row = 1; row <= n; ++row, ++line) {
        const ProfileStyle& style = scene.prefs.Style_Of_Row(row);
        const PRF_Info_Add_Type& info = scene.store.Info(row);
        const auto line_y = [](int at) { return (legend_top - legend_step * static_cast<float>(at)) * page_height; };
        p.IPgStyle(1, {style.line_style, fill_solid, style.line_colour, style.marker_colour, Marker_Glyph(style.marker_type)});
        g.IGrColourN(style.line_colour);
        p.IPgKey(x, line_y(line), 1, Fit_Text(g, Row_Name(scene.store, row), room));
        if (!Tells_Chi2(scene, row)) continue;
        line += chi2_scale > 1 ? static_cast<int>(std::ceil(chi2_scale * Char_Height(prefs.size) / legend_step)) : 1;
        g.WGrTextFont(0, 0, chi2_scale * Char_Width(prefs.size), chi2_scale * Char_Height(prefs.size));
        g.IGrCharOut(x, line_y(line), Chi2_Text(info.chi2));
        Select_Font(g, prefs);
    }
}

Plot_Zone Room_Beside_Texts(const Scene& scene) {
    Plot_Zone room = scene.zone;
    if (Lays_Out(scene.look)) return room;
    const float foot = legend_top - legend_step * static_cast<float>(scene.store.nperfiles() + 1);
    if (Has_Legend(scene) && foot > room.y1) room.y2 = std::min(room.y2, foot);
    return room;
}

}  // namespace vntl
