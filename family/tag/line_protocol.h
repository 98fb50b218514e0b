// SPDX-License-Identifier: MIT
// Proximity readers that speak lines of text on a byte stream instead of frames.
//
// A line ends with a carriage return and goes out two characters at a time. Assignments are not
// checked: what the reader answers is read and dropped.
#pragma once

#include "family/tag/stream.h"

ZELTAGAPI_BEGIN

// Assigns a number to a variable: a format such as "out.led=%d", of one conversion. Nothing without
// an open stream.
ZELTAGAPI_EXPORT void SendAcpCommand(const char* format, int value);

// The number that a listing gives a key such as ":out.led", the first place where it occurs; 0
// where it isn't, or where its line has no end.
ZELTAGAPI_EXPORT int AcpGetValue(const char* text, const char* key);

// The reading and writing of the active configuration, and the identifier, by lines.
ZELTAGAPI_EXPORT int AcpReadCfg(void);
ZELTAGAPI_EXPORT int AcpWriteCfg(void);
ZELTAGAPI_EXPORT int acp_getActiveID(unsigned char* buffer, short size);

ZELTAGAPI_END

namespace zel::tag {

// Whether the active device is driven by lines.
inline bool usesLines() { return stream::isActive() && useACPMode != 0; }

// Sets the link up: no echo, a prompt behind each answer.
void setUpLink(CPort& port);

// Whether an answer came to its end.
bool hasPrompt(const char* answer);

// Sends a beep code; its bit 7 stands for long beeps. 1.
int beepByLine(std::uint8_t code);

// Sends the LED states that a configuration holds.
void sendLed(const tsTagCfg& config);
void sendLedByLine(const tsTagCfg& config);

// Factory defaults; the new settings aren't read back. 1.
int resetByLine();

} // namespace zel::tag
