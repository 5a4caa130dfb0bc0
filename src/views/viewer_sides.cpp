#include "views/viewer_sides.hpp"

#include <string>

#include "plot/model.hpp"
#include "plot/viewer_picture.hpp"
#include "toolkit/window_service.hpp"
#include "views/model_3d.hpp"
#include "views/viewer_2d.hpp"

namespace vntl {

namespace {

constexpr int section_width = 220, section_height = 280, omega_width = 380, omega_height = 280, zone_width = 380, zone_height = 340;
constexpr int width_info = 1, height_info = 2;

void Draw_Section(const Application& app, Device& device) { Draw_Cross_Section(Section_Of(app.viewer), app.session.prefs, device); }
void Draw_Omega(const Application& app, Device& device) { Draw_Omega_Scan(Omega_Of(app.viewer), app.session.prefs, device); }

// The window is open where it is wanted, and shown when it opens; the viewer stays in front.
bool Keep_Open(int window, bool wanted, const char* title, int width, int height, Child_Kind kind) {
    if (!wanted) WindowCloseChild(window);
    if (!wanted || WindowIsOpen(window)) return wanted;
    WindowOpenChild(window, title, width, height, kind, false, viewer_window);
    WindowShow();
    WindowToFront(viewer_window);
    return true;
}

void Put_Picture(const Application& app, int window, void (*draw)(const Application&, Device&)) {
    WindowSelect(window);
    Bitmap bitmap(WInfoWindow(width_info), WInfoWindow(height_info));
    draw(app, bitmap.Drawing());
    WBitmapPut(std::move(bitmap));
}

// The surface is turned as it was. Where the part in view gives none nothing is drawn, which the status bar tells.
void Put_Zone(Application& app, bool fresh) {
    Model3D& model = app.zone_model;
    if (fresh) {
        model = {};
        model.window = zone_window;
        WMessageEnable(zone_window, Message_Kind::mouse_down, true);
    }
    PlotGrid zone;
    const Status status = Zone_Grid(app.viewer, zone);
    if (status.failed) app.viewer.hint = status.message;
    Take_Solid(model, status.ok() ? Build_Model(zone, app.viewer.x_label, model.model_colour) : W3d());
    Show_Solid(model);
}

// --- what they serve -----------------------------------------------------------------------------------------------------------------

void Serve_Picture(Application& app, const Message& message, void (*draw)(const Application&, Device&), void (*close)(Application&)) {
    const int window = message.record.win;
    if (!WindowIsOpen(window)) return;
    if (message.kind == Message_Kind::repaint || message.kind == Message_Kind::resize) Put_Picture(app, window, draw);
    if (message.kind == Message_Kind::close_request) close(app);
}

void Close_Side(Application& app) { Choose_Side_Plot(app, side_none); }
void Close_Omega(Application& app) { Choose_Plot_Kind(app, 0); }

void Serve_Zone(Application& app, const Message& message) {
    if (!WindowIsOpen(zone_window) || app.zone_model.shown == nullptr) return;
    if (message.kind == Message_Kind::close_request) return Close_Side(app);
    Serve_Model_View(app.zone_model, message);
}

}  // namespace

void Show_Beside(Application& app) {
    const Viewer2D& viewer = app.viewer;
    const bool run = viewer.Holds_Run();
    if (Keep_Open(section_window, run && viewer.side_plot == side_section, "Cross Section", section_width, section_height,
                  Child_Kind::plot))
        Put_Picture(app, section_window, Draw_Section);
    if (Keep_Open(omega_window, run && viewer.plot_kind == 1, "Omega Scan", omega_width, omega_height, Child_Kind::plot))
        Put_Picture(app, omega_window, Draw_Omega);
    const bool fresh = !WindowIsOpen(zone_window);
    if (Keep_Open(zone_window, run && viewer.side_plot == side_surface, "3D Plot", zone_width, zone_height, Child_Kind::solid))
        Put_Zone(app, fresh);
    WindowSelect(viewer_window);
}

void Register_Viewer_Sides(Application& app) {
    Register_Window(section_window, {.message = [&app](const Message& m) { Serve_Picture(app, m, Draw_Section, Close_Side); },
                                     .picture = [&app](Device& device) { Draw_Section(app, device); },
                                     .owner = viewer_window});
    Register_Window(omega_window, {.message = [&app](const Message& m) { Serve_Picture(app, m, Draw_Omega, Close_Omega); },
                                   .picture = [&app](Device& device) { Draw_Omega(app, device); },
                                   .owner = viewer_window});
    Register_Window(zone_window, {.message = [&app](const Message& m) { Serve_Zone(app, m); },
                                  .picture = [&app](Device& device) { Put_Model_On(app.zone_model, device); },
                                  .owner = viewer_window});
}

}  // namespace vntl
