// Solids in a window: what OpenGL shows against the projection by our own hand, what each mode shows, and windows, sizes and contexts that
// change or go.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLayout>
#include <QMouseEvent>
#include <QOpenGLWidget>
#include <QThread>
#include <QWheelEvent>
#include <array>
#include <cmath>
#include <functional>
#include <random>
#include <tuple>

#include "solid/vec3.hpp"
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

Colour Pixel(const QImage& image, int x, int y) {
    const QRgb c = image.pixel(x, y);
    return WRGB(static_cast<unsigned>(qRed(c)), static_cast<unsigned>(qGreen(c)), static_cast<unsigned>(qBlue(c)));
}

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
    static Size Shown() { return {WInfoWindow(1), WInfoWindow(2)}; }
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
                count += Apart(Pixel(frame, x, y), Pixel(plain, x, y)) > tolerance;
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
    const auto hump = [](int i, int k) { return 0.25f * std::sin(0.9f * static_cast<float>(i)) + 0.06f * static_cast<float>(k * k); };
    const auto solid = Sheet(5, 4, hump);
    const W3d_Mesh mesh = Mesh_Of(*solid);
    W3dPut(solid);
    for (const float side : {1.0f, -1.0f}) {
        W3d_View view = Seen_From(80 * side, -45, 12);
        view.light = From_Polar(40 * side, 30, 3);
        const auto share = [&](const Vec3& normal, const Vec3& at) { return Lit(Moved({}, side, normal), at, view.light); };
        const W3d_Camera camera(view.eye, width, height);
        for (std::size_t mode = 0; mode < 6; ++mode) {
            view.mode = static_cast<Render_Mode>(mode);
            W3dShow(view);
            const QImage frame = Frame();
            for (std::size_t t = 0; t < mesh.triangles.size(); t += 3) {
                const auto corner = [&](std::size_t c) -> const W3d_Vertex& { return mesh.vertices[mesh.triangles[t + c]]; };
                Vec3 middle{}, normal{};
                float mean = 0;
                for (std::size_t c = 0; c < 3; ++c) {
                    middle = Moved(middle, 1 / 3.0f, corner(c).at);
                    normal = Moved(normal, 1, corner(c).normal);
                    mean += share(corner(c).normal, corner(c).at) / 3;
                }
                const Vec3 plane = Facing(corner(0).at, corner(1).at, corner(2).at);
                const std::array<float, 4> shares = {1, share(plane, middle), mean, share(normal, middle)};
                const Colour expected = mode < 2 ? view.background : Lit_Colour(solid->Material(1), shares[mode - 2]);
                const Point p = camera.See(middle).at;
                EXPECT_LE(Apart(Pixel(frame, static_cast<int>(p.x), static_cast<int>(height - p.y)), expected), 4)
                    << "mode " << mode << " triangle " << t / 3 << " side " << side;
            }
            int edges = 0;
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) edges += Apart(Pixel(frame, x, y), view.edge_colour) < 20;
            EXPECT_EQ(edges > 100, mode < 3) << mode;
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
        for (int y = height / 2 - 65; y < height / 2 + 65; ++y)  // inside the upper one
            for (int x = width / 2 - 65; x < width / 2 + 65; ++x) count += Apart(Pixel(frame, x, y), view.background) > 60;
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

// Every second column stands high, and none of those that are drawn while it turns: by the processor, and as by a card.
TEST_F(OpenGL_Solid_View, ALargeSolidTurnsWithFewerFacets) {
    const auto level = Sheet(2, 2, [](int, int) { return 0.0f; });
    const W3d_View view = Seen_From(60, -45, 9);
    const OpenGL_Kind had = *The_Toolkit().opengl;
    for (const auto& [kind, columns, rows] : {std::tuple(OpenGL_Kind::processor, 401, 301), {OpenGL_Kind::card, 1101, 1001}}) {
        const auto solid = Sheet(columns, rows, [](int i, int) { return i % 2 == 0 ? 0 : 0.3f; });
        The_Toolkit().opengl = kind;
        Open(61);
        W3dPut(solid);
        W3dShow(view, true);
        EXPECT_EQ(Otherwise(*level, view), 0);
        W3dShow(view, kind == OpenGL_Kind::card);  // still, the large one would take a processor too long
        EXPECT_EQ(Otherwise(*level, view) > 1000, kind == OpenGL_Kind::processor);
        W3dPut(level);
        W3dShow(view, true);
        EXPECT_EQ(Otherwise(*level, view), 0);
        WindowCloseChild(61);
    }
    The_Toolkit().opengl = had;
}

TEST_F(Solid_View, SizesAndNewSolids) {
    const W3d_View view = Seen_From(25, -45, 6);
    W3dShow(view);  // nothing yet: the background alone
    EXPECT_EQ(Pixel(Frame(), 9, 9), view.background);
    for (const Size size : {Size{320, 240}, {500, 300}, {300, 500}, {240, 160}}) {
        WindowResize(size[0], size[1]);
        EXPECT_EQ(Shown(), size);
        for (const unsigned seed : {1u, 2u}) {
            for (int twice = 0; twice < 2; ++twice) W3dPut(Ridges(seed)), W3dShow(view);
            EXPECT_EQ(Otherwise(*Ridges(seed), view), 0) << size[0] << ' ' << seed;
        }
    }
    // What other windows take leaves it as it is.
    WBitmapPut(Bitmap(30, 20));
    WOverlayPut(Recording_Device(30, 20));
    WindowSplit(2, true);
    EXPECT_EQ(Otherwise(*Ridges(2), view), 0);
    EXPECT_EQ(WInfoWindow(1, 2), 0);
    WindowSelect(main_window);
    W3dPut(Ridges(1));  // it shows no solid
    W3dShow(view);
    EXPECT_FALSE(W3dOpenGL());
}

TEST_F(Solid_View, ManyWindowsOpenAndClose) {
    const W3d_View view = Seen_From(25, -45, 6);
    for (unsigned round = 0; round < 12; ++round) {
        for (const int number : {61, 62}) {
            WindowOpenChild(number, "Solid", width, height, Child_Kind::solid);
            W3dPut(Ridges(round));  // before it is shown
            W3dShow(view);
            if (round % 4 == 3) continue;  // never seen
            WindowShow();
            W3dShow(view);
            EXPECT_EQ(Otherwise(*Ridges(round), view), 0) << round;
        }
        for (const int number : {61, 62}) WindowCloseChild(number);
    }
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
        for (int wait = 0; wait < 1000 && W3dOpenGL(); ++wait, QThread::msleep(10)) QCoreApplication::processEvents();
        EXPECT_FALSE(W3dOpenGL());
        EXPECT_EQ(Shown(), (Size{width, height}));
        EXPECT_EQ(Frame(), Projected(*solid, view));
        WindowCloseChild(61);
    }
    The_Toolkit().opengl = had;
}

TEST_F(Solid_View, AHandIsTold) {
    for (const Message_Kind kind : {Message_Kind::mouse_down, Message_Kind::mouse_up, Message_Kind::mouse_move})
        WMessageEnable(model_window, kind, true);
    while (WMessagePeek()) continue;
    const QPointF at(80, 60);
    const auto press = QEvent::MouseButtonPress;
    for (const auto& [type, button] : {std::pair(press, Qt::LeftButton),
                                       {QEvent::MouseMove, Qt::NoButton},
                                       {QEvent::MouseButtonRelease, Qt::LeftButton},
                                       {QEvent::MouseButtonDblClick, Qt::RightButton},
                                       {press, Qt::BackButton}}) {
        QMouseEvent event(type, at, at, at, button, button, {});
        QCoreApplication::sendEvent(&Area(), &event);
    }
    for (const int turn : {60, 60, -240}) {
        QWheelEvent event(at, at, {}, {0, turn}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&Area(), &event);
    }
    for (const auto& [kind, value] : {std::pair(Message_Kind::mouse_down, 1),
                                      {Message_Kind::mouse_move, 0},
                                      {Message_Kind::mouse_up, 1},
                                      {Message_Kind::mouse_down, 3},
                                      {Message_Kind::key_down, int{key_back}},
                                      {Message_Kind::wheel, 1},
                                      {Message_Kind::wheel, -1},
                                      {Message_Kind::wheel, -1}}) {
        const std::optional<Message> message = WMessagePeek();
        ASSERT_TRUE(message);
        const WIN_MESSAGE& record = message->record;
        EXPECT_EQ(std::tuple(message->kind, record.win, record.value1), std::tuple(kind, model_window, value));
        if (kind == Message_Kind::key_down) continue;
        EXPECT_EQ(std::tuple(record.x, record.y, record.value4), std::tuple(300, 600, 1));  // of 1200 by 800, in the one pane
    }
    EXPECT_FALSE(WMessagePeek());
}

}  // namespace
}  // namespace vntl
