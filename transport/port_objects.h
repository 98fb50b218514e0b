// SPDX-License-Identifier: MIT
// The port objects of the device table: made at the first try of a line, kept for later tries.
#pragma once

#include "frame/state/state.h"

namespace zel {

// The record's port object, made if it has none and disconnected if it has; null without memory.
CPort* freshPort(tsDevDat& record);

// Disconnects the record's port object, if any, frees it and takes it out of every record that
// holds it.
void freePort(tsDevDat& record);

// The same for all objects, also those whose records were overwritten.
void freeAllPorts();

} // namespace zel
