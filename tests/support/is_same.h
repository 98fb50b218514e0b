// SPDX-License-Identifier: MIT
// Compares records of the public headers, which have no operators.
#pragma once

#include <cstring>

namespace zel::test {

template <class Record> bool isSame(const Record& left, const Record& right) {
    return std::memcmp(&left, &right, sizeof left) == 0;
}

} // namespace zel::test
