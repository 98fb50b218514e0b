// SPDX-License-Identifier: MIT
// What the families' scans of the serial lines share.
#pragma once

#include "frame/state/state.h"

namespace zel {

// The record that the next device on a line takes, or null where the table is full.
tsDevDat* nextRecord();

// Names a record after its line.
void nameAfterLine(tsDevDat& record, int port);

// Clears the map of virtual lines when a virtual range is set.
void prepareVirtualMap();

// Runs a family's connect on one line alone: with an empty table, the scan's range set to the line
// for as long. On success the first record is the active one and `did` receives its device ID.
int connectOneLine(unsigned short port, std::int64_t* did, int (*connect)(std::int64_t* did));

// Runs a family's scan. A scan that leaves the count as it was counts as failed. On success the
// first record is the active one and `did` receives its device ID.
int connectLines(std::int64_t* did, bool (*scan)());

} // namespace zel
