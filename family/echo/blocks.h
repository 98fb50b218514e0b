// SPDX-License-Identifier: MIT
// The sensor's settings in six blocks of eight bytes, to and from the words of its records.
#pragma once

#include "family/echo/feature_report.h"
#include "frame/zelTagState.h"

namespace zel::echo {

constexpr int kBlocks = 6;

// Takes a block's bytes into the records of a sensor.
void decodeBlock(tsEcho& settings, int block, const Payload& bytes);

// Makes a block to send. Two reserved bytes go back as they were last read from any sensor.
Payload encodeBlock(const tsEcho& settings, int block);

// The sensor keeps a distance in steps of 1/3.472222 inch.
int inchesOf(int units);
int unitsOf(int inches);

} // namespace zel::echo
