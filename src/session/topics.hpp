// What scripts can print of the session.
#pragma once

#include <vector>

#include "base/topic.hpp"

namespace vntl {

class Profile_Store;
struct Session;

std::vector<Topic> Store_Topics(const Profile_Store&);  // rows, data, reflections, excluded
std::vector<Topic> State_Topics(const Session&);        // state, lists, fit, quick view, recent files, preferences, paths, timing

}  // namespace vntl
