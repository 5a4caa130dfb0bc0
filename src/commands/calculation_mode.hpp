// The modes of the form "calculation": in each of them clicks act on one list.
#pragma once

#include "session/plot_form.hpp"

namespace vntl {

struct Session;

// An empty store has no modes. The lists are in counts, and so is the view: that of a logarithmic form is brought to them.
void Begin_Mode(Session&, Click_Mode mode);
void End_Mode(Session&, bool keep_fit = false);  // back to the form of a single profile, or of several

}  // namespace vntl
