// What scripts can print of plots of any columns.
#pragma once

#include "base/topic.hpp"
#include "charts/generic_plots.hpp"

namespace vntl {

Topic Generic_Topic(const Generic_Plots& plots);

}  // namespace vntl
