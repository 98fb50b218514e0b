// SPDX-License-Identifier: MIT
// A descriptor that is closed with its owner.
#pragma once

#include <unistd.h>
#include <utility>

namespace zel::sim {

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other)
            reset(other.release());
        return *this;
    }
    ~Descriptor() { reset(); }

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }
    int release() { return std::exchange(number_, -1); }
    void reset(int number = -1) {
        if (number_ >= 0)
            close(number_);
        number_ = number;
    }

private:
    int number_ = -1;
};

} // namespace zel::sim
