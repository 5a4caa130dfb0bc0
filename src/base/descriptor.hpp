// A descriptor of an open file that closes itself.
#pragma once

#include <unistd.h>  // close

#include <utility>

namespace vntl {

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(other.Release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }

    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }
    int Release() { return std::exchange(number_, -1); }

private:
    int number_ = -1;
};

}  // namespace vntl
