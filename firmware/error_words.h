// SPDX-License-Identifier: MIT
// Words that a flash stores in lLastErr, each by assignment.
#pragma once

#include "frame/zelTagErrors.h"

#include <cstdint>

namespace zel::firmware {

constexpr std::int64_t kEntryNotSent = ZELTAGAPI_ERR_BOOT_ENTRY;
constexpr std::int64_t kReplyLost = ZELTAGAPI_ERR_BOOT_REPLY;
constexpr std::int64_t kEntryRefused = ZELTAGAPI_ERR_BOOT_REFUSED;
constexpr std::int64_t kLineRefused = ZELTAGAPI_ERR_BOOT_LINE;
constexpr std::int64_t kNoLoader = ZELTAGAPI_ERR_BOOT_DEVICE;
constexpr std::int64_t kReaderRefused = ZELTAGAPI_ERR_BOOT_READER_REFUSED;
constexpr std::int64_t kUnknownReply = ZELTAGAPI_ERR_BOOT_UNKNOWN_REPLY;
constexpr std::int64_t kNoFile = ZELTAGAPI_ERR_BOOT_FILE;
constexpr std::int64_t kFrameNotSent = ZELTAGAPI_ERR_BOOT_FRAME;

} // namespace zel::firmware
