// Facets in space on their way to a page: laid one over the other, cut where they come too near to the eye.
#pragma once

#include <vector>

#include "drawing/device.hpp"
#include "solid/w3d_view.hpp"

namespace vntl {

class Facet_Pile {
public:
    using Number = std::uint32_t;
    using Corners = std::array<Number, 4>;

    explicit Facet_Pile(const W3d_Camera& camera) : camera_(camera) {}

    Number Next() const { return static_cast<Number>(places_.size()); }  // of the place that is added next
    void Place(const Vec3& at);
    void Lay(const Corners& corners, Number count, Colour colour);  // as in Facet
    void Draw(Device& device) const;

private:
    void Lay_Cut(const Corners& corners, Number count, Colour colour);

    const W3d_Camera& camera_;
    std::vector<Vec3> spots_;  // in space
    std::vector<Point> places_;
    std::vector<char> shown_;  // beyond the nearest depth
    std::vector<Facet> facets_;
};

}  // namespace vntl
