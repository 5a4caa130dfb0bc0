// The page: a fixed coordinate space that is stretched over the whole drawable, origin at the lower left.
#pragma once

namespace vntl {

inline constexpr float page_width = 1200.0f, page_height = 800.0f;

}  // namespace vntl
