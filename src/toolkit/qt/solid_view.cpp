#include "toolkit/solid_view.hpp"

#include "toolkit/qt/application.hpp"
#include "toolkit/qt/main_window.hpp"

namespace vntl {

namespace {

Solid_Pane* Selected_Pane() {
    const Window* window = The_Toolkit().Find_Window(The_Toolkit().selected_window);
    return window == nullptr ? nullptr : window->solid();
}

}  // namespace

bool W3dOpenGL() { return Selected_Pane() != nullptr && Selected_Pane()->OpenGL(); }

void W3dPut(std::shared_ptr<const W3d> solid) {
    if (Solid_Pane* pane = Selected_Pane()) pane->Put(std::move(solid));
}

void W3dShow(const W3d_View& view, bool turning) {
    if (Solid_Pane* pane = Selected_Pane()) pane->Show(view, turning);
}

}  // namespace vntl
