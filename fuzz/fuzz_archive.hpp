// What the fuzz targets of archives share: members packed without compression, so that changes of the input reach the readers, and a look
// at the patterns.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl::fuzz {

inline std::uint32_t Checksum(std::string_view bytes) {
    static const auto table = [] {
        std::array<std::uint32_t, 256> values{};
        for (std::uint32_t i = 0; i < 256; ++i) {
            values[i] = i;
            for (int bit = 0; bit < 8; ++bit) values[i] = values[i] >> 1 ^ (values[i] & 1 ? 0xEDB88320u : 0u);
        }
        return values;
    }();
    std::uint32_t sum = 0xFFFFFFFFu;
    for (const char c : bytes) sum = sum >> 8 ^ table[(sum ^ static_cast<unsigned char>(c)) & 255];
    return ~sum;
}

inline std::string Stored(const std::vector<std::pair<std::string, std::string_view>>& members) {
    const auto number = [](std::size_t value, int width) {
        std::string text;
        for (int i = 0; i < width; ++i) text += static_cast<char>(value >> 8 * i & 255);
        return text;
    };
    std::string file, directory;
    for (const auto& [name, bytes] : members) {
        const std::string common = number(20, 2) + number(0, 4) + number(0x21, 4) + number(Checksum(bytes), 4) + number(bytes.size(), 4) +
                                   number(bytes.size(), 4) + number(name.size(), 2) + number(0, 2);
        directory += "PK\1\2" + number(20, 2) + common + std::string(10, '\0') + number(file.size(), 4) + name;
        file += "PK\3\4" + common + name + std::string(bytes);
    }
    const std::string count = number(members.size(), 2);
    return file + directory + "PK\5\6" + number(0, 4) + count + count + number(directory.size(), 4) + number(file.size(), 4) + number(0, 2);
}

template <class Read>
void Look_At_Patterns(std::string_view archive, Read read) {
    std::vector<Diffraction_Pattern_Type> patterns;
    Read_Notes notes;
    const Status status = read(archive, patterns, notes);
    if (status.ok() == patterns.empty() || (status.failed && status.message.size() > 150)) std::abort();
    for (const Diffraction_Pattern_Type& p : patterns) {
        const auto points = static_cast<std::size_t>(p.npts);
        if (p.npts < 1 || p.x.size() != points || p.y.size() != points || p.sigma.size() != points) std::abort();
        if (p.npts_claimed != 0 && p.npts_claimed <= p.npts) std::abort();
    }
}

}  // namespace vntl::fuzz
