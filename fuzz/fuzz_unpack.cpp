// Packed files: any bytes are unpacked or refused, in bounded memory and time; what is refused leaves the text alone, and the beginning of
// what is unpacked is its beginning. The first byte puts a head in front that makes the rest codes or a member.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/expand.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    std::string packed;
    if ((data[0] & 3) == 1) packed = {'\x1f', '\x9d', static_cast<char>(9 + (data[0] >> 2) % 8 + (data[0] & 0x80))};
    if ((data[0] & 3) == 2) packed = {'\x1f', '\x8b', 8, 0, 0, 0, 0, 0, 0, 3};
    packed.append(reinterpret_cast<const char*>(data) + 1, size - 1);

    constexpr std::size_t most = 1 << 20, head = 100;
    const std::string before = "before";
    std::string plain = before;
    const vntl::Status status = vntl::Unpack(packed, plain, most);
    if (status.failed ? status.message.empty() || plain != before : plain.size() > most) std::abort();
    const std::string begin = vntl::Unpacked_Head(packed, head), all = vntl::Unpacked_Head(packed, most);
    if (begin != all.substr(0, head) || (status.ok() && all != plain)) std::abort();
    return 0;
}
