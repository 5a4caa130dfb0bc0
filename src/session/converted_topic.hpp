// Runs of powder diffractometers as one pattern, as scripts print it.
#pragma once

#include <string>

#include "base/topic.hpp"

namespace vntl {

// converted INSTRUMENT FILE.. [cal FILE] [norm V] [bank N]: runs, compressed or not, with a calibration of the detectors, normalised to a
// monitor (or, of R3B and R22, to -V seconds), of one bank of R8. Names of files are relative to `directory`.
Topic Converted_Topic(const std::string& directory);

}  // namespace vntl
