// The modes of the form "calculation": in each of them clicks act on one list.
#pragma once

#include <string_view>

#include "session/plot_form.hpp"

namespace vntl {

struct Session;

// An empty store has no modes.
void Begin_Mode(Session&, Click_Mode mode, std::string_view hint);
void End_Mode(Session&, bool keep_fit = false);  // back to the form of a single profile

}  // namespace vntl
