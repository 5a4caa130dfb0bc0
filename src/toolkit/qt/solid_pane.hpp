// The pane of a window that shows a solid: drawn by OpenGL or, where that fails, a picture that our own hand projects.
#pragma once

#include <QWidget>
#include <memory>
#include <optional>

#include "solid/w3d_view.hpp"
#include "toolkit/qt/drawing_area.hpp"
#include "toolkit/qt/solid_area.hpp"

namespace vntl {

class Solid_Pane : public QWidget {
public:
    explicit Solid_Pane(int window);

    QWidget& area() const;  // that is drawn on
    bool OpenGL() const { return opengl_ != nullptr; }
    void Put(std::shared_ptr<const W3d> solid);
    void Show(const W3d_View& view, bool turning);

private:
    void Do_Without_OpenGL();

    int window_;
    std::unique_ptr<Solid_Area> opengl_;  // one of the two
    std::unique_ptr<Drawing_Area> plain_;
    std::shared_ptr<const W3d> solid_;
    std::optional<W3d_View> view_;  // that was shown last
};

}  // namespace vntl
