#include "solid/facet_pile.hpp"

#include <algorithm>

#include "solid/vec3.hpp"

namespace vntl {

void Facet_Pile::Place(const Vec3& at) {
    const W3d_Camera::Seen seen = camera_.See(at);
    spots_.push_back(at);
    places_.push_back(seen.at);
    shown_.push_back(seen.depth > camera_.Nearest());
}

void Facet_Pile::Lay(const Corners& corners, Number count, Colour colour) {
    const auto shown = std::count_if(corners.begin(), corners.begin() + count, [this](Number corner) { return shown_[corner] != 0; });
    if (shown == count) {
        facets_.push_back({corners, count, colour});
    } else if (shown > 0 && count == 4) {
        Lay({corners[0], corners[1], corners[2]}, 3, colour);
        Lay({corners[0], corners[2], corners[3]}, 3, colour);
    } else if (shown > 0) {
        Lay_Cut(corners, count, colour);
    }
}

// What of a line or a triangle lies beyond the nearest depth.
void Facet_Pile::Lay_Cut(const Corners& corners, Number count, Colour colour) {
    Corners cut{};
    Number cut_count = 0;
    for (Number k = 0; k < count; ++k) {
        const Number here = corners[k], next = corners[(k + 1) % count];
        if (shown_[here] != 0) cut[cut_count++] = here;
        if (shown_[here] == shown_[next] || (count == 2 && k == 1)) continue;
        const double depth = camera_.See(spots_[here]).depth, next_depth = camera_.See(spots_[next]).depth;
        const double share = (camera_.Nearest() - depth) / (next_depth - depth);
        cut[cut_count++] = Next();
        Place(Moved(spots_[here], static_cast<float>(share), Minus(spots_[next], spots_[here])));
    }
    facets_.push_back({cut, cut_count, colour});
}

void Facet_Pile::Draw(Device& device) const {
    if (!facets_.empty()) device.Facets({places_, facets_, 1});
}

}  // namespace vntl
