// SPDX-License-Identifier: MIT
// The ASCII protocol of proximity readers: lines of text on a byte stream instead of frames.
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

// The reading and writing of the active configuration, and the identifier, by this protocol.
ZELTAGAPI_EXPORT int AcpReadCfg(void);
ZELTAGAPI_EXPORT int AcpWriteCfg(void);
ZELTAGAPI_EXPORT int acp_getActiveID(unsigned char* buffer, short size);

ZELTAGAPI_END

namespace zel::tag {

// The value of "out.led" where the reader controls its LED; else bit 0 is red, bit 1 green.
constexpr int kReaderControlsLed = 255;

// Whether the active device is driven by this protocol.
inline bool usesAscii() { return stream::isActive() && useACPMode != 0; }

// Sets the link up: no echo, a prompt behind each answer.
void setUpLink(CPort& port);

// Whether an answer came to its end.
bool hasPrompt(const char* answer);

// Sends a beep code; its bit 7 stands for long beeps. 1.
int beepByAscii(std::uint8_t code);

// Sends the LED states that a configuration holds.
void sendLed(const tsTagCfg& config);
void sendLedByAscii(const tsTagCfg& config);

// Factory defaults; the new settings aren't read back. 1.
int resetByAscii();

} // namespace zel::tag
