// The background of a fit: straight lines between nodes, whose heights are parameters.
#pragma once

#include <span>
#include <vector>

namespace vntl {

class Background_Line {
public:
    // A point belongs to the first interval of nodes that holds it, a point outside all of them to the first one. One node is a constant.
    Background_Line(std::span<const float> node_x, std::span<const float> x);

    void Values(std::span<const float> heights, std::span<float> bgr) const;
    // column = weight times the derivative by the height of a node.
    void Derivative(int node, std::span<const float> weight, std::span<float> column) const;

private:
    struct Place {
        int left = 0;  // the node before the point
        float t = 0;   // from there to the next node, in parts of the interval
    };
    std::vector<Place> places_;
};

}  // namespace vntl
