// Pictures on their windows: a bitmap that is drawn once for each change of data or view, and an overlay of marks that changes without
// touching it.
#include <array>
#include <chrono>
#include <iterator>
#include <utility>

#include "plot/fitted_frame.hpp"
#include "plot/following_curves.hpp"
#include "plot/frame_texts.hpp"
#include "plot/plot.hpp"
#include "plot/preview.hpp"
#include "plot/rubber.hpp"
#include "session/ranges.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/window.hpp"

namespace vntl {

namespace {

constexpr int width_info = 1, height_info = 2, dots_info = 3;

bool Shows_Welcome(const Scene& scene) { return scene.plot.plot_type == Plot_Form::none || scene.store.nperfiles() == 0; }

long long Shown_Points(const Scene& scene) {
    if (Shows_Welcome(scene)) return 0;
    long long points = 0;
    for (int row = 1; row <= scene.store.nperfiles(); ++row)
        if (scene.store.shown(row)) points += scene.store.Pattern(row).npts;
    return points;
}

// The reflections under the pointer, with a box that names them.
void Draw_Hits(const Scene& scene, Graphics& g) {
    const Reflection_Hits& hits = scene.plot.hits;
    if (hits.entries.empty()) return;
    Draw_Picks(scene, g, hits.entries, hits.generated);
    std::vector<std::string> labels;
    for (const int entry : hits.entries) {
        const auto j = static_cast<std::size_t>(entry - 1);
        labels.push_back(hits.generated ? scene.lists.hklgen[j].label : scene.store.Info(scene.store.ProfilePRFactive).refl_label[j]);
    }
    Draw_Readout_Box(g, Room_Beside_Texts(scene), static_cast<float>(hits.x), static_cast<float>(hits.y), labels);
}

// The marks are laid out for the window's own size, so that a dot keeps its shape.
void Show_Marks_With(int window, const Scene& scene, const std::vector<Row_Ghost>& ghosts) {
    WindowSelect(window);
    Recording_Device overlay(WInfoWindow(width_info), WInfoWindow(height_info));
    Graphics marks(overlay);
    Draw_Following_Curves(scene, marks, ghosts);
    Draw_Marks(scene, marks);
    Draw_Hits(scene, marks);
    Draw_Preview(scene, marks);
    Draw_Rubber(scene.plot, scene.store, marks, scene.look.ink);
    WOverlayPut(overlay);
}

// --- the forms -------------------------------------------------------------------------------------------------------------------

Drawn Draw_Welcome(const Scene& scene, Graphics& g) {
    const Window_Prefs& colours = scene.prefs.window;
    Plot_Welcome(colours.colour_a, colours.colour_b, scene.config, g);
    return {scene.plot.drawn, scene.plot.units, scene.plot.ylabel_text};
}
Drawn Draw_Graph(const Scene& scene, Graphics& g) {
    return plot_graph2d(scene, g, scene.store.nperfiles(), scene.plot.Shown_View(), scene.plot.Scale());
}

Drawn Draw_Map(const Scene& scene, Graphics& g) {
    const Plot_State& plot = scene.plot;
    return Plot_Contour(scene, g, plot.x_view_min, plot.x_view_max, plot.first_pattern, plot.last_pattern);
}
Drawn Draw_Lines_In_Space(const Scene& scene, Graphics& g) {
    const Plot_State& plot = scene.plot;
    const View window{plot.x_view_min, plot.x_view_max, plot.y_all_min, plot.y_all_max};
    return Plot_3D_Lines(scene, g, scene.store.nperfiles(), window, plot.view_rotation, plot.view_elevation);
}
Drawn Draw_Surface(const Scene& scene, Graphics& g) {
    return Plot_3D_Surface(scene, g, scene.plot.view_rotation, scene.plot.view_elevation);
}

// In the order of the forms.
constexpr std::array<Drawn (*)(const Scene&, Graphics&), 9> form_pictures = {
    Draw_Welcome, Draw_Graph, Draw_Graph, Draw_Graph, Draw_Graph, Draw_Map, Draw_Map, Draw_Lines_In_Space, Draw_Surface};
static_assert(form_pictures.size() == std::size(plot_forms));

}  // namespace

Drawn Draw_Picture(const Scene& scene, Device& device) {
    Graphics g(device);
    const Plot_Form form = Shows_Welcome(scene) ? Plot_Form::none : scene.plot.plot_type;
    Scene laid_out = scene;
    laid_out.zone = {};
    if (form != Plot_Form::none && scene.look.fitted_margins) laid_out.zone = Fitted_Zone(laid_out, g);
    Drawn drawn = form_pictures[static_cast<std::size_t>(form)](laid_out, g);
    drawn.zone = laid_out.zone;
    return drawn;
}

void Draw_With_Marks(const Scene& scene, Device& device) {
    Scene marked = scene;
    marked.zone = Draw_Picture(scene, device).zone;
    Graphics marks(device);
    Draw_Marks(marked, marks);
}

Drawn Show_Picture(int window, const Scene& scene) {
    WindowSelect(window);
    // Sizes on a screen of fine pixels are those of a look; the preferences alone know shares of the page.
    const double dots = Lays_Out(scene.look) ? WInfoWindow(dots_info) : pixels_an_inch;
    Bitmap bitmap(WInfoWindow(width_info), WInfoWindow(height_info), dots);
    Drawn drawn = Draw_Picture(scene, bitmap.Drawing());
    WBitmapPut(std::move(bitmap));
    return drawn;
}

void Show_Marks(int window, const Scene& scene) { Show_Marks_With(window, scene, {}); }

void Plot_ReMake(Session& session) {
    Plot_Ranges(session);
    Plot_Redraw(session);
}

void Plot_Redraw(Session& session) {
    Plot_State& plot = session.plot;
    plot.hits = {};  // they were reflections of the picture before
    const auto start = std::chrono::steady_clock::now();
    Drawn drawn = Show_Picture(main_window, Scene_Of(session));
    plot.draw_ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    plot.drawn_points = Shown_Points(Scene_Of(session));
    plot.drawn = drawn.window;
    plot.units = drawn.units;
    plot.zone = drawn.zone;
    plot.ylabel_text = std::move(drawn.y_title);
    Show_Marks(main_window, Scene_Of(session));
}

void Plot_Repaint(const Session& session) { Show_Marks(main_window, Scene_Of(session)); }

void Repaint_With_Ghosts(const Session& session, const std::vector<Row_Ghost>& ghosts) {
    Show_Marks_With(main_window, Scene_Of(session), ghosts);
}

}  // namespace vntl
