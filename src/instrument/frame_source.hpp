// A run with pictures, as whoever needs its frames sees it, wherever they lie.
#pragma once

#include "base/status.hpp"
#include "instrument/numor.hpp"
#include "instrument/read_numor.hpp"

namespace vntl {

class Frame_Source {
public:
    virtual ~Frame_Source() = default;

    virtual const SXTAL_Numor_Type& Run() const = 0;  // its header and the table of its frames; the counts may be absent
    virtual int nx() const = 0;                       // pixels of a frame
    virtual int ny() const = 0;
    // The counts of a frame, from 1: ny rows of nx. `counts` stays on failure.
    virtual Status Frame(int frame, Count_Matrix& counts) = 0;
};

}  // namespace vntl
