// SPDX-License-Identifier: MIT
// Sends a frame of the caller's choice as a report and keeps its reply.
#include "family/band/band.h"
#include "family/band/frame.h"
#include "frame/state/state.h"
#include "transport/usb_driver.h"

#include <array>

using namespace zel;

namespace {

using RawBuffer = std::array<std::uint8_t, 33>; // the report ID, then the frame
constinit RawBuffer rawRequest = {};
constinit RawBuffer rawReply = {};

constexpr int kPlaces = 10; // that a caller reaches
constexpr int kFirstToSend = 8;
constexpr int kNoSuchPlace = 2; // the byte read from any other place
constexpr int kLength = band::kFrameSize;

bool isPlace(short index) { return index >= 0 && index < kPlaces; }

bool exchange() {
    rawRequest[0] = 0;
    if (!UsbDriver_SendFR(kLength, iActDev, rawRequest.data()))
        return false;
    rawReply.fill(0);
    return UsbDriver_RecvFR(kLength, iActDev, rawReply.data()) != 0;
}

} // namespace

// Below the eighth place nothing is sent and nothing told.
int zelband_SetRawPayload_index(short index, short value) {
    if (isPlace(index))
        rawRequest[static_cast<std::size_t>(index)] = static_cast<std::uint8_t>(value);
    const bool isOnUsb = activeRecord().iDevType != 1;
    return index >= kFirstToSend && isOnUsb && exchange() ? 1 : 0;
}

int zelband_GetRawPayload_index(short index) {
    return isPlace(index) ? rawReply[static_cast<std::size_t>(index)] : kNoSuchPlace;
}
