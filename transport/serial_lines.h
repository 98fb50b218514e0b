// SPDX-License-Identifier: MIT
// Which serial lines there are: their registered paths and the numbers that a scan tries. The
// settings themselves are calls of the public header.
#pragma once

#include "frame/zelTagExport.h"

namespace zel {

constexpr unsigned kMostPorts = 256;

// The path of a line, or null where none is registered that begins with "/dev/".
const char* registeredPath(unsigned port);

// Whether a scan tries the line.
bool isInSearchRange(int port);

} // namespace zel

ZELTAGAPI_BEGIN

// Clears the registered device paths of ports 1 to 16. Row 0 belongs to no port and stays.
ZELTAGAPI_EXPORT void CPort_Init(void);

// Clears the map of virtual lines. This platform tells no line as virtual, so nothing fills it.
ZELTAGAPI_EXPORT void BuildVirtualComMap(void);

// What the map says of a line: 0, also for a number outside 1 to 256.
ZELTAGAPI_EXPORT unsigned char CheckVirtualMap(int port);

// Whether any of the records, in use or not, has a port object of this number.
ZELTAGAPI_EXPORT bool IsComPortInUse(int port);

ZELTAGAPI_END
