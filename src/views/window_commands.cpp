// Commands of windows still to come.
#include "views/views.hpp"

namespace vntl {

namespace {

constexpr Command commands[] = {
    {command::viewer_2d, "Vantrelo 2D", "viewer_2d", nullptr, "", "Look at the pictures of area detectors"},
    {command::generic_graphs, "Vantrelo Generic Graphs", "graphs", nullptr, "", "Draw columns of numbers as graphs"},
    {command::sequential_results, "View result of sequential refinements", "sequential", nullptr, "",
     "Draw the results of sequential refinements"},
};

}  // namespace

Command_Family Window_Commands() { return {commands}; }

}  // namespace vntl
