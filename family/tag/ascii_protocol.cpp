// SPDX-License-Identifier: MIT
// Single commands of the ASCII protocol.
#include "family/tag/ascii_protocol.h"

#include "base/pause.h"
#include "transport/port.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <unistd.h>

using namespace zel;

namespace {

constexpr char kLinkSetUp[] = "\rZTAG:cmd.echo=0\rZTAG:cmd.prompt=1\r";
constexpr char kFactoryReset[] = "\rZTAG:CFG.RESET\r";
constexpr char kPrompt[] = "Norvanex>";
constexpr unsigned kDroppedAnswer = 12;
constexpr useconds_t kResetPause = 1'200'000; // µs
constexpr int kLongBeep = 0x80;
constexpr int kBeepBits = 7;

CPort* openPort() {
    CPort* const port = activeRecord().pPort;
    return port && port->IsConn() ? port : nullptr;
}

void clean() {
    if (CPort* const port = activeRecord().pPort)
        port->ACPClean();
}

// The format with its one conversion, "%d" or "%02X", carried out.
std::array<char, 128> lineOf(const char* format, int value) {
    std::array<char, 128> line = {};
    const char* const mark = std::strchr(format, '%');
    const int head = mark ? static_cast<int>(mark - format) : static_cast<int>(std::strlen(format));
    const bool isHexadecimal = mark && std::strncmp(mark, "%02X", 4) == 0;
    char number[16] = {};
    if (mark)
        std::snprintf(number, sizeof number, isHexadecimal ? "%02X" : "%d", value);
    const char* const tail = mark ? mark + (isHexadecimal ? 4 : strnlen(mark, 2)) : "";
    std::snprintf(line.data(), line.size(), "\rztag:%.*s%s%s\r", head, format, number, tail);
    return line;
}

} // namespace

void SendAcpCommand(const char* format, int value) {
    CPort* const port = openPort();
    if (!port || !format)
        return;
    port->SendAscii(lineOf(format, value).data());
    std::array<char, kDroppedAnswer> dropped;
    port->Read(dropped.data(), dropped.size());
}

namespace zel::tag {

void setUpLink(CPort& port) {
    port.SendAscii(kLinkSetUp);
    port.ACPClean();
}

bool hasPrompt(const char* answer) { return std::strstr(answer, kPrompt) != nullptr; }

int beepByAscii(std::uint8_t code) {
    SendAcpCommand((code & kLongBeep) != 0 ? "out.beep.long=%d" : "out.beep.short=%d",
                   code & kBeepBits);
    return 1;
}

void sendLed(const tsTagCfg& config) {
    const sLEDCtrl& led = config.sLEDCtrl;
    const int states = (led.iRedLEDState != 0 ? 1 : 0) | (led.iGrnLEDState != 0 ? 2 : 0);
    SendAcpCommand("out.led=%d", led.bAppCtrlsLED == 0 ? kReaderControlsLed : states);
}

void sendLedByAscii(const tsTagCfg& config) {
    sendLed(config);
    clean();
}

int resetByAscii() {
    if (CPort* const port = openPort())
        port->SendAscii(kFactoryReset);
    pauseFor(kResetPause);
    clean();
    return 1;
}

} // namespace zel::tag
