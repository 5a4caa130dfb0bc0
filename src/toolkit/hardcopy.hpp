// A picture drawn a second time, into a file: the one door to all formats.
#pragma once

#include <string>
#include <string_view>

#include "base/status.hpp"
#include "pictures/hardcopy_options.hpp"

namespace vntl {

// Opens the device, has `draw` draw on it, and closes it: the file is replaced in one step when it is whole. Fails, with the file's name in
// the message, on a size out of range and where it cannot be written; the file is then as it was. Not for the printer.
Status HardCopy(Hardcopy_Driver driver, const std::string& file, const Hardcopy_Options& options, const Draw_Routine& draw);

// A metafile on the clipboard, for the programs of an office.
Status HardCopy_To_Clipboard(const Hardcopy_Options& options, const Draw_Routine& draw);

// Whether a picture of this size is written: 1 to 32767 on a side, and not more than 150 million pixels.
bool Fits_Hardcopy(double width, double height);

// The driver and, of a bit image, the format that the ending of a name stands for; false for another ending.
bool Driver_Of_Name(std::string_view file, Hardcopy_Driver& driver, Image_Format& format);

}  // namespace vntl
