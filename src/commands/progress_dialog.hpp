// How far a long work is: a bar, what is in hand, and a button that ends it.
#pragma once

#include <memory>
#include <string_view>

#include "base/ask.hpp"
#include "toolkit/dialog.hpp"

namespace vntl {

Dialog_Resource Progress_Dialog_Resource();

// The dialog comes up when the work takes longer than a glance. The button ends the work, and so does Escape from the start.
std::unique_ptr<Progress> Start_Progress_Dialog(std::string_view title, int total, std::string_view button = "Cancel");

}  // namespace vntl
