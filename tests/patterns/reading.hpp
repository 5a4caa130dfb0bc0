// How tests read files of several patterns, and look at what their heads told.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "patterns/read_notes.hpp"
#include "patterns/testing.hpp"

namespace vntl::test {

struct Reading {
    Status status;
    std::vector<Diffraction_Pattern_Type> patterns;
    Read_Notes notes;
};

using Read_All = Status (*)(std::string_view, std::vector<Diffraction_Pattern_Type>&, Read_Notes&);

inline Reading Read_By(Read_All read, std::string_view bytes) {
    Reading reading;
    reading.status = read(bytes, reading.patterns, reading.notes);
    for (const auto& p : reading.patterns)
        for (const std::size_t size : {p.x.size(), p.y.size(), p.sigma.size()}) EXPECT_EQ(size, static_cast<std::size_t>(p.npts));
    return reading;
}

// The one pattern of a good file, an empty one in the place of what is missing.
inline Diffraction_Pattern_Type Only(const Reading& reading) {
    EXPECT_EQ(reading.status.message, "");
    EXPECT_EQ(reading.patterns.size(), 1u);
    return reading.patterns.empty() ? Diffraction_Pattern_Type{} : reading.patterns.front();
}

inline std::string Fact(const Diffraction_Pattern_Type& p, std::string_view name) {
    if (p.facts != nullptr)
        for (const Head_Fact& fact : *p.facts)
            if (fact.name == name) return fact.value;
    return {};
}

inline std::string Facts(const Diffraction_Pattern_Type& p) {
    std::string text;
    if (p.facts != nullptr)
        for (const Head_Fact& fact : *p.facts) text += fact.name + '=' + fact.value + ';';
    return text;
}

}  // namespace vntl::test
