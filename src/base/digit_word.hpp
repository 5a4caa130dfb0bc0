// Up to eight characters of a text at once in one 64-bit word, the first character in the lowest byte: whether they are digits, and the
// number that they make, without a branch on how many there are. Columns of unequal numbers so cost no mispredictions.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vntl {

// On other machines the first character would be the highest byte: there callers go character by character.
inline constexpr bool has_digit_words = std::endian::native == std::endian::little;

inline constexpr int word_digits = 8;
inline constexpr std::uint64_t zero_digits = 0x3030303030303030u;

// The characters of [first, last), not more than eight; behind `last` stand zero bytes, which are no digits.
inline std::uint64_t Load_Word(const char* first, const char* last) {
    const std::ptrdiff_t n = last - first;
    std::uint64_t word = 0;
    if (n >= 8) {
        std::memcpy(&word, first, 8);
    } else if (n >= 4) {  // two halves that overlap
        std::uint32_t low, high;
        std::memcpy(&low, first, 4);
        std::memcpy(&high, last - 4, 4);
        word = low | static_cast<std::uint64_t>(high) << 8 * (n - 4);
    } else if (n > 0) {  // the first, middle and last of one to three characters, which may coincide
        const auto at = [first](std::ptrdiff_t i) { return static_cast<std::uint64_t>(static_cast<unsigned char>(first[i])) << 8 * i; };
        word = at(0) | at(n / 2) | at(n - 1);
    }
    return word;
}

// The top bit of each byte that is no digit. Only the first of them is sure: a byte above 0x89 carries into the bytes behind it. Here and
// below the word is one of characters ^ zero_digits, so that digits are 0 to 9.
inline std::uint64_t No_Digits(std::uint64_t word) { return ((word + 0x7676767676767676u) | word) & 0x8080808080808080u; }

// How many bytes stand in front of the first one that has its top bit set; 8 when none has.
inline int Bytes_Before(std::uint64_t marks) { return std::countr_zero(marks) / 8; }

inline bool Is_Point(std::uint64_t word, int place) { return (word >> 8 * place & 0xFF) == ('.' ^ '0'); }

// The word with the bytes behind `place` moved down into it.
inline std::uint64_t Without_Byte(std::uint64_t word, int place) {
    const std::uint64_t front = (std::uint64_t{1} << 8 * place) - 1;
    return (word & front) | (word >> 8 & ~front);
}

// The number of eight digits, the highest in the lowest byte, by adding neighbours in pairs, fours and eights.
inline std::uint32_t Eight_Digits(std::uint64_t word) {
    constexpr std::uint64_t every_fourth = 0x000000FF000000FFu;
    word = word * 10 + (word >> 8);
    word = ((word & every_fourth) * 0x000F424000000064u + ((word >> 16) & every_fourth) * 0x0000271000000001u) >> 32;
    return static_cast<std::uint32_t>(word);
}

}  // namespace vntl
