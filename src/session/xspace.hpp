// The present x space: what may join it, and the titles and menu states that follow from it.
#pragma once

#include <string>
#include <string_view>

#include "base/status.hpp"
#include "patterns/pattern.hpp"

namespace vntl {

struct Session;

// Decides whether a pattern that was just read may join the present x space. The first accepted file sets the space.
Status Check_Load_Xspace(Session&, Diffraction_Pattern_Type& pattern, const std::string& filename);

// Stores `name` as the present x space with its titles and menu states. `x_title` and `y_title` replace the titles of the table where
// they are not blank; only general abscissas take a `y_title`. `file_kind` "PRF" marks a profile file of a refinement.
void Set_Xspace(Session&, std::string_view name, std::string_view file_kind = {}, std::string_view x_title = {},
                std::string_view y_title = {});

}  // namespace vntl
