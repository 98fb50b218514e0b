// SPDX-License-Identifier: MIT
// Bits of a device's error word, as the operations of a proximity reader set them.
#pragma once

#include "frame/state/state.h"
#include "frame/zelTagErrors.h"

namespace zel::tag {

constexpr std::int64_t kNullRecord = ZELTAGAPI_ERR_NULL;
constexpr std::int64_t kNeverRead = ZELTAGAPI_ERR_NEVER_READ;
constexpr std::int64_t kGetBase = ZELTAGAPI_ERR_GET;
constexpr std::int64_t kSetBase = ZELTAGAPI_ERR_SET;
constexpr std::int64_t kReadFailed = ZELTAGAPI_ERR_READ;
constexpr std::int64_t kWriteFailed = ZELTAGAPI_ERR_WRITE;
constexpr std::int64_t kResetFailed = ZELTAGAPI_ERR_RESET;
constexpr std::int64_t kServiceFailed = ZELTAGAPI_ERR_SERVICE;
constexpr std::int64_t kSetRadioFailed = ZELTAGAPI_ERR_SET_RADIO;
constexpr std::int64_t kGetRadioFailed = ZELTAGAPI_ERR_GET_RADIO;
constexpr std::int64_t kFileNameFailed = ZELTAGAPI_ERR_FILE_NAME;
constexpr std::int64_t kFullVersionFailed = ZELTAGAPI_ERR_FULL_VERSION;
constexpr std::int64_t kReferenceFailed = ZELTAGAPI_ERR_REFERENCE;

inline void clearError() { activeRecord().lLastErr = 0; }

// Adds bits to the active device's error word. Always false, the result of a failed operation.
inline bool fail(std::int64_t bits) {
    activeRecord().lLastErr |= bits;
    return false;
}

} // namespace zel::tag
