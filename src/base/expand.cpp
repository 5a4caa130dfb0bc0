// Unpacking of .Z and gzip in memory, see expand.hpp.
//
// A .Z file is 1F 9D, a byte of flags, and codes with their low bits first:
//
//   flags      bits 0 to 4: the most bits of a code, 9 to 16; bit 7: code 256 empties the table of strings
//   codes      of 9 bits at first; a bit more as soon as the next string would not fit, up to the most
//   groups     eight codes are as many bytes as a code has bits; what follows a change of the width, or a 256, begins a new group
//
// Codes below 256 stand for their byte. Every other code stands for the string of the code before with the first byte of its own behind
// it, which is a piece of what was unpacked already: the table holds where it begins and how long it is.
#include "base/expand.hpp"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

namespace vntl {

namespace {

constexpr std::string_view compress_magic = "\x1f\x9d", gzip_magic = "\x1f\x8b";
constexpr std::size_t most_ever = std::size_t{1} << 31;  // places in the table have 32 bits

Status Breaks_Off() { return Status::Fail("The compressed data break off"); }
Status Contradicts() { return Status::Fail("The compressed data contradict themselves"); }
Status Too_Large() { return Status::Fail("Too large when it is unpacked"); }

// What has been unpacked, with room behind it.
class Output {
public:
    explicit Output(std::size_t most) : most_(std::min(most, most_ever)) {}

    std::size_t used = 0;

    char* data() { return bytes_.data(); }
    std::size_t room() const { return bytes_.size() - used; }
    bool Too_Many() const { return used > most_; }
    std::size_t Left() const { return Too_Many() ? 0 : most_ - used; }

    // Room for `n` bytes more; it at least doubles each time, but does not go far beyond the most.
    void Make_Room(std::size_t n) {
        if (room() >= n) return;
        constexpr std::size_t least = 4096;
        const std::size_t wanted = std::max(least, std::min(2 * bytes_.size(), most_ + least));
        bytes_.resize(std::max(wanted, used + n));
    }
    std::string Take(std::size_t n) {
        bytes_.resize(std::min(n, used));
        return std::move(bytes_);
    }

private:
    std::size_t most_;
    std::string bytes_;
};

// --- .Z ----------------------------------------------------------------------------------------------------------------------------

class Code_Reader {
public:
    explicit Code_Reader(std::string_view bytes) : bytes_(bytes) {}

    unsigned width = first_width;

    bool Next(unsigned& code) {
        const std::size_t byte = group_ + bit_ / 8;
        if (byte + sizeof(std::uint64_t) <= bytes_.size()) {
            code = At(byte, sizeof(std::uint64_t));
        } else {
            if (8 * (bytes_.size() - std::min(bytes_.size(), group_)) < bit_ + width) return false;
            code = At(byte, bytes_.size() - byte);
        }
        bit_ += width;
        return true;
    }

    void Begin_Group(unsigned new_width) {
        const std::size_t bits = 8 * std::size_t{width};
        group_ += (bit_ + bits - 1) / bits * width;
        bit_ = 0;
        width = new_width;
    }

    // Behind the last code there is nothing but what fills its byte, which is zero.
    bool Ends_Well() const {
        const std::size_t byte = group_ + bit_ / 8;
        if (byte >= bytes_.size()) return true;
        return bit_ % 8 != 0 && byte + 1 == bytes_.size() && At(byte, 1) == 0;
    }

    static constexpr unsigned first_width = 9, most_width = 16;

private:
    unsigned At(std::size_t byte, std::size_t count) const {
        std::uint64_t word = 0;
        if (count == sizeof word && std::endian::native == std::endian::little) {
            std::memcpy(&word, bytes_.data() + byte, sizeof word);
        } else {
            for (std::size_t i = 0; i < count; ++i) word |= std::uint64_t{static_cast<unsigned char>(bytes_[byte + i])} << (8 * i);
        }
        return static_cast<unsigned>(word >> (bit_ % 8)) & ((1u << width) - 1);
    }

    std::string_view bytes_;
    std::size_t group_ = 0;  // the byte where codes of the present width begin
    std::size_t bit_ = 0;    // of the next code, from there
};

struct Piece {
    std::uint32_t from = 0, length = 0;
};

// Copies a piece of the output to its end. Short ones go by whole blocks, whatever stands behind them.
void Copy_Piece(Output& output, const Piece& piece) {
    using Block = std::array<char, 16>;
    output.Make_Room(piece.length + sizeof(Block));
    char* const to = output.data() + output.used;
    const char* const from = output.data() + piece.from;
    if (from + piece.length > to) {  // the piece takes in the byte that it begins with
        for (std::size_t i = 0; i < piece.length; ++i) to[i] = from[i];
    } else if (piece.length <= sizeof(Block)) {
        Block block;
        std::memcpy(block.data(), from, sizeof block);
        std::memcpy(to, block.data(), sizeof block);
    } else {
        std::memcpy(to, from, piece.length);
    }
    output.used += piece.length;
}

Status Unpack_Compress(std::string_view packed, Output& output) {
    constexpr std::size_t head = 3;
    constexpr unsigned literals = 256, empties = 256;
    if (packed.size() < head) return Breaks_Off();
    const auto flags = static_cast<unsigned char>(packed[2]);
    const unsigned most_width = flags & 0x1fu;
    const bool may_empty = (flags & 0x80u) != 0;
    if (most_width < Code_Reader::first_width || most_width > Code_Reader::most_width) return Contradicts();
    const unsigned first = may_empty ? literals + 1 : literals, end = 1u << most_width;

    std::vector<Piece> pieces(end);
    Code_Reader codes(packed.substr(head));
    unsigned next = first;  // the code that the next string gets
    Piece last;             // the string of the code before; none after a 256
    for (unsigned code = 0; codes.Next(code);) {
        if (code == empties && may_empty) {
            codes.Begin_Group(Code_Reader::first_width);
            next = first;
            last = {};
            continue;
        }
        if (last.length > 0 && next < end) pieces[next++] = {last.from, last.length + 1};
        last.from = static_cast<std::uint32_t>(output.used);
        if (code < literals) {
            output.Make_Room(1);
            output.data()[output.used++] = static_cast<char>(code);
            last.length = 1;
        } else {
            if (code >= next) return Contradicts();
            const Piece piece = pieces[code];
            last.length = static_cast<std::uint32_t>(std::min<std::size_t>(piece.length, output.Left() + 1));
            Copy_Piece(output, {piece.from, last.length});
        }
        if (output.Too_Many()) return Too_Large();
        if (next >= 1u << codes.width && codes.width < most_width) codes.Begin_Group(codes.width + 1);
    }
    if (!codes.Ends_Well() || (last.length == 0 && output.used > 0)) return Breaks_Off();
    return Status::Done();
}

// --- gzip --------------------------------------------------------------------------------------------------------------------------

class Inflater {
public:
    Inflater() { ready_ = inflateInit2(&stream_, 15 + gzip_wrapper) == Z_OK; }
    ~Inflater() {
        if (ready_) inflateEnd(&stream_);
    }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    bool ready() const { return ready_; }
    std::string_view Rest() const { return rest_; }

    // One member: a head, the data and their check sum.
    Status Unpack_Member(std::string_view packed, Output& output) {
        rest_ = packed;
        if (inflateReset(&stream_) != Z_OK) return Contradicts();
        while (true) {
            output.Make_Room(1);
            constexpr std::size_t most = std::numeric_limits<uInt>::max();
            const std::size_t given = std::min(rest_.size(), most), room = std::min({output.room(), output.Left() + 1, most});
            stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(rest_.data()));  // zlib only reads it
            stream_.avail_in = static_cast<uInt>(given);
            stream_.next_out = reinterpret_cast<Bytef*>(output.data() + output.used);
            stream_.avail_out = static_cast<uInt>(room);
            const int result = inflate(&stream_, Z_NO_FLUSH);
            const std::size_t taken = given - stream_.avail_in, made = room - stream_.avail_out;
            rest_.remove_prefix(taken);
            output.used += made;
            if (output.Too_Many()) return Too_Large();
            if (result == Z_STREAM_END) return Status::Done();
            if (result == Z_MEM_ERROR) return Too_Large();
            if (result == Z_OK || (result == Z_BUF_ERROR && taken + made > 0)) continue;
            return result == Z_BUF_ERROR ? Breaks_Off() : Contradicts();
        }
    }

private:
    static constexpr int gzip_wrapper = 16;
    z_stream stream_{};
    bool ready_ = false;
    std::string_view rest_;
};

// Members follow one another; tapes fill their last block with zeros.
Status Unpack_Gzip(std::string_view packed, Output& output) {
    Inflater inflater;
    if (!inflater.ready()) return Too_Large();
    do {
        if (Status status = inflater.Unpack_Member(packed, output); status.failed) return status;
        packed = inflater.Rest();
    } while (packed.starts_with(gzip_magic.front()));
    return packed.find_first_not_of('\0') == std::string_view::npos ? Status::Done() : Contradicts();
}

Status Unpack_Into(std::string_view packed, Output& output) {
    return Packing_Of(packed) == Packing::gzip ? Unpack_Gzip(packed, output) : Unpack_Compress(packed, output);
}

}  // namespace

Packing Packing_Of(std::string_view bytes) {
    if (bytes.starts_with(compress_magic)) return Packing::compress;
    return bytes.starts_with(gzip_magic) ? Packing::gzip : Packing::none;
}

Status Unpack(std::string_view packed, std::string& plain, std::size_t most) {
    try {
        if (Packing_Of(packed) == Packing::none) {
            if (packed.size() > most) return Too_Large();
            plain = std::string(packed);
            return Status::Done();
        }
        Output output(most);
        const Status status = Unpack_Into(packed, output);
        if (status.ok()) plain = output.Take(output.used);
        return status;
    } catch (const std::bad_alloc&) {
        return Too_Large();
    }
}

std::string Unpacked_Head(std::string_view packed, std::size_t count) {
    try {
        if (Packing_Of(packed) == Packing::none) return std::string(packed.substr(0, count));
        Output output(count);
        [[maybe_unused]] const Status status = Unpack_Into(packed, output);
        return output.Take(count);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

}  // namespace vntl
