#include "toolkit/qt/solid_pane.hpp"

#include <QVBoxLayout>

#include "solid/w3d_draw.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/bitmap_qt.hpp"
#include "toolkit/qt/solid_program.hpp"

namespace vntl {

Solid_Pane::Solid_Pane(int window) : window_(window) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    std::optional<OpenGL_Kind>& kind = The_Toolkit().opengl;
    if (!kind) kind = Find_OpenGL();
    if (*kind != OpenGL_Kind::none) {
        // An area cannot go while it paints.
        const auto failed = [this] {
            QMetaObject::invokeMethod(
                this, [this] { Do_Without_OpenGL(); }, Qt::QueuedConnection);
        };
        layout->addWidget((opengl_ = std::make_unique<Solid_Area>(window, *kind, failed)).get());
    } else {
        Do_Without_OpenGL();
    }
}

QWidget& Solid_Pane::area() const {
    if (opengl_ != nullptr) return *opengl_;
    return *plain_;
}

void Solid_Pane::Put(std::shared_ptr<const W3d> solid) {
    solid_ = std::move(solid);
    if (opengl_ != nullptr) opengl_->Put(solid_);
}

void Solid_Pane::Show(const W3d_View& view, bool turning) {
    view_ = view;
    if (opengl_ != nullptr) return opengl_->Show(view, turning);
    const QSize pixels = Pixels_Of(*plain_);
    QImage image(pixels, QImage::Format_RGB32);
    Draw_W3d(solid_ == nullptr ? W3d() : *solid_, view, *Make_Image_Device(image));
    plain_->Put_Bitmap(std::move(image));
}

void Solid_Pane::Do_Without_OpenGL() {
    opengl_.reset();
    plain_ = std::make_unique<Drawing_Area>(window_, 1);
    plain_->setAccessibleName("Model");
    layout()->addWidget(plain_.get());
    plain_->show();
    layout()->activate();  // it has its size at once
    if (view_) Show(*view_, false);
}

}  // namespace vntl
