// Entries of the menus of windows, in the order in which they are thought of.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "toolkit/window.hpp"

namespace vntl {

inline Menu_Entry Popup(std::string label, std::vector<Menu_Entry> entries) {
    return {0, std::move(label), "", "", "", std::move(entries), true};
}
inline Menu_Entry Entry(int command, std::string label, std::string hint, std::string key = {}, std::string icon = {}) {
    return {command, std::move(label), std::move(key), std::move(hint), std::move(icon), {}};
}
inline Menu_Entry Marked_Entry(int command, std::string label, std::string hint, std::string icon = {}) {
    return {command, std::move(label), "", std::move(hint), std::move(icon), {}, false, true};
}

}  // namespace vntl
