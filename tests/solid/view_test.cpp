// Where points are seen, and how much light falls on them, by trigonometry.
#include "solid/w3d_view.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace vntl {
namespace {

void Expect_Near(const Vec3& found, const Vec3& wanted, float within) {
    for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(found[k], wanted[k], within) << "coordinate " << k;
}

TEST(Solid_View, Polar_Places) {
    const float root = 6 * std::numbers::sqrt2_v<float>;
    Expect_Near(From_Polar(45, 0, 12), {root, root, 0}, 1e-6f);
    Expect_Near(From_Polar(22.5, -45, 20), {13.065629f, 7.6536694f, -13.065629f}, 2e-6f);
    Expect_Near(From_Polar(-90, 77, 3), {0, -3, 0}, 1e-6f);
    Expect_Near(From_Polar(0, 90, 3), {0, 0, 3}, 1e-6f);
}

// Half of the shorter side is the distance times the tangent of 7.5 degrees.
TEST(Solid_View, The_Page_Of_An_Eye_In_Front) {
    const float half = static_cast<float>(20 * std::tan(7.5 * std::numbers::pi / 180));
    struct Case {
        Vec3 eye, point;
        double width, height, x, y, depth;
    };
    const Case cases[] = {
        {{0, 0, -20}, {0, 0, 0}, 800, 600, 400, 300, 20},
        {{0, 0, -20}, {0, half, 0}, 800, 600, 400, 600, 20},                // upward
        {{0, 0, -20}, {half, 0, 0}, 600, 800, 600, 400, 20},                // to the right
        {{0, 0, -20}, {half, 0, 20}, 600, 800, 450, 400, 40},               // half as large at twice the distance
        {{20, 0, 0}, {0, 0, half}, 600, 600, 600, 300, 20},                 // from the right the third axis runs to the right
        {{0, 0, 20}, {half, 0, 0}, 600, 600, 0, 300, 20},                   // from behind the first one runs to the left
        {{0, 20, 0}, {half, 0, half}, 600, 600, 600, 600, 20},              // straight from above
        {From_Polar(89.9, -90, 20), {0, 0, half}, 600, 600, 300, 600, 20},  // and nearly so
        {From_Polar(30, -90, 20), From_Polar(30, -90, 5), 600, 600, 300, 300, 15},
        {{0, 0, -20}, {1, 1, -25}, 600, 600, 300, 300, -5},  // behind the eye
    };
    for (const Case& c : cases) {
        const W3d_Camera::Seen seen = W3d_Camera(c.eye, c.width, c.height).See(c.point);
        const std::string label = testing::PrintToString(c.eye) + testing::PrintToString(c.point);
        EXPECT_NEAR(seen.at.x, c.x, 0.2) << label;
        EXPECT_NEAR(seen.at.y, c.y, 0.2) << label;
        EXPECT_NEAR(seen.depth, c.depth, 0.05) << label;
    }
}

TEST(Solid_View, The_Matrix_Gives_The_Same_Page) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> place(-7, 7), angle(-180, 180), distance(2, 30);
    for (int view = 0; view < 500; ++view) {
        const W3d_Camera camera(From_Polar(angle(random) / 2, angle(random), distance(random)), 800, 200 + view);
        const std::array<float, 16> matrix = camera.Matrix();
        const Vec3 point = {place(random), place(random), place(random)};
        const W3d_Camera::Seen seen = camera.See(point);
        std::array<double, 4> clip{};
        for (std::size_t k = 0; k < 4; ++k)
            clip[k] = matrix[k] * point[0] + matrix[4 + k] * point[1] + matrix[8 + k] * point[2] + matrix[12 + k];
        EXPECT_NEAR(clip[3], seen.depth, 1e-4);
        EXPECT_EQ(clip[2] > -clip[3], seen.depth > camera.Nearest()) << seen.depth;
        EXPECT_LT(clip[2], clip[3]);
        if (seen.depth < 1) continue;
        EXPECT_NEAR(400 * (1 + clip[0] / clip[3]), seen.at.x, 0.01);
        EXPECT_NEAR(0.5 * (200 + view) * (1 + clip[1] / clip[3]), seen.at.y, 0.01);
    }
}

TEST(Solid_View, Light) {
    const Vec3 up = {0, 3, 0};
    const float rest = 1 - ambient_light;
    EXPECT_FLOAT_EQ(Lit(up, {1, 0, 1}, {1, 5, 1}), 1);
    EXPECT_FLOAT_EQ(Lit(up, {0, 0, 0}, {7, 0, 0}), ambient_light + 0.25f * rest);
    EXPECT_FLOAT_EQ(Lit(up, {0, 0, 0}, {0, -4, 0}), ambient_light);
    EXPECT_NEAR(Lit(up, {1, 0, 0}, {2, 1, 0}), ambient_light + rest * std::pow(std::cos(std::numbers::pi / 8), 4), 1e-6);
    EXPECT_TRUE(std::isfinite(Lit({0, 0, 0}, {1, 1, 1}, {1, 1, 1})));
    EXPECT_EQ(Lit_Colour(WRGB(200, 100, 0), 0.5f), WRGB(100, 50, 0));
}

}  // namespace
}  // namespace vntl
