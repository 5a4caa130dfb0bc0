// What holds for every reader of a laboratory's text files, whatever the bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "base/text.hpp"
#include "patterns/pattern.hpp"
#include "patterns/read_notes.hpp"

namespace vntl::fuzz {

// Patterns or a message, never both; points that are in the file, in bounded memory; texts that a window can show.
inline int Read_Any(Status (*read)(std::string_view, std::vector<Diffraction_Pattern_Type>&, Read_Notes&), bool (*is)(std::string_view),
                    const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t longest_message = 150;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    std::vector<Diffraction_Pattern_Type> patterns;
    Read_Notes notes;
    is(bytes);
    const Status status = read(bytes, patterns, notes);
    if (status.failed != patterns.empty() || status.message.size() > longest_message) std::abort();
    std::size_t points = 0;
    for (const auto& p : patterns) {
        const auto n = static_cast<std::size_t>(p.npts);
        if (p.npts < 1 || p.x.size() != n || p.y.size() != n || p.sigma.size() != n || To_Utf8(p.title) != p.title) std::abort();
        if (p.npts_claimed != 0 && p.npts_claimed <= p.npts) std::abort();
        if (p.facts != nullptr)
            for (const Head_Fact& fact : *p.facts)
                if (To_Utf8(fact.name) != fact.name || To_Utf8(fact.value) != fact.value) std::abort();
        points += n;
    }
    if (points > size) std::abort();
    return 0;
}

}  // namespace vntl::fuzz
