// Devices that write a page into a file as a drawing.
#pragma once

#include <memory>
#include <string>

#include "base/status.hpp"
#include "drawing/device.hpp"
#include "pictures/hardcopy_options.hpp"

namespace vntl {

// The page is collected in memory and replaces the file in one step when the device is closed. A failure, of opening or of writing, is told
// by Close; after it the file that was there before is unchanged. Width and height of all of them are in points.
class Vector_Device : public Device {
public:
    virtual Status Close() = 0;
};

enum class Vector_Format { postscript, svg, pdf };

// By Cairo.
std::unique_ptr<Vector_Device> Open_Vector_Device(Vector_Format, const std::string& file, double width, double height,
                                                  const Hardcopy_Options& options = {});

// A drawing for CAD programs: ASCII, release 2000, in millimetres.
std::unique_ptr<Vector_Device> Open_Dxf(const std::string& file, double width, double height, const Hardcopy_Options& options = {});

// A Computer Graphics Metafile, ISO 8632-3 (binary encoding).
std::unique_ptr<Vector_Device> Open_Cgm(const std::string& file, double width, double height, const Hardcopy_Options& options = {});

// An enhanced metafile, or the older one of 16 bits.
std::unique_ptr<Vector_Device> Open_Metafile(const std::string& file, double width, double height, const Hardcopy_Options& options = {});

}  // namespace vntl
