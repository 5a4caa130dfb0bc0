// All that is known of the file of a row: what the program keeps of it, and what else its head told.
#pragma once

#include "patterns/pattern.hpp"

namespace vntl {

class Profile_Store;

inline constexpr float known_temperature = 0.0001f;  // kelvin; not above it means unknown

// Names and texts, those of the row first: file, format, title, points, range, wavelengths or dtt1 and dtt2, temperature, time a step. What
// is not known has no entry.
Head_Facts File_Information(const Profile_Store& store, int row);

}  // namespace vntl
