// Commands of windows still to come.
#include "views/views.hpp"

namespace vntl {

namespace {

constexpr Command commands[] = {
    {command::viewer_2d, "Vantrelo 2D", "viewer_2d", nullptr, "", "Look at the pictures of area detectors"},
};

}  // namespace

Command_Family Window_Commands() { return {commands}; }

}  // namespace vntl
