// SPDX-License-Identifier: MIT
// The kernel's port names, as far as IOKit's objects are ones.
#pragma once

using mach_port_t = unsigned int;

#define MACH_PORT_NULL 0
