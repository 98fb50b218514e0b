// SPDX-License-Identifier: MIT
// Keeps a trial in the library's memory from staying there.
#pragma once

#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <memory>

namespace zel::cli {

// The library's memory of the active reader goes back to what it was.
class UntouchedMemory {
public:
    UntouchedMemory()
        : device_(GetActDev()), before_(std::make_unique<tsDevDat>(DevDat[device_])) {}
    ~UntouchedMemory() { DevDat[device_] = *before_; }
    UntouchedMemory(const UntouchedMemory&) = delete;
    UntouchedMemory& operator=(const UntouchedMemory&) = delete;

private:
    int device_;
    std::unique_ptr<tsDevDat> before_;
};

} // namespace zel::cli
