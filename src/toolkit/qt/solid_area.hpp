// A solid in space, drawn by OpenGL: its corners lie on the graphics card, and another view of them costs a few numbers.
#pragma once

#include <QOpenGLWidget>
#include <functional>
#include <memory>

#include "solid/w3d_view.hpp"
#include "toolkit/qt/area_messages.hpp"
#include "toolkit/qt/solid_program.hpp"

namespace vntl {

class Solid_Area : public QOpenGLWidget {
public:
    // `failed` is called, once, when OpenGL turns out not to work; the area shows nothing from then on, and still stands.
    Solid_Area(int window, OpenGL_Kind kind, std::function<void()> failed);
    ~Solid_Area() override;

    void Put(std::shared_ptr<const W3d> solid);
    void Show(const W3d_View& view, bool turning);

protected:
    bool event(QEvent*) override;
    void initializeGL() override;
    void paintGL() override;
    QSize sizeHint() const override { return {800, 500}; }

private:
    class Card;

    void Free_Card();
    void Fail();

    Area_Messages messages_;
    std::function<void()> failed_;
    std::shared_ptr<const W3d> solid_;
    W3d_View view_;
    std::size_t most_turning_;  // facets of the sheets, while a user turns them
    bool turning_ = false, has_failed_ = false;
    std::unique_ptr<Card> card_;
};

}  // namespace vntl
