// Whole numbers as bytes of a file, the lowest byte first.
#pragma once

#include <cstdint>
#include <string>

namespace vntl {

inline void Put_16(std::string& bytes, std::uint32_t value) {
    const char two[] = {static_cast<char>(value & 0xff), static_cast<char>(value >> 8 & 0xff)};
    bytes.append(two, sizeof two);
}

inline void Put_32(std::string& bytes, std::uint32_t value) {
    const char four[] = {static_cast<char>(value & 0xff), static_cast<char>(value >> 8 & 0xff), static_cast<char>(value >> 16 & 0xff),
                         static_cast<char>(value >> 24 & 0xff)};
    bytes.append(four, sizeof four);
}

}  // namespace vntl
