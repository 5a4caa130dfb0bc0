// What the program vantrelo-nexus tells of a NeXus file on its standard output, for the reader of patterns that asked it.
//
// A stream of records, numbers as this machine has them:
//   8 letters      the name of the record, blanks behind it
//   8 bytes        the length of what follows
//   ...            that many bytes, and zeros up to a multiple of 8
//
//   REFUSED        a sentence: the file holds no pattern. Nothing else follows.
//   FACT           4 fields: path within the entry, class of its group, units, value
//   SIGNAL         3 fields: name, units, longer name
//   AXIS           3 fields: name, units, longer name, of x
//   FRAMES         3 fields: name, units, longer name, of the axis along which the frames stand; where there is one
//   SHAPE          3 fields: frames (0 where the signal has one dimension), points a frame, frames that the file holds
//   Y              4-byte reals: points of the first frame, of the second one, ...
//   ERRORS         as many: standard deviations; where the file has them
//   X              4-byte reals: as many as points, one more (edges of bins), or as many as that for each frame
//   VALUES         4-byte reals: of the frames' axis, one a frame
//   END            nothing: the answer is whole
// Fields are parted by TABs. A record of another name is passed over.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace vntl::nexus_stream {

inline constexpr std::size_t name_width = 8, head_size = 16, padding = 8;

// Frames that become patterns at most.
inline constexpr std::size_t most_frames = 2000;

inline std::size_t Padded(std::size_t size) { return (size + padding - 1) / padding * padding; }

inline std::array<char, head_size> Head_Of_Record(std::string_view name, std::uint64_t length) {
    std::array<char, head_size> head;
    head.fill(' ');
    std::memcpy(head.data(), name.data(), name.size() < name_width ? name.size() : name_width);
    std::memcpy(head.data() + name_width, &length, sizeof length);
    return head;
}

struct Record {
    std::string_view name, content;
};

// Takes the next record of a stream; false at its end, and where it is cut.
inline bool Take_Record(std::string_view& stream, Record& record) {
    if (stream.size() < head_size) return false;
    std::uint64_t length = 0;
    std::memcpy(&length, stream.data() + name_width, sizeof length);
    record.name = stream.substr(0, name_width);
    record.name = record.name.substr(0, record.name.find_last_not_of(' ') + 1);
    stream.remove_prefix(head_size);
    if (length > stream.size()) return false;
    record.content = stream.substr(0, length);
    stream.remove_prefix(Padded(length) < stream.size() ? Padded(length) : stream.size());
    return true;
}

// The fields of a record, blank ones where it has fewer.
template <std::size_t n>
std::array<std::string_view, n> Fields(std::string_view content) {
    std::array<std::string_view, n> fields{};
    for (std::size_t i = 0; i < n && !content.empty(); ++i) {
        const std::size_t end = i + 1 < n ? content.find('\t') : std::string_view::npos;
        fields[i] = content.substr(0, end);
        content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
    }
    return fields;
}

}  // namespace vntl::nexus_stream
