// Dialog "Playing control": the rows one after another as a film, by hand or at the pace of a timer.
#pragma once

#include "toolkit/dialog.hpp"

namespace vntl {

struct Session;

Dialog_Resource Playing_Dialog_Resource();
void Playing_Dialog(Session&);  // rows shown and styles are at its end what they were; the caller draws them

}  // namespace vntl
