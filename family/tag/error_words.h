// SPDX-License-Identifier: MIT
// The active device's error word, as the operations of a proximity reader set it.
#pragma once

#include "frame/state/state.h"
#include "frame/zelTagErrors.h"

namespace zel::tag {

inline void clearError() { activeRecord().lLastErr = 0; }

// Adds bits to the error word. Always false, the result of a failed operation.
inline bool fail(std::int64_t bits) {
    activeRecord().lLastErr |= bits;
    return false;
}

} // namespace zel::tag
