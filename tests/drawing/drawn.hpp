// What a recording device holds of one kind.
#pragma once

#include <variant>
#include <vector>

#include "drawing/recording.hpp"

namespace vntl {

template <class Item>
std::vector<Item> Drawn(const Recording_Device& device) {
    std::vector<Item> found;
    for (const Recorded& item : device.items())
        if (const Item* one = std::get_if<Item>(&item)) found.push_back(*one);
    return found;
}

}  // namespace vntl
