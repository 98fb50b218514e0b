// SPDX-License-Identifier: MIT
// Holds the library's one recursive mutex for a scope.
#pragma once

#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

namespace zel {

class LibraryLock {
public:
    LibraryLock() {
        pthread_mutex_lock(&zelLock);
        if (takeDisconnectRequest())
            USBDisconnect();
    }
    ~LibraryLock() { pthread_mutex_unlock(&zelLock); }
    LibraryLock(const LibraryLock&) = delete;
    LibraryLock& operator=(const LibraryLock&) = delete;
};

} // namespace zel
