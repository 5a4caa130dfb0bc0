// Dialog 103: the program's name, version and date.
#pragma once

#include "toolkit/dialog.hpp"

namespace vntl {

struct Configuration;

Dialog_Resource About_Dialog_Resource();
void About_Dialog(const Configuration&);

}  // namespace vntl
