// SPDX-License-Identifier: MIT
// Data read into a buffer of its own and handed over one byte at a time, for callers that can pass
// numbers only.
#pragma once

#include <cstdint>
#include <cstring>

namespace zel {

// Index -1 reads afresh and yields the count; 0 to Size - 1 yield that byte, sign-extended.
template <unsigned Size> class DataByByte {
public:
    static constexpr int kRead = -1;

    int at(int index, std::int64_t (*read)(unsigned char*, unsigned)) {
        if (index != kRead)
            return index >= 0 && index < static_cast<int>(Size)
                       ? static_cast<std::int8_t>(bytes_[index])
                       : 0;
        std::memset(bytes_, 0, Size);
        return static_cast<std::int16_t>(read(bytes_, Size));
    }

private:
    unsigned char bytes_[Size] = {};
};

} // namespace zel
