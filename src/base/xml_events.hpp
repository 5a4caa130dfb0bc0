// A walk through an XML document: a call where an element begins, and one where it ends, with what stood in it.
//
// Documents come from anybody: nothing but the document itself is read, entities cannot make it longer than it is, and elements lie in each
// other 200 deep at most. UTF-8, UTF-16 and the encodings of one byte are understood, all that is told is UTF-8. Prefixes of namespaces are
// left out of the names: "xsi:type" is "type".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.hpp"

namespace vntl {

// The attributes of one element, as long as its beginning is told.
class Xml_Attributes {
public:
    explicit Xml_Attributes(const char** pairs) : pairs_(pairs) {}

    // Blank where there is none of the name.
    std::string_view operator[](std::string_view name) const;

private:
    const char** pairs_;  // names and values by turns, a null pointer at the end
};

// The elements that are open, the root first.
class Xml_Path {
public:
    std::size_t Depth() const { return starts_.size(); }
    std::string_view Name() const { return Parent(0); }    // of the innermost element; blank where none is open
    std::string_view Parent(std::size_t steps = 1) const;  // so many elements further out; blank beyond the root
    bool Within(std::string_view name) const;              // an element of that name is open, the innermost or another

private:
    friend class Xml_Walk;
    void Enter(std::string_view name);
    void Leave();

    std::string names_;
    std::vector<std::size_t> starts_;
};

class Xml_Events {
public:
    virtual ~Xml_Events() = default;

    // `path` ends with the element. What is viewed lasts as long as the call.
    virtual void Start(const Xml_Path& path, const Xml_Attributes& attributes) = 0;

    // `text` is what stood in the element behind the last other tag: all of it where it holds no other element;
    // without the spaces around it.
    virtual void End(const Xml_Path& path, std::string_view text) = 0;
};

// Fails with "Its XML is damaged in line N" (or ends there, or is too deep, or grows by entities) once everything in front of it has been
// told; what follows the root does not count.
Status Walk_Xml(std::string_view bytes, Xml_Events& events);

}  // namespace vntl
