// SPDX-License-Identifier: MIT
// The least that the library takes for a reader: a HID device of another process that answers each
// report with what it was sent last.
#pragma once

#include <sys/types.h>

namespace zel::test {

class EchoReader {
public:
    // Returns when its node is there.
    EchoReader();
    ~EchoReader();
    EchoReader(const EchoReader&) = delete;
    EchoReader& operator=(const EchoReader&) = delete;

private:
    pid_t process_ = -1;
};

} // namespace zel::test
