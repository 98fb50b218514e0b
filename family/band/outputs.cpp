// SPDX-License-Identifier: MIT
// LED colours and the beeper.
#include "family/band/band.h"
#include "family/band/config.h"
#include "family/band/frame.h"
#include "frame/state/state.h"

#include <algorithm>
#include <iterator>

using namespace zel;

namespace {

constexpr unsigned kLeds = std::size(decltype(tsBand::LedColor){});
constexpr int kLastColour = 3;
constexpr std::uint8_t kOwnColours[kLeds] = {1, 0, 2, 1, 3}; // where the reader controls them
constexpr unsigned kGoodRead = 2;
constexpr unsigned kBadRead = 3;
constexpr unsigned kMostBeeps = 4;
constexpr int kLongBit = 8; // of a nibble
constexpr int kLong = 0x80; // of a result

int withLong(int count, bool isLong) { return count | (isLong ? kLong : 0); }

} // namespace

int zelband_SetLED(unsigned short index, short colour) {
    if (index >= kLeds || colour < 0 || colour > kLastColour)
        return 0;
    tsBand& settings = activeRecord().Band;
    settings.LedColor[index] = static_cast<std::uint8_t>(colour);
    return band::sendLeds(settings) ? 1 : 0;
}

int zelband_GetLED(unsigned short index) {
    return index < kLeds ? activeRecord().Band.LedColor[index] : 0;
}

// The word that says who controls the LEDs stays as it is.
int zelband_GetLEDCtrl(sLEDCtrl* record) {
    if (!record)
        return 0;
    const std::uint8_t colour = activeRecord().Band.LedColor[0];
    record->iRedLEDState = colour & 1;
    record->iGrnLEDState = colour >> 1 & 1;
    return 1;
}

int zelband_SetLEDCtrl(sLEDCtrl* record) {
    if (!record)
        return 0;
    tsBand& settings = activeRecord().Band;
    const int colour = (record->iRedLEDState != 0 ? 1 : 0) + (record->iGrnLEDState != 0 ? 2 : 0);
    std::fill(std::begin(settings.LedColor), std::end(settings.LedColor),
              static_cast<std::uint8_t>(colour));
    if (record->bAppCtrlsLED == 0)
        std::copy(std::begin(kOwnColours), std::end(kOwnColours), settings.LedColor);
    return band::sendLeds(settings) ? 1 : 0;
}

int zelband_SetBeeper(unsigned short kind, unsigned short count, short isLong) {
    if ((kind != kGoodRead && kind != kBadRead) || count > kMostBeeps)
        return 0;
    std::uint8_t& beeper = activeRecord().Band.Beeper;
    const int nibble = count | (isLong != 0 ? kLongBit : 0);
    beeper = static_cast<std::uint8_t>(kind == kGoodRead ? (beeper & 0x0F) | nibble << 4
                                                         : (beeper & 0xF0) | nibble);
    return 1;
}

// The bad read's number shows the top bit of the good read's.
int zelband_GetBeeper(unsigned short kind) {
    const int beeper = activeRecord().Band.Beeper;
    if (kind == kGoodRead)
        return withLong(beeper >> 4 & 7, (beeper >> 4 & kLongBit) != 0);
    return kind == kBadRead ? withLong(beeper & 0x87, (beeper & kLongBit) != 0) : 0;
}

int zelband_BeepNow(unsigned char count, short isLong) {
    static constexpr std::string_view kDigits = "12345";
    const int beeps = std::clamp<int>(count, 1, isLong != 0 ? 2 : 5);
    band::Command command(isLong != 0 ? "BL" : "BS");
    band::Frame reply;
    command.add(kDigits.substr(static_cast<std::size_t>(beeps - 1), 1));
    return band::send(command, reply) ? 1 : 0;
}
