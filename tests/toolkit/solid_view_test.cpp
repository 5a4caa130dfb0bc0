// Solids in a window: what OpenGL shows against the projection by our own hand, what each mode shows, and windows, sizes and contexts that
// change or go.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLayout>
#include <QMouseEvent>
#include <QOpenGLWidget>
#include <QWheelEvent>
#include <array>
#include <cmath>
#include <functional>
#include <random>

#include "solid/w3d_draw.hpp"
#include "solid/w3d_mesh.hpp"
#include "toolkit/qt/application.hpp"
#include "toolkit/qt/bitmap_qt.hpp"
#include "toolkit/qt/main_window.hpp"
#include "toolkit/solid_view.hpp"

namespace vntl {
namespace {

constexpr int width = 320, height = 240;
using Size = std::array<int, 2>;

// A sheet of those heights along the first axis (rows of them along the third one), 2 by 2 wide.
std::shared_ptr<W3d> Sheet(int columns, int rows, const std::function<float(int, int)>& high) {
    auto solid = std::make_shared<W3d>();
    solid->materials = {WRGB(240, 200, 40), WRGB(255, 0, 0)};
    for (int k = 0; k < rows; ++k)
        for (int i = 0; i < columns; ++i)
            solid->vertices.push_back({-1 + 2.0f * static_cast<float>(i) / static_cast<float>(columns - 1), high(i, k),
                                       -1 + 2.0f * static_cast<float>(k) / static_cast<float>(rows - 1)});
    solid->sheets = {{0, columns, rows, 1}};
    return solid;
}

// Ridges and valleys whose facets are all planes: each has one colour, in OpenGL and on paper.
std::shared_ptr<W3d> Ridges(unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> any(-0.8f, 0.8f);
    std::array<float, 9> heights;
    for (float& one : heights) one = any(random);
    return Sheet(9, 4, [&](int i, int) { return heights[static_cast<std::size_t>(i)]; });
}

W3d_View Seen_From(double elevation, double azimuth, double distance, Render_Mode mode = Render_Mode::flat) {
    return {.eye = From_Polar(elevation, azimuth, distance), .light = From_Polar(35, azimuth + 50, 1000), .mode = mode};
}

Colour Colour_Of(QRgb c) { return WRGB(static_cast<unsigned>(qRed(c)), static_cast<unsigned>(qGreen(c)), static_cast<unsigned>(qBlue(c))); }

int Apart(Colour a, Colour b) {
    const auto part = [](unsigned p, unsigned q) { return std::abs(static_cast<int>(p) - static_cast<int>(q)); };
    return std::max({part(Red(a), Red(b)), part(Green(a), Green(b)), part(Blue(a), Blue(b))});
}

class Solid_View : public testing::Test {
protected:
    void SetUp() override {
        WindowOpen(400, 300, "Test", "vantrelo");
        WindowShow();
        Open(model_window);
    }
    void TearDown() override {
        WindowCloseChild(model_window);
        while (WMessagePeek()) continue;
    }
    static void Open(int number) {
        WindowOpenChild(number, "Solid", width, height, Child_Kind::solid);
        WindowShow();
    }
    static QWidget& Area() { return The_Toolkit().Find_Window(The_Toolkit().selected_window)->solid()->area(); }
    static QImage Frame() {
        QCoreApplication::processEvents();
        auto* area = dynamic_cast<QOpenGLWidget*>(&Area());
        const QImage frame = area != nullptr ? area->grabFramebuffer() : Area().grab().toImage();
        return frame.convertToFormat(QImage::Format_RGB32);
    }
    static QImage Projected(const W3d& solid, const W3d_View& view) {
        QImage image(WInfoWindow(1), WInfoWindow(2), QImage::Format_RGB32);
        Draw_W3d(solid, view, *Make_Image_Device(image));
        return image;
    }
    // Pixels, of those around which the projection has one colour, that the window shows in another one: what stands a pixel aside, is
    // hidden or lit otherwise, is among them.
    static int Otherwise(const W3d& solid, const W3d_View& view) {
        constexpr int tolerance = 3;
        const QImage frame = Frame(), plain = Projected(solid, view);
        if (frame.size() != plain.size()) return width * height;
        int count = 0, looked_at = 0;
        for (int y = 1; y + 1 < plain.height(); ++y) {
            for (int x = 1 + y % 2; x + 1 < plain.width(); x += 2) {
                const QRgb colour = plain.pixel(x, y);
                bool even = true;
                for (int k = 0; k < 9 && even; ++k) even = plain.pixel(x + k % 3 - 1, y + k / 3 - 1) == colour;
                if (!even) continue;
                ++looked_at;
                count += Apart(Colour_Of(frame.pixel(x, y)), Colour_Of(colour)) > tolerance;
            }
        }
        return looked_at > width * height / 8 ? count : width * height;
    }
};

class OpenGL_Solid_View : public Solid_View {
protected:
    void SetUp() override {
        Solid_View::SetUp();
        if (!W3dOpenGL()) GTEST_SKIP() << "there is no OpenGL";
    }
};

TEST_F(OpenGL_Solid_View, AThousandViewsAreThoseOfTheProjection) {
    std::mt19937 random(19);
    const auto any = [&](double least, double most) { return std::uniform_real_distribution<double>(least, most)(random); };
    std::shared_ptr<W3d> solid;
    constexpr int slivers = 3;  // pixels of facets that are seen nearly from their edge
    for (int k = 0; k < 1000; ++k) {
        if (k % 50 == 0) W3dPut(solid = Ridges(static_cast<unsigned>(k)));
        const double elevation = any(-89.9, 89.9), azimuth = any(-180, 180), distance = any(3, 30);
        const W3d_View view = Seen_From(elevation, azimuth, distance);
        W3dShow(view);
        ASSERT_LE(Otherwise(*solid, view), slivers) << k << ": " << elevation << ' ' << azimuth << ' ' << distance;
    }
}

// Colours at the middles of the triangles of a hump, against the law of the light; from above and from below.
TEST_F(OpenGL_Solid_View, ModesShowFacesAsTheyAreTold) {
    const auto solid =
        Sheet(5, 4, [](int i, int k) { return 0.25f * std::sin(0.9f * static_cast<float>(i)) + 0.06f * static_cast<float>(k * k); });
    const W3d_Mesh mesh = Mesh_Of(*solid);
    W3dPut(solid);
    for (const double elevation : {80.0, -80.0}) {
        W3d_View view = Seen_From(elevation, -45, 12);
        view.light = From_Polar(elevation / 2, 30, 3);
        view.edge_colour = WRGB(0, 0, 200);
        const W3d_Camera camera(view.eye, width, height);
        const auto turned = [&](Vec3 n) { return elevation > 0 ? n : Vec3{-n[0], -n[1], -n[2]}; };
        for (const Render_Mode mode : {Render_Mode::wireframe, Render_Mode::hidden_lines, Render_Mode::unlit, Render_Mode::flat,
                                       Render_Mode::gouraud, Render_Mode::phong}) {
            view.mode = mode;
            W3dShow(view);
            const QImage frame = Frame();
            const auto shown = [&](const Vec3& at) {
                const Point p = camera.See(at).at;
                return Colour_Of(frame.pixel(static_cast<int>(p.x), static_cast<int>(height - p.y)));
            };
            for (std::size_t t = 0; t < mesh.triangles.size(); t += 3) {
                Vec3 middle{}, normal{};
                float corners = 0;
                std::array<Vec3, 3> place;
                for (std::size_t c = 0; c < 3; ++c) {
                    const W3d_Vertex& corner = mesh.vertices[mesh.triangles[t + c]];
                    place[c] = corner.at;
                    corners += Lit(turned(corner.normal), corner.at, view.light) / 3;
                    for (std::size_t axis = 0; axis < 3; ++axis) middle[axis] += corner.at[axis] / 3, normal[axis] += corner.normal[axis];
                }
                Vec3 plane{};
                for (std::size_t a = 0, b = 1, c = 2; a < 3; ++a, b = (b + 1) % 3, c = (c + 1) % 3)
                    plane[a] = (place[1][b] - place[0][b]) * (place[2][c] - place[0][c]) -
                               (place[1][c] - place[0][c]) * (place[2][b] - place[0][b]);
                if (plane[1] < 0) plane = {-plane[0], -plane[1], -plane[2]};
                const Colour material = solid->Material(1);
                const std::array<Colour, 6> expected = {view.background,
                                                        view.background,
                                                        material,
                                                        Lit_Colour(material, Lit(turned(plane), middle, view.light)),
                                                        Lit_Colour(material, corners),
                                                        Lit_Colour(material, Lit(turned(normal), middle, view.light))};
                EXPECT_LE(Apart(shown(middle), expected[static_cast<std::size_t>(mode)]), 4)
                    << static_cast<int>(mode) << " triangle " << t / 3 << " from " << elevation;
            }
            const Vec3 &from = solid->vertices[7], &to = solid->vertices[12];  // an edge inside the sheet
            const bool has_edge =
                Apart(shown({(from[0] + to[0]) / 2, (from[1] + to[1]) / 2, (from[2] + to[2]) / 2}), view.edge_colour) < 150;
            EXPECT_EQ(has_edge, mode <= Render_Mode::unlit) << static_cast<int>(mode);
        }
    }
}

// A sheet lies below another one: lines alone let its edges through, faces hide them.
TEST_F(OpenGL_Solid_View, FacesOfTheBackgroundHideWhatLiesBehind) {
    const auto solid = Sheet(2, 2, [](int, int) { return 0.0f; });
    for (const Vec3& at : {Vec3{-0.5f, -0.5f, -0.5f}, {0.5f, -0.5f, -0.5f}, {-0.5f, -0.5f, 0.5f}, {0.5f, -0.5f, 0.5f}})
        solid->vertices.push_back(at);
    solid->sheets.push_back({4, 2, 2, 2});
    W3dPut(solid);
    const auto marked = [&](Render_Mode mode) {
        const W3d_View view = Seen_From(89, -45, 8, mode);
        W3dShow(view);
        const QImage frame = Frame();
        int count = 0;
        for (int y = height / 2 - 45; y < height / 2 + 45; ++y)  // inside the upper one
            for (int x = width / 2 - 45; x < width / 2 + 45; ++x) count += Apart(Colour_Of(frame.pixel(x, y)), view.background) > 60;
        return count;
    };
    EXPECT_GT(marked(Render_Mode::wireframe), 100);
    EXPECT_EQ(marked(Render_Mode::hidden_lines), 0);
}

TEST_F(OpenGL_Solid_View, ContextsThatGoAreMadeAnew) {
    const auto solid = Ridges(3);
    const W3d_View view = Seen_From(30, -60, 7);
    W3dPut(solid);
    W3dShow(view);
    EXPECT_EQ(Otherwise(*solid, view), 0);
    QWidget& pane = *Area().parentWidget();
    for (int round = 0; round < 3; ++round) {  // a new top window has a context of its own
        auto& area = static_cast<QOpenGLWidget&>(Area());
        const QOpenGLContext* former = area.context();
        area.setParent(nullptr);
        area.resize(width, height);
        area.show();
        EXPECT_EQ(Otherwise(*solid, view), 0);
        EXPECT_NE(area.context(), former);
        pane.layout()->addWidget(&area);
        EXPECT_EQ(Otherwise(*solid, view), 0);
    }
    Area().setParent(nullptr);
    W3dPut(nullptr);
    WindowCloseChild(model_window);  // with an area that stands elsewhere
    EXPECT_FALSE(WindowIsOpen(model_window));
}

// Every second column stands high, and none of those that are drawn while it turns.
TEST_F(OpenGL_Solid_View, ALargeSolidTurnsWithFewerFacets) {
    const auto solid = Sheet(1101, 1001, [](int i, int) { return i % 2 == 0 ? 0 : 0.3f; });
    const auto level = Sheet(2, 2, [](int, int) { return 0.0f; });
    const W3d_View view = Seen_From(60, -45, 9);
    W3dPut(solid);
    W3dShow(view, true);
    EXPECT_EQ(Otherwise(*level, view), 0);
    W3dShow(view, false);
    EXPECT_GT(Otherwise(*level, view), 1000);
    W3dPut(level);
    W3dShow(view, true);
    EXPECT_EQ(Otherwise(*level, view), 0);
}

TEST_F(Solid_View, SizesAndNewSolids) {
    const W3d_View view = Seen_From(25, -45, 6);
    W3dShow(view);  // nothing yet: the background alone
    EXPECT_EQ(Colour_Of(Frame().pixel(9, 9)), view.background);
    for (const Size size : {Size{320, 240}, {500, 300}, {300, 500}, {240, 160}}) {
        WindowResize(size[0], size[1]);
        EXPECT_EQ((Size{WInfoWindow(1), WInfoWindow(2)}), size);
        for (const unsigned seed : {1u, 2u}) {
            const auto solid = Ridges(seed);
            W3dPut(solid);
            W3dShow(view);
            W3dPut(solid);
            W3dShow(view);
            EXPECT_EQ(Otherwise(*solid, view), 0) << size[0] << ' ' << seed;
        }
    }
    // What else a window takes leaves it as it is.
    WBitmapPut(Bitmap(30, 20));
    WOverlayPut(Recording_Device(30, 20));
    WindowSplit(2, true);
    EXPECT_EQ(Otherwise(*Ridges(2), view), 0);
    EXPECT_EQ(WInfoWindow(1, 2), 0);
}

TEST_F(Solid_View, ManyWindowsOpenAndClose) {
    const W3d_View view = Seen_From(25, -45, 6);
    for (unsigned round = 0; round < 12; ++round) {
        for (const int number : {61, 62}) {
            const auto solid = Ridges(round);
            WindowOpenChild(number, "Solid", width, height, Child_Kind::solid);
            W3dPut(solid);  // before it is shown
            W3dShow(view);
            if (round % 4 == 3) continue;  // never seen
            WindowShow();
            W3dShow(view);
            EXPECT_EQ(Otherwise(*solid, view), 0) << round;
        }
        for (const int number : {61, 62}) WindowCloseChild(number);
    }
    WindowSelect(main_window);
    W3dPut(Ridges(1));  // it shows no solid
    W3dShow(view);
    EXPECT_FALSE(W3dOpenGL());
}

TEST_F(Solid_View, WithoutOpenGLTheProjectionIsShown) {
    const OpenGL_Kind had = *The_Toolkit().opengl;
    const auto solid = Ridges(5);
    const W3d_View view = Seen_From(25, -45, 6);
    for (const bool tried : {false, true}) {  // known before, or found out when an area gets no context
        if (tried && had == OpenGL_Kind::none) continue;
        The_Toolkit().opengl = tried ? had : OpenGL_Kind::none;
        WindowOpenChild(61, "Solid", width, height, Child_Kind::solid);
        W3dPut(solid);
        W3dShow(view);
        QSurfaceFormat impossible;
        impossible.setRenderableType(QSurfaceFormat::OpenVG);
        if (tried) static_cast<QOpenGLWidget&>(Area()).setFormat(impossible);
        WindowShow();
        W3dShow(view);
        EXPECT_FALSE(W3dOpenGL());
        EXPECT_EQ((Size{WInfoWindow(1), WInfoWindow(2)}), (Size{width, height}));
        EXPECT_EQ(Frame(), Projected(*solid, view));
        WindowCloseChild(61);
    }
    The_Toolkit().opengl = had;
}

TEST_F(Solid_View, AHandIsTold) {
    for (const Message_Kind kind : {Message_Kind::mouse_down, Message_Kind::mouse_up, Message_Kind::mouse_move})
        WMessageEnable(model_window, kind, true);
    WindowSelect(model_window);
    while (WMessagePeek()) continue;
    const auto mouse = [](QEvent::Type type, Qt::MouseButton button) {
        const QPointF at(80, 60);
        QMouseEvent event(type, at, at, at, button, button, {});
        QCoreApplication::sendEvent(&Area(), &event);
    };
    mouse(QEvent::MouseButtonPress, Qt::LeftButton);
    mouse(QEvent::MouseMove, Qt::NoButton);
    mouse(QEvent::MouseButtonRelease, Qt::LeftButton);
    mouse(QEvent::MouseButtonDblClick, Qt::RightButton);
    mouse(QEvent::MouseButtonPress, Qt::BackButton);
    for (const int turn : {60, 60, -240}) {
        QWheelEvent event({80, 60}, {80, 60}, {}, {0, turn}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&Area(), &event);
    }
    struct Told {
        Message_Kind kind;
        int value;
    };
    for (const Told& told : {Told{Message_Kind::mouse_down, 1},
                             {Message_Kind::mouse_move, 0},
                             {Message_Kind::mouse_up, 1},
                             {Message_Kind::mouse_down, 3},
                             {Message_Kind::key_down, key_back},
                             {Message_Kind::wheel, 1},
                             {Message_Kind::wheel, -1},
                             {Message_Kind::wheel, -1}}) {
        const std::optional<Message> message = WMessagePeek();
        ASSERT_TRUE(message);
        EXPECT_EQ(message->kind, told.kind);
        EXPECT_EQ(message->record.win, model_window);
        EXPECT_EQ(message->record.value1, told.value);
        if (told.kind == Message_Kind::key_down) continue;
        EXPECT_EQ(message->record.value4, 1);
        EXPECT_DOUBLE_EQ(message->record.x, 300);  // of 1200 by 800
        EXPECT_DOUBLE_EQ(message->record.y, 600);
    }
    EXPECT_FALSE(WMessagePeek());
}

}  // namespace
}  // namespace vntl
