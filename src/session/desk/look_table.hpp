// The one table of what a look says: settings files and scripts walk it. A new member of `Look` has a row here.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "session/desk/look.hpp"

namespace vntl {

struct Look_Row {
    std::string_view name;
    std::variant<bool Look::*, float Look::*, Colour Look::*, std::string Look::*> member;
    float most = 0;  // of a number, which is 0 at least
};

const std::vector<Look_Row>& Look_Table();

}  // namespace vntl
