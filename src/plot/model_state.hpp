// The window of the model: from where it is seen and lit, how far it is stretched, how it is coloured, and what it shows.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "base/colour.hpp"
#include "session/plot_grid.hpp"
#include "solid/w3d.hpp"
#include "toolkit/messages.hpp"

namespace vntl {

struct Polar_Place {
    float elevation = 0, azimuth = 0, distance = 0;  // degrees; solid/w3d_view tells the coordinates
};

inline constexpr float nearest_view = 2, farthest_view = 30;
inline constexpr float steepest_view = 89.9f;  // straight above, the picture would have no upright
inline constexpr float least_scale = 0.2f, largest_scale = 5;

struct Model3D {
    int render_mode = 4;  // 0 to 5, see Render_Mode
    Polar_Place light{45, 0, 12}, view{22.5f, -45, 20};
    std::array<float, 3> scale{1, 1, 1};  // factors of the three axes
    float spin_step = 4;                  // degrees; the sign is the direction
    Colour model_colour = WRGB(70, 130, 180), edge_colour = WRGB(0, 0, 0), background = WRGB(192, 192, 192);
    bool dragging = false;
    double hand_x = 0, hand_y = 0;  // where a drag was last, page units
    bool of_grid = true;            // else of a file
    int window = model_window;      // that it is shown in

    std::optional<PlotGrid> own_grid;  // where it is not the session's
    std::string own_x_title;           // and what lies along its x

    std::shared_ptr<const W3d> solid;  // none while the window is closed
    std::shared_ptr<const W3d> shown;  // the same, stretched
};

// A step of the animation.
void Spin_Model(Model3D&);

// The eye goes away, or comes nearer.
void Move_Eye(Model3D&, float step);

// The model follows the hand to a place in page units: half a turn a width or a height of the page.
void Turn_Model_To(Model3D&, double x, double y);

// The speed changes and the direction stays, or the other way round.
void Set_Spin_Speed(Model3D&, float step);
void Set_Spin_Direction(Model3D&, bool clockwise);

// The place with these coordinates; `otherwise` where they tell none.
Polar_Place Polar_Of(const std::array<float, 3>& at, const Polar_Place& otherwise);

}  // namespace vntl
