// Files that were made smaller: ".Z" of the program compress (LZW with codes of 9 to 16 bits, Welch, Computer 17(6), 1984), and gzip.
//
// They are told by their first bytes, whatever their names, and unpacked in memory: no program is started, no file is left behind.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/status.hpp"

namespace vntl {

enum class Packing { none, compress, gzip };

Packing Packing_Of(std::string_view bytes);

// A file that unpacks to more is refused: a few bytes may stand for any number of them.
inline constexpr std::size_t most_unpacked = std::size_t{512} << 20;

// The bytes that a file held before. What is not packed comes back as it is. Fails, and leaves `plain` as it was, where the bytes break
// off, contradict themselves or their check sum, or stand for more than `most`. The message names no file.
Status Unpack(std::string_view packed, std::string& plain, std::size_t most = most_unpacked);

// The first `count` bytes of them, or as many as can be had: what a file is, at the cost of its beginning.
std::string Unpacked_Head(std::string_view packed, std::size_t count);

}  // namespace vntl
