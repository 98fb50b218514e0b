// SPDX-License-Identifier: MIT
// The registry plane in which devices have their names.
#pragma once

#define kIOServicePlane "IOService"
