// The bytes of a binary file, little endian, by their places.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "base/text.hpp"

namespace vntl {

static_assert(std::endian::native == std::endian::little, "values are copied as they stand");

// Values at an offset in bytes. One that does not lie within the bytes whole is 0, and `Whole` is false from then on: a head is read in one
// go and looked at afterwards.
class Byte_View {
public:
    explicit Byte_View(std::string_view bytes) : bytes_(bytes) {}

    std::size_t Size() const { return bytes_.size(); }
    bool Holds(std::size_t at, std::size_t size) const { return at <= bytes_.size() && size <= bytes_.size() - at; }
    bool Whole() const { return whole_; }

    std::uint8_t U1(std::size_t at) { return Value<std::uint8_t>(at); }
    std::uint16_t U2(std::size_t at) { return Value<std::uint16_t>(at); }
    std::uint32_t U4(std::size_t at) { return Value<std::uint32_t>(at); }
    std::int16_t I2(std::size_t at) { return Value<std::int16_t>(at); }
    std::int32_t I4(std::size_t at) { return Value<std::int32_t>(at); }
    float F4(std::size_t at) { return Value<float>(at); }
    double F8(std::size_t at) { return Value<double>(at); }

    // A text of at most so many bytes, ended by a NUL or padded with blanks, in the file's own character set. Control bytes are blanks: it
    // is shown in one line.
    std::string Text(std::size_t at, std::size_t width) {
        if (!Holds(at, width)) {
            whole_ = false;
            return {};
        }
        std::string field(bytes_.substr(at, width));
        field.resize(std::min(field.find('\0'), field.size()));
        for (char& c : field)
            if (static_cast<unsigned char>(c) < ' ') c = ' ';
        return std::string(Trim(field));
    }

    // The bytes from a place on; none behind the end.
    std::string_view From(std::size_t at) const { return bytes_.substr(at < bytes_.size() ? at : bytes_.size()); }

private:
    template <class Number>
    Number Value(std::size_t at) {
        Number number{};
        if (Holds(at, sizeof number))
            std::memcpy(&number, bytes_.data() + at, sizeof number);
        else
            whole_ = false;
        return number;
    }

    std::string_view bytes_;
    bool whole_ = true;
};

}  // namespace vntl
