#include "pictures/cgm_elements.hpp"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace vntl {

namespace {

constexpr std::size_t longest_short = 30;  // octets of parameters behind a short header
constexpr unsigned another_part = 0x8000;
// Octets of a string, or of a part of one, whose length fills one octet, and of a part whose length fills a word behind it.
constexpr std::size_t longest_short_string = 254, longest_string_part = 32767;

}  // namespace

template <int octets>
Cgm_Elements& Cgm_Elements::Append(unsigned value) {
    char big_endian[octets];
    for (int k = 0; k < octets; ++k) big_endian[k] = static_cast<char>(value >> 8 * (octets - 1 - k) & 0xff);
    parameters_.append(big_endian, octets);
    return *this;
}

Cgm_Elements& Cgm_Elements::Octet(unsigned value) { return Append<1>(value); }

Cgm_Elements& Cgm_Elements::Integer(int value) { return Append<2>(static_cast<unsigned>(value)); }

Cgm_Elements& Cgm_Elements::Real(float value) { return Append<4>(std::bit_cast<std::uint32_t>(value)); }

Cgm_Elements& Cgm_Elements::Length(int value) {
    return wide_ ? Append<4>(static_cast<unsigned>(value)) : Append<2>(static_cast<unsigned>(value));
}

Cgm_Elements& Cgm_Elements::Rgb(Colour colour) { return Append<3>(Red(colour) << 16 | Green(colour) << 8 | Blue(colour)); }

Cgm_Elements& Cgm_Elements::String(std::string_view octets) {
    if (octets.size() <= longest_short_string) {
        Octet(static_cast<unsigned>(octets.size()));
        parameters_ += octets;
        return *this;
    }
    Octet(255);
    while (true) {
        const std::string_view part = octets.substr(0, longest_string_part);
        octets.remove_prefix(part.size());
        Append<2>(static_cast<unsigned>(part.size()) | (octets.empty() ? 0 : another_part));
        parameters_ += part;
        if (octets.empty()) return *this;
    }
}

Cgm_Elements& Cgm_Elements::Even() { return parameters_.size() % 2 == 0 ? *this : Octet(0); }

void Cgm_Elements::Put(Cgm_Element element) {
    const auto word = [this](unsigned value) {
        text_ += static_cast<char>(value >> 8 & 0xff);
        text_ += static_cast<char>(value & 0xff);
    };
    const unsigned head = static_cast<unsigned>(element.of_class) << 12 | static_cast<unsigned>(element.number) << 5;
    const std::size_t octets = parameters_.size();
    Even();
    if (octets <= longest_short) {
        word(head | static_cast<unsigned>(octets));
        text_ += parameters_;
    } else {
        word(head | 31);
        for (std::size_t from = 0; from < octets; from += cgm_longest_part) {
            const std::size_t part = std::min<std::size_t>(octets - from, cgm_longest_part);
            word(static_cast<unsigned>(part) | (from + part < octets ? another_part : 0));
            text_.append(parameters_, from, part + part % 2);
        }
    }
    parameters_.clear();
}

void Cgm_Elements::Set(Cgm_Element attribute) {
    std::string& in_force = in_force_[static_cast<std::size_t>(attribute.number)];
    if (parameters_ == in_force)
        parameters_.clear();
    else
        in_force = parameters_, Put(attribute);
}

}  // namespace vntl
