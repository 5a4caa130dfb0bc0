// Zip archives written byte by byte from the layout of the format, good ones and those that lie.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vntl::test {

struct Zip_Member {
    std::string name, bytes;
    bool deflated = false;
    long long claimed = -1;  // size that the heads tell, where it is not the true one
    int flags = 0;           // 1: encrypted
};

inline std::string Deflated(const std::string& bytes) {
    z_stream stream{};
    if (deflateInit2(&stream, 9, Z_DEFLATED, -15, 9, Z_DEFAULT_STRATEGY) != Z_OK) return {};
    std::string packed(deflateBound(&stream, bytes.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

inline std::string Zip_File(const std::vector<Zip_Member>& members) {
    const auto number = [](std::uint64_t value, int width) {
        std::string text;
        for (int i = 0; i < width; ++i) text += static_cast<char>(i < 8 ? value >> 8 * i & 255 : 0);
        return text;
    };
    std::string file, directory;
    for (const Zip_Member& member : members) {
        const std::string packed = member.deflated ? Deflated(member.bytes) : member.bytes;
        const auto crc = crc32(0, reinterpret_cast<const Bytef*>(member.bytes.data()), static_cast<uInt>(member.bytes.size()));
        const std::uint64_t size = member.claimed >= 0 ? static_cast<std::uint64_t>(member.claimed) : member.bytes.size();
        const std::string common = number(20, 2) + number(static_cast<std::uint64_t>(member.flags), 2) +
                                   number(member.deflated ? 8 : 0, 2) + number(0x21, 4) + number(crc, 4) + number(packed.size(), 4) +
                                   number(size, 4) + number(member.name.size(), 2) + number(0, 2);
        directory += "PK\1\2" + number(20, 2) + common + number(0, 10) + number(file.size(), 4) + member.name;
        file += "PK\3\4" + common + member.name + packed;
    }
    const std::string count = number(members.size(), 2);
    return file + directory + "PK\5\6" + number(0, 4) + count + count + number(directory.size(), 4) + number(file.size(), 4) + number(0, 2);
}

}  // namespace vntl::test
