// The picture on the main window: a bitmap that is drawn once for each change of data or view, and an overlay of marks that changes
// without touching it.
#include <chrono>
#include <utility>

#include "plot/plot.hpp"
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

void Draw_Rubber(const Rubber_Rectangle& rubber, Graphics& g) {
    if (!rubber.active) return;
    g.IGrArea(0, 0, 1, 1);
    g.IGrUnits(0, 0, page_width, page_height);
    g.IGrFillPattern(fill_outline);
    g.IGrLineType(0);
    // Yellow on a dark seam shows on light and on dark ground.
    for (const auto& [colour, width] : {std::pair{WRGB(90, 90, 0), 3.0f}, std::pair{WRGB(255, 255, 0), 1.0f}}) {
        g.IGrColourN(colour);
        g.IGrLineWidth(width);
        g.IGrRectangle(static_cast<float>(rubber.x0), static_cast<float>(rubber.y0), static_cast<float>(rubber.x1),
                       static_cast<float>(rubber.y1));
    }
}

// The marks are laid out for the window's own size, so that a dot keeps its shape.
void Put_Marks(const Session& session) {
    WindowSelect(main_window);
    Recording_Device overlay(WInfoWindow(width_info), WInfoWindow(height_info));
    Graphics marks(overlay);
    Draw_Marks(session, marks);
    Draw_Rubber(session.plot.rubber, marks);
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
