// The data of an HDF5 file that are there to be plotted, by the conventions of NeXus.
#pragma once

#include <optional>
#include <string>

#include "nexus/hdf5.hpp"

namespace vntl::nexus {

struct Array {
    Handle data_set;
    std::string name;
    Array_Form form;

    explicit operator bool() const { return static_cast<bool>(data_set); }
};

// A signal over one axis, or frames of it.
struct Plot_Data {
    Array signal, x;
    Array errors;            // standard deviations; empty without them
    Array frames;            // of the axis of the frames; empty without it
    bool x_first = false;    // the signal's first dimension is x, and the second one that of the frames
    std::size_t count = 0;   // of frames; 0 where the signal has one dimension
    std::size_t points = 0;  // of a frame
};

struct Found {
    std::optional<Plot_Data> data;
    Handle entry;         // the group whose members tell of the measurement
    std::string refusal;  // a sentence, where there are no data
};

// What the attributes `default` lead to from the root down, or else the first NXdata of an NXentry that holds patterns.
Found Find_Plot_Data(const Handle& root);

}  // namespace vntl::nexus
