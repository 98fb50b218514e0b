// SPDX-License-Identifier: MIT
// Texts handed over one character at a time, for callers that can pass numbers only.
#pragma once

#include <cstddef>
#include <cstring>

namespace zel {

// A text going out: index 0 takes a fresh copy, the index behind the last character yields 0.
template <std::size_t Size> class TextOut {
public:
    // `refill` fills a zeroed buffer of Size characters and ends the text inside it.
    template <class Refill> int at(int index, Refill refill) {
        if (index == 0) {
            std::memset(text_, 0, Size);
            refill(text_);
        }
        const int length = static_cast<int>(std::strlen(text_));
        return index >= 0 && index <= length ? static_cast<unsigned char>(text_[index]) : 0;
    }

private:
    char text_[Size] = {};
};

// A text coming in: index 0 starts it anew, index 255 ends it and runs the operation on it.
class TextIn {
public:
    static constexpr int kEnd = 255;

    template <class Operation> int put(int index, int character, Operation operation) {
        if (index == kEnd)
            return operation(text_);
        if (index < 0 || index > kEnd)
            return 0;
        if (index == 0)
            std::memset(text_, 0, sizeof text_);
        text_[index] = static_cast<char>(character);
        return 1;
    }

private:
    char text_[257] = {};
};

} // namespace zel
