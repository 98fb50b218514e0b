// SPDX-License-Identifier: MIT
// The table of serial device paths.
#include "transport/serial_port.h"

#include "frame/state.h"

#include <cstring>

void CPort_Init() { std::memset(LinuxDevPath[1], 0, sizeof LinuxDevPath - sizeof LinuxDevPath[0]); }
