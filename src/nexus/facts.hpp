// What an entry tells beside its data: every number and text that stands alone.
#pragma once

#include <functional>
#include <string>

#include "nexus/hdf5.hpp"

namespace vntl::nexus {

struct Fact {
    std::string path;   // within the entry
    std::string kind;   // NX_class of its group
    std::string units;  // blank where none are told
    std::string value;
};

// Members of groups above come before those of groups below.
void Tell_Facts(const Handle& entry, const std::function<void(const Fact&)>& tell);

}  // namespace vntl::nexus
