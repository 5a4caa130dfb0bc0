// Memory of many megabytes that is filled at once: thousands of page faults fewer, where the system has pages of 2 MB.
#pragma once

#include <cstddef>
#include <vector>

namespace vntl {

// A hint, given before the bytes are touched. Only whole pages within them are asked for, so that no more memory is taken than they need.
void Ask_For_Huge_Pages(void* bytes, std::size_t size);

// Brings in all pages of bytes that will all be written, at once: one call in the place of a fault for each page. A hint as well.
void Bring_In(void* bytes, std::size_t size);

// As values.reserve(n).
template <class Value>
void Reserve_Many(std::vector<Value>& values, std::size_t n) {
    if (n <= values.capacity()) return;
    values.reserve(n);
    Ask_For_Huge_Pages(values.data(), n * sizeof(Value));
}

// As values.assign(n, value).
template <class Value>
void Assign_Many(std::vector<Value>& values, std::size_t n, Value value) {
    values.clear();
    if (n > values.capacity()) {
        Reserve_Many(values, n);
        Bring_In(values.data(), n * sizeof(Value));
    }
    values.resize(n, value);
}

}  // namespace vntl
