// The picture on the main window: a bitmap that is drawn once for each change of data or view, and an overlay of marks that changes
// without touching it.
#include <chrono>
#include <utility>

#include "plot/plot.hpp"
#include "plot/rubber.hpp"
#include "toolkit/bitmap.hpp"
#include "toolkit/window.hpp"

namespace vntl {

namespace {

constexpr int width_info = 1, height_info = 2;

bool Shows_Welcome(const Session& session) { return session.plot.plot_type == "none" || session.store.nperfiles() == 0; }

long long Shown_Points(const Session& session) {
    if (Shows_Welcome(session)) return 0;
    long long points = 0;
    for (int row = 1; row <= session.store.nperfiles(); ++row)
        if (session.store.shown(row)) points += session.store.Pattern(row).npts;
    return points;
}

// The reflections under the pointer, with a box that names them.
void Draw_Hits(const Session& session, Graphics& g) {
    const Reflection_Hits& hits = session.plot.hits;
    if (hits.entries.empty()) return;
    Draw_Picks(session, g, hits.entries, hits.generated);
    std::vector<std::string> labels;
    for (const int entry : hits.entries) {
        const auto j = static_cast<std::size_t>(entry - 1);
        labels.push_back(hits.generated ? session.lists.hklgen[j].label : session.store.Info(session.store.ProfilePRFactive).refl_label[j]);
    }
    Draw_Readout_Box(g, static_cast<float>(hits.x), static_cast<float>(hits.y), labels);
}

// The marks are laid out for the window's own size, so that a dot keeps its shape.
void Put_Marks(const Session& session) {
    WindowSelect(main_window);
    Recording_Device overlay(WInfoWindow(width_info), WInfoWindow(height_info));
    Graphics marks(overlay);
    Draw_Marks(session, marks);
    Draw_Hits(session, marks);
    Draw_Rubber(session.plot, session.store, marks);
    WOverlayPut(overlay);
}

}  // namespace

void Draw_Picture(Session& session, Device& device) {
    Graphics g(device);
    const Plot_State& plot = session.plot;
    if (Shows_Welcome(session)) return Plot_Welcome(session, g);
    plot_graph2d(session, g, session.store.nperfiles(), plot.x_view_min, plot.x_view_max, plot.y_view_min, plot.y_view_max,
                 plot.plot_type == "multi_log" ? "log" : "");
}

void Draw_With_Marks(Session& session, Device& device) {
    Draw_Picture(session, device);
    Graphics marks(device);
    Draw_Marks(session, marks);
}

void Plot_ReMake(Session& session) {
    if (session.store.nperfiles() > 0)
        Plot_Ranges(session);
    else if (session.plot.plot_type != "none")
        Set_Menu_Empty(session);
    Plot_Redraw(session);
}

void Plot_Redraw(Session& session) {
    session.plot.hits = {};  // they were reflections of the picture before
    const auto start = std::chrono::steady_clock::now();
    WindowSelect(main_window);
    Bitmap bitmap(WInfoWindow(width_info), WInfoWindow(height_info));
    Draw_Picture(session, bitmap.Drawing());
    WBitmapPut(std::move(bitmap));
    session.plot.draw_ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    session.plot.drawn_points = Shown_Points(session);
    Put_Marks(session);
}

void Plot_Repaint(Session& session) { Put_Marks(session); }

}  // namespace vntl
